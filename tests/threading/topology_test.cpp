// The core count and the package walk on simulated machines, and once on
// the real one.
#include <gtest/gtest.h>

#include <cstdio>

#include "platform/os.h"
#include "tests/threading/machine.h"
#include "threading/topology.h"

namespace {

using zvl::TopologyCounts;
using zvl_test::Machine;

struct MachineCase {
    const char* name;
    uint32_t cores, threads;      // one package with contiguous APIC ids, HTT set,
    void (*change)(Machine& m);   // then this change
    TopologyCounts walk;
    int32_t physical, logical;    // -1: not looked at
};

std::ostream& operator<<(std::ostream& os, const MachineCase& c) { return os << c.name; }

class Machines : public testing::TestWithParam<MachineCase> {};

TEST_P(Machines, WalkAndCoreCount) {
    const MachineCase& c = GetParam();
    Machine m = zvl_test::package_of(c.cores, c.threads);
    if (c.change) c.change(m);
    zvl_test::g_machine = &m;
    const TopologyCounts walk = zvl::walk_packages(zvl_test::kSimulated);
    int32_t logical = 1, physical = 7;
    zvl::count_physical_cores(zvl_test::kSimulated, &logical, &physical);
    zvl_test::g_machine = nullptr;
    EXPECT_EQ(walk.packages, c.walk.packages);
    EXPECT_EQ(walk.cores, c.walk.cores);
    EXPECT_EQ(walk.logical, c.walk.logical);
    if (c.physical >= 0) EXPECT_EQ(physical, c.physical);
    if (c.logical >= 0) EXPECT_EQ(logical, c.logical);
}

INSTANTIATE_TEST_SUITE_P(
    Topology, Machines,
    testing::Values(
        // The walk's wrap doubles the passes, the failed middle pass adds one
        // to each count, and the core count finds the cores.
        MachineCase{"TwoCores", 2, 1, nullptr, {3, 4, 4}, 2, 2},
        MachineCase{"FourCores", 4, 1, nullptr, {3, 8, 8}, 4, 4},
        MachineCase{"TwoCoresTwoThreads", 2, 2, nullptr, {3, 5, 8}, 2, 4},
        MachineCase{"FourCoresTwoThreads", 4, 2, nullptr, {3, 9, 16}, 4, 8},
        MachineCase{"EightCoresTwoThreads", 8, 2, nullptr, {3, 17, 32}, 8, 16},
        // A process on one processor walks as two; the core count gives up.
        MachineCase{"SingleProcessorProcess", 2, 1, [](Machine& m) { m.process_mask = 1; },
                    {2, 2, 2}, 1, 1},
        MachineCase{"RestrictedMaskWalksItsProcessors", 4, 1,
                    [](Machine& m) { m.process_mask = 0b0101; }, {3, 4, 4}, 1, -1},
        // Another vendor: the core count ignores HTT (four distinct ids), the
        // walk reads cores per package from leaf 0x80000008, not leaf 4.
        MachineCase{"OtherVendor", 2, 2, [](Machine& m) { m.vendor = false; }, {3, 5, 8}, 4, -1},
        // No leaf 4: both processors read as threads of one core.
        MachineCase{"NoLeafFour", 2, 1, [](Machine& m) { m.max_leaf = 3; }, {3, 3, 4}, 1, -1},
        MachineCase{"WithoutHttEveryPassIsAPackage", 2, 1, [](Machine& m) { m.htt = false; },
                    {4, 4, 4}, 2, -1},
        // A failed affinity query falls back to the processor count: with HTT
        // two per core and two cores per package; without, or with no
        // logical processors per package, a package each.
        MachineCase{"AffinityFails", 2, 2, [](Machine& m) { m.affinity_fails = true; },
                    {1, 2, 4}, -1, -1},
        MachineCase{"AffinityFailsWithoutHtt", 2, 2,
                    [](Machine& m) { m.affinity_fails = true, m.htt = false; }, {4, 4, 4}, -1, -1},
        MachineCase{"AffinityFailsNoLogicalCount", 2, 2,
                    [](Machine& m) { m.affinity_fails = true, m.logical_per_package = 0; },
                    {4, 4, 4}, -1, -1}),
    [](const testing::TestParamInfo<MachineCase>& i) { return std::string(i.param.name); });

TEST(Topology, WalksRestoreAffinity) {
    Machine m = zvl_test::package_of(4, 2);
    m.process_mask = 0b10110110;
    m.thread_mask = m.process_mask;
    zvl_test::g_machine = &m;
    zvl::walk_packages(zvl_test::kSimulated);
    EXPECT_EQ(m.process_mask, 0b10110110u);
    EXPECT_GT(m.process_moves, 0);

    m.process_mask = zvl_test::all_processors(8);
    int32_t logical = 0, physical = 0;
    zvl::count_physical_cores(zvl_test::kSimulated, &logical, &physical);
    EXPECT_EQ(m.thread_mask, m.process_mask);
    zvl_test::g_machine = nullptr;
}

// From 32 processors on the core count's 32-bit bit never exceeds the
// system mask; the walk must still stop at index 63.
TEST(Topology, CoreCountStopsAtIndex63) {
    Machine m = zvl_test::package_of(40, 1);
    zvl_test::g_machine = &m;
    int32_t logical = 0, physical = 0;
    zvl::count_physical_cores(zvl_test::kSimulated, &logical, &physical);
    zvl_test::g_machine = nullptr;
    EXPECT_EQ(m.thread_moves, 65);  // 64 indices and the restore
    EXPECT_EQ(logical, 64);
    EXPECT_EQ(physical, 32);  // indices wrap onto processors 0 to 31
}

TEST(Topology, RealMachineKeepsItsAffinity) {
    uint64_t before = 0, after = 0, system = 0;
    ASSERT_TRUE(zvl::os::get_process_affinity(&before, &system));
    const TopologyCounts n = zvl::walk_packages(zvl::kSystemTopology);
    int32_t logical = 1, physical = 1;
    zvl::count_physical_cores(zvl::kSystemTopology, &logical, &physical);
    ASSERT_TRUE(zvl::os::get_process_affinity(&after, &system));
    EXPECT_EQ(before, after);
    EXPECT_GE(n.packages, 1);
    EXPECT_LE(n.packages, n.cores);
    EXPECT_LE(n.cores, n.logical);
    EXPECT_GE(physical, 1);
    std::printf("this machine: walk %d %d %d, physical cores %d, logical %d\n", n.packages,
                n.cores, n.logical, physical, logical);
}

}  // namespace
