// The scalar callouts of Sin, Cos and SinCos: exact scalar code for every
// element the vector paths refuse, and for any double at all.
//
//   infinity        x * 0, a NaN, and ZVL_STATUS_ERRDOM (both outputs of SinCos)
//   NaN             x * x, no status
//   |x| < 2^-252    sin: x itself (through (x 2^55 - x) 2^-55 unless zero);
//                   cos: 1 - |x|
//   |x| >= 2^17     TrigReduce gives the quadrant q and x - (q + 4k) pi/2 as
//                   high + low; the high word stands in for x, the low word
//                   joins the remainder's low word
//   otherwise       q = 0, low = 0
//
// then the step pi/32 method: N = nearest integer to x 32/pi, x = N pi/32 +
// r + c (three parts of pi/32), and with B the angle of row (N + 16q + off)
// of SinCosTable64 (off = 16 for the cosine, a quarter turn on)
//
//   sin(B + r + c) = sin B cos r + cos B sin r + c cos(B + r)
//
// with sin r = r + ps, cos r = 1 + pc by the Taylor polynomials of degrees 9
// and 8 (|r| <= pi/64), and cos B = dh + dl with dh a power of two, so that
// r dh is exact and the rounding errors of the two leading sums are kept.
//
// Two forms: the pointer form stores the result and returns the status; the
// index form of the older cpu types' kernels takes the element's index and
// the arrays, stores the result and reports an infinity itself, as "dSin_HA"
// or "dCos_HA", through the error pipeline of its cpu type.
//
// Included by the per-cpu units inside their unnamed namespace (see
// kernels/common/isa.h), with TrigReduce, so each cpu type has its own copy.
#pragma once

#include <cstdint>

#include "base/bits.h"
#include "kernels/trig/sincos/data.h"
#include "kernels/trig/trig_reduce/trig_reduce.h"
#include "state/state.h"
#include "zvl.h"

namespace {

struct TrigStep32 {
    // 10.185916357881302, 32/pi
    static constexpr double inv_step = zvl::from_bits(0x40245f306dc9c883);
    // pi/32 in three parts: P1 and P2 have 31 and 32 significant bits, so N P1
    // and N P2 are exact for |N| < 2^21 (|x| < 2^17)
    static constexpr double P1 = zvl::from_bits(0x3fb921fb54400000);  // 0.098174770420882851
    static constexpr double P2 = zvl::from_bits(0x3d90b4611a600000);  // 3.7981878164399787e-12
    static constexpr double P3 = zvl::from_bits(0x3b63198a2e037073);  // 1.2639164054974691e-22
    // sin r - r = ((((S9 z + S7) z + S5) z + S3) z) r, the Taylor coefficients rounded
    static constexpr double S9 = zvl::from_bits(0x3ec71de3a556c734);  // 2.7557319223985893e-06
    static constexpr double S7 = zvl::from_bits(0xbf2a01a01a01a01a);  // -1.9841269841269841e-04
    static constexpr double S5 = zvl::from_bits(0x3f81111111111111);  // 8.3333333333333332e-03
    static constexpr double S3 = zvl::from_bits(0xbfc5555555555555);  // -0.16666666666666666
    // cos r - 1 = (((C8 z + C6) z + C4) z + C2) z
    static constexpr double C8 = zvl::from_bits(0x3efa01a01a01a01a);  // 2.4801587301587302e-05
    static constexpr double C6 = zvl::from_bits(0xbf56c16c16c16c17);  // -1.3888888888888889e-03
    static constexpr double C4 = zvl::from_bits(0x3fa5555555555555);  // 0.041666666666666664
    static constexpr double C2 = -0.5;
    // the same for the vector kernels (kernels/trig/sincos/sincos.h)
    static constexpr bool split_p1 = false;
    static constexpr double S[] = {S9, S7, S5, S3};
    static constexpr double C[] = {C8, C6, C4, C2};
    // 2^55 and 2^-55: (x 2^55 - x) 2^-55 is x, with the inexact flag
    static constexpr double two55 = zvl::from_bits(0x4360000000000000);
    static constexpr double two_m55 = zvl::from_bits(0x3c80000000000000);
};

// Below 2^-252 (biased exponent 771) sin x rounds to x and cos x to 1.
constexpr uint32_t kTrigTinyField = 771;
// From 2^17 (biased exponent 1040) the callouts reduce with TrigReduce.
constexpr uint32_t kTrigReduceField = 1040;

// What both functions of one element share: the row index before the
// quarter turns, the remainder r + c and the two polynomials.
struct TrigStep32Reduced {
    uint32_t row;
    double r, c, ps, pc;
};

// x = N pi/32 + r + c, |x| < 2^17 or TrigReduce's high word, whose low word
// comes in as `low` (0 without reduction).
inline TrigStep32Reduced trig_step32_reduce(double x, double low) {
    using K = TrigStep32;
    const double s = x * K::inv_step + zvl::Fp64::shifter;
    const double N = s - zvl::Fp64::shifter;
    const double t = x - N * K::P1;
    const double r = t - N * K::P2;
    const double c = (((t - r) - N * K::P2) - N * K::P3) + low;
    const double z = r * r;
    const double ps = ((((K::S9 * z + K::S7) * z + K::S5) * z + K::S3) * z) * r;
    const double pc = (((K::C8 * z + K::C6) * z + K::C4) * z + K::C2) * z;
    return {zvl::low_word(s), r, c, ps, pc};
}

// sin(B + r + c) from a SinCosTable64 row: cos B low (dl), sin B high (vh),
// sin B low (vl), cos B high (dh). g and h are the two leading sums;
// r dh + (vh - g) and r dl + (g - h) their rounding errors (r dh is exact).
inline double trig_step32_row(const double* row, const TrigStep32Reduced& m) {
    const double dl = row[0], vh = row[1], vl = row[2], dh = row[3];
    const double r = m.r;
    const double g = vh + r * dh;
    const double h = g + r * dl;
    const double d = dl + dh;
    return h + ((((m.ps * d + m.pc * vh) + (m.c * (d - r * vh) + vl)) + (r * dh + (vh - g))) +
                (r * dl + (g - h)));
}

// Row of SinCosTable64 for the reduced element, `turns` quarter turns on.
inline const double* trig_step32_at(const TrigStep32Reduced& m, uint32_t turns) {
    return zvl::SinCosTable64 + 4 * ((m.row + 16u * turns) & 63u);
}

// x past the tiny range and finite: its reduction, with q the quadrant.
inline TrigStep32Reduced trig_callout_reduce(double x, uint32_t field, uint32_t* q) {
    if (field < kTrigReduceField) {
        *q = 0;
        return trig_step32_reduce(x, 0.0);
    }
    double hl[2];
    *q = static_cast<uint32_t>(TrigReduce(x, hl));
    return trig_step32_reduce(hl[0], hl[1]);
}

inline double sin_tiny(double x) {
    using K = TrigStep32;
    return x == 0.0 ? x : (x * K::two55 - x) * K::two_m55;
}
inline double cos_tiny(double x) { return 1.0 - __builtin_fabs(x); }

// Sin (Turn = 0) or Cos (Turn = 1, a quarter turn on) of one element:
// stores the result and returns 0 or ZVL_STATUS_ERRDOM.
template <uint32_t Turn>
__attribute__((noinline, cold)) int32_t trig_callout(const double* xp, double* yp) {
    const double x = *xp;
    const uint32_t field = static_cast<uint32_t>(zvl::bits(x) >> 52) & 0x7ff;
    if (field == 0x7ff) {
        if ((zvl::bits(x) & zvl::Fp64::mant_mask) == 0) {
            *yp = x * 0.0;
            return ZVL_STATUS_ERRDOM;
        }
        *yp = x * x;
        return 0;
    }
    if (field < kTrigTinyField) {
        *yp = Turn == 0 ? sin_tiny(x) : cos_tiny(x);
        return 0;
    }
    uint32_t q;
    const TrigStep32Reduced m = trig_callout_reduce(x, field, &q);
    *yp = trig_step32_row(trig_step32_at(m, q + Turn), m);
    return 0;
}

inline int32_t sin_callout(const double* x, double* y) { return trig_callout<0>(x, y); }
inline int32_t cos_callout(const double* x, double* y) { return trig_callout<1>(x, y); }

// SinCos of one element: one reduction and one pair of polynomials for both
// rows, the cosine's a quarter turn on.
__attribute__((noinline, cold)) inline int32_t sincos_callout(const double* xp, double* sp,
                                                               double* cp) {
    const double x = *xp;
    const uint32_t field = static_cast<uint32_t>(zvl::bits(x) >> 52) & 0x7ff;
    if (field == 0x7ff) {
        const bool inf = (zvl::bits(x) & zvl::Fp64::mant_mask) == 0;
        *sp = inf ? x * 0.0 : x * x;
        *cp = *sp;
        return inf ? ZVL_STATUS_ERRDOM : 0;
    }
    if (field < kTrigTinyField) {
        *sp = sin_tiny(x);
        *cp = cos_tiny(x);
        return 0;
    }
    uint32_t q;
    const TrigStep32Reduced m = trig_callout_reduce(x, field, &q);
    *sp = trig_step32_row(trig_step32_at(m, q), m);
    *cp = trig_step32_row(trig_step32_at(m, q + 1), m);
    return 0;
}

// The index form: element i of a into r[i]. Infinities and NaNs first: both
// give x - x, a NaN; an infinity is reported as ZVL_STATUS_ERRDOM under
// `name` by cpu type Cpu's error pipeline, which may replace r[i].
template <int Cpu, uint32_t Turn>
__attribute__((noinline, cold)) void trig_callout_at(int32_t i, const double* a, double* r,
                                                     const char* name) {
    const double x = a[i];
    if ((zvl::bits(x) & zvl::Fp64::exp_mask) == zvl::Fp64::exp_mask) {
        r[i] = x - x;
        if ((zvl::bits(x) & zvl::Fp64::mant_mask) == 0)
            zvl::Services<Cpu>::error_pipeline(ZVL_STATUS_ERRDOM, i, a, a, r, r, name);
        return;
    }
    trig_callout<Turn>(&a[i], &r[i]);
}

template <int Cpu>
void sin_callout_at(int32_t i, const double* a, double* r) {
    trig_callout_at<Cpu, 0>(i, a, r, "dSin_HA");
}
template <int Cpu>
void cos_callout_at(int32_t i, const double* a, double* r) {
    trig_callout_at<Cpu, 1>(i, a, r, "dCos_HA");
}

}  // namespace
