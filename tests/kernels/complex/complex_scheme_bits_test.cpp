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
#include <utility>
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

// zLn and zLog10 take the magnitude and the angle inline, the fold of the
// angle chosen without branches and the classes read from the doubles'
// bits. Against them: half ln(h^2 + l^2) by calls of ext_log, or of
// ext_log1p of S - 1 formed without loss, and ext_atan2, both parts times
// log10(e) for Log10; the same bits and flags on every copy.
namespace ln_plain {

struct Pair {
    long double hi, lo;
};
Pair two_sum(long double a, long double b) {
    const long double s = a + b, bb = s - a;
    return {s, (a - (s - bb)) + (b - bb)};
}
Pair split(long double a) {
    const long double t = a * 0x1.00000002p33L;  // 2^33 + 1
    const long double hi = t - (t - a);
    return {hi, a - hi};
}
Pair two_prod(long double a, long double b) {
    const long double p = a * b;
    const Pair x = split(a), y = split(b);
    return {p, ((x.hi * y.hi - p) + x.hi * y.lo + x.lo * y.hi) + x.lo * y.lo};
}

long double half_log_abs(const ExtSet& set, double x, double y) {
    long double h = std::fabs(static_cast<long double>(x)), l = std::fabs(static_cast<long double>(y));
    if (h < l) std::swap(h, l);
    const long double S = h * h + l * l;
    if (std::fabs(S - 1.0L) <= 0.03L) {
        const Pair hh = two_prod(h, h), ll = two_prod(l, l);
        const Pair s = two_sum(hh.hi, ll.hi);
        const Pair d = two_sum(s.hi, -1.0L);
        return 0.5L * set.unary[ext_log1p_id](d.hi + (((d.lo + s.lo) + hh.lo) + ll.lo));
    }
    return 0.5L * set.unary[ext_log_id](S);
}

// Every sign of both parts over: the ordinary region; every binade; |z|
// near 1 (the lossless S - 1, on both sides of 1/128); |y/x| around 2^-39
// (the angle's quotient path), x of both signs; |x| = |y|.
std::vector<ZVLComplex16> arguments() {
    std::mt19937_64 rng(20261126);
    std::uniform_real_distribution<double> unit(-1.0, 1.0);
    std::vector<ZVLComplex16> base;
    for (int i = 0; i < 5000; ++i) base.push_back({log_uniform(rng, 0x1p-5, 0x1p5), log_uniform(rng, 0x1p-5, 0x1p5)});
    for (int i = 0; i < 5000; ++i)
        base.push_back({log_uniform(rng, 0x1p-1074, 0x1p1023), log_uniform(rng, 0x1p-1074, 0x1p1023)});
    for (int i = 0; i < 5000; ++i) {
        const double a = std::acos(0.0) * (unit(rng) + 1.0) / 2, r = 1.0 + unit(rng) * (i % 2 ? 0x1p-9 : 0x1p-5);
        base.push_back({r * std::cos(a), r * std::sin(a)});
    }
    for (int i = 0; i < 4000; ++i) {
        const double x = log_uniform(rng, 0x1p-1000, 0x1p1000);
        const double y = x * std::ldexp(1.0 + unit(rng) / 2, -38 - static_cast<int>(i % 4));
        base.push_back(i % 8 < 4 ? ZVLComplex16{x, y} : ZVLComplex16{y, x});
    }
    for (int i = 0; i < 500; ++i) {
        const double v = log_uniform(rng, 0x1p-1074, 0x1p1023);
        base.push_back({v, v});
    }
    std::vector<ZVLComplex16> v;
    for (const ZVLComplex16& z : base)
        for (int s = 0; s < 4; ++s) v.push_back({s & 1 ? -z.real : z.real, s & 2 ? -z.imag : z.imag});
    return v;
}

}  // namespace ln_plain

TEST(ComplexSchemeBits, LnAndLog10AsThePlainCalls) {
    const std::vector<ZVLComplex16> args = ln_plain::arguments();
    const long double k = 0xde5bd8a937287195p-65L;  // log10(e)
    X87Guard<0x300> guard;
    for (int c = 0; c < 6; ++c) {
        if (c == 5 && !__builtin_cpu_supports("avx")) continue;
        const ExtSet& set = *ext_sets[c];
        for (const ComplexScalarId id : {zLn_scalar_id, zLog10_scalar_id}) {
            const long double m = id == zLog10_scalar_id ? k : 1.0L;
            size_t bad = 0;
            for (const ZVLComplex16& z : args) {
                std::feclearexcept(FE_ALL_EXCEPT);
                const long double re = m * ln_plain::half_log_abs(set, z.real, z.imag);
                const long double im = m * set.ext_atan2(z.imag, z.real);
                const ZVLComplex16 want = {static_cast<double>(re), static_cast<double>(im)};
                const int want_flags = std::fetestexcept(FE_ALL_EXCEPT);
                std::feclearexcept(FE_ALL_EXCEPT);
                ZVLComplex16 got;
                set.complex[id](&got, &z);
                const int got_flags = std::fetestexcept(FE_ALL_EXCEPT);
                if (bits(got.real) != bits(want.real) || bits(got.imag) != bits(want.imag) || got_flags != want_flags) {
                    if (++bad <= 5)
                        ADD_FAILURE() << set.label << ' ' << complex_scalar_names[id] << std::hexfloat << " ("
                                      << z.real << ", " << z.imag << "): (" << got.real << ", " << got.imag
                                      << ") flags " << got_flags << ", plain (" << want.real << ", " << want.imag
                                      << ") flags " << want_flags;
                }
            }
            EXPECT_EQ(bad, 0u) << set.label << ' ' << complex_scalar_names[id] << " of " << args.size();
        }
    }
}

}  // namespace
