// Powx is Pow with one exponent for the whole array: the same bits and the
// same reports, every cpu type and mode, except that b = 1, 2, 0.5 and -1
// take a shorter road to the correctly rounded power (Pow's exact cases and
// reports still hold there). The exact cases themselves and the accuracy are
// the directed cases' and the accuracy harness's (tests/tools).
#include <gtest/gtest.h>

#include <cmath>
#include <utility>
#include <vector>

#include "frame/kernel_sets.h"
#include "tests/common/capture.h"
#include "tests/common/rows.h"

namespace zvl_test {
namespace {

constexpr double kInf = __builtin_inf();
constexpr double kNaN = __builtin_nan("");

std::vector<std::pair<int, int>> reports_of(const ReportLog& log) {
    std::vector<std::pair<int, int>> v;
    for (const Report& r : log.list()) v.emplace_back(r.status, r.index);
    return v;
}

TEST(Powx, PowWithOneExponent) {
    std::vector<double> x;
    for (int i = 0; i < 37; ++i) x.push_back(std::ldexp(1.0 + i * 0.173, (i * 37) % 200 - 100));
    for (double s : {-3.0, -0.0, 0.0, kInf, -kInf, kNaN, 5e-324, -5e-324, 1.0, -1.0})
        x.push_back(s);
    x.push_back(from_bits(0x7ff0000000000001));  // signalling
    const int n = static_cast<int>(x.size());
    for (int cpu = 0; cpu < kCpuTypes; ++cpu) {
        if (!cpu_runs(cpu)) continue;
        for (int col = 0; col < 3; ++col) {
            const Kernel pow = row("VDPOW").kernel(cpu, col), powx = row("VDPOWX").kernel(cpu, col);
            for (double b : {3.0, -3.0, 2.5, -0.75, 1e-300, 7e15, 1.0 / 3, 0.0, -0.0, 1074.5,
                             -1100.0, 4.0, 0.25, -2.0, kInf, -kInf, kNaN, 1.0, 2.0, 0.5, -1.0}) {
                SCOPED_TRACE(testing::Message() << "cpu " << cpu << " column " << col << " b "
                                                << b);
                std::vector<double> bb(x.size(), b), want(x.size()), got(x.size());
                ReportLog log;
                pow(n, x.data(), bb.data(), want.data(), nullptr);
                const auto want_reports = reports_of(log);
                log.clear();
                powx(n, x.data(), &b, got.data(), nullptr);
                EXPECT_EQ(reports_of(log), want_reports);
                const bool shortcut = b == 1.0 || b == 2.0 || b == 0.5 || b == -1.0;
                for (int i = 0; i < n; ++i) {
                    double exact = want[i];
                    if (shortcut && std::isfinite(x[i]) && x[i] != 0.0 &&
                        !(b == 0.5 && x[i] < 0))
                        exact = b == 1.0 ? x[i] : b == 2.0 ? x[i] * x[i]
                                : b == 0.5 ? std::sqrt(x[i]) : 1.0 / x[i];
                    EXPECT_TRUE(same(got[i], exact)) << "x " << x[i] << ": " << got[i];
                }
            }
        }
    }
}

}  // namespace
}  // namespace zvl_test
