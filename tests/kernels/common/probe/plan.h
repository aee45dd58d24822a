// Three small families laid out as a real one is (a folder with plan.h and
// kernels.h), built only into the tests: they run the forms that no family
// of the library runs yet, and the ways a plan forwards.
//
//   Probe       one in, two out: y = x + 1, u = 2x. A the scratch form on
//               Lanes, B on BlockMask; forwards to HA, and across cpu types.
//   ProbeBatch  one in, one out: y = 3x + x^2, the sum taken in extended
//               precision after a vector pass (the batch form).
//   zProbe      complex, one in, one out: y = x^2 in extended precision
//               (the thin form); at cpu types 4 and 5 the block form, 2x in
//               the vector code, and parts from 2^100 up refused to a scalar
//               routine that gives 4x, so the tests see which path ran.
#pragma once

#include "kernels/common/plan.h"

namespace zvl {
namespace plans {
namespace {

constexpr Plan Probe = plan(
    {own('A', 2, Guard::x87_53, Loop::scratch), kRunsHA, kRunsHA},
    {own('A', 4, Guard::mxcsr, Loop::scratch), own('B', 8, Guard::none, Loop::scratch), kRunsHA},
    {own('A', 4, Guard::mxcsr, Loop::scratch), own('B', 8, Guard::none, Loop::scratch),
     own('B', 2, Guard::none, Loop::scratch, Wrap::scalar)},
    {own('A', 4, Guard::mxcsr, Loop::scratch), own('B', 8, Guard::none, Loop::scratch),
     own('B', 4, Guard::mxcsr, Loop::scratch, Wrap::v128)},
    {own('A', 4, Guard::mxcsr, Loop::scratch), runs_at(3, 1), runs_at(3, 2)},
    {own('A', 8, Guard::none, Loop::scratch), own('B', 8, Guard::none, Loop::scratch),
     own('B', 16, Guard::none, Loop::scratch)});

constexpr Cell kBatch = own('T', 64, Guard::x87_64_short, Loop::batch);
constexpr Plan ProbeBatch = plan({kBatch, kRunsHA, kRunsHA}, {kBatch, kRunsHA, kRunsHA},
                                 {kBatch, kRunsHA, kRunsHA}, {kBatch, kRunsHA, kRunsHA},
                                 {kBatch, kRunsHA, kRunsHA}, {kBatch, kRunsHA, kRunsHA});

constexpr Cell kThin = own('Z', 1, Guard::x87_64, Loop::thin, Wrap::scalar);
constexpr Cell kZBlock = own('V', 4, Guard::x87_64_short, Loop::zblock);
constexpr Plan zProbe = plan({kThin, kRunsHA, kRunsHA}, {kThin, kRunsHA, kRunsHA}, {kThin, kRunsHA, kRunsHA},
                             {kThin, kRunsHA, kRunsHA}, {kZBlock, kRunsHA, kRunsHA}, {kZBlock, kRunsHA, kRunsHA});

static_assert(well_formed(Probe) && well_formed(ProbeBatch) && well_formed(zProbe));

}  // namespace
}  // namespace plans
}  // namespace zvl
