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
#pragma once

#include "kernels/complex/ext/arith.h"

namespace {

struct ExtSqrt {
    static constexpr double table[128] = {
#include "kernels/complex/ext/table_sqrt.inc"
    };
    // (1 + e)^(-1/2) = 1 + e (c[0] + e (c[1] + ...)): the binomial series
    static constexpr long double series[7] = {
        -0.5L, 0.375L, -0.3125L, 0.2734375L, -0.24609375L, 0.2255859375L, -0.20947265625L,
    };
};

// sqrt(x) for x positive, normal and finite.
inline long double sqrt_normal(long double x) {
    const uint64_t m = ext_sig(x);
    const int e = ext_exp_field(x) - 16383;
    const int p = e & 1;
    const bool near = e > -1000 && e < 1000;
    const long double a = near ? x * pow2_near(p - e) : ext_make(m, static_cast<unsigned>(16383 + p));
    const long double y0 = ExtSqrt::table[64 * p + static_cast<int>((m >> 57) & 63)];
    const long double ee = a * y0 * y0 - 1.0L;
    const long double y = y0 + y0 * (ee * horner(ExtSqrt::series, ee));
    const long double r = a * y;
    const Pair s = split(r);
    // a - s.hi^2 and the next step are exact (Sterbenz): r is within 2^-57
    // of the root
    const long double d = ((a - s.hi * s.hi) - 2.0L * s.hi * s.lo) - s.lo * s.lo;
    return (r + d * y * 0.5L) * (near ? pow2_near((e - p) / 2) : pow2((e - p) / 2));
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

// sqrt(a.hi + a.lo) as a pair, for a.hi positive and finite.
inline Pair sqrt_pair(Pair a) {
    const long double s = ext_sqrt(a.hi);
    const Pair q = two_prod(s, s);
    return {s, (((a.hi - q.hi) - q.lo) + a.lo) * 0.5L / s};
}

}  // namespace
