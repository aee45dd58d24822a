// Two vectors as one: Twin<V> runs each operation of wrapper V on a pair of
// its vectors, each op issued on both before the next. A kernel body written
// once over the wrappers and evaluated on a Twin keeps two independent
// dependency chains side by side: the long bodies (refined estimates,
// double-word sums, Horner chains, hundreds of ops a vector) wait on
// latency one vector at a time, with too few of them in the processor's
// window to fill the gaps. Each lane computes exactly what it computes
// through V, so results are the same bits.
//
// Included by the per-cpu units only, inside an unnamed namespace, as isa.h.
#pragma once

#include <cstdint>

#include "kernels/common/isa.h"
#include "kernels/common/lanes.h"
#include "kernels/common/loops.h"

// A vector type as a template argument loses its attributes in the
// argument's name (TwinOf<__m128d> is TwinOf of the plain vector type);
// the members keep their type, so nothing is lost.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wignored-attributes"

namespace {

template <class T>
struct TwinOf {
    T a, b;
};

#define ZVL_TWIN_INLINE __attribute__((always_inline))

template <class V>
struct Twin {
    using inner = V;
    using vd = TwinOf<typename V::vd>;
    static constexpr int lanes = 2 * V::lanes;

    ZVL_TWIN_INLINE static vd load(const double* p) { return {V::load(p), V::load(p + V::lanes)}; }
    ZVL_TWIN_INLINE static void store(double* p, vd v) {
        V::store(p, v.a);
        V::store(p + V::lanes, v.b);
    }
    ZVL_TWIN_INLINE static vd splat(double c) {
        const typename V::vd s = V::splat(c);
        return {s, s};
    }
#define ZVL_TWIN_OP2(op) \
    ZVL_TWIN_INLINE static vd op(vd x, vd y) { return {V::op(x.a, y.a), V::op(x.b, y.b)}; }
    ZVL_TWIN_OP2(add)
    ZVL_TWIN_OP2(sub)
    ZVL_TWIN_OP2(mul)
    ZVL_TWIN_OP2(div)
    ZVL_TWIN_OP2(max_)
    ZVL_TWIN_OP2(min_)
    ZVL_TWIN_OP2(and_)
    ZVL_TWIN_OP2(or_)
    ZVL_TWIN_OP2(xor_)
    ZVL_TWIN_OP2(andnot)
    ZVL_TWIN_OP2(add_i64)
    ZVL_TWIN_OP2(sub_i64)
    ZVL_TWIN_OP2(lt)
    ZVL_TWIN_OP2(le)
    ZVL_TWIN_OP2(eq)
#undef ZVL_TWIN_OP2
    ZVL_TWIN_INLINE static vd mul_add(vd x, vd y, vd z) { return {V::mul_add(x.a, y.a, z.a), V::mul_add(x.b, y.b, z.b)}; }
    ZVL_TWIN_INLINE static vd sqrt(vd x) { return {V::sqrt(x.a), V::sqrt(x.b)}; }
    ZVL_TWIN_INLINE static vd select(vd m, vd x, vd y) { return {V::select(m.a, x.a, y.a), V::select(m.b, x.b, y.b)}; }
    ZVL_TWIN_INLINE static vd shl_i64(vd x, int n) { return {V::shl_i64(x.a, n), V::shl_i64(x.b, n)}; }
    ZVL_TWIN_INLINE static vd shr_i64(vd x, int n) { return {V::shr_i64(x.a, n), V::shr_i64(x.b, n)}; }
    ZVL_TWIN_INLINE static int mask(vd m) { return V::mask(m.a) | V::mask(m.b) << V::lanes; }
    ZVL_TWIN_INLINE static void low_words(vd x, uint32_t* w) {
        V::low_words(x.a, w);
        V::low_words(x.b, w + V::lanes);
    }
    ZVL_TWIN_INLINE static vd gather(const double* t, const uint32_t* j) { return {V::gather(t, j), V::gather(t, j + V::lanes)}; }
    ZVL_TWIN_INLINE static void gather_pairs(const double* t, const uint32_t* j, vd& x, vd& y) {
        V::gather_pairs(t, j, x.a, y.a);
        V::gather_pairs(t, j + V::lanes, x.b, y.b);
    }
    ZVL_TWIN_INLINE static void gather_adjacent(const double* t, const uint32_t* j, vd& x, vd& y) {
        V::gather_adjacent(t, j, x.a, y.a);
        V::gather_adjacent(t, j + V::lanes, x.b, y.b);
    }
};

template <class V>
struct IsTwin {
    static constexpr bool value = false;
};
template <class V>
struct IsTwin<Twin<V>> {
    static constexpr bool value = true;
};

// The 32-bit lane operations of a wrapper, a twin's (of twins too) lane by
// lane of its halves.
template <class V>
struct TwinLanes;
template <class V>
struct LanesOfT {
    using type = Lanes<V::lanes>;
};
template <class V>
struct LanesOfT<Twin<V>> {
    using type = TwinLanes<V>;
};
template <class V>
using LanesOf = typename LanesOfT<V>::type;

template <class V>
struct TwinLanes {
    using L = LanesOf<V>;
    using vi = TwinOf<typename L::vi>;
    using vd = typename Twin<V>::vd;

    static vi hi32(vd x) { return {L::hi32(x.a), L::hi32(x.b)}; }
    static vi lo32(vd x) { return {L::lo32(x.a), L::lo32(x.b)}; }
    static vi splat(int32_t c) {
        const typename L::vi s = L::splat(c);
        return {s, s};
    }
    static vi and_(vi x, vi y) { return {L::and_(x.a, y.a), L::and_(x.b, y.b)}; }
    static vi add(vi x, vi y) { return {L::add(x.a, y.a), L::add(x.b, y.b)}; }
    static vi sub(vi x, vi y) { return {L::sub(x.a, y.a), L::sub(x.b, y.b)}; }
    static vi lt(vi x, vi y) { return {L::lt(x.a, y.a), L::lt(x.b, y.b)}; }
    template <int S>
    static vi srai(vi x) {
        return {L::template srai<S>(x.a), L::template srai<S>(x.b)};
    }
    template <int S>
    static vi srli(vi x) {
        return {L::template srli<S>(x.a), L::template srli<S>(x.b)};
    }
    template <int S>
    static vi slli(vi x) {
        return {L::template slli<S>(x.a), L::template slli<S>(x.b)};
    }
    static int mask(vi x) { return L::mask(x.a) | L::mask(x.b) << V::lanes; }
    static vd to_double(vi x) { return {L::to_double(x.a), L::to_double(x.b)}; }
    static vd add_hi32(vd y, vi k) { return {L::add_hi32(y.a, k.a), L::add_hi32(y.b, k.b)}; }
    static void store(uint32_t* w, vi x) {
        L::store(w, x.a);
        L::store(w + V::lanes, x.b);
    }
};


// PerVector whose blocks of an even number of vectors run as twins, for
// wrappers of at most MaxLanes lanes (the longest bodies, with a table's
// gathers, run slower as twins of 256-bit vectors: sixteen registers do
// not hold both).
template <class F, int MaxLanes = 4>
struct PerTwin : PerVector<F> {
    template <class V, int NV>
    static void block(const typename V::vd* x, typename V::vd* y) {
        if constexpr (NV % 2 == 0 && V::lanes <= MaxLanes) {
#pragma GCC unroll 8
            for (int j = 0; j < NV; j += 2) {
                const typename Twin<V>::vd r = F::template eval<Twin<V>>({x[j], x[j + 1]});
                y[j] = r.a;
                y[j + 1] = r.b;
            }
        } else {
            PerVector<F>::template block<V, NV>(x, y);
        }
    }
    template <class V, int NV>
    static void block(const typename V::vd* x, const typename V::vd* z, typename V::vd* y) {
        if constexpr (NV % 2 == 0 && V::lanes <= MaxLanes) {
#pragma GCC unroll 8
            for (int j = 0; j < NV; j += 2) {
                const typename Twin<V>::vd r =
                    F::template eval<Twin<V>>({x[j], x[j + 1]}, {z[j], z[j + 1]});
                y[j] = r.a;
                y[j + 1] = r.b;
            }
        } else {
            PerVector<F>::template block<V, NV>(x, z, y);
        }
    }
};

}  // namespace

#pragma GCC diagnostic pop
