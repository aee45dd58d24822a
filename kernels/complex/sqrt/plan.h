// Complex Sqrt by cpu type: four members, LA and EP running HA.
//
//   T  cpu type 0: the thin kernel over zSqrt_scalar (extended precision)
//   F  cpu type 1: zSqrt_fast's steps in scalar SSE2 doubles on four
//      elements side by side, a block of four
//   V  cpu types 2 to 5: zSqrt_parts on four of the unit's vectors side by
//      side, 8 elements a block (16 at type 5), the lanes outside the band
//      through zSqrt_slow
//
// The double members clear MXCSR's rounding and flush-to-zero bits for
// their length; none touches the x87 unit but zSqrt_scalar's.
#pragma once

#include "kernels/complex/kinds.h"

namespace zvl {
namespace plans {
namespace {

constexpr Cell kZSqrtFast = own('F', 4, Guard::mxcsr_short, Loop::zblock, Wrap::scalar);
constexpr Cell zsqrt_vector(int width) { return own('V', width, Guard::mxcsr_short, Loop::zblock); }

constexpr Plan zSqrt = plan({kComplexThin, kRunsHA, kRunsHA}, {kZSqrtFast, kRunsHA, kRunsHA},
                            {zsqrt_vector(8), kRunsHA, kRunsHA}, {zsqrt_vector(8), kRunsHA, kRunsHA},
                            {zsqrt_vector(8), kRunsHA, kRunsHA}, {zsqrt_vector(16), kRunsHA, kRunsHA});

static_assert(well_formed(zSqrt));

}  // namespace
}  // namespace plans
}  // namespace zvl
