// Thread detach gives the thread's context back: a thread that ends leaves
// no block behind, and a thread whose context was released starts afresh.
// Detach finds nothing to release where nothing was taken: in a process
// that made no call, and for a thread that never called.
#include <gtest/gtest.h>

#include <atomic>
#include <thread>

#include "state/state.h"
#include "tests/common/heap.h"
#include "zvl.h"

namespace zvl {
extern std::atomic<int32_t> g_tls_slot;
extern std::atomic<void*> g_heap;
}  // namespace zvl

namespace {

// First in the file, so that the process has made no call yet; ctest also
// runs it alone (context_release.no_call), and that process then ends with
// no call made at all, through the platform's own process detach.
TEST(ContextRelease, DetachWithNoCallMade) {
    ASSERT_EQ(zvl::g_tls_slot.load(), -1) << "a call was made before";
    std::thread([] { zvl::thread_detach(); }).join();
    zvl::process_detach();
    zvl::process_detach();
    EXPECT_EQ(zvl::g_tls_slot.load(), -1);
    EXPECT_EQ(zvl::g_heap.load(), nullptr);
}

// With the library in use, a thread that never called it has no context to
// give back, and the caller's stays as it was.
TEST(ContextRelease, ThreadThatNeverCalledReleasesNothing) {
    const uint32_t la = ZVL_LA;
    ZVLSETMODE(&la);
    std::thread([] { zvl::thread_detach(); }).join();
    EXPECT_EQ(ZVLGETMODE(), 0x1A01u);
    const uint32_t ha = ZVL_HA;
    ZVLSETMODE(&ha);
}

TEST(ContextRelease, DetachFreesAndNextUseStartsAfresh) {
    std::thread([] {
        const uint32_t la = ZVL_LA;
        ZVLSETMODE(&la);
        EXPECT_EQ(ZVLGETMODE(), 0x1A01u);
        zvl::thread_detach();
        EXPECT_EQ(ZVLGETMODE(), ZVL_MODE_DEFAULT);
        zvl::thread_detach();
        zvl::thread_detach();  // nothing left to free
    }).join();
}

// Threads that end give their contexts back, and each new thread starts
// from the default mode, not from a released context's.
TEST(ContextRelease, EndedThreadsLeaveNoBlocks) {
    int wrong = 0;
    auto churn = [&](int threads) {
        for (int t = 0; t < threads; ++t)
            std::thread([&] {
                wrong += ZVLGETMODE() != ZVL_MODE_DEFAULT;
                const uint32_t ep = ZVL_EP | ZVL_ERRMODE_IGNORE;
                ZVLSETMODE(&ep);
            }).join();
    };
    churn(8);  // warm up the thread machinery
    const size_t before = zvl_test::context_heap_bytes();
    churn(2000);
    const size_t after = zvl_test::context_heap_bytes();
    // 2000 leaked blocks would be 64000 bytes or more
    EXPECT_LT(after, before + 4096) << "before " << before << ", after " << after;
    EXPECT_EQ(wrong, 0);
}

}  // namespace
