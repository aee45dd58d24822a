// What the rounding kernels share: the rounding instruction by
// vector type, and the one loop they all run in. No rounding kernel reports
// anything, so the loop has no special-lane path into the error pipeline:
// a block either passes its test and is stored, or it is redone element by
// element through the exact element routine.
#pragma once

#include "kernels/common/unit.h"

namespace {

// 128-bit vectors at every cpu type: VEX-encoded at type 5.
#ifdef __SSE4_1__
using V128 = Sse41;
#else
using V128 = V;
#endif

#ifdef __SSE4_1__
// roundpd / roundsd / vroundpd with the immediate of the kernel:
// 0 nearest, 1 down, 2 up, 3 towards zero, 4 current mode, 0xc current mode
// with the inexact exception suppressed.
template <int Imm>
inline double round_by(double x) {
    const __m128d v = _mm_set_sd(x);
    return _mm_cvtsd_f64(_mm_round_sd(v, v, Imm));
}
template <int Imm>
inline __m128d round_by(__m128d x) {
    return _mm_round_pd(x, Imm);
}
#endif
#ifdef __AVX__
template <int Imm>
inline __m256d round_by(__m256d x) {
    return _mm256_round_pd(x, Imm);
}
#endif

// y (and z) from x for n elements, W at a time. F supplies
//   block<V, NV>(x, y[, z])  the block's results; false sends the block to
//                            the element routine instead
//   element(x, &y[, &z])     the exact result of one element
// W == 1 runs the element routine alone. Every block is read whole before
// anything is stored, so the outputs may be the input array.
template <class V, int W, class F, int NOut>
inline void rounding_loop(int32_t n, const double* a, double* y, double* z) {
    const auto element = [&](int32_t i) {
        if constexpr (NOut == 2)
            F::element(a[i], &y[i], &z[i]);
        else
            F::element(a[i], &y[i]);
    };
    if (n <= 0) return;
    int32_t m = 0;
    if constexpr (W > 1) {
        using vd = typename V::vd;
        constexpr int NV = W / V::lanes;
        static_assert(NV * V::lanes == W, "the block is a whole number of vectors");
        m = n & ~(W - 1);
        for (int32_t base = 0; base < m; base += W) {
            vd x[NV], u[NV], v[NV];
            for (int j = 0; j < NV; ++j) x[j] = V::load(a + base + j * V::lanes);
            bool ok;
            if constexpr (NOut == 2)
                ok = F::template block<V, NV>(x, u, v);
            else
                ok = F::template block<V, NV>(x, u);
            if (__builtin_expect(ok, 1)) {
                for (int j = 0; j < NV; ++j) {
                    V::store(y + base + j * V::lanes, u[j]);
                    if constexpr (NOut == 2) V::store(z + base + j * V::lanes, v[j]);
                }
            } else {
                for (int32_t i = base; i < base + W; ++i) element(i);
            }
        }
    }
    for (int32_t i = m; i < n; ++i) element(i);
}

}  // namespace
