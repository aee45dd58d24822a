// The measuring rows of the error functions: Erf, Erfc and ErfInv (see
// tools/common/functions.cpp).
#include "tools/common/rows/helpers.h"
#include "tools/erf_mpfr.h"

namespace zvl_tools {
namespace {

ZT_LOOP1(loop_erf, std::erf(x))
ZT_LOOP1(loop_erfc, std::erfc(x))

// ---------------------------------------------------------------- Erf

// 2^-1015: the small path's bound; 0.125 - 2^-56 and 0.125: the edge of HA's
// entry 0; 0.25 and 0.5: quarter-binade and eighth-binade edges; 4 and 4.5:
// the eighth-binade HA's error peaks in; 5.95: rounds to 1 below the
// constant entry from 6.
const double erf_special[] = {
    0.0, kTiny, 0x1p-1034, 0x1p-1015, kMin, 0x1p-60, 0x1p-28, 0.125 - 0x1p-56, 0.125,
    0.25, 0.5, 1.0, 2.0, 4.0, 4.5, 5.95, 6.0, 27.0, kMax, kInf, kNaN,
};

const Region erf_regions[] = {
    {lin(-6.0, 6.0), kNone, 4, "where erf is not yet 1"},
    {lg2(0x1p-30, 6.0), kNone, 2, "every binade up to 6"},
    {lg2(kTiny, 0x1p-30), kNone, 1, "small and subnormal arguments"},
    {lg2(6.0, kMax), kNone, 0.25, "the constant range"},
};

const Peer erf_peers[] = {
    mvec("libmvec AVX2", "_ZGVdN4v_erf", 4, Isa::Avx2),
    mvec("libmvec AVX", "_ZGVcN4v_erf", 4, Isa::Avx),
    mvec("libmvec SSE", "_ZGVbN2v_erf", 2, Isa::Base),
    sleef("SLEEF u10 AVX2", "Sleef_erfd4_u10avx2", 4, Isa::Avx2Fma),
    sleef("SLEEF u10 AVX", "Sleef_erfd4_u10avx", 4, Isa::Avx),
    sleef("SLEEF u10 SSE4", "Sleef_erfd2_u10sse4", 2, Isa::Sse41),
};

constexpr FunctionRow erf_row = {
    .name = "erf",
    .exported = "VDERF",
    .formula = "erf(x)",
    .shape = Shape::D1,
    .ref1 = mpfr_erf,
    .regions = list(erf_regions),
    .special_a = list(erf_special),
    .mirror = true,
    .timing_a = lin(-4.0, 4.0),
    .ordinary_a = 0.75,
    .plot_linear = true,
    .baseline = local("glibc erf", loop_erf),
    .peers = list(erf_peers),
};

// ---------------------------------------------------------------- Erfc

// 2^-55: below it the result is 1; 26.543243408203125: subnormal results
// from here; 27.22601318359375 and the underflow bound 27.226017111108362
// (its neighbours report status 4); -27.22601318359375: 2 from here down.
const double erfc_special[] = {
    0.0, 0x1p-55, 0x1p-30, 0.125, 0.5, 1.0, 2.0, 4.0, 10.0, 26.0, 26.543243408203125,
    27.0, 27.22601318359375, 27.226017111108362, 27.23, 28.0, -1.0, -6.0, -27.22601318359375,
    -30.0, kMax, -kMax, kInf, -kInf, kNaN,
};

const Region erfc_regions[] = {
    {lin(-6.0, 27.3), kNone, 4, "where erfc is neither 2 nor 0"},
    {lg2(0x1p-30, 27.3), kNone, 2, "every binade up to the underflow"},
    {lin(26.543243408203125, 27.3), kNone, 1, "subnormal results and underflow"},
    {lg2(kTiny, 0x1p-30), kNone, 0.5, "small arguments"},
    {lg2(27.3, kMax), kNone, 0.25, "0 and 2"},
};

const Peer erfc_peers[] = {
    mvec("libmvec AVX2", "_ZGVdN4v_erfc", 4, Isa::Avx2),
    mvec("libmvec AVX", "_ZGVcN4v_erfc", 4, Isa::Avx),
    mvec("libmvec SSE", "_ZGVbN2v_erfc", 2, Isa::Base),
    sleef("SLEEF u15 AVX2", "Sleef_erfcd4_u15avx2", 4, Isa::Avx2Fma),
    sleef("SLEEF u15 AVX", "Sleef_erfcd4_u15avx", 4, Isa::Avx),
    sleef("SLEEF u15 SSE4", "Sleef_erfcd2_u15sse4", 2, Isa::Sse41),
};

constexpr FunctionRow erfc_row = {
    .name = "erfc",
    .exported = "VDERFC",
    .formula = "erfc(x)",
    .shape = Shape::D1,
    .ref1 = mpfr_erfc,
    .regions = list(erfc_regions),
    .special_a = list(erfc_special),
    .timing_a = lin(-4.0, 20.0),
    .ordinary_a = 0.75,
    .plot_linear = true,
    .baseline = local("glibc erfc", loop_erfc),
    .peers = list(erfc_peers),
};

// ---------------------------------------------------------------- ErfInv

// erfinv by Newton's iteration in MPFR; +-inf at +-1, NaN beyond.
int ref_erfinv(mpfr_ptr r, mpfr_srcptr x, mpfr_rnd_t rnd) {
    if (mpfr_nan_p(x) || mpfr_zero_p(x)) return mpfr_set(r, x, rnd);
    const int c = mpfr_cmpabs_ui(x, 1);
    if (c > 0) {
        mpfr_set_nan(r);
        return 0;
    }
    if (c == 0) {
        mpfr_set_inf(r, mpfr_sgn(x));
        return 0;
    }
    mpfr_t y;
    mpfr_init2(y, mpfr_get_prec(r) + 64);
    zvl_tables::erfinv_of_x(y, mpfr_get_d(x, MPFR_RNDN));
    const int inex = mpfr_set(r, y, rnd);
    mpfr_clear(y);
    return inex;
}

// 2^-53: the scaled product below it; 0.5 and 0.75: t's binades; the last
// doubles below 1, 1 itself and just above it.
const double erfinv_special[] = {
    0.0, kTiny, 0x1p-1022, 0x1p-54, 0x1p-53, 0x1p-30, 0.25, 0.5, 0.75, 0.9375,
    1.0 - 0x1p-40, 1.0 - 0x1p-50, 1.0 - 0x1p-53, 1.0, 1.0 + 0x1p-52, 2.0, kInf, kNaN,
};

const Region erfinv_regions[] = {
    {lin(-1.0, 1.0), kNone, 4, "the open interval"},
    {lg2(0x1p-60, 1.0), kNone, 2, "every binade"},
    {lin(1.0 - 0x1p-20, 1.0), kNone, 1, "near the singularity"},
    {lg2(kTiny, 0x1p-60), kNone, 0.5, "small and subnormal arguments"},
    {lg2(1.0, kMax), kNone, 0.1, "beyond +-1"},
};

// The baseline: glibc's erf and erfc under Newton's iteration, from a
// single-precision start (Giles's approximation), as a scalar erfinv would
// be written without a library function for it.
double erfinv_newton(double x) {
    const double ax = std::fabs(x);
    if (!(ax < 1.0)) return ax == 1.0 ? std::copysign(kInf, x) : kNaN;
    if (ax == 0.0) return x;
    double w = -std::log((1.0 - ax) * (1.0 + ax)), p;
    if (w < 5.0) {
        w -= 2.5;
        p = 2.81022636e-08;
        for (double c : {3.43273939e-07, -3.5233877e-06, -4.39150654e-06, 0.00021858087,
                         -0.00125372503, -0.00417768164, 0.246640727, 1.50140941})
            p = c + p * w;
    } else {
        w = std::sqrt(w) - 3.0;
        p = -0.000200214257;
        for (double c : {0.000100950558, 0.00134934322, -0.00367342844, 0.00573950773,
                         -0.0076224613, 0.00943887047, 1.00167406, 2.83297682})
            p = c + p * w;
    }
    // y -= (erf(y) - |x|) / (2/sqrt(pi) exp(-y^2)), on erfc and 1 - |x|
    // (exact) from 0.5 on
    double y = p * ax;
    constexpr double kHalfSqrtPi = 0.88622692545275801;
    for (int i = 0; i < 3; ++i) {
        const double e = ax < 0.5 ? std::erf(y) - ax : (1.0 - ax) - std::erfc(y);
        y -= e * kHalfSqrtPi * std::exp(y * y);
    }
    return std::copysign(y, x);
}
ZT_LOOP1(loop_erfinv, erfinv_newton(x))

constexpr FunctionRow erfinv_row = {
    .name = "erfinv",
    .exported = "VDERFINV",
    .formula = "erfinv(x)",
    .shape = Shape::D1,
    .ref1 = ref_erfinv,
    .regions = list(erfinv_regions),
    .special_a = list(erfinv_special),
    .mirror = true,
    .timing_a = lin(-0.999, 0.999),
    .ordinary_a = 0.5,
    .plot_linear = true,
    .baseline = local("glibc erf, erfc by Newton", loop_erfinv),
};

constexpr FunctionRow erf_rows[] = {erf_row, erfc_row, erfinv_row};

}  // namespace

List<FunctionRow> rows_erf() { return list(erf_rows); }

}  // namespace zvl_tools
