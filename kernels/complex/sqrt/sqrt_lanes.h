// The double members of vzSqrt: zSqrt_parts, the steps on V::lanes
// elements at once with masks in place of branches, on four of the unit's
// vectors side by side at cpu types 2 to 5 and on four scalar lanes at cpu
// type 1 (four independent chains in SSE2 scalar code); zSqrt_fast is the
// same body on one lane.
//
//   band     |x| and |y| in [2^-459, 2^511), by integer compares of the
//            patterns (a NaN fails quietly): the lanes outside are computed
//            on 1.0, so that they raise nothing, and redone one by one, in
//            order, by zSqrt_slow, which passes infinite and NaN parts to
//            zSqrt_special
//   balance  |y| 2^58 < |x| or |x| 2^58 < |y|: masks that give the
//            lanes' second root sqrt|x| or sqrt(|y|/2) in place of
//            sqrt((|x| + |z|)/2), within the same body
// Arguments are read before any result is written, so a block may be
// computed in place.
#pragma once

#include <type_traits>

#include "kernels/complex/sqrt/sqrt_fast.h"
#include "kernels/complex/twin.h"

namespace {

// All ones in the lanes whose sign bit is set, by a compare of +-1.0 (no
// NaN can reach it).
template <class V>
inline typename V::vd sign_mask(typename V::vd a) {
    return V::lt(V::or_(sign_of<V>(a), V::splat(1.0)), V::splat(0.0));
}

// All ones in the lanes whose |part| a is in [2^-459, 2^511): integer
// compares of the patterns (a - bound keeps its sign bit for a below the
// bound), or at cpu type 5 quiet compares, so that a NaN fails without
// raising invalid.
template <class V>
inline typename V::vd in_band(typename V::vd a) {
    if constexpr (IsTwin<V>::value) {
        return {in_band<typename V::inner>(a.a), in_band<typename V::inner>(a.b)};
#ifdef __AVX__
    } else if constexpr (std::is_same_v<V, Avx>) {
        return _mm256_and_pd(_mm256_cmp_pd(a, _mm256_set1_pd(0x1p-459), _CMP_GE_OQ),
                             _mm256_cmp_pd(a, _mm256_set1_pd(0x1p511), _CMP_LT_OQ));
#endif
    } else {
        const typename V::vd below = sign_mask<V>(V::sub_i64(a, splat_bits<V>(0x2340000000000000)));
        const typename V::vd under_top = sign_mask<V>(V::sub_i64(a, splat_bits<V>(0x5fe0000000000000)));
        return V::andnot(below, under_top);
    }
}

// The roots of V::lanes elements by parts, x + iy: re + i im, and the bits
// of the lanes outside the band, which are computed on 1.0 here and left
// to zSqrt_slow.
template <class V>
__attribute__((always_inline)) inline int zSqrt_parts(typename V::vd x, typename V::vd y, typename V::vd& re,
                                                      typename V::vd& im) {
    using vd = typename V::vd;
    using C = SqrtCore<V>;
    constexpr int L = V::lanes;
    vd ax = abs_of<V>(x), ay = abs_of<V>(y);
    const vd in = V::and_(in_band<V>(ax), in_band<V>(ay));
    const int refused = ~V::mask(in) & ((1 << L) - 1);
    ax = V::select(in, ax, C::k(1.0));
    ay = V::select(in, ay, C::k(1.0));
    const vd far = C::k(0x1p58);
    vd w, v;
    C::roots(ax, ay, V::lt(V::mul(ay, far), ax), V::lt(V::mul(ax, far), ay), w, v);
    const vd xneg = sign_mask<V>(x);
    re = V::select(xneg, v, w);
    im = V::or_(V::select(xneg, w, v), sign_of<V>(y));
    return refused;
}

// One element: the cpu type 1 member's steps on the one-lane wrapper, and
// the routine the tests hold every vector member to, bit for bit.
inline Z* zSqrt_fast(Z* r, const Z* a) {
    double re, im;
    if (zSqrt_parts<Scalar>(a->real, a->imag, re, im)) return zSqrt_slow(r, a);
    return put(r, re, im);
}

// r[0 .. V::lanes) = sqrt of a[0 .. V::lanes).
template <class V>
inline void zSqrt_lanes(const Z* a, Z* r) {
    constexpr int L = V::lanes;
    double xs[L], ys[L], re[L], im[L];
    for (int l = 0; l < L; ++l) {
        xs[l] = a[l].real;
        ys[l] = a[l].imag;
    }
    typename V::vd u, v;
    const int refused = zSqrt_parts<V>(V::load(xs), V::load(ys), u, v);
    V::store(re, u);
    V::store(im, v);
    for (int l = 0; l < L; ++l) {
        if (refused >> l & 1) {
            const Z z = {xs[l], ys[l]};
            zSqrt_slow(r + l, &z);
        } else {
            r[l] = {re[l], im[l]};
        }
    }
}

// r[0 .. n) = sqrt of a[0 .. n): whole blocks, then the last n mod
// V::lanes elements in a block padded with the last of them.
template <class V>
inline void zSqrt_vector(int n, const Z* a, Z* r) {
    constexpr int L = V::lanes;
    int i = 0;
    for (; i + L <= n; i += L) zSqrt_lanes<V>(a + i, r + i);
    if (i < n) {
        Z block[L];
        for (int l = 0; l < L; ++l) block[l] = a[i + l < n ? i + l : n - 1];
        zSqrt_lanes<V>(block, block);
        for (int l = 0; i + l < n; ++l) r[i + l] = block[l];
    }
}

}  // namespace
