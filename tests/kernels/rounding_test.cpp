// The rounding kernels of every cpu type, called directly from the kernel
// sets: exact results against the C library's exact rounding functions,
// signs of zeros, halves, values at and above 2^52, infinities and NaNs, in
// blocks and remainders; the caller's rounding mode for Rint and NearbyInt;
// the floating-point control word as the kernels leave it.
#include <gtest/gtest.h>

#include <cfenv>
#include <cmath>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "tests/common/capture.h"
#include "tests/kernels/kernel_access.h"

namespace {

using zvl_test::bits_of;
using zvl_test::from_bits;
using zvl_test::kModes;

enum Fn { kCeil, kFloor, kTrunc, kRound, kRint, kNearbyInt };
const char* const kFnNames[] = {"Ceil", "Floor", "Trunc", "Round", "Rint", "NearbyInt"};

zvl::KernelD1 kernel_of(Fn f, int cpu) {
    switch (f) {
        case kCeil: return zvl::kernels_VDCEIL.k[cpu];
        case kFloor: return zvl::kernels_VDFLOOR.k[cpu];
        case kTrunc: return zvl::kernels_VDTRUNC.k[cpu];
        case kRound: return zvl::kernels_VDROUND.k[cpu];
        case kRint: return zvl::kernels_VDRINT.k[cpu];
        case kNearbyInt: return zvl::kernels_VDNEARBYINT.k[cpu];
    }
    return nullptr;
}

// Halves away from zero, from trunc: MinGW-w64's std::round adds 0.5 and
// so rounds 0.49999999999999994 up to 1.
double round_half_away(double x) {
    const double t = std::trunc(x);
    return std::fabs(x - t) >= 0.5 ? t + std::copysign(1.0, x) : t;
}

// The result in the given MXCSR rounding mode, by functions that do not
// depend on the mode.
double reference(Fn f, double x, uint32_t mode) {
    switch (f) {
        case kCeil: return std::ceil(x);
        case kFloor: return std::floor(x);
        case kTrunc: return std::trunc(x);
        case kRound: return round_half_away(x);
        case kRint:
        case kNearbyInt:
            switch (mode) {
                case 0x2000: return std::floor(x);
                case 0x4000: return std::ceil(x);
                case 0x6000: return std::trunc(x);
                default: return std::nearbyint(x);  // the tests run in nearest
            }
    }
    return 0.0;
}

bool is_quiet_nan(double x) { return std::isnan(x) && (bits_of(x) >> 51 & 1) != 0; }

// Equal bits, or both NaN with the result quiet.
::testing::AssertionResult same(double expected, double got, double x) {
    if (std::isnan(expected) ? is_quiet_nan(got) : bits_of(expected) == bits_of(got))
        return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure()
           << "x = " << x << " (" << std::hexfloat << x << "): expected " << expected << ", got "
           << got << std::defaultfloat;
}

const double kInf = std::numeric_limits<double>::infinity();
const double kMax = std::numeric_limits<double>::max();
const double kSNaN = from_bits(0x7ff0000000000001);
const double kQNaN = std::numeric_limits<double>::quiet_NaN();

// Values where the constructions change course, with both signs.
std::vector<double> edge_values() {
    const double base[] = {
        0.0, 4.9e-324, 1e-310, 2.2250738585072014e-308, 1e-300, 0.25,
        0.49999999999999994, 0.5, 0.5000000000000001, 0.75, 0.9999999999999999, 1.0,
        1.0000000000000002, 1.5, 2.5, 3.5, 2.7, 3.75, 123456.789, 1048575.5, 1048576.5,
        2097152.75, 2097153.0, 4294967296.5, 2251799813685247.5, 2251799813685248.5,
        4503599627370495.5, 4503599627370495.0, 4503599627370496.0, 4503599627370497.0,
        9007199254740993.0, 1e300, kMax, kInf, kQNaN, kSNaN};
    std::vector<double> v;
    for (double b : base) {
        v.push_back(b);
        v.push_back(-b);
    }
    // fractions of every length at every exponent below 2^53
    std::mt19937_64 g(7);
    for (int e = -3; e <= 54; ++e)
        for (int k = 0; k < 4; ++k) {
            const double m = 1.0 + static_cast<double>(g() >> 12) * 0x1p-52;
            v.push_back(std::ldexp(g() & 1 ? -m : m, e));
        }
    return v;
}

// Runs a one-output kernel over `x` in several layouts: the whole array,
// shifted so that each value meets every lane position of a block, and one
// element at a time; every layout must give `expected`.
void check_layouts(zvl::KernelD1 k, const std::vector<double>& x,
                   const std::vector<double>& expected, const char* what) {
    const int n = static_cast<int>(x.size());
    for (int shift = 0; shift < 16; shift += 5) {
        std::vector<double> in(x.size() + shift), out(in.size(), -7.0);
        for (int i = 0; i < n; ++i) in[i + shift] = x[i];
        for (int i = 0; i < shift; ++i) in[i] = 0.5 + i;
        k(static_cast<int32_t>(in.size()), in.data(), out.data());
        for (int i = 0; i < n; ++i)
            ASSERT_TRUE(same(expected[i], out[i + shift], x[i])) << what << ", shift " << shift;
    }
    for (int i = 0; i < n; ++i) {
        double r = -7.0;
        k(1, &x[i], &r);
        ASSERT_TRUE(same(expected[i], r, x[i])) << what << ", one element";
    }
    // in place
    std::vector<double> io = x;
    k(n, io.data(), io.data());
    for (int i = 0; i < n; ++i) ASSERT_TRUE(same(expected[i], io[i], x[i])) << what << ", in place";
}

class RoundingKernel : public ::testing::TestWithParam<std::tuple<Fn, int>> {
  protected:
    void SetUp() override {
        if (!zvl_test::cpu_runs(std::get<1>(GetParam()))) GTEST_SKIP() << "cpu type not supported";
    }
};

// Ceil, Floor, Trunc, and Round where it is guarded or by masks, give the
// same results whatever the caller's rounding mode; Rint and NearbyInt
// follow it. Every layout of the arrays gives the same, signalling NaNs
// come out quiet.
TEST_P(RoundingKernel, CallerRoundingMode) {
    const auto [f, cpu] = GetParam();
    // Round without a guard is checked in round to nearest only (see below).
    const bool nearest_only = f == kRound && (cpu == 2 || cpu == 5);
    const std::vector<double> x = edge_values();
    for (uint32_t mode : kModes) {
        if (nearest_only && mode != 0) continue;
        std::vector<double> want(x.size());
        for (size_t i = 0; i < x.size(); ++i) want[i] = reference(f, x[i], mode);
        const std::string what = "mode " + std::to_string(mode);
        zvl_test::with_mxcsr(zvl_test::kMxcsrDefault | mode,
                             [&] { check_layouts(kernel_of(f, cpu), x, want, what.c_str()); });
    }
}

INSTANTIATE_TEST_SUITE_P(
    AllCpuTypes, RoundingKernel,
    ::testing::Combine(::testing::Values(kCeil, kFloor, kTrunc, kRound, kRint, kNearbyInt),
                       ::testing::Range(0, 6)),
    [](const auto& info) {
        return std::string(kFnNames[std::get<0>(info.param)]) + "_cpu" +
               std::to_string(std::get<1>(info.param));
    });

// Round without a guard rounds its first step in the caller's mode: under
// rounding towards zero 2.7 gives 2, while halves still go away from zero.
TEST(RoundingCases, UnguardedRoundFollowsTheCallersMode) {
    for (int cpu : {2, 5}) {
        if (!zvl_test::cpu_runs(cpu)) continue;
        const double x[4] = {2.7, -2.7, 2.5, -0.5};
        const double want[4] = {2.0, -2.0, 3.0, -1.0};
        double r[4];
        zvl_test::with_mxcsr(zvl_test::kMxcsrDefault | 0x6000,
                             [&] { zvl::kernels_VDROUND.k[cpu](4, x, r); });
        for (int i = 0; i < 4; ++i) EXPECT_TRUE(same(want[i], r[i], x[i])) << "cpu " << cpu;
    }
}

// --- Modf -----------------------------------------------------------------

class ModfKernel : public ::testing::TestWithParam<int> {
  protected:
    void SetUp() override {
        if (!zvl_test::cpu_runs(GetParam())) GTEST_SKIP() << "cpu type not supported";
    }
};

// Integer part as trunc, fraction with the sign of x (a signed zero when x
// is integral, huge or infinite), NaN in both.
void modf_reference(double x, double* i, double* f) {
    if (std::isnan(x)) {
        *i = *f = x;
        return;
    }
    *f = std::modf(x, i);
    if (*f == 0.0) *f = std::copysign(0.0, x);
}

TEST_P(ModfKernel, IntegerPartAndFraction) {
    const int cpu = GetParam();
    const std::vector<double> x = edge_values();
    const int n = static_cast<int>(x.size());
    for (uint32_t mode : kModes) {
        for (int len : {n, 1}) {
            std::vector<double> y(x.size(), 9.0), z(x.size(), 9.0);
            zvl_test::with_mxcsr(zvl_test::kMxcsrDefault | mode, [&] {
                for (int i = 0; i < n; i += len) zvl::kernels_VDMODF.k[cpu](len, &x[i], &y[i], &z[i]);
            });
            for (int i = 0; i < n; ++i) {
                double wi, wf;
                modf_reference(x[i], &wi, &wf);
                ASSERT_TRUE(same(wi, y[i], x[i])) << "integer part, mode " << mode << ", n " << len;
                ASSERT_TRUE(same(wf, z[i], x[i])) << "fraction, mode " << mode << ", n " << len;
            }
        }
    }
}

// Outputs that are the input array: y = a, then z = a.
TEST_P(ModfKernel, OutputsMayBeTheInput) {
    const int cpu = GetParam();
    const std::vector<double> x = edge_values();
    const int n = static_cast<int>(x.size());
    std::vector<double> a = x, z(x.size());
    zvl::kernels_VDMODF.k[cpu](n, a.data(), a.data(), z.data());
    std::vector<double> b = x, y(x.size());
    zvl::kernels_VDMODF.k[cpu](n, b.data(), y.data(), b.data());
    for (int i = 0; i < n; ++i) {
        double wi, wf;
        modf_reference(x[i], &wi, &wf);
        ASSERT_TRUE(same(wi, a[i], x[i]));
        ASSERT_TRUE(same(wf, b[i], x[i]));
    }
}

INSTANTIATE_TEST_SUITE_P(AllCpuTypes, ModfKernel, ::testing::Range(0, 6));

// --- The floating-point control word -------------------------------------

// The MXCSR rounding direction each kernel sets, or -1 for none.
int guard_of(const std::string& fn, int cpu) {
    if (fn == "Modf") return cpu == 0 ? -1 : 0x6000;
    if (fn == "Ceil" || fn == "Floor" || fn == "Trunc") {
        if (cpu == 0 || cpu >= 3) return -1;
        return fn == "Ceil" ? 0x4000 : fn == "Floor" ? 0x2000 : 0x6000;
    }
    if (fn == "Round") return cpu == 1 || cpu == 3 || cpu == 4 ? 0 : -1;
    return -1;
}

// Every kernel leaves the caller's control bits as they were; a guarded
// kernel that had to change MXCSR restores the whole word, sticky flags
// included, and a kernel with no guard leaves the flush and denormal bits
// to the caller.
TEST(RoundingControlWord, RestoredExactly) {
    struct K {
        std::string name;
        zvl::KernelD1 one;
        zvl::KernelD12 two;
    };
    const double x[10] = {0.3, -1.5, 2.5, 1e-310, -7.75, 3.0, 0.5, -0.5, 1e20, 6.25};
    double y[10], z[10];
    for (int cpu = 0; cpu < 6; ++cpu) {
        if (!zvl_test::cpu_runs(cpu)) continue;
        const K ks[] = {{"Ceil", kernel_of(kCeil, cpu), nullptr},
                        {"Floor", kernel_of(kFloor, cpu), nullptr},
                        {"Trunc", kernel_of(kTrunc, cpu), nullptr},
                        {"Round", kernel_of(kRound, cpu), nullptr},
                        {"Rint", kernel_of(kRint, cpu), nullptr},
                        {"NearbyInt", kernel_of(kNearbyInt, cpu), nullptr},
                        {"Modf", nullptr, zvl::kernels_VDMODF.k[cpu]}};
        for (const K& k : ks) {
            for (uint32_t mode : kModes) {
                for (uint32_t extra : {0u, zvl_test::kMxcsrFtz | zvl_test::kMxcsrDaz}) {
                    const uint32_t before = zvl_test::kMxcsrDefault | mode | extra;
                    const uint32_t after = zvl_test::with_mxcsr(before, [&] {
                        if (k.one)
                            k.one(10, x, y);
                        else
                            k.two(10, x, y, z);
                    });
                    const int g = guard_of(k.name, cpu);
                    const bool changed = g >= 0 && (mode | extra) != static_cast<uint32_t>(g);
                    if (changed)
                        EXPECT_EQ(before, after) << k.name << " cpu " << cpu;
                    else
                        EXPECT_EQ(before, after & ~zvl_test::kMxcsrFlags) << k.name << " cpu " << cpu;
                }
            }
        }
    }
}

// Where the rounding instruction exists NearbyInt suppresses the inexact
// exception and Rint raises it.
TEST(RoundingControlWord, InexactFlagOfRintAndNearbyInt) {
    const double x[9] = {0.3, -1.5, 2.5, 7.125, -0.75, 1e5 + 0.5, 3.0, 0.1, 9.9};
    double r[9];
    for (int cpu = 3; cpu < 6; ++cpu) {
        if (!zvl_test::cpu_runs(cpu)) continue;
        for (uint32_t mode : kModes) {
            const uint32_t w = zvl_test::kMxcsrDefault | mode;
            uint32_t after = zvl_test::with_mxcsr(w, [&] { kernel_of(kNearbyInt, cpu)(9, x, r); });
            EXPECT_EQ(w, after) << "NearbyInt cpu " << cpu;
            after = zvl_test::with_mxcsr(w, [&] { kernel_of(kRint, cpu)(9, x, r); });
            EXPECT_EQ(w | zvl_test::kMxcsrInexact, after) << "Rint cpu " << cpu;
        }
    }
}

}  // namespace
