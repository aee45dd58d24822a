// The kernels of Asin and Acos: each cell of their plans (plan.h) from the
// variants of asin_acos.h. Lanes with |x| >= 1 or NaN go, lowest first, to
// the fix-up; an argument beyond +-1 is stored as the default NaN, reported
// with ZVL_STATUS_ERRDOM, and taken back from r.
//
// Included by the trig units inside their own context (see unit.h).
#pragma once

#include "kernels/common/unit.h"
#include "kernels/trig/asin_acos/asin_acos.h"
#include "kernels/trig/asin_acos/plan.h"

namespace {

using AsinFamily =
    PlannedFamily<zvl::plans::Asin, D1Shape, Letter<'H', AsinHA>, Letter<'L', AsinLA>>;
using AcosFamily =
    PlannedFamily<zvl::plans::Acos, D1Shape, Letter<'H', AcosHA>, Letter<'L', AcosLA>>;

}  // namespace

ZVL_KERNELS_D1(Asin, AsinFamily)
ZVL_KERNELS_D1(Acos, AcosFamily)
