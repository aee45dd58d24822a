// Thread settings: how many threads a vector call may use, by domain, and
// whether that count is trimmed per call (dynamic mode). Filled from six
// environment variables on first use and by the exported thread controls.
#pragma once

#include <atomic>
#include <cstdint>

namespace zvl {

// A process-wide cell read and written with plain (relaxed) loads and
// stores: racing writers only ever store values they computed alike, and
// no ordering with other data is needed.
template <class T>
struct Plain {
    static_assert(std::atomic<T>::is_always_lock_free, "a plain load or store, never a lock");
    std::atomic<T> v;
    constexpr Plain(T x) : v(x) {}
    operator T() const { return v.load(std::memory_order_relaxed); }
    Plain& operator=(T x) {
        v.store(x, std::memory_order_relaxed);
        return *this;
    }
};

// A domain count below 0 was never set, 0 was set to nothing (the next level
// decides), above 0 is a count. dynamic is -1 until decided, then 0 or 1.
struct ThreadSettings {
    Plain<int32_t> env_pending{1};
    Plain<int32_t> domain_threads[4]{-1, -1, -1, -1};  // ZEL_ALL, ZEL_BLAS, ZEL_FFT, ZEL_ZVL
    Plain<int32_t> dynamic{-1};
    Plain<int32_t> omp_threads_env{-1};
    Plain<int32_t> mpi_procs_per_node{-1};
    Plain<int32_t> mpi_thread_level{-1};
    Plain<int32_t> physical_cores{1};
    Plain<int32_t> logical_processors{1};  // kept, read by nothing
    // Other components sharing these controls may set it; nothing here does.
    Plain<int32_t> thread_cap_override{-1};
};

extern ThreadSettings thread_settings;

// The largest count the thread-count decision answers, whatever was set: the
// most threads one call forks.
constexpr int32_t kMaxTeam = 1024;

// Reads the six variables, in their fixed order, and runs the core count.
// Each setting that a call made before first use already holds is kept.
void read_thread_environment();

// Reads the environment unless that has been done.
void ensure_thread_environment();

// The thread-count decision for domain d (0 for all).
int32_t decide_thread_count(int32_t domain);

}  // namespace zvl
