// The loop forms every real kernel is built from. A family supplies the
// mathematics as a struct F of static functions; these templates supply the
// blocks, the special-lane handling, the remainder and the error reports.
//
// Scratch form (kernels without a guard or with a full guard around it):
// every lane of a W-element block is computed without branches, then a
// special-lane mask is formed; lanes with their bit set are recomputed one
// at a time, in element order, by the family's exact scalar callout, which
// returns 0 or a status. A reported element is stored to r[i], handed to
// the error pipeline, and its result taken back from r[i], since a callback
// may have replaced it. The remainder runs the block formula one element at
// a time through the Scalar wrapper.
//
//   F::block<V, NV>(x, y)    y[j] = f(x[j]) for the NV = W / V::lanes vectors
//   F::block<V, NV>(x, z, y) the same for two inputs
//   F::one(x) / F::one(x, z) the remainder formula on one element
//   F::special<V>(x)         lanes all ones where the lane is special, or
//                            one bit per special lane as an int
//                            (two inputs: special<V>(x, z))
//   F::callout(&x, &y)       exact scalar result and status (two inputs:
//                            callout(&x, &z, &y))
//
// A family whose special-lane test needs values from inside the block (the
// size of an intermediate, not just the inputs) returns the mask from
// block() instead, bit l for lane l of the block, and has no special(); its
// remainder runs block<Scalar, 1>. A one-input family may instead have
// block_at<V, NV>(src, x, y), which also reads the block's inputs from
// memory (src, the block's first element) and returns that mask; its
// remainder runs one() and special() as usual. A family that carries data
// of its own (a scalar second argument and what depends on it alone) is
// passed as an object `f`; stateless families need not be.
//
// Restart form: the block is computed and its range test made; if any lane
// fails the test the whole block is discarded and each of its elements run
// through the family's scalar element routine, which stores its result and
// returns a status. The remainder runs through the same routine.
//
//   F::checked_block<V, NV>(x, y) / (x, z, y)  computes the block and returns
//                            true when every element passes the range test
//   F::checked_block_at<V, NV>(src, x, y)  the same, for a one-input family
//                            that also reads the block's inputs from memory
//                            (src, the block's first element) as integers
//   F::element(&x, &y) / F::element(&x, &z, &y)
//
// Restartable<F> gives a one-input scratch-form family these two members.
//
// Included by the per-cpu units inside their unnamed namespace, so Cpu is
// also the copy of the error pipeline that the loops call.
#pragma once

#include <cstdint>
#include <type_traits>
#include <utility>

#include "kernels/common/isa.h"
#include "state/state.h"

namespace {

// The special-lane test may give a full-lane mask or the lane bits already.
template <class V>
inline int lane_bits(typename V::vd m) {
    return V::mask(m);
}
template <class V>
inline int lane_bits(int bits) {
    return bits;
}

template <int Cpu>
inline void report(int32_t status, int32_t i, const double* a, const double* b, double* r,
                   const char* name) {
    zvl::Services<Cpu>::error_pipeline(status, i, a, b, r, r, name);
}

// Runs the callout on the lanes whose mask bit is set, in lane order, over
// all 32 positions; xs/zs/ys hold the block's inputs and results and are
// indexed by lane. `base` is the block's first element.
template <int Cpu, int NIn, class F>
inline void special_lanes(const F& f, uint32_t mask, const double* xs, const double* zs,
                          double* ys, int32_t base, const double* a, const double* b, double* r,
                          const char* name) {
    for (int l = 0; l < 32; ++l) {
        if (!(mask >> l & 1u)) continue;
        int32_t st;
        if constexpr (NIn == 1)
            st = f.callout(&xs[l], &ys[l]);
        else
            st = f.callout(&xs[l], &zs[l], &ys[l]);
        if (st != 0) {
            r[base + l] = ys[l];
            report<Cpu>(st, base + l, a, NIn == 1 ? a : b, r, name);
            ys[l] = r[base + l];
        }
    }
}

// True when F has block_at<V, NV>(src, x, y): a one-input block that also
// reads its inputs from memory (src, the block's first element) and returns
// the special-lane mask.
template <class F, class V, int NV, class = void>
struct BlockReadsInputs : std::false_type {};
template <class F, class V, int NV>
struct BlockReadsInputs<F, V, NV,
                        std::void_t<decltype(std::declval<const F&>().template block_at<V, NV>(
                            std::declval<const double*>(), std::declval<const typename V::vd*>(),
                            std::declval<typename V::vd*>()))>> : std::true_type {};

// True when F's block<V, NV> returns the special-lane mask itself.
template <class F, class V, int NV, int NIn>
constexpr bool block_gives_mask() {
    using vd = typename V::vd;
    if constexpr (NIn == 2)
        return !std::is_void_v<decltype(std::declval<const F&>().template block<V, NV>(
            std::declval<const vd*>(), std::declval<const vd*>(), std::declval<vd*>()))>;
    else
        return !std::is_void_v<decltype(std::declval<const F&>().template block<V, NV>(
            std::declval<const vd*>(), std::declval<vd*>()))>;
}

template <int Cpu, class V, int W, class F, int NIn>
__attribute__((always_inline)) inline void scratch_loop(const F& f, int32_t n, const double* a,
                                                        const double* b, double* r,
                                                        const char* name) {
    using vd = typename V::vd;
    constexpr int NV = W / V::lanes;
    static_assert(NV * V::lanes == W, "the block is a whole number of vectors");
    // One block's inputs and results, each group on a 64-byte boundary, and a
    // second small group for the remainder.
    alignas(64) double xs[W < 32 ? 32 : W];
    alignas(64) double zs[W < 32 ? 32 : W];
    alignas(64) double ys[W < 32 ? 32 : W];
    if (n <= 0) return;  // n & ~(W-1) would start the remainder below 0
    const int32_t m = n & ~(W - 1);
    for (int32_t base = 0; base < m; base += W) {
        vd x[NV], z[NV], y[NV];
        uint32_t mask = 0;
        for (int j = 0; j < NV; ++j) x[j] = V::load(a + base + j * V::lanes);
        if constexpr (NIn == 2) {
            for (int j = 0; j < NV; ++j) z[j] = V::load(b + base + j * V::lanes);
            if constexpr (block_gives_mask<F, V, NV, 2>()) {
                mask = f.template block<V, NV>(x, z, y);
            } else {
                f.template block<V, NV>(x, z, y);
                for (int j = 0; j < NV; ++j)
                    mask |= static_cast<uint32_t>(lane_bits<V>(f.template special<V>(x[j], z[j])))
                            << (j * V::lanes);
            }
        } else if constexpr (BlockReadsInputs<F, V, NV>::value) {
            mask = f.template block_at<V, NV>(a + base, x, y);
        } else if constexpr (block_gives_mask<F, V, NV, 1>()) {
            mask = f.template block<V, NV>(x, y);
        } else {
            f.template block<V, NV>(x, y);
            for (int j = 0; j < NV; ++j)
                mask |= static_cast<uint32_t>(lane_bits<V>(f.template special<V>(x[j])))
                        << (j * V::lanes);
        }
        if (__builtin_expect(mask != 0, 0)) {
            for (int j = 0; j < NV; ++j) {
                V::store(xs + j * V::lanes, x[j]);
                if constexpr (NIn == 2) V::store(zs + j * V::lanes, z[j]);
                V::store(ys + j * V::lanes, y[j]);
            }
            special_lanes<Cpu, NIn, F>(f, mask, xs, zs, ys, base, a, b, r, name);
            for (int j = 0; j < NV; ++j) y[j] = V::load(ys + j * V::lanes);
        }
        for (int j = 0; j < NV; ++j) V::store(r + base + j * V::lanes, y[j]);
    }
    for (int32_t i = m; i < n; ++i) {
        double x1[1] = {a[i]}, z1[1] = {0.0}, y1[1];
        bool special;
        if constexpr (NIn == 2) {
            z1[0] = b[i];
            if constexpr (block_gives_mask<F, Scalar, 1, 2>()) {
                special = f.template block<Scalar, 1>(x1, z1, y1) != 0;
            } else {
                y1[0] = f.one(x1[0], z1[0]);
                special = lane_bits<Scalar>(f.template special<Scalar>(x1[0], z1[0])) != 0;
            }
        } else if constexpr (block_gives_mask<F, Scalar, 1, 1>()) {
            special = f.template block<Scalar, 1>(x1, y1) != 0;
        } else {
            y1[0] = f.one(x1[0]);
            special = lane_bits<Scalar>(f.template special<Scalar>(x1[0])) != 0;
        }
        if (__builtin_expect(special, 0))
            special_lanes<Cpu, NIn, F>(f, 1u, x1, z1, y1, i, a, b, r, name);
        r[i] = y1[0];
    }
}

template <int Cpu, class V, int W, class F>
inline void scratch_1i(int32_t n, const double* a, double* r, const char* name,
                       const F& f = F{}) {
    scratch_loop<Cpu, V, W, F, 1>(f, n, a, nullptr, r, name);
}

template <int Cpu, class V, int W, class F>
inline void scratch_2i(int32_t n, const double* a, const double* b, double* r,
                       const char* name, const F& f = F{}) {
    scratch_loop<Cpu, V, W, F, 2>(f, n, a, b, r, name);
}

// True when F has checked_block_at<V, NV>.
template <class F, class V, int NV, class = void>
struct ReadsBlockInputs : std::false_type {};
template <class F, class V, int NV>
struct ReadsBlockInputs<F, V, NV,
                        std::void_t<decltype(F::template checked_block_at<V, NV>(
                            std::declval<const double*>(), std::declval<const typename V::vd*>(),
                            std::declval<typename V::vd*>()))>> : std::true_type {};

template <int Cpu, class F, int NIn>
__attribute__((noinline)) void restart_elements(int32_t from, int32_t to, const double* a,
                                                const double* b, double* r, const char* name) {
    for (int32_t i = from; i < to; ++i) {
        int32_t st;
        if constexpr (NIn == 1)
            st = F::element(&a[i], &r[i]);
        else
            st = F::element(&a[i], &b[i], &r[i]);
        if (st != 0) report<Cpu>(st, i, a, NIn == 1 ? a : b, r, name);
    }
}

// One block at `base`: computed, then stored or restarted.
template <int Cpu, class V, int W, class F, int NIn>
inline void restart_block(int32_t base, const double* a, const double* b, double* r,
                          const char* name) {
    using vd = typename V::vd;
    constexpr int NV = W / V::lanes;
    vd x[NV], z[NV], y[NV];
    for (int j = 0; j < NV; ++j) x[j] = V::load(a + base + j * V::lanes);
    bool ok;
    if constexpr (NIn == 2) {
        for (int j = 0; j < NV; ++j) z[j] = V::load(b + base + j * V::lanes);
        ok = F::template checked_block<V, NV>(x, z, y);
    } else if constexpr (ReadsBlockInputs<F, V, NV>::value) {
        ok = F::template checked_block_at<V, NV>(a + base, x, y);
    } else {
        ok = F::template checked_block<V, NV>(x, y);
    }
    if (__builtin_expect(ok, 1)) {
        for (int j = 0; j < NV; ++j) V::store(r + base + j * V::lanes, y[j]);
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

template <int Cpu, class V, int W, class F, int NIn>
__attribute__((always_inline)) inline void restart_loop(int32_t n, const double* a,
                                                        const double* b, double* r,
                                                        const char* name) {
    using vd = typename V::vd;
    if (n <= 0) return;
    const int32_t m = n & ~(W - 1);
    if constexpr (NIn == 1 && W == V::lanes && ReadsBlockInputs<F, V, 2>::value) {
        // Blocks of one vector go two to a round, so that a family reading
        // its inputs shares its integer work between them. A pair with a
        // failing element runs its blocks again one at a time: each still
        // passes or restarts on its own, in element order. So does an odd
        // last block.
        int32_t base = 0;
        for (; base + 2 * W <= m; base += 2 * W) {
            vd x[2], y[2];
            for (int j = 0; j < 2; ++j) x[j] = V::load(a + base + j * V::lanes);
            if (__builtin_expect(F::template checked_block_at<V, 2>(a + base, x, y), 1)) {
                for (int j = 0; j < 2; ++j) V::store(r + base + j * V::lanes, y[j]);
            } else {
                restart_block_apart<Cpu, V, W, F, NIn>(base, a, b, r, name);
                restart_block_apart<Cpu, V, W, F, NIn>(base + W, a, b, r, name);
            }
        }
        if (base < m) restart_block_apart<Cpu, V, W, F, NIn>(base, a, b, r, name);
    } else {
        for (int32_t base = 0; base < m; base += W)
            restart_block<Cpu, V, W, F, NIn>(base, a, b, r, name);
    }
    if (m < n) restart_elements<Cpu, F, NIn>(m, n, a, b, r, name);
}

template <int Cpu, class V, int W, class F>
inline void restart_1i(int32_t n, const double* a, double* r, const char* name) {
    restart_loop<Cpu, V, W, F, 1>(n, a, nullptr, r, name);
}

template <int Cpu, class V, int W, class F>
inline void restart_2i(int32_t n, const double* a, const double* b, double* r,
                       const char* name) {
    restart_loop<Cpu, V, W, F, 2>(n, a, b, r, name);
}

}  // namespace

namespace {

// For families whose lanes are independent: block() from a per-vector
// eval<V>(x) (or eval<V>(x, z)).
template <class F>
struct PerVector {
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

}  // namespace

namespace {

// The restart form for a one-input family written for the scratch form
// (block, one, special, callout): a block passes when none of its lanes is
// special, and the element routine sends a special element to the callout
// and any other through the block's formula on one lane.
template <class F>
struct Restartable : F {
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

}  // namespace
