// The kernels of Sinh, Cosh and Tanh: each cell of their plans (plan.h)
// from the variants of sinh_cosh.h and tanh.h.
//
// Included by the trig units inside their own context (see unit.h).
#pragma once

#include "kernels/common/unit.h"
#include "kernels/trig/hyperbolic/plan.h"
#include "kernels/trig/hyperbolic/sinh_cosh.h"
#include "kernels/trig/hyperbolic/tanh.h"

namespace {

using SinhFamily = PlannedFamily<zvl::plans::Sinh, D1Shape, Letter<'H', SinhHA>, Letter<'L', SinhLA>,
                                 Letter<'E', SinhEP>>;
using CoshFamily = PlannedFamily<zvl::plans::Cosh, D1Shape, Letter<'H', CoshHA>, Letter<'L', CoshLA>,
                                 Letter<'E', CoshLA>>;
using TanhFamily = PlannedFamily<zvl::plans::Tanh, D1Shape, Letter<'H', TanhHA>, Letter<'L', TanhLA>>;

}  // namespace

ZVL_KERNELS_D1(Sinh, SinhFamily)
ZVL_KERNELS_D1(Cosh, CoshFamily)
ZVL_KERNELS_D1(Tanh, TanhFamily)
