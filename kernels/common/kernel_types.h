// Kernel names: the symbols and name texts of the kernels by cpu label,
// family and tag, and their declarations.
#pragma once

#include "base/kernel_shapes.h"

// Kernel symbols and their name texts come from the same three pieces, so the
// two cannot disagree: cpu label (ex e7 u8 y8 h8 e9), family, tag (HA 50 26).
#define ZVL_KERNEL(cpu, fam, tag) ZVL_KERNEL_OF(d, cpu, fam, tag)
#define ZVL_KERNEL_NAME(cpu, fam, tag) "zel_zvl_core_" #cpu "_zvl_d" #fam "_" #tag

// Complex kernels: z before the family, so that they stand apart from the
// real kernels of the same family. `kind` is d or z.
#define ZVL_ZKERNEL(cpu, fam, tag) ZVL_KERNEL_OF(z, cpu, fam, tag)
#define ZVL_KERNEL_OF(kind, cpu, fam, tag) zel_zvl_core_##cpu##_zvl_##kind##fam##_##tag

// The rounding family has no accuracy modes: its kernels carry no tag.
#define ZVL_ROUNDING_KERNEL(cpu, fam) zel_zvl_core_##cpu##_zvl_d##fam

// X(label, ...) for each cpu label in order, with the arguments after X.
#define ZVL_CPU_LABELS(X, ...)                                         \
    X(ex, __VA_ARGS__) X(e7, __VA_ARGS__) X(u8, __VA_ARGS__) X(y8, __VA_ARGS__) \
    X(h8, __VA_ARGS__) X(e9, __VA_ARGS__)

// Kernels by family: ZVL_DECLARE_FAMILY(shape type, family) declares the
// three kernels of every cpu type (ZVL_DECLARE_ZFAMILY those of a complex
// family); ZVL_DECLARE_ROUNDING the one.
#define ZVL_DECLARE_ONE(kind, cpu, fam, type, tag) \
    extern "C" zvl::type##_fn ZVL_KERNEL_OF(kind, cpu, fam, tag);
#define ZVL_DECLARE_CPU(cpu, kind, fam, type) \
    ZVL_DECLARE_ONE(kind, cpu, fam, type, HA)  \
    ZVL_DECLARE_ONE(kind, cpu, fam, type, 50)  \
    ZVL_DECLARE_ONE(kind, cpu, fam, type, 26)
#define ZVL_DECLARE_KIND(kind, type, fam) ZVL_CPU_LABELS(ZVL_DECLARE_CPU, kind, fam, type)
#define ZVL_DECLARE_FAMILY(type, fam) ZVL_DECLARE_KIND(d, type, fam)
#define ZVL_DECLARE_ZFAMILY(type, fam) ZVL_DECLARE_KIND(z, type, fam)
#define ZVL_DECLARE_ROUNDING_ONE(cpu, fam, type) \
    extern "C" zvl::type##_fn ZVL_ROUNDING_KERNEL(cpu, fam);
#define ZVL_DECLARE_ROUNDING(type, fam) ZVL_CPU_LABELS(ZVL_DECLARE_ROUNDING_ONE, fam, type)

// A cpu type's three kernels of a family, in column order.
#define ZVL_ROW3_OF(kind, cpu, fam) \
    {ZVL_KERNEL_OF(kind, cpu, fam, HA), ZVL_KERNEL_OF(kind, cpu, fam, 50), ZVL_KERNEL_OF(kind, cpu, fam, 26)}
#define ZVL_ROW3(cpu, fam) ZVL_ROW3_OF(d, cpu, fam)

// A family's kernels of every cpu type, and the rounding family's.
#define ZVL_ALL_OF(kind, K, fam)                                                            \
    zvl::KernelSet<zvl::K>{{ZVL_ROW3_OF(kind, ex, fam), ZVL_ROW3_OF(kind, e7, fam),              \
                            ZVL_ROW3_OF(kind, u8, fam), ZVL_ROW3_OF(kind, y8, fam),              \
                            ZVL_ROW3_OF(kind, h8, fam), ZVL_ROW3_OF(kind, e9, fam)}}
#define ZVL_ALL_KERNELS(K, fam) ZVL_ALL_OF(d, K, fam)
#define ZVL_ALL_ZKERNELS(K, fam) ZVL_ALL_OF(z, K, fam)
#define ZVL_ALL_ROUNDING(K, fam)                                                            \
    zvl::RoundingSet<zvl::K>{{ZVL_ROUNDING_KERNEL(ex, fam), ZVL_ROUNDING_KERNEL(e7, fam),      \
                              ZVL_ROUNDING_KERNEL(u8, fam), ZVL_ROUNDING_KERNEL(y8, fam),      \
                              ZVL_ROUNDING_KERNEL(h8, fam), ZVL_ROUNDING_KERNEL(e9, fam)}}

// Inside a per-cpu unit, which defines ZVL_CPU (its label) first.
#define ZVL_STR2(x) #x
#define ZVL_STR(x) ZVL_STR2(x)
#define ZVL_KERNEL_X(kind, cpu, fam, tag) ZVL_KERNEL_OF(kind, cpu, fam, tag)
#define ZVL_HERE_OF(kind, fam, tag) ZVL_KERNEL_X(kind, ZVL_CPU, fam, tag)
#define ZVL_HERE(fam, tag) ZVL_HERE_OF(d, fam, tag)
// The name a real kernel reports under; complex kernels report nothing.
#define ZVL_HERE_NAME_OF(kind, fam, tag) ZVL_HERE_NAME_##kind(fam, tag)
#define ZVL_HERE_NAME_d(fam, tag) "zel_zvl_core_" ZVL_STR(ZVL_CPU) "_zvl_d" #fam "_" #tag
#define ZVL_HERE_NAME_z(fam, tag) nullptr
#define ZVL_HERE_NAME(fam, tag) ZVL_HERE_NAME_d(fam, tag)
#define ZVL_ROUNDING_KERNEL_X(cpu, fam) ZVL_ROUNDING_KERNEL(cpu, fam)
#define ZVL_HERE_ROUNDING(fam) ZVL_ROUNDING_KERNEL_X(ZVL_CPU, fam)
