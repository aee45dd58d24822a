// VDLN and VDLOG10 through their front-ends, on the cpu type that
// ZVL_CPU_TYPE forces: each accuracy value reaches its kernel (Log10's LA
// being its HA), reports reach the status word, errno and the callback with
// the kernel's name, and parameter errors name the function.
#include <gtest/gtest.h>

#include <cerrno>
#include <cmath>
#include <random>
#include <string>
#include <vector>

#include "frame/cpu_type.h"
#include "frame/kernel_sets.h"
#include "state/state.h"
#include "tests/common/capture.h"
#include "zvl.h"

namespace {

using zvl_test::bits_of;

using Entry = void (*)(const int*, const double*, double*);

struct Function {
    const char* report;  // the name in messages
    const char* family;  // the name in kernel names
    Entry entry;
    const zvl::KernelSet<zvl::KernelD1>* set;
};

const Function kFunctions[] = {{"vdLn", "Ln", VDLN, &zvl::kernels_VDLN},
                               {"vdLog10", "Log10", VDLOG10, &zvl::kernels_VDLOG10}};

class LogFrontEnd : public testing::TestWithParam<Function> {
  protected:
    void SetUp() override {
        saved_ = zvl::library_context()->mode;
        zvl::set_array_base(nullptr);
    }
    void TearDown() override {
        zvl::clear_callback();
        zvl::library_context()->mode = saved_;
    }
    uint32_t saved_;
};

std::vector<double> spread(int n) {
    std::mt19937_64 g(5);
    std::uniform_real_distribution<double> e(-1000.0, 1000.0);
    std::vector<double> a(n);
    for (double& x : a) x = std::exp2(e(g));
    a[17] = 1.0;
    a[400] = 1e-310;
    return a;
}

TEST_P(LogFrontEnd, AccuracyFieldSelectsKernel) {
    const Function& f = GetParam();
    const uint32_t cpu = zvl::cpu_type();
    ASSERT_LE(cpu, 5u);
    const int n = 1000;
    const std::vector<double> a = spread(n);
    std::vector<double> r(n), want(n);
    const struct {
        uint32_t field;
        int col;
    } rows[] = {{2, zvl::kHA}, {1, zvl::kLA}, {0, zvl::kEP}, {3, zvl::kEP}, {15, zvl::kEP}};
    for (const auto& row : rows) {
        zvl::library_context()->mode = ZVL_ERRMODE_IGNORE | row.field;
        f.entry(&n, a.data(), r.data());
        f.set->k[cpu][row.col](n, a.data(), want.data());
        for (int i = 0; i < n; ++i)
            ASSERT_EQ(bits_of(r[i]), bits_of(want[i])) << "field " << row.field << " x " << a[i];
    }
}

TEST(Log10FrontEnd, LaGivesTheBitsOfHa) {
    const int n = 1000;
    const std::vector<double> a = spread(n);
    std::vector<double> ha(n), la(n);
    const unsigned modes[2] = {ZVL_HA | ZVL_ERRMODE_IGNORE, ZVL_LA | ZVL_ERRMODE_IGNORE};
    const unsigned old = ZVLSETMODE(&modes[0]);
    VDLOG10(&n, a.data(), ha.data());
    ZVLSETMODE(&modes[1]);
    VDLOG10(&n, a.data(), la.data());
    ZVLSETMODE(&old);
    for (int i = 0; i < n; ++i) ASSERT_EQ(bits_of(ha[i]), bits_of(la[i])) << a[i];
}

TEST_P(LogFrontEnd, StatusAndErrno) {
    const Function& f = GetParam();
    const unsigned mode = ZVL_MODE_DEFAULT;
    ZVLSETMODE(&mode);
    zvl::set_status(0);
    errno = 0;
    const double a[] = {2.0, -0.0, 3.0};
    double r[3];
    const int three = 3, one = 1;
    f.entry(&three, a, r);
    EXPECT_EQ(zvl::get_status(), ZVL_STATUS_SING);
    EXPECT_EQ(errno, ERANGE);
    EXPECT_EQ(r[1], -INFINITY);
    errno = 0;
    const double minus = -2.0;
    f.entry(&one, &minus, r);
    EXPECT_EQ(zvl::get_status(), ZVL_STATUS_ERRDOM);
    EXPECT_EQ(errno, EDOM);
    EXPECT_TRUE(std::isnan(r[0]));
    // NaN, +inf and denormals report nothing: the status stays.
    const double quiet[] = {NAN, INFINITY, 1e-320};
    f.entry(&three, quiet, r);
    EXPECT_EQ(zvl::get_status(), ZVL_STATUS_ERRDOM);
}

std::string g_name;
int remember_name(ZVLErrorRecord* rec) {
    g_name.assign(rec->name, rec->name_len);
    return 0;
}

// The record carries the name of the kernel that ran: HA for Log10's LA
// slot, and for Ln's LA slot at types 0 and 1.
TEST_P(LogFrontEnd, ReportsNameTheKernelThatRan) {
    const Function& f = GetParam();
    const uint32_t cpu = zvl::cpu_type();
    ASSERT_LE(cpu, 5u);
    static const char* const labels[6] = {"ex", "e7", "u8", "y8", "h8", "e9"};
    const bool ln = std::string(f.family) == "Ln";
    const struct {
        unsigned accuracy;
        const char* tag;
    } rows[] = {
        {ZVL_HA, "HA"},
        {ZVL_LA, ln && cpu >= 2 ? "50" : "HA"},
        {ZVL_EP, cpu >= 1 ? "26" : "HA"},
    };
    zvl::set_callback(remember_name);
    for (const auto& row : rows) {
        const unsigned mode = row.accuracy | ZVL_ERRMODE_CALLBACK;
        ZVLSETMODE(&mode);
        g_name.clear();
        const int one = 1;
        const double zero = 0.0;
        double r;
        f.entry(&one, &zero, &r);
        EXPECT_EQ(g_name, std::string("zel_zvl_core_") + labels[cpu] + "_zvl_d" + f.family + "_" +
                              row.tag);
    }
}

TEST_P(LogFrontEnd, ParameterErrorsNameTheFunction) {
    const Function& f = GetParam();
    const int minus = -1;
    double x = 0.0;
    const std::string out = zvl_test::capture_stdout([&] { f.entry(&minus, &x, &x); });
    EXPECT_NE(out.find(std::string("ZEL ERROR: Parameter 1 was incorrect on entry to ") + f.report),
              std::string::npos)
        << out;
    EXPECT_EQ(zvl::get_status(), ZVL_STATUS_BADSIZE);
}

INSTANTIATE_TEST_SUITE_P(Functions, LogFrontEnd, testing::ValuesIn(kFunctions),
                         [](const testing::TestParamInfo<Function>& p) {
                             return std::string(p.param.family);
                         });

}  // namespace
