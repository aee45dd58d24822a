// The kernels of Tan: each cell of its plan (plan.h) from the variants of
// tan.h.
//
// Included by the trig units inside their own context (see unit.h).
#pragma once

#include "kernels/common/unit.h"
#include "kernels/trig/tan/plan.h"
#include "kernels/trig/tan/tan.h"

namespace {

using TanFamily = PlannedFamily<zvl::plans::Tan, D1Shape, Letter<'H', TanBatch>, Letter<'Z', TanSteps>,
                                Letter<'L', TanRational<TanLA>>, Letter<'P', TanRational<TanEP>>>;

}  // namespace

ZVL_KERNELS_D1(Tan, TanFamily)
