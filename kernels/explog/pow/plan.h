// Pow and Powx by cpu type and accuracy mode: A HA, B LA, C EP, all in the
// scratch form, blocks of 8 at types 2 to 5 and 4 at types 0 and 1. HA at
// types 0, 1 and 5 and LA at type 1 run under the full MXCSR guard, EP at
// type 1 under the x87 0x200 guard; Powx EP runs under that guard at every
// type from 1 on.
#pragma once

#include "kernels/common/plan.h"

namespace zvl {
namespace plans {
namespace {

constexpr int pow_width(int cpu) { return cpu >= 2 ? 8 : 4; }

constexpr Guard pow_guard(int cpu, int col, bool powx) {
    if (col == 0) return cpu == 5 || cpu <= 1 ? Guard::mxcsr : Guard::none;
    if (col == 2 && (powx || cpu == 1)) return Guard::x87_53;
    return cpu == 1 && col == 1 ? Guard::mxcsr : Guard::none;
}

constexpr Row3 pow_row(int cpu, bool powx) {
    return {own('A', pow_width(cpu), pow_guard(cpu, 0, powx), Loop::scratch),
            own('B', pow_width(cpu), pow_guard(cpu, 1, powx), Loop::scratch),
            own('C', pow_width(cpu), pow_guard(cpu, 2, powx), Loop::scratch)};
}

constexpr Plan pow_plan(bool powx) {
    return plan({pow_row(0, powx).ha, kRunsHA, kRunsHA}, pow_row(1, powx), pow_row(2, powx),
                pow_row(3, powx), pow_row(4, powx), pow_row(5, powx));
}
constexpr Plan Pow = pow_plan(false);
constexpr Plan Powx = pow_plan(true);

static_assert(well_formed(Pow) && well_formed(Powx));

}  // namespace
}  // namespace plans
}  // namespace zvl
