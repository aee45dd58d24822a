// Each function's kernels by cpu type and accuracy mode, from its family's
// plan: a slot of its own holds the cell's kernel, a forward the kernel of
// the cell it names (the kernel symbols of forwards exist too, as entries
// that call that kernel, but the sets skip them).
#include "frame/kernel_sets.h"

#include "kernels/common/sets.h"
#include "kernels/plans.h"

namespace zvl {

#define ZVL_SET(K, EXPORT, fam) constexpr KernelSet<K> kernels_##EXPORT = resolve(plans::fam, ZVL_ALL_KERNELS(K, fam));
#define ZVL_SET_D1(EXPORT, report, id, fam) ZVL_SET(KernelD1, EXPORT, fam)
#define ZVL_SET_D2(EXPORT, report, id, fam) ZVL_SET(KernelD2, EXPORT, fam)
#define ZVL_SET_D12(EXPORT, report, id, fam) ZVL_SET(KernelD12, EXPORT, fam)
#define ZVL_SET_DX(EXPORT, report, id, fam) ZVL_SET(KernelDx, EXPORT, fam)
// A complex family's plan is z<family> and its kernels carry z as well.
#define ZVL_ZSET(K, EXPORT, fam) \
    constexpr KernelSet<K> kernels_##EXPORT = resolve(plans::z##fam, ZVL_ALL_ZKERNELS(K, fam));
#define ZVL_SET_Z1(EXPORT, report, id, fam) ZVL_ZSET(KernelZ1, EXPORT, fam)
#define ZVL_SET_Z2(EXPORT, report, id, fam) ZVL_ZSET(KernelZ2, EXPORT, fam)
#define ZVL_SET_ZX(EXPORT, report, id, fam) ZVL_ZSET(KernelZx, EXPORT, fam)
#define ZVL_ROUNDING(K, EXPORT, fam) \
    constexpr RoundingSet<K> kernels_##EXPORT = resolve(plans::fam, ZVL_ALL_ROUNDING(K, fam));
#define ZVL_SET_R1(EXPORT, report, fam) ZVL_ROUNDING(KernelD1, EXPORT, fam)
#define ZVL_SET_R12(EXPORT, report, fam) ZVL_ROUNDING(KernelD12, EXPORT, fam)

ZVL_FUNCTIONS(ZVL_SET_D1, ZVL_SET_D2, ZVL_SET_D12, ZVL_SET_DX, ZVL_SET_Z1, ZVL_SET_Z2, ZVL_SET_ZX,
              ZVL_SET_R1, ZVL_SET_R12)

}  // namespace zvl
