// The vector kernels of Sin and Cos in every cell: an infinity inside a
// block reports once, at its own index and under the cell's label, and
// leaves the other lanes as they are without it; the step pi/32 cells
// report under the older callouts' labels; the short form of cpu type 1 EP
// reports nothing at all.
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "frame/kernel_sets.h"
#include "tests/common/rows.h"

namespace zvl_test {
namespace {

constexpr double kInf = HUGE_VAL;

// The label a cell reports under: the step pi/32 cells, the older
// callouts' own.
std::string label_of(const Row& r, int cpu, int col) {
    if (r.cell(cpu, col).variant == 'B') return std::string(r.exported) == "VDSIN" ? "dSin_HA" : "dCos_HA";
    return Slot{&r, cpu, col}.name();
}

TEST(SinCos, InfinityInsideABlock) {
    for (const char* name : {"VDSIN", "VDCOS"}) {
        const Row& r = row(name);
        for (int cpu = 0; cpu < kCpuTypes; ++cpu)
            for (int col = 0; col < 3; ++col) {
                if (!cpu_runs(cpu)) continue;
                const bool short_form = r.cell(cpu, col).variant == 'E';
                const Kernel k = r.kernel(cpu, col);
                Args x = ordinary(r, 45, 3);
                x.a[3] = 70000.0;  // past every HA bound: to the callout, silently
                const int n = static_cast<int>(x.a.size());
                std::vector<double> plain(n), got(n);
                k(n, x.a.data(), nullptr, plain.data(), nullptr);
                x.a[21] = -kInf;  // inside the second block of 16, in the first remainder of 4
                ReportLog log;
                k(n, x.a.data(), nullptr, got.data(), nullptr);
                const std::string where = slot_label({&r, cpu, col});
                for (int i = 0; i < n; ++i)
                    if (i != 21) EXPECT_TRUE(same(got[i], plain[i])) << where << " element " << i;
                if (short_form) {
                    EXPECT_EQ(got[21], 0.0) << where;
                    EXPECT_FALSE(std::signbit(got[21])) << where;
                    EXPECT_TRUE(log.list().empty()) << where;
                    continue;
                }
                EXPECT_TRUE(std::isnan(got[21])) << where;
                ASSERT_EQ(log.list().size(), 1u) << where;
                EXPECT_EQ(log.list()[0].status, ZVL_STATUS_ERRDOM) << where;
                EXPECT_EQ(log.list()[0].index, 21) << where;
                EXPECT_EQ(log.list()[0].name, label_of(r, cpu, col)) << where;
            }
    }
}

// Sin keeps the sign of a zero and gives a subnormal back in every cell;
// the vector sums alone would give +0 for -0.
TEST(SinCos, SinOfZerosAndSubnormals) {
    const Row& r = row("VDSIN");
    const std::vector<double> a = {-0.0, 0.0, -0x1p-1074, 0x1.8p-1060, -0x1p-1022, -0.0, 0.5, -0.0};
    for (int cpu = 0; cpu < kCpuTypes; ++cpu)
        for (int col = 0; col < 3; ++col) {
            if (!cpu_runs(cpu)) continue;
            std::vector<double> y(a.size());
            r.kernel(cpu, col)(static_cast<int>(a.size()), a.data(), nullptr, y.data(), nullptr);
            for (size_t i = 0; i < a.size(); ++i)
                if (a[i] != 0.5) EXPECT_TRUE(same(y[i], a[i])) << slot_label({&r, cpu, col}) << " " << i;
        }
}

}  // namespace
}  // namespace zvl_test
