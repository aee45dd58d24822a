// Kernel entry shapes and kernel names.
//
// A kernel applies one function to n elements for one cpu type and accuracy
// mode. n may be any value (zero or negative does nothing); pointers are
// non-null and need no alignment; the output may alias the input.
#pragma once

#include <cstdint>
#include <type_traits>

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

// The rounding family's: one kernel per cpu type.
template <class K>
struct RoundingSet {
    K k[6];
};

// Function types (not pointers) of the shapes, for declarations.
using KernelD1_fn = std::remove_pointer_t<KernelD1>;
using KernelD2_fn = std::remove_pointer_t<KernelD2>;
using KernelD12_fn = std::remove_pointer_t<KernelD12>;
using KernelDx_fn = std::remove_pointer_t<KernelDx>;
using KernelZ1_fn = std::remove_pointer_t<KernelZ1>;
using KernelZ2_fn = std::remove_pointer_t<KernelZ2>;
using KernelZx_fn = std::remove_pointer_t<KernelZx>;

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

// Kernels by family: ZVL_DECLARE_FAMILY(shape type, family) declares the
// three kernels of every cpu type; ZVL_DECLARE_ROUNDING the one.
#define ZVL_DECLARE_ONE(cpu, fam, type, tag) extern "C" zvl::type##_fn ZVL_KERNEL(cpu, fam, tag);
#define ZVL_DECLARE_CPU(cpu, fam, type) \
    ZVL_DECLARE_ONE(cpu, fam, type, HA) \
    ZVL_DECLARE_ONE(cpu, fam, type, 50) \
    ZVL_DECLARE_ONE(cpu, fam, type, 26)
#define ZVL_DECLARE_FAMILY(type, fam) ZVL_CPU_LABELS(ZVL_DECLARE_CPU, fam, type)
#define ZVL_DECLARE_ROUNDING_ONE(cpu, fam, type) \
    extern "C" zvl::type##_fn ZVL_ROUNDING_KERNEL(cpu, fam);
#define ZVL_DECLARE_ROUNDING(type, fam) ZVL_CPU_LABELS(ZVL_DECLARE_ROUNDING_ONE, fam, type)

// A cpu type's three kernels of a family, in column order.
#define ZVL_ROW3(cpu, fam) {ZVL_KERNEL(cpu, fam, HA), ZVL_KERNEL(cpu, fam, 50), ZVL_KERNEL(cpu, fam, 26)}

// Inside a per-cpu unit, which defines ZVL_CPU (its label) first.
#define ZVL_STR2(x) #x
#define ZVL_STR(x) ZVL_STR2(x)
#define ZVL_KERNEL_X(cpu, fam, tag) ZVL_KERNEL(cpu, fam, tag)
#define ZVL_HERE(fam, tag) ZVL_KERNEL_X(ZVL_CPU, fam, tag)
#define ZVL_HERE_NAME(fam, tag) "zel_zvl_core_" ZVL_STR(ZVL_CPU) "_zvl_d" #fam "_" #tag
#define ZVL_ROUNDING_KERNEL_X(cpu, fam) ZVL_ROUNDING_KERNEL(cpu, fam)
#define ZVL_HERE_ROUNDING(fam) ZVL_ROUNDING_KERNEL_X(ZVL_CPU, fam)
