// The table of the complex logarithm's vector kernels, held once for every
// cpu type (tools/complex_tables.cpp writes it).
#pragma once

namespace zvl {

// Row j, 0 to 64: R, H, L. R is 1/(1 + j/64) to 10 bits, H + L is -ln R,
// H a multiple of 2^-42 so that H plus a multiple of ln 2's high part is
// exact.
extern const double ln_table[65][3];

}  // namespace zvl
