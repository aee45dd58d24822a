// Log10 by cpu type and accuracy mode: H, HA at every type, Ln's D with
// log10 constants; P, EP from type 1 on, Ln's E likewise. There is no LA
// kernel: the LA slot runs HA at every type.
#pragma once

#include "kernels/explog/ln/plan.h"

namespace zvl {
namespace plans {
namespace {

constexpr Cell kLog10P = own('P', 4, Guard::x87_53, Loop::restart);

constexpr Plan Log10 = plan(
    {log_d(0, 'H'), kRunsHA, kRunsHA},
    {log_d(1, 'H'), kRunsHA, kLog10P},
    {log_d(2, 'H'), kRunsHA, kLog10P},
    {log_d(3, 'H'), kRunsHA, kLog10P},
    {log_d(4, 'H'), kRunsHA, kLog10P},
    {log_d(5, 'H'), kRunsHA, kLog10P});

static_assert(well_formed(Log10));

}  // namespace
}  // namespace plans
}  // namespace zvl
