// What every exp kernel shares: the special-lane bound, the tables of
// powers of two, and the scalar callout.
//
// The tables are generated (tools/exp_tables.cpp) and held once for all cpu
// types; entries of the hi/lo tables are 16 bytes, hi first, so that one
// index loads both.
#pragma once

#include <cstdint>

#include "base/bits.h"

namespace zvl {

struct ExpShared {
    // 708.39599609375, the smallest |x| whose high word exceeds 0x4086232a:
    // from here (and for infinities and NaNs) a lane goes to the callout.
    // Below it every kernel's 2^n stays a normal number.
    static constexpr double special_from = from_bits(0x4086232b00000000);
};

// Defined once, in tables.cpp, for every cpu type's kernels.
// Variant A: hi, lo of 2^(j/64), j = 0 .. 63. The callout uses it too.
extern const double exp_table_a[2 * 64];
// Variant B: 2^(j/1024).
extern const double exp_table_b[1024];
// Variant C: 0.9999999928394805 * 2^(j/2048).
extern const double exp_table_c[2048];
// Variant D: hi, lo of 2^(j/128).
extern const double exp_table_d[2 * 128];
// Variant E: 2^(j/128).
extern const double exp_table_e[128];

// The exact scalar exp of one element the vector path refuses: stores the
// result to *y and returns 0, ZVL_STATUS_OVERFLOW or ZVL_STATUS_UNDERFLOW.
// One copy for every cpu type and mode, built at the baseline instruction
// set.
int32_t exp_callout(const double* x, double* y);

}  // namespace zvl
