// The families of the exponential, logarithm, power, root and rounding
// kernels (see kernels/common/family_list.h).
#pragma once

#include "kernels/common/family_list.h"

#undef ZVL_SUBSYSTEM
#define ZVL_SUBSYSTEM explog
#include ZVL_FAMILY(inv_div)
#include ZVL_FAMILY(roots)
#include ZVL_FAMILY(exp)
#include ZVL_FAMILY(pow)
#include ZVL_FAMILY(ln)
#include ZVL_FAMILY(log10)
#include ZVL_FAMILY(rounding)
