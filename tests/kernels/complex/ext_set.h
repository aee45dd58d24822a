// The extended-precision support set of each cpu type and the complex
// scalar routines built on it, reached through function pointers:
// ext_unit.cpp is compiled once per cpu type with that type's flags, and
// each object fills one ExtSet from its own copy.
#pragma once

#include <cstdint>
#include <cstring>

#include "zvl.h"

// The routines of one long double argument and result, in table order.
#define ZVL_EXT_UNARY(X)                                                                    \
    X(ext_fabs) X(ext_sqrt) X(ext_log) X(ext_log1p) X(ext_exp) X(ext_sin) X(ext_cos)      \
    X(ext_tan) X(ext_sinh) X(ext_cosh) X(ext_tanh) X(ext_asin) X(ext_acos) X(ext_atan)    \
    X(ext_asinh) X(ext_acosh) X(ext_atanh)

enum ExtUnaryId {
#define ZVL_EXT_ID(name) name##_id,
    ZVL_EXT_UNARY(ZVL_EXT_ID)
#undef ZVL_EXT_ID
    kExtUnaryCount
};

// The complex scalar routines, in table order.
#define ZVL_COMPLEX_SCALARS(X)                                                           \
    X(zSqrt_scalar) X(zCosh_scalar) X(zSinh_scalar) X(zTanh_scalar)                      \
    X(zCos_scalar) X(zSin_scalar) X(zTan_scalar) X(zAcos_scalar) X(zAcosh_scalar)        \
    X(zAsinh_scalar) X(zAtanh_scalar) X(zAsin_scalar) X(zAtan_scalar) X(zLn_scalar)       \
    X(zLog10_scalar)

enum ComplexScalarId {
#define ZVL_COMPLEX_ID(name) name##_id,
    ZVL_COMPLEX_SCALARS(ZVL_COMPLEX_ID)
#undef ZVL_COMPLEX_ID
    kComplexScalarCount
};

using ExtUnary = long double (*)(long double);
using ComplexScalar = ZVLComplex16* (*)(ZVLComplex16*, const ZVLComplex16*);
using ExtTwoOut = void (*)(long double, long double*, long double*);

struct ExtSet {
    const char* label;  // the cpu label, ex .. e9
    ExtUnary unary[kExtUnaryCount];
    long double (*fabs_d)(const double*);
    ExtTwoOut ext_sincos;
    ExtTwoOut ext_sinhcosh;
    int (*ext_reduce_pio4)(long double, long double*, long double*);
    long double (*ext_atan2)(long double, long double);
    ComplexScalar complex[kComplexScalarCount];
};

// The square roots in double arithmetic of one cpu type (sqrt_unit.cpp):
// zSqrt_fast, and the cpu type's vector member over an array; `vector_one`
// runs the vector member on one element (a block of copies of it).
struct SqrtSet {
    const char* label;
    ComplexScalar fast;
    void (*vector)(int n, const ZVLComplex16* a, ZVLComplex16* r);
    ComplexScalar vector_one;
};

// By cpu type, 0 (ex) to 5 (e9).
extern const SqrtSet* const sqrt_sets[6];
extern const ExtSet* const ext_sets[6];
extern const char* const ext_unary_names[kExtUnaryCount];
extern const char* const complex_scalar_names[kComplexScalarCount];

// The bits of an extended value: the 64-bit significand and the 16-bit sign
// and exponent (the other six bytes of its slot are padding).
inline long double ext_from_bits(uint64_t sig, unsigned sign_exp) {
    long double x = 0;
    std::memcpy(&x, &sig, 8);
    const uint16_t se = static_cast<uint16_t>(sign_exp);
    std::memcpy(reinterpret_cast<unsigned char*>(&x) + 8, &se, 2);
    return x;
}
inline uint64_t ext_sig_bits(long double x) {
    uint64_t m;
    std::memcpy(&m, &x, 8);
    return m;
}
inline unsigned ext_se_bits(long double x) {
    uint16_t se;
    std::memcpy(&se, reinterpret_cast<const unsigned char*>(&x) + 8, 2);
    return se;
}
inline bool ext_same_bits(long double a, long double b) {
    return ext_sig_bits(a) == ext_sig_bits(b) && ext_se_bits(a) == ext_se_bits(b);
}
