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

#include "base/bits.h"

namespace {

struct Scalar {
    using vd = double;
    static constexpr int lanes = 1;

    static vd load(const double* p) { return *p; }
    static void store(double* p, vd v) { *p = v; }
    // A store that goes around the caches (see loops/stream.h); plain here.
    static void stream(double* p, vd v) { *p = v; }
    static vd splat(double c) { return c; }
    static vd add(vd a, vd b) { return a + b; }
    static vd sub(vd a, vd b) { return a - b; }
    static vd mul(vd a, vd b) { return a * b; }
    static vd div(vd a, vd b) { return a / b; }
    // two roundings: no fused multiply-add on any cpu type
    static vd mul_add(vd a, vd b, vd c) { return a * b + c; }
    // the instruction, as in the vector wrappers: -fno-math-errno keeps the
    // C library (and its errno) out of it
    static vd sqrt(vd a) { return __builtin_sqrt(a); }
    // maxpd/minpd: b where the compare fails (a NaN, or equal parts)
    static vd max_(vd a, vd b) { return a > b ? a : b; }
    static vd min_(vd a, vd b) { return a < b ? a : b; }

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

    // Shifts of the 64-bit patterns; the count is a constant of the caller.
    static vd shl_i64(vd a, int n) { return zvl::from_bits(zvl::bits(a) << n); }
    static vd shr_i64(vd a, int n) { return zvl::from_bits(zvl::bits(a) >> n); }
    // Table lookups, one load per lane. low_words gives each lane's low 32
    // pattern bits (the index a rounded value holds); gather loads t[j[l]]
    // into lane l, and gather_pairs loads the two halves of 16-byte entries,
    // t[2*j[l]] and t[2*j[l]+1], into lane l of `a` and `b`.
    static void low_words(vd a, uint32_t* w) { w[0] = static_cast<uint32_t>(zvl::bits(a)); }
    // gather_adjacent loads t[j[l]] and t[j[l]+1], two neighbouring words
    // of a longer row, into lane l of `a` and `b` (one unaligned 16-byte
    // load a lane where the vector wrappers have it).
    static vd gather(const double* t, const uint32_t* j) { return t[j[0]]; }
    static void gather_pairs(const double* t, const uint32_t* j, vd& a, vd& b) {
        a = t[2 * j[0]];
        b = t[2 * j[0] + 1];
    }
    static void gather_adjacent(const double* t, const uint32_t* j, vd& a, vd& b) {
        a = t[j[0]];
        b = t[j[0] + 1];
    }
};

struct Sse2 {
    using vd = __m128d;
    static constexpr int lanes = 2;

    static vd load(const double* p) { return _mm_loadu_pd(p); }
    static void store(double* p, vd v) { _mm_storeu_pd(p, v); }
    // Non-temporal: p 16-byte aligned.
    static void stream(double* p, vd v) { _mm_stream_pd(p, v); }
    static vd splat(double c) { return _mm_set1_pd(c); }
    static vd add(vd a, vd b) { return _mm_add_pd(a, b); }
    static vd sub(vd a, vd b) { return _mm_sub_pd(a, b); }
    static vd mul(vd a, vd b) { return _mm_mul_pd(a, b); }
    static vd div(vd a, vd b) { return _mm_div_pd(a, b); }
    static vd mul_add(vd a, vd b, vd c) { return _mm_add_pd(_mm_mul_pd(a, b), c); }
    static vd sqrt(vd a) { return _mm_sqrt_pd(a); }
    static vd max_(vd a, vd b) { return _mm_max_pd(a, b); }
    static vd min_(vd a, vd b) { return _mm_min_pd(a, b); }

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

    static vd shl_i64(vd a, int n) {
        return _mm_castsi128_pd(_mm_slli_epi64(_mm_castpd_si128(a), n));
    }
    static vd shr_i64(vd a, int n) {
        return _mm_castsi128_pd(_mm_srli_epi64(_mm_castpd_si128(a), n));
    }
    static void low_words(vd a, uint32_t* w) {
        const __m128i i = _mm_castpd_si128(a);
        w[0] = static_cast<uint32_t>(_mm_cvtsi128_si32(i));
        w[1] = static_cast<uint32_t>(_mm_cvtsi128_si32(_mm_unpackhi_epi64(i, i)));
    }
    static vd gather(const double* t, const uint32_t* j) {
        return _mm_loadh_pd(_mm_load_sd(t + j[0]), t + j[1]);
    }
    static void gather_pairs(const double* t, const uint32_t* j, vd& a, vd& b) { words<2>(t, j, a, b); }
    static void gather_adjacent(const double* t, const uint32_t* j, vd& a, vd& b) { words<1>(t, j, a, b); }

  private:
    // t[S*j[l]] and the word after it, lane by lane
    template <uint32_t S>
    static void words(const double* t, const uint32_t* j, vd& a, vd& b) {
        const __m128d p0 = _mm_loadu_pd(t + S * j[0]), p1 = _mm_loadu_pd(t + S * j[1]);
        a = _mm_unpacklo_pd(p0, p1);
        b = _mm_unpackhi_pd(p0, p1);
    }
};

struct Sse3 : Sse2 {
    static vd load(const double* p) {
        return _mm_castsi128_pd(_mm_lddqu_si128(reinterpret_cast<const __m128i*>(p)));
    }
};

#ifdef __SSE4_1__
struct Sse41 : Sse3 {
    // Stays one blendvpd under GCC 12 at SSE4.1 and SSE4.2, whatever the
    // mask comes from: the fold that Avx::select avoids takes only 256-bit
    // masks.
    static vd select(vd m, vd a, vd b) { return _mm_blendv_pd(b, a, m); }
};
#endif

#ifdef __AVX__
struct Avx {
    using vd = __m256d;
    static constexpr int lanes = 4;

    static vd load(const double* p) { return _mm256_loadu_pd(p); }
    static void store(double* p, vd v) { _mm256_storeu_pd(p, v); }
    // Non-temporal, by halves: p need only be 16-byte aligned. The halves
    // go out in address order, vector after vector, as the statements of
    // one asm each: the compiler otherwise stored a block's low halves
    // first and its high halves after, so every line of the block was
    // written in two visits, and Div HA streamed from memory at 1.30 ns an
    // element where the same loop with its stores in order takes 1.25.
    static void stream(double* p, vd v) {
        const __m128d hi = _mm256_extractf128_pd(v, 1);
        __asm__ volatile("vmovntpd %x1, %0" : "=m"(*reinterpret_cast<__m128d*>(p)) : "x"(v));
        __asm__ volatile("vmovntpd %1, %0" : "=m"(*reinterpret_cast<__m128d*>(p + 2)) : "x"(hi));
    }
    static vd splat(double c) { return _mm256_set1_pd(c); }
    static vd add(vd a, vd b) { return _mm256_add_pd(a, b); }
    static vd sub(vd a, vd b) { return _mm256_sub_pd(a, b); }
    static vd mul(vd a, vd b) { return _mm256_mul_pd(a, b); }
    static vd div(vd a, vd b) { return _mm256_div_pd(a, b); }
    static vd mul_add(vd a, vd b, vd c) { return _mm256_add_pd(_mm256_mul_pd(a, b), c); }
    static vd sqrt(vd a) { return _mm256_sqrt_pd(a); }
    static vd max_(vd a, vd b) { return _mm256_max_pd(a, b); }
    static vd min_(vd a, vd b) { return _mm256_min_pd(a, b); }

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
    // vblendvpd by hand: GCC 12 folds the intrinsic into a select on the sign
    // of a 256-bit integer mask, which AVX without 256-bit integer compares
    // expands lane by lane with branches.
    static vd select(vd m, vd a, vd b) {
        vd r;
        __asm__("vblendvpd %3, %2, %1, %0" : "=x"(r) : "x"(b), "x"(a), "x"(m));
        return r;
    }

    static vd shl_i64(vd a, int n) {
        return join(_mm_slli_epi64(low(a), n), _mm_slli_epi64(high(a), n));
    }
    static vd shr_i64(vd a, int n) {
        return join(_mm_srli_epi64(low(a), n), _mm_srli_epi64(high(a), n));
    }
    static void low_words(vd a, uint32_t* w) {
        const __m128i l = low(a), h = high(a);
        w[0] = static_cast<uint32_t>(_mm_cvtsi128_si32(l));
        w[1] = static_cast<uint32_t>(_mm_extract_epi32(l, 2));
        w[2] = static_cast<uint32_t>(_mm_cvtsi128_si32(h));
        w[3] = static_cast<uint32_t>(_mm_extract_epi32(h, 2));
    }
    static vd gather(const double* t, const uint32_t* j) {
        const __m128d l = _mm_loadh_pd(_mm_load_sd(t + j[0]), t + j[1]);
        const __m128d h = _mm_loadh_pd(_mm_load_sd(t + j[2]), t + j[3]);
        return _mm256_insertf128_pd(_mm256_castpd128_pd256(l), h, 1);
    }
    // Entries 0 and 2 share one 256-bit register, 1 and 3 another; the
    // in-lane unpacks then give lanes in element order.
    static void gather_pairs(const double* t, const uint32_t* j, vd& a, vd& b) { words<2>(t, j, a, b); }
    static void gather_adjacent(const double* t, const uint32_t* j, vd& a, vd& b) { words<1>(t, j, a, b); }

  private:
    // t[S*j[l]] and the word after it, lane by lane
    template <uint32_t S>
    static void words(const double* t, const uint32_t* j, vd& a, vd& b) {
        const vd p02 = _mm256_insertf128_pd(_mm256_castpd128_pd256(_mm_loadu_pd(t + S * j[0])),
                                            _mm_loadu_pd(t + S * j[2]), 1);
        const vd p13 = _mm256_insertf128_pd(_mm256_castpd128_pd256(_mm_loadu_pd(t + S * j[1])),
                                            _mm_loadu_pd(t + S * j[3]), 1);
        a = _mm256_unpacklo_pd(p02, p13);
        b = _mm256_unpackhi_pd(p02, p13);
    }
    static __m128i low(vd a) { return _mm_castpd_si128(_mm256_castpd256_pd128(a)); }
    static __m128i high(vd a) { return _mm_castpd_si128(_mm256_extractf128_pd(a, 1)); }
    static vd join(__m128i l, __m128i h) {
        return _mm256_insertf128_pd(_mm256_castpd128_pd256(_mm_castsi128_pd(l)),
                                    _mm_castsi128_pd(h), 1);
    }
    static __m128i op_add(__m128i a, __m128i b) { return _mm_add_epi64(a, b); }
    static __m128i op_sub(__m128i a, __m128i b) { return _mm_sub_epi64(a, b); }
    template <__m128i (*Op)(__m128i, __m128i)>
    static vd halves(vd a, vd b) {
        return join(Op(low(a), low(b)), Op(high(a), high(b)));
    }
};
#endif

using zvl::Fp64;

// A constant of the pattern `b` in every lane.
template <class V>
inline typename V::vd splat_bits(uint64_t b) {
    return V::splat(zvl::from_bits(b));
}

// |x|, and the sign bit of x alone.
template <class V>
inline typename V::vd abs_of(typename V::vd x) {
    return V::and_(x, splat_bits<V>(Fp64::abs_mask));
}
template <class V>
inline typename V::vd sign_of(typename V::vd x) {
    return V::and_(x, splat_bits<V>(Fp64::sign_mask));
}

// y with a zero made +0. A sum of zeros of opposite signs is -0 when the
// caller rounds downward, so a kernel that runs in the caller's mode and
// whose exact zero is +0 (a logarithm of 1) sets the sign this way.
template <class V>
inline typename V::vd plus_zero(typename V::vd y) {
    return V::andnot(V::and_(V::eq(y, V::splat(0.0)), splat_bits<V>(Fp64::sign_mask)), y);
}

// All ones in the lanes where the mask m is clear.
template <class V>
inline typename V::vd not_mask(typename V::vd m) {
    return V::andnot(m, splat_bits<V>(Fp64::all_ones));
}

// True when every lane of the mask m is set.
template <class V>
inline bool all_set(typename V::vd m) {
    return V::mask(m) == (1 << V::lanes) - 1;
}

}  // namespace
