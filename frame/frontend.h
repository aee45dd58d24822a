// The front-end every exported function runs: check the arguments in their
// fixed order, ask for the function's parallel threshold once, bind the
// kernel slots once, read the accuracy mode, and call the kernel directly or
// through the parallel driver of its shape. No arithmetic happens here.
#pragma once

#include <atomic>
#include <cstdint>
#include <initializer_list>

#include "frame/cpu_type.h"
#include "kernels/common/kernel_types.h"
#include "state/state.h"
#include "threading/threading.h"

namespace zvl {

// Per function, process-global, zero until first use.
template <class K>
struct Cells {
    std::atomic<K> slot[3];  // HA, LA, EP
    std::atomic<int32_t> threshold;
};

struct FunctionInfo {
    const char* report;  // the mixed-case name of parameter errors
    int32_t report_len;
    int32_t id;          // HA threshold slot
    bool complex;        // asks the complex threshold table
};

// Steps 1 to 4 of every shape: n negative is position 1; n zero returns
// before any pointer is looked at; then each array pointer in order is
// position 2, 3, 4. Returns true when the kernel is to run.
inline bool arguments_ok(int32_t n, const FunctionInfo& f,
                         std::initializer_list<const void*> arrays) {
    if (n < 0) {
        const int32_t position = 1;
        report_parameter_error(f.report, &position, f.report_len);
        set_status(ZVL_STATUS_BADSIZE);
        return false;
    }
    if (n == 0) return false;
    int32_t position = 2;
    for (const void* p : arrays) {
        if (p == nullptr) {
            report_parameter_error(f.report, &position, f.report_len);
            set_status(ZVL_STATUS_BADMEM);
            return false;
        }
        ++position;
    }
    return true;
}

// Step 5 and 6: true when n reaches the function's threshold. The HA slot
// is asked whatever the accuracy mode; an answer of zero is asked again.
inline bool goes_parallel(int32_t n, const FunctionInfo& f, std::atomic<int32_t>& cell) {
    int32_t t = cell.load(std::memory_order_relaxed);
    if (t == 0) {
        const int32_t cpu = static_cast<int32_t>(cpu_type());
        t = f.complex ? threshold_z(f.id, cpu) : threshold_d(f.id, cpu);
        cell.store(t, std::memory_order_relaxed);
    }
    return n >= t;
}

// Step 7 and 8: the kernel of the calling thread's accuracy mode, binding
// the cpu type's row first. The HA slot is published last, so a thread that
// sees it bound sees the other two bound as well. Returns the column.
template <class K>
inline int select_column(Cells<K>& c, const KernelSet<K>& set) {
    if (c.slot[kHA].load(std::memory_order_acquire) == nullptr) {
        const uint32_t cpu = cpu_type();
        if (cpu <= 5) {
            c.slot[kLA].store(set.k[cpu][kLA], std::memory_order_relaxed);
            c.slot[kEP].store(set.k[cpu][kEP], std::memory_order_relaxed);
            c.slot[kHA].store(set.k[cpu][kHA], std::memory_order_release);
        }
    }
    const uint32_t accuracy = get_mode() & kAccuracyMask;
    return accuracy == 2 ? kHA : accuracy == 1 ? kLA : kEP;
}

// A scalar argument that the front-end takes by pointer and the kernel by
// value: read at the moment of the call, after the checks and the mode.
template <class T>
struct ReadAtCall {
    const T* p;
};
template <class T>
inline T at_call(T v) {
    return v;
}
template <class T>
inline T at_call(ReadAtCall<T> s) {
    return *s.p;
}

// The whole front-end for one shape: `args` are the kernel's arguments after
// n, and Driver is the shape's parallel driver.
template <auto Driver, class K, class... Args>
inline void run(int32_t n, const FunctionInfo& f, Cells<K>& c, const KernelSet<K>& set,
                std::initializer_list<const void*> arrays, Args... args) {
    if (!arguments_ok(n, f, arrays)) return;
    const bool par = goes_parallel(n, f, c.threshold);
    const int col = select_column(c, set);
    const K k = c.slot[col].load(std::memory_order_relaxed);
    if (par)
        Driver(k, n, at_call(args)..., f.id + 6 * col, 0);
    else
        k(n, at_call(args)...);
}

// The rounding family: one slot, no threshold, no mode.
template <class K>
struct RoundingCells {
    std::atomic<K> slot;
};


template <class K>
inline K bind_rounding(RoundingCells<K>& c, const RoundingSet<K>& set) {
    K k = c.slot.load(std::memory_order_acquire);
    if (k == nullptr) {
        const uint32_t cpu = cpu_type();
        if (cpu <= 5) {
            k = set.k[cpu];
            c.slot.store(k, std::memory_order_release);
        }
    }
    return k;
}

template <class K, class... Args>
inline void run_rounding(int32_t n, const FunctionInfo& f, RoundingCells<K>& c,
                         const RoundingSet<K>& set, std::initializer_list<const void*> arrays,
                         Args... args) {
    if (!arguments_ok(n, f, arrays)) return;
    bind_rounding(c, set)(n, args...);
}

// Array pointer advanced by `index` elements of `Elem`, with no checks: the
// exported form tests the sum for null.
template <class Elem>
inline Elem* advance(Elem* p, int32_t index) {
    return reinterpret_cast<Elem*>(reinterpret_cast<uintptr_t>(p) +
                                   static_cast<intptr_t>(index) * static_cast<intptr_t>(sizeof(Elem)));
}

}  // namespace zvl
