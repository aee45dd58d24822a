// The load-time allocator hook against a real module: the library records
// the module's four functions only when it offers all four, non-null, and
// the runtime library's four otherwise. ZVL_TEST_ZALLOC says which to expect
// ("module" or "runtime"); the search path decides which module, if any, is
// found.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

#include "state/state.h"

namespace {

// The function a stub forwards to. An image that calls a DLL's function
// through its import table gets a stub "jmp *slot(%rip)" (FF 25 rel32) of
// its own, so the test program and the library see different addresses for
// the runtime's malloc; both stubs lead to the same function.
template <class F>
const void* target(F* f) {
    const auto* code = reinterpret_cast<const unsigned char*>(f);
    if (code[0] != 0xFF || code[1] != 0x25) return code;
    int32_t rel;
    std::memcpy(&rel, code + 2, sizeof rel);
    const void* to;
    std::memcpy(&to, code + 6 + rel, sizeof to);
    return to;
}

bool is_runtime(const zvl::AllocatorSlots& s) {
    return target(s.allocate) == target(std::malloc) &&
           target(s.allocate_zeroed) == target(std::calloc) &&
           target(s.reallocate) == target(std::realloc) && target(s.release) == target(std::free);
}

TEST(AllocatorHook, RecordsAllFourFromOneSource) {
    const char* expect = std::getenv("ZVL_TEST_ZALLOC");
    ASSERT_NE(expect, nullptr);
    const zvl::AllocatorSlots& s = zvl::allocator_slots;
    if (std::string(expect) == "runtime") {
        EXPECT_TRUE(is_runtime(s));
    } else {
        // The module's four (zalloc_dll.c), read out of its data items.
        EXPECT_EQ(reinterpret_cast<uintptr_t>(s.allocate), 0x1000u);
        EXPECT_EQ(reinterpret_cast<uintptr_t>(s.allocate_zeroed), 0x2000u);
        EXPECT_EQ(reinterpret_cast<uintptr_t>(s.reallocate), 0x3000u);
        EXPECT_EQ(reinterpret_cast<uintptr_t>(s.release), 0x4000u);
    }
}

}  // namespace
