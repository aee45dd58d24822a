// The two ways the pivot-0.7495 logarithms pick a table row agree: their
// element routines and callouts round m to 2^-32 with the shifter and read
// the row from the sum's low word (split_d), their blocks take it from the
// input's pattern in integer registers (row_d, and scaled_pattern first for
// the denormals the EP kernels scale by 2^52). A row one off would leave r
// just outside the range the polynomials are fitted to, too little to show
// in the results, so the rows are compared here: at every row edge, where
// the rounding decides, on random arguments and on denormals.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <random>

#include "kernels/explog/ln/reduce.h"

namespace zvl_test {
namespace {

uint64_t pattern(double x) {
    uint64_t b;
    std::memcpy(&b, &x, sizeof b);
    return b;
}

uint32_t rounded_row(double x) {
    SplitD<Scalar> s;
    split_d<Scalar>(x, s);
    return s.pair[0] / 2;
}

// Edges p + j/1024 and, 2^-33 below each, the point where rounding to
// 2^-32 starts to give the upper row (a tie rounds up to the even edge);
// each with its neighbours, in the mantissa interval and scaled by powers
// of two over the whole exponent range.
TEST(LogRows, IntegerRowIsTheRoundedRowAtEveryEdge) {
    const double p = 0.74951171875;
    for (int j = 0; j <= 768; ++j) {
        const double edge = p + j / 1024.0;
        for (double m0 : {edge, edge - 0x1p-33}) {
            for (double m : {std::nextafter(m0, 0.0), m0, std::nextafter(m0, 2.0)}) {
                for (int e : {-1021, -300, -1, 0, 1, 500, 1023}) {
                    const double x = std::ldexp(m, e);
                    ASSERT_EQ(row_d(pattern(x)), rounded_row(x))
                        << "row edge " << j << ", x = " << std::hexfloat << x;
                }
            }
        }
    }
}

TEST(LogRows, IntegerRowIsTheRoundedRowOnRandomArguments) {
    std::mt19937_64 g(20261122);
    for (int i = 0; i < 1000000; ++i) {
        // positive normal finite patterns
        const uint64_t b = 0x0010000000000000 + g() % (0x7ff0000000000000 - 0x0010000000000000);
        double x;
        std::memcpy(&x, &b, sizeof x);
        ASSERT_EQ(row_d(b), rounded_row(x)) << std::hexfloat << x;
    }
}

TEST(LogRows, DenormalsTakeTheRowOfTheirScaledValue) {
    std::mt19937_64 g(52);
    for (int i = 0; i < 200000; ++i) {
        // fractions of every length, and the extremes
        uint64_t b = (g() & 0x000fffffffffffff) >> (g() % 52);
        if (i < 2) b = i == 0 ? 1 : 0x000fffffffffffff;
        if (b == 0) continue;
        double x;
        std::memcpy(&x, &b, sizeof x);
        ASSERT_EQ(scaled_pattern(b), pattern(x * 0x1p52)) << std::hexfloat << x;
        ASSERT_EQ(row_d(scaled_pattern(b)), rounded_row(x * 0x1p52)) << std::hexfloat << x;
    }
    for (double x : {0x1p-1022, 1.0, 0x1.fffffffffffffp+1023})
        EXPECT_EQ(scaled_pattern(pattern(x)), pattern(x)) << x;
}

// The refused lanes of a block load their rows too, before the block is
// thrown away: every pattern must give a row inside the table.
TEST(LogRows, EveryPatternGivesARowInTheTable) {
    for (uint64_t b : {uint64_t{0}, uint64_t{1}, uint64_t{0x000fffffffffffff},
                       uint64_t{0x8000000000000000}, uint64_t{0x7ff0000000000000},
                       uint64_t{0x7ff8000000000000}, uint64_t{0xfff0000000000000},
                       uint64_t{0xffffffffffffffff}, uint64_t{0x3fe7fbffffffffff}})
        EXPECT_TRUE(row_d(b) < 768 && row_d(scaled_pattern(b)) < 768) << std::hex << b;
    std::mt19937_64 g(7);
    for (int i = 0; i < 1000000; ++i) {
        const uint64_t b = g();
        ASSERT_TRUE(row_d(b) < 768 && row_d(scaled_pattern(b)) < 768) << std::hex << b;
    }
}

}  // namespace
}  // namespace zvl_test
