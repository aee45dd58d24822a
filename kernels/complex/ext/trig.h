// ext_reduce_pio4, ext_sin, ext_cos, ext_sincos, ext_tan.
//
// Reduction to even octants: j = 2 round(|x| 2/pi), r = |x| - j pi/4 with
// |r| <= pi/4, kept as a pair. Below 2^17 pi/4 is taken in three parts
// (j times each of the first two exact), below 2^30 in five, and from 2^30
// on ext_reduce_pio4 multiplies the significand by 4/pi in 31-bit chunks
// with integer arithmetic, starting at the first chunk whose product is
// not a multiple of 8 and taking eight chunks: the fraction then holds at
// least 215 bits, which covers the closest approach of an extended value
// to a multiple of pi/4.
//
// sin r = r - r^3/6 + r^5 S(r^2), cos r = 1 - r^2/2 + r^4 C(r^2), Taylor
// to r^19 and r^20, with r^2 and r^3/6 formed as exact pairs. tan is the quotient
// of the two pairs, taken to a pair. Below 2^-32 sin and tan return x
// (signed zeros kept) and cos 1; an infinite or NaN x gives x - x, a NaN
// raising invalid for the infinities.
#pragma once

#include "kernels/complex/ext/arith.h"

namespace {

struct ExtTrig {
    static constexpr uint32_t pio4_chunks[] = {
#include "kernels/complex/ext/table_pio4.inc"
    };
    static constexpr long double three_part = 0x1p17L;
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

// j (even, mod 8) and r = |x| - j pi/4 for finite |x| >= 2^-32.
inline int reduce_octant(long double ax, Pair* r) {
    if (ax <= Ext::pio4[0]) {
        *r = {ax, 0.0L};
        return 0;
    }
    if (ax >= ExtTrig::five_part) return ext_reduce_pio4(ax, &r->hi, &r->lo);
    const Rounded q = round_to_int(ax * Ext::two_over_pi);
    const long double jf = 2.0L * q.value;
    *r = ax < ExtTrig::three_part ? reduce_parts(ax, jf, Ext::pio4_3)
                                  : reduce_parts(ax, jf, Ext::pio4_5);
    return static_cast<int>((2 * q.n) & 7);
}

// sin(r.hi + r.lo) for |r| <= pi/4, as a pair, with z = r.hi^2 exactly as
// a pair: r^3/6, up to a tenth of the result, is formed to 2^-120 by exact
// products, so that only terms below 2^-8 of the result round.
inline Pair sin_pair(Pair r, Pair z) {
    const Pair u = two_prod(r.hi, z.hi);  // r.hi^3 = u + r.hi z.lo
    const Pair v = two_prod(u.hi, Ext::sixth[0]);
    const long double v_lo = v.lo + u.hi * Ext::sixth[1] + (u.lo + r.hi * z.lo) * Ext::sixth[0];
    const long double tail = u.hi * z.hi * horner<1>(Ext::sin_poly, z.hi);
    const Pair s = fast_two_sum(r.hi, -v.hi);
    return fast_two_sum(s.hi, s.lo + ((r.lo - r.lo * z.hi * 0.5L) - v_lo + tail));
}

// cos(r.hi + r.lo) for |r| <= pi/4, as a pair: 1 - r^2/2 by an exact
// two-sum, the rest below 2^-5 of the result.
inline Pair cos_pair(Pair r, Pair z) {
    const Pair c = fast_two_sum(1.0L, -0.5L * z.hi);
    const long double t = c.lo - 0.5L * z.lo + z.hi * z.hi * horner(Ext::cos_poly, z.hi) - r.hi * r.lo;
    return fast_two_sum(c.hi, t);
}

// sin and cos of x (finite, |x| >= 2^-32) as pairs.
inline void sincos_pairs(long double x, Pair* s, Pair* c) {
    Pair r;
    const int q = reduce_octant(ext_abs(x), &r) >> 1;
    const Pair z = two_prod(r.hi, r.hi);
    const Pair sr = sin_pair(r, z), cr = cos_pair(r, z);
    // sin(r + q pi/2) and cos(r + q pi/2), then sin(-x) = -sin x
    const Pair S = q & 1 ? cr : sr, C = q & 1 ? sr : cr;
    const bool sneg = ((q & 2) != 0) != (x < 0), cneg = ((q + 1) & 2) != 0;
    *s = {ext_neg_if(S.hi, sneg), ext_neg_if(S.lo, sneg)};
    *c = {ext_neg_if(C.hi, cneg), ext_neg_if(C.lo, cneg)};
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
    Pair S, C;
    sincos_pairs(x, &S, &C);
    *s = S.hi + S.lo;
    *c = C.hi + C.lo;
}

inline long double ext_sin(long double x) { return one_of_two<ext_sincos, 0>(x); }
inline long double ext_cos(long double x) { return one_of_two<ext_sincos, 1>(x); }

inline long double ext_tan(long double x) {
    if (ext_exp_field(x) == 0x7fff) return x - x;
    if (ext_abs(x) < Ext::tiny32) return x;
    Pair S, C;
    sincos_pairs(x, &S, &C);
    const Pair t = div_pair(S, C);
    return t.hi + t.lo;
}

}  // namespace
