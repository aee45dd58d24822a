// Sinh, Cosh and Tanh by cpu type and accuracy mode (sinh_cosh.h and
// tanh.h have the variants):
//
//   H  HA: 64/ln 2, the hi, lo table of 2^(j/64), the HA polynomial
//   L  LA: 128/ln 2 and the Taylor polynomial of degree 5 (Sinh with the
//      hi, lo table of 2^(i/128), Cosh with ExpTable128 and the degree-4
//      fit)
//   E  EP: Sinh as LA with the EP callout below 1/8; Cosh runs LA's body
//      under its own name
//
// Tanh: H the rows of TanhRows with the top two terms in two words, L one
// Horner chain (LA, and EP under its own name); no lane is ever refused.
//
// At cpu type 0 LA and EP run HA. Blocks of eight (Tanh sixteen from cpu
// type 1 on), then one at a time, under the full MXCSR guard: the shifter
// rounds N to nearest and the two-part sums assume it, whatever the
// caller's mode. Sinh and Cosh report
// ZVL_STATUS_OVERFLOW past 710.47586007394386, through the callout; Tanh
// never reports.
#pragma once

#include "kernels/common/plan.h"

namespace zvl {
namespace plans {
namespace {

constexpr Cell hyperbolic(char variant) { return own(variant, 8, Guard::mxcsr, Loop::scratch); }
constexpr Row3 kHyperbolicRow = {hyperbolic('H'), hyperbolic('L'), hyperbolic('E')};
constexpr Row3 kHyperbolicRowHA = {hyperbolic('H'), kRunsHA, kRunsHA};

constexpr Plan Sinh = plan(kHyperbolicRowHA, kHyperbolicRow, kHyperbolicRow, kHyperbolicRow,
                           kHyperbolicRow, kHyperbolicRow);
constexpr Plan Cosh = Sinh;
// Tanh: blocks of sixteen, four rounds side by side (tanh.h)
constexpr Cell tanh_blocks(char variant) { return own(variant, 16, Guard::mxcsr, Loop::scratch); }
constexpr Row3 kTanhRow = {tanh_blocks('H'), tanh_blocks('L'), tanh_blocks('L')};
constexpr Plan Tanh = plan(kHyperbolicRowHA, kTanhRow, kTanhRow, kTanhRow, kTanhRow, kTanhRow);

static_assert(well_formed(Sinh) && well_formed(Tanh));

}  // namespace
}  // namespace plans
}  // namespace zvl
