// The families of the complex kernels (see kernels/common/family_list.h).
#pragma once

#include "kernels/common/family_list.h"

#undef ZVL_SUBSYSTEM
#define ZVL_SUBSYSTEM complex
#include ZVL_FAMILY(sqrt)
#include ZVL_FAMILY(exp)
#include ZVL_FAMILY(ln)
#include ZVL_FAMILY(pow)
#include ZVL_FAMILY(trig)
