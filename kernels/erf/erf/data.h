// The Erf tables, held once for every cpu type and mode
// (tools/erf_tables.cpp writes them; see the rules at the top of each
// table_*.inc).
#pragma once

#include <cstdint>

namespace zvl {

// HA: 46 eighth-binade entries of |x|: lo, hi of erf at the centre c, the
// coefficients of y^1 .. y^10 (y = |x| - c), -c, three zeros.
extern const double kErfTableHA[46][16];
// LA and EP: 24 quarter-binade entries: coefficients of degree 13 (LA) or 7
// (EP), constant first, zeros up to column 13, the centre, the scale.
extern const double kErfTableLA[24][16];
extern const double kErfTableEP[24][16];
// Masks by element class (small, normal, infinite, NaN): for each class, the
// masks applied to the small-path result, the main result, x and 1.0.
extern const double kErfClasses[4][4];

}  // namespace zvl
