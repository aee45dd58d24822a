// The constants of the extended-precision support set: the generated ones
// (table_constants.inc, from tools/ext_tables.cpp) and the exact ones typed in.
#pragma once

namespace {

struct Ext {
#include "kernels/complex/ext/table_constants.inc"

    // 8589934593 = 2^33 + 1: Dekker's multiplier, which splits a 64-bit
    // significand into 31 and 32 bits
    static constexpr long double dekker = 0x200000001p0L;
    // 13835058055282163712 = 3 * 2^62: x + shifter - shifter rounds x to an
    // integer (|x| < 2^62), which the sum's low significand bits hold
    static constexpr long double shifter = 0x3p62L;
    // 2^-32 and 2^-33: below them x^3/6 and x^3/3 are under half an ulp of x
    static constexpr long double tiny32 = 0x1p-32L;
    static constexpr long double tiny33 = 0x1p-33L;
    // 2^16383 and 2^-16382, the largest and smallest normal powers of two:
    // their squares overflow and underflow on purpose
    static constexpr long double huge = 0x1p16383L;
    static constexpr long double tiny = 0x1p-16382L;
};

}  // namespace
