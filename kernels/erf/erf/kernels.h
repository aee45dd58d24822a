// Erf's kernels: each cell of its plan (plan.h) from the bodies of erf.h.
// Erf reports nothing: no lane is ever special and the callout never runs.
//
// Included by the erf units inside their own context (see unit.h).
#pragma once

#include "kernels/common/unit.h"
#include "kernels/erf/erf/erf.h"
#include "kernels/erf/erf/plan.h"

namespace {

template <class Body>
struct ErfKernel : PerTwin<Body> {
    static constexpr bool half_tail = true;
    template <class V>
    static int special(typename V::vd) {
        return 0;
    }
    static int32_t callout(const double*, double*) { return 0; }
};

using ErfFamily = PlannedFamily<zvl::plans::Erf, D1Shape, Letter<'H', ErfKernel<ErfHA>>,
                                Letter<'L', ErfKernel<ErfLA>>, Letter<'E', ErfKernel<ErfEP>>>;

}  // namespace

ZVL_KERNELS_D1(Erf, ErfFamily)
