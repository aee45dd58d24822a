// The exported thread controls and the thread-count decision, on settings
// put in place directly.
#include <gtest/gtest.h>
#include <omp.h>

#include "tests/threading/settings_reset.h"
#include "threading/settings.h"
#include "zvl.h"

namespace {

class ThreadControls : public testing::Test {
protected:
    void SetUp() override {
        zvl_test::reset_thread_settings(1, 4);
        omp_set_num_threads(6);
    }
    zvl::ThreadSettings& t = zvl::thread_settings;
};

TEST_F(ThreadControls, DynamicCapsAtPhysicalCores) {
    ZEL_Set_Num_Threads(8);
    EXPECT_EQ(ZEL_Get_Max_Threads(), 4);
    ZEL_Set_Dynamic(0);
    EXPECT_EQ(ZEL_Get_Max_Threads(), 8);
    // Without any count the runtime's maximum stands, beyond the cores too.
    ZEL_Domain_Set_Num_Threads(0, ZEL_ALL);
    EXPECT_EQ(ZEL_Get_Max_Threads(), 6);
    ZEL_Set_Dynamic(1);
    EXPECT_EQ(ZEL_Get_Max_Threads(), 4);
}

TEST_F(ThreadControls, RestrictedProcessIsSerialInDynamicMode) {
    t.physical_cores = 1;
    ZEL_Set_Num_Threads(8);
    EXPECT_EQ(ZEL_Domain_Get_Max_Threads(ZEL_ZVL), 1);
    EXPECT_EQ(ZEL_Domain_Get_Max_Threads(ZEL_ALL), 1);
}

TEST_F(ThreadControls, DomainCountWinsOverAll) {
    ZEL_Set_Dynamic(0);
    ZEL_Set_Num_Threads(5);
    EXPECT_EQ(ZEL_Domain_Set_Num_Threads(3, ZEL_ZVL), 1);
    EXPECT_EQ(ZEL_Domain_Get_Max_Threads(ZEL_ZVL), 3);
    EXPECT_EQ(ZEL_Domain_Get_Max_Threads(ZEL_BLAS), 5);
    EXPECT_EQ(ZEL_Domain_Get_Max_Threads(7), 5);  // unknown domains answer as ZEL_ALL
    EXPECT_EQ(ZEL_Domain_Get_Max_Threads(-1), 5);
    EXPECT_EQ(ZEL_Get_Max_Threads(), 5);
    // 0 hands the domain back to the next level.
    EXPECT_EQ(ZEL_Domain_Set_Num_Threads(0, ZEL_ZVL), 1);
    EXPECT_EQ(ZEL_Domain_Get_Max_Threads(ZEL_ZVL), 5);
}

TEST_F(ThreadControls, SetCallsRejectWhatTheyCannotStore) {
    ZEL_Set_Num_Threads(3);
    ZEL_Set_Num_Threads(0);
    ZEL_Set_Num_Threads(-2);
    EXPECT_EQ(t.domain_threads[0], 3);
    EXPECT_EQ(ZEL_Domain_Set_Num_Threads(-1, ZEL_FFT), 0);
    EXPECT_EQ(ZEL_Domain_Set_Num_Threads(2, 7), 0);
    EXPECT_EQ(ZEL_Domain_Set_Num_Threads(2, -1), 0);
    EXPECT_EQ(t.domain_threads[2], -1);
    EXPECT_EQ(ZEL_Domain_Set_Num_Threads(2, ZEL_FFT), 1);
    EXPECT_EQ(t.domain_threads[2], 2);
    ZEL_Set_Dynamic(42);
    EXPECT_EQ(ZEL_Get_Dynamic(), 1);
    ZEL_Set_Dynamic(0);
    EXPECT_EQ(ZEL_Get_Dynamic(), 0);
}

TEST_F(ThreadControls, InsideAParallelRegion) {
    ZEL_Set_Num_Threads(3);
    int dynamic_on = 0, dynamic_off = 0;
#pragma omp parallel num_threads(2)
    {
#pragma omp single
        {
            dynamic_on = ZEL_Get_Max_Threads();
            ZEL_Set_Dynamic(0);
            dynamic_off = ZEL_Get_Max_Threads();
        }
    }
    EXPECT_EQ(dynamic_on, 1);
    EXPECT_EQ(dynamic_off, 3);
}

TEST_F(ThreadControls, CapOverride) {
    t.thread_cap_override = 0;
    EXPECT_EQ(ZEL_Get_Max_Threads(), 1);
    t.thread_cap_override = 9;
    EXPECT_EQ(ZEL_Get_Max_Threads(), 4);
    ZEL_Set_Dynamic(0);
    t.thread_cap_override = 0;
    EXPECT_EQ(ZEL_Get_Max_Threads(), 6);  // only dynamic mode consults it
}

struct MpiCase {
    const char* name;
    int32_t procs, level, omp_env, explicit_count, physical;
    int expected;
};

std::ostream& operator<<(std::ostream& os, const MpiCase& c) { return os << c.name; }

class MpiShare : public ThreadControls, public testing::WithParamInterface<MpiCase> {};

// Under an MPI launcher with no count of ours or of OpenMP, dynamic mode
// shares the node's cores among its processes when the MPI library is
// thread-aware, and is serial when it is not.
TEST_P(MpiShare, DynamicCount) {
    const MpiCase& c = GetParam();
    t.mpi_procs_per_node = c.procs;
    t.mpi_thread_level = c.level;
    t.omp_threads_env = c.omp_env;
    t.physical_cores = c.physical;
    if (c.explicit_count > 0) ZEL_Set_Num_Threads(c.explicit_count);
    EXPECT_EQ(ZEL_Domain_Get_Max_Threads(ZEL_ZVL), c.expected);
}

INSTANTIATE_TEST_SUITE_P(
    Threading, MpiShare,
    testing::Values(MpiCase{"LevelUnset", 4, -1, -1, 0, 8, 1},
                    MpiCase{"LevelZero", 4, 0, -1, 0, 8, 1},
                    MpiCase{"LevelOne", 4, 1, -1, 0, 8, 2},
                    // the share replaces the count, not compared with it
                    MpiCase{"ShareAboveRuntimeCount", 2, 1, -1, 0, 16, 8},
                    MpiCase{"ShareAtLeastOne", 16, 3, -1, 0, 8, 1},
                    MpiCase{"ExplicitCount", 4, 0, -1, 3, 8, 3},
                    MpiCase{"ExplicitCountCapped", 4, 0, -1, 12, 8, 8},
                    MpiCase{"OmpVariable", 4, 0, 2, 0, 8, 6},
                    MpiCase{"NoLauncher", -1, 1, -1, 0, 8, 6}),
    [](const testing::TestParamInfo<MpiCase>& info) { return std::string(info.param.name); });

}  // namespace
