// The kernels of Atan and Atan2: each cell of their plans (plan.h) from the
// variants of atan.h and atan2.h. Refused lanes go, lowest first, to the
// exact callouts, which report nothing.
//
// Included by the trig units inside their own context (see unit.h).
#pragma once

#include "kernels/common/unit.h"
#include "kernels/trig/atan/atan.h"
#include "kernels/trig/atan/plan.h"

namespace {

using AtanFamily = PlannedFamily<zvl::plans::Atan, D1Shape, Letter<'A', AtanHA>, Letter<'L', AtanLA>,
                                 Letter<'E', AtanEP>, Letter<'O', AtanOlderHA>, Letter<'S', AtanEP1>>;
}  // namespace

ZVL_KERNELS_D1(Atan, AtanFamily)
