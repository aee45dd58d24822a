// The main of every test program. A run forced onto cpu type 5 on a
// processor without AVX cannot execute its kernels: it is skipped (ctest
// SKIP_RETURN_CODE 77) with a message rather than failed.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>

int main(int argc, char** argv) {
    const char* forced = std::getenv("ZVL_CPU_TYPE");
    if (forced && forced[0] == '5' && !__builtin_cpu_supports("avx")) {
        std::printf("skipped: cpu type 5 needs AVX, which this processor lacks\n");
        return 77;
    }
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
