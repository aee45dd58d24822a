// Inv and Div at LA and EP on cpu types 1 to 4 share one division among a
// block and run the restart form: a block whose shared product would leave
// its range is thrown away and each of its elements computed by the scalar
// element routine, the routine the remainder runs, so each gives what it
// gives alone; a block that passes keeps the shared division's rounding.
// Inv's blocks hold eight elements, and one outside the range guards
// restarts its block. Div's hold four, whose divisors' product is formed in
// extended precision and restarts the block when its single-precision image
// is zero or infinite: on a zero, infinite or NaN divisor (the kernel
// contract's special lanes; the zero-divisor rules per cpu type are directed
// cases), and on normal divisors whose product lies below or above the
// single-precision range.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include "frame/kernel_sets.h"
#include "tests/common/capture.h"
#include "tests/common/rows.h"

namespace zvl_test {
namespace {

struct RestartCase {
    const char* what;
    const char* exported;
    int width;                      // elements per block
    void (*change)(Args& x, int i);  // element i of a block to be restarted
    bool near_midpoints;            // arguments whose quotients formulas round apart
};

// Div's shared division and its element routine both work in extended
// precision and round once, so on ordinary arguments they agree. A quotient
// just off the midpoint of two doubles tells them apart: b odd in
// [2^52, 2^53), m = -1/b modulo 2^54 a 54-bit odd number, a = (m b + 1) /
// 2^54, so that a / b = (m + 1/b) / 2^54. Both scaled by 2^-53.
void near_midpoints(Args& x) {
    uint64_t state = 12345;
    for (size_t i = 0; i < x.a.size();) {
        state = state * 6364136223846793005u + 1442695040888963407u;
        const uint64_t b = (state >> 12 | uint64_t{1} << 52) | 1;
        uint64_t inv = b;  // Newton's iteration for 1/b modulo 2^64
        for (int k = 0; k < 6; ++k) inv *= 2 - b * inv;
        const uint64_t m = (0 - inv) & ((uint64_t{1} << 54) - 1);
        if (m < uint64_t{1} << 53) continue;
        const unsigned __int128 p = static_cast<unsigned __int128>(m) * b + 1;
        x.a[i] = std::ldexp(static_cast<double>(static_cast<uint64_t>(p >> 54)), -53);
        x.b[i] = std::ldexp(static_cast<double>(b), -53);
        ++i;
    }
}

std::ostream& operator<<(std::ostream& os, const RestartCase& c) { return os << c.what; }

class Restart : public testing::TestWithParam<RestartCase> {};

// Blocks whose shared division rounds some element otherwise than that
// element alone are changed so that they leave the range: then each of
// their elements gives what it gives alone.
TEST_P(Restart, FailedBlockRunsElementByElement) {
    const RestartCase& c = GetParam();
    const Row& r = row(c.exported);
    const int W = c.width;
    for (int cpu = 1; cpu <= 4; ++cpu)
        for (int col : {zvl::kLA, zvl::kEP}) {
            if (!cpu_runs(cpu)) continue;
            SCOPED_TRACE("cpu " + std::to_string(cpu) + " column " + std::to_string(col));
            const Kernel k = r.kernel(cpu, col);
            Args x = ordinary(r, 256 * W, 5);
            if (c.near_midpoints) near_midpoints(x);
            const int n = static_cast<int>(x.a.size());
            std::vector<double> got(x.a.size()), alone(x.a.size());
            const auto run = [&] {
                const double* b = x.bp();
                k(n, x.a.data(), b, got.data(), nullptr);
                for (int i = 0; i < n; ++i)
                    k(1, &x.a[i], b ? b + i : nullptr, &alone[i], nullptr);
            };
            run();
            std::vector<int> sharing;
            for (int block = 0; block < n / W; ++block)
                for (int i = block * W; i < (block + 1) * W; ++i)
                    if (!same(got[i], alone[i])) {
                        sharing.push_back(block);
                        for (int j = block * W; j < (block + 1) * W; ++j) c.change(x, j);
                        break;
                    }
            ASSERT_FALSE(sharing.empty()) << "no block tells a restart from none";
            run();
            for (int block : sharing)
                for (int i = block * W; i < (block + 1) * W; ++i)
                    EXPECT_TRUE(same(got[i], alone[i])) << "element " << i;
        }
}

INSTANTIATE_TEST_SUITE_P(
    InvDiv, Restart,
    testing::Values(
        // One element of the block above the high guard.
        RestartCase{"InvAboveTheGuard", "VDINV", 8,
                    [](Args& x, int i) {
                        if (i % 8 == 3) x.a[i] = 1e300;
                    },
                    false},
        // Divisors of 0.5 to 1 scaled by 2^-50 or 2^50: a product of four
        // below 2^-200, whose single-precision image is zero, or at least
        // 2^196, an infinite one. The scaling is exact, so the shared
        // division would round as it did before.
        RestartCase{"DivProductBelowFloat", "VDDIV", 4,
                    [](Args& x, int i) { x.b[i] *= 0x1p-50; }, true},
        RestartCase{"DivProductAboveFloat", "VDDIV", 4,
                    [](Args& x, int i) { x.b[i] *= 0x1p50; }, true}),
    [](const testing::TestParamInfo<RestartCase>& i) { return std::string(i.param.what); });

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
