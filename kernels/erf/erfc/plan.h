// Erfc by cpu type and accuracy mode (erfc.h has HA, LA and EP): the same
// frame as Erf's (kernels/erf/erf/plan.h), the underflow reports from the
// scratch form's special lanes.
#pragma once

#include "kernels/erf/erf/plan.h"

namespace zvl {
namespace plans {
namespace {

// As Erf's, with EP too two blocks side by side at cpu type 5: its
// exponential and product keep it bound by latency.
constexpr Plan Erfc = plan({erf_blocks(0, 'H', kErfGuard), kRunsHA, kRunsHA}, erf_row(1, kErfGuard),
                           erf_row(2, kErfGuard), erf_row(3, kErfGuard), erf_row(4, kErfGuard),
                           erf_row(5, kErfGuard, Wrap::unit, true));

static_assert(well_formed(Erfc));

}  // namespace
}  // namespace plans
}  // namespace zvl
