// Atanh: r = atanh(a) = log((1 + a) / (1 - a)) / 2 for |a| < 1, over the
// SIMD wrappers, with the logarithm of log.h.
//
//   LA, EP  below 1/4 x + x^3 P(x^2), P of degree 11; above u = (1 + |x|) /
//           (1 - |x|) by the division instruction, 1 + |x| and 1 - |x| as
//           two-sums whose low parts, over 1 - |x| by a second division,
//           join the logarithm's reduced argument.
//   HA      below 2^-8 x + x^3 P(x^2), P of degree 3; above u in two parts:
//           q = 1/(1 - |x|) by the division instruction, u_hi = (1 + |x|) q
//           cut to 26 bits, whose residual against the two-part sums is
//           exact but for its small terms, and u_lo that residual times q;
//           then the logarithm in two parts.
// Largest errors found against MPFR (2.4 million arguments; see
// tests/kernels/trig): LA and EP 1.98 ulp at -0x1.c642c960da39cp-2 (the
// quotient's rounding and the logarithm's each up to an ulp of a result
// below 1/2); HA 0.5001 ulp at -0x1.f10282e6a2bcp-6 (zvl-ulp, 1e6 samples).
// Vector range |x| < 1. The callout takes the rest: +-1 give +-inf with
// ZVL_STATUS_SING, |x| > 1 the default NaN with ZVL_STATUS_ERRDOM, NaN x + x.
//
// Included inside the unnamed namespace of the per-cpu units (see isa.h).
#pragma once

#include "kernels/common/loops.h"
#include "kernels/trig/inverse_hyperbolic/log.h"
#include "kernels/trig/lane_tests.h"

namespace {

// Refused: |x| >= 1 or NaN.
template <class V>
inline int atanh_refused(typename V::vd x) {
    return outside<V>(abs_high<V>(x), 0, 0x3ff00000);
}

// 1 + a = n + n_lo and 1 - a = d + d_lo, exactly (a < 1).
template <class V>
inline void atanh_sums(typename V::vd a, typename V::vd& n, typename V::vd& n_lo,
                       typename V::vd& d, typename V::vd& d_lo) {
    fast_two_sum<V>(V::splat(1.0), a, n, n_lo);
    fast_two_sum<V>(V::splat(1.0), V::xor_(a, splat_bits<V>(Fp64::sign_mask)), d, d_lo);
}

// u = (1 + a) / (1 - a) = u_hi + u_lo for 0 <= a < 1: 1 + a = n + n_lo and
// 1 - a = d + d_lo exactly, q = 1/(1 - a) by the division instruction, u_hi
// = n q cut to 26 bits. u_hi and d_hi have 26 bits and d - d_hi 27, so both
// products with u_hi are exact, and u_hi d_hi, within 2^-24 of n, leaves n
// exactly: the residual is exact but for its small terms, and u_lo, that
// residual times q, is below 2^-24 u_hi, so q's rounding is nothing to it.
template <class V>
inline void atanh_quotient(typename V::vd a, typename V::vd& u_hi, typename V::vd& u_lo) {
    using vd = typename V::vd;
    vd n, n_lo, d, d_lo;
    atanh_sums<V>(a, n, n_lo, d, d_lo);
    const vd q = V::div(V::splat(1.0), d);
    u_hi = upper_half<V>(V::mul(n, q));
    const vd d_hi = upper_half<V>(d);
    const vd r = V::add(V::sub(V::sub(n, V::mul(u_hi, d_hi)), V::mul(u_hi, V::sub(d, d_hi))),
                        V::sub(n_lo, V::mul(u_hi, d_lo)));
    u_lo = V::mul(r, q);
}

struct AtanhLA : PerTwin<AtanhLA, 2> {
    template <class V>
    static typename V::vd eval(typename V::vd x) {
        using vd = typename V::vd;
        const vd a = abs_of<V>(x);
        const vd small = odd_series<V>(zvl::AtanhPolyLA::c, a);
        vd n, n_lo, d, d_lo;
        atanh_sums<V>(a, n, n_lo, d, d_lo);
        // u rounded once; the sums' low parts over d join the logarithm's
        // reduced argument (the quotient's own rounding, half an ulp of u,
        // is left: it is at most an ulp of the result)
        const vd u = V::div(n, d);
        const vd u_lo = V::div(V::sub(n_lo, V::mul(u, d_lo)), d);
        const vd far = V::mul(log_la<V, true>(u, V::splat(0.0), u_lo), V::splat(0.5));
        return V::or_(V::select(V::lt(a, V::splat(0.25)), small, far), sign_of<V>(x));
    }
    template <class V>
    static int special(typename V::vd x) {
        return atanh_refused<V>(x);
    }
    static int32_t callout(const double* x, double* r) { return zvl::atanh_callout(x, r); }
};

struct AtanhHA : PerTwin<AtanhHA, 2> {
    template <class V>
    static typename V::vd eval(typename V::vd x) {
        using vd = typename V::vd;
        const vd a = abs_of<V>(x);
        const vd small = odd_series<V>(zvl::AtanhPolySmallHA::c, a);
        vd u_hi, u_lo, hi, lo;
        // log(u) is as small as 2^-7, so u's error counts 2^7 times over
        atanh_quotient<V>(a, u_hi, u_lo);
        log_ha<V>(u_hi, u_lo, V::splat(0.0), hi, lo);
        const vd far = V::mul(V::add(hi, lo), V::splat(0.5));
        return V::or_(V::select(V::lt(a, V::splat(0x1p-8)), small, far), sign_of<V>(x));
    }
    template <class V>
    static int special(typename V::vd x) {
        return atanh_refused<V>(x);
    }
    static int32_t callout(const double* x, double* r) { return zvl::atanh_callout(x, r); }
};

}  // namespace
