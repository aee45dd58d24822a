// One process per override value (see CMakeLists.txt): the cpu type the
// process gets, that an override decides it without a single cpuid, and
// that it stays when the environment changes afterwards.
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "base/cpu_type.h"

namespace {

int g_probes = 0;

zvl::CpuidRegs counted_cpuid(uint32_t leaf, uint32_t subleaf) {
    ++g_probes;
    return zvl::cpuid(leaf, subleaf);
}

TEST(CpuTypeOverride, DecidedOnceFromTheEnvironment) {
    const char* expect = std::getenv("ZVL_EXPECT_CPU_TYPE");
    ASSERT_NE(expect, nullptr) << "run through ctest";
    const bool detect = std::string(expect) == "detect";
    const uint32_t want =
        detect ? zvl::detect_cpu_type(zvl::cpuid) : static_cast<uint32_t>(std::atoi(expect));
    // The process's first question.
    EXPECT_EQ(zvl::cpu_type(counted_cpuid), want);
    if (detect)
        EXPECT_GT(g_probes, 0);
    else
        EXPECT_EQ(g_probes, 0) << "an override that names a cpu type probes nothing";
    EXPECT_EQ(zvl::cpu_type(), want);

    // Later changes of the variable are never read.
    for (const char* later : {"1", "0", "9", ""}) {
        setenv("ZVL_CPU_TYPE", later, 1);
        EXPECT_EQ(zvl::cpu_type(), want) << "after ZVL_CPU_TYPE=" << later;
    }
    unsetenv("ZVL_CPU_TYPE");
    EXPECT_EQ(zvl::cpu_type(), want);
}

}  // namespace
