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

}  // namespace zvl
