// Cbrt and InvCbrt: r = a^(1/3) and r = a^(-1/3), both odd in a.
//
// All modes work on a = |x| and put the sign back, and none divides except
// InvCbrt HA. The common start is an estimate u of a^(-1/3):
//   seed  the high word of u is seed - hi(a) / 3, within 3.5% of a^(-1/3)
//         for every normal a;
//   step  f = 1 - a * u^3 (in [-0.107, 0.100]), u += u * f * P(f) with P
//         the series of (1 - f)^(-1/3) to f^3: within 2^-19.
// Then c = a * u^2 is within 2^-18 of a^(1/3) and f = 1 - c * u is its
// residual, and (1 - f)^(-2/3) corrects c, (1 - f)^(-1/3) corrects u:
//   Cbrt LA    c + c * f * (2/3 + 5/9 f)     a few rounding errors, < 2 ulp
//   Cbrt EP    c + c * f * 2/3                series error below 2^-35
//   InvCbrt LA u + u * f * (1/3 + 2/9 f)     < 1.5 ulp
//   InvCbrt EP u + u * f / 3                  below 2^-35
// Cbrt HA makes the last step exact: u2 = u + u * f * (1/3 + 2/9 f) is
// within 2^-50 of a^(-1/3); t, c cut to 17 significant bits, has an exact
// cube (51 bits), so d = a - t^3 is exact (t^3 is within a factor 2 of a),
// and with w = d * u2^3 (= d / a to 2^-48 relative, |w| < 2^-14)
//   a^(1/3) = t * (1 - w)^(-1/3) = t + t * w * (1/3 + 2/9 w + 14/81 w^2)
// where only the final addition rounds: 0.5 ulp and a hair.
// InvCbrt HA is Cbrt HA of 1/a: the quotient's error is cut to a third by
// the root, so below 0.84 ulp in all.
//
// Worst errors found against MPFR (2.7 million arguments per function over
// the whole range, and the hard cases of cbrt):
//   Cbrt HA      0.5032 ulp at -0x1.032d869351a7ep+351
//   Cbrt LA      1.657 ulp at 0x1.73de1c1c9482p-215
//   Cbrt EP      2^-36.2 relative at 0x1.73543f6b6edb5p+619
//   InvCbrt HA   0.759 ulp at 0x1.f9503552e6624p+405
//   InvCbrt LA   1.267 ulp at 0x1.01a0245841c2bp+153
//   InvCbrt EP   2^-37.5 relative at -0x1.733f9f7c9cf1ep-812
//
// The vector path takes normal finite a (InvCbrt HA: a in [2^-1022, 2^1022],
// so that 1/a is normal). The callouts take zero, denormals, infinity, NaN
// and, for InvCbrt HA, the huge a, scaling by powers of 2^3 where needed:
//   InvCbrt(+-0)  ZVL_STATUS_SING, +-inf
//   Cbrt(+-0) = +-0, Cbrt(+-inf) = +-inf, InvCbrt(+-inf) = +-0, NaN gives
//   NaN: no status.
// Every kernel runs under the full MXCSR guard with round to nearest, which
// the seed and the exact steps rely on.
//
// Included by the explog units inside their own context (see unit.h).
#pragma once

#include "kernels/explog/roots/common.h"

namespace {

struct CbrtConst {
    // high word of the seed: seed - hi(a) / 3, tuned for the least largest
    // relative error over a whole period of three binades
    static constexpr uint32_t seed = 0x553ef100;
    // 0xaaaaaaab / 2^33 is 1/3 closely enough that hi * it, cut, is hi / 3
    static constexpr uint32_t third = 0xaaaaaaab;
    // t keeps 17 significant bits: its cube is exact
    static constexpr uint64_t cut17 = 0xfffffff000000000;
    // 2^1022: InvCbrt HA takes 1/a for a up to here
    static constexpr double recip_high = zvl::from_bits(0x7fd0000000000000);
    // The callouts' scalings: 2^162 and 2^-162 for a, 2^54 and 2^-54 for
    // its cube root.
    static constexpr double scale = zvl::from_bits(0x4a10000000000000);
    static constexpr double scale_inv = zvl::from_bits(0x35d0000000000000);
    static constexpr double root_scale = zvl::from_bits(0x4350000000000000);
    static constexpr double root_scale_inv = zvl::from_bits(0x3c90000000000000);
#ifdef __AVX__
    // round(2^54 / 3) + seed: z = this - (2^52 + hi) / 3 = 2^52 + seed -
    // hi / 3, rounded to an integer by the addition
    static constexpr double seed_shifted = 6004799503160661.0 + seed;
    static constexpr double third_d = CbrtSeries::c1;
#endif
};

// The seed of a^(-1/3) for a normal, positive a. At type 5 the vector seed
// divides by three in floating point, and the scalar one does the same, so
// that an element alone (the remainder, the callout) starts where it would
// in a block and no result depends on its neighbours.
inline double cbrt_seed(double a) {
#ifdef __AVX__
    const double p = zvl::from_bits(zvl::bits(Fp64::two52) | zvl::high_word(a));
    const double z = CbrtConst::seed_shifted - p * CbrtConst::third_d;
    return zvl::from_bits(zvl::bits(z) << 32);
#else
    const uint32_t q = CbrtConst::seed - zvl::high_word(a) / 3;
    return zvl::from_bits(static_cast<uint64_t>(q) << 32);
#endif
}
inline __m128d cbrt_seed(__m128d a) {
    const __m128i h = _mm_srli_epi64(_mm_castpd_si128(a), 32);
    const __m128i q = _mm_srli_epi64(_mm_mul_epu32(h, _mm_set1_epi32(static_cast<int>(CbrtConst::third))), 33);
    const __m128i u = _mm_sub_epi64(_mm_set1_epi64x(CbrtConst::seed), q);
    return _mm_castsi128_pd(_mm_slli_epi64(u, 32));
}
#ifdef __AVX__
// AVX has no 256-bit integer arithmetic, so the division by three is done
// in floating point: the high word becomes the double 2^52 + hi by moving
// it to the low half under 2^52's high word, and the result's low word is
// moved back up.
inline __m256d cbrt_seed(__m256d a) {
    const __m256 hh = _mm256_permute_ps(_mm256_castpd_ps(a), 0xf5);  // hi, hi
    const __m256 p = _mm256_blend_ps(hh, _mm256_castpd_ps(_mm256_set1_pd(Fp64::two52)), 0xaa);
    const __m256d z = _mm256_sub_pd(_mm256_set1_pd(CbrtConst::seed_shifted),
                                    _mm256_mul_pd(_mm256_castps_pd(p), _mm256_set1_pd(CbrtConst::third_d)));
    const __m256 ll = _mm256_permute_ps(_mm256_castpd_ps(z), 0xa0);  // lo, lo
    return _mm256_castps_pd(_mm256_blend_ps(ll, _mm256_setzero_ps(), 0x55));
}
#endif

template <class V>
struct CbrtSteps {
    using vd = typename V::vd;
    // 1 - a * u^3, multiplied so that no partial product leaves the range
    static vd residual(vd a, vd u) { return V::sub(V::splat(1.0), V::mul(V::mul(V::mul(a, u), u), u)); }
    // u within 2^-19 of a^(-1/3)
    static vd first(vd a) {
        const vd u = cbrt_seed(a);
        const vd f = residual(a, u);
        return refine_root<V>(u, f, series_sum<V>(f, CbrtSeries::c1, CbrtSeries::c2, CbrtSeries::c3, CbrtSeries::c4));
    }
    // a^(1/3) for normal a, to 0.5 ulp and a hair
    static vd exact(vd a) {
        const vd u = first(a);
        const vd c = V::mul(V::mul(a, u), u);
        const vd f = V::sub(V::splat(1.0), V::mul(c, u));
        const vd u2 = refine_root<V>(u, f, series_sum<V>(f, CbrtSeries::c1, CbrtSeries::c2));
        const vd t = V::and_(c, splat_bits<V>(CbrtConst::cut17));
        const vd d = V::sub(a, V::mul(V::mul(t, t), t));
        const vd w = V::mul(V::mul(V::mul(d, u2), u2), u2);
        return refine_root<V>(t, w, series_sum<V>(w, CbrtSeries::c1, CbrtSeries::c2, CbrtSeries::c3));
    }
};

// The callouts: every argument, HA accuracy, with the statuses.
__attribute__((noinline)) int32_t cbrt_callout(const double* xp, double* yp) {
    const double x = *xp;
    const double a = abs_of<Scalar>(x);
    if (x != x) {
        *yp = x + x;
    } else if (a == 0.0 || a > Fp64::max_finite) {
        *yp = x;
    } else {
        const double r = a < Fp64::min_normal
                             ? CbrtSteps<Scalar>::exact(a * CbrtConst::scale) * CbrtConst::root_scale_inv
                             : CbrtSteps<Scalar>::exact(a);
        *yp = Scalar::or_(r, sign_of<Scalar>(x));
    }
    return 0;
}

__attribute__((noinline)) int32_t inv_cbrt_callout(const double* xp, double* yp) {
    const double x = *xp;
    const double a = abs_of<Scalar>(x);
    if (x != x) {
        *yp = x + x;
        return 0;
    }
    if (a == 0.0) {
        *yp = 1.0 / x;
        return ZVL_STATUS_SING;
    }
    double r;
    if (a > Fp64::max_finite)
        r = 0.0;
    else if (a < Fp64::min_normal)
        r = CbrtSteps<Scalar>::exact(1.0 / (a * CbrtConst::scale)) * CbrtConst::root_scale;
    else if (a > CbrtConst::recip_high)
        r = CbrtSteps<Scalar>::exact(1.0 / (a * CbrtConst::scale_inv)) * CbrtConst::root_scale_inv;
    else
        r = CbrtSteps<Scalar>::exact(1.0 / a);
    *yp = Scalar::or_(r, sign_of<Scalar>(x));
    return 0;
}

// The largest a of the vector paths.
struct UpToMax {
    static constexpr double hi = Fp64::max_finite;
};
struct UpToRecip {
    static constexpr double hi = CbrtConst::recip_high;
};

// One mode of one function: Body(a) on a = |x|, the sign of x put back.
template <class Body, class Range, int32_t (*Fn)(const double*, double*)>
struct OddRoot : PerVector<OddRoot<Body, Range, Fn>>, RootCallout<Fn> {
    template <class V>
    static typename V::vd eval(typename V::vd x) {
        return V::or_(Body::template abs_root<V>(abs_of<V>(x)), sign_of<V>(x));
    }
    template <class V>
    static typename V::vd special(typename V::vd x) {
        return outside_range<V>(abs_of<V>(x), Fp64::min_normal, Range::hi);
    }
};

struct CbrtBodyHA {
    template <class V>
    static typename V::vd abs_root(typename V::vd a) {
        return CbrtSteps<V>::exact(a);
    }
};
template <bool LA>
struct CbrtBody {
    template <class V>
    static typename V::vd abs_root(typename V::vd a) {
        using S = CbrtSteps<V>;
        const typename V::vd u = S::first(a);
        const typename V::vd c = V::mul(V::mul(a, u), u);
        const typename V::vd f = V::sub(V::splat(1.0), V::mul(c, u));
        if constexpr (LA)
            return refine_root<V>(c, f, series_sum<V>(f, CbrtSeries::d1, CbrtSeries::d2));
        else
            return refine_root<V>(c, f, V::splat(CbrtSeries::d1));
    }
};
struct InvCbrtBodyHA {
    template <class V>
    static typename V::vd abs_root(typename V::vd a) {
        return CbrtSteps<V>::exact(V::div(V::splat(1.0), a));
    }
};
template <bool LA>
struct InvCbrtBody {
    template <class V>
    static typename V::vd abs_root(typename V::vd a) {
        using S = CbrtSteps<V>;
        const typename V::vd u = S::first(a);
        const typename V::vd f = S::residual(a, u);
        if constexpr (LA)
            return refine_root<V>(u, f, series_sum<V>(f, CbrtSeries::c1, CbrtSeries::c2));
        else
            return refine_root<V>(u, f, V::splat(CbrtSeries::c1));
    }
};

template <class Body>
using CbrtKernel = OddRoot<Body, UpToMax, cbrt_callout>;
template <class Body, class Range = UpToMax>
using InvCbrtKernel = OddRoot<Body, Range, inv_cbrt_callout>;

}  // namespace
