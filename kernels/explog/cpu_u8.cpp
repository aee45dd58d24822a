// The exponential, logarithm, power and root kernels of cpu type 2 (u8).
#define ZVL_CPU u8
#define ZVL_CPU_INDEX 2

#include "kernels/explog/inv_div.h"
#include "kernels/explog/exp/exp.h"
#include "kernels/explog/rounding/rounding.h"
#include "kernels/explog/sqrt.h"
#include "kernels/explog/cbrt.h"
#include "kernels/explog/pow/pow.h"
#include "kernels/explog/pow/powx.h"
