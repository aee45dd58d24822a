// The scheme that zAcos_scalar, zAcosh_scalar and zAsinh_scalar share, for
// a real-like part p > 0 and an other part q > 0, both finite:
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
#pragma once

#include "kernels/complex/scalar_parts.h"

namespace {

struct AcosParts {
    long double angle;  // in [0, pi/2]
    long double log;    // acosh A, not negative
};

template <bool SineType>
inline AcosParts acos_scheme(long double p, long double q) {
    const long double q2 = q * q;
    const long double r = ext_sqrt((p + 1.0L) * (p + 1.0L) + q2);
    const long double s = ext_sqrt((p - 1.0L) * (p - 1.0L) + q2);
    const long double A = (r + s) * 0.5L;
    long double sm = s - (p - 1.0L);
    if (!SineType && sm == 0) sm = q;
    AcosParts out;
    const long double AB = A * (SineType ? 0.9L : 0.6417L);
    if (SineType ? p <= AB : p < AB) {
        out.angle = SineType ? ext_asin(p / A) : ext_acos(p / A);
    } else {
        long double side;
        if (p > 1.0L) {
            const long double w = ((A + p) / (r + p + 1.0L) + (A + p) / (s + (p - 1.0L))) * 0.5L;
            side = ext_sqrt(w) * q;
        } else {
            side = ext_sqrt((sm + q2 / (r + p + 1.0L)) * (A + p) * 0.5L);
        }
        // side and p are positive, normal and of moderate size: ext_atan2's
        // main path, inline
        out.angle = SineType ? atan2_main(p, side) : atan2_main(side, p);
    }
    if (A > 1.5L) {
        out.log = ext_log(A + ext_sqrt(A * A - 1.0L));
    } else {
        const long double e = p >= 1.0L ? (p - 1.0L) + s : q2 / sm;
        const long double t = (q2 / (p + 1.0L + r) + e) * 0.5L;
        out.log = ext_log1p(t + ext_sqrt((A + 1.0L) * t));
    }
    return out;
}

// pi - a, for a in [0, pi/2], from pi as a pair.
inline long double pi_less(long double a) { return (Ext::pi[0] - a) + Ext::pi[1]; }

}  // namespace
