// zLn_scalar and zLog10_scalar: ln z = ln|z| + i arg z, and log10 z, for
// one element in extended precision, each part rounded to double once.
//
// The magnitude: with h and l the larger and smaller of |x| and |y|,
// S = h^2 + l^2 in extended precision (no scaling: the squares of doubles
// neither overflow nor underflow there). Where |S - 1| is at most 0.03,
// S - 1 is formed again without loss, from the exact squares as pairs and
// the rounding errors of their sum and of the subtraction, and the real
// part is half ln(1 + (S - 1)); elsewhere it is half ln S. The angle is
// ext_atan2(y, x). So ln(0.6 + 0.8i) has a tiny real part of the right
// size, and ln of a zero is -inf with divide-by-zero, from ext_log.
//
// zLn_scalar's special values (C99's):
//   x          y              result
//   +-0        +-0            (-inf, atan2(y, x)), divide-by-zero
//   NaN        +-inf          (+inf, NaN)
//   NaN        other          (NaN, NaN)
//   +-inf      NaN            (+inf, NaN)
//   finite     NaN            (NaN, NaN)
//   +-inf, or y +-inf         (+inf, atan2(y, x))
// zLog10_scalar multiplies both parts by log10(e) and takes the
// non-finite arguments and the zeros off first, with C = log10(e) pi/2:
//   +0         +-0            (-inf, y), no flag raised
//   -0         +-0            (-inf, +-2C by the sign of y), no flag
//   finite     +-inf          (+inf, +-C)
//   +inf       +-inf          (+inf, +-C/2)
//   -inf       +-inf          (+inf, +-3C/2)
//   +inf       finite         (+inf, +-0)
//   -inf       finite         (+inf, +-2C)
// and the NaN rows of zLn_scalar.
#pragma once

#include "kernels/complex/scalar_frame.h"

ZVL_SCALAR_BEGIN
namespace {

namespace zln {

// The extended constants log10(e) and log10(e) pi/2: significands
// 0xde5bd8a937287195 and 0xaea3e26597dd0587 under the exponent fields
// 0x3ffd and 0x3ffe, written as literals so that they load from memory
// whole.
inline long double log10_e() { return 0xde5bd8a937287195p-65L; }
inline long double log10_e_pio2() { return 0xaea3e26597dd0587p-64L; }

// Half ln(x^2 + y^2) for finite x and y.
inline long double half_log_abs(double x, double y) {
    long double h = fabs_d(&x), l = fabs_d(&y);
    if (h < l) {
        const long double t = h;
        h = l;
        l = t;
    }
    const long double H = h * h, L2 = l * l, S = H + L2;
    if (ext_fabs(S - 1.0L) <= 0.03L) {
        // S - 1 from the exact squares: hi parts summed, then every error
        const Pair hh = two_prod(h, h), ll = two_prod(l, l);
        const Pair s = two_sum(hh.hi, ll.hi);
        const Pair d = two_sum(s.hi, -1.0L);
        const long double t = d.hi + (((d.lo + s.lo) + hh.lo) + ll.lo);
        return 0.5L * ext_log1p(t);
    }
    return 0.5L * ext_log(S);
}

}  // namespace zln

ZVL_SCALAR_ROUTINE ZVLComplex16* zLn_scalar(ZVLComplex16* r, const ZVLComplex16* z) {
    const double x = z->real, y = z->imag;
    const long double X = x, Y = y;
    if (part_finite(x) && part_finite(y)) {
        *r = make_z(zln::half_log_abs(x, y), ext_atan2(Y, X));
    } else if (part_inf(x) || part_inf(y)) {
        const long double inf = part_inf(x) ? fabs_d(&x) : fabs_d(&y);
        *r = make_z(inf, part_nan(x) || part_nan(y) ? X + Y : ext_atan2(Y, X));
    } else {
        const long double q = X + Y;
        *r = make_z(q, q);
    }
    return r;
}

ZVL_SCALAR_ROUTINE ZVLComplex16* zLog10_scalar(ZVLComplex16* r, const ZVLComplex16* z) {
    const double x = z->real, y = z->imag;
    const long double X = x, Y = y, k = zln::log10_e(), C = zln::log10_e_pio2();
    const long double sign = part_negative(y) ? -1.0L : 1.0L;
    if (part_nan(x) || part_nan(y)) {
        const long double q = X + Y;
        *r = part_inf(x) || part_inf(y) ? make_z(fabs_d(part_inf(x) ? &x : &y), q) : make_z(q, q);
    } else if (part_inf(x)) {
        const long double turn = part_negative(x) ? (part_inf(y) ? 1.5L : 2.0L) : (part_inf(y) ? 0.5L : 0.0L);
        *r = make_z(fabs_d(&x), sign * (turn * C));
    } else if (part_inf(y)) {
        *r = make_z(fabs_d(&y), sign * C);
    } else if (part_zero(x) && part_zero(y)) {
        *r = ZVLComplex16{-__builtin_inf(), part_negative(x) ? static_cast<double>(sign * (2.0L * C)) : y};
    } else {
        *r = make_z(k * zln::half_log_abs(x, y), k * ext_atan2(Y, X));
    }
    return r;
}

}  // namespace
ZVL_SCALAR_END
