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
// Z, HA of cpu type 0: no extended precision. a = |x| = N pi/32 + r + c in
// three parts of pi/32; with N + 8 = 16 q + m, a = q pi/2 + B + r, B = (m -
// 8) pi/32 within a quarter turn of 0, and tan B from TanTable16 as a double
// word. tan r = r + r^3 P(r^2) (|r| <= pi/64) as a double word t; then tan a
// = (tan B + t) / (1 - t tan B) for even q and minus its reciprocal for odd
// q: numerator and denominator as double words, exchanged by the parity of
// q, and one division whose last rounding is the only one that counts (the
// divisor cut to 27 bits and its reciprocal to 26, so that their product is
// exact). 0.55 ulp. |x| >= 12800 and NaN go to the callout.
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
    // 2^52 + 8: a + it holds N + 8 in its low bits
    static constexpr double shifter8 = zvl::from_bits(0x4330000000000008);
    // cut to 27 and to 26 significant bits: the product of two such is exact
    static constexpr uint64_t keep27 = 0xfffffffffc000000;
    static constexpr uint64_t keep26 = 0xfffffffff8000000;

    // Row m = (N + 8) mod 16 of TanTable16: tan B high and low, in each lane.
    template <class V>
    static void row(typename V::vd s, typename V::vd& th, typename V::vd& tl) {
        const double* rows = zvl::TanTable16 + 4;
        if constexpr (V::lanes == 1) {
            const uint32_t m = zvl::low_word(s) & 15u;
            th = rows[2 * m];
            tl = rows[2 * m + 1];
        } else {
            static_assert(V::lanes == 2, "two lanes or one");
            const __m128i si = _mm_castpd_si128(s);
            const unsigned m0 = static_cast<unsigned>(_mm_extract_epi16(si, 0)) & 15u;
            const unsigned m1 = static_cast<unsigned>(_mm_extract_epi16(si, 4)) & 15u;
            // one 16-byte load a row (the empty asm keeps each whole)
            __m128d p0 = _mm_load_pd(rows + 2 * m0), p1 = _mm_load_pd(rows + 2 * m1);
            __asm__("" : "+x"(p0), "+x"(p1));
            th = _mm_unpacklo_pd(p0, p1);
            tl = _mm_unpackhi_pd(p0, p1);
        }
    }

    template <class V>
    static typename V::vd eval(typename V::vd x) {
        using vd = typename V::vd;
        using K = TanScalar;
        const vd one = V::splat(1.0);
        const vd a = abs_of<V>(x);
        const vd s = V::add(V::mul(a, V::splat(K::inv_step)), V::splat(shifter8));
        const vd N = V::sub(s, V::splat(shifter8));
        // a = N pi/32 + r + c, C1 N and C2 N exact
        const vd C2N = V::mul(V::splat(K::C2), N);
        const vd t = V::sub(a, V::mul(V::splat(K::C1), N));
        const vd r = V::sub(t, C2N);
        const vd c = V::sub(V::sub(V::sub(t, r), C2N), V::mul(V::splat(K::C3), N));
        // tan(r + c) = r + cubic, rt rounded
        const vd z = V::mul(r, r);
        const vd z2 = V::mul(z, z);
        const double* c4 = zvl::TanTable16;
        const vd p = V::add(V::mul(V::add(V::mul(V::splat(c4[0]), z), V::splat(c4[1])), z2),
                            V::add(V::mul(V::splat(c4[2]), z), V::splat(c4[3])));
        const vd cubic = V::add(V::mul(V::mul(r, z), p), c);
        const vd rt = V::add(r, cubic);
        vd th, tlow;
        row<V>(s, th, tlow);
        // n = tan B + tan r and d = 1 - tan B tan r, each a double word:
        // th - nh is exact (|tan B| > |rt| or tan B = 0), and that plus r
        // plus cubic is what the sum and the rounding of rt left. d leaves
        // out tan B times rt's rounding and tlow rt, below 2^-57 together.
        vd nh = V::add(th, rt);
        vd nl = V::add(V::add(V::sub(th, nh), r), V::add(cubic, tlow));
        const vd pr = V::mul(th, rt);
        vd dh = V::sub(one, pr);
        vd dl = V::sub(V::sub(one, dh), pr);
        // N + 8 = 16 q + m: tan a = n / d for even q, -d / n for odd
        const vd odd = V::sub_i64(V::splat(0.0), V::and_(V::shr_i64(s, 4), splat_bits<V>(1)));
        const vd kh = V::and_(V::xor_(nh, dh), odd), kl = V::and_(V::xor_(nl, dl), odd);
        nh = V::xor_(nh, kh);
        dh = V::xor_(dh, kh);
        nl = V::xor_(nl, kl);
        dl = V::xor_(dl, kl);
        // n / d with one rounding that counts: D = dh cut to 27 bits, Rs =
        // 1/D cut to 26, so that e = 1 - D Rs is exact; with u = e - (d - D)
        // Rs, below 2^-24, 1/d = Rs (1 + u + u^2) to 2^-72. nh cut to 27
        // bits times Rs is exact, and the rest, below 2^-25 of it, is added
        // last.
        const vd D = V::and_(dh, splat_bits<V>(keep27));
        const vd Rs = V::and_(V::div(one, D), splat_bits<V>(keep26));
        const vd u = V::sub(V::sub(one, V::mul(D, Rs)), V::mul(V::add(V::sub(dh, D), dl), Rs));
        const vd Nt = V::and_(nh, splat_bits<V>(keep27));
        const vd P = V::mul(Nt, Rs);
        const vd nr = V::mul(V::add(V::sub(nh, Nt), nl), Rs);
        const vd nu = V::mul(V::add(P, nr), u);
        const vd q = V::add(P, V::add(V::add(nr, nu), V::mul(nu, u)));
        // x's sign, flipped for odd q
        return V::xor_(q, V::xor_(V::xor_(x, a), V::and_(odd, splat_bits<V>(Fp64::sign_mask))));
    }
    // |x| >= 12800 (the high word at least 0x40c90000), and NaN
    template <class V>
    static typename V::vd special(typename V::vd x) {
        return not_mask<V>(V::lt(abs_of<V>(x), V::splat(12800.0)));
    }
    static int32_t callout(const double* x, double* y) { return tan_callout(x, y); }
};

}  // namespace
