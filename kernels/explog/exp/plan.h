// Exp by cpu type and accuracy mode (exp.h has the variants A to E).
#pragma once

#include "kernels/common/plan.h"

namespace zvl {
namespace plans {
namespace {

constexpr Cell kExpA = own('A', 8, Guard::mxcsr, Loop::restart);

constexpr Plan Exp = plan(
    {kExpA, kRunsHA, kRunsHA},
    {kExpA, own('D', 4, Guard::mxcsr, Loop::restart), own('E', 4, Guard::mxcsr, Loop::restart)},
    {kExpA, own('D', 4, Guard::mxcsr, Loop::restart), own('E', 4, Guard::mxcsr, Loop::restart)},
    // the x87 guard is part of B's frame; its arithmetic is SSE in the
    // caller's MXCSR mode
    {kExpA, own('B', 4, Guard::x87_53, Loop::restart), own('E', 4, Guard::mxcsr, Loop::restart)},
    {kExpA, own('B', 8, Guard::x87_53, Loop::restart), own('C', 8, Guard::none, Loop::scratch)},
    {own('A', 8, Guard::none, Loop::scratch), own('B', 8, Guard::none, Loop::scratch),
     own('C', 8, Guard::none, Loop::scratch)});

static_assert(well_formed(Exp));

}  // namespace
}  // namespace plans
}  // namespace zvl
