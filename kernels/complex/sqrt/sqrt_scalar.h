// zSqrt_scalar, the square root of a complex number in extended precision
// (the cpu type 0 member of vzSqrt), and zSqrt_special, the table of
// infinite and NaN parts that every member shares.
//
// With m = |z|, the principal root is
//   x >= 0: w = sqrt((m + x)/2), result (w, y/(2w))
//   x < 0:  w = sqrt((m - x)/2), result (|y|/(2w), w with the sign of y)
// so the root is always taken of a sum of two positive terms and nothing
// cancels. x^2 + y^2 neither overflows nor underflows in the extended
// range, so no scaling is needed. A zero x or y takes the one-root paths,
// which keep the sign of a zero y.
#pragma once

#include "kernels/complex/scalar_parts.h"

namespace {

// Arguments with an infinite or NaN part, as C99 Annex G has them: an
// infinite y wins over everything, -inf gives its infinity to the
// imaginary part, and NaNs come from x * y.
inline Z* zSqrt_special(Z* r, const Z* a) {
    const double x = a->real, y = a->imag;
    constexpr double inf = __builtin_inf();
    if (is_inf(y)) return put(r, inf, y);
    if (is_inf(x)) {
        if (is_nan(y)) return neg(x) ? put(r, x * y, inf) : put(r, inf, x * y);
        return neg(x) ? put(r, 0.0, signed_as(inf, neg(y))) : put(r, inf, signed_as(0.0, neg(y)));
    }
    const double n = is_nan(x) ? nan_times(x, y) : x * y;
    return put(r, n, n);
}

ZVL_SCALAR_ROUTINE Z* zSqrt_scalar(Z* r, const Z* a) {
    const double x = a->real, y = a->imag;
    if (!finite(x) || !finite(y)) return zSqrt_special(r, a);
    if (zero(x)) {
        const double v = static_cast<double>(ext_sqrt(fabs_d(&y) * 0.5L));
        return put(r, v, signed_as(v, neg(y)));
    }
    const long double X = x, Y = y;
    if (zero(y)) {
        if (!neg(x)) return put(r, static_cast<double>(ext_sqrt(X)), y);
        return put(r, 0.0, signed_as(static_cast<double>(ext_sqrt(-X)), neg(y)));
    }
    const long double m = ext_sqrt(X * X + Y * Y);
    if (!neg(x)) {
        const long double w = ext_sqrt(m * 0.5L + X * 0.5L);
        return put_ext(r, w, Y * 0.5L / w);
    }
    const long double w = ext_sqrt(m * 0.5L - X * 0.5L);
    return put_ext(r, ext_abs(Y * 0.5L / w), ext_neg_if(w, neg(y)));
}

}  // namespace
