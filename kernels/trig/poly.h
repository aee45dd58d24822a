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

// The same sum split by the parity of the powers: even(w) + z odd(w) with
// w = z^2, the two chains interleaved (half the dependent latency of one).
template <class V, size_t N>
inline void horner2_parts(const double* c, typename V::vd w, typename V::vd& even,
                          typename V::vd& odd) {
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
    even = (N - 1) % 2 == 0 ? h0 : h1;
    odd = (N - 1) % 2 == 0 ? h1 : h0;
}

// Long lists (16 terms and more) run four chains in z^4 instead, the same
// operations but for four, in half the dependent latency again.
template <class V, size_t N>
inline typename V::vd horner2(const double* c, typename V::vd z, typename V::vd w) {
    using vd = typename V::vd;
    if constexpr (N >= 16) {
        // chain k holds the powers z^(4i + k), i from the top down
        const vd w2 = V::mul(w, w);
        vd h[4];
        bool started[4] = {false, false, false, false};
#pragma GCC unroll 64
        for (size_t i = 0; i < N; ++i) {
            const size_t k = (N - 1 - i) % 4;
            h[k] = started[k] ? V::mul_add(h[k], w2, V::splat(c[i])) : V::splat(c[i]);
            started[k] = true;
        }
        return V::add(V::mul_add(h[1], z, h[0]), V::mul(w, V::mul_add(h[3], z, h[2])));
    } else {
        vd even, odd;
        horner2_parts<V, N>(c, w, even, odd);
        return V::mul_add(odd, z, even);
    }
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
template <class V, size_t N>
inline void horner2_parts(const double (&c)[N], typename V::vd w, typename V::vd& even,
                          typename V::vd& odd) {
    horner2_parts<V, N>(&c[0], w, even, odd);
}

// s + s^3 P(s^2): the odd series of the inverse functions near 0.
template <class V, size_t N>
inline typename V::vd odd_series(const double (&c)[N], typename V::vd s) {
    const typename V::vd z = V::mul(s, s);
    return V::add(s, V::mul(V::mul(s, z), horner2<V>(c, z, V::mul(z, z))));
}

}  // namespace
