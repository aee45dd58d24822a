// ext_sinh, ext_cosh, ext_sinhcosh, ext_tanh.
//
// None goes through ext_exp. sinh and cosh of |x|:
//   below 1: t = j/64 nearest |x|, r = |x| - t exact, sinh and cosh of t
//     from a table in two parts and of r from Taylor polynomials, combined
//     by the addition theorem (rotate, arith.h), within about an ulp;
//   from 1 to 25: (e^|x| -+ e^-|x|)/2, both from the exp table (no
//     division), the larger terms by an exact two-sum, within about half;
//   above 25: sinh |x| = cosh x = 2^(k-1) e^|x| / 2^k, where e^-|x| is
//     below 2^-72 of the result; the halving goes into the power of two, so
//     results up to the overflow threshold stay finite.
//   tanh |x| = em / (em + 2) with em = e^(2|x|) - 1 from the exp core as a
// pair, for |x| < 23; from 23 on the result is 1 - 2^-16382, which rounds
// to 1 and raises inexact.
// Below 2^-33, sinh and tanh return x (signed zeros kept) and cosh 1.
#pragma once

#include "kernels/complex/ext/exp.h"

namespace {

struct ExtHyp {
    static constexpr RotRow table[65] = {
#include "kernels/complex/ext/table_sinhcosh.inc"
    };
    static constexpr long double big = 25.0L;
    static constexpr long double tanh_one = 23.0L;
};

// sinh and cosh of ax in [2^-33, 1): t = j/64 nearest ax, r = ax - t
// exact, and the addition theorems from the table's row j.
ZVL_EXT_INLINE void sinhcosh_table(long double ax, long double* sh, long double* ch) {
    const Rounded j = round_to_int(ax * 64.0L);
    const long double r = ax - j.value * 0x1p-6L;
    const long double z = r * r;
    const long double sr = r * z * horner(Ext::sinh_small, z), cr = z * horner(Ext::cosh_small, z);
    rotate(ExtHyp::table[j.n], false, r, 0.0L, sr, cr, 1.0L, sh, ch);
}

// sinh and cosh of ax in [1, 25]: (e^ax -+ e^-ax)/2, both from the exp
// table with no division: e^ax = 2^k T_j e^r and e^-ax = 2^(-k-1) T_(256-j)
// e^-r (2^-k e^-r for j = 0), e^r - 1 and e^-r - 1 from the even and odd
// parts of one Taylor series. e^-ax is below e^-2 of e^ax, so the
// difference loses under a bit, and the two large terms go through an
// exact two-sum.
ZVL_EXT_INLINE void sinhcosh_exp(long double ax, long double* sh, long double* ch) {
    const Rounded n = round_to_int(ax * Ext::inv_ln2_256);
    const long double nf = n.value;
    const long double a = ax - nf * Ext::ln2_256[0];  // exact
    const Pair r = two_sum(a, -(nf * Ext::ln2_256[1]));
    const long double rh = r.hi, rl = r.lo - nf * Ext::ln2_256[2];
    const long double z = rh * rh;
    const long double E = z * horner(Ext::cosh_small, z), O = rh * z * horner(Ext::sinh_small, z);
    const long double even = E + rh * rl, odd = rl + O;
    const int jj = static_cast<int>(n.n & 255), k = static_cast<int>(n.n >> 8);
    const Pair& A = ExtExp::table[jj];
    const Pair& B = ExtExp::table[(256 - jj) & 255];
    const long double sa = pow2_near(k - 1), sb = pow2_near(jj ? -k - 2 : -k - 1);
    // e^ax / 2 = sa (A.hi + a_lo), e^-ax / 2 = sb (B.hi + b_lo)
    const long double a_lo = A.lo + A.hi * (rh + (even + odd));
    const long double b_lo = B.lo + B.hi * ((even - odd) - rh);
    const long double ph = sa * A.hi, mh = sb * B.hi, pl = sa * a_lo, ml = sb * b_lo;
    const Pair c = fast_two_sum(ph, mh), s = fast_two_sum(ph, -mh);
    *ch = c.hi + (c.lo + (pl + ml));
    *sh = s.hi + (s.lo + (pl - ml));
}

// ext_sinhcosh for 2^-33 <= |x| <= 25, the same bits, inlined into its
// caller (the complex routines, from a double argument).
ZVL_EXT_INLINE void sinhcosh_mid(long double x, long double* sh, long double* ch) {
    const long double ax = ext_abs(x);
    long double s;
    if (ax < 1.0L)
        sinhcosh_table(ax, &s, ch);
    else
        sinhcosh_exp(ax, &s, ch);
    *sh = ext_neg_if(s, x < 0);
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
    sinhcosh_mid(x, sh, ch);
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
