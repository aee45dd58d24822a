// The vector kernels of Sin, Cos and SinCos in every cell: an infinity
// inside a block reports once, at its own index and under the cell's label,
// and leaves the other lanes as they are without it; the step pi/32 cells
// report under the older callouts' labels, SinCos under "dSinCos_HA" (or
// "dSinCos_LA" at cpu type 1 LA); the short form of cpu type 1 EP reports
// nothing at all. SinCos gives the bits of Sin and Cos where it runs their
// algorithm.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <string>
#include <vector>

#include "frame/kernel_sets.h"
#include "tests/common/rows.h"

namespace zvl_test {
namespace {

constexpr double kInf = HUGE_VAL;

TEST(SinCos, InfinityInsideABlock) {
    for (const char* name : {"VDSIN", "VDCOS", "VDSINCOS"}) {
        const Row& r = row(name);
        for (int cpu = 0; cpu < kCpuTypes; ++cpu)
            for (int col = 0; col < 3; ++col) {
                if (!cpu_runs(cpu)) continue;
                const bool short_form = r.cell(cpu, col).variant == 'E';
                const Kernel k = r.kernel(cpu, col);
                Args x = ordinary(r, 45, 3);
                x.a[3] = 70000.0;  // past every HA bound: to the callout, silently
                const int n = static_cast<int>(x.a.size());
                const bool two = r.shape == Shape::D12;
                std::vector<double> plain(n), got(n), plain2(n), got2(n);
                k(n, x.a.data(), nullptr, plain.data(), two ? plain2.data() : nullptr);
                x.a[21] = -kInf;  // inside the second block of 16, in the first remainder of 4
                ReportLog log;
                k(n, x.a.data(), nullptr, got.data(), two ? got2.data() : nullptr);
                const std::string where = slot_label({&r, cpu, col});
                for (int i = 0; i < n; ++i)
                    if (i != 21) {
                        EXPECT_TRUE(same(got[i], plain[i])) << where << " element " << i;
                        EXPECT_TRUE(same(got2[i], plain2[i])) << where << " element " << i;
                    }
                if (short_form) {
                    for (double g : {got[21], two ? got2[21] : 0.0}) {
                        EXPECT_EQ(g, 0.0) << where;
                        EXPECT_FALSE(std::signbit(g)) << where;
                    }
                    EXPECT_TRUE(log.list().empty()) << where;
                    continue;
                }
                EXPECT_TRUE(std::isnan(got[21])) << where;
                if (two) EXPECT_TRUE(std::isnan(got2[21])) << where;
                ASSERT_EQ(log.list().size(), 1u) << where;
                EXPECT_EQ(log.list()[0].status, ZVL_STATUS_ERRDOM) << where;
                EXPECT_EQ(log.list()[0].index, 21) << where;
                EXPECT_EQ(log.list()[0].name, (Slot{&r, cpu, col}.name())) << where;
            }
    }
}

// Sin, and the sine of SinCos, keep the sign of a zero and give a
// subnormal or a tiny argument back in every cell; the vector sums alone
// would give +0 for -0. Cos, and the cosine of SinCos, are then 1 exactly:
// by pi the sine of the rounded remainder would be 1 - 2^-53.
TEST(SinCos, ZerosAndTinyArguments) {
    const std::vector<double> a = {-0.0, 0.0, -0x1p-1074, 0x1.8p-1060, -0x1p-1022, -0.0, 0.5, -0.0, 0x1p-30};
    for (const char* name : {"VDSIN", "VDCOS", "VDSINCOS"}) {
        const Row& r = row(name);
        const bool sine = r.shape == Shape::D12 || std::string(name) == "VDSIN";
        for (int cpu = 0; cpu < kCpuTypes; ++cpu)
            for (int col = 0; col < 3; ++col) {
                if (!cpu_runs(cpu)) continue;
                std::vector<double> y(a.size()), u(a.size());
                r.kernel(cpu, col)(static_cast<int>(a.size()), a.data(), nullptr, y.data(), u.data());
                const std::vector<double>& cosine = sine ? u : y;
                for (size_t i = 0; i < a.size(); ++i) {
                    if (a[i] == 0.5) continue;
                    if (sine) EXPECT_TRUE(same(y[i], a[i])) << slot_label({&r, cpu, col}) << " " << i;
                    if (!sine || r.shape == Shape::D12)
                        EXPECT_EQ(cosine[i], 1.0) << slot_label({&r, cpu, col}) << " " << i;
                }
            }
    }
}

// Arguments over the vector paths and past them: random over a few
// periods, near the multiples of pi/2 (where the rows and the signs turn),
// and up to the bounds of every cell.
std::vector<double> sincos_arguments() {
    std::vector<double> a;
    uint64_t state = 0x9e3779b97f4a7c15u;
    auto next = [&] {
        state = state * 6364136223846793005u + 1442695040888963407u;
        return static_cast<double>(state >> 11) * 0x1p-53;
    };
    for (int i = 0; i < 2000; ++i) a.push_back((next() - 0.5) * 40.0);
    for (int k = -40; k <= 40; ++k)
        for (double d : {-1e-9, -0x1p-40, 0.0, 0x1p-40, 1e-9})
            a.push_back(k * 1.5707963267948966 + d);
    for (int i = 0; i < 500; ++i) a.push_back(std::ldexp(next(), static_cast<int>(next() * 24)));
    for (double b : {65568.0, 90112.0, 128000.0, 0x1p23, 0x1p24})
        for (double x : {b, std::nextafter(b, 0.0), std::nextafter(b, 2 * b)}) {
            a.push_back(x);
            a.push_back(-x);
        }
    return a;
}

// Where SinCos shares the algorithm of Sin and Cos it gives their bits: at
// cpu type 5 HA (step pi/256 on the same rows, a quarter turn on for the
// cosine), and the sine of LA and EP by pi up to SinCos's bound 2^23. The
// cosine by pi takes its half step from 1/2 rather than pi/2, so N may
// differ where x/pi + 1/2 is a half integer: there the two agree within an
// ulp, and elsewhere bit for bit.
TEST(SinCos, SharesTheBitsOfSinAndCos) {
    const Row& rs = row("VDSIN");
    const Row& rc = row("VDCOS");
    const Row& r2 = row("VDSINCOS");
    const std::vector<double> a = sincos_arguments();
    const int n = static_cast<int>(a.size());
    int compared = 0;
    for (int cpu = 0; cpu < kCpuTypes; ++cpu)
        for (int col = 0; col < 3; ++col) {
            if (!cpu_runs(cpu)) continue;
            const char v = r2.cell(cpu, col).variant;
            const bool by_pi = v == 'C' || v == 'D';
            if (v != 'A' && !by_pi) continue;
            ASSERT_EQ(rs.cell(cpu, col).variant, v);
            ASSERT_EQ(rc.cell(cpu, col).variant, v);
            std::vector<double> s(n), c(n), y(n), u(n);
            rs.kernel(cpu, col)(n, a.data(), nullptr, s.data(), nullptr);
            rc.kernel(cpu, col)(n, a.data(), nullptr, c.data(), nullptr);
            r2.kernel(cpu, col)(n, a.data(), nullptr, y.data(), u.data());
            const std::string where = slot_label({&r2, cpu, col});
            int differ = 0;
            for (int i = 0; i < n; ++i) {
                if (by_pi && std::fabs(a[i]) > 0x1p23) continue;
                ++compared;
                EXPECT_TRUE(same(y[i], s[i])) << where << " sin " << std::hexfloat << a[i];
                // Cos by pi refuses |x + pi/2| > 2^23
                if (by_pi && std::fabs(a[i] + 1.5707963267948966) > 0x1p23) continue;
                if (v == 'A' || same(u[i], c[i])) continue;
                ++differ;
                EXPECT_LE(std::fabs(u[i] - c[i]), 0x1p-52 * std::fabs(c[i])) << where << " cos " << a[i];
                EXPECT_GT(std::fabs(c[i]), 0.99) << where << " cos " << a[i];  // x near a multiple of pi
            }
            EXPECT_LT(differ, n / 100) << where;
        }
    EXPECT_GT(compared, 0);
}

}  // namespace
}  // namespace zvl_test
