// The ErfInv tables, held once for every cpu type and mode
// (tools/erf_tables.cpp writes them; see the rules at the top of each
// table_*.inc), and the special routine.
#pragma once

#include <cstdint>

namespace zvl {

// HA: 212 quarter-binades of t = 1 - |x|: lo of the constant, lo of the
// linear coefficient, the coefficients of r^2 .. r^14, hi of the constant,
// hi of the linear coefficient (26 significant bits).
extern const double kErfInvTableHA[212][17];
// LA: the same intervals, 12 coefficients of degree 11, constant first.
extern const double kErfInvTableLA[212][12];
// EP: 848 sixteenth-binades, 4 coefficients of degree 3, constant first.
extern const double kErfInvTableEP[848][4];

// The special routine of every mode, for the elements the main path
// refuses (|x| below 2^-53, from 1 on, NaN): stores the result to *y and
// returns ZVL_STATUS_SING for +-1 (a signed infinity), ZVL_STATUS_ERRDOM
// above 1 and for infinities (a NaN), 0 otherwise: x*x for a NaN, x for a
// zero, x*sqrt(pi)/2 rounded once for the tiny rest. Built at the baseline
// instruction set, one copy for every cpu type.
int32_t erfinv_special(const double* x, double* y);

}  // namespace zvl
