// The arithmetic of Pow shared by the kernels and the scalar routine: the
// stages of the accurate core, written once over the SIMD wrappers (the
// scalar routine, callout.cpp, runs them through the one-lane wrapper).
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
//
// Included by the explog units and by the scalar routine; everything here has
// internal linkage, so each gets its own copy built for its instruction set.
#pragma once

#include "kernels/common/isa.h"
#include "kernels/common/lanes.h"
#include "kernels/common/double_word.h"
#include "kernels/explog/exp/data.h"
#include "kernels/explog/pow/data.h"

namespace {

struct PowC {
    // high word of 0.749755859375 (0x3fe7fe0000000000): n counts one more
    // from the mantissa where the table index reaches 512, so that the
    // entries from there on hold log2 less 1 and n + T stays near log2 x
    static constexpr int32_t n_base = 0x3fe7fe00;
    // -1.4426949024200439, the 23-bit high part of log2 e
    static constexpr double minus_log2e_hi = zvl::from_bits(0xbff7154740000000);

    // log2(1 + q/log2e_hi) - q: the Taylor terms in q. c1 is the part of the
    // linear term that log2e_hi leaves out (log2e/log2e_hi - 1). LA takes c2
    // whole, HA in the two parts below.
    static constexpr double c1 = zvl::from_bits(0x3e79c3a6966457ee);  // 9.597935033233511e-08
    static constexpr double c2 = zvl::from_bits(0xbfd62e4346694107);  // -0.3465736568077919
    // c2 in two parts, 19 bits and the rest: the quadratic term is the one
    // whose rounding would show through y when x is near 1
    static constexpr double c2_hi = zvl::from_bits(0xbfd62e4400000000);  // -0.34657382965087891
    static constexpr double c2_lo = zvl::from_bits(0x3e8732d7df1146f4);  // 1.7284308698405977e-07
    static constexpr double c3 = zvl::from_bits(0x3fc47fd462b3b816);  // 0.16015105075297303
    static constexpr double c4 = zvl::from_bits(0xbfb550472a8bb463);  // -0.08325619496072671
    static constexpr double c5 = zvl::from_bits(0x3fa7a334ddfc9f86);  // 0.04616704187202374
    static constexpr double c6 = zvl::from_bits(0xbf9b4ea0e9419f52);  // -0.026667131649815552
    static constexpr double c7 = zvl::from_bits(0x3f903950cf599c56);  // 0.015843641906397053

    // 52776558133248.0 = 1.5 * 2^45: its ulp is 1/128, so adding it rounds
    // to a multiple of 1/128 and leaves 128 times that in the low bits
    static constexpr double shifter45 = zvl::from_bits(0x42c8000000000000);

    // 2^t - 1 on |t| <= 1/256, degree 5
    static constexpr double e1 = zvl::from_bits(0x3fe62e42fefa39ef);  // 0.69314718055994529
    static constexpr double e2 = zvl::from_bits(0x3fcebfbdff82c58e);  // 0.24022650695910069
    static constexpr double e3 = zvl::from_bits(0x3fac6b08d704a0bf);  // 0.055504108664821576
    static constexpr double e4 = zvl::from_bits(0x3f83b2ab6fba4e77);  // 0.0096181291076284769
    static constexpr double e5 = zvl::from_bits(0x3f55d87fe78a6731);  // 0.0013333558146428443

    // Block-path bounds: x is taken when positive, normal and finite, y when
    // finite, and y*log2 x below 1021 in magnitude, where 2^k * 2^(j/128+t)
    // is a normal number that the exponent addition can build.
    static constexpr double block_limit = zvl::from_bits(0x408fe80000000000);  // 1021.0
};

// y and its split at 26 bits for the exact product.
template <class V>
struct PowSplit {
    typename V::vd y;
    Parts<V> parts;
    explicit PowSplit(typename V::vd v) : y(v), parts(split<V, 26>(v)) {}
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
        uint32_t i[V::lanes];
        L::store(i, L::template srli<10>(L::add(L::and_(hx, L::splat(0xffe00)), L::splat(512))));
        n = L::to_double(
            L::sub(L::template srai<20>(L::sub(hx, L::splat(PowC::n_base))), L::splat(offset)));
        R = V::gather(zvl::pow_table_r, i);
        V::gather_pairs(zvl::pow_table_log2, i, T_hi, T_lo);
        M = V::or_(V::and_(x, splat_bits<V>(Fp64::mant_mask)), splat_bits<V>(Fp64::one));
    }
};

// z + e = R*M - log2e_hi exactly: R has 26 bits, so R*M_hi and
// R*(M - M_hi) are exact, and u + e is R*M.
template <class V>
inline void pow_reduced(const PowReduce<V>& d, typename V::vd& z, typename V::vd& e) {
    const Parts<V> M = split<V, 26>(d.M);
    const typename V::vd u = V::mul(d.R, d.M);
    const typename V::vd w = V::mul(d.R, M.hi);
    z = V::add(u, V::splat(PowC::minus_log2e_hi));
    e = V::add(V::mul(M.lo, d.R), V::sub(w, u));
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
    vd h0, t0, h1, t1;
    fast_two_sum<V>(A, z, h0, t0);
    fast_two_sum<V>(h0, e, h1, t1);
    vd rest = V::add(t0, t1);

    if constexpr (Exact2) {
        // c2*q^2 with q = z + e: z has at most 42 bits (a multiple of 2^-52
        // below 2^-10), so with z_hi its top 17 bits (their square has 34,
        // times c2_hi 53) c2_hi*z_hi^2 is exact,
        // and the rest, (q - z_hi)*(q + z_hi), is 2^-16 of it.
        const Parts<V> zs = split<V, 17>(z);
        const vd z_hi = zs.hi;
        const vd zz = V::mul(z_hi, z_hi);
        const vd P_hi = V::mul(V::splat(PowC::c2_hi), zz);
        const vd cross = V::mul(V::add(zs.lo, e), V::add(V::add(z, z_hi), e));
        const vd P_lo = V::add(V::mul(V::splat(PowC::c2_hi), cross),
                               V::mul(V::splat(PowC::c2_lo), V::add(zz, cross)));
        // q*(c1 + q^2*(c3 + q*(c4 + ...)))
        p = V::mul(V::mul_add(p, V::mul(q, q), V::splat(PowC::c1)), q);
        // |h1| >= |P_hi| unless h1 is zero
        vd h2, t2;
        fast_two_sum<V>(h1, P_hi, h2, t2);
        rest = V::add(V::add(rest, t2), V::add(d.T_lo, V::add(P_lo, p)));
        h1 = h2;
    } else {
        p = V::mul_add(p, q, V::splat(PowC::c2));
        p = V::mul(V::mul_add(p, q, V::splat(PowC::c1)), q);
        rest = V::add(rest, V::add(d.T_lo, p));
    }
    fast_two_sum<V>(h1, rest, h, l);
}

// y * (h + l) as Y_hi + Y_lo.
template <class V>
inline void pow_mul(const PowSplit<V>& y, typename V::vd h, typename V::vd l, typename V::vd& Y_hi,
                    typename V::vd& Y_lo) {
    Y_hi = V::mul(y.y, h);
    Y_lo = V::add(two_product_error<V>(y.parts, split<V, 26>(h), Y_hi), V::mul(y.y, l));
}

// 2^(Y_hi + Y_lo) = 2^k * (hi + lo): hi the table's 2^(j/128), lo the rest.
// WithLo takes the table in hi and lo parts (the accurate core); without it
// the nearest double, whose rounding the result then carries.
template <class V, bool WithLo>
inline void pow_exp2(typename V::vd Y_hi, typename V::vd Y_lo, typename V::vd& hi,
                     typename V::vd& lo, typename Lanes<V::lanes>::vi& k) {
    using L = Lanes<V::lanes>;
    using vd = typename V::vd;
    const vd s = V::add(Y_hi, V::splat(PowC::shifter45));
    const vd f = V::sub(s, V::splat(PowC::shifter45));
    const vd t = V::add(V::sub(Y_hi, f), Y_lo);
    vd p = V::mul_add(t, V::splat(PowC::e5), V::splat(PowC::e4));
    p = V::mul_add(p, t, V::splat(PowC::e3));
    p = V::mul_add(p, t, V::splat(PowC::e2));
    p = V::mul_add(p, t, V::splat(PowC::e1));
    p = V::mul(p, t);
    const typename L::vi bits = L::lo32(s);
    uint32_t j[V::lanes];
    L::store(j, L::and_(bits, L::splat(127)));
    k = L::template srai<7>(bits);
    if constexpr (WithLo) {
        // hi has its low 8 bits clear, so T_lo is up to 2^-44 of it and
        // T_lo*p counts: p multiplies the whole table value
        vd T_lo;
        V::gather_pairs(zvl::exp_table_d, j, hi, T_lo);
        lo = V::add(V::mul(V::add(hi, T_lo), p), T_lo);
    } else {
        hi = V::gather(zvl::exp_table_e, j);
        lo = V::mul(hi, p);
    }
}

}  // namespace
