// Tan by cpu type and accuracy mode.
//
//   H  HA of cpu types 1 to 5: batches of 64, a vector pass that reduces by
//      pi/2 to a double word and evaluates the low-order terms, and a pass
//      in the x87 unit's 64-bit significand that finishes the rational form,
//      one division for each pair of elements; |x| >= 128000 and NaN to the
//      callout
//   Z  HA of cpu type 0: step pi/32 to tan B of TanTable16, the quotient
//      (tan B + tan r) / (1 - tan B tan r) or minus its reciprocal in double
//      words, one division; |x| >= 12800 and NaN to the callout
//   L  LA, the rational form of degree 7 over 6 after a reduction by pi/2 in
//      four parts, one division an element; P  EP, degree 5 over 4 and three
//      parts. Elements go in pairs (blocks of 8, 16 at cpu type 5, then
//      pairs): when the high word of either's |x| is above that of 128000
//      both go to the callout
//
// Callouts report as "dTan_HA" (HA) and "dTan_LA" (LA and EP).
#pragma once

#include "kernels/common/plan.h"

namespace zvl {
namespace plans {
namespace {

constexpr Cell kTanH = own('H', 64, Guard::x87_64_short, Loop::batch);
constexpr Cell kTanZ = own('Z', 4, Guard::mxcsr, Loop::scratch);
constexpr Cell kTanL8 = own('L', 8, Guard::mxcsr, Loop::scratch);
constexpr Cell kTanP8 = own('P', 8, Guard::mxcsr, Loop::scratch);
constexpr Cell kTanL16 = own('L', 16, Guard::mxcsr, Loop::scratch);
constexpr Cell kTanP16 = own('P', 16, Guard::mxcsr, Loop::scratch);

constexpr Plan Tan = plan(
    {kTanZ, kRunsHA, kRunsHA},
    {kTanH, kTanL8, kTanP8},
    {kTanH, kTanL8, kTanP8},
    {kTanH, kTanL8, kTanP8},
    {kTanH, kTanL8, kTanP8},
    {kTanH, kTanL16, kTanP16});

static_assert(well_formed(Tan));

}  // namespace
}  // namespace plans
}  // namespace zvl
