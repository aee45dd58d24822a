// The kernels of Atan and Atan2: each cell of their plans (plan.h) from the
// variants of atan.h and atan2.h. Refused lanes go, lowest first, to the
// exact callouts, which report nothing.
//
// Included by the trig units inside their own context (see unit.h).
#pragma once

#include "kernels/common/unit.h"
#include "kernels/trig/atan/atan2.h"
#include "kernels/trig/atan/plan.h"

namespace {

using AtanFamily = PlannedFamily<zvl::plans::Atan, D1Shape, Letter<'A', AtanHA>, Letter<'L', AtanLA>,
                                 Letter<'E', AtanEP>, Letter<'O', AtanOlderHA>, Letter<'S', AtanEP1>>;
using Atan2Family =
    PlannedFamily<zvl::plans::Atan2, D2Shape, Letter<'A', Atan2HA>, Letter<'L', Atan2LA>,
                  Letter<'E', Atan2EP>, Letter<'O', Atan2OlderHA>>;

}  // namespace

ZVL_KERNELS_D1(Atan, AtanFamily)
ZVL_KERNELS_D2(Atan2, Atan2Family)
