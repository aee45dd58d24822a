// Complex reference values from MPFR, for the complex functions' measuring
// rows and the accuracy test of their scalar routines. Each function is evaluated by a formula of its own
// (not the routines' schemes) at a working precision that doubles until
// two successive results agree to 2^-90 in each part, so that the
// cancellations of the formulas near branch points cost nothing but time.
#pragma once

#include <mpfr.h>

// The functions with a reference formula; the quarter turns (cos, sin, tan,
// asin, atan) are measured against their hyperbolic partner at iz.
enum class Ref { Sqrt, Cosh, Sinh, Tanh, Acos, Acosh, Asinh, Atanh };

// The exact value of f(x + iy) to about 2^-90 relative in each part, in re
// and im (initialised by the caller, at least 64 bits). False when the
// parts did not settle within the precision cap, which happens only for a
// part that is exactly zero.
bool complex_reference(Ref f, double x, double y, mpfr_t re, mpfr_t im);
