// The kernels of Inv and Div: each cell of their plans (plan.h) from the
// variants of inv_div.h. LA and EP are one algorithm; only the name
// they report under differs.
//
// Included by the explog units inside their own context (see unit.h).
#pragma once

#include "kernels/common/unit.h"
#include "kernels/explog/inv_div/inv_div.h"
#include "kernels/explog/inv_div/plan.h"

namespace {

using InvFamily = PlannedFamily<zvl::plans::Inv, D1Shape, Letter<'A', InvHA>, Letter<'B', InvPairs>,
                                Letter<'C', InvLA4>, Letter<'D', InvLA5>>;
using DivFamily = PlannedFamily<zvl::plans::Div, D2Shape, Letter<'A', DivHA>, Letter<'B', DivPairs>,
                                Letter<'C', DivLA4>, Letter<'D', DivLA5>>;

}  // namespace

ZVL_KERNELS_D1(Inv, InvFamily)
ZVL_KERNELS_D2(Div, DivFamily)
