// The vector kernels of SinCos: both results of an element from one
// reduction (the variants of plan.h).
//
// A, HA at cpu type 5, step pi/256: the remainder and the polynomials of
// Sin's step pi/256 once; the sine from row N, the cosine from row N + 128
// of SinTable512, a quarter turn on. Both results have the bits of Sin HA
// and Cos HA there. |x| > 65568 to the callout.
//
// F, HA at the other cpu types, step pi/64: N = nearest integer to x 64/pi,
// the Taylor polynomials of degrees 7 and 6 (|r| <= pi/128), the step pi/32
// reconstruction on SinCosTable128, the cosine 32 rows on. |x| >= 90112
// and NaN to the callout.
//
// C and D, LA and EP by pi: the sine as Sin LA and EP; the cosine from N
// the nearest integer to x/pi + 1/2 and M = N - 1/2, no pi/2 constant. One
// bound for both, |x| > 2^23 on |x| itself.
//
// H, LA of cpu type 1: N = nearest integer to |x| 2/pi, r = |x| - N pi/2 in
// the four parts of Tan LA, the sine and cosine polynomials of degrees 13
// and 14 both evaluated, and the low two bits of N choose and sign them. A
// high word of |x| above that of 128000, and NaN, to the callout, which
// reports as "dSinCos_LA".
//
// E, EP of cpu type 1: the short form of Sin and Cos, both results masked
// to +0 above 1e15, for infinities and NaN, with no callout.
//
// Every other callout reports as "dSinCos_HA".
//
// Included by the trig units inside their own context (see unit.h).
#pragma once

#include "kernels/trig/sincos/sincos.h"

namespace {

struct SinCosCallout {
    static constexpr const char* label = "dSinCos_HA";
    static int32_t callout(const double* x, double* s, double* c) { return sincos_callout(x, s, c); }
};

// The sine from row N and the cosine from row N + a quarter turn of a table
// of `rows` rows, each by row(j) from the one remainder m.
template <class V, class Row>
inline void sincos_rows(typename V::vd x, const TrigRemainder<V>& m, uint32_t rows, Row row,
                        typename V::vd* s, typename V::vd* c) {
    uint32_t j[V::lanes];
    trig_turned_rows<V>(m, 0, rows, j);
    *s = keep_zero_sign<V>(x, row(j));
    trig_turned_rows<V>(m, rows / 4, rows, j);
    *c = row(j);
}

// --- A: HA, step pi/256 ------------------------------------------------------

struct SinCosA : PerVectorPair<SinCosA>, SinCosCallout {
    template <class V>
    static void eval2(typename V::vd x, typename V::vd* s, typename V::vd* c) {
        const TrigRemainder<V> m = trig_remainder<V, TrigStep256>(x);
        sincos_rows<V>(x, m, 512, [&](const uint32_t* j) { return trig_a_row<V, SinRows512>(m, j); }, s, c);
    }
    template <class V>
    static typename V::vd special(typename V::vd x) {
        return TrigA<SinRows512>::special<V>(x);
    }
};

// --- F: HA, step pi/64 -------------------------------------------------------

struct TrigStep64 {
    // 20.371832715762604, 64/pi, and pi/64 in three parts: P1 has 31
    // significant bits, exact times N below the bound (|N| < 2^21)
    static constexpr double inv_step = zvl::from_bits(0x40345f306dc9c883);
    static constexpr double P1 = zvl::from_bits(0x3fa921fb54400000);  // 0.049087385210441425
    static constexpr double P2 = zvl::from_bits(0x3d80b4611a600000);  // 1.8990939082199894e-12
    static constexpr double P3 = zvl::from_bits(0x3b53198a2e037073);  // 6.3195820274873457e-23
    static constexpr bool split_p1 = false;
    // the Taylor coefficients rounded, sine of degree 7 and cosine of 6
    static constexpr double S[] = {TrigStep32::S7, TrigStep32::S5, TrigStep32::S3};
    static constexpr double C[] = {TrigStep32::C6, TrigStep32::C4, TrigStep32::C2};
};

struct SinCosF : PerVectorPair<SinCosF>, SinCosCallout {
    template <class V>
    static void eval2(typename V::vd x, typename V::vd* s, typename V::vd* c) {
        const TrigRemainder<V> m = trig_remainder<V, TrigStep64>(x);
        sincos_rows<V>(x, m, 128, [&](const uint32_t* j) { return trig_b_row<V>(zvl::SinCosTable128, m, j); },
                       s, c);
    }
    template <class V>
    static typename V::vd special(typename V::vd x) {
        return trig_b_special<V>(x);
    }
};

// --- C and D: LA and EP, reduction by pi -------------------------------------

template <class P>
struct SinCosByPi : PerVectorPair<SinCosByPi<P>>, SinCosCallout {
    template <class V>
    static void eval2(typename V::vd x, typename V::vd* s, typename V::vd* c) {
        using vd = typename V::vd;
        vd N;
        const vd sn = trig_round<V>(x, TrigConst::inv_pi, &N);
        *s = keep_zero_sign<V>(x, trig_by_pi<V, P>(x, sn, N));
        const vd cn = V::add(V::add(V::mul(x, V::splat(TrigConst::inv_pi)), V::splat(0.5)), V::splat(Fp64::shifter));
        const vd M = V::sub(V::sub(cn, V::splat(Fp64::shifter)), V::splat(0.5));
        *c = cos_of_small<V>(x, trig_by_pi<V, P>(x, cn, M));
    }
    template <class V>
    static typename V::vd special(typename V::vd x) {
        return V::lt(V::splat(TrigConst::bound_cos_pi), abs_of<V>(x));
    }
};

// --- H: LA of cpu type 1, reduction by pi/2 ----------------------------------

struct SinCosHalfPi {
    // 2/pi, and pi/2 in the four parts of Tan LA: N pi/2 exact in the first
    // three below the bound (|N| < 2^17)
    static constexpr double inv_step = zvl::from_bits(0x3fe45f306dc9c883);
    static constexpr double P1 = zvl::from_bits(0x3ff921fb40000000);  // 1.5707962512969971
    static constexpr double P2 = zvl::from_bits(0x3e74442d00000000);  // 7.5497894158615964e-08
    static constexpr double P3 = zvl::from_bits(0x3cf8469880000000);  // 5.3903025299577648e-15
    static constexpr double P4 = zvl::from_bits(0x3b78cc51701b839a);  // 3.2820035428735005e-22
    // sin r = r S(z) of degree 13, cos r = C(z) of degree 14, highest first
    static constexpr double S[] = {
        zvl::from_bits(0x3de5d93a5acfd57c), zvl::from_bits(0xbe5ae5e68a2b9ceb),
        zvl::from_bits(0x3ec71de357b1fe7d), zvl::from_bits(0xbf2a01a019c161d5),
        zvl::from_bits(0x3f8111111110f8a6), zvl::from_bits(0xbfc5555555555549), 1.0};
    static constexpr double C[] = {
        zvl::from_bits(0xbda8fae9be8838d4), zvl::from_bits(0x3e21ee9ebdb4b1c4),
        zvl::from_bits(0xbe927e4f809c52ad), zvl::from_bits(0x3efa01a019cb1590),
        zvl::from_bits(0xbf56c16c16c15177), zvl::from_bits(0x3fa555555555554c), -0.5, 1.0};
    // refused when the high word of |x| is above 0x40ff4000 (128000): from
    // the next double with a larger high word on
    static constexpr double bound = zvl::from_bits(0x40ff400100000000);
};

struct SinCosH : PerVectorPair<SinCosH> {
    static constexpr const char* label = "dSinCos_LA";
    template <class V>
    static void eval2(typename V::vd x, typename V::vd* s, typename V::vd* c) {
        using vd = typename V::vd;
        using T = SinCosHalfPi;
        const vd a = abs_of<V>(x);
        vd N;
        const vd q = trig_round<V>(a, T::inv_step, &N);
        vd r = V::sub(a, V::mul(N, V::splat(T::P1)));
        r = V::sub(r, V::mul(N, V::splat(T::P2)));
        r = V::sub(r, V::mul(N, V::splat(T::P3)));
        r = V::sub(r, V::mul(N, V::splat(T::P4)));
        const vd z = V::mul(r, r);
        const vd sr = V::mul(r, horner<V>(T::S, z));
        const vd cr = horner<V>(T::C, z);
        // bit 0 of N swaps the two, bit 1 negates the sine, bits 0 xor 1 the
        // cosine; the sine takes x's sign
        const vd odd = V::sub_i64(V::splat(0.0), V::and_(q, splat_bits<V>(1)));
        const vd bit0 = V::shl_i64(q, 63);
        const vd bit1 = V::and_(V::shl_i64(q, 62), splat_bits<V>(Fp64::sign_mask));
        const vd sin_a = V::select(odd, cr, sr), cos_a = V::select(odd, sr, cr);
        *s = V::xor_(sin_a, V::xor_(bit1, sign_of<V>(x)));
        *c = V::xor_(cos_a, V::xor_(bit1, bit0));
    }
    template <class V>
    static typename V::vd special(typename V::vd x) {
        return not_mask<V>(V::lt(abs_of<V>(x), V::splat(SinCosHalfPi::bound)));
    }
    static int32_t callout(const double* x, double* s, double* c) { return sincos_callout(x, s, c); }
};

// --- E: EP of cpu type 1, the short form ------------------------------------

struct SinCosE : PerVectorPair<SinCosE> {
    template <class V>
    static void eval2(typename V::vd x, typename V::vd* s, typename V::vd* c) {
        trig_short<V>(x, s, c);
        *s = trig_short_mask<V>(x, *s);
        *c = trig_short_mask<V>(x, *c);
    }
    template <class V>
    static typename V::vd special(typename V::vd) {
        return V::splat(0.0);
    }
    // never called: no lane is refused
    static int32_t callout(const double* x, double* s, double* c) {
        *s = *c = *x * 0.0;
        return 0;
    }
};

}  // namespace
