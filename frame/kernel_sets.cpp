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

// A row whose LA slot runs the HA kernel.
#define ZVL_ROW_NO_LA(cpu, fam) \
    {ZVL_KERNEL(cpu, fam, HA), ZVL_KERNEL(cpu, fam, HA), ZVL_KERNEL(cpu, fam, 26)}

// Ln: at type 1 the LA slot runs HA as well.
const KernelSet<KernelD1> kernels_VDLN = {
    {ZVL_ROW_HA_ONLY(ex, Ln), ZVL_ROW_NO_LA(e7, Ln), ZVL_ROW3(u8, Ln), ZVL_ROW3(y8, Ln),
     ZVL_ROW3(h8, Ln), ZVL_ROW3(e9, Ln)}};

// Log10 has no LA kernel: the LA slot runs HA at every type.
const KernelSet<KernelD1> kernels_VDLOG10 = {
    {ZVL_ROW_HA_ONLY(ex, Log10), ZVL_ROW_NO_LA(e7, Log10), ZVL_ROW_NO_LA(u8, Log10),
     ZVL_ROW_NO_LA(y8, Log10), ZVL_ROW_NO_LA(h8, Log10), ZVL_ROW_NO_LA(e9, Log10)}};

}  // namespace zvl
