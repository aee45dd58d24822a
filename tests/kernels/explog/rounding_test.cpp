// The rounding family under each of the caller's rounding modes, every cpu
// type: exact results against the C library on values where the
// constructions change course (signed zeros, halves, 2^52 and above,
// infinities, NaNs) in every lane of a block and alone. Ceil, Floor, Trunc,
// Modf and a guarded Round give the same in every mode; Rint and NearbyInt
// follow it, and only Rint raises inexact.
#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <string>
#include <vector>

#include "tests/common/capture.h"
#include "tests/common/fp_control.h"
#include "tests/common/rows.h"

namespace zvl_test {
namespace {

constexpr uint32_t kMxcsrDefault = 0x1f80;
constexpr uint32_t kModes[4] = {0x0000, 0x2000, 0x4000, 0x6000};  // nearest, down, up, to zero

// Runs f with MXCSR's rounding field set to `mode`; returns MXCSR as f left it.
template <class F>
uint32_t in_mode(uint32_t mode, F f) {
    const uint32_t saved = read_mxcsr();
    write_mxcsr(kMxcsrDefault | mode);
    f();
    const uint32_t after = read_mxcsr();
    write_mxcsr(saved);
    return after;
}

// Halves away from zero, from trunc: MinGW-w64's std::round adds 0.5 and so
// rounds 0.49999999999999994 up to 1.
double round_half_away(double x) {
    const double t = std::trunc(x);
    return std::fabs(x - t) >= 0.5 ? t + std::copysign(1.0, x) : t;
}

// The result in the given MXCSR rounding mode, by functions that do not
// depend on the mode.
double reference(const std::string& f, double x, uint32_t mode) {
    if (f == "vdCeil") return std::ceil(x);
    if (f == "vdFloor") return std::floor(x);
    if (f == "vdTrunc") return std::trunc(x);
    if (f == "vdRound") return round_half_away(x);
    return mode == 0x2000 ? std::floor(x) : mode == 0x4000 ? std::ceil(x)
           : mode == 0x6000 ? std::trunc(x) : std::nearbyint(x);  // the test runs in nearest
}

// Equal bits, or a NaN expected and a quiet one given.
bool exact(double want, double got) {
    if (std::isnan(want)) return std::isnan(got) && (bits_of(got) >> 51 & 1);
    return bits_of(want) == bits_of(got);
}

std::vector<double> edge_values() {
    const double base[] = {
        0.0, 4.9e-324, 1e-310, 2.2250738585072014e-308, 1e-300, 0.25, 0.49999999999999994, 0.5,
        0.5000000000000001, 0.75, 0.9999999999999999, 1.0, 1.0000000000000002, 1.5, 2.5, 3.5, 2.7,
        3.75, 123456.789, 1048575.5, 1048576.5, 2097152.75, 2097153.0, 4294967296.5,
        2251799813685247.5, 2251799813685248.5, 4503599627370495.5, 4503599627370495.0,
        4503599627370496.0, 4503599627370497.0, 9007199254740993.0, 1e300, 1.7976931348623157e308,
        __builtin_inf(), __builtin_nan(""), from_bits(0x7ff0000000000001)};
    std::vector<double> v;
    for (double b : base) v.push_back(b), v.push_back(-b);
    // fractions of every length at every exponent below 2^53
    std::mt19937_64 g(7);
    for (int e = -3; e <= 54; ++e)
        for (int k = 0; k < 4; ++k) {
            const double m = 1.0 + static_cast<double>(g() >> 12) * 0x1p-52;
            v.push_back(std::ldexp(g() & 1 ? -m : m, e));
        }
    return v;
}

// Unguarded Round (types 2 and 5) rounds its first step in the caller's
// mode; it is checked in round to nearest, and below.
bool follows_caller(const std::string& f, int cpu) {
    return f == "vdRound" && (cpu == 2 || cpu == 5);
}

TEST(Rounding, EveryModeEveryLane) {
    const std::vector<double> x = edge_values();
    const int n = static_cast<int>(x.size());
    for (const char* name : {"VDCEIL", "VDFLOOR", "VDTRUNC", "VDROUND", "VDRINT", "VDNEARBYINT"})
        for (int cpu = 0; cpu < kCpuTypes; ++cpu) {
            const Row& r = row(name);
            if (!cpu_runs(cpu)) continue;
            const Kernel k = r.kernel(cpu, 0);
            for (uint32_t mode : kModes) {
                if (mode != 0 && follows_caller(r.report, cpu)) continue;
                SCOPED_TRACE(testing::Message() << r.report << " cpu " << cpu << " mode " << mode);
                for (int shift = 0; shift < 4; ++shift) {
                    std::vector<double> in(x.size() + shift, 0.5), out(in.size());
                    std::copy(x.begin(), x.end(), in.begin() + shift);
                    const int32_t m = static_cast<int32_t>(in.size());
                    in_mode(mode, [&] { k(m, in.data(), nullptr, out.data(), nullptr); });
                    for (int i = 0; i < n; ++i)
                        ASSERT_TRUE(exact(reference(r.report, x[i], mode), out[i + shift]))
                            << "x " << x[i] << " shift " << shift << ": " << out[i + shift];
                }
                for (int i = 0; i < n; ++i) {
                    double one;
                    in_mode(mode, [&] { k(1, &x[i], nullptr, &one, nullptr); });
                    ASSERT_TRUE(exact(reference(r.report, x[i], mode), one))
                        << "x " << x[i] << " alone";
                }
            }
        }
}

// Round without a guard: under rounding toward zero 2.7 gives 2, while
// halves still go away from zero.
TEST(Rounding, UnguardedRoundFollowsTheCallersMode) {
    for (int cpu : {2, 5}) {
        if (!cpu_runs(cpu)) continue;
        const double x[4] = {2.7, -2.7, 2.5, -0.5}, want[4] = {2.0, -2.0, 3.0, -1.0};
        double r[4];
        in_mode(0x6000, [&] { row("VDROUND").kernel(cpu, 0)(4, x, nullptr, r, nullptr); });
        for (int i = 0; i < 4; ++i) EXPECT_TRUE(exact(want[i], r[i])) << "cpu " << cpu;
    }
}

// Integer part as trunc, fraction with the sign of x (a signed zero when x
// is integral, huge or infinite), NaN in both, in every mode.
TEST(Rounding, ModfInEveryMode) {
    const std::vector<double> x = edge_values();
    const int n = static_cast<int>(x.size());
    for (int cpu = 0; cpu < kCpuTypes; ++cpu) {
        if (!cpu_runs(cpu)) continue;
        for (uint32_t mode : kModes) {
            std::vector<double> y(x.size()), z(x.size());
            const Kernel modf = row("VDMODF").kernel(cpu, 0);
            in_mode(mode, [&] { modf(n, x.data(), nullptr, y.data(), z.data()); });
            for (int i = 0; i < n; ++i) {
                double wi = x[i], wf = x[i];
                if (!std::isnan(x[i])) {
                    wf = std::modf(x[i], &wi);
                    if (wf == 0.0) wf = std::copysign(0.0, x[i]);
                }
                ASSERT_TRUE(exact(wi, y[i]) && exact(wf, z[i]))
                    << "cpu " << cpu << " mode " << mode << " x " << x[i] << ": " << y[i] << " "
                    << z[i];
            }
        }
    }
}

// Where the rounding instruction exists, NearbyInt suppresses the inexact
// exception and Rint raises it.
TEST(Rounding, InexactFlagOfRintAndNearbyInt) {
    const double x[9] = {0.3, -1.5, 2.5, 7.125, -0.75, 1e5 + 0.5, 3.0, 0.1, 9.9};
    double r[9];
    for (int cpu = 3; cpu < kCpuTypes; ++cpu) {
        if (!cpu_runs(cpu)) continue;
        for (uint32_t mode : kModes) {
            const uint32_t nearby = in_mode(mode, [&] {
                row("VDNEARBYINT").kernel(cpu, 0)(9, x, nullptr, r, nullptr);
            });
            EXPECT_EQ(nearby, kMxcsrDefault | mode) << "NearbyInt cpu " << cpu;
            const uint32_t rint =
                in_mode(mode, [&] { row("VDRINT").kernel(cpu, 0)(9, x, nullptr, r, nullptr); });
            EXPECT_EQ(rint, kMxcsrDefault | mode | 0x20u) << "Rint cpu " << cpu;
        }
    }
}

}  // namespace
}  // namespace zvl_test
