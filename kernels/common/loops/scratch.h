// The scratch form: every lane of a W-element block is computed without
// branches, then the refused lanes' mask is formed; lanes with their bit set
// are recomputed one at a time, in element order, by the family's exact
// scalar callout, which returns 0 or a status. A reported element is stored
// to r[i], handed to the error pipeline, and its result taken back from
// r[i], since a callback may have replaced it. The remainder runs the block
// formula one element at a time, after pairs of two lanes where the family
// asks for them (PairTail). Forms: Lanes, BlockMask, BlockAt.
#pragma once

#include <type_traits>

#include "kernels/common/loops/report.h"
#include "kernels/common/loops/stream.h"

namespace {

// The signatures the family's form names, checked when the loop is
// instantiated.
template <class F, class V, int NV, class S>
constexpr void check_scratch_form() {
    using vd = typename V::vd;
    using CD = const double*;
    if constexpr (has_form<F, forms::BlockAt>()) {
        static_assert(S::in == 1 && S::out == 1, "BlockAt has one input and one output");
        ZVL_EXACT(F, int(CD, const vd*, vd*), template block_at<V, NV>);
    } else if constexpr (has_form<F, forms::BlockMask>()) {
        if constexpr (S::in == 2)
            ZVL_EXACT(F, uint32_t(const vd*, const vd*, vd*), template block<V, NV>);
        else if constexpr (S::out == 2)
            ZVL_EXACT(F, uint32_t(const vd*, vd*, vd*), template block<V, NV>);
        else
            ZVL_EXACT(F, uint32_t(const vd*, vd*), template block<V, NV>);
    } else {
        static_assert(has_form<F, forms::Lanes>(), "the scratch form takes Lanes, BlockMask or BlockAt");
        if constexpr (S::in == 2) {
            ZVL_EXACT(F, void(const vd*, const vd*, vd*), template block<V, NV>);
            ZVL_EXACT(F, double(double, double), one);
        } else if constexpr (S::out == 2) {
            ZVL_EXACT(F, void(const vd*, vd*, vd*), template block<V, NV>);
            ZVL_EXACT(F, void(double, double*, double*), one);
        } else {
            ZVL_EXACT(F, void(const vd*, vd*), template block<V, NV>);
            ZVL_EXACT(F, double(double), one);
        }
    }
    if constexpr (S::in == 2)
        ZVL_EXACT(F, int32_t(CD, CD, double*), callout);
    else if constexpr (S::out == 2)
        ZVL_EXACT(F, int32_t(CD, double*, double*), callout);
    else
        ZVL_EXACT(F, int32_t(CD, double*), callout);
}

// The refused lanes of one vector by the family's special-lane test.
template <class F, class V, int NIn>
inline uint32_t special_bits(const F& f, typename V::vd x, typename V::vd z) {
    if constexpr (NIn == 2)
        return static_cast<uint32_t>(lane_bits<V>(f.template special<V>(x, z)));
    else
        return static_cast<uint32_t>(lane_bits<V>(f.template special<V>(x)));
}

// A family whose remainder runs in pairs before the last element declares
// `static constexpr bool pair_tail = true;`: after the blocks, while two
// elements are left they run as one block of two lanes (so every pair of
// elements 2k, 2k + 1 is computed together).
template <class F, class = void>
struct PairTail : std::false_type {};
template <class F>
struct PairTail<F, std::void_t<decltype(F::pair_tail)>> : std::bool_constant<F::pair_tail> {};

// A family whose blocks are two of its units side by side (two vectors in
// flight, each a block of the unit's width) declares `static constexpr
// bool half_tail = true;`: after the blocks, half a block left runs as one
// block of half the vectors before the one-at-a-time loop.
template <class F, class = void>
struct HalfTail : std::false_type {};
template <class F>
struct HalfTail<F, std::void_t<decltype(F::half_tail)>> : std::bool_constant<F::half_tail> {};

// One block of NV vectors from element `base`: its lanes, then the refused
// ones through the callout, then the stores. xs to us are the scratch
// groups, each of at least NV vectors.
template <int Cpu, class V, int NV, class F, class S>
__attribute__((always_inline)) inline void scratch_block(const F& f, int32_t base, const double* a,
                                                         const double* b, double* r, double* r2,
                                                         const char* name, double* xs, double* zs,
                                                         double* ys, double* us,
                                                         const LongArray& l = {}) {
    using vd = typename V::vd;
    constexpr int NIn = S::in;
    constexpr int NOut = S::out;
    vd x[NV], z[NV], y[NV], u[NOut == 2 ? NV : 1];
    uint32_t mask = 0;
    fetch_ahead<NV * V::lanes>(l, base, a, NIn == 2 ? b : nullptr);
    for (int j = 0; j < NV; ++j) x[j] = V::load(a + base + j * V::lanes);
    if constexpr (NIn == 2)
        for (int j = 0; j < NV; ++j) z[j] = V::load(b + base + j * V::lanes);
    if constexpr (has_form<F, forms::BlockAt>()) {
        mask = f.template block_at<V, NV>(a + base, x, y);
    } else if constexpr (has_form<F, forms::BlockMask>()) {
        if constexpr (NIn == 2)
            mask = f.template block<V, NV>(x, z, y);
        else if constexpr (NOut == 2)
            mask = f.template block<V, NV>(x, y, u);
        else
            mask = f.template block<V, NV>(x, y);
    } else {
        if constexpr (NIn == 2)
            f.template block<V, NV>(x, z, y);
        else if constexpr (NOut == 2)
            f.template block<V, NV>(x, y, u);
        else
            f.template block<V, NV>(x, y);
        for (int j = 0; j < NV; ++j)
            mask |= special_bits<F, V, NIn>(f, x[j], z[j]) << (j * V::lanes);
    }
    if (__builtin_expect(mask != 0, 0)) {
        for (int j = 0; j < NV; ++j) {
            V::store(xs + j * V::lanes, x[j]);
            if constexpr (NIn == 2) V::store(zs + j * V::lanes, z[j]);
            V::store(ys + j * V::lanes, y[j]);
            if constexpr (NOut == 2) V::store(us + j * V::lanes, u[j]);
        }
        special_lanes<Cpu, S, F>(f, mask, xs, zs, ys, us, base, a, b, r, r2, name);
        for (int j = 0; j < NV; ++j) {
            y[j] = V::load(ys + j * V::lanes);
            if constexpr (NOut == 2) u[j] = V::load(us + j * V::lanes);
        }
    }
    for (int j = 0; j < NV; ++j) {
        put<V>(l, r + base + j * V::lanes, y[j]);
        if constexpr (NOut == 2) put<V>(l, r2 + base + j * V::lanes, u[j]);
    }
}

template <int Cpu, class V, int W, class F, class S>
__attribute__((always_inline)) inline void scratch_loop(const F& f, int32_t n, const double* a,
                                                        const double* b, double* r, double* r2,
                                                        const char* name) {
    constexpr int NIn = S::in;
    constexpr int NOut = S::out;
    constexpr int NV = W / V::lanes;
    static_assert(NV * V::lanes == W, "the block is a whole number of vectors");
    check_scratch_form<F, V, NV, S>();
    if constexpr (!has_form<F, forms::Lanes>()) check_scratch_form<F, Scalar, 1, S>();
    // One block's inputs and results, each group on a 64-byte boundary, and a
    // second small group for the remainder.
    alignas(64) double xs[W < 32 ? 32 : W];
    alignas(64) double zs[W < 32 ? 32 : W];
    alignas(64) double ys[W < 32 ? 32 : W];
    alignas(64) double us[NOut == 2 ? (W < 32 ? 32 : W) : 1];
    if (n <= 0) return;  // n & ~(W-1) would start the remainder below 0
    int32_t m = n & ~(W - 1);
    const LongArray l = long_array(n, r, NOut == 2 ? r2 : nullptr);
    for (int32_t base = 0; base < m; base += W)
        scratch_block<Cpu, V, NV, F, S>(f, base, a, b, r, r2, name, xs, zs, ys, us, l);
    end_long_array(l);
    if constexpr (HalfTail<F>::value && NV % 2 == 0) {
        if (n - m >= W / 2) {
            scratch_block<Cpu, V, NV / 2, F, S>(f, m, a, b, r, r2, name, xs, zs, ys, us);
            m += W / 2;
        }
    }
    if constexpr (PairTail<F>::value && W > 2) {
        // the pair is one or two vectors of the block's wrapper, or two
        // single lanes where its vectors are wider
        using P = std::conditional_t<(V::lanes <= 2), V, Scalar>;
        check_scratch_form<F, P, 2 / P::lanes, S>();
        for (; n - m >= 2; m += 2)
            scratch_block<Cpu, P, 2 / P::lanes, F, S>(f, m, a, b, r, r2, name, xs, zs, ys, us);
    }
    for (int32_t i = m; i < n; ++i) {
        double x1[1] = {a[i]}, z1[1] = {0.0}, y1[1], u1[1];
        bool special;
        if constexpr (NIn == 2) z1[0] = b[i];
        if constexpr (has_form<F, forms::BlockMask>()) {
            if constexpr (NIn == 2)
                special = f.template block<Scalar, 1>(x1, z1, y1) != 0;
            else if constexpr (NOut == 2)
                special = f.template block<Scalar, 1>(x1, y1, u1) != 0;
            else
                special = f.template block<Scalar, 1>(x1, y1) != 0;
        } else {
            if constexpr (NIn == 2)
                y1[0] = f.one(x1[0], z1[0]);
            else if constexpr (NOut == 2)
                f.one(x1[0], y1, u1);
            else
                y1[0] = f.one(x1[0]);
            special = special_bits<F, Scalar, NIn>(f, x1[0], z1[0]) != 0;
        }
        if (__builtin_expect(special, 0))
            special_lanes<Cpu, S, F>(f, 1u, x1, z1, y1, u1, i, a, b, r, r2, name);
        r[i] = y1[0];
        if constexpr (NOut == 2) r2[i] = u1[0];
    }
}

}  // namespace
