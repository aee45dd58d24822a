// Exact points under every rounding mode the caller may have set. Many
// kernels run in the caller's mode (no guard), so their arithmetic rounds
// up, down or toward zero; the points where the result is exact must come
// out exact anyway, with the sign of a zero and the finiteness of the
// result right, in blocks and in the remainder alike.
#include <gtest/gtest.h>

#include <cfenv>
#include <cfloat>
#include <cmath>
#include <string>

#include "frame/kernel_sets.h"
#include "tests/common/rows.h"

namespace zvl_test {
namespace {

constexpr int kModes[] = {FE_TONEAREST, FE_UPWARD, FE_DOWNWARD, FE_TOWARDZERO};
constexpr int kN = 19;  // blocks of 4, 8 and 16 and a remainder

// Runs kernel k on kN copies of (a, b) under rounding `mode` and checks
// every element against `want`, bit for bit.
void expect_all(const Kernel& k, double a, double b, double want, int mode, const std::string& what) {
    std::vector<double> x(kN, a), y(kN, b), r(kN);
    std::fesetround(mode);
    k(kN, x.data(), y.data(), r.data(), nullptr);
    std::fesetround(FE_TONEAREST);
    for (int i = 0; i < kN; ++i)
        if (!same(r[i], want)) {
            ADD_FAILURE() << what << " rounding " << mode << " element " << i << ": " << std::hexfloat << r[i]
                          << " wanted " << want;
            return;
        }
}

template <class F>
void each_kernel(const char* name, F f) {
    for (int cpu = 0; cpu < kCpuTypes; ++cpu)
        for (int col : {zvl::kHA, zvl::kLA, zvl::kEP}) {
            if (!cpu_runs(cpu)) continue;
            for (int mode : kModes)
                f(row(name).kernel(cpu, col), mode,
                  std::string(name) + " cpu " + std::to_string(cpu) + " col " + std::to_string(col));
        }
}

TEST(ExactPoints, LogarithmsOfOneArePlusZero) {
    for (const char* name : {"VDLN", "VDLOG10"})
        each_kernel(name, [](const Kernel& k, int mode, const std::string& w) { expect_all(k, 1.0, 0, 0.0, mode, w); });
}

TEST(ExactPoints, ExpOfZeroIsOne) {
    // EP at cpu types 4 and 5 scales its table to centre the error, so
    // exp(0) is 0.99999999284 there by design.
    each_kernel("VDEXP", [](const Kernel& k, int mode, const std::string& w) {
        if (w.find("col 2") != std::string::npos && (w.find("cpu 4") != std::string::npos || w.find("cpu 5") != std::string::npos))
            return;
        expect_all(k, 0.0, 0, 1.0, mode, w);
    });
}

TEST(ExactPoints, PowerOneAndZero) {
    const double xs[] = {DBL_MAX, 3.0, 0.1, 1e-300, -2.5, 7e300, 4.9e-324, 1.0};
    for (const char* name : {"VDPOW", "VDPOWX"})
        each_kernel(name, [&](const Kernel& k, int mode, const std::string& w) {
            for (double x : xs) {
                expect_all(k, x, 1.0, x, mode, w + " pow(x, 1)");
                expect_all(k, x, 0.0, 1.0, mode, w + " pow(x, 0)");
            }
        });
}

// The exact cases make an underflow +0 (or the smallest denormal where
// the rounding goes up); never -0 for a positive base.
TEST(ExactPoints, PowerUnderflowKeepsThePositiveSign) {
    for (const char* name : {"VDPOW", "VDPOWX"})
        each_kernel(name, [](const Kernel& k, int mode, const std::string& w) {
            for (double y : {1100.0, 1074.5, 1080.0}) {
                std::vector<double> x(kN, 0.5), b(kN, y), r(kN);
                std::fesetround(mode);
                k(kN, x.data(), b.data(), r.data(), nullptr);
                std::fesetround(FE_TONEAREST);
                for (int i = 0; i < kN; ++i)
                    if (std::signbit(r[i]) || !(r[i] <= 4.9406564584124654e-324)) {
                        ADD_FAILURE() << w << " pow(0.5, " << y << ") rounding " << mode << " element " << i
                                      << ": " << std::hexfloat << r[i];
                        break;
                    }
            }
        });
}

}  // namespace
}  // namespace zvl_test
