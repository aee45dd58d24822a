// The exponential, logarithm, power, root and rounding kernels of cpu type 5.
#define ZVL_CPU_INDEX 5
#include "kernels/explog/families.h"
