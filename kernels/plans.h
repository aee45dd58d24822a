// The plans of every kernel subsystem's families, for the code outside the
// per-cpu units: frame/ fills the kernel sets from them, the tests and tools
// read them. A new subsystem adds its family list here.
#pragma once

#include "kernels/explog/families.h"
#include "kernels/trig/families.h"
#include "kernels/erf/families.h"
#include "kernels/complex/families.h"
