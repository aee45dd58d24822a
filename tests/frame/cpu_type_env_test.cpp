// One process per override value (see CMakeLists.txt): the cpu type the
// process gets, and that it stays when the environment changes afterwards.
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "base/cpu_type.h"

namespace {

TEST(CpuTypeOverride, DecidedOnceFromTheEnvironment) {
    const char* expect = std::getenv("ZVL_EXPECT_CPU_TYPE");
    ASSERT_NE(expect, nullptr) << "run through ctest";
    const uint32_t want = std::string(expect) == "detect"
                              ? zvl::detect_cpu_type(zvl::cpuid)
                              : static_cast<uint32_t>(std::atoi(expect));
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
