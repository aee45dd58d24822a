// Double-word steps the error functions add to kernels/common/double_word.h:
// the 26-bit split by mask and Dekker's product from it.
//
// Included inside an unnamed namespace context, as isa.h.
#pragma once

#include "kernels/common/isa.h"
#include "kernels/common/double_word.h"

namespace {

// 0xFFFFFFFFF8000000 clears the low 27 bits: the leading 26 significant
// bits stay, so that the product of two such parts is exact, and of one with
// a full 27-bit rest too.
template <class V>
inline typename V::vd split_hi(typename V::vd a) {
    return split<V, 26>(a).hi;
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
