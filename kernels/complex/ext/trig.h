// ext_reduce_pio4, ext_sin, ext_cos, ext_sincos, ext_tan.
//
// Below 2^17: n = round(|x| 64/pi) and r = |x| - n pi/64 with pi/64 in
// four parts (n times each of the first three exact), |r| <= pi/128, kept
// as a pair. From 2^17 up, first a reduction to even octants: j = 2
// round(|x| 2/pi), r = |x| - j pi/4 with pi/4 in five parts below 2^30, and
// from 2^30 on ext_reduce_pio4, which multiplies the significand by 4/pi in
// 31-bit chunks with integer arithmetic, starting at the first chunk whose
// product is not a multiple of 8 and taking eight chunks: the fraction then
// holds at least 215 bits, which covers the closest approach of an extended
// value to a multiple of pi/4; then r is reduced by pi/64 once more.
//
// Below 2^17 the reduction runs on x itself, signed, so that n and r carry
// x's sign; above, on |x|, and n and r are negated for a negative x. sin
// and cos of n pi/64 come from a table of the whole turn (row n mod 128) in
// two parts and sin r - r, cos r - 1 from Taylor polynomials to r^9 and r^8
// (double coefficients), combined by the addition theorem (rotate,
// arith.h): no quadrant exchange, no sign test, no branch that random
// arguments would mispredict. The table's rows are the first quadrant's
// exchanged and negated exactly, and rounding to nearest is symmetric, so
// the results are bit for bit those of reducing |x| to [-pi/4, pi/4] and
// turning back. They are within about an ulp; tan is their quotient,
// within about two and a half.
// Below 2^-32 sin and tan return x (signed zeros kept) and cos 1; an
// infinite or NaN x gives x - x, a NaN raising invalid for the infinities.
#pragma once

#include "kernels/complex/ext/arith.h"

namespace {

struct ExtTrig {
    static constexpr uint32_t pio4_chunks[] = {
#include "kernels/complex/ext/table_pio4.inc"
    };
    static constexpr RotRow table[128] = {
#include "kernels/complex/ext/table_sincos.inc"
    };
    // below it, n pi/64 in four parts reduces directly
    static constexpr long double direct_below = 0x1p17L;
    // above it, |x| - n pi/64 has no heavy cancellation left to fear
    static constexpr long double no_cancel = 0x1p-20L;
    static constexpr long double five_part = 0x1p30L;
};

// r = |x| - j pi/4 for |x| >= 1 (meant for |x| >= 2^30), x finite: returns
// j mod 8 (even) with r in *rh + *rl; for negative x, r and j are those of
// |x| negated.
inline int ext_reduce_pio4(long double x, long double* rh, long double* rl) {
    constexpr int K = 8;  // chunks taken
    const uint64_t M = ext_sig(x);
    const int E = ext_exp_field(x) - 16383 - 63;  // |x| = M 2^E
    // chunk i contributes M c_i 2^(E - 31 i), a multiple of 8 while
    // E - 31 i >= 3
    const int i0 = E > 2 ? (E - 2 + 30) / 31 : 0;
    const int sh = E - 31 * i0;  // in [-33, 2]
    const uint64_t m[3] = {M & 0x7fffffff, (M >> 31) & 0x7fffffff, M >> 62};
    // P = M times the chunks i0 .. i0 + 7 read as one integer, in 31-bit
    // limbs, lowest first; each sum of three products stays below 2^64
    uint64_t acc[K + 3] = {};
    for (int s = 0; s < 3; ++s)
        for (int t = 0; t < K; ++t) acc[s + t] += m[s] * ExtTrig::pio4_chunks[i0 + K - 1 - t];
    uint32_t L[K + 3];
    uint64_t carry = 0;
    for (int u = 0; u < K + 3; ++u) {
        const uint64_t v = acc[u] + carry;
        L[u] = static_cast<uint32_t>(v & 0x7fffffff);
        carry = v >> 31;
    }
    // |x| 4/pi = P 2^-F modulo 8: the octant is bits F to F + 2 of P and the
    // fraction the bits below F
    const int F = 31 * (K - 1) - sh;
    const int tF = F / 31, bF = F % 31;
    const uint64_t top = (static_cast<uint64_t>(L[tF + 1]) << 31 | L[tF]) >> bF;
    int j = static_cast<int>(top & 7);
    L[tF] &= (uint32_t{1} << bF) - 1;
    // an odd octant rounds up to the next even one: the fraction becomes
    // fraction - 1, and its magnitude 2^F - fraction replaces it
    const bool up = (j & 1) != 0;
    if (up) {
        ++j;
        uint32_t borrow = 0;
        for (int t = 0; t < tF; ++t) {
            const uint32_t v = (uint32_t{1} << 31) - L[t] - borrow;
            borrow = v >> 31 ? 0 : 1;  // v = 2^31 exactly when L[t] + borrow = 0
            L[t] = v & 0x7fffffff;
        }
        L[tF] = (uint32_t{1} << bF) - L[tF] - borrow;
    }
    // the magnitude as a pair, from its first non-zero limb and four more
    // (at least 125 bits)
    int t0 = tF;
    while (t0 > 0 && L[t0] == 0) --t0;
    long double h = 0, l = 0;
    for (int t = t0; t >= 0 && t > t0 - 5; --t) {
        const Pair s = fast_two_sum(h, static_cast<long double>(L[t]) * pow2(31 * t - F));
        h = s.hi;
        l += s.lo;
    }
    const Pair p = two_prod(h, Ext::pio4[0]);
    const Pair r = fast_two_sum(p.hi, p.lo + (h * Ext::pio4[1] + l * Ext::pio4[0]));
    const bool neg = up != ext_sign(x);
    *rh = ext_neg_if(r.hi, neg);
    *rl = ext_neg_if(r.lo, neg);
    return (ext_sign(x) ? 8 - j : j) & 7;
}

// |x| - j pi/4 with pi/4 in N parts, the first N - 1 exact when multiplied
// by j: the subtractions are exact two-sums and only the last product
// rounds.
template <int N>
inline Pair reduce_parts(long double ax, long double jf, const long double (&P)[N]) {
    long double s = ax - jf * P[0];  // exact: jf P[0] is within pi/4 of ax
    long double lo = 0;
    for (int i = 1; i < N; ++i) {
        const Pair t = two_sum(s, -(jf * P[i]));
        s = t.hi;
        lo += t.lo;
    }
    return fast_two_sum(s, lo);
}

// j (even, mod 8) and r = |x| - j pi/4 for finite |x| >= 2^17.
inline int reduce_octant(long double ax, Pair* r) {
    if (ax >= ExtTrig::five_part) return ext_reduce_pio4(ax, &r->hi, &r->lo);
    const Rounded q = round_to_int(ax * Ext::two_over_pi);
    *r = reduce_parts(ax, 2.0L * q.value, Ext::pio4_5);
    return static_cast<int>((2 * q.n) & 7);
}

// n and r = x - n pi/64 as a pair (its low part within about an ulp of the
// high), |r| <= pi/128 or a little above, for 2^-32 <= |x| < 2^17, with
// pi/64 in four parts (|n| below 2^22, the first three products exact).
ZVL_EXT_INLINE int reduce_direct(long double x, Pair* r) {
    const Rounded q = round_to_int(x * Ext::sixtyfour_over_pi);
    const long double nf = q.value;
    const long double s = x - nf * Ext::pio64_4[0];  // exact
    const long double p1 = nf * Ext::pio64_4[1];     // exact, below 2^-24
    if (ext_abs(s) > ExtTrig::no_cancel) {
        // s - p1 cancels no more than a bit: a fast two-sum is exact;
        // n times the third and fourth parts (below 2^-66) joins the low
        // part, which is left unnormalised (within about an ulp of the
        // high part): the polynomials start from the high part sooner
        const Pair h = fast_two_sum(s, -p1);
        *r = {h.hi, h.lo - (nf * Ext::pio64_4[2] + nf * Ext::pio64_4[3])};
    } else {
        *r = reduce_parts(x, nf, Ext::pio64_4);
    }
    return static_cast<int>(q.n);
}

// The same for finite |x| >= 2^-32: below 2^17 directly; above, from the
// octant's remainder of |x|, whose n/16 gives the octant, negated for a
// negative x.
inline int reduce_pio64(long double x, Pair* r) {
    const long double ax = ext_abs(x);
    if (ax < ExtTrig::direct_below) return reduce_direct(x, r);
    Pair o;
    const int j = reduce_octant(ax, &o);
    // |m| <= 16: m times each part is exact, and o.hi - m pi/64 too
    const Rounded m = round_to_int(o.hi * Ext::sixtyfour_over_pi);
    const Pair t = reduce_parts(o.hi, m.value, Ext::pio64_4);
    const Pair u = fast_two_sum(t.hi, t.lo + o.lo);
    const bool neg = ext_sign(x);
    *r = {ext_neg_if(u.hi, neg), ext_neg_if(u.lo, neg)};
    const int n = 16 * j + static_cast<int>(m.n);
    return neg ? -n : n;
}

// sin and cos of n pi/64 + r from the table's row n mod 128 by the addition
// theorem.
ZVL_EXT_INLINE void sincos_reduced(int n, Pair r, long double* s, long double* c) {
    const long double z = r.hi * r.hi, z2 = z * z;
    const long double sr = r.hi * z * estrin(Ext::sin_small, z, z2);
    // cos(rh + rl) - 1 = cos rh - 1 - rh rl, to 2^-120
    const long double cr = z * estrin(Ext::cos_small, z, z2) - r.hi * r.lo;
    rotate(ExtTrig::table[n & 127], false, r.hi, r.lo, sr, cr, -1.0L, s, c);
}

// sin x and cos x for finite |x| >= 2^-32.
inline void sincos_finite(long double x, long double* s, long double* c) {
    Pair r;
    const int n = reduce_pio64(x, &r);
    sincos_reduced(n, r, s, c);
}

// ext_sincos for 2^-32 <= |x| < 2^17, the same bits, inlined into its
// caller: the complex routines call it with a double argument, so that
// neither the argument nor the results go through memory in the format's
// ten bytes.
ZVL_EXT_INLINE void sincos_direct(long double x, long double* s, long double* c) {
    Pair r;
    const int n = reduce_direct(x, &r);
    sincos_reduced(n, r, s, c);
}

inline void ext_sincos(long double x, long double* s, long double* c) {
    if (ext_exp_field(x) == 0x7fff) {
        *s = x - x;
        *c = x - x;
        return;
    }
    if (ext_abs(x) < Ext::tiny32) {
        *s = x;
        *c = 1.0L;
        return;
    }
    sincos_finite(x, s, c);
}

inline long double ext_sin(long double x) { return one_of_two<ext_sincos, 0>(x); }
inline long double ext_cos(long double x) { return one_of_two<ext_sincos, 1>(x); }

inline long double ext_tan(long double x) {
    if (ext_exp_field(x) == 0x7fff) return x - x;
    if (ext_abs(x) < Ext::tiny32) return x;
    long double s, c;
    sincos_finite(x, &s, &c);
    return s / c;
}

}  // namespace
