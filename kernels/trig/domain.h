// An argument outside a function's domain, for the callouts and fix-ups of
// the inverse trigonometric and hyperbolic families.
#pragma once

#include <cstdint>

namespace zvl {

// Stores the default NaN (0xfff8000000000000) to *r, raises the invalid flag
// (a signalling NaN times 1) and returns ZVL_STATUS_ERRDOM.
int32_t domain_error(double* r);

}  // namespace zvl
