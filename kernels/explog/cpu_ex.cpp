// The exponential, logarithm, power, root and rounding kernels of cpu type 0.
#define ZVL_CPU_INDEX 0
#include "kernels/explog/families.h"
