// Double-word arithmetic over the vector wrappers of isa.h: a value carried
// as hi + lo, each sum and product with its rounding error kept. No fused
// multiply-add is used; every step is plain double arithmetic, exact by
// construction.
//
// Included by the per-cpu units only, inside an unnamed namespace, as isa.h.
#pragma once

#include <cstdint>

#include "kernels/common/isa.h"

namespace {

template <class V>
struct Parts {
    typename V::vd hi, lo;
};

// The mask that keeps the leading `bits` significant bits of a normal
// double (the implicit one among them) and clears the rest.
constexpr uint64_t keep_bits(int bits) { return ~((uint64_t{1} << (53 - bits)) - 1); }
static_assert(keep_bits(26) == 0xfffffffff8000000 && keep_bits(17) == 0xfffffff000000000);

// x as hi, its leading Bits significant bits, and lo = x - hi: both exact;
// a product of two hi parts of at most 26 bits each is exact, and lo has up
// to 53 - Bits bits.
template <class V, int Bits>
inline Parts<V> split(typename V::vd x) {
    static_assert(Bits > 0 && Bits < 53, "a split keeps part of the significand");
    const typename V::vd hi = V::and_(x, splat_bits<V>(keep_bits(Bits)));
    return {hi, V::sub(x, hi)};
}

// x's leading 26 significant bits: the product of two such halves is
// exact, and of one with a 27-bit rest too.
template <class V>
inline typename V::vd upper_half(typename V::vd x) {
    return split<V, 26>(x).hi;
}

// 2^-e for x = 2^e m normal (m in [1, 2)), from x's exponent field: the
// factor that takes a low part beside x to the scale x's significand has.
template <class V>
inline typename V::vd exponent_scale(typename V::vd x) {
    return V::sub_i64(splat_bits<V>(0x7fe0000000000000), V::and_(x, splat_bits<V>(Fp64::exp_mask)));
}

// Fast two-sum: s + e == a + b exactly, given that a is zero or its
// exponent is at least b's.
template <class V>
inline void fast_two_sum(typename V::vd a, typename V::vd b, typename V::vd& s,
                         typename V::vd& e) {
    s = V::add(a, b);
    e = V::add(V::sub(a, s), b);
}

// Two-sum: s + e == a + b exactly, whatever their sizes.
template <class V>
inline void two_sum(typename V::vd a, typename V::vd b, typename V::vd& s, typename V::vd& e) {
    s = V::add(a, b);
    const typename V::vd bb = V::sub(s, a);
    e = V::add(V::sub(a, V::sub(s, bb)), V::sub(b, bb));
}

// Two-difference: s + e == a - b exactly, whatever their sizes; the bits of
// two_sum(a, -b) without negating b.
template <class V>
inline void two_diff(typename V::vd a, typename V::vd b, typename V::vd& s, typename V::vd& e) {
    s = V::sub(a, b);
    const typename V::vd bb = V::sub(s, a);
    e = V::sub(V::sub(a, V::sub(s, bb)), V::add(b, bb));
}

// Veltkamp's split: hi with 26 significant bits and lo with at most 26
// (lo takes a sign of its own), hi + lo == x exactly. Round to nearest, and
// |x| below 2^995 so that the scaled x stays finite.
template <class V>
inline Parts<V> veltkamp_split(typename V::vd x) {
    const typename V::vd c = V::mul(V::splat(134217729.0), x);  // 2^27 + 1
    const typename V::vd hi = V::sub(c, V::sub(c, x));
    return {hi, V::sub(x, hi)};
}

// The rounding error of p = a * b from splits of a and b: exact for
// Veltkamp splits (every partial product fits 53 bits) while nothing
// underflows. With 26-bit mask splits the last partial product, lo * lo,
// can take 54 bits and round: e is then within 2^-104 of |a * b| of the
// error.
template <class V>
inline typename V::vd two_product_error(const Parts<V>& a, const Parts<V>& b, typename V::vd p) {
    typename V::vd e = V::sub(V::mul(a.hi, b.hi), p);
    e = V::add(e, V::mul(a.hi, b.lo));
    e = V::add(e, V::mul(a.lo, b.hi));
    return V::add(e, V::mul(a.lo, b.lo));
}

// Two-product: p + e == a * b exactly while nothing underflows or
// overflows.
template <class V>
inline void two_product(typename V::vd a, typename V::vd b, typename V::vd& p, typename V::vd& e) {
    p = V::mul(a, b);
    e = two_product_error<V>(veltkamp_split<V>(a), veltkamp_split<V>(b), p);
}

// p + e == a * b as two_product, from 26-bit cuts rather than Veltkamp's
// splits (a mask and a subtraction a factor): exact but for the rounding of
// the product of the low halves, a relative 2^-104 of a * b, for products
// that neither overflow nor underflow.
template <class V>
inline void two_product_cut(typename V::vd a, typename V::vd b, typename V::vd& p, typename V::vd& e) {
    p = V::mul(a, b);
    e = two_product_error<V>(split<V, 26>(a), split<V, 26>(b), p);
}

// p + e == a * a the same way: one cut, the cross term doubled.
template <class V>
inline void two_square_cut(typename V::vd a, typename V::vd& p, typename V::vd& e) {
    const Parts<V> h = split<V, 26>(a);
    p = V::mul(a, a);
    e = V::add(V::add(V::sub(V::mul(h.hi, h.hi), p), V::mul(V::add(h.hi, h.hi), h.lo)), V::mul(h.lo, h.lo));
}

}  // namespace
