// What the Ln kernels share: their tables and the scalar callout, held once
// for every cpu type and mode.
//
// The tables are generated (tools/log_tables.cpp): each row holds R ~ 1/c
// for its centre c (20 significant bits) and T = ln(1/R), rows 32 bytes
// apart so that the pair at the start of a row loads as one.
#pragma once

#include <cstdint>

namespace zvl {

// Pivot 2/3 (variants A to C): R, T to nearest, T_lo, T_hi with T_hi a
// multiple of 2^-21 (the last bit of A's ln2 hi part).
extern const double ln_table_b[257][4];
// Pivot 0.7495 (variants D and E): R, T_hi, T_lo, 0 with T_hi a multiple of
// 2^-42 (the last bit of D's ln2 hi part).
extern const double ln_table_d[768][4];
// The callout's rows for c = 1 + i/64: R, T_hi, T_lo, with T_hi as in D.
extern const double ln_table_callout[128][3];

// The exact scalar ln of one element: stores the result to *y and returns
// 0, ZVL_STATUS_ERRDOM (negatives, -inf) or ZVL_STATUS_SING (zeros). NaN and
// +inf pass silently; denormals get normal results. One copy for every cpu
// type and mode, built at the baseline instruction set.
int32_t ln_callout(const double* x, double* y);

}  // namespace zvl
