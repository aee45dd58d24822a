// The table of all functions: one row each drives its exported front-end,
// its _Idx companion and its kernel set. Adding a function is one row here,
// its kernel set in kernel_sets.cpp, and its names in the export lists.
//
// Row macros by shape, each (EXPORT, report name, threshold id):
//   D1   real, one in, one out          D2   real, two in, one out
//   D12  real, one in, two out          DX   real array and real scalar
//   Z1   complex, one in, one out       Z2   complex, two in, one out
//   ZX   complex array and scalar
// Rounding rows (EXPORT, report name), no id: R1 one out, R12 two out.
#pragma once

#define ZVL_FUNCTIONS(D1, D2, D12, DX, Z1, Z2, ZX, R1, R12) \
    D1(VDINV, vdInv, 0)                                     \
    D2(VDDIV, vdDiv, 18)                                    \
    D1(VDSQRT, vdSqrt, 36)                                  \
    D1(VDINVSQRT, vdInvSqrt, 54)                            \
    D1(VDCBRT, vdCbrt, 72)                                  \
    D1(VDINVCBRT, vdInvCbrt, 90)                            \
    D2(VDPOW, vdPow, 108)                                   \
    DX(VDPOWX, vdPowx, 126)                                 \
    D1(VDEXP, vdExp, 144)                                   \
    R1(VDCEIL, vdCeil)                                      \
    R1(VDFLOOR, vdFloor)                                    \
    R12(VDMODF, vdModf)                                     \
    R1(VDNEARBYINT, vdNearbyInt)                            \
    R1(VDRINT, vdRint)                                      \
    R1(VDROUND, vdRound)                                    \
    R1(VDTRUNC, vdTrunc)

#define ZVL_IGNORE_ROW(...)
