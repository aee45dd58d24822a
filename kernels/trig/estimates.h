// The single-precision reciprocal and reciprocal square root estimates on
// double lanes, and the quotients, reciprocals and roots refined from them:
// the inverse trigonometric kernels, Asinh HA's root and Acosh HA near 1
// divide and take roots this way rather than with the double division and
// root instructions.
//
// The estimates are the hardware's (relative error below 1.5 * 2^-12); their
// exact bits differ between processor makers, so a result may differ in
// its last bit between machines, never between the cpu types of one.
//
// Included by the per-cpu units only, inside an unnamed namespace, as isa.h.
#pragma once

#include <immintrin.h>

#include <cstdint>
#include <type_traits>

#include "kernels/common/estimates.h"
#include "kernels/common/isa.h"
#include "kernels/common/lanes.h"
#include "kernels/trig/double_word.h"
#include "kernels/trig/twin.h"

namespace {

// The reciprocal estimate of each 32-bit lane taken as a float.
inline int32_t rcp_words(int32_t w) {
    const __m128 f = _mm_castsi128_ps(_mm_cvtsi32_si128(w));
    return _mm_cvtsi128_si32(_mm_castps_si128(_mm_rcp_ss(f)));
}
inline __m128i rcp_words(__m128i w) { return _mm_castps_si128(_mm_rcp_ps(_mm_castsi128_ps(w))); }
template <class T>
inline TwinOf<T> rcp_words(TwinOf<T> w) {
    return {rcp_words(w.a), rcp_words(w.b)};
}

// R ~ 1/q for positive normal q with q < 2^1021, built on the high word of q
// so that any exponent works: the estimate of q's significand as a float in
// [1, 2), its exponent replaced by q's negated one. R keeps 20 bits of the
// estimate and a zero low word, so the product of R and q's high word (q
// with its low word cleared) is exact.
template <class V>
inline typename V::vd recip_estimate(typename V::vd q) {
    using L = LanesOf<V>;
    using vi = typename L::vi;
    const vi w = L::hi32(q);
    const vi f = L::add(L::and_(L::template slli<3>(w), L::splat(0x007fffff)), L::splat(0x3f800000));
    const vi r = L::sub(L::template srli<3>(rcp_words(f)), L::splat(0x07f00000));
    const vi e = L::sub(L::splat(0x7fe00000), L::and_(w, L::splat(static_cast<int32_t>(0xfff00000))));
    return L::add_hi32(V::splat(0.0), L::add(r, e));
}

// With R the estimate of 1/q and e = q R - 1 (|e| < 2^-11.4, q's high word
// times R exact), 1/q = R (1 - e + e^2 - ...): R and the correction's
// factor f = e (1 - e (1 - ...)), Terms powers of e deep, so that 1/q = R -
// R f to a relative error of about 2^-11.4 (Terms + 1).
template <class V, int Terms>
inline void recip_series(typename V::vd q, typename V::vd& R, typename V::vd& f) {
    using vd = typename V::vd;
    R = recip_estimate<V>(q);
    const vd qh = V::and_(q, splat_bits<V>(0xffffffff00000000));
    const vd e = V::add(V::sub(V::mul(qh, R), V::splat(1.0)), V::mul(V::sub(q, qh), R));
    vd c = V::splat(1.0);
    if constexpr (Terms > 1) {
        c = V::sub(V::splat(1.0), e);
        for (int k = 2; k < Terms; ++k) c = V::sub(V::splat(1.0), V::mul(e, c));
    }
    f = V::mul(e, c);
}

// num / q for positive normal q < 2^1021 by the series above. num's high
// word times R is exact too, so the quotient is rounded once, at the end.
template <class V, int Terms>
inline typename V::vd divide_refined(typename V::vd num, typename V::vd q) {
    using vd = typename V::vd;
    vd R, f;
    recip_series<V, Terms>(q, R, f);
    const vd nh = V::and_(num, splat_bits<V>(0xffffffff00000000));
    const vd a = V::mul(nh, R), b = V::mul(V::sub(num, nh), R);
    return V::add(a, V::sub(b, V::mul(V::add(a, b), f)));
}

// 1/q the same way: divide_refined's bits for num = 1 (there a = R and b =
// 0, so a + (b - (a + b) f) is R - R f to the bit), five operations fewer.
template <class V, int Terms>
inline typename V::vd recip_refined(typename V::vd q) {
    typename V::vd R, f;
    recip_series<V, Terms>(q, R, f);
    return V::sub(R, V::mul(R, f));
}

// 1/sqrt(z) for z within the float range: the estimate y0 refined by the
// binomial series of (1 - e)^(-1/2), e = 1 - z y0^2 (exact but for the
// product's rounding; |e| < 2^-10.4), to e^Terms: to about 2^-53 relative
// with five terms, 2^-33 with two (enough for sqrt_dw, whose exact residual
// makes up the rest to 2^-58 with s_hi rounded).
template <class V, int Terms = 5>
inline typename V::vd rsqrt_refined(typename V::vd z) {
    static_assert(Terms >= 2 && Terms <= 5, "the series is tabled to e^5");
    using vd = typename V::vd;
    constexpr double k[] = {0.5, 0.375, 0.3125, 0.2734375, 0.24609375};
    const vd y0 = rsqrt_estimate(z);
    const vd e = V::sub(V::splat(1.0), V::mul(z, V::mul(y0, y0)));
    vd c = V::splat(k[Terms - 1]);
#pragma GCC unroll 4
    for (int i = Terms - 2; i >= 0; --i) c = V::mul_add(c, e, V::splat(k[i]));
    return V::add(y0, V::mul(y0, V::mul(e, c)));
}

// Whether the wrapper's integer lanes run as one instruction on the same
// registers: the 128-bit wrappers and their twins, not AVX without AVX2
// (which takes 64-bit integer steps a half at a time).
template <class V>
struct IntegerLanes : std::bool_constant<(V::lanes <= 2)> {};
template <class V>
struct IntegerLanes<Twin<V>> : IntegerLanes<V> {};

// x 2^K, exact, for x and the result normal (or x zero where K > 0 is not
// asked): by adding K to the exponent where the integer lanes are cheap, so
// the step runs beside the multiplications rather than among them.
template <class V, int K>
inline typename V::vd times_pow2(typename V::vd x) {
    static_assert(K >= -64 && K <= 64, "a small power of two");
    if constexpr (IntegerLanes<V>::value) {
        return V::add_i64(x, splat_bits<V>(static_cast<uint64_t>(static_cast<int64_t>(K)) << 52));
    } else {
        constexpr double f = K >= 0 ? double(uint64_t{1} << (K & 63)) : 1.0 / double(uint64_t{1} << ((-K) & 63));
        return V::mul(x, V::splat(f));
    }
}

// sqrt(z_hi + z_lo) = s_hi + s_lo to 2^-72, given y = rsqrt_refined(z_hi)
// and |z_lo| <= ulp(z_hi). s_hi is z_hi y cut to 26 bits, so its square is
// exact and d = z_hi - s_hi^2 too (the two agree within 2^-24); with D = (d
// + z_lo) / s_hi^2 and h = (d + z_lo) y / 2 = s_hi (D/2 - D^2/4 + ...),
// sqrt = s_hi (1 + D/2 - D^2/8 + ...) = s_hi + h + h^2 y / 2 to s_hi D^3/16.
// No product needs splitting. s_lo is up to 2^-25 of s_hi.
//
// Nearest asks for s_hi rounded to 26 bits rather than cut (an integer add
// on the pattern before the cut, for 128-bit vectors): s_hi is then within
// 2^-26 of the root, which halves the error a rougher y leaves in s_lo.
template <class V, bool Nearest = false>
inline void sqrt_dw(typename V::vd z_hi, typename V::vd z_lo, typename V::vd y,
                    typename V::vd& s_hi, typename V::vd& s_lo) {
    using vd = typename V::vd;
    const vd y_half = times_pow2<V, -1>(y);
    const vd s = V::mul(z_hi, y);
    s_hi = upper_half<V>(Nearest ? V::add_i64(s, splat_bits<V>(uint64_t{1} << 26)) : s);
    const vd h = V::mul(V::add(V::sub(z_hi, V::mul(s_hi, s_hi)), z_lo), y_half);
    s_lo = V::add(h, V::mul(V::mul(h, h), y_half));
}

}  // namespace
