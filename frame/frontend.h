// The front-end every exported function runs: check the arguments in their
// fixed order, ask for the function's parallel threshold once, bind the
// kernel slots once, read the accuracy mode, and call the kernel directly or
// through the parallel driver of its shape. No arithmetic happens here.
#pragma once

#include <atomic>
#include <cstdint>
#include <initializer_list>

#include "base/cpu_type.h"
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

// Step 5 and 6: true when n reaches the function's threshold, which `ask`
// (the real or the complex threshold service) gives for the HA slot whatever
// the accuracy mode; an answer of zero is asked again at the next call.
using ThresholdService = int32_t (*)(int32_t slot, int32_t cpu);
inline bool goes_parallel(int32_t n, const FunctionInfo& f, std::atomic<int32_t>& cell,
                          ThresholdService ask) {
    int32_t t = cell.load(std::memory_order_relaxed);
    if (t == 0) {
        t = ask(f.id, static_cast<int32_t>(cpu_type()));
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
// A complex scalar that the kernel takes by pointer: the address of a copy
// made at the moment of the call.
struct CopyAtCall {
    const ZVLComplex16* p;
    ZVLComplex16 copy;
};
inline const ZVLComplex16* at_call(CopyAtCall& s) {
    s.copy = *s.p;
    return &s.copy;
}

// The whole front-end for one shape: `args` are the kernel's arguments after
// n, and Driver is the shape's parallel driver.
template <auto Driver, class K, class... Args>
inline void run(int32_t n, const FunctionInfo& f, Cells<K>& c, const KernelSet<K>& set,
                std::initializer_list<const void*> arrays, Args... args) {
    if (!arguments_ok(n, f, arrays)) return;
    const bool par = goes_parallel(n, f, c.threshold, f.complex ? threshold_z : threshold_d);
    const int col = select_column(c, set);
    const K k = c.slot[col].load(std::memory_order_relaxed);
    if (par)
        Driver(k, n, at_call(args)..., f.id + 6 * col, 0);
    else
        k(n, at_call(args)...);
}

// The front-end of each shape: its checked arrays in position order, its
// parallel driver, and what the kernel gets after n. Each exported entry
// (frontends.cpp) is one of these with its function's record, cells and
// kernel set.
struct Front {
    static void d1(const int* n, const double* a, double* r, const FunctionInfo& f,
                   Cells<KernelD1>& c, const KernelSet<KernelD1>& set) {
        run<zel_zvl_service_threader_d_1i_1o>(*n, f, c, set, {a, r}, a, r);
    }
    static void d2(const int* n, const double* a, const double* b, double* r,
                   const FunctionInfo& f, Cells<KernelD2>& c, const KernelSet<KernelD2>& set) {
        run<zel_zvl_service_threader_d_2i_1o>(*n, f, c, set, {a, b, r}, a, b, r);
    }
    // One in, two out with accuracy modes and a threshold (SinCos; Modf is
    // the rounding family's).
    static void d12(const int* n, const double* a, double* y, double* z, const FunctionInfo& f,
                    Cells<KernelD12>& c, const KernelSet<KernelD12>& set) {
        run<zel_zvl_service_threader_d_1i_2o>(*n, f, c, set, {a, y, z}, a, y, z);
    }
    // Real array and real scalar: positions are n 1, a 2, r 3; b is never
    // tested, and is read at the moment of the call, after the mode.
    static void dx(const int* n, const double* a, const double* b, double* r,
                   const FunctionInfo& f, Cells<KernelDx>& c, const KernelSet<KernelDx>& set) {
        run<zel_zvl_service_threader_d_cd_2i_d_1o>(*n, f, c, set, {a, r}, a, ReadAtCall<double>{b}, r);
    }
    static void z1(const int* n, const ZVLComplex16* a, ZVLComplex16* r, const FunctionInfo& f,
                   Cells<KernelZ1>& c, const KernelSet<KernelZ1>& set) {
        run<zel_zvl_service_threader_z_1i_1o>(*n, f, c, set, {a, r}, a, r);
    }
    static void z2(const int* n, const ZVLComplex16* a, const ZVLComplex16* b, ZVLComplex16* r,
                   const FunctionInfo& f, Cells<KernelZ2>& c, const KernelSet<KernelZ2>& set) {
        run<zel_zvl_service_threader_z_2i_1o>(*n, f, c, set, {a, b, r}, a, b, r);
    }
    // Complex array and complex scalar: as the real one, b untested; the
    // kernel gets the address of a copy taken at the moment of the call.
    static void zx(const int* n, const ZVLComplex16* a, const ZVLComplex16* b, ZVLComplex16* r,
                   const FunctionInfo& f, Cells<KernelZx>& c, const KernelSet<KernelZx>& set) {
        run<zel_zvl_service_threader_z_cz_2i_z_1o>(*n, f, c, set, {a, r}, a, CopyAtCall{b, {}}, r);
    }
};

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
