// erfinv in MPFR, for the error-function table generator and tests: Newton's
// iteration on erf, or on erfc where x = 1 - t is near 1, from a double
// start, to the precision of the output variable.
#pragma once

#include <mpfr.h>

#include <cmath>

namespace zvl_tables {

// y = erfinv(1 - t) for 0 < t < 1 (t exact; 1 - t is formed in MPFR).
inline void erfinv_of_t(mpfr_ptr y, mpfr_srcptr t) {
    const mpfr_prec_t prec = mpfr_get_prec(y) + 16;
    mpfr_t x, e, d, k;
    mpfr_inits2(prec, x, e, d, k, static_cast<mpfr_ptr>(nullptr));
    mpfr_ui_sub(x, 1, t, MPFR_RNDN);
    const bool by_erfc = mpfr_cmp_d(t, 0.5) < 0;
    const double td = mpfr_get_d(t, MPFR_RNDN), xd = mpfr_get_d(x, MPFR_RNDN);
    mpfr_t z;
    mpfr_init2(z, prec);
    if (xd < 0x1p-20) {
        // erfinv(x) = sqrt(pi)/2 x (1 + pi x^2/12 + ...): 2^-80 close
        mpfr_const_pi(k, MPFR_RNDN);
        mpfr_sqrt(z, k, MPFR_RNDN);
        mpfr_mul(z, z, x, MPFR_RNDN);
        mpfr_div_2ui(z, z, 1, MPFR_RNDN);
    } else {
        // a double start by bisection on the double erf or erfc
        double lo = 0.0, hi = 9.0;
        for (int i = 0; i < 80; ++i) {
            const double mid = 0.5 * (lo + hi);
            const bool below = by_erfc ? std::erfc(mid) > td : std::erf(mid) < xd;
            (below ? lo : hi) = mid;
        }
        mpfr_set_d(z, 0.5 * (lo + hi), MPFR_RNDN);
    }
    // z -= (erf(z) - x) / (2/sqrt(pi) exp(-z^2)): each step doubles the bits
    mpfr_const_pi(k, MPFR_RNDN);
    mpfr_sqrt(k, k, MPFR_RNDN);
    mpfr_div_2ui(k, k, 1, MPFR_RNDN);  // sqrt(pi)/2
    for (int i = 0; i < 12; ++i) {
        if (by_erfc) {
            mpfr_erfc(e, z, MPFR_RNDN);
            mpfr_sub(e, t, e, MPFR_RNDN);
        } else {
            mpfr_erf(e, z, MPFR_RNDN);
            mpfr_sub(e, e, x, MPFR_RNDN);
        }
        mpfr_sqr(d, z, MPFR_RNDN);
        mpfr_exp(d, d, MPFR_RNDN);
        mpfr_mul(e, e, d, MPFR_RNDN);
        mpfr_mul(e, e, k, MPFR_RNDN);
        mpfr_sub(z, z, e, MPFR_RNDN);
        if (mpfr_zero_p(e) || mpfr_get_exp(e) < mpfr_get_exp(z) - prec + 4) break;
    }
    mpfr_set(y, z, MPFR_RNDN);
    mpfr_clears(x, e, d, k, z, static_cast<mpfr_ptr>(nullptr));
}

// y = erfinv(x) for a double x with 0 < |x| < 1.
inline void erfinv_of_x(mpfr_ptr y, double x) {
    mpfr_t t;
    mpfr_init2(t, 1100);  // 1 - |x| exactly, for every double
    mpfr_set_d(t, std::fabs(x), MPFR_RNDN);
    mpfr_ui_sub(t, 1, t, MPFR_RNDN);
    erfinv_of_t(y, t);
    if (x < 0) mpfr_neg(y, y, MPFR_RNDN);
    mpfr_clear(t);
}

}  // namespace zvl_tables
