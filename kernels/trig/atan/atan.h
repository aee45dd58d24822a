// Atan: r = atan(a). The lane mathematics of every mode, written once over
// the SIMD wrappers; Atan2 (atan2.h) builds on the same pieces.
//
//   LA, EP   With a = |x|: s = a for a <= 1, s = -1/a above, and
//            atan(|x|) = [pi/2] + s P(s^2), P of degree 21 in s^2 (LA,
//            relative error 2^-58.05 over [0, 1]) or 9 (EP, 2^-28.63) in
//            interleaved Horner chains (four for LA, two for EP). 1/a comes from the single-
//            precision estimate refined by the series of 1/(1 + e), e =
//            a R - 1, to e^5 (LA) or e^2 (EP): no division instruction.
//   HA       Five reductions chosen by comparing |x| with 7/16, 11/16,
//            19/16 and 39/16: t = (|x| - c) / (1 + c |x|) for the centres
//            c = 0, 1/2, 1, 2 (exact numerator, two-part denominator) and
//            t = -1/|x| above; t as a 26-bit high part and a low part from
//            the residual, atan(|x|) = atan(c) + t + t^3 P(t^2), P of
//            degree 11 in t^2 (2^-57.79 for |t| <= 7/16), with atan(c) in two
//            parts and the large terms summed exactly (see atan_ha_sum).
//   HA, element by element (the cpu types without the vector HA): the
//            same reductions with the division instruction, the
//            denominator in one word, the cubic term in one piece and the
//            degree-10 polynomial (2^-56.66); see AtanElement.
//   EP, element by element (cpu type 1): the same reductions in single
//            words with the degree-5 polynomial (2^-29.56).
//
// Largest errors found against MPFR (2.4 million arguments; see
// tests/kernels/trig; LA and HA from zvl-ulp's million):
//   LA          1.76 ulp at 0x1.00674a47a9164p+0
//   EP          relative 2^-28.63 at -0x1.39a4d46e3035cp-3
//   HA          0.535 ulp at 0x1.9a9338f09e77p-2
//   HA element  0.663 ulp at -0x1.bd659888029fp-2
//   EP element  relative 2^-29.56 at 0x1.91d21957e9748p-4
//
// Refused lanes, by one signed compare on the high word w of |x| (w -
// 0x80300000 at or above 0xfdd00000): |x| < 2^-1020 (zeros and denormals),
// |x| >= 2^993 (where 1/|x| leaves the estimate's range), infinities and
// NaNs. The callout takes them, exactly, for every mode. No status.
//
// Included inside the unnamed namespace of the per-cpu units (see isa.h).
#pragma once

#include "kernels/common/isa.h"
#include "kernels/common/lanes.h"
#include "kernels/common/loops.h"
#include "kernels/trig/atan/data.h"
#include "kernels/trig/double_word.h"
#include "kernels/trig/estimates.h"
#include "kernels/trig/lane_tests.h"
#include "kernels/trig/poly.h"

namespace {

using zvl::Pi;

// One bit per lane of x whose high word w (of |x|) is below Low or at or
// above 0x7e000000 (|x| >= 2^993, infinities, NaNs).
template <class V, uint32_t Low = 0x00300000>
inline int atan_refused(typename V::vd x) {
    return outside<V>(abs_high<V>(x), Low, 0x7e000000);
}

// The vector forms: the polynomial, and the powers of e of the reciprocal.
struct AtanLAForm : zvl::AtanPolyLA {
    static constexpr int terms = 5;
};
struct AtanEPForm : zvl::AtanPolyEP {
    static constexpr int terms = 2;
};

// B + sign * atan(s) for |s| <= 1, s carrying the sign: B_hi + (s P(s^2) +
// B_lo). Where P's constant term is 1 (LA) the sum is taken as s + s z Q(z)
// with Q the other terms: near |s| = 1 the even and odd chains of P nearly
// cancel (1.67 and -0.89 for a sum of 0.78), and leaving the 1 out shrinks
// what they carry: 3.2 ulp to 2.0 at the worst arguments found.
template <class V, class Form>
inline typename V::vd atan_sum(typename V::vd s, typename V::vd B_hi, typename V::vd B_lo) {
    using vd = typename V::vd;
    constexpr size_t n = sizeof Form::c / sizeof(double);
    const vd z = V::mul(s, s);
    if constexpr (Form::c[n - 1] == 1.0) {
        const vd Q = horner2<V, n - 1>(&Form::c[0], z, V::mul(z, z));
        return V::add(B_hi, V::add(s, V::add(V::mul(V::mul(s, z), Q), B_lo)));
    } else {
        const vd P = horner2<V>(Form::c, z, V::mul(z, z));
        return V::add(B_hi, V::add(V::mul(s, P), B_lo));
    }
}

template <class Form>
struct AtanVector : PerTwin<AtanVector<Form>> {
    template <class V>
    static typename V::vd eval(typename V::vd x) {
        using vd = typename V::vd;
        const vd a = abs_of<V>(x);
        const vd big = V::lt(V::splat(1.0), a);
        const vd inv = recip_refined<V, Form::terms>(V::select(big, a, V::splat(1.0)));
        const vd s = V::select(big, V::xor_(inv, splat_bits<V>(Fp64::sign_mask)), a);
        const vd r = atan_sum<V, Form>(s, V::and_(big, V::splat(Pi::half_hi)),
                                       V::and_(big, V::splat(Pi::half_lo)));
        return V::or_(r, sign_of<V>(x));
    }
    template <class V>
    static int special(typename V::vd x) {
        return atan_refused<V>(x);
    }
    static int32_t callout(const double* x, double* r) { return zvl::atan_callout(x, r); }
};

using AtanLA = AtanVector<AtanLAForm>;
using AtanEP = AtanVector<AtanEPForm>;

// --- HA: five reductions ---------------------------------------------------

// The reduction of atan(y/x), y and x positive: t = t_hi + t_lo and the
// interval k, 0 to 4.
template <class V>
struct AtanReduced {
    typename V::vd t_hi, t_lo;
    typename V::vd k;  // the interval as a 64-bit integer in each lane
};

// Interval by y against 7/16, 11/16, 19/16, 39/16 times x (the products
// need not be exact: t then stays within 7/16 by a hair). num = y - c x is
// exact in its interval (c x and y within a factor 2), D = x + c y in two
// parts; above 39/16, num = -x and D = y.
template <class V, class Recip>
inline AtanReduced<V> atan_reduce(typename V::vd y, typename V::vd x) {
    using vd = typename V::vd;
    const vd one = splat_bits<V>(1);
    const vd i1 = V::le(V::mul(x, V::splat(0.4375)), y);
    const vd i2 = V::le(V::mul(x, V::splat(0.6875)), y);
    const vd i3 = V::le(V::mul(x, V::splat(1.1875)), y);
    const vd i4 = V::le(V::mul(x, V::splat(2.4375)), y);
    // c = 0, 1/2, 1, 2: the masks are nested
    const vd c = V::add(V::add(V::and_(i1, V::splat(0.5)), V::and_(i2, V::splat(0.5))),
                        V::and_(i3, V::splat(1.0)));
    vd D_hi, D_lo;
    two_sum<V>(x, V::mul(c, y), D_hi, D_lo);
    const vd num = V::select(i4, V::xor_(x, splat_bits<V>(Fp64::sign_mask)), V::sub(y, V::mul(c, x)));
    D_hi = V::select(i4, y, D_hi);
    D_lo = V::andnot(i4, D_lo);
    AtanReduced<V> out;
    divide_dw<V>(num, D_hi, D_lo, Recip::template recip<V>(D_hi), out.t_hi, out.t_lo);
    out.k = V::add_i64(V::add_i64(V::and_(i1, one), V::and_(i2, one)),
                       V::add_i64(V::and_(i3, one), V::and_(i4, one)));
    return out;
}

// 1/D to 2^-33 from the estimate (vector kernels), or by division.
struct RecipEstimate {
    template <class V>
    static typename V::vd recip(typename V::vd D) {
        return recip_refined<V, 2>(D);
    }
};
struct RecipDivide {
    template <class V>
    static typename V::vd recip(typename V::vd D) {
        return V::div(V::splat(1.0), D);
    }
};

// B + sign * atan(y/x) with (B_hi, B_lo) = atan(c) or pi - atan(c) from the
// anchors (entry k, or k + 5 where `pi_minus` has the integer 5), sign the
// sign bit in `flip`, and atan(t) = t + c1 t^3 + t^5 P2(t^2), c1 = -1/3 and
// P2 the rest of P. With t up to 7/16, c1 t^3 reaches 6% of the result, so
// its larger part, -t^3/4, is formed exactly: t_hi has 26 bits, t_hi^3 is
// two exact products and a quarter of each is exact. The rest, (c1 + 1/4)
// t^3, is at most 1.6% of the result and joins P2's terms. The three large
// terms B_hi, t_hi and -t_hi^3/4 are summed by fast two-sums (|B| > |t| >
// |t^3/4| unless B is 0), so that the result's one rounding that counts is
// the last. Without the exact part the worst error was 0.70 ulp.
template <class V, class Poly>
inline typename V::vd atan_ha_sum(const AtanReduced<V>& d, typename V::vd pi_minus,
                                  typename V::vd flip) {
    using vd = typename V::vd;
    constexpr size_t n = sizeof Poly::c / sizeof(double);
    constexpr double c1 = Poly::c[n - 1];
    constexpr double c1_hi = -0.25;
    static_assert(c1 < -0.3125 && c1 > -0.375, "c1 - c1_hi is exact and small");
    uint32_t j[V::lanes];
    V::low_words(V::add_i64(d.k, pi_minus), j);
    vd B_hi, B_lo;
    V::gather_pairs(zvl::kAtanAnchors, j, B_hi, B_lo);
    const vd u = d.t_hi, v = d.t_lo;
    const vd t = V::add(u, v);
    const vd z = V::mul(t, t);
    // t^3 = T3 + T3_lo: u^2 exact, split in two so that u times each is
    // exact, and (u + v)^3 - u^3 = 3 u v t to 2^-75 of t^3 (v < 2^-24 u)
    const vd u2 = V::mul(u, u);
    const vd u2_hi = upper_half<V>(u2);
    const vd T3 = V::mul(u, u2_hi);
    const vd T3_lo = V::add(V::mul(u, V::sub(u2, u2_hi)), V::mul(V::mul(V::splat(3.0), u), V::mul(v, t)));
    const vd C = V::mul(V::splat(c1_hi), T3);
    const vd P2 = horner2<V, n - 1>(&Poly::c[0], z, V::mul(z, z));
    const vd rest = V::mul(V::mul(t, z), V::mul_add(z, P2, V::splat(c1 - c1_hi)));
    const vd small = V::add(V::mul(V::splat(c1_hi), T3_lo), rest);
    const vd m = V::or_(V::splat(1.0), flip);
    return sum_three<V>(B_hi, B_lo, m, u, C, V::add(v, small));
}

template <class Poly, class Recip>
struct AtanReducing : PerTwin<AtanReducing<Poly, Recip>> {
    template <class V>
    static typename V::vd eval(typename V::vd x) {
        using vd = typename V::vd;
        const vd zero = V::splat(0.0);
        const AtanReduced<V> d = atan_reduce<V, Recip>(abs_of<V>(x), V::splat(1.0));
        return V::or_(atan_ha_sum<V, Poly>(d, zero, zero), sign_of<V>(x));
    }
    template <class V>
    static int special(typename V::vd x) {
        return atan_refused<V>(x);
    }
    static int32_t callout(const double* x, double* r) { return zvl::atan_callout(x, r); }
};

// --- Element by element: the five reductions on |x| alone ----------------

// The interval masks of a = |x| against 7/16, 11/16, 19/16 and 39/16
// (nested: each implies the one before), and t = num / D: num = a - c and
// D = 1 + c a (rounded) for the centres c = 0, 1/2, 1, 2, num = -1 and D =
// a above. num is exact (a and c within a factor 2, or c = 0).
template <class V>
struct AtanSplit {
    typename V::vd i1, i2, i3, i4, num, D;
};

template <class V>
inline AtanSplit<V> atan_split(typename V::vd a) {
    using vd = typename V::vd;
    AtanSplit<V> s;
    s.i1 = V::le(V::splat(0.4375), a);
    s.i2 = V::le(V::splat(0.6875), a);
    s.i3 = V::le(V::splat(1.1875), a);
    s.i4 = V::le(V::splat(2.4375), a);
    const vd c = V::add(V::add(V::and_(s.i1, V::splat(0.5)), V::and_(s.i2, V::splat(0.5))),
                        V::and_(s.i3, V::splat(1.0)));
    // num = p a - q and D = p + q a with (p, q) = (1, c), or (0, 1) above
    // 39/16 (where c is 2): no select
    const vd p = V::andnot(s.i4, V::splat(1.0));
    const vd q = V::sub(c, V::and_(s.i4, V::splat(1.0)));
    s.num = V::sub(V::mul(p, a), q);
    s.D = V::add(p, V::mul(q, a));
    return s;
}

// atan(1/2) and atan(1/3): the steps of atan(c) between the centres, since
// atan(1) - atan(1/2) = atan(2) - atan(1) = atan(1/3) and pi/2 - atan(2) =
// atan(1/2).
struct AtanSteps {
    static constexpr double half = zvl::from_bits(0x3fddac670561bb4f);   // 0.4636476090008061
    static constexpr double third = zvl::from_bits(0x3fd4978fa3269ee1);  // 0.3217505543966422
};

// atan(|x|) = atan(c) + t + t^3 P(t^2) on the split above.
//
// HA (Ha true): t = u + v (u 26 bits, the residual exact, 1/D by the
// division instruction, as divide_dw forms it with D in one word), atan(c)
// in two parts from the anchors, atan(c)_hi + u a fast two-sum and the rest
// added below it. D's rounding (2^-53 of t, t at most a third of the result
// where c > 0) and the cubic term's roundings (its size is up to 6% of the
// result, at c = 0) stay under 0.17 ulp: 0.663 ulp at worst against 0.565
// with the cubic term exact and D in two parts, for a quarter less time.
//
// EP: every quantity in one word, t = num / D by the division instruction,
// atan(c) as the sum of the steps its masks select. Each rounding is 2^-53
// of a term no larger than the result; the polynomial's 2^-29.56 dominates.
template <class Poly, bool Ha>
struct AtanElement : PerTwin<AtanElement<Poly, Ha>> {
    template <class V>
    static typename V::vd eval(typename V::vd x) {
        using vd = typename V::vd;
        const AtanSplit<V> d = atan_split<V>(abs_of<V>(x));
        vd r;
        if constexpr (Ha) {
            const vd R = V::div(V::splat(1.0), d.D);
            const vd u = upper_half<V>(V::mul(d.num, R));
            const vd D1 = upper_half<V>(d.D);
            const vd v = V::mul(V::sub(V::sub(d.num, V::mul(u, D1)), V::mul(u, V::sub(d.D, D1))), R);
            // the interval 0 to 4: minus the sum of the all-ones masks
            const vd k = V::sub_i64(V::splat(0.0),
                                    V::add_i64(V::add_i64(d.i1, d.i2), V::add_i64(d.i3, d.i4)));
            uint32_t j[V::lanes];
            V::low_words(k, j);
            vd B_hi, B_lo;
            V::gather_pairs(zvl::kAtanAnchors, j, B_hi, B_lo);
            const vd t = V::add(u, v);
            const vd z = V::mul(t, t);
            const vd P = horner2<V>(Poly::c, z, V::mul(z, z));
            vd s, e;  // |B_hi| > |u| unless B_hi is 0
            fast_two_sum<V>(B_hi, u, s, e);
            r = V::add(s, V::add(V::add(e, V::add(B_lo, v)), V::mul(V::mul(t, z), P)));
        } else {
            const vd t = V::div(d.num, d.D);
            const vd A = V::splat(AtanSteps::half), T = V::splat(AtanSteps::third);
            const vd B = V::add(V::add(V::and_(d.i1, A), V::and_(d.i2, T)),
                                V::add(V::and_(d.i3, T), V::and_(d.i4, A)));
            const vd z = V::mul(t, t);
            const vd P = horner2<V>(Poly::c, z, V::mul(z, z));
            r = V::add(B, V::add(t, V::mul(V::mul(t, z), P)));
        }
        return V::or_(r, sign_of<V>(x));
    }
    template <class V>
    static int special(typename V::vd x) {
        return atan_refused<V>(x);
    }
    static int32_t callout(const double* x, double* r) { return zvl::atan_callout(x, r); }
};

// The vector HA; the element-by-element HA and EP of the cpu types without
// it (their element routine is Restartable's: the callout for refused
// elements, eval<Scalar> for the others).
using AtanHA = AtanReducing<zvl::AtanPolyHA, RecipEstimate>;
using AtanOlderHA = Restartable<AtanElement<zvl::AtanPolyOlder, true>>;
using AtanEP1 = Restartable<AtanElement<zvl::AtanPolyEP1, false>>;

}  // namespace
