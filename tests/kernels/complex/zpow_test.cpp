// Complex Pow and Powx: exp(b ln a) with nothing treated apart, so the
// special values are the logarithm's and the exponential's (in every slot,
// in a block and alone); large exponents; the error against an extended
// reference, bounded by the products' error times (1 + |b ln a|); and Powx
// giving Pow's bits with its one exponent, read from the front-end's copy.
#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <vector>

#include "tests/kernels/complex/zslots.h"
#include "zvl.h"

namespace zvl_test {
namespace {

using L = std::complex<long double>;
constexpr double kInf = INFINITY, kNaN = NAN;

// pow(a, b) in every slot of Pow and of Powx, each at position 5 of a
// block of ordinary elements and alone.
template <class Check>
void every_pow_slot(const Z& a, const Z& b, Check check) {
    for (int cpu = 0; cpu < kCpuTypes; ++cpu) {
        if (!cpu_runs(cpu)) continue;
        for (int col = 0; col < 3; ++col) {
            std::vector<Z> x(11, Z{0.25, -1.5}), y(11, Z{1.5, 0.5}), r(11), rx(11);
            x[5] = a;
            y[5] = b;
            zvl::kernels_VZPOW.k[cpu][col](11, x.data(), y.data(), r.data());
            zvl::kernels_VZPOWX.k[cpu][col](11, x.data(), &b, rx.data());
            Z one, onex;
            zvl::kernels_VZPOW.k[cpu][col](1, &a, &b, &one);
            zvl::kernels_VZPOWX.k[cpu][col](1, &a, &b, &onex);
            for (const Z& got : {r[5], one, rx[5], onex}) check(got, cpu, col);
        }
    }
}

struct PowCase {
    Z a, b, want;
};

TEST(ZPow, SpecialValuesFromTheTables) {
    const PowCase cases[] = {
        {{0.0, 0.0}, {2.0, 0.0}, {0.0, 0.0}},      // exp(-inf + i NaN)
        {{0.0, 0.0}, {0.0, 0.0}, {kNaN, kNaN}},    // 0 (-inf) is NaN
        {{1.0, 0.0}, {3.5, 0.0}, {1.0, 0.0}},
        {{1.0, 0.0}, {-2.0, 0.25}, {1.0, 0.0}},
        {{2.0, 0.0}, {1100.0, 0.0}, {kInf, 0.0}},  // v = 1100 0 + 0 ln 2 = 0
        {{kNaN, 1.0}, {2.0, 0.0}, {kNaN, kNaN}},
        {{2.0, 1.0}, {kNaN, 0.0}, {kNaN, kNaN}},
    };
    for (const PowCase& c : cases)
        every_pow_slot(c.a, c.b, [&](const Z& got, int cpu, int col) {
            EXPECT_TRUE(equal(got.real, c.want.real) && equal(got.imag, c.want.imag))
                << "pow((" << c.a.real << ", " << c.a.imag << "), (" << c.b.real << ", " << c.b.imag << ")) = ("
                << got.real << ", " << got.imag << ") at cpu " << cpu << " column " << col;
        });
}

// ln(-1) = (0, pi rounded), so the angle is half of that double: cos of it
// is the double nearest 6.1e-17, not 0.
TEST(ZPow, MinusOneToTheHalf) {
    every_pow_slot({-1.0, 0.0}, {0.5, 0.0}, [](const Z& got, int cpu, int col) {
        EXPECT_EQ(got.imag, 1.0) << cpu << " " << col;
        EXPECT_GT(got.real, 6.12e-17) << cpu << " " << col;
        EXPECT_LT(got.real, 6.13e-17) << cpu << " " << col;
    });
}

// 2^1000 from u = 1000 ln 2 in doubles: finite, within the products'
// error (about 1000 ln 2 2^-53 relative).
TEST(ZPow, LargeExponent) {
    every_pow_slot({2.0, 0.0}, {1000.0, 0.0}, [](const Z& got, int cpu, int col) {
        EXPECT_TRUE(std::isfinite(got.real)) << cpu << " " << col;
        EXPECT_LT(std::fabs(got.real / 0x1p1000 - 1), 1e-13) << cpu << " " << col;
        EXPECT_EQ(got.imag, 0.0) << cpu << " " << col;
    });
}

// Normwise within 4 units of 2^-53 times (1 + |b ln a|) of the extended
// reference exp(b log a), on arguments of every quadrant.
TEST(ZPow, WithinTheComposition) {
    uint64_t s = 0x9E3779B97F4A7C15u;
    auto unit = [&] {
        s = s * 6364136223846793005u + 1442695040888963407u;
        return static_cast<double>(s >> 11) * 0x1p-53;
    };
    for (int i = 0; i < 400; ++i) {
        const Z a = {std::ldexp(unit() - 0.5, static_cast<int>(unit() * 40) - 20), std::ldexp(unit() - 0.5, static_cast<int>(unit() * 40) - 20)};
        const Z b = {(unit() - 0.5) * 16, (unit() - 0.5) * 16};
        const L la = std::log(L(a.real, a.imag)), w = L(b.real, b.imag) * la;
        const L want = std::exp(w);
        const long double bound = 4 * 0x1p-53L * (1 + std::abs(w)) * std::abs(want);
        every_pow_slot(a, b, [&](const Z& got, int cpu, int col) {
            EXPECT_LE(std::abs(L(got.real, got.imag) - want), bound)
                << "pow((" << a.real << ", " << a.imag << "), (" << b.real << ", " << b.imag << ")) = (" << got.real
                << ", " << got.imag << ") at cpu " << cpu << " column " << col;
        });
    }
}

// The exponent is copied at the call: an exponent that is the first
// element of the output array still gives every element the same power.
TEST(ZPowx, ReadsItsCopyOfTheExponent) {
    const int n = 5;
    std::vector<Z> a = {{2.0, 0.0}, {0.5, 1.0}, {-3.0, 0.25}, {1.5, -2.0}, {0.75, 0.75}};
    std::vector<Z> r(n, Z{0.5, 0.25}), want(n);
    const Z b = r[0];
    VZPOW(&n, a.data(), std::vector<Z>(n, b).data(), want.data());
    VZPOWX(&n, a.data(), &r[0], r.data());
    for (int i = 0; i < n; ++i)
        EXPECT_TRUE(same(r[i].real, want[i].real) && same(r[i].imag, want[i].imag)) << "element " << i;
}

}  // namespace
}  // namespace zvl_test
