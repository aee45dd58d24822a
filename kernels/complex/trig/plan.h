// The complex trigonometric and hyperbolic functions and their inverses by
// cpu type and accuracy mode: each a thin kernel over its scalar routine
// (kernels/complex/scalars.h) on every cpu type, LA and EP running HA.
#pragma once

#include "kernels/complex/kinds.h"

namespace zvl {
namespace plans {
namespace {

constexpr Plan zCos = kComplexThinPlan, zSin = kComplexThinPlan, zTan = kComplexThinPlan;
constexpr Plan zAcos = kComplexThinPlan, zAsin = kComplexThinPlan, zAtan = kComplexThinPlan;
constexpr Plan zCosh = kComplexThinPlan, zSinh = kComplexThinPlan, zTanh = kComplexThinPlan;
constexpr Plan zAcosh = kComplexThinPlan, zAsinh = kComplexThinPlan, zAtanh = kComplexThinPlan;

static_assert(well_formed(kComplexThinPlan));

}  // namespace
}  // namespace plans
}  // namespace zvl
