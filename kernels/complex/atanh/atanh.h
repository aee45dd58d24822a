// zAtanh_scalar: atanh(x + iy), and zAtan_scalar, atan z = -i atanh(iz).
//
//   imaginary  (arg(1 + z) - arg(1 - z))/2: half of atan2(2y, t) with
//              t = (1 - x^2) - y^2 while |t| >= 0.03; closer to the unit
//              circle, where t cancels, atan2(y, 1 + x) - atan2(-y, 1 - x),
//              two angles of the same sign, halved
//   real       ln(P/Q)/4 with P = |1 + z|^2, Q = |1 - z|^2; where P/Q is
//              within 0.03 of 1 the logarithm would cancel, and
//              atanh(2x/(x^2 + y^2 + 1))/2 takes over
// All extended, where the squares of doubles stay in range.
//
//   x                    y            real               imaginary
//   +-0                  finite       x                  atan y
//   +-0                  NaN          x                  NaN
//   not 0, |x| <= 1      +-0          atanh x            zero, sign of y
//   |x| > 1, finite      +-0          as the main path   pi/2, sign of y
//   finite               +-inf        zero, sign of x    pi/2, sign of y
//   finite, not 0        NaN          NaN                NaN
//   +-inf                finite, inf  zero, sign of x    pi/2, sign of y
//   +-inf                NaN          zero, sign of x    NaN
//   NaN                  +-inf        +0                 pi/2, sign of y
//   NaN                  other        NaN                NaN
#pragma once

#include "kernels/complex/scalar_parts.h"

namespace {

// The parts x and y are read from the argument where used (part_load).
inline long double atanh_real(const double* x_part, const double* y_part) {
    const auto x = [x_part] { return part_load(x_part); };
    const auto y = [y_part] { return part_load(y_part); };
    const long double y2 = y() * y();
    const long double P = (x() + 1.0L) * (x() + 1.0L) + y2;
    const long double Q = (x() - 1.0L) * (x() - 1.0L) + y2;
    if (ext_abs(P - Q) <= 0.03L * Q) return ext_atanh(2.0L * x() / (y2 + x() * x() + 1.0L)) * 0.5L;
    return ext_log(P / Q) * 0.25L;
}

inline long double atanh_imag(const double* x_part, const double* y_part) {
    const auto x = [x_part] { return part_load(x_part); };
    const auto y = [y_part] { return part_load(y_part); };
    const long double t = (1.0L - x() * x()) - y() * y();
    // 2y and t are finite, not zero and of moderate size: ext_atan2's main
    // path, inline
    if (ext_abs(t) >= 0.03L) return atan2_main(2.0L * y(), t) * 0.5L;
    return (ext_atan2(y(), 1.0L + x()) - ext_atan2(-y(), 1.0L - x())) * 0.5L;
}

ZVL_SCALAR_ROUTINE Z* zAtanh_scalar(Z* r, const Z* a) {
    const double x = a->real, y = a->imag;
    const long double X = x, Y = y;
    if (finite_nonzero(x, y))
        return put_ext(r, atanh_real(&x, &y), atanh_imag(&x, &y));
    const double quarter_turn = signed_as(Angles::pio2, neg(y));
    if (zero(x)) {
        if (finite(y)) return put(r, x, static_cast<double>(ext_atan(Y)));
        return put(r, x, is_nan(y) ? y * y : quarter_turn);
    }
    if (zero(y) && finite(x)) {
        if (__builtin_fabs(x) <= 1.0) return put(r, static_cast<double>(ext_atanh(X)), y);
        return put(r, static_cast<double>(atanh_real(&x, &y)), quarter_turn);
    }
    if (is_nan(x)) return is_inf(y) ? put(r, 0.0, quarter_turn) : put(r, nan_times(x, y), nan_times(x, y));
    if (is_nan(y)) return is_inf(x) ? put(r, signed_as(0.0, neg(x)), y * y) : put(r, x * y, x * y);
    return put(r, signed_as(0.0, neg(x)), quarter_turn);
}

ZVL_SCALAR_ROUTINE Z* zAtan_scalar(Z* r, const Z* a) { return minus_i_of_i_times<zAtanh_scalar>(r, a); }

}  // namespace
