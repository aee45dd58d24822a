// TrigReduce against MPFR on every cpu type's copy: the quadrant is that of
// a nearest multiple of pi/2 and high + low lies within about 1e-23 of the
// true remainder, relatively, on random x at every exponent from 2^13 (the
// tangent reduces from 12800) to the largest double, at the path boundaries
// and where the quadrant is read from a small integer part; at the doubles
// nearest to multiples of pi/2 the bound is looser but still far below what
// any caller needs. All copies give the same bits.
#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <cstdio>
#include <string>
#include <vector>

#include "tests/common/capture.h"
#include "tests/common/rows.h"
#include "tests/kernels/trig/reference.h"
#include "tests/kernels/trig/scalars.h"
#include "tools/common/rng.h"

namespace zvl_test {
namespace {

// The reduction's own budget: pi/4 in two words (2^-79 apart from it), the
// product with the low word and the tail of the sum each cost a few 1e-24.
// The worst found is 1.56e-23.
constexpr double kBound = 2e-23;
constexpr int kFirstField = 1036;  // [2^13, 2^14): 12800 is inside
constexpr int kLastField = 2046;

struct Worst {
    double err = 0;
    double x = 0;
    void note(double e, double at) {
        if (!(e <= err)) {
            err = e;
            x = at;
        }
    }
};

// Reduces x on every runnable cpu type; all must give cpu type 0's bits.
// Returns the relative error of cpu type 0's result (infinite for a wrong
// quadrant).
double reduce_everywhere(double x) {
    double out0[2];
    const int32_t q0 = trig_scalars(0).reduce(x, out0);
    for (int cpu = 1; cpu < kCpuTypes; ++cpu) {
        if (!cpu_runs(cpu)) continue;
        double out[2];
        const int32_t q = trig_scalars(cpu).reduce(x, out);
        EXPECT_TRUE(q == q0 && bits_of(out[0]) == bits_of(out0[0]) &&
                    bits_of(out[1]) == bits_of(out0[1]))
            << "cpu type " << cpu << " differs from cpu type 0 at " << std::hexfloat << x;
    }
    return reduce_error(x, q0, out0[0], out0[1]);
}

std::string where(const Worst& w) {
    char buf[120];
    std::snprintf(buf, sizeof buf, "worst %.3g at %a", w.err, w.x);
    return buf;
}

double with_field(uint64_t field, uint64_t mantissa) { return from_bits(field << 52 | mantissa); }

TEST(TrigReduce, RandomArgumentsAtEveryExponent) {
    zvl_tools::Rng rng(13);
    const int per_exponent = 24 * sample_factor();
    Worst worst;
    for (int e = kFirstField; e <= kLastField; ++e) {
        Worst here;
        for (int k = 0; k < per_exponent; ++k) {
            double x = with_field(static_cast<uint64_t>(e), rng.next() >> 12);
            if (k & 1) x = -x;
            here.note(reduce_everywhere(x), x);
        }
        EXPECT_LE(here.err, kBound) << "exponent field " << e << ": " << where(here);
        worst.note(here.err, here.x);
    }
    std::printf("random arguments: %s\n", where(worst).c_str());
}

// In each binade the doubles nearest to an even and to an odd multiple of
// pi/2: the smallest remainders, down to 2^-61 (6381956970095103 * 2^797).
// The wide path sums its last products in pairs, each pair rounded (2^-125
// or so, absolutely), which at a remainder of 2^-61 is up to 2^-62 of it;
// the worst found is 6.6e-21. The direct path's parts of pi/4 end near
// 2^-143, so m of them (m < 2^31) are good to 2^-111; its smallest remainder
// is 2^-59 (worst found 1.8e-18, 2^-59). Either is far below an ulp of the
// callouts' results.
TEST(TrigReduce, NearestToMultiplesOfHalfPi) {
    Worst direct, wide;
    int count = 0;
    for (double x : hard_cases("near_pi2")) {
        if (std::fabs(x) < 8192) continue;
        ++count;
        const double err = reduce_everywhere(x);
        if (std::fabs(x) < 0x1p30) {
            direct.note(err, x);
            EXPECT_LE(err, 0x1p-52) << std::hexfloat << x;
        } else {
            wide.note(err, x);
            EXPECT_LE(err, 0x1p-62) << std::hexfloat << x;
        }
    }
    EXPECT_GT(count, 1900);
    const double hardest = 6381956970095103.0 * 0x1p797;
    EXPECT_LE(reduce_everywhere(hardest), kBound);
    EXPECT_LE(reduce_everywhere(-hardest), kBound);
    std::printf("nearest to multiples of pi/2: direct path %s; wide path %s\n",
                where(direct).c_str(), where(wide).c_str());
}

// The ends of the paths and of the parts of pi/4, the powers of two (whose
// low part B is zero) and the largest double, which reads words up to 47.
TEST(TrigReduce, PathBoundariesAndPowersOfTwo) {
    std::vector<double> xs = {12800.0, 0x1p17, 0x1p23, 0x1p30, DBL_MAX};
    for (double b : {0x1p23, 0x1p30}) {
        xs.push_back(std::nextafter(b, 0.0));
        xs.push_back(std::nextafter(b, INFINITY));
    }
    for (int k = 13; k <= 1023; ++k) {
        const double p = std::ldexp(1.0, k);
        xs.push_back(p);
        xs.push_back(std::nextafter(p, INFINITY));
        xs.push_back(std::nextafter(p, 0.0));
    }
    xs.push_back(std::nextafter(DBL_MAX, 0.0));
    for (double x : xs) {
        EXPECT_LE(reduce_everywhere(x), kBound) << std::hexfloat << x;
        EXPECT_LE(reduce_everywhere(-x), kBound) << std::hexfloat << -x;
    }
}

// The wide path keeps an integer part Y after dropping whole turns, from
// which the quadrant comes. Y is at least 3.62, and below 4 only at the
// exponent field 1403 (where A T(2) alone can be as small as 3.62) with x
// just above 2^380 and B small: these arguments, found by running the wide
// path over such x, leave Y in [3.73, 3.99). An integer part read with the
// exponent field's bits in it put them at quadrant 1; it is 2.
TEST(TrigReduce, IntegerPartBelowFour) {
    const double xs[] = {0x1.0001f4000106ap+380, 0x1.0001f40010ef4p+380, 0x1.0001f400607a6p+380,
                         0x1.00116b800c8e3p+380, 0x1.00116b803c481p+380, 0x1.00116b804c30bp+380};
    for (double x : xs) {
        double out[2];
        EXPECT_EQ(trig_scalars(0).reduce(x, out), 2) << std::hexfloat << x;
        EXPECT_LE(reduce_everywhere(x), kBound) << std::hexfloat << x;
        EXPECT_LE(reduce_everywhere(-x), kBound) << std::hexfloat << -x;
    }
}

}  // namespace
}  // namespace zvl_test
