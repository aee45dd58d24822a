// How a subsystem lists its families: one folder per family (or group of
// families sharing code), holding plan.h, the plans with no instruction set,
// and kernels.h, the kernels built from them. A subsystem's families.h
// defines ZVL_SUBSYSTEM and writes one line per folder,
//
//   #include ZVL_FAMILY(ln)
//
// which is the folder's kernels.h in a per-cpu unit (ZVL_CPU_INDEX defined)
// and its plan.h anywhere else: frame/ fills the kernel sets from the plans,
// the tests and tools read them.
#pragma once

#define ZVL_FAMILY_STR2(x) #x
#define ZVL_FAMILY_STR(x) ZVL_FAMILY_STR2(x)
#ifdef ZVL_CPU_INDEX
#define ZVL_FAMILY_PART kernels
#else
#define ZVL_FAMILY_PART plan
#endif
#define ZVL_FAMILY_PATH(sub, dir, part) ZVL_FAMILY_STR(kernels/sub/dir/part.h)
#define ZVL_FAMILY(dir) ZVL_FAMILY_PATH(ZVL_SUBSYSTEM, dir, ZVL_FAMILY_PART)
