// Polynomial fits and their error bounds, for the coefficient generators.
//
// A problem asks for p(v) = sum c[i] v^powers[i] close to a function g on
// [lo, hi] in the weighted sense max |w(v) (g(v) - p(v))|; the weight is
// 1/|g| (relative error) unless the problem gives one. minimax() runs the
// Remez exchange on a dense grid of Chebyshev-spaced points with MPFR, then
// rounds the coefficients to doubles one at a time, most significant term
// first, refitting the terms still free after each rounding, so that the
// later coefficients absorb the earlier ones' rounding (or all at once, if
// the problem says so). The error reported is the one of the rounded
// coefficients, measured on the same grid.
//
// Everything is MPFR at a fixed precision and the grid is fixed, so a
// problem gives the same doubles on every machine.
#pragma once

#include <mpfr.h>

#include <functional>
#include <vector>

namespace zvl_fit {

constexpr mpfr_prec_t kPrec = 192;

// A real function of the fitting variable: out = f(v), both at kPrec bits.
using Fn = std::function<void(mpfr_t out, const mpfr_t v)>;

struct Problem {
    Fn target;                // g, the function p approximates
    Fn weight;                // w > 0; left empty, the error is relative: w = 1/|g|
    std::vector<int> powers;  // p(v) = sum c[i] v^powers[i]
    double lo = 0, hi = 0;    // the interval of v
    int grid = 1500;          // grid points, both ends included
    // Round the terms one at a time, refitting the others (otherwise all at
    // once, for fits whose leading terms are chosen to round well).
    bool sequential = true;
};

struct Fit {
    std::vector<double> c;  // in the order of `powers`
    double error = 0;       // max |w (g - p)| over the grid, c as doubles
    double where = 0;       // the v where it is reached
};

// The minimax fit rounded to doubles. `fixed` coefficients (NaN for free
// ones, in the order of `powers`) are kept as given.
Fit minimax(const Problem& p, const std::vector<double>& fixed = {});

// max |w (g - p)| over the problem's grid for the coefficients c.
double max_error(const Problem& p, const std::vector<double>& c, double* where);

// An error as a power of two with two decimals, for the generated files'
// comments: "2^-58.05" (computed by MPFR, so the text is the same everywhere).
void print_log2(char* out, int size, double error);

}  // namespace zvl_fit
