// The kernels of Sqrt, InvSqrt, Cbrt and InvCbrt: each cell of their plans
// (plan.h) from the variants of sqrt.h and cbrt.h.
//
// Included by the explog units inside their own context (see unit.h).
#pragma once

#include "kernels/common/unit.h"
#include "kernels/explog/roots/cbrt.h"
#include "kernels/explog/roots/plan.h"
#include "kernels/explog/roots/sqrt.h"

namespace {

using SqrtFamily = PlannedFamily<zvl::plans::Sqrt, D1Shape, Letter<'A', SqrtInstr>, Letter<'B', SqrtEst>>;
using InvSqrtFamily =
    PlannedFamily<zvl::plans::InvSqrt, D1Shape, Letter<'A', InvSqrtHA>, Letter<'B', InvSqrtEst<true>>,
                  Letter<'C', InvSqrtEst<false>>>;
using CbrtFamily = PlannedFamily<zvl::plans::Cbrt, D1Shape, Letter<'A', CbrtKernel<CbrtBodyHA>>,
                                 Letter<'B', CbrtKernel<CbrtBody<true>>>, Letter<'C', CbrtKernel<CbrtBody<false>>>,
                                 Letter<'E', CbrtKernel<CbrtBody<true>>>, Letter<'F', CbrtKernel<CbrtBody<false>>>>;
using InvCbrtFamily = PlannedFamily<zvl::plans::InvCbrt, D1Shape,
                                    Letter<'A', InvCbrtKernel<InvCbrtBodyHA, UpToRecip>>,
                                    Letter<'B', InvCbrtKernel<InvCbrtBody<true>>>,
                                    Letter<'C', InvCbrtKernel<InvCbrtBody<false>>>,
                                    Letter<'E', InvCbrtKernel<InvCbrtBody<true>>>,
                                    Letter<'F', InvCbrtKernel<InvCbrtBody<false>>>>;

}  // namespace

ZVL_KERNELS_D1(Sqrt, SqrtFamily)
ZVL_KERNELS_D1(InvSqrt, InvSqrtFamily)
ZVL_KERNELS_D1(Cbrt, CbrtFamily)
ZVL_KERNELS_D1(InvCbrt, InvCbrtFamily)
