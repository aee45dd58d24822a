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

// LA and EP rows steer only the split: with the same counts an LA call of
// vdInv at type 4 (3.06 per element) needs longer arrays than HA (10.56).
TEST(Thresholds, SplitUsesTheSlotOfTheMode) {
    use(4, {3, 4, 4});
    int32_t threads = 8;
    EXPECT_EQ(zvl::split_threads_d(&threads, 1000, 0), 3);
    threads = 8;
    EXPECT_EQ(zvl::split_threads_d(&threads, 1000, 6), 1);
}

struct SplitCase {
    int32_t n;
    int32_t threads_in;
    int32_t expected;
};

class Split : public testing::TestWithParam<SplitCase> {};

// Counts 3, 4, 4 (fork cost 6000) and vdInv HA at type 4: one thread up to
// 568 elements, two up to 994, three up to 6676, then all four.
TEST_P(Split, ThreadsGrowWithLength) {
    use(4, {3, 4, 4});
    int32_t threads = GetParam().threads_in;
    EXPECT_EQ(zvl::split_threads_d(&threads, GetParam().n, 0), GetParam().expected);
    EXPECT_EQ(threads, GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Thresholds, Split,
                         testing::Values(SplitCase{100, 8, 1}, SplitCase{568, 8, 1},
                                         SplitCase{569, 8, 2}, SplitCase{994, 8, 2},
                                         SplitCase{995, 8, 3}, SplitCase{6676, 8, 3},
                                         SplitCase{6677, 8, 4}, SplitCase{0x7fffffff, 8, 4},
                                         SplitCase{6677, 2, 2}, SplitCase{995, 1, 1}));

TEST(Thresholds, SplitOfAZeroCostAddsEveryProcessor) {
    use(5, {3, 4, 4});
    int32_t threads = 16;
    EXPECT_EQ(zvl::split_threads_d(&threads, 0x7fffffff, 0), 4);
    use(5, {2, 2, 2});
    threads = 16;
    EXPECT_EQ(zvl::split_threads_z(&threads, 0x7fffffff, 0), 2);
}

TEST(Thresholds, SplitWithOneProcessorIsOne) {
    use(2, {1, 1, 1});
    int32_t threads = 4;
    EXPECT_EQ(zvl::split_threads_d(&threads, 0x7fffffff, 144), 1);
    EXPECT_EQ(threads, 1);
}

// The complex and float tables each steer their own drivers.
TEST(Thresholds, SplitReadsItsOwnTable) {
    use(4, {3, 9, 16});
    int32_t threads = 16;
    // vzExp HA at type 4: 14000 / 72.94 is 191 elements for one thread.
    EXPECT_EQ(zvl::split_threads_z(&threads, 191, 54), 1);
    threads = 16;
    EXPECT_GT(zvl::split_threads_z(&threads, 192, 54), 1);
    // The float tables cost half, so one thread covers twice the length.
    threads = 16;
    EXPECT_EQ(zvl::split_threads_s(&threads, 2 * 1111, 144), 1);
    threads = 16;
    EXPECT_EQ(zvl::split_threads_c(&threads, 2 * 191, 54), 1);
}

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
