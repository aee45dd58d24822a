// Exp: r = e^a.
//
// Every variant rounds x*L, L = 2^s/ln2, to the integer N with the shifter
// (the current rounding mode decides), so x = N*ln2/2^s + t with |t| at most
// about ln2/2^(s+1); N = 2^s*n + j gives e^x = 2^n * 2^(j/2^s) * e^t, with
// 2^(j/2^s) from a table, e^t from a short polynomial, and 2^n put in by
// integer arithmetic on the bits. The modes are different variants:
//
//   A  HA     64 entries hi + lo, t in two parts, degree 5
//   B  LA     1024 entries, t in two parts, degree 3, 2^n added to the entry
//   C  EP     2048 entries scaled to centre the error, first degree in the
//             fraction of x*L above its floor, 2^n added to the result
//   D  LA     128 entries hi + lo, t in two parts, degree 4 (types 1, 2)
//   E  EP     128 entries, t in one part, degree 2 (types 1 to 3)
//
// A lane is special when the high word of |x| exceeds 0x4086232a, that is
// |x| >= 708.39599609375, or x is infinite or NaN; below that bound 2^n is a
// normal number in every variant. Special lanes go to the exp callout,
// which handles them exactly for all modes and reports ZVL_STATUS_OVERFLOW
// above 709.782712893384 and ZVL_STATUS_UNDERFLOW for every denormal or zero
// result; nothing else is reported.
//
// Which variant runs where, with its block width, guard and loop form, is
// Exp's plan (plan.h). The LA kernels under the x87 guard set the x87
// control word to 53-bit precision and leave MXCSR alone, so they, like the
// ones without a guard, compute in the caller's rounding mode.
//
// Largest errors the exp accuracy test finds against MPFR:
//   A  0.517 ulp at 256.24164260445821
//   B  2.11 ulp at 33.220635501885454
//   C  relative 2^-27.06 at 685.00371654068135 (the centring: near 2^-27
//      at both ends of every table interval, x = 0 included)
//   D  3.21 ulp at 666.11173291193336
//   E  relative 2^-28.17 at 659.35896311382214
//   callout, denormal results: 0.502 ulp of 2^-1074 at -708.96371766953689
//
// Included by the explog units inside their own context (see unit.h).
#pragma once

#include "kernels/common/unit.h"
#include "kernels/explog/exp/data.h"

namespace {

using zvl::ExpShared;

// Lanes of `v` masked to a table index, one per lane.
template <class V>
inline void table_index(typename V::vd v, uint32_t mask, uint32_t* j) {
    V::low_words(v, j);
    for (int l = 0; l < V::lanes; ++l) j[l] &= mask;
}

// 2^n for n = floor(N/2^S), N held in the low bits of v: the low bits of
// bits(v) + 1023*2^S, shifted to the exponent field.
template <class V, int S>
inline typename V::vd two_to_n(typename V::vd v) {
    return V::and_(V::shl_i64(V::add_i64(v, splat_bits<V>(uint64_t{1023} << S)), 52 - S),
                   splat_bits<V>(Fp64::exp_mask));
}

// What the variants share: the lane test and the callout. Variant supplies
// eval<V>(x), the block formula on any wrapper.
template <class Variant>
struct ExpLanes : PerVector<Variant> {
    // Not |x| < 708.39599609375, so that a NaN is special as well.
    template <class V>
    static typename V::vd special(typename V::vd x) {
        return not_mask<V>(V::lt(abs_of<V>(x), V::splat(ExpShared::special_from)));
    }
    static int32_t callout(const double* x, double* y) { return zvl::exp_callout(x, y); }
};

// x*L + shifter: N in the low bits.
template <class V>
inline typename V::vd round_shifted(typename V::vd x, double L) {
    return V::add(V::mul(x, V::splat(L)), V::splat(Fp64::shifter));
}

// t = (x - f*hi) - f*lo.
template <class V>
inline typename V::vd reduce(typename V::vd x, typename V::vd f, double hi, double lo) {
    return V::sub(V::sub(x, V::mul(f, V::splat(hi))), V::mul(f, V::splat(lo)));
}

// --- A and D: hi + lo tables -----------------------------------------------
// t in two parts, p = c(t)*t^2 + t, y = T_hi + (p*(T_hi + T_lo) + T_lo): the
// small terms first, so that T_hi comes in with the one rounding that counts.

template <class K>
struct ExpHiLo : ExpLanes<ExpHiLo<K>> {
    template <class V>
    static typename V::vd eval(typename V::vd x) {
        using vd = typename V::vd;
        const vd v = round_shifted<V>(x, K::L);
        const vd f = V::sub(v, V::splat(Fp64::shifter));
        const vd t = reduce<V>(x, f, K::ln2_hi, K::ln2_lo);
        uint32_t j[V::lanes];
        table_index<V>(v, (1u << K::s) - 1, j);
        vd T_hi, T_lo;
        V::gather_pairs(K::table, j, T_hi, T_lo);
        const vd p = V::add(V::mul(K::template c<V>(t), V::mul(t, t)), t);
        const vd y = V::add(T_hi, V::add(V::mul(p, V::add(T_hi, T_lo)), T_lo));
        return V::mul(y, two_to_n<V, K::s>(v));
    }
};

// A, HA: 64 entries, degree 5.
struct ExpAConstants {
    static constexpr int s = 6;
    static constexpr const double* table = zvl::exp_table_a;
    // 92.33248261689366, 64/ln2
    static constexpr double L = zvl::from_bits(0x40571547652b82fe);
    // ln2/64 = ln2_hi + ln2_lo; the 20 clear low bits of ln2_hi keep f*ln2_hi
    // exact for |f| < 2^20
    static constexpr double ln2_hi = zvl::from_bits(0x3f862e42fef00000);  // 0.010830424695086549
    static constexpr double ln2_lo = zvl::from_bits(0x3d7473de6af278ed);  // 1.162596423439437e-12
    static constexpr double c2 = zvl::from_bits(0x3fdfffffffffd97c);      // 0.49999999999945266
    static constexpr double c3 = zvl::from_bits(0x3fc55555555542a1);      // 0.16666666666653376
    static constexpr double c4 = zvl::from_bits(0x3fa555574bc3a1be);      // 0.04166672515731616
    static constexpr double c5 = zvl::from_bits(0x3f81111276409c2c);      // 0.008333343728805863
    template <class V>
    static typename V::vd c(typename V::vd t) {
        return V::mul_add(
            V::mul_add(V::mul_add(V::splat(c5), t, V::splat(c4)), t, V::splat(c3)), t,
            V::splat(c2));
    }
};
using ExpA = ExpHiLo<ExpAConstants>;

// D, LA at types 1 and 2: 128 entries, degree 4. Its polynomial alone is
// off by up to 3e-16 relative at the ends of |t| <= ln2/256: about 3 ulps.
struct ExpDConstants {
    static constexpr int s = 7;
    static constexpr const double* table = zvl::exp_table_d;
    // 184.66496523378731, 128/ln2
    static constexpr double L = zvl::from_bits(0x40671547652b82fe);
    static constexpr double ln2_hi = zvl::from_bits(0x3f762e42fee00000);  // 0.0054152123466337798
    static constexpr double ln2_lo = zvl::from_bits(0x3d7a39ef35793c76);  // 1.4907929134926466e-12
    static constexpr double c2 = zvl::from_bits(0x3fdffffffffffeb0);      // 0.49999999999998135
    static constexpr double c3 = zvl::from_bits(0x3fc55555b7bae976);      // 0.16666671248624326
    static constexpr double c4 = zvl::from_bits(0x3fa55555c2a9c0fa);      // 0.041666679394326736
    template <class V>
    static typename V::vd c(typename V::vd t) {
        return V::mul_add(V::mul_add(V::splat(c4), t, V::splat(c3)), t, V::splat(c2));
    }
};
using ExpD = ExpHiLo<ExpDConstants>;

// --- B: LA at types 3 to 5 --------------------------------------------------

struct ExpB : ExpLanes<ExpB> {
    // 1477.3197218702985, 1024/ln2
    static constexpr double L = zvl::from_bits(0x40971547652b82fe);
    static constexpr double ln2_hi = zvl::from_bits(0x3f462e42fec00000);  // 0.0006769015431018488
    static constexpr double ln2_lo = zvl::from_bits(0x3d5d1cf79abc9e3b);  // 4.137227896298129e-13
    static constexpr double c2 = zvl::from_bits(0x3fe0000001ebfbe0);      // 0.5000000035796539
    static constexpr double c3 = zvl::from_bits(0x3fc5555555555556);      // 0.16666666666666669
    // n shifted up from bits 10 to 21 of v lands in the exponent field;
    // the field's carry into the sign bit is dropped
    static constexpr uint64_t n_field = 0xfff0000000000000;

    template <class V>
    static typename V::vd eval(typename V::vd x) {
        using vd = typename V::vd;
        const vd v = round_shifted<V>(x, L);
        const vd f = V::sub(v, V::splat(Fp64::shifter));
        const vd t = reduce<V>(x, f, ln2_hi, ln2_lo);
        uint32_t j[V::lanes];
        table_index<V>(v, 1023, j);
        const vd T = V::add_i64(V::gather(zvl::exp_table_b, j),
                                V::and_(V::shl_i64(v, 42), splat_bits<V>(n_field)));
        const vd p = V::add(V::mul(V::mul(V::mul_add(V::splat(c3), t, V::splat(c2)), t), t), t);
        return V::add(V::mul(T, p), T);
    }
};

// --- C: EP at types 4 and 5 -------------------------------------------------

struct ExpC : ExpLanes<ExpC> {
    // 2954.639443740597, 2048/ln2
    static constexpr double L = zvl::from_bits(0x40a71547652b82fe);
    // 0.00033850805268231294 = 2^(1/2048) - 1: the chord of 2^(u/2048) over
    // u in [0, 1], which the table's scale centres
    static constexpr double chord = zvl::from_bits(0x3f362f3904051fa1);

    template <class V>
    static typename V::vd eval(typename V::vd x) {
        return pow2_2048<V>(V::mul(x, V::splat(L)));
    }

    // 2^(w/2048) where the result is normal: the table entry of floor(w)
    // and the chord in the fraction above it. Pow's EP stage uses it too.
    template <class V>
    static typename V::vd pow2_2048(typename V::vd w) {
        using vd = typename V::vd;
        // floor(w) by rounding w - 0.5; u = w - floor(w) in [0, 1]
        const vd v = V::add(V::sub(w, V::splat(0.5)), V::splat(Fp64::shifter));
        const vd u = V::sub(w, V::sub(v, V::splat(Fp64::shifter)));
        uint32_t j[V::lanes];
        table_index<V>(v, 2047, j);
        const vd T = V::gather(zvl::exp_table_c, j);
        const vd y = V::add(V::mul(T, V::mul(u, V::splat(chord))), T);
        // n from bits 11 up of v into the exponent field
        return V::add_i64(y, V::shl_i64(V::shr_i64(v, 11), 52));
    }
};

// --- E: EP at types 1 to 3 --------------------------------------------------

struct ExpE : ExpLanes<ExpE> {
    // 184.66496523378731, 128/ln2
    static constexpr double L = zvl::from_bits(0x40671547652b82fe);
    // ln2/128 in one part: its rounding costs at most 2^-44 in t (|f| < 2^17),
    // far below this mode's 2^-26
    static constexpr double ln2 = zvl::from_bits(0x3f762e42fefa39ef);  // 0.0054152123481245725
    static constexpr double c2 = 0.5;

    template <class V>
    static typename V::vd eval(typename V::vd x) {
        using vd = typename V::vd;
        const vd v = round_shifted<V>(x, L);
        const vd f = V::sub(v, V::splat(Fp64::shifter));
        const vd t = V::sub(x, V::mul(f, V::splat(ln2)));
        uint32_t j[V::lanes];
        table_index<V>(v, 127, j);
        const vd T = V::gather(zvl::exp_table_e, j);
        const vd p = V::add(V::mul(V::splat(c2), V::mul(t, t)), t);
        return V::mul(V::add(T, V::mul(T, p)), two_to_n<V, 7>(v));
    }
};

}  // namespace
