// Declarations of every kernel and of each function's kernel set, from the
// function table.
#pragma once

#include "frame/function_table.h"
#include "kernels/common/kernel_types.h"

#define ZVL_SET_DECL(K, Set, fam, DECLARE, EXPORT) \
    DECLARE(K, fam)                                \
    namespace zvl {                                \
    extern const Set<K> kernels_##EXPORT;          \
    }
#define ZVL_SET_DECL_D1(EXPORT, report, id, fam) ZVL_SET_DECL(KernelD1, KernelSet, fam, ZVL_DECLARE_FAMILY, EXPORT)
#define ZVL_SET_DECL_D2(EXPORT, report, id, fam) ZVL_SET_DECL(KernelD2, KernelSet, fam, ZVL_DECLARE_FAMILY, EXPORT)
#define ZVL_SET_DECL_D12(EXPORT, report, id, fam) ZVL_SET_DECL(KernelD12, KernelSet, fam, ZVL_DECLARE_FAMILY, EXPORT)
#define ZVL_SET_DECL_DX(EXPORT, report, id, fam) ZVL_SET_DECL(KernelDx, KernelSet, fam, ZVL_DECLARE_FAMILY, EXPORT)
#define ZVL_SET_DECL_Z1(EXPORT, report, id, fam) ZVL_SET_DECL(KernelZ1, KernelSet, fam, ZVL_DECLARE_ZFAMILY, EXPORT)
#define ZVL_SET_DECL_Z2(EXPORT, report, id, fam) ZVL_SET_DECL(KernelZ2, KernelSet, fam, ZVL_DECLARE_ZFAMILY, EXPORT)
#define ZVL_SET_DECL_ZX(EXPORT, report, id, fam) ZVL_SET_DECL(KernelZx, KernelSet, fam, ZVL_DECLARE_ZFAMILY, EXPORT)
#define ZVL_SET_DECL_R1(EXPORT, report, fam) ZVL_SET_DECL(KernelD1, RoundingSet, fam, ZVL_DECLARE_ROUNDING, EXPORT)
#define ZVL_SET_DECL_R12(EXPORT, report, fam) ZVL_SET_DECL(KernelD12, RoundingSet, fam, ZVL_DECLARE_ROUNDING, EXPORT)
ZVL_FUNCTIONS(ZVL_SET_DECL_D1, ZVL_SET_DECL_D2, ZVL_SET_DECL_D12, ZVL_SET_DECL_DX, ZVL_SET_DECL_Z1,
              ZVL_SET_DECL_Z2, ZVL_SET_DECL_ZX, ZVL_SET_DECL_R1, ZVL_SET_DECL_R12)
