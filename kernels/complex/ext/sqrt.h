// ext_sqrt: the square root of an extended value, and sqrt_pair, the root
// of a pair.
//
// x = a 2^(2h) with a in [1, 4). y0, a double from the table indexed by the
// exponent's parity and the six significand bits after the leading one, is
// 1/sqrt of the centre of a's interval, so e = a y0^2 - 1 is below 2^-7 and
// the binomial series y = y0 (1 + e P(e)), seven terms, gives 1/sqrt(a)
// within 2^-58. r = a y is then corrected by Dekker's residual: with r split
// exactly into 31 and 32 bits, d = a - r^2 is exact and r + d y / 2 leaves
// only the final rounding. Subnormal x is first scaled by 2^200.
//
// Cost: the routine is one chain of dependent x87 operations (a
// multiplication takes 5 cycles, an addition 3), about 140 cycles written
// plainly, three times an element in the complex inverse functions. The
// chain is cut short where the result's bits allow it: the series by
// Estrin's scheme, r = a y0 (1 + q) from a y0 and the series at once,
// y0^2 beside a y0, and for |exponent| < 1000 the scale 2^k carried from
// y0 on instead of applied last. The roundings inside differ from those of
// the plain form (Horner, r = a y, the scale last), now and then in the
// last bits of e, y and r, but the result does not: r needs only to be
// within 2^-57 of the root, the corrected value is within about 2^-114 of
// it either way, and the roots that close to a midpoint between extended
// numbers are found and checked one by one (ext_sqrt_bits_test).
#pragma once

#include "kernels/complex/ext/arith.h"

namespace {

struct ExtSqrt {
    static constexpr double table[128] = {
#include "kernels/complex/ext/table_sqrt.inc"
    };
    // (1 + e)^(-1/2) = 1 + e (c[0] + e (c[1] + ...)): the binomial series,
    // exact in double (one 8-byte load each, where extended takes 10)
    static constexpr double series[7] = {
        -0.5, 0.375, -0.3125, 0.2734375, -0.24609375, 0.2255859375, -0.20947265625,
    };
};

// e P(e), the series less its leading 1, in Estrin's scheme: short chains
// where Horner's makes one of seven steps.
inline long double series_times(long double e) {
    const double* c = ExtSqrt::series;
    const long double e2 = e * e;
    const long double e3 = e2 * e, e5 = e2 * e3;
    const long double lo = (c[0] * e + c[1] * e2) + e3 * (c[2] + c[3] * e);
    const long double hi = (c[4] + c[5] * e) + c[6] * e2;
    return lo + e5 * hi;
}

// sqrt(x) = sqrt(a) 2^k, a = x 2^-2k in [1, 4), y0 the table's entry for
// a, sk = 2^k and hs = 2^(-2k-1). Every value from y on is the unscaled
// one times 2^k, each product and sum scaled exactly (the bits of scaling
// at the end), and neither that product nor the halving of y waits there.
inline long double sqrt_core(long double x, long double a, long double y0, long double sk, long double hs) {
    const long double ay0 = a * y0;
    const long double ee = a * (y0 * y0) - 1.0L;
    const long double y0k = y0 * sk, ay0k = ay0 * sk;
    const long double q = series_times(ee);
    const long double yk = y0k + y0k * q;
    const long double r = ay0k + ay0k * q;
    const Pair s = split(r);
    // x - s.hi^2 and the next step are exact (Sterbenz): r is within 2^-57
    // of the root
    const long double d = ((x - s.hi * s.hi) - 2.0L * s.hi * s.lo) - s.lo * s.lo;
    return r + d * (yk * hs);
}

// sqrt(x) for x positive, normal and finite.
inline long double sqrt_normal(long double x) {
    const uint64_t m = ext_sig(x);
    const int e = ext_exp_field(x) - 16383;
    const int p = e & 1;
    const int k = (e - p) / 2;
    const long double y0 = ExtSqrt::table[64 * p + static_cast<int>((m >> 57) & 63)];
    // x, the root and every scale factor within double's range
    if (e > -1000 && e < 1000)
        return sqrt_core(x, x * pow2_near(-2 * k), y0, pow2_near(k), pow2_near(-2 * k - 1));
    const long double a = ext_make(m, static_cast<unsigned>(16383 + p));
    return sqrt_core(a, a, y0, 1.0L, 0.5L) * pow2(k);
}

inline long double ext_sqrt(long double x) {
    const int ef = ext_exp_field(x);
    if (ext_sign(x) || ef == 0 || ef == 0x7fff) {
        if (x != x) return x * x;
        if (x == 0) return x;
        if (x < 0) return (x - x) / (x - x);  // NaN with invalid, -inf too
        if (ef == 0x7fff) return x;
        return sqrt_normal(x * pow2(200)) * pow2(-100);
    }
    return sqrt_normal(x);
}

// ext_sqrt with its common case, a positive, normal and finite argument,
// in the caller's code: for callers that take several roots an element
// (the complex inverse functions), whose chains then overlap, and whose
// arguments need not pass through a call. Other arguments go to ext_sqrt.
__attribute__((always_inline)) inline long double ext_sqrt_inline(long double x) {
    const int ef = ext_exp_field(x);
    if (__builtin_expect(ext_sign(x) || ef == 0 || ef == 0x7fff, 0)) return ext_sqrt(x);
    return sqrt_normal(x);
}

// sqrt(a.hi + a.lo) as a pair, for a.hi positive and finite.
inline Pair sqrt_pair(Pair a) {
    const long double s = ext_sqrt(a.hi);
    const Pair q = two_prod(s, s);
    return {s, (((a.hi - q.hi) - q.lo) + a.lo) * 0.5L / s};
}

}  // namespace
