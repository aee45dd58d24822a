// Fork cost, thresholds and the dynamic split on given topology counts.
#include <gtest/gtest.h>

#include "tests/threading/machine.h"
#include "threading/threading.h"
#include "threading/thresholds.h"

namespace {

using zvl::TopologyCounts;

constexpr int32_t kNever = 0x7fffffff;

// Stands in for the first lookup: cpu type and counts as given.
void use(int32_t cpu, TopologyCounts counts) {
    zvl::threshold_cpu_type = cpu;
    zvl::set_fork_topology(counts);
}

struct ForkCase {
    TopologyCounts counts;
    float cost;
};

class ForkCost : public testing::TestWithParam<ForkCase> {};

TEST_P(ForkCost, FromWalkCounts) {
    EXPECT_EQ(zvl::fork_cost_of(GetParam().counts), GetParam().cost);
}

INSTANTIATE_TEST_SUITE_P(Thresholds, ForkCost,
                         testing::Values(ForkCase{{3, 9, 16}, 14000.0f},
                                         ForkCase{{3, 4, 4}, 6000.0f},
                                         ForkCase{{3, 3, 4}, 6000.0f},
                                         ForkCase{{2, 2, 2}, 9000.0f},
                                         ForkCase{{1, 1, 1}, -1.0f},
                                         // 2 cores of 2 threads: one sibling, two cores
                                         ForkCase{{1, 2, 4}, 40000.0f + 500000.0f / 3}));

TEST(Thresholds, WorkedLengths) {
    use(4, {3, 9, 16});
    EXPECT_EQ(zvl::threshold_d(144, 4), 1111);  // vdExp, 12.6 per element
    EXPECT_EQ(zvl::threshold_z(54, 4), 191);    // vzExp, 72.94
    EXPECT_EQ(zvl::threshold_d(0, 4), 1325);    // vdInv, 10.56
    // A quotient below 100 gives 100: vzAcos, 14000 / 1151.
    EXPECT_EQ(zvl::threshold_z(162, 4), 100);
}

// One processor, or cpu type 5, never forks.
TEST(Thresholds, NeverForks) {
    for (int32_t cpu : {3, 5}) {
        use(cpu, cpu == 5 ? TopologyCounts{3, 9, 16} : TopologyCounts{1, 1, 1});
        for (int32_t slot = 0; slot < 648; slot += 6)
            EXPECT_EQ(zvl::threshold_d(slot, cpu), kNever) << cpu;
        for (int32_t slot = 0; slot < 432; slot += 6)
            EXPECT_EQ(zvl::threshold_z(slot, cpu), kNever) << cpu;
    }
}

// Cpu type 5's entries are zero; every other is a real cost: a zero would
// silently keep a function serial on that cpu type.
TEST(Thresholds, TablesHoldCostsBelowType5) {
    const auto check = [](const auto& table, const char* name) {
        for (size_t i = 0; i < table.size(); ++i)
            EXPECT_EQ(table[i] > 0.0, i % 6 != 5) << name << " entry " << i;
    };
    check(zvl::threshold_table_d, "d");
    check(zvl::threshold_table_s, "s");
    check(zvl::threshold_table_z, "z");
    check(zvl::threshold_table_c, "c");
}

// The threads the split gives a length, by cpu type, counts, driver and slot.
using Splitter = int32_t (*)(int32_t* threads, int32_t n, int32_t slot);

struct SplitCase {
    int32_t cpu;
    TopologyCounts counts;
    Splitter split;
    int32_t slot, n, threads_in, expected;
};

class Split : public testing::TestWithParam<SplitCase> {};

TEST_P(Split, ThreadsForTheLength) {
    const SplitCase& c = GetParam();
    use(c.cpu, c.counts);
    int32_t threads = c.threads_in;
    EXPECT_EQ(c.split(&threads, c.n, c.slot), c.expected);
    EXPECT_EQ(threads, c.expected);
}

constexpr int32_t kMax = 0x7fffffff;
constexpr TopologyCounts k344 = {3, 4, 4}, k3916 = {3, 9, 16};
const auto d = zvl::split_threads_d;

INSTANTIATE_TEST_SUITE_P(
    Thresholds, Split,
    testing::Values(
        // Counts 3, 4, 4 (fork cost 6000) and vdInv HA at type 4: one thread
        // up to 568 elements, two up to 994, three up to 6676, then all four.
        SplitCase{4, k344, d, 0, 100, 8, 1}, SplitCase{4, k344, d, 0, 568, 8, 1},
        SplitCase{4, k344, d, 0, 569, 8, 2}, SplitCase{4, k344, d, 0, 994, 8, 2},
        SplitCase{4, k344, d, 0, 995, 8, 3}, SplitCase{4, k344, d, 0, 6676, 8, 3},
        SplitCase{4, k344, d, 0, 6677, 8, 4}, SplitCase{4, k344, d, 0, kMax, 8, 4},
        SplitCase{4, k344, d, 0, 6677, 2, 2}, SplitCase{4, k344, d, 0, 995, 1, 1},
        // LA and EP rows steer only the split: an LA call of vdInv (3.06 per
        // element) needs longer arrays than HA (10.56).
        SplitCase{4, k344, d, 0, 1000, 8, 3}, SplitCase{4, k344, d, 6, 1000, 8, 1},
        // A zero cost (type 5) adds every processor; one processor is one.
        SplitCase{5, k344, d, 0, kMax, 16, 4},
        SplitCase{5, {2, 2, 2}, zvl::split_threads_z, 0, kMax, 16, 2},
        SplitCase{2, {1, 1, 1}, d, 144, kMax, 4, 1},
        // The complex and float tables steer their own drivers: vzExp HA at
        // type 4, 14000 / 72.94, is 191 elements for one thread; the float
        // tables cost half, so one thread covers twice the length.
        SplitCase{4, k3916, zvl::split_threads_z, 54, 191, 16, 1},
        SplitCase{4, k3916, zvl::split_threads_z, 54, 192, 16, 2},
        SplitCase{4, k3916, zvl::split_threads_s, 144, 2 * 1111, 16, 1},
        SplitCase{4, k3916, zvl::split_threads_c, 54, 2 * 191, 16, 1}));

// The first lookup fixes the cpu type and walks the machine; later cpu
// type arguments are ignored.
TEST(Thresholds, FirstLookupWalksAndFixesTheCpuType) {
    zvl_test::Machine m = zvl_test::package_of(2, 1);
    zvl_test::g_machine = &m;
    zvl::topology_ops = &zvl_test::kSimulated;
    zvl::threshold_cpu_type = -1;
    EXPECT_EQ(zvl::threshold_d(0, 3), 621);  // 6000 / 9.65
    EXPECT_EQ(zvl::threshold_d(0, 4), 621);
    EXPECT_EQ(zvl::fork_cost, 6000.0f);
    EXPECT_EQ(zvl::topology_cores, 4);
    zvl::topology_ops = &zvl::kSystemTopology;
    zvl_test::g_machine = nullptr;
}

}  // namespace
