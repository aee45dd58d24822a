// Asin and Acos by cpu type and accuracy mode (asin_acos.h has the
// variants):
//
//   H  HA: the square root in two parts from the reciprocal square root
//      estimate, pi/2 and pi in two parts
//   L  LA and EP, one algorithm with the same constants: the square root
//      instruction; EP is a kernel of its own that runs it, reporting under
//      its own name
//
// Blocks of four elements in two vectors of two, at cpu type 5 of eight in
// two vectors of four (in 128-bit vectors there HA took 13 ns an element,
// twice glibc's scalar asin; in 256-bit ones 6.6), then one at a time.
// Lanes with |x| >= 1 or NaN go, lowest first, to the fix-up, which reports
// ZVL_STATUS_ERRDOM for |x| > 1.
// At cpu type 0 LA and EP run HA. Every kernel runs under the full MXCSR
// guard, so the double-word sums round to nearest whatever the caller's mode.
#pragma once

#include "kernels/common/plan.h"

namespace zvl {
namespace plans {
namespace {

constexpr Cell asin_acos_blocks(int cpu, char variant) {
    return own(variant, cpu == 5 ? 8 : 4, Guard::mxcsr, Loop::scratch);
}
constexpr Row3 asin_acos_row(int cpu) {
    return {asin_acos_blocks(cpu, 'H'), asin_acos_blocks(cpu, 'L'), asin_acos_blocks(cpu, 'L')};
}

constexpr Plan Asin = plan({asin_acos_blocks(0, 'H'), kRunsHA, kRunsHA}, asin_acos_row(1),
                           asin_acos_row(2), asin_acos_row(3), asin_acos_row(4), asin_acos_row(5));
// The same layout.
constexpr Plan Acos = Asin;

static_assert(well_formed(Asin));

}  // namespace
}  // namespace plans
}  // namespace zvl
