// The seed of 1/sqrt(a) for the complex square root's vector members, from
// the high words of the patterns alone: a float made of the top 20
// significand bits and the lowest exponent bit, its single-precision
// estimate (rsqrtps: no flag raised), and a power of two rebuilt by integer
// arithmetic on the high words, so that any normal a is served.
// AVX has no 256-bit integer ops: its four high words go through one
// 128-bit register. Within 1.5 2^-12 + 2^-21 of the value.
#pragma once

#include <immintrin.h>

#include <cstdint>
#include <cstring>

#include "base/bits.h"

namespace {

// The high words of the lanes: lane l's in 32-bit element l.
inline __m128i high_words(double a) { return _mm_cvtsi32_si128(static_cast<int>(zvl::bits(a) >> 32)); }
inline __m128i high_words(__m128d a) { return _mm_shuffle_epi32(_mm_castpd_si128(a), _MM_SHUFFLE(3, 1, 3, 1)); }
#ifdef __AVX__
inline __m128i high_words(__m256d a) {
    const __m256 f = _mm256_castpd_ps(a);
    return _mm_castps_si128(
        _mm_shuffle_ps(_mm256_castps256_ps128(f), _mm256_extractf128_ps(f, 1), _MM_SHUFFLE(3, 1, 3, 1)));
}
#endif

// Doubles of the given high words and zero low words, and the floats of
// the low 32-bit elements as doubles, in the lanes of a value like `like`.
inline double from_high_words(__m128i h, double) {
    return zvl::from_bits(static_cast<uint64_t>(static_cast<uint32_t>(_mm_cvtsi128_si32(h))) << 32);
}
inline __m128d from_high_words(__m128i h, __m128d) {
    return _mm_castsi128_pd(_mm_unpacklo_epi32(_mm_setzero_si128(), h));
}
inline double widen(__m128 f, double) { return static_cast<double>(_mm_cvtss_f32(f)); }
inline __m128d widen(__m128 f, __m128d) { return _mm_cvtps_pd(f); }
#ifdef __AVX__
inline __m256d from_high_words(__m128i h, __m256d) {
    const __m128i z = _mm_setzero_si128();
    return _mm256_insertf128_pd(_mm256_castpd128_pd256(_mm_castsi128_pd(_mm_unpacklo_epi32(z, h))),
                                _mm_castsi128_pd(_mm_unpackhi_epi32(z, h)), 1);
}
inline __m256d widen(__m128 f, __m256d) { return _mm256_cvtps_pd(f); }
#endif

// 1/sqrt(a) for positive normal a: the float 1.f or 2 * 1.f by the
// exponent's parity, times 2^(-(k - k mod 2)/2) for a = 1.f 2^k, whose high
// word is 0x5ff00000 less half of the exponent field rounded up to even.
template <class T>
inline T rsqrt_seed(T a) {
    const __m128i hw = high_words(a);
    const __m128i f = _mm_add_epi32(_mm_xor_si128(_mm_and_si128(_mm_slli_epi32(hw, 3), _mm_set1_epi32(0x00ffffff)),
                                                  _mm_set1_epi32(0x00800000)),
                                    _mm_set1_epi32(0x3f800000));
    const __m128i sh = _mm_sub_epi32(
        _mm_set1_epi32(0x5ff00000),
        _mm_srli_epi32(_mm_and_si128(_mm_add_epi32(hw, _mm_set1_epi32(0x00100000)),
                                     _mm_set1_epi32(static_cast<int>(0xffe00000))),
                       1));
    const T est = widen(_mm_rsqrt_ps(_mm_castsi128_ps(f)), a);
    return est * from_high_words(sh, a);
}

}  // namespace
