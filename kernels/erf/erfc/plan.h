// Erfc by cpu type and accuracy mode (erfc.h has HA, LA and EP): the same
// frame as Erf's (kernels/erf/erf/plan.h), the underflow reports from the
// scratch form's special lanes.
#pragma once

#include "kernels/erf/erf/plan.h"

namespace zvl {
namespace plans {
namespace {

constexpr Plan Erfc = Erf;

}  // namespace
}  // namespace plans
}  // namespace zvl
