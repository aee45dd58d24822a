// SLEEF's AVX routines over whole arrays, for comparison: this unit alone is
// built with AVX, and callers check for it first. n is a multiple of 4.
#include <immintrin.h>
#include <sleef.h>

#include "bench/sleef_avx.h"

namespace peer {

#define PEER_LOOP(name, expr)                                           \
    void name(int n, const double* a, double* r) {                      \
        for (int i = 0; i < n; i += 4) {                                \
            const __m256d x = _mm256_loadu_pd(a + i);                   \
            _mm256_storeu_pd(r + i, expr);                              \
        }                                                               \
    }
PEER_LOOP(sleef_sqrt_u05, Sleef_sqrtd4_u05avx(x))
PEER_LOOP(sleef_sqrt_u35, Sleef_sqrtd4_u35avx(x))
PEER_LOOP(sleef_inv_sqrt_u05, _mm256_div_pd(_mm256_set1_pd(1.0), Sleef_sqrtd4_u05avx(x)))
PEER_LOOP(sleef_cbrt_u10, Sleef_cbrtd4_u10avx(x))
PEER_LOOP(sleef_cbrt_u35, Sleef_cbrtd4_u35avx(x))
PEER_LOOP(sleef_inv_cbrt_u10, _mm256_div_pd(_mm256_set1_pd(1.0), Sleef_cbrtd4_u10avx(x)))

}  // namespace peer
