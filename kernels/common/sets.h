// A function's kernel set from its family's plan and the family's kernels
// of every cpu type: a slot of its own holds the cell's kernel, a forward the
// kernel of the cell it names.
#pragma once

#include "base/kernel_shapes.h"
#include "kernels/common/plan.h"

namespace zvl {

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

}  // namespace zvl
