// A thread count far beyond what the runtime can start: ZEL_NUM_THREADS=200000
// with dynamic mode off, set by the test's environment (once alone, once with
// OMP_THREAD_LIMIT as well), in a process of its own. The setting is kept as
// parsed; the count a call forks with is bounded by the runtime's thread
// limit and the library's ceiling, and the call computes what one thread
// does. Before the bound the fork overflowed the runtime's stack.
#include <gtest/gtest.h>
#include <omp.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "frame/cpu_type.h"
#include "frame/kernel_sets.h"
#include "threading/settings.h"
#include "threading/threading.h"
#include "zvl.h"

namespace {

TEST(HugeCount, BoundedByTheRuntimeAndTheCeiling) {
    ASSERT_EQ(ZEL_Get_Dynamic(), 0) << "run with ZEL_DYNAMIC=false";
    EXPECT_EQ(zvl::thread_settings.domain_threads[0], 200000);
    const int bound = std::min({200000, int{zvl::kMaxTeam}, omp_get_thread_limit()});
    EXPECT_EQ(ZEL_Get_Max_Threads(), bound);
    EXPECT_EQ(ZEL_Domain_Get_Max_Threads(ZEL_ZVL), bound);

    // The driver forks whatever the machine's thresholds say.
    constexpr int32_t kN = 200000;
    std::vector<double> a(kN, 3.0), r(kN, 0.0);
    const zvl::KernelD1 sqrt_ha = zvl::kernels_VDSQRT.k[zvl::cpu_type()][zvl::kHA];
    zel_zvl_service_threader_d_1i_1o(sqrt_ha, kN, a.data(), r.data(), 36, 0);
    EXPECT_EQ(std::count(r.begin(), r.end(), std::sqrt(3.0)), kN);
}

}  // namespace
