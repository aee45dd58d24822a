// Twin<V>: two vectors of the wrapper V computed as one, each op issued on
// both before the next op. The complex vector kernels' bodies are long
// dependency chains (hundreds of ops a vector, more than the processor's
// window of reordering), so one vector at a time leaves the units idle on
// latency; the twin keeps two independent chains side by side.
// ZPerTwin<F> runs a family's lanes<V> on twins where a block holds whole
// twins and F::twins<V>() allows (a body whose two chains would not fit the
// registers runs better alone), and on single vectors otherwise.
#pragma once

#include <cstdint>
#include <type_traits>

#include "kernels/common/isa.h"
#include "kernels/common/loops/zblock.h"

namespace {

// Named by the wrapper, not by its vector type, whose attributes a template
// argument would drop.
template <class V>
struct TwinOf {
    typename V::vd a, b;
};

#define ZVL_TWIN_INLINE __attribute__((always_inline))

template <class V>
struct Twin {
    using inner = V;
    using vd = TwinOf<V>;
    static constexpr int lanes = 2 * V::lanes;

    ZVL_TWIN_INLINE static vd load(const double* p) { return {V::load(p), V::load(p + V::lanes)}; }
    ZVL_TWIN_INLINE static void store(double* p, vd v) {
        V::store(p, v.a);
        V::store(p + V::lanes, v.b);
    }
    ZVL_TWIN_INLINE static vd splat(double c) { return {V::splat(c), V::splat(c)}; }
#define ZVL_TWIN_OP2(op) \
    ZVL_TWIN_INLINE static vd op(vd x, vd y) { return {V::op(x.a, y.a), V::op(x.b, y.b)}; }
    ZVL_TWIN_OP2(add)
    ZVL_TWIN_OP2(sub)
    ZVL_TWIN_OP2(mul)
    ZVL_TWIN_OP2(div)
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

// The seed of seeds.h on both vectors.
template <class V>
ZVL_TWIN_INLINE inline TwinOf<V> rsqrt_seed(TwinOf<V> x) {
    return {rsqrt_seed(x.a), rsqrt_seed(x.b)};
}

// Whether F allows twins of V: F::twins<V>() where F has it, else yes.
template <class F, class V, class = void>
struct TwinsAllowed : std::true_type {};
template <class F, class V>
struct TwinsAllowed<F, V, std::enable_if_t<!F::template twins<V>()>> : std::false_type {};

// ZPerVector (loops/zblock.h) on twins where they fit the block.
template <class F>
struct ZPerTwin {
    using form = forms::ZBlock;
    template <class V, int W>
    static uint32_t block(const double* x, const double* y, double* re, double* im) {
        constexpr bool twins = W % (2 * V::lanes) == 0 && TwinsAllowed<F, V>::value;
        return ZPerVector<F>::template block<std::conditional_t<twins, Twin<V>, V>, W>(x, y, re, im);
    }
    static void element(ZVLComplex16* r, const ZVLComplex16* z) { F::scalar(r, z); }
};

}  // namespace
