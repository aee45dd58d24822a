// The families of the error functions: Erf, Erfc and ErfInv (see
// kernels/common/family_list.h).
#pragma once

#include "kernels/common/family_list.h"

#undef ZVL_SUBSYSTEM
#define ZVL_SUBSYSTEM erf
#include ZVL_FAMILY(erf)
#include ZVL_FAMILY(erfc)
#include ZVL_FAMILY(erfinv)
