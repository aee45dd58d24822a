// Inv at LA and EP on cpu types 1 to 4 shares one division among a block of
// eight and runs the restart form: a block with an element outside the range
// guards is thrown away and each of its elements computed by the scalar
// element routine, the routine the remainder runs, so each gives what it
// gives alone; a block that passes keeps the shared division's rounding.
// (Div's extended product leaves its range only on zero, infinite and NaN
// divisors, which the kernel contract's special lanes cover; the
// zero-divisor rules per cpu type are directed cases.)
#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "frame/kernel_sets.h"
#include "tests/common/capture.h"
#include "tests/common/rows.h"

namespace zvl_test {
namespace {

TEST(InvRestart, FailedBlockRunsElementByElement) {
    const Row& r = row("VDINV");
    constexpr int W = 8;
    for (int cpu = 1; cpu <= 4; ++cpu)
        for (int col : {zvl::kLA, zvl::kEP}) {
            if (!cpu_runs(cpu)) continue;
            Args x = ordinary(r, 16 * W, 5);
            x.a[W + 3] = 1e300;  // above the high guard: the second block restarts
            const int n = static_cast<int>(x.a.size());
            std::vector<double> got(x.a.size()), alone(x.a.size());
            const Kernel k = r.kernel(cpu, col);
            k(n, x.a.data(), nullptr, got.data(), nullptr);
            int differ = 0;
            for (int i = 0; i < n; ++i) {
                k(1, &x.a[i], nullptr, &alone[i], nullptr);
                if (i / W == 1)
                    EXPECT_TRUE(same(got[i], alone[i])) << "cpu " << cpu << " element " << i;
                else
                    differ += !same(got[i], alone[i]);
            }
            // The shared division rounds some elements otherwise, so the
            // comparison above tells a restart from none.
            EXPECT_GT(differ, 0) << "cpu " << cpu;
        }
}


// Error of got in ulps of the correctly rounded quotient n / d, measured
// against the extended quotient (2^-11 ulp of slack at most).
double quotient_ulps(double got, double n, double d) {
    const long double q = static_cast<long double>(n) / d;
    const double rq = n / d;
    const double ulp = std::nextafter(std::fabs(rq), HUGE_VAL) - std::fabs(rq);
    return static_cast<double>(std::fabs(static_cast<long double>(got) - q) / ulp);
}

// The type 5 mantissa product: every element within 4 ulp, placed where the
// audit found its worst errors (one element of a block, or alone).
TEST(MantissaProduct, WorstInputsWithinFourUlp) {
    if (!cpu_runs(5)) GTEST_SKIP() << "no AVX";
    const double div_a = from_bits(0x461d1f6e9e79bf6a), div_b = from_bits(0x3a9dc08e9aace7d4);
    const double alone_a = from_bits(0x43e9c1aef37bae3e), alone_b = from_bits(0x39c9d0a73c7acc0e);
    const double inv_x = from_bits(0x3fb0575ff4144b23);
    for (int col : {zvl::kLA, zvl::kEP}) {
        const Kernel div = row("VDDIV").kernel(5, col), inv = row("VDINV").kernel(5, col);
        // element 11 of a block of 16, the others the ones the audit had
        std::vector<double> a(16, 1.0), b(16), r(16);
        for (int i = 0; i < 16; ++i) b[i] = 1.0 + i / 16.0;
        a[11] = div_a;
        b[11] = div_b;
        div(16, a.data(), b.data(), r.data(), nullptr);
        EXPECT_LE(quotient_ulps(r[11], div_a, div_b), 4.0) << "col " << col;
        double one;
        div(1, &alone_a, &alone_b, &one, nullptr);
        EXPECT_LE(quotient_ulps(one, alone_a, alone_b), 4.0) << "col " << col;
        std::vector<double> x(b);
        x[11] = inv_x;
        inv(16, x.data(), nullptr, r.data(), nullptr);
        EXPECT_LE(quotient_ulps(r[11], 1.0, inv_x), 4.0) << "col " << col;
    }
}

// A sweep of random blocks: divisors of every mantissa over a wide range
// of exponents, 1e7 quotients per mode.
TEST(MantissaProduct, SweepWithinFourUlp) {
    if (!cpu_runs(5)) GTEST_SKIP() << "no AVX";
    constexpr int n = 1 << 16, rounds = 153;  // 1.003e7 elements
    std::mt19937_64 gen(11);
    std::vector<double> a(n), b(n), r(n), ri(n);
    for (int col : {zvl::kLA, zvl::kEP}) {
        const Kernel div = row("VDDIV").kernel(5, col), inv = row("VDINV").kernel(5, col);
        double worst_div = 0, worst_inv = 0;
        for (int k = 0; k < rounds; ++k) {
            for (int i = 0; i < n; ++i) {
                // exponents in [-200, 200]: quotients stay normal
                a[i] = from_bits((gen() & 0x800fffffffffffff) | uint64_t(0x3ff - 200 + gen() % 401) << 52);
                b[i] = from_bits((gen() & 0x800fffffffffffff) | uint64_t(0x3ff - 200 + gen() % 401) << 52);
            }
            div(n, a.data(), b.data(), r.data(), nullptr);
            inv(n, b.data(), nullptr, ri.data(), nullptr);
            for (int i = 0; i < n; ++i) {
                worst_div = std::max(worst_div, quotient_ulps(r[i], a[i], b[i]));
                worst_inv = std::max(worst_inv, quotient_ulps(ri[i], 1.0, b[i]));
            }
        }
        EXPECT_LE(worst_div, 4.0) << "col " << col;
        EXPECT_LE(worst_inv, 4.0) << "col " << col;
        std::printf("type 5 col %d: Div worst %.3f ulp, Inv worst %.3f ulp\n", col, worst_div, worst_inv);
    }
}

}  // namespace
}  // namespace zvl_test
