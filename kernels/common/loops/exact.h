// The exact form of the rounding family, which reports nothing: a block
// either passes its test and is stored, or it is redone element by element
// through the exact element routine. W == 1 runs the element routine
// alone. Every block is read whole before anything is stored, so the
// outputs may be the input array. Form: Exact.
#pragma once

#include "kernels/common/loops/forms.h"
#include "kernels/common/loops/stream.h"

namespace {

template <class V, int W, class F, class S>
inline void exact_loop(int32_t n, const double* a, double* y, double* z) {
    static_assert(has_form<F, forms::Exact>(), "the exact form takes Exact");
    constexpr int NOut = S::out;
    if constexpr (NOut == 2)
        ZVL_EXACT(F, void(double, double*, double*), element);
    else
        ZVL_EXACT(F, void(double, double*), element);
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
        if constexpr (NOut == 2)
            ZVL_EXACT(F, bool(const vd*, vd*, vd*), template block<V, NV>);
        else
            ZVL_EXACT(F, bool(const vd*, vd*), template block<V, NV>);
        m = n & ~(W - 1);
        const LongArray l = long_array(n, y, NOut == 2 ? z : nullptr);
        for (int32_t base = 0; base < m; base += W) {
            vd x[NV], u[NV], v[NV];
            fetch_ahead<W>(l, base, a);
            for (int j = 0; j < NV; ++j) x[j] = V::load(a + base + j * V::lanes);
            bool ok;
            if constexpr (NOut == 2)
                ok = F::template block<V, NV>(x, u, v);
            else
                ok = F::template block<V, NV>(x, u);
            if (__builtin_expect(ok, 1)) {
                for (int j = 0; j < NV; ++j) {
                    put<V>(l, y + base + j * V::lanes, u[j]);
                    if constexpr (NOut == 2) put<V>(l, z + base + j * V::lanes, v[j]);
                }
            } else {
                for (int32_t i = base; i < base + W; ++i) element(i);
            }
        }
        end_long_array(l);
    }
    for (int32_t i = m; i < n; ++i) element(i);
}

}  // namespace
