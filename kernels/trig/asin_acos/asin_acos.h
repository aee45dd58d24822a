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
//          residual z - s_hi^2; where a <= 1/2 s is x or a whole. s_lo
//          joins last, times m (1 + z P) (the root's path is the longest). s^3 = s z
//          with s_hi times z's upper half exact, the cubic term's larger
//          part s^3/8 exact, B in two parts, and B + m s_hi exact where a >
//          1/2, so one fast two-sum with m s^3/8 ends the sum.
//
// Largest errors found against MPFR (1e6 random samples with the sweeps,
// zvl-ulp, every cpu type):
//   Asin  LA and EP 2.265 ulp, HA 0.562 ulp
//   Acos  LA and EP 3.225 ulp (its polynomial alone is off by 2^-51.84
//         relative), HA 0.538 ulp
//
// Lanes with |x| >= 1 or NaN (|x| not below 1) go to the fix-up:
// +-1 exactly, NaN quiet, and |x| > 1 the default NaN with
// ZVL_STATUS_ERRDOM (see data.h).
//
// Included inside the unnamed namespace of the per-cpu units (see isa.h).
#pragma once

#include <type_traits>

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
// 2^-53 and so normal, by decrementing its exponent). z is the smaller of
// the two, as (1 - a)/2 < 1/4 < a^2 just where a > 1/2: one minpd for a
// select (three operations under SSE2). Plain values, not
// members of a struct: GCC 12 took a struct's copy of |x| at cpu type 5
// apart through the general registers and joined its halves on the stack,
// and the 256-bit load of two 128-bit stores cannot be forwarded (Asin LA
// 2.22 ns an element against 1.90 for Acos LA, whose copy was x itself).
template <class V, bool Acos>
inline void asin_args(typename V::vd x, typename V::vd& big, typename V::vd& s_small, typename V::vd& z) {
    const typename V::vd a = abs_of<V>(x);
    big = V::lt(V::splat(0.5), a);
    s_small = Acos ? x : a;
    const typename V::vd h = V::sub(V::splat(1.0), a);
    const typename V::vd z_big = Acos ? V::sub_i64(h, splat_bits<V>(0x0010000000000000))
                                      : V::mul(h, V::splat(0.5));
    z = V::min_(z_big, V::mul(s_small, s_small));
}

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
        vd big, s_small, z;
        asin_args<V, Acos>(x, big, s_small, z);
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

// A constant of the HA body from its row in memory (see data.h).
template <class V>
inline typename V::vd ha_const(const zvl::Quad& q) {
    // an aligned vector read, which the arithmetic takes as its operand
    if constexpr (IsTwin<V>::value) {
        const typename V::inner::vd h = *reinterpret_cast<const typename V::inner::vd*>(q.v);
        return {h, h};
    } else {
        return *reinterpret_cast<const typename V::vd*>(q.v);
    }
}
template <class V>
inline typename V::vd ha_const(zvl::AsinHAConst k) {
    return ha_const<V>(zvl::asin_ha_const[k]);
}

// The HA polynomial's first N coefficients as horner2 takes them, two
// chains in w = z^2 (the same operations), the coefficients from memory.
template <class V, size_t N>
inline typename V::vd ha_poly(typename V::vd z, typename V::vd w) {
    static_assert(N >= 2 && N < 16, "two chains");
    using vd = typename V::vd;
    vd h0 = ha_const<V>(zvl::asin_ha_poly[0]), h1 = ha_const<V>(zvl::asin_ha_poly[1]);
#pragma GCC unroll 16
    for (size_t i = 2; i < N; ++i) {
        if (i % 2 == 0)
            h0 = V::mul_add(h0, w, ha_const<V>(zvl::asin_ha_poly[i]));
        else
            h1 = V::mul_add(h1, w, ha_const<V>(zvl::asin_ha_poly[i]));
    }
    return (N - 1) % 2 == 0 ? V::mul_add(h1, z, h0) : V::mul_add(h0, z, h1);
}

// V::select for the HA body. At SSE4.2 GCC 12 reads blendvpd as a select on
// the mask's sign and builds that sign again by pcmpgtq against zero, with
// the masks kept on the stack: Asin HA ran 0.5 ns an element slower at cpu
// type 4 than at type 3. One blendvpd by hand (its mask in xmm0).
template <class V>
inline typename V::vd ha_select(typename V::vd m, typename V::vd a, typename V::vd b) {
#if defined(__SSE4_2__) && !defined(__AVX__)
    if constexpr (std::is_same_v<V, Sse41>) {
        __asm__("blendvpd %%xmm0, %2, %0" : "+x"(b) : "Yz"(m), "x"(a));
        return b;
    } else if constexpr (IsTwin<V>::value) {
        using I = typename V::inner;
        return {ha_select<I>(m.a, a.a, b.a), ha_select<I>(m.b, a.b, b.b)};
    }
#endif
    return V::select(m, a, b);
}

template <bool Acos>
struct AsinAcosHA : PerTwin<AsinAcosHA<Acos>>, AsinAcosFixup<Acos> {
    template <class V>
    static typename V::vd eval(typename V::vd x) {
        using vd = typename V::vd;
        const vd a = abs_of<V>(x);
        const vd big = V::lt(ha_const<V>(zvl::kHalf), a);
        const vd sign = splat_bits<V>(Fp64::sign_mask);
        // (1 - a)/2, exact; at most 1/2 where a <= 1/2, so the root below
        // runs on every lane in range and needs no select of its own. z is
        // the smaller of it and x^2 (see asin_args).
        const vd z_big = times_pow2<V, -1>(V::sub(ha_const<V>(zvl::kOne), a));
        const vd z = V::min_(z_big, V::mul(x, x));
        // sqrt(z_big) = root + root_lo to 2^-58, root_lo taken times m at
        // once. The estimate y0 and the binomial series of e = 1 - z y0^2 to
        // e^2 (e (1/2 + 3/8 e)) give the reciprocal y to 2^-33 and s = z y;
        // root is s rounded to 26 bits (within 2^-26), dn = root^2 - z exact,
        // and root_lo = -dn (y/2 - dn y^3 / 8), where y0 serves for y in the
        // second term (2^-53 of root). m root_lo is then dn (y - dn y^3 / 4)
        // for m = -2, and d (y + d y^3 / 4) with d = -dn for m = 2 (Acos
        // gives it x's sign below).
        const vd y0 = rsqrt_estimate(z_big);
        const vd y0y0 = V::mul(y0, y0);
        const vd e = V::sub(ha_const<V>(zvl::kOne), V::mul(z_big, y0y0));
        const vd ec = V::mul(e, V::mul_add(e, ha_const<V>(zvl::kThreeEighths), ha_const<V>(zvl::kHalf)));
        const vd y = V::add(y0, V::mul(y0, ec));
        const vd root = upper_half<V>(V::add_i64(V::mul(z_big, y), splat_bits<V>(uint64_t{1} << 26)));
        const vd rr = V::mul(root, root);
        const vd y3_4 = V::mul(y0y0, V::mul(y0, ha_const<V>(zvl::kQuarter)));
        vd mroot_lo;
        if constexpr (Acos) {
            const vd d = V::sub(z_big, rr);
            mroot_lo = V::mul(d, V::add(y, V::mul(d, y3_4)));
        } else {
            const vd dn = V::sub(rr, z_big);
            mroot_lo = V::mul(dn, V::sub(y, V::mul(dn, y3_4)));
        }
        // The results are B + m asin(s), and every term of asin(s) is taken
        // times m from here: s_hi = m s's upper part. Where a > 1/2 m = -2
        // (Acos: 2 for x > 0, -2 below) and s_hi 2 root (root >= 2^-27) by
        // its exponent; where a <= 1/2 s is x (Acos, m = -1) or a (m = 1)
        // whole.
        vd s_hi, B_hi, B_lo;
        const vd sx = sign_of<V>(x);
        const vd root2 = times_pow2<V, 1>(root);
        if constexpr (Acos) {
            s_hi = ha_select<V>(big, V::xor_(root2, sx), V::xor_(x, sign));
            // pi/2 where a <= 1/2, 0 for x > 1/2, pi for x < -1/2: pi/2 less
            // pi/2 with the sign of x where a > 1/2 (exact), and the low part
            // the high one times lo/hi, which gives pi's and pi/2's low parts
            // exactly (fixup.cpp)
            B_hi = V::sub(ha_const<V>(zvl::kPiHalfHi), V::and_(big, V::xor_(ha_const<V>(zvl::kPiHalfHi), sx)));
            B_lo = V::mul(B_hi, ha_const<V>(zvl::kPiLoOverHi));
        } else {
            s_hi = ha_select<V>(big, V::or_(root2, sign), a);
            B_hi = V::and_(big, ha_const<V>(zvl::kPiHalfHi));
            B_lo = V::and_(big, ha_const<V>(zvl::kPiHalfLo));
        }
        // s^3 = s z = T + T_lo + root_lo m z: where a > 1/2 z is exact,
        // and s_hi times z's upper half and its lower half are exact too.
        // The cubic term c1 s^3, up to 3% of the result, has its larger part
        // s^3/8 exact there; (c1 - 1/8) s^3 joins the higher terms, so
        // every term above 2^-7 of the result is exact before the last sum
        // (0.65 ulp without this). Where a <= 1/2 these parts are merely
        // rounded: the cubic term is under 1/24 of a result that takes no
        // factor 2 there.
        constexpr size_t n = sizeof zvl::AsinPolyHA::c / sizeof(double);
        constexpr double c1 = zvl::AsinPolyHA::c[n - 1];
        static_assert(c1 > 0.15625 && c1 < 0.1875, "c1 - 1/8 is exact and small");
        const vd z_hi = upper_half<V>(z);
        const vd T = V::mul(s_hi, z_hi);
        const vd T_lo = V::mul(s_hi, V::sub(z, z_hi));
        const vd C = V::mul(ha_const<V>(zvl::kEighth), T);
        const vd Q2 = ha_poly<V, n - 1>(z, V::mul(z, z));
        const vd P2 = V::mul_add(z, Q2, ha_const<V>(zvl::kC1Rest));
        const vd rest = V::mul(V::add(T, T_lo), P2);
        // root_lo's share, m root_lo (1 + z P), by a factor that is ready
        // before root_lo is (0 where a <= 1/2)
        vd G = V::mul_add(z, V::add(P2, ha_const<V>(zvl::kEighth)), ha_const<V>(zvl::kOne));
        if constexpr (Acos) G = V::xor_(G, sx);
        G = V::and_(big, G);
        // B + s_hi is exact where a > 1/2: s_hi's 26 bits from 2^-26 up and
        // B_hi are whole multiples of 2^-52 (pi's of 2^-51) and the sum lies
        // in [1/2, 4). Elsewhere (Acos, pi/2 - x) its error is kept. Then
        // one fast two-sum with C, up to 3% of the result, the rest, and
        // root_lo's share last.
        const vd D = V::add(B_hi, s_hi);
        vd tail = V::add(B_lo, V::add(V::mul(ha_const<V>(zvl::kEighth), T_lo), rest));
        if constexpr (Acos) tail = V::add(tail, V::add(V::sub(B_hi, D), s_hi));
        vd r, e2;
        fast_two_sum<V>(D, C, r, e2);
        r = V::add(r, V::add(V::add(e2, tail), V::mul(mroot_lo, G)));
        return Acos ? r : V::or_(r, sx);
    }
};

using AsinLA = AsinAcosLA<zvl::AsinPolyLA, false>;
using AcosLA = AsinAcosLA<zvl::AcosPolyLA, true>;
using AsinHA = AsinAcosHA<false>;
using AcosHA = AsinAcosHA<true>;

}  // namespace
