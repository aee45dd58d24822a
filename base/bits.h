// Bit access to doubles, and the patterns and bounds of the format that
// kernels of every family test against. from_bits is constexpr so that
// constants can be written as the bit patterns the machine holds.
//
// The helpers have internal linkage: per-cpu units include them, and an
// unoptimised build emits out-of-line copies compiled with the unit's
// instruction set, of which the linker would keep one for every unit.
#pragma once

#include <cstdint>

namespace zvl {
namespace {

// In a unit compiled for AVX they take no AVX of their own, so that code
// kept to legacy SSE there (the complex support set) inlines them as the
// rest of the unit does: the compiler inlines a callee only where its
// instruction set is within the caller's.
#if defined(__AVX__) && !defined(__clang__)
#define ZVL_ANY_ISA __attribute__((target("no-avx")))
#else
#define ZVL_ANY_ISA
#endif

ZVL_ANY_ISA constexpr double from_bits(uint64_t b) { return __builtin_bit_cast(double, b); }
ZVL_ANY_ISA constexpr uint64_t bits(double x) { return __builtin_bit_cast(uint64_t, x); }
ZVL_ANY_ISA constexpr uint32_t high_word(double x) { return static_cast<uint32_t>(bits(x) >> 32); }
ZVL_ANY_ISA constexpr uint32_t low_word(double x) { return static_cast<uint32_t>(bits(x)); }

struct Fp64 {
    static constexpr uint64_t sign_mask = 0x8000000000000000;
    static constexpr uint64_t abs_mask = 0x7fffffffffffffff;
    // the exponent field; all of it set is an infinity or a NaN
    static constexpr uint64_t exp_mask = 0x7ff0000000000000;
    static constexpr uint64_t mant_mask = 0x000fffffffffffff;
    static constexpr uint64_t one = 0x3ff0000000000000;  // 1.0
    static constexpr uint64_t all_ones = 0xffffffffffffffff;
    // 2.2250738585072014e-308 = 2^-1022, the smallest normal number
    static constexpr double min_normal = from_bits(0x0010000000000000);
    // 1.7976931348623157e308, the largest finite number
    static constexpr double max_finite = from_bits(0x7fefffffffffffff);
    // 4503599627370496.0 = 2^52: from here on every double is an integer
    static constexpr double two52 = from_bits(0x4330000000000000);
    // 6755399441055744.0 = 1.5 * 2^52: x + shifter rounds x (|x| < 2^51)
    // to an integer, in the current rounding mode, and holds it in the low
    // bits of the sum
    static constexpr double shifter = from_bits(0x4338000000000000);
};

}  // namespace
}  // namespace zvl
