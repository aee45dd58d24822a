// The exponential, logarithm, power, root and rounding kernels of cpu type 3.
#define ZVL_CPU_INDEX 3
#include "kernels/explog/families.h"
