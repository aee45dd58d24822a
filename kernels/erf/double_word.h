// The double-word step the error functions add to kernels/common/double_word.h:
// the 26-bit split by mask.
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

}  // namespace
