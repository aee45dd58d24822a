// The scalar callouts of Sin and Cos and the scalar tangent against MPFR, on
// every cpu type's copy, within the HA budget of 1 ulp over the whole double
// range: random arguments by bit pattern and by value, the range without
// reduction, both sides of the thresholds, the hard-to-round cases of
// tests/data/ulp-hardcases, and the doubles nearest to multiples of pi/2,
// where the result's relative accuracy is the reduction's. Every cpu type
// gives cpu type 0's bits.
#include <gtest/gtest.h>
#include <mpfr.h>

#include <cfloat>
#include <cmath>
#include <cstdio>
#include <vector>

#include "tests/common/capture.h"
#include "tests/common/rows.h"
#include "tests/kernels/trig/reference.h"
#include "tests/kernels/trig/scalars.h"
#include "tools/common/rng.h"

namespace zvl_test {
namespace {

struct Function {
    const char* name;
    Ref1 ref;
    int32_t (*TrigScalars::*callout)(const double*, double*);
    const char* hard;      // hard-to-round cases, tests/data/ulp-hardcases
    double reduce_from;    // where the routine starts to call TrigReduce
    double budget;         // ulp
};

// HA allows 1 ulp; the budgets hold the routines near what they reach (the
// long sweep's worst in brackets): sin 0.518 (at -84578.009342187608), tan
// 0.569 (at -6.8467714650438366e+118), cos 0.601 at 91553.863907240549,
// the double of [2^16, 2^17) nearest to an odd multiple of pi/2, 2^-52 from
// it: there the three parts of pi/32 times N (near 2^20) are good to 2^-106,
// a fifth of an ulp of the result.
const Function kFunctions[] = {
    {"sin", mpfr_sin, &TrigScalars::sin, "sin", 0x1p17, 0.55},
    {"cos", mpfr_cos, &TrigScalars::cos, "cos", 0x1p17, 0.65},
    {"tan", mpfr_tan, &TrigScalars::tan, "tan", 12800.0, 0.65},
};

class Accuracy : public testing::TestWithParam<Function> {};

// The arguments of one function.
std::vector<double> samples(const Function& f) {
    zvl_tools::Rng rng(7);
    const int n = 4000 * sample_factor();
    std::vector<double> xs;
    for (int i = 0; i < n; ++i) {
        // every finite double by pattern, either sign
        const double m = rng.by_bits(0x1p-1074, DBL_MAX);
        xs.push_back(i & 1 ? -m : m);
        // by value, where no reduction is needed
        xs.push_back(rng.linear(-f.reduce_from, f.reduce_from));
        // both sides of the reduction's threshold, and the vector bounds below it
        if (i % 4 == 0) xs.push_back(rng.by_bits(f.reduce_from / 8, f.reduce_from * 8));
    }
    // the doubles on either side of j pi/2, below the reduction's threshold
    mpfr_t v;
    mpfr_init2(v, 128);
    const int multiples = 2000 * sample_factor();
    for (int j = 1; j <= multiples; ++j) {
        mpfr_const_pi(v, MPFR_RNDN);
        mpfr_mul_ui(v, v, static_cast<unsigned long>(j), MPFR_RNDN);
        mpfr_div_2ui(v, v, 1, MPFR_RNDN);
        const double near = mpfr_get_d(v, MPFR_RNDN);
        if (near >= f.reduce_from) break;
        for (double x : {near, std::nextafter(near, 0.0), std::nextafter(near, INFINITY)}) {
            xs.push_back(x);
            xs.push_back(-x);
        }
    }
    mpfr_clear(v);
    for (const char* stem : {f.hard, "near_pi2"})
        for (double x : hard_cases(stem)) xs.push_back(x);
    for (double x : {f.reduce_from, std::nextafter(f.reduce_from, 0.0), 90112.0, 65568.0,
                     std::nextafter(65568.0, INFINITY), 0x1p30, 0x1p-252,
                     std::nextafter(0x1p-252, 0.0), DBL_MAX, 0x1p-1022, 1.0, 0.5}) {
        xs.push_back(x);
        xs.push_back(-x);
    }
    return xs;
}

TEST_P(Accuracy, WithinTheBudgetOnEveryCpuType) {
    const Function& f = GetParam();
    double worst = 0, worst_x = 0, worst_got = 0;
    size_t count = 0;
    for (double x : samples(f)) {
        double y0;
        EXPECT_EQ((trig_scalars(0).*f.callout)(&x, &y0), 0) << std::hexfloat << x;
        for (int cpu = 1; cpu < kCpuTypes; ++cpu) {
            if (!cpu_runs(cpu)) continue;
            double y;
            (trig_scalars(cpu).*f.callout)(&x, &y);
            EXPECT_EQ(bits_of(y), bits_of(y0))
                << f.name << " cpu type " << cpu << " differs from cpu type 0 at " << std::hexfloat
                << x;
        }
        const double err = ulp_error(f.ref, x, y0);
        ++count;
        if (!(err <= worst)) {
            worst = err;
            worst_x = x;
            worst_got = y0;
        }
    }
    EXPECT_LE(worst, f.budget) << f.name << ": " << worst << " ulp at " << std::hexfloat << worst_x
                               << ", got " << worst_got;
    std::printf("%s: %zu arguments, worst %.3f ulp at %a (%.17g)\n", f.name, count, worst, worst_x,
                worst_x);
}

INSTANTIATE_TEST_SUITE_P(Trig, Accuracy, testing::ValuesIn(kFunctions),
                         [](const testing::TestParamInfo<Function>& p) {
                             return std::string(p.param.name);
                         });

// Cpu type 0's vector tangent (HA) below 12800, where it does not call
// out: reduction by pi/32 to a table of tan B, the quotient of two double
// words. Its hard arguments: the doubles next to every multiple of pi/2 (the
// poles and zeros, where the remainder cancels most) and next to the odd
// multiples of pi/64 (where N, the row and the quadrant change), the last
// doubles below 12800, tiny and subnormal arguments. The vector lanes and the
// remainder's one-lane path are both measured; zeros keep their sign.
TEST(TanCpuTypeZero, HardArgumentsWithinBudget) {
    // HA allows 1 ulp; the kernel reaches 0.551 over 1e6 random arguments
    constexpr double kBudget = 0.6;
    std::vector<double> xs;
    mpfr_t v;
    mpfr_init2(v, 128);
    // j pi/64 below 12800: the multiples of pi/2 at j = 32k, and every
    // thirteenth row boundary (odd j)
    for (int j = 1; j < 260800; ++j) {
        if (j % 32 != 0 && !(j % 2 == 1 && j % 13 == 1)) continue;
        mpfr_const_pi(v, MPFR_RNDN);
        mpfr_mul_ui(v, v, static_cast<unsigned long>(j), MPFR_RNDN);
        mpfr_div_2ui(v, v, 6, MPFR_RNDN);
        const double near = mpfr_get_d(v, MPFR_RNDN);
        if (near >= 12800.0) break;
        for (double x : {near, std::nextafter(near, 0.0), std::nextafter(near, INFINITY)})
            xs.insert(xs.end(), {x, -x});
    }
    mpfr_clear(v);
    for (double x : hard_cases("near_pi2"))
        if (std::fabs(x) < 12800.0) xs.push_back(x);
    for (double x : hard_cases("tan"))
        if (std::fabs(x) < 12800.0) xs.push_back(x);
    double below = 12800.0;
    for (int k = 0; k < 8; ++k) {
        below = std::nextafter(below, 0.0);
        xs.insert(xs.end(), {below, -below});
    }
    for (double x : {0x1p-1074, 0x1.8p-1073, 0x1.ffffffffffffep-1023, 0x1p-1022, 0x1p-600,
                     0x1p-252, 0x1p-27, 0x1p-26, 1e-8})
        xs.insert(xs.end(), {x, -x});
    const Kernel k = row("VDTAN").kernel(0, 0);
    std::vector<double> y(xs.size());
    k(static_cast<int>(xs.size()), xs.data(), nullptr, y.data(), nullptr);
    double worst = 0, worst_x = 0;
    for (size_t i = 0; i < xs.size(); ++i) {
        double one;  // the same element alone, through the one-lane path
        k(1, &xs[i], nullptr, &one, nullptr);
        EXPECT_EQ(bits_of(one), bits_of(y[i])) << std::hexfloat << xs[i];
        const double err = ulp_error(mpfr_tan, xs[i], y[i]);
        if (!(err <= worst)) {
            worst = err;
            worst_x = xs[i];
        }
    }
    EXPECT_LE(worst, kBudget) << worst << " ulp at " << std::hexfloat << worst_x;
    for (double z : {0.0, -0.0}) {
        double out = 1.0;
        k(1, &z, nullptr, &out, nullptr);
        EXPECT_EQ(bits_of(out), bits_of(z));
    }
    std::printf("tan, cpu type 0 HA: %zu hard arguments, worst %.3f ulp at %a\n", xs.size(), worst,
                worst_x);
}

}  // namespace
}  // namespace zvl_test
