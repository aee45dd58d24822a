// Test helper: how many bytes the allocator of the thread contexts holds in
// use, to see whether ended threads gave their contexts back.
#pragma once

#include <cstddef>

namespace zvl_test {

// Linux: the C allocator's bytes in use (all threads share one arena for
// this). Windows: the bytes of the busy blocks in the library's private
// heap, 0 before it exists.
size_t context_heap_bytes();

}  // namespace zvl_test
