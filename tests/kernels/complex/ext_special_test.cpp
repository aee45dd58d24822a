// The support set's special values, signs of zeros, flags and symmetries,
// on every cpu type's copy; and that the six copies compute the same bits.
// No MPFR here, so the same checks run on the Windows build under Wine.
#include <gtest/gtest.h>

#include <cfenv>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "kernels/common/fp_guard.h"
#include "tests/kernels/complex/ext_set.h"

namespace {

long double ld(uint64_t sig, unsigned sign_exp) { return ext_from_bits(sig, sign_exp); }
bool is_nan(long double x) { return x != x; }

const long double kInf = ld(0x8000000000000000u, 0x7fff);
const long double kQNaN = ld(0xc000000000000000u, 0x7fff);
const long double kSNaN = ld(0x8000000000000001u, 0x7fff);   // quiet bit clear
const long double kSub = ld(0x0000000000000001u, 0);         // 2^-16445
const long double kPi = 0xc90fdaa22168c235p-62L;             // pi rounded to 64 bits
const long double kPio2 = 0xc90fdaa22168c235p-63L;
const long double kPio4 = 0xc90fdaa22168c235p-64L;
const long double k3Pio4 = 0x96cbe3f9990e91a8p-62L;
const long double kLn2 = 0xb17217f7d1cf79acp-64L;
const long double kNaNOut = kQNaN;  // expected: any NaN

constexpr int kNone = 0;
constexpr int kInvalid = FE_INVALID, kDivZero = FE_DIVBYZERO, kOverflow = FE_OVERFLOW,
              kUnderflow = FE_UNDERFLOW;
constexpr int kChecked = FE_INVALID | FE_DIVBYZERO | FE_OVERFLOW | FE_UNDERFLOW;

// The copies to run: cpu type 5's copy holds no AVX instruction (the unit
// check says so), but a processor without AVX skips it like every test.
std::vector<const ExtSet*> copies() {
    std::vector<const ExtSet*> v;
    for (int c = 0; c < 6; ++c)
        if (c < 5 || __builtin_cpu_supports("avx")) v.push_back(ext_sets[c]);
    return v;
}

struct UnaryCase {
    ExtUnaryId f;
    long double x;
    long double want;  // kNaNOut for any NaN
    int flags;         // exactly these of the four checked flags
};

const UnaryCase kUnaryCases[] = {
    {ext_fabs_id, -0.0L, 0.0L, kNone},
    {ext_fabs_id, -kInf, kInf, kNone},
    {ext_fabs_id, -2.5L, 2.5L, kNone},

    {ext_sqrt_id, 0.0L, 0.0L, kNone},
    {ext_sqrt_id, -0.0L, -0.0L, kNone},
    {ext_sqrt_id, kInf, kInf, kNone},
    {ext_sqrt_id, -kInf, kNaNOut, kInvalid},
    {ext_sqrt_id, -1.0L, kNaNOut, kInvalid},
    {ext_sqrt_id, -kSub, kNaNOut, kInvalid},
    {ext_sqrt_id, 4.0L, 2.0L, kNone},
    {ext_sqrt_id, 0x1p-16444L, 0x1p-8222L, kNone},          // subnormal argument
    {ext_sqrt_id, 0x1p16382L, 0x1p8191L, kNone},
    {ext_sqrt_id, 0x9p-16440L, 0x3p-8220L, kNone},

    {ext_log_id, 0.0L, -kInf, kDivZero},
    {ext_log_id, -0.0L, -kInf, kDivZero},
    {ext_log_id, 1.0L, 0.0L, kNone},
    {ext_log_id, 2.0L, kLn2, kNone},
    {ext_log_id, kInf, kInf, kNone},
    {ext_log_id, -kInf, kNaNOut, kInvalid},
    {ext_log_id, -1.0L, kNaNOut, kInvalid},

    {ext_log1p_id, 0.0L, 0.0L, kNone},
    {ext_log1p_id, -0.0L, -0.0L, kNone},
    {ext_log1p_id, 1.0L, kLn2, kNone},
    {ext_log1p_id, -1.0L, -kInf, kDivZero},
    {ext_log1p_id, -2.0L, kNaNOut, kInvalid},
    {ext_log1p_id, kInf, kInf, kNone},
    {ext_log1p_id, -kInf, kNaNOut, kInvalid},
    {ext_log1p_id, kSub, kSub, kUnderflow},  // x - x^2/2, inexact and tiny

    {ext_exp_id, 0.0L, 1.0L, kNone},
    {ext_exp_id, -0.0L, 1.0L, kNone},
    {ext_exp_id, kInf, kInf, kNone},
    {ext_exp_id, -kInf, 0.0L, kNone},
    {ext_exp_id, 11357.0L, kInf, kOverflow},
    {ext_exp_id, 12000.0L, kInf, kOverflow},
    {ext_exp_id, -12000.0L, 0.0L, kUnderflow},

    {ext_sin_id, 0.0L, 0.0L, kNone},
    {ext_sin_id, -0.0L, -0.0L, kNone},
    {ext_sin_id, -kSub, -kSub, kNone},
    {ext_sin_id, kInf, kNaNOut, kInvalid},
    {ext_sin_id, -kInf, kNaNOut, kInvalid},
    {ext_cos_id, 0.0L, 1.0L, kNone},
    {ext_cos_id, -0.0L, 1.0L, kNone},
    {ext_cos_id, kInf, kNaNOut, kInvalid},
    {ext_tan_id, 0.0L, 0.0L, kNone},
    {ext_tan_id, -0.0L, -0.0L, kNone},
    {ext_tan_id, -kInf, kNaNOut, kInvalid},

    {ext_sinh_id, 0.0L, 0.0L, kNone},
    {ext_sinh_id, -0.0L, -0.0L, kNone},
    {ext_sinh_id, kInf, kInf, kNone},
    {ext_sinh_id, -kInf, -kInf, kNone},
    {ext_sinh_id, -12000.0L, -kInf, kOverflow},
    {ext_sinh_id, 11357.0L, 0xce2773666cc8cc68p+16320L, kNone},  // e^x overflows, e^x/2 not
    {ext_sinh_id, 11358.0L, kInf, kOverflow},
    {ext_cosh_id, 0.0L, 1.0L, kNone},
    {ext_cosh_id, -0.0L, 1.0L, kNone},
    {ext_cosh_id, -kInf, kInf, kNone},
    {ext_cosh_id, -12000.0L, kInf, kOverflow},
    {ext_tanh_id, 0.0L, 0.0L, kNone},
    {ext_tanh_id, -0.0L, -0.0L, kNone},
    {ext_tanh_id, kInf, 1.0L, kNone},
    {ext_tanh_id, -kInf, -1.0L, kNone},
    {ext_tanh_id, -30.0L, -1.0L, kNone},

    {ext_asin_id, 0.0L, 0.0L, kNone},
    {ext_asin_id, -0.0L, -0.0L, kNone},
    {ext_asin_id, 1.0L, kPio2, kNone},
    {ext_asin_id, -1.0L, -kPio2, kNone},
    {ext_asin_id, 1.5L, kNaNOut, kInvalid},
    {ext_asin_id, -kInf, kNaNOut, kInvalid},
    {ext_acos_id, 1.0L, 0.0L, kNone},
    {ext_acos_id, -1.0L, kPi, kNone},
    {ext_acos_id, 0.0L, kPio2, kNone},
    {ext_acos_id, -0.0L, kPio2, kNone},
    {ext_acos_id, -1.5L, kNaNOut, kInvalid},
    {ext_acos_id, kInf, kNaNOut, kInvalid},
    {ext_atan_id, 0.0L, 0.0L, kNone},
    {ext_atan_id, -0.0L, -0.0L, kNone},
    {ext_atan_id, 1.0L, kPio4, kNone},
    {ext_atan_id, kInf, kPio2, kNone},
    {ext_atan_id, -kInf, -kPio2, kNone},

    {ext_asinh_id, 0.0L, 0.0L, kNone},
    {ext_asinh_id, -0.0L, -0.0L, kNone},
    {ext_asinh_id, kInf, kInf, kNone},
    {ext_asinh_id, -kInf, -kInf, kNone},
    {ext_acosh_id, 1.0L, 0.0L, kNone},
    {ext_acosh_id, kInf, kInf, kNone},
    {ext_acosh_id, 0.5L, kNaNOut, kInvalid},
    {ext_acosh_id, -kInf, kNaNOut, kInvalid},
    {ext_atanh_id, 0.0L, 0.0L, kNone},
    {ext_atanh_id, -0.0L, -0.0L, kNone},
    {ext_atanh_id, 1.0L, kInf, kDivZero},
    {ext_atanh_id, -1.0L, -kInf, kDivZero},
    {ext_atanh_id, 2.0L, kNaNOut, kInvalid},
    {ext_atanh_id, -kInf, kNaNOut, kInvalid},
};

std::string show(long double x) {
    char buf[64];
    std::snprintf(buf, sizeof buf, "%04x:%016llx", ext_se_bits(x), static_cast<unsigned long long>(ext_sig_bits(x)));
    return buf;
}

void expect_value(const char* what, long double got, long double want, int flags, int want_flags) {
    if (is_nan(want))
        EXPECT_TRUE(is_nan(got)) << what << " gave " << show(got) << ", want a NaN";
    else
        EXPECT_TRUE(ext_same_bits(got, want)) << what << " gave " << show(got) << ", want " << show(want);
    EXPECT_EQ(flags & kChecked, want_flags) << what << " flags";
}

TEST(ExtSupport, SpecialValuesSignsAndFlags) {
    X87Guard<0x300> guard;
    for (const ExtSet* set : copies()) {
        for (const UnaryCase& c : kUnaryCases) {
            std::feclearexcept(FE_ALL_EXCEPT);
            const long double got = set->unary[c.f](c.x);
            const int flags = std::fetestexcept(FE_ALL_EXCEPT);
            const std::string what = std::string(set->label) + " " + ext_unary_names[c.f] + "(" + show(c.x) + ")";
            expect_value(what.c_str(), got, c.want, flags, c.flags);
        }
    }
}

// A quiet NaN comes back a NaN with no flag, a signalling one quiet with
// invalid: every routine passes a NaN through arithmetic.
TEST(ExtSupport, NaNsGoThroughArithmetic) {
    X87Guard<0x300> guard;
    for (const ExtSet* set : copies()) {
        for (int f = 0; f < kExtUnaryCount; ++f) {
            const std::string name = std::string(set->label) + " " + ext_unary_names[f];
            std::feclearexcept(FE_ALL_EXCEPT);
            const long double q = set->unary[f](kQNaN);
            EXPECT_TRUE(is_nan(q)) << name;
            EXPECT_EQ(std::fetestexcept(kChecked), 0) << name << " of a quiet NaN";
            if (f == ext_fabs_id) {
                // the payload comes back as it was
                EXPECT_TRUE(ext_same_bits(set->unary[f](kSNaN), kSNaN)) << name;
                EXPECT_TRUE(ext_same_bits(set->unary[f](-kQNaN), -kQNaN)) << name;
                continue;
            }
            std::feclearexcept(FE_ALL_EXCEPT);
            const long double s = set->unary[f](kSNaN);
            EXPECT_TRUE(is_nan(s) && (ext_sig_bits(s) >> 62 & 1)) << name << " of a signalling NaN gave " << show(s);
            EXPECT_EQ(std::fetestexcept(kChecked), kInvalid) << name << " of a signalling NaN";
        }
        const double nan_d = __builtin_nan("0x123");
        EXPECT_TRUE(is_nan(set->fabs_d(&nan_d)));
        const double neg = -3.25, negzero = -0.0;
        EXPECT_TRUE(ext_same_bits(set->fabs_d(&neg), 3.25L));
        EXPECT_TRUE(ext_same_bits(set->fabs_d(&negzero), 0.0L));
    }
}

struct BinaryCase {
    long double y, x, want;
};

// atan2 as C99 Annex F, both signs of y through the symmetry.
const BinaryCase kAtan2Cases[] = {
    {0.0L, 0.0L, 0.0L},     {0.0L, -0.0L, kPi},    {0.0L, 2.0L, 0.0L},    {0.0L, -2.0L, kPi},
    {3.0L, 0.0L, kPio2},    {3.0L, -0.0L, kPio2},  {kInf, kInf, kPio4},   {kInf, -kInf, k3Pio4},
    {kInf, 5.0L, kPio2},    {kInf, -5.0L, kPio2},  {5.0L, kInf, 0.0L},    {5.0L, -kInf, kPi},
    {1.0L, 1.0L, kPio4},    {1.0L, -1.0L, k3Pio4}, {0.0L, kInf, 0.0L},    {0.0L, -kInf, kPi},
    {kSub, -kInf, kPi},
};

TEST(ExtSupport, Atan2SpecialValues) {
    X87Guard<0x300> guard;
    for (const ExtSet* set : copies()) {
        for (const BinaryCase& c : kAtan2Cases) {
            for (int s = 0; s < 2; ++s) {
                const long double y = s ? -c.y : c.y, want = s ? -c.want : c.want;
                std::feclearexcept(FE_ALL_EXCEPT);
                const long double got = set->ext_atan2(y, c.x);
                const std::string what = std::string(set->label) + " atan2(" + show(y) + ", " + show(c.x) + ")";
                expect_value(what.c_str(), got, want, std::fetestexcept(FE_ALL_EXCEPT), kNone);
            }
        }
        EXPECT_TRUE(is_nan(set->ext_atan2(kQNaN, 1.0L)));
        EXPECT_TRUE(is_nan(set->ext_atan2(1.0L, kQNaN)));
        EXPECT_TRUE(is_nan(set->ext_atan2(kInf, kQNaN)));
    }
}

// Deterministic arguments over the routines' domains: a spread of
// exponents and random significands, both signs.
std::vector<long double> sample_arguments(int count, int min_exp, int max_exp) {
    std::vector<long double> v;
    uint64_t s = 0x243F6A8885A308D3u;
    for (int i = 0; i < count; ++i) {
        s = s * 6364136223846793005u + 1442695040888963407u;
        const uint64_t r = s ^ (s >> 29);
        const int e = min_exp + static_cast<int>((r >> 40) % static_cast<uint64_t>(max_exp - min_exp + 1));
        v.push_back(ld((r << 1 | 1) | 0x8000000000000000u, static_cast<unsigned>(16383 + e) | (i & 1 ? 0x8000u : 0u)));
    }
    return v;
}

// Odd functions are odd and even ones even, bit for bit; sincos and
// sinhcosh give what sin, cos, sinh and cosh give.
TEST(ExtSupport, SymmetriesAndPairedRoutines) {
    X87Guard<0x300> guard;
    const ExtUnaryId odd[] = {ext_sin_id, ext_tan_id, ext_sinh_id, ext_tanh_id, ext_asin_id,
                              ext_atan_id, ext_asinh_id, ext_atanh_id};
    const std::vector<long double> xs = sample_arguments(3000, -40, 40);
    for (const ExtSet* set : copies()) {
        for (long double x : xs) {
            for (ExtUnaryId f : odd)
                ASSERT_TRUE(ext_same_bits(set->unary[f](-x), -set->unary[f](x)) || is_nan(set->unary[f](x)))
                    << set->label << " " << ext_unary_names[f] << " " << show(x);
            ASSERT_TRUE(ext_same_bits(set->unary[ext_cos_id](-x), set->unary[ext_cos_id](x)));
            ASSERT_TRUE(ext_same_bits(set->unary[ext_cosh_id](-x), set->unary[ext_cosh_id](x)));
            long double s, c;
            set->ext_sincos(x, &s, &c);
            ASSERT_TRUE(ext_same_bits(s, set->unary[ext_sin_id](x)) && ext_same_bits(c, set->unary[ext_cos_id](x)))
                << set->label << " sincos " << show(x);
            set->ext_sinhcosh(x, &s, &c);
            ASSERT_TRUE(ext_same_bits(s, set->unary[ext_sinh_id](x)) && ext_same_bits(c, set->unary[ext_cosh_id](x)))
                << set->label << " sinhcosh " << show(x);
        }
        // atan2 is odd in y, in every quadrant and on either side of |y| = |x|
        for (size_t i = 0; i + 1 < xs.size(); i += 2) {
            for (long double x : {xs[i + 1], -xs[i + 1], xs[i] * 0.75L, -xs[i] * 1.5L}) {
                const long double y = xs[i];
                ASSERT_TRUE(ext_same_bits(set->ext_atan2(-y, x), -set->ext_atan2(y, x)))
                    << set->label << " atan2(" << show(y) << ", " << show(x) << ")";
            }
        }
        // squares of integers have exact roots
        for (int k = 1; k < 5000; k += 7) {
            const long double r = set->unary[ext_sqrt_id](static_cast<long double>(k) * k);
            ASSERT_TRUE(ext_same_bits(r, static_cast<long double>(k))) << set->label << " sqrt " << k * k;
        }
    }
}

// The octant of -x is minus that of x, modulo 8, and its remainder the
// negated one.
TEST(ExtSupport, ReductionOfNegativeArguments) {
    X87Guard<0x300> guard;
    for (const ExtSet* set : copies()) {
        for (long double x : sample_arguments(200, 30, 16000)) {
            long double h1, l1, h2, l2;
            const int j1 = set->ext_reduce_pio4(x, &h1, &l1);
            const int j2 = set->ext_reduce_pio4(-x, &h2, &l2);
            EXPECT_EQ(j1 % 2, 0);
            EXPECT_EQ((j1 + j2) & 7, 0) << show(x);
            EXPECT_TRUE(ext_same_bits(h2, -h1) && ext_same_bits(l2, -l1)) << show(x);
            EXPECT_LE(h1 < 0 ? -h1 : h1, kPio4 * (1 + 0x1p-60L));
        }
    }
}

// Every copy computes the bits of cpu type 0's copy.
TEST(ExtSupport, CopiesAgreeBitForBit) {
    X87Guard<0x300> guard;
    const std::vector<long double> xs = sample_arguments(4000, -70, 70);
    const std::vector<long double> big = sample_arguments(300, 70, 16383);
    const ExtSet* ref = ext_sets[0];
    for (const ExtSet* set : copies()) {
        if (set == ref) continue;
        for (int f = 0; f < kExtUnaryCount; ++f) {
            for (const std::vector<long double>* v : {&xs, &big}) {
                for (long double x : *v) {
                    const long double a = ref->unary[f](x), b = set->unary[f](x);
                    ASSERT_TRUE(ext_same_bits(a, b) || (is_nan(a) && is_nan(b)))
                        << set->label << " " << ext_unary_names[f] << "(" << show(x) << ") " << show(b)
                        << " against " << show(a);
                }
            }
        }
        for (size_t i = 0; i + 1 < xs.size(); i += 2)
            ASSERT_TRUE(ext_same_bits(ref->ext_atan2(xs[i], xs[i + 1]), set->ext_atan2(xs[i], xs[i + 1])));
    }
}

}  // namespace
