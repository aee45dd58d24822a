#include "base/cpuid.h"

#include <cpuid.h>
#include <cstring>

#ifndef ZVL_CPU_VENDOR
#define ZVL_CPU_VENDOR "AuthenticAMD"
#endif

namespace zvl {

CpuidRegs cpuid(uint32_t leaf, uint32_t subleaf) {
    CpuidRegs r;
    __cpuid_count(leaf, subleaf, r.eax, r.ebx, r.ecx, r.edx);
    return r;
}

bool vendor_matches(CpuidFn id) {
    static_assert(sizeof(ZVL_CPU_VENDOR) == 13, "the vendor identification is 12 characters");
    // The twelve characters stand in EBX, EDX, ECX order.
    uint32_t want[3];
    std::memcpy(want, ZVL_CPU_VENDOR, 12);
    const CpuidRegs r = id(0, 0);
    return r.ebx == want[0] && r.edx == want[1] && r.ecx == want[2];
}

const char* build_cpu_vendor() { return ZVL_CPU_VENDOR; }

void cpu_vendor(CpuidFn id, char out[13]) {
    const CpuidRegs r = id(0, 0);
    std::memcpy(out, &r.ebx, 4);
    std::memcpy(out + 4, &r.edx, 4);
    std::memcpy(out + 8, &r.ecx, 4);
    out[12] = '\0';
}

}  // namespace zvl
