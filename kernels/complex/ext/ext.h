// The extended-precision support set of the complex scalar routines:
//
//   fabs_d        |x| of a double, as an extended value
//   ext_fabs      |x| of an extended value
//   ext_sqrt      square root                  (sqrt.h)
//   ext_log       ln x                         (log.h)
//   ext_log1p     ln(1 + x)                    (log.h)
//   ext_exp       e^x                          (exp.h)
//   ext_sin, ext_cos, ext_sincos, ext_tan, ext_reduce_pio4       (trig.h)
//   ext_sinh, ext_cosh, ext_sinhcosh, ext_tanh              (hyperbolic.h)
//   ext_asin, ext_acos, ext_atan, ext_atan2                       (atan.h)
//   ext_asinh, ext_acosh, ext_atanh                (inverse_hyperbolic.h)
//
// Each takes and returns long double, the x87 extended format with its
// 64-bit significand, and is written in x87 arithmetic alone: no double
// arithmetic, no library call, so that even the copy compiled for cpu type 5
// holds no VEX-coded instruction and every copy, on Linux and on Windows,
// computes the same bits. ext_sincos and ext_sinhcosh take the argument and
// two result pointers, the sine part first; ext_reduce_pio4 returns the
// octant and stores the remainder as a pair.
//
// Every routine needs the x87 control word's precision and rounding field
// (0x0F00) at 0x0300, 64-bit significand and round to nearest; the complex
// kernels set it on entry. Results are within about an ulp of the
// extended format (two and a half for tan, asin and acos), 2^-61 relative
// or better, hundreds of times below the half ulp of double to which the
// complex routines round their results once. The routines on the complex
// functions' common paths (sincos, sinhcosh, atan2, log, sqrt) are
// table-driven with short polynomials and two divisions at most, for
// speed; the others keep exact
// pair arithmetic. Worst errors found against MPFR (ext_accuracy_test with
// ZVL_EXT_SAMPLES=40, 0.36 to 0.8 million arguments each), in ulps of the
// extended format:
//   ext_sqrt   0.500                       ext_sinh   0.961 at -0.009118708583
//   ext_log    0.504 at 0.9944359370970    ext_cosh   0.504 at -0.9293719088
//   ext_log1p  0.504 at 0.007391513139     ext_tanh   0.507 at -0.0006598816484
//   ext_exp    0.502 at -0.06391633036     ext_asin   2.017 at 0.001849460961
//   ext_sin    1.026 at -9.400089469261    ext_acos   1.815 at 0.9999988676473
//   ext_cos    1.057 at 16989778.64829     ext_atan   1.033 at -0.02653663450
//   ext_tan    2.558 at 1.602878047775     ext_atan2  1.008
//   ext_asinh  0.503 at 0.006236316658     ext_acosh  0.504 at 1.000017520413
//   ext_atanh  0.502 at -0.002821238533    ext_reduce_pio4 below 0.001 of the
//                                                          remainder's ulp
// Results below 2^-16382, subnormal in the format, may be rounded twice.
//
// A NaN argument comes back through arithmetic (x * x, x + y), never by
// copying (only fabs_d and ext_fabs hand a NaN back with its payload), so a signalling NaN is quieted and raises invalid; an undefined
// result (ln of a negative number, sin of an infinity) is a NaN made by
// x - x or 0/0, raising invalid; poles divide by zero; overflow and
// underflow come from deliberate products of 2^16383 or 2^-16382. Odd
// functions keep the sign of a zero argument.
//
// The header has internal linkage: each per-cpu unit that includes it gets
// its own copy, compiled with its own flags.
//
// Include this header, not its parts: in a unit compiled for AVX it puts
// the whole set under target("no-avx"), so that the compiler's own moves,
// zeroing and vectorised loops stay legacy-SSE coded too. A caller compiled
// for AVX that inlines a routine would re-encode it; the complex routines
// of cpu type 5 are therefore compiled the same way or call the set out of
// line.
#pragma once

#include <cstdint>
#include <cstring>

// clang has no per-function target switch of this form: its build keeps
// VEX code here, and its checks leave the x87-only test out.
#if defined(__AVX__) && !defined(__clang__)
#pragma GCC push_options
#pragma GCC target("no-avx")
#endif

#include "kernels/complex/ext/arith.h"
#include "kernels/complex/ext/atan.h"
#include "kernels/complex/ext/exp.h"
#include "kernels/complex/ext/hyperbolic.h"
#include "kernels/complex/ext/inverse_hyperbolic.h"
#include "kernels/complex/ext/log.h"
#include "kernels/complex/ext/sqrt.h"
#include "kernels/complex/ext/trig.h"

namespace {

// |*x| of a double, loaded straight into the x87 unit and its sign cleared
// (fabs): a NaN keeps its payload.
inline long double fabs_d(const double* x) { return __builtin_fabsl(*x); }

// |x|: a NaN comes back as it is, with its payload; anything else is
// multiplied by +1 or -1, so a zero comes back +0.
inline long double ext_fabs(long double x) {
    if (x != x) return x;
    return x * (ext_sign(x) ? -1.0L : 1.0L);
}

}  // namespace

#if defined(__AVX__) && !defined(__clang__)
#pragma GCC pop_options
#endif
