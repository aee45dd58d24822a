// The vector kernels of Tan in every cell: which elements leave for the
// callout and what the others keep. LA and EP refuse pairs: an element past
// 128000, an infinity or a NaN takes its neighbour of the pair along, in the
// blocks and in the pair after them; HA reports once at the element's own
// index, in every batch of 64; cpu type 0's HA refuses from 12800 on. Values
// against MPFR: the accuracy test's tan row and trig_mpfr_test.
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "frame/kernel_sets.h"
#include "tests/common/rows.h"
#include "tests/kernels/trig/scalars.h"

namespace zvl_test {
namespace {

constexpr double kInf = HUGE_VAL;

// The callout's result for x, computed by this cpu type's copy.
double callout(int cpu, double x) {
    double y;
    trig_scalars(cpu).tan(&x, &y);
    return y;
}

std::vector<double> arguments(int n, uint64_t seed) {
    std::vector<double> a(static_cast<size_t>(n));
    uint64_t s = seed;
    for (double& x : a) {
        s = s * 6364136223846793005u + 1442695040888963407u;
        x = (static_cast<double>(s >> 11) * 0x1p-53 - 0.5) * 20.0;
    }
    return a;
}

bool pairs_refused(const Row& r, int cpu, int col) {
    const char v = r.cell(cpu, col).variant;
    return v == 'L' || v == 'P';
}

std::string label_of(const Row& r, int cpu, int col) {
    return r.cell(cpu, col).variant == 'L' || r.cell(cpu, col).variant == 'P' ? "dTan_LA" : "dTan_HA";
}

// An infinity in the second block of 16 and one in the second batch of 64:
// each reports once, at its index and under its cell's label; the other
// elements keep their results, but for the pair partners of LA and EP,
// which take the callout's.
TEST(Tan, InfinitiesInsideBlocksAndBatches) {
    const Row& r = row("VDTAN");
    for (int cpu = 0; cpu < kCpuTypes; ++cpu)
        for (int col = 0; col < 3; ++col) {
            if (!cpu_runs(cpu)) continue;
            const std::string where = slot_label({&r, cpu, col});
            const Kernel k = r.kernel(cpu, col);
            std::vector<double> a = arguments(150, 5);
            const int n = static_cast<int>(a.size());
            std::vector<double> plain(n), got(n);
            k(n, a.data(), nullptr, plain.data(), nullptr);
            a[21] = -kInf;
            a[100] = kInf;
            ReportLog log;
            k(n, a.data(), nullptr, got.data(), nullptr);
            const bool pairs = pairs_refused(r, cpu, col);
            for (int i = 0; i < n; ++i) {
                if (i == 21 || i == 100) continue;
                const bool partner = pairs && (i == 20 || i == 101);
                EXPECT_TRUE(same(got[i], partner ? callout(cpu, a[i]) : plain[i])) << where << " element " << i;
            }
            EXPECT_TRUE(std::isnan(got[21]) && std::isnan(got[100])) << where;
            ASSERT_EQ(log.list().size(), 2u) << where;
            for (int k2 = 0; k2 < 2; ++k2) {
                EXPECT_EQ(log.list()[k2].status, ZVL_STATUS_ERRDOM) << where;
                EXPECT_EQ(log.list()[k2].index, k2 == 0 ? 21 : 100) << where;
                EXPECT_EQ(log.list()[k2].name, label_of(r, cpu, col)) << where;
            }
        }
}

// Arguments whose vector result in this cell is not the callout's, so that
// a test sees which of the two ran.
std::vector<double> not_as_callout(const Kernel& k, int cpu, size_t count) {
    const std::vector<double> pool = arguments(4000, 11);
    std::vector<double> y(pool.size()), out;
    k(static_cast<int>(pool.size()), pool.data(), nullptr, y.data(), nullptr);
    for (size_t i = 0; i < pool.size() && out.size() < count; ++i)
        if (!same(y[i], callout(cpu, pool[i]))) out.push_back(pool[i]);
    return out;
}

// A refused element sends its neighbour of the pair to the callout, and no
// other: at every place of a block, and in the pairs after the blocks (n =
// 14 leaves three, 18 and 19 one). The neighbours are chosen where the
// vector result and the callout's differ, so the test sees which one ran.
TEST(Tan, LaAndEpRefusePairs) {
    const Row& r = row("VDTAN");
    int seen = 0;
    for (int cpu = 1; cpu < kCpuTypes; ++cpu)
        for (int col : {1, 2}) {
            if (!cpu_runs(cpu) || !pairs_refused(r, cpu, col)) continue;
            const std::string where = slot_label({&r, cpu, col});
            const Kernel k = r.kernel(cpu, col);
            const std::vector<double> differs = not_as_callout(k, cpu, 40);
            ASSERT_GE(differs.size(), 40u) << where;
            for (int n : {14, 16, 18, 19}) {
                for (int at = 0; at < n - (n % 2); ++at) {
                    std::vector<double> a(differs.begin(), differs.begin() + n), got(n);
                    a[at] = at % 3 == 0 ? 200000.0 : at % 3 == 1 ? -kInf : std::nan("");
                    ReportLog log;
                    k(n, a.data(), nullptr, got.data(), nullptr);
                    const int partner = at ^ 1;
                    for (int i = 0; i < n; ++i) {
                        if (i == at) continue;
                        const bool via_callout = same(got[i], callout(cpu, a[i]));
                        EXPECT_EQ(via_callout, i == partner)
                            << where << " n " << n << ", refused " << at << ", element " << i;
                    }
                    ++seen;
                }
            }
        }
    if (seen == 0) GTEST_SKIP() << "no LA or EP cell runs here";
}

// 128000 is refused in HA (|x| >= 128000) but stays on LA's and EP's vector
// path, which refuse only a larger high word: there the partner of the
// pair stays too. The first double with a larger high word goes to the
// callout in every mode, its partner with it in LA and EP.
TEST(Tan, BoundsOf128000) {
    const Row& r = row("VDTAN");
    const double kept[] = {128000.0, std::nextafter(128000.0, kInf)};
    const double x2 = 0x1.f400100000000p+16;
    for (int cpu = 1; cpu < kCpuTypes; ++cpu) {
        if (!cpu_runs(cpu)) continue;
        for (int col = 0; col < 3; ++col) {
            const std::string where = slot_label({&r, cpu, col});
            const Kernel k = r.kernel(cpu, col);
            const std::vector<double> p = not_as_callout(k, cpu, 3);
            ASSERT_EQ(p.size(), 3u) << where;
            const std::vector<double> a = {kept[0], p[0], kept[1], p[1], x2, p[2]};
            std::vector<double> y(a.size());
            k(static_cast<int>(a.size()), a.data(), nullptr, y.data(), nullptr);
            const bool ha = col == 0;
            EXPECT_EQ(same(y[0], callout(cpu, a[0])), ha) << where;
            EXPECT_EQ(same(y[2], callout(cpu, a[2])), ha) << where;
            EXPECT_TRUE(same(y[4], callout(cpu, x2))) << where;
            EXPECT_FALSE(same(y[1], callout(cpu, a[1]))) << where;
            EXPECT_FALSE(same(y[3], callout(cpu, a[3]))) << where;
            EXPECT_EQ(same(y[5], callout(cpu, a[5])), !ha) << where;
        }
    }
}

// Cpu type 0's HA refuses from 12800 on: 12800 and above give the
// callout's bits, and so do NaN and the infinities; the last doubles below
// stay on the vector path, which the MPFR test measures.
TEST(Tan, CpuTypeZeroHaRefusesFrom12800) {
    const Kernel k = row("VDTAN").kernel(0, 0);
    const double refused[] = {12800.0, -12800.0, std::nextafter(12800.0, kInf), 1e300, kInf, -kInf,
                              std::nan("")};
    std::vector<double> a = arguments(40, 23);
    a.insert(a.begin() + 5, std::begin(refused), std::end(refused));
    std::vector<double> y(a.size());
    ReportLog log;
    k(static_cast<int>(a.size()), a.data(), nullptr, y.data(), nullptr);
    for (int i = 0; i < 7; ++i) EXPECT_TRUE(same(y[5 + i], callout(0, a[5 + i]))) << i;
    EXPECT_EQ(log.list().size(), 2u);
}

}  // namespace
}  // namespace zvl_test
