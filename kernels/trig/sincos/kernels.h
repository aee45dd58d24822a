// The kernels of Sin, Cos and SinCos: each cell of their plans (plan.h) from the
// variants of sincos.h and both.h.
//
// Included by the trig units inside their own context (see unit.h).
#pragma once

#include "kernels/common/unit.h"
#include "kernels/trig/sincos/plan.h"
#include "kernels/trig/sincos/both.h"
#include "kernels/trig/sincos/sincos.h"

namespace {

using SinFamily = PlannedFamily<zvl::plans::Sin, D1Shape, Letter<'A', TrigA<SinRows512>>,
                                Letter<'B', TrigB<SinRows64>>, Letter<'C', TrigByPi<true, SinPoly15>>,
                                Letter<'D', TrigByPi<true, SinPoly9>>, Letter<'E', TrigShort<true>>>;
using CosFamily = PlannedFamily<zvl::plans::Cos, D1Shape, Letter<'A', TrigA<CosRows512>>,
                                Letter<'B', TrigB<CosRows64>>, Letter<'C', TrigByPi<false, SinPoly15>>,
                                Letter<'D', TrigByPi<false, SinPoly9>>, Letter<'E', TrigShort<false>>>;

using SinCosFamily = PlannedFamily<zvl::plans::SinCos, D12Shape, Letter<'A', SinCosA>, Letter<'F', SinCosF>,
                                   Letter<'C', SinCosByPi<SinPoly15>>, Letter<'D', SinCosByPi<SinPoly9>>,
                                   Letter<'H', SinCosH>, Letter<'E', SinCosE>>;

}  // namespace

ZVL_KERNELS_D1(Sin, SinFamily)
ZVL_KERNELS_D1(Cos, CosFamily)
ZVL_KERNELS_D12(SinCos, SinCosFamily)
