// The rounding family at cpu type 0: one element at a time on the integer
// image of x, with no floating-point rounding at all, so no guard is needed
// and the caller's rounding mode has no say.
//
// Let h be the high word with the sign cleared and k = h - 0x3ff00000 as an
// unsigned word: the unbiased exponent e stands in k's upper bits, and
//   k <  0x3400000            1 <= |x| < 2^52: 52 - e fraction bits to cut
//   k has its top bit set     |x| < 1 (zero and denormals included)
//   k <  0x40000000 otherwise finite |x| >= 2^52: already an integer
//   anything else             infinity or NaN, returned as x * 1.0 (or
//                             x + x), which quiets a signalling NaN
#pragma once

#include "kernels/explog/rounding/common.h"

namespace {

struct BitMasks {
    struct Cut {
        uint64_t kept;     // the image with the fraction bits cleared
        uint64_t dropped;  // the fraction bits
        uint64_t unit;     // one unit at the lowest kept bit
    };
    // For k < 0x3400000 only.
    static Cut cut(uint64_t ix, uint32_t k) {
        const uint32_t e = k >> 20;
        const uint64_t mask = ~0ull << (52 - e);
        return {ix & mask, ix & ~mask, ~mask + 1};
    }
    static uint32_t k_of(uint64_t ix) {
        return static_cast<uint32_t>(ix >> 32 & 0x7fffffff) - 0x3ff00000u;
    }
    static bool below_one(uint32_t k) { return k >> 31 != 0; }
    static bool finite_integer(uint32_t k) { return k < 0x40000000u; }
    static bool is_nan(uint64_t ix) { return (ix << 1) > 0xffe0000000000000ull; }
    static double signed_zero(uint64_t ix) { return zvl::from_bits(ix & Fp64::sign_mask); }

    // Ceil, Floor and Trunc: Up says for which sign a dropped fraction moves
    // the result one unit away from zero. The carry of that unit may run
    // into the exponent (Ceil of 1.5 is 2.0), which the 64-bit add does.
    template <int Up>
    static double directed(double x, double below_pos, double below_neg) {
        const uint64_t ix = zvl::bits(x);
        const uint32_t k = k_of(ix);
        const bool neg = ix >> 63 != 0;
        if (k < 0x3400000u) {
            Cut c = cut(ix, k);
            if (c.dropped != 0 && ((Up > 0 && !neg) || (Up < 0 && neg))) c.kept += c.unit;
            return zvl::from_bits(c.kept);
        }
        if (below_one(k)) {
            if ((ix << 1) == 0) return x;
            return neg ? below_neg : below_pos;
        }
        if (finite_integer(k)) return x;
        return x * opaque(1.0);
    }

    static double ceil(double x) { return directed<1>(x, 1.0, -0.0); }
    static double floor(double x) { return directed<-1>(x, 0.0, -1.0); }
    static double trunc(double x) {
        const uint64_t ix = zvl::bits(x);
        return directed<0>(x, 0.0, signed_zero(ix));
    }

    // Halves away from zero: the first dropped bit decides, and a set one
    // adds 1.0 with the sign of x to the cut value (exact below 2^52).
    static double round(double x) {
        const uint64_t ix = zvl::bits(x);
        const uint32_t k = k_of(ix);
        const bool neg = ix >> 63 != 0;
        if (k < 0x3400000u) {
            const Cut c = cut(ix, k);
            const double t = zvl::from_bits(c.kept);
            // the first dropped bit is the top bit of the fraction field cut
            return (c.dropped & (c.unit >> 1)) != 0 ? t + (neg ? -1.0 : 1.0) : t;
        }
        if (below_one(k)) {
            // k >= 0xfff00000: h >= 0x3fe00000, that is |x| >= 0.5
            if (k >= 0xfff00000u) return neg ? -1.0 : 1.0;
            return signed_zero(ix);
        }
        if (finite_integer(k)) return x;
        return x * opaque(1.0);
    }

    // r1 the integer part as Trunc cuts it, r2 the fraction; both carry the
    // sign of x, so integral and huge values get a signed zero fraction.
    static void modf(double x, double* r1, double* r2) {
        const uint64_t ix = zvl::bits(x);
        const uint32_t k = k_of(ix);
        if (k < 0x3400000u) {
            const Cut c = cut(ix, k);
            const double t = zvl::from_bits(c.kept);
            *r1 = t;
            *r2 = c.dropped != 0 ? x - t : signed_zero(ix);
        } else if (below_one(k)) {
            *r1 = signed_zero(ix);
            *r2 = x;
        } else if (!is_nan(ix)) {
            *r1 = x;
            *r2 = signed_zero(ix);
        } else {
            *r1 = x + x;
            *r2 = x + x;
        }
    }
};

}  // namespace
