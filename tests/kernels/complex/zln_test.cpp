// Complex Ln and Log10: the special values and signs of zeros of every
// slot, the elements the band sends to the scalar routine, |z| near 1 where
// the real part is a small difference, and the kernels' independence from
// their neighbours in a block.
#include <gtest/gtest.h>

#include <cfenv>
#include <cmath>
#include <cstdint>
#include <vector>

#include "base/cpu_type.h"
#include "frame/kernel_sets.h"
#include "tests/common/rows.h"
#include "tests/kernels/complex/zslots.h"

namespace zvl_test {
namespace {

constexpr double kInf = INFINITY, kNaN = NAN, kPi = 3.141592653589793;
// log10(e) pi/2 and its multiples, rounded once from the extended values
const double kC = static_cast<double>(0.6821881769209206737428918127156540L);
const double k2C = static_cast<double>(2 * 0.6821881769209206737428918127156540L);
const double kHalfC = static_cast<double>(0.5L * 0.6821881769209206737428918127156540L);
const double k3HalfC = static_cast<double>(1.5L * 0.6821881769209206737428918127156540L);

TEST(ZLn, SpecialValues) {
    expect_cases(zvl::kernels_VZLN, "ln",
                 {{{0.0, 0.0}, {-kInf, 0.0}},
                  {{0.0, -0.0}, {-kInf, -0.0}},
                  {{-0.0, 0.0}, {-kInf, kPi}},
                  {{-0.0, -0.0}, {-kInf, -kPi}},
                  {{1.0, 0.0}, {0.0, 0.0}},
                  {{-1.0, 0.0}, {0.0, kPi}},
                  {{-1.0, -0.0}, {0.0, -kPi}},
                  {{kNaN, kInf}, {kInf, kNaN}},
                  {{kNaN, 1.0}, {kNaN, kNaN}},
                  {{-kInf, kNaN}, {kInf, kNaN}},
                  {{2.0, kNaN}, {kNaN, kNaN}},
                  {{kInf, -1.0}, {kInf, -0.0}},
                  {{-kInf, 1.0}, {kInf, kPi}},
                  {{3.0, -kInf}, {kInf, -kPi / 2}},
                  {{kInf, kInf}, {kInf, kPi / 4}},
                  {{-kInf, -kInf}, {kInf, -3 * kPi / 4}},
                  {{0.0, 1.0}, {0.0, kPi / 2}},
                  {{-1e-310, 0.0}, {std::log(1e-310), kPi}}});
}

TEST(ZLog10, SpecialValues) {
    expect_cases(zvl::kernels_VZLOG10, "log10",
                 {{{0.0, 0.0}, {-kInf, 0.0}},
                  {{0.0, -0.0}, {-kInf, -0.0}},
                  {{-0.0, 0.0}, {-kInf, k2C}},
                  {{-0.0, -0.0}, {-kInf, -k2C}},
                  {{1.0, 0.0}, {0.0, 0.0}},
                  {{kNaN, -kInf}, {kInf, kNaN}},
                  {{kNaN, 0.0}, {kNaN, kNaN}},
                  {{kInf, kNaN}, {kInf, kNaN}},
                  {{1.0, kNaN}, {kNaN, kNaN}},
                  {{1.0, kInf}, {kInf, kC}},
                  {{-1.0, -kInf}, {kInf, -kC}},
                  {{kInf, kInf}, {kInf, kHalfC}},
                  {{kInf, -kInf}, {kInf, -kHalfC}},
                  {{-kInf, kInf}, {kInf, k3HalfC}},
                  {{kInf, -2.0}, {kInf, -0.0}},
                  {{-kInf, 2.0}, {kInf, k2C}},
                  {{-kInf, -0.0}, {kInf, -k2C}},
                  {{100.0, 0.0}, {2.0, 0.0}}});
}

// The zeros of Log10 raise no divide-by-zero (the angle 2C is inexact);
// Ln's do.
TEST(ZLog10, ZerosRaiseNoFlag) {
    const uint32_t cpu = zvl::cpu_type();
    for (const Z z : {Z{0.0, 0.0}, Z{-0.0, -0.0}}) {
        Z r;
        std::feclearexcept(FE_ALL_EXCEPT);
        zvl::kernels_VZLOG10.k[cpu][zvl::kHA](1, &z, &r);
        EXPECT_EQ(std::fetestexcept(FE_ALL_EXCEPT & ~FE_INEXACT), 0);
        zvl::kernels_VZLN.k[cpu][zvl::kHA](1, &z, &r);
        EXPECT_NE(std::fetestexcept(FE_DIVBYZERO), 0);
    }
}

// Both parts within their ulp budget of the extended reference, or, where
// the real part is a small difference (|z| near 1), normwise within the
// mode's reach. LA: 4 ulp; EP: 2^-26 of |ln z|.
void expect_close(const Z& got, long double re, long double im, int col, const char* what) {
    const long double norm = std::hypot(re, im);
    const long double err = std::hypot(got.real - re, got.imag - im);
    if (col == zvl::kEP) {
        EXPECT_LE(err, 0x1p-26 * norm) << what;
        return;
    }
    const double budget = col == zvl::kHA ? 1.0 : 4.0;
    const double part[2] = {got.real, got.imag};
    const long double want[2] = {re, im};
    for (int k = 0; k < 2; ++k) {
        const double w = static_cast<double>(want[k]);
        const double ulp = std::fabs(std::nextafter(w, kInf) - w);
        const bool small = std::fabs(want[k]) < 1e-3L * norm;
        if (small)
            EXPECT_LE(std::fabs(part[k] - want[k]), 0x1p-52 * budget * norm) << what << " part " << k;
        else
            EXPECT_LE(std::fabs(part[k] - want[k]), budget * ulp) << what << " part " << k;
    }
}

#ifndef _WIN32
// Elements on either side of the band and around |z| = 1: z = 0.6 + 0.8i
// has |z|^2 = 1 + 2^-54 or so in doubles, and its real part is that tiny
// difference, not 0; 1e300 + i and parts near 2^+-500 take the scalar
// routine or the vector path, and both agree with the reference.
TEST(ZLn, BandAndNearUnit) {
    const Z points[] = {{0.6, 0.8},           {0.8, -0.6},       {1e300, 1.0},
                        {0x1p500, 1.0},       {0x1.fffffffffffffp499, 1.0},
                        {0x1p-500, -3.0},     {0x1.fffffffffffffp-501, 3.0},
                        {-0.7071067811865476, 0.7071067811865475},
                        {1.0, 1e-200},        {0.9999999999, 1e-5}};
    // x^2 as an exact pair of extended values (a double's square has 106 bits)
    auto square = [](long double a, long double& hi, long double& lo) {
        hi = a * a;
        const long double c = a * 4294967297.0L, ah = c - (c - a), al = a - ah;
        lo = ((ah * ah - hi) + 2 * ah * al) + al * al;
    };
    for (const Z& p : points) {
        long double xh, xl, yh, yl;
        square(p.real, xh, xl);
        square(p.imag, yh, yl);
        const long double s = xh + yh, t = (xh - 1.0L) + yh + (xl + yl);
        const long double re = std::fabs(s - 1.0L) < 0.5L ? 0.5L * std::log1p(t) : 0.5L * std::log(s + (xl + yl));
        const long double im = std::atan2(static_cast<long double>(p.imag), static_cast<long double>(p.real));
        every_slot(zvl::kernels_VZLN, p, [&](const Z& got, int, int col) { expect_close(got, re, im, col, "ln"); });
    }
    // the tiny real part of ln(0.6 + 0.8i), to its last bits
    every_slot(zvl::kernels_VZLN, Z{0.6, 0.8}, [&](const Z& got, int, int col) {
        if (col != zvl::kEP) EXPECT_NE(got.real, 0.0);
    });
}
#endif

// The angle across the intervals of |y|/|x| that the vector kernels reduce
// by (edges 7/16, 11/16, 19/16 and 39/16, centres 1/2, 1 and 3/2), and at
// ratios just beside them, with x of a full significand so that every
// product in the reduction has low bits to lose: within a part's budget
// of the extended atan2 in every mode (EP: 2^-26 of |ln z|).
TEST(ZLn, AngleOnEveryInterval) {
    const double ratios[] = {1e-9, 0.1, 0.3, 0.4375, 0.45, 0.5, 0.6, 0.6875, 0.8, 1.0, 1.1, 1.1875,
                             1.3,  1.5, 2.0, 2.4375, 2.5, 4.0, 30.0, 1e9};
    std::vector<Z> a;
    uint64_t state = 12345;
    for (const double q : ratios)
        for (const double step : {-0x1p-40, -0x1p-12, 0.0, 0x1p-30, 0x1p-8})
            for (int i = 0; i < 12; ++i) {
                state = state * 6364136223846793005u + 1442695040888963407u;
                const double x = std::ldexp(1.0 + static_cast<double>(state >> 11) * 0x1p-53, i % 5 - 2);
                const double y = x * q * (1.0 + step);
                a.push_back(Z{i % 2 ? -x : x, i % 3 ? y : -y});
            }
    const int n = static_cast<int>(a.size());
    for (int cpu = 0; cpu < kCpuTypes; ++cpu) {
        if (!cpu_runs(cpu)) continue;
        for (int col = 0; col < 3; ++col) {
            std::vector<Z> r(n);
            zvl::kernels_VZLN.k[cpu][col](n, a.data(), r.data());
            for (int i = 0; i < n; ++i) {
                const long double x = a[i].real, y = a[i].imag, im = std::atan2(y, x);
                const double w = static_cast<double>(im);
                const long double err = std::fabs(r[i].imag - im);
                const long double bound = col == zvl::kEP ? 0x1p-26L * std::hypot(0.5L * std::log(x * x + y * y), im)
                                                          : (col == zvl::kHA ? 1.0L : 4.0L) *
                                                                std::fabs(std::nextafter(w, kInf) - w);
                EXPECT_LE(err, bound) << "atan2(" << a[i].imag << ", " << a[i].real << ") at cpu " << cpu
                                      << " column " << col;
            }
        }
    }
}

// A NaN, an infinity or a zero anywhere in a block leaves the other lanes
// as they are without it.
TEST(ZLn, OddElementLeavesTheBlockAlone) {
    for (int cpu = 0; cpu < kCpuTypes; ++cpu) {
        if (!cpu_runs(cpu)) continue;
        for (int col = 0; col < 3; ++col) {
            std::vector<Z> a(19), plain(19);
            for (int i = 0; i < 19; ++i) a[i] = Z{0.3 + 0.21 * i, (i % 3 - 1) * (1.1 + 0.05 * i)};
            zvl::kernels_VZLN.k[cpu][col](19, a.data(), plain.data());
            for (const Z odd : {Z{kNaN, 1.0}, Z{0.0, 0.0}, Z{-kInf, 2.0}, Z{1e-320, 1e300}})
                for (int p = 0; p < 19; p += 3) {
                    std::vector<Z> b = a, r(19);
                    b[p] = odd;
                    zvl::kernels_VZLN.k[cpu][col](19, b.data(), r.data());
                    for (int i = 0; i < 19; ++i)
                        if (i != p)
                            EXPECT_TRUE(same(r[i].real, plain[i].real) && same(r[i].imag, plain[i].imag))
                                << "cpu " << cpu << " column " << col << " odd at " << p << ", element " << i;
                }
        }
    }
}

// A block whose lanes take both paths raises no flag the elements alone
// would not: a lane far from |z| = 1 must not run the near path's square.
TEST(ZLn, MixedBlockRaisesNoOverflow) {
    for (int cpu = 0; cpu < kCpuTypes; ++cpu) {
        if (!cpu_runs(cpu)) continue;
        for (int col = 0; col < 3; ++col) {
            std::vector<Z> a(16, Z{1.5, 1.5}), r(16);
            for (int k = 0; k < 16; k += 2) {
                a[k] = Z{1e-148, -1.0294};  // near |z| = 1
                a[k + 1] = Z{-0x1.13a8cded53471p+339, -1.7};
            }
            std::feclearexcept(FE_ALL_EXCEPT);
            zvl::kernels_VZLN.k[cpu][col](16, a.data(), r.data());
            EXPECT_EQ(std::fetestexcept(FE_OVERFLOW | FE_INVALID | FE_DIVBYZERO), 0)
                << "cpu " << cpu << " column " << col;
        }
    }
}

}  // namespace
}  // namespace zvl_test
