// Erfc: r = erfc(a).
//
// erfc falls off like exp(-x^2), so a polynomial in x alone would lose all
// relative accuracy in the tail. Every mode computes two factors of
// erfc(|x|): E = exp(-x^2) from a table of 2^(j/128) and a short polynomial,
// and G = g(|x|) = exp(x^2) erfc(|x|), which varies slowly, from a
// degree-13 polynomial about the start of one of 28 intervals
// (quarter-binades from 0.25 up to 28). For negative x the result is 2
// minus their product.
//
//   HA  x^2 in two parts; G = C + L y + (Q y) y with C and L in two parts,
//       L_hi y from 26-bit splits and (Q y) y, rounded, added to C by fast
//       two-sums; E times G as T_hi G_hi, exact, plus the rest; 2 minus it
//       by a two-sum; from 26.54 on, where the result may be subnormal, the
//       product is renormalised and aligned so that it rounds once.
//   LA  x^2 in two parts, everything else in plain arithmetic.
//   EP  as LA with x^2 in one part and exp(r) by degree 3.
// Q runs as two Horner chains in y^2 (poly.h).
//
// A vector whose lanes all lie in [2^-55, 26.54) in magnitude (HA; LA and
// EP up to 27.2260284) skips the replacement, the alignment and the
// selection below, with the same bits. Arguments below 2^-55 or from 27.2260284 up in magnitude are computed as
// 0, so a block needs no branch for them and raises no spurious exception;
// their results come from the selection: 1.0 for the small ones, 0.0 above,
// 2.0 from -27.22601318359375 down, a quiet NaN for a NaN. Finite lanes
// above the underflow bound 27.226017111108362 are the only special lanes:
// the callout gives them the block's value (0.0 or the smallest subnormal)
// and reports ZVL_STATUS_UNDERFLOW. Subnormal results below that bound, the
// bound itself and +infinity report nothing.
//
// Largest errors zvl-ulp finds against MPFR (1e6 samples), in ulps of the
// result, subnormal tail included:
//   HA  0.623 ulp at 19.718... (0x1.3b7d729a6627cp+4)
//   LA  2.08 ulp at 4.8476... (0x1.363fe5c0001p+2)
//   EP  relative 2^-35.3 at 22.871... (0x1.6df053559d37dp+4)
//
// Included inside an unnamed namespace context, as isa.h.
#pragma once

#include "kernels/common/isa.h"
#include "kernels/common/lanes.h"
#include "kernels/common/twin.h"
#include "kernels/common/double_word.h"
#include "kernels/erf/erfc/data.h"
#include "kernels/erf/poly.h"
#include "zvl.h"

namespace {

struct ErfcConstants {
    // 184.66496523378731, 128/ln 2
    static constexpr double L = zvl::from_bits(0x40671547652b82fe);
    // -1.5 * 2^52: sq*L + S holds -N in its low bits, N = round(sq*L)
    static constexpr double S = zvl::from_bits(0xc338000000000000);
    // ln2/128 = ln2_hi + ln2_lo; ln2_hi has 21 significant bits, so N*ln2_hi
    // is exact (N < 2^18 here) and N*ln2_hi - sq is exact where they meet
    static constexpr double ln2_hi = zvl::from_bits(0x3f762e4300000000);  // 0.0054152123630046844
    static constexpr double ln2_lo = zvl::from_bits(0xbdb05c610ca86c39);  // -1.4880111718420063e-11
    // exp(r) - 1 = r + r^2 (e2 + r (e3 + r (e4 + r e5))) within 2^-60
    // relative for |r| <= ln2/256 (the Taylor terms)
    static constexpr double e2 = 0.5;
    static constexpr double e3 = 1.0 / 6;
    static constexpr double e4 = 1.0 / 24;
    static constexpr double e5 = 1.0 / 120;
    // 2^-55 (high word 0x3c800000): below it erfc(x) rounds to 1
    static constexpr double tiny = zvl::from_bits(0x3c80000000000000);
    // 27.226028442382812, the first value with high word above 0x403b39dc:
    // from it the argument is computed as 0 and a positive x gets 0.0
    static constexpr double zero_from = zvl::from_bits(0x403b39dd00000000);
    // 26.543243408203125 (0x403a8b12): from it a positive x takes the scaled
    // product, as the result may be subnormal
    static constexpr double scaled_from = zvl::from_bits(0x403a8b1200000000);
    // -27.22601318359375 (0xc03b39dc): from it down the result is 2.0
    static constexpr double two_below = zvl::from_bits(0xc03b39dc00000000);
    // 27.226017111108362: above it erfc(x) is below half the smallest
    // subnormal, and the result underflows
    static constexpr double underflow_above = zvl::from_bits(0x403b39dc41e48bfc);
    static constexpr double up = zvl::from_bits(0x4c70000000000000);    // 2^200
    static constexpr double down = zvl::from_bits(0x3370000000000000);  // 2^-200
    // 2^-822 = 2^-1022 * 2^200: a scaled result below it is subnormal; added
    // to it, the sum's last place is the subnormals' 2^-1074 scaled by 2^200
    static constexpr double subnormal_base = zvl::from_bits(0x0c90000000000000);
    static constexpr uint64_t quiet_bit = 0x0008000000000000;
    // keeps a value's sign, exponent and two leading fraction bits: the
    // start of its quarter-binade
    static constexpr uint64_t row_start_mask = 0xfffc000000000000;
    static constexpr double inf = zvl::from_bits(Fp64::exp_mask);
};

// The row of the polynomial table for w, and y = w - the row's start. The
// index rule: the high word AND 0x7ffc0000, from 0x3fcc0000 on (below it
// entry 0), four entries a binade; offsets past the table fall back to
// entry 0, as such arguments are replaced before use. The start of a row
// from 0.25 on is w cut to its quarter-binade (sign, exponent and two
// leading fraction bits), the value kErfcStarts holds for it, and 0 below
// 0.25: so it comes from w by a mask, with no gather of its own.
template <class V>
inline void erfc_row(typename V::vd w, typename V::vd* c, typename V::vd& y) {
    using I = LanesOf<V>;
    using vi = typename I::vi;
    vi i = I::sub(I::and_(I::hi32(w), I::splat(0x7ffc0000)), I::splat(0x3fcc0000));
    i = I::and_(i, I::lt(I::splat(-1), i));
    i = I::and_(i, I::lt(i, I::splat(0x6c0001)));
    uint32_t j[V::lanes];
    I::store(j, I::template srli<15>(i));  // the entry's first pair: 8 pairs an entry
    for (int m = 0; m < 16; m += 2) V::gather_pairs(&zvl::kErfcTable[0][m], j, c[m], c[m + 1]);
    const typename V::vd start = V::and_(V::and_(w, splat_bits<V>(ErfcConstants::row_start_mask)),
                                         V::le(V::splat(0.25), w));
    y = V::sub(w, start);
}

// The row for w and Q(y) = c2 + c3 y + ... + c13 y^11, the part of g every
// mode evaluates in plain arithmetic.
template <class V>
inline typename V::vd erfc_high_terms(typename V::vd w, typename V::vd* c, typename V::vd& y) {
    erfc_row<V>(w, c, y);
    return poly_two_chains<V, 12>(c + 4, y, V::mul(y, y));
}

// w^2 = sq + sl exactly: w's 26-bit part squares exactly, and the rest is
// wl (wh + w).
template <class V>
inline void exact_square(typename V::vd w, typename V::vd& sq, typename V::vd& sl) {
    const typename V::vd wh = upper_half<V>(w), wl = V::sub(w, wh);
    sq = V::mul(wh, wh);
    sl = V::mul(wl, V::add(wh, w));
}

// exp(-(sq + sl)) = 2^n * (T_hi + T_lo) * (1 + p), with the scale 2^n times
// `unit` (1 or 2^200) returned apart. -N = 128 n + j; r = N ln2/128 - sq -
// sl, |r| <= ln2/256. Degree is 5 or 3.
template <class V, int Degree>
inline void erfc_exp(typename V::vd sq, typename V::vd sl, typename V::vd& T_hi,
                     typename V::vd& T_lo, typename V::vd& p, typename V::vd& scale,
                     double unit = ErfcConstants::up) {
    using vd = typename V::vd;
    using C = ErfcConstants;
    const vd v = V::add(V::mul(sq, V::splat(C::L)), V::splat(C::S));
    const vd f = V::sub(v, V::splat(C::S));
    // -N = 128 n + j from v's low words; the scale by adding n to the
    // exponent of `unit` (n >= -1070 while w < 27.3; from -1017 on below
    // 26.54, where 2^n itself is normal)
    using I = LanesOf<V>;
    const typename I::vi k = I::lo32(v);
    uint32_t j[V::lanes];
    I::store(j, I::and_(k, I::splat(127)));
    scale = I::add_hi32(V::splat(unit), I::template slli<20>(I::template srai<7>(k)));
    V::gather_pairs(&zvl::kErfcExp[0][0], j, T_hi, T_lo);
    const vd r = V::add(V::sub(V::mul(f, V::splat(C::ln2_hi)), sq),
                        V::sub(V::mul(f, V::splat(C::ln2_lo)), sl));
    vd q;
    if constexpr (Degree == 5) {
        q = V::mul_add(V::mul_add(V::mul_add(V::splat(C::e5), r, V::splat(C::e4)), r,
                                  V::splat(C::e3)),
                       r, V::splat(C::e2));
    } else {
        q = V::mul_add(V::splat(C::e3), r, V::splat(C::e2));
    }
    p = V::add(V::mul(V::mul(q, r), r), r);
}

// The computation argument: |x|, or 0 where |x| < 2^-55 or |x| >= zero_from
// (NaN too).
template <class V>
inline typename V::vd erfc_arg(typename V::vd ax) {
    using C = ErfcConstants;
    return V::and_(ax, V::and_(V::le(V::splat(C::tiny), ax), V::lt(ax, V::splat(C::zero_from))));
}

// The selection, in order over the computed result r (the scaled product
// for positive x from 26.54 already in): a NaN from x, 0.0 from zero_from
// to +infinity, 2.0 from -27.22601318359375 to -infinity.
template <class V>
inline typename V::vd erfc_select(typename V::vd x, typename V::vd r) {
    using C = ErfcConstants;
    r = V::select(V::eq(x, x), r, V::or_(x, splat_bits<V>(C::quiet_bit)));
    r = V::andnot(V::le(V::splat(C::zero_from), x), r);
    return V::select(V::le(x, V::splat(C::two_below)), V::splat(2.0), r);
}

// 2 - (h + l) for negative x, with h + l the product, |h| <= 1.
template <class V>
inline typename V::vd two_minus(typename V::vd h, typename V::vd l) {
    using vd = typename V::vd;
    vd s, e;
    fast_two_sum<V>(V::splat(2.0), V::sub(V::splat(0.0), h), s, e);
    return V::add(s, V::sub(e, l));
}

// What the three modes share around their product: the special lanes and
// the callout. F::eval<V>(x) is the block formula.
template <class F>
struct ErfcLanes {
    // Finite and above the underflow bound (a NaN fails both compares).
    template <class V>
    static typename V::vd special(typename V::vd x) {
        using C = ErfcConstants;
        return V::and_(V::lt(V::splat(C::underflow_above), x), V::lt(x, V::splat(C::inf)));
    }
    // The element keeps the block's value; only the report is added.
    static int32_t callout(const double* x, double* y) {
        *y = F::template eval<Scalar>(*x);
        return ZVL_STATUS_UNDERFLOW;
    }
};

// --- HA ---------------------------------------------------------------------

struct ErfcHA : ErfcLanes<ErfcHA> {
    // E * G = A + B for w in [0, 27.3): A = T_hi times G's leading 26 bits,
    // exact, and B the rest, within 0.4% of A; scale = 2^n * unit.
    template <class V>
    __attribute__((always_inline)) static void product(typename V::vd w, typename V::vd& A, typename V::vd& B,
                        typename V::vd& scale, double unit) {
        using vd = typename V::vd;
        // G = g(w) = C + L y + y^2 Q(y) as gh + gl: L_hi y from 26-bit parts,
        // Lh yh and then y^2 Q, rounded, added to C_hi by fast two-sums
        // (each interval has |L y| below C and y^2 Q below C + L y), the
        // rest, within 2^-25 of G, in plain arithmetic.
        vd c[16], y;
        const vd Q = erfc_high_terms<V>(w, c, y);
        const vd yh = upper_half<V>(y), yl = V::sub(y, yh);
        const vd Lh = upper_half<V>(c[3]), Ll = V::sub(c[3], Lh);
        vd gh, e, e2;
        fast_two_sum<V>(c[1], V::mul(Lh, yh), gh, e);
        fast_two_sum<V>(gh, V::mul(V::mul(Q, y), y), gh, e2);
        const vd gl = V::add(V::add(V::add(e, e2), V::mul(Lh, yl)),
                             V::add(V::mul(V::add(Ll, c[2]), y), c[0]));
        // E = exp(-w^2) as T_hi + E_lo, E_lo = T_lo + T p
        vd sq, sl, T_hi, T_lo, p;
        exact_square<V>(w, sq, sl);
        erfc_exp<V, 5>(sq, sl, T_hi, T_lo, p, scale, unit);
        const vd E_lo = V::add(T_lo, V::mul(V::add(T_hi, T_lo), p));
        // T_hi has 26 bits, so T_hi times gh's 26-bit parts is exact; E_lo,
        // up to 0.3% of E, takes gl in too (up to 2^-26 of G)
        const vd ghh = upper_half<V>(gh), ghl = V::sub(gh, ghh);
        A = V::mul(T_hi, ghh);
        B = V::add(V::mul(T_hi, ghl), V::add(V::mul(E_lo, V::add(gh, gl)), V::mul(T_hi, gl)));
    }

    // The result of a lane with |x| in [2^-55, 26.543243408203125): the
    // product A + B scaled by s = 2^n, or 2 minus it for negative x. Every
    // lane takes these steps; the others' results are replaced after.
    template <class V>
    __attribute__((always_inline)) static typename V::vd ordinary(typename V::vd x, typename V::vd A, typename V::vd B,
                                   typename V::vd s) {
        const typename V::vd pos = V::mul(V::add(A, B), s);
        return V::select(V::lt(x, V::splat(0.0)), two_minus<V>(V::mul(A, s), V::mul(B, s)), pos);
    }

    template <class V>
    static typename V::vd eval(typename V::vd x) {
        using vd = typename V::vd;
        using C = ErfcConstants;
        const vd ax = abs_of<V>(x);
        vd A, B, scale;
        // A block whose lanes are all ordinary skips the argument's
        // replacement, the subnormal alignment and the selection; its bits
        // are those the full path gives such lanes.
        if constexpr (V::lanes > 1) {
            if (all_set<V>(V::and_(V::le(V::splat(C::tiny), ax),
                                   V::lt(ax, V::splat(C::scaled_from))))) {
                product<V>(ax, A, B, scale, 1.0);
                return ordinary<V>(x, A, B, scale);
            }
        }
        product<V>(erfc_arg<V>(ax), A, B, scale, C::up);
        vd r = ordinary<V>(x, A, B, V::mul(scale, V::splat(C::down)));
        // A subnormal result, from the product renormalised and scaled by
        // 2^(n + 200), exactly: Zh + Zl = erfc(w) 2^200. Zh + base lies in
        // the binade whose last place is the subnormals' scaled by 2^200, so
        // u + (w2 + Zl) below rounds once to that grid; the base's pattern
        // subtracted from the sum's leaves the subnormal's (or 2^-1022's,
        // when the sum reaches twice the base).
        vd Zh, Zl;
        fast_two_sum<V>(A, B, Zh, Zl);
        Zh = V::mul(Zh, scale);
        Zl = V::mul(Zl, scale);
        const vd base = V::splat(C::subnormal_base);
        const vd u = upper_half<V>(V::add(Zh, base));
        const vd w2 = V::sub(Zh, V::sub(u, base));
        const vd sub = V::sub_i64(V::add(u, V::add(w2, Zl)), base);
        const vd pos = V::mul(V::add(Zh, Zl), V::splat(C::down));
        const vd scaled = V::select(V::lt(Zh, base), sub, pos);
        r = V::select(V::le(V::splat(C::scaled_from), x), scaled, r);
        return erfc_select<V>(x, r);
    }
};

// --- LA and EP --------------------------------------------------------------

// Plain arithmetic around the same reduction; LA keeps x^2 in two parts
// (its rounding would cost up to 740 ulps near 27) and exp(r) to degree 5.
template <bool LA>
struct ErfcPlain : ErfcLanes<ErfcPlain<LA>> {
    template <class V>
    static typename V::vd eval(typename V::vd x) {
        using vd = typename V::vd;
        using C = ErfcConstants;
        const vd ax = abs_of<V>(x);
        // a block of ordinary lanes skips the replacement and the selection
        if constexpr (V::lanes > 1)
            if (all_set<V>(V::and_(V::le(V::splat(C::tiny), ax), V::lt(ax, V::splat(C::zero_from)))))
                return result<V>(x, ax);
        return erfc_select<V>(x, result<V>(x, erfc_arg<V>(ax)));
    }

    // The product, or 2 minus it for negative x, at the argument w.
    template <class V>
    __attribute__((always_inline)) static typename V::vd result(typename V::vd x, typename V::vd w) {
        using vd = typename V::vd;
        using C = ErfcConstants;
        vd c[16], y;
        const vd Q = erfc_high_terms<V>(w, c, y);
        const vd G = V::add(c[1], V::add(c[0], V::mul(V::mul_add(Q, y, c[3]), y)));
        vd sq, sl;
        if constexpr (LA) {
            exact_square<V>(w, sq, sl);
        } else {
            sq = V::mul(w, w);
            sl = V::splat(0.0);
        }
        vd T_hi, T_lo, p, scale;
        erfc_exp<V, LA ? 5 : 3>(sq, sl, T_hi, T_lo, p, scale);
        // T_hi has 26 bits: T_lo counts in T p too
        const vd E = V::add(T_hi, V::add(T_lo, V::mul(V::add(T_hi, T_lo), p)));
        const vd Z = V::mul(V::mul(E, G), scale);
        // one rounding into the subnormals, if that is where it lands
        const vd pos = V::mul(Z, V::splat(C::down));
        return V::select(V::lt(x, V::splat(0.0)), V::sub(V::splat(2.0), pos), pos);
    }
};

using ErfcLA = ErfcPlain<true>;
using ErfcEP = ErfcPlain<false>;

}  // namespace
