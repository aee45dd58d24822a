// Complex Exp by cpu type and accuracy mode: one vector kernel, 'V', four
// elements a block (two pairs), whose refused elements go to zExp_scalar.
// LA and EP run the HA kernel at types 0 to 3; types 4 and 5 have three
// copies of it, alike in every instruction and constant.
#pragma once

#include "kernels/complex/kinds.h"

namespace zvl {
namespace plans {
namespace {

constexpr Cell kZExp = complex_vector('V', 4);

constexpr Plan zExp = plan({kZExp, kRunsHA, kRunsHA}, {kZExp, kRunsHA, kRunsHA}, {kZExp, kRunsHA, kRunsHA},
                           {kZExp, kRunsHA, kRunsHA}, {kZExp, kZExp, kZExp}, {kZExp, kZExp, kZExp});

static_assert(well_formed(zExp));

}  // namespace
}  // namespace plans
}  // namespace zvl
