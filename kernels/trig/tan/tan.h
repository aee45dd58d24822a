// The vector kernels of Tan (the variants of plan.h).
//
// L and P, LA and EP: a = |x|, N = nearest integer to a 2/pi, r = a - N pi/2
// (four parts for LA, three for EP), and with z = r r the rational form
// tan r = r P(z) / Q(z). For odd N, tan x = -cot r = -Q / (r P): the
// operands of the one division are exchanged by bit 0 of N, which also
// gives the sign, with x's. Two elements a round (the blocks hold whole
// pairs, and two elements left after them run as one pair): when the high
// word of either's |x| is above that of 128000, or either is NaN, both go
// to the callout.
//
// H, HA of cpu types 1 to 5: batches of 64 in three passes. The vector pass
// reduces by pi/2 in three parts to a double word rh + rl (the first two
// parts exact times N), signed for the result, and evaluates the low-order
// terms of P and Q; the extended pass (the x87 unit at 64 bits) takes t =
// rh + rl, num = t (1 + z (P1 + low P)), den = 1 + z (Q1 + low Q) in the
// 64-bit significand, exchanges them for odd N, and shares one reciprocal
// between two elements: R = 1 / (d0 d1), y0 = n0 d1 R, y1 = n1 d0 R (each
// on its own when d0 d1 is zero or infinite in single precision, and when
// the other is refused).
// |x| >= 128000, infinities and NaN go to the callout.
//
// Z, HA of cpu type 0: no extended precision; the scalar tangent's method
// (tangent.h) on vectors, below 12800, where it needs no TrigReduce, so its
// results are the callout's own. Tiny arguments give x.
//
// Included by the trig units inside their own context (see unit.h).
#pragma once

#include "kernels/common/unit.h"
#include "kernels/common/x87.h"
#include "kernels/trig/poly.h"
#include "kernels/trig/tan/tangent.h"

namespace {

struct TanConst {
    // 0.63661977236758138, 2/pi, and the shifter 2^52: a + it holds N in
    // its low bits
    static constexpr double inv_step = zvl::from_bits(0x3fe45f306dc9c883);
    static constexpr double two52 = zvl::from_bits(0x4330000000000000);
    // refused when the high word of |x| is above 0x40ff4000 (128000): from
    // the next double with a larger high word on
    static constexpr double bound = zvl::from_bits(0x40ff400100000000);
    // The rational form of HA and LA, highest first: tan r = r P(z) / Q(z)
    static constexpr double P[] = {zvl::from_bits(0xbedf637dea7c0b2c), zvl::from_bits(0x3f66fc6fe2982a7b),
                                   zvl::from_bits(0xbfc06b97bf03648a), 1.0};
    static constexpr double Q[] = {zvl::from_bits(0xbf2b525b10d0a168), zvl::from_bits(0x3f97e7b68d9a55f3),
                                   zvl::from_bits(0xbfdd8b2134d70767), 1.0};
};

// The sign of the result, bit 0 of N (in the low bit of s) xor x's, and
// all ones where N is odd.
template <class V>
inline typename V::vd tan_sign(typename V::vd s, typename V::vd x) {
    return V::xor_(V::shl_i64(s, 63), sign_of<V>(x));
}
template <class V>
inline typename V::vd tan_odd(typename V::vd s) {
    return V::sub_i64(V::splat(0.0), V::and_(s, splat_bits<V>(1)));
}

// --- L and P: LA and EP --------------------------------------------------------

struct TanLA {
    // pi/2 in four parts
    static constexpr double parts[] = {
        zvl::from_bits(0x3ff921fb40000000), zvl::from_bits(0x3e74442d00000000),
        zvl::from_bits(0x3cf8469880000000), zvl::from_bits(0x3b78cc51701b839a)};
    static constexpr const double (&P)[4] = TanConst::P;
    static constexpr const double (&Q)[4] = TanConst::Q;
};
struct TanEP {
    // pi/2 in three parts, the third holding the rest
    static constexpr double parts[] = {zvl::from_bits(0x3ff921fb40000000), zvl::from_bits(0x3e74442d00000000),
                                       zvl::from_bits(0x3cf8469898cc5170)};
    // degree 5 over 4; the common factor 1.1559 is left in both
    static constexpr double P[] = {zvl::from_bits(0x3f545c936ed9193a), zvl::from_bits(0xbfc079ff5bf6a4df),
                                   zvl::from_bits(0x3ff27e949512aa02)};
    static constexpr double Q[] = {zvl::from_bits(0x3f92e825cc67d220), zvl::from_bits(0xbfe072e2e400ec37),
                                   zvl::from_bits(0x3ff27e949510e8de)};
};

template <class K>
struct TanRational {
    using form = forms::BlockMask;
    static constexpr bool pair_tail = true;
    static constexpr const char* label = "dTan_LA";

    template <class V>
    static typename V::vd eval(typename V::vd x) {
        using vd = typename V::vd;
        const vd a = abs_of<V>(x);
        const vd s = V::add(V::mul(a, V::splat(TanConst::inv_step)), V::splat(TanConst::two52));
        const vd N = V::sub(s, V::splat(TanConst::two52));
        vd r = a;
        for (double part : K::parts) r = V::sub(r, V::mul(N, V::splat(part)));
        const vd z = V::mul(r, r);
        const vd num = V::mul(r, horner<V>(K::P, z));
        const vd den = horner<V>(K::Q, z);
        const vd odd = tan_odd<V>(s);
        const vd q = V::div(V::select(odd, den, num), V::select(odd, num, den));
        return V::xor_(q, tan_sign<V>(s, x));
    }
    // The refused lanes, each with its neighbour of the pair.
    template <class V, int NV>
    static uint32_t block(const typename V::vd* x, typename V::vd* y) {
        uint32_t mask = 0;
        for (int j = 0; j < NV; ++j) {
            y[j] = eval<V>(x[j]);
            const typename V::vd in = V::lt(abs_of<V>(x[j]), V::splat(TanConst::bound));
            mask |= static_cast<uint32_t>(V::mask(not_mask<V>(in))) << (j * V::lanes);
        }
        constexpr uint32_t lanes = static_cast<uint32_t>(NV * V::lanes);
        if constexpr (lanes > 1) mask |= ((mask & 0x55555555u) << 1) | ((mask >> 1) & 0x55555555u);
        return mask;
    }
    static int32_t callout(const double* x, double* y) { return tan_callout(x, y); }
};

// --- H: HA of cpu types 1 to 5 -------------------------------------------------

struct TanBatch {
    using form = forms::Batch;
    static constexpr const char* label = "dTan_HA";
    // s, rh, rl, the low-order terms of P and of Q
    static constexpr int kWords = 5;
    // pi/2 in three parts, the first two negated and exact times N
    static constexpr double A1 = zvl::from_bits(0xbff921fb54400000);  // -1.5707963267341256
    static constexpr double A2 = zvl::from_bits(0xbdd0b4611a600000);  // -6.077100506303966e-11
    static constexpr double A3 = zvl::from_bits(0x3ba3198a2e037073);  // 2.0222662487959506e-21
    static constexpr double bound = 128000.0;

    template <class V>
    static void prepare(const double* x, double* t, int count) {
        using vd = typename V::vd;
        for (int i = 0; i < count; i += V::lanes) {
            const vd xv = V::load(x + i);
            const vd a = abs_of<V>(xv);
            const vd s = V::add(V::mul(a, V::splat(TanConst::inv_step)), V::splat(TanConst::two52));
            const vd N = V::sub(s, V::splat(TanConst::two52));
            const vd u = V::add(a, V::mul(N, V::splat(A1)));
            const vd v = V::mul(N, V::splat(A2));
            const vd w = V::add(u, v);
            const vd e = V::add(V::sub(u, w), v);
            const vd g = V::sub(V::mul(N, V::splat(A3)), e);
            const vd sign = tan_sign<V>(s, xv);
            const vd rh = V::sub(w, g);
            const vd rl = V::sub(V::sub(w, rh), g);
            const vd r = V::add(rh, rl);
            const vd z = V::mul(r, r);
            const double* P = TanConst::P;
            const double* Q = TanConst::Q;
            V::store(t + i, s);
            V::store(t + kBatch + i, V::xor_(rh, sign));
            V::store(t + 2 * kBatch + i, V::xor_(rl, sign));
            V::store(t + 3 * kBatch + i, V::mul(V::add(V::mul(V::splat(P[0]), z), V::splat(P[1])), z));
            V::store(t + 4 * kBatch + i, V::mul(V::add(V::mul(V::splat(Q[0]), z), V::splat(Q[1])), z));
        }
    }

    // odd ? b : a by fcmov. A branch here is taken at random on arguments
    // that do not repeat (half the N are odd), and its mispredictions cost
    // more than the rest of the extended pass.
    static Ext pick(uint32_t odd, Ext a, Ext b) {
        Ext r;
        __asm__("testl %3, %3\n\tfcmovne %%st(1), %%st" : "=t"(r) : "0"(a), "u"(b), "r"(odd) : "cc");
        return r;
    }

    // *p = v rounded to double, stored from the x87 stack (a conversion
    // would store it to the stack frame and load it into a vector register
    // first).
    static void store(double* p, Ext v) { __asm__("fstpl %0" : "=m"(*p) : "t"(v) : "st"); }

    // Numerator and denominator of element i in the 64-bit significand,
    // exchanged for odd N.
    static void terms(const double* t, int i, Ext* n, Ext* d) {
        const Ext tt = ext(t[kBatch + i]) + ext(t[2 * kBatch + i]);
        const Ext z = tt * tt;
        const Ext num = tt * (1 + z * (ext(TanConst::P[2]) + ext(t[3 * kBatch + i])));
        const Ext den = 1 + z * (ext(TanConst::Q[2]) + ext(t[4 * kBatch + i]));
        const uint32_t odd = zvl::low_word(t[i]) & 1u;
        *n = pick(odd, num, den);
        *d = pick(odd, den, num);
    }

    static uint64_t finish(const double* x, const double* t, double* y, int count) {
        // |x| not below the bound, or NaN, two elements a compare
        uint64_t refused = 0;
        const __m128d abs_mask = _mm_castsi128_pd(_mm_set1_epi64x(0x7fffffffffffffff));
        int i = 0;
        for (; i + 1 < count; i += 2) {
            const __m128d a = _mm_and_pd(_mm_loadu_pd(x + i), abs_mask);
            refused |= static_cast<uint64_t>(_mm_movemask_pd(_mm_cmpnlt_pd(a, _mm_set1_pd(bound)))) << i;
        }
        if (i < count && !(__builtin_fabs(x[i]) < bound)) refused |= uint64_t{1} << i;
        for (i = 0; i + 1 < count; i += 2) {
            Ext n0, d0, n1, d1;
            terms(t, i, &n0, &d0);
            terms(t, i + 1, &n1, &d1);
            const Ext D = d0 * d1;
            // a refused element (its terms are whatever its input gave)
            // leaves its partner divided alone, as a lone element is
            if ((refused >> i & 3u) == 0 && single_image_finite_nonzero(D)) {
                const Ext R = reciprocal(D);
                store(y + i, n0 * d1 * R);
                store(y + i + 1, n1 * d0 * R);
            } else {
                store(y + i, n0 / d0);
                store(y + i + 1, n1 / d1);
            }
        }
        if (i < count) {
            Ext n, d;
            terms(t, i, &n, &d);
            store(y + i, n / d);
        }
        return refused;
    }
    static int32_t callout(const double* x, double* y) { return tan_callout(x, y); }
};

// --- Z: HA of cpu type 0 -------------------------------------------------------

struct TanSteps : PerVector<TanSteps> {
    static constexpr const char* label = "dTan_HA";
    template <class V>
    static typename V::vd eval(typename V::vd x) {
        const typename V::vd y = tangent_core<V>(x, V::splat(0.0), 0);
        // below 2^-252 tan x rounds to x (and the pole term would divide by x)
        return V::select(V::lt(abs_of<V>(x), V::splat(0x1p-252)), x, y);
    }
    // |x| >= 12800 (the high word at least 0x40c90000), and NaN
    template <class V>
    static typename V::vd special(typename V::vd x) {
        return not_mask<V>(V::lt(abs_of<V>(x), V::splat(12800.0)));
    }
    static int32_t callout(const double* x, double* y) { return tan_callout(x, y); }
};

}  // namespace
