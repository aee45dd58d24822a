// The thin kernels of the complex trigonometric and hyperbolic functions
// and their inverses: one call of the function's scalar routine per
// element. cos, sin, tan, asin and atan are the quarter turns of cosh,
// sinh, tanh, asinh and atanh inside their routines.
#pragma once

#include "kernels/common/unit.h"
#include "kernels/complex/scalars.h"
#include "kernels/complex/thin.h"
#include "kernels/complex/trig/plan.h"

namespace {

#define ZVL_COMPLEX_THIN(fam)                                                                    \
    using Z##fam##Family = PlannedFamily<zvl::plans::z##fam, Shape<1, 1, ZVLComplex16>,          \
                                         Letter<'T', ZThin<z##fam##_scalar>>>;
ZVL_COMPLEX_THIN(Cos)
ZVL_COMPLEX_THIN(Sin)
ZVL_COMPLEX_THIN(Tan)
ZVL_COMPLEX_THIN(Acos)
ZVL_COMPLEX_THIN(Asin)
ZVL_COMPLEX_THIN(Atan)
ZVL_COMPLEX_THIN(Cosh)
ZVL_COMPLEX_THIN(Sinh)
ZVL_COMPLEX_THIN(Tanh)
ZVL_COMPLEX_THIN(Acosh)
ZVL_COMPLEX_THIN(Asinh)
ZVL_COMPLEX_THIN(Atanh)
#undef ZVL_COMPLEX_THIN

}  // namespace

ZVL_KERNELS_Z1(Cos, ZCosFamily)
ZVL_KERNELS_Z1(Sin, ZSinFamily)
ZVL_KERNELS_Z1(Tan, ZTanFamily)
ZVL_KERNELS_Z1(Acos, ZAcosFamily)
ZVL_KERNELS_Z1(Asin, ZAsinFamily)
ZVL_KERNELS_Z1(Atan, ZAtanFamily)
ZVL_KERNELS_Z1(Cosh, ZCoshFamily)
ZVL_KERNELS_Z1(Sinh, ZSinhFamily)
ZVL_KERNELS_Z1(Tanh, ZTanhFamily)
ZVL_KERNELS_Z1(Acosh, ZAcoshFamily)
ZVL_KERNELS_Z1(Asinh, ZAsinhFamily)
ZVL_KERNELS_Z1(Atanh, ZAtanhFamily)
