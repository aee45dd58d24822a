// The exponential, logarithm, power, root and rounding kernels of cpu type 1.
#define ZVL_CPU_INDEX 1
#include "kernels/explog/families.h"
