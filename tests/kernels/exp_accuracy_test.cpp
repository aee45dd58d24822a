// Accuracy of every exp kernel against MPFR: HA within 1 ulp, LA within 4,
// EP within a relative 2^-26, and denormal results (all from the callout)
// within 1 ulp of 2^-1074 in every mode. Samples: uniform and log-uniform
// random inputs, runs of consecutive doubles at the bounds, the points where
// the rounded x*2^s/ln2 changes for each table size, and hard-to-round
// cases.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <random>

#include "tests/kernels/exp_support.h"

namespace {

using exp_test::Exact;
using exp_test::Kernel;

struct Sample {
    double x;
    Exact e;
};

void add_run(std::vector<double>& xs, double at, int each_side) {
    double lo = at, hi = at;
    xs.push_back(at);
    for (int i = 0; i < each_side; ++i) {
        lo = std::nextafter(lo, -INFINITY);
        hi = std::nextafter(hi, INFINITY);
        xs.push_back(lo);
        xs.push_back(hi);
    }
}

const std::vector<Sample>& samples() {
    static const std::vector<Sample> s = [] {
        std::vector<double> xs;
        std::mt19937_64 g(20240611);
        std::uniform_real_distribution<double> whole(-745.2, 709.8), expo(-60.0, 10.0);
        for (int i = 0; i < 20000; ++i) xs.push_back(whole(g));
        for (int i = 0; i < 20000; ++i) xs.push_back(std::copysign(std::exp2(expo(g)), i % 2 ? 1.0 : -1.0));
        // the overflow bound, the smallest denormal and the normal results,
        // and the special-lane bound on both sides
        for (double b : {709.782712893384, -745.1332191019411, -708.3964185322641, 708.39599609375,
                         -708.39599609375})
            add_run(xs, b, 100);
        // x*2^s/ln2 half-way between integers (the index changes) and at
        // whole multiples of ln2 (j wraps round to 0)
        for (int sh : {6, 7, 10, 11}) {
            const double step = std::ldexp(M_LN2, -sh);
            std::uniform_int_distribution<long> N(-1070L << sh, 1020L << sh);
            for (int i = 0; i < 500; ++i) {
                const long at = N(g);
                add_run(xs, (static_cast<double>(at) + 0.5) * step, 1);
                add_run(xs, static_cast<double>(at >> sh << sh) * step, 1);
            }
        }
        for (double x : exp_test::hard_cases()) xs.push_back(x);
        std::vector<Sample> out;
        for (double x : xs)
            if (std::isfinite(x)) out.push_back({x, exp_test::exact_exp(x)});
        return out;
    }();
    return s;
}

class ExpAccuracy : public testing::TestWithParam<Kernel> {};

TEST_P(ExpAccuracy, WithinBudget) {
    const Kernel k = GetParam();
    const std::vector<Sample>& s = samples();
    std::vector<double> a, r(s.size());
    for (const Sample& p : s) a.push_back(p.x);
    const uint32_t mode = zvl::set_mode(ZVL_ERRMODE_IGNORE);
    k.fn()(static_cast<int32_t>(a.size()), a.data(), r.data());
    zvl::set_mode(mode);

    const bool ep = k.col == zvl::kEP && k.cpu != 0;
    const double budget = k.col == zvl::kHA || k.cpu == 0 ? 1.0 : k.col == zvl::kLA ? 4.0 : 0x1p-26;
    double worst = 0, worst_x = 0, worst_denormal = 0, worst_denormal_x = 0;
    for (size_t i = 0; i < s.size(); ++i) {
        const Exact& e = s[i].e;
        const bool denormal = !e.overflow && e.m_hi < 0x1p52;
        const double err = ep && !denormal && !e.overflow ? exp_test::rel_error(e, r[i])
                                                          : exp_test::ulp_error(e, r[i]);
        double& w = denormal ? worst_denormal : worst;
        if (err > w) {
            w = err;
            (denormal ? worst_denormal_x : worst_x) = s[i].x;
        }
    }
    std::printf("exp %s: max %s %.4g at %a (%.17g); denormal results max %.4g ulp at %.17g\n",
                exp_test::kernel_label(k).c_str(), ep ? "rel" : "ulp", ep ? std::log2(worst) : worst,
                worst_x, worst_x, worst_denormal, worst_denormal_x);
    EXPECT_LE(worst, budget) << "at x = " << worst_x;
    EXPECT_LE(worst_denormal, 1.0) << "at x = " << worst_denormal_x;
}

INSTANTIATE_TEST_SUITE_P(AllKernels, ExpAccuracy, testing::ValuesIn(exp_test::kernels()),
                         [](const testing::TestParamInfo<Kernel>& i) {
                             return exp_test::kernel_label(i.param);
                         });

}  // namespace
