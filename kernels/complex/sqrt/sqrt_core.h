// The double-arithmetic core of the square root members after the
// extended one, written once over the instruction-set wrapper V: zSqrt_fast
// runs it on the one-lane wrapper, the vector members on their lanes.
//
//   rsqrt  1/sqrt(a): a single-precision estimate of the significand with
//          the exponent's parity (a value in [1, 4)), its exponent rebuilt
//          by integer arithmetic on the high words, then the binomial
//          series of (1 + e)^(-1/2) to e^5: within a few units of 2^-53
//   m      |z| = sqrt(x^2 + y^2) as r + d s/2: r = a s for a = x^2 + y^2
//          rounded and s its reciprocal root, d = x^2 + y^2 - r^2 from
//          27-bit halves, where the large terms cancel exactly (b^2 - r^2
//          for b the larger part, then c^2)
//   w, v   the same residual step on T = (|x| + m)/2: w = T s2 + d2 s2/2
//          with s2 = 1/sqrt(T), and v = |y|/(2w) as v0 = (|y|/2) s2
//          corrected by the exact residual |y|/2 - v0 w, without a division
//          and without the square root instruction
// Where |x| is far above |y|, T is |x| itself; where |y| is far above |x|,
// T is |y|/2 and both parts are w. For the slow branch's unbalanced pairs
// outside the band: x_dominant and half_root.
#pragma once

#include "kernels/common/isa.h"
#include "kernels/complex/seeds.h"

namespace {

struct SqrtConst {
    static constexpr uint64_t split_mask = 0xfffffffff8000000;
    // (1 + e)^(-1/2) = 1 + e (c[0] + c[1] e + ... + c[4] e^4): the exact
    // binomial coefficients. The estimate's |e| below 2^-10.4 leaves 0.23
    // e^6 < 2^-64, below the rounding of the double ops.
    static constexpr double series[5] = {-0.5, 0.375, -0.3125, 0.2734375, -0.24609375};
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

    // a's upper 26 significant bits, so that the products of two are exact
    static vd upper(vd a) { return V::and_(a, splat_bits<V>(SqrtConst::split_mask)); }

    // 1/sqrt(a) = s0 (1 + e p(e)) for positive normal a, within about 2^-52
    // relative, and f/sqrt(a) for a factor f beside it: f s0 + (f s0 e) p,
    // ready with the reciprocal root rather than a product after it (f = a
    // gives a s0 once)
    static vd rsqrt(vd a, vd f, vd& f_root) {
        const vd s = rsqrt_seed(a);
        const vd as = V::mul(a, s);
        const vd e = V::sub(V::mul(as, s), k(1.0));
        const double* c = SqrtConst::series;
        const vd e2 = V::mul(e, e);
        const vd p01 = V::add(k(c[0]), V::mul(e, k(c[1])));
        const vd p23 = V::add(k(c[2]), V::mul(e, k(c[3])));
        const vd p = V::add(p01, V::mul(e2, V::add(p23, V::mul(e2, k(c[4])))));
        const vd fs = V::mul(f, s);
        f_root = V::add(fs, V::mul(V::mul(fs, e), p));
        return V::add(s, V::mul(V::mul(s, e), p));
    }

    // |x| and |y| both in [2^-459, 2^511), where every square and product
    // below is a normal double: w = sqrt((|x| + |z|)/2) and v = |y|/(2w), or
    // w = sqrt|x| where `xdom`, and w = v = sqrt(|y|/2) where `ydom`.
    // Arranged for a short chain: each root's product comes with its
    // reciprocal root, and the second root starts from |x|/2 + r/2 while
    // |z|'s residual is still being formed.
    static void roots(vd ax, vd ay, vd xdom, vd ydom, vd& w_out, vd& v_out) {
        const vd half = k(0.5);
        // |z| = r + ml with r2 = r/2 = (a s)/2: with r within a few ulps of
        // |z|, b^2 - r^2 is a multiple of b's ulp squared below 2^53 of
        // them, hence exact
        const vd b = V::max_(ax, ay), c = V::min_(ax, ay);
        const vd a = V::add(V::mul(b, b), V::mul(c, c));
        vd r2;
        const vd s = rsqrt(a, V::mul(a, half), r2);
        const vd r = V::add(r2, r2);
        const vd bh = upper(b), ch = upper(c), rh = upper(r);
        const vd bl = V::sub(b, bh), cl = V::sub(c, ch), rl = V::sub(r, rh);
        const vd big = V::add(V::sub(V::mul(bh, bh), V::mul(rh, rh)), V::mul(ch, ch));
        const vd low = V::sub(V::add(V::mul(bl, V::add(b, bh)), V::mul(cl, V::add(c, ch))), V::mul(rl, V::add(r, rh)));
        const vd ml2 = V::mul(V::add(big, low), V::mul(s, k(0.25)));
        // T = (|x| + |z|)/2 = Th + Tl, the sum's rounding error kept
        const vd q = V::mul(ay, half);
        const DD t = sum_dd(V::mul(ax, half), r2);
        const vd dom = V::or_(xdom, ydom);
        const vd Th = V::select(dom, V::select(xdom, ax, q), t.hi);
        const vd Tl = V::andnot(dom, V::add(t.lo, ml2));
        // w = w0 + cw, w0 = T s2 and cw = (T - w0^2) s2/2, T - wh^2 exact
        vd w0;
        const vd s2 = rsqrt(Th, Th, w0);
        const vd wh = upper(w0), wl = V::sub(w0, wh);
        const vd dw = V::add(V::sub(Th, V::mul(wh, wh)), V::sub(Tl, V::mul(wl, V::add(w0, wh))));
        const vd cw = V::mul(dw, V::mul(s2, half));
        // v = v0 + (q - v0 (w0 + cw)) s2, q - vh wh exact, the cw term late,
        // the two small terms summed before v0 (one rounding)
        const vd v0 = V::mul(q, s2);
        const vd vh = upper(v0), vl = V::sub(v0, vh);
        const vd res = V::sub(V::sub(V::sub(q, V::mul(vh, wh)), V::mul(vh, wl)), V::mul(vl, w0));
        w_out = V::add(w0, cw);
        v_out = V::select(ydom, w_out, V::add(v0, V::sub(V::mul(res, s2), V::mul(V::mul(v0, s2), cw))));
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
