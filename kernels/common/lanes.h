// 32-bit integer work on the high or low words of the lanes, for the
// wrappers of isa.h: index and exponent arithmetic done on all lanes at once
// (the wrappers' gathers then take the indices from `store`).
//
// `Lanes<V::lanes>` is keyed by the wrapper's lane count, so the SSE
// wrappers share one set and the one-lane Scalar wrapper gets plain
// integers: a family writes its index arithmetic once for all of them. `vi` holds one
// 32-bit integer per lane (in the low dwords of an __m128i for the 128-bit
// and 256-bit wrappers; AVX without AVX2 does its integer work in 128 bits).
//
// Included by the per-cpu units only, inside an unnamed namespace, as isa.h.
#pragma once

#include <immintrin.h>

#include <cstdint>

#include "base/bits.h"

namespace {

template <int LaneCount>
struct Lanes;

template <>
struct Lanes<1> {
    using vi = int32_t;

    static vi hi32(double x) { return static_cast<int32_t>(zvl::high_word(x)); }
    static vi lo32(double x) { return static_cast<int32_t>(zvl::low_word(x)); }
    static vi splat(int32_t c) { return c; }
    static vi and_(vi a, vi b) { return a & b; }
    static vi add(vi a, vi b) {
        return static_cast<int32_t>(static_cast<uint32_t>(a) + static_cast<uint32_t>(b));
    }
    static vi sub(vi a, vi b) {
        return static_cast<int32_t>(static_cast<uint32_t>(a) - static_cast<uint32_t>(b));
    }
    template <int S>
    static vi srai(vi a) {
        return a >> S;
    }
    template <int S>
    static vi srli(vi a) {
        return static_cast<int32_t>(static_cast<uint32_t>(a) >> S);
    }
    template <int S>
    static vi slli(vi a) {
        return static_cast<int32_t>(static_cast<uint32_t>(a) << S);
    }
    // Signed compare: all ones where a < b; mask gives the lanes' sign bits.
    static vi lt(vi a, vi b) { return a < b ? -1 : 0; }
    static int mask(vi a) { return static_cast<int>(static_cast<uint32_t>(a) >> 31); }
    static double to_double(vi a) { return static_cast<double>(a); }
    // k added to the high word of each lane (an exponent put in place by
    // integer arithmetic; no carry crosses from the low word).
    static double add_hi32(double y, vi k) {
        return zvl::from_bits(zvl::bits(y) +
                              (static_cast<uint64_t>(static_cast<uint32_t>(k)) << 32));
    }
    static void store(uint32_t* w, vi a) { w[0] = static_cast<uint32_t>(a); }
};

// The 32-bit integer ops of the 128-bit and 256-bit wrappers: both keep
// their lanes' words in one __m128i.
struct Int128Lanes {
    using vi = __m128i;
    static vi splat(int32_t c) { return _mm_set1_epi32(c); }
    static vi and_(vi a, vi b) { return _mm_and_si128(a, b); }
    static vi add(vi a, vi b) { return _mm_add_epi32(a, b); }
    static vi sub(vi a, vi b) { return _mm_sub_epi32(a, b); }
    static vi lt(vi a, vi b) { return _mm_cmplt_epi32(a, b); }
    template <int S>
    static vi srai(vi a) {
        return _mm_srai_epi32(a, S);
    }
    template <int S>
    static vi srli(vi a) {
        return _mm_srli_epi32(a, S);
    }
    template <int S>
    static vi slli(vi a) {
        return _mm_slli_epi32(a, S);
    }
};

template <>
struct Lanes<2> : Int128Lanes {
    static vi hi32(__m128d x) {
        return _mm_shuffle_epi32(_mm_castpd_si128(x), _MM_SHUFFLE(3, 3, 3, 1));
    }
    static vi lo32(__m128d x) {
        return _mm_shuffle_epi32(_mm_castpd_si128(x), _MM_SHUFFLE(2, 2, 2, 0));
    }
    static __m128d to_double(vi a) { return _mm_cvtepi32_pd(a); }
    static int mask(vi a) { return _mm_movemask_ps(_mm_castsi128_ps(a)) & 3; }
    // Pairs of vectors: the high words of a's lanes and then b's in one
    // register, so that a block's 32-bit work covers four lanes per
    // instruction; to_double_upper converts words 2 and 3 (b's lanes) and
    // mask_pair gives all four bits.
    static vi hi32_pair(__m128d a, __m128d b) {
        return _mm_castps_si128(
            _mm_shuffle_ps(_mm_castpd_ps(a), _mm_castpd_ps(b), _MM_SHUFFLE(3, 1, 3, 1)));
    }
    static __m128d to_double_upper(vi a) {
        return _mm_cvtepi32_pd(_mm_shuffle_epi32(a, _MM_SHUFFLE(3, 2, 3, 2)));
    }
    static int mask_pair(vi a) { return _mm_movemask_ps(_mm_castsi128_ps(a)); }
    static __m128d add_hi32(__m128d y, vi k) {
        return _mm_castsi128_pd(
            _mm_add_epi32(_mm_castpd_si128(y), _mm_unpacklo_epi32(_mm_setzero_si128(), k)));
    }
    static void store(uint32_t* w, vi a) { _mm_storel_epi64(reinterpret_cast<__m128i*>(w), a); }
};

#ifdef __AVX__
template <>
struct Lanes<4> : Int128Lanes {
    static vi hi32(__m256d x) { return pick<_MM_SHUFFLE(3, 1, 3, 1)>(x); }
    static vi lo32(__m256d x) { return pick<_MM_SHUFFLE(2, 0, 2, 0)>(x); }
    static __m256d to_double(vi a) { return _mm256_cvtepi32_pd(a); }
    static int mask(vi a) { return _mm_movemask_ps(_mm_castsi128_ps(a)); }
    static __m256d add_hi32(__m256d y, vi k) {
        const __m128i z = _mm_setzero_si128();
        const __m128i lo =
            _mm_add_epi32(_mm_castpd_si128(_mm256_castpd256_pd128(y)), _mm_unpacklo_epi32(z, k));
        const __m128i hi =
            _mm_add_epi32(_mm_castpd_si128(_mm256_extractf128_pd(y, 1)), _mm_unpackhi_epi32(z, k));
        return join(_mm_castsi128_pd(lo), _mm_castsi128_pd(hi));
    }
    static void store(uint32_t* w, vi a) { _mm_storeu_si128(reinterpret_cast<__m128i*>(w), a); }

  private:
    static __m256d join(__m128d lo, __m128d hi) {
        return _mm256_insertf128_pd(_mm256_castpd128_pd256(lo), hi, 1);
    }
    // One dword of each lane, lanes 0..3 in dwords 0..3.
    template <int Sel>
    static vi pick(__m256d x) {
        return _mm_castps_si128(_mm_shuffle_ps(_mm_castpd_ps(_mm256_castpd256_pd128(x)),
                                               _mm_castpd_ps(_mm256_extractf128_pd(x, 1)), Sel));
    }
};
#endif

}  // namespace
