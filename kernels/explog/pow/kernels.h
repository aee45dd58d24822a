// The kernels of Pow and Powx: each cell of their plans (plan.h), from the
// blocks of pow.h and powx.h.
//
// Included by the explog units inside their own context (see unit.h).
#pragma once

#include "kernels/common/unit.h"
#include "kernels/explog/pow/plan.h"
#include "kernels/explog/pow/pow.h"
#include "kernels/explog/pow/powx.h"

namespace {

using PowFamily = PlannedFamily<zvl::plans::Pow, D2Shape, Letter<'A', PowBlock<PowMode::HA>>,
                                Letter<'B', PowBlock<PowMode::LA>>, Letter<'C', PowBlock<PowMode::EP>>>;

}  // namespace

ZVL_KERNELS_D2(Pow, PowFamily)
ZVL_KERNELS_DX(Powx, PowxFamily)
