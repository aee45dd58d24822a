// Asinh, Acosh and Atanh by cpu type and accuracy mode (asinh.h, acosh.h
// and atanh.h have the variants):
//
//   H  HA: the logarithm in two parts, the roots and quotients in two parts
//      from the square root and division instructions and exact residuals
//   L  LA and EP, one algorithm with the same constants: the logarithm of
//      degree 6, the square root and division instructions
//
// EP is a kernel of its own with LA's body, under its own name; at cpu
// type 0 LA and EP run HA. Blocks of eight, then one at a time, under the
// full MXCSR guard: the two-part sums and the refinements of the estimates
// assume round to nearest, whatever the caller's mode. Acosh reports
// ZVL_STATUS_ERRDOM below 1, Atanh ZVL_STATUS_ERRDOM beyond +-1 and
// ZVL_STATUS_SING at +-1, both through the callout; Asinh never reports.
#pragma once

#include "kernels/common/plan.h"

namespace zvl {
namespace plans {
namespace {

constexpr Cell inverse_hyperbolic(char variant) { return own(variant, 8, Guard::mxcsr, Loop::scratch); }
constexpr Row3 kInverseHyperbolicRow = {inverse_hyperbolic('H'), inverse_hyperbolic('L'),
                                        inverse_hyperbolic('L')};
constexpr Row3 kInverseHyperbolicRowHA = {inverse_hyperbolic('H'), kRunsHA, kRunsHA};

constexpr Plan Asinh = plan(kInverseHyperbolicRowHA, kInverseHyperbolicRow, kInverseHyperbolicRow,
                            kInverseHyperbolicRow, kInverseHyperbolicRow, kInverseHyperbolicRow);
constexpr Plan Acosh = Asinh;
constexpr Plan Atanh = Asinh;

static_assert(well_formed(Asinh));

}  // namespace
}  // namespace plans
}  // namespace zvl
