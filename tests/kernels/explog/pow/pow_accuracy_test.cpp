// Accuracy of every Pow kernel against MPFR: HA within 1 ulp, LA within 4,
// EP within a relative 2^-26 where the result is a normal number, that is
// |y ln x| up to about 708.4 (denormal results and overflow EP hands to the
// accurate scalar routine, and they are held to HA's bound). Ulps are those of the exact result's binade, 2^-1074
// below the normal range; an infinite result counts as 2^1024.
//
// Domains: x over all binades with y chosen so that y log2 x spreads over
// the whole range of results, near overflow and through the denormals; x
// near 1 with large y; negative x with integer y; tiny y; and the hard
// cases of pow.
#include <gtest/gtest.h>
#include <mpfr.h>

#include <cmath>
#include <cstdio>
#include <fstream>
#include <random>
#include <sstream>
#include <string>
#include <tuple>
#include <vector>

#include "pow_test_util.h"

namespace {

using pow_test::hex;

// The exact result as (m_hi + m_lo) * 2^e, 1 <= |m_hi| < 2, from MPFR at
// 160 bits; cr is it rounded to a double.
struct Sample {
    double x, y;
    double m_hi, m_lo;
    int e;
    double cr;
};

// `got` scaled as the exact value is; an infinity stands for 2^1024.
double scaled(const Sample& s, double got) {
    if (std::isinf(got)) return std::copysign(std::ldexp(1.0, 1024 - s.e), got);
    return std::ldexp(got, -s.e);
}

double ulps(const Sample& s, double got) {
    if (std::isnan(got)) return INFINITY;
    if (pow_test::bits(got) == pow_test::bits(s.cr)) return 0.0;
    if (s.m_hi == 0.0) return std::fabs(got) / 0x1p-1074;
    const double ulp = std::ldexp(1.0, std::max(s.e - 52, -1074) - s.e);
    return std::fabs((s.m_hi - scaled(s, got)) + s.m_lo) / ulp;
}

double rel(const Sample& s, double got) {
    if (std::isnan(got)) return INFINITY;
    if (s.m_hi == 0.0) return got == 0.0 ? 0.0 : INFINITY;
    return std::fabs(((s.m_hi - scaled(s, got)) + s.m_lo) / s.m_hi);
}

Sample reference(double x, double y) {
    mpfr_t mx, my, r, t;
    mpfr_inits2(160, mx, my, r, t, static_cast<mpfr_ptr>(nullptr));
    mpfr_set_d(mx, x, MPFR_RNDN);
    mpfr_set_d(my, y, MPFR_RNDN);
    mpfr_pow(r, mx, my, MPFR_RNDN);
    Sample s{x, y, 0, 0, 0, mpfr_get_d(r, MPFR_RNDN)};
    if (!mpfr_zero_p(r)) {
        long e;
        mpfr_get_d_2exp(&e, r, MPFR_RNDN);  // r = m 2^e, 0.5 <= |m| < 1
        s.e = static_cast<int>(e - 1);
        mpfr_div_2si(t, r, s.e, MPFR_RNDN);
        s.m_hi = mpfr_get_d(t, MPFR_RNDN);
        mpfr_sub_d(t, t, s.m_hi, MPFR_RNDN);
        s.m_lo = mpfr_get_d(t, MPFR_RNDN);
    }
    mpfr_clears(mx, my, r, t, static_cast<mpfr_ptr>(nullptr));
    return s;
}

double log_uniform(std::mt19937_64& g, double lo_exp, double hi_exp) {
    return std::exp2(std::uniform_real_distribution<double>(lo_exp, hi_exp)(g));
}

// y for x such that y log2 x is about Y.
double y_for(double x, double Y) {
    const double l = std::log2(std::fabs(x));
    return l == 0 ? Y : Y / l;
}

std::vector<Sample> make_samples(int n, uint64_t seed) {
    std::mt19937_64 g(seed);
    std::uniform_real_distribution<double> u(0.0, 1.0);
    std::vector<Sample> v;
    const auto add = [&](double x, double y) { v.push_back(reference(x, y)); };
    for (int i = 0; i < n; ++i) {
        // every binade of x, results over the whole range
        double x = log_uniform(g, -1074, 1024);
        add(x, y_for(x, -1080 + 2110 * u(g)));
        // results near overflow and through the denormals
        x = log_uniform(g, -1074, 1024);
        add(x, y_for(x, 1015 + 10 * u(g)));
        add(x, y_for(x, -1076 + 58 * u(g)));
        // x near 1, large y
        x = 1.0 + std::ldexp(2 * u(g) - 1, -static_cast<int>(1 + 52 * u(g)));
        add(x, y_for(x, (2 * u(g) - 1) * 1000));
        // x in the first table intervals around 1, where log2 x and the table
        // value nearly cancel, and |y log2 x| near the ends of the range
        const int bin = 1 + static_cast<int>(3 * u(g));
        x = u(g) < 0.5 ? 1.0 + (bin - 0.5 + 0.2 * u(g)) / 1024 : 1.0 - (bin - 0.5 + 0.2 * u(g)) / 2048;
        add(x, y_for(x, (u(g) < 0.5 ? -1 : 1) * (1000 + 24 * u(g))));
        // ordinary ranges
        add(log_uniform(g, -10, 10), (2 * u(g) - 1) * 50);
        // negative x with an integer y
        x = -log_uniform(g, -20, 20);
        add(x, std::nearbyint(y_for(x, (2 * u(g) - 1) * 900)));
        // tiny and denormal y
        add(log_uniform(g, -1000, 1000), std::ldexp(2 * u(g) - 1, -static_cast<int>(60 + 1000 * u(g))));
    }
    return v;
}

std::vector<Sample> hard_cases() {
    std::vector<Sample> v;
    std::ifstream in(ZVL_HARDCASES);
    std::string line;
    while (std::getline(in, line)) {
        if (line.empty() || line[0] == '#') continue;
        double x, y;
        if (std::sscanf(line.c_str(), "%la,%la", &x, &y) == 2) v.push_back(reference(x, y));
    }
    return v;
}

const std::vector<Sample>& samples() {
    static const std::vector<Sample> s = make_samples(1500, 20240611);
    return s;
}

struct Worst {
    double err = 0;
    Sample at{};
    double got = 0;
};

// Runs the kernel over the samples as one array (blocks and remainder
// alike) and returns the worst error by the column's measure.
Worst measure(const std::vector<Sample>& s, int cpu, int col) {
    std::vector<double> x, y, r(s.size());
    for (const Sample& e : s) x.push_back(e.x), y.push_back(e.y);
    pow_test::pow_kernel(cpu, col)(static_cast<int32_t>(s.size()), x.data(), y.data(), r.data());
    Worst w;
    for (size_t i = 0; i < s.size(); ++i) {
        // EP's relative bound holds for normal results, |y ln x| up to
        // 708.39; the rest (denormal results, overflow) the scalar routine
        // answers with HA's accuracy.
        const bool ep_domain = col == 2 && cpu > 0 && s[i].m_hi != 0.0 && s[i].e >= -1022 &&
                               s[i].e < 1024;
        double err = ep_domain ? rel(s[i], r[i]) : ulps(s[i], r[i]);
        if (ep_domain) err /= 0x1p-26;  // as a fraction of the bound
        else if (col == 1 && cpu > 0) err /= 4;
        if (err > w.err) w = {err, s[i], r[i]};
    }
    return w;
}

class PowAccuracy : public pow_test::PerKernel {
  protected:
    void check(const std::vector<Sample>& s, const char* what) {
        const Worst w = measure(s, cpu(), col());
        std::printf("  %s cpu %d %s: worst %.4f of the bound at %s ^ %s\n", what, cpu(),
                    pow_test::kColumn[col()], w.err, hex(w.at.x).c_str(), hex(w.at.y).c_str());
        EXPECT_LE(w.err, 1.0) << what << ": " << hex(w.at.x) << " ^ " << hex(w.at.y) << " gave "
                              << hex(w.got) << ", correctly rounded " << hex(w.at.cr);
    }
};

TEST_P(PowAccuracy, RandomDomains) { check(samples(), "random"); }

TEST_P(PowAccuracy, HardCases) {
    static const std::vector<Sample> h = hard_cases();
    ASSERT_GT(h.size(), 1000u);
    check(h, "hard cases");
}

TEST_P(PowAccuracy, DISABLED_LongSweep) {
    static const std::vector<Sample> s = make_samples(60000, 7);
    check(s, "long sweep");
}

POW_FOR_EACH_KERNEL(PowAccuracy);

}  // namespace
