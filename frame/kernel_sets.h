// Declarations of every kernel and of each function's kernel set.
#pragma once

#include <type_traits>

#include "frame/frontend.h"
#include "frame/function_table.h"
#include "kernels/common/kernel_types.h"

// Kernels by family: ZVL_DECLARE_FAMILY(shape type, family) declares the
// three kernels of every cpu type.
#define ZVL_DECLARE_ONE(cpu, fam, type, tag) extern "C" type##_fn ZVL_KERNEL(cpu, fam, tag);
#define ZVL_DECLARE_CPU(cpu, fam, type) \
    ZVL_DECLARE_ONE(cpu, fam, type, HA) \
    ZVL_DECLARE_ONE(cpu, fam, type, 50) \
    ZVL_DECLARE_ONE(cpu, fam, type, 26)
#define ZVL_DECLARE_FAMILY(type, fam) ZVL_CPU_LABELS(ZVL_DECLARE_CPU, fam, type)

// The rounding family: one kernel per cpu type, no accuracy tag.
#define ZVL_DECLARE_ROUNDING_ONE(cpu, fam, type) extern "C" type##_fn ZVL_ROUNDING_KERNEL(cpu, fam);
#define ZVL_DECLARE_ROUNDING(type, fam) ZVL_CPU_LABELS(ZVL_DECLARE_ROUNDING_ONE, fam, type)

namespace zvl {
// Function types (not pointers) of the shapes, for declarations.
using KernelD1_fn = std::remove_pointer_t<KernelD1>;
using KernelD2_fn = std::remove_pointer_t<KernelD2>;
using KernelD12_fn = std::remove_pointer_t<KernelD12>;
using KernelDx_fn = std::remove_pointer_t<KernelDx>;
}  // namespace zvl

using zvl::KernelD1_fn;
using zvl::KernelD2_fn;
using zvl::KernelD12_fn;
using zvl::KernelDx_fn;

ZVL_DECLARE_FAMILY(KernelD1, Inv)
ZVL_DECLARE_FAMILY(KernelD2, Div)
ZVL_DECLARE_FAMILY(KernelD1, Sqrt)
ZVL_DECLARE_FAMILY(KernelD1, InvSqrt)
ZVL_DECLARE_FAMILY(KernelD1, Cbrt)
ZVL_DECLARE_FAMILY(KernelD1, InvCbrt)
ZVL_DECLARE_FAMILY(KernelD2, Pow)
ZVL_DECLARE_FAMILY(KernelDx, Powx)
ZVL_DECLARE_FAMILY(KernelD1, Exp)
ZVL_DECLARE_ROUNDING(KernelD1, Ceil)
ZVL_DECLARE_ROUNDING(KernelD1, Floor)
ZVL_DECLARE_ROUNDING(KernelD12, Modf)
ZVL_DECLARE_ROUNDING(KernelD1, NearbyInt)
ZVL_DECLARE_ROUNDING(KernelD1, Rint)
ZVL_DECLARE_ROUNDING(KernelD1, Round)
ZVL_DECLARE_ROUNDING(KernelD1, Trunc)
ZVL_DECLARE_FAMILY(KernelD1, Ln)
ZVL_DECLARE_FAMILY(KernelD1, Log10)

namespace zvl {

#define ZVL_SET_DECL_D1(EXPORT, report, id) extern const KernelSet<KernelD1> kernels_##EXPORT;
#define ZVL_SET_DECL_D2(EXPORT, report, id) extern const KernelSet<KernelD2> kernels_##EXPORT;
#define ZVL_SET_DECL_D12(EXPORT, report, id) extern const KernelSet<KernelD12> kernels_##EXPORT;
#define ZVL_SET_DECL_DX(EXPORT, report, id) extern const KernelSet<KernelDx> kernels_##EXPORT;
#define ZVL_SET_DECL_Z1(EXPORT, report, id) extern const KernelSet<KernelZ1> kernels_##EXPORT;
#define ZVL_SET_DECL_Z2(EXPORT, report, id) extern const KernelSet<KernelZ2> kernels_##EXPORT;
#define ZVL_SET_DECL_ZX(EXPORT, report, id) extern const KernelSet<KernelZx> kernels_##EXPORT;
#define ZVL_SET_DECL_R1(EXPORT, report) extern const RoundingSet<KernelD1> kernels_##EXPORT;
#define ZVL_SET_DECL_R12(EXPORT, report) extern const RoundingSet<KernelD12> kernels_##EXPORT;
ZVL_FUNCTIONS(ZVL_SET_DECL_D1, ZVL_SET_DECL_D2, ZVL_SET_DECL_D12, ZVL_SET_DECL_DX,
              ZVL_SET_DECL_Z1, ZVL_SET_DECL_Z2, ZVL_SET_DECL_ZX, ZVL_SET_DECL_R1,
              ZVL_SET_DECL_R12)

}  // namespace zvl
