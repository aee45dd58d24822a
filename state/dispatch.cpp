// Dispatchers: code that is not tied to a cpu type reaches the services
// through these. Each binds the live cpu type's copy into its own cell on
// first use; a cpu type outside 0..5 leaves the cell null.
#include <atomic>

#include "base/cpu_type.h"
#include "state/state.h"

namespace zvl {
namespace {

#define ZVL_COPIES(member)                                                     \
    {&Services<0>::member, &Services<1>::member, &Services<2>::member,         \
     &Services<3>::member, &Services<4>::member, &Services<5>::member}

template <class Fn>
Fn bound(std::atomic<Fn>& cell, const Fn (&copies)[6]) {
    Fn f = cell.load(std::memory_order_relaxed);
    if (f == nullptr) {
        const uint32_t cpu = cpu_type();
        if (cpu <= 5) {
            f = copies[cpu];
            cell.store(f, std::memory_order_relaxed);
        }
    }
    return f;
}

}  // namespace

// The dispatcher `name`: its cell, the six copies, and the function that
// calls the bound one.
#define ZVL_DISPATCHER(ret, name, params, args)                        \
    namespace {                                                        \
    std::atomic<ret(*) params> g_##name{nullptr};                      \
    constexpr ret(*const k_##name[6]) params = ZVL_COPIES(name);       \
    }                                                                  \
    ret name params { return bound(g_##name, k_##name) args; }

ZVL_DISPATCHER(uint32_t, get_mode, (), ())
ZVL_DISPATCHER(uint32_t, set_mode, (uint32_t mode), (mode))
ZVL_DISPATCHER(int32_t, get_status, (), ())
ZVL_DISPATCHER(int32_t, set_status, (int32_t status), (status))
ZVL_DISPATCHER(int32_t, clear_status, (), ())
ZVL_DISPATCHER(ZVLErrorCallback, get_callback, (), ())
ZVL_DISPATCHER(ZVLErrorCallback, set_callback, (ZVLErrorCallback f), (f))
ZVL_DISPATCHER(ZVLErrorCallback, clear_callback, (), ())
ZVL_DISPATCHER(const void*, set_array_base, (const void* base), (base))

}  // namespace zvl
