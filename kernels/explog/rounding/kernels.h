// The rounding family: Ceil, Floor, Trunc, Round, Rint, NearbyInt turn each
// double into an integer-valued double; Modf splits it into integer part and
// fraction. Results are exact, nothing is ever reported, and every kernel is
// one per cpu type (no accuracy modes). One operation is built three ways:
//
// bit masks, the shifter, or the rounding instruction; which one at which
// cpu type, under which guard, is the family's plan (plan.h). The guards
// are the full MXCSR guard with the wanted rounding direction.
// Rint and NearbyInt follow the caller's rounding mode; where the rounding
// instruction exists NearbyInt raises no inexact exception and Rint does.
// Round without a guard (types 2 and 5) rounds its first step in the
// caller's mode, so under a directed mode it follows that mode except at
// exact halves. Cpu types 3 and 4 share one NearbyInt and one Rint kernel,
// the one of type 3.
//
// Included by the explog units inside their own context (see unit.h).
#pragma once

#include "kernels/common/unit.h"
#include "kernels/explog/rounding/forms.h"
#include "kernels/explog/rounding/plan.h"

namespace {

template <const zvl::Plan& P, int Imm, double (*Masks)(double)>
using DirectedFamily = PlannedFamily<P, D1Shape, Letter<'M', ByElement<Masks>>, Letter<'S', Shifter>,
                                     Letter<'I', ByInstruction<Imm>>>;
// Rint (immediate 4) and NearbyInt (0xc): the caller's mode, no guard.
template <const zvl::Plan& P, int Imm>
using CurrentModeFamily = PlannedFamily<P, D1Shape, Letter<'S', Shifter>, Letter<'I', ByInstruction<Imm>>>;

using CeilFamily = DirectedFamily<zvl::plans::Ceil, 2, BitMasks::ceil>;
using FloorFamily = DirectedFamily<zvl::plans::Floor, 1, BitMasks::floor>;
using TruncFamily = DirectedFamily<zvl::plans::Trunc, 3, BitMasks::trunc>;
using RintFamily = CurrentModeFamily<zvl::plans::Rint, 4>;
using NearbyIntFamily = CurrentModeFamily<zvl::plans::NearbyInt, 0xc>;
using RoundFamily = PlannedFamily<zvl::plans::Round, D1Shape, Letter<'M', ByElement<BitMasks::round>>,
                                  Letter<'H', HalfTest<false>>, Letter<'h', HalfTest<true>>>;
using ModfFamily =
    PlannedFamily<zvl::plans::Modf, D12Shape, Letter<'M', ModfByElement>, Letter<'S', ShifterModf>>;

}  // namespace

ZVL_KERNELS_R1(Ceil, CeilFamily)
ZVL_KERNELS_R1(Floor, FloorFamily)
ZVL_KERNELS_R1(Trunc, TruncFamily)
ZVL_KERNELS_R1(Round, RoundFamily)
ZVL_KERNELS_R12(Modf, ModfFamily)
ZVL_KERNELS_R1(Rint, RintFamily)
ZVL_KERNELS_R1(NearbyInt, NearbyIntFamily)
