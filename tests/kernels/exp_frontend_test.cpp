// VDEXP through its front-end, on the cpu type that ZVL_CPU_TYPE forces:
// each accuracy value reaches its kernel, reports reach the status word and
// errno, and parameter errors name vdExp.
#include <gtest/gtest.h>

#include <cerrno>
#include <cmath>
#include <random>

#include "frame/cpu_type.h"
#include "frame/kernel_sets.h"
#include "state/state.h"
#include "tests/common/capture.h"
#include "zvl.h"

namespace {

using zvl_test::bits_of;

class ExpFrontEnd : public testing::Test {
  protected:
    void SetUp() override { saved_ = zvl::library_context()->mode; }
    void TearDown() override { zvl::library_context()->mode = saved_; }
    uint32_t saved_;
};

TEST_F(ExpFrontEnd, AccuracyFieldSelectsKernel) {
    const uint32_t cpu = zvl::cpu_type();
    ASSERT_LE(cpu, 5u);
    std::mt19937_64 g(3);
    std::uniform_real_distribution<double> u(-750.0, 750.0);
    std::vector<double> a(1000), r(1000), want(1000);
    for (double& x : a) x = u(g);
    const int n = 1000;
    const struct {
        uint32_t field;
        int col;
    } rows[] = {{2, zvl::kHA}, {1, zvl::kLA}, {0, zvl::kEP}, {3, zvl::kEP}, {15, zvl::kEP}};
    for (const auto& row : rows) {
        zvl::library_context()->mode = ZVL_ERRMODE_IGNORE | row.field;
        VDEXP(&n, a.data(), r.data());
        zvl::kernels_VDEXP.k[cpu][row.col](n, a.data(), want.data());
        for (int i = 0; i < n; ++i)
            ASSERT_EQ(bits_of(r[i]), bits_of(want[i])) << "field " << row.field << " x " << a[i];
    }
}

TEST_F(ExpFrontEnd, StatusAndErrno) {
    const unsigned mode = ZVL_MODE_DEFAULT;
    ZVLSETMODE(&mode);
    zvl::set_status(0);
    errno = 0;
    const double a[] = {1.0, 1000.0, 2.0};
    double r[3];
    const int three = 3, one = 1;
    VDEXP(&three, a, r);
    EXPECT_EQ(zvl::get_status(), ZVL_STATUS_OVERFLOW);
    EXPECT_EQ(errno, ERANGE);
    EXPECT_EQ(r[1], INFINITY);
    const double low = -1000.0;
    VDEXP(&one, &low, r);
    EXPECT_EQ(zvl::get_status(), ZVL_STATUS_UNDERFLOW);
    EXPECT_EQ(r[0], 0.0);
    // Calls without a report leave the status alone.
    VDEXP(&three, r, r);
    EXPECT_EQ(zvl::get_status(), ZVL_STATUS_UNDERFLOW);
}

TEST_F(ExpFrontEnd, ParameterErrorsNameTheFunction) {
    const int minus = -1;
    double x = 0.0;
    const std::string out = zvl_test::capture_stdout([&] { VDEXP(&minus, &x, &x); });
    EXPECT_NE(out.find("ZEL ERROR: Parameter 1 was incorrect on entry to vdExp"), std::string::npos)
        << out;
    EXPECT_EQ(zvl::get_status(), ZVL_STATUS_BADSIZE);
}

}  // namespace
