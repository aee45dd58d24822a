// The families of the trigonometric kernels (see kernels/common/family_list.h).
#pragma once

#include "kernels/common/family_list.h"

#undef ZVL_SUBSYSTEM
#define ZVL_SUBSYSTEM trig
#include ZVL_FAMILY(sincos)
#include ZVL_FAMILY(tan)
