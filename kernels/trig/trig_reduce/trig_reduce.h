// TrigReduce: a finite x reduced by multiples of pi/2 at full width, for
// the scalar callouts of Sin, Cos, SinCos and Tan. Valid from |x| = pi/4 on
// (it reads floor(|x| 4/pi) from the bits of a product at least 1); the
// tangent calls it from 12800, the other callouts from 2^17.
//
//   q = TrigReduce(x, out)   x = (q + 4k) pi/2 + out[0] + out[1], k an integer,
//                            q in 0..3, |out[0] + out[1]| at most about pi/4;
//                            -x gives the negated words and -q mod 4
//
// Only double arithmetic, no multi-word integers; every product that must be
// exact is made of factors short enough for it, and the sequence holds no
// operation a fused multiply-add could replace without changing an error
// term (the units build with -ffp-contract=off).
//
// Direct path, |x| < 2^30: n = floor(|x| 4/pi) from the bits of the product,
// m = n rounded up to even (a step of two eighths of a turn), and |x| - m pi/4
// with pi/4 cut into parts whose leading ones are short enough for m times
// them to be exact: five Q parts from 2^23 up, four R parts below (m < 2^24
// there, so the parts can be longer).
//
// Wide path, |x| >= 2^30: x' = |x| 2^-200 = A + B, A its leading 26 bits and
// B the rest, times the 25-bit words of 4/pi 2^200 (FourOverPiWords), each
// product exact. The exponent picks the first word j so that A times the
// words before j + 1 holds whole turns only (multiples of 8 eighths) and is
// dropped; of A T(j+1) + B T(j) the multiples of 2^15 or 2^16 go as well.
// The rest, Y, between 3.62 and 2^23, keeps an integer part whose low bits
// give the quadrant; the fraction, taken to the nearest even number, is
// summed with the products down to A T(j+8), the rounding errors of the
// single products kept, then cut into a 26-bit head and a tail and
// multiplied by pi/4 in two parts.
//
// Accuracy, against MPFR on every exponent (tests/kernels/trig): high + low
// is within 1.6e-23 of the remainder, relatively, for random x; at the
// doubles nearest to multiples of pi/2, whose remainders go down to 2^-61,
// within 6.6e-21 (at 0x1.fce36f3ebfe43p+928: the sums of two products in
// the last steps are rounded, 2^-125 or so), and within 1.8e-18 on the
// direct path (at 0x1.b951f1572eba5p+23, 2^-59 from a multiple: the parts
// of pi/4 end near 2^-143, times m).
//
// Included by the per-cpu units inside their unnamed namespace (see
// kernels/common/isa.h): each cpu type has its own copy, VEX-encoded at
// cpu type 5.
#pragma once

#include <cstdint>

#include "base/bits.h"
#include "kernels/trig/double_word.h"
#include "kernels/trig/trig_reduce/data.h"

namespace {

struct TrigReduceData {
    // 1.2732395447351628, 4/pi
    static constexpr double four_over_pi = zvl::from_bits(0x3ff45f306dc9c883);

    // pi/4 for |x| in [2^23, 2^30): Q1 to Q4 have 21 significant bits or
    // fewer, so that m Q (m < 2^31) is exact; Q5 is a full double. A
    // negative part makes its subtraction add.
    static constexpr double Q1 = zvl::from_bits(0x3fe921fa00000000);  // 0.7853975296020508
    static constexpr double Q2 = zvl::from_bits(0x3ea5444300000000);  // 6.337954800983425e-07
    static constexpr double Q3 = zvl::from_bits(0xbd373dca00000000);  // -8.256991011063031e-14
    static constexpr double Q4 = zvl::from_bits(0xbbf3b39a00000000);  // -6.675151087907452e-20
    static constexpr double Q5 = zvl::from_bits(0x3a845c06e0e68948);  // 8.223128468162129e-27
    // pi/4 below 2^23 (m < 2^24): R1 to R3 have 28 significant bits or fewer.
    static constexpr double R1 = zvl::from_bits(0x3fe921fb54000000);  // 0.7853981629014015
    static constexpr double R2 = zvl::from_bits(0x3e010b4612000000);  // 4.960467904491228e-10
    static constexpr double R3 = zvl::from_bits(0xbc2676733c000000);  // -6.088525906594782e-19
    static constexpr double R4 = zvl::from_bits(0x3a61701b839a2520);  // 1.7607799325916e-27

    // pi/4 = pi4_hi + pi4_lo; pi4_hi has 23 significant bits, so its product
    // with the 26-bit head of the fraction is exact
    static constexpr double pi4_hi = zvl::from_bits(0x3fe921fb40000000);  // 0.7853981256484985
    static constexpr double pi4_lo = zvl::from_bits(0x3e64442d18469899);  // 3.774894977445941e-08
    // 100663296 = 1.5 * 2^26: (Z + Z s) - Z s keeps the leading 26 bits of Z
    static constexpr double split = zvl::from_bits(0x4198000000000000);

    // By the parity of the integer part: an odd one moves the fraction to
    // the even number above, so that it lies in [-1, 1).
    static constexpr double parity_term[2] = {0.0, -1.0};
    // By the sign of x.
    static constexpr double sign[2] = {1.0, -1.0};
};

// |x| < 2^30: m = n rounded up to even, n = floor(a 4/pi); a - m pi/4 into
// out, with the sign g of x. Returns n.
inline uint32_t trig_reduce_direct(double a, uint32_t e, double g, double* out) {
    using C = TrigReduceData;
    using zvl::bits;
    const double p = a * C::four_over_pi;
    // The top 32 bits of p's significand with its leading one, shifted right
    // by (31 - the exponent of p): the biased exponent field, 1023 + E,
    // turns (30 - field) mod 32 into 31 - E.
    const uint64_t pb = bits(p);
    const uint32_t top = static_cast<uint32_t>(pb >> 21) | 0x80000000u;
    const uint32_t n = top >> ((30u - static_cast<uint32_t>(pb >> 52)) & 31u);
    const double m = static_cast<double>(n + (n & 1u));

    double h, lowsum;
    if (e > 1045) {
        const double A = a - C::Q1 * m;
        double t = C::Q2 * m;
        const double B = A - t;
        double c = (A - B) - t;
        t = C::Q3 * m;
        const double D = B - t;
        c = c + ((B - D) - t);
        const double S = D + c;
        const double w = (D - S) + c;
        t = C::Q4 * m;
        h = S - t;
        const double l = (S - h) - t;
        lowsum = (w + l) - m * C::Q5;
    } else {
        const double A = a - C::R1 * m;
        double t = C::R2 * m;
        const double B = A - t;
        const double w = (A - B) - t;
        t = C::R3 * m;
        h = B - t;
        const double l = (B - h) - t;
        lowsum = (w + l) - m * C::R4;
    }
    const double H = h * g;
    const double L = lowsum * g;
    out[0] = H + L;
    out[1] = L + (H - out[0]);
    return n;
}

// |x| >= 2^30: the wide product with the words of 4/pi 2^200. Returns the
// integer part I of Y, whose low bits give the quadrant.
inline uint64_t trig_reduce_wide(double a, uint32_t e, double g, double* out) {
    using C = TrigReduceData;
    using zvl::bits;
    using zvl::from_bits;
    // x' = a 2^-200, exact (e > 1052); A its leading 26 bits, B the rest.
    const double xs = from_bits(bits(a) - (uint64_t{200} << 52));
    const double A = from_bits(bits(xs) & ~uint64_t{0x7ffffff});
    const double B = xs - A;
    // j = floor((e - 1052) / 25) by reciprocal multiplication (one less at
    // exact multiples of 25); T(i) is word j + i.
    const uint32_t j = ((e - 1052u) * 83886u) >> 21;
    const double* T = zvl::FourOverPiWords + j;

    const double u = T[0] * B;
    const double AT1 = A * T[1];
    const double v = u + AT1;
    const double v2 = AT1 + (u - v);
    // W: v + v2 without its low bits, a whole number of turns; dropped.
    const uint32_t cleared = (1090u - (e - 25u * j)) & 63u;
    const double W = from_bits(bits(v + v2) & (~uint64_t{0} << cleared));
    const double f = v - W;

    const double g1 = T[1] * B;
    const double AT2 = A * T[2];
    const double fg = f + g1;
    const double P = fg + AT2;
    const double P2 = (AT2 + (fg - P)) + ((g1 + (f - fg)) + v2);
    const double h3 = T[2] * B;
    const double AT3 = A * T[3];
    const double Y = ((P + P2) + h3) + AT3;

    // Integer part of Y from its bits: the significand shifted right by (52
    // - its exponent), which the biased field turns into (51 - field) mod
    // 64; Y0 is Y with the fraction bits cleared. Y >= 3.62 for every x (A
    // T(2) alone is that large at its smallest, at the exponent field 1403),
    // so the shift is at most 51. The exponent field must not reach I: its
    // bits would be added to the integer part at the weights 2^E and up, which
    // changes the quadrant where Y < 4 (E = 1; exponent field 1403 only).
    const uint64_t yb = bits(Y);
    const uint32_t sh = (51u - static_cast<uint32_t>(yb >> 52)) & 63u;
    const uint64_t I = ((yb & zvl::Fp64::mant_mask) | (uint64_t{1} << 52)) >> sh;
    const double Y0 = from_bits((yb >> sh) << sh);
    const double d = P - Y0;
    const double dd = d + P2;
    const double d2 = dd + C::parity_term[I & 1];

    // The rest of the products, largest first, each rounding error kept.
    double s = d2, e1, e2, e3, e4, e5, e6, e7, e8;
    two_sum<Scalar>(s, h3, s, e1);
    two_sum<Scalar>(s, AT3, s, e2);
    two_sum<Scalar>(s, T[3] * B, s, e3);
    two_sum<Scalar>(s, A * T[4], s, e4);
    two_sum<Scalar>(s, T[4] * B, s, e5);
    two_sum<Scalar>(s, A * T[5], s, e6);
    two_sum<Scalar>(s, T[5] * B + A * T[6], s, e7);
    two_sum<Scalar>(s, T[6] * B + A * T[7], s, e8);
    const double Cs = s;
    const double E = T[7] * B + A * T[8];

    // Head of 26 bits and tail, in eighths of a turn, then times pi/4.
    const double Z = Cs + E;
    const double hh = (Z + Z * C::split) - Z * C::split;
    const double ll =
        (((((((((E + (Cs - hh)) + e1) + e2) + e3) + e4) + e5) + e6) + e7) + e8);
    double a1 = C::pi4_hi * ll;
    const double a2 = (ll + hh) * C::pi4_lo;
    const double a3 = C::pi4_hi * hh;
    a1 = a1 + a2;
    const double H = a3 + a1;
    const double L = (a3 - H) + a1;
    out[0] = H * g;
    out[1] = L * g;
    return I;
}

inline int32_t TrigReduce(double x, double* out) {
    using C = TrigReduceData;
    const uint64_t ix = zvl::bits(x);
    const uint32_t s = static_cast<uint32_t>(ix >> 63);
    const uint32_t e = static_cast<uint32_t>(ix >> 52) & 0x7ff;
    const double a = zvl::from_bits(ix & zvl::Fp64::abs_mask);
    const double g = C::sign[s];
    // The quadrant is that of |x| negated for a negative x: the nearest
    // multiple of pi/2 is k = (integer part + 1) / 2 in eighths of a turn.
    const uint32_t k = e <= 1052 ? (trig_reduce_direct(a, e, g, out) + 1u) >> 1
                                 : static_cast<uint32_t>((trig_reduce_wide(a, e, g, out) + 1) >> 1);
    return static_cast<int32_t>(((1u - 2u * s) * k) & 3u);
}

}  // namespace
