// What the complex scalar routines share: the classes of a double part, read
// from its bits (integer work alone, so that no double arithmetic enters
// the routines' x87 code), and the bracket that compiles them, as the
// support set, without VEX coding in cpu type 5's unit.
//
// A scalar routine takes a pointer to the result and one to the argument
// and returns the result pointer. It is a function of its own (noinline):
// a vector kernel compiled for AVX calls it and would re-encode it if it
// were inlined. Other complex families call these routines too (Pow
// composes Ln and Exp).
//
// Included inside a unit's unnamed namespace, between
// ZVL_SCALAR_BEGIN and ZVL_SCALAR_END.
#pragma once

#include <cstdint>
#include <cstring>

#include "kernels/complex/ext/ext.h"
#include "zvl.h"

// As for the support set (ext.h): the switch is GCC's alone.
#if defined(__AVX__) && !defined(__clang__)
#define ZVL_SCALAR_BEGIN _Pragma("GCC push_options") _Pragma("GCC target(\"no-avx\")")
#define ZVL_SCALAR_END _Pragma("GCC pop_options")
#else
#define ZVL_SCALAR_BEGIN
#define ZVL_SCALAR_END
#endif
#define ZVL_SCALAR_ROUTINE __attribute__((noinline)) inline

ZVL_SCALAR_BEGIN
namespace {

inline uint64_t part_bits(double x) {
    uint64_t b;
    std::memcpy(&b, &x, sizeof b);
    return b;
}
// The biased exponent field, 0 to 0x7ff.
inline int part_exp(double x) { return static_cast<int>(part_bits(x) >> 52 & 0x7ff); }
inline bool part_zero(double x) { return (part_bits(x) << 1) == 0; }
inline bool part_finite(double x) { return part_exp(x) != 0x7ff; }
inline bool part_nan(double x) { return !part_finite(x) && (part_bits(x) << 12) != 0; }
inline bool part_inf(double x) { return !part_finite(x) && (part_bits(x) << 12) == 0; }
inline bool part_subnormal(double x) { return part_exp(x) == 0 && !part_zero(x); }
inline bool part_negative(double x) { return (part_bits(x) >> 63) != 0; }

// A part of the argument as an extended value, |part| for part_abs, loaded
// anew from the double at every use. A part used all through a routine
// would otherwise hold one of the eight x87 registers or be spilled and
// reloaded as an 80-bit value (a store of two operations, a load of four);
// this is one load of the double. The asm is volatile so that the compiler
// does not merge the loads back into one long-lived value.
inline long double part_load(const double* v) {
    long double r;
    __asm__ volatile("fldl %1" : "=t"(r) : "m"(*v));
    return r;
}
inline long double part_abs(const double* v) {
    long double r;
    __asm__ volatile("fldl %1\n\tfabs" : "=t"(r) : "m"(*v));
    return r;
}

inline ZVLComplex16 make_z(long double re, long double im) {
    return ZVLComplex16{static_cast<double>(re), static_cast<double>(im)};
}

}  // namespace
ZVL_SCALAR_END
