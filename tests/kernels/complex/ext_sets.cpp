#include "tests/kernels/complex/ext_set.h"

extern const ExtSet ext_set_ex, ext_set_e7, ext_set_u8, ext_set_y8, ext_set_h8, ext_set_e9;

const ExtSet* const ext_sets[6] = {&ext_set_ex, &ext_set_e7, &ext_set_u8,
                                   &ext_set_y8, &ext_set_h8, &ext_set_e9};

extern const SqrtSet sqrt_set_ex, sqrt_set_e7, sqrt_set_u8, sqrt_set_y8, sqrt_set_h8, sqrt_set_e9;

const SqrtSet* const sqrt_sets[6] = {&sqrt_set_ex, &sqrt_set_e7, &sqrt_set_u8,
                                     &sqrt_set_y8, &sqrt_set_h8, &sqrt_set_e9};

const char* const ext_unary_names[kExtUnaryCount] = {
#define ZVL_EXT_NAME(name) #name,
    ZVL_EXT_UNARY(ZVL_EXT_NAME)
#undef ZVL_EXT_NAME
};

const char* const complex_scalar_names[kComplexScalarCount] = {
#define ZVL_COMPLEX_NAME(name) #name,
    ZVL_COMPLEX_SCALARS(ZVL_COMPLEX_NAME)
#undef ZVL_COMPLEX_NAME
};
