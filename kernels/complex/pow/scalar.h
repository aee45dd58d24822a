// zPow_scalar, a^b = exp(b ln a) for one element: the cpu type's own
// zLn_scalar, then the four double products
//   u = b.re L.re - b.im L.im,   v = b.re L.im + b.im L.re
// in this order, unfused, then zExp_scalar(u + iv). Nothing is treated
// apart (no integer exponent, real or zero base): the special values are
// what the two routines' tables give, so pow(0, 2) is exp(-inf + i NaN) =
// (+0, +0) and pow(0, 0) is NaN; the error grows with |b ln a|.
#pragma once

#include "kernels/complex/exp/scalar.h"
#include "kernels/complex/ln/scalar.h"

ZVL_SCALAR_BEGIN
namespace {

ZVL_SCALAR_ROUTINE ZVLComplex16* zPow_scalar(ZVLComplex16* r, const ZVLComplex16* a, const ZVLComplex16* b) {
    ZVLComplex16 L;
    zLn_scalar(&L, a);
    const double bre = b->real, bim = b->imag;
    const double p1 = bre * L.real, p2 = bim * L.imag, p3 = bre * L.imag, p4 = bim * L.real;
    const ZVLComplex16 w = {p1 - p2, p3 + p4};
    return zExp_scalar(r, &w);
}

}  // namespace
ZVL_SCALAR_END
