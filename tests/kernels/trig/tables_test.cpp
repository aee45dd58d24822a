// The trigonometric tables hold the rows their definitions give: telling
// rows of each, and the power-of-two rule the kernels' exact products rest
// on. That the checked-in tables are the generator's output is checked by
// the trig_tables.* tests.
#include <gtest/gtest.h>

#include <cmath>

#include "kernels/trig/sincos/data.h"
#include "kernels/trig/tan/data.h"
#include "kernels/trig/trig_reduce/data.h"
#include "tests/common/capture.h"

namespace zvl_test {
namespace {

bool power_of_two_or_zero(double d) {
    int e;
    return d == 0 || std::fabs(std::frexp(d, &e)) == 0.5;
}

// Low words of the values are the rest rounded to about 30 bits; any such
// split keeps the sum, so a telling row's low word matches to 2^-20 of it.
void expect_row(const double* got, const double (&want)[4], const char* table, int row,
                int low_word) {
    for (int k = 0; k < 4; ++k) {
        if (k == low_word)
            EXPECT_NEAR(got[k], want[k], std::fabs(want[k]) * 0x1p-20) << table << " row " << row;
        else
            EXPECT_EQ(got[k], want[k]) << table << " row " << row << " word " << k;
    }
}

TEST(TrigTables, TellingRows) {
    using zvl::SinCosTable64;
    using zvl::SinTable512;
    expect_row(SinTable512 + 0, {0, 1, 0, 0}, "SinTable512", 0, 3);
    expect_row(SinTable512 + 4 * 1,
               {-7.529816085545908e-05, 1, 0.012271538285719925, 6.919790271057893e-19},
               "SinTable512", 1, 3);
    expect_row(SinTable512 + 4 * 127,
               {-0.0033534617142800737, 0.015625, 0.9999247018391445, 3.793108167266833e-17},
               "SinTable512", 127, 3);
    expect_row(SinTable512 + 4 * 128, {0, 0, 1, 0}, "SinTable512", 128, 3);
    expect_row(SinCosTable64 + 0, {0, 0, 0, 1}, "SinCosTable64", 0, 2);
    expect_row(SinCosTable64 + 4 * 1,
               {-0.004815273327803114, 0.0980171403295606, -1.6345824060817233e-18, 1},
               "SinCosTable64", 1, 2);
    // CosTable64 row 1: -sin low, cos high, cos low, -sin high = 0.026983,
    // 0.995185, (the rest of cos pi/32), -0.125
    const double* c1 = zvl::CosTable64 + 4;
    EXPECT_NEAR(c1[0], 0.026983, 5e-7);
    EXPECT_NEAR(c1[1], 0.995185, 5e-7);
    EXPECT_EQ(c1[3], -0.125);
    EXPECT_EQ(zvl::SinCosPairs64[2 * 16], 0.0);  // cos and sin of pi/2, exactly
    EXPECT_EQ(zvl::SinCosPairs64[2 * 16 + 1], 1.0);
    // SinCosTable128 is SinCosTable64 at every other row.
    for (int i = 0; i < 64; ++i)
        for (int k = 0; k < 4; ++k)
            EXPECT_EQ(zvl::SinCosTable128[8 * i + k], SinCosTable64[4 * i + k]) << i;
}

// The derivative's high word is a power of two or zero in every row, so that
// the remainder times it is exact.
TEST(TrigTables, DerivativeHighWordsArePowersOfTwo) {
    struct Table {
        const double* t;
        int rows, word;
    };
    const Table tables[] = {{zvl::SinTable512, 512, 1}, {zvl::CosTable512, 512, 3},
                            {zvl::SinCosTable64, 64, 3}, {zvl::CosTable64, 64, 3},
                            {zvl::SinCosTable128, 128, 3}};
    for (const Table& t : tables)
        for (int i = 0; i < t.rows; ++i)
            EXPECT_TRUE(power_of_two_or_zero(t.t[4 * i + t.word])) << i;
    for (int i = 0; i < 32; ++i) {
        const double w16 = zvl::TanTable32[20 * i + 16];
        EXPECT_TRUE(w16 == 0 || w16 == 1 || w16 == 2) << i;
    }
}

TEST(TrigTables, TanTelling) {
    const double* T = zvl::TanTable32;
    struct Row {
        int i;
        double value, power, rest;  // words 14, 16, 17
    };
    const Row rows[] = {{1, 0.09849140335716425, 1, 0.009700556535263626},
                        {8, 1, 2, 0},
                        {9, -0.2366273826808083, 0, 0.3673448816712694},
                        {16, 0, 0, 0.3333333333333333}};
    for (const Row& r : rows) {
        EXPECT_EQ(T[20 * r.i + 14], r.value) << r.i;
        EXPECT_EQ(T[20 * r.i + 16], r.power) << r.i;
        EXPECT_EQ(T[20 * r.i + 17], r.rest) << r.i;
    }
    for (int i = 0; i < 32; ++i) {
        const bool pole = i >= 9 && i <= 23;
        EXPECT_EQ(T[20 * i + 18], pole ? 1.0 : 0.0) << i;
        EXPECT_EQ(bits_of(T[20 * i + 19]), pole ? 0xfffffff800000000 : 0) << i;
    }
}

TEST(TrigTables, FourOverPiWords) {
    const double* w = zvl::FourOverPiWords;
    EXPECT_EQ(w[0], 0.0);
    EXPECT_EQ(w[1], 0x1.45F306p+200);
    EXPECT_EQ(w[2], 0x1.B93910p+175);
    EXPECT_EQ(w[3], 0x1.529FC2p+149);
    EXPECT_EQ(w[9], 0x1.458EAEp-1);
    EXPECT_EQ(w[49], 0x1.AEAFC2p-1001);
    for (int k = 50; k < 53; ++k) EXPECT_EQ(w[k], 0.0);
    // each word exact on its 25-bit grid
    for (int k = 1; k <= 49; ++k) {
        const double q = std::ldexp(w[k], 25 * k - 201);
        EXPECT_TRUE(q == std::floor(q) && q < 0x1p25) << k;
    }
}

}  // namespace
}  // namespace zvl_test
