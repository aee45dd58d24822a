// Load-time work: the allocator hook at process attach, and the release of
// thread contexts and process-wide items at thread and process detach.
#include <atomic>
#include <cstdlib>

#include "platform/os.h"
#include "state/state.h"

namespace zvl {

extern std::atomic<int32_t> g_tls_slot;
extern std::atomic<void*> g_heap;

AllocatorSlots allocator_slots;

// Records the optional allocator module's four functions when it offers all
// of them, else the runtime library's four, so the slots never mix the two.
// Each export is a data item holding a pointer to the function. The module
// is released at once either way.
void process_attach() {
    void* module = os::module_load(os::kAllocatorModule);
    bool have_all = false;
    if (module != nullptr) {
        static const char* const kNames[4] = {"z_malloc_dll", "z_calloc_dll", "z_realloc_dll",
                                              "z_free_dll"};
        void* at[4];
        for (int i = 0; i < 4; ++i) at[i] = os::module_symbol(module, kNames[i]);
        if (at[0] && at[1] && at[2] && at[3]) {
            void* fn[4];
            for (int i = 0; i < 4; ++i) fn[i] = *static_cast<void**>(at[i]);
            if (fn[0] && fn[1] && fn[2] && fn[3]) {
                allocator_slots.allocate = reinterpret_cast<void* (*)(size_t)>(fn[0]);
                allocator_slots.allocate_zeroed = reinterpret_cast<void* (*)(size_t, size_t)>(fn[1]);
                allocator_slots.reallocate = reinterpret_cast<void* (*)(void*, size_t)>(fn[2]);
                allocator_slots.release = reinterpret_cast<void (*)(void*)>(fn[3]);
                have_all = true;
            }
        }
    }
    if (!have_all) {
        allocator_slots.allocate = std::malloc;
        allocator_slots.allocate_zeroed = std::calloc;
        allocator_slots.reallocate = std::realloc;
        allocator_slots.release = std::free;
    }
    if (module != nullptr) os::module_free(module);
}

void thread_detach(void* block) {
    const int32_t slot = g_tls_slot.load(std::memory_order_acquire);
    if (slot == -1) return;
    if (block == nullptr) block = os::tls_get(slot);
    if (block != nullptr) os::heap_free(g_heap.load(std::memory_order_acquire), block);
    os::tls_set(slot, nullptr);
}

void process_detach() {
    thread_detach();
    const int32_t slot = g_tls_slot.exchange(-1, std::memory_order_relaxed);
    if (slot != -1) os::tls_free(slot);
    if (void* heap = g_heap.exchange(nullptr, std::memory_order_relaxed)) os::heap_destroy(heap);
}

}  // namespace zvl
