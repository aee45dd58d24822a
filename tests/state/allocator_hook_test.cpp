// The allocator hook at load, one process per variant of the optional
// module (see CMakeLists.txt): ZVL_EXPECT_ALLOCATOR says whether the
// module's four functions or the runtime's four are to be recorded.
#include <gtest/gtest.h>

#include <dlfcn.h>

#include <cstdlib>
#include <string>

#include "state/state.h"

namespace {

TEST(AllocatorHook, SlotsAfterLoad) {
    const char* expect = std::getenv("ZVL_EXPECT_ALLOCATOR");
    ASSERT_NE(expect, nullptr) << "run through ctest";
    const zvl::AllocatorSlots& s = zvl::allocator_slots;
    if (std::string(expect) == "runtime") {
        EXPECT_EQ(reinterpret_cast<void*>(s.allocate), reinterpret_cast<void*>(&malloc));
        EXPECT_EQ(reinterpret_cast<void*>(s.allocate_zeroed), reinterpret_cast<void*>(&calloc));
        EXPECT_EQ(reinterpret_cast<void*>(s.reallocate), reinterpret_cast<void*>(&realloc));
        EXPECT_EQ(reinterpret_cast<void*>(s.release), reinterpret_cast<void*>(&free));
        return;
    }
    // The module stays mapped (it is linked with -z nodelete), so what its
    // exports hold can be compared.
    void* m = dlopen("libzalloc.so", RTLD_NOW | RTLD_NOLOAD);
    ASSERT_NE(m, nullptr) << "the library did not load the module";
    const char* names[4] = {"z_malloc_dll", "z_calloc_dll", "z_realloc_dll", "z_free_dll"};
    void* const got[4] = {reinterpret_cast<void*>(s.allocate),
                          reinterpret_cast<void*>(s.allocate_zeroed),
                          reinterpret_cast<void*>(s.reallocate), reinterpret_cast<void*>(s.release)};
    for (int i = 0; i < 4; ++i) {
        void* const* item = static_cast<void* const*>(dlsym(m, names[i]));
        ASSERT_NE(item, nullptr) << names[i];
        EXPECT_EQ(got[i], *item) << names[i];
        EXPECT_NE(got[i], nullptr) << names[i];
    }
    dlclose(m);
}

}  // namespace
