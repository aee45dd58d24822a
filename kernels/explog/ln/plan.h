// Ln by cpu type and accuracy mode (ln.h has the variants A to E).
#pragma once

#include "kernels/common/plan.h"

namespace zvl {
namespace plans {
namespace {

// D and Log10's H: pivot 0.7495 in the restart form, two elements a block
// at type 0 and four above.
constexpr Cell log_d(int cpu, char variant) {
    return own(variant, cpu == 0 ? 2 : 4, Guard::mxcsr, Loop::restart);
}
// E and Log10's P: D's reduction with a degree-3 polynomial.
constexpr Cell kLogE = own('E', 4, Guard::x87_53, Loop::restart);
constexpr Cell pivot_b(int cpu, char variant) { return own(variant, cpu == 5 ? 16 : 8, Guard::none, Loop::scratch); }

constexpr Plan Ln = plan(
    {log_d(0, 'D'), kRunsHA, kRunsHA},
    {log_d(1, 'D'), kRunsHA, kLogE},
    {log_d(2, 'D'), pivot_b(2, 'B'), kLogE},
    {log_d(3, 'D'), pivot_b(3, 'B'), kLogE},
    {log_d(4, 'D'), pivot_b(4, 'B'), pivot_b(4, 'C')},
    {pivot_b(5, 'A'), pivot_b(5, 'B'), pivot_b(5, 'C')});

static_assert(well_formed(Ln));

}  // namespace
}  // namespace plans
}  // namespace zvl
