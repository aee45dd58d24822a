// The rounding family: Ceil, Floor, Trunc, Round, Rint, NearbyInt turn each
// double into an integer-valued double; Modf splits it into integer part and
// fraction. Results are exact, nothing is ever reported, and every kernel is
// one per cpu type (no accuracy modes). One operation is built three ways:
//
//   Function   type 0      types 1, 2              types 3, 4             type 5
//   Ceil       bit masks   shifter, guard up       roundpd 2              vroundpd 2
//   Floor      bit masks   shifter, guard down     roundpd 1              vroundpd 1
//   Trunc      bit masks   shifter, guard to zero  roundpd 3              vroundpd 3
//   Modf       bit masks   shifter, guard to zero  same                   same, 128-bit
//   NearbyInt  shifter,    shifter, no guard       roundpd 0xc            vroundpd 0xc, 128-bit
//   Rint       one by one  shifter, no guard       roundpd 4              vroundpd 4, 128-bit
//   Round      bit masks   half test: guarded at   roundpd 0 + half test, half test, no guard
//                          1, no guard at 2        guard nearest
//
// The guards are the full MXCSR guard with the wanted rounding direction.
// Rint and NearbyInt follow the caller's rounding mode; where the rounding
// instruction exists NearbyInt raises no inexact exception and Rint does.
// Round without a guard (types 2 and 5) rounds its first step in the
// caller's mode, so under a directed mode it follows that mode except at
// exact halves. Cpu types 3 and 4 share one NearbyInt and one Rint kernel,
// the one of type 3.
//
// Included by the explog units inside their own context (see unit.h).
#pragma once

#include "kernels/explog/rounding/forms.h"

namespace {

// MXCSR rounding-control values of the guards.
constexpr uint32_t kGuardUp = 0x4000;
constexpr uint32_t kGuardDown = 0x2000;
constexpr uint32_t kGuardZero = 0x6000;
constexpr uint32_t kGuardNearest = 0;

template <int Cpu, uint32_t Guard, int Imm, double (*Masks)(double)>
inline void directed_kernel(int32_t n, const double* a, double* r) {
    if constexpr (Cpu == 0) {
        rounding_loop<Scalar, 1, ByElement<Masks>, 1>(n, a, r, nullptr);
    } else if constexpr (Cpu <= 2) {
        MxcsrGuard<Guard> g;
        rounding_loop<V, 4, Shifter, 1>(n, a, r, nullptr);
    } else {
#ifdef __SSE4_1__
        rounding_loop<V, Cpu == 5 ? 16 : 8, ByInstruction<Imm>, 1>(n, a, r, nullptr);
#endif
    }
}

// Rint (Imm 4) and NearbyInt (Imm 0xc): the caller's mode, no guard.
template <int Cpu, int Imm>
inline void current_mode_kernel(int32_t n, const double* a, double* r) {
    if constexpr (Cpu == 0) {
        rounding_loop<Scalar, 1, Shifter, 1>(n, a, r, nullptr);
    } else if constexpr (Cpu <= 2) {
        rounding_loop<V128, 4, Shifter, 1>(n, a, r, nullptr);
    } else {
#ifdef __SSE4_1__
        rounding_loop<V128, 4, ByInstruction<Imm>, 1>(n, a, r, nullptr);
#endif
    }
}

template <int Cpu>
inline void round_kernel(int32_t n, const double* a, double* r) {
    if constexpr (Cpu == 0) {
        rounding_loop<Scalar, 1, ByElement<BitMasks::round>, 1>(n, a, r, nullptr);
    } else if constexpr (Cpu == 1) {
        MxcsrGuard<kGuardNearest> g;
        rounding_loop<V, 4, HalfTest<false>, 1>(n, a, r, nullptr);
    } else if constexpr (Cpu == 2) {
        rounding_loop<V, 4, HalfTest<false>, 1>(n, a, r, nullptr);
    } else if constexpr (Cpu <= 4) {
        MxcsrGuard<kGuardNearest> g;
        rounding_loop<V, 4, HalfTest<true>, 1>(n, a, r, nullptr);
    } else {
        rounding_loop<V, 8, HalfTest<false>, 1>(n, a, r, nullptr);
    }
}

template <int Cpu>
inline void modf_kernel(int32_t n, const double* a, double* y, double* z) {
    if constexpr (Cpu == 0) {
        rounding_loop<Scalar, 1, ModfByElement, 2>(n, a, y, z);
    } else {
        MxcsrGuard<kGuardZero> g;
        rounding_loop<V128, 4, ShifterModf, 2>(n, a, y, z);
    }
}

}  // namespace

ZVL_DEFINE_ROUNDING_D1(Ceil, directed_kernel<kCpu, kGuardUp, 2, BitMasks::ceil>)
ZVL_DEFINE_ROUNDING_D1(Floor, directed_kernel<kCpu, kGuardDown, 1, BitMasks::floor>)
ZVL_DEFINE_ROUNDING_D1(Trunc, directed_kernel<kCpu, kGuardZero, 3, BitMasks::trunc>)
ZVL_DEFINE_ROUNDING_D1(Round, round_kernel<kCpu>)
ZVL_DEFINE_ROUNDING_D12(Modf, modf_kernel<kCpu>)
#if ZVL_CPU_INDEX != 4
// Type 4 runs the kernels of type 3.
ZVL_DEFINE_ROUNDING_D1(Rint, current_mode_kernel<kCpu, 4>)
ZVL_DEFINE_ROUNDING_D1(NearbyInt, current_mode_kernel<kCpu, 0xc>)
#endif
