// Each function's kernels by cpu type and accuracy mode.
//
// The usual real row: at cpu type 0 one kernel serves all three modes (the
// LA and EP slots run the HA kernel); at types 1 to 5 each mode has its own.
#include "frame/kernel_sets.h"

#define ZVL_ROW3(cpu, fam) {ZVL_KERNEL(cpu, fam, HA), ZVL_KERNEL(cpu, fam, 50), ZVL_KERNEL(cpu, fam, 26)}
#define ZVL_ROW_HA_ONLY(cpu, fam) {ZVL_KERNEL(cpu, fam, HA), ZVL_KERNEL(cpu, fam, HA), ZVL_KERNEL(cpu, fam, HA)}
#define ZVL_REAL_SET(fam)                                                          \
    {{ZVL_ROW_HA_ONLY(ex, fam), ZVL_ROW3(e7, fam), ZVL_ROW3(u8, fam), ZVL_ROW3(y8, fam), \
      ZVL_ROW3(h8, fam), ZVL_ROW3(e9, fam)}}

// The rounding family: one kernel per cpu type; NearbyInt and Rint have one
// kernel for types 3 and 4, the one of type 3.
#define ZVL_ROUNDING_SET(fam)                                                        \
    {{ZVL_ROUNDING_KERNEL(ex, fam), ZVL_ROUNDING_KERNEL(e7, fam), ZVL_ROUNDING_KERNEL(u8, fam), \
      ZVL_ROUNDING_KERNEL(y8, fam), ZVL_ROUNDING_KERNEL(h8, fam), ZVL_ROUNDING_KERNEL(e9, fam)}}
#define ZVL_ROUNDING_SET_34(fam)                                                     \
    {{ZVL_ROUNDING_KERNEL(ex, fam), ZVL_ROUNDING_KERNEL(e7, fam), ZVL_ROUNDING_KERNEL(u8, fam), \
      ZVL_ROUNDING_KERNEL(y8, fam), ZVL_ROUNDING_KERNEL(y8, fam), ZVL_ROUNDING_KERNEL(e9, fam)}}

namespace zvl {

const KernelSet<KernelD1> kernels_VDINV = ZVL_REAL_SET(Inv);
const KernelSet<KernelD2> kernels_VDDIV = ZVL_REAL_SET(Div);
const KernelSet<KernelD1> kernels_VDSQRT = ZVL_REAL_SET(Sqrt);
const KernelSet<KernelD1> kernels_VDINVSQRT = ZVL_REAL_SET(InvSqrt);
const KernelSet<KernelD1> kernels_VDCBRT = ZVL_REAL_SET(Cbrt);
const KernelSet<KernelD1> kernels_VDINVCBRT = ZVL_REAL_SET(InvCbrt);
const KernelSet<KernelD2> kernels_VDPOW = ZVL_REAL_SET(Pow);
const KernelSet<KernelDx> kernels_VDPOWX = ZVL_REAL_SET(Powx);
const KernelSet<KernelD1> kernels_VDEXP = ZVL_REAL_SET(Exp);

const RoundingSet<KernelD1> kernels_VDCEIL = ZVL_ROUNDING_SET(Ceil);
const RoundingSet<KernelD1> kernels_VDFLOOR = ZVL_ROUNDING_SET(Floor);
const RoundingSet<KernelD12> kernels_VDMODF = ZVL_ROUNDING_SET(Modf);
const RoundingSet<KernelD1> kernels_VDNEARBYINT = ZVL_ROUNDING_SET_34(NearbyInt);
const RoundingSet<KernelD1> kernels_VDRINT = ZVL_ROUNDING_SET_34(Rint);
const RoundingSet<KernelD1> kernels_VDROUND = ZVL_ROUNDING_SET(Round);
const RoundingSet<KernelD1> kernels_VDTRUNC = ZVL_ROUNDING_SET(Trunc);

}  // namespace zvl
