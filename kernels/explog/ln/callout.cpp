// The Ln callout: exact scalar ln for the elements the vector paths refuse
// (zeros, denormals, negatives, infinities, NaNs), the same for every cpu
// type and mode, so that those results and statuses do not depend on the
// mode. It handles any other argument as well.
//
// Near 1 (|x - 1| <= 0.009765625) ln(x) = f + f^2 p(f), f = x - 1 exact.
// Elsewhere x = 2^k m, m in [1, 2), with the row i = round(64 (m - 1)) of
// a 128-row table: R ~ 1/(1 + i/64) in 20 bits, T = ln(1/R) in two parts
// with T_hi a multiple of 2^-42, so that A = k*ln2_hi + T_hi is exact.
// m_hi (m to 2^-31) times R is exact, s = R*m_hi - 1 is exact, and
// ln(x) = A + s + t + u^2 p(u) + (k*ln2_lo + T_lo), t = R*(m - m_hi),
// u = s + t. A + s is added as a two-sum, so only the final addition
// rounds at full size.
#include <cstdint>

#include "base/bits.h"
#include "kernels/explog/ln/data.h"
#include "zvl.h"

namespace zvl {
namespace {

// A zero the compiler cannot see, so that 0/0 and -1/0 are computed at run
// time and give the processor's own NaN and infinity.
volatile double zero = 0.0;

// ln(1+f) = f + f^2 p(f) within 2^-62 relative for |f| <= 0.009765625
double p(double f) {
    return (((((-0.1250214602960357 * f + 0.1428756883852146) * f - 0.1666666651884978) * f +
              0.19999999911565072) * f - 0.25000000000003386) * f + 0.33333333333334386) * f -
           0.5;
}

constexpr double ln2_hi = from_bits(0x3fe62e42fefa3800);  // 0.6931471805598903
constexpr double ln2_lo = from_bits(0x3d2ef35793c76730);  // 5.497923018708371e-14
constexpr double two60 = from_bits(0x43b0000000000000);   // 1.152921504606847e18
// 2^46 + 1: adding it rounds m in [1, 2) to a multiple of 2^-6, whose low
// seven bits are 64 + round(64 m), that is the row
constexpr double row_shifter = from_bits(0x42d0000000000040);  // 70368744177665.0
// 2^21: adding and subtracting it cuts m to a multiple of 2^-31
constexpr double split_shifter = 2097152.0;

}  // namespace

int32_t ln_callout(const double* xp, double* yp) {
    double x = *xp;
    uint64_t ix = bits(x);
    if ((ix & Fp64::exp_mask) == Fp64::exp_mask) {
        if (ix == (Fp64::sign_mask | Fp64::exp_mask)) {  // -inf
            *yp = zero / zero;
            return ZVL_STATUS_ERRDOM;
        }
        *yp = x * x;  // +inf stays, a NaN stays (quietened)
        return 0;
    }
    int32_t scale = 0;
    if ((ix & Fp64::exp_mask) == 0) {
        x *= two60;
        ix = bits(x);
        scale = -60;
    }
    if (x == 0.0) {
        *yp = (zero - 1.0) / zero;
        return ZVL_STATUS_SING;
    }
    if (x < 0.0) {
        *yp = zero / zero;
        return ZVL_STATUS_ERRDOM;
    }
    const double f = x - 1.0;
    if (__builtin_fabs(f) <= 0.009765625) {
        *yp = f + p(f) * (f * f);
        return 0;
    }
    const double k = static_cast<int32_t>(ix >> 52) - 1023 + scale;
    const double m = from_bits((ix & Fp64::mant_mask) | Fp64::one);
    const uint32_t i = bits(m + row_shifter) & 127;
    const double R = ln_table_callout[i][0], T_hi = ln_table_callout[i][1],
                 T_lo = ln_table_callout[i][2];
    const double A = k * ln2_hi + T_hi;
    const double m_hi = (m + split_shifter) - split_shifter;
    const double t = R * (m - m_hi);
    const double s = R * m_hi - 1.0;
    const double u = s + t;
    // A is 0 or at least |s| in size: with k = 0, |T_hi| >= ln(1 + 1/64) on
    // every row but 0; with k = -1 A = ln(c/2) nears 0 only on row 64, which
    // is x in [0.996, 1), taken by the branch near 1
    const double hi = A + s;
    const double e = (A - hi) + s;
    *yp = hi + (((p(u) * (u * u) + (k * ln2_lo + T_lo)) + t) + e);
    return 0;
}

}  // namespace zvl
