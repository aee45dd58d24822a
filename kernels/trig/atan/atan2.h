// Atan2: r = atan2(a, b), the angle of the point (x, y) = (b, a) by the
// quadrant, y first. The lane mathematics over the SIMD wrappers.
//
//   LA, EP   The smaller of |y|, |x| over the larger by Atan's reciprocal
//            scheme and polynomial, s <= 1 in size, then
//              |y| <= |x|:  atan(s)             x < 0:  pi - atan(s)
//              |y| > |x|:   pi/2 - atan(s)      x < 0:  pi/2 + atan(s)
//            as B + s P(s^2) with s carrying the sign and B in two parts;
//            the sign of y on the result.
//   HA       Atan's five reductions on the quotient (at cpu types 0 and 1
//            with the division instruction and the older polynomial): the interval by |y|
//            against 7/16, 11/16, 19/16 and 39/16 times |x|, t = (|y| -
//            c|x|) / (|x| + c|y|), or -|x| / |y| above (the numerator exact,
//            the denominator in two parts, t in two parts); pi - atan(c)
//            and -t in place of atan(c) and t for x < 0.
//
// Largest errors found against MPFR (2.5 million pairs; see tests/kernels/trig):
//   LA          2.73 ulp at (0x1.b6f43ea87a03ap+5, 0x1.bbb6aea199b6cp+5)
//   EP          relative 2^-28.62 at (0x1.af3fb54ce2073p-44, 0x1.07400adaba8c7p-2)
//   HA          0.543 ulp at (0x1.7c6c187998afcp+0, 0x1.d5ee943fda556p+1)
//   HA older    0.575 ulp at (0x1.2fdacda55fd68p+0, 0x1.5e67b5cfd878cp+1)
//
// Refused pairs: either argument refused by Atan's test (zero, tiny or
// denormal, 2^993 or more, infinite, NaN); in HA also either argument
// below 2^-927 or a quotient below about 2^-960, where the residual of the
// quotient or its low part would lose bits to underflow. The callout takes
// them, exactly, for every mode, with the special values of C99. No status.
//
// Included inside the unnamed namespace of the per-cpu units (see isa.h).
#pragma once

#include "kernels/trig/atan/atan.h"

namespace {

template <class V>
inline int atan2_refused(typename V::vd y, typename V::vd x) {
    return atan_refused<V>(y) | atan_refused<V>(x);
}

template <class Form>
struct Atan2Vector : PerTwin<Atan2Vector<Form>> {
    template <class V>
    static typename V::vd eval(typename V::vd y, typename V::vd x) {
        using vd = typename V::vd;
        const vd sign = splat_bits<V>(Fp64::sign_mask);
        const vd ay = abs_of<V>(y), ax = abs_of<V>(x);
        const vd swap = V::lt(ax, ay);
        const vd x_neg = V::lt(x, V::splat(0.0));
        const vd num = V::select(swap, ax, ay), den = V::select(swap, ay, ax);
        const vd flip = V::and_(V::xor_(swap, x_neg), sign);
        const vd s = V::xor_(divide_refined<V, Form::terms>(num, den), flip);
        const vd B_hi = V::select(swap, V::splat(Pi::half_hi),
                                  V::and_(x_neg, V::splat(Pi::hi)));
        const vd B_lo = V::select(swap, V::splat(Pi::half_lo),
                                  V::and_(x_neg, V::splat(Pi::lo)));
        return V::or_(atan_sum<V, Form>(s, B_hi, B_lo), sign_of<V>(y));
    }
    template <class V>
    static int special(typename V::vd y, typename V::vd x) {
        return atan2_refused<V>(y, x);
    }
    static int32_t callout(const double* y, const double* x, double* r) {
        return zvl::atan2_callout(y, x, r);
    }
};

using Atan2LA = Atan2Vector<AtanLAForm>;
using Atan2EP = Atan2Vector<AtanEPForm>;

template <class Poly, class Recip>
struct Atan2Reducing : PerTwin<Atan2Reducing<Poly, Recip>> {
    template <class V>
    static typename V::vd eval(typename V::vd y, typename V::vd x) {
        using vd = typename V::vd;
        const vd x_neg = V::lt(x, V::splat(0.0));
        const AtanReduced<V> d = atan_reduce<V, Recip>(abs_of<V>(y), abs_of<V>(x));
        const vd r = atan_ha_sum<V, Poly>(d, V::and_(x_neg, splat_bits<V>(5)),
                                          V::and_(x_neg, splat_bits<V>(Fp64::sign_mask)));
        return V::or_(r, sign_of<V>(y));
    }
    // Arguments below 2^-927 (high word 0x06000000), and |y| / |x| below
    // about 2^-960: the high words differ by more than 960 binades.
    template <class V>
    static int special(typename V::vd y, typename V::vd x) {
        using L = Lanes<V::lanes>;
        const typename L::vi d = L::sub(L::hi32(abs_of<V>(y)), L::hi32(abs_of<V>(x)));
        return atan_refused<V, 0x06000000>(y) | atan_refused<V, 0x06000000>(x) |
               L::mask(L::lt(d, L::splat(-(960 << 20))));
    }
    static int32_t callout(const double* y, const double* x, double* r) {
        return zvl::atan2_callout(y, x, r);
    }
};

using Atan2HA = Atan2Reducing<zvl::AtanPolyHA, RecipEstimate>;
// The HA of the cpu types without the vector HA: Atan's older HA on the
// quotient, with the division instruction.
using Atan2OlderHA = Atan2Reducing<zvl::AtanPolyOlder, RecipDivide>;

}  // namespace
