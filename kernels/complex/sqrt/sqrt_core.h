// The double-arithmetic core of the square root members after the
// extended one, written once over the instruction-set wrapper V: zSqrt_fast
// runs it on the one-lane wrapper, the vector members on their lanes.
//
//   m      x^2 + y^2 as a two-double sum (27-bit splits), its root from a
//          reciprocal root: a single-precision estimate of the significand
//          with the exponent's parity (a value in [1, 4)), its exponent
//          rebuilt by integer arithmetic on the high words, then the
//          binomial series of (1 + e)^(-1/2) to e^2, and one residual step
//          that makes m a two-double value
//   w, v   the same on (|x| + m)/2: w = sqrt((|x| + m)/2), and v = |y|/(2w)
//          from the reciprocal root and the exact residual of w s - 1,
//          without a division
// For |x| far above |y|: w = sqrt|x| and v = |y|/(2w), corrected by the
// division's remainder and w's residual. For |y| far above |x|: both parts
// sqrt(|y|/2).
#pragma once

#include "kernels/common/isa.h"
#include "kernels/complex/seeds.h"

namespace {

struct SqrtConst {
    static constexpr uint64_t split_mask = 0xfffffffff8000000;
    // (1 + e)^(-1/2) = 1 + e (c[0] + c[1] e): the exact binomial
    // coefficients. The estimate's |e| below 2^-10.4 leaves 0.32 e^3 <
    // 2^-32.6, and each root below is finished by a residual step that
    // squares that error (2^-64 of the root), so the series stops at e^2.
    static constexpr double series[2] = {-0.5, 0.375};
};

template <class V>
struct SqrtCore {
    using vd = typename V::vd;
    struct DD {
        vd hi, lo;
    };

    static vd k(double c) { return V::splat(c); }

    // a b = hi + lo, exact but for the product of the low halves (below
    // 2^-105 of the product)
    static DD mul_dd(vd a, vd b) {
        const vd m = splat_bits<V>(SqrtConst::split_mask);
        const vd ah = V::and_(a, m), al = V::sub(a, ah);
        const vd bh = V::and_(b, m), bl = V::sub(b, bh);
        const vd p = V::mul(a, b);
        const vd lo = V::add(V::add(V::add(V::sub(V::mul(ah, bh), p), V::mul(ah, bl)), V::mul(al, bh)),
                             V::mul(al, bl));
        return {p, lo};
    }

    // a^2 = hi + lo, as mul_dd(a, a) with one split
    static DD sqr_dd(vd a) {
        const vd ah = V::and_(a, splat_bits<V>(SqrtConst::split_mask)), al = V::sub(a, ah);
        const vd p = V::mul(a, a);
        const vd lo = V::add(V::add(V::sub(V::mul(ah, ah), p), V::mul(V::add(ah, ah), al)), V::mul(al, al));
        return {p, lo};
    }

    // a + b = hi + lo exactly
    static DD sum_dd(vd a, vd b) {
        const vd s = V::add(a, b), bb = V::sub(s, a);
        return {s, V::add(V::sub(a, V::sub(s, bb)), V::sub(b, bb))};
    }

    // 1/sqrt(a) for positive normal a, within 2^-32.6
    static vd rsqrt(vd a) {
        const vd s = rsqrt_seed(a);
        const vd e = V::sub(V::mul(V::mul(a, s), s), k(1.0));
        const double* c = SqrtConst::series;
        return V::add(s, V::mul(s, V::mul(e, V::add(k(c[0]), V::mul(e, k(c[1]))))));
    }

    // sqrt(a.hi + a.lo) as a two-double value, and the reciprocal root s
    static DD sqrt_dd(DD a, vd& s) {
        s = rsqrt(a.hi);
        const vd r = V::mul(a.hi, s);
        const DD q = sqr_dd(r);
        const vd d = V::add(V::sub(V::sub(a.hi, q.hi), q.lo), a.lo);
        return {r, V::mul(d, V::mul(s, k(0.5)))};
    }

    // |x| and |y| within 2^58 of each other, both in [2^-459, 2^511)
    static void balanced(vd ax, vd ay, vd& w_out, vd& v_out) {
        const DD x2 = sqr_dd(ax), y2 = sqr_dd(ay);
        const DD s2 = sum_dd(x2.hi, y2.hi);
        vd s;
        const DD m = sqrt_dd({s2.hi, V::add(s2.lo, V::add(x2.lo, y2.lo))}, s);
        const DD t = sum_dd(ax, m.hi);
        const DD w = sqrt_dd({V::mul(t.hi, k(0.5)), V::mul(V::add(t.lo, m.lo), k(0.5))}, s);
        // 1/w = s (1 - e), e = (w.hi + w.lo) s - 1 from the exact product
        const DD ws = mul_dd(w.hi, s);
        const vd e = V::add(V::add(V::sub(ws.hi, k(1.0)), ws.lo), V::mul(w.lo, s));
        const DD p = mul_dd(V::mul(ay, k(0.5)), s);
        w_out = V::add(w.hi, w.lo);
        v_out = V::add(p.hi, V::sub(p.lo, V::mul(p.hi, e)));
    }

    // |x| far above |y|, |y| at least 2^-969: w = sqrt|x| (1 + d) with
    // w^2 - |x| = 2d|x|, and |y|/(2 sqrt|x|) = (|y|/(2w)) (1 + d)
    static void x_dominant(vd ax, vd ay, vd& w_out, vd& v_out) {
        const vd w = V::sqrt(ax), w2 = V::add(w, w);
        const DD q = sqr_dd(w);
        const vd v = V::div(ay, w2);
        const DD p = mul_dd(v, w2);
        const vd rem = V::div(V::sub(V::sub(ay, p.hi), p.lo), w2);
        const vd d = V::div(V::add(V::sub(q.hi, ax), q.lo), V::add(ax, ax));
        w_out = w;
        v_out = V::add(v, V::add(rem, V::mul(v, d)));
    }

    // sqrt(|y|/2), for |y| far above |x|
    static vd half_root(vd ay) { return V::sqrt(V::mul(ay, k(0.5))); }
};

}  // namespace
