// The shared numerics of kernels/common on one lane: the double-word steps
// are exact (checked in binary128), and the x87 helpers round only where
// they store.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>

#include "kernels/common/double_word.h"
#include "kernels/common/x87.h"

namespace {

using Q = __float128;

uint64_t g_seed = 0x2545F4914F6CDD1Du;
double draw(int lo_exp, int hi_exp) {
    g_seed = g_seed * 6364136223846793005u + 1442695040888963407u;
    const double m = 1.0 + static_cast<double>(g_seed >> 12) * 0x1p-52;
    const int e = lo_exp + static_cast<int>((g_seed >> 4) % static_cast<uint64_t>(hi_exp - lo_exp + 1));
    return std::ldexp(g_seed & 1 ? -m : m, e);
}

int significant_bits(double x) {
    if (x == 0) return 0;
    int e;
    const double m = std::frexp(std::fabs(x), &e);
    const uint64_t bits = static_cast<uint64_t>(std::ldexp(m, 53));
    return 53 - __builtin_ctzll(bits);
}

TEST(DoubleWord, SplitsAreExact) {
    for (int i = 0; i < 10000; ++i) {
        const double x = draw(-300, 300);
        const Parts<Scalar> p26 = split<Scalar, 26>(x);
        const Parts<Scalar> p17 = split<Scalar, 17>(x);
        EXPECT_EQ(p26.hi + p26.lo, x);
        EXPECT_EQ(p17.hi + p17.lo, x);
        EXPECT_LE(significant_bits(p26.hi), 26);
        EXPECT_LE(significant_bits(p17.hi), 17);
        EXPECT_LE(significant_bits(p26.lo), 27) << x;
    }
}

TEST(DoubleWord, SumsAndProductsKeepTheirErrors) {
    for (int i = 0; i < 10000; ++i) {
        const double a = draw(-60, 60), b = draw(-60, 60);
        double s, e;
        two_sum<Scalar>(a, b, s, e);
        EXPECT_TRUE(Q(s) + Q(e) == Q(a) + Q(b)) << a << " + " << b;
        EXPECT_EQ(s, a + b);
        // the difference: exact, and the bits of the sum with b negated
        double d, g;
        two_diff<Scalar>(a, b, d, g);
        EXPECT_TRUE(Q(d) + Q(g) == Q(a) - Q(b)) << a << " - " << b;
        two_sum<Scalar>(a, -b, s, e);
        EXPECT_EQ(zvl::bits(d), zvl::bits(s)) << a << " - " << b;
        EXPECT_EQ(zvl::bits(g), zvl::bits(e)) << a << " - " << b;
        const double big = std::fabs(a) >= std::fabs(b) ? a : b, small = big == a ? b : a;
        fast_two_sum<Scalar>(big, small, s, e);
        EXPECT_TRUE(Q(s) + Q(e) == Q(a) + Q(b)) << a << " + " << b;
        double p, f;
        two_product<Scalar>(a, b, p, f);
        EXPECT_EQ(p, a * b);
        EXPECT_TRUE(Q(p) + Q(f) == Q(a) * Q(b)) << a << " * " << b;
    }
}

// Under the guard the product of four doubles and its reciprocal keep the
// 64-bit significand; the single-precision image test takes what a four-way
// reciprocal can invert.
TEST(X87, ExtendedProductsAndTheRangeTest) {
    ExtendedGuard guard;
    const double b[4] = {3.0, 7.0, 11.0, 1.0 / 3.0};
    const Ext P = ext(b[0]) * b[1] * b[2] * b[3];
    EXPECT_NE(P, ext(to_double(P))) << "the product holds more bits than a double";
    EXPECT_TRUE(single_image_finite_nonzero(P));
    EXPECT_EQ(to_double(reciprocal(ext(4.0))), 0.25);
    EXPECT_FALSE(single_image_finite_nonzero(ext(1e300) * 1e300));
    EXPECT_FALSE(single_image_finite_nonzero(ext(1e-300) * 1e-300));
    EXPECT_FALSE(single_image_finite_nonzero(ext(0.0)));
    EXPECT_TRUE(single_image_finite_nonzero(ext(1e-40)));  // a denormal image passes
}

}  // namespace
