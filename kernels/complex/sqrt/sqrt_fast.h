// zSqrt_fast: the complex square root in double arithmetic, one element at
// a time (the cpu type 1 member of vzSqrt), with the same formula as
// zSqrt_scalar: w = sqrt((|x| + m)/2), v = |y|/(2w), m = |z|, and
// (w, v) or (v, w) with the sign of y by the sign of x.
//
//   band     both parts from 2^-459 up to below 2^511 (high words less
//            0x23400000 below 0x3ca00000, unsigned): x^2 + y^2 is then a
//            normal double, and no part is zero, subnormal, infinite or NaN
//   balance  parts 58 binary orders or more apart form no squares: the
//            smaller square is below 2^-116 of the larger
//   m        x^2 + y^2 as a two-double sum (27-bit splits), its root from a
//            reciprocal root: a single-precision seed polished by the
//            binomial series of (1 + e)^(-1/2) to e^5, then one residual
//            step that makes m a two-double value too
//   w, v     the same on (|x| + m)/2; v = |y|/(2w) from the reciprocal root
//            and the exact residual of w s - 1, without a division
//   slow     parts outside the band: infinities and NaNs by zSqrt_special;
//            zeros and unbalanced pairs on their one-root paths (a y below
//            2^-1021 prescaled by 2^199, the root by 2^-100); the rest
//            scaled into the band by 2^-514 (results by 2^257) or 2^620
//            (results by 2^-310)
// Each part is within about half an ulp plus 2^-60 relative.
#pragma once

#include <immintrin.h>

#include "kernels/complex/sqrt/sqrt_scalar.h"

namespace {

struct SqrtFast {
    static constexpr uint32_t band_base = 0x23400000;   // high word of 2^-459
    static constexpr uint32_t band_width = 0x3ca00000;  // up to 2^511
    static constexpr int32_t balance = 0x3a00000;       // 58 binary orders
    static constexpr uint32_t tiny_y = 0x00200000;      // 2^-1021: prescale below
    static constexpr uint64_t split_mask = 0xfffffffff8000000;
    // (1 + e)^(-1/2) = 1 + e (c[0] + e (c[1] + ...)): the exact binomial
    // coefficients; e below 2^-10 leaves 0.23 e^6 < 2^-61
    static constexpr double series[5] = {-0.5, 0.375, -0.3125, 0.2734375, -0.24609375};
};

struct DD {
    double hi, lo;
};

inline uint32_t high_word_of(double x) { return static_cast<uint32_t>(dbits(x) >> 32); }

// a * b = p.hi + p.lo, exact but for the product of the low halves (below
// 2^-105 of the product).
inline DD mul_dd(double a, double b) {
    const double ah = dfrom(dbits(a) & SqrtFast::split_mask), al = a - ah;
    const double bh = dfrom(dbits(b) & SqrtFast::split_mask), bl = b - bh;
    const double p = a * b;
    return {p, (((ah * bh - p) + ah * bl) + al * bh) + al * bl};
}

// hi + lo = a + b exactly.
inline DD sum_dd(double a, double b) {
    const double s = a + b, bb = s - a;
    return {s, (a - (s - bb)) + (b - bb)};
}

// 1/sqrt(a) for a positive normal a, within about 2^-54: the
// single-precision estimate of a's significand with the exponent's parity
// (a value in [1, 4)), its exponent rebuilt from a's, then the series.
inline double rsqrt_seed(double a) {
    const uint64_t b = dbits(a);
    const uint32_t fb = ((static_cast<uint32_t>(b >> 29) & 0x00ffffff) ^ 0x00800000) + 0x3f800000;
    float f;
    std::memcpy(&f, &fb, sizeof f);
    const float rf = _mm_cvtss_f32(_mm_rsqrt_ss(_mm_set_ss(f)));
    // 2^(-(k - k mod 2)/2) for a = 1.f 2^k: high word 0x5ff00000 less half
    // of the exponent field rounded up to even
    const uint32_t h = static_cast<uint32_t>(b >> 32);
    const uint32_t sh = 0x5ff00000 - (((h + 0x00100000) & 0xffe00000) >> 1);
    const double s = static_cast<double>(rf) * dfrom(static_cast<uint64_t>(sh) << 32);
    const double e = a * s * s - 1.0;
    const double* c = SqrtFast::series;
    return s + s * (e * (c[0] + e * (c[1] + e * (c[2] + e * (c[3] + e * c[4])))));
}

// sqrt(a.hi + a.lo) as a two-double value, and the reciprocal root s used.
inline DD sqrt_dd(DD a, double* s_out) {
    const double s = rsqrt_seed(a.hi);
    const double r = a.hi * s;
    const DD q = mul_dd(r, r);
    *s_out = s;
    return {r, (((a.hi - q.hi) - q.lo) + a.lo) * (s * 0.5)};
}

// The balanced case for |x|, |y| in the band (or scaled into it): w and v
// of the formula above.
inline void sqrt_balanced(double ax, double ay, double* w_out, double* v_out) {
    const DD x2 = mul_dd(ax, ax), y2 = mul_dd(ay, ay);
    const DD s2 = sum_dd(x2.hi, y2.hi);
    double s;
    const DD m = sqrt_dd({s2.hi, s2.lo + (x2.lo + y2.lo)}, &s);
    const DD t = sum_dd(ax, m.hi);
    const DD w = sqrt_dd({t.hi * 0.5, (t.lo + m.lo) * 0.5}, &s);
    // 1/w = s (1 - e), e = (w.hi + w.lo) s - 1 from the exact product
    const DD ws = mul_dd(w.hi, s);
    const double e = ((ws.hi - 1.0) + ws.lo) + w.lo * s;
    const DD p = mul_dd(ay * 0.5, s);
    *w_out = w.hi + w.lo;
    *v_out = p.hi + (p.lo - p.hi * e);
}

// |x| far above |y|: w = sqrt|x|, and v = |y|/(2w) corrected by the
// division's remainder and by w's residual, so that v does not inherit
// w's rounding. A tiny |y| is scaled up by 2^110 for the remainder's sake.
inline void sqrt_x_dominant(double ax, double ay, double* w_out, double* v_out) {
    const bool tiny = ay < 0x1p-900;
    const double ys = tiny ? ay * 0x1p110 : ay;
    const double w = __builtin_sqrt(ax), w2 = 2.0 * w;
    const DD q = mul_dd(w, w);
    const double v = ys / w2;
    const DD p = mul_dd(v, w2);
    // w = sqrt|x| (1 + d) with w^2 - |x| = 2d|x|, and |y|/(2 sqrt|x|) = (|y|/(2w)) (1 + d)
    const double c = ((ys - p.hi) - p.lo) / w2 + v * (((q.hi - ax) + q.lo) / (2.0 * ax));
    *w_out = w;
    *v_out = (v + c) * (tiny ? 0x1p-110 : 1.0);
}

// (w, v) placed by the sign of x, the sign of y on the imaginary part.
inline Z* sqrt_place(Z* r, double x, double y, double w, double v) {
    return neg(x) ? put(r, v, signed_as(w, neg(y))) : put(r, w, signed_as(v, neg(y)));
}

// sqrt(|y|/2) for the cases where |y| dominates or x = 0.
inline double sqrt_half(double ay) {
    if (high_word_of(ay) < SqrtFast::tiny_y) return __builtin_sqrt(ay * 0x1p199) * 0x1p-100;
    return __builtin_sqrt(ay * 0.5);
}

// The balance test and the three cases after it; the balanced case runs on
// the parts times `in` and its results are multiplied by `out`.
inline Z* sqrt_by_balance(Z* r, double x, double y, double in, double out) {
    const double ax = __builtin_fabs(x), ay = __builtin_fabs(y);
    const int32_t d = static_cast<int32_t>(high_word_of(ax) - high_word_of(ay));
    double w, v;
    if (d > SqrtFast::balance) {
        sqrt_x_dominant(ax, ay, &w, &v);
    } else if (d < -SqrtFast::balance) {
        v = sqrt_half(ay);
        return put(r, v, signed_as(v, neg(y)));
    } else {
        sqrt_balanced(ax * in, ay * in, &w, &v);
        w *= out;
        v *= out;
    }
    return sqrt_place(r, x, y, w, v);
}

__attribute__((noinline)) inline Z* sqrt_fast_slow(Z* r, double x, double y) {
    if (!finite(x) || !finite(y)) {
        const Z a = {x, y};
        return zSqrt_special(r, &a);
    }
    if (zero(x)) {
        const double v = sqrt_half(__builtin_fabs(y));
        return put(r, v, signed_as(v, neg(y)));
    }
    if (zero(y)) {
        const double w = __builtin_sqrt(__builtin_fabs(x));
        return neg(x) ? put(r, 0.0, signed_as(w, neg(y))) : put(r, w, y);
    }
    if (__builtin_fabs(x) >= 1.0 || __builtin_fabs(y) >= 1.0)
        return sqrt_by_balance(r, x, y, 0x1p-514, 0x1p257);
    return sqrt_by_balance(r, x, y, 0x1p620, 0x1p-310);
}

inline Z* zSqrt_fast(Z* r, const Z* a) {
    const double x = a->real, y = a->imag;
    const uint32_t hx = high_word_of(__builtin_fabs(x)), hy = high_word_of(__builtin_fabs(y));
    if (hx - SqrtFast::band_base >= SqrtFast::band_width ||
        hy - SqrtFast::band_base >= SqrtFast::band_width)
        return sqrt_fast_slow(r, x, y);
    return sqrt_by_balance(r, x, y, 1.0, 1.0);
}

}  // namespace
