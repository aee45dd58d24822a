// A simulated machine behind the topology seam: processors with initial
// APIC ids, the cpuid leaves the probes read, and affinity calls that move
// the one simulated thread. The probes' function pointers carry no context,
// so the machine in use is a global.
#pragma once

#include <cstdint>
#include <cstring>
#include <vector>

#include "threading/topology.h"

namespace zvl_test {

struct Machine {
    std::vector<uint32_t> apic;  // by processor index, one mask bit each
    uint32_t logical_per_package = 1;
    uint32_t cores_per_package = 1;
    bool htt = true;
    bool vendor = true;          // matches the library's vendor
    uint32_t max_leaf = 0xd;
    uint64_t process_mask = 0;
    bool affinity_fails = false; // get_process_affinity fails

    // Live state.
    int current = 0;
    uint64_t thread_mask = 0;
    int thread_moves = 0;
    int process_moves = 0;
};

inline Machine* g_machine = nullptr;

inline uint64_t all_processors(size_t n) {
    return n >= 64 ? ~uint64_t{0} : (uint64_t{1} << n) - 1;
}

// One package of `cores` cores with `threads` threads each, APIC ids
// 0 .. cores*threads - 1, HTT set.
inline Machine package_of(uint32_t cores, uint32_t threads) {
    Machine m;
    for (uint32_t i = 0; i < cores * threads; ++i) m.apic.push_back(i);
    m.logical_per_package = cores * threads;
    m.cores_per_package = cores;
    m.process_mask = all_processors(m.apic.size());
    m.thread_mask = m.process_mask;
    return m;
}

inline zvl::CpuidRegs sim_cpuid(uint32_t leaf, uint32_t) {
    const Machine& m = *g_machine;
    zvl::CpuidRegs r{0, 0, 0, 0};
    switch (leaf) {
        case 0: {
            r.eax = m.max_leaf;
            const char* id = m.vendor ? zvl::build_cpu_vendor() : "OtherVendorX";
            std::memcpy(&r.ebx, id, 4);
            std::memcpy(&r.edx, id + 4, 4);
            std::memcpy(&r.ecx, id + 8, 4);
            break;
        }
        case 1:
            r.ebx = m.apic[static_cast<size_t>(m.current)] << 24 | (m.logical_per_package & 0xff) << 16;
            r.edx = m.htt ? 1u << 28 : 0;
            break;
        case 4:
            // Another vendor's leaf 4 says nothing of the cores.
            r.eax = m.vendor ? (m.cores_per_package - 1) << 26 : 0;
            break;
        case 0x80000008:
            r.ecx = m.cores_per_package - 1;
            break;
        default:
            break;
    }
    return r;
}

// Runs on the lowest processor in the mask that exists; false when none.
inline bool sim_move(uint64_t mask) {
    Machine& m = *g_machine;
    for (size_t i = 0; i < m.apic.size() && i < 64; ++i)
        if (mask >> i & 1) {
            m.current = static_cast<int>(i);
            return true;
        }
    return false;
}

inline bool sim_get_process_affinity(uint64_t* process, uint64_t* system) {
    const Machine& m = *g_machine;
    if (m.affinity_fails) return false;
    *process = m.process_mask;
    *system = all_processors(m.apic.size());
    return true;
}

inline bool sim_set_process_affinity(uint64_t mask) {
    Machine& m = *g_machine;
    if (!sim_move(mask & all_processors(m.apic.size()))) return false;
    m.process_mask = mask;
    ++m.process_moves;
    return true;
}

inline uint64_t sim_set_thread_affinity(uint64_t mask) {
    Machine& m = *g_machine;
    if (!sim_move(mask & m.process_mask)) return 0;
    const uint64_t old = m.thread_mask;
    m.thread_mask = mask;
    ++m.thread_moves;
    return old != 0 ? old : 1;
}

inline void sim_yield() {}

inline int sim_num_procs() { return static_cast<int>(g_machine->apic.size()); }

inline const zvl::TopologyOps kSimulated = {sim_cpuid,           sim_get_process_affinity,
                                            sim_set_process_affinity, sim_set_thread_affinity,
                                            sim_yield,           sim_num_procs};

}  // namespace zvl_test
