// The exponential, logarithm, power and root kernels of cpu type 3 (y8).
#define ZVL_CPU y8
#define ZVL_CPU_INDEX 3

#include "kernels/explog/inv_div.h"
#include "kernels/explog/exp/exp.h"
