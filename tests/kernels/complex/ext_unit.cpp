// One cpu type's copy of the support set and of the complex scalar
// routines, compiled with that type's flags (ZVL_EXT_SET names the object,
// ZVL_EXT_LABEL the cpu label). Nothing else lives here, so that the
// object's code is theirs alone.
#include "kernels/complex/ext/ext.h"
#include "kernels/complex/ln/scalar.h"
#include "kernels/complex/scalars.h"
#include "tests/kernels/complex/ext_set.h"

#define ZVL_EXT_ADDRESS(name) name,

extern const ExtSet ZVL_EXT_SET;
const ExtSet ZVL_EXT_SET = {
    ZVL_EXT_LABEL,  {ZVL_EXT_UNARY(ZVL_EXT_ADDRESS)}, fabs_d, ext_sincos, ext_sinhcosh,
    ext_reduce_pio4, ext_atan2,     {ZVL_COMPLEX_SCALARS(ZVL_EXT_ADDRESS)},
};
