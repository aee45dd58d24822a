// ext_asinh, ext_acosh, ext_atanh: logarithms of algebraic expressions,
// each formed as a pair so that the logarithm core sees its argument to
// about 2^-120 and rounds once.
//
//   asinh |x| = ln1p(|x| + x^2/(1 + sqrt(1 + x^2)))     for |x| <= 2^40
//   acosh x   = ln1p((x - 1) + sqrt((x - 1)(x + 1)))    for x <= 2^40
//   atanh |x| = ln1p(2|x|/(1 - |x|)) / 2
// Above 2^40 asinh |x| and acosh x are ln x + ln 2 (the next term, below
// 2^-82, is dropped), with the ln 2 added to the exponent so that nothing
// overflows. The roots come from ext_sqrt and the logarithms from the
// shared core, not from ext_log. Below 2^-33 asinh and atanh return x
// (signed zeros kept). acosh below 1, atanh beyond 1 and the infinities
// where undefined give a NaN with invalid; atanh(+-1) is +-inf with
// divide-by-zero.
#pragma once

#include "kernels/complex/ext/log.h"
#include "kernels/complex/ext/sqrt.h"

namespace {

struct ExtInvHyp {
    static constexpr long double far = 0x1p40L;
};

inline long double ext_asinh(long double x) {
    if (x != x) return x * x;
    const long double ax = ext_abs(x);
    if (!(ax <= ExtInvHyp::far)) {
        if (ext_exp_field(x) == 0x7fff) return x;
        const Pair L = log_core({ax, 0.0L}, 1);
        return ext_neg_if(L.hi + L.lo, x < 0);
    }
    if (ax < Ext::tiny33) return x;
    const Pair z = two_prod(ax, ax);
    const Pair w = sqrt_pair(add_pair({1.0L, 0.0L}, z));
    const Pair q = div_pair(z, add_pair({1.0L, 0.0L}, w));
    const Pair L = log1p_core(add_pair({ax, 0.0L}, q));
    return ext_neg_if(L.hi + L.lo, x < 0);
}

inline long double ext_acosh(long double x) {
    if (x != x) return x * x;
    if (!(x >= 1.0L)) {
        return (x - x) / (x - x);  // NaN with invalid, -inf too
    }
    if (x > ExtInvHyp::far) {
        if (ext_exp_field(x) == 0x7fff) return x;
        const Pair L = log_core({x, 0.0L}, 1);
        return L.hi + L.lo;
    }
    if (x == 1.0L) return 0.0L;
    const Pair d = two_sum(x, -1.0L);
    const Pair r = sqrt_pair(mul_pair(d, two_sum(x, 1.0L)));
    const Pair L = log1p_core(add_pair(d, r));
    return L.hi + L.lo;
}

inline long double ext_atanh(long double x) {
    if (x != x) return x * x;
    const long double ax = ext_abs(x);
    if (!(ax < 1.0L)) {
        if (ax == 1.0L) return x / (ax - ax);  // +-inf with divide-by-zero
        return (x - x) / (x - x);              // NaN with invalid, infinities too
    }
    if (ax < Ext::tiny33) return x;
    const Pair q = div_pair({2.0L * ax, 0.0L}, two_sum(1.0L, -ax));
    const Pair L = log1p_core(q);
    return ext_neg_if(0.5L * (L.hi + L.lo), x < 0);
}

}  // namespace
