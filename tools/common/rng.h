// A small seeded generator for the measuring tools. Its own arithmetic, not
// the standard distributions, so that a seed gives the same samples with any
// standard library.
#pragma once

#include <cstdint>

#include "base/bits.h"

namespace zvl_tools {

// xoshiro256** seeded through splitmix64.
struct Rng {
    uint64_t s[4];

    explicit Rng(uint64_t seed) {
        for (uint64_t& w : s) {
            seed += 0x9e3779b97f4a7c15;
            uint64_t z = seed;
            z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9;
            z = (z ^ (z >> 27)) * 0x94d049bb133111eb;
            w = z ^ (z >> 31);
        }
    }

    uint64_t next() {
        const uint64_t result = rotl(s[1] * 5, 7) * 9;
        const uint64_t t = s[1] << 17;
        s[2] ^= s[0];
        s[3] ^= s[1];
        s[1] ^= s[2];
        s[0] ^= s[3];
        s[2] ^= t;
        s[3] = rotl(s[3], 45);
        return result;
    }

    // Uniform in [0, 1), 53 random bits.
    double unit() { return static_cast<double>(next() >> 11) * 0x1p-53; }

    // Uniform in [0, n) for n > 0 (the tiny modulo bias does not matter here).
    uint64_t below(uint64_t n) { return next() % n; }

    // Uniform over the doubles in [lo, hi] by value.
    double linear(double lo, double hi) {
        const double x = lo + (hi - lo) * unit();
        return x > hi ? hi : x;
    }

    // Uniform over the bit patterns from bits(lo) to bits(hi), both of one
    // sign: every binade gets the same share, subnormals included.
    double by_bits(double lo, double hi);

  private:
    static uint64_t rotl(uint64_t x, int k) { return (x << k) | (x >> (64 - k)); }
};

using zvl::bits;
using zvl::from_bits;

inline double Rng::by_bits(double lo, double hi) {
    const bool negative = hi < 0 || (hi == 0 && lo < 0);
    uint64_t m1 = bits(lo) & 0x7fffffffffffffff;
    uint64_t m2 = bits(hi) & 0x7fffffffffffffff;
    if (m1 > m2) {
        const uint64_t t = m1;
        m1 = m2;
        m2 = t;
    }
    const uint64_t m = m1 + below(m2 - m1 + 1);
    return from_bits(m | (negative ? 0x8000000000000000 : 0));
}

}  // namespace zvl_tools
