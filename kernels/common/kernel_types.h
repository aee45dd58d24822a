// Kernel entry shapes and kernel names.
//
// A kernel applies one function to n elements for one cpu type and accuracy
// mode. n may be any value (zero or negative does nothing); pointers are
// non-null and need no alignment; the output may alias the input.
#pragma once

#include <cstdint>

#include "zvl.h"

namespace zvl {

using KernelD1 = void (*)(int32_t n, const double* a, double* r);
using KernelD2 = void (*)(int32_t n, const double* a, const double* b, double* r);
using KernelD12 = void (*)(int32_t n, const double* a, double* y, double* z);
using KernelDx = void (*)(int32_t n, const double* a, double b, double* r);
using KernelZ1 = void (*)(int32_t n, const ZVLComplex16* a, ZVLComplex16* r);
using KernelZ2 = void (*)(int32_t n, const ZVLComplex16* a, const ZVLComplex16* b,
                          ZVLComplex16* r);
using KernelZx = void (*)(int32_t n, const ZVLComplex16* a, const ZVLComplex16* b,
                          ZVLComplex16* r);

// Accuracy columns of a kernel set.
enum Accuracy { kHA = 0, kLA = 1, kEP = 2 };

// For one function: its kernels by cpu type (0..5) and accuracy column.
template <class K>
struct KernelSet {
    K k[6][3];
};

}  // namespace zvl

// Kernel symbols and their name texts come from the same three pieces, so the
// two cannot disagree: cpu label (ex e7 u8 y8 h8 e9), family, tag (HA 50 26).
#define ZVL_KERNEL(cpu, fam, tag) zel_zvl_core_##cpu##_zvl_d##fam##_##tag
#define ZVL_KERNEL_NAME(cpu, fam, tag) "zel_zvl_core_" #cpu "_zvl_d" #fam "_" #tag

// The rounding family has no accuracy modes: its kernels carry no tag.
#define ZVL_ROUNDING_KERNEL(cpu, fam) zel_zvl_core_##cpu##_zvl_d##fam

// X(label, ...) for each cpu label in order, with the arguments after X.
#define ZVL_CPU_LABELS(X, ...)                                         \
    X(ex, __VA_ARGS__) X(e7, __VA_ARGS__) X(u8, __VA_ARGS__) X(y8, __VA_ARGS__) \
    X(h8, __VA_ARGS__) X(e9, __VA_ARGS__)

// Inside a per-cpu unit, which defines ZVL_CPU (its label) first.
#define ZVL_STR2(x) #x
#define ZVL_STR(x) ZVL_STR2(x)
#define ZVL_KERNEL_X(cpu, fam, tag) ZVL_KERNEL(cpu, fam, tag)
#define ZVL_HERE(fam, tag) ZVL_KERNEL_X(ZVL_CPU, fam, tag)
#define ZVL_HERE_NAME(fam, tag) "zel_zvl_core_" ZVL_STR(ZVL_CPU) "_zvl_d" #fam "_" #tag
#define ZVL_ROUNDING_KERNEL_X(cpu, fam) ZVL_ROUNDING_KERNEL(cpu, fam)
#define ZVL_HERE_ROUNDING(fam) ZVL_ROUNDING_KERNEL_X(ZVL_CPU, fam)

// The unit's kernel (fam, tag) of each shape: the exported symbol, whose body
// calls the function given last (a template with its arguments, commas and
// all) with the kernel's arguments and the kernel's name.
#define ZVL_DEFINE_D1(fam, tag, ...)                                             \
    extern "C" void ZVL_HERE(fam, tag)(int32_t n, const double* a, double* r) { \
        __VA_ARGS__(n, a, r, ZVL_HERE_NAME(fam, tag));                          \
    }
#define ZVL_DEFINE_D2(fam, tag, ...)                                                  \
    extern "C" void ZVL_HERE(fam, tag)(int32_t n, const double* a, const double* b, \
                                       double* r) {                                 \
        __VA_ARGS__(n, a, b, r, ZVL_HERE_NAME(fam, tag));                           \
    }
#define ZVL_DEFINE_DX(fam, tag, ...)                                                       \
    extern "C" void ZVL_HERE(fam, tag)(int32_t n, const double* a, double b, double* r) { \
        __VA_ARGS__(n, a, b, r, ZVL_HERE_NAME(fam, tag));                                 \
    }
// The rounding family's, which report nothing and so take no name.
#define ZVL_DEFINE_ROUNDING_D1(fam, ...)                                         \
    extern "C" void ZVL_HERE_ROUNDING(fam)(int32_t n, const double* a, double* r) { \
        __VA_ARGS__(n, a, r);                                                      \
    }
#define ZVL_DEFINE_ROUNDING_D12(fam, ...)                                                    \
    extern "C" void ZVL_HERE_ROUNDING(fam)(int32_t n, const double* a, double* y, double* z) { \
        __VA_ARGS__(n, a, y, z);                                                              \
    }
