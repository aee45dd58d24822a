// The complex scalar routines of one cpu type in extended precision:
// zSqrt_scalar, the seven trigonometric and hyperbolic routines of their
// own and the five quarter turns of them. Each per-cpu unit includes this
// header and gets its own copy. The square roots in double arithmetic
// (zSqrt_fast and the vector members, sqrt/sqrt_lanes.h) are compiled with
// the unit's own instruction set instead.
//
// In a unit compiled for AVX the routines are compiled without it, as the
// extended-precision support set is, so that they can take the set's
// routines inline and hold no VEX-coded instruction either.
#pragma once

// clang has no per-function target switch of this form: its build keeps
// VEX code here, and its checks leave the x87-only test out.
#if defined(__AVX__) && !defined(__clang__)
#pragma GCC push_options
#pragma GCC target("no-avx")
#endif

#include "kernels/complex/acos/acos.h"
#include "kernels/complex/acosh/acosh.h"
#include "kernels/complex/asinh/asinh.h"
#include "kernels/complex/atanh/atanh.h"
#include "kernels/complex/cosh/cosh.h"
#include "kernels/complex/sinh/sinh.h"
#include "kernels/complex/sqrt/sqrt_scalar.h"
#include "kernels/complex/tanh/tanh.h"

#if defined(__AVX__) && !defined(__clang__)
#pragma GCC pop_options
#endif
