// Cpu type detection.
//
// Types from the top: 5 when the vendor matches and leaf 1 ECX has AVX
// (bit 28) or OSXSAVE (bit 27) - either alone is enough, and the extended
// state register is not consulted; 4 for SSE4.2; 3 for SSE4.1; 2 for SSSE3;
// 1 for the vendor's 64-bit baseline; 0 for any other vendor, whatever its
// features. The override variable wins over detection when its first
// character gives a value no greater than 5.
#include "base/cpu_type.h"

#include <atomic>

#include "platform/os.h"

namespace zvl {
namespace {

std::atomic<uint32_t> g_cpu_type{0xffffffffu};

// The override's name, each byte XORed with kKey so that it does not stand
// in the library's data as text.
constexpr uint8_t kKey = 0x5a;
struct Scrambled {
    char c[13];
};
constexpr Scrambled scramble(const char (&s)[13]) {
    Scrambled out{};
    for (int i = 0; i < 13; ++i) out.c[i] = static_cast<char>(s[i] ^ kKey);
    return out;
}
constexpr Scrambled kOverrideName = scramble("ZVL_CPU_TYPE");

bool probe_top(CpuidFn id) { return (id(1, 0).ecx & 0x18000000u) != 0; }
bool probe_sse42(CpuidFn id) { return (id(1, 0).ecx & 0x100000u) != 0; }
bool probe_sse41(CpuidFn id) { return (id(1, 0).ecx & 0x80000u) != 0; }
bool probe_ssse3(CpuidFn id) { return (id(1, 0).ecx & 0x200u) != 0; }

}  // namespace

void cpu_override_name(char out[32]) {
    for (int i = 0; i < 13; ++i) out[i] = static_cast<char>(kOverrideName.c[i] ^ kKey);
}

int32_t cpu_override(const char* value, uint32_t len) {
    if (len == 0) return -1;
    // Only the first byte counts, as a signed number less the digit 0, with
    // an upper bound only: bytes below '0' give negative types, which no
    // kernel row matches.
    const int32_t v = static_cast<int8_t>(value[0]) - '0';
    return v > 5 ? -1 : v;
}

uint32_t detect_cpu_type(CpuidFn id) {
    if (!vendor_matches(id)) return 0;
    if (probe_top(id)) return 5;
    if (probe_sse42(id)) return 4;
    if (probe_sse41(id)) return 3;
    if (probe_ssse3(id)) return 2;
    return 1;
}

uint32_t cpu_type() { return cpu_type(cpuid); }

uint32_t cpu_type(CpuidFn id) {
    uint32_t t = g_cpu_type.load(std::memory_order_relaxed);
    if (t != 0xffffffffu) return t;
    char name[32];
    cpu_override_name(name);
    char value[32] = {};
    const uint32_t len = os::getenv(name, value, sizeof value);
    // A value too long for the buffer leaves it unfilled: no override.
    const int32_t o = len < sizeof value ? cpu_override(value, len) : -1;
    g_cpu_type.store(static_cast<uint32_t>(o), std::memory_order_relaxed);
    if (o != -1) return static_cast<uint32_t>(o);
    t = detect_cpu_type(id);
    g_cpu_type.store(t, std::memory_order_relaxed);
    return t;
}

}  // namespace zvl
