// zSinh_scalar, sinh(x + iy) = sinh x cos y + i cosh x sin y, and
// zSin_scalar, sin z = -i sinh(iz).
//
// The same construction as zCosh_scalar: extended products below
// |x| = 2048, an overflowing 2^16383 squared from there on.
//
//   x          y                  real          imaginary
//   any        +-0                sinh x        y
//   +-0        finite, not 0      x cos y       sin y (y if y is subnormal)
//   +-0        +-inf or NaN       x             NaN
//   finite     +-inf or NaN       NaN           NaN
//   +-inf      finite, |y| < 1    x             +inf y
//   +-inf      finite, |y| >= 1   x cos y       +inf sin y
//   +-inf      +-inf or NaN       x             NaN
//   NaN        not 0              NaN           NaN
#pragma once

#include "kernels/complex/cosh/cosh.h"

namespace {

ZVL_SCALAR_ROUTINE Z* zSinh_scalar(Z* r, const Z* a) {
    const double x = a->real, y = a->imag;
    const long double X = x, Y = y;
    if (finite_nonzero(x, y)) return hyp_finite<false>(r, x, y);
    if (zero(y)) return put(r, static_cast<double>(ext_sinh(X)), y);
    if (zero(x)) {
        if (finite(y)) return put_ext(r, X * ext_cos(Y), subnormal(y) ? Y : ext_sin(Y));
        return put(r, x, nan_of(y));
    }
    if (finite(x)) return put(r, nan_of(y), nan_of(y));
    if (is_inf(x)) return finite(y) ? hyp_infinite<false>(r, x, y) : put(r, x, nan_of(y));
    return put(r, nan_times(x, y), nan_times(x, y));
}

ZVL_SCALAR_ROUTINE Z* zSin_scalar(Z* r, const Z* a) { return minus_i_of_i_times<zSinh_scalar>(r, a); }

}  // namespace
