// The error-function bodies on directed cases: special values, thresholds
// and statuses as bit patterns, the same through every wrapper; lanes of one
// block that do not disturb each other; and every wrapper giving the Scalar
// wrapper's bits on ordinary arguments.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <random>
#include <vector>

#include "kernels/erf/erfc/data.h"
#include "tests/common/capture.h"
#include "tests/kernels/erf/bodies.h"
#include "zvl.h"

namespace zvl_test {
namespace {

bool runnable(const ErfWrapper& w) { return !w.needs_avx || __builtin_cpu_supports("avx"); }

constexpr uint64_t kAnyNaN = 0x7ff8dead0000beef;  // expected: some NaN
constexpr unsigned kAll = 7, kHA = 1, kHALA = 3;  // modes a row holds for

struct Row {
    int family;  // 0 Erf, 1 Erfc, 2 ErfInv
    unsigned modes;
    uint64_t x, want;
    int32_t status;
    const char* what;
};

const Row kRows[] = {
    {0, kAll, 0x7ff0000000000000, 0x3ff0000000000000, 0, "erf(+inf) = 1"},
    {0, kAll, 0xfff0000000000000, 0xbff0000000000000, 0, "erf(-inf) = -1"},
    {0, kAll, 0x7ff0000000000001, 0x7ff0000000000001, 0, "a signalling NaN keeps its bits"},
    {0, kAll, 0xfff8000000000123, 0xfff8000000000123, 0, "a quiet NaN keeps its bits"},
    {0, kAll, 0x0000000000000000, 0x0000000000000000, 0, "+0"},
    {0, kAll, 0x8000000000000000, 0x8000000000000000, 0, "-0"},
    {0, kAll, 0x4018000000000000, 0x3ff0000000000000, 0, "erf(6) = 1"},
    {0, kAll, 0xc018000000000000, 0xbff0000000000000, 0, "erf(-6) = -1"},
    {0, kHALA, 0x4017cccccccccccd, 0x3ff0000000000000, 0, "erf(5.95) rounds to 1"},
    {0, kAll, 0x7fefffffffffffff, 0x3ff0000000000000, 0, "the largest double"},
    {0, kAll, 0xffefffffffffffff, 0xbff0000000000000, 0, "the largest negative double"},
    {0, kAll, 0x0000000000000001, 0x0000000000000001, 0, "2/sqrt(pi) * 2^-1074 rounds to 2^-1074"},
    {0, kAll, 0x8000000000000001, 0x8000000000000001, 0, "and keeps its sign"},

    {1, kAll, 0x0000000000000000, 0x3ff0000000000000, 0, "erfc(+0) = 1"},
    {1, kAll, 0x8000000000000000, 0x3ff0000000000000, 0, "erfc(-0) = 1"},
    {1, kAll, 0x3c30000000000000, 0x3ff0000000000000, 0, "erfc(2^-60) = 1"},
    {1, kAll, 0xbc30000000000000, 0x3ff0000000000000, 0, "erfc(-2^-60) = 1"},
    {1, kAll, 0x403b3ae147ae147b, 0x0000000000000000, ZVL_STATUS_UNDERFLOW, "27.23 underflows"},
    {1, kAll, 0x403b39dc41e48bfd, 0x0000000000000000, ZVL_STATUS_UNDERFLOW,
     "just above the underflow bound"},
    {1, kAll, 0x403c000000000000, 0x0000000000000000, ZVL_STATUS_UNDERFLOW, "28 underflows"},
    {1, kAll, 0x7fefffffffffffff, 0x0000000000000000, ZVL_STATUS_UNDERFLOW,
     "the largest double underflows"},
    {1, kAll, 0x7ff0000000000000, 0x0000000000000000, 0, "+inf gives 0 silently"},
    {1, kAll, 0xc03e000000000000, 0x4000000000000000, 0, "erfc(-30) = 2"},
    {1, kAll, 0xc03b39dc00000000, 0x4000000000000000, 0, "erfc(-27.22601318359375) = 2"},
    {1, kAll, 0xc024000000000000, 0x4000000000000000, 0, "erfc(-10) rounds to 2"},
    {1, kAll, 0xfff0000000000000, 0x4000000000000000, 0, "erfc(-inf) = 2"},
    {1, kAll, 0x7ff8000000000000, 0x7ff8000000000000, 0, "a quiet NaN"},
    {1, kAll, 0x7ff0000000000001, 0x7ff8000000000001, 0, "a signalling NaN comes back quiet"},
    {1, kAll, 0x403b39dc41e48bfc, 0x0000000000000001, 0,
     "the bound itself rounds up to 2^-1074, silently"},
    {1, kHA, 0x403b000000000000, 0x0000000000019e0f, 0, "erfc(27) is subnormal, silently"},

    {2, kAll, 0x0000000000000000, 0x0000000000000000, 0, "+0 unchanged"},
    {2, kAll, 0x8000000000000000, 0x8000000000000000, 0, "-0 unchanged"},
    {2, kAll, 0x3ff0000000000000, 0x7ff0000000000000, ZVL_STATUS_SING, "erfinv(1) = +inf"},
    {2, kAll, 0xbff0000000000000, 0xfff0000000000000, ZVL_STATUS_SING, "erfinv(-1) = -inf"},
    {2, kAll, 0x3ff0000000000001, kAnyNaN, ZVL_STATUS_ERRDOM, "just above 1"},
    {2, kAll, 0xbff0000000000001, kAnyNaN, ZVL_STATUS_ERRDOM, "just below -1"},
    {2, kAll, 0x4000000000000000, kAnyNaN, ZVL_STATUS_ERRDOM, "2"},
    {2, kAll, 0x7ff0000000000000, kAnyNaN, ZVL_STATUS_ERRDOM, "+inf"},
    {2, kAll, 0xfff0000000000000, kAnyNaN, ZVL_STATUS_ERRDOM, "-inf"},
    {2, kAll, 0x7ff8000000000000, 0x7ff8000000000000, 0, "a quiet NaN"},
    {2, kAll, 0x7ff0000000000001, 0x7ff8000000000001, 0, "a signalling NaN comes back quiet"},
    {2, kAll, 0x0000000000000001, 0x0000000000000001, 0, "the smallest subnormal"},
    {2, kAll, 0x8000000000000001, 0x8000000000000001, 0, "and its negative"},
};

TEST(ErfDirected, SpecialValuesThresholdsAndStatuses) {
    for (const ErfWrapper& w : kErfWrappers) {
        if (!runnable(w)) continue;
        for (const Row& row : kRows) {
            for (int mode = 0; mode < 3; ++mode) {
                if (!(row.modes >> mode & 1)) continue;
                const auto body = static_cast<ErfBody>(3 * row.family + mode);
                // the case in every lane position of a block and in the remainder
                std::vector<double> a(9, from_bits(row.x)), r(9);
                std::vector<int32_t> st(9);
                w.run(body, 9, a.data(), r.data(), st.data());
                for (int i = 0; i < 9; ++i) {
                    SCOPED_TRACE(testing::Message() << w.name << ' ' << erf_body_name(body) << ", "
                                                    << row.what << ", element " << i);
                    if (row.want == kAnyNaN)
                        EXPECT_TRUE(std::isnan(r[i]));
                    else
                        EXPECT_EQ(bits_of(r[i]), row.want) << std::hexfloat << r[i];
                    EXPECT_EQ(st[i], row.status);
                }
            }
        }
    }
}

// Special lanes force their x and table entry to harmless values: the
// ordinary lanes beside them come out as they do alone, and the statuses
// stand at their elements.
TEST(ErfDirected, SpecialLanesLeaveTheirNeighboursAlone) {
    const double mixed[] = {0.5,  1.0,  -0.3, 2.0,   0.1,        NAN,   -1.0, 1e-300,
                            27.5, -0.7, 30.0, 0.999, 0x1p-1074, -29.0, 0.25, INFINITY};
    const int n = sizeof mixed / sizeof mixed[0];
    for (const ErfWrapper& w : kErfWrappers) {
        if (!runnable(w)) continue;
        for (int b = 0; b < kErfBodies; ++b) {
            const auto body = static_cast<ErfBody>(b);
            double r[n];
            int32_t st[n];
            w.run(body, n, mixed, r, st);
            for (int i = 0; i < n; ++i) {
                double r1;
                int32_t st1;
                erf_run_scalar(body, 1, &mixed[i], &r1, &st1);
                EXPECT_EQ(bits_of(r[i]), bits_of(r1))
                    << w.name << ' ' << erf_body_name(body) << " at " << mixed[i];
                EXPECT_EQ(st[i], st1) << w.name << ' ' << erf_body_name(body) << " at " << mixed[i];
            }
        }
    }
}

// The same formula with the same constants: every wrapper gives the Scalar
// wrapper's bits (a wrapper op that rounded differently would show here).
TEST(ErfDirected, WrappersAgreeBitForBit) {
    std::mt19937_64 g(15);
    std::vector<double> a(4003);
    for (size_t i = 0; i < a.size(); ++i) {
        const double u = std::ldexp(static_cast<double>(g() >> 11), -53);
        switch (i % 4) {
            case 0: a[i] = 60.0 * u - 30.0; break;                           // Erf, Erfc
            case 1: a[i] = 2.0 * u - 1.0; break;                             // ErfInv
            case 2: a[i] = std::ldexp(1.0 + u, -static_cast<int>(g() % 1070)); break;
            default: a[i] = 1.0 - std::ldexp(1.0 + u, -static_cast<int>(g() % 54)); break;
        }
    }
    std::vector<double> want(a.size()), got(a.size());
    std::vector<int32_t> st(a.size());
    for (int b = 0; b < kErfBodies; ++b) {
        const auto body = static_cast<ErfBody>(b);
        erf_run_scalar(body, static_cast<int>(a.size()), a.data(), want.data(), st.data());
        for (const ErfWrapper& w : kErfWrappers) {
            if (!runnable(w)) continue;
            w.run(body, static_cast<int>(a.size()), a.data(), got.data(), st.data());
            for (size_t i = 0; i < a.size(); ++i)
                ASSERT_EQ(bits_of(got[i]), bits_of(want[i]))
                    << w.name << ' ' << erf_body_name(body) << " at " << std::hexfloat << a[i];
        }
    }
}

// A block whose lanes are all ordinary skips the classes and the
// replacements: its results are the bits the full path gives the same
// arguments beside a NaN, and the Scalar wrapper's, which always takes the
// full path. Ordinary here: Erf's main path up to 2^500 and Erfc's product
// below 26.54, both signs.
TEST(ErfDirected, OrdinaryBlocksTakeTheFullPathsBits) {
    std::mt19937_64 g(27);
    const int n = 4096;
    std::vector<double> erf_args(n), erfc_args(n);
    for (int i = 0; i < n; ++i) {
        const double u = std::ldexp(static_cast<double>(g() >> 11), -53);
        const double sign = i % 2 ? -1.0 : 1.0;
        erf_args[i] = i % 8 == 7 ? sign * std::ldexp(1.0 + u, -static_cast<int>(g() % 1015))
                      : i % 8 == 5 ? sign * std::ldexp(1.0 + u, static_cast<int>(g() % 499))
                                   : sign * 6.5 * u;
        erfc_args[i] = i % 8 == 7 ? sign * std::ldexp(1.0 + u, -static_cast<int>(g() % 55))
                                  : sign * 26.5 * u;
    }
    for (int b = kErfHA; b <= kErfcEP; ++b) {
        const auto body = static_cast<ErfBody>(b);
        std::vector<double> a = b <= kErfEP ? erf_args : erfc_args, mixed = a;
        for (int i = 3; i < n; i += 8) mixed[i] = NAN;
        std::vector<double> want(n), got(n), got_mixed(n);
        std::vector<int32_t> st(n);
        erf_run_scalar(body, n, a.data(), want.data(), st.data());
        for (const ErfWrapper& w : kErfWrappers) {
            if (!runnable(w)) continue;
            w.run(body, n, a.data(), got.data(), st.data());
            w.run(body, n, mixed.data(), got_mixed.data(), st.data());
            for (int i = 0; i < n; ++i) {
                ASSERT_EQ(bits_of(got[i]), bits_of(want[i]))
                    << w.name << ' ' << erf_body_name(body) << " at " << std::hexfloat << a[i];
                if (i % 8 != 3)
                    ASSERT_EQ(bits_of(got_mixed[i]), bits_of(want[i]))
                        << w.name << ' ' << erf_body_name(body) << " beside a NaN at "
                        << std::hexfloat << a[i];
            }
        }
    }
}

// From 26.54 to the underflow bound erfc is subnormal, rounded from the
// product in one step (HA) and reported nowhere (every mode).
TEST(ErfDirected, ErfcTailBelowTheBoundIsSilent) {
    std::vector<double> a;
    for (double x = 26.5; x <= 27.226017111108362; x += 0.001) a.push_back(x);
    std::vector<double> r(a.size());
    std::vector<int32_t> st(a.size());
    for (int b = kErfcHA; b <= kErfcEP; ++b) {
        erf_run_sse2(static_cast<ErfBody>(b), static_cast<int>(a.size()), a.data(), r.data(),
                     st.data());
        for (size_t i = 0; i < a.size(); ++i) {
            EXPECT_EQ(st[i], 0) << a[i];
            EXPECT_GT(r[i], 0.0) << a[i];
            if (i > 0) EXPECT_LE(r[i], r[i - 1]) << "not falling at " << a[i];
        }
    }
}

// Erfc HA adds L_hi y and then y^2 Q(y) to C_hi by fast two-sums, which are
// exact only while each addend's exponent stays at most the sum's so far:
// every interval of the table, to its end, keeps |L y| below C and y^2 Q
// below C + L y.
TEST(ErfDirected, ErfcIntervalsKeepTheFastTwoSumsExact) {
    for (int k = 0; k < 28; ++k) {
        const double* c = zvl::kErfcTable[k];
        const double start = zvl::kErfcStarts[k][0];
        const double end = k == 0 ? 0.25 : k == 27 ? 27.3 : zvl::kErfcStarts[k + 1][0];
        for (int i = 0; i <= 64; ++i) {
            const double y = (end - start) * i / 64;
            double q = c[15];
            for (int m = 14; m >= 4; --m) q = q * y + c[m];
            const double ly = c[3] * y;
            EXPECT_GE(std::ilogb(c[1]), std::ilogb(ly)) << "entry " << k << " y " << y;
            if (ly != 0.0)
                EXPECT_GE(std::ilogb(c[1] + ly), std::ilogb(q * y * y))
                    << "entry " << k << " y " << y;
        }
    }
}

// The kernels take a row's start from the argument, cut to its
// quarter-binade (0 below 0.25), in place of kErfcStarts: the cut of each
// end of every interval is the start the table holds for it.
TEST(ErfDirected, ErfcRowStartsAreTheArgumentsCut) {
    auto cut = [](double w) {
        return w < 0.25 ? 0.0 : from_bits(bits_of(w) & 0xfffc000000000000);
    };
    for (int k = 0; k < 28; ++k) {
        const double start = zvl::kErfcStarts[k][0];
        const double end = k == 0 ? 0.25 : k == 27 ? 27.3 : zvl::kErfcStarts[k + 1][0];
        EXPECT_EQ(bits_of(cut(start)), bits_of(start)) << "entry " << k;
        EXPECT_EQ(bits_of(cut(std::nextafter(end, 0.0))), bits_of(start)) << "entry " << k;
    }
}

}  // namespace
}  // namespace zvl_test
