// Erf by cpu type and accuracy mode (erf.h has HA, LA and EP): blocks of
// four, then one at a time, under the full MXCSR guard; 128-bit vectors at
// cpu type 5. At cpu type 0 LA and EP run the HA kernel.
#pragma once

#include "kernels/common/plan.h"

namespace zvl {
namespace plans {
namespace {

// The error functions' kernels of blocks of four: 128-bit vectors at every
// cpu type, VEX-coded at type 5.
constexpr Cell erf_blocks(int cpu, char variant, Guard guard) {
    return own(variant, 4, guard, Loop::scratch, cpu == 5 ? Wrap::v128 : Wrap::unit);
}
constexpr Row3 erf_row(int cpu, Guard guard) {
    return {erf_blocks(cpu, 'H', guard), erf_blocks(cpu, 'L', guard), erf_blocks(cpu, 'E', guard)};
}

constexpr Guard kErfGuard = Guard::mxcsr;
constexpr Plan Erf = plan({erf_blocks(0, 'H', kErfGuard), kRunsHA, kRunsHA}, erf_row(1, kErfGuard),
                          erf_row(2, kErfGuard), erf_row(3, kErfGuard), erf_row(4, kErfGuard),
                          erf_row(5, kErfGuard));

static_assert(well_formed(Erf));

}  // namespace
}  // namespace plans
}  // namespace zvl
