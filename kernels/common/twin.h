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
};

template <class V>
struct IsTwin {
    static constexpr bool value = false;
};
template <class V>
struct IsTwin<Twin<V>> {
    static constexpr bool value = true;
};

}  // namespace

#pragma GCC diagnostic pop
