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
//   HA     takes s = sqrt(z) in two parts on every lane ((1 - a)/2 is at
//          most 1/2 everywhere): y, the reciprocal square root estimate
//          refined by the binomial series of (1 - e)^(-1/2), e = 1 - z y0^2,
//          to e^2, s_hi = z y rounded to 26 bits and s_lo from the exact
//          residual z - s_hi^2; where a <= 1/2 s is x or a whole. s^3 = s z
//          with s_hi times z's upper half exact, the cubic term's larger
//          part s^3/8 exact, B in two parts, and B + m s_hi exact where a >
//          1/2, so one fast two-sum with m s^3/8 ends the sum.
//
// Largest errors found against MPFR (1e6 random samples with the sweeps,
// zvl-ulp, every cpu type):
//   Asin  LA and EP 2.265 ulp, HA 0.564 ulp
//   Acos  LA and EP 3.225 ulp (its polynomial alone is off by 2^-51.84
//         relative), HA 0.539 ulp
//
// Lanes with |x| >= 1 or NaN (|x| not below 1) go to the fix-up:
// +-1 exactly, NaN quiet, and |x| > 1 the default NaN with
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
#include "kernels/trig/poly.h"

namespace {

using zvl::Pi;

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
    // One bit per lane with |x| >= 1 or NaN.
    template <class V>
    static int special(typename V::vd x) {
        return V::mask(V::lt(abs_of<V>(x), V::splat(1.0))) ^ ((1 << V::lanes) - 1);
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
        const vd a = abs_of<V>(x);
        const vd big = V::lt(V::splat(0.5), a);
        const vd sign = splat_bits<V>(Fp64::sign_mask);
        // (1 - a)/2, exact; at most 1/2 where a <= 1/2, so the root below
        // runs on every lane in range and needs no select of its own.
        const vd z_big = times_pow2<V, -1>(V::sub(V::splat(1.0), a));
        const vd z = V::select(big, z_big, V::mul(x, x));
        // sqrt(z_big) = root + root_lo, root of 26 bits (see sqrt_dw), to
        // 2^-58: y within 2^-33, root within 2^-26 of the root.
        vd root, root_lo;
        sqrt_dw<V, true>(z_big, V::splat(0.0), rsqrt_refined<V, 2>(z_big), root, root_lo);
        // The results are B + m asin(s), and every term of asin(s) is taken
        // times m from here: s_hi = m s's upper part, s_lo its lower one.
        // Where a > 1/2 m = -2 (Acos: 2 for x > 0, -2 below) and s the
        // root, 2 root (root >= 2^-27) by its exponent; where a <= 1/2 s is
        // x (Acos, m = -1) or a (m = 1) whole, and s_lo is 0.
        vd s_hi, s_lo, B_hi, B_lo;
        const vd root2 = times_pow2<V, 1>(root);
        if constexpr (Acos) {
            const vd sx = sign_of<V>(x);
            s_hi = V::select(big, V::xor_(root2, sx), V::xor_(x, sign));
            s_lo = V::and_(big, V::mul(root_lo, V::xor_(V::splat(2.0), sx)));
            // pi/2 where a <= 1/2, 0 for x > 1/2, pi for x < -1/2
            const vd x_neg = V::lt(x, V::splat(0.0));
            B_hi = V::select(big, V::and_(x_neg, V::splat(Pi::hi)), V::splat(Pi::half_hi));
            B_lo = V::select(big, V::and_(x_neg, V::splat(Pi::lo)), V::splat(Pi::half_lo));
        } else {
            s_hi = V::select(big, V::or_(root2, sign), a);
            s_lo = V::and_(big, V::mul(root_lo, V::splat(-2.0)));
            B_hi = V::and_(big, V::splat(Pi::half_hi));
            B_lo = V::and_(big, V::splat(Pi::half_lo));
        }
        // s^3 = s z = T + T_lo: where a > 1/2 z is exact and s_hi times z's
        // upper half too, the rest a 2^-25 of s^3. The cubic term c1 s^3, up
        // to 3% of the result, has its larger part s^3/8 exact there; (c1 -
        // 1/8) s^3 joins the higher terms, so every term above 2^-7 of the
        // result is exact before the last sum (0.65 ulp without this).
        // Where a <= 1/2 these parts are merely rounded: the cubic term is
        // under 1/24 of a result that takes no factor 2 there.
        constexpr size_t n = sizeof zvl::AsinPolyHA::c / sizeof(double);
        constexpr double c1 = zvl::AsinPolyHA::c[n - 1];
        constexpr double c1_hi = 0.125;
        static_assert(c1 > 0.15625 && c1 < 0.1875, "c1 - c1_hi is exact and small");
        const vd z_hi = upper_half<V>(z);
        const vd T = V::mul(s_hi, z_hi);
        const vd T_lo = V::add(V::mul(s_hi, V::sub(z, z_hi)), V::mul(s_lo, z));
        const vd C = V::mul(V::splat(c1_hi), T);
        const vd Q2 = horner2<V, n - 1>(&zvl::AsinPolyHA::c[0], z, V::mul(z, z));
        const vd rest = V::mul(V::add(T, T_lo), V::mul_add(z, Q2, V::splat(c1 - c1_hi)));
        const vd low = V::add(s_lo, V::add(V::mul(V::splat(c1_hi), T_lo), rest));
        // B + s_hi is exact where a > 1/2: s_hi's 26 bits from 2^-26 up and
        // B_hi are whole multiples of 2^-52 (pi's of 2^-51) and the sum lies
        // in [1/2, 4). Elsewhere (Acos, pi/2 - x) its error is kept. Then
        // one fast two-sum with C, up to 3% of the result, and the rest.
        vd D = V::add(B_hi, s_hi), tail = V::add(B_lo, low);
        if constexpr (Acos) tail = V::add(tail, V::add(V::sub(B_hi, D), s_hi));
        vd r, e;
        fast_two_sum<V>(D, C, r, e);
        r = V::add(r, V::add(e, tail));
        return Acos ? r : V::or_(r, sign_of<V>(x));
    }
};

using AsinLA = AsinAcosLA<zvl::AsinPolyLA, false>;
using AcosLA = AsinAcosLA<zvl::AcosPolyLA, true>;
using AsinHA = AsinAcosHA<false>;
using AcosHA = AsinAcosHA<true>;

}  // namespace
