// Complex Ln and Log10 by cpu type and accuracy mode.
//
//   H  Ln HA: blocks of 8, the angle on five intervals, two-part sums
//   L  Ln LA: the same magnitude with shorter polynomials, the angle from
//      one polynomial in min/max
//   E  Ln EP: shorter still, ln 2 in one part
//   T  Log10: the thin kernel over zLog10_scalar, every mode
//
// Ln's LA and EP run HA at cpu type 0 and have kernels of their own from
// type 1 up; refused elements of every Ln kernel go to zLn_scalar.
#pragma once

#include "kernels/complex/kinds.h"

namespace zvl {
namespace plans {
namespace {

constexpr Cell kZLnH = complex_vector('H', 8), kZLnL = complex_vector('L', 8),
               kZLnE = complex_vector('E', 8);

constexpr Plan zLn = plan({kZLnH, kRunsHA, kRunsHA}, {kZLnH, kZLnL, kZLnE}, {kZLnH, kZLnL, kZLnE},
                          {kZLnH, kZLnL, kZLnE}, {kZLnH, kZLnL, kZLnE}, {kZLnH, kZLnL, kZLnE});

constexpr Plan zLog10 = kComplexThinPlan;

static_assert(well_formed(zLn) && well_formed(zLog10));

}  // namespace
}  // namespace plans
}  // namespace zvl
