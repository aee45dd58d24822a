// The table of TrigReduce, held once for every cpu type's copy of the
// routine.
#pragma once

namespace zvl {

// 4/pi * 2^200 cut on a fixed grid of 25 bits (tools/trig_tables.cpp): word
// k, 1 <= k <= 49, holds the bits of weight 2^(201-25k) up to but not
// including 2^(226-25k), so that the product of a word with a 26- or 27-bit
// number is exact. Word 0 and the three words after word 49 are zero; a
// lookup reads words j to j+8, j <= 39.
extern const double FourOverPiWords[53];

}  // namespace zvl
