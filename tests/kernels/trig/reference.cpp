#include "tests/kernels/trig/reference.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <limits>

#include "tools/accuracy/accuracy.h"

namespace zvl_test {

namespace {
constexpr double kInf = std::numeric_limits<double>::infinity();
// Room for x up to 2^1024 and a remainder of 2^-62 known to 2^-90 of itself.
constexpr mpfr_prec_t kReducePrec = 1300;
}  // namespace

double reduce_error(double x, int32_t q, double high, double low) {
    mpfr_t X, H, t, r, g;
    mpfr_inits2(kReducePrec, X, H, t, r, g, static_cast<mpfr_ptr>(nullptr));
    mpz_t J;
    mpz_init(J);
    mpfr_set_d(X, x, MPFR_RNDN);
    mpfr_const_pi(H, MPFR_RNDN);
    mpfr_div_2ui(H, H, 1, MPFR_RNDN);
    mpfr_div(t, X, H, MPFR_RNDN);
    mpfr_rint(t, t, MPFR_RNDN);
    mpfr_get_z(J, t, MPFR_RNDN);
    // the multiple of pi/2 that q stands for, nearest to J
    const int d = static_cast<int>((q - static_cast<int>(mpz_fdiv_ui(J, 4)) + 8) % 4);
    mpfr_add_si(t, t, d <= 1 ? d : d - 4, MPFR_RNDN);
    mpfr_mul(r, t, H, MPFR_RNDN);
    mpfr_sub(r, X, r, MPFR_RNDN);
    double err = kInf;
    mpfr_div_2ui(t, H, 1, MPFR_RNDN);
    mpfr_mul_d(t, t, 1.0 + 0x1p-40, MPFR_RNDN);
    if (mpfr_cmpabs(r, t) <= 0 && std::isfinite(high) && std::isfinite(low)) {
        mpfr_set_d(g, high, MPFR_RNDN);
        mpfr_add_d(g, g, low, MPFR_RNDN);
        mpfr_sub(g, g, r, MPFR_RNDN);
        mpfr_div(g, g, r, MPFR_RNDN);
        err = std::fabs(mpfr_get_d(g, MPFR_RNDU));
    }
    mpz_clear(J);
    mpfr_clears(X, H, t, r, g, static_cast<mpfr_ptr>(nullptr));
    return err;
}

double ulp_error(Ref1 f, double x, double got) {
    mpfr_t X, y;
    mpfr_inits2(256, X, y, static_cast<mpfr_ptr>(nullptr));
    mpfr_set_d(X, x, MPFR_RNDN);
    f(y, X, MPFR_RNDN);
    double err;
    if (!std::isfinite(got)) {
        err = kInf;
    } else {
        const double rn = mpfr_get_d(y, MPFR_RNDN);
        mpfr_sub_d(y, y, got, MPFR_RNDN);
        mpfr_div_d(y, y, zvl_tools::ulp_of(rn), MPFR_RNDN);
        err = std::fabs(mpfr_get_d(y, MPFR_RNDU));
    }
    mpfr_clears(X, y, static_cast<mpfr_ptr>(nullptr));
    return err;
}

std::vector<double> hard_cases(const char* stem) {
    std::vector<zvl_tools::Pair> pairs;
    EXPECT_TRUE(zvl_tools::read_hardcases(stem, &pairs)) << "ulp-hardcases/" << stem << ".txt";
    std::vector<double> out;
    for (const auto& p : pairs) out.push_back(p.a);
    return out;
}

int sample_factor() {
    const char* s = std::getenv("ZVL_TRIG_SAMPLES");
    const int f = s && *s ? std::atoi(s) : 1;
    return f > 0 ? f : 1;
}

}  // namespace zvl_test
