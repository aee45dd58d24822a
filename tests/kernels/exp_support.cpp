#include "tests/kernels/exp_support.h"

#include <mpfr.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <limits>
#include <string>

namespace exp_test {

std::vector<Kernel> kernels() {
    std::vector<Kernel> ks;
    for (int cpu = 0; cpu < 6; ++cpu) {
        if (cpu == 5 && !__builtin_cpu_supports("avx")) continue;
        for (int col : {zvl::kHA, zvl::kLA, zvl::kEP}) ks.push_back({cpu, col});
    }
    return ks;
}

std::string kernel_label(const Kernel& k) {
    static const char* const modes[] = {"HA", "LA", "EP"};
    return "cpu" + std::to_string(k.cpu) + "_" + modes[k.col];
}

Exact exact_exp(double x) {
    Exact r{};
    mpfr_t e, m;
    mpfr_inits2(256, e, m, static_cast<mpfr_ptr>(nullptr));
    mpfr_set_d(e, x, MPFR_RNDN);
    mpfr_exp(e, e, MPFR_RNDN);
    // e = f * 2^E with f in [0.5, 1): the ulp is 2^(E-53), or 2^-1074 below
    // the normal range
    const long E = mpfr_get_exp(e);
    r.overflow = E > 1024;
    r.ulp_exp = static_cast<int>(E - 53 < -1074 ? -1074 : E - 53);
    mpfr_mul_2si(m, e, -r.ulp_exp, MPFR_RNDN);
    r.m_hi = mpfr_get_d(m, MPFR_RNDN);
    mpfr_sub_d(m, m, r.m_hi, MPFR_RNDN);
    r.m_lo = mpfr_get_d(m, MPFR_RNDN);
    // Round once to the double format, subnormals included.
    const mpfr_exp_t emin = mpfr_get_emin(), emax = mpfr_get_emax();
    mpfr_set_emin(-1073);
    mpfr_set_emax(1024);
    mpfr_t d;
    mpfr_init2(d, 53);
    mpfr_set_d(m, x, MPFR_RNDN);
    const int inex = mpfr_exp(d, m, MPFR_RNDN);
    mpfr_subnormalize(d, inex, MPFR_RNDN);
    r.correct = mpfr_get_d(d, MPFR_RNDN);
    mpfr_set_emin(emin);
    mpfr_set_emax(emax);
    mpfr_clears(e, m, d, static_cast<mpfr_ptr>(nullptr));
    return r;
}

double ulp_error(const Exact& e, double y) {
    if (e.overflow) return y == INFINITY ? 0.0 : INFINITY;
    if (!std::isfinite(y)) return INFINITY;
    // y scaled to the exact value's ulp is exact, and close to m_hi
    return std::fabs((std::ldexp(y, -e.ulp_exp) - e.m_hi) - e.m_lo);
}

double rel_error(const Exact& e, double y) { return ulp_error(e, y) / e.m_hi; }

std::vector<double> hard_cases() {
    std::vector<double> xs;
    std::ifstream in(ZVL_TEST_DATA_DIR "/ulp-hardcases/exp.txt");
    std::string line;
    while (std::getline(in, line)) {
        if (line.empty() || line[0] == '#') continue;
        xs.push_back(std::strtod(line.c_str(), nullptr));
    }
    return xs;
}

}  // namespace exp_test
