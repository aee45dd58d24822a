// zAcos_scalar: acos(x + iy), real part in [0, pi], imaginary part of the
// sign opposite to y's. For x and y finite and not zero, the angle and the
// logarithm of the shared scheme (acos_scheme.h) with p = |x|, q = |y|;
// a negative x turns the angle into pi less it.
//
//   x                 y                 real              imaginary
//   +-0               any               pi/2              -asinh y
//   finite, |x| < 1   +-0               acos x            zero, sign opposite y
//   |x| >= 1, +-inf   +-0               +0 (x > 0), pi    acosh |x|, sign opposite y
//   finite, not 0     +-inf             pi/2              -y
//   finite, not 0     NaN               NaN               NaN
//   +inf              finite, not 0     +0                inf, sign opposite y
//   -inf              finite, not 0     pi                inf, sign opposite y
//   +inf              +-inf             pi/4              inf, sign opposite y
//   -inf              +-inf             3pi/4             inf, sign opposite y
//   +-inf             NaN               NaN               +inf
//   NaN               finite            NaN               NaN
//   NaN               +-inf             NaN               -y
//   NaN               NaN               NaN               NaN
#pragma once

#include "kernels/complex/acos_scheme.h"

namespace {

ZVL_SCALAR_ROUTINE Z* zAcos_scalar(Z* r, const Z* a) {
    const double x = a->real, y = a->imag;
    const long double X = x, Y = y;
    constexpr double inf = __builtin_inf();
    if (finite_nonzero(x, y)) {
        const AcosParts h = acos_scheme<false>(&x, &y);
        return put_ext(r, neg(x) ? pi_less(h.angle) : h.angle, ext_neg_if(h.log, !neg(y)));
    }
    if (zero(x)) return put(r, Angles::pio2, flip_unless_nan(static_cast<double>(ext_asinh(Y))));
    if (zero(y) && !is_nan(x)) {
        if (below_one(x)) return put(r, static_cast<double>(ext_acos(X)), signed_as(0.0, !neg(y)));
        return put(r, neg(x) ? Angles::pi : 0.0,
                   signed_as(static_cast<double>(ext_acosh(fabs_d(&x))), !neg(y)));
    }
    if (is_nan(x)) return is_inf(y) ? put(r, x * x, flip(y)) : put(r, nan_times(x, y), nan_times(x, y));
    if (is_nan(y)) return is_inf(x) ? put(r, y * y, inf) : put(r, x * y, x * y);
    const double im = signed_as(inf, !neg(y));
    if (finite(x)) return put(r, Angles::pio2, im);
    if (is_inf(y)) return put(r, neg(x) ? Angles::three_pio4 : Angles::pio4, im);
    return put(r, neg(x) ? Angles::pi : 0.0, im);
}

}  // namespace
