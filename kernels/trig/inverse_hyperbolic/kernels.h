// The kernels of Asinh, Acosh and Atanh: each cell of their plans (plan.h)
// from the variants of asinh.h, acosh.h and atanh.h.
//
// Included by the trig units inside their own context (see unit.h).
#pragma once

#include "kernels/common/unit.h"
#include "kernels/trig/inverse_hyperbolic/acosh.h"
#include "kernels/trig/inverse_hyperbolic/asinh.h"
#include "kernels/trig/inverse_hyperbolic/atanh.h"
#include "kernels/trig/inverse_hyperbolic/plan.h"

namespace {

using AsinhFamily = PlannedFamily<zvl::plans::Asinh, D1Shape, Letter<'H', AsinhHA>, Letter<'L', AsinhLA>>;
using AcoshFamily = PlannedFamily<zvl::plans::Acosh, D1Shape, Letter<'H', AcoshHA>, Letter<'L', AcoshLA>>;
using AtanhFamily = PlannedFamily<zvl::plans::Atanh, D1Shape, Letter<'H', AtanhHA>, Letter<'L', AtanhLA>>;

}  // namespace

ZVL_KERNELS_D1(Asinh, AsinhFamily)
ZVL_KERNELS_D1(Acosh, AcoshFamily)
ZVL_KERNELS_D1(Atanh, AtanhFamily)
