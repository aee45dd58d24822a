// Exp's kernels: each cell of its plan (plan.h) from the variants of exp.h.
//
// Included by the explog units inside their own context (see unit.h).
#pragma once

#include "kernels/common/unit.h"
#include "kernels/explog/exp/exp.h"
#include "kernels/explog/exp/plan.h"

namespace {

using ExpFamily = PlannedFamily<zvl::plans::Exp, D1Shape, Letter<'A', ExpA>, Letter<'B', ExpB>,
                                Letter<'C', ExpC>, Letter<'D', ExpD>, Letter<'E', ExpE>>;

}  // namespace

ZVL_KERNELS_D1(Exp, ExpFamily)
