// The head of every per-cpu unit. The unit defines ZVL_CPU (its label) and
// ZVL_CPU_INDEX (0 .. 5) and is compiled with exactly that cpu type's
// instruction set. `V` is the unit's vector wrapper and `kCpu` its cpu type,
// which also picks the copy of the error pipeline its kernels call.
#pragma once

#include "kernels/common/fp_guard.h"
#include "kernels/common/isa.h"
#include "kernels/common/kernel_types.h"
#include "kernels/common/loops.h"

namespace {

constexpr int kCpu = ZVL_CPU_INDEX;

#if ZVL_CPU_INDEX == 5
using V = Avx;
#elif ZVL_CPU_INDEX >= 3
using V = Sse41;
#elif ZVL_CPU_INDEX >= 1
using V = Sse3;
#else
using V = Sse2;
#endif

}  // namespace
