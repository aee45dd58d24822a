// Double-double building blocks over the SIMD wrappers of isa.h.
//
// Included by the per-cpu units only, inside an unnamed namespace, as isa.h.
#pragma once

#include "kernels/common/isa.h"

namespace {

// Fast two-sum: s + e == a + b exactly, given that a is zero or its
// exponent is at least b's.
template <class V>
inline void fast_two_sum(typename V::vd a, typename V::vd b, typename V::vd& s,
                         typename V::vd& e) {
    s = V::add(a, b);
    e = V::add(V::sub(a, s), b);
}

}  // namespace
