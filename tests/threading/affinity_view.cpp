// Prints what the library makes of this process's processors: the thread
// counts, the core count, the package walk and two thresholds at the
// process's cpu type. compare_affinity.cmake runs it pinned and unpinned.
#include <cstdio>

#include "base/cpu_type.h"
#include "threading/settings.h"
#include "threading/thresholds.h"
#include "threading/threading.h"
#include "zvl.h"

int main() {
    const int32_t cpu = static_cast<int32_t>(zvl::cpu_type());
    std::printf("max threads %d, domains %d %d %d, dynamic %d\n", ZEL_Get_Max_Threads(),
                ZEL_Domain_Get_Max_Threads(ZEL_BLAS), ZEL_Domain_Get_Max_Threads(ZEL_FFT),
                ZEL_Domain_Get_Max_Threads(ZEL_ZVL), ZEL_Get_Dynamic());
    std::printf("physical cores %d\n", static_cast<int>(zvl::thread_settings.physical_cores));
    const int32_t inv = zvl::threshold_d(0, cpu), exp = zvl::threshold_d(144, cpu);
    std::printf("walk %d %d %d\n", static_cast<int>(zvl::topology_packages),
                static_cast<int>(zvl::topology_cores), static_cast<int>(zvl::topology_logical));
    std::printf("cpu type %d: vdInv from %d, vdExp from %d\n", cpu, inv, exp);
    return 0;
}
