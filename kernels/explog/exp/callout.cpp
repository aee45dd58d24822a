// The exp callout: exact scalar code for the elements the vector path
// refuses, |x| >= 708.39599609375, infinities and NaNs, shared by all cpu
// types and accuracy modes (so the results and statuses for these do not
// depend on the mode).
//
//   x = -inf                  +0, no status
//   x = +inf or NaN           x*x: +inf, or the NaN made quiet; no status
//   |x| < 2^-52               x + 1.0 (never refused, kept for completeness)
//   x > 709.782712893384      +inf from DBL_MAX*DBL_MAX, ZVL_STATUS_OVERFLOW
//   x < -745.1332191019411    +0 from a tiny product, ZVL_STATUS_UNDERFLOW
//   otherwise                 x = n*ln2/64 + t, reduced more closely than in
//                             the blocks, e^t by degree 6; a denormal result
//                             reports ZVL_STATUS_UNDERFLOW
//
// A denormal result is formed 2^60 above its place, as y, and scaled down.
// y*2^-60 would round twice, once to 53 bits and once to the denormal's
// shorter significand. So y is split into h, its leading 20 bits, which
// scale down exactly, and the rest, which scale down with the one rounding
// of the result. The split needs the result at or above about 2^-1033 to
// hold h exactly; below that the plain product is kept.
#include "kernels/common/fp_guard.h"
#include "kernels/explog/exp/data.h"
#include "zvl.h"

namespace zvl {
namespace {

struct ExpCallout {
    // 92.33248261689366, 64/ln 2
    static constexpr double L = from_bits(0x40571547652b82fe);
    // ln2/64 = ln2_hi + ln2_lo; the 17 clear low bits of ln2_hi keep f*ln2_hi
    // exact over the whole range (|f| < 2^17)
    static constexpr double ln2_hi = from_bits(0x3f862e42fefa0000);  // 0.010830424696223417
    static constexpr double ln2_lo = from_bits(0x3d1cf79abc9e3b3a);  // 2.572804622327669e-14
    // e^t - 1 - t = t^2 * (0.5 + c3 t + ... + c6 t^4) on |t| <= ln2/128
    static constexpr double c3 = from_bits(0x3fc55555555548f8);  // 0.1666666666665788
    static constexpr double c4 = from_bits(0x3fa5555555558fcc);  // 0.04166666666677052
    static constexpr double c5 = from_bits(0x3f8111123aaf20d3);  // 0.008333341995140497
    static constexpr double c6 = from_bits(0x3f56c16a1c2a3ffd);  // 0.0013888870459233254

    // 709.782712893384: ln(DBL_MAX) rounded down, the largest finite case
    static constexpr double overflow_above = from_bits(0x40862e42fefa39ef);
    // -745.1332191019411: just above ln(2^-1075), so e^x still rounds up
    // to the smallest denormal; below it the result is +0
    static constexpr double underflow_below = from_bits(0xc0874910d52d3051);
    // -708.3964185322641, ln(2^-1022) rounded up: the normal results
    static constexpr double normal_from = from_bits(0xc086232bdd7abcd2);

    static constexpr double two_m60 = from_bits(0x3c30000000000000);
    // 1.5 * 2^32: (y + s*y) - s*y keeps the leading 20 bits of y
    static constexpr double split = from_bits(0x41f8000000000000);
};

inline double with_exponent(uint32_t e) { return from_bits(static_cast<uint64_t>(e) << 52); }

}  // namespace

__attribute__((noinline, cold)) int32_t exp_callout(const double* xp, double* yp) {
    using C = ExpCallout;
    const double x = *xp;
    const uint64_t ix = bits(x);
    const uint32_t field = static_cast<uint32_t>(ix >> 52) & 0x7ff;
    if (field == 0x7ff) {
        *yp = ix == 0xfff0000000000000 ? 0.0 : x * x;
        return 0;
    }
    if (field < 971) {
        *yp = x + 1.0;
        return 0;
    }
    if (x > C::overflow_above) {
        *yp = opaque(Fp64::max_finite) * Fp64::max_finite;
        return ZVL_STATUS_OVERFLOW;
    }
    if (x < C::underflow_below) {
        *yp = opaque(Fp64::min_normal) * Fp64::min_normal;
        return ZVL_STATUS_UNDERFLOW;
    }

    const double v = Fp64::shifter + x * C::L;
    const double f = v - Fp64::shifter;
    // floor(N/64) for N = f, from the low word of v
    const int32_t k = static_cast<int32_t>(static_cast<uint32_t>(bits(v))) >> 6;
    const double t = (x - f * C::ln2_hi) - f * C::ln2_lo;
    const uint32_t j = static_cast<uint32_t>(bits(v)) & 63;
    const double T_hi = exp_table_a[2 * j], T_lo = exp_table_a[2 * j + 1];
    // s = e^t - 1. T_lo is the part of 2^(j/64) below T_hi, so it is scaled
    // by e^t as well: q = 2^(j/64) e^t - T_hi.
    const double P = (((C::c6 * t + C::c5) * t + C::c4) * t + C::c3) * t + 0.5;
    const double s = t + P * t * t;
    const double q = s * (T_hi + T_lo) + T_lo;

    if (x >= C::normal_from) {
        const double y = q + T_hi;
        const uint32_t e = static_cast<uint32_t>(k + 1023) & 2047;
        // x near the overflow bound has n = 1024, one above the largest
        // exponent: scale by 2^1023 and double
        if (e > 2046)
            *yp = (y * with_exponent(e - 1)) * 2.0;
        else
            *yp = y * with_exponent(e);
        return 0;
    }

    const uint32_t e = static_cast<uint32_t>(k + 1083) & 2047;  // 2^(n+60)
    const double S = with_exponent(e);
    const double y = q * S + S * T_hi;
    if (e > 50) {
        const double h = (y + C::split * y) - C::split * y;
        // (S*T_hi - y) + q*S is the rounding error of y, and y - h is exact
        const double rest = q * S + (S * T_hi - y) + (y - h);
        *yp = h * C::two_m60 + rest * C::two_m60;
    } else {
        *yp = y * C::two_m60;
    }
    return ZVL_STATUS_UNDERFLOW;
}

}  // namespace zvl
