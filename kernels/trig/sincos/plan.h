// Sin, Cos and SinCos by cpu type and accuracy mode.
//
//   A  HA, step pi/256: a double-word remainder through SinTable512 or
//      CosTable512; |x| > 65568 to the callout
//   B  HA, step pi/32 on the 64-row tables; |x| >= 90112 and NaN to the
//      callout, which reports as "dSin_HA" / "dCos_HA"
//   C  LA, reduction by pi and the sine polynomial of degree 15
//   D  EP, the same with degree 9
//   E  EP of cpu type 1, the short form: step pi/32 with the plain pairs of
//      SinCosPairs64, no callout; above 1e15, infinities and NaN give +0
//
// Cos HA keeps the step pi/32 kernel at cpu types 2 and 3, where Sin HA has
// the step pi/256 one. Every kernel runs under the full MXCSR guard, so the
// double-word sums and the callouts round to nearest whatever the caller's
// mode.
#pragma once

#include "kernels/common/plan.h"

namespace zvl {
namespace plans {
namespace {

constexpr Cell kTrigA = own('A', 16, Guard::mxcsr, Loop::scratch);
constexpr Cell kTrigB4 = own('B', 4, Guard::mxcsr, Loop::scratch);
constexpr Cell kTrigB16 = own('B', 16, Guard::mxcsr, Loop::scratch);
constexpr Cell kTrigC = own('C', 16, Guard::mxcsr, Loop::scratch);
constexpr Cell kTrigD = own('D', 16, Guard::mxcsr, Loop::scratch);
constexpr Cell kTrigE = own('E', 4, Guard::mxcsr, Loop::scratch);

constexpr Plan Sin = plan(
    {kTrigB4, kRunsHA, kRunsHA},
    {kTrigB4, kRunsHA, kTrigE},
    {kTrigA, kTrigC, kTrigD},
    {kTrigA, kTrigC, kTrigD},
    {kTrigA, kTrigC, kTrigD},
    {kTrigA, kTrigC, kTrigD});

constexpr Plan Cos = plan(
    {kTrigB4, kRunsHA, kRunsHA},
    {kTrigB4, kRunsHA, kTrigE},
    {kTrigB16, kTrigC, kTrigD},
    {kTrigB16, kTrigC, kTrigD},
    {kTrigA, kTrigC, kTrigD},
    {kTrigA, kTrigC, kTrigD});

// SinCos: both results from one reduction (both.h).
//   A  HA at cpu type 5, step pi/256 on SinTable512, rows N and N + 128
//   F  HA elsewhere, step pi/64 on SinCosTable128, rows N and N + 32;
//      |x| >= 90112 and NaN to the callout
//   C, D  LA and EP by pi, one bound |x| > 2^23
//   H  LA of cpu type 1, by pi/2 with the polynomials of degrees 13 and 14;
//      its callout reports as "dSinCos_LA", every other as "dSinCos_HA"
//   E  EP of cpu type 1, the short form: +0 above 1e15, for infinities and
//      NaN, silently
constexpr Cell kSinCosF4 = own('F', 4, Guard::mxcsr, Loop::scratch);
constexpr Cell kSinCosF16 = own('F', 16, Guard::mxcsr, Loop::scratch);
constexpr Cell kSinCosH = own('H', 4, Guard::mxcsr, Loop::scratch);

constexpr Plan SinCos = plan(
    {kSinCosF4, kRunsHA, kRunsHA},
    {kSinCosF4, kSinCosH, kTrigE},
    {kSinCosF16, kTrigC, kTrigD},
    {kSinCosF16, kTrigC, kTrigD},
    {kSinCosF16, kTrigC, kTrigD},
    {kTrigA, kTrigC, kTrigD});

static_assert(well_formed(Sin) && well_formed(Cos) && well_formed(SinCos));

}  // namespace
}  // namespace plans
}  // namespace zvl
