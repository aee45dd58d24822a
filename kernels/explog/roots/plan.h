// Sqrt, InvSqrt, Cbrt and InvCbrt by cpu type and accuracy mode. Blocks are
// two vectors: 8 elements at type 5, 4 below.
//
//   Sqrt     A  the square root instruction, no guard
//            B  EP at type 5: the single-precision estimate refined
//   InvSqrt  A  sqrt(1/x)
//            B  LA: the estimate and a degree-3 step (types 2 to 5)
//            C  EP: the estimate and a degree-1 step (types 2 to 5)
//
// No lower mode runs slower than HA: where the instruction is as fast as
// anything that could replace it, the lower modes run it. Two vectors of
// 128-bit square roots (types 1 to 4) cost less than the estimate's
// conversions and refinement, so Sqrt EP is the instruction there; at type
// 1, which has no estimate, InvSqrt's division and root beat any seed
// refined by multiplications to EP's accuracy.
//   Cbrt, InvCbrt  A HA, B LA, C EP, from the same seed; E LA and F EP at
//            type 5, whose seed divides by three in floating point (in the
//            block and alone alike) and may differ from B's and C's in its
//            last bits (HA's exact step hides that)
//
// Every kernel but the instruction's runs under the full MXCSR guard.
#pragma once

#include "kernels/common/plan.h"

namespace zvl {
namespace plans {
namespace {

constexpr int root_width(int cpu) { return cpu == 5 ? 8 : 4; }

constexpr Cell root(int cpu, char variant) { return own(variant, root_width(cpu), Guard::mxcsr, Loop::scratch); }
constexpr Cell sqrt_instr(int cpu) { return own('A', root_width(cpu), Guard::none, Loop::scratch); }

constexpr Row3 sqrt_row(int cpu) {
    return {sqrt_instr(cpu), sqrt_instr(cpu), cpu == 5 ? root(cpu, 'B') : sqrt_instr(cpu)};
}
constexpr Plan Sqrt = plan({sqrt_instr(0), kRunsHA, kRunsHA}, sqrt_row(1), sqrt_row(2), sqrt_row(3),
                           sqrt_row(4), sqrt_row(5));

constexpr Row3 inv_sqrt_row(int cpu) {
    return {root(cpu, 'A'), cpu == 1 ? root(cpu, 'A') : root(cpu, 'B'),
            cpu == 1 ? root(cpu, 'A') : root(cpu, 'C')};
}
constexpr Plan InvSqrt = plan({root(0, 'A'), kRunsHA, kRunsHA}, inv_sqrt_row(1), inv_sqrt_row(2),
                              inv_sqrt_row(3), inv_sqrt_row(4), inv_sqrt_row(5));

constexpr Row3 cbrt_row(int cpu) {
    return {root(cpu, 'A'), root(cpu, cpu == 5 ? 'E' : 'B'), root(cpu, cpu == 5 ? 'F' : 'C')};
}
constexpr Plan Cbrt = plan({root(0, 'A'), kRunsHA, kRunsHA}, cbrt_row(1), cbrt_row(2), cbrt_row(3),
                           cbrt_row(4), cbrt_row(5));
constexpr Plan InvCbrt = Cbrt;

static_assert(well_formed(Sqrt) && well_formed(InvSqrt) && well_formed(Cbrt));

}  // namespace
}  // namespace plans
}  // namespace zvl
