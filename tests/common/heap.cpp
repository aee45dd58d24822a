#include "tests/common/heap.h"

#include <atomic>

#ifdef _WIN32
#define WIN32_LEAN_AND_MEAN
#include <windows.h>

namespace zvl {
extern std::atomic<void*> g_heap;
}

namespace zvl_test {

size_t context_heap_bytes() {
    const HANDLE heap = zvl::g_heap.load();
    if (heap == nullptr) return 0;
    size_t bytes = 0;
    PROCESS_HEAP_ENTRY entry{};
    HeapLock(heap);
    while (HeapWalk(heap, &entry))
        if (entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) bytes += entry.cbData;
    HeapUnlock(heap);
    return bytes;
}

}  // namespace zvl_test

#else
#include <malloc.h>

namespace zvl_test {

// One arena for all threads, so that the main arena's count sees their
// blocks. Must take effect before any thread is created.
static const int g_one_arena = mallopt(M_ARENA_MAX, 1);

size_t context_heap_bytes() { return mallinfo2().uordblks; }

}  // namespace zvl_test
#endif
