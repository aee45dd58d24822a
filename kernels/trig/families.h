// The families of the trigonometric kernels (see kernels/common/family_list.h).
#pragma once

#include "kernels/common/family_list.h"

#undef ZVL_SUBSYSTEM
#define ZVL_SUBSYSTEM trig
#include ZVL_FAMILY(sincos)
#include ZVL_FAMILY(tan)
#include ZVL_FAMILY(atan)
#include ZVL_FAMILY(asin_acos)
#include ZVL_FAMILY(hyperbolic)
#include ZVL_FAMILY(inverse_hyperbolic)
