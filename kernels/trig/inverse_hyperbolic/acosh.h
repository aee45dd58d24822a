// Acosh: r = acosh(a) = log(a + sqrt(a^2 - 1)) for a >= 1, over the SIMD
// wrappers, with the logarithm of log.h.
//
//   LA, EP  below 1.13001 sqrt(y) Q(y), y = x - 1 (exact), Q of degree 7
//           and the square root instruction; above v = x + sqrt((x - 1)(x +
//           1)), or v = x with ln 2 added from 1e154 on.
//   HA      below 1.0625 sqrt(2y) (1 + y P(y)), P of degree 6, the root in
//           two parts (the refined reciprocal square root estimate and the
//           exact residual), computed only for vectors with such a lane;
//           above v in two parts: s = sqrt(x^2 - 1) by the square root
//           instruction, cut to 26 bits as s_hi, whose residual x^2 - 1 -
//           s_hi^2 is exact from the halves of x, and s_lo the residual
//           over s + s_hi (one division); v = (x_hi + s_hi) + (x_lo + s_lo),
//           the first sum exact. From 2^28 on v = x with ln 2 added.
// Largest errors found against MPFR (2.4 million arguments; see
// tests/kernels/trig): LA and EP 2.58 ulp at 0x1.1fe28b1e85302p+0, HA 0.508
// ulp at 0x1.0d7e990c52326p+0 (zvl-ulp).
// Vector range 1 <= x < inf (one compare of the high word, which a
// negative x fails as a signed number). The callout takes the rest: x < 1
// gives the default NaN with ZVL_STATUS_ERRDOM, +inf gives +inf, NaN x + x.
// acosh(1) = +0.
//
// Included inside the unnamed namespace of the per-cpu units (see isa.h).
#pragma once

#include "kernels/common/loops.h"
#include "kernels/trig/estimates.h"
#include "kernels/trig/inverse_hyperbolic/log.h"
#include "kernels/trig/lane_tests.h"

namespace {

// Refused: the high word of x (its sign included) outside [0x3ff00000,
// 0x7ff00000).
template <class V>
inline int acosh_refused(typename V::vd x) {
    return outside<V>(Lanes<V::lanes>::hi32(x), 0x3ff00000, 0x7ff00000);
}

struct AcoshLA : PerTwin<AcoshLA, 2> {
    static constexpr double near_below = 1.13001;
    static constexpr double huge = zvl::from_bits(0x5fe7dddf6b095ff1);  // 1e154

    template <class V>
    static typename V::vd eval(typename V::vd x) {
        using vd = typename V::vd;
        // Each branch sees arguments of its own range (others take 2), so
        // that neither overflows where the other is taken.
        const vd is_near = V::lt(x, V::splat(near_below));
        const vd big = V::le(V::splat(huge), x);
        const vd y = V::and_(is_near, V::sub(x, V::splat(1.0)));
        const vd near = V::mul(V::sqrt(y), horner<V>(zvl::AcoshPolyNearLA::c, y));
        const vd xc = V::select(V::or_(is_near, big), V::splat(2.0), x);
        const vd w = V::mul(V::sub(xc, V::splat(1.0)), V::add(xc, V::splat(1.0)));
        const vd v = V::select(big, x, V::add(xc, V::sqrt(w)));
        const vd far = log_la<V>(v, V::and_(big, V::splat(1.0)));
        return V::select(is_near, near, far);
    }
    template <class V>
    static int special(typename V::vd x) {
        return acosh_refused<V>(x);
    }
    static int32_t callout(const double* x, double* r) { return zvl::acosh_callout(x, r); }
};

struct AcoshHA : PerTwin<AcoshHA, 2> {
    static constexpr double near_below = 1.0625;
    static constexpr double big_from = zvl::from_bits(0x41b0000000000000);  // 2^28

    // sqrt(2y) (1 + y P(y)), y = x - 1 (exact): the lanes below 1.0625.
    template <class V>
    static typename V::vd near(typename V::vd x, typename V::vd is_near) {
        using vd = typename V::vd;
        const vd one = V::splat(1.0);
        // others take y = 0, and a z of 0 the estimate of 1
        const vd y = V::and_(is_near, V::sub(x, one));
        const vd y2 = V::add(y, y);
        vd s, s_lo;
        sqrt_dw<V>(y2, V::splat(0.0),
                   rsqrt_refined<V>(V::select(V::eq(y2, V::splat(0.0)), one, y2)), s, s_lo);
        const vd yP = V::mul(y, horner<V>(zvl::AcoshPolyNearHA::c, y));
        return V::add(s, V::add(s_lo, V::mul(V::add(s, s_lo), yP)));
    }

    template <class V>
    static typename V::vd eval(typename V::vd x) {
        using vd = typename V::vd;
        const vd one = V::splat(1.0);
        // Each branch sees arguments of its own range (others take 2), so
        // that neither overflows where the other is taken.
        const vd is_near = V::lt(x, V::splat(near_below));
        const vd big = V::le(V::splat(big_from), x);
        const vd xc = V::select(V::or_(is_near, big), V::splat(2.0), x);
        const vd s = V::sqrt(V::sub(V::mul(xc, xc), one));
        const vd s_hi = upper_half<V>(s);
        const vd x_hi = upper_half<V>(xc), x_lo = V::sub(xc, x_hi);
        // x_hi^2 - 1 is exact below 2^26, and so is its difference with
        // s_hi^2 (within 2^-22 of x^2 and of a unit at most 2^4 times
        // finer); beyond, its error is 2^-51 of the residual's scale, a
        // 2^-52 of log v's argument where log v > 18. The cross terms
        // complete x^2.
        const vd res = V::add(V::sub(V::sub(V::mul(x_hi, x_hi), one), V::mul(s_hi, s_hi)),
                              V::add(V::mul(V::add(x_hi, x_hi), x_lo), V::mul(x_lo, x_lo)));
        const vd s_lo = V::div(res, V::add(s, s_hi));
        // x_hi + s_hi: two 26-bit numbers with s_hi < x_hi < 4 s_hi, exact
        const vd v = V::select(big, x, V::add(x_hi, s_hi));
        const vd v_lo = V::andnot(big, V::add(x_lo, s_lo));
        vd hi, lo;
        log_ha<V>(v, v_lo, V::and_(big, one), hi, lo);
        const vd far = V::add(hi, lo);
        // the branch near 1 only where a lane takes it
        if (lane_bits<V>(is_near) == 0) return far;
        return V::select(is_near, near<V>(x, is_near), far);
    }
    template <class V>
    static int special(typename V::vd x) {
        return acosh_refused<V>(x);
    }
    static int32_t callout(const double* x, double* r) { return zvl::acosh_callout(x, r); }
};

}  // namespace
