// The tables of the complex exponential's vector kernel, held once for every
// cpu type (tools/complex_tables.cpp writes them).
#pragma once

namespace zvl {

// Row j: 2^(j/64) as its nearest double and the rest.
extern const double exp2_table[64][2];
// Row j, for the angle j pi/32: A, S, L, D. S + L is the sine; A + D the
// cosine, D a power of two (or 0) so that a remainder times it is exact.
// Row 0 is 0, -0, -0, 1.
extern const double sincos_table[64][4];

}  // namespace zvl
