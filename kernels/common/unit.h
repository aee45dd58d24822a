// The head of every per-cpu unit. The unit defines ZVL_CPU_INDEX (0 .. 5)
// and is compiled with exactly that cpu type's instruction set; ZVL_CPU, its
// label, follows. `V` is the unit's vector wrapper and `kCpu` its cpu type,
// which also picks the copy of the error pipeline its kernels call.
#pragma once

#if ZVL_CPU_INDEX == 0
#define ZVL_CPU ex
#elif ZVL_CPU_INDEX == 1
#define ZVL_CPU e7
#elif ZVL_CPU_INDEX == 2
#define ZVL_CPU u8
#elif ZVL_CPU_INDEX == 3
#define ZVL_CPU y8
#elif ZVL_CPU_INDEX == 4
#define ZVL_CPU h8
#elif ZVL_CPU_INDEX == 5
#define ZVL_CPU e9
#else
#error "a per-cpu unit defines ZVL_CPU_INDEX 0 to 5"
#endif

#include "kernels/common/fp_guard.h"
#include "kernels/common/isa.h"
#include "kernels/common/kernel_types.h"
#include "kernels/common/loops.h"
#include "kernels/common/plan.h"

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

// 128-bit vectors at every cpu type: VEX-encoded at type 5.
#ifdef __SSE4_1__
using V128 = Sse41;
#else
using V128 = V;
#endif

// The wrapper a plan's cell names.
template <zvl::Wrap X>
using WrapFor = std::conditional_t<X == zvl::Wrap::unit, V,
                                   std::conditional_t<X == zvl::Wrap::scalar, Scalar, V128>>;

}  // namespace

#include "kernels/common/family.h"
