// The measuring rows of the complex functions (see tools/common/complex_rows.h).
#include <string_view>
#include <vector>

#include "frame/function_table.h"
#include "frame/kernel_sets.h"
#include "kernels/plans.h"
#include "tools/common/complex_rows.h"
#include "tools/common/rows/helpers.h"

extern "C" {
__complex__ double cexp(__complex__ double);
__complex__ double clog(__complex__ double);
__complex__ double clog10(__complex__ double);
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
ZT_LOOPZ(loop_cexp, cexp)
ZT_LOOPZ(loop_clog, clog)
ZT_LOOPZ(loop_clog10, clog10)

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

const ComplexRow* const kRows[] = {&zexp_row, &zln_row, &zlog10_row};

const ComplexRow* row_of(const char* exported) {
    for (const ComplexRow* r : kRows)
        if (std::string_view(r->exported) == exported) return r;
    return nullptr;
}

#define ZT_ZFUNCTION(EXPORT, report, id, fam)                                             \
    if (const ComplexRow* r = row_of(#EXPORT))                                             \
        v.push_back({r, &zvl::plans::z##fam,                                               \
                     [](int cpu, int mode) -> LoopZ { return zvl::kernels_##EXPORT.k[cpu][mode]; }, \
                     EXPORT});
#define ZT_SKIP(...)

}  // namespace

List<ComplexFunction> complex_functions() {
    static const std::vector<ComplexFunction> all = [] {
        std::vector<ComplexFunction> v;
        ZVL_FUNCTIONS(ZT_SKIP, ZT_SKIP, ZT_SKIP, ZT_SKIP, ZT_ZFUNCTION, ZT_SKIP, ZT_SKIP, ZT_SKIP, ZT_SKIP)
        return v;
    }();
    return {all.data(), all.size()};
}

}  // namespace zvl_tools
