// ext_sqrt against the plain form of the same means (kept here as the
// reference: Horner's scheme, r = a y, the scale applied at the end), bit
// for bit.
// The roundings inside differ in last bits now and then; the result,
// within about 2^-114 of the root before its last rounding, can differ only
// where the root lies about that close to a midpoint between extended
// numbers. So besides random arguments in every binade (subnormals
// included; ZVL_SQRT_SAMPLES per copy, default 2 million) the test takes
// every argument whose root lies within 2^-50 ulp of a midpoint for
// significands in [1, 4) (ZVL_SQRT_HARD widens the bound by powers of 2).
#include <gtest/gtest.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <vector>

#include "kernels/common/fp_guard.h"
#include "tests/kernels/complex/ext_set.h"

namespace {

constexpr double kSqrtTable[128] = {
#include "kernels/complex/ext/table_sqrt.inc"
};

// The reference: Horner's scheme, 2^k built as an extended value and
// applied last.
long double ref_pow2(int k) { return ext_from_bits(uint64_t{1} << 63, static_cast<unsigned>(k + 16383)); }

long double ref_normal(long double x) {
    const uint64_t m = ext_sig_bits(x);
    const int e = static_cast<int>(ext_se_bits(x) & 0x7fff) - 16383;
    const int p = e & 1;
    const long double a = ext_from_bits(m, static_cast<unsigned>(16383 + p));
    const long double y0 = kSqrtTable[64 * p + static_cast<int>((m >> 57) & 63)];
    const long double ee = a * y0 * y0 - 1.0L;
    long double q = -0.20947265625L;
    for (long double c : {0.2255859375L, -0.24609375L, 0.2734375L, -0.3125L, 0.375L, -0.5L}) q = c + ee * q;
    const long double y = y0 + y0 * (ee * q);
    const long double r = a * y;
    const long double t = r * 0x200000001p0L;
    const long double hi = t - (t - r), lo = r - hi;
    const long double d = ((a - hi * hi) - 2.0L * hi * lo) - lo * lo;
    return (r + d * y * 0.5L) * ref_pow2((e - p) / 2);
}

long double ref_sqrt(long double x) {
    const unsigned se = ext_se_bits(x);
    const unsigned ef = se & 0x7fff;
    if ((se & 0x8000) || ef == 0) {
        if (x == 0) return x;
        if (x < 0) return (x - x) / (x - x);
        return ref_normal(x * ref_pow2(200)) * ref_pow2(-100);
    }
    return ref_normal(x);
}

std::vector<const ExtSet*> copies() {
    std::vector<const ExtSet*> v;
    for (int c = 0; c < 6; ++c)
        if (c < 5 || __builtin_cpu_supports("avx")) v.push_back(ext_sets[c]);
    return v;
}

// Positive finite x: the exponent field cycles through every binade
// (0 the subnormals, at a random depth); one significand in four is a
// random head followed by ones, with or without a random tail: the top of
// a table interval and of a binade.
long double argument(uint64_t i, std::mt19937_64& rng) {
    const unsigned ef = static_cast<unsigned>(i % 0x7fff);
    uint64_t m = rng() | uint64_t{1} << 63;
    if ((i >> 15) % 4 == 0) {
        const int ones = 40 + static_cast<int>(rng() % 24);
        m |= (uint64_t{1} << ones) - 1;
        if (rng() & 1) m &= ~uint64_t{0} << (rng() % 12);
    }
    if (ef == 0) {
        m >>= 1 + rng() % 63;
        if (m == 0) m = 1;
    }
    return ext_from_bits(m, ef);
}

TEST(ExtSqrt, SameBitsOverEveryBinade) {
    X87Guard<0x300> guard;
    const char* env = std::getenv("ZVL_SQRT_SAMPLES");
    const uint64_t n = env ? std::strtoull(env, nullptr, 10) : 2000000;
    for (const ExtSet* set : copies()) {
        std::mt19937_64 rng(20261124);
        const ExtUnary f = set->unary[ext_sqrt_id];
        uint64_t bad = 0;
        for (uint64_t i = 0; i < n; ++i) {
            const long double x = argument(i, rng);
            const long double want = ref_sqrt(x), got = f(x);
            if (!ext_same_bits(got, want) && ++bad <= 5)
                ADD_FAILURE() << set->label << std::hex << " x = " << ext_se_bits(x) << ':' << ext_sig_bits(x)
                              << " got " << ext_sig_bits(got) << " want " << ext_sig_bits(want);
        }
        EXPECT_EQ(bad, 0u) << set->label << " of " << n;
    }
}

// Each side of the bounds of the path with the scale folded in, and the
// extreme significands there.
TEST(ExtSqrt, SameBitsAtThePathsBounds) {
    X87Guard<0x300> guard;
    std::vector<long double> xs;
    for (unsigned ef : {16383u - 1000, 16383u - 999, 16383u - 998, 16383u + 998, 16383u + 999, 16383u + 1000,
                        16383u, 16384u, 1u, 0x7ffeu})
        for (uint64_t m : {0x8000000000000000u, 0x8000000000000001u, 0xffffffffffffffffu, 0xfffffffffffff800u,
                           0xfffffffffffffc00u, 0x83ffffffffffffffu, 0x87fffffffffffc00u})
            xs.push_back(ext_from_bits(m, ef));
    for (const ExtSet* set : copies())
        for (long double x : xs)
            EXPECT_TRUE(ext_same_bits(set->unary[ext_sqrt_id](x), ref_sqrt(x)))
                << set->label << std::hex << ' ' << ext_se_bits(x) << ':' << ext_sig_bits(x);
}

// Significands A of x = A 2^-63 (s = 65) or A 2^-62 (s = 66), whose root
// lies near the midpoint z 2^-64, z odd: z^2 = A 2^s + c. For each small c
// (c = 1 mod 8) z^2 = c mod 2^s has four roots, lifted bit by bit (Hensel);
// those z in [2^64, 2^65) whose A has 64 bits give the arguments. The
// root's distance to the midpoint is about |c| 2^-68 ulp.
std::vector<long double> near_midpoints(int64_t bound) {
    using u128 = unsigned __int128;
    std::vector<long double> out;
    for (int sh : {65, 66}) {
        const u128 mod = u128{1} << sh;
        for (int64_t c = 1 - bound / 8 * 8; c <= bound; c += 8) {
            const u128 cc = static_cast<u128>(static_cast<__int128>(c)) % mod;
            u128 z = 1;
            for (int i = 3; i < sh; ++i)
                if ((((z * z - cc) % mod) >> i) & 1) z += u128{1} << (i - 1);
            for (u128 w : {z, mod - z, (z + (mod >> 1)) % mod, (mod - z + (mod >> 1)) % mod}) {
                if ((w * w - cc) % mod != 0) continue;
                // the one z = w mod 2^sh in [2^64, 2^65)
                u128 zz = w % mod;
                while (zz < (u128{1} << 64)) zz += mod;
                if (zz >= (u128{1} << 65)) continue;
                const u128 m = zz >> 1;  // z = 2m + 1; z^2 = 4 m (m + 1) + 1
                const u128 q = m * (m + 1) + static_cast<u128>(static_cast<__int128>((1 - c) / 4));
                const u128 a = q >> (sh - 2);
                if ((q & ((u128{1} << (sh - 2)) - 1)) != 0 || a >> 63 != 1 || a >> 64 != 0) continue;
                out.push_back(ext_from_bits(static_cast<uint64_t>(a), sh == 65 ? 16383u : 16384u));
            }
        }
    }
    return out;
}

TEST(ExtSqrt, SameBitsNearMidpoints) {
    X87Guard<0x300> guard;
    const char* env = std::getenv("ZVL_SQRT_HARD");
    const std::vector<long double> xs = near_midpoints(int64_t{1} << (18 + (env ? std::atoi(env) : 0)));
    ASSERT_GT(xs.size(), 10000u) << xs.size();
    for (const ExtSet* set : copies())
        // both paths: the scale folded in (2^40) and applied at the end (2^4000)
        for (long double scale : {1.0L, 0x1p40L, 0x1p-40L, 0x1p4000L, 0x1p-4000L}) {
            uint64_t bad = 0;
            for (long double x0 : xs) {
                const long double x = x0 * scale;
                if (!ext_same_bits(set->unary[ext_sqrt_id](x), ref_sqrt(x)) && ++bad <= 5)
                    ADD_FAILURE() << set->label << std::hex << " x = " << ext_se_bits(x) << ':' << ext_sig_bits(x);
            }
            EXPECT_EQ(bad, 0u) << set->label << " of " << xs.size();
        }
}

}  // namespace
