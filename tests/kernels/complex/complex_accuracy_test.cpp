// The complex scalar routines against MPFR, on every cpu type's copy: each
// part in ulps of that part, and where a part has cancelled to far below
// the other (its ulp error no longer meaningful), the normwise relative
// error |f - ref|/|ref| in units of 2^-53. A point passes when each part is
// within the part budget or, for a part below 2^-40 of the result's size,
// when the normwise error is within its budget.
//
// Arguments: random parts with log-uniform sizes over bands where the
// routines change method (near 1 and the unit circle for the inverse
// functions, near zeros of cos and sin for the hyperbolic ones, the whole
// range for the roots), both signs. ZVL_COMPLEX_SAMPLES multiplies the
// counts (the ctest label "long" runs 30 times the default).
#include <gtest/gtest.h>
#include <mpfr.h>

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "kernels/common/fp_guard.h"
#include "tools/common/complex_reference.h"
#include "tests/kernels/complex/ext_set.h"

namespace {

int sample_factor() {
    const char* s = std::getenv("ZVL_COMPLEX_SAMPLES");
    const int f = s ? std::atoi(s) : 1;
    return f > 0 ? f : 1;
}

struct Rng {
    uint64_t s;
    uint64_t next() {
        s = s * 6364136223846793005u + 1442695040888963407u;
        return s ^ (s >> 31);
    }
    double unit() { return static_cast<double>(next() >> 11) * 0x1p-53; }
    bool coin() { return (next() >> 40) & 1; }
};

// A band of arguments: parts of sizes 2^e, e uniform in [lo, hi] (x and y
// drawn independently), random signs. NearOne puts x at +-(1 + d) with d
// of size 2^e; NearUnitCircle puts z at e^(it) (1 + d); NearHalfPi puts y
// at k pi/2 + d for k below 8, x of size 2^e.
struct Band {
    enum Kind { Sizes, NearOne, NearUnitCircle, NearHalfPi } kind;
    double lo, hi;    // exponents of x, or of d
    double ylo, yhi;  // exponents of y
    int samples;
};

double sized(Rng& rng, double lo, double hi) {
    const double e = lo + (hi - lo) * rng.unit();
    const double v = std::ldexp(1.0 + rng.unit(), static_cast<int>(std::floor(e)));
    return rng.coin() ? -v : v;
}

void draw(const Band& b, Rng& rng, double* x, double* y) {
    switch (b.kind) {
        case Band::Sizes:
            *x = sized(rng, b.lo, b.hi);
            *y = sized(rng, b.ylo, b.yhi);
            return;
        case Band::NearOne:
            *x = (1.0 + sized(rng, b.lo, b.hi)) * (rng.coin() ? -1 : 1);
            *y = sized(rng, b.ylo, b.yhi);
            return;
        case Band::NearUnitCircle: {
            const double t = 6.283185307179586 * rng.unit(), d = 1.0 + sized(rng, b.lo, b.hi);
            *x = d * std::cos(t);
            *y = d * std::sin(t);
            return;
        }
        case Band::NearHalfPi:
            *x = sized(rng, b.lo, b.hi);
            *y = 1.5707963267948966 * static_cast<double>(rng.next() % 8) + sized(rng, -60, -1);
            if (rng.coin()) *y = -*y;
            return;
    }
}

// One member of a routine on cpu type c.
using Member = ComplexScalar (*)(int c);
template <ComplexScalarId F>
ComplexScalar extended(int c) {
    return ext_sets[c]->complex[F];
}
ComplexScalar sqrt_fast(int c) { return sqrt_sets[c]->fast; }
ComplexScalar sqrt_vector(int c) { return sqrt_sets[c]->vector_one; }

struct Routine {
    const char* name;
    Member member;
    Ref ref;
    bool quarter_turn;   // measured against ref at iz: -i f(iz) or f(iz)
    bool rotate_result;  // -i times the reference at iz (sin, tan, asin, atan)
    std::vector<Band> bands;
};

const std::vector<Band> kRootBands = {
    {Band::Sizes, -4, 4, -4, 4, 200},        {Band::Sizes, -1074, 1023, -1074, 1023, 500},
    {Band::Sizes, -4, 4, -70, -50, 100},     {Band::Sizes, -70, -50, -4, 4, 100},
    {Band::Sizes, -470, -450, -470, -450, 66}, {Band::Sizes, 500, 1023, 500, 1023, 66},
};
const std::vector<Band> kHypBands = {
    {Band::Sizes, -4, 4, -4, 4, 200},      {Band::Sizes, -60, 9.5, -60, 60, 400},
    {Band::Sizes, -1074, -1000, -1074, 1023, 66}, {Band::NearHalfPi, -30, 9, 0, 0, 266},
    {Band::Sizes, 9, 11.1, -4, 4, 66},
};
const std::vector<Band> kInverseBands = {
    {Band::Sizes, -4, 4, -4, 4, 200},        {Band::Sizes, -1074, 1023, -1074, 1023, 333},
    {Band::NearOne, -60, -1, -1074, 0, 200}, {Band::NearOne, -60, -1, -60, -20, 133},
    {Band::NearUnitCircle, -60, -1, 0, 0, 200}, {Band::Sizes, -1, 1, -1074, -30, 133},
};

const std::vector<Routine>& routines() {
#define ZVL_EXTENDED(f) #f, extended<f##_id>
    static const std::vector<Routine> r = {
        {ZVL_EXTENDED(zSqrt_scalar), Ref::Sqrt, false, false, kRootBands},
        {"zSqrt_fast", sqrt_fast, Ref::Sqrt, false, false, kRootBands},
        {"zSqrt_vector", sqrt_vector, Ref::Sqrt, false, false, kRootBands},
        {ZVL_EXTENDED(zCosh_scalar), Ref::Cosh, false, false, kHypBands},
        {ZVL_EXTENDED(zSinh_scalar), Ref::Sinh, false, false, kHypBands},
        {ZVL_EXTENDED(zTanh_scalar), Ref::Tanh, false, false, kHypBands},
        {ZVL_EXTENDED(zCos_scalar), Ref::Cosh, true, false, kHypBands},
        {ZVL_EXTENDED(zSin_scalar), Ref::Sinh, true, true, kHypBands},
        {ZVL_EXTENDED(zTan_scalar), Ref::Tanh, true, true, kHypBands},
        {ZVL_EXTENDED(zAcos_scalar), Ref::Acos, false, false, kInverseBands},
        {ZVL_EXTENDED(zAcosh_scalar), Ref::Acosh, false, false, kInverseBands},
        {ZVL_EXTENDED(zAsinh_scalar), Ref::Asinh, false, false, kInverseBands},
        {ZVL_EXTENDED(zAtanh_scalar), Ref::Atanh, false, false, kInverseBands},
        {ZVL_EXTENDED(zAsin_scalar), Ref::Asinh, true, true, kInverseBands},
        {ZVL_EXTENDED(zAtan_scalar), Ref::Atanh, true, true, kInverseBands},
    };
#undef ZVL_EXTENDED
    return r;
}

// Error of `got` against `ref` in ulps of ref rounded to double (ulp of
// the smallest subnormal below 2^-1022).
double ulps(double got, const mpfr_t ref) {
    if (std::isnan(got) || std::isinf(got) || mpfr_inf_p(ref)) {
        const double r = mpfr_get_d(ref, MPFR_RNDN);
        return got == r ? 0.0 : INFINITY;
    }
    const double rd = mpfr_get_d(ref, MPFR_RNDN);
    if (std::isinf(rd)) return INFINITY;  // the truth rounds to overflow
    mpfr_t d;
    mpfr_init2(d, mpfr_get_prec(ref) + 64);
    mpfr_sub_d(d, ref, got, MPFR_RNDN);
    const int e = rd == 0 ? -1074 : std::max(std::ilogb(rd) - 52, -1074);
    mpfr_mul_2si(d, d, -e, MPFR_RNDN);
    const double u = std::fabs(mpfr_get_d(d, MPFR_RNDN));
    mpfr_clear(d);
    return u;
}

struct Worst {
    double part = 0, norm = 0;
    double x = 0, y = 0;
    long normwise_points = 0, points = 0;
};

constexpr double kPartBudget = 1.0;
constexpr double kNormBudget = 2.0;  // 2^-52, in units of 2^-53

// f and its reference at (x, y); returns false on a fault, with the
// numbers in `worst`.
bool measure(const Routine& r, int cpu, double x, double y, mpfr_t re, mpfr_t im, Worst& worst) {
    const ZVLComplex16 z = {x, y};
    ZVLComplex16 w;
    r.member(cpu)(&w, &z);
    const double ur = ulps(w.real, re), ui = ulps(w.imag, im);
    // normwise: |f - ref| / |ref|, in 2^-53
    mpfr_t a, b, n;
    mpfr_inits2(mpfr_get_prec(re) + 64, a, b, n, static_cast<mpfr_ptr>(nullptr));
    mpfr_sub_d(a, re, w.real, MPFR_RNDN);
    mpfr_sub_d(b, im, w.imag, MPFR_RNDN);
    mpfr_hypot(a, a, b, MPFR_RNDN);
    mpfr_hypot(n, re, im, MPFR_RNDN);
    mpfr_div(a, a, n, MPFR_RNDN);
    mpfr_mul_2si(a, a, 53, MPFR_RNDN);
    const double nw = std::isfinite(w.real) && std::isfinite(w.imag) ? mpfr_get_d(a, MPFR_RNDN)
                                                                      : INFINITY;
    // a part is "cancelled" when it is below 2^-40 of the result's size
    mpfr_mul_2si(n, n, -40, MPFR_RNDN);
    const bool re_small = mpfr_cmpabs(re, n) < 0, im_small = mpfr_cmpabs(im, n) < 0;
    mpfr_clears(a, b, n, static_cast<mpfr_ptr>(nullptr));
    ++worst.points;
    bool ok = true, used_norm = false;
    for (auto [u, small] : {std::pair{ur, re_small}, std::pair{ui, im_small}}) {
        if (u <= kPartBudget) {
            if (u > worst.part) {
                worst.part = u;
                worst.x = x;
                worst.y = y;
            }
            continue;
        }
        if (small && nw <= kNormBudget) {
            used_norm = true;
            continue;
        }
        ok = false;
    }
    if (used_norm) ++worst.normwise_points;
    if (used_norm && nw > worst.norm) worst.norm = nw;
    if (!ok)
        ADD_FAILURE() << ext_sets[cpu]->label << " " << r.name << "(" << std::hexfloat << x
                      << ", " << y << ") = (" << w.real << ", " << w.imag << ") ref ("
                      << mpfr_get_d(re, MPFR_RNDN) << ", " << mpfr_get_d(im, MPFR_RNDN)
                      << std::defaultfloat << ") errors " << ur << ", " << ui << " ulp, normwise "
                      << nw;
    return ok;
}

class ComplexAccuracy : public ::testing::TestWithParam<size_t> {};

TEST_P(ComplexAccuracy, EachPartWithinAnUlp) {
    X87Guard<0x300> guard;
    const Routine& r = routines()[GetParam()];
    Rng rng{0x2545F4914F6CDD1Du + GetParam()};
    mpfr_t re, im;
    mpfr_inits2(64, re, im, static_cast<mpfr_ptr>(nullptr));
    std::vector<Worst> worst(6);
    int faults = 0;
    for (const Band& b : r.bands) {
        for (int i = 0; i < b.samples * sample_factor() && faults < 20; ++i) {
            double x, y;
            draw(b, rng, &x, &y);
            // the reference at z, or at iz = (-y, x) for a quarter turn:
            // cos z = cosh(iz) and sin z = -i sinh(iz), and so on
            const double rx = r.quarter_turn ? -y : x, ry = r.quarter_turn ? x : y;
            mpfr_set_prec(re, 64);
            mpfr_set_prec(im, 64);
            mpfr_t fre, fim;
            mpfr_inits2(40000, fre, fim, static_cast<mpfr_ptr>(nullptr));
            complex_reference(r.ref, rx, ry, fre, fim);
            if (r.rotate_result) {
                mpfr_swap(fre, fim);
                mpfr_neg(fim, fim, MPFR_RNDN);
            }
            for (int c = 0; c < 6; ++c) {
                if (c == 5 && !__builtin_cpu_supports("avx")) continue;
                if (!measure(r, c, x, y, fre, fim, worst[c])) ++faults;
            }
            mpfr_clears(fre, fim, static_cast<mpfr_ptr>(nullptr));
        }
    }
    for (int c = 0; c < 6; ++c)
        std::printf("%s %-14s max %.3f ulp at (%a, %a); %ld of %ld points normwise, max %.3f\n",
                    ext_sets[c]->label, r.name, worst[c].part, worst[c].x,
                    worst[c].y, worst[c].normwise_points, worst[c].points, worst[c].norm);
    mpfr_clears(re, im, static_cast<mpfr_ptr>(nullptr));
}

INSTANTIATE_TEST_SUITE_P(Routines, ComplexAccuracy, ::testing::Range<size_t>(0, routines().size()),
                         [](const ::testing::TestParamInfo<size_t>& i) {
                             return std::string(routines()[i.param].name);
                         });

}  // namespace
