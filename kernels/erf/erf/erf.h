// Erf: r = erf(a).
//
// erf is odd and bounded: every mode works on |x|, evaluates a polynomial
// about the centre of a small interval from a table, and ORs the sign of x
// back in.
//
//   HA  46 eighth-binade entries from 0.125 (entry 0 below it, entry 45
//       from 6.0 on, the constant 1): erf(c) in two parts plus a degree-10
//       polynomial in y = |x| - c, whose linear part s*y is a split product
//       with s = c2 + p carried as a two-sum, so that only the last addition
//       rounds at full size. Below 2^-1015 a small path gives 2/sqrt(pi)*x
//       with one rounding, subnormal results included.
//   LA  24 quarter-binade entries, degree 13, plain arithmetic in
//       y = |x| * scale - centre.
//   EP  the same entries, degree 7.
// The polynomials run as two Horner chains in y^2 (poly.h).
//
// Every element runs every path; a class (small, normal, infinite, NaN)
// picks the result by masks from a class table, so a block has no branch on
// its values, but for one: a vector whose lanes are all normal (and below
// 2^500, where the constant entry's y^2 stays finite) runs the main path
// alone, with the same bits. Erf reports nothing: there are no special lanes and no
// callout, errno is never touched, infinities give +-1.0 and a NaN, even a
// signalling one, comes back with its bits.
//
// Largest errors zvl-ulp finds against MPFR (1e6 samples):
//   HA  0.811 ulp at 4.0102... (0x1.00a7c00fdbeaap+2): the degree-10
//       polynomial of [4, 4.5) is off by up to 2^-54.7, which no fit of
//       that degree improves; elsewhere below 0.6
//   LA  1.78 ulp at -0.10663... (-0x1.b4c92affb309p-4)
//   EP  relative 2^-32.9 at 2.0000000000002274
// tools/erf_tables --report prints each table's own fit error.
//
// Included inside an unnamed namespace context, as isa.h.
#pragma once

#include "kernels/common/isa.h"
#include "kernels/common/lanes.h"
#include "kernels/common/twin.h"
#include "kernels/common/double_word.h"
#include "kernels/erf/erf/data.h"
#include "kernels/erf/poly.h"

namespace {

struct ErfConstants {
    // 1.1283791670955126, 2/sqrt(pi), and its split: hi has 25 significant
    // bits, so hi times a 26-bit part is exact; lo is the rest
    static constexpr double two_over_sqrt_pi = zvl::from_bits(0x3ff20dd750429b6d);
    static constexpr double tsp_hi = zvl::from_bits(0x3ff20dd750000000);
    static constexpr double tsp_lo = zvl::from_bits(0x3e10a6db446b8ea4);
    static constexpr double up = zvl::from_bits(0x4c70000000000000);    // 2^200
    static constexpr double down = zvl::from_bits(0x3370000000000000);  // 2^-200
    // 2^-1034: below it 2/sqrt(pi)*x needs at most 41 bits, and the plain
    // product rounds once
    static constexpr double subnormal_split = zvl::from_bits(0x0000010000000000);
    // 2^-1015 (high word 0x00800000): below it the small path
    static constexpr double small_below = zvl::from_bits(0x0080000000000000);
    // 2^500: the constant entry's y = |x| squares without overflow below it
    static constexpr double huge = zvl::from_bits(0x5f30000000000000);
    // the index rules: high word of |x| AND the mask, from the base on, up
    // to the last entry's offset
    static constexpr int32_t ha_mask = 0x7ffe0000, ha_base = 0x3fbe0000, ha_top = 0x5a0000;
    static constexpr int32_t q_mask = 0x7ffc0000, q_base = 0x3fbc0000, q_top = 0x5c0000;
};

// The table entry of each lane, worked out on the lanes' high words at
// once: the entry's first pair of doubles (8 pairs an entry) is the high
// word AND `mask`, less `base` (0 below it), at most `top`, shifted right by
// Shift.
template <class V, int Shift>
inline void erf_entries(typename V::vd ax, int32_t mask, int32_t base, int32_t top, uint32_t* pair) {
    using I = LanesOf<V>;
    using vi = typename I::vi;
    vi k = I::sub(I::and_(I::hi32(ax), I::splat(mask)), I::splat(base));
    k = I::and_(k, I::lt(I::splat(-1), k));
    k = I::add(k, I::and_(I::lt(I::splat(top), k), I::sub(I::splat(top), k)));
    I::store(pair, I::template srli<Shift>(k));
}

// The class of each lane: 0 small (only with `Small`), 1 normal, 2
// infinite, 3 NaN; `cls` holds its first pair in the class table (2 pairs
// a class).
template <class V, bool Small>
inline void erf_classes(typename V::vd ax, uint32_t* cls) {
    using I = LanesOf<V>;
    using vi = typename I::vi;
    const vi hi = I::hi32(ax);
    // all ones where not small (from 2^-1015, high word 0x00800000), where
    // infinite or NaN, where not NaN
    const vi not_small = Small ? I::lt(I::splat(0x007fffff), hi) : I::splat(-1);
    const vi big = I::lt(I::splat(0x7fefffff), hi);
    const vi ordered = I::hi32(V::eq(ax, ax));
    const vi c = I::sub(I::sub(I::add(ordered, I::splat(1)), not_small), big);
    I::store(cls, I::template slli<1>(c));
}

// True when the block may skip the classes: a vector of several lanes, all
// of them normal, from `from` on and below `to`. Its results are the bits
// the class masks would pick.
template <class V>
inline bool all_normal(typename V::vd ax, double from, double to) {
    if constexpr (V::lanes == 1) {
        return false;
    } else {
        return all_set<V>(V::and_(V::le(V::splat(from), ax), V::lt(ax, V::splat(to))));
    }
}

// The class table's masks applied to the candidate results.
template <class V>
inline typename V::vd erf_select(const uint32_t* cls, typename V::vd small, typename V::vd main,
                                 typename V::vd x) {
    using vd = typename V::vd;
    vd m_small, m_main, m_x, m_one;
    V::gather_pairs(&zvl::kErfClasses[0][0], cls, m_small, m_main);
    V::gather_pairs(&zvl::kErfClasses[0][2], cls, m_x, m_one);
    return V::or_(V::or_(V::and_(m_small, small), V::and_(m_main, main)),
                  V::or_(V::and_(m_x, x), V::and_(m_one, V::splat(1.0))));
}

// The small path: 2/sqrt(pi) * x rounded once for |x| below 2^-1015.
// Scaled up by 2^200, x splits into 26-bit h and the rest l, and
// A + B = (tsp_hi + tsp_lo) * h + 2/sqrt(pi) * l holds the product to about
// 2^-80. Three ranges of |x| meet without a jump:
//   normal x: (A + B) rounds once, the scaling back is exact;
//   x from 2^-1034: the result is subnormal, so A's leading 26 bits
//     (Ah * 2^-200, still a multiple of 2^-1074) scale back exactly and the
//     rest takes the one rounding;
//   below 2^-1034: x has at most 41 bits and x * 2/sqrt(pi) rounds once to
//     a result far coarser than the constant's error.
template <class V>
inline typename V::vd erf_small(typename V::vd x, typename V::vd ax) {
    using vd = typename V::vd;
    using C = ErfConstants;
    const vd v = V::mul(x, V::splat(C::up));
    const vd h = upper_half<V>(v), l = V::sub(v, h);
    const vd A = V::mul(V::splat(C::tsp_hi), h);
    const vd B = V::add(V::mul(V::splat(C::tsp_lo), h), V::mul(V::splat(C::two_over_sqrt_pi), l));
    const vd R1 = V::mul(V::add(A, B), V::splat(C::down));
    const vd Ah = upper_half<V>(A);
    const vd B2 = V::add(B, V::sub(A, Ah));
    const vd R2 = V::add(V::mul(B2, V::splat(C::down)), V::mul(Ah, V::splat(C::down)));
    const vd R3 = V::mul(x, V::splat(C::two_over_sqrt_pi));
    return V::select(V::le(V::splat(Fp64::min_normal), ax), R1,
                     V::select(V::le(V::splat(C::subnormal_split), ax), R2, R3));
}

// --- HA ---------------------------------------------------------------------

struct ErfHA {
    // The main path on |x| = ax, the sign of x ORed back in.
    template <class V>
    __attribute__((always_inline)) static typename V::vd main(typename V::vd x, typename V::vd ax) {
        using vd = typename V::vd;
        using C = ErfConstants;
        uint32_t j[V::lanes];
        erf_entries<V, 14>(ax, C::ha_mask, C::ha_base, C::ha_top, j);
        const double* t = &zvl::kErfTableHA[0][0];
        vd c[14];
        for (int k = 0; k < 14; k += 2) V::gather_pairs(t + k, j, c[k], c[k + 1]);
        const vd y = V::add(ax, c[12]);
        // p = c3 y + ... + c11 y^9
        const vd p = V::mul(poly_two_chains<V, 9>(c + 3, y, V::mul(y, y)), y);
        // s + e = c2 + p; then (s + e) * y as mh + ml from 26-bit parts
        vd s, e;
        two_sum<V>(c[2], p, s, e);
        const vd sh = upper_half<V>(s), sl = V::add(e, V::sub(s, sh));
        const vd yh = upper_half<V>(y), yl = V::sub(y, yh);
        const vd mh = V::mul(sh, yh);
        const vd ml = V::add(V::add(V::mul(sl, yl), V::mul(yl, sh)), V::mul(yh, sl));
        // erf(c) + s*y: the hi parts summed exactly, the rest added in
        vd u, f;
        two_sum<V>(c[1], mh, u, f);
        return V::or_(V::add(V::add(V::add(f, ml), c[0]), u), sign_of<V>(x));
    }

    template <class V>
    static typename V::vd eval(typename V::vd x) {
        const typename V::vd ax = abs_of<V>(x);
        using C = ErfConstants;
        if (all_normal<V>(ax, C::small_below, C::huge)) return main<V>(x, ax);
        uint32_t cls[V::lanes];
        erf_classes<V, true>(ax, cls);
        // from 2^500 on, y^2 would overflow: 6 stands in (the same entry)
        const typename V::vd a6 = V::select(V::lt(ax, V::splat(C::huge)), ax, V::splat(6.0));
        return erf_select<V>(cls, erf_small<V>(x, ax), main<V>(x, a6), x);
    }
};

// --- LA and EP --------------------------------------------------------------

// Degree D in y = |x| * scale - centre, plain arithmetic. Entry 0 has no
// constant term, so tiny and subnormal x get c1 * x with one rounding (y^2
// is 0 there, and the even chain with it).
template <int D>
struct ErfPoly {
    static_assert(D <= 13, "columns 0 to 13 hold the coefficients");
    template <class V>
    __attribute__((always_inline)) static typename V::vd main(typename V::vd x, typename V::vd ax) {
        using vd = typename V::vd;
        using C = ErfConstants;
        const double* t = D == 13 ? &zvl::kErfTableLA[0][0] : &zvl::kErfTableEP[0][0];
        uint32_t j[V::lanes];
        erf_entries<V, 15>(ax, C::q_mask, C::q_base, C::q_top, j);
        vd c[D + 2], centre, scale;
        for (int k = 0; k <= D; k += 2) V::gather_pairs(t + k, j, c[k], c[k + 1]);
        V::gather_pairs(t + 14, j, centre, scale);
        const vd y = V::sub(V::mul(ax, scale), centre);
        return V::or_(poly_two_chains<V, D + 1>(c, y, V::mul(y, y)), sign_of<V>(x));
    }

    template <class V>
    static typename V::vd eval(typename V::vd x) {
        const typename V::vd ax = abs_of<V>(x);
        const typename V::vd r = main<V>(x, ax);
        if (all_normal<V>(ax, 0.0, zvl::from_bits(Fp64::exp_mask))) return r;
        uint32_t cls[V::lanes];
        erf_classes<V, false>(ax, cls);
        return erf_select<V>(cls, r, r, x);
    }
};

using ErfLA = ErfPoly<13>;
using ErfEP = ErfPoly<7>;

}  // namespace
