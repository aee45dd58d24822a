// The Sinh and Cosh callouts: the arguments the vector forms refuse, for
// every mode.
//
//   NaN                  x + x (quiet), no status
//   +-inf                Sinh +-inf, Cosh +inf, no status
//   |x| < 1/8 (Sinh)     x + x^3 P(x^2): degree 11 (HA, LA; relative error
//                        2^-67.6) or 7 (EP, 2^-42.5); denormals give x
//   |x| > 710.47586007394386   +-inf from DBL_MAX * DBL_MAX,
//                        ZVL_STATUS_OVERFLOW
//   otherwise            e^|x| / 2 (e^-|x| is below 2^-1000 of it here):
//                        x = N ln2/64 + r, 2^(j/64) e^r from the hi, lo
//                        table and the HA exponential polynomial, scaled
//                        by 2^(N div 64 - 3) and then by 4, so that no
//                        scale leaves the exponent range
// Between 1/8 (Sinh; 0 for Cosh) and 708.39892578125 the vector forms take
// every argument, and the callouts, not called there, do not compute.
#include "kernels/common/fp_guard.h"
#include "kernels/trig/hyperbolic/data.h"
#include "kernels/trig/poly.h"
#include "zvl.h"

namespace zvl {
namespace {


double with_sign(double r, uint64_t sign) { return from_bits(bits(r) | sign); }

// e^a / 2 for 708 <= a <= 710.47586007394386.
double half_exp(double a) {
    // 64/ln 2 and ln 2/64 in two parts, the 20 clear low bits of the high
    // part keep N ln2_hi exact
    constexpr double L = from_bits(0x40571547652b82fe);
    constexpr double ln2_hi = from_bits(0x3f862e42fef00000);
    constexpr double ln2_lo = from_bits(0x3d7473de6af278ed);
    const double v = a * L + Fp64::shifter;
    const double N = v - Fp64::shifter;
    const double r = (a - N * ln2_hi) - N * ln2_lo;
    const uint32_t low = static_cast<uint32_t>(bits(v));
    const uint32_t j = low & 63, m = low >> 6;
    const double p = r + r * r * horner<Scalar>(ExpPolyHA::c, r);  // e^r - 1
    const double T_hi = exp_table_a[2 * j], T_lo = exp_table_a[2 * j + 1];
    const double y = T_hi + (T_hi * p + T_lo * (1.0 + p));
    // 2^(m - 1) = 2^(m - 3) * 4 with m - 3 + 1023 within the exponent range
    return y * from_bits(static_cast<uint64_t>(m - 3 + 1023) << 52) * 4.0;
}

template <class Small>
int32_t sinh_scalar(const double* xp, double* rp) {
    const double x = *xp;
    const uint64_t sign = bits(x) & Fp64::sign_mask;
    const double a = from_bits(bits(x) & Fp64::abs_mask);
    if (!(a <= Fp64::max_finite)) {  // infinities and NaNs
        *rp = x + x;
        return 0;
    }
    if (a < 0.125) {
        const double z = a * a;
        *rp = with_sign(a + a * z * horner<Scalar>(Small::c, z), sign);
        return 0;
    }
    if (a > HyperbolicConst::finite_up_to) {
        *rp = with_sign(opaque(Fp64::max_finite) * Fp64::max_finite, sign);
        return ZVL_STATUS_OVERFLOW;
    }
    *rp = with_sign(half_exp(a), sign);
    return 0;
}

}  // namespace

__attribute__((noinline, cold)) int32_t sinh_callout(const double* x, double* r) {
    return sinh_scalar<SinhPolySmall>(x, r);
}

__attribute__((noinline, cold)) int32_t sinh_callout_ep(const double* x, double* r) {
    return sinh_scalar<SinhPolySmallEP>(x, r);
}

__attribute__((noinline, cold)) int32_t cosh_callout(const double* xp, double* rp) {
    const double x = *xp;
    const double a = from_bits(bits(x) & Fp64::abs_mask);
    if (!(a <= Fp64::max_finite)) {
        *rp = a + a;
        return 0;
    }
    if (a > HyperbolicConst::finite_up_to) {
        *rp = opaque(Fp64::max_finite) * Fp64::max_finite;
        return ZVL_STATUS_OVERFLOW;
    }
    *rp = half_exp(a);
    return 0;
}

}  // namespace zvl
