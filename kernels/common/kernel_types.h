// Kernel names: the symbols and name texts of the kernels by cpu label,
// family and tag, and their declarations.
#pragma once

#include "base/kernel_shapes.h"

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
