// zTanh_scalar, tanh(x + iy) = (sinh x cosh x + i sin y cos y)/d with
// d = cos^2 y + sinh^2 x, and zTan_scalar, tan z = -i tanh(iz).
//
// d is a sum of squares and never cancels, so below |x| = 512 both parts
// are a few extended roundings from the truth. From 512 up the real part
// is +-(1 - 2^-1022), which rounds to +-1 and raises inexact, and the
// imaginary part a zero with the sign of sin 2y: the full reduction of y
// runs for that one bit.
//
//   x          y                       real        imaginary
//   +-0        +-0                     x           y
//   +-0        finite, not 0           x           tan y
//   finite     +-inf or NaN            NaN         NaN
//   +-inf      +-0, subnormal, |y| < 1 +-1 by x    zero, sign of y
//   +-inf      finite, |y| >= 1        +-1 by x    zero, sign of sin y cos y
//   +-inf      +-inf                   +-1 by x    zero, sign of y
//   +-inf      NaN                     +-1 by x    +0
//   NaN        +-0                     NaN         y
//   NaN        other                   NaN         NaN
#pragma once

#include "kernels/complex/cosh/cosh.h"

namespace {

// A zero with the sign of sin y cos y, for |y| >= 1.
inline double zero_by_sin2(double y) {
    long double s, c;
    ext_sincos(y, &s, &c);
    return static_cast<double>(0.0L * (s * c));
}

// tanh(x + iy) into *r, inlined into zTanh_scalar and zTan_scalar.
ZVL_EXT_INLINE Z* tanh_of(Z* r, double x, double y) {
    const long double Y = y;
    if (finite(x) && finite(y) && !zero(x)) {
        if (efield(x) < 0x408) {
            const HypTrig h = hyp_trig(x, y);
            // one division: 1/d costs half an extended ulp more, far below
            // the rounding to double
            const long double id = 1.0L / (h.c * h.c + h.sh * h.sh);
            return put_ext(r, h.ch * h.sh * id, h.c * h.s * id);
        }
        const long double one = ext_opaque(1.0L) - 0x1p-1022L;
        const double im = zero(y) || subnormal(y) ? signed_as(0.0, neg(y)) : zero_by_sin2(y);
        return put(r, static_cast<double>(ext_neg_if(one, neg(x))), im);
    }
    if (zero(x)) {
        if (zero(y)) return put(r, x, y);
        if (finite(y)) return put(r, x, static_cast<double>(ext_tan(Y)));
        return put(r, nan_of(y), nan_of(y));
    }
    if (finite(x)) return put(r, nan_of(y), nan_of(y));
    if (is_inf(x)) {
        const double one = signed_as(1.0, neg(x));
        if (is_nan(y)) return put(r, one, 0.0);
        if (is_inf(y) || below_one(y)) return put(r, one, signed_as(0.0, neg(y)));
        return put(r, one, zero_by_sin2(y));
    }
    return zero(y) ? put(r, x * x, y) : put(r, x * y, x * y);
}

ZVL_SCALAR_ROUTINE Z* zTanh_scalar(Z* r, const Z* a) { return tanh_of(r, a->real, a->imag); }

// tan z = -i tanh(iz), as sin from sinh.
ZVL_SCALAR_ROUTINE Z* zTan_scalar(Z* r, const Z* a) {
    Z w;
    tanh_of(&w, flip_unless_nan(a->imag), a->real);
    return minus_i_times(r, w);
}

}  // namespace
