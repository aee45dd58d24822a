// Pow's scalar routine: the exact result of one element and its status, for
// every element a Pow or Powx kernel refuses. It settles the exact cases
// (zero, infinite and NaN arguments, negative bases, in a fixed order of
// rules with no arithmetic), runs the accurate core on everything else, and
// also forms the results the block paths leave out: beyond the range of
// doubles, and denormal results, which it rounds once. The only status is
// ZVL_STATUS_ERRDOM; overflow and underflow are silent.
//
// Entry order: y zero, infinite or NaN: the exact cases; x positive, normal
// and finite: the core; x zero, infinite or NaN: the exact cases; x
// positive and denormal: the core on x * 2^52; x negative: by the integer
// class of y, the exact cases (not an integer) or the core on -x with the
// sign of an odd power.
#include <cmath>

#include "kernels/explog/pow/core.h"
#include "zvl.h"

namespace zvl {
namespace {

// The integer class of y: 0 not an integer, 1 odd, 2 even. From 2^53 on
// every double is even.
inline int pow_yint(double y) {
    const uint32_t ah = high_word(y) & 0x7fffffffu;
    const uint32_t l = low_word(y);
    if ((ah | l) == 0) return 2;
    if (ah < 0x3ff00000u || ah > 0x7fefffffu) return 0;
    if (ah >= 0x43400000u) return 2;
    const int32_t e = static_cast<int32_t>((ah & 0x7ff00000u) - 0x3ff00000u) >> 20;
    if (e > 20) {
        const uint32_t w = l << ((e + 11) & 31);
        if (w & 0x7fffffffu) return 0;
        return (w >> 31) ? 1 : 2;
    }
    if (((ah << e) & 0xfffffu) != 0 || l != 0) return 0;
    return ((ah << ((e + 11) & 31)) >> 31) ? 1 : 2;
}

// The exact cases, in their order: the first rule that fits decides. The
// only report is ZVL_STATUS_ERRDOM: a negative base with a non-integer
// exponent, and a zero base with a negative or minus-infinite exponent.
inline int32_t pow_exact(double x, double y, double* r) {
    constexpr double inf = __builtin_inf();
    const uint64_t bx = bits(x), by = bits(y);
    const uint32_t ahx = high_word(x) & 0x7fffffffu, lx = low_word(x);
    const uint32_t ahy = high_word(y) & 0x7fffffffu, ly = low_word(y);
    const bool x_neg = (bx >> 63) != 0, y_neg = (by >> 63) != 0;
    const bool x_zero = (ahx | lx) == 0, y_zero = (ahy | ly) == 0;
    const bool x_inf = ahx == 0x7ff00000u && lx == 0, y_inf = ahy == 0x7ff00000u && ly == 0;
    const bool x_nan = ahx >= 0x7ff00000u && !x_inf, y_nan = ahy >= 0x7ff00000u && !y_inf;
    const bool x_above_one = ahx > 0x3ff00000u || (ahx == 0x3ff00000u && lx != 0);
    const bool x_below_one = ahx < 0x3ff00000u;
    const bool x_unit = ahx == 0x3ff00000u && lx == 0;

    if (y_zero) return *r = 1.0, 0;
    if (x_unit && !x_neg) return *r = 1.0, 0;
    if (x_unit && y_inf) return *r = 1.0, 0;
    if (x_nan) return *r = x, 0;
    if (y_nan) return *r = y, 0;
    if (x_zero && y_inf && y_neg) return *r = inf, ZVL_STATUS_ERRDOM;
    if (x_above_one && y_inf) return *r = y_neg ? 0.0 : inf, 0;
    if (x_below_one && y_inf) return *r = y_neg ? inf : 0.0, 0;
    if (x_inf && !x_neg) return *r = y_neg ? 0.0 : inf, 0;
    if (x_zero && !x_neg) {
        if (y_neg) return *r = inf, ZVL_STATUS_ERRDOM;
        return *r = 0.0, 0;
    }
    if (x_inf) {  // minus infinity
        const bool odd = pow_yint(y) == 1;
        if (!y_neg) return *r = odd ? -inf : inf, 0;
        return *r = odd ? -0.0 : 0.0, 0;
    }
    if (x_neg && !x_zero && !y_inf && pow_yint(y) == 0)
        return *r = from_bits(0xfff8000000000000), ZVL_STATUS_ERRDOM;
    if (x_zero) {  // minus zero
        const bool odd = pow_yint(y) == 1;
        if (y_neg) return *r = odd ? -inf : inf, ZVL_STATUS_ERRDOM;
        return *r = odd ? -0.0 : 0.0, 0;
    }
    return *r = 0.0, 0;
}

// The accurate core for x > 0 normal and finite, y finite and not zero;
// the result takes `sign`. Overflow and underflow are silent.
inline double pow_core(double x, double y, int32_t offset, double sign) {
    double h, l;
    pow_log2<Scalar>(x, offset, h, l);

    // |y * h| >= 2^(ey + eh) beyond 2^11: far outside the range of doubles.
    const int32_t ey = static_cast<int32_t>((high_word(y) >> 20) & 0x7ff) - 1023;
    const int32_t eh = static_cast<int32_t>((high_word(h) >> 20) & 0x7ff) - 1023;
    if (ey + eh > 11) {
        const bool negative = (bits(y) ^ bits(h)) >> 63;
        return negative ? sign * 0.0 : sign * __builtin_inf();
    }

    double Y_hi, Y_lo, hi, lo;
    int32_t k;
    pow_mul<Scalar>(PowSplit<Scalar>(y), h, l, Y_hi, Y_lo);
    pow_exp2<Scalar, true>(Y_hi, Y_lo, hi, lo, k);

    if (k >= 1025) return sign * __builtin_inf();
    if (k >= 1023) {
        // 2^k itself would not be a double: build 2^(k-1) and double it
        sign *= 2.0;
        k -= 1;
    } else if (k < -1075) {
        return sign * 0.0;
    } else if (k < -1021) {
        // The result may be denormal: build it 2^111 higher, round that to
        // the grid the result will have (2^-1074, so 2^-963 up there: B's
        // ulp, or twice that where v + B reaches the next binade), and scale
        // back. The part on the grid scales exactly and only the rest
        // rounds, once; below 2^-1021 the final sum is then exact. (From
        // k = -1021 on the result is normal and the exponent build below is
        // exact.)
        constexpr double B = from_bits(0x0708000000000000);      // 1.5 * 2^-911
        constexpr double down = from_bits(0x3900000000000000);  // 2^-111
        const double S = from_bits(static_cast<uint64_t>(k + 111 + 1023) << 52);
        const double s_hi = hi * S, s_lo = lo * S;
        const double v = s_hi + s_lo;
        const double H = (v + B) - B;
        const double rest = (s_hi - H) + s_lo;
        // The magnitude is never negative, but where the caller rounds
        // downward B - B is -0, and a result that rounds to zero came out
        // -0; its sign is the one `sign` gives.
        return std::fabs(H * down + rest * down) * sign;
    }
    const double m = hi + lo;
    return from_bits(bits(m) + (static_cast<uint64_t>(static_cast<int64_t>(k)) << 52)) * sign;
}

}  // namespace

int32_t pow_scalar(double x, double y, double* r) {
    const uint32_t ahy = high_word(y) & 0x7fffffffu;
    if ((ahy | low_word(y)) == 0 || ahy >= 0x7ff00000u) return pow_exact(x, y, r);
    // x^1 is x, bit for bit, as every exact case agrees (a NaN, a zero and an
    // infinity come back as they are): the core would round its way there
    // in the caller's rounding mode, off by an ulp or past the largest double.
    if (y == 1.0) {
        *r = x;
        return 0;
    }
    const uint32_t hx = high_word(x);
    if (hx - 0x00100000u < 0x7fe00000u) {  // positive, normal, finite
        *r = pow_core(x, y, 0, 1.0);
        return 0;
    }
    const uint32_t ahx = hx & 0x7fffffffu;
    if ((ahx | low_word(x)) == 0 || ahx >= 0x7ff00000u) return pow_exact(x, y, r);
    if (hx < 0x00100000u) {  // positive denormal
        *r = pow_core(x * Fp64::two52, y, 52, 1.0);
        return 0;
    }
    const int yi = pow_yint(y);
    if (yi == 0) return pow_exact(x, y, r);
    const double ax = -x;
    const double sign = yi == 1 ? -1.0 : 1.0;
    if (ahx < 0x00100000u)
        *r = pow_core(ax * Fp64::two52, y, 52, sign);
    else
        *r = pow_core(ax, y, 0, sign);
    return 0;
}

}  // namespace zvl
