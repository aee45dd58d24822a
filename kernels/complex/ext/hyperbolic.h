// ext_sinh, ext_cosh, ext_sinhcosh, ext_tanh.
//
// None goes through ext_exp: each takes e^|x| - 1 = em from the shared core
// as a pair, which keeps its relative accuracy near 0 and so needs no
// polynomial of its own there. With E = 1 + em:
//   sinh |x| = (em + em/E) / 2,   cosh x = (E + 1/E) / 2    for |x| <= 25
//   sinh |x| = cosh x = 2^(k-1) e^|x| / 2^k                 above 25,
// where e^-|x| is below 2^-72 of the result; the halving goes into the
// power of two, so results up to the overflow threshold stay finite.
//   tanh |x| = em / (em + 2) with em = e^(2|x|) - 1, for |x| < 23; from 23
// on the result is 1 - 2^-16382, which rounds to 1 and raises inexact.
// Below 2^-33, sinh and tanh return x (signed zeros kept) and cosh 1.
#pragma once

#include "kernels/complex/ext/exp.h"

namespace {

struct ExtHyp {
    static constexpr long double big = 25.0L;
    static constexpr long double tanh_one = 23.0L;
};

// sinh and cosh of ax in [2^-33, 25].
inline void sinhcosh_mid(long double ax, long double* sh, long double* ch) {
    const Pair em = expm1_core(ax);
    const Pair E = add_pair({1.0L, 0.0L}, em);
    const Pair iE = div_pair({1.0L, 0.0L}, E);
    const Pair s = add_pair(em, mul_pair(em, iE));
    const Pair c = add_pair(E, iE);
    *sh = 0.5L * (s.hi + s.lo);
    *ch = 0.5L * (c.hi + c.lo);
}

// e^ax / 2 for ax above 25: sinh and cosh alike.
inline long double half_exp(long double ax) {
    if (ax > ExtExp::limit) return ext_opaque(Ext::huge) * Ext::huge;
    const ExpParts e = exp_core(ax);
    return scale2(e.T_hi + e.lo(), e.k - 1);
}

inline void ext_sinhcosh(long double x, long double* sh, long double* ch) {
    if (x != x) {
        *sh = x * x;
        *ch = x * x;
        return;
    }
    const long double ax = ext_abs(x);
    if (!(ax <= ExtHyp::big)) {
        const long double h = ext_exp_field(x) == 0x7fff ? ax : half_exp(ax);
        *sh = ext_neg_if(h, x < 0);
        *ch = h;
        return;
    }
    if (ax < Ext::tiny33) {
        *sh = x;
        *ch = 1.0L;
        return;
    }
    long double s;
    sinhcosh_mid(ax, &s, ch);
    *sh = ext_neg_if(s, x < 0);
}

inline long double ext_sinh(long double x) { return one_of_two<ext_sinhcosh, 0>(x); }
inline long double ext_cosh(long double x) { return one_of_two<ext_sinhcosh, 1>(x); }

inline long double ext_tanh(long double x) {
    if (x != x) return x * x;
    const long double ax = ext_abs(x);
    if (ax >= ExtHyp::tanh_one) return ext_neg_if(1.0L - ext_opaque(Ext::tiny), x < 0);
    if (ax < Ext::tiny33) return x;
    const Pair em = expm1_core(2.0L * ax);
    const Pair q = div_pair(em, add_pair({2.0L, 0.0L}, em));
    return ext_neg_if(q.hi + q.lo, x < 0);
}

}  // namespace
