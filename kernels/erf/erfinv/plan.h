// ErfInv by cpu type and accuracy mode (erfinv.h has HA, LA and EP): blocks
// of four, then a pair, then one (kernels.h), with no guard at cpu types 1
// to 5; at type 5 on 256-bit vectors, HA and LA two blocks of four side by
// side (then a half block of four). At cpu type 0 HA runs one element at a
// time under the x87 control word at 53 bits, LA runs it, and EP is a
// kernel of its own.
#pragma once

#include "kernels/erf/erf/plan.h"

namespace zvl {
namespace plans {
namespace {

constexpr Plan ErfInv = plan({own('H', 1, Guard::x87_53, Loop::scratch, Wrap::scalar), kRunsHA,
                              erf_blocks(0, 'E', Guard::none)},
                             erf_row(1, Guard::none), erf_row(2, Guard::none), erf_row(3, Guard::none),
                             erf_row(4, Guard::none), erf_row(5, Guard::none, Wrap::unit));

static_assert(well_formed(ErfInv));

}  // namespace
}  // namespace plans
}  // namespace zvl
