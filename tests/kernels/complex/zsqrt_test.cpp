// Complex Sqrt through its kernel set, the four members by cpu type: the
// special values and signs of zeros in every slot, parts at the ends of the
// range and in every binade of the band, and blocks that mix the band's elements with those it refuses,
// computed in place, element for element as alone.
#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "tests/kernels/complex/zslots.h"

namespace zvl_test {
namespace {

constexpr double kInf = INFINITY, kNaN = NAN;
const zvl::KernelSet<zvl::KernelZ1>& kSqrt = zvl::kernels_VZSQRT;

TEST(ZSqrt, SpecialValues) {
    expect_cases(kSqrt, "sqrt",
                 {{{-4.0, 0.0}, {0.0, 2.0}},
                  {{-4.0, -0.0}, {0.0, -2.0}},
                  {{4.0, 0.0}, {2.0, 0.0}},
                  {{4.0, -0.0}, {2.0, -0.0}},
                  {{-0.0, -0.0}, {0.0, -0.0}},
                  {{0.0, -8.0}, {2.0, -2.0}},
                  {{3.0, 4.0}, {2.0, 1.0}},
                  {{-3.0, -4.0}, {1.0, -2.0}},
                  {{0x1p-1070, 0.0}, {0x1p-535, 0.0}},
                  {{1e-320, 0.0}, {std::sqrt(1e-320), 0.0}},
                  {{-0x1p-1074, 0.0}, {0.0, 0x1p-537}},
                  {{kNaN, kInf}, {kInf, kInf}},
                  {{1.0, -kInf}, {kInf, -kInf}},
                  {{-kInf, 2.0}, {0.0, kInf}},
                  {{kInf, -2.0}, {kInf, -0.0}},
                  {{-kInf, kNaN}, {kNaN, kInf}},
                  {{kInf, kNaN}, {kInf, kNaN}},
                  {{kNaN, 1.0}, {kNaN, kNaN}}});
}

// Within an ulp of each part of the root computed in extended precision
// (whose own error is far below a double's ulp here).
void expect_root(const Z& got, const Z& z, int cpu, int col) {
    const long double x = z.real, y = z.imag;
    const long double m = std::sqrt(std::fma(x * 0x1p-600L, x * 0x1p-600L, y * 0x1p-600L * (y * 0x1p-600L))) * 0x1p600L;
    const long double w = std::sqrt((m + std::fabs(x)) / 2), v = std::fabs(y) / (2 * w);
    const long double re = x >= 0 ? w : v, im = std::copysign(x >= 0 ? v : w, y);
    for (const auto& [g, t] : {std::pair{got.real, re}, std::pair{got.imag, im}}) {
        const double td = static_cast<double>(t);
        EXPECT_LE(std::fabs(g - t), std::fabs(std::nextafter(td, kInf) - td))
            << "sqrt(" << z.real << ", " << z.imag << ") = (" << got.real << ", " << got.imag << ") at cpu "
            << cpu << " column " << col;
    }
}

// No part overflows or underflows on the way: the squares of these parts
// leave the double range, and the vector members scale them into the band.
TEST(ZSqrt, EndsOfTheRange) {
    const Z points[] = {{1e308, 1e308},       {-1e308, 1e308},      {0x1.fffffffffffffp1023, 1.0},
                        {1e-310, -1e-310},    {3e-320, 5e-321},     {0x1p-459, 0x1p-459},
                        {0x1p511, -0x1p511},  {1.0, 0x1p-1074},     {0x1p-1074, -1e300},
                        {-1e-300, 0x1p-900}};
    for (const Z& p : points) every_slot(kSqrt, p, [&](const Z& got, int cpu, int col) { expect_root(got, p, cpu, col); });
}

// The reciprocal-root seed rebuilds its power of two from the high word,
// by the exponent's parity: every binade of the band for both parts, with
// the squares' sum landing on both parities, and significands near both
// ends of [1, 2), where a seed off by a factor shows at once.
TEST(ZSqrt, EveryBinadeOfTheBand) {
    const double sig[] = {1.0, 1.0000000000000002, 1.4142135623730951, 1.9999999999999998};
    std::vector<Z> in;
    for (int e = -459; e < 511; e += 3)
        for (int i = 0; i < 4; ++i) {
            const double x = std::ldexp(sig[i], e), y = std::ldexp(sig[(i + 1) % 4], e + (e & 7) - 3);
            in.push_back({i & 1 ? -x : x, i & 2 ? -y : y});
        }
    const int n = static_cast<int>(in.size());
    for (int cpu = 0; cpu < kCpuTypes; ++cpu) {
        if (!cpu_runs(cpu)) continue;
        std::vector<Z> r(n);
        kSqrt.k[cpu][zvl::kHA](n, in.data(), r.data());
        for (int i = 0; i < n; ++i) expect_root(r[i], in[i], cpu, 0);
    }
}

// Every block length and position: elements of the band, beyond it on
// either side, unbalanced pairs and special values in turn, the array
// computed over itself, give the bits they give alone.
TEST(ZSqrt, MixedBlocksInPlaceAsAlone) {
    const Z kinds[] = {{2.0, 3.0},    {1e300, -1e300}, {-0.5, 1e-30}, {1e-320, 2.0},
                       {-kInf, 1.0},  {7.0, -0.0},     {-1e-200, -3e-250}, {kNaN, 0.5},
                       {0x1p-460, 1.0}, {-9.0, 0x1p510}};
    for (int cpu = 0; cpu < kCpuTypes; ++cpu) {
        if (!cpu_runs(cpu)) continue;
        const zvl::KernelZ1 k = kSqrt.k[cpu][zvl::kHA];
        for (int n = 1; n <= 19; ++n) {
            std::vector<Z> a(n);
            for (int i = 0; i < n; ++i) a[i] = kinds[(i * 7 + n) % 10];
            std::vector<Z> r = a;
            k(n, r.data(), r.data());
            for (int i = 0; i < n; ++i) {
                Z one;
                k(1, &a[i], &one);
                EXPECT_TRUE(equal(r[i].real, one.real) && equal(r[i].imag, one.imag))
                    << "cpu " << cpu << " n " << n << " element " << i;
            }
        }
    }
}

}  // namespace
}  // namespace zvl_test
