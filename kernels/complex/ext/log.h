// ext_log and ext_log1p, and the logarithm cores that the inverse
// hyperbolic routines share with them.
//
// Near 1 (|x - 1| < 1/128) x - 1 is exact and ln(1 + r) comes from its
// Taylor polynomial to r^10, relative to r. Elsewhere x = 2^e m, m in
// [1, 2); the top 8 bits of m after the leading one pick R, a 24-bit
// reciprocal of the row's centre, and T = -ln R in two parts. With m split
// into 40 and 24 bits, R m - 1 = r is formed exactly (|r| < 2^-8.9), and
// ln x = e ln2 + T + ln(1 + r), ln(1 + r) from the Taylor polynomial to r^8
// (double coefficients, Estrin's scheme), ln 2 in parts of 48 and 64 bits (e ln2_hi
// exact), the large terms added by exact two-sums. The result carries one
// final rounding and errors near 2^-70 relative.
//
// ln1p(x) = ln(1 + x): directly by the polynomial below |x| = 1/128,
// otherwise as ln(y_hi + y_lo) with 1 + x split exactly into y_hi + y_lo.
#pragma once

#include "kernels/complex/ext/arith.h"

namespace {

struct ExtLog {
    struct Row {
        long double R, T_hi, T_lo;
    };
    static constexpr Row table[256] = {
#include "kernels/complex/ext/table_log.inc"
    };
    static constexpr long double near = 0x1p-7L;  // 1/128
};

// ln(1 + r) for r = r.hi + r.lo, |r| <= 1/128, as a pair whose high part
// is r.hi: ln(1 + r) = r - r^2/2 + r^3 P(r), the r.lo term as r.lo (1 - r).
inline Pair log1p_small(Pair r) {
    const long double z = r.hi * r.hi;
    const long double t = z * r.hi * horner(Ext::log1p_poly, r.hi) - 0.5L * z;
    return {r.hi, (r.lo - r.hi * r.lo) + t};
}

// ln(x.hi + x.lo) + e_add ln 2 as a pair, for x.hi positive, normal and
// finite and |x.lo| below an ulp of x.hi. Always inline: as a call it
// passes its pairs through memory as 80-bit values, and whether the
// compiler inlines it into the complex routines otherwise depends on the
// size of the unit around them (it did not in cpu type 1's, where zatanh
// then ran 15 per cent slower than at type 0).
__attribute__((always_inline)) inline Pair log_core(Pair x, int e_add) {
    if (e_add == 0 && ext_abs(x.hi - 1.0L) < ExtLog::near)
        return log1p_small(two_sum(x.hi - 1.0L, x.lo));  // x.hi - 1 exact
    const uint64_t m = ext_sig(x.hi);
    const int e = ext_exp_field(x.hi) - 16383;
    const ExtLog::Row& row = ExtLog::table[(m >> 55) & 255];
    const long double mh = static_cast<long double>(static_cast<int64_t>(m >> 24)) * 0x1p-39L;
    const long double ml = static_cast<long double>(static_cast<int64_t>(m & 0xffffff)) * 0x1p-63L;
    // R mh is exact (24 + 40 bits) and within 2^-8.9 of 1, so R mh - 1 is
    // exact too; R ml is exact
    const long double lo = x.lo == 0 ? 0.0L : row.R * scale2(x.lo, -e);
    const Pair r = two_sum(row.R * mh - 1.0L, row.R * ml + lo);
    // ln(1 + r) = r - r^2/2 + r^3 P(r), P by Estrin's scheme
    const long double z = r.hi * r.hi;
    const double* c = Ext::log_small;
    const long double P = (c[0] + c[1] * r.hi) + z * ((c[2] + c[3] * r.hi) + z * (c[4] + c[5] * r.hi));
    const Pair L = {r.hi, (r.lo - r.hi * r.lo) + (z * r.hi * P - 0.5L * z)};
    const long double ef = static_cast<long double>(e + e_add);
    const Pair s1 = two_sum(ef * Ext::ln2[0], row.T_hi);
    const Pair s2 = two_sum(s1.hi, L.hi);
    return {s2.hi, s1.lo + s2.lo + (ef * Ext::ln2[1] + row.T_lo + L.lo)};
}

// ln(1 + a.hi + a.lo) as a pair, for a.hi > -1 finite.
inline Pair log1p_core(Pair a) {
    if (ext_abs(a.hi) < ExtLog::near) return log1p_small(a);
    const Pair y = two_sum(1.0L, a.hi);
    return log_core({y.hi, y.lo + a.lo}, 0);
}

inline long double ext_log(long double x) {
    const int ef = ext_exp_field(x);
    if (ext_sign(x) || ef == 0 || ef == 0x7fff) {
        if (x != x) return x * x;
        if (x == 0) return -1.0L / (x * x);  // -inf with divide-by-zero
        if (x < 0) return (x - x) / (x - x);  // NaN with invalid, -inf too
        if (ef == 0x7fff) return x;
        const Pair L = log_core({x * pow2(64), 0.0L}, -64);
        return L.hi + L.lo;
    }
    const Pair L = log_core({x, 0.0L}, 0);
    return L.hi + L.lo;
}

inline long double ext_log1p(long double x) {
    if (x != x) return x * x;
    if (ext_abs(x) < ExtLog::near) {
        if (x == 0) return x;
        const Pair L = log1p_small({x, 0.0L});
        return L.hi + L.lo;
    }
    if (x <= -1.0L) {
        if (x == -1.0L) return -1.0L / (x - x);  // -inf with divide-by-zero
        return (x - x) / (x - x);                // NaN with invalid, -inf too
    }
    if (ext_exp_field(x) == 0x7fff) return x;
    const Pair L = log1p_core({x, 0.0L});
    return L.hi + L.lo;
}

}  // namespace
