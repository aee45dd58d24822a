// The kernels of the hyperbolic functions and their inverses in every cell:
// several reporting elements of different statuses inside one call report
// once each, in index order, under the cell's own name, with the results
// C99 gives them, and leave the other elements as they are without them;
// and no overflow is raised on the way to a finite result, however large
// the argument.
#include <gtest/gtest.h>

#include <cfenv>
#include <cmath>
#include <string>
#include <vector>

#include "frame/kernel_sets.h"
#include "tests/common/rows.h"

namespace zvl_test {
namespace {

constexpr double kInf = HUGE_VAL;
constexpr double kMax = 0x1.fffffffffffffp+1023;

// An element placed into an ordinary call, and what it must give.
struct Placed {
    int index;
    double a;
    double want;     // compared bit for bit (any NaN for a NaN)
    int32_t status;  // 0: silent
};

struct Case {
    const char* exported;
    std::vector<Placed> placed;
};

// Indices in the first block of eight, the second, and the remainder of
// a call of 45 (blocks of eight, then five one at a time).
const Case kCases[] = {
    {"VDSINH",
     {{2, 711.0, kInf, ZVL_STATUS_OVERFLOW},
      {9, -kInf, -kInf, 0},
      {10, -1000.0, -kInf, ZVL_STATUS_OVERFLOW},
      {12, 0x1.633ce8fb9f87dp+9, 0x1.ffffffffffd3bp+1023, 0},
      {43, -0.0, -0.0, 0}}},
    {"VDCOSH",
     {{0, -711.0, kInf, ZVL_STATUS_OVERFLOW},
      {7, -kInf, kInf, 0},
      {15, -0x1.633ce8fb9f87dp+9, 0x1.ffffffffffd3bp+1023, 0},
      {41, 1e300, kInf, ZVL_STATUS_OVERFLOW}}},
    {"VDACOSH",
     {{1, 0.5, NAN, ZVL_STATUS_ERRDOM},
      {3, 1.0, 0.0, 0},
      {8, -kInf, NAN, ZVL_STATUS_ERRDOM},
      {9, kInf, kInf, 0},
      {40, 0x1.fffffffffffffp-1, NAN, ZVL_STATUS_ERRDOM}}},
    {"VDATANH",
     {{4, 1.0, kInf, ZVL_STATUS_SING},
      {5, -1.0000000000000002, NAN, ZVL_STATUS_ERRDOM},
      {6, -0.0, -0.0, 0},
      {14, -1.0, -kInf, ZVL_STATUS_SING},
      {44, kInf, NAN, ZVL_STATUS_ERRDOM}}},
    {"VDASINH", {{3, -kInf, -kInf, 0}, {11, -0.0, -0.0, 0}, {42, kInf, kInf, 0}}},
    {"VDTANH", {{2, -kInf, -1.0, 0}, {13, 20.0, 1.0, 0}, {14, -0.0, -0.0, 0}, {44, kInf, 1.0, 0}}},
};

TEST(Hyperbolic, ReportsAndSpecialResultsInsideBlocks) {
    for (const Case& c : kCases) {
        const Row& r = row(c.exported);
        for (int cpu = 0; cpu < kCpuTypes; ++cpu)
            for (int col = 0; col < 3; ++col) {
                if (!cpu_runs(cpu)) continue;
                const Kernel k = r.kernel(cpu, col);
                const std::string where = slot_label({&r, cpu, col});
                Args x = ordinary(r, 45, 7);
                const int n = static_cast<int>(x.a.size());
                std::vector<double> plain(n), got(n);
                k(n, x.a.data(), nullptr, plain.data(), nullptr);
                for (const Placed& p : c.placed) x.a[p.index] = p.a;
                ReportLog log;
                k(n, x.a.data(), nullptr, got.data(), nullptr);
                const std::string name = Slot{&r, cpu, col}.name();
                std::vector<Report> want_reports;
                size_t next = 0;
                for (int i = 0; i < n; ++i) {
                    if (next < c.placed.size() && c.placed[next].index == i) {
                        const Placed& p = c.placed[next++];
                        EXPECT_TRUE(same(got[i], p.want)) << where << " at " << p.a << ": " << got[i];
                        if (p.status) want_reports.push_back({p.status, i, 0, where});
                        continue;
                    }
                    EXPECT_TRUE(same(got[i], plain[i])) << where << " element " << i;
                }
                ASSERT_EQ(log.list().size(), want_reports.size()) << where;
                for (size_t j = 0; j < want_reports.size(); ++j) {
                    EXPECT_EQ(log.list()[j].status, want_reports[j].status) << where << " report " << j;
                    EXPECT_EQ(log.list()[j].index, want_reports[j].index) << where << " report " << j;
                    EXPECT_EQ(log.list()[j].name, name) << where;
                }
            }
    }
}

// Arguments whose results are finite, up to the largest double for the
// inverse functions and up to the overflow threshold for Sinh and Cosh;
// the blocks compute every lane, those sent to the callout included.
TEST(Hyperbolic, NoOverflowOnTheWayToFiniteResults) {
    const struct {
        const char* exported;
        std::vector<double> a;
    } cases[] = {
        {"VDSINH", {0x1.633ce8fb9f87dp+9, -710.0, 708.39892578125, 709.0, 300.0, 1e-300, 40.0, -0.1}},
        {"VDCOSH", {-0x1.633ce8fb9f87dp+9, 710.0, 708.39892578125, -709.0, 300.0, 1e-300, 40.0, 0.1}},
        {"VDASINH", {kMax, -kMax, 1e154, 1e300, 0x1p28, -1e200, 0.6, 1e-300}},
        {"VDACOSH", {kMax, 1e154, 1e300, 0x1p28, 1e200, 1.1, 1.0, 2.0}},
        {"VDTANH", {kMax, -kMax, 1e300, 19.0, 20.0, -0.5, 1e-300, 3.0}},
    };
    for (const auto& c : cases) {
        const Row& r = row(c.exported);
        for (int cpu = 0; cpu < kCpuTypes; ++cpu)
            for (int col = 0; col < 3; ++col) {
                if (!cpu_runs(cpu)) continue;
                std::vector<double> y(c.a.size());
                std::feclearexcept(FE_ALL_EXCEPT);
                r.kernel(cpu, col)(static_cast<int>(c.a.size()), c.a.data(), nullptr, y.data(), nullptr);
                const bool overflow = std::fetestexcept(FE_OVERFLOW) != 0;
                EXPECT_FALSE(overflow) << slot_label({&r, cpu, col});
                for (double v : y) EXPECT_TRUE(std::isfinite(v)) << slot_label({&r, cpu, col});
            }
    }
}

}  // namespace
}  // namespace zvl_test
