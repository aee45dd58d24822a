// Log10: r = log10(a).
//
// Two accuracy levels (formulas in body.h; the kernels by cpu type in
// plan.h): HA, restart form under
// the full MXCSR guard, and EP, restart form under the x87 guard, at every
// cpu type; W = 4 (W = 2 at type 0). The LA slot runs the HA kernel at
// every cpu type, and at type 0 so does the EP slot; there is no LA kernel.
//
// Refused elements go to the callout: in HA zero, denormals, negatives,
// infinities and NaNs (one signed compare of the high word); in EP, which
// scales denormals in line, all but 0 < x < inf. Statuses: ZVL_STATUS_SING
// for zeros, ZVL_STATUS_ERRDOM for negatives and -inf; +inf, NaN and
// denormals report nothing. log10(1) is +0: the row holding 1 has R = 1
// and T = 0.
//
// Included by the explog units inside their own context (see unit.h).
#pragma once

#include "kernels/common/unit.h"
#include "kernels/explog/log10/body.h"
#include "kernels/explog/log10/plan.h"

namespace {

using Log10Family = PlannedFamily<zvl::plans::Log10, D1Shape, Letter<'H', RestartLog<Log10HA, PartsD>>,
                                  Letter<'P', RestartLog<Log10EP, SplitScaled>>>;

}  // namespace

ZVL_KERNELS_D1(Log10, Log10Family)
