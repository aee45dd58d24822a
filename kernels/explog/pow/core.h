// The arithmetic of Pow shared by every kernel: the stages of the accurate
// core, written once over the SIMD wrappers (the scalar routine runs them
// through the one-lane wrapper), the integer class of y, the exact cases and
// the scalar routine that every Pow and Powx kernel calls for the elements
// its block path refuses.
//
// The accurate core forms 2^(y * log2 x):
//   log2 x = n + T[i] + log2(1 + z/log2e_hi), with M the mantissa of x,
//     i its nearest point 1 + i/1024, R[i] near log2e_hi/(1 + i/1024) with
//     26 bits so that u + e = R*M exactly, and z = u - log2e_hi exact;
//     n + T_hi is exact, and the sum is kept as hi + lo.
//   y * log2 x as hi + lo by a Dekker product (y and the hi part split at
//     26 bits).
//   2^Y = 2^k * 2^(j/128) * 2^t with |t| <= 1/256 + lo, the table in hi and
//     lo, and a degree-5 polynomial for 2^t - 1.
// The scalar routine also settles what the core cannot: the exact cases
// (zero, infinite and NaN arguments, negative bases), results beyond the
// range of doubles, and denormal results, which it rounds once.
//
// Included by the explog units inside their own context (see unit.h).
#pragma once

#include "kernels/common/lanes.h"
#include "kernels/common/unit.h"
#include "kernels/explog/pow/tables.h"

namespace {

struct PowC {
    static constexpr uint64_t kMantMask = 0x000fffffffffffff;
    static constexpr uint64_t kOne = 0x3ff0000000000000;
    static constexpr uint64_t kAbsMask = 0x7fffffffffffffff;
    // clears the low 27 bits: the 26 bits left of two such parts multiply
    // exactly
    static constexpr uint64_t kHi26 = 0xfffffffff8000000;
    // high word of 0.749755859375 (0x3fe7fe0000000000): n counts one more
    // from the mantissa where the table index reaches 512, so that the
    // entries from there on hold log2 less 1 and n + T stays near log2 x
    static constexpr int32_t kNBase = 0x3fe7fe00;
    // -1.4426949024200439, the 23-bit high part of log2 e
    static constexpr double kMinusLog2eHi = zvl::from_bits(0xbff7154740000000);

    // log2(1 + q/log2e_hi) - q: the Taylor terms in q. c1 is the part of the
    // linear term that log2e_hi leaves out (log2e/log2e_hi - 1). c2 itself
    // is used in the two parts below.
    static constexpr double c1 = zvl::from_bits(0x3e79c3a6966457ee);  // 9.597935033233511e-08
    static constexpr double c2 = zvl::from_bits(0xbfd62e4346694107);  // -0.3465736568077919
    // c2 in two parts, 19 bits and the rest: the quadratic term is the one
    // whose rounding would show through y when x is near 1
    static constexpr double c2_hi = zvl::from_bits(0xbfd62e4400000000);  // -0.34657382965087891
    static constexpr double c2_lo = zvl::from_bits(0x3e8732d7df1146f4);  // 1.7284308698405977e-07
    // keeps 17 significant bits: their square has 34, times c2_hi 53
    static constexpr uint64_t kHi17 = 0xfffffff000000000;
    static constexpr double c3 = zvl::from_bits(0x3fc47fd462b3b816);  // 0.16015105075297303
    static constexpr double c4 = zvl::from_bits(0xbfb550472a8bb463);  // -0.08325619496072671
    static constexpr double c5 = zvl::from_bits(0x3fa7a334ddfc9f86);  // 0.04616704187202374
    static constexpr double c6 = zvl::from_bits(0xbf9b4ea0e9419f52);  // -0.026667131649815552
    static constexpr double c7 = zvl::from_bits(0x3f903950cf599c56);  // 0.015843641906397053

    // 52776558133248.0 = 1.5 * 2^45: its ulp is 1/128, so adding it rounds
    // to a multiple of 1/128 and leaves 128 times that in the low bits
    static constexpr double kShifter45 = zvl::from_bits(0x42c8000000000000);

    // 2^t - 1 on |t| <= 1/256, degree 5
    static constexpr double e1 = zvl::from_bits(0x3fe62e42fefa39ef);  // 0.69314718055994529
    static constexpr double e2 = zvl::from_bits(0x3fcebfbdff82c58e);  // 0.24022650695910069
    static constexpr double e3 = zvl::from_bits(0x3fac6b08d704a0bf);  // 0.055504108664821576
    static constexpr double e4 = zvl::from_bits(0x3f83b2ab6fba4e77);  // 0.0096181291076284769
    static constexpr double e5 = zvl::from_bits(0x3f55d87fe78a6731);  // 0.0013333558146428443

    // Block-path bounds: x is taken when positive, normal and finite, y when
    // finite, and y*log2 x below 1021 in magnitude, where 2^k * 2^(j/128+t)
    // is a normal number that the exponent addition can build.
    static constexpr double kMinNormal = zvl::from_bits(0x0010000000000000);
    static constexpr double kMaxFinite = zvl::from_bits(0x7fefffffffffffff);
    static constexpr double kBlockLimit = zvl::from_bits(0x408fe80000000000);  // 1021.0
};

// y split at 26 bits for the Dekker product.
template <class V>
struct PowSplit {
    typename V::vd y, hi, lo;
    explicit PowSplit(typename V::vd v)
        : y(v), hi(V::and_(v, splat_bits<V>(PowC::kHi26))), lo(V::sub(v, hi)) {}
};

// The reduction of x shared by the accurate and the EP logarithm: the
// exponent n, the reciprocal R, the table pair T and the mantissa M.
// `offset` is subtracted from n (52 for a denormal scaled by 2^52).
template <class V>
struct PowReduce {
    typename V::vd n, R, T_hi, T_lo, M;
    PowReduce(typename V::vd x, int32_t offset) {
        using L = Lanes<V::lanes>;
        const typename L::vi hx = L::hi32(x);
        const typename L::vi i =
            L::template srli<10>(L::add(L::and_(hx, L::splat(0xffe00)), L::splat(512)));
        n = L::to_double(L::sub(L::template srai<20>(L::sub(hx, L::splat(PowC::kNBase))),
                                L::splat(offset)));
        R = L::gather(zvl::pow_tables::kR, i);
        L::gather2(zvl::pow_tables::kLog2, i, T_hi, T_lo);
        M = V::or_(V::and_(x, splat_bits<V>(PowC::kMantMask)), splat_bits<V>(PowC::kOne));
    }
};

// z + e = R*M - log2e_hi exactly: R has 26 bits, so R*M_hi and
// R*(M - M_hi) are exact, and u + e is R*M.
template <class V>
inline void pow_reduced(const PowReduce<V>& d, typename V::vd& z, typename V::vd& e) {
    const typename V::vd M_hi = V::and_(d.M, splat_bits<V>(PowC::kHi26));
    const typename V::vd u = V::mul(d.R, d.M);
    const typename V::vd w = V::mul(d.R, M_hi);
    z = V::add(u, V::splat(PowC::kMinusLog2eHi));
    e = V::add(V::mul(V::sub(d.M, M_hi), d.R), V::sub(w, u));
}

// log2 x as h + l with |l| <= ulp(h). For y*log2 x to keep its last bits
// when x is near 1 and y huge, log2 x must hold about 70 bits relative to
// itself, also where it is tiny or the table value and z nearly cancel:
// A + z, then e, then (with Exact2) the quadratic term c2*q^2, exact in its
// high part, are added with their errors kept, and only terms below 2^-30
// of the result round. Without Exact2 the quadratic term rounds with the
// rest of the polynomial: up to 2^-63 of log2 x where x is just outside
// the first table intervals around 1, about an ulp more in the result.
template <class V, bool Exact2 = true>
inline void pow_log2(typename V::vd x, int32_t offset, typename V::vd& h, typename V::vd& l) {
    using vd = typename V::vd;
    const PowReduce<V> d(x, offset);
    vd z, e;
    pow_reduced<V>(d, z, e);
    const vd A = V::add(d.T_hi, d.n);
    const vd q = V::add(z, e);
    vd p = V::mul_add(q, V::splat(PowC::c7), V::splat(PowC::c6));
    p = V::mul_add(p, q, V::splat(PowC::c5));
    p = V::mul_add(p, q, V::splat(PowC::c4));
    p = V::mul_add(p, q, V::splat(PowC::c3));

    // |A| >= |z| unless A is zero, and |A + z| >= |e| unless it is zero:
    // both sums are exact in two parts.
    const vd h0 = V::add(A, z);
    const vd t0 = V::add(V::sub(A, h0), z);
    vd h1 = V::add(h0, e);
    vd rest = V::add(t0, V::add(V::sub(h0, h1), e));

    if constexpr (Exact2) {
        // c2*q^2 with q = z + e: z has at most 42 bits (a multiple of 2^-52
        // below 2^-10), so with z_hi its top 17 bits c2_hi*z_hi^2 is exact,
        // and the rest, (q - z_hi)*(q + z_hi), is 2^-16 of it.
        const vd z_hi = V::and_(z, splat_bits<V>(PowC::kHi17));
        const vd zz = V::mul(z_hi, z_hi);
        const vd P_hi = V::mul(V::splat(PowC::c2_hi), zz);
        const vd cross = V::mul(V::add(V::sub(z, z_hi), e), V::add(V::add(z, z_hi), e));
        const vd P_lo = V::add(V::mul(V::splat(PowC::c2_hi), cross),
                               V::mul(V::splat(PowC::c2_lo), V::add(zz, cross)));
        // q*(c1 + q^2*(c3 + q*(c4 + ...)))
        p = V::mul(V::mul_add(p, V::mul(q, q), V::splat(PowC::c1)), q);
        // |h1| >= |P_hi| unless h1 is zero
        const vd h2 = V::add(h1, P_hi);
        rest = V::add(V::add(rest, V::add(V::sub(h1, h2), P_hi)), V::add(d.T_lo, V::add(P_lo, p)));
        h1 = h2;
    } else {
        p = V::mul_add(p, q, V::splat(PowC::c2));
        p = V::mul(V::mul_add(p, q, V::splat(PowC::c1)), q);
        rest = V::add(rest, V::add(d.T_lo, p));
    }
    h = V::add(h1, rest);
    l = V::add(V::sub(h1, h), rest);
}

// y * (h + l) as Y_hi + Y_lo.
template <class V>
inline void pow_mul(const PowSplit<V>& y, typename V::vd h, typename V::vd l, typename V::vd& Y_hi, typename V::vd& Y_lo) {
    const typename V::vd h_hi = V::and_(h, splat_bits<V>(PowC::kHi26));
    const typename V::vd h_lo = V::sub(h, h_hi);
    Y_hi = V::mul(y.y, h);
    typename V::vd err = V::sub(V::mul(y.hi, h_hi), Y_hi);
    err = V::add(err, V::mul(y.hi, h_lo));
    err = V::add(err, V::mul(y.lo, h_hi));
    err = V::add(err, V::mul(y.lo, h_lo));
    Y_lo = V::add(err, V::mul(y.y, l));
}

// 2^(Y_hi + Y_lo) = 2^k * (hi + lo): hi the table's 2^(j/128), lo the rest.
// WithLo adds the table's lo part (the accurate core); without it the
// result carries the table's rounding, half an ulp more.
template <class V, bool WithLo>
inline void pow_exp2(typename V::vd Y_hi, typename V::vd Y_lo, typename V::vd& hi, typename V::vd& lo,
                     typename Lanes<V::lanes>::vi& k) {
    using L = Lanes<V::lanes>;
    const typename V::vd s = V::add(Y_hi, V::splat(PowC::kShifter45));
    const typename V::vd f = V::sub(s, V::splat(PowC::kShifter45));
    const typename V::vd t = V::add(V::sub(Y_hi, f), Y_lo);
    typename V::vd p = V::mul_add(t, V::splat(PowC::e5), V::splat(PowC::e4));
    p = V::mul_add(p, t, V::splat(PowC::e3));
    p = V::mul_add(p, t, V::splat(PowC::e2));
    p = V::mul_add(p, t, V::splat(PowC::e1));
    p = V::mul(p, t);
    const typename L::vi bits = L::lo32(s);
    const typename L::vi j = L::and_(bits, L::splat(127));
    k = L::template srai<7>(bits);
    if constexpr (WithLo) {
        typename V::vd T_lo;
        L::gather2(zvl::pow_tables::kExp2, j, hi, T_lo);
        lo = V::add(V::mul(hi, p), T_lo);
    } else {
        hi = L::gather(&zvl::pow_tables::kExp2[0][0], L::template slli<1>(j));
        lo = V::mul(hi, p);
    }
}

// --- The scalar routine -------------------------------------------------

// The integer class of y: 0 not an integer, 1 odd, 2 even. From 2^53 on
// every double is even.
inline int pow_yint(double y) {
    const uint32_t ah = zvl::high_word(y) & 0x7fffffffu;
    const uint32_t l = zvl::low_word(y);
    if ((ah | l) == 0) return 2;
    if (ah < 0x3ff00000u || ah > 0x7fefffffu) return 0;
    if (ah >= 0x43400000u) return 2;
    const int32_t e = static_cast<int32_t>((ah & 0x7ff00000u) - 0x3ff00000u) >> 20;
    if (e > 20) {
        const uint32_t w = l << ((e + 11) & 31);
        if (w & 0x7fffffffu) return 0;
        return (w >> 31) ? 1 : 2;
    }
    if (((ah << e) & 0xfffffu) != 0 || l != 0) return 0;
    return ((ah << ((e + 11) & 31)) >> 31) ? 1 : 2;
}

// The exact cases, in their order: the first rule that fits decides. The
// only report is ZVL_STATUS_ERRDOM: a negative base with a non-integer
// exponent, and a zero base with a negative or minus-infinite exponent.
inline int32_t pow_exact(double x, double y, double* r) {
    constexpr double inf = __builtin_inf();
    const uint64_t bx = zvl::bits(x), by = zvl::bits(y);
    const uint32_t ahx = zvl::high_word(x) & 0x7fffffffu, lx = zvl::low_word(x);
    const uint32_t ahy = zvl::high_word(y) & 0x7fffffffu, ly = zvl::low_word(y);
    const bool x_neg = (bx >> 63) != 0, y_neg = (by >> 63) != 0;
    const bool x_zero = (ahx | lx) == 0, y_zero = (ahy | ly) == 0;
    const bool x_inf = ahx == 0x7ff00000u && lx == 0, y_inf = ahy == 0x7ff00000u && ly == 0;
    const bool x_nan = ahx >= 0x7ff00000u && !x_inf, y_nan = ahy >= 0x7ff00000u && !y_inf;
    const bool x_above_one = ahx > 0x3ff00000u || (ahx == 0x3ff00000u && lx != 0);
    const bool x_below_one = ahx < 0x3ff00000u;
    const bool x_unit = ahx == 0x3ff00000u && lx == 0;

    if (y_zero) return *r = 1.0, 0;
    if (x_unit && !x_neg) return *r = 1.0, 0;
    if (x_unit && y_inf) return *r = 1.0, 0;
    if (x_nan) return *r = x, 0;
    if (y_nan) return *r = y, 0;
    if (x_zero && y_inf && y_neg) return *r = inf, ZVL_STATUS_ERRDOM;
    if (x_above_one && y_inf) return *r = y_neg ? 0.0 : inf, 0;
    if (x_below_one && y_inf) return *r = y_neg ? inf : 0.0, 0;
    if (x_inf && !x_neg) return *r = y_neg ? 0.0 : inf, 0;
    if (x_zero && !x_neg) {
        if (y_neg) return *r = inf, ZVL_STATUS_ERRDOM;
        return *r = 0.0, 0;
    }
    if (x_inf) {  // minus infinity
        const bool odd = pow_yint(y) == 1;
        if (!y_neg) return *r = odd ? -inf : inf, 0;
        return *r = odd ? -0.0 : 0.0, 0;
    }
    if (x_neg && !x_zero && !y_inf && pow_yint(y) == 0)
        return *r = zvl::from_bits(0xfff8000000000000), ZVL_STATUS_ERRDOM;
    if (x_zero) {  // minus zero
        const bool odd = pow_yint(y) == 1;
        if (y_neg) return *r = odd ? -inf : inf, ZVL_STATUS_ERRDOM;
        return *r = odd ? -0.0 : 0.0, 0;
    }
    return *r = 0.0, 0;
}

// The accurate core for x > 0 normal and finite, y finite and not zero;
// the result takes `sign`. Overflow and underflow are silent.
inline double pow_core(double x, double y, int32_t offset, double sign) {
    double h, l;
    pow_log2<Scalar>(x, offset, h, l);

    // |y * h| >= 2^(ey + eh) beyond 2^11: far outside the range of doubles.
    const int32_t ey = static_cast<int32_t>((zvl::high_word(y) >> 20) & 0x7ff) - 1023;
    const int32_t eh = static_cast<int32_t>((zvl::high_word(h) >> 20) & 0x7ff) - 1023;
    if (ey + eh > 11) {
        const bool negative = (zvl::bits(y) ^ zvl::bits(h)) >> 63;
        return negative ? sign * 0.0 : sign * __builtin_inf();
    }

    double Y_hi, Y_lo, hi, lo;
    int32_t k;
    pow_mul<Scalar>(PowSplit<Scalar>(y), h, l, Y_hi, Y_lo);
    pow_exp2<Scalar, true>(Y_hi, Y_lo, hi, lo, k);

    if (k >= 1025) return sign * __builtin_inf();
    if (k >= 1023) {
        // 2^k itself would not be a double: build 2^(k-1) and double it
        sign *= 2.0;
        k -= 1;
    } else if (k < -1075) {
        return sign * 0.0;
    } else if (k < -1021) {
        // The result may be denormal: build it 2^111 higher, round that to
        // the grid the result will have (2^-1074, so 2^-963 up there: B's
        // ulp, or twice that where v + B reaches the next binade), and scale
        // back. The part on the grid scales exactly and only the rest
        // rounds, once; below 2^-1021 the final sum is then exact. (From
        // k = -1021 on the result is normal and the exponent build below is
        // exact.)
        constexpr double B = zvl::from_bits(0x0708000000000000);        // 1.5 * 2^-911
        constexpr double kDown = zvl::from_bits(0x3900000000000000);    // 2^-111
        const double S = zvl::from_bits(static_cast<uint64_t>(k + 111 + 1023) << 52);
        const double s_hi = hi * S, s_lo = lo * S;
        const double v = s_hi + s_lo;
        const double H = (v + B) - B;
        const double rest = (s_hi - H) + s_lo;
        return (H * kDown + rest * kDown) * sign;
    }
    const double m = hi + lo;
    return zvl::from_bits(zvl::bits(m) + (static_cast<uint64_t>(static_cast<int64_t>(k)) << 52)) *
           sign;
}

// The callout of every Pow and Powx kernel: the exact result of one element
// and its status.
__attribute__((noinline)) int32_t pow_scalar(double x, double y, double* r) {
    const uint32_t ahy = zvl::high_word(y) & 0x7fffffffu;
    if ((ahy | zvl::low_word(y)) == 0 || ahy >= 0x7ff00000u) return pow_exact(x, y, r);
    const uint32_t hx = zvl::high_word(x);
    if (hx - 0x00100000u < 0x7fe00000u) {  // positive, normal, finite
        *r = pow_core(x, y, 0, 1.0);
        return 0;
    }
    const uint32_t ahx = hx & 0x7fffffffu;
    if ((ahx | zvl::low_word(x)) == 0 || ahx >= 0x7ff00000u) return pow_exact(x, y, r);
    constexpr double k2p52 = 4503599627370496.0;
    if (hx < 0x00100000u) {  // positive denormal
        *r = pow_core(x * k2p52, y, 52, 1.0);
        return 0;
    }
    const int yi = pow_yint(y);
    if (yi == 0) return pow_exact(x, y, r);
    const double ax = -x;
    const double sign = yi == 1 ? -1.0 : 1.0;
    if (ahx < 0x00100000u)
        *r = pow_core(ax * k2p52, y, 52, sign);
    else
        *r = pow_core(ax, y, 0, sign);
    return 0;
}

}  // namespace
