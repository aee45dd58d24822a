// pi and its fractions in two parts, hi the nearest double and lo the
// nearest double to the rest, for the inverse trigonometric families.
#pragma once

#include "base/bits.h"

namespace zvl {

struct Pi {
    // pi/2 = 1.5707963267948966 + 6.123233995736766e-17
    static constexpr double half_hi = from_bits(0x3ff921fb54442d18);
    static constexpr double half_lo = from_bits(0x3c91a62633145c07);
    // pi = 3.141592653589793 + 1.2246467991473532e-16
    static constexpr double hi = from_bits(0x400921fb54442d18);
    static constexpr double lo = from_bits(0x3ca1a62633145c07);
    // pi/4 = 0.7853981633974483 + 3.061616997868383e-17
    static constexpr double quarter_hi = from_bits(0x3fe921fb54442d18);
    static constexpr double quarter_lo = from_bits(0x3c81a62633145c07);
    // 3 pi/4 = 2.356194490192345 + 9.184850993605148e-17
    static constexpr double three_quarters_hi = from_bits(0x4002d97c7f3321d2);
    static constexpr double three_quarters_lo = from_bits(0x3c9a79394c9e8a0a);
};

}  // namespace zvl
