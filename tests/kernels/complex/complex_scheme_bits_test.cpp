// zAcos, zAcosh and zAsinh of every copy on finite, non-zero arguments
// against their shared scheme written the plain way (kept here as the
// reference): a branch at the crossover to ext_acos or ext_asin of p/A or
// to ext_atan2 of the side against p, a branch at A = 1.5 to ext_log or
// ext_log1p, every root by a call of ext_sqrt. The routines form the
// arguments of each side, take the chosen one, and keep each root and core
// once, inline; they must give the same bits, flags included.
#include <gtest/gtest.h>

#include <cfenv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <random>
#include <vector>

#include "kernels/common/fp_guard.h"
#include "tests/kernels/complex/ext_set.h"

namespace {

struct Parts {
    long double angle, log;
};

template <bool SineType>
Parts reference(const ExtSet& set, long double p, long double q) {
    const ExtUnary sqrt = set.unary[ext_sqrt_id];
    const long double q2 = q * q;
    const long double r = sqrt((p + 1.0L) * (p + 1.0L) + q2);
    const long double s = sqrt((p - 1.0L) * (p - 1.0L) + q2);
    const long double A = (r + s) * 0.5L;
    long double sm = s - (p - 1.0L);
    if (!SineType && sm == 0) sm = q;
    Parts out;
    const long double AB = A * (SineType ? 0.9L : 0.6417L);
    if (SineType ? p <= AB : p < AB) {
        out.angle = set.unary[SineType ? ext_asin_id : ext_acos_id](p / A);
    } else {
        long double side;
        if (p > 1.0L) {
            side = sqrt(((A + p) / (r + p + 1.0L) + (A + p) / (s + (p - 1.0L))) * 0.5L) * q;
        } else {
            side = sqrt((sm + q2 / (r + p + 1.0L)) * (A + p) * 0.5L);
        }
        out.angle = SineType ? set.ext_atan2(p, side) : set.ext_atan2(side, p);
    }
    if (A > 1.5L) {
        out.log = set.unary[ext_log_id](A + sqrt(A * A - 1.0L));
    } else {
        const long double e = p >= 1.0L ? (p - 1.0L) + s : q2 / sm;
        const long double t = (q2 / (p + 1.0L + r) + e) * 0.5L;
        out.log = set.unary[ext_log1p_id](t + sqrt((A + 1.0L) * t));
    }
    return out;
}

uint64_t bits(double v) {
    uint64_t b;
    std::memcpy(&b, &v, sizeof b);
    return b;
}

double log_uniform(std::mt19937_64& rng, double lo, double hi) {
    const double u = std::uniform_real_distribution<double>(0.0, 1.0)(rng);
    return std::exp2(std::log2(lo) + (std::log2(hi) - std::log2(lo)) * u);
}

// Positive parts: the ordinary region, where every choice of the scheme
// goes both ways; every binade of both; each part near 1 with the other
// small or subnormal (A near 1, the branch points).
std::vector<ZVLComplex16> arguments() {
    std::mt19937_64 rng(20261125);
    std::vector<ZVLComplex16> v;
    for (int i = 0; i < 60000; ++i) v.push_back({log_uniform(rng, 0x1p-5, 0x1p5), log_uniform(rng, 0x1p-5, 0x1p5)});
    for (int i = 0; i < 20000; ++i) v.push_back({log_uniform(rng, 0x1p-1074, 0x1p1023), log_uniform(rng, 0x1p-1074, 0x1p1023)});
    for (int i = 0; i < 10000; ++i) {
        const double near_one = 1.0 + (std::uniform_real_distribution<double>(-1.0, 1.0)(rng) * 0x1p-6);
        const double small = log_uniform(rng, 0x1p-1074, 0x1p-3);
        v.push_back(i % 2 ? ZVLComplex16{near_one, small} : ZVLComplex16{small, near_one});
    }
    return v;
}

struct Case {
    ComplexScalarId id;
    bool sine;    // the scheme's sine type (asinh, p = y) or cosine type (p = x)
    bool log_re;  // the logarithm is the real part
};

TEST(ComplexSchemeBits, SameAsThePlainScheme) {
    const Case cases[] = {{zAcos_scalar_id, false, false}, {zAcosh_scalar_id, false, true}, {zAsinh_scalar_id, true, true}};
    const std::vector<ZVLComplex16> args = arguments();
    X87Guard<0x300> guard;
    for (int c = 0; c < 6; ++c) {
        if (c == 5 && !__builtin_cpu_supports("avx")) continue;
        const ExtSet& set = *ext_sets[c];
        for (const Case& k : cases) {
            size_t bad = 0;
            for (const ZVLComplex16& z : args) {
                std::feclearexcept(FE_ALL_EXCEPT);
                const Parts h = k.sine ? reference<true>(set, z.imag, z.real) : reference<false>(set, z.real, z.imag);
                const double angle = static_cast<double>(h.angle), log = static_cast<double>(h.log);
                const ZVLComplex16 want = k.log_re ? ZVLComplex16{log, angle} : ZVLComplex16{angle, -log};
                const int want_flags = std::fetestexcept(FE_ALL_EXCEPT);
                std::feclearexcept(FE_ALL_EXCEPT);
                ZVLComplex16 got;
                set.complex[k.id](&got, &z);
                const int got_flags = std::fetestexcept(FE_ALL_EXCEPT);
                if (bits(got.real) != bits(want.real) || bits(got.imag) != bits(want.imag) || got_flags != want_flags) {
                    if (++bad <= 5)
                        ADD_FAILURE() << set.label << ' ' << complex_scalar_names[k.id] << std::hexfloat << " ("
                                      << z.real << ", " << z.imag << "): (" << got.real << ", " << got.imag
                                      << ") flags " << got_flags << ", plain (" << want.real << ", " << want.imag
                                      << ") flags " << want_flags;
                }
            }
            EXPECT_EQ(bad, 0u) << set.label << ' ' << complex_scalar_names[k.id] << " of " << args.size();
        }
    }
}

}  // namespace
