// The processor's single-precision reciprocal square root estimate, widened
// to doubles: the seed the roots and the trigonometric inverses refine.
// Defined for doubles within the float range.
//
// Included by the per-cpu units only, inside an unnamed namespace, as isa.h.
#pragma once

#include <immintrin.h>

namespace {

inline double rsqrt_estimate(double x) {
    const __m128 f = _mm_cvtsd_ss(_mm_setzero_ps(), _mm_set_sd(x));
    return _mm_cvtsd_f64(_mm_cvtss_sd(_mm_setzero_pd(), _mm_rsqrt_ss(f)));
}
inline __m128d rsqrt_estimate(__m128d x) { return _mm_cvtps_pd(_mm_rsqrt_ps(_mm_cvtpd_ps(x))); }
#ifdef __AVX__
inline __m256d rsqrt_estimate(__m256d x) { return _mm256_cvtps_pd(_mm_rsqrt_ps(_mm256_cvtpd_ps(x))); }
#endif

}  // namespace
