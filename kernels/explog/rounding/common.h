// The rounding instruction by vector type, for the rounding kernels. They
// all run the exact loop form (kernels/common/loops/exact.h).
#pragma once

#include "kernels/common/unit.h"

namespace {

#ifdef __SSE4_1__
// roundpd / roundsd / vroundpd with the immediate of the kernel:
// 0 nearest, 1 down, 2 up, 3 towards zero, 4 current mode, 0xc current mode
// with the inexact exception suppressed.
template <int Imm>
inline double round_by(double x) {
    const __m128d v = _mm_set_sd(x);
    return _mm_cvtsd_f64(_mm_round_sd(v, v, Imm));
}
template <int Imm>
inline __m128d round_by(__m128d x) {
    return _mm_round_pd(x, Imm);
}
#endif
#ifdef __AVX__
template <int Imm>
inline __m256d round_by(__m256d x) {
    return _mm256_round_pd(x, Imm);
}
#endif

}  // namespace
