// The batch form: the elements go in batches of 64 through two passes over a
// scratch area, a vector pass that reduces each element to the values the
// second needs, and a pass in extended precision (on the x87 stack, under
// the kernel's guard) that finishes them and names the elements it refuses.
// Refused elements then go, in element order, to the callout and the error
// pipeline as in the scratch form. The last batch is shorter: the vector
// pass runs its tail one element at a time. Form: Batch.
//
// Long arrays: each batch first asks for the input further on, as the other
// forms do (loops/stream.h), but the results are stored plainly. Streamed
// through a scratch group, they made Tan HA at n = 1e7 1.0 ns an element
// slower (7.7 against 6.7, 6.4 at n = 1e5): a batch takes some 450 ns, and
// the result lines a batch leaves half written (the output need only be
// 16-byte aligned) wait that long for their other half, too long for the
// processor's write-combining buffers to hold them whole.
//
//   prepare<V>(const double* x, double* t, int count)  the vector pass over
//       count elements; t holds kWords doubles per element, word-major
//       (word k of element i at t[k * 64 + i]; the tail's single elements
//       are given t + i)
//   finish(const double* x, const double* t, double* y, int count) -> uint64_t
//       the extended pass; bit i set refuses element i
//   callout(const double* x, double* y) -> int32_t
#pragma once

#include "kernels/common/loops/report.h"
#include "kernels/common/loops/stream.h"

namespace {

constexpr int kBatch = 64;

template <int Cpu, class V, class F, class S>
inline void batch_loop(int32_t n, const double* a, double* r, const char* name) {
    static_assert(has_form<F, forms::Batch>(), "the batch form takes Batch");
    static_assert(S::in == 1 && S::out == 1, "one input, one output");
    using CD = const double*;
    ZVL_EXACT(F, void(CD, double*, int), template prepare<V>);
    ZVL_EXACT(F, void(CD, double*, int), template prepare<Scalar>);
    ZVL_EXACT(F, uint64_t(CD, CD, double*, int), finish);
    ZVL_EXACT(F, int32_t(CD, double*), callout);
    alignas(64) double t[F::kWords * kBatch];
    alignas(64) double xs[kBatch];
    const LongArray l = long_array(n, r);
    for (int32_t base = 0; base < n; base += kBatch) {
        const int count = n - base < kBatch ? static_cast<int>(n - base) : kBatch;
        const int whole = count & ~(V::lanes - 1);
        fetch_ahead<kBatch>(l, base, a);
        F::template prepare<V>(a + base, t, whole);
        for (int i = whole; i < count; ++i) F::template prepare<Scalar>(a + base + i, t + i, 1);
        // the inputs, kept for the callouts: r may be a
        for (int i = 0; i < count; ++i) xs[i] = a[base + i];
        uint64_t refused = F::finish(xs, t, r + base, count);
        for (; refused != 0; refused &= refused - 1) {
            const int k = __builtin_ctzll(refused);
            const int32_t i = base + k;
            const int32_t st = F::callout(&xs[k], &r[i]);
            if (st != 0) report<Cpu>(st, i, a, a, r, r, name);
        }
    }
}

}  // namespace
