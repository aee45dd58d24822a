// Thread counts out of the runtime's reach, each case in a process of its
// own with dynamic mode off (see CMakeLists.txt). ZEL_NUM_THREADS=200000,
// alone and under OMP_THREAD_LIMIT: the setting is kept as parsed, and the
// count a call forks with is bounded by the runtime's thread limit and the
// library's ceiling (before the bound the fork overflowed the runtime's
// stack). OMP_NUM_THREADS of 2^31 or 2^32, which the runtime may answer
// with a count of 0 or less: the count is at least 1. Either way the call
// computes what one thread does.
#include <gtest/gtest.h>
#include <omp.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "base/cpu_type.h"
#include "frame/kernel_sets.h"
#include "threading/settings.h"
#include "threading/threading.h"
#include "zvl.h"

namespace {

// A parallel call of Sqrt, through the driver whatever the machine's
// thresholds say, gives the correctly rounded root everywhere.
void expect_team_computes() {
    constexpr int32_t kN = 200000;
    std::vector<double> a(kN, 3.0), r(kN, 0.0);
    const zvl::KernelD1 sqrt_ha = zvl::kernels_VDSQRT.k[zvl::cpu_type()][zvl::kHA];
    zel_zvl_service_threader_d_1i_1o(sqrt_ha, kN, a.data(), r.data(), 36, 0);
    EXPECT_EQ(std::count(r.begin(), r.end(), std::sqrt(3.0)), kN);
}

TEST(HugeCount, BoundedByTheRuntimeAndTheCeiling) {
    ASSERT_EQ(ZEL_Get_Dynamic(), 0) << "run with ZEL_DYNAMIC=false";
    EXPECT_EQ(zvl::thread_settings.domain_threads[0], 200000);
    const int bound = std::min({200000, int{zvl::kMaxTeam}, omp_get_thread_limit()});
    EXPECT_EQ(ZEL_Get_Max_Threads(), bound);
    EXPECT_EQ(ZEL_Domain_Get_Max_Threads(ZEL_ZVL), bound);
    expect_team_computes();
}

TEST(HugeCount, RuntimeCountBelowOneCountsOne) {
    ASSERT_EQ(ZEL_Get_Dynamic(), 0) << "run with ZEL_DYNAMIC=false";
    const int n = ZEL_Domain_Get_Max_Threads(ZEL_ZVL);
    EXPECT_GE(n, 1);
    EXPECT_LE(n, zvl::kMaxTeam);
    expect_team_computes();
}

}  // namespace
