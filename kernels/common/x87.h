// The x87 unit's extended format, for the kernels that compute on its stack
// (Div LA and EP at cpu types 1 to 4, Tan HA at cpu types 1 to 5; the
// complex support set is to follow): the type, the guard that gives it its 64-bit
// significand, and the few operations such kernels need. Everything rounds
// to double only where a result is stored.
//
// Included by the per-cpu units inside their unnamed namespace.
#pragma once

#include <cstdint>

#include "kernels/common/fp_guard.h"

namespace {

// The extended format: 64-bit significand, 15-bit exponent (x86-64 System V
// and MinGW alike).
using Ext = long double;
static_assert(__LDBL_MANT_DIG__ == 64, "long double is the x87 extended format");

// Round to nearest with the 64-bit significand, for the length of a kernel
// (Guard::x87_64 of the plans).
using ExtendedGuard = X87Guard<0x300>;

inline Ext ext(double x) { return static_cast<Ext>(x); }
inline double to_double(Ext x) { return static_cast<double>(x); }
inline Ext reciprocal(Ext x) { return 1.0L / x; }

// True when x's single-precision image is neither zero nor infinite
// (denormal images pass): x can be inverted and multiplied back into range
// without leaving the extended format's safe span.
inline bool single_image_finite_nonzero(Ext x) {
    const float image = static_cast<float>(x);
    const uint32_t ib = __builtin_bit_cast(uint32_t, image) & 0x7fffffffu;
    return ib != 0 && (ib & 0x7f800000u) != 0x7f800000u;
}

}  // namespace
