// Thread settings as before any use, with the environment marked as read so
// that it never is: tests put in place what they need.
#pragma once

#include "threading/settings.h"

namespace zvl_test {

inline void reset_thread_settings(int32_t dynamic, int32_t physical_cores) {
    zvl::ThreadSettings& t = zvl::thread_settings;
    t.env_pending = 0;
    for (auto& d : t.domain_threads) d = -1;
    t.dynamic = dynamic;
    t.omp_threads_env = -1;
    t.mpi_procs_per_node = -1;
    t.mpi_thread_level = -1;
    t.physical_cores = physical_cores;
    t.thread_cap_override = -1;
}

}  // namespace zvl_test
