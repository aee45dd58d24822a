// Polynomials of the error functions in two Horner chains: the even and the
// odd powers each in y^2, joined at the end. One more multiplication than a
// single chain, and half its latency, which bounds these kernels: a block's
// lanes all wait for their table rows and then run the same long chain.
//
// Included inside an unnamed namespace context, as isa.h.
#pragma once

#include "kernels/common/isa.h"

namespace {

// c[0] + c[1] y + ... + c[N-1] y^(N-1), with y2 = y * y.
template <class V, int N>
inline typename V::vd poly_two_chains(const typename V::vd* c, typename V::vd y,
                                      typename V::vd y2) {
    static_assert(N >= 2, "two chains take two coefficients at least");
    constexpr int top_even = (N - 1) & ~1, top_odd = (N - 2) | 1;
    typename V::vd even = c[top_even], odd = c[top_odd];
    for (int k = top_even - 2; k >= 0; k -= 2) even = V::mul_add(even, y2, c[k]);
    for (int k = top_odd - 2; k >= 1; k -= 2) odd = V::mul_add(odd, y2, c[k]);
    return V::mul_add(odd, y, even);
}

}  // namespace
