// The rounding family by cpu type: one kernel each, no accuracy modes.
//
//   M  bit masks, one element at a time
//   S  the shifter 2^52 added and taken away, in the rounding of the guard
//      or of the caller
//   I  the rounding instruction with the function's immediate
//   H  Round: the shifter or the instruction to nearest, then a test for
//      halves (h with the guard: roundpd to nearest under it)
#pragma once

#include "kernels/common/plan.h"

namespace zvl {
namespace plans {
namespace {

constexpr Cell kByElement = own('M', 1, Guard::none, Loop::exact, Wrap::scalar);

// Ceil, Floor and Trunc: the guard turns the shifter's rounding their way.
constexpr Plan directed(Guard g) {
    return plan1(kByElement, own('S', 4, g, Loop::exact), own('S', 4, g, Loop::exact),
                 own('I', 8, Guard::none, Loop::exact), own('I', 8, Guard::none, Loop::exact),
                 own('I', 16, Guard::none, Loop::exact));
}
constexpr Plan Ceil = directed(Guard::mxcsr_up);
constexpr Plan Floor = directed(Guard::mxcsr_down);
constexpr Plan Trunc = directed(Guard::mxcsr_zero);

// Rint and NearbyInt round in the caller's mode; type 4 runs type 3's kernel.
// The instruction goes in blocks as wide as Ceil's: with one 128-bit vector
// a round the loop, not the instruction, set the pace.
constexpr Plan current_mode() {
    return plan1(own('S', 1, Guard::none, Loop::exact, Wrap::scalar),
                 own('S', 4, Guard::none, Loop::exact, Wrap::v128),
                 own('S', 4, Guard::none, Loop::exact, Wrap::v128),
                 own('I', 8, Guard::none, Loop::exact), runs_cpu(3),
                 own('I', 16, Guard::none, Loop::exact));
}
constexpr Plan Rint = current_mode();
constexpr Plan NearbyInt = current_mode();

// Round: blocks of two vectors at types 3 to 5.
constexpr Plan Round = plan1(kByElement, own('H', 4, Guard::mxcsr, Loop::exact),
                             own('H', 4, Guard::none, Loop::exact), own('h', 8, Guard::mxcsr, Loop::exact),
                             own('h', 8, Guard::mxcsr, Loop::exact), own('H', 8, Guard::none, Loop::exact));

constexpr Cell kModfShifter = own('S', 4, Guard::mxcsr_zero, Loop::exact, Wrap::v128);
constexpr Plan Modf = plan1(kByElement, kModfShifter, kModfShifter, kModfShifter, kModfShifter,
                            kModfShifter);

static_assert(well_formed(Ceil) && well_formed(Rint) && well_formed(Round) && well_formed(Modf));

}  // namespace
}  // namespace plans
}  // namespace zvl
