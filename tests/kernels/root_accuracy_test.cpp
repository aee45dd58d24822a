// Accuracy of the Sqrt, InvSqrt, Cbrt and InvCbrt kernels of every cpu type
// and mode against MPFR: log-uniform over the whole range (denormals
// included), the common range, the edges of the vector paths, and the
// hard-to-round cases. Budgets: Sqrt HA correctly rounded, the other HA
// kernels 1 ulp, LA 4 ulp, EP a relative error of 2^-26.
#include <gtest/gtest.h>
#include <mpfr.h>

#include <cmath>
#include <cstdio>
#include <fstream>
#include <limits>
#include <map>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "tests/kernels/kernel_access.h"

#ifndef ZVL_TEST_DATA_DIR
#error "ZVL_TEST_DATA_DIR names tests/data"
#endif
// The long sweep multiplies the random samples.
#ifndef ZVL_SWEEP_SCALE
#define ZVL_SWEEP_SCALE 1
#endif

namespace {

using Fn = zvl_test::RootFn;
using zvl_test::kCbrt;
using zvl_test::kInvCbrt;
using zvl_test::kInvSqrt;
using zvl_test::kSqrt;
constexpr auto& kFnNames = zvl_test::kRootNames;
const char* const kModeNames[] = {"HA", "LA", "EP"};

// The exact value as an unevaluated sum hi + lo (106 bits).
struct Exact {
    double hi, lo;
};

Exact exact(Fn f, double x) {
    mpfr_t m, r;
    mpfr_inits2(160, m, r, static_cast<mpfr_ptr>(nullptr));
    mpfr_set_d(m, x, MPFR_RNDN);
    switch (f) {
        case kSqrt: mpfr_sqrt(r, m, MPFR_RNDN); break;
        case kInvSqrt: mpfr_rec_sqrt(r, m, MPFR_RNDN); break;
        case kCbrt: mpfr_cbrt(r, m, MPFR_RNDN); break;
        case kInvCbrt:
            mpfr_cbrt(r, m, MPFR_RNDN);
            mpfr_ui_div(r, 1, r, MPFR_RNDN);
            break;
    }
    Exact e;
    e.hi = mpfr_get_d(r, MPFR_RNDN);
    mpfr_sub_d(r, r, e.hi, MPFR_RNDN);
    e.lo = mpfr_get_d(r, MPFR_RNDN);
    mpfr_clears(m, r, static_cast<mpfr_ptr>(nullptr));
    return e;
}

// |y - exact| in ulps of the exact value (all results here are normal).
double ulp_error(double y, const Exact& e) {
    int k;
    std::frexp(e.hi, &k);
    // just below a power of two the ulp is half that of the power
    if (std::fabs(std::ldexp(1.0, k - 1)) == std::fabs(e.hi) && e.lo * e.hi < 0) --k;
    return std::fabs((e.hi - y) + e.lo) / std::ldexp(1.0, k - 53);
}

double rel_error(double y, const Exact& e) { return std::fabs(((e.hi - y) + e.lo) / e.hi); }

std::vector<double> read_hard_cases(const std::string& file) {
    std::vector<double> v;
    std::ifstream in(std::string(ZVL_TEST_DATA_DIR) + "/ulp-hardcases/" + file);
    std::string line;
    while (std::getline(in, line)) {
        if (line.empty() || line[0] == '#') continue;
        v.push_back(std::strtod(line.c_str(), nullptr));
    }
    return v;
}

// The inputs of one function, with their exact values, built once.
struct Inputs {
    std::vector<double> x;
    std::vector<Exact> want;
};

const Inputs& inputs_of(Fn f) {
    static std::map<Fn, Inputs> cache;
    auto it = cache.find(f);
    if (it != cache.end()) return it->second;
    Inputs& in = cache[f];
    const bool odd = f == kCbrt || f == kInvCbrt;
    std::mt19937_64 g(12345 + f);
    std::uniform_real_distribution<double> mant(1.0, 2.0), common(0.5, 8.0);
    std::uniform_int_distribution<int> expo(-1074, 1023);
    const auto add = [&](double x) {
        if (std::isfinite(x) && x != 0.0) in.x.push_back(odd && (g() & 1) ? -x : x);
    };
    for (int i = 0; i < 20000 * ZVL_SWEEP_SCALE; ++i) add(std::ldexp(mant(g), expo(g)));
    for (int i = 0; i < 5000 * ZVL_SWEEP_SCALE; ++i) add(common(g));
    for (int i = 0; i < 1000 * ZVL_SWEEP_SCALE; ++i) add(std::ldexp(mant(g), -1074 + static_cast<int>(g() % 52)));
    // around the bounds of the vector paths and the binades of the seeds
    for (int e : {-1022, -1000, -120, 0, 1, 2, 3, 120, 1000, 1022, 1023})
        for (int k = -4; k <= 4; ++k) add(std::ldexp(1.0 + k * 0x1p-52, e));
    double m = std::numeric_limits<double>::max();
    for (int k = 0; k < 8; ++k, m = std::nextafter(m, 0.0)) add(m);
    for (double x : read_hard_cases(odd ? "cbrt.txt" : "rsqrt.txt")) add(std::fabs(x));
    for (double x : in.x) in.want.push_back(exact(f, x));
    return in;
}

class RootAccuracy : public ::testing::TestWithParam<std::tuple<Fn, int, int>> {};

TEST_P(RootAccuracy, WithinBudget) {
    const auto [f, cpu, mode] = GetParam();
    if (!zvl_test::cpu_runs(cpu)) GTEST_SKIP() << "cpu type not supported";
    const Inputs& in = inputs_of(f);
    std::vector<double> y(in.x.size());
    zvl_test::with_mxcsr(zvl_test::kMxcsrDefault, [&] {
        zvl_test::root_set(f).k[cpu][mode](static_cast<int32_t>(in.x.size()), in.x.data(), y.data());
    });
    double worst = 0.0, worst_x = 0.0;
    for (size_t i = 0; i < in.x.size(); ++i) {
        const double err = mode == zvl::kEP ? rel_error(y[i], in.want[i]) : ulp_error(y[i], in.want[i]);
        if (!(err <= worst)) {
            worst = err;
            worst_x = in.x[i];
        }
    }
    const double budget = mode == zvl::kEP ? 0x1p-26
                          : mode == zvl::kLA ? 4.0
                          : f == kSqrt      ? 0.5
                                            : 1.0;
    if (mode == zvl::kEP)
        std::printf("  %-8s cpu %d EP: max relative error 2^%.2f at %a\n", kFnNames[f], cpu,
                    std::log2(worst), worst_x);
    else
        std::printf("  %-8s cpu %d %s: max %.4f ulp at %a\n", kFnNames[f], cpu, kModeNames[mode],
                    worst, worst_x);
    EXPECT_LE(worst, budget) << "at x = " << std::hexfloat << worst_x;
}

INSTANTIATE_TEST_SUITE_P(AllKernels, RootAccuracy,
                         ::testing::Combine(::testing::Values(kSqrt, kInvSqrt, kCbrt, kInvCbrt),
                                            ::testing::Range(0, 6), ::testing::Range(0, 3)),
                         [](const auto& info) {
                             return std::string(kFnNames[std::get<0>(info.param)]) + "_cpu" +
                                    std::to_string(std::get<1>(info.param)) + "_" +
                                    kModeNames[std::get<2>(info.param)];
                         });

}  // namespace
