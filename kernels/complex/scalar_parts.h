// What the complex scalar routines share: the element, the fields of a
// double that their special-value tables are keyed on, exact sign work on
// results, and the quarter turns that make cos, sin, tan, asin and atan out
// of cosh, sinh, tanh, asinh and atanh.
//
// Every routine has the form Z* f(Z* result, const Z* argument), a
// function of its own (ZVL_SCALAR_ROUTINE, see scalar_frame.h): it reads
// the whole argument before it writes, so result and argument may be the
// same element, and it returns the result pointer. Arithmetic is x87
// extended (the kernels set round to nearest with the 64-bit significand),
// with one rounding to double at the end of each part.
//
// Included by kernels/complex/scalars.h only, which compiles the routines
// without VEX coding.
#pragma once

#include <cstdint>

#include "base/bits.h"
#include "kernels/complex/ext/ext.h"
#include "kernels/complex/scalar_frame.h"
#include "zvl.h"

namespace {

using Z = ZVLComplex16;

using zvl::bits;
using zvl::from_bits;

// The biased exponent field: 0 for zeros and subnormals, 0x7ff for
// infinities and NaNs.
inline int efield(double x) { return static_cast<int>(bits(x) >> 52) & 0x7ff; }
inline bool neg(double x) { return (bits(x) >> 63) != 0; }
inline bool is_nan(double x) { return x != x; }
inline bool is_inf(double x) { return (bits(x) & 0x7fffffffffffffffu) == 0x7ff0000000000000u; }
inline bool finite(double x) { return efield(x) != 0x7ff; }
inline bool zero(double x) { return (bits(x) & 0x7fffffffffffffffu) == 0; }
inline bool subnormal(double x) { return efield(x) == 0 && !zero(x); }
// Both parts finite and not zero: the main paths of the routines.
inline bool finite_nonzero(double x, double y) {
    return finite(x) && finite(y) && !zero(x) && !zero(y);
}
// |x| < 1, for finite x
inline bool below_one(double x) { return efield(x) < 0x3ff; }

// |v| with the sign of s, and the sign flipped on a condition: bit work,
// exact on zeros and infinities.
inline double signed_as(double v, bool negative) {
    return from_bits((bits(v) & 0x7fffffffffffffffu) | (negative ? 0x8000000000000000u : 0));
}
inline double flip(double v) { return from_bits(bits(v) ^ 0x8000000000000000u); }
// -v, but a NaN keeps its sign: the quarter turns never flip a NaN.
inline double flip_unless_nan(double v) { return is_nan(v) ? v : flip(v); }

// A NaN made from a part that is infinite or a NaN: inf - inf raises
// invalid, a NaN passes through the subtraction (quiet, payload kept).
inline double nan_of(double v) {
    const long double e = v;
    return static_cast<double>(ext_opaque(e) - e);
}

// x y for a NaN x: where y is a NaN too, x's NaN (quieted), since which
// of two NaN operands a product passes on follows the operand order the
// compiler chose, and that differs between the Linux and Windows builds.
inline double nan_times(double x, double y) { return is_nan(y) ? nan_of(x) : x * y; }

// +inf made by an overflowing product, so that the flag is raised.
inline long double ext_overflow() { return ext_opaque(Ext::huge) * Ext::huge; }

inline Z* put(Z* r, double re, double im) {
    r->real = re;
    r->imag = im;
    return r;
}
inline Z* put_ext(Z* r, long double re, long double im) {
    return put(r, static_cast<double>(re), static_cast<double>(im));
}

// Angles that the tables name, each the double nearest the multiple of pi.
struct Angles {
    static constexpr double pio4 = 0x1.921fb54442d18p-1;
    static constexpr double pio2 = 0x1.921fb54442d18p0;
    static constexpr double three_pio4 = 0x1.2d97c7f3321d2p1;
    static constexpr double pi = 0x1.921fb54442d18p1;
};

// f(iz) = (u, v) with iz = (-y, x); F(result, argument) is the routine.
template <Z* (*F)(Z*, const Z*)>
inline Z of_i_times(const Z* a) {
    const Z iz = {flip_unless_nan(a->imag), a->real};
    Z w;
    F(&w, &iz);
    return w;
}

// -i w = (v, -u) for w = (u, v), a NaN u not flipped.
inline Z* minus_i_times(Z* r, const Z& w) { return put(r, w.imag, flip_unless_nan(w.real)); }

// -i f(iz). sin from sinh, tan from tanh, asin from asinh, atan from atanh.
template <Z* (*F)(Z*, const Z*)>
inline Z* minus_i_of_i_times(Z* r, const Z* a) {
    return minus_i_times(r, of_i_times<F>(a));
}

}  // namespace
