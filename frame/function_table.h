// The table of all functions the library implements, the one place a
// function is added. Each row drives the function's exported front-end and
// _Idx companion (frontends.cpp), its kernel declarations and kernel set,
// filled from its family's plan (kernel_sets.cpp), the tests' rows and the
// tools' bindings; frame/exports.txt and include/zvl.h are held against it
// by the export test.
//
// Row macros by shape, each (EXPORT, report name, threshold id, family):
//   D1   real, one in, one out          D2   real, two in, one out
//   D12  real, one in, two out          DX   real array and real scalar
//   Z1   complex, one in, one out       Z2   complex, two in, one out
//   ZX   complex array and scalar
// Rounding rows (EXPORT, report name, family), no id: R1 one out, R12 two
// out. The family is the name in the kernel symbols and in
// zvl::plans (kernels/<subsystem>/<folder>/plan.h).
//
// A function's id is 18 times its place in the order of its table (real or
// complex, below), checked at compile time: one group of 6 cpu types by 3
// accuracy modes each.
#pragma once

#define ZVL_FUNCTIONS(D1, D2, D12, DX, Z1, Z2, ZX, R1, R12) \
    D1(VDINV, vdInv, 0, Inv)                                \
    D2(VDDIV, vdDiv, 18, Div)                               \
    D1(VDSQRT, vdSqrt, 36, Sqrt)                            \
    D1(VDINVSQRT, vdInvSqrt, 54, InvSqrt)                   \
    D1(VDCBRT, vdCbrt, 72, Cbrt)                            \
    D1(VDINVCBRT, vdInvCbrt, 90, InvCbrt)                   \
    D2(VDPOW, vdPow, 108, Pow)                              \
    DX(VDPOWX, vdPowx, 126, Powx)                           \
    D1(VDEXP, vdExp, 144, Exp)                              \
    D1(VDLN, vdLn, 162, Ln)                                 \
    D1(VDLOG10, vdLog10, 180, Log10)                        \
    D1(VDCOS, vdCos, 198, Cos)                              \
    D1(VDSIN, vdSin, 216, Sin)                              \
    D12(VDSINCOS, vdSinCos, 234, SinCos)                    \
    D1(VDTAN, vdTan, 252, Tan)                              \
    D1(VDACOS, vdAcos, 270, Acos)                           \
    D1(VDASIN, vdAsin, 288, Asin)                           \
    D1(VDATAN, vdAtan, 306, Atan)                           \
    D2(VDATAN2, vdAtan2, 324, Atan2)                        \
    D1(VDCOSH, vdCosh, 342, Cosh)                           \
    D1(VDSINH, vdSinh, 360, Sinh)                           \
    D1(VDTANH, vdTanh, 378, Tanh)                           \
    D1(VDACOSH, vdAcosh, 396, Acosh)                        \
    D1(VDASINH, vdAsinh, 414, Asinh)                        \
    D1(VDATANH, vdAtanh, 432, Atanh)                        \
    D1(VDERF, vdErf, 450, Erf)                              \
    D1(VDERFC, vdErfc, 468, Erfc)                           \
    D1(VDERFINV, vdErfInv, 486, ErfInv)                     \
    Z1(VZSQRT, vzSqrt, 0, Sqrt)                             \
    Z2(VZPOW, vzPow, 18, Pow)                               \
    ZX(VZPOWX, vzPowx, 36, Powx)                            \
    Z1(VZEXP, vzExp, 54, Exp)                               \
    Z1(VZLN, vzLn, 72, Ln)                                  \
    Z1(VZLOG10, vzLog10, 90, Log10)                         \
    Z1(VZCOS, vzCos, 108, Cos)                              \
    Z1(VZSIN, vzSin, 126, Sin)                              \
    Z1(VZTAN, vzTan, 144, Tan)                              \
    Z1(VZACOS, vzAcos, 162, Acos)                           \
    Z1(VZASIN, vzAsin, 180, Asin)                           \
    Z1(VZATAN, vzAtan, 198, Atan)                           \
    Z1(VZCOSH, vzCosh, 216, Cosh)                           \
    Z1(VZSINH, vzSinh, 234, Sinh)                           \
    Z1(VZTANH, vzTanh, 252, Tanh)                           \
    Z1(VZACOSH, vzAcosh, 270, Acosh)                        \
    Z1(VZASINH, vzAsinh, 288, Asinh)                        \
    Z1(VZATANH, vzAtanh, 306, Atanh)                        \
    R1(VDCEIL, vdCeil, Ceil)                                \
    R1(VDFLOOR, vdFloor, Floor)                             \
    R12(VDMODF, vdModf, Modf)                               \
    R1(VDNEARBYINT, vdNearbyInt, NearbyInt)                 \
    R1(VDRINT, vdRint, Rint)                                \
    R1(VDROUND, vdRound, Round)                             \
    R1(VDTRUNC, vdTrunc, Trunc)

#define ZVL_IGNORE_ROW(...)

namespace zvl {
namespace table {

// The order of ids, all functions whether implemented or not: the real
// threshold table's and the complex one's.
constexpr const char* kRealOrder[] = {
    "Inv",  "Div",  "Sqrt", "InvSqrt", "Cbrt", "InvCbrt", "Pow",   "Powx",  "Exp",   "Ln",
    "Log10", "Cos", "Sin",  "SinCos",  "Tan",  "Acos",    "Asin",  "Atan",  "Atan2", "Cosh",
    "Sinh", "Tanh", "Acosh", "Asinh",  "Atanh", "Erf",    "Erfc",  "ErfInv"};
constexpr const char* kComplexOrder[] = {
    "Sqrt", "Pow",  "Powx", "Exp",  "Ln",    "Log10", "Cos",   "Sin",   "Tan",
    "Acos", "Asin", "Atan", "Cosh", "Sinh",  "Tanh",  "Acosh", "Asinh", "Atanh"};

constexpr bool same_text(const char* a, const char* b) {
    return *a == *b && (*a == 0 || same_text(a + 1, b + 1));
}
template <int N>
constexpr int place(const char* const (&order)[N], const char* family) {
    for (int i = 0; i < N; ++i)
        if (same_text(order[i], family)) return i;
    return -1;
}
constexpr bool real_id_ok(int id, const char* family) { return id == 18 * place(kRealOrder, family); }
constexpr bool complex_id_ok(int id, const char* family) {
    return id == 18 * place(kComplexOrder, family);
}

#define ZVL_TABLE_CHECK_REAL(EXPORT, report, id, fam) \
    static_assert(real_id_ok(id, #fam), #EXPORT ": id is not 18 times its place in the real order");
#define ZVL_TABLE_CHECK_COMPLEX(EXPORT, report, id, fam) \
    static_assert(complex_id_ok(id, #fam), #EXPORT ": id is not 18 times its place in the complex order");
ZVL_FUNCTIONS(ZVL_TABLE_CHECK_REAL, ZVL_TABLE_CHECK_REAL, ZVL_TABLE_CHECK_REAL, ZVL_TABLE_CHECK_REAL,
              ZVL_TABLE_CHECK_COMPLEX, ZVL_TABLE_CHECK_COMPLEX, ZVL_TABLE_CHECK_COMPLEX, ZVL_IGNORE_ROW,
              ZVL_IGNORE_ROW)
#undef ZVL_TABLE_CHECK_REAL
#undef ZVL_TABLE_CHECK_COMPLEX

}  // namespace table
}  // namespace zvl
