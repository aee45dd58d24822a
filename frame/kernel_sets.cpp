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

namespace zvl {

const KernelSet<KernelD1> kernels_VDINV = ZVL_REAL_SET(Inv);
const KernelSet<KernelD2> kernels_VDDIV = ZVL_REAL_SET(Div);
const KernelSet<KernelD1> kernels_VDEXP = ZVL_REAL_SET(Exp);

}  // namespace zvl
