// Kernel names: the symbols and name texts of the kernels by cpu label,
// family and tag, and their declarations.
#pragma once

#include "base/kernel_shapes.h"

// Kernel symbols and their name texts come from the same three pieces, so the
// two cannot disagree: cpu label (ex e7 u8 y8 h8 e9), family, tag (HA 50 26).
#define ZVL_KERNEL(cpu, fam, tag) zel_zvl_core_##cpu##_zvl_d##fam##_##tag
#define ZVL_KERNEL_NAME(cpu, fam, tag) "zel_zvl_core_" #cpu "_zvl_d" #fam "_" #tag

// Complex kernels: z before the family, so that they stand apart from the
// real kernels of the same family.
#define ZVL_ZKERNEL(cpu, fam, tag) zel_zvl_core_##cpu##_zvl_z##fam##_##tag

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
#define ZVL_DECLARE_ZONE(cpu, fam, type, tag) extern "C" zvl::type##_fn ZVL_ZKERNEL(cpu, fam, tag);
#define ZVL_DECLARE_ZCPU(cpu, fam, type) \
    ZVL_DECLARE_ZONE(cpu, fam, type, HA) \
    ZVL_DECLARE_ZONE(cpu, fam, type, 50) \
    ZVL_DECLARE_ZONE(cpu, fam, type, 26)
#define ZVL_DECLARE_ZFAMILY(type, fam) ZVL_CPU_LABELS(ZVL_DECLARE_ZCPU, fam, type)
#define ZVL_DECLARE_ROUNDING_ONE(cpu, fam, type) \
    extern "C" zvl::type##_fn ZVL_ROUNDING_KERNEL(cpu, fam);
#define ZVL_DECLARE_ROUNDING(type, fam) ZVL_CPU_LABELS(ZVL_DECLARE_ROUNDING_ONE, fam, type)

// A cpu type's three kernels of a family, in column order.
#define ZVL_ROW3(cpu, fam) {ZVL_KERNEL(cpu, fam, HA), ZVL_KERNEL(cpu, fam, 50), ZVL_KERNEL(cpu, fam, 26)}
#define ZVL_ZROW3(cpu, fam) {ZVL_ZKERNEL(cpu, fam, HA), ZVL_ZKERNEL(cpu, fam, 50), ZVL_ZKERNEL(cpu, fam, 26)}

// A family's kernels of every cpu type, and the rounding family's.
#define ZVL_ALL_KERNELS(K, fam) \
    zvl::KernelSet<zvl::K>{{ZVL_ROW3(ex, fam), ZVL_ROW3(e7, fam), ZVL_ROW3(u8, fam), \
                            ZVL_ROW3(y8, fam), ZVL_ROW3(h8, fam), ZVL_ROW3(e9, fam)}}
#define ZVL_ALL_ZKERNELS(K, fam) \
    zvl::KernelSet<zvl::K>{{ZVL_ZROW3(ex, fam), ZVL_ZROW3(e7, fam), ZVL_ZROW3(u8, fam), \
                            ZVL_ZROW3(y8, fam), ZVL_ZROW3(h8, fam), ZVL_ZROW3(e9, fam)}}
#define ZVL_ALL_ROUNDING(K, fam)                                                            \
    zvl::RoundingSet<zvl::K>{{ZVL_ROUNDING_KERNEL(ex, fam), ZVL_ROUNDING_KERNEL(e7, fam),      \
                              ZVL_ROUNDING_KERNEL(u8, fam), ZVL_ROUNDING_KERNEL(y8, fam),      \
                              ZVL_ROUNDING_KERNEL(h8, fam), ZVL_ROUNDING_KERNEL(e9, fam)}}

// Inside a per-cpu unit, which defines ZVL_CPU (its label) first.
#define ZVL_STR2(x) #x
#define ZVL_STR(x) ZVL_STR2(x)
#define ZVL_KERNEL_X(cpu, fam, tag) ZVL_KERNEL(cpu, fam, tag)
#define ZVL_HERE(fam, tag) ZVL_KERNEL_X(ZVL_CPU, fam, tag)
#define ZVL_ZKERNEL_X(cpu, fam, tag) ZVL_ZKERNEL(cpu, fam, tag)
#define ZVL_HERE_Z(fam, tag) ZVL_ZKERNEL_X(ZVL_CPU, fam, tag)
#define ZVL_HERE_NAME(fam, tag) "zel_zvl_core_" ZVL_STR(ZVL_CPU) "_zvl_d" #fam "_" #tag
#define ZVL_ROUNDING_KERNEL_X(cpu, fam) ZVL_ROUNDING_KERNEL(cpu, fam)
#define ZVL_HERE_ROUNDING(fam) ZVL_ROUNDING_KERNEL_X(ZVL_CPU, fam)
