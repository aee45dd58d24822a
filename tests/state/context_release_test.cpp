// Thread detach gives the thread's context back: a thread that ends leaves
// no block behind, and a thread whose context was released starts afresh.
#include <gtest/gtest.h>

#include <thread>

#include "state/state.h"
#include "tests/common/heap.h"
#include "zvl.h"

namespace {

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
