// Atan and Atan2 by cpu type and accuracy mode (atan.h and atan2.h have the
// variants):
//
//   A  HA vector: the five reductions with the quotient in two words
//   L  LA vector: the reciprocal estimate, degree 43
//   E  EP vector: the same, degree 19
//   O  Atan HA element by element: the five reductions with the division
//      instruction (the cpu types without the vector HA)
//   S  EP of cpu type 1, element by element: the same with the degree-11
//      polynomial (Atan); the EP formula on one lane (Atan2)
//   H  Atan2 HA element by element: the exact callout itself
//
// Atan has the vector HA at cpu type 5 only, Atan2 from cpu type 2 up. At
// cpu type 1 LA runs HA, at cpu type 0 LA and EP do. Vector kernels take 16
// elements a block. Every kernel runs under the full MXCSR guard: the
// double-word sums and the callouts round to nearest whatever the caller's
// mode. Neither function reports a status.
#pragma once

#include "kernels/common/plan.h"

namespace zvl {
namespace plans {
namespace {

constexpr Cell atan_vector(char variant) { return own(variant, 16, Guard::mxcsr, Loop::scratch); }
constexpr Cell atan_element(char variant) {
    return own(variant, 1, Guard::mxcsr, Loop::restart, Wrap::scalar);
}

constexpr Row3 kAtanVectorRow = {atan_vector('A'), atan_vector('L'), atan_vector('E')};

constexpr Plan Atan = plan(
    {atan_element('O'), kRunsHA, kRunsHA},
    {atan_element('O'), kRunsHA, atan_element('S')},
    {atan_element('O'), atan_vector('L'), atan_vector('E')},
    {atan_element('O'), atan_vector('L'), atan_vector('E')},
    {atan_element('O'), atan_vector('L'), atan_vector('E')},
    kAtanVectorRow);

constexpr Plan Atan2 = plan(
    {atan_element('H'), kRunsHA, kRunsHA},
    {atan_element('H'), kRunsHA, atan_element('S')},
    kAtanVectorRow, kAtanVectorRow, kAtanVectorRow, kAtanVectorRow);

static_assert(well_formed(Atan) && well_formed(Atan2));

}  // namespace
}  // namespace plans
}  // namespace zvl
