// Erf by cpu type and accuracy mode (erf.h has HA, LA and EP): blocks of
// four, then one at a time, under the full MXCSR guard; 256-bit vectors at
// cpu type 5, two blocks side by side. At cpu type 0 LA and EP run the HA
// kernel.
#pragma once

#include "kernels/common/plan.h"

namespace zvl {
namespace plans {
namespace {

// The error functions' kernels of blocks of four: 128-bit vectors at cpu
// types 1 to 4, and at type 5 the wrapper `at5` names: 128-bit VEX-coded
// forms (ErfInv), or 256-bit vectors (Erf and Erfc, whose every lane runs
// every path: in 128-bit vectors Erf HA took 1.7 times as long there, with
// the same bits). Erf and Erfc run their blocks of four two at a time where
// a block holds two vectors (PerTwin: two 128-bit vectors at types 1 to 4;
// `wide5` blocks of eight, two 256-bit vectors, at type 5, with a half
// block of four before the last elements), so that two dependency chains
// fill each other's latency; Erf EP, short enough to be bound by its
// operations, keeps one vector a block at type 5.
constexpr Cell erf_blocks(int cpu, char variant, Guard guard, Wrap at5 = Wrap::v128,
                          bool wide5 = false) {
    return own(variant, cpu == 5 && wide5 ? 8 : 4, guard, Loop::scratch,
               cpu == 5 ? at5 : Wrap::unit);
}
constexpr Row3 erf_row(int cpu, Guard guard, Wrap at5 = Wrap::v128, bool wide5_ep = false) {
    const bool wide5 = at5 == Wrap::unit;
    return {erf_blocks(cpu, 'H', guard, at5, wide5), erf_blocks(cpu, 'L', guard, at5, wide5),
            erf_blocks(cpu, 'E', guard, at5, wide5 && wide5_ep)};
}

constexpr Guard kErfGuard = Guard::mxcsr;
constexpr Plan Erf = plan({erf_blocks(0, 'H', kErfGuard), kRunsHA, kRunsHA}, erf_row(1, kErfGuard),
                          erf_row(2, kErfGuard), erf_row(3, kErfGuard), erf_row(4, kErfGuard),
                          erf_row(5, kErfGuard, Wrap::unit));

static_assert(well_formed(Erf));

}  // namespace
}  // namespace plans
}  // namespace zvl
