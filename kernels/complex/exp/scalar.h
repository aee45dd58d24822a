// zExp_scalar: e^x (cos y + i sin y) for one element, in extended precision
// and rounded to double once per part. It takes every element the vector
// kernel refuses (a part 512 or more in size, or not finite) and serves the
// families that compose the exponential.
//
// For finite x below 2048 in size: e^x from ext_exp, the sine and cosine
// from ext_sincos, and their products. From 2048 up the result overflows
// or underflows on purpose: v = B * B with B = 2^16383 (x positive) or
// 2^-16382 (x negative) is +inf or +0 with its flag raised, and the parts
// are v * cos y and v * sin y (v * y for a subnormal y, whose sine would
// round to it anyway).
//
// Special values, C99's where they agree:
//   x                 y                      result
//   any               +-0                    (e^x, y)
//   +-0               finite, not 0          (cos y, sin y)
//   finite            +-inf or NaN           (NaN, NaN), invalid
//   +inf              finite, not 0          (+inf cos y, +inf sin y)
//   -inf              finite, not 0          (+0 cos y, +0 sin y)
//   +inf              +-inf or NaN           (+inf, NaN)
//   -inf              +-inf                  (+0, +-0 by the sign of y)
//   -inf              NaN                    (+0, +0)
//   NaN               finite, not 0          (NaN, NaN)
//   NaN               +-inf or NaN           (x x, y x x)
// Every NaN comes from arithmetic on the arguments (a signalling NaN is
// quieted and raises invalid).
#pragma once

#include "kernels/complex/scalar_frame.h"

ZVL_SCALAR_BEGIN
namespace {

ZVL_SCALAR_ROUTINE ZVLComplex16* zExp_scalar(ZVLComplex16* r, const ZVLComplex16* z) {
    const double x = z->real, y = z->imag;
    const long double X = x, Y = y;
    if (part_zero(y)) {
        *r = ZVLComplex16{static_cast<double>(ext_exp(X)), y};
        return r;
    }
    if (part_finite(x)) {
        if (!part_finite(y)) {
            const long double d = Y - Y;
            *r = make_z(d, d);
        } else if (part_exp(x) < 0x40a) {
            long double s, c;
            ext_sincos(Y, &s, &c);
            const long double e = ext_exp(X);
            *r = make_z(e * c, e * s);
        } else {
            const long double B = ext_opaque(part_negative(x) ? pow2(-16382) : pow2(16383));
            const long double v = B * B;
            *r = make_z(v * ext_cos(Y), v * (part_subnormal(y) ? Y : ext_sin(Y)));
        }
        return r;
    }
    if (part_nan(x)) {
        const long double q = X * X;
        *r = part_finite(y) ? make_z(q, q) : make_z(q, Y * q);
        return r;
    }
    // x is an infinity
    if (part_finite(y)) {
        long double s, c;
        ext_sincos(Y, &s, &c);
        const long double v = part_negative(x) ? 0.0L : X;
        *r = make_z(v * c, v * s);
    } else if (!part_negative(x)) {
        *r = make_z(X, Y - Y);
    } else {
        *r = ZVLComplex16{0.0, part_nan(y) ? 0.0 : (part_negative(y) ? -0.0 : 0.0)};
    }
    return r;
}

}  // namespace
ZVL_SCALAR_END
