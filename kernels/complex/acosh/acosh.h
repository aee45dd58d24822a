// zAcosh_scalar: acosh(x + iy), real part not negative, imaginary part in
// [0, pi] with the sign of y. For x and y finite and not zero, the parts of
// zAcos_scalar exchanged: the logarithm of the shared scheme
// (acos_scheme.h) with p = |x|, q = |y| is the real part, and the angle,
// pi less it for a negative x, takes the sign of y.
//
//   x                 y                 real          imaginary
//   |x| < 1, 0 too    +-0               +0            acos x, sign of y
//   |x| >= 1, +-inf   +-0               acosh |x|     +0 (x > 0) or pi, sign of y
//   +-0               finite, +-inf     asinh |y|     atan2(y, x)
//   finite            NaN               NaN           NaN
//   finite, not 0     +-inf             +inf          pi/2, sign of y
//   +inf              finite, not 0     +inf          zero, sign of y
//   -inf              finite, not 0     +inf          pi, sign of y
//   +inf              +-inf             +inf          pi/4, sign of y
//   -inf              +-inf             +inf          3pi/4, sign of y
//   +-inf             NaN               +inf          NaN
//   NaN               finite            NaN           NaN
//   NaN               +-inf             +inf          NaN
//   NaN               NaN               NaN           NaN
#pragma once

#include "kernels/complex/acos_scheme.h"

namespace {

ZVL_SCALAR_ROUTINE Z* zAcosh_scalar(Z* r, const Z* a) {
    const double x = a->real, y = a->imag;
    const long double X = x, Y = y;
    constexpr double inf = __builtin_inf();
    if (finite_nonzero(x, y)) {
        const AcosParts h = acos_scheme<false>(&x, &y);
        return put_ext(r, h.log, ext_neg_if(neg(x) ? pi_less(h.angle) : h.angle, neg(y)));
    }
    if (zero(y) && !is_nan(x)) {
        if (below_one(x)) return put(r, 0.0, signed_as(static_cast<double>(ext_acos(X)), neg(y)));
        return put(r, static_cast<double>(ext_acosh(fabs_d(&x))),
                   signed_as(neg(x) ? Angles::pi : 0.0, neg(y)));
    }
    if (zero(x) && !is_nan(y))
        return put(r, static_cast<double>(ext_asinh(fabs_d(&y))), static_cast<double>(ext_atan2(Y, X)));
    if (is_nan(x)) return is_inf(y) ? put(r, inf, x * x) : put(r, nan_times(x, y), nan_times(x, y));
    if (is_nan(y)) return is_inf(x) ? put(r, inf, y * y) : put(r, x * y, x * y);
    if (finite(x)) return put(r, inf, signed_as(Angles::pio2, neg(y)));
    if (is_inf(y)) return put(r, inf, signed_as(neg(x) ? Angles::three_pio4 : Angles::pio4, neg(y)));
    return put(r, inf, signed_as(neg(x) ? Angles::pi : 0.0, neg(y)));
}

}  // namespace
