// Erfc's kernels: each cell of its plan (plan.h) from the bodies of erfc.h.
// The scratch form stores an underflowing element, reports status 4 and
// takes the element back from r, so a callback's replacement is kept.
//
// Included by the erf units inside their own context (see unit.h).
#pragma once

#include "kernels/common/unit.h"
#include "kernels/erf/erfc/erfc.h"
#include "kernels/erf/erfc/plan.h"

namespace {

template <class Body>
struct ErfcKernel : PerTwin<Body>, Body {
    static constexpr bool half_tail = true;
};

using ErfcFamily = PlannedFamily<zvl::plans::Erfc, D1Shape, Letter<'H', ErfcKernel<ErfcHA>>,
                                 Letter<'L', ErfcKernel<ErfcLA>>, Letter<'E', ErfcKernel<ErfcEP>>>;

}  // namespace

ZVL_KERNELS_D1(Erfc, ErfcFamily)
