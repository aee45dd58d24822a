// zCosh_scalar, cosh(x + iy) = cosh x cos y + i sinh x sin y, and
// zCos_scalar, cos z = cosh(iz).
//
// Below |x| = 2048 each part is one extended product of ext_sinhcosh's and
// ext_sincos's results, rounded once to double: a part overflows only in
// that final conversion, and a y near a zero of cos or sin keeps its
// relative accuracy because the support set reduces y exactly. From 2048
// up no product with a non-zero factor is finite: the parts are an
// overflowing 2^16383 squared times cos y and times x sin y (y itself for a
// subnormal y, whose sine would round to it anyway).
//
// Zeros, infinities and NaNs follow this table (C99 Annex G where it
// speaks; a NaN comes out of arithmetic on the arguments):
//   x          y                  real          imaginary
//   any        +-0                cosh x        zero, sign(x) XOR sign(y); y if x is a NaN
//   +-0        finite, not 0      cos y         x sin y (x y if y is subnormal)
//   +-0        +-inf              NaN           zero, sign(x) XOR sign(y)
//   +-0        NaN                NaN           -x
//   finite     +-inf or NaN       NaN           NaN
//   +-inf      finite, |y| < 1    +inf          x y
//   +-inf      finite, |y| >= 1   +inf cos y    x sin y
//   +-inf      +-inf or NaN       +inf          NaN
//   NaN        not 0              NaN           NaN
#pragma once

#include "kernels/complex/scalar_parts.h"

namespace {

// sinh x, cosh x, sin y, cos y for |x| below 2048, extended: the support
// set's main paths inlined where the parts are in their ranges (the
// ordinary arguments), its routines called otherwise; the same bits.
struct HypTrig {
    long double sh, ch, s, c;
};
ZVL_EXT_INLINE HypTrig hyp_trig(double x, double y) {
    HypTrig h;
    // 2^-33 <= |x| <= 25
    const uint64_t ax = bits(x) & 0x7fffffffffffffffu;
    if (ax >= 0x3de0000000000000u && ax <= 0x4039000000000000u)
        sinhcosh_mid(x, &h.sh, &h.ch);
    else
        ext_sinhcosh(x, &h.sh, &h.ch);
    // 2^-32 <= |y| < 2^17
    if (efield(y) >= 0x3df && efield(y) < 0x410)
        sincos_direct(y, &h.s, &h.c);
    else
        ext_sincos(y, &h.s, &h.c);
    return h;
}

// |x| below 2048: the products stay in the extended range.
inline bool hyp_products_finite(double x) { return efield(x) < 0x40a; }

// sin y where its product with an infinity only needs its sign and y is
// kept whole when subnormal.
inline long double sin_or_subnormal(double y) {
    return subnormal(y) ? static_cast<long double>(y) : ext_sin(y);
}

// cosh (Cosh) or sinh of x + iy for x and y finite and not zero.
template <bool Cosh>
inline Z* hyp_finite(Z* r, double x, double y) {
    if (hyp_products_finite(x)) {
        const HypTrig h = hyp_trig(x, y);
        return Cosh ? put_ext(r, h.ch * h.c, h.sh * h.s) : put_ext(r, h.sh * h.c, h.ch * h.s);
    }
    const long double inf = ext_overflow(), c = ext_cos(y), s = sin_or_subnormal(y);
    return Cosh ? put_ext(r, inf * c, inf * x * s) : put_ext(r, inf * c * x, inf * s);
}

// cosh (Cosh) or sinh of +-inf + iy for y finite and not zero: the
// infinity times cos y and sin y, or times y itself where only its sign
// counts.
template <bool Cosh>
inline Z* hyp_infinite(Z* r, double x, double y) {
    constexpr double inf = __builtin_inf();
    const double re = Cosh ? inf : x;
    if (below_one(y)) return put(r, re, Cosh ? x * y : inf * y);
    long double s, c;
    ext_sincos(y, &s, &c);
    return put_ext(r, re * c, (Cosh ? x : inf) * s);
}

// cosh(x + iy) into *r; inlined into zCosh_scalar and zCos_scalar alike,
// so that the rotation costs no second call.
ZVL_EXT_INLINE Z* cosh_of(Z* r, double x, double y) {
    const long double X = x, Y = y;
    if (finite_nonzero(x, y)) return hyp_finite<true>(r, x, y);
    constexpr double inf = __builtin_inf();
    if (zero(y))
        return put(r, static_cast<double>(ext_cosh(X)), is_nan(x) ? y : signed_as(0.0, neg(x) != neg(y)));
    if (zero(x)) {
        if (finite(y)) return put_ext(r, ext_cos(Y), X * (subnormal(y) ? Y : ext_sin(Y)));
        return put(r, nan_of(y), is_inf(y) ? signed_as(0.0, neg(x) != neg(y)) : flip(x));
    }
    if (finite(x)) return put(r, nan_of(y), nan_of(y));
    if (is_inf(x)) return finite(y) ? hyp_infinite<true>(r, x, y) : put(r, inf, nan_of(y));
    return put(r, nan_times(x, y), nan_times(x, y));
}

ZVL_SCALAR_ROUTINE Z* zCosh_scalar(Z* r, const Z* a) { return cosh_of(r, a->real, a->imag); }

// cos z = cosh(iz), iz = (-y, x) with a NaN's sign kept.
ZVL_SCALAR_ROUTINE Z* zCos_scalar(Z* r, const Z* a) {
    return cosh_of(r, flip_unless_nan(a->imag), a->real);
}

}  // namespace
