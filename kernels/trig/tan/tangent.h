// The scalar tangent and the callout of Tan: exact scalar code for every
// element the vector paths refuse, and for any double at all.
//
//   +-0             x itself
//   infinity        x - x, a NaN, and ZVL_STATUS_ERRDOM (reported under "dTan_HA"
//                   or "dTan_LA" by the index form)
//   NaN             x - x, no status
//   |x| < 2^-252    x, through (x 2^55 - x) 2^-55
//   |x| >= 12800    TrigReduce gives the quadrant q and x - (q + 4k) pi/2 as
//                   high + low; the high word stands in for x, the low word
//                   joins both remainders below
//
// Then with N the nearest integer to v = x 32/pi, the row i = (N + 16q) mod 32
// of TanTable32 belongs to B = i pi/32, one period over 32 rows, and x = B +
// r + c (three parts of pi/32). Rows 0 to 8 and 24 to 31 hold the Taylor
// expansion of tan at B. Around the pole at pi/2 (rows 9 to 23) no
// polynomial can follow the tangent, so those rows hold the expansion of
// its regular part, tan(x) + 1/y with y the distance to the pole, and the
// pole term -1/y is added apart:
//
//   M = v rounded to a multiple of 16 (the nearest pole or zero); y + yl =
//   x - M pi/32 in three parts; W = y cut to 35 bits, R = 1/W, R' = R cut to
//   18 bits by the row's mask (0 outside the pole rows), so W R' is exact and
//   e = 1 - W R' exactly; with f = (y + yl - W) R,
//     1/(y + yl) = R' + R (e - f) up to about 2^-70 relatively,
//   the short reciprocal R' exact and the correction, 2^-17 of it, weighted
//   by the row's pole weight (0 outside the pole rows).
//
// The expansion: f(B) + f'(B) (r + c) with f(B) in two words and f'(B) as a
// power of two plus the rest (r times the power is exact), then degrees 2 to
// 15 in r, written as
//   A = T7 r^4 + r^8 (T0 + T1 r + T2 r^2 + T4 r^3 + T6 r^4 + T8 r^5 + T10 r^6 + T12 r^7)
//   B = T3 r^2 + T5 r^3 + T9 r^5 + T11 r^6 + T13 r^7
// and the leading sum b = f'(B) r + f(B) - R' with its rounding error kept.
//
// Included by the per-cpu units inside their unnamed namespace (see
// kernels/common/isa.h), with TrigReduce, so each cpu type has its own copy.
#pragma once

#include <cstdint>

#include "base/bits.h"
#include "kernels/common/isa.h"
#include "kernels/trig/tan/data.h"
#include "kernels/trig/trig_reduce/trig_reduce.h"
#include "state/state.h"
#include "zvl.h"

namespace {

struct TanScalar {
    // 10.185916357881302, 32/pi
    static constexpr double inv_step = zvl::from_bits(0x40245f306dc9c883);
    // 108086391056891904 = 1.5 * 2^56: v + it rounds v to a multiple of 16
    static constexpr double shifter16 = zvl::from_bits(0x4378000000000000);
    // pi/32 = C1 + C2 + C3 for the remainder to the row; C1 has 35 significant
    // bits, so C1 N is exact for |N| < 2^18 (|x| < 12800)
    static constexpr double C1 = zvl::from_bits(0x3fb921fb54440000);  // 0.09817477042452083
    static constexpr double C2 = zvl::from_bits(0x3d468c234c4c0000);  // 1.6020900947399724e-13
    static constexpr double C3 = zvl::from_bits(0x3ae98a2e03707345);  // 6.601874416867142e-25
    // pi/32 = D1 + D2 + D3 for the distance to the pole, D2 negative; D1 and
    // D2 have 39 and 40 significant bits, exact times M (a multiple of 16,
    // at most 13 significant bits)
    static constexpr double D1 = zvl::from_bits(0x3fb921fb54444000);  // 0.0981747704247482
    static constexpr double D2 = zvl::from_bits(0xbd32e7b967674000);  // -6.716466596861444e-14
    static constexpr double D3 = zvl::from_bits(0x3aa8a2e03707344a);  // 3.9801982271943437e-26
    // -D2 to full precision, for W, which keeps 35 bits anyway
    static constexpr double D2w = zvl::from_bits(0x3d32e7b9676733af);  // 6.716466596857464e-14
    static constexpr double two55 = zvl::from_bits(0x4360000000000000);
    static constexpr double two_m55 = zvl::from_bits(0x3c80000000000000);
    // From the top 16 bits 0x40c9 of |x|, |x| >= 12800, TrigReduce first.
    static constexpr uint32_t reduce_from = 0x40c9;
    static constexpr uint32_t tiny_field = 771;  // |x| < 2^-252: tan x rounds to x
};

// Words k and k + 1 of the row that starts at word j[0].
template <class V>
inline void row_words(const uint32_t* j, int k, typename V::vd& a, typename V::vd& b) {
    static_assert(V::lanes == 1, "the scalar tangent runs one lane");
    const double* t = zvl::TanTable32 + k;
    a = t[j[0]];
    b = t[j[0] + 1];
}

// tan of x + low, quarter turns q16 / 16 on, for x below 12800 in
// magnitude (or TrigReduce's high word) and not tiny: the arrangement above,
// in the operations of the Scalar wrapper.
template <class V>
inline typename V::vd tangent_core(typename V::vd x, typename V::vd low, uint32_t q16) {
    using vd = typename V::vd;
    using K = TanScalar;
    const vd v = V::mul(x, V::splat(K::inv_step));
    const vd s = V::add(V::splat(zvl::Fp64::shifter), v);
    const vd N = V::sub(s, V::splat(zvl::Fp64::shifter));
    const vd s16 = V::add(V::splat(K::shifter16), v);
    const vd M = V::sub(s16, V::splat(K::shifter16));
    // each lane's row, its twenty words fetched two at a time where they
    // are first used (all at once they would outlive the registers)
    uint32_t j[V::lanes];
    V::low_words(s, j);
    for (int l = 0; l < V::lanes; ++l) j[l] = ((j[l] + q16) & 31u) * 20u;
    vd T[20];
    // The order below keeps few values alive at a time.

    // x = B + r + c
    const vd C2N = V::mul(V::splat(K::C2), N);
    const vd t = V::sub(x, V::mul(V::splat(K::C1), N));
    const vd r = V::sub(t, C2N);
    const vd c = V::add(V::sub(V::sub(V::sub(t, r), C2N), V::mul(V::splat(K::C3), N)), low);

    // y + yl = x - M pi/32, W its 35 leading bits, R = 1/W, and the pole
    // term's correction q = T18 R (1 - W R' - f)
    const vd p = V::sub(x, V::mul(V::splat(K::D1), M));
    const vd h = V::mul(V::splat(K::D2), M);
    const vd y = V::sub(p, h);
    const vd yl = V::add(V::sub(V::sub(V::sub(p, y), h), V::mul(V::splat(K::D3), M)), low);
    const vd W = V::and_(V::add(V::mul(V::splat(K::D2w), M), p), splat_bits<V>(~uint64_t{0x3ffff}));
    const vd R = V::div(V::splat(1.0), W);
    const vd f = V::mul(V::add(yl, V::sub(y, W)), R);
    row_words<V>(j, 18, T[18], T[19]);
    const vd Rs = V::and_(R, T[19]);
    const vd q = V::mul(V::mul(T[18], R), V::sub(V::sub(V::splat(1.0), V::mul(W, Rs)), f));

    const vd z = V::mul(r, r);
    const vd z2 = V::mul(z, z);
    const vd z3 = V::mul(r, z2);
    row_words<V>(j, 0, T[0], T[1]);
    row_words<V>(j, 2, T[2], T[3]);
    row_words<V>(j, 4, T[4], T[5]);
    row_words<V>(j, 6, T[6], T[7]);
    vd A = V::add(V::add(V::add(V::mul(T[1], r), T[0]), V::mul(V::add(V::mul(T[4], r), T[2]), z)),
                  V::mul(T[6], z2));
    const vd B1 = V::mul(V::add(V::mul(T[5], r), T[3]), z);
    row_words<V>(j, 8, T[8], T[9]);
    row_words<V>(j, 10, T[10], T[11]);
    row_words<V>(j, 12, T[12], T[13]);
    A = V::mul(
        V::add(V::mul(V::add(A, V::mul(V::add(V::add(V::mul(T[10], r), T[8]), V::mul(T[12], z)), z3)), z2),
               T[7]),
        z2);
    const vd Bp = V::add(B1, V::mul(z3, V::add(V::add(V::mul(T[11], r), T[9]), V::mul(T[13], z))));
    const vd AB = V::add(A, Bp);

    row_words<V>(j, 14, T[14], T[15]);
    row_words<V>(j, 16, T[16], T[17]);
    const vd l = V::mul(T[16], r);
    const vd m = V::mul(T[17], r);
    const vd g = V::add(l, m);
    const vd d = V::add(V::add(V::add(m, V::sub(l, g)), T[15]), V::mul(V::add(T[16], T[17]), c));
    const vd S = V::add(AB, d);

    const vd a = V::sub(Rs, T[14]);
    const vd b = V::sub(g, a);
    return V::add(b, V::sub(V::add(S, V::sub(g, V::add(a, b))), q));
}

// tan x for a finite x.
inline double scalar_tangent(double x) {
    using K = TanScalar;
    const uint64_t ix = zvl::bits(x);
    if ((static_cast<uint32_t>(ix >> 52) & 0x7ff) < K::tiny_field)
        return x == 0.0 ? x : (x * K::two55 - x) * K::two_m55;
    uint32_t q = 0;
    double low = 0.0;
    if ((static_cast<uint32_t>(ix >> 48) & 0x7fff) >= K::reduce_from) {
        double hl[2];
        q = static_cast<uint32_t>(TrigReduce(x, hl));
        x = hl[0];
        low = hl[1];
    }
    return tangent_core<Scalar>(x, low, 16u * q);
}

// Pointer form: stores tan x, returns ZVL_STATUS_ERRDOM for an infinity.
__attribute__((noinline, cold)) inline int32_t tan_callout(const double* xp, double* yp) {
    const double x = *xp;
    const uint64_t ix = zvl::bits(x);
    if ((ix & zvl::Fp64::exp_mask) == zvl::Fp64::exp_mask) {
        *yp = x - x;
        return (ix & zvl::Fp64::mant_mask) == 0 ? ZVL_STATUS_ERRDOM : 0;
    }
    *yp = x == 0.0 ? x : scalar_tangent(x);
    return 0;
}

// Index form: element i of a into r[i]; an infinity is reported under
// `name` ("dTan_HA", or "dTan_LA" for the LA and EP kernels) by cpu type
// Cpu's error pipeline, which may replace r[i].
template <int Cpu>
__attribute__((noinline, cold)) void tan_callout_at(int32_t i, const double* a, double* r,
                                                    const char* name) {
    const int32_t status = tan_callout(&a[i], &r[i]);
    if (status != 0) zvl::Services<Cpu>::error_pipeline(status, i, a, a, r, r, name);
}

}  // namespace
