// The special-lane tests of the inverse trigonometric and hyperbolic
// families: an integer compare of a high word against a range.
//
// Included by the per-cpu units only, inside an unnamed namespace, as isa.h.
#pragma once

#include <cstdint>

#include "kernels/common/isa.h"
#include "kernels/common/lanes.h"

namespace {

// The high words of |x|, as 32-bit lanes.
template <class V>
inline typename Lanes<V::lanes>::vi abs_high(typename V::vd x) {
    using L = Lanes<V::lanes>;
    return L::and_(L::hi32(x), L::splat(0x7fffffff));
}

// One bit per lane whose word w lies outside [lo, hi): w - lo below hi - lo
// as unsigned numbers, one signed compare once both move down by 2^31.
template <class V>
inline int outside(typename Lanes<V::lanes>::vi w, uint32_t lo, uint32_t hi) {
    using L = Lanes<V::lanes>;
    const typename L::vi d = L::sub(w, L::splat(static_cast<int32_t>(lo + 0x80000000u)));
    const int32_t top = static_cast<int32_t>(hi - lo - 0x80000000u);
    return L::mask(L::lt(d, L::splat(top))) ^ ((1 << V::lanes) - 1);
}

}  // namespace
