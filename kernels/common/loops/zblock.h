// The block form of the complex vector kernels (vzExp, vzLn): blocks of W
// elements split into their real and imaginary parts, computed by the
// family's vector code, which returns the bits of the lanes it refuses
// (their parts masked to 0 inside, so that they raise nothing there). After
// the block is stored each refused element, in ascending order, is redone
// by the family's scalar routine from the block's copy of its input, so the
// output may be the input array. One to W - 1 elements left after the
// blocks go through the same block with the last element repeated; only
// the real ones are copied back. Nothing is reported. Form: ZBlock.
#pragma once

#include <cstdint>

#include "kernels/common/loops/forms.h"

namespace {

template <class X, int W, class F, class S>
inline void zblock_loop(int32_t n, const typename S::elem* a, typename S::elem* r) {
    using E = typename S::elem;
    static_assert(has_form<F, forms::ZBlock>(), "the block form takes ZBlock");
    static_assert(S::in == 1 && S::out == 1, "one input, one output");
    static_assert(W % X::lanes == 0 && W <= 32, "whole vectors, one mask word");
    ZVL_EXACT(F, uint32_t(const double*, const double*, double*, double*), template block<X, W>);
    ZVL_EXACT(F, void(E*, const E*), element);
    alignas(32) double x[W], y[W], u[W], v[W];
    for (int32_t i = 0; i < n; i += W) {
        const int m = n - i < W ? static_cast<int>(n - i) : W;
        for (int k = 0; k < m; ++k) {
            x[k] = a[i + k].real;
            y[k] = a[i + k].imag;
        }
        for (int k = m; k < W; ++k) {
            x[k] = x[m - 1];
            y[k] = y[m - 1];
        }
        uint32_t refused = F::template block<X, W>(x, y, u, v);
        for (int k = 0; k < m; ++k) r[i + k] = E{u[k], v[k]};
        if (m < W) refused &= (1u << m) - 1;
        while (refused != 0) {
            const int k = __builtin_ctz(refused);
            refused &= refused - 1;
            const E in{x[k], y[k]};
            E out;
            F::element(&out, &in);
            r[i + k] = out;
        }
    }
}

// For complex families whose lanes are independent: block() from a
// per-vector lanes<V>(x, y, re, im), which returns the refused lanes' bits
// of one vector.
template <class F>
struct ZPerVector {
    using form = forms::ZBlock;
    template <class V, int W>
    static uint32_t block(const double* x, const double* y, double* re, double* im) {
        uint32_t refused = 0;
        for (int i = 0; i < W; i += V::lanes) {
            typename V::vd a, b;
            refused |= static_cast<uint32_t>(F::template lanes<V>(V::load(x + i), V::load(y + i), a, b)) << i;
            V::store(re + i, a);
            V::store(im + i, b);
        }
        return refused;
    }
    static void element(ZVLComplex16* r, const ZVLComplex16* z) { F::scalar(r, z); }
};

}  // namespace
