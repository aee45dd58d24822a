// VDPOW and VDPOWX through their exported entries, at the cpu type this run
// is forced to (ZVL_CPU_TYPE): the accuracy field picks the kernel, the
// argument checks and their positions, the _Idx forms, and the scalar of
// VDPOWX read through its pointer and never tested.
#include <gtest/gtest.h>

#include <vector>

#include "frame/cpu_type.h"
#include "state/state.h"
#include "tests/common/capture.h"
#include "tests/kernels/pow_support.h"

namespace {

using pow_test::bits;

class PowFront : public testing::Test {
  protected:
    void SetUp() override {
        saved_ = zvl::get_mode();
        zvl::set_status(0);
    }
    void TearDown() override { zvl::set_mode(saved_); }
    uint32_t saved_;
};

std::vector<double> xs() {
    std::vector<double> x;
    for (int i = 0; i < 19; ++i) x.push_back(0.37 + i * 1.93);
    x[2] = -0.0;  // to a negative power: reported
    return x;
}

TEST_F(PowFront, AccuracyFieldPicksTheKernel) {
    const uint32_t cpu = zvl::cpu_type();
    ASSERT_LE(cpu, 5u);
    const std::vector<double> x = xs();
    std::vector<double> y(x.size()), got(x.size()), want(x.size());
    for (size_t i = 0; i < y.size(); ++i) y[i] = -3.3 + 0.71 * i;
    const int n = static_cast<int>(x.size());
    zvl::set_mode(0x100);  // errors only set the status
    for (uint32_t acc : {2u, 1u, 3u, 0u, 15u}) {
        // written directly: setting the mode leaves a zero field alone
        zvl::ThreadContext* t = zvl::Services<0>::context();
        t->mode = (t->mode & ~zvl::kAccuracyMask) | acc;
        const int col = acc == 2 ? 0 : acc == 1 ? 1 : 2;
        VDPOW(&n, x.data(), y.data(), got.data());
        pow_test::pow_kernel(cpu, col)(n, x.data(), y.data(), want.data());
        for (int i = 0; i < n; ++i)
            EXPECT_EQ(bits(got[i]), bits(want[i])) << "field " << acc << " i " << i;
        const double b = 1.37;
        VDPOWX(&n, x.data(), &b, got.data());
        pow_test::powx_kernel(cpu, col)(n, x.data(), b, want.data());
        for (int i = 0; i < n; ++i)
            EXPECT_EQ(bits(got[i]), bits(want[i])) << "field " << acc << " i " << i;
    }
    EXPECT_EQ(zvl::get_status(), ZVL_STATUS_ERRDOM);
}

struct ArgCase {
    int n;
    bool a, b, r;  // non-null
    int position;  // 0: no report
    int status;
};

class PowxArguments : public testing::TestWithParam<ArgCase> {};

// n is position 1, a position 2, r position 3; b is never looked at.
TEST_P(PowxArguments, ChecksInOrder) {
    const ArgCase c = GetParam();
    double a[2] = {2.0, 3.0}, r[2] = {0, 0}, b = 2.5;
    zvl::set_status(7);
    const std::string out = zvl_test::capture_stdout(
        [&] { VDPOWX(&c.n, c.a ? a : nullptr, c.b ? &b : nullptr, c.r ? r : nullptr); });
    if (c.position) {
        EXPECT_EQ(out, "\nZEL ERROR: Parameter " + std::to_string(c.position) +
                           " was incorrect on entry to vdPowx\n");
        EXPECT_EQ(zvl::get_status(), c.status);
    } else {
        EXPECT_EQ(out, "");
        EXPECT_EQ(zvl::get_status(), 7);
    }
}

INSTANTIATE_TEST_SUITE_P(Cases, PowxArguments,
                         testing::Values(ArgCase{-1, false, false, false, 1, ZVL_STATUS_BADSIZE},
                                         ArgCase{0, false, false, false, 0, 0},
                                         ArgCase{2, false, true, true, 2, ZVL_STATUS_BADMEM},
                                         ArgCase{2, true, false, false, 3, ZVL_STATUS_BADMEM},
                                         ArgCase{2, true, true, false, 3, ZVL_STATUS_BADMEM},
                                         ArgCase{2, false, false, false, 2, ZVL_STATUS_BADMEM}));

TEST_F(PowFront, PowArgumentsInOrder) {
    double a = 2.0, b = 3.0;
    const int n = 1;
    const std::string out = zvl_test::capture_stdout([&] { VDPOW(&n, &a, &b, nullptr); });
    EXPECT_EQ(out, "\nZEL ERROR: Parameter 4 was incorrect on entry to vdPow\n");
    EXPECT_EQ(zvl::get_status(), ZVL_STATUS_BADMEM);
}

TEST_F(PowFront, IdxFormsAdvanceTheArrays) {
    zvl::set_mode(0x100 | 2u);
    const double a[6] = {1, 2, 3, 4, 5, 6}, b[6] = {6, 5, 4, 3, 2, 1};
    double r[6] = {0, 0, 0, 0, 0, 0};
    const int n = 3;
    VDPOW_Idx(&n, a, 1, b, 2, r, 3);
    EXPECT_EQ(r[2], 0.0);
    EXPECT_EQ(r[3], 16.0);  // 2^4
    EXPECT_EQ(r[4], 27.0);  // 3^3
    EXPECT_EQ(r[5], 16.0);  // 4^2
    const double e = 2.0;
    VDPOWX_Idx(&n, a, 2, &e, r, 0);
    EXPECT_EQ(r[0], 9.0);
    EXPECT_EQ(r[1], 16.0);
    EXPECT_EQ(r[2], 25.0);
}

// Reports reach the status word through the front-end; overflow does not.
TEST_F(PowFront, OnlyDomainErrorsReport) {
    zvl::set_mode(0x100 | 2u);
    const double a[3] = {2.0, -8.0, 2.0}, b[3] = {1024.0, 1.0 / 3, -1080.0};
    double r[3];
    const int n = 3;
    VDPOW(&n, a, b, r);
    EXPECT_EQ(zvl::get_status(), ZVL_STATUS_ERRDOM);
    EXPECT_EQ(bits(r[1]), 0xfff8000000000000ull);
    zvl::set_status(0);
    const int one = 1;
    VDPOW(&one, a + 2, b + 2, r);
    VDPOW(&n, a, a, r);
    EXPECT_EQ(zvl::get_status(), 0);
}

}  // namespace
