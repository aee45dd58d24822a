// The building blocks of the extended-precision support set: access to the
// x87 extended format (64-bit significand with an explicit leading bit,
// 15-bit exponent biased by 16383), exact powers of two and scaling, and
// the error-free transformations that carry a value as an unevaluated sum
// hi + lo of two extended numbers.
//
// All of it is x87 arithmetic on long double and integer work on the bit
// pattern: no double arithmetic, so that a unit compiled for AVX still
// emits no VEX-coded instruction here. Every routine assumes the x87
// control word holds round to nearest with the 64-bit significand (field
// 0x0F00 equal to 0x0300), which the complex kernels set on entry.
#pragma once

#include <cstdint>
#include <cstring>

#include "kernels/complex/ext/constants.h"

// A routine of the set that its callers inline whatever its size: the
// short main paths, which the complex routines take straight from their
// double arguments.
#define ZVL_EXT_INLINE __attribute__((always_inline)) inline

namespace {

// hi + lo, |lo| at most about an ulp of hi unless a routine says otherwise.
struct Pair {
    long double hi, lo;
};

// The 64-bit significand (leading bit included) of x.
inline uint64_t ext_sig(long double x) {
    uint64_t m;
    std::memcpy(&m, &x, sizeof m);
    return m;
}

// The 16-bit sign and biased exponent of x.
inline unsigned ext_sign_exp(long double x) {
    uint16_t se;
    std::memcpy(&se, reinterpret_cast<const unsigned char*>(&x) + 8, sizeof se);
    return se;
}

// The biased exponent: 0 for zeros and subnormals, 0x7fff for infinities
// and NaNs.
inline int ext_exp_field(long double x) { return static_cast<int>(ext_sign_exp(x) & 0x7fff); }

inline bool ext_sign(long double x) { return (ext_sign_exp(x) & 0x8000) != 0; }

inline long double ext_make(uint64_t sig, unsigned sign_exp) {
    long double x = 0;
    std::memcpy(&x, &sig, sizeof sig);
    const uint16_t se = static_cast<uint16_t>(sign_exp);
    std::memcpy(reinterpret_cast<unsigned char*>(&x) + 8, &se, sizeof se);
    return x;
}

// 2^k for k in [-16382, 16383], the normal range.
inline long double pow2(int k) {
    return ext_make(uint64_t{1} << 63, static_cast<unsigned>(k + 16383));
}

// 2^k for |k| below 1000, through a double: one load, where
// pow2 would store the extended value in two pieces and read it whole.
inline long double pow2_near(int k) {
    const uint64_t b = static_cast<uint64_t>(1023 + k) << 52;
    double d;
    std::memcpy(&d, &b, sizeof d);
    return d;
}

// x * 2^k for any k with x * 2^k in or near the format's range; one
// rounding at most, at the second product when the result is subnormal.
inline long double scale2(long double x, int k) {
    if (k > 16383) {
        x *= pow2(16383);
        k -= 16383;
        if (k > 16383) k = 16383;
    } else if (k < -16382) {
        x *= pow2(-16382);
        k += 16382;
        if (k < -16382) k = -16382;
    }
    return x * pow2(k);
}

// A value the optimiser cannot see through, so that a product meant to
// overflow or underflow is made at run time and raises its flag.
inline long double ext_opaque(long double v) {
    __asm__("" : "+t"(v));
    return v;
}

// |x| by the unit's fabs, in the register: reading the sign from memory
// right after the value was computed stalls the load for want of store
// forwarding. A NaN keeps its payload and raises nothing.
inline long double ext_abs(long double x) { return __builtin_fabsl(x); }

// -x when neg holds; for results, whose NaNs are never flipped by a sign.
inline long double ext_neg_if(long double x, bool neg) { return neg ? -x : x; }

// s + e = a + b exactly, for |a| >= |b| or a = 0 (Dekker).
inline Pair fast_two_sum(long double a, long double b) {
    const long double s = a + b;
    return {s, b - (s - a)};
}

// s + e = a + b exactly, whatever the order of sizes (Knuth).
inline Pair two_sum(long double a, long double b) {
    const long double s = a + b;
    const long double bb = s - a;
    return {s, (a - (s - bb)) + (b - bb)};
}

// a = hi + lo with hi of at most 31 significant bits and lo of at most 32
// (Dekker's split with 2^33 + 1), so that products of parts are exact.
// Needs |a| below 2^16350.
inline Pair split(long double a) {
    const long double t = a * Ext::dekker;
    const long double hi = t - (t - a);
    return {hi, a - hi};
}

// p + e = a * b exactly, barring underflow and overflow (Dekker).
inline Pair two_prod(long double a, long double b) {
    const long double p = a * b;
    const Pair x = split(a), y = split(b);
    return {p, ((x.hi * y.hi - p) + x.hi * y.lo + x.lo * y.hi) + x.lo * y.lo};
}

// (a.hi + a.lo) / (b.hi + b.lo) as a pair, relative error about 2^-126.
inline Pair div_pair(Pair a, Pair b) {
    const long double q = a.hi / b.hi;
    const Pair p = two_prod(q, b.hi);
    // a.hi - p.hi is exact: q b.hi is within an ulp of a.hi
    const long double r = ((a.hi - p.hi) - p.lo) + a.lo - q * b.lo;
    return {q, r / b.hi};
}

// (a.hi + a.lo) (b.hi + b.lo) as a pair.
inline Pair mul_pair(Pair a, Pair b) {
    const Pair p = two_prod(a.hi, b.hi);
    return {p.hi, p.lo + (a.hi * b.lo + a.lo * b.hi)};
}

// a + b as a pair, from the exact sum of the high parts.
inline Pair add_pair(Pair a, Pair b) {
    const Pair s = two_sum(a.hi, b.hi);
    return {s.hi, s.lo + (a.lo + b.lo)};
}

// Horner's scheme in extended arithmetic, c[0] + z (c[1] + z (...)), over
// coefficients stored as extended values or, for short polynomials whose
// terms stay far below the result, as doubles.
template <class T, int N>
inline long double horner(const T (&c)[N], long double z) {
    long double p = c[N - 1];
    for (int i = N - 2; i >= 0; --i) p = c[i] + z * p;
    return p;
}

// The same sum by Estrin's scheme, given z and z^2: pairs c[i] + z c[i+1]
// combined by powers of z^2, so that the dependent chain is about half
// Horner's (a different order of roundings, so not the same bits).
template <class T, int N>
inline long double estrin(const T (&c)[N], long double z, long double z2) {
    static_assert(N == 3 || N == 4, "three or four coefficients");
    const long double lo = c[0] + z * c[1];
    if constexpr (N == 3) return lo + z2 * c[2];
    else return lo + z2 * (c[2] + z * c[3]);
}

// A row of a rotation table: f(t) = S + S_lo and g(t) = C + C_lo at a table
// point t (sin and cos, or sinh and cosh).
struct RotRow {
    long double S, C;
    double S_lo, C_lo;
};

// f(t + r) and g(t + r) from the row's f(t), g(t) and from sr = f(r) - r and
// cr = g(r) - 1, with r = rh + rl: the addition theorems
//   sin(t + r) = S cos r + C sin r,      cos(t + r) = C cos r - S sin r,
//   sinh(t + r) = S cosh r + C sinh r,   cosh(t + r) = C cosh r + S sinh r,
// so g's S term has the sign `g_sign` (-1 or +1). The leading terms S and
// C rh are added last; rl's second-order terms are below 2^-120.
inline void rotate(const RotRow& t, bool s_neg, long double rh, long double rl, long double sr,
                   long double cr, long double g_sign, long double* f, long double* g) {
    const long double S = s_neg ? -t.S : t.S, S_lo = s_neg ? -t.S_lo : t.S_lo;
    const long double sin_r = sr + rl;  // f(r) - rh
    const long double f_lo = (S_lo + S * cr) + (t.C * sin_r + t.C_lo * rh);
    const long double g_lo = (t.C_lo + t.C * cr) + g_sign * (S * sin_r + S_lo * rh);
    *f = S + (t.C * rh + f_lo);
    *g = t.C + (g_sign * (S * rh) + g_lo);
}

// One result of a routine with two (sincos, sinhcosh): I = 0 the first.
template <void (*F)(long double, long double*, long double*), int I>
inline long double one_of_two(long double x) {
    long double r[2];
    F(x, &r[0], &r[1]);
    return r[I];
}

// An integral v (|v| < 2^63) as an integer, by the unit's integer store
// (fistp): an eight-byte store that the integer load takes straight from
// the store buffer, where reading the significand of a ten-byte store
// waits for the store to complete, and the ten-byte store itself is
// several times the work.
inline int64_t ext_to_int(long double v) {
    int64_t n;
    __asm__("fistpll %0" : "=m"(n) : "t"(v) : "st");
    return n;
}

// Integer nearest x (|x| < 2^62), by adding and subtracting 3 * 2^62,
// which rounds to an integer in the current (nearest) mode.
struct Rounded {
    long double value;
    int64_t n;
};
inline Rounded round_to_int(long double x) {
    const long double v = (x + Ext::shifter) - Ext::shifter;
    return {v, ext_to_int(v)};
}

}  // namespace
