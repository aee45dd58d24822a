// The vector kernels of Sin and Cos (the variants of plan.h).
//
// A, HA, step pi/256: N = nearest integer to x 256/pi, x = N pi/256 + r + c
// (pi/256 in three parts, r + c a double word), and with B = N pi/256 and
// the row of f(B) = vh + vl, f'(B) = dh + dl (dh a power of two):
//
//   f(B + r + c) = f(B) + r f'(B) + ps f'(B) + pc f(B) + c f'(B + r)
//
// with sin r - r = ps, cos r - 1 = pc of degrees 5 and 6; vh + r dh + r dl
// is summed with its rounding errors kept. |x| > 65568 goes to the callout.
//
// B, HA, step pi/32: the callout's method on a 64-row table (SinCosTable64
// for Sin, CosTable64 for Cos, both read at N mod 64) without the
// huge-argument reduction; |x| >= 90112 and NaN go to the callout.
//
// C and D, LA and EP: N = nearest integer to x/pi, r = x - N pi (pi in four
// parts for LA, three for EP), sin x = (-1)^N sin r with sin r = r + r z p(z)
// of degree 15 (LA) or 9 (EP). Cos takes N from x + pi/2 and subtracts
// (N - 1/2) pi, so that cos x = (-1)^N sin r: the half step costs a bit,
// hence its bound of 2^23 on |x + pi/2| against Sin's 2^24 on |x|. A NaN
// passes the bound tests and comes out a NaN, silently.
//
// E, EP of cpu type 1: step pi/32 with the plain doubles of SinCosPairs64
// and the Taylor polynomials of degree 5 and 4, no callout: |x| > 1e15,
// infinities and NaN give +0 and no status. It keeps EP accuracy up to
// 2^18 (N P1 is exact to N = 2^22); beyond, the error grows with x, and
// from 2^51 pi/32 (2.2e14) the shifter no longer rounds x 32/pi to N.
//
// Sin keeps the sign of a zero: the sums give +0 for -0, and x's sign is
// put back where x is zero. Cos by pi gives 1 below 2^-27, not the sine of
// its remainder (1 - 2^-53).
//
// Included by the trig units inside their own context (see unit.h).
#pragma once

#include "kernels/common/unit.h"
#include "kernels/trig/sincos/callout.h"
#include "kernels/trig/sincos/data.h"
#include "kernels/trig/poly.h"

namespace {

struct TrigConst {
    // 1/pi and pi/2
    static constexpr double inv_pi = zvl::from_bits(0x3fd45f306dc9c883);
    static constexpr double half_pi = zvl::from_bits(0x3ff921fb54442d18);
    // pi in parts: LA takes four, EP three, the third holding the rest of pi
    static constexpr double pi1 = zvl::from_bits(0x400921fb40000000);
    static constexpr double pi2 = zvl::from_bits(0x3e84442d00000000);
    static constexpr double pi3_la = zvl::from_bits(0x3d08469880000000);
    static constexpr double pi4_la = zvl::from_bits(0x3b88cc51701b839a);
    static constexpr double pi3_ep = zvl::from_bits(0x3d08469898cc5170);
    // the vector bounds: 65568 (step pi/256), 90112 (step pi/32), 2^24 (Sin
    // by pi), 2^23 (Cos by pi, on x + pi/2), 1e15 (the short form)
    static constexpr double bound256 = zvl::from_bits(0x40f0020000000000);
    static constexpr double bound32 = zvl::from_bits(0x40f6000000000000);
    static constexpr double bound_sin_pi = zvl::from_bits(0x4170000000000000);
    static constexpr double bound_cos_pi = zvl::from_bits(0x4160000000000000);
    static constexpr double bound_short = zvl::from_bits(0x430c6bf526340000);
};

// Row indices of a rounded-and-shifted s: (low bits of s & mask) * words.
template <class V>
inline void trig_rows(typename V::vd s, uint32_t mask, uint32_t words, uint32_t* j) {
    V::low_words(s, j);
    for (int l = 0; l < V::lanes; ++l) j[l] = (j[l] & mask) * words;
}

// s = x inv + the shifter, which holds the nearest integer N to x inv in
// its low bits; N itself as a double.
template <class V>
inline typename V::vd trig_round(typename V::vd x, double inv, typename V::vd* N) {
    const typename V::vd s = V::add(V::mul(x, V::splat(inv)), V::splat(Fp64::shifter));
    *N = V::sub(s, V::splat(Fp64::shifter));
    return s;
}

template <bool IsSin>
inline int32_t sin_or_cos_callout(const double* x, double* y) {
    return IsSin ? sin_callout(x, y) : cos_callout(x, y);
}

// Sin: x's own sign where x is zero (y is +0 there).
template <class V>
inline typename V::vd keep_zero_sign(typename V::vd x, typename V::vd y) {
    return V::or_(y, V::and_(V::eq(x, V::splat(0.0)), x));
}

// --- A: HA, step pi/256 ------------------------------------------------------

struct TrigStep256 {
    // 81.487330863050417, 256/pi, and pi/256 in three parts: P1 has 31
    // significant bits, so N P1 is exact only up to N = 2^22 (x near 51472);
    // up to the bound (|N| < 2^23) x - N P1 is taken in two exact steps, P1
    // split into P1a (22 bits) and P1b. One step left up to half an ulp of x
    // in the remainder: 2.6e5 ulp of sin x at 65568.
    static constexpr double inv_step = zvl::from_bits(0x40545f306dc9c883);
    static constexpr double P1a = zvl::from_bits(0x3f8921fb00000000);  // 0.01227184385061264
    static constexpr double P1b = zvl::from_bits(0x3e25100000000000);  // 2.4519977159798145e-09
    static constexpr double P2 = zvl::from_bits(0x3d60b4611a600000);   // 4.7477347705499734e-13
    static constexpr double P3 = zvl::from_bits(0x3b33198a2e037073);   // 1.5798955068718364e-23
    static constexpr double S5 = zvl::from_bits(0x3f81110fabb3551c);  // 0.0083333229326095146
    static constexpr double S3 = zvl::from_bits(0xbfc5555555554448);  // -0.1666666666665455
    static constexpr double C6 = zvl::from_bits(0xbf56c16ab163b2d7);  // -0.0013888875887985619
    static constexpr double C4 = zvl::from_bits(0x3fa5555555554ccf);  // 0.041666666666651524
    static constexpr double C2 = -0.5;
    static constexpr bool split_p1 = true;
    static constexpr double S[] = {S5, S3};
    static constexpr double C[] = {C6, C4, C2};
};

// The remainder of one step, shared by every row read from it: x = N step
// + r + c, z = r r, sin r - r = ps, cos r - 1 = pc, and each lane's low
// word of the shifted N (the row before any turn).
template <class V>
struct TrigRemainder {
    typename V::vd r, c, z, ps, pc;
    uint32_t w[V::lanes];
};

// T: the step's constants, inv_step, the parts P1 (or P1a and P1b, two
// exact steps) to P3, and the coefficients sin (S) and cos (C) of the
// remainder, highest first, without the leading 1.
template <class V, class T>
inline TrigRemainder<V> trig_remainder(typename V::vd x) {
    using vd = typename V::vd;
    TrigRemainder<V> m;
    vd N;
    const vd s = trig_round<V>(x, T::inv_step, &N);
    vd t;
    if constexpr (T::split_p1)
        t = V::sub(V::sub(x, V::mul(N, V::splat(T::P1a))), V::mul(N, V::splat(T::P1b)));
    else
        t = V::sub(x, V::mul(N, V::splat(T::P1)));
    m.r = V::sub(t, V::mul(N, V::splat(T::P2)));
    m.c = V::sub(V::sub(V::sub(t, m.r), V::mul(N, V::splat(T::P2))), V::mul(N, V::splat(T::P3)));
    m.z = V::mul(m.r, m.r);
    m.ps = V::mul(V::mul(horner<V>(T::S, m.z), m.z), m.r);
    m.pc = V::mul(horner<V>(T::C, m.z), m.z);
    V::low_words(s, m.w);
    return m;
}

// Row indices `turn` rows on, of a table of `rows` rows of four words.
template <class V>
inline void trig_turned_rows(const TrigRemainder<V>& m, uint32_t turn, uint32_t rows, uint32_t* j) {
    for (int l = 0; l < V::lanes; ++l) j[l] = ((m.w[l] + turn) & (rows - 1)) * 4u;
}

// Step pi/256 from the rows j of table K (K the places of its words).
template <class V, class K>
inline typename V::vd trig_a_row(const TrigRemainder<V>& m, const uint32_t* j) {
    using vd = typename V::vd;
    const vd dl = V::gather(K::table + K::dl, j), dh = V::gather(K::table + K::dh, j);
    const vd vh = V::gather(K::table + K::vh, j), vl = V::gather(K::table + K::vl, j);
    const vd a = V::mul(m.r, dh);
    const vd b = V::mul(m.r, dl);
    const vd u = V::add(vh, a);
    const vd e1 = V::add(V::sub(vh, u), a);
    const vd h = V::add(b, u);
    const vd e2 = V::add(V::sub(u, h), b);
    const vd e = V::add(e2, e1);
    const vd d = V::add(dl, dh);
    const vd q = V::add(e, V::mul(m.ps, d));
    const vd w = V::sub(d, V::mul(m.r, vh));
    const vd l = V::add(V::mul(m.c, w), vl);
    return V::add(h, V::add(V::add(q, V::mul(m.pc, vh)), l));
}

// K: the table and the places of its words in a row.
template <class K>
struct TrigA : PerVector<TrigA<K>> {
    template <class V>
    static typename V::vd eval(typename V::vd x) {
        const TrigRemainder<V> m = trig_remainder<V, TrigStep256>(x);
        uint32_t j[V::lanes];
        trig_turned_rows<V>(m, 0, 512, j);
        const typename V::vd y = trig_a_row<V, K>(m, j);
        return K::is_sin ? keep_zero_sign<V>(x, y) : y;
    }
    template <class V>
    static typename V::vd special(typename V::vd x) {
        return V::lt(V::splat(TrigConst::bound256), abs_of<V>(x));
    }
    static int32_t callout(const double* x, double* y) { return sin_or_cos_callout<K::is_sin>(x, y); }
};

struct SinRows512 {
    static constexpr bool is_sin = true;
    static constexpr const double* table = zvl::SinTable512;
    static constexpr int dl = 0, dh = 1, vh = 2, vl = 3;
};
struct CosRows512 {
    static constexpr bool is_sin = false;
    static constexpr const double* table = zvl::CosTable512;
    static constexpr int dl = 0, vh = 1, vl = 2, dh = 3;
};

// --- B: HA, step pi/32 -------------------------------------------------------

// Step pi/32 (and pi/64) from the rows j of a table of the SinCosTable64
// order: cos B low (dl), sin B high (vh), sin B low (vl), cos B high (dh);
// CosTable64 holds cos in place of sin and -sin in place of cos.
template <class V>
inline typename V::vd trig_b_row(const double* table, const TrigRemainder<V>& m, const uint32_t* j) {
    using vd = typename V::vd;
    const vd dl = V::gather(table + 0, j), vh = V::gather(table + 1, j);
    const vd vl = V::gather(table + 2, j), dh = V::gather(table + 3, j);
    const vd r = m.r;
    const vd rdh = V::mul(r, dh), rdl = V::mul(r, dl);
    const vd g = V::add(vh, rdh);
    const vd h = V::add(g, rdl);
    const vd d = V::add(dl, dh);
    const vd sum = V::add(
        V::add(V::add(V::add(V::mul(m.ps, d), V::mul(m.pc, vh)), V::add(V::mul(m.c, V::sub(d, V::mul(r, vh))), vl)),
               V::add(rdh, V::sub(vh, g))),
        V::add(rdl, V::sub(g, h)));
    return V::add(h, sum);
}

// The high-word test of the step pi/32 and pi/64 kernels: |x| >= 90112,
// and NaN.
template <class V>
inline typename V::vd trig_b_special(typename V::vd x) {
    return not_mask<V>(V::lt(abs_of<V>(x), V::splat(TrigConst::bound32)));
}

template <class K>
struct TrigB : PerVector<TrigB<K>> {
    // the callout of the older form reports under this label
    static constexpr const char* label = K::label;

    template <class V>
    static typename V::vd eval(typename V::vd x) {
        const TrigRemainder<V> m = trig_remainder<V, TrigStep32>(x);
        uint32_t j[V::lanes];
        trig_turned_rows<V>(m, 0, 64, j);
        const typename V::vd y = trig_b_row<V>(K::table, m, j);
        return K::is_sin ? keep_zero_sign<V>(x, y) : y;
    }
    template <class V>
    static typename V::vd special(typename V::vd x) {
        return trig_b_special<V>(x);
    }
    static int32_t callout(const double* x, double* y) { return sin_or_cos_callout<K::is_sin>(x, y); }
};

struct SinRows64 {
    static constexpr bool is_sin = true;
    static constexpr const double* table = zvl::SinCosTable64;
    static constexpr const char* label = "dSin_HA";
};
struct CosRows64 {
    static constexpr bool is_sin = false;
    static constexpr const double* table = zvl::CosTable64;
    static constexpr const char* label = "dCos_HA";
};

// --- C and D: LA and EP, reduction by pi -------------------------------------

struct SinPoly15 {
    static constexpr int count = 7;
    static constexpr double c[count] = {
        zvl::from_bits(0xbd69f1517e9f65f0), zvl::from_bits(0x3de60e6bee01d83e),
        zvl::from_bits(0xbe5ae6355aaa4a53), zvl::from_bits(0x3ec71de3806add1a),
        zvl::from_bits(0xbf2a01a019a659dd), zvl::from_bits(0x3f8111111110a573),
        zvl::from_bits(0xbfc55555555554a8)};
    static constexpr bool four_parts = true;
};
struct SinPoly9 {
    static constexpr int count = 4;
    static constexpr double c[count] = {
        zvl::from_bits(0x3ec5dbdf0e4c7dee), zvl::from_bits(0xbf29f6ffeea73463),
        zvl::from_bits(0x3f8110ed3804ca96), zvl::from_bits(0xbfc55554bc836587)};
    static constexpr bool four_parts = false;
};

// (-1)^N sin(x - M pi), N in the low bit of s; M is N for the sine and N
// - 1/2 for the cosine.
template <class V, class P>
inline typename V::vd trig_by_pi(typename V::vd x, typename V::vd s, typename V::vd M) {
    using vd = typename V::vd;
    using T = TrigConst;
    vd r = V::sub(x, V::mul(M, V::splat(T::pi1)));
    r = V::sub(r, V::mul(M, V::splat(T::pi2)));
    if constexpr (P::four_parts) {
        r = V::sub(r, V::mul(M, V::splat(T::pi3_la)));
        r = V::sub(r, V::mul(M, V::splat(T::pi4_la)));
    } else {
        r = V::sub(r, V::mul(M, V::splat(T::pi3_ep)));
    }
    const vd z = V::mul(r, r);
    const vd p = horner<V>(P::c, z);
    return V::xor_(V::add(V::mul(V::mul(p, z), r), r), V::shl_i64(s, 63));
}

// The cosine by pi is 1 below 2^-27, where cos x rounds to 1: r is there
// pi/2 less its rounding, whose sine rounds below 1.
template <class V>
inline typename V::vd cos_of_small(typename V::vd x, typename V::vd y) {
    return V::select(V::lt(abs_of<V>(x), V::splat(0x1p-27)), V::splat(1.0), y);
}

template <bool IsSin, class P>
struct TrigByPi : PerVector<TrigByPi<IsSin, P>> {
    template <class V>
    static typename V::vd eval(typename V::vd x) {
        using vd = typename V::vd;
        using T = TrigConst;
        vd M;
        if constexpr (IsSin) {
            const vd s = trig_round<V>(x, T::inv_pi, &M);
            return keep_zero_sign<V>(x, trig_by_pi<V, P>(x, s, M));
        } else {
            const vd s = trig_round<V>(V::add(x, V::splat(T::half_pi)), T::inv_pi, &M);
            return cos_of_small<V>(x, trig_by_pi<V, P>(x, s, V::sub(M, V::splat(0.5))));
        }
    }
    template <class V>
    static typename V::vd special(typename V::vd x) {
        if constexpr (IsSin) return V::lt(V::splat(TrigConst::bound_sin_pi), abs_of<V>(x));
        return V::lt(V::splat(TrigConst::bound_cos_pi), abs_of<V>(V::add(x, V::splat(TrigConst::half_pi))));
    }
    static int32_t callout(const double* x, double* y) { return sin_or_cos_callout<IsSin>(x, y); }
};

// --- E: EP of cpu type 1, the short form ------------------------------------

// sin x and cos x by the short form, before the mask.
template <class V>
inline void trig_short(typename V::vd x, typename V::vd* sin_x, typename V::vd* cos_x) {
    using vd = typename V::vd;
    using T = TrigStep32;
    vd N;
    const vd s = trig_round<V>(x, T::inv_step, &N);
    // the three parts of pi/32 with no low word kept: the third keeps the
    // relative accuracy near the zeros
    const vd r = V::sub(V::sub(V::sub(x, V::mul(N, V::splat(T::P1))), V::mul(N, V::splat(T::P2))),
                        V::mul(N, V::splat(T::P3)));
    const vd z = V::mul(r, r);
    // sin r = r (1 + z (-1/6 + z/120)), cos r = 1 + z (-1/2 + z/24)
    const vd sr = V::mul(
        r, V::add(V::splat(1.0), V::mul(z, V::add(V::splat(-1.0 / 6.0), V::mul(z, V::splat(1.0 / 120.0))))));
    const vd cr = V::add(V::splat(1.0), V::mul(z, V::add(V::splat(-0.5), V::mul(z, V::splat(1.0 / 24.0)))));
    uint32_t j[V::lanes];
    trig_rows<V>(s, 63u, 1u, j);
    vd cb, sb;
    V::gather_pairs(zvl::SinCosPairs64, j, cb, sb);
    *sin_x = keep_zero_sign<V>(x, V::add(V::mul(cb, sr), V::mul(sb, cr)));
    *cos_x = V::sub(V::mul(cb, cr), V::mul(sb, sr));
}

// +0 above 1e15, for infinities and for NaN.
template <class V>
inline typename V::vd trig_short_mask(typename V::vd x, typename V::vd y) {
    return V::and_(y, V::le(abs_of<V>(x), V::splat(TrigConst::bound_short)));
}

template <bool IsSin>
struct TrigShort : PerVector<TrigShort<IsSin>> {
    template <class V>
    static typename V::vd eval(typename V::vd x) {
        typename V::vd sin_x, cos_x;
        trig_short<V>(x, &sin_x, &cos_x);
        return trig_short_mask<V>(x, IsSin ? sin_x : cos_x);
    }
    template <class V>
    static typename V::vd special(typename V::vd) {
        return V::splat(0.0);
    }
    // never called: no lane is refused
    static int32_t callout(const double* x, double* y) {
        *y = *x * 0.0;
        return 0;
    }
};

}  // namespace
