// Sqrt and InvSqrt: r = sqrt(a) and r = 1 / sqrt(a).
//
// Sqrt HA and LA: the square root instruction, correctly rounded in the
// caller's rounding mode, with no guard. An estimate refined to LA accuracy
// costs as much as the instruction, so LA is the same code under its name.
// Sqrt EP at type 5: y0, the single-precision reciprocal square root
// estimate of x (relative error below 1.5 * 2^-12), gives s = x * y0 and
// e = 1 - s * y0, |e| < 2^-10.4; s + s * e * (1/2 + 3/8 e) leaves the series
// error 5/16 e^3 < 2^-32. Below type 5 the 128-bit instruction is faster
// than the estimate's conversions and steps, and EP runs it.
//
// InvSqrt HA: sqrt(1 / x). The quotient's rounding error is halved by the
// root, so the error stays below 1 ulp (0.5 + 0.5 * 2^-53 relative).
// InvSqrt LA and EP, types 2 to 5: y0 as above and e = 1 - x * y0^2, then
// y0 + y0 * e * P(e) with P of degree 3 (LA, series error below 2^-54) or 1
// (EP, below 2^-32). At type 1, which has no estimate, LA and EP run the
// code of HA: a seed from the bit pattern needs two steps even for EP, which
// cost more than the division and the root.
//
// Worst errors found against MPFR (2.7 million arguments per function over
// the whole range, and the hard cases of 1/sqrt):
//   Sqrt EP      2^-34.4 relative at 0x1.51effa6515321p+1
//   InvSqrt HA   0.851 ulp at 0x1.fef73512f89c8p+0
//   InvSqrt LA   1.423 ulp at 0x1.04ddc9813db98p+2
//   InvSqrt EP   2^-34.4 relative at 0x1.391ffcee8c8dbp+1
//
// The estimate sees x in single precision, so the kernels built on it take
// only x in [2^-120, 2^120] in their vector path; the others refuse zero,
// negative, denormal, infinite and NaN x and InvSqrt HA also x above 2^1022,
// where 1/x would be denormal. Refused elements go to the scalar callouts,
// which give the HA result of every argument and the statuses:
//   Sqrt(x < 0), InvSqrt(x < 0)   ZVL_STATUS_ERRDOM, NaN (-0 is not below 0)
//   InvSqrt(+-0)                  ZVL_STATUS_SING, +-inf
//   Sqrt(-0) = -0, InvSqrt(+inf) = +0, NaN gives NaN: no status.
// Every kernel but the instruction's runs under the full MXCSR guard with
// round to nearest.
//
// Included by the explog units inside their own context (see unit.h).
#pragma once

#include "kernels/common/estimates.h"
#include "kernels/explog/roots/common.h"

namespace {

struct SqrtConst {
    // 2^-120 and 2^120: single precision holds x and its estimate normally
    static constexpr double est_low = zvl::from_bits(0x3870000000000000);
    static constexpr double est_high = zvl::from_bits(0x4770000000000000);
    // 2^1022: above it 1/x is denormal
    static constexpr double recip_high = zvl::from_bits(0x7fd0000000000000);
    // The callout scales denormal x by 2^108 and the result back by 2^54,
    // and x above 2^1022 by 2^-108 and back by 2^-54.
    static constexpr double up = zvl::from_bits(0x46b0000000000000);
    static constexpr double up_back = zvl::from_bits(0x4350000000000000);
    static constexpr double down = zvl::from_bits(0x3930000000000000);
    static constexpr double down_back = zvl::from_bits(0x3c90000000000000);
};

// sqrt(1/x) for 2^-1022 <= x <= 2^1022.
template <class V>
inline typename V::vd inv_sqrt_ha(typename V::vd x) {
    return V::sqrt(V::div(V::splat(1.0), x));
}

// The callouts: every argument, HA accuracy, with the statuses.
__attribute__((noinline)) int32_t sqrt_callout(const double* xp, double* yp) {
    const double x = *xp;
    *yp = Scalar::sqrt(x);
    return x < 0.0 ? ZVL_STATUS_ERRDOM : 0;
}

__attribute__((noinline)) int32_t inv_sqrt_callout(const double* xp, double* yp) {
    const double x = *xp;
    if (x != x) {
        *yp = x + x;
        return 0;
    }
    if (x == 0.0) {
        *yp = 1.0 / x;
        return ZVL_STATUS_SING;
    }
    if (x < 0.0) {
        *yp = Scalar::sqrt(x);
        return ZVL_STATUS_ERRDOM;
    }
    if (x < Fp64::min_normal)
        *yp = inv_sqrt_ha<Scalar>(x * SqrtConst::up) * SqrtConst::up_back;
    else if (x > SqrtConst::recip_high)  // +inf included: 1/inf is +0
        *yp = inv_sqrt_ha<Scalar>(x * SqrtConst::down) * SqrtConst::down_back;
    else
        *yp = inv_sqrt_ha<Scalar>(x);
    return 0;
}

// --- Sqrt -------------------------------------------------------------------

struct SqrtInstr : PerVector<SqrtInstr>, RootCallout<sqrt_callout> {
    template <class V>
    static typename V::vd eval(typename V::vd x) {
        return V::sqrt(x);
    }
    template <class V>
    static typename V::vd special(typename V::vd x) {
        return V::lt(x, V::splat(0.0));
    }
};

struct SqrtEst : PerVector<SqrtEst>, RootCallout<sqrt_callout> {
    template <class V>
    static typename V::vd eval(typename V::vd x) {
        const typename V::vd y0 = rsqrt_estimate(x);
        const typename V::vd s = V::mul(x, y0);
        const typename V::vd e = V::sub(V::splat(1.0), V::mul(s, y0));
        return refine_root<V>(s, e, series_sum<V>(e, RsqrtSeries::c1, RsqrtSeries::c2));
    }
    template <class V>
    static typename V::vd special(typename V::vd x) {
        return outside_range<V>(x, SqrtConst::est_low, SqrtConst::est_high);
    }
};

// --- InvSqrt ----------------------------------------------------------------

struct InvSqrtHA : PerVector<InvSqrtHA>, RootCallout<inv_sqrt_callout> {
    template <class V>
    static typename V::vd eval(typename V::vd x) {
        return inv_sqrt_ha<V>(x);
    }
    template <class V>
    static typename V::vd special(typename V::vd x) {
        return outside_range<V>(x, Fp64::min_normal, SqrtConst::recip_high);
    }
};

// e = 1 - x * y^2 for an estimate y of 1/sqrt(x).
template <class V>
inline typename V::vd rsqrt_residual(typename V::vd x, typename V::vd y) {
    return V::sub(V::splat(1.0), V::mul(V::mul(x, y), y));
}

// LA: degree 3 after the estimate; EP: degree 1.
template <bool LA>
struct InvSqrtEst : PerVector<InvSqrtEst<LA>>, RootCallout<inv_sqrt_callout> {
    template <class V>
    static typename V::vd eval(typename V::vd x) {
        const typename V::vd y0 = rsqrt_estimate(x);
        const typename V::vd e = rsqrt_residual<V>(x, y0);
        if constexpr (LA)
            return refine_root<V>(y0, e, series_sum<V>(e, RsqrtSeries::c1, RsqrtSeries::c2, RsqrtSeries::c3,
                                              RsqrtSeries::c4));
        else
            return refine_root<V>(y0, e, series_sum<V>(e, RsqrtSeries::c1, RsqrtSeries::c2));
    }
    template <class V>
    static typename V::vd special(typename V::vd x) {
        return outside_range<V>(x, SqrtConst::est_low, SqrtConst::est_high);
    }
};

}  // namespace
