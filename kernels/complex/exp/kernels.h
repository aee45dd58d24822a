// The complex exponential's vector kernel: e^x (cos y + i sin y) on blocks
// of four elements, with the parts x and y of each lane in double
// arithmetic, and zExp_scalar for every element with a part 512 or more in
// size or not finite.
//
// Exponential part: n = round(x 64/ln 2), r = x - n ln 2/64 in two steps,
// e^r - 1 by a polynomial, and E = T + (p + t) T from row n mod 64 of
// exp2_table, kept as a high part of 26 bits and a low part; the scale
// 2^(n >> 6) comes last. Angle part: k = round(y 32/pi), r + c = y -
// k pi/32 in three steps, and the sine from row k mod 64 of sincos_table
// as sin(t) cos(r) + cos(t) sin(r) in a head of exact or saved sums and a
// tail; the cosine is the sine of row (k + 16) mod 64. Both are carried
// times 2^100 so that their small products do not go subnormal before the
// final product with the scale times 2^-100. The results are the products
// of the split parts, the high product added last.
//
// Every operation is branch-free; zeros keep their sign: exp(x +- i0) is
// (e^x, +-0) on this path too.
#pragma once

#include "kernels/common/double_word.h"
#include "kernels/common/unit.h"
#include "kernels/complex/exp/data.h"
#include "kernels/complex/exp/plan.h"
#include "kernels/complex/exp/scalar.h"
#include "kernels/complex/twin.h"

namespace {

namespace zexp {

constexpr uint64_t kShift = 0x4338000000000000;  // 3 * 2^51
constexpr uint64_t kHigh26 = keep_bits(26);

// sin(j pi/32 + r + c) times 2^100, split into a high part of 26 bits and
// the rest; idx holds 2 j for each lane. A row's four words are two
// 16-byte pairs, A S and L D: two pair fetches a lane, not four single
// ones.
template <class V>
inline Parts<V> sine(const uint32_t* idx, typename V::vd r, typename V::vd c, typename V::vd sp,
                     typename V::vd cp) {
    using vd = typename V::vd;
    const double* t = &zvl::sincos_table[0][0];
    vd A, S, L, D;
    V::gather_pairs(t, idx, A, S);
    V::gather_pairs(t + 2, idx, L, D);
    const vd AD = V::add(A, D);
    vd s1, e1, head, e2;
    two_sum<V>(S, V::mul(D, r), s1, e1);
    two_sum<V>(s1, V::mul(A, r), head, e2);
    vd tail = V::add(V::add(L, e1), e2);
    tail = V::add(tail, V::mul(c, AD));
    tail = V::add(tail, V::mul(S, cp));
    tail = V::add(tail, V::mul(AD, sp));
    const vd big = splat_bits<V>(0x4630000000000000);  // 2^100
    head = V::mul(head, big);
    tail = V::mul(tail, big);
    const vd hi = V::and_(head, splat_bits<V>(kHigh26));
    return {hi, V::add(V::sub(head, hi), tail)};
}

template <class V>
inline typename V::vd product(Parts<V> a, Parts<V> b, typename V::vd scale) {
    return V::mul(V::add(V::mul(a.hi, b.hi),
                         V::add(V::mul(a.hi, b.lo), V::add(V::mul(a.lo, b.hi), V::mul(a.lo, b.lo)))),
                  scale);
}

// One vector of lanes: the results' parts and the refused lanes' bits.
template <class V>
__attribute__((always_inline)) inline int lanes(typename V::vd x, typename V::vd y, typename V::vd& re,
                                                typename V::vd& im) {
    using vd = typename V::vd;
    const vd limit = V::splat(512.0);
    const vd ok = V::and_(V::lt(abs_of<V>(x), limit), V::lt(abs_of<V>(y), limit));
    const int refused = V::mask(ok) ^ ((1 << V::lanes) - 1);
    const vd y0 = y;
    x = V::and_(x, ok);
    y = V::and_(y, ok);
    const vd shift = splat_bits<V>(kShift);

    // e^x = 2^(n >> 6) * 2^((n & 63)/64) * e^r
    const vd tn = V::add(V::mul(x, V::splat(92.33248261689366)), shift);
    const vd n = V::sub(tn, shift);
    const vd r = V::sub(V::sub(x, V::mul(n, splat_bits<V>(0x3f862e42fefa0000))),
                        V::mul(n, splat_bits<V>(0x3d1cf79abc9e3b3a)));
    vd q = V::add(splat_bits<V>(0x3f8111123aaf20d3), V::mul(r, splat_bits<V>(0x3f56c16a1c2a3ffd)));
    q = V::add(splat_bits<V>(0x3fa5555555558fcc), V::mul(r, q));
    q = V::add(splat_bits<V>(0x3fc55555555548f8), V::mul(r, q));
    q = V::add(V::splat(0.5), V::mul(r, q));
    const vd p = V::add(r, V::mul(V::mul(r, r), q));
    uint32_t j[V::lanes];
    V::low_words(tn, j);
    for (int i = 0; i < V::lanes; ++i) j[i] &= 63;
    vd T, t;
    V::gather_pairs(&zvl::exp2_table[0][0], j, T, t);
    const vd pt = V::mul(V::add(p, t), T);
    const vd E = V::add(T, pt);
    const vd Eh = V::and_(E, splat_bits<V>(kHigh26));
    const Parts<V> e{Eh, V::add(V::sub(T, Eh), pt)};
    const vd scale = V::shl_i64(
        V::and_(V::add_i64(V::shr_i64(tn, 6), splat_bits<V>(0x3ff)), splat_bits<V>(0x7ff)), 52);

    // y = k pi/32 + r + c
    const vd tk = V::add(V::mul(y, V::splat(10.185916357881302)), shift);
    const vd k = V::sub(tk, shift);
    const vd P2 = splat_bits<V>(0x3d90b4611a600000);
    const vd r0 = V::sub(y, V::mul(k, splat_bits<V>(0x3fb921fb54400000)));
    const vd ra = V::sub(r0, V::mul(k, P2));
    const vd c = V::sub(V::sub(V::sub(r0, ra), V::mul(k, P2)), V::mul(k, splat_bits<V>(0x3b63198a2e037073)));
    const vd u = V::mul(ra, ra);
    vd sp = V::add(V::splat(-1.0 / 5040), V::mul(u, V::splat(2.7557319223985893e-06)));
    sp = V::add(V::splat(1.0 / 120), V::mul(u, sp));
    sp = V::add(V::splat(-1.0 / 6), V::mul(u, sp));
    sp = V::mul(V::mul(ra, u), sp);
    vd cp = V::add(V::splat(-1.0 / 720), V::mul(u, V::splat(2.48015873015873e-05)));
    cp = V::add(V::splat(1.0 / 24), V::mul(u, cp));
    cp = V::add(V::splat(-0.5), V::mul(u, cp));
    cp = V::mul(u, cp);
    uint32_t ks[V::lanes], kc[V::lanes];
    V::low_words(tk, ks);
    for (int i = 0; i < V::lanes; ++i) {
        kc[i] = 2 * ((ks[i] + 16) & 63);
        ks[i] = 2 * (ks[i] & 63);
    }
    const Parts<V> s = sine<V>(ks, ra, c, sp, cp);
    const Parts<V> co = sine<V>(kc, ra, c, sp, cp);

    const vd down = V::mul(scale, splat_bits<V>(0x39b0000000000000));  // 2^-100
    re = product<V>(co, e, down);
    im = product<V>(s, e, down);
    // the imaginary part of e^x (cos 0 + i sin(+-0)) is +-0 itself
    im = V::select(V::eq(y0, V::splat(0.0)), y0, im);
    return refused;
}

}  // namespace zexp

struct ZExpLanes {
    template <class V>
    __attribute__((always_inline)) static int lanes(typename V::vd x, typename V::vd y, typename V::vd& re,
                                                    typename V::vd& im) {
        return zexp::lanes<V>(x, y, re, im);
    }
    static void scalar(ZVLComplex16* r, const ZVLComplex16* z) { zExp_scalar(r, z); }
};

using ZExpFamily = PlannedFamily<zvl::plans::zExp, Shape<1, 1, ZVLComplex16>, Letter<'V', ZPerTwin<ZExpLanes>>>;

}  // namespace

ZVL_KERNELS_Z1(Exp, ZExpFamily)
