// Atan and Atan2 by cpu type and accuracy mode (atan.h and atan2.h have the
// variants):
//
//   A  HA vector: the five reductions with the quotient in two words
//   L  LA vector: the reciprocal estimate, degree 43
//   E  EP vector: the same, degree 19
//   O  the older Atan HA: the five reductions with the division instruction
//      (the cpu types without the vector HA); Atan's with D = 1 + c|x| in
//      one word and the cubic term in one piece, Atan2's as the vector HA
//   S  EP of Atan at cpu type 1: the five reductions in single words with
//      the degree-11 polynomial
//
// Atan has the vector HA at cpu type 5 only, Atan2 from cpu type 2 up; at
// cpu types 0 and 1 Atan2's HA is O on the quotient (one pair at a time,
// the exact callout, took 25 ns a pair at cpu type 0, twice glibc's
// atan2). At cpu type 1 LA runs HA, at cpu type 0 LA and EP do; Atan2's EP
// at cpu type 1 is the vector EP. Vector kernels take 16 elements a block.
// Atan's O and S take blocks of eight on the restart form: a block with a
// refused element is redone element by element (one element at a time, O
// took 19.5 ns an element at cpu type 4; in blocks of four, 9; the lean O
// in blocks of eight 5.9, in blocks of four 6.2, and on the scratch loop
// in blocks of 16 6.5). Every kernel runs under the full MXCSR guard: the
// double-word sums and the callouts round to nearest whatever the caller's
// mode. Neither function reports a status.
#pragma once

#include "kernels/common/plan.h"

namespace zvl {
namespace plans {
namespace {

constexpr Cell atan_vector(char variant) { return own(variant, 16, Guard::mxcsr, Loop::scratch); }
// Blocks of eight that any refused element sends, whole, element by element
// through the callout or the same formula on one lane.
constexpr Cell atan_restart(char variant) { return own(variant, 8, Guard::mxcsr, Loop::restart); }

constexpr Row3 kAtanVectorRow = {atan_vector('A'), atan_vector('L'), atan_vector('E')};

constexpr Plan Atan = plan(
    {atan_restart('O'), kRunsHA, kRunsHA},
    {atan_restart('O'), kRunsHA, atan_restart('S')},
    {atan_restart('O'), atan_vector('L'), atan_vector('E')},
    {atan_restart('O'), atan_vector('L'), atan_vector('E')},
    {atan_restart('O'), atan_vector('L'), atan_vector('E')},
    kAtanVectorRow);

constexpr Plan Atan2 = plan(
    {atan_vector('O'), kRunsHA, kRunsHA},
    {atan_vector('O'), kRunsHA, atan_vector('E')},
    kAtanVectorRow, kAtanVectorRow, kAtanVectorRow, kAtanVectorRow);

static_assert(well_formed(Atan) && well_formed(Atan2));

}  // namespace
}  // namespace plans
}  // namespace zvl
