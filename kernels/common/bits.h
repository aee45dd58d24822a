// Bit access to doubles. from_bits is constexpr so that constants can be
// written as the bit patterns the machine holds.
//
// The helpers have internal linkage: per-cpu units include them, and an
// unoptimised build emits out-of-line copies compiled with the unit's
// instruction set, of which the linker would keep one for every unit.
#pragma once

#include <cstdint>

namespace zvl {
namespace {

constexpr double from_bits(uint64_t b) { return __builtin_bit_cast(double, b); }
constexpr uint64_t bits(double x) { return __builtin_bit_cast(uint64_t, x); }
constexpr uint32_t high_word(double x) { return static_cast<uint32_t>(bits(x) >> 32); }
constexpr uint32_t low_word(double x) { return static_cast<uint32_t>(bits(x)); }

}  // namespace
}  // namespace zvl
