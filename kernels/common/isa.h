// The SIMD vocabulary kernels are written in: one struct per instruction
// set, each a set of type aliases and static inline functions with the same
// names and the same meaning, down to the rounding mode an op obeys.
//
//   Scalar  one lane, plain doubles: the remainder loop runs the block's
//           formula through it with the same constants
//   Sse2    128-bit, cpu type 0
//   Sse3    as Sse2, loads by lddqu (cpu types 1 and 2)
//   Sse41   as Sse3, with roundpd and blendvpd (cpu types 3 and 4)
//   Avx     256-bit floating point, integer work on 128-bit halves
//           (cpu type 5: AVX without AVX2 or FMA)
//
// Included by the per-cpu units only, inside an unnamed namespace, so that
// each unit's copies are compiled with that unit's instruction set and no
// other unit can bind to them. An op never calls another op that a derived
// wrapper redefines; ops built from others are templates over the wrapper.
#pragma once

#include <immintrin.h>

#include <cstdint>
#include <cstring>

#include "kernels/common/bits.h"

namespace {

// The double at an unsigned byte offset from t: table lookups index by
// offsets their integer work has already scaled.
inline const double* at(const double* t, int32_t offset) {
    return reinterpret_cast<const double*>(reinterpret_cast<const char*>(t) +
                                           static_cast<uint32_t>(offset));
}

struct Scalar {
    using vd = double;
    static constexpr int lanes = 1;

    static vd load(const double* p) { return *p; }
    static void store(double* p, vd v) { *p = v; }
    static vd splat(double c) { return c; }
    static vd add(vd a, vd b) { return a + b; }
    static vd sub(vd a, vd b) { return a - b; }
    static vd mul(vd a, vd b) { return a * b; }
    static vd div(vd a, vd b) { return a / b; }
    // two roundings: no fused multiply-add on any cpu type
    static vd mul_add(vd a, vd b, vd c) { return a * b + c; }
    static vd sqrt(vd a) { return __builtin_sqrt(a); }

    // Bitwise ops on the 64-bit patterns of the lanes.
    static vd and_(vd a, vd b) { return zvl::from_bits(zvl::bits(a) & zvl::bits(b)); }
    static vd or_(vd a, vd b) { return zvl::from_bits(zvl::bits(a) | zvl::bits(b)); }
    static vd xor_(vd a, vd b) { return zvl::from_bits(zvl::bits(a) ^ zvl::bits(b)); }
    static vd andnot(vd a, vd b) { return zvl::from_bits(~zvl::bits(a) & zvl::bits(b)); }
    // 64-bit integer add and subtract of the patterns
    static vd add_i64(vd a, vd b) { return zvl::from_bits(zvl::bits(a) + zvl::bits(b)); }
    static vd sub_i64(vd a, vd b) { return zvl::from_bits(zvl::bits(a) - zvl::bits(b)); }

    // Comparisons give a lane of all ones or all zeros (as a double pattern).
    static vd lt(vd a, vd b) { return zvl::from_bits(a < b ? ~0ull : 0); }
    static vd le(vd a, vd b) { return zvl::from_bits(a <= b ? ~0ull : 0); }
    static vd eq(vd a, vd b) { return zvl::from_bits(a == b ? ~0ull : 0); }
    // One bit per lane from the lanes' sign bits.
    static int mask(vd m) { return static_cast<int>(zvl::bits(m) >> 63); }
    // m ? a : b, lane by lane, for masks from the comparisons.
    static vd select(vd m, vd a, vd b) { return zvl::bits(m) ? a : b; }

    // Integer work on one 32-bit half of each lane (`vi`): hi32 takes the
    // high words (sign, exponent, top of the mantissa), lo32 the low words.
    // Adds wrap; shifts take a constant count; ilt compares signed.
    using vi = int32_t;
    static vi hi32(vd x) { return static_cast<int32_t>(zvl::bits(x) >> 32); }
    static vi lo32(vd x) { return static_cast<int32_t>(zvl::bits(x)); }
    static vi isplat(int32_t c) { return c; }
    static vi iadd(vi a, vi b) {
        return static_cast<int32_t>(static_cast<uint32_t>(a) + static_cast<uint32_t>(b));
    }
    static vi iand(vi a, vi b) { return a & b; }
    static vi isrl(vi a, int s) { return static_cast<int32_t>(static_cast<uint32_t>(a) >> s); }
    static vi isra(vi a, int s) { return a >> s; }
    static vi ilt(vi a, vi b) { return a < b ? -1 : 0; }
    static vd icvt(vi a) { return static_cast<double>(a); }
    // One bit per lane from the signs of a vi.
    static int imask(vi m) { return static_cast<int>(static_cast<uint32_t>(m) >> 31); }
    static void istore(int32_t* p, vi a) { p[0] = a; }
    // One scalar load per lane: lane l reads the double at byte offset
    // o[l] (unsigned) from t.
    static vd gather(const double* t, const int32_t* o) { return *at(t, o[0]); }
    // Two neighbours per lane: p gets the double at o[l], q the next one.
    static void gather2(const double* t, const int32_t* o, vd& p, vd& q) {
        p = at(t, o[0])[0];
        q = at(t, o[0])[1];
    }
};

struct Sse2 {
    using vd = __m128d;
    static constexpr int lanes = 2;

    static vd load(const double* p) { return _mm_loadu_pd(p); }
    static void store(double* p, vd v) { _mm_storeu_pd(p, v); }
    static vd splat(double c) { return _mm_set1_pd(c); }
    static vd add(vd a, vd b) { return _mm_add_pd(a, b); }
    static vd sub(vd a, vd b) { return _mm_sub_pd(a, b); }
    static vd mul(vd a, vd b) { return _mm_mul_pd(a, b); }
    static vd div(vd a, vd b) { return _mm_div_pd(a, b); }
    static vd mul_add(vd a, vd b, vd c) { return _mm_add_pd(_mm_mul_pd(a, b), c); }
    static vd sqrt(vd a) { return _mm_sqrt_pd(a); }

    static vd and_(vd a, vd b) { return _mm_and_pd(a, b); }
    static vd or_(vd a, vd b) { return _mm_or_pd(a, b); }
    static vd xor_(vd a, vd b) { return _mm_xor_pd(a, b); }
    static vd andnot(vd a, vd b) { return _mm_andnot_pd(a, b); }
    static vd add_i64(vd a, vd b) {
        return _mm_castsi128_pd(_mm_add_epi64(_mm_castpd_si128(a), _mm_castpd_si128(b)));
    }
    static vd sub_i64(vd a, vd b) {
        return _mm_castsi128_pd(_mm_sub_epi64(_mm_castpd_si128(a), _mm_castpd_si128(b)));
    }

    static vd lt(vd a, vd b) { return _mm_cmplt_pd(a, b); }
    static vd le(vd a, vd b) { return _mm_cmple_pd(a, b); }
    static vd eq(vd a, vd b) { return _mm_cmpeq_pd(a, b); }
    static int mask(vd m) { return _mm_movemask_pd(m); }
    static vd select(vd m, vd a, vd b) { return _mm_or_pd(_mm_and_pd(m, a), _mm_andnot_pd(m, b)); }

    // vi: the 32-bit halves gathered into the low int32 lanes (two used).
    using vi = __m128i;
    static vi hi32(vd x) { return _mm_shuffle_epi32(_mm_castpd_si128(x), _MM_SHUFFLE(3, 1, 3, 1)); }
    static vi lo32(vd x) { return _mm_shuffle_epi32(_mm_castpd_si128(x), _MM_SHUFFLE(2, 0, 2, 0)); }
    static vi isplat(int32_t c) { return _mm_set1_epi32(c); }
    static vi iadd(vi a, vi b) { return _mm_add_epi32(a, b); }
    static vi iand(vi a, vi b) { return _mm_and_si128(a, b); }
    static vi isrl(vi a, int s) { return _mm_srli_epi32(a, s); }
    static vi isra(vi a, int s) { return _mm_srai_epi32(a, s); }
    static vi ilt(vi a, vi b) { return _mm_cmplt_epi32(a, b); }
    static vd icvt(vi a) { return _mm_cvtepi32_pd(a); }
    static int imask(vi m) { return _mm_movemask_ps(_mm_castsi128_ps(m)) & 3; }
    static void istore(int32_t* p, vi a) { _mm_storel_epi64(reinterpret_cast<__m128i*>(p), a); }
    static vd gather(const double* t, const int32_t* o) {
        return _mm_loadh_pd(_mm_load_sd(at(t, o[0])), at(t, o[1]));
    }
    static void gather2(const double* t, const int32_t* o, vd& p, vd& q) {
        const __m128d a = _mm_loadu_pd(at(t, o[0])), b = _mm_loadu_pd(at(t, o[1]));
        p = _mm_unpacklo_pd(a, b);
        q = _mm_unpackhi_pd(a, b);
    }
};

struct Sse3 : Sse2 {
    static vd load(const double* p) {
        return _mm_castsi128_pd(_mm_lddqu_si128(reinterpret_cast<const __m128i*>(p)));
    }
};

#ifdef __SSE4_1__
struct Sse41 : Sse3 {
    static vd select(vd m, vd a, vd b) { return _mm_blendv_pd(b, a, m); }
};
#endif

#ifdef __AVX__
struct Avx {
    using vd = __m256d;
    static constexpr int lanes = 4;

    static vd load(const double* p) { return _mm256_loadu_pd(p); }
    static void store(double* p, vd v) { _mm256_storeu_pd(p, v); }
    static vd splat(double c) { return _mm256_set1_pd(c); }
    static vd add(vd a, vd b) { return _mm256_add_pd(a, b); }
    static vd sub(vd a, vd b) { return _mm256_sub_pd(a, b); }
    static vd mul(vd a, vd b) { return _mm256_mul_pd(a, b); }
    static vd div(vd a, vd b) { return _mm256_div_pd(a, b); }
    static vd mul_add(vd a, vd b, vd c) { return _mm256_add_pd(_mm256_mul_pd(a, b), c); }
    static vd sqrt(vd a) { return _mm256_sqrt_pd(a); }

    static vd and_(vd a, vd b) { return _mm256_and_pd(a, b); }
    static vd or_(vd a, vd b) { return _mm256_or_pd(a, b); }
    static vd xor_(vd a, vd b) { return _mm256_xor_pd(a, b); }
    static vd andnot(vd a, vd b) { return _mm256_andnot_pd(a, b); }
    // Integer work on the two 128-bit halves: AVX has no 256-bit integer ops.
    static vd add_i64(vd a, vd b) { return halves<op_add>(a, b); }
    static vd sub_i64(vd a, vd b) { return halves<op_sub>(a, b); }

    static vd lt(vd a, vd b) { return _mm256_cmp_pd(a, b, _CMP_LT_OS); }
    static vd le(vd a, vd b) { return _mm256_cmp_pd(a, b, _CMP_LE_OS); }
    static vd eq(vd a, vd b) { return _mm256_cmp_pd(a, b, _CMP_EQ_OQ); }
    static int mask(vd m) { return _mm256_movemask_pd(m); }
    static vd select(vd m, vd a, vd b) { return _mm256_blendv_pd(b, a, m); }

    // vi: the 32-bit halves of the four lanes in one 128-bit register.
    using vi = __m128i;
    static vi hi32(vd x) { return halves32<_MM_SHUFFLE(3, 1, 3, 1)>(x); }
    static vi lo32(vd x) { return halves32<_MM_SHUFFLE(2, 0, 2, 0)>(x); }
    static vi isplat(int32_t c) { return _mm_set1_epi32(c); }
    static vi iadd(vi a, vi b) { return _mm_add_epi32(a, b); }
    static vi iand(vi a, vi b) { return _mm_and_si128(a, b); }
    static vi isrl(vi a, int s) { return _mm_srli_epi32(a, s); }
    static vi isra(vi a, int s) { return _mm_srai_epi32(a, s); }
    static vi ilt(vi a, vi b) { return _mm_cmplt_epi32(a, b); }
    static vd icvt(vi a) { return _mm256_cvtepi32_pd(a); }
    static int imask(vi m) { return _mm_movemask_ps(_mm_castsi128_ps(m)); }
    static void istore(int32_t* p, vi a) { _mm_storeu_si128(reinterpret_cast<__m128i*>(p), a); }
    static vd gather(const double* t, const int32_t* o) {
        const __m128d lo = _mm_loadh_pd(_mm_load_sd(at(t, o[0])), at(t, o[1]));
        const __m128d hi = _mm_loadh_pd(_mm_load_sd(at(t, o[2])), at(t, o[3]));
        return _mm256_insertf128_pd(_mm256_castpd128_pd256(lo), hi, 1);
    }
    // one 16-byte load per lane and two unpacks for both columns
    static void gather2(const double* t, const int32_t* o, vd& p, vd& q) {
        const vd a02 = _mm256_insertf128_pd(_mm256_castpd128_pd256(_mm_loadu_pd(at(t, o[0]))),
                                            _mm_loadu_pd(at(t, o[2])), 1);
        const vd a13 = _mm256_insertf128_pd(_mm256_castpd128_pd256(_mm_loadu_pd(at(t, o[1]))),
                                            _mm_loadu_pd(at(t, o[3])), 1);
        p = _mm256_unpacklo_pd(a02, a13);
        q = _mm256_unpackhi_pd(a02, a13);
    }

  private:
    static __m128i op_add(__m128i a, __m128i b) { return _mm_add_epi64(a, b); }
    static __m128i op_sub(__m128i a, __m128i b) { return _mm_sub_epi64(a, b); }
    template <int Sel>
    static vi halves32(vd x) {
        return _mm_castps_si128(_mm_shuffle_ps(_mm_castpd_ps(_mm256_castpd256_pd128(x)),
                                               _mm_castpd_ps(_mm256_extractf128_pd(x, 1)), Sel));
    }
    template <__m128i (*Op)(__m128i, __m128i)>
    static vd halves(vd a, vd b) {
        const __m128i lo = Op(_mm_castpd_si128(_mm256_castpd256_pd128(a)),
                              _mm_castpd_si128(_mm256_castpd256_pd128(b)));
        const __m128i hi = Op(_mm_castpd_si128(_mm256_extractf128_pd(a, 1)),
                              _mm_castpd_si128(_mm256_extractf128_pd(b, 1)));
        return _mm256_insertf128_pd(_mm256_castpd128_pd256(_mm_castsi128_pd(lo)),
                                    _mm_castsi128_pd(hi), 1);
    }
};
#endif

// A constant of the pattern `b` in every lane.
template <class V>
inline typename V::vd splat_bits(uint64_t b) {
    return V::splat(zvl::from_bits(b));
}

}  // namespace
