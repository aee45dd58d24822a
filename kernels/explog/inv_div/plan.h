// Inv and Div by cpu type and accuracy mode.
//
//   A  true division, scratch form; zero and denormal divisors to the callout
//   B  true division two elements a round, each tested after the operation
//   C  LA and EP, types 1 to 4: Inv a four-way product of pairs under the
//      full MXCSR guard; Div a product of four divisors on the x87 stack
//   D  LA and EP, type 5: the mantissa product, one division per block
//
// LA and EP are one algorithm under two names.
#pragma once

#include "kernels/common/plan.h"

namespace zvl {
namespace plans {
namespace {

constexpr Cell kDivPairs0 = own('B', 2, Guard::x87_53, Loop::pairs);
constexpr Cell kDivPairs = own('B', 2, Guard::mxcsr_short, Loop::pairs);

constexpr Plan Inv = plan(
    {kDivPairs0, kRunsHA, kRunsHA},
    {kDivPairs, own('C', 8, Guard::mxcsr, Loop::restart), own('C', 8, Guard::mxcsr, Loop::restart)},
    {kDivPairs, own('C', 8, Guard::mxcsr, Loop::restart), own('C', 8, Guard::mxcsr, Loop::restart)},
    {own('A', 8, Guard::none, Loop::scratch), own('C', 8, Guard::mxcsr, Loop::restart),
     own('C', 8, Guard::mxcsr, Loop::restart)},
    {own('A', 8, Guard::none, Loop::scratch), own('C', 8, Guard::mxcsr, Loop::restart),
     own('C', 8, Guard::mxcsr, Loop::restart)},
    {own('A', 16, Guard::none, Loop::scratch), own('D', 16, Guard::none, Loop::scratch),
     own('D', 16, Guard::none, Loop::scratch)});

// Div's C runs one element at a time on the x87 stack, four to a block.
constexpr Cell kDivC = own('C', 4, Guard::x87_64, Loop::restart, Wrap::scalar);

constexpr Plan Div = plan(
    {kDivPairs0, kRunsHA, kRunsHA},
    {kDivPairs, kDivC, kDivC},
    {kDivPairs, kDivC, kDivC},
    {own('A', 8, Guard::none, Loop::scratch), kDivC, kDivC},
    {own('A', 8, Guard::none, Loop::scratch), kDivC, kDivC},
    {own('A', 16, Guard::none, Loop::scratch), own('D', 16, Guard::none, Loop::scratch),
     own('D', 16, Guard::none, Loop::scratch)});

static_assert(well_formed(Inv) && well_formed(Div));

}  // namespace
}  // namespace plans
}  // namespace zvl
