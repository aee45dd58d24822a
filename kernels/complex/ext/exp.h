// ext_exp: e^x in extended precision, and the cores the hyperbolic routines
// share with it.
//
// n = round(x 256/ln 2) by the 3 * 2^62 shifter, r = x - n ln2/256 with
// ln2/256 in parts of 42, 41 and 64 bits (n below 2^22 makes the first two
// products exact), |r| <= ln2/512, kept as a pair. With j = n mod 256 and
// T = 2^(j/256) from the table in two parts, e^x = 2^(n/256 rounded down)
// (T_hi + (T_lo + T_hi p)), p = e^r - 1 from a degree-6 Taylor polynomial.
// The result carries one rounding and errors below 2^-70 relative.
//
// Above 11400 the result overflows by the product 2^16383 * 2^16383, below
// -11400 it underflows by 2^-16382 * 2^-16382, so that the flags come from
// the hardware; results between 2^-16445 and 2^-16382 are subnormal.
#pragma once

#include "kernels/complex/ext/arith.h"

namespace {

struct ExtExp {
    static constexpr Pair table[256] = {
#include "kernels/complex/ext/table_exp.inc"
    };
    // |x| beyond which e^x certainly overflows or underflows (11356.5 and
    // -11355.1 are the limits)
    static constexpr long double limit = 11400.0L;
};

// e^x = 2^k T (1 + p) for |x| <= 11400, with T = 2^(j/256) and
// p = e^r - 1 each in two parts.
struct ExpParts {
    long double T_hi, T_lo, p_hi, p_lo;
    int k;
    // T (1 + p) = hi + lo, hi = T_hi
    long double lo() const { return T_lo + T_hi * (p_hi + p_lo); }
};

inline ExpParts exp_core(long double x) {
    const Rounded n = round_to_int(x * Ext::inv_ln2_256);
    const long double nf = n.value;
    const long double a = x - nf * Ext::ln2_256[0];  // exact
    const Pair r = two_sum(a, -(nf * Ext::ln2_256[1]));
    const long double rl = r.lo - nf * Ext::ln2_256[2];
    // e^(rh + rl) - 1 = rh + rh^2 Q(rh) + rl (1 + rh), the second part to
    // 2^-73 absolute
    const Pair& t = ExtExp::table[n.n & 255];
    return {t.hi, t.lo, r.hi, rl + r.hi * rl + r.hi * r.hi * horner(Ext::exp_poly, r.hi),
            static_cast<int>(n.n >> 8)};
}

// e^x - 1 as a pair, for |x| <= 11400: the 1 comes off 2^k T_hi exactly
// and T_hi p_hi is taken exactly, so the relative error stays near 2^-70
// where the result is small.
inline Pair expm1_core(long double x) {
    const ExpParts e = exp_core(x);
    const long double s = pow2(e.k);
    const Pair A = two_sum(e.T_hi * s, -1.0L);
    const Pair P = two_prod(e.T_hi, e.p_hi);
    const Pair B = two_sum(A.hi, P.hi * s);
    const long double lo = (P.lo + e.T_lo + e.T_hi * e.p_lo + e.T_lo * (e.p_hi + e.p_lo)) * s;
    return fast_two_sum(B.hi, B.lo + A.lo + lo);
}

inline long double ext_exp(long double x) {
    if (x != x) return x * x;
    if (!(ext_abs(x) <= ExtExp::limit)) {
        if (x > 0) return ext_exp_field(x) == 0x7fff ? x : ext_opaque(Ext::huge) * Ext::huge;
        return ext_exp_field(x) == 0x7fff ? 0.0L : ext_opaque(Ext::tiny) * Ext::tiny;
    }
    const ExpParts e = exp_core(x);
    return scale2(e.T_hi + e.lo(), e.k);
}

}  // namespace
