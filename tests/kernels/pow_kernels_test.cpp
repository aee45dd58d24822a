// The kernel contract of Pow and Powx, every cpu type and accuracy mode:
// reports in element order with the other lanes as they would be alone, a
// callback's replacement kept, input and output as one array, the remainder,
// the control-word guards, and Powx against Pow with one exponent. The
// exact cases and the accuracy are measured by the directed cases and the
// accuracy harness (tests/data/directed/pow.txt, powx.txt).
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <tuple>
#include <vector>

#include "tests/kernels/pow_support.h"

namespace {

constexpr double kInf = __builtin_inf();
constexpr double kNaN = __builtin_nan("");

using pow_test::bits;
using pow_test::hex;
using pow_test::Reports;

// Ordinary lanes beside the special one: each takes the block path.
constexpr double kPlainX[8] = {1.7, 0.3, 25.0, 1e-5, 3.25, 0.999, 1e10, 7.0};
constexpr double kPlainY[8] = {2.5, -1.25, 0.5, 3.0, -7.5, 100.0, -0.5, 1.0 / 3};

class PowKernel : public pow_test::PerKernel {
  protected:
    zvl::KernelD2 pow() const { return pow_test::pow_kernel(cpu(), col()); }
    zvl::KernelDx powx() const { return pow_test::powx_kernel(cpu(), col()); }
};

// Special elements among ordinary ones, at every lane of a block and in the
// remainder: each gets what it gets alone, reports come in element order,
// and the ordinary lanes are untouched by their neighbours.
TEST_P(PowKernel, ReportsInOrderAndLanesAsAlone) {
    struct {
        int at;
        double x, y;
        bool reported;
    } const special[] = {
        {0, -8.0, 1.0 / 3, true}, {3, 0.0, -3.0, true},      {5, -kInf, 3.0, false},
        {9, 2.0, 1024.0, false},  {10, -0.0, -1.0, true},    {15, kNaN, 2.0, false},
        {17, 1e-310, 0.5, false}, {22, 2.0, -1075.0, false}, {24, -2.0, 0.5, true},
        {25, 1.0, kNaN, false},   {30, -1.0, kInf, false},   {33, 0.5, 1074.0, false},
    };
    constexpr int n = 35;
    double x[n], y[n], r[n];
    for (int i = 0; i < n; ++i) x[i] = kPlainX[i % 8] * (1 + i / 8), y[i] = kPlainY[(i * 5) % 8];
    std::vector<std::pair<int32_t, int32_t>> want;
    for (const auto& s : special) {
        x[s.at] = s.x, y[s.at] = s.y;
        if (s.reported) want.emplace_back(ZVL_STATUS_ERRDOM, s.at);
    }
    Reports reports;
    pow()(n, x, y, r);
    EXPECT_EQ(reports.list(), want);
    for (int i = 0; i < n; ++i) {
        double alone;
        pow()(1, &x[i], &y[i], &alone);
        EXPECT_EQ(bits(r[i]), bits(alone)) << hex(x[i]) << " ^ " << hex(y[i]) << " at " << i;
    }
}

// A callback's replacement is what stays in r[i], in a block and in the
// remainder, and the neighbours are untouched.
TEST_P(PowKernel, CallbackReplacementSurvives) {
    double x[11], y[11], want[11], r[11];
    std::copy(kPlainX, kPlainX + 8, x);
    std::copy(kPlainY, kPlainY + 8, y);
    x[8] = 1.5, y[8] = 2.0;
    x[9] = -0.0, y[9] = -3.0;  // reported, in the remainder
    x[10] = 4.0, y[10] = 0.5;
    x[3] = -8.0, y[3] = 0.5;  // reported, in the first block
    pow()(11, x, y, want);
    Reports reports(true, 42.0);
    pow()(11, x, y, r);
    for (int i = 0; i < 11; ++i)
        EXPECT_EQ(bits(r[i]), bits(i == 3 || i == 9 ? 42.0 : want[i])) << i;
    EXPECT_EQ(reports.list(), (std::vector<std::pair<int32_t, int32_t>>{{1, 3}, {1, 9}}));
}

// The output may be either input.
TEST_P(PowKernel, InPlace) {
    std::vector<double> x, y;
    for (int i = 0; i < 21; ++i) {
        x.push_back(kPlainX[i % 8] * (1 + i / 8));
        y.push_back(kPlainY[(i * 3) % 8]);
    }
    x[4] = -2.0;  // a special lane in the first block
    std::vector<double> want(x.size()), a = x, b = y;
    const int32_t n = static_cast<int32_t>(x.size());
    pow()(n, x.data(), y.data(), want.data());
    pow()(n, a.data(), y.data(), a.data());
    pow()(n, x.data(), b.data(), b.data());
    for (int i = 0; i < n; ++i) {
        EXPECT_EQ(bits(a[i]), bits(want[i])) << i;
        EXPECT_EQ(bits(b[i]), bits(want[i])) << i;
    }
    std::vector<double> c = x, wantx(x.size());
    powx()(n, x.data(), -1.5, wantx.data());
    powx()(n, c.data(), -1.5, c.data());
    for (int i = 0; i < n; ++i) EXPECT_EQ(bits(c[i]), bits(wantx[i])) << i;
}

// n below the block width and n not a multiple of it: the remainder gives
// the block's results, nothing beyond n is written.
TEST_P(PowKernel, RemainderAndBounds) {
    double x[16], y[16], whole[16];
    for (int i = 0; i < 16; ++i) x[i] = kPlainX[i % 8] + i, y[i] = kPlainY[(i + 3) % 8];
    pow()(16, x, y, whole);
    for (int n : {1, 3, 7, 9, 15}) {
        double r[17];
        std::fill(r, r + 17, -7.0);
        pow()(n, x, y, r);
        for (int i = 0; i < n; ++i) {
            // the remainder runs the block formula lane by lane
            EXPECT_EQ(bits(r[i]), bits(whole[i])) << "n " << n << " i " << i;
        }
        for (int i = n; i < 17; ++i) EXPECT_EQ(r[i], -7.0) << "n " << n << " i " << i;
    }
    double r = -7.0;
    pow()(0, x, y, &r);
    pow()(-5, x, y, &r);
    EXPECT_EQ(r, -7.0);
}

// Kernels with the full MXCSR guard compute in round-to-nearest whatever
// the caller set, and give the caller's word back. Powx EP kernels (and Pow
// EP at type 1) give the x87 control word back.
TEST_P(PowKernel, GuardsRestoreTheControlWords) {
    const bool mxcsr_guard =
        (col() == 0 && (cpu() == 5 || cpu() <= 1)) || (col() == 1 && cpu() == 1) || cpu() == 0;
    double x[13], y[13], rn[13], rz[13];
    for (int i = 0; i < 13; ++i) x[i] = kPlainX[i % 8] * 1.37 + i, y[i] = kPlainY[i % 8] * 3.1;
    pow()(13, x, y, rn);

    unsigned saved;
    __asm__ __volatile__("stmxcsr %0" : "=m"(saved));
    const unsigned odd = (saved & ~0xe040u) | 0x6000u | 0x8000u | 0x40u;  // to zero, FTZ, DAZ
    __asm__ __volatile__("ldmxcsr %0" : : "m"(odd));
    pow()(13, x, y, rz);
    unsigned after;
    __asm__ __volatile__("stmxcsr %0" : "=m"(after));
    __asm__ __volatile__("ldmxcsr %0" : : "m"(saved));
    EXPECT_EQ(after & 0xffc0u, odd & 0xffc0u);
    if (mxcsr_guard)
        for (int i = 0; i < 13; ++i) EXPECT_EQ(bits(rz[i]), bits(rn[i])) << i;

    uint16_t cw, cw_odd, cw_after;
    __asm__ __volatile__("fnstcw %0" : "=m"(cw));
    cw_odd = static_cast<uint16_t>((cw & 0xf0ff) | 0x0c00);  // 24 bits, to zero
    __asm__ __volatile__("fldcw %0" : : "m"(cw_odd));
    powx()(13, x, 2.5, rz);
    pow()(13, x, y, rz);
    __asm__ __volatile__("fnstcw %0" : "=m"(cw_after));
    __asm__ __volatile__("fldcw %0" : : "m"(cw));
    EXPECT_EQ(cw_after, cw_odd);
}

// Powx gives the bits of Pow with b in every element, reports included.
TEST_P(PowKernel, PowxIsPowWithOneExponent) {
    std::vector<double> x;
    for (int i = 0; i < 37; ++i) x.push_back(std::ldexp(kPlainX[i % 8], (i * 37) % 200 - 100));
    x[6] = -x[6];
    x[20] = -0.0;
    x[30] = 0.0;
    x[33] = -kInf;
    const int32_t n = static_cast<int32_t>(x.size());
    for (double b : {3.0, -3.0, 2.5, -0.75, 1e-300, 7e15, 1.0 / 3, 0.0, -0.0, 1074.5, -1100.0, 4.0,
                     0.25, -2.0, kInf, -kInf, kNaN}) {
        std::vector<double> bb(x.size(), b), want(x.size()), got(x.size());
        Reports reports;
        pow()(n, x.data(), bb.data(), want.data());
        const auto want_reports = reports.list();
        reports.clear();
        powx()(n, x.data(), b, got.data());
        for (int i = 0; i < n; ++i)
            EXPECT_EQ(bits(got[i]), bits(want[i])) << hex(x[i]) << " ^ " << hex(b);
        EXPECT_EQ(reports.list(), want_reports) << hex(b);
    }
}

// b = 1, 2, 0.5 and -1 take a shorter road: the correctly rounded power,
// and Pow's exact cases and reports on the elements the road refuses.
TEST_P(PowKernel, PowxShortcutsAreExact) {
    std::vector<double> x;
    for (int i = 0; i < 29; ++i)
        x.push_back(std::ldexp(kPlainX[i % 8] + i * 0.01, (i * 71) % 2000 - 1000));
    for (double s : {0.0, -0.0, kInf, -kInf, kNaN, -3.0, 5e-324, -5e-324, 1.0, -1.0})
        x.push_back(s);
    x.push_back(pow_test::from_bits(0x7ff0000000000001));  // signalling NaN
    const int32_t n = static_cast<int32_t>(x.size());
    for (double b : {1.0, 2.0, 0.5, -1.0}) {
        std::vector<double> got(x.size()), want(x.size()), bb(x.size(), b);
        Reports reports;
        powx()(n, x.data(), b, got.data());
        auto got_reports = reports.list();
        reports.clear();
        pow()(n, x.data(), bb.data(), want.data());
        EXPECT_EQ(got_reports, reports.list()) << hex(b);
        for (int i = 0; i < n; ++i) {
            double exact = b == 1.0   ? x[i]
                           : b == 2.0 ? x[i] * x[i]
                           : b == 0.5 ? std::sqrt(x[i])
                                      : 1.0 / x[i];
            const bool special = std::isnan(x[i]) || std::isinf(x[i]) || x[i] == 0.0 ||
                                 (b == 0.5 && std::signbit(x[i]));
            if (special) exact = want[i];  // the exact cases of Pow
            EXPECT_EQ(bits(got[i]), bits(exact)) << hex(x[i]) << " ^ " << hex(b);
        }
    }
}

POW_FOR_EACH_KERNEL(PowKernel);

}  // namespace
