// zSqrt_slow: the branch that zSqrt_fast (the cpu type 1 member of vzSqrt)
// and the vector members share for arguments outside the band, on their
// formula: w = sqrt((|x| + m)/2), v = |y|/(2w), m = |z|, and (w, v) or
// (v, w) with the sign of y by the sign of x. zSqrt_fast itself is the
// vector members' body on one lane (sqrt_lanes.h).
//
//   band     both parts from 2^-459 up to below 2^511 (high words less
//            0x23400000 below 0x3ca00000, unsigned): x^2 + y^2 is then a
//            normal double, and no part is zero, subnormal, infinite or NaN
//   slow     infinities and NaNs by zSqrt_special; zeros and unbalanced
//            pairs (the high words 58 binary orders or more apart) on their
//            one-root paths (a y below 2^-1021 prescaled by 2^199 and the
//            root by 2^-100; a tiny y of an x-dominant pair by 2^110 for the
//            remainder's sake); the rest scaled into the band by 2^-514
//            (results by 2^257) or 2^620 (results by 2^-310) and run through
//            sqrt_core.h's roots on the one-lane wrapper
// Each part is within about half an ulp plus 2^-60 relative.
#pragma once

#include "kernels/complex/sqrt/sqrt_core.h"
#include "kernels/complex/sqrt/sqrt_scalar.h"

namespace {

struct SqrtFast {
    static constexpr int32_t balance = 0x3a00000;       // 58 binary orders
    static constexpr uint32_t tiny_y = 0x00200000;      // 2^-1021: prescale below
};

using SqrtOne = SqrtCore<Scalar>;

inline uint32_t high_word_of(double x) { return static_cast<uint32_t>(bits(x) >> 32); }

// (w, v) placed by the sign of x, the sign of y on the imaginary part.
inline Z* sqrt_place(Z* r, double x, double y, double w, double v) {
    return neg(x) ? put(r, v, signed_as(w, neg(y))) : put(r, w, signed_as(v, neg(y)));
}

// (v, v) with the sign of y, v = sqrt(|y|/2): y dominant or x zero.
inline Z* sqrt_y_only(Z* r, double y) {
    const double ay = __builtin_fabs(y);
    const double v = high_word_of(ay) < SqrtFast::tiny_y ? __builtin_sqrt(ay * 0x1p199) * 0x1p-100
                                                         : SqrtOne::half_root(ay);
    return put(r, v, signed_as(v, neg(y)));
}

// The balance test and the three cases after it; the balanced case runs on
// the parts times `in` and its results are multiplied by `out`.
inline Z* sqrt_by_balance(Z* r, double x, double y, double in, double out) {
    const double ax = __builtin_fabs(x), ay = __builtin_fabs(y);
    const int32_t d = static_cast<int32_t>(high_word_of(ax) - high_word_of(ay));
    double w, v;
    if (d > SqrtFast::balance) {
        const bool tiny = ay < 0x1p-900;
        SqrtOne::x_dominant(ax, tiny ? ay * 0x1p110 : ay, w, v);
        if (tiny) v *= 0x1p-110;
    } else if (d < -SqrtFast::balance) {
        return sqrt_y_only(r, y);
    } else {
        SqrtOne::roots(ax * in, ay * in, 0.0, 0.0, w, v);
        w *= out;
        v *= out;
    }
    return sqrt_place(r, x, y, w, v);
}

__attribute__((noinline)) inline Z* zSqrt_slow(Z* r, const Z* a) {
    const double x = a->real, y = a->imag;
    if (!finite(x) || !finite(y)) return zSqrt_special(r, a);
    if (zero(x)) return sqrt_y_only(r, y);
    if (zero(y)) {
        const double w = __builtin_sqrt(__builtin_fabs(x));
        return neg(x) ? put(r, 0.0, signed_as(w, neg(y))) : put(r, w, y);
    }
    if (__builtin_fabs(x) >= 1.0 || __builtin_fabs(y) >= 1.0)
        return sqrt_by_balance(r, x, y, 0x1p-514, 0x1p257);
    return sqrt_by_balance(r, x, y, 0x1p620, 0x1p-310);
}

}  // namespace
