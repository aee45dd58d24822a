// Asin and Acos: r = asin(a), r = acos(a). The lane mathematics of every
// mode over the SIMD wrappers.
//
// With a = |x|, s and z = s^2 are
//   a <= 1/2:  s = a (Acos: x itself), z = x x
//   a > 1/2:   z = (1 - a)/2, exact (Acos takes the half by decrementing
//              the exponent of 1 - a), s = sqrt(z)
// and q = s + s z P(z) is asin(s), P's even and odd powers in two chains in
// z^2. The results are B + m q:
//   Asin   a <= 1/2: q;  above: pi/2 - 2q         (the sign of x after)
//   Acos   a <= 1/2: pi/2 - q;  above: 2q for x > 0, pi - 2q for x < 0
//   LA, EP (one algorithm, the same constants) take s from the square root
//          instruction and B in one part; Asin's m = 1 or -2 comes from the
//          pattern of 1.0 plus 0x8010000000000000 where a > 1/2.
//   HA     takes s = sqrt(z) in two parts: y, the reciprocal square root
//          estimate refined by the binomial series of (1 - e)^(-1/2), e = 1 -
//          z y0^2, to e^5, s_hi = z y cut to 26 bits and s_lo from the exact
//          residual z - s_hi^2; the larger part of the cubic term of q
//          exact, B in two parts, and the large terms summed exactly
//          (sum_three).
//
// Largest errors found against MPFR (2.4 million arguments each; see
// tests/kernels/trig):
//   Asin  LA and EP 2.23 ulp at -0x1.0328cc05e8712p-1, HA 0.564 ulp at
//         0x1.013a06f289c57p-1 (zvl-ulp)
//   Acos  LA and EP 3.17 ulp at 0x1.2493b8e8553cdp-1 (its polynomial alone is
//         off by 2^-51.84 relative), HA 0.540 ulp at 0x1.3683d3b5c75eep-1
//         (zvl-ulp)
//
// Lanes with |x| >= 1 or NaN (high word of |x| at least 1.0's) go to the
// fix-up: +-1 exactly, NaN quiet, and |x| > 1 the default NaN with
// ZVL_STATUS_ERRDOM (see data.h).
//
// Included inside the unnamed namespace of the per-cpu units (see isa.h).
#pragma once

#include "kernels/common/isa.h"
#include "kernels/common/lanes.h"
#include "kernels/common/loops.h"
#include "kernels/common/double_word.h"
#include "kernels/trig/asin_acos/data.h"
#include "kernels/trig/double_word.h"
#include "kernels/trig/estimates.h"
#include "kernels/trig/lane_tests.h"
#include "kernels/trig/poly.h"

namespace {

using zvl::Pi;

// One bit per lane with |x| >= 1 or NaN.
template <class V>
inline int unit_or_more(typename V::vd x) {
    return outside<V>(abs_high<V>(x), 0, 0x3ff00000);
}

// The reduction both modes share: a = |x|, big where a > 1/2, the
// argument of the series below 1/2 (Acos keeps the sign of x), and z: its
// square, or for a > 1/2 (1 - a)/2, exact (Acos halves 1 - a, at least
// 2^-53 and so normal, by decrementing its exponent).
template <class V, bool Acos>
struct AsinArgs {
    typename V::vd a, big, s_small, z;
    explicit AsinArgs(typename V::vd x) {
        a = abs_of<V>(x);
        big = V::lt(V::splat(0.5), a);
        s_small = Acos ? x : a;
        const typename V::vd h = V::sub(V::splat(1.0), a);
        const typename V::vd z_big = Acos ? V::sub_i64(h, splat_bits<V>(0x0010000000000000))
                                          : V::mul(h, V::splat(0.5));
        z = V::select(big, z_big, V::mul(s_small, s_small));
    }
};

template <bool Acos>
struct AsinAcosFixup {
    static int32_t callout(const double* x, double* r) {
        return Acos ? zvl::acos_fixup(x, r) : zvl::asin_fixup(x, r);
    }
    template <class V>
    static int special(typename V::vd x) {
        return unit_or_more<V>(x);
    }
};

template <class Poly, bool Acos>
struct AsinAcosLA : PerTwin<AsinAcosLA<Poly, Acos>>, AsinAcosFixup<Acos> {
    template <class V>
    static typename V::vd eval(typename V::vd x) {
        using vd = typename V::vd;
        const AsinArgs<V, Acos> g(x);
        const vd big = g.big, s_small = g.s_small, z = g.z;
        const vd s = V::select(big, V::sqrt(z), s_small);
        const vd P = V::mul(z, horner2<V>(Poly::c, z, V::mul(z, z)));
        const vd q = V::add(V::mul(P, s), s);
        if constexpr (Acos) {
            const vd m = V::select(big, V::xor_(V::splat(2.0), sign_of<V>(x)), V::splat(-1.0));
            const vd B = V::select(big, V::and_(V::lt(x, V::splat(0.0)), V::splat(Pi::hi)),
                                   V::splat(Pi::half_hi));
            return V::add(V::mul(q, m), B);
        } else {
            const vd m = V::add_i64(V::splat(1.0), V::and_(big, splat_bits<V>(0x8010000000000000)));
            const vd r = V::add(V::mul(q, m), V::and_(big, V::splat(Pi::half_hi)));
            return V::or_(r, sign_of<V>(x));
        }
    }
};

template <bool Acos>
struct AsinAcosHA : PerTwin<AsinAcosHA<Acos>>, AsinAcosFixup<Acos> {
    template <class V>
    static typename V::vd eval(typename V::vd x) {
        using vd = typename V::vd;
        const AsinArgs<V, Acos> g(x);
        const vd big = g.big, s_small = g.s_small, z = g.z;
        // s = s_hi + s_lo with s_hi of 26 bits: where a > 1/2 sqrt(z) in
        // two parts (the other lanes take a z that keeps the estimate in
        // range), below s_small in two halves.
        const vd zs = V::select(big, z, V::splat(0.25));
        vd root, root_lo;
        sqrt_dw<V>(zs, V::splat(0.0), rsqrt_refined<V>(zs), root, root_lo);
        const vd small_hi = upper_half<V>(s_small);
        const vd s_hi = V::select(big, root, small_hi);
        const vd s_lo = V::select(big, root_lo, V::sub(s_small, small_hi));
        const vd s = V::add(s_hi, s_lo);
        // s^3 = T + T_lo: s_hi^2 exact, split in two so that s_hi times each
        // is exact, and s^3 - s_hi^3 = 3 s_hi s_lo s to 2^-75 of s^3. The
        // cubic term c1 s^3, up to 4% of the result, has its larger part
        // s^3/8 exact; the rest, (c1 - 1/8) s^3, joins the higher terms. So
        // the terms larger than 2^-7 of the result are all exact before the
        // last sum (the worst error was 0.65 ulp without this).
        constexpr size_t n = sizeof zvl::AsinPolyHA::c / sizeof(double);
        constexpr double c1 = zvl::AsinPolyHA::c[n - 1];
        constexpr double c1_hi = 0.125;
        static_assert(c1 > 0.15625 && c1 < 0.1875, "c1 - c1_hi is exact and small");
        const vd S2 = V::mul(s_hi, s_hi);
        const vd S2_hi = upper_half<V>(S2);
        const vd T = V::mul(s_hi, S2_hi);
        const vd T_lo = V::add(V::mul(s_hi, V::sub(S2, S2_hi)),
                               V::mul(V::mul(V::splat(3.0), s_hi), V::mul(s_lo, s)));
        const vd C = V::mul(V::splat(c1_hi), T);
        const vd Q2 = horner2<V, n - 1>(&zvl::AsinPolyHA::c[0], z, V::mul(z, z));
        const vd rest = V::mul(V::mul(s, z), V::mul_add(z, Q2, V::splat(c1 - c1_hi)));
        const vd low = V::add(s_lo, V::add(V::mul(V::splat(c1_hi), T_lo), rest));
        // B + m asin(s)
        vd m, B_hi, B_lo;
        if constexpr (Acos) {
            const vd x_neg = V::and_(big, V::lt(x, V::splat(0.0)));
            m = V::select(big, V::xor_(V::splat(2.0), sign_of<V>(x)), V::splat(-1.0));
            B_hi = V::select(big, V::and_(x_neg, V::splat(Pi::hi)), V::splat(Pi::half_hi));
            B_lo = V::select(big, V::and_(x_neg, V::splat(Pi::lo)), V::splat(Pi::half_lo));
        } else {
            m = V::select(big, V::splat(-2.0), V::splat(1.0));
            B_hi = V::and_(big, V::splat(Pi::half_hi));
            B_lo = V::and_(big, V::splat(Pi::half_lo));
        }
        const vd r = sum_three<V>(B_hi, B_lo, m, s_hi, C, low);
        return Acos ? r : V::or_(r, sign_of<V>(x));
    }
};

using AsinLA = AsinAcosLA<zvl::AsinPolyLA, false>;
using AcosLA = AsinAcosLA<zvl::AcosPolyLA, true>;
using AsinHA = AsinAcosHA<false>;
using AcosHA = AsinAcosHA<true>;

}  // namespace
