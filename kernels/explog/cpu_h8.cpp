// The exponential, logarithm, power, root and rounding kernels of cpu type 4.
#define ZVL_CPU_INDEX 4
#include "kernels/explog/families.h"
