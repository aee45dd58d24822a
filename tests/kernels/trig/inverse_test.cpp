// The kernels of Atan, Atan2, Asin and Acos in every cell, on what the
// contract and directed tests leave out: Atan stays monotonic and odd where
// its reduction changes centre; Atan2 stays monotonic where its callout
// changes path and keeps denormal quotients; Asin and Acos stay monotonic
// and symmetric where the square root's path starts and near 1, and raise
// the invalid flag for an argument beyond +-1, and only then.
#include <gtest/gtest.h>

#include <cfenv>
#include <cmath>
#include <string>
#include <vector>

#include "frame/kernel_sets.h"
#include "tests/common/rows.h"

namespace zvl_test {
namespace {

constexpr double kInfinity = HUGE_VAL;

// Calls f(kernel, label) for every slot of the row on a cpu type this
// processor runs.
template <class F>
void each_slot(const Row& r, F f) {
    for (int cpu = 0; cpu < kCpuTypes; ++cpu)
        for (int col = 0; col < 3; ++col)
            if (cpu_runs(cpu)) f(r.kernel(cpu, col), slot_label({&r, cpu, col}));
}

std::vector<double> atan2_of(const Kernel& k, const std::vector<double>& y, const std::vector<double>& x) {
    std::vector<double> r(y.size());
    k(static_cast<int>(y.size()), y.data(), x.data(), r.data(), nullptr);
    return r;
}

// The 64 doubles on either side of each point where Atan's reductions
// change centre (7/16, 11/16, 19/16, 39/16) and of 1: the centre and the
// rounded denominator change there, and the HA result must not step back
// (LA and EP, a few ulp or 2^-26 off, may). Every eighth element is a
// zero, which the kernels refuse: the blocks around it run one element at
// a time, and must agree with the blocks that do not. -x gives -atan(x) to
// the bit.
TEST(Atan, MonotonicAndOddWhereTheReductionChanges) {
    const Row& r = row("VDATAN");
    std::vector<double> x;
    for (double b : {0.4375, 0.6875, 1.0, 1.1875, 2.4375}) {
        double v = b;
        for (int i = 0; i < 64; ++i) v = std::nextafter(v, 0.0);
        for (int i = 0; i < 128; ++i, v = std::nextafter(v, kInfinity)) x.push_back(v);
    }
    std::vector<double> mixed = x, minus(x.size());
    for (size_t i = 3; i < mixed.size(); i += 8) mixed[i] = 0.0;
    for (size_t i = 0; i < x.size(); ++i) minus[i] = -x[i];
    each_slot(r, [&](const Kernel& k, const std::string& where) {
        const bool ha = where.find("_HA") != std::string::npos;
        std::vector<double> up(x.size()), down(x.size()), alone(x.size());
        k(static_cast<int>(x.size()), x.data(), nullptr, up.data(), nullptr);
        k(static_cast<int>(x.size()), minus.data(), nullptr, down.data(), nullptr);
        k(static_cast<int>(x.size()), mixed.data(), nullptr, alone.data(), nullptr);
        for (size_t i = 0; i < x.size(); ++i) {
            if (ha && i % 128 != 0) EXPECT_LE(up[i - 1], up[i]) << where << " at x = " << x[i];
            EXPECT_EQ(-up[i], down[i]) << where << " at x = " << x[i];
            if (mixed[i] != 0.0) EXPECT_EQ(up[i], alone[i]) << where << " at x = " << x[i];
        }
    });
}

// y / x from 2^50 to 2^80 by steps of 1/64 of a binade, and its reciprocal:
// through the vector forms' quotients, the callout's paths at exponent
// differences 54 and 74 and the one below -53. The angle rises with y / x
// for x > 0 and falls towards pi/2 for x < 0, never past pi/2.
TEST(Atan2, MonotonicWhereTheCalloutChangesPath) {
    const Row& r = row("VDATAN2");
    std::vector<double> q;
    for (int k = 50 * 64; k <= 80 * 64; ++k) q.push_back(std::exp2(k / 64.0));
    const std::vector<double> one(q.size(), 1.0), minus_one(q.size(), -1.0);
    const double half_pi = 0x1.921fb54442d18p+0;
    each_slot(r, [&](const Kernel& k, const std::string& where) {
        const std::vector<double> up = atan2_of(k, q, one), down = atan2_of(k, q, minus_one);
        const std::vector<double> small = atan2_of(k, one, q);
        for (size_t i = 1; i < q.size(); ++i) {
            EXPECT_LE(up[i - 1], up[i]) << where << " at y = " << q[i];
            EXPECT_GE(down[i - 1], down[i]) << where << " at y = " << q[i];
            EXPECT_GE(small[i - 1], small[i]) << where << " at x = " << q[i];
        }
        EXPECT_LE(up.back(), half_pi) << where;
        EXPECT_GE(down.back(), half_pi) << where;
        EXPECT_EQ(up.back(), half_pi) << where;  // 2^80: past 2^74, pi/2 itself
    });
}

// A denormal y over x in [1, 2) gives y / x rounded, never 0 (atan(q) is q
// to the last bit there); a pair of denormals gives an ordinary angle.
TEST(Atan2, DenormalQuotientsKeepTheirValue) {
    const Row& r = row("VDATAN2");
    std::vector<double> y, x, want;
    for (int i = 0; i < 37; ++i) {
        const double yi = std::ldexp(static_cast<double>(i % 5 + 1), -1074 + i);
        const double xi = 1.0 + i / 37.0;
        y.push_back(i % 2 ? -yi : yi);
        x.push_back(xi);
        want.push_back(y.back() / xi);
    }
    y.push_back(3 * 0x1p-1074);
    x.push_back(4 * 0x1p-1074);
    want.push_back(0x1.4978fa3269ee1p-1);  // atan(3/4)
    each_slot(r, [&](const Kernel& k, const std::string& where) {
        const std::vector<double> got = atan2_of(k, y, x);
        for (size_t i = 0; i < y.size(); ++i) {
            EXPECT_NE(got[i], 0.0) << where << " element " << i;
            if (i + 1 < y.size()) EXPECT_TRUE(same(got[i], want[i])) << where << " element " << i;
        }
        EXPECT_NEAR(got.back(), want.back(), 0x1p-50) << where;
    });
}

bool invalid_after(const Kernel& k, const std::vector<double>& a) {
    std::vector<double> r(a.size());
    std::feclearexcept(FE_ALL_EXCEPT);
    k(static_cast<int>(a.size()), a.data(), nullptr, r.data(), nullptr);
    return std::fetestexcept(FE_INVALID) != 0;
}

// An argument beyond +-1 anywhere in the array raises the invalid flag,
// whether the block or the remainder takes it; arguments inside (-1, 1),
// 0.5 and its neighbours among them, raise nothing.
// The 64 doubles on either side of 1/2, where z turns from x^2 to
// (1 - |x|)/2 and the result takes the square root's two parts, and the 128
// below 1, where (1 - |x|)/2 is a few ulps and the low part of its root
// matters most. The HA results must not step (Asin up, Acos down), -x
// gives -asin(x) to the bit in every mode, and acos(x) + acos(-x) is pi to
// an ulp of pi in HA (pi - 2q and 2q, or pi/2 - x and pi/2 + x).
TEST(AsinAcos, MonotonicAndSymmetricWhereTheRootStarts) {
    std::vector<double> x;
    double v = 0.5;
    for (int i = 0; i < 64; ++i) v = std::nextafter(v, 0.0);
    for (int i = 0; i < 128; ++i, v = std::nextafter(v, 1.0)) x.push_back(v);
    v = 1.0;
    for (int i = 0; i < 128; ++i) v = std::nextafter(v, 0.0);
    for (int i = 0; i < 128; ++i, v = std::nextafter(v, 1.0)) x.push_back(v);
    std::vector<double> minus(x.size());
    for (size_t i = 0; i < x.size(); ++i) minus[i] = -x[i];
    const double pi = 3.141592653589793, ulp_pi = std::nextafter(pi, 4.0) - pi;
    for (const char* name : {"VDASIN", "VDACOS"}) {
        const bool acos = std::string(name) == "VDACOS";
        each_slot(row(name), [&](const Kernel& k, const std::string& where) {
            const bool ha = where.find("_HA") != std::string::npos;
            std::vector<double> up(x.size()), down(x.size());
            k(static_cast<int>(x.size()), x.data(), nullptr, up.data(), nullptr);
            k(static_cast<int>(minus.size()), minus.data(), nullptr, down.data(), nullptr);
            for (size_t i = 0; i < x.size(); ++i) {
                if (ha && i % 128 != 0) {
                    if (acos) EXPECT_GE(up[i - 1], up[i]) << where << " at x = " << x[i];
                    else EXPECT_LE(up[i - 1], up[i]) << where << " at x = " << x[i];
                }
                if (!acos) EXPECT_EQ(-up[i], down[i]) << where << " at x = " << x[i];
                if (acos && ha) EXPECT_LE(std::fabs(up[i] + down[i] - pi), ulp_pi) << where << " at x = " << x[i];
            }
        });
    }
}

TEST(AsinAcos, InvalidFlagJustForArgumentsBeyondOne) {
    for (const char* name : {"VDASIN", "VDACOS"}) {
        const Row& r = row(name);
        ReportLog log;
        each_slot(r, [&](const Kernel& k, const std::string& where) {
            Args x = ordinary(r, 11, 7);
            x.a[1] = 0.5;
            x.a[2] = std::nextafter(0.5, 1.0);
            x.a[3] = -std::nextafter(0.5, 0.0);
            x.a[4] = -std::nextafter(1.0, 0.0);
            x.a[5] = 0x1p-1070;
            EXPECT_FALSE(invalid_after(k, x.a)) << where;
            for (int at : {2, 6, 10}) {  // first block, second block, remainder
                std::vector<double> a = x.a;
                a[at] = at == 6 ? -kInfinity : 1.0000000000000002;
                EXPECT_TRUE(invalid_after(k, a)) << where << " element " << at;
            }
        });
    }
}

}  // namespace
}  // namespace zvl_test
