// The platform layer against the operating system, library case: the
// library's code lies in a loaded library.
#include <gtest/gtest.h>
#ifndef _WIN32
#include <pthread.h>
#include <sched.h>
#endif

#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "platform/os.h"
#include "state/state.h"
#include "zvl.h"

namespace {

using namespace zvl;

// Environment reads go into the 32- and 256-byte buffers the callers use.
struct EnvCase {
    uint32_t buffer;
    size_t length;
};

class OsEnvironment : public testing::TestWithParam<EnvCase> {};

TEST_P(OsEnvironment, FitsOrReportsTheSizeNeeded) {
    const EnvCase c = GetParam();
    const std::string value(c.length, '7');
    setenv("ZVL_TEST_VALUE", value.c_str(), 1);
    std::vector<char> buf(c.buffer, '#');
    const uint32_t got = os::getenv("ZVL_TEST_VALUE", buf.data(), c.buffer);
    if (c.length < c.buffer) {
        EXPECT_EQ(got, c.length);
        EXPECT_EQ(std::string(buf.data()), value);
    } else {
        // Too long: the size needed, NUL included, and the buffer untouched.
        EXPECT_EQ(got, c.length + 1);
        EXPECT_EQ(buf[0], '#');
    }
    unsetenv("ZVL_TEST_VALUE");
}

INSTANTIATE_TEST_SUITE_P(Buffers, OsEnvironment,
                         testing::Values(EnvCase{32, 1}, EnvCase{32, 31}, EnvCase{32, 32},
                                         EnvCase{32, 40}, EnvCase{256, 255}, EnvCase{256, 256}));

TEST(OsEnvironmentMissing, AbsentAndEmptyGiveZero) {
    char buf[32] = "untouched";
    unsetenv("ZVL_TEST_VALUE");
    EXPECT_EQ(os::getenv("ZVL_TEST_VALUE", buf, sizeof buf), 0u);
    setenv("ZVL_TEST_VALUE", "", 1);
    EXPECT_EQ(os::getenv("ZVL_TEST_VALUE", buf, sizeof buf), 0u);
    unsetenv("ZVL_TEST_VALUE");
}

TEST(OsModuleKind, TheLibraryCaseIsDetected) {
    EXPECT_EQ(os::module_kind(), 1);
    EXPECT_EQ(ZVLGETMODE(), ZVL_MODE_DEFAULT);
}

TEST(OsHeap, BlocksAreDistinctAndWritable) {
    void* heap = os::heap_create();
    ASSERT_NE(heap, nullptr);
    void* blocks[64];
    for (int i = 0; i < 64; ++i) {
        blocks[i] = os::heap_alloc(heap, 32);
        ASSERT_NE(blocks[i], nullptr);
        std::memset(blocks[i], i, 32);
    }
    for (int i = 0; i < 64; ++i) {
        EXPECT_EQ(static_cast<unsigned char*>(blocks[i])[31], i);
        os::heap_free(heap, blocks[i]);
    }
    os::heap_destroy(heap);
}

TEST(OsModules, AMissingModuleGivesNull) {
    EXPECT_EQ(os::module_load("zvl_no_such_module_here"), nullptr);
}

TEST(OsCatalogue, NoneIsInstalledHere) { EXPECT_EQ(os::catalog_open(), nullptr); }

TEST(OsAffinity, TheThreadCanBeMovedAndRestored) {
    uint64_t process = 0, system = 0;
    ASSERT_TRUE(os::get_process_affinity(&process, &system));
    ASSERT_NE(process, 0u);
    EXPECT_EQ(process & ~system, 0u);
    const uint64_t lowest = process & (~process + 1);
    const uint64_t previous = os::set_thread_affinity(lowest);
    EXPECT_NE(previous, 0u);
    os::yield();
    EXPECT_NE(os::set_thread_affinity(process), 0u);
    EXPECT_TRUE(os::set_process_affinity(process));
}

#ifndef _WIN32
// A thread pinned from outside (as an OpenMP runtime that binds pins the
// main thread) goes back to its own processor after a walk, not to the
// process's mask: moves act on the calling thread, and a move onto the
// process mask takes it home.
TEST(OsAffinity, APinnedThreadIsMovedBackToItsOwnMask) {
    uint64_t process = 0, system = 0;
    ASSERT_TRUE(os::get_process_affinity(&process, &system));
    if ((process & (process - 1)) == 0) GTEST_SKIP() << "one processor";
    const int highest = 63 - __builtin_clzll(process);
    cpu_set_t before, pinned, now;
    ASSERT_EQ(pthread_getaffinity_np(pthread_self(), sizeof before, &before), 0);
    CPU_ZERO(&pinned);
    CPU_SET(highest, &pinned);
    ASSERT_EQ(pthread_setaffinity_np(pthread_self(), sizeof pinned, &pinned), 0);
    for (int i = 0; i < 64; ++i)
        if (process >> i & 1) {
            EXPECT_NE(os::set_thread_affinity(uint64_t{1} << i), 0u);
            EXPECT_TRUE(os::set_process_affinity(uint64_t{1} << i));
        }
    EXPECT_NE(os::set_thread_affinity(process), 0u);
    ASSERT_EQ(pthread_getaffinity_np(pthread_self(), sizeof now, &now), 0);
    EXPECT_TRUE(CPU_EQUAL(&now, &pinned));
    // The process mask is the process's, not this thread's.
    uint64_t still = 0;
    ASSERT_TRUE(os::get_process_affinity(&still, &system));
    EXPECT_EQ(still, process);
    pthread_setaffinity_np(pthread_self(), sizeof before, &before);
}
#endif

TEST(OsTerminate, EndsTheProcessWithTheCode) {
    EXPECT_EXIT(os::terminate(1), testing::ExitedWithCode(1), "");
}

}  // namespace
