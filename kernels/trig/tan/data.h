// The table of the scalar tangent, held once for every cpu type
// (tools/trig_tables.cpp writes it).
#pragma once

namespace zvl {

// 32 rows of 20 words, step pi/32 over one period, row (N + 16q) mod 32.
// Row i holds the expansion in r of f(B + r), B = i pi/32: f = tan, except
// in the pole rows 9 to 23, where f = tan(x) + 1/(x - pi/2) is what is left
// when the pole's -1/(x - pi/2) is taken out.
//   0 to 13   Taylor coefficients of degrees 8, 9, 10, 2, 11, 3, 12, 4, 13,
//             5, 14, 6, 15, 7 (the order the evaluation reads them)
//   14, 15    f(B), high and low; in the pole rows the high word is a
//             multiple of 2^-43, so that the pole's short reciprocal less
//             it is exact
//   16, 17    f'(B): a power of two (1 or 2) and the rest; in the pole rows
//             0 and f'(B)
//   18        pole weight: 1 in the pole rows, else 0
//   19        pole mask: the bits 0xfffffff800000000 in the pole rows, which
//             cut the pole's reciprocal to 18 bits; else 0
extern const double TanTable32[32 * 20];

// The vector tangent of cpu type 0: words 0 to 3 the polynomial P of
// tan r = r + r^3 P(r^2), |r| <= pi/64, highest power first; then 16 rows
// of two words, row m for B = (m - 8) pi/32: tan B high and low.
extern const double TanTable16[4 + 16 * 2];

}  // namespace zvl
