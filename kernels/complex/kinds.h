// The kinds of complex kernel, by function, cpu type and accuracy mode:
//
//   function                     types 0, 1     types 2 to 4   type 5         LA and EP
//   Log10, Pow, Powx and the     thin           thin           thin           the HA kernel of the
//   trigonometric, hyperbolic                                                 same cpu type
//   and inverse families
//   Exp                          vector         vector         vector         types 0 to 3 the HA
//                                                                             kernel; 4 and 5 three
//                                                                             copies of one kernel
//   Ln                           vector         vector         vector (VEX)   type 0 the HA kernel;
//                                                                             1 to 5 one kernel per mode
//   Sqrt                         thin, then     vector         vector (VEX)   the HA kernel
//                                four scalar
//                                lanes at 1
//
// So accuracy mode changes nothing for 16 of the 18 functions, and only Ln
// is three kernels. A thin kernel runs the function's scalar routine once
// per element under the x87 control word at the 64-bit significand and
// round to nearest (set only if it differs, and restored), and leaves
// MXCSR alone (Pow's and Powx's clear its rounding and flush-to-zero bits
// too: their four products are double arithmetic); a vector kernel also clears MXCSR's rounding and
// flush-to-zero bits for its length, and gives the lanes it refuses to the
// scalar routine. No complex kernel reports anything.
#pragma once

#include "kernels/common/plan.h"

namespace zvl {
namespace plans {
namespace {

// The thin kernel: the family's variant 'T', its scalar routine.
constexpr Cell kComplexThin = own('T', 1, Guard::x87_64, Loop::thin, Wrap::scalar);
// A vector kernel of W elements a block on the unit's vectors.
constexpr Cell complex_vector(char variant, int width) {
    return own(variant, width, Guard::x87_64_short, Loop::zblock);
}

// A family of thin kernels alone.
constexpr Plan kComplexThinPlan = plan({kComplexThin, kRunsHA, kRunsHA}, {kComplexThin, kRunsHA, kRunsHA},
                                       {kComplexThin, kRunsHA, kRunsHA}, {kComplexThin, kRunsHA, kRunsHA},
                                       {kComplexThin, kRunsHA, kRunsHA}, {kComplexThin, kRunsHA, kRunsHA});

}  // namespace
}  // namespace plans
}  // namespace zvl
