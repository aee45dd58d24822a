// Polynomial evaluation for the inverse trigonometric and hyperbolic
// kernels, over the SIMD wrappers. Coefficient lists are constexpr arrays,
// highest power first, as the generators write them.
//
// Included by the per-cpu units only, inside an unnamed namespace, as isa.h.
#pragma once

#include <cstddef>

#include "kernels/common/isa.h"

namespace {

// sum c[i] z^(N-1-i), i < N, by one Horner chain.
template <class V, size_t N>
inline typename V::vd horner(const double* c, typename V::vd z) {
    typename V::vd p = V::splat(c[0]);
#pragma GCC unroll 32
    for (size_t i = 1; i < N; ++i) p = V::mul_add(p, z, V::splat(c[i]));
    return p;
}

// The same sum by two interleaved chains in w = z^2, one on the even
// powers and one on the odd, joined as even + z odd: half the dependent
// latency of one chain.
template <class V, size_t N>
inline typename V::vd horner2(const double* c, typename V::vd z, typename V::vd w) {
    static_assert(N >= 2, "two chains need two coefficients");
    using vd = typename V::vd;
    vd h0 = V::splat(c[0]), h1 = V::splat(c[1]);
#pragma GCC unroll 32
    for (size_t i = 2; i < N; ++i) {
        if (i % 2 == 0)
            h0 = V::mul_add(h0, w, V::splat(c[i]));
        else
            h1 = V::mul_add(h1, w, V::splat(c[i]));
    }
    // h0 holds the powers of the parity of N - 1
    return (N - 1) % 2 == 0 ? V::mul_add(h1, z, h0) : V::mul_add(h0, z, h1);
}

// The same over a whole list.
template <class V, size_t N>
inline typename V::vd horner(const double (&c)[N], typename V::vd z) {
    return horner<V, N>(&c[0], z);
}
template <class V, size_t N>
inline typename V::vd horner2(const double (&c)[N], typename V::vd z, typename V::vd w) {
    return horner2<V, N>(&c[0], z, w);
}

}  // namespace
