// The support set against MPFR: each routine over its domain (random
// arguments on intervals chosen where the method changes, near zeros and
// poles, huge arguments for the trigonometric ones), with the error in ulps
// of the 64-bit extended format of the exact value. Prints each routine's
// worst case; fails above the budget. Measured on cpu type 0's copy, with
// every other copy checked to give the same bits on the same arguments.
//
// ZVL_EXT_SAMPLES multiplies the sample counts (the ctest label "long" runs
// 40 times the default).
#include <gtest/gtest.h>
#include <mpfr.h>

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "kernels/common/fp_guard.h"
#include "tests/kernels/complex/ext_set.h"

namespace {

constexpr mpfr_prec_t kPrec = 256;

int sample_factor() {
    const char* s = std::getenv("ZVL_EXT_SAMPLES");
    const int f = s ? std::atoi(s) : 1;
    return f > 0 ? f : 1;
}

long double ld(uint64_t sig, unsigned sign_exp) { return ext_from_bits(sig, sign_exp); }

struct Rng {
    uint64_t s;
    uint64_t next() {
        s = s * 6364136223846793005u + 1442695040888963407u;
        return s ^ (s >> 31);
    }
    // uniform in [0, 1) with 64 random bits
    long double unit() { return static_cast<long double>(next() >> 1) * 0x1p-63L; }
};

// Arguments of one interval: uniform on [lo, hi]; or with a uniform binary
// exponent in [lo, hi] and a random significand (both signs when `signs`);
// or +-1 -+ d, d with a random significand and an exponent in [-hi, -lo],
// on the side towards 0 (both sides when `signs`); or 1 + d (AboveOne); or
// the extended value nearest k pi/2 moved by up to 2 ulps, with k below
// 2^b and b in [lo, hi] (NearHalfPi: zeros of sin and cos, poles of tan,
// where the reduction cancels up to 64 bits and more).
struct Interval {
    enum Kind { Uniform, Exponent, NearOne, NearMinusOne, AboveOne, NearHalfPi } kind;
    long double lo, hi;  // bounds, or the exponent range
    bool signs;
    int samples;
};

long double draw(const Interval& iv, Rng& rng) {
    switch (iv.kind) {
        case Interval::Uniform: return iv.lo + (iv.hi - iv.lo) * rng.unit();
        case Interval::Exponent: {
            const int e0 = static_cast<int>(iv.lo), e1 = static_cast<int>(iv.hi);
            const int e = e0 + static_cast<int>(rng.next() % static_cast<uint64_t>(e1 - e0 + 1));
            const bool neg = iv.signs && (rng.next() & 1);
            return ld(rng.next() | 0x8000000000000000u, static_cast<unsigned>(16383 + e) | (neg ? 0x8000u : 0u));
        }
        case Interval::NearOne:
        case Interval::NearMinusOne:
        case Interval::AboveOne: {
            const int e = -static_cast<int>(iv.lo) -
                          static_cast<int>(rng.next() % static_cast<uint64_t>(iv.hi - iv.lo + 1));
            const long double d = ld(rng.next() | 0x8000000000000000u, static_cast<unsigned>(16383 + e));
            if (iv.kind == Interval::AboveOne) return 1.0L + d;
            const long double x = 1.0L - d;  // rounded: an argument like any other
            const bool flip = iv.signs && (rng.next() & 1);
            const long double v = flip ? 1.0L + d : x;
            return iv.kind == Interval::NearOne ? v : -v;
        }
        case Interval::NearHalfPi: {
            const int b = static_cast<int>(iv.lo) +
                          static_cast<int>(rng.next() % static_cast<uint64_t>(iv.hi - iv.lo + 1));
            const uint64_t k = (rng.next() >> (64 - b)) | 1;
            mpfr_t t;
            mpfr_init2(t, 64);
            mpfr_const_pi(t, MPFR_RNDN);  // rounded to 64 bits: then scaled exactly
            mpfr_t exact;
            mpfr_init2(exact, 512);
            mpfr_const_pi(exact, MPFR_RNDN);
            mpfr_mul_ui(exact, exact, k, MPFR_RNDN);
            mpfr_div_2ui(exact, exact, 1, MPFR_RNDN);
            mpfr_set(t, exact, MPFR_RNDN);
            long double x = mpfr_get_ld(t, MPFR_RNDN);
            mpfr_clears(t, exact, static_cast<mpfr_ptr>(nullptr));
            for (int m = static_cast<int>(rng.next() % 5) - 2; m != 0; m += m > 0 ? -1 : 1)
                x = m > 0 ? nextafterl(x, INFINITY) : nextafterl(x, -INFINITY);
            return iv.signs && (rng.next() & 1) ? -x : x;
        }
    }
    return 0;
}

// |got - exact| in ulps of the extended format at the exact value (the
// subnormal ulp 2^-16445 below 2^-16382). A result that overflowed where
// the exact value is beyond the format counts as exact.
double ulp_error(long double got, mpfr_srcptr exact) {
    if (mpfr_nan_p(exact)) return got != got ? 0 : INFINITY;
    if (got != got) return INFINITY;
    mpfr_t g, d;
    mpfr_inits2(kPrec, g, d, static_cast<mpfr_ptr>(nullptr));
    mpfr_set_ld(g, got, MPFR_RNDN);
    double err;
    if (mpfr_inf_p(g) || mpfr_inf_p(exact)) {
        const bool beyond = mpfr_inf_p(exact) || mpfr_get_exp(exact) > 16384;
        err = mpfr_inf_p(g) && beyond && mpfr_sgn(g) == mpfr_sgn(exact) ? 0 : INFINITY;
    } else if (mpfr_zero_p(exact)) {
        err = mpfr_zero_p(g) ? 0 : INFINITY;
    } else {
        mpfr_sub(d, g, exact, MPFR_RNDN);
        long e = mpfr_get_exp(exact) - 64;  // |exact| in [2^(E-1), 2^E)
        if (e < -16445) e = -16445;
        mpfr_mul_2si(d, d, -e, MPFR_RNDN);
        err = std::fabs(mpfr_get_d(d, MPFR_RNDN));
    }
    mpfr_clears(g, d, static_cast<mpfr_ptr>(nullptr));
    return err;
}

std::string show(long double x) {
    char buf[64];
    std::snprintf(buf, sizeof buf, "%.21Lg", x);
    return buf;
}

struct Worst {
    double err = 0;
    long double x = 0, y = 0;
    long samples = 0;
};

void report(const char* name, const Worst& w, double budget) {
    std::printf("%-16s max %.3f ulp at %s%s%s  (%ld samples, budget %.3f)\n", name, w.err,
                show(w.x).c_str(), w.y != 0 ? ", " : "", w.y != 0 ? show(w.y).c_str() : "",
                w.samples, budget);
    EXPECT_LE(w.err, budget) << name << " at " << show(w.x);
}

class ExtAccuracy : public testing::Test {
protected:
    void SetUp() override {
        mpfr_set_emin(mpfr_get_emin_min());
        mpfr_set_emax(mpfr_get_emax_max());
    }
    X87Guard<0x300> guard;
};

using MpfrUnary = int (*)(mpfr_ptr, mpfr_srcptr, mpfr_rnd_t);

struct UnaryRow {
    ExtUnaryId f;
    MpfrUnary exact;
    double budget;
    std::vector<Interval> intervals;
};

// Pi multiples and the like are reached by the exponent intervals and the
// dedicated near-zero and near-pole intervals below.
const Interval kAll = {Interval::Exponent, -16445, 16383, false, 3000};
const Interval kAllSigned = {Interval::Exponent, -16445, 16383, true, 3000};
const Interval kModerate = {Interval::Exponent, -70, 70, true, 6000};

// Budgets: about half an ulp where a routine rounds once from a pair;
// about one where the table-driven ones (sin, cos, sinh, atan, atan2) add
// their leading terms in plain extended arithmetic; three for tan, the
// quotient of two such, and two and a half for asin and acos, which take
// the root of 1 - x^2 rounded once. Each with a margin over the worst
// found at 40 times the default samples.
std::vector<UnaryRow> unary_rows() {
    using I = Interval;
    return {
        {ext_sqrt_id, mpfr_sqrt, 0.501, {kAll, {I::Uniform, 1, 4, false, 6000}}},
        {ext_log_id, mpfr_log, 0.52,
         {kAll, {I::Uniform, 0.5L, 2, false, 6000}, {I::NearOne, 1, 70, true, 6000}}},
        {ext_log1p_id, mpfr_log1p, 0.52,
         {{I::Uniform, -1, 1, false, 6000}, {I::Exponent, -80, -6, true, 6000},
          {I::NearMinusOne, 1, 64, false, 3000}, {I::Exponent, 0, 16383, false, 3000}}},
        // results from 2^-16382 up: below it the format's subnormal results
        // are rounded twice (2^k T (1 + p) to 64 bits, then to the subnormal)
        {ext_exp_id, mpfr_exp, 0.51,
         {{I::Uniform, -11354, 11400, false, 6000}, {I::Uniform, -1, 1, false, 6000},
          {I::Exponent, -80, 3, true, 6000}}},
        {ext_sin_id, mpfr_sin, 1.25,
         {kModerate, {I::Uniform, -10, 10, false, 6000}, {I::Exponent, 17, 30, true, 3000},
          {I::Exponent, 30, 16383, true, 300}, {I::NearHalfPi, 1, 64, true, 3000}}},
        {ext_cos_id, mpfr_cos, 1.25,
         {kModerate, {I::Uniform, -10, 10, false, 6000}, {I::Exponent, 17, 30, true, 3000},
          {I::Exponent, 30, 16383, true, 300}, {I::NearHalfPi, 1, 64, true, 3000}}},
        {ext_tan_id, mpfr_tan, 3.0,
         {kModerate, {I::Uniform, -10, 10, false, 6000}, {I::Exponent, 17, 30, true, 3000},
          {I::Exponent, 30, 16383, true, 300}, {I::NearHalfPi, 1, 64, true, 3000}}},
        {ext_sinh_id, mpfr_sinh, 1.25,
         {kModerate, {I::Uniform, -30, 30, false, 6000}, {I::Uniform, -11400, 11400, false, 3000}}},
        {ext_cosh_id, mpfr_cosh, 0.52,
         {kModerate, {I::Uniform, -30, 30, false, 6000}, {I::Uniform, -11400, 11400, false, 3000}}},
        {ext_tanh_id, mpfr_tanh, 0.52, {kModerate, {I::Uniform, -25, 25, false, 6000}}},
        {ext_asin_id, mpfr_asin, 2.5,
         {{I::Uniform, -1, 1, false, 6000}, {I::Exponent, -80, -1, true, 6000},
          {I::NearOne, 1, 64, false, 3000}}},
        {ext_acos_id, mpfr_acos, 2.5,
         {{I::Uniform, -1, 1, false, 6000}, {I::Exponent, -80, -1, true, 6000},
          {I::NearOne, 1, 64, false, 3000}, {I::NearMinusOne, 1, 64, false, 3000}}},
        {ext_atan_id, mpfr_atan, 1.25,
         {kAllSigned, kModerate, {I::Uniform, -4, 4, false, 6000}}},
        {ext_asinh_id, mpfr_asinh, 0.52, {kAllSigned, kModerate, {I::Uniform, -4, 4, false, 6000}}},
        {ext_acosh_id, mpfr_acosh, 0.52,
         {{I::Exponent, 0, 16383, false, 3000}, {I::Uniform, 1, 4, false, 6000},
          {I::AboveOne, 1, 64, false, 3000}}},
        {ext_atanh_id, mpfr_atanh, 0.52,
         {{I::Uniform, -1, 1, false, 6000}, {I::Exponent, -80, -1, true, 6000},
          {I::NearOne, 1, 64, false, 3000}, {I::NearMinusOne, 1, 64, false, 3000}}},
    };
}

// Every copy gives cpu type 0's bits on the arguments measured.
void expect_copies_agree(ExtUnaryId f, long double x, long double ref) {
    for (int c = 1; c < 6; ++c) {
        if (c == 5 && !__builtin_cpu_supports("avx")) continue;
        const long double got = ext_sets[c]->unary[f](x);
        ASSERT_TRUE(ext_same_bits(got, ref) || (got != got && ref != ref))
            << ext_sets[c]->label << " " << ext_unary_names[f] << "(" << show(x) << ")";
    }
}

TEST_F(ExtAccuracy, UnaryRoutines) {
    const int factor = sample_factor();
    mpfr_t xm, ym;
    mpfr_inits2(kPrec, xm, ym, static_cast<mpfr_ptr>(nullptr));
    for (const UnaryRow& row : unary_rows()) {
        Rng rng{0x5851F42D4C957F2Du + static_cast<uint64_t>(row.f)};
        Worst w;
        for (const Interval& iv : row.intervals) {
            for (long i = 0; i < static_cast<long>(iv.samples) * factor; ++i) {
                const long double x = draw(iv, rng);
                const long double got = ext_sets[0]->unary[row.f](x);
                mpfr_set_ld(xm, x, MPFR_RNDN);
                mpfr_set_prec(ym, kPrec);
                row.exact(ym, xm, MPFR_RNDN);
                const double err = ulp_error(got, ym);
                if (err > w.err || err != err) w = {err, x, 0, w.samples};
                ++w.samples;
                if (i % 16 == 0) expect_copies_agree(row.f, x, got);
            }
        }
        report(ext_unary_names[row.f], w, row.budget);
    }
    mpfr_clears(xm, ym, static_cast<mpfr_ptr>(nullptr));
}

TEST_F(ExtAccuracy, Atan2) {
    const int factor = sample_factor();
    Rng rng{0x2545F4914F6CDD1Du};
    mpfr_t xm, ym, r;
    mpfr_inits2(kPrec, xm, ym, r, static_cast<mpfr_ptr>(nullptr));
    Worst w;
    const Interval bands[] = {{Interval::Exponent, -8, 8, true, 8000},
                              {Interval::Exponent, -200, 200, true, 4000},
                              {Interval::Exponent, -16000, 16000, true, 2000}};
    auto measure = [&](long double y, long double x) {
        const long double got = ext_sets[0]->ext_atan2(y, x);
        mpfr_set_ld(ym, y, MPFR_RNDN);
        mpfr_set_ld(xm, x, MPFR_RNDN);
        mpfr_atan2(r, ym, xm, MPFR_RNDN);
        const double err = ulp_error(got, r);
        if (err > w.err || err != err) w = {err, y, x, w.samples};
        ++w.samples;
    };
    for (const Interval& iv : bands) {
        for (long i = 0; i < static_cast<long>(iv.samples) * factor; ++i) {
            const long double y = draw(iv, rng), x = draw(iv, rng);
            measure(y, x);
        }
    }
    // the smaller part over the larger within a few ulps of a crossover:
    // (k + 3/4)/64, where the table point c = k/64 or (k + 1)/64 is taken;
    // the midpoint (k + 1/2)/64, where t is largest below c, and just
    // above 1/128 the result's size; or 1, where the parts change roles.
    // Every sign, either part the larger
    const Interval side = {Interval::Exponent, -8, 8, true, 1};
    for (long i = 0; i < 6000L * factor; ++i) {
        const long double b = draw(side, rng);
        const uint64_t k = rng.next() % 129;
        const long double q = k == 128 ? 1.0L : (static_cast<long double>(k / 2) + (k % 2 ? 0.75L : 0.5L)) / 64;
        long double a = b * q;
        for (int m = static_cast<int>(rng.next() % 7) - 3; m != 0; m += m > 0 ? -1 : 1)
            a = m > 0 ? nextafterl(a, INFINITY) : nextafterl(a, -INFINITY);
        if (rng.next() & 1) a = -a;
        if (rng.next() & 1) {
            measure(a, b);
        } else {
            measure(b, a);
        }
    }
    report("ext_atan2", w, 1.25);
    mpfr_clears(xm, ym, r, static_cast<mpfr_ptr>(nullptr));
}

// The remainder of ext_reduce_pio4 against |x| - j pi/4 with j the even
// integer nearest |x| 4/pi, in ulps of the remainder; and j mod 8.
TEST_F(ExtAccuracy, ReducePio4) {
    const int factor = sample_factor();
    Rng rng{0x9E3779B97F4A7C15u};
    Worst w;
    const Interval bands[] = {{Interval::Exponent, 30, 80, true, 1000},
                              {Interval::Exponent, 80, 16383, true, 300},
                              {Interval::NearHalfPi, 32, 64, true, 1000}};
    for (const Interval& iv : bands) {
        for (long i = 0; i < static_cast<long>(iv.samples) * factor; ++i) {
            const long double x = draw(iv, rng);
            long double rh, rl;
            const int j = ext_sets[0]->ext_reduce_pio4(x, &rh, &rl);
            const mpfr_prec_t p = 16384 + 512;
            mpfr_t t, pi, jj, r, got;
            mpfr_inits2(p, t, pi, jj, static_cast<mpfr_ptr>(nullptr));
            mpfr_inits2(kPrec, r, got, static_cast<mpfr_ptr>(nullptr));
            mpfr_const_pi(pi, MPFR_RNDN);
            mpfr_set_ld(t, x, MPFR_RNDN);
            mpfr_mul_ui(t, t, 4, MPFR_RNDN);
            mpfr_div(t, t, pi, MPFR_RNDN);      // x 4/pi
            mpfr_div_2ui(jj, t, 1, MPFR_RNDN);
            mpfr_rint(jj, jj, MPFR_RNDN);
            mpfr_mul_2ui(jj, jj, 1, MPFR_RNDN);  // the nearest even integer
            mpfr_sub(t, t, jj, MPFR_RNDN);
            mpfr_mul(t, t, pi, MPFR_RNDN);
            mpfr_div_2ui(r, t, 2, MPFR_RNDN);    // x - j pi/4
            mpfr_fmod_ui(jj, jj, 8, MPFR_RNDN);
            long j8 = mpfr_get_si(jj, MPFR_RNDN);
            if (j8 < 0) j8 += 8;
            EXPECT_EQ(j, j8) << show(x);
            mpfr_set_ld(got, rh, MPFR_RNDN);
            mpfr_t lo;
            mpfr_init2(lo, 64);
            mpfr_set_ld(lo, rl, MPFR_RNDN);
            mpfr_add(got, got, lo, MPFR_RNDN);
            mpfr_sub(got, got, r, MPFR_RNDN);
            const long e = mpfr_get_exp(r) - 64;
            mpfr_mul_2si(got, got, -e, MPFR_RNDN);
            const double err = std::fabs(mpfr_get_d(got, MPFR_RNDN));
            if (err > w.err || err != err) w = {err, x, 0, w.samples};
            ++w.samples;
            mpfr_clears(t, pi, jj, r, got, lo, static_cast<mpfr_ptr>(nullptr));
        }
    }
    // the pair carries the remainder far beyond one rounding
    report("ext_reduce_pio4", w, 0.01);
}

}  // namespace
