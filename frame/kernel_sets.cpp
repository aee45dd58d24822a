// Each function's kernels by cpu type and accuracy mode, from its family's
// plan: a slot of its own holds the cell's kernel, a forward the kernel of
// the cell it names (the kernel symbols of forwards exist too, as entries
// that call that kernel, but the sets skip them).
#include "frame/kernel_sets.h"

#include "kernels/explog/families.h"

namespace zvl {
namespace {

template <class K>
constexpr KernelSet<K> resolve(const Plan& p, const KernelSet<K>& all) {
    KernelSet<K> s{};
    for (int cpu = 0; cpu < kCpuTypeCount; ++cpu)
        for (int col = 0; col < kColumns; ++col) {
            const Where w = p.target(cpu, col);
            s.k[cpu][col] = all.k[w.cpu][w.col];
        }
    return s;
}
template <class K>
constexpr RoundingSet<K> resolve(const Plan& p, const RoundingSet<K>& all) {
    RoundingSet<K> s{};
    for (int cpu = 0; cpu < kCpuTypeCount; ++cpu) s.k[cpu] = all.k[p.target(cpu, 0).cpu];
    return s;
}

}  // namespace

#define ZVL_ALL_SET(K, fam)                                                        \
    KernelSet<K>{{ZVL_ROW3(ex, fam), ZVL_ROW3(e7, fam), ZVL_ROW3(u8, fam), ZVL_ROW3(y8, fam), \
                  ZVL_ROW3(h8, fam), ZVL_ROW3(e9, fam)}}
#define ZVL_ALL_ROUNDING_SET(K, fam)                                                     \
    RoundingSet<K>{{ZVL_ROUNDING_KERNEL(ex, fam), ZVL_ROUNDING_KERNEL(e7, fam),           \
                    ZVL_ROUNDING_KERNEL(u8, fam), ZVL_ROUNDING_KERNEL(y8, fam),           \
                    ZVL_ROUNDING_KERNEL(h8, fam), ZVL_ROUNDING_KERNEL(e9, fam)}}

#define ZVL_SET(K, EXPORT, fam) constexpr KernelSet<K> kernels_##EXPORT = resolve(plans::fam, ZVL_ALL_SET(K, fam));
#define ZVL_SET_D1(EXPORT, report, id, fam) ZVL_SET(KernelD1, EXPORT, fam)
#define ZVL_SET_D2(EXPORT, report, id, fam) ZVL_SET(KernelD2, EXPORT, fam)
#define ZVL_SET_D12(EXPORT, report, id, fam) ZVL_SET(KernelD12, EXPORT, fam)
#define ZVL_SET_DX(EXPORT, report, id, fam) ZVL_SET(KernelDx, EXPORT, fam)
#define ZVL_SET_Z1(EXPORT, report, id, fam) ZVL_SET(KernelZ1, EXPORT, fam)
#define ZVL_SET_Z2(EXPORT, report, id, fam) ZVL_SET(KernelZ2, EXPORT, fam)
#define ZVL_SET_ZX(EXPORT, report, id, fam) ZVL_SET(KernelZx, EXPORT, fam)
#define ZVL_ROUNDING(K, EXPORT, fam) \
    constexpr RoundingSet<K> kernels_##EXPORT = resolve(plans::fam, ZVL_ALL_ROUNDING_SET(K, fam));
#define ZVL_SET_R1(EXPORT, report, fam) ZVL_ROUNDING(KernelD1, EXPORT, fam)
#define ZVL_SET_R12(EXPORT, report, fam) ZVL_ROUNDING(KernelD12, EXPORT, fam)

ZVL_FUNCTIONS(ZVL_SET_D1, ZVL_SET_D2, ZVL_SET_D12, ZVL_SET_DX, ZVL_SET_Z1, ZVL_SET_Z2, ZVL_SET_ZX,
              ZVL_SET_R1, ZVL_SET_R12)

}  // namespace zvl
