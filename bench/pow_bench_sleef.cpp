// SLEEF's 4-lane AVX pow (1-ulp variant) over arrays, in a unit of its own
// that is compiled for AVX.
#include <immintrin.h>
#include <sleef.h>

void sleef_pow_avx(int n, const double* x, const double* y, double* r) {
    for (int i = 0; i < n; i += 4)
        _mm256_storeu_pd(r + i, Sleef_powd4_u10avx(_mm256_loadu_pd(x + i), _mm256_loadu_pd(y + i)));
}
