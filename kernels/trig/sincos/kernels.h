// The kernels of Sin and Cos: each cell of their plans (plan.h) from the
// variants of sincos.h.
//
// Included by the trig units inside their own context (see unit.h).
#pragma once

#include "kernels/common/unit.h"
#include "kernels/trig/sincos/plan.h"
#include "kernels/trig/sincos/sincos.h"

namespace {

using SinFamily = PlannedFamily<zvl::plans::Sin, D1Shape, Letter<'A', TrigA<SinRows512>>,
                                Letter<'B', TrigB<SinRows64>>, Letter<'C', TrigByPi<true, SinPoly15>>,
                                Letter<'D', TrigByPi<true, SinPoly9>>, Letter<'E', TrigShort<true>>>;
using CosFamily = PlannedFamily<zvl::plans::Cos, D1Shape, Letter<'A', TrigA<CosRows512>>,
                                Letter<'B', TrigB<CosRows64>>, Letter<'C', TrigByPi<false, SinPoly15>>,
                                Letter<'D', TrigByPi<false, SinPoly9>>, Letter<'E', TrigShort<false>>>;

}  // namespace

ZVL_KERNELS_D1(Sin, SinFamily)
ZVL_KERNELS_D1(Cos, CosFamily)
