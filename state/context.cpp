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

ThreadContext* try_allocate(int32_t slot) {
    void* heap = g_heap.load(std::memory_order_relaxed);
    if (heap == nullptr) {
        heap = os::heap_create();
        g_heap.store(heap, std::memory_order_relaxed);
        if (heap == nullptr) return nullptr;
    }
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
    int32_t slot = g_tls_slot.load(std::memory_order_relaxed);
    const bool first_time = slot == -1;
    bool fresh_slot = false;
    if (first_time) {
        slot = os::tls_alloc();
        g_tls_slot.store(slot, std::memory_order_relaxed);
        if (slot == -1)
            print_message(1, 760, 0);
        else
            fresh_slot = true;  // nothing stored in it yet
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
