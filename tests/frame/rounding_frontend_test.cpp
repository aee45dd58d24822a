// The front-ends of the rounding family, run once per cpu type: argument
// checks in the order of their shapes, no mode and no status on success,
// the kernel of the cpu type in force, and the _Idx forms.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <string>
#include <vector>

#include "frame/cpu_type.h"
#include "frame/kernel_sets.h"
#include "state/state.h"
#include "tests/common/capture.h"
#include "zvl.h"

namespace {

using Front1 = void (*)(const int*, const double*, double*);

struct Named {
    const char* report;
    Front1 f;
    const zvl::RoundingSet<zvl::KernelD1>* set;
};
const Named kOneOut[] = {
    {"vdCeil", VDCEIL, &zvl::kernels_VDCEIL},
    {"vdFloor", VDFLOOR, &zvl::kernels_VDFLOOR},
    {"vdNearbyInt", VDNEARBYINT, &zvl::kernels_VDNEARBYINT},
    {"vdRint", VDRINT, &zvl::kernels_VDRINT},
    {"vdRound", VDROUND, &zvl::kernels_VDROUND},
    {"vdTrunc", VDTRUNC, &zvl::kernels_VDTRUNC},
};

std::string parameter_error(int position, const char* name) {
    return "\nZEL ERROR: Parameter " + std::to_string(position) + " was incorrect on entry to " +
           name + "\n";
}

class RoundingFrontEnd : public ::testing::Test {
  protected:
    void SetUp() override {
        if (zvl::cpu_type() > 5) GTEST_SKIP() << "no kernel set for this cpu type";
        zvl::set_status(0);
    }
};

TEST_F(RoundingFrontEnd, OneOutputChecksInOrder) {
    double a[1] = {1.5}, r[1];
    for (const Named& f : kOneOut) {
        const int neg = -1, zero = 0, one = 1;
        EXPECT_EQ(parameter_error(1, f.report),
                  zvl_test::capture_stdout([&] { f.f(&neg, nullptr, nullptr); }));
        EXPECT_EQ(ZVL_STATUS_BADSIZE, zvl::get_status());
        zvl::set_status(7);
        EXPECT_EQ("", zvl_test::capture_stdout([&] { f.f(&zero, nullptr, nullptr); }));
        EXPECT_EQ(7, zvl::get_status());
        EXPECT_EQ(parameter_error(2, f.report),
                  zvl_test::capture_stdout([&] { f.f(&one, nullptr, nullptr); }));
        EXPECT_EQ(ZVL_STATUS_BADMEM, zvl::get_status());
        zvl::set_status(0);
        EXPECT_EQ(parameter_error(3, f.report), zvl_test::capture_stdout([&] { f.f(&one, a, nullptr); }));
        EXPECT_EQ(ZVL_STATUS_BADMEM, zvl::get_status());
    }
}

TEST_F(RoundingFrontEnd, ModfChecksInOrder) {
    double a[1] = {1.5}, y[1], z[1];
    const int neg = -1, zero = 0, one = 1;
    EXPECT_EQ(parameter_error(1, "vdModf"),
              zvl_test::capture_stdout([&] { VDMODF(&neg, nullptr, nullptr, nullptr); }));
    EXPECT_EQ(ZVL_STATUS_BADSIZE, zvl::get_status());
    zvl::set_status(5);
    EXPECT_EQ("", zvl_test::capture_stdout([&] { VDMODF(&zero, nullptr, nullptr, nullptr); }));
    EXPECT_EQ(5, zvl::get_status());
    EXPECT_EQ(parameter_error(2, "vdModf"),
              zvl_test::capture_stdout([&] { VDMODF(&one, nullptr, y, z); }));
    EXPECT_EQ(parameter_error(3, "vdModf"),
              zvl_test::capture_stdout([&] { VDMODF(&one, a, nullptr, nullptr); }));
    EXPECT_EQ(parameter_error(4, "vdModf"), zvl_test::capture_stdout([&] { VDMODF(&one, a, y, nullptr); }));
    EXPECT_EQ(ZVL_STATUS_BADMEM, zvl::get_status());
}

// The cpu type's own kernel, whatever the accuracy mode, and the status word
// untouched: nothing in this family reports.
TEST_F(RoundingFrontEnd, RunsTheKernelOfTheCpuTypeWithoutModeOrStatus) {
    const uint32_t cpu = zvl::cpu_type();
    std::vector<double> a;
    for (int i = 0; i < 301; ++i) a.push_back((i - 150) * 0.37);
    a[5] = std::nan("");
    a[9] = 1e300;
    const int n = static_cast<int>(a.size());
    const uint32_t saved = zvl::get_mode();
    for (const Named& f : kOneOut) {
        std::vector<double> want(a.size()), got(a.size());
        f.set->k[cpu](n, a.data(), want.data());
        for (uint32_t accuracy : {ZVL_HA, ZVL_LA, ZVL_EP, 7u}) {
            zvl::set_mode(accuracy);
            zvl::set_status(-42);
            f.f(&n, a.data(), got.data());
            EXPECT_EQ(-42, zvl::get_status()) << f.report;
            EXPECT_EQ(0, std::memcmp(want.data(), got.data(), sizeof(double) * a.size())) << f.report;
        }
    }
    zvl::set_mode(saved);
}

// The one _Idx form with three arrays.
TEST_F(RoundingFrontEnd, ModfIdxAdvancesEveryArray) {
    const double a[4] = {9.0, 9.0, -2.5, 3.75};
    double y[4] = {0, 0, 0, 0}, z[4] = {0, 0, 0, 0};
    const int n = 2;
    VDMODF_Idx(&n, a, 2, y, 1, z, 2);
    EXPECT_EQ(-2.0, y[1]);
    EXPECT_EQ(3.0, y[2]);
    EXPECT_EQ(-0.5, z[2]);
    EXPECT_EQ(0.75, z[3]);
    EXPECT_EQ(0.0, y[0] + y[3] + z[0] + z[1]);
}

}  // namespace
