// Double-word steps of the trigonometric routines beyond
// kernels/common/double_word.h: the quotient and the closing sum the inverse
// trigonometric and hyperbolic kernels share.
//
// Included by the per-cpu units inside their unnamed namespace (see
// kernels/common/isa.h), so each cpu type has its own copy.
#pragma once

#include "kernels/common/isa.h"
#include "kernels/common/double_word.h"

namespace {

// q_hi + q_lo = num / (D_hi + D_lo) to about 2^-100 relative, given R, an
// approximation of 1/D_hi within 2^-30. q_hi is num * R cut to 26 bits, so
// q_hi times D_hi's upper half is exact and num less that product is exact
// (the two agree within 2^-24); the rest of the quotient is the residual
// times R.
template <class V>
inline void divide_dw(typename V::vd num, typename V::vd D_hi, typename V::vd D_lo,
                      typename V::vd R, typename V::vd& q_hi, typename V::vd& q_lo) {
    using vd = typename V::vd;
    q_hi = upper_half<V>(V::mul(num, R));
    const vd D1 = upper_half<V>(D_hi);
    const vd D2 = V::add(V::sub(D_hi, D1), D_lo);
    const vd r = V::sub(V::sub(num, V::mul(q_hi, D1)), V::mul(q_hi, D2));
    q_lo = V::mul(r, R);
}

// B + m (s + C + low), rounded once at the end: m is +-1 or +-2 (exact
// products), |B| >= |m s| unless B is 0, |s| > |C|, and `low` is small. The
// two large sums are fast two-sums whose errors join the low parts; B comes
// in two parts. The odd series of the inverse functions end this way, with
// s their argument and C the cubic term.
template <class V>
inline typename V::vd sum_three(typename V::vd B_hi, typename V::vd B_lo, typename V::vd m,
                                typename V::vd s, typename V::vd C, typename V::vd low) {
    using vd = typename V::vd;
    vd s1, e1, s2, e2;
    fast_two_sum<V>(V::mul(m, s), V::mul(m, C), s1, e1);
    fast_two_sum<V>(B_hi, s1, s2, e2);
    return V::add(s2, V::add(e2, V::add(e1, V::add(B_lo, V::mul(m, low)))));
}

}  // namespace
