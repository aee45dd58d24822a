// The scheme that zAcos_scalar, zAcosh_scalar and zAsinh_scalar share, for
// a real-like part p > 0 and an other part q > 0, both finite (the
// absolute values of the argument's parts, read where used: part_abs):
//
//   r = |(p + 1) + iq|, s = |(p - 1) + iq|, A = (r + s)/2
//   angle = acos(p/A) (asin(p/A) for asinh)  where p/A is below the
//           crossover, since there the inverse is well conditioned;
//           otherwise atan2 of sqrt(A^2 - p^2) against p, with
//           A^2 - p^2 = q^2 w formed without cancellation:
//             p > 1:  w = ((A + p)/(r + p + 1) + (A + p)/(s + p - 1))/2
//             p <= 1: A^2 - p^2 = w = (s - (p - 1) + q^2/(r + p + 1)) (A + p)/2
//   log   = acosh A: ln(A + sqrt(A^2 - 1)) above 1.5, otherwise
//           ln1p(t + sqrt((A + 1) t)) with t = A - 1 from
//           t = (q^2/(p + 1 + r) + e)/2, e = (p - 1) + s for p >= 1 and
//           q^2/(s - (p - 1)) below
//
// The crossover is 0.6417 with a strict test for the cosine-type routines
// and 0.9, test p <= A B, for asinh. Everything is extended: the squares
// of doubles neither overflow nor underflow there.
//
// Both choices end alike: the angle in one square root and one atan2
// (acos u = atan2(sqrt((1 - u)(1 + u)), u), as ext_acos takes it), the
// logarithm in one square root and the logarithm core (ln1p a as the log of
// the exact pair 1 + a, as ext_log1p takes it from 1/128 up). So the
// arguments of every side are formed, the chosen one taken by a select,
// and each root and each core appears once, inline: the four roots of an
// element are the bulk of its work, and two pairs of them (r and s, the
// angle's and the logarithm's) are independent chains that overlap. The
// results are those of ext_acos, ext_asin, ext_log and ext_log1p called on
// the chosen side, bit for bit (complex_scheme_bits_test).
#pragma once

#include "kernels/complex/scalar_parts.h"

namespace {

struct AcosParts {
    long double angle;  // in [0, pi/2]
    long double log;    // acosh A, not negative
};

template <bool SineType>
inline AcosParts acos_scheme(const double* p_part, const double* q_part) {
    const auto p = [p_part] { return part_abs(p_part); };
    const auto q = [q_part] { return part_abs(q_part); };
    const long double q2 = q() * q();
    const long double r = ext_sqrt_inline((p() + 1.0L) * (p() + 1.0L) + q2);
    const long double s = ext_sqrt_inline((p() - 1.0L) * (p() - 1.0L) + q2);
    const long double A = (r + s) * 0.5L;
    long double sm = s - (p() - 1.0L);
    if (!SineType && sm == 0) sm = q();
    const bool above = p() > 1.0L, big = A > 1.5L;
    const long double AB = A * (SineType ? 0.9L : 0.6417L);
    const bool direct = SineType ? p() <= AB : p() < AB;
    // The angle's root: of (1 - u)(1 + u), u = p/A, on the direct side; of
    // w, times q, for p > 1; of (sm + q^2/(r + p + 1)) (A + p)/2 below. A
    // divisor that a side not taken could make zero is replaced before the
    // division, so that no value unused raises a flag.
    const long double u = p() / A;
    const long double Ap = A + p();
    const long double d1 = (above ? Ap : q2) / (r + p() + 1.0L);
    const long double d2 = Ap / (above ? s + (p() - 1.0L) : 1.0L);
    const long double w = above ? (d1 + d2) * 0.5L : (sm + d1) * Ap * 0.5L;
    const long double root = ext_sqrt_inline(direct ? (1.0L - u) * (1.0L + u) : w);
    // The logarithm's root: of A^2 - 1 above 1.5, of (A + 1) t below
    const bool from_one = p() >= 1.0L;
    const long double em = q2 / (from_one ? 1.0L : sm);
    const long double e = from_one ? (p() - 1.0L) + s : em;
    const long double t = (q2 / (p() + 1.0L + r) + e) * 0.5L;
    const long double root2 = ext_sqrt_inline(big ? A * A - 1.0L : (A + 1.0L) * t);
    AcosParts out;
    const long double side = root * (direct || !above ? 1.0L : q());  // exact times 1
    const long double num = SineType ? (direct ? u : p()) : side;
    const long double den = SineType ? side : (direct ? u : p());
    // num and den are positive, normal and of moderate size: ext_atan2's
    // main path, inline; below 2^-33 the sine type's asin u is u itself
    out.angle = SineType && direct && u < Ext::tiny33 ? u : atan2_main(num, den);
    const long double a = t + root2;
    if (!big && ext_abs(a) < ExtLog::near) {
        const Pair L = log1p_small({a, 0.0L});  // ext_log1p's small path
        out.log = L.hi + L.lo;
    } else {
        // ln(A + root2), or ln(1 + a) with 1 + a as an exact pair: the
        // core's table path either way
        const Pair one_a = two_sum(1.0L, a);
        const Pair L = log_core(big ? Pair{A + root2, 0.0L} : one_a, 0);
        out.log = L.hi + L.lo;
    }
    return out;
}

// pi - a, for a in [0, pi/2], from pi as a pair.
inline long double pi_less(long double a) { return (Ext::pi[0] - a) + Ext::pi[1]; }

}  // namespace
