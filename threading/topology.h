// Processor topology: two probes that move a thread or the process onto one
// processor at a time and read its initial APIC id. The core count caps the
// thread count in dynamic mode; the package walk gives the counts from
// which the fork cost is built. The two count differently and stay apart.
#pragma once

#include <cstdint>

#include "base/cpuid.h"

namespace zvl {

// Everything the probes ask of the processor and the operating system.
// Tests replace it to simulate machines.
struct TopologyOps {
    CpuidFn cpuid;
    bool (*get_process_affinity)(uint64_t* process_mask, uint64_t* system_mask);
    bool (*set_process_affinity)(uint64_t mask);
    uint64_t (*set_thread_affinity)(uint64_t mask);  // 0 on failure
    void (*yield)();
    int (*num_procs)();  // the OpenMP runtime's processor count
};

// The real processor, operating system and runtime.
extern const TopologyOps kSystemTopology;

// What the environment read and the fork cost use; tests may point it at a
// simulated machine before the first query.
extern const TopologyOps* topology_ops;

struct TopologyCounts {
    int32_t packages, cores, logical;
};

// Distinct cores by the bytes of the APIC id, walking the calling thread
// over the system's processors. Sets *physical_cores to 1 first; a process
// restricted to part of the system returns there, leaving
// *logical_processors as it was.
void count_physical_cores(const TopologyOps& ops, int32_t* logical_processors,
                          int32_t* physical_cores);

// Packages, cores and logical processors by a walk of the process over its
// affinity mask, one pass per mask index; with its validity test and the
// fallback to the runtime's processor count.
TopologyCounts walk_packages(const TopologyOps& ops);

}  // namespace zvl
