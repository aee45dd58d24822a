// zAsinh_scalar: asinh(x + iy), and zAsin_scalar, asin z = -i asinh(iz).
// For x and y finite and not zero, the shared scheme (acos_scheme.h) in its
// sine form with p = |y|, q = |x|: the logarithm with the sign of x is the
// real part, the angle with the sign of y the imaginary part.
//
//   x                 y                     real                  imaginary
//   any               +-0                   asinh x               y
//   +-0               not 0, |y| < 1        x                     asin y
//   +-0               |y| >= 1, +-inf       acosh |y|, sign of x  pi/2, sign of y
//   finite, not 0     +-inf                 inf, sign of x        pi/2, sign of y
//   finite            NaN                   NaN                   NaN
//   +-inf             finite, not 0         x                     zero, sign of y
//   +-inf             +-inf                 x                     pi/4, sign of y
//   +-inf             NaN                   x                     NaN
//   NaN               finite, not 0         NaN                   NaN
//   NaN               +-inf                 +inf                  NaN
//   NaN               NaN                   NaN                   NaN
#pragma once

#include "kernels/complex/acos_scheme.h"

namespace {

ZVL_SCALAR_ROUTINE Z* zAsinh_scalar(Z* r, const Z* a) {
    const double x = a->real, y = a->imag;
    const long double X = x, Y = y;
    constexpr double inf = __builtin_inf();
    if (finite_nonzero(x, y)) {
        const AcosParts h = acos_scheme<true>(&y, &x);
        return put_ext(r, ext_neg_if(h.log, neg(x)), ext_neg_if(h.angle, neg(y)));
    }
    if (zero(y)) return put(r, static_cast<double>(ext_asinh(X)), y);
    if (zero(x) && !is_nan(y)) {
        if (finite(y) && below_one(y)) return put(r, x, static_cast<double>(ext_asin(Y)));
        return put(r, signed_as(static_cast<double>(ext_acosh(fabs_d(&y))), neg(x)),
                   signed_as(Angles::pio2, neg(y)));
    }
    if (is_nan(x)) return is_inf(y) ? put(r, inf, x * x) : put(r, nan_times(x, y), nan_times(x, y));
    if (is_nan(y)) return is_inf(x) ? put(r, x, y * y) : put(r, x * y, x * y);
    if (finite(x)) return put(r, signed_as(inf, neg(x)), signed_as(Angles::pio2, neg(y)));
    return put(r, x, signed_as(is_inf(y) ? Angles::pio4 : 0.0, neg(y)));
}

ZVL_SCALAR_ROUTINE Z* zAsin_scalar(Z* r, const Z* a) { return minus_i_of_i_times<zAsinh_scalar>(r, a); }

}  // namespace
