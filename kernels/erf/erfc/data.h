// The Erfc tables, held once for every cpu type and mode
// (tools/erf_tables.cpp writes them; see the rules at the top of each
// table_*.inc).
#pragma once

#include <cstdint>

namespace zvl {

// 28 intervals of |x|: g(x) = exp(x^2) erfc(x) about the interval's start,
// lo and hi of the constant, lo and hi of the linear term, then the
// coefficients of y^2 .. y^13.
extern const double kErfcTable[28][16];
// The intervals' starts, two doubles apart (the second is 0).
extern const double kErfcStarts[28][2];
// hi, lo of 2^(j/128): hi with its low 27 bits clear.
extern const double kErfcExp[128][2];

}  // namespace zvl
