// The measuring rows of the complex functions (see tools/common/complex_rows.h).
#include <string_view>
#include <vector>

#include "frame/function_table.h"
#include "frame/kernel_sets.h"
#include "kernels/plans.h"
#include "tools/common/complex_reference.h"
#include "tools/common/complex_rows.h"
#include "tools/common/rows/helpers.h"

extern "C" {
__complex__ double csqrt(__complex__ double);
__complex__ double cexp(__complex__ double);
__complex__ double clog(__complex__ double);
__complex__ double clog10(__complex__ double);
__complex__ double ccos(__complex__ double);
__complex__ double csin(__complex__ double);
__complex__ double ctan(__complex__ double);
__complex__ double cacos(__complex__ double);
__complex__ double casin(__complex__ double);
__complex__ double catan(__complex__ double);
__complex__ double ccosh(__complex__ double);
__complex__ double csinh(__complex__ double);
__complex__ double ctanh(__complex__ double);
__complex__ double cacosh(__complex__ double);
__complex__ double casinh(__complex__ double);
__complex__ double catanh(__complex__ double);
__complex__ double cpow(__complex__ double, __complex__ double);
}

namespace zvl_tools {
namespace {

#define ZT_LOOPZ(name, fn)                                                      \
    void name(int32_t n, const ZVLComplex16* a, ZVLComplex16* r) {              \
        for (int32_t i = 0; i < n; ++i) {                                       \
            __complex__ double z;                                               \
            __real__ z = a[i].real;                                             \
            __imag__ z = a[i].imag;                                             \
            const __complex__ double w = fn(z);                                 \
            r[i] = ZVLComplex16{__real__ w, __imag__ w};                        \
        }                                                                       \
    }
ZT_LOOPZ(loop_csqrt, csqrt)
ZT_LOOPZ(loop_cexp, cexp)
ZT_LOOPZ(loop_clog, clog)
ZT_LOOPZ(loop_clog10, clog10)
ZT_LOOPZ(loop_ccos, ccos)
ZT_LOOPZ(loop_csin, csin)
ZT_LOOPZ(loop_ctan, ctan)
ZT_LOOPZ(loop_cacos, cacos)
ZT_LOOPZ(loop_casin, casin)
ZT_LOOPZ(loop_catan, catan)
ZT_LOOPZ(loop_ccosh, ccosh)
ZT_LOOPZ(loop_csinh, csinh)
ZT_LOOPZ(loop_ctanh, ctanh)
ZT_LOOPZ(loop_cacosh, cacosh)
ZT_LOOPZ(loop_casinh, casinh)
ZT_LOOPZ(loop_catanh, catanh)

void loop_cpow(int32_t n, const ZVLComplex16* a, const ZVLComplex16* b, ZVLComplex16* r) {
    for (int32_t i = 0; i < n; ++i) {
        __complex__ double z, w;
        __real__ z = a[i].real;
        __imag__ z = a[i].imag;
        __real__ w = b[i].real;
        __imag__ w = b[i].imag;
        const __complex__ double p = cpow(z, w);
        r[i] = ZVLComplex16{__real__ p, __imag__ p};
    }
}
// glibc's cpow with one exponent for all elements, as Powx takes it.
void loop_cpowx(int32_t n, const ZVLComplex16* a, const ZVLComplex16* b, ZVLComplex16* r) {
    __complex__ double w;
    __real__ w = b->real;
    __imag__ w = b->imag;
    for (int32_t i = 0; i < n; ++i) {
        __complex__ double z;
        __real__ z = a[i].real;
        __imag__ z = a[i].imag;
        const __complex__ double p = cpow(z, w);
        r[i] = ZVLComplex16{__real__ p, __imag__ p};
    }
}

// e^x (cos y + i sin y); exp(x +- i0) is (e^x, +-0).
void ref_exp(mpfr_ptr re, mpfr_ptr im, mpfr_srcptr x, mpfr_srcptr y) {
    mpfr_t e;
    mpfr_init2(e, mpfr_get_prec(re));
    mpfr_exp(e, x, MPFR_RNDN);
    mpfr_sin_cos(im, re, y, MPFR_RNDN);
    mpfr_mul(re, re, e, MPFR_RNDN);
    if (mpfr_zero_p(y))
        mpfr_set(im, y, MPFR_RNDN);
    else
        mpfr_mul(im, im, e, MPFR_RNDN);
    mpfr_clear(e);
}

// ln|z| + i atan2(y, x), and over ln 10 for log10.
void ref_log(mpfr_ptr re, mpfr_ptr im, mpfr_srcptr x, mpfr_srcptr y, bool ten) {
    mpfr_hypot(re, x, y, MPFR_RNDN);
    if (ten)
        mpfr_log10(re, re, MPFR_RNDN);
    else
        mpfr_log(re, re, MPFR_RNDN);
    mpfr_atan2(im, y, x, MPFR_RNDN);
    if (ten) {
        mpfr_t l;
        mpfr_init2(l, mpfr_get_prec(im));
        mpfr_set_ui(l, 10, MPFR_RNDN);
        mpfr_log(l, l, MPFR_RNDN);
        mpfr_div(im, im, l, MPFR_RNDN);
        mpfr_clear(l);
    }
}
void ref_ln(mpfr_ptr re, mpfr_ptr im, mpfr_srcptr x, mpfr_srcptr y) { ref_log(re, im, x, y, false); }
void ref_log10(mpfr_ptr re, mpfr_ptr im, mpfr_srcptr x, mpfr_srcptr y) { ref_log(re, im, x, y, true); }

// ----------------------------------------------------------------- Sqrt

// f(x + iy) from the reference formulas; a quarter turn is measured at
// iz = (-y, x), as cos z = cosh(iz), and rotated by -i where the function
// is -i f(iz) (sin, tan, asin, atan).
template <Ref F, bool QuarterTurn = false, bool MinusI = false>
void ref_of(mpfr_ptr re, mpfr_ptr im, mpfr_srcptr x, mpfr_srcptr y) {
    const double dx = mpfr_get_d(x, MPFR_RNDN), dy = mpfr_get_d(y, MPFR_RNDN);
    if (!QuarterTurn) {
        complex_reference(F, dx, dy, re, im);
        return;
    }
    complex_reference(F, -dy, dx, re, im);
    if (MinusI) {
        mpfr_swap(re, im);
        mpfr_neg(im, im, MPFR_RNDN);
    }
}


// The vector members take parts in [2^-459, 2^511) and parts 2^58 apart on
// one-root paths; the rest is scaled into the band.
const ZRegion zsqrt_regions[] = {
    {lg2(0.0625, 16), lg2(0.0625, 16), 3, "ordinary arguments"},
    {lg2(kTiny, kMax), lg2(kTiny, kMax), 1, "every binade of both parts"},
    {lg2(0.0625, 16), lg2(0x1p-70, 0x1p-50), 0.5, "near the real axis, across the balance test"},
    {lg2(0x1p-70, 0x1p-50), lg2(0.0625, 16), 0.5, "near the imaginary axis"},
    {lg2(0x1p-470, 0x1p-450), lg2(0x1p-470, 0x1p-450), 0.3, "the band's lower edge"},
    {lg2(0x1p500, kMax), lg2(0x1p500, kMax), 0.3, "the band's upper edge and beyond"},
};
const Pair zsqrt_special[] = {
    {3.0, 4.0},     {-3.0, -4.0},   {1e308, 1e308}, {-4.0, 1e-300}, {1e-320, 1e-320},
    {4.0, 1e-310},  {kTiny, kMax},  {-kMax, kTiny}, {0x1p-459, 0x1p511},
};
constexpr ComplexRow zsqrt_row = {
    .name = "zsqrt",
    .exported = "VZSQRT",
    .formula = "sqrt(z)",
    .ref = ref_of<Ref::Sqrt>,
    .regions = list(zsqrt_regions),
    .special = list(zsqrt_special),
    .timing = {lg2(0.1, 10), lg2(0.1, 10), 1, nullptr},
    .baseline = loop_csqrt,
    .baseline_label = "glibc csqrt loop",
};

// ------------------------------------------------------------------ Exp

// The vector path takes parts below 512; the scalar routine the rest, with
// its overflow and underflow from |x| = 709.78 and 745.13 on.
const ZRegion zexp_regions[] = {
    {lin(-30, 30), lin(-10, 10), 3, "ordinary arguments"},
    {lin(-708, 709), lin(-600, 600), 1, "the whole finite range of x, the angle on both sides of 512"},
    {lin(-2, 2), lg2(0x1p-30, 1e300), 1, "every binade of the angle"},
    {lin(500, 720), lin(-4, 4), 0.5, "x on both sides of the vector limit, into overflow"},
    {lin(-760, -500), lin(-4, 4), 0.5, "x into underflow and subnormal parts"},
    {lg2(kTiny, 0x1p-20), lg2(kTiny, 1), 0.5, "tiny and subnormal parts"},
};
const Pair zexp_special[] = {
    {0.0, 0.0},   {-0.0, -0.0},      {1.0, 0.0},    {0.0, 1e-310}, {512.0, 1.0},   {1.0, 512.0},
    {1.0, 511.99999999999994}, {709.78, 1.0}, {-745.0, 1.0}, {800.0, 1e-320}, {1.0, 1.5707963267948966},
    {2.0, 3.141592653589793},  {-800.0, 1.0},
};
constexpr ComplexRow zexp_row = {
    .name = "zexp",
    .exported = "VZEXP",
    .formula = "exp(z)",
    .ref = ref_exp,
    .regions = list(zexp_regions),
    .special = list(zexp_special),
    .timing = {lin(-20, 20), lin(-8, 8), 1, nullptr},
    .baseline = loop_cexp,
    .baseline_label = "glibc cexp loop",
};

// ------------------------------------------------------------- Ln, Log10

// The vector kernels take parts in [2^-500, 2^500) and run a near-unit path
// for |z| close to 1; everything else goes to the scalar routine.
const ZRegion zln_regions[] = {
    {lg2(1e-3, 1e3), lg2(1e-3, 1e3), 3, "ordinary arguments"},
    {lg2(kTiny, kMax), lg2(kTiny, kMax), 1, "every binade of both parts, the band's edges"},
    {lg2(0.5, 2.0), lg2(kTiny, 0x1p-20), 1, "near the real axis"},
    {lg2(0x1p-510, 0x1p-490), lg2(0.5, 2), 0.5, "the band's lower edge"},
    {lg2(0x1p490, 0x1p510), lg2(0.5, 0x1p505), 0.5, "the band's upper edge"},
};
const Pair zln_special[] = {
    {1.0, 0.0},   {-1.0, 0.0},   {-1.0, -0.0}, {0.6, 0.8},   {0.8, 0.6},     {-0.6, -0.8},
    {1e300, 1.0}, {0x1p500, 1.0}, {0x1p-500, 1.0}, {1.0, 1e-300}, {0.0, 1.0}, {-2.0, 1e-320},
};
constexpr ComplexRow zln_row = {
    .name = "zln",
    .exported = "VZLN",
    .formula = "ln(z)",
    .ref = ref_ln,
    .regions = list(zln_regions),
    .special = list(zln_special),
    .circle = 1,
    .timing = {lg2(0.1, 10), lg2(0.1, 10), 1, nullptr},
    .baseline = loop_clog,
    .baseline_label = "glibc clog loop",
};
constexpr ComplexRow zlog10_row = {
    .name = "zlog10",
    .exported = "VZLOG10",
    .formula = "log10(z)",
    .ref = ref_log10,
    .regions = list(zln_regions),
    .special = list(zln_special),
    .circle = 1,
    .timing = {lg2(0.1, 10), lg2(0.1, 10), 1, nullptr},
    .baseline = loop_clog10,
    .baseline_label = "glibc clog10 loop",
};

// ------------------------------------------------------------ Pow, Powx

// a^b = exp(b ln a) on the principal branch, a not zero: with
// ln a = l + i t, the exponent is (u l - v t) + i (u t + v l).
void ref_pow(mpfr_ptr re, mpfr_ptr im, mpfr_srcptr x, mpfr_srcptr y, mpfr_srcptr u, mpfr_srcptr v) {
    const mpfr_prec_t p = mpfr_get_prec(re) + 64;
    mpfr_t l, t, e, w, k;
    mpfr_inits2(p, l, t, e, w, k, static_cast<mpfr_ptr>(nullptr));
    mpfr_hypot(l, x, y, MPFR_RNDN);
    mpfr_log(l, l, MPFR_RNDN);
    mpfr_atan2(t, y, x, MPFR_RNDN);
    mpfr_mul(e, u, l, MPFR_RNDN);
    mpfr_mul(k, v, t, MPFR_RNDN);
    mpfr_sub(e, e, k, MPFR_RNDN);  // real part of the exponent
    mpfr_mul(w, u, t, MPFR_RNDN);
    mpfr_mul(k, v, l, MPFR_RNDN);
    mpfr_add(w, w, k, MPFR_RNDN);  // imaginary part: the angle
    mpfr_exp(e, e, MPFR_RNDN);
    mpfr_sin_cos(im, re, w, MPFR_RNDN);
    mpfr_mul(re, re, e, MPFR_RNDN);
    mpfr_mul(im, im, e, MPFR_RNDN);
    mpfr_clears(l, t, e, w, k, static_cast<mpfr_ptr>(nullptr));
}

// The composition's own cost is in |b ln a|: ordinary bases and
// exponents, integer and half-integer exponents, bases near 1 and near 0,
// and products b ln a up to the overflow and underflow of the result.
const ZRegion zpow_regions[] = {
    {lg2(0.1, 10), lg2(0.1, 10), 3, "ordinary bases and exponents", lin(-4, 4), lin(-4, 4)},
    {lg2(0.1, 10), lg2(0.1, 10), 1, "real exponents", lin(-8, 8), kNone},
    {lg2(0x1p-30, 0x1p30), lg2(0x1p-30, 0x1p30), 1, "bases over sixty binades", lin(-2, 2), lin(-2, 2)},
    {lg2(0.5, 2), lg2(0x1p-40, 0x1p-10), 1, "bases near the real axis, the branch cut", lin(-3, 3), lin(-3, 3)},
    {lg2(0.9, 1.1), lg2(0x1p-20, 0.1), 0.5, "bases near 1", lg2(1, 1000), lg2(0x1p-10, 1)},
    {lg2(1.5, 4), lg2(0x1p-10, 1), 0.5, "large results, toward overflow", lin(100, 700), lin(-1, 1)},
    {lg2(1e-300, 1e300), lg2(1e-300, 1e300), 0.3, "every binade of the base", lin(-1.5, 1.5), lin(-0.5, 0.5)},
};
const ZPair zpow_special[] = {
    {2, 0, 1000, 0}, {2, 0, 1100, 0}, {-1, 0, 0.5, 0}, {-1, -0.0, 0.5, 0}, {0, 1, 2, 0},
    {1, 1, 2, 0},    {3, 4, 0.5, 0},  {1, 0, 1e300, 1e300}, {0.5, 0.5, -3, 0}, {1e300, 1e300, 0.5, 0.5},
    {1, 1e-300, 1e300, 0}, {-2, 1e-320, 3, 0},
};
constexpr ComplexRow zpow_row = {
    .name = "zpow",
    .exported = "VZPOW",
    .formula = "pow(a, b)",
    .regions = list(zpow_regions),
    .timing = {lg2(0.1, 10), lg2(0.1, 10), 1, nullptr, lin(-4, 4), lin(-4, 4)},
    .baseline_label = "glibc cpow loop",
    .shape = ZShape::Z2,
    .ref2 = ref_pow,
    .special2 = list(zpow_special),
    .baseline2 = loop_cpow,
    .conditioned = true,
};
constexpr ComplexRow zpowx_row = {
    .name = "zpowx",
    .exported = "VZPOWX",
    .formula = "pow(a, b), one b",
    .regions = list(zpow_regions),
    .timing = {lg2(0.1, 10), lg2(0.1, 10), 1, nullptr, lin(-4, 4), lin(-4, 4)},
    .baseline_label = "glibc cpow loop, one b",
    .shape = ZShape::ZX,
    .ref2 = ref_pow,
    .special2 = list(zpow_special),
    .baseline2 = loop_cpowx,
    .conditioned = true,
};

// ------------------------------------- Trigonometric and hyperbolic

// cosh, sinh, tanh of x + iy: the extended products below |x| = 2048,
// overflow from 710 on, the angle reduced in full however large.
const ZRegion hyp_regions[] = {
    {lg2(0.0625, 16), lg2(0.0625, 16), 3, "ordinary arguments"},
    {lg2(0x1p-60, 700), lg2(0x1p-60, 0x1p60), 1, "every binade of both parts up to overflow"},
    {lin(-3, 3), lin(-40, 40), 1, "the angle across zeros of cos and sin"},
    {lg2(kTiny, 0x1p-1000), lg2(kTiny, kMax), 0.5, "tiny and subnormal x"},
    {lg2(700, 2100), lg2(0.0625, 16), 0.5, "x into overflow and past 2048"},
};
const Pair hyp_special[] = {
    {1.0, 1.5707963267948966}, {1.0, 3.141592653589793}, {-2.0, 1e300}, {0x1p-1074, 1.0},
    {1.0, 0x1p-1074},          {600.0, 1e300},           {710.5, 1.0},  {-1e-300, -1e-300},
};
// The same with the parts exchanged: the rows of cos, sin and tan, whose
// real part is the angle.
const ZRegion trig_regions[] = {
    {lg2(0.0625, 16), lg2(0.0625, 16), 3, "ordinary arguments"},
    {lg2(0x1p-60, 0x1p60), lg2(0x1p-60, 700), 1, "every binade of both parts up to overflow"},
    {lin(-40, 40), lin(-3, 3), 1, "the angle across zeros of cos and sin"},
    {lg2(kTiny, kMax), lg2(kTiny, 0x1p-1000), 0.5, "tiny and subnormal y"},
    {lg2(0.0625, 16), lg2(700, 2100), 0.5, "y into overflow and past 2048"},
};
const Pair trig_special[] = {
    {1.5707963267948966, 1.0}, {3.141592653589793, 1.0}, {1e300, -2.0}, {1.0, 0x1p-1074},
    {0x1p-1074, 1.0},          {1e300, 600.0},           {1.0, 710.5},  {-1e-300, -1e-300},
};
// The inverses: the branch points +-1 and +-i, the unit circle, and the
// whole range, where the results' parts are logarithms and angles.
const ZRegion inverse_regions[] = {
    {lg2(0.0625, 16), lg2(0.0625, 16), 3, "ordinary arguments"},
    {lg2(kTiny, kMax), lg2(kTiny, kMax), 1, "every binade of both parts"},
    {lg2(0.5, 2), lg2(kTiny, 0x1p-20), 1, "near the real axis and the branch points +-1"},
    {lg2(kTiny, 0x1p-20), lg2(0.5, 2), 1, "near the imaginary axis and the branch points +-i"},
};
const Pair inverse_special[] = {
    {2.0, 1e-300}, {-2.0, -1e-300}, {1.0, 1e-310}, {1e-310, 1.0}, {0.5, 0.5},
    {1e300, 1e300}, {1e-300, 2.0},  {-1.0, 0x1p-1074},
};

#define ZT_TRIG_ROW(ROW, FN, TEXT, REF, REGIONS, SPECIAL, CIRCLE)                       \
    constexpr ComplexRow ROW = {                                                              \
        .name = "z" #FN,                                                                      \
        .exported = "VZ" TEXT,                                                                \
        .formula = #FN "(z)",                                                                 \
        .ref = REF,                                                                           \
        .regions = list(REGIONS),                                                             \
        .special = list(SPECIAL),                                                             \
        .circle = CIRCLE,                                                                     \
        .timing = {lg2(0.1, 10), lg2(0.1, 10), 1, nullptr},                                   \
        .baseline = loop_c##FN,                                                               \
        .baseline_label = "glibc c" #FN " loop",                                              \
    };
ZT_TRIG_ROW(zcos_row, cos, "COS", (ref_of<Ref::Cosh, true>), trig_regions, trig_special, 0)
ZT_TRIG_ROW(zsin_row, sin, "SIN", (ref_of<Ref::Sinh, true, true>), trig_regions, trig_special, 0)
ZT_TRIG_ROW(ztan_row, tan, "TAN", (ref_of<Ref::Tanh, true, true>), trig_regions, trig_special, 0)
ZT_TRIG_ROW(zacos_row, acos, "ACOS", ref_of<Ref::Acos>, inverse_regions, inverse_special, 1)
ZT_TRIG_ROW(zasin_row, asin, "ASIN", (ref_of<Ref::Asinh, true, true>), inverse_regions, inverse_special, 1)
ZT_TRIG_ROW(zatan_row, atan, "ATAN", (ref_of<Ref::Atanh, true, true>), inverse_regions, inverse_special, 1)
ZT_TRIG_ROW(zcosh_row, cosh, "COSH", ref_of<Ref::Cosh>, hyp_regions, hyp_special, 0)
ZT_TRIG_ROW(zsinh_row, sinh, "SINH", ref_of<Ref::Sinh>, hyp_regions, hyp_special, 0)
ZT_TRIG_ROW(ztanh_row, tanh, "TANH", ref_of<Ref::Tanh>, hyp_regions, hyp_special, 0)
ZT_TRIG_ROW(zacosh_row, acosh, "ACOSH", ref_of<Ref::Acosh>, inverse_regions, inverse_special, 1)
ZT_TRIG_ROW(zasinh_row, asinh, "ASINH", ref_of<Ref::Asinh>, inverse_regions, inverse_special, 1)
ZT_TRIG_ROW(zatanh_row, atanh, "ATANH", ref_of<Ref::Atanh>, inverse_regions, inverse_special, 1)
#undef ZT_TRIG_ROW

const ComplexRow* const kRows[] = {&zsqrt_row,  &zexp_row,   &zln_row,    &zlog10_row, &zcos_row,
                                   &zsin_row,   &ztan_row,   &zacos_row,  &zasin_row,  &zatan_row,
                                   &zcosh_row,  &zsinh_row,  &ztanh_row,  &zacosh_row, &zasinh_row,
                                   &zatanh_row, &zpow_row,   &zpowx_row};

const ComplexRow* row_of(const char* exported) {
    for (const ComplexRow* r : kRows)
        if (std::string_view(r->exported) == exported) return r;
    return nullptr;
}

#define ZT_ZFUNCTION(EXPORT, report, id, fam)                                             \
    if (const ComplexRow* r = row_of(#EXPORT))                                             \
        v.push_back({r, &zvl::plans::z##fam,                                               \
                     [](int cpu, int mode) -> LoopZ { return zvl::kernels_##EXPORT.k[cpu][mode]; }, \
                     nullptr});
#define ZT_Z2FUNCTION(EXPORT, report, id, fam)                                            \
    if (const ComplexRow* r = row_of(#EXPORT))                                             \
        v.push_back({r, &zvl::plans::z##fam, nullptr,                                      \
                     [](int cpu, int mode) -> LoopZ2 { return zvl::kernels_##EXPORT.k[cpu][mode]; }});
#define ZT_SKIP(...)

}  // namespace

List<ComplexFunction> complex_functions() {
    static const std::vector<ComplexFunction> all = [] {
        std::vector<ComplexFunction> v;
        ZVL_FUNCTIONS(ZT_SKIP, ZT_SKIP, ZT_SKIP, ZT_SKIP, ZT_ZFUNCTION, ZT_Z2FUNCTION, ZT_Z2FUNCTION, ZT_SKIP,
                      ZT_SKIP)
        return v;
    }();
    return {all.data(), all.size()};
}

void complex_timing_inputs(const ComplexRow& row, size_t n, uint64_t seed, std::vector<ZVLComplex16>* a,
                           std::vector<ZVLComplex16>* b) {
    const ZRegion& in = row.timing;
    Rng rng(seed);
    a->resize(n);
    b->resize(n);
    for (size_t i = 0; i < n; ++i) {
        (*a)[i] = {draw(rng, in.re), draw(rng, in.im)};
        const bool fresh = row.shape != ZShape::ZX || i % kSharedRun == 0;
        (*b)[i] = fresh ? ZVLComplex16{draw(rng, in.bre), draw(rng, in.bim)} : (*b)[i - 1];
    }
}

void call_complex(const ComplexFunction& f, int cpu, int mode, int32_t n, const ZVLComplex16* a,
                  const ZVLComplex16* b, ZVLComplex16* r) {
    const ComplexRow& row = *f.row;
    if (row.shape == ZShape::Z1) {
        (cpu < 0 ? row.baseline : f.kernel(cpu, mode))(n, a, r);
        return;
    }
    const LoopZ2 k = cpu < 0 ? row.baseline2 : f.kernel2(cpu, mode);
    if (row.shape == ZShape::Z2) {
        k(n, a, b, r);
        return;
    }
    for (int32_t i = 0; i < n; i += static_cast<int32_t>(kSharedRun)) {
        const int32_t m = n - i < static_cast<int32_t>(kSharedRun) ? n - i : static_cast<int32_t>(kSharedRun);
        k(m, a + i, b + i, r + i);
    }
}

}  // namespace zvl_tools
