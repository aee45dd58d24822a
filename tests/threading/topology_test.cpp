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

struct Probed {
    TopologyCounts walk;
    int32_t logical;
    int32_t physical;
};

void expect_counts(const TopologyCounts& got, const TopologyCounts& want) {
    EXPECT_EQ(got.packages, want.packages);
    EXPECT_EQ(got.cores, want.cores);
    EXPECT_EQ(got.logical, want.logical);
}

Probed probe(Machine m) {
    zvl_test::g_machine = &m;
    Probed p;
    p.walk = zvl::walk_packages(zvl_test::kSimulated);
    p.logical = 1;
    p.physical = 7;
    zvl::count_physical_cores(zvl_test::kSimulated, &p.logical, &p.physical);
    zvl_test::g_machine = nullptr;
    return p;
}

struct PackageCase {
    uint32_t cores, threads;
    TopologyCounts walk;
};

class WorkedMachines : public testing::TestWithParam<PackageCase> {};

// One package with contiguous APIC ids: the walk's wrap doubles the passes,
// the failed middle pass adds one to each count, and the core count finds
// the cores.
TEST_P(WorkedMachines, CountsComeOutAsTuned) {
    const PackageCase c = GetParam();
    const Probed p = probe(zvl_test::package_of(c.cores, c.threads));
    expect_counts(p.walk, c.walk);
    EXPECT_EQ(p.physical, static_cast<int32_t>(c.cores));
    EXPECT_EQ(p.logical, static_cast<int32_t>(c.cores * c.threads));
}

INSTANTIATE_TEST_SUITE_P(Topology, WorkedMachines,
                         testing::Values(PackageCase{2, 1, {3, 4, 4}}, PackageCase{4, 1, {3, 8, 8}},
                                         PackageCase{2, 2, {3, 5, 8}}, PackageCase{4, 2, {3, 9, 16}},
                                         PackageCase{8, 2, {3, 17, 32}}));

TEST(Topology, SingleProcessorProcessCountsAsTwo) {
    Machine m = zvl_test::package_of(2, 1);
    m.process_mask = 1;
    const Probed p = probe(m);
    expect_counts(p.walk, {2, 2, 2});
    // Restricted: the core count gives up at once.
    EXPECT_EQ(p.physical, 1);
    EXPECT_EQ(p.logical, 1);
}

TEST(Topology, RestrictedMaskWalksOnlyItsProcessors) {
    Machine m = zvl_test::package_of(4, 1);
    m.process_mask = 0b0101;
    const Probed p = probe(m);
    expect_counts(p.walk, {3, 4, 4});
    EXPECT_EQ(p.physical, 1);
}

TEST(Topology, OtherVendorCountsDistinctApicIds) {
    Machine m = zvl_test::package_of(2, 2);
    m.vendor = false;
    const Probed p = probe(m);
    // The core count ignores HTT on another vendor: four distinct ids.
    EXPECT_EQ(p.physical, 4);
    // The walk takes cores per package from leaf 0x80000008 instead of leaf 4.
    expect_counts(p.walk, {3, 5, 8});
}

TEST(Topology, LeafFourAbsentMeansOneCorePerPackage) {
    Machine m = zvl_test::package_of(2, 1);
    m.max_leaf = 3;
    const Probed p = probe(m);
    // Both processors read as threads of one core.
    EXPECT_EQ(p.physical, 1);
    expect_counts(p.walk, {3, 3, 4});
}

TEST(Topology, WithoutHttEveryPassIsAPackage) {
    Machine m = zvl_test::package_of(2, 1);
    m.htt = false;
    const Probed p = probe(m);
    expect_counts(p.walk, {4, 4, 4});
    EXPECT_EQ(p.physical, 2);
}

TEST(Topology, FailedAffinityQueryFallsBackToProcessorCount) {
    Machine m = zvl_test::package_of(2, 2);
    m.affinity_fails = true;
    TopologyCounts n = probe(m).walk;
    // HTT: four processors at two per core, two cores per package.
    expect_counts(n, {1, 2, 4});

    m.htt = false;
    n = probe(m).walk;
    expect_counts(n, {4, 4, 4});

    // No logical processors per package: the fallback fails its own test.
    m.htt = true;
    m.logical_per_package = 0;
    n = probe(m).walk;
    expect_counts(n, {4, 4, 4});
}

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
