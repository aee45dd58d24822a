// The restart form: the block is computed and its range test made; if any
// lane fails the test the whole block is discarded and each of its elements
// run through the family's scalar element routine, which stores its result
// and returns a status. The remainder runs through the same routine.
// Forms: Checked, CheckedAt, and Lanes through Restartable.
#pragma once

#include "kernels/common/loops/report.h"
#include "kernels/common/loops/stream.h"

namespace {

// The restart form for a one-input family written for the scratch form
// (Lanes): a block passes when none of its lanes is special, and the element
// routine sends a special element to the callout and any other through the
// block's formula on one lane.
template <class F>
struct Restartable : F {
    using form = forms::Checked;
    template <class V, int NV>
    static bool checked_block(const typename V::vd* x, typename V::vd* y) {
        F::template block<V, NV>(x, y);
        int special = 0;
        for (int j = 0; j < NV; ++j) special |= lane_bits<V>(F::template special<V>(x[j]));
        return special == 0;
    }
    static int32_t element(const double* x, double* y) {
        if (lane_bits<Scalar>(F::template special<Scalar>(*x)) != 0) return F::callout(x, y);
        *y = F::one(*x);
        return 0;
    }
};

// The family the restart loop runs: a Lanes family through Restartable.
template <class F>
using RestartFamily = std::conditional_t<has_form<F, forms::Lanes>(), Restartable<F>, F>;

template <class F, class V, int NV, int NIn>
constexpr void check_restart_form() {
    using vd = typename V::vd;
    using CD = const double*;
    if constexpr (has_form<F, forms::CheckedAt>()) {
        static_assert(NIn == 1, "CheckedAt has one input");
        ZVL_EXACT(F, bool(CD, const vd*, vd*), template checked_block_at<V, NV>);
    } else {
        static_assert(has_form<F, forms::Checked>(), "the restart form takes Checked, CheckedAt or Lanes");
        if constexpr (NIn == 2)
            ZVL_EXACT(F, bool(const vd*, const vd*, vd*), template checked_block<V, NV>);
        else
            ZVL_EXACT(F, bool(const vd*, vd*), template checked_block<V, NV>);
    }
    if constexpr (NIn == 2)
        ZVL_EXACT(F, int32_t(CD, CD, double*), element);
    else
        ZVL_EXACT(F, int32_t(CD, double*), element);
}

template <int Cpu, class F, int NIn>
__attribute__((noinline)) void restart_elements(int32_t from, int32_t to, const double* a,
                                                const double* b, double* r, const char* name) {
    for (int32_t i = from; i < to; ++i) {
        int32_t st;
        if constexpr (NIn == 1)
            st = F::element(&a[i], &r[i]);
        else
            st = F::element(&a[i], &b[i], &r[i]);
        if (st != 0) report<Cpu>(st, i, a, NIn == 1 ? a : b, r, r, name);
    }
}

// One block at `base`: computed, then stored or restarted.
template <int Cpu, class V, int W, class F, int NIn>
inline void restart_block(int32_t base, const double* a, const double* b, double* r,
                          const char* name, const LongArray& l = {}) {
    using vd = typename V::vd;
    constexpr int NV = W / V::lanes;
    vd x[NV], z[NV], y[NV];
    fetch_ahead<W>(l, base, a, NIn == 2 ? b : nullptr);
    for (int j = 0; j < NV; ++j) x[j] = V::load(a + base + j * V::lanes);
    bool ok;
    if constexpr (NIn == 2) {
        for (int j = 0; j < NV; ++j) z[j] = V::load(b + base + j * V::lanes);
        ok = F::template checked_block<V, NV>(x, z, y);
    } else if constexpr (has_form<F, forms::CheckedAt>()) {
        ok = F::template checked_block_at<V, NV>(a + base, x, y);
    } else {
        ok = F::template checked_block<V, NV>(x, y);
    }
    if (__builtin_expect(ok, 1)) {
        for (int j = 0; j < NV; ++j) put<V>(l, r + base + j * V::lanes, y[j]);
    } else {
        restart_elements<Cpu, F, NIn>(base, base + W, a, b, r, name);
    }
}

// The same, kept out of line: the blocks a paired loop takes one at a time.
template <int Cpu, class V, int W, class F, int NIn>
__attribute__((noinline)) void restart_block_apart(int32_t base, const double* a,
                                                   const double* b, double* r,
                                                   const char* name) {
    restart_block<Cpu, V, W, F, NIn>(base, a, b, r, name);
}

template <int Cpu, class V, int W, class Family, class S>
__attribute__((always_inline)) inline void restart_loop(int32_t n, const double* a,
                                                        const double* b, double* r,
                                                        const char* name) {
    using F = RestartFamily<Family>;
    using vd = typename V::vd;
    constexpr int NIn = S::in;
    static_assert(S::out == 1, "the restart form has one output");
    check_restart_form<F, V, W / V::lanes, NIn>();
    if (n <= 0) return;
    const int32_t m = n & ~(W - 1);
    const LongArray l = long_array(n, r);
    if constexpr (has_form<F, forms::CheckedAt>() && W == V::lanes) {
        // Blocks of one vector go two to a round, so that a family reading
        // its inputs shares its integer work between them. A pair with a
        // failing element runs its blocks again one at a time: each still
        // passes or restarts on its own, in element order. So does an odd
        // last block.
        check_restart_form<F, V, 2, NIn>();
        int32_t base = 0;
        for (; base + 2 * W <= m; base += 2 * W) {
            vd x[2], y[2];
            fetch_ahead<2 * W>(l, base, a);
            for (int j = 0; j < 2; ++j) x[j] = V::load(a + base + j * V::lanes);
            if (__builtin_expect(F::template checked_block_at<V, 2>(a + base, x, y), 1)) {
                for (int j = 0; j < 2; ++j) put<V>(l, r + base + j * V::lanes, y[j]);
            } else {
                restart_block_apart<Cpu, V, W, F, NIn>(base, a, b, r, name);
                restart_block_apart<Cpu, V, W, F, NIn>(base + W, a, b, r, name);
            }
        }
        if (base < m) restart_block_apart<Cpu, V, W, F, NIn>(base, a, b, r, name);
    } else {
        for (int32_t base = 0; base < m; base += W)
            restart_block<Cpu, V, W, F, NIn>(base, a, b, r, name, l);
    }
    end_long_array(l);
    if (m < n) restart_elements<Cpu, F, NIn>(m, n, a, b, r, name);
}

}  // namespace
