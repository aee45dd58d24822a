// zLn_scalar and zLog10_scalar: ln z = ln|z| + i arg z, and log10 z, for
// one element in extended precision, each part rounded to double once.
//
// The magnitude: with h and l the larger and smaller of |x| and |y|,
// S = h^2 + l^2 in extended precision (no scaling: the squares of doubles
// neither overflow nor underflow there). Where |S - 1| is at most 0.03,
// S - 1 is formed again without loss, from the exact squares as pairs and
// the rounding errors of their sum and of the subtraction, and the real
// part is half ln(1 + (S - 1)); elsewhere it is half ln S. The angle is
// ext_atan2(y, x). So ln(0.6 + 0.8i) has a tiny real part of the right
// size, and ln of a zero is -inf with divide-by-zero, from ext_log.
//
// zLn_scalar's special values (C99's):
//   x          y              result
//   +-0        +-0            (-inf, atan2(y, x)), divide-by-zero
//   NaN        +-inf          (+inf, NaN)
//   NaN        other          (NaN, NaN)
//   +-inf      NaN            (+inf, NaN)
//   finite     NaN            (NaN, NaN)
//   +-inf, or y +-inf         (+inf, atan2(y, x))
// zLog10_scalar multiplies both parts by log10(e) and takes the
// non-finite arguments and the zeros off first, with C = log10(e) pi/2:
//   +0         +-0            (-inf, y), no flag raised
//   -0         +-0            (-inf, +-2C by the sign of y), no flag
//   finite     +-inf          (+inf, +-C)
//   +inf       +-inf          (+inf, +-C/2)
//   -inf       +-inf          (+inf, +-3C/2)
//   +inf       finite         (+inf, +-0)
//   -inf       finite         (+inf, +-2C)
// and the NaN rows of zLn_scalar.
#pragma once

#include "kernels/complex/scalar_frame.h"

ZVL_SCALAR_BEGIN
namespace {

namespace zln {

// The extended constants log10(e) and log10(e) pi/2: significands
// 0xde5bd8a937287195 and 0xaea3e26597dd0587 under the exponent fields
// 0x3ffd and 0x3ffe, written as literals so that they load from memory
// whole.
inline long double log10_e() { return 0xde5bd8a937287195p-65L; }
inline long double log10_e_pio2() { return 0xaea3e26597dd0587p-64L; }

// Half ln(x^2 + y^2) for finite x and y.
inline long double half_log_abs(double x, double y) {
    long double h = fabs_d(&x), l = fabs_d(&y);
    if (h < l) {
        const long double t = h;
        h = l;
        l = t;
    }
    const long double H = h * h, L2 = l * l, S = H + L2;
    if (ext_fabs(S - 1.0L) <= 0.03L) {
        // S - 1 from the exact squares: hi parts summed, then every error
        const Pair hh = two_prod(h, h), ll = two_prod(l, l);
        const Pair s = two_sum(hh.hi, ll.hi);
        const Pair d = two_sum(s.hi, -1.0L);
        const long double t = d.hi + (((d.lo + s.lo) + hh.lo) + ll.lo);
        return 0.5L * ext_log1p(t);
    }
    return 0.5L * ext_log(S);
}

// |v|'s bits, and whether both parts are finite and not zero: the
// common case, told by two integer comparisons.
inline uint64_t abs_bits(double v) { return part_bits(v) & 0x7fffffffffffffffu; }
inline bool finite_nonzero(uint64_t ax, uint64_t ay) {
    return ax - 1 < 0x7fefffffffffffffu && ay - 1 < 0x7fefffffffffffffu;
}

// The exponent field that the double of bits a (finite, not zero, sign
// clear) has as an extended value: subnormal doubles are normal there.
inline int ext_field_of(uint64_t a) {
    const int e = static_cast<int>(a >> 52);
    return e != 0 ? e + (16383 - 1023) : (16383 - 1074) + 63 - __builtin_clzll(a);
}

// Half ln|z| and arg z for x and y finite and not zero: half_log_abs and
// ext_atan2 taken inline, the same operations on the same values, so the
// same bits and flags. What ext_atan2 learns from the extended values
// (the exponent fields, the signs, which part is the larger) comes from
// the doubles' bits instead, and the fold of the angle is chosen by index
// and sign products rather than branches, which would mispredict half the
// time. The two chains, the logarithm's and the angle's, are independent:
// their steps are issued in turn (the quotient, the logarithm's
// reduction, the angle's second division, the logarithm's polynomial, the
// angle's), so that each division runs under the other chain's work.
struct LnParts {
    long double half_log, angle;
};

ZVL_EXT_INLINE LnParts ln_parts(const double* xp, const double* yp) {
    const uint64_t ax = abs_bits(*xp), ay = abs_bits(*yp);
    const bool swap = ax < ay, xneg = part_negative(*xp), yneg = part_negative(*yp);
    // the larger and the smaller part, read from memory at each use
    const double* const hp = swap ? yp : xp;
    const double* const lp = swap ? xp : yp;
    const auto h = [hp] { return part_abs(hp); };
    const auto l = [lp] { return part_abs(lp); };
    const long double sign_y = ExtSigns::table[4 + yneg];
    // the angle: y/x where |y/x| < 2^-39 and x > 0 (then l/h with y's
    // sign, the same rounding), otherwise the fold of (l, h) by the sign
    // of x and the larger part
    const bool tiny = ext_field_of(ay) + 40 < ext_field_of(ax) && !xneg;
    const unsigned fold = (xneg ? 2u : 0u) + (swap ? 1u : 0u);
    LnParts out;
    out.angle = sign_y * (tiny ? l() / h() : atan_fold_body(l(), h(), fold, ExtSigns::table[fold]));
    const long double S = h() * h() + l() * l();
    if (ext_abs(S - 1.0L) <= 0.03L) {
        // ext_log1p(t) of t = S - 1 formed without loss: t itself at zero,
        // the small polynomial below 1/128, the core on the exact pair
        // 1 + t above
        const Pair hh = two_prod(h(), h()), ll = two_prod(l(), l());
        const Pair s = two_sum(hh.hi, ll.hi);
        const Pair d = two_sum(s.hi, -1.0L);
        const long double t = d.hi + (((d.lo + s.lo) + hh.lo) + ll.lo);
        if (ext_abs(t) < ExtLog::near) {
            const Pair L = log1p_small({t, 0.0L});
            out.half_log = 0.5L * (t == 0 ? t : L.hi + L.lo);
            return out;
        }
        const Pair one_t = two_sum(1.0L, t);
        const Pair L = log_core({one_t.hi, one_t.lo + 0.0L}, 0);
        out.half_log = 0.5L * (L.hi + L.lo);
        return out;
    }
    const Pair L = log_core({S, 0.0L}, 0);
    out.half_log = 0.5L * (L.hi + L.lo);
    return out;
}

}  // namespace zln

ZVL_SCALAR_ROUTINE ZVLComplex16* zLn_scalar(ZVLComplex16* r, const ZVLComplex16* z) {
    const double x = z->real, y = z->imag;
    if (zln::finite_nonzero(zln::abs_bits(x), zln::abs_bits(y))) {
        const zln::LnParts p = zln::ln_parts(&z->real, &z->imag);
        *r = make_z(p.half_log, p.angle);
        return r;
    }
    const long double X = x, Y = y;
    if (part_finite(x) && part_finite(y)) {
        *r = make_z(zln::half_log_abs(x, y), ext_atan2(Y, X));
    } else if (part_inf(x) || part_inf(y)) {
        const long double inf = part_inf(x) ? fabs_d(&x) : fabs_d(&y);
        *r = make_z(inf, part_nan(x) || part_nan(y) ? X + Y : ext_atan2(Y, X));
    } else {
        const long double q = X + Y;
        *r = make_z(q, q);
    }
    return r;
}

ZVL_SCALAR_ROUTINE ZVLComplex16* zLog10_scalar(ZVLComplex16* r, const ZVLComplex16* z) {
    const double x = z->real, y = z->imag;
    if (zln::finite_nonzero(zln::abs_bits(x), zln::abs_bits(y))) {
        const long double k = zln::log10_e();
        const zln::LnParts p = zln::ln_parts(&z->real, &z->imag);
        *r = make_z(k * p.half_log, k * p.angle);
        return r;
    }
    const long double X = x, Y = y, k = zln::log10_e(), C = zln::log10_e_pio2();
    const long double sign = part_negative(y) ? -1.0L : 1.0L;
    if (part_nan(x) || part_nan(y)) {
        const long double q = X + Y;
        *r = part_inf(x) || part_inf(y) ? make_z(fabs_d(part_inf(x) ? &x : &y), q) : make_z(q, q);
    } else if (part_inf(x)) {
        const long double turn = part_negative(x) ? (part_inf(y) ? 1.5L : 2.0L) : (part_inf(y) ? 0.5L : 0.0L);
        *r = make_z(fabs_d(&x), sign * (turn * C));
    } else if (part_inf(y)) {
        *r = make_z(fabs_d(&y), sign * C);
    } else if (part_zero(x) && part_zero(y)) {
        *r = ZVLComplex16{-__builtin_inf(), part_negative(x) ? static_cast<double>(sign * (2.0L * C)) : y};
    } else {
        *r = make_z(k * zln::half_log_abs(x, y), k * ext_atan2(Y, X));
    }
    return r;
}

}  // namespace
ZVL_SCALAR_END
