// Twins (kernels/common/twin.h) for the inverse trigonometric and
// hyperbolic bodies: the estimate of a pair, the 32-bit lanes of a pair.
//
// LanesOf<V> is the 32-bit lane set of a wrapper (Lanes<V::lanes> for the
// wrappers of isa.h, pairs of them for a Twin); PerTwin is PerVector whose
// blocks run two vectors at a time.
//
// Included by the per-cpu units only, inside an unnamed namespace, as isa.h.
#pragma once

#include <cstdint>

#include "kernels/common/estimates.h"
#include "kernels/common/isa.h"
#include "kernels/common/lanes.h"
#include "kernels/common/loops.h"
#include "kernels/common/twin.h"

// A vector type as a template argument loses its attributes in the
// argument's name (TwinOf<__m128d> is TwinOf of the plain vector type);
// the members keep their type, so nothing is lost.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wignored-attributes"

namespace {

// The free estimate functions of a pair.
template <class T>
inline TwinOf<T> rsqrt_estimate(TwinOf<T> x) {
    return {rsqrt_estimate(x.a), rsqrt_estimate(x.b)};
}

template <class V>
struct TwinLanes {
    using L = Lanes<V::lanes>;
    using vi = TwinOf<typename L::vi>;
    using vd = typename Twin<V>::vd;

    static vi hi32(vd x) { return {L::hi32(x.a), L::hi32(x.b)}; }
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
