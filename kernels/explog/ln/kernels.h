// Ln's kernels: each cell of its plan (plan.h) from the variants of ln.h.
//
// Included by the explog units inside their own context (see unit.h).
#pragma once

#include "kernels/common/unit.h"
#include "kernels/explog/ln/ln.h"
#include "kernels/explog/ln/plan.h"

namespace {

using LnFamily = PlannedFamily<zvl::plans::Ln, D1Shape, Letter<'A', LnA>, Letter<'B', LnB>, Letter<'C', LnC>,
                               Letter<'D', RestartLog<LnD, PartsD>>, Letter<'E', RestartLog<LnE, SplitScaled>>>;

}  // namespace

ZVL_KERNELS_D1(Ln, LnFamily)
