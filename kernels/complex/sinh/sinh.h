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

// sinh(x + iy) into *r, inlined into zSinh_scalar and zSin_scalar.
ZVL_EXT_INLINE Z* sinh_of(Z* r, double x, double y) {
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

ZVL_SCALAR_ROUTINE Z* zSinh_scalar(Z* r, const Z* a) { return sinh_of(r, a->real, a->imag); }

// sin z = -i sinh(iz): (v, -u) from sinh(iz) = (u, v), a NaN u not flipped.
ZVL_SCALAR_ROUTINE Z* zSin_scalar(Z* r, const Z* a) {
    Z w;
    sinh_of(&w, flip_unless_nan(a->imag), a->real);
    return minus_i_times(r, w);
}

}  // namespace
