// Shared by the table generators: bit access, and the exact hexadecimal
// literal every generated table entry is printed as, so that the output is
// the same on every machine.
#pragma once

#include <cinttypes>
#include <cstdint>
#include <cstdio>

#include "base/bits.h"

namespace zvl_tables {

using zvl::bits;
using zvl::from_bits;

// An exact hexadecimal literal: 0x1.<13 digits>p<exp>, 0x0p+0 for zero.
// The tables' values are normal numbers or zero.
inline void put_hex(double x, char* out, size_t size) {
    const uint64_t b = bits(x);
    const char* sign = (b >> 63) ? "-" : "";
    const int e = static_cast<int>((b >> 52) & 0x7ff);
    if (e == 0) {
        std::snprintf(out, size, "%s0x0p+0", sign);
        return;
    }
    std::snprintf(out, size, "%s0x1.%013" PRIx64 "p%+d", sign, b & uint64_t{0xfffffffffffff},
                  e - 1023);
}

}  // namespace zvl_tables
