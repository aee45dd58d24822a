// The thread context and the mode, status and callback services.
//
// Library case: one 32-byte block per thread from a private heap, reached
// through an explicit thread-local slot; a new block starts with mode
// 0x1A02, status 0 and no callback. Program case (this code linked straight
// into a program): plain thread-local variables, all zero, one set per
// cpu type's copy.
#include <atomic>
#include <initializer_list>

#include "platform/os.h"
#include "state/state.h"

namespace zvl {
namespace {

std::atomic<int32_t> g_module_kind{-1};

template <int Cpu>
thread_local ThreadContext t_program{};

}  // namespace

std::atomic<int32_t> g_tls_slot{-1};
std::atomic<void*> g_heap{nullptr};

int module_kind() {
    int32_t k = g_module_kind.load(std::memory_order_relaxed);
    if (k == -1) {
        k = os::module_kind();
        g_module_kind.store(k, std::memory_order_relaxed);
    }
    return k;
}

namespace {

// The process-wide slot and heap are created on first use without a lock.
// Threads whose first calls race may each create one; the first to publish
// its own wins, and the others give theirs back and take the winner's, so
// that every thread's context lives in the one slot (a second slot would
// lose the contexts kept in the first) and comes from the one heap.

// Publishes a new slot, or gives it back when another thread was first.
// Returns the slot in force and whether it is the caller's new one.
int32_t publish_slot(int32_t mine, bool* fresh) {
    int32_t seen = -1;
    *fresh = g_tls_slot.compare_exchange_strong(seen, mine, std::memory_order_acq_rel,
                                                std::memory_order_acquire);
    if (*fresh) return mine;
    os::tls_free(mine);
    return seen;
}

void* process_heap() {
    void* heap = g_heap.load(std::memory_order_acquire);
    if (heap != nullptr) return heap;
    void* mine = os::heap_create();
    if (mine == nullptr) return nullptr;
    if (g_heap.compare_exchange_strong(heap, mine, std::memory_order_acq_rel,
                                       std::memory_order_acquire))
        return mine;
    os::heap_destroy(mine);
    return heap;
}

ThreadContext* try_allocate(int32_t slot) {
    void* heap = process_heap();
    if (heap == nullptr) return nullptr;
    void* block = os::heap_alloc(heap, 32);
    if (block == nullptr) return nullptr;
    if (!os::tls_set(slot, block)) {
        os::heap_free(heap, block);
        return nullptr;
    }
    auto* c = static_cast<ThreadContext*>(block);
    c->mode = kModeDefault;
    c->status = 0;
    c->callback = nullptr;
    return c;
}

}  // namespace

ThreadContext* library_context() {
    int32_t slot = g_tls_slot.load(std::memory_order_acquire);
    const bool first_time = slot == -1;
    bool fresh_slot = false;  // nothing stored in it yet
    if (first_time) {
        slot = os::tls_alloc();
        if (slot == -1)
            print_message(1, 760, 0);
        else
            slot = publish_slot(slot, &fresh_slot);
    }
    if (!fresh_slot)
        if (void* v = os::tls_get(slot)) return static_cast<ThreadContext*>(v);
    if (ThreadContext* c = try_allocate(slot)) return c;
    print_message(1, 760, 0);
    if (first_time) {
        if (void* v = os::tls_get(slot)) return static_cast<ThreadContext*>(v);
        if (ThreadContext* c = try_allocate(slot)) return c;
    }
    os::terminate(1);
}

template <int Cpu>
ThreadContext* Services<Cpu>::context() {
    return module_kind() == 1 ? library_context() : &t_program<Cpu>;
}

template <int Cpu>
uint32_t Services<Cpu>::get_mode() {
    return context()->mode;
}

// Each field is replaced as a whole, or left alone when the new field is
// zero; bits outside the three fields never change.
template <int Cpu>
uint32_t Services<Cpu>::set_mode(uint32_t mode) {
    ThreadContext* c = context();
    const uint32_t old = c->mode;
    uint32_t w = old;
    for (const uint32_t field : {kAccuracyMask, kErrorActionMask, kFpMask})
        if (mode & field) w = (w & ~field) | (mode & field);
    c->mode = w;
    return old;
}

template <int Cpu>
int32_t Services<Cpu>::get_status() {
    return context()->status;
}

template <int Cpu>
int32_t Services<Cpu>::set_status(int32_t status) {
    ThreadContext* c = context();
    const int32_t old = c->status;
    c->status = status;
    return old;
}

template <int Cpu>
int32_t Services<Cpu>::clear_status() {
    return set_status(0);
}

template <int Cpu>
ZVLErrorCallback Services<Cpu>::get_callback() {
    return context()->callback;
}

// The callback bit follows the callback through set mode, so clearing the
// callback when that bit was the only error action leaves the bit set (set
// mode ignores an all-zero field); the pipeline also needs a non-null
// callback, so that is harmless.
template <int Cpu>
ZVLErrorCallback Services<Cpu>::set_callback(ZVLErrorCallback f) {
    const ZVLErrorCallback old = get_callback();
    const uint32_t mode = get_mode();
    context()->callback = f;
    set_mode(f ? mode | kCallbackBit : mode & ~kCallbackBit);
    return old;
}

template <int Cpu>
ZVLErrorCallback Services<Cpu>::clear_callback() {
    const ZVLErrorCallback old = get_callback();
    const uint32_t mode = get_mode() & ~kCallbackBit;
    context()->callback = nullptr;
    set_mode(mode);
    return old;
}

template <int Cpu>
const void* Services<Cpu>::set_array_base(const void* base) {
    context()->array_base = base;
    return base;
}

template struct Services<0>;
template struct Services<1>;
template struct Services<2>;
template struct Services<3>;
template struct Services<4>;
template struct Services<5>;

}  // namespace zvl
