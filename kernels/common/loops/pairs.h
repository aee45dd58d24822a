// The pairs form of the small division kernels: one vector (two elements) a
// round, stored at once, and only then the divisors tested; a lane that
// fails goes to the pipeline with the family's status. The remainder goes
// one element at a time. Both quotients of a round are stored before its
// reports; the pipeline only reads and writes back the reported element, so
// the results are those of storing and testing one element after the other.
// Form: Pairs.
#pragma once

#include "kernels/common/loops/report.h"
#include "kernels/common/loops/stream.h"

namespace {

template <int Cpu, class V, int W, class F, class S>
inline void pairs_loop(int32_t n, const double* a, const double* b, double* r, const char* name) {
    static_assert(has_form<F, forms::Pairs>(), "the pairs form takes Pairs");
    static_assert(W == V::lanes && S::out == 1, "one vector a round, one output");
    constexpr int NIn = S::in;
    using CD = const double*;
    (void)sizeof(CD);
    if constexpr (NIn == 2)
        ZVL_EXACT(F, int32_t(double, double), status);
    else
        ZVL_EXACT(F, int32_t(double), status);
    int32_t i = 0;
    const LongArray l = long_array(n, r);
    const auto round = [&](auto w, int32_t at) {
        using X = decltype(w);
        constexpr int lanes = X::lanes;
        typename X::vd x{}, z;
        if constexpr (NIn == 2) {
            fetch_ahead<lanes>(l, at, a, b);
            x = X::load(a + at);
            z = X::load(b + at);
            put<X>(l, r + at, F::template eval<X>(x, z));
        } else {
            fetch_ahead<lanes>(l, at, a);
            z = X::load(a + at);
            put<X>(l, r + at, F::template eval<X>(z));
        }
        if (__builtin_expect(X::mask(F::template refused<X>(z)) == 0, 1)) return;
        double av[lanes], bv[lanes];
        if constexpr (NIn == 2) X::store(av, x);
        X::store(bv, z);
        for (int l = 0; l < lanes; ++l) {
            int32_t st;
            if constexpr (NIn == 2)
                st = F::status(av[l], bv[l]);
            else
                st = F::status(bv[l]);
            if (st != 0) report<Cpu>(st, at + l, a, NIn == 2 ? b : a, r, r, name);
        }
    };
    for (; i + V::lanes <= n; i += V::lanes) round(V{}, i);
    end_long_array(l);
    for (; i < n; ++i) round(Scalar{}, i);
}

}  // namespace
