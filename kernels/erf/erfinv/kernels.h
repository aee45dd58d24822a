// ErfInv's kernels: each cell of its plan (plan.h) from the bodies of
// erfinv.h. Special lanes go, lowest first, through the special routine;
// a non-zero status is reported and the element taken back from r.
//
// Included by the erf units inside their own context (see unit.h).
#pragma once

#include "kernels/common/twin.h"
#include "kernels/common/unit.h"
#include "kernels/erf/erfinv/erfinv.h"
#include "kernels/erf/erfinv/plan.h"

namespace {

// Blocks of four, then a pair, then one; a block's vectors evaluated two
// at a time as twins (twin.h), so that two Horner chains interleave.
template <class Body>
struct ErfInvKernel : PerTwin<Body>, Body {
    static constexpr bool pair_tail = true;
    static constexpr bool half_tail = true;
};

using ErfInvFamily =
    PlannedFamily<zvl::plans::ErfInv, D1Shape, Letter<'H', ErfInvKernel<ErfInvHA>>,
                  Letter<'L', ErfInvKernel<ErfInvLA>>, Letter<'E', ErfInvKernel<ErfInvEP>>>;

}  // namespace

ZVL_KERNELS_D1(ErfInv, ErfInvFamily)
