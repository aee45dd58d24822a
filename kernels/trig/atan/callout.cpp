// The Atan and Atan2 callouts: exact scalar code for every argument the
// vector forms refuse (zeros, denormals and tiny numbers, |x| >= 2^993,
// infinities, NaNs), used by all modes, so that these results do not
// depend on the mode. Neither function reports a status.
//
// Both rest on atan of a double-word q = q_hi + q_lo in [0, 2^54):
//   q < 1/8      q + q^3 P(q^2), P of degree 15 (relative error 2^-61.8)
//   otherwise    with c the breakpoint of q's half binade (1.25 or 1.75
//                times its power of two) and t = (q - c) / (1 + q c) in two
//                parts, atan(q) = atan(c) + t + t^3 P(t^2) with atan(c) from
//                AtanBreakTable; |t| <= 0.111, and every step but the last
//                sums is exact or carries its error in the low part
//
// Atan:   +-inf gives +-pi/2; |x| < 2^-53 gives x (with the inexact flag
//         for normal x); |x| >= 2^54 gives +-pi/2.
// Atan2:  the special values of C99 (signed zeros, pi/2, pi/4, 3 pi/4 at
//         infinities), NaN as y + x. Otherwise, with |y| / |x| = q' 2^k and
//         q' = m_y / m_x from the two significands in [1, 2):
//           k < -53    q = |y| / |x| by the division, correctly rounded even
//                      when it underflows (atan(q) = q - q^3/3 rounds to it);
//                      pi for x < 0
//           k >= 74    pi/2
//           k >= 53    pi/2 + (pi/2 low part - x / |y|)
//           otherwise  q' in two parts scaled by 2^k, atan as above, and
//                      pi - atan for x < 0 in two parts
//         and the sign of y on the result.
#include "kernels/common/fp_guard.h"
#include "kernels/trig/atan/data.h"
#include "kernels/trig/double_word.h"
#include "kernels/trig/poly.h"

namespace zvl {
namespace {

// 2^-53 and 2^54: below and above them atan is x and pi/2 to the last bit.
constexpr double kTiny = from_bits(0x3ca0000000000000);
constexpr double kHuge = from_bits(0x4350000000000000);

// atan(q_hi + q_lo) = hi + lo for 0 <= q_hi < 2^54, |q_lo| <= ulp(q_hi) / 2.
void atan_dw(double q_hi, double q_lo, double& hi, double& lo) {
    if (q_hi < 0.125) {
        const double z = q_hi * q_hi;
        const double P = horner<Scalar>(AtanPolyScalar::c, z);
        // d atan(q) / dq = 1 / (1 + q^2) = 1 - z + ...
        hi = q_hi;
        lo = (q_lo - q_lo * z) + q_hi * z * P;
        return;
    }
    const uint32_t w = high_word(q_hi);
    const double c = from_bits(static_cast<uint64_t>((w & 0xfff80000) | 0x00040000) << 32);
    const uint32_t j = (w - 0x3fc00000) >> 19;
    // q_hi - c is exact (c and q_hi are within a factor 1.25), and either
    // zero or at least ulp(q_hi) >= 2 |q_lo|.
    double d_hi, d_lo;
    fast_two_sum<Scalar>(q_hi - c, q_lo, d_hi, d_lo);
    // 1 + q c: c has three significant bits, so c q_hi is p + pe exactly
    double p, pe, D_hi, De;
    two_product_cut<Scalar>(c, q_hi, p, pe);
    two_sum<Scalar>(1.0, p, D_hi, De);
    const double D_lo = De + pe + c * q_lo;
    const double t_hi = d_hi / D_hi;
    double m, me;
    two_product_cut<Scalar>(t_hi, D_hi, m, me);
    const double t_lo = (((d_hi - m) - me) + d_lo - t_hi * D_lo) / D_hi;
    const double z = t_hi * t_hi;
    const double P = horner<Scalar>(AtanPolyScalar::c, z);
    // |atan(c)| >= 0.155 > |t|
    double e;
    fast_two_sum<Scalar>(kAtanBreakTable[2 * j], t_hi, hi, e);
    lo = e + (kAtanBreakTable[2 * j + 1] + ((t_lo - t_lo * z) + t_hi * z * P));
}

double with_sign(double r, uint64_t sign) { return from_bits(bits(r) | sign); }

// |v| = m 2^e with m in [1, 2), for finite non-zero v.
double significand(double v, int& e) {
    uint64_t b = bits(v) & Fp64::abs_mask;
    int scaled = 0;
    if (b < bits(Fp64::min_normal)) {
        b = bits(from_bits(b) * from_bits(0x4350000000000000));  // 2^54
        scaled = 54;
    }
    e = static_cast<int>(b >> 52) - 1023 - scaled;
    return from_bits((b & Fp64::mant_mask) | Fp64::one);
}

double pow2(int k) { return from_bits(static_cast<uint64_t>(k + 1023) << 52); }

}  // namespace

__attribute__((noinline, cold)) int32_t atan_callout(const double* xp, double* rp) {
    const double x = *xp;
    const uint64_t sign = bits(x) & Fp64::sign_mask;
    const double a = from_bits(bits(x) & Fp64::abs_mask);
    double r;
    if (a != a) {
        r = x + x;
    } else if (a < 0.125) {
        if (a >= kTiny) {
            const double z = a * a;
            r = a + a * z * horner<Scalar>(AtanPolyScalar::c, z);
        } else if (a >= Fp64::min_normal) {
            r = (opaque(a) + 1.0) * a;  // a, and the inexact flag
        } else {
            r = a + a * a;
        }
        r = with_sign(r, sign);
    } else if (a < kHuge) {
        double hi, lo;
        atan_dw(a, 0.0, hi, lo);
        r = with_sign(hi + lo, sign);
    } else {
        r = with_sign(opaque(Pi::half_hi) + Pi::half_lo, sign);
    }
    *rp = r;
    return 0;
}

__attribute__((noinline, cold)) int32_t atan2_callout(const double* yp, const double* xp,
                                                      double* rp) {
    const double y = *yp, x = *xp;
    if (y != y || x != x) {
        *rp = y + x;
        return 0;
    }
    const uint64_t sign = bits(y) & Fp64::sign_mask;
    const bool x_neg = bits(x) >> 63;
    const double ay = from_bits(bits(y) & Fp64::abs_mask);
    const double ax = from_bits(bits(x) & Fp64::abs_mask);
    const double inf = from_bits(Fp64::exp_mask);
    double hi, lo;
    if (ay == 0.0 || ax == inf) {
        if (ay == inf) {  // both infinite
            hi = x_neg ? Pi::three_quarters_hi : Pi::quarter_hi;
            lo = x_neg ? Pi::three_quarters_lo : Pi::quarter_lo;
        } else if (x_neg) {
            hi = Pi::hi;
            lo = Pi::lo;
        } else {
            hi = 0.0;
            lo = 0.0;
        }
    } else if (ax == 0.0 || ay == inf) {
        hi = Pi::half_hi;
        lo = Pi::half_lo;
    } else {
        int ey, ex;
        const double my = significand(ay, ey), mx = significand(ax, ex);
        const int k = ey - ex;
        if (k < -53) {
            if (x_neg) {
                hi = Pi::hi;
                lo = Pi::lo;
            } else {
                hi = ay / ax;
                lo = 0.0;
            }
        } else if (k >= 74) {
            hi = Pi::half_hi;
            lo = Pi::half_lo;
        } else if (k >= 53) {
            hi = Pi::half_hi;
            lo = Pi::half_lo - x / ay;
        } else {
            // my / mx in (1/2, 2) in two parts, then scaled by 2^k exactly
            const double q = my / mx;
            double m, me;
            two_product_cut<Scalar>(q, mx, m, me);
            const double q_lo = ((my - m) - me) / mx;
            const double s = pow2(k);
            atan_dw(q * s, q_lo * s, hi, lo);
            if (x_neg) {
                // pi - atan: the low parts first, then the high
                double e;
                fast_two_sum<Scalar>(Pi::hi, -hi, hi, e);
                lo = (Pi::lo - lo) + e;
            }
        }
    }
    *rp = with_sign(opaque(hi) + lo, sign);
    return 0;
}

}  // namespace zvl
