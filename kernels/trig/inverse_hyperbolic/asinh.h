// Asinh: r = asinh(a) = sign(a) log(|a| + sqrt(a^2 + 1)), over the SIMD
// wrappers, with the logarithm of log.h.
//
//   LA, EP  0.5625 <= |x| finite (high word from 0x3fe20000 to below
//           0x7ff00000, one compare): v = |x| + sqrt(x^2 + 1) by
//           the square root instruction, or v = |x| with ln 2 added from 1e154
//           on (x^2 would overflow); the rest goes to the callout.
//   HA      every finite x: below 1/8 x + x^3 P(x^2) (degree 13, for the
//           vectors with such a lane only), above v in
//           two parts, the root from the refined reciprocal square root
//           estimate and the exact residual of x^2 + 1 (x^2 in two parts);
//           from 2^28 on v = |x| with ln 2 added (the 1 in x^2 + 1 is below
//           2^-56 of it).
// Largest errors found against MPFR (2.4 million arguments; see
// tests/kernels/trig): LA and EP 2.60 ulp at 0x1.813e041987fd8p-1, HA 0.506
// ulp at 0x1.d9183b5bdf3ap-4.
// The callout: NaN x + x, +-inf, and for LA and EP |x| < 0.5625 by HA's
// formula. No status.
//
// Included inside the unnamed namespace of the per-cpu units (see isa.h).
#pragma once

#include "kernels/common/loops.h"
#include "kernels/trig/estimates.h"
#include "kernels/trig/inverse_hyperbolic/log.h"
#include "kernels/trig/lane_tests.h"

namespace {

struct AsinhLA : PerTwin<AsinhLA, 2> {
    // 1e154: from here x^2 + 1 would overflow
    static constexpr double huge = zvl::from_bits(0x5fe7dddf6b095ff1);

    template <class V>
    static typename V::vd eval(typename V::vd x) {
        using vd = typename V::vd;
        const vd a = abs_of<V>(x);
        const vd big = V::le(V::splat(huge), a);
        const vd ac = V::andnot(big, a);
        const vd v = V::select(big, a, V::add(a, V::sqrt(V::add(V::mul(ac, ac), V::splat(1.0)))));
        const vd r = log_la<V>(v, V::and_(big, V::splat(1.0)));
        return V::or_(r, sign_of<V>(x));
    }
    template <class V>
    static int special(typename V::vd x) {
        return outside<V>(abs_high<V>(x), 0x3fe20000, 0x7ff00000);
    }
    static int32_t callout(const double* x, double* r) { return zvl::asinh_callout(x, r); }
};

struct AsinhHA : PerTwin<AsinhHA, 2> {
    // 2^28: from here v = 2|x| to the last bit
    static constexpr double big_from = zvl::from_bits(0x41b0000000000000);

    template <class V>
    static typename V::vd eval(typename V::vd x) {
        using vd = typename V::vd;
        const vd a = abs_of<V>(x);
        // the small branch sees only its own arguments, so that x^2 cannot
        // overflow where the other is taken
        const vd is_small = V::lt(a, V::splat(0.125));
        const vd big = V::le(V::splat(big_from), a);
        const vd ac = V::andnot(big, a);
        vd q, q_lo, w, w_lo, s, s_lo, v, v_lo;
        two_square_cut<V>(ac, q, q_lo);
        two_sum<V>(V::splat(1.0), q, w, w_lo);
        sqrt_dw<V, true>(w, V::add(w_lo, q_lo), rsqrt_refined<V, 2>(w), s, s_lo);
        fast_two_sum<V>(s, ac, v, v_lo);  // s > |x|
        v = V::select(big, a, v);
        v_lo = V::andnot(big, V::add(v_lo, s_lo));
        vd hi, lo;
        log_ha<V>(v, v_lo, V::and_(big, V::splat(1.0)), hi, lo);
        vd r = V::add(hi, lo);
        // the series only for vectors with a lane below 1/8
        if (lane_bits<V>(is_small) != 0)
            r = V::select(is_small, odd_series<V>(zvl::AsinhPolySmall::c, V::and_(is_small, a)), r);
        return V::or_(r, sign_of<V>(x));
    }
    // Infinities and NaNs.
    template <class V>
    static int special(typename V::vd x) {
        return outside<V>(abs_high<V>(x), 0, 0x7ff00000);
    }
    static int32_t callout(const double* x, double* r) { return zvl::asinh_callout(x, r); }
};

}  // namespace
