// The two topology probes.
//
// The core count moves the calling thread over the system's processors and
// splits each initial APIC id into core and package fields by widths from
// cpuid; the vendor check gates the HTT flag there, so on another vendor
// every APIC id is its own core.
//
// The package walk moves the whole process, and counts its passes with the
// 32-bit shift that wraps at index 32: every processor of a machine of up
// to 31 is visited twice per pass and there are twice as many passes as
// processors. The second half of the passes recounts the processors and the
// one pass in the middle that finds no higher APIC id adds one to all three
// counts, so a single package of 2 cores comes out as 3, 4, 4. The fork
// cost is tuned to these counts as they come out.
#include "threading/topology.h"

#include <omp.h>

#include "platform/os.h"

namespace zvl {

const TopologyOps kSystemTopology = {cpuid,
                                     os::get_process_affinity,
                                     os::set_process_affinity,
                                     os::set_thread_affinity,
                                     os::yield,
                                     omp_get_num_procs};

const TopologyOps* topology_ops = &kSystemTopology;

namespace {

constexpr uint32_t kHttFlag = 1u << 28;  // leaf 1 EDX
// Mask indices visited; the 32-bit shift repeats bits 0 to 31 above 31.
constexpr int kMaxIndex = 64;

// Leaf 4's cores per package, or 1 when the highest leaf is below 4.
uint32_t leaf4_cores(CpuidFn id) {
    if (id(0, 0).eax < 4) return 1;
    return ((id(4, 0).eax >> 26) & 0x3f) + 1;
}

// Bits needed for x values: 0 for 1, else one more than the highest set bit
// of x - 1 taken on 16 bits (2 gives 1, 3 and 4 give 2).
int field_width(uint32_t x) {
    const uint16_t y = static_cast<uint16_t>(x - 1);
    return y == 0 ? 0 : 32 - __builtin_clz(y);
}

// Mask index i as the walks form it: 1 shifted by i modulo 32.
uint64_t core_count_bit(int i) { return uint32_t{1} << (i % 32); }
uint64_t package_walk_bit(int i) {  // sign-extended
    return static_cast<uint64_t>(static_cast<int64_t>(static_cast<int32_t>(uint32_t{1} << (i % 32))));
}

}  // namespace

void count_physical_cores(const TopologyOps& ops, int32_t* logical_processors,
                          int32_t* physical_cores) {
    *physical_cores = 1;
    uint64_t process_mask = 0, system_mask = 0;
    if (!ops.get_process_affinity(&process_mask, &system_mask)) return;
    if (process_mask != system_mask) return;

    const CpuidRegs l1 = ops.cpuid(1, 0);
    const bool htt = vendor_matches(ops.cpuid) && (l1.edx & kHttFlag) != 0;
    const uint32_t logical_per_package = htt ? (l1.ebx >> 16) & 0xff : 1;
    const uint32_t cores_per_package = htt ? leaf4_cores(ops.cpuid) : 1;
    const uint32_t threads_per_core = logical_per_package / cores_per_package;

    const int s = field_width(threads_per_core);
    const int c = field_width(cores_per_package);
    const int p = field_width(logical_per_package);
    const uint32_t core_field = static_cast<uint32_t>((uint64_t{0xff} << s) ^ (uint64_t{0xff} << (s + c)));
    const uint32_t package_field = static_cast<uint32_t>(uint64_t{0xff} << p);

    // The core and package bytes of each processor, already combined.
    uint8_t ids[kMaxIndex];
    int32_t counted = 0;
    for (int i = 0; i < kMaxIndex; ++i) {
        const uint64_t b = core_count_bit(i);
        if (b > system_mask) break;
        if (ops.set_thread_affinity(b) == 0) continue;
        ops.yield();
        const uint32_t apic = ops.cpuid(1, 0).ebx >> 24;
        ids[counted++] = static_cast<uint8_t>((apic & core_field) | (apic & package_field));
    }
    ops.set_thread_affinity(process_mask);
    ops.yield();
    *logical_processors = counted;

    if (counted <= 1) return;
    int32_t distinct = 1;  // ids[0 .. distinct-1] are the distinct values
    for (int32_t i = 1; i < counted; ++i) {
        int32_t j = 0;
        while (j < distinct && ids[j] != ids[i]) ++j;
        if (j == distinct) ids[distinct++] = ids[i];
    }
    *physical_cores = distinct;
}

namespace {

struct Processor {
    int32_t apic;  // initial APIC id as a signed byte
    int32_t logical_per_package;
    int32_t cores_per_package;
    bool htt;
};

// The processor the process runs on now. Cores per package come from
// leaf 4 on the vendor's processors, otherwise from leaf 0x80000008.
Processor read_processor(const TopologyOps& ops) {
    const bool vendor = vendor_matches(ops.cpuid);
    const CpuidRegs l1 = ops.cpuid(1, 0);
    Processor p;
    p.apic = static_cast<int8_t>(l1.ebx >> 24);
    p.logical_per_package = static_cast<int32_t>((l1.ebx >> 16) & 0xff);
    p.htt = (l1.edx & kHttFlag) != 0;
    p.cores_per_package = static_cast<int32_t>(
        vendor ? leaf4_cores(ops.cpuid) : (ops.cpuid(0x80000008, 0).ecx & 0xff) + 1);
    return p;
}

bool plausible(const TopologyCounts& n) {
    return n.packages != 0 && n.packages <= n.cores && n.cores <= n.logical;
}

}  // namespace

TopologyCounts walk_packages(const TopologyOps& ops) {
    uint64_t process_mask = 0, system_mask = 0;
    if (!ops.get_process_affinity(&process_mask, &system_mask)) process_mask = 0;
    int passes = 0;
    for (int i = 0; i < kMaxIndex; ++i)
        if (package_walk_bit(i) & process_mask) ++passes;

    TopologyCounts n{0, 0, 0};
    Processor kept{-1, 0, 0, false};
    int32_t last_package = -1, last_core = -1;
    for (int pass = 0; pass < passes; ++pass) {
        // The processor with the lowest APIC id above the one kept last; a
        // pass that finds none keeps -1, and the next starts from the lowest.
        const int32_t previous = kept.apic;
        bool found = false;
        for (int i = 0; i < kMaxIndex; ++i) {
            const uint64_t bit = package_walk_bit(i);
            if ((bit & process_mask) == 0) continue;
            if (ops.set_process_affinity(bit)) ops.yield();
            const Processor p = read_processor(ops);
            if (ops.set_process_affinity(process_mask)) ops.yield();
            if (p.apic > previous && (!found || p.apic < kept.apic)) {
                kept = p;
                found = true;
            }
        }
        if (!found) kept.apic = -1;

        // m covers the logical processors of a package, k the core bits in it.
        int32_t m = 0;
        while (m < (kept.logical_per_package >> 1)) m = 2 * m + 1;
        int32_t k = 0;
        if (kept.cores_per_package > 1) {
            while (k < (kept.cores_per_package >> 1)) k = 2 * k + 1;
            while (k < (m ^ k)) k *= 2;
        }
        const int32_t package = kept.apic & ~m;
        const int32_t core = kept.apic & (~m | k);
        if (!kept.htt || package != last_package) {
            ++n.packages;
            ++n.cores;
            ++n.logical;
            last_package = package;
            last_core = core;
        } else if (core != last_core) {
            ++n.cores;
            ++n.logical;
            last_core = core;
        } else {
            ++n.logical;
        }
    }
    if (plausible(n)) return n;

    const Processor p = read_processor(ops);
    const int32_t procs = ops.num_procs();
    n.logical = procs;
    if (p.htt) {
        const int32_t per_core = p.logical_per_package / p.cores_per_package;
        n.cores = per_core != 0 ? procs / per_core : 0;
        n.packages = n.cores / p.cores_per_package;
    } else {
        n.packages = n.cores = procs;
    }
    if (!plausible(n)) n = {procs, procs, procs};
    return n;
}

}  // namespace zvl
