// The loop forms every real kernel is built from, and the cell runner that
// picks one by the family's plan. A family supplies the mathematics as a
// struct of static functions (or, carrying data, of const member
// functions) that names its form (loops/forms.h); the forms supply the
// blocks, the special-lane handling, the remainder and the error reports:
//
//   loops/scratch.h  scratch form    Lanes, BlockMask, BlockAt
//   loops/restart.h  restart form    Checked, CheckedAt, Lanes
//   loops/pairs.h    pairs form      Pairs
//   loops/exact.h    exact form      Exact (the rounding family)
//   loops/batch.h    batch form      Batch (vector pass, extended pass)
//   loops/thin.h     thin form       Thin (complex scalar routines)
//   loops/zblock.h   block form      ZBlock (complex vector kernels)
//
// The scratch, restart, pairs and exact forms fetch the input ahead and
// stream their block results past the caches on long arrays
// (loops/stream.h); the batch form fetches ahead only (see loops/batch.h).
//
// Included by the per-cpu units inside their unnamed namespace.
#pragma once

#include "kernels/common/plan.h"
#include "kernels/common/loops/batch.h"
#include "kernels/common/loops/exact.h"
#include "kernels/common/loops/pairs.h"
#include "kernels/common/loops/restart.h"
#include "kernels/common/loops/scratch.h"
#include "kernels/common/loops/thin.h"
#include "kernels/common/loops/zblock.h"

namespace {

using D1Shape = Shape<1, 1>;
using D2Shape = Shape<2, 1>;
using D12Shape = Shape<1, 2>;

// For families whose lanes are independent: block() from a per-vector
// eval<V>(x) (or eval<V>(x, z)), and the remainder's one() from the same.
template <class F>
struct PerVector {
    using form = forms::Lanes;
    template <class V, int NV>
    static void block(const typename V::vd* x, typename V::vd* y) {
#pragma GCC unroll 16
        for (int j = 0; j < NV; ++j) y[j] = F::template eval<V>(x[j]);
    }
    template <class V, int NV>
    static void block(const typename V::vd* x, const typename V::vd* z, typename V::vd* y) {
        for (int j = 0; j < NV; ++j) y[j] = F::template eval<V>(x[j], z[j]);
    }
    static double one(double x) { return F::template eval<Scalar>(x); }
    static double one(double x, double z) { return F::template eval<Scalar>(x, z); }
};

// The same for one input and two outputs: eval2<V>(x, &y, &u).
template <class F>
struct PerVectorPair {
    using form = forms::Lanes;
    template <class V, int NV>
    static void block(const typename V::vd* x, typename V::vd* y, typename V::vd* u) {
#pragma GCC unroll 16
        for (int j = 0; j < NV; ++j) F::template eval2<V>(x[j], &y[j], &u[j]);
    }
    static void one(double x, double* y, double* u) { F::template eval2<Scalar>(x, y, u); }
};

// Runs loop form `L` on wrapper X with blocks of W: the arrays are a, b (the
// second input), r and r2 (the second output), null where the shape has
// none; `f` is the family, an object when it carries data. Left to the
// compiler to inline or not, as the kernel's entry keeps only the guard.
template <int Cpu, zvl::Loop L, class X, int W, class F, class S>
inline void run_loop(const F& f, int32_t n, const double* a,
                                                    const double* b, double* r, double* r2,
                                                    const char* name) {
    if constexpr (L == zvl::Loop::scratch) {
        scratch_loop<Cpu, X, W, F, S>(f, n, a, b, r, r2, name);
    } else if constexpr (L == zvl::Loop::restart) {
        restart_loop<Cpu, X, W, F, S>(n, a, b, r, name);
    } else if constexpr (L == zvl::Loop::pairs) {
        pairs_loop<Cpu, X, W, F, S>(n, a, b, r, name);
    } else if constexpr (L == zvl::Loop::exact) {
        exact_loop<X, W, F, S>(n, a, r, r2);
    } else if constexpr (L == zvl::Loop::batch) {
        batch_loop<Cpu, X, F, S>(n, a, r, name);
    } else {
        static_assert(L != L, "the thin form takes complex elements: see thin_loop");
    }
}

}  // namespace
