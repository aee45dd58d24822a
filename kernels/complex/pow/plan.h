// Complex Pow and Powx by cpu type and accuracy mode: thin kernels over
// zPow_scalar on every cpu type, LA and EP running HA. Besides the x87
// word they clear MXCSR's rounding and flush-to-zero bits for their
// length, as zPow_scalar's four products are double arithmetic.
#pragma once

#include "kernels/complex/kinds.h"

namespace zvl {
namespace plans {
namespace {

constexpr Cell kZPowThin = own('T', 1, Guard::x87_64_short, Loop::thin, Wrap::scalar);

constexpr Plan zPow = plan({kZPowThin, kRunsHA, kRunsHA}, {kZPowThin, kRunsHA, kRunsHA},
                           {kZPowThin, kRunsHA, kRunsHA}, {kZPowThin, kRunsHA, kRunsHA},
                           {kZPowThin, kRunsHA, kRunsHA}, {kZPowThin, kRunsHA, kRunsHA});
constexpr Plan zPowx = zPow;

static_assert(well_formed(zPow));

}  // namespace
}  // namespace plans
}  // namespace zvl
