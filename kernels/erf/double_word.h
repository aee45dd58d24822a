// Double-word steps over the SIMD wrappers of isa.h that the error
// functions share: the 27-bit split and the two-sum in the order their
// compensated paths use. Kept beside these families until the shared
// double-word header of kernels/common has them.
//
// Included inside an unnamed namespace context, as isa.h.
#pragma once

#include "kernels/common/isa.h"
#include "kernels/common/two_sum.h"

namespace {

// 0xFFFFFFFFF8000000 clears the low 27 bits: the leading 26 significant
// bits stay, so that the product of two such parts is exact, and of one with
// a full 27-bit rest too.
constexpr uint64_t kSplitMask = 0xfffffffff8000000;

template <class V>
inline typename V::vd split_hi(typename V::vd a) {
    return V::and_(a, splat_bits<V>(kSplitMask));
}

// s + e == a + b exactly, whatever the magnitudes (Knuth's two-sum, with
// b's share taken first).
template <class V>
inline void two_sum(typename V::vd a, typename V::vd b, typename V::vd& s, typename V::vd& e) {
    s = V::add(a, b);
    const typename V::vd d = V::sub(b, s);
    const typename V::vd bb = V::add(s, d);
    e = V::add(V::add(d, a), V::sub(b, bb));
}

// p + q == a * b up to the product of the two 27-bit rests (below 2^-105
// relative): Dekker's product from 27-bit splits, without fused
// multiply-add.
template <class V>
inline void two_prod(typename V::vd a, typename V::vd b, typename V::vd& p, typename V::vd& q) {
    const typename V::vd ah = split_hi<V>(a), al = V::sub(a, ah);
    const typename V::vd bh = split_hi<V>(b), bl = V::sub(b, bh);
    p = V::mul(a, b);
    q = V::add(V::add(V::add(V::sub(V::mul(ah, bh), p), V::mul(ah, bl)), V::mul(al, bh)),
               V::mul(al, bl));
}

}  // namespace
