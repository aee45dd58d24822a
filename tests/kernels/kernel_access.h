// Helpers for tests that call kernels directly, cpu type by cpu type, from
// the kernel sets of the function table.
#pragma once

#include <cstdint>

#include "frame/kernel_sets.h"

namespace zvl_test {

// Whether this processor can run the kernels of cpu type `cpu`.
inline bool cpu_runs(int cpu) {
    switch (cpu) {
        case 5: return __builtin_cpu_supports("avx");
        case 4: return __builtin_cpu_supports("sse4.2");
        case 3: return __builtin_cpu_supports("sse4.1");
        case 2: return __builtin_cpu_supports("ssse3");
        default: return true;
    }
}

inline uint32_t get_mxcsr() {
    uint32_t w;
    __asm__ __volatile__("stmxcsr %0" : "=m"(w));
    return w;
}
inline void set_mxcsr(uint32_t w) { __asm__ __volatile__("ldmxcsr %0" : : "m"(w)); }

// MXCSR fields.
constexpr uint32_t kMxcsrFlags = 0x3f;      // sticky exception flags
constexpr uint32_t kMxcsrInexact = 0x20;
constexpr uint32_t kMxcsrRounding = 0x6000;
constexpr uint32_t kMxcsrFtz = 0x8000;
constexpr uint32_t kMxcsrDaz = 0x40;
constexpr uint32_t kMxcsrDefault = 0x1f80;  // all masked, nearest, no flush

// The caller's rounding modes as MXCSR rounding-control values.
constexpr uint32_t kModes[4] = {0x0000, 0x2000, 0x4000, 0x6000};

// Runs f with MXCSR set to `w`, restoring the previous word afterwards, and
// returns MXCSR as f left it.
template <class F>
uint32_t with_mxcsr(uint32_t w, F f) {
    const uint32_t saved = get_mxcsr();
    set_mxcsr(w);
    f();
    const uint32_t after = get_mxcsr();
    set_mxcsr(saved);
    return after;
}

// The roots, for tests that run all four.
enum RootFn { kSqrt, kInvSqrt, kCbrt, kInvCbrt };
constexpr const char* kRootNames[] = {"Sqrt", "InvSqrt", "Cbrt", "InvCbrt"};

inline const zvl::KernelSet<zvl::KernelD1>& root_set(RootFn f) {
    switch (f) {
        case kSqrt: return zvl::kernels_VDSQRT;
        case kInvSqrt: return zvl::kernels_VDINVSQRT;
        case kCbrt: return zvl::kernels_VDCBRT;
        default: return zvl::kernels_VDINVCBRT;
    }
}

}  // namespace zvl_test
