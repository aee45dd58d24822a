// ext_atan, ext_atan2, ext_asin, ext_acos.
//
// One core: atan(a/b) for 0 <= a <= b. With c = j/64 the table point
// nearest a/b - 1/256, atan(a/b) = atan c + atan t,
// t = (a - c b)/(b + c a), -1/256 <= t <= 3/256; a - c b is formed
// without rounding its large part, and atan t comes from its Taylor
// polynomial to t^9: two divisions in all, within about an ulp. atan2
// folds to pi/2 - a, pi - a or pi/2 + a through the table, which holds
// those of atan c as pairs; atan x is atan2(x, 1). asin x =
// atan2(x, sqrt(1 - x^2)) and acos x = atan2(sqrt(1 - x^2), x), with
// 1 - x^2 = (1 - x)(1 + x) and its root from ext_sqrt, within about two
// ulps.
//
// Special values as C99 Annex F: atan2 of signed zeros gives +-0 or +-pi,
// infinities give multiples of pi/4, a NaN argument gives x + y; atan(+-inf)
// is +-pi/2; asin and acos of |x| > 1 give a NaN with invalid.
#pragma once

#include "kernels/complex/ext/sqrt.h"

namespace {

struct ExtAtan {
    // row 65 v + j: B_v + s_v atan(j/64) as a pair, for the four folds of
    // the angle (atan_fold)
    static constexpr Pair table[4 * 65] = {
#include "kernels/complex/ext/table_atan.inc"
    };
    // 2^66: above it atan |x| = pi/2 - 1/|x| with 1/|x| below an ulp
    static constexpr long double far = 0x1p66L;
    // 3 * 2^56, whose ulp is 1/64: q + shifter - shifter rounds q in
    // [-1/256, 1] to the nearest multiple of 1/64, and the sum's significand
    // is 0xC000000000000000 plus 64 times that
    static constexpr long double shifter = 0x3p56L;
};

// B + s atan(a/b) for 0 <= a <= b, b normal and below 2^16370, with
// (B, s) = (0, 1), (pi/2, -1), (pi, -1) or (pi/2, 1) by V = 0 to 3: the
// angle of a point in each of the four folds of the upper half plane.
//
// c = j/64 is nearest a/b - 1/256 (j has at most six significant bits),
// taken from the quotient by the shifter, and atan(a/b) = atan c + atan t
// with t = (a - c b)/(b + c a), -1/256 <= t <= 3/256. The offset keeps c
// from exceeding a/b by more than 1/256: with c = 1/64 over a/b just above
// 1/128, t would be as large as the result, each of its roundings worth up
// to an ulp of it where the two straddle a power of two. b is split into
// 58 and 6 bits, so that c b's parts are exact and a - c b_58 is exact
// (a/b is within a factor 2 of c, or c = 0): t then carries three
// roundings and two divisions are all the routine takes. atan t - t is its
// Taylor polynomial in Estrin's scheme, t^3 (c0 + c1 z) + t^7 (c2 + c3 z)
// with z = t^2. The table holds B + s atan c for every fold, so s t joins
// it by one fast two-sum: |t| < atan c unless c = 0, and B + s atan c
// >= pi/4 where B is not 0.
//
// atan_fold_body takes the fold at run time (atan_fold<V> fixes it), for
// callers to whom it is a coin toss (the signs of the parts, which is the
// larger), where a branch would mispredict half the time: the row from
// 65 V, the signs of t and p by a product with s_v = +-1, exact, so the
// same bits.
ZVL_EXT_INLINE long double atan_fold_body(long double a, long double b, unsigned V, long double s_v) {
    const long double r = (a / b - 0x1p-8L) + ExtAtan::shifter;
    const long double c = r - ExtAtan::shifter;
    // the row from 64 c, an integer, by the integer store: the significand
    // of r holds the same number, but reading it waits for a ten-byte store
    const Pair& A = ExtAtan::table[65 * V + ext_to_int(c * 64.0L)];
    const long double bt = b * 65.0L;
    const long double b58 = bt - (bt - b), b6 = b - b58;
    const long double t = ((a - c * b58) - c * b6) / (b + c * a);
    const long double z = t * t, t3 = t * z, t7 = t3 * (z * z);
    const long double* k = Ext::atan_poly;
    const long double p = t3 * (k[0] + z * k[1]) + t7 * (k[2] + z * k[3]);
    const Pair s = fast_two_sum(A.hi, s_v * t);
    return s.hi + (s.lo + (A.lo + s_v * p));
}

template <int V>
inline long double atan_fold(long double a, long double b) {
    return atan_fold_body(a, b, V, V == 1 || V == 2 ? -1.0L : 1.0L);
}

// +1 or -1 by index: the sign of a fold (1 and 2 negative), or, from
// index 4 on, the sign of y for a negative y at 5.
struct ExtSigns {
    static constexpr long double table[6] = {1.0L, -1.0L, -1.0L, 1.0L, 1.0L, -1.0L};
};

// The angle of the point (X, Y), Y >= 0 and X not both zero, in [0, pi],
// for X and Y of moderate size (their products neither overflow nor
// underflow).
inline long double atan2_core(long double Y, long double X) {
    const long double ax = ext_abs(X);
    if (!(X < 0)) return Y <= ax ? atan_fold<0>(Y, ax) : atan_fold<1>(ax, Y);
    return Y <= ax ? atan_fold<2>(Y, ax) : atan_fold<3>(ax, Y);
}

// ext_atan2's main path, for y and x finite and not zero with exponents
// within 8000 of the bias: callers that know as much (the complex inverse
// functions' angles) take it inline, without the call and the
// classification, for the same bits.
inline long double atan2_main(long double y, long double x) {
    // the exponents first: their test is rarely true, the sign of x a coin
    // toss that a branch on it alone would mispredict
    if (ext_exp_field(y) + 40 < ext_exp_field(x) && x > 0) {
        // |y/x| < 2^-39: atan q = q - q^3/3 rounds to q, and a division
        // rounds q once even where it is subnormal
        return y / x;
    }
    return ext_neg_if(atan2_core(ext_abs(y), x), ext_sign(y));
}

inline long double ext_atan(long double x) {
    if (x != x) return x * x;
    const long double ax = ext_abs(x);
    if (!(ax < ExtAtan::far)) {
        return ext_neg_if(Ext::pio2[0] + (Ext::pio2[1] - 1.0L / ax), x < 0);
    }
    if (ax < Ext::tiny33) return x;
    return ext_neg_if(ax <= 1.0L ? atan_fold<0>(ax, 1.0L) : atan_fold<1>(1.0L, ax), x < 0);
}

inline long double ext_atan2(long double y, long double x) {
    // exponents within 8000 of the bias: finite, not zero, of moderate
    // size, the common case, told from the exponent fields alone before
    // any comparison of the values
    const int ey = ext_exp_field(y), ex = ext_exp_field(x);
    const auto moderate = [](int e) { return static_cast<unsigned>(e - (16383 - 7999)) < 15999u; };
    if (moderate(ex) && moderate(ey)) return atan2_main(y, x);
    if (x != x || y != y) return x + y;
    const bool yneg = ext_sign(y);
    Pair a;
    if (y == 0) {
        if (!ext_sign(x)) return y;
        a = {Ext::pi[0], Ext::pi[1]};
    } else if (ey == 0x7fff) {
        if (ex != 0x7fff) {
            a = {Ext::pio2[0], Ext::pio2[1]};
        } else if (x > 0) {
            a = {Ext::pio4[0], Ext::pio4[1]};
        } else {
            const Pair t = two_sum(Ext::pi[0], -Ext::pio4[0]);  // 3pi/4
            a = {t.hi, t.lo + (Ext::pi[1] - Ext::pio4[1])};
        }
    } else if (x == 0) {
        a = {Ext::pio2[0], Ext::pio2[1]};
    } else if (ex == 0x7fff) {
        if (x > 0) return ext_neg_if(0.0L, yneg);
        a = {Ext::pi[0], Ext::pi[1]};
    } else if (x > 0 && ey + 40 < ex) {
        return y / x;  // as in atan2_main
    } else {
        // scale both by the same power of two so that the larger is near 1
        const int k = (ex > ey ? ex : ey) - 16383;
        return ext_neg_if(atan2_core(scale2(ext_abs(y), -k), scale2(x, -k)), yneg);
    }
    return ext_neg_if(a.hi + a.lo, yneg);
}

// sqrt(1 - x^2) for |x| < 1, (1 - x) exact from 1/2 up.
inline long double cos_of_asin(long double ax) { return ext_sqrt((1.0L - ax) * (1.0L + ax)); }

inline long double ext_asin(long double x) {
    if (x != x) return x * x;
    const long double ax = ext_abs(x);
    if (!(ax < 1.0L)) {
        if (ax == 1.0L) return ext_neg_if(Ext::pio2[0] + Ext::pio2[1], x < 0);
        return (x - x) / (x - x);  // NaN with invalid, infinities too
    }
    if (ax < Ext::tiny33) return x;
    return ext_neg_if(atan2_core(ax, cos_of_asin(ax)), x < 0);
}

inline long double ext_acos(long double x) {
    if (x != x) return x * x;
    const long double ax = ext_abs(x);
    if (!(ax < 1.0L)) {
        if (x == 1.0L) return 0.0L;
        if (x == -1.0L) return Ext::pi[0] + Ext::pi[1];
        return (x - x) / (x - x);
    }
    return atan2_core(cos_of_asin(ax), x);
}

}  // namespace
