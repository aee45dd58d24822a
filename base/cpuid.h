// The processor identification instruction, and the vendor check that both
// cpu type detection and the topology probes make.
#pragma once

#include <cstdint>

namespace zvl {

struct CpuidRegs {
    uint32_t eax, ebx, ecx, edx;
};

// cpuid with a leaf and subleaf. Tests replace it to simulate processors.
using CpuidFn = CpuidRegs (*)(uint32_t leaf, uint32_t subleaf);

CpuidRegs cpuid(uint32_t leaf, uint32_t subleaf);

// Leaf 0's EBX, EDX and ECX together equal the library's fixed vendor
// identification (the build's ZVL_CPU_VENDOR).
bool vendor_matches(CpuidFn id);

// The vendor identification the library was built for, and the one of the
// processor behind `id` (twelve characters and a NUL), for the tools that
// say which kernel set a machine gets and why.
const char* build_cpu_vendor();
void cpu_vendor(CpuidFn id, char out[13]);

}  // namespace zvl
