// Cpu type detection on simulated processors, and the override's verdict on
// the values the variable may hold.
#include <gtest/gtest.h>

#include <cstring>

#include "base/cpu_type.h"

namespace {

// The simulated processor: vendor registers of leaf 0 and leaf 1's ECX.
uint32_t g_vendor[3];  // EBX, EDX, ECX
uint32_t g_ecx1;

zvl::CpuidRegs fake_cpuid(uint32_t leaf, uint32_t) {
    if (leaf == 0) return {1, g_vendor[0], g_vendor[2], g_vendor[1]};
    if (leaf == 1) return {0xffffffffu, 0xffffffffu, g_ecx1, 0xffffffffu};
    return {0, 0, 0, 0};
}

void set_vendor(const char* id12) { std::memcpy(g_vendor, id12, 12); }

constexpr uint32_t kAll = 0xffffffffu;
constexpr uint32_t kSsse3 = 1u << 9, kSse41 = 1u << 19, kSse42 = 1u << 20;
constexpr uint32_t kOsxsave = 1u << 27, kAvx = 1u << 28;

struct DetectRow {
    const char* what;
    bool our_vendor;
    uint32_t ecx;
    uint32_t type;
};

const DetectRow kDetectRows[] = {
    {"other vendor, every feature", false, kAll, 0},
    {"other vendor, nothing", false, 0, 0},
    {"no features", true, 0, 1},
    {"features of leaf 1 outside ECX do not count", true, 1u << 0, 1},
    {"SSSE3", true, kSsse3, 2},
    {"SSE4.1", true, kSse41 | kSsse3, 3},
    {"SSE4.1 without SSSE3", true, kSse41, 3},
    {"SSE4.2 clear, SSE4.1 set", true, kAll & ~kSse42 & ~kOsxsave & ~kAvx, 3},
    {"SSE4.2 alone", true, kSse42, 4},
    {"bit 27 without bit 28", true, kOsxsave, 5},
    {"bit 28 without bit 27", true, kAvx, 5},
    {"every feature", true, kAll, 5},
};

TEST(CpuType, Detection) {
    for (const DetectRow& row : kDetectRows) {
        SCOPED_TRACE(row.what);
        set_vendor(row.our_vendor ? zvl::build_cpu_vendor() : "OtherVendor!");
        g_ecx1 = row.ecx;
        EXPECT_EQ(zvl::detect_cpu_type(fake_cpuid), row.type);
    }
}

// All three vendor registers must match, in the order EBX, EDX, ECX.
TEST(CpuType, VendorNeedsAllThreeRegisters) {
    g_ecx1 = kAll;
    for (int reg = 0; reg < 3; ++reg) {
        set_vendor(zvl::build_cpu_vendor());
        g_vendor[reg] ^= 0x20;
        EXPECT_EQ(zvl::detect_cpu_type(fake_cpuid), 0u) << "register " << reg;
    }
    set_vendor(zvl::build_cpu_vendor());
    std::swap(g_vendor[1], g_vendor[2]);
    EXPECT_EQ(zvl::detect_cpu_type(fake_cpuid), 0u) << "EDX and ECX swapped";
}

struct OverrideRow {
    const char* value;
    uint32_t len;
    int32_t verdict;
};

// Only the first character counts, as a signed byte less '0', bounded above
// by 5 only.
const OverrideRow kOverrideRows[] = {
    {"0", 1, 0},      {"1", 1, 1},      {"4", 1, 4},     {"5", 1, 5},
    {"6", 1, -1},     {"9", 1, -1},     {"A", 1, -1},    {":", 1, -1},
    {"", 0, -1},      {"31x", 3, 3},    {"0.5", 3, 0},   {"/", 1, -1},
    {".", 1, -2},     {" ", 1, -16},    {"-3", 2, -3},   {"\x80", 1, -176},
    {"\xff", 1, -49},
};

TEST(CpuType, OverrideFirstCharacter) {
    for (const OverrideRow& row : kOverrideRows)
        EXPECT_EQ(zvl::cpu_override(row.value, row.len), row.verdict)
            << "value \"" << row.value << "\"";
}

TEST(CpuType, OverrideName) {
    char name[32];
    std::memset(name, 'x', sizeof name);
    zvl::cpu_override_name(name);
    EXPECT_STREQ(name, "ZVL_CPU_TYPE");
}

}  // namespace
