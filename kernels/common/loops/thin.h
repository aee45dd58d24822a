// The thin form of the complex kernels: one scalar routine per element,
// which computes in extended precision under the kernel's x87 guard. The
// element is copied to a local before the call and the result stored after
// it, so the output may be the input array. Nothing is reported: faults show
// in the results and the sticky flags alone. Form: Thin.
#pragma once

#include "kernels/common/loops/forms.h"

namespace {

template <class F, class S>
inline void thin_loop(int32_t n, const typename S::elem* a, const typename S::elem* b,
                      typename S::elem* r) {
    using E = typename S::elem;
    static_assert(has_form<F, forms::Thin>(), "the thin form takes Thin");
    static_assert(S::out == 1, "one output");
    if constexpr (S::in == 2)
        ZVL_EXACT(F, void(E*, const E*, const E*), element);
    else
        ZVL_EXACT(F, void(E*, const E*), element);
    for (int32_t i = 0; i < n; ++i) {
        const E x = a[i];
        E y;
        if constexpr (S::in == 2) {
            const E z = b[i];
            F::element(&y, &x, &z);
        } else {
            F::element(&y, &x);
        }
        r[i] = y;
    }
}

}  // namespace
