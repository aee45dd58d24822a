// The exponential, logarithm, power, root and rounding kernels of cpu type 2.
#define ZVL_CPU_INDEX 2
#include "kernels/explog/families.h"
