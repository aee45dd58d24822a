// The complex scalar routines' special values, branch cuts, signs of zeros
// and flags on every cpu type's copy; the quarter turns' rule on NaN signs;
// a result written over its own argument; and the six copies computing the
// same bits. No MPFR here, so the same checks run on the Windows build.
#include <gtest/gtest.h>

#include <cfenv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <vector>

#include "kernels/common/fp_guard.h"
#include "tests/kernels/complex/ext_set.h"

namespace {

uint64_t bits(double x) {
    uint64_t b;
    std::memcpy(&b, &x, 8);
    return b;
}

constexpr double kInf = __builtin_inf();
const double kNaN = std::nan("");  // expected: any NaN
constexpr double kSub = 0x0.0000000000123p-1022;
constexpr double kPio4 = 0x1.921fb54442d18p-1, kPio2 = 0x1.921fb54442d18p0;
constexpr double k3Pio4 = 0x1.2d97c7f3321d2p1, kPi = 0x1.921fb54442d18p1;
constexpr double kAcosh2 = 0x1.5124271980435p+0;  // acosh 2, from MPFR
constexpr double kAcosHalf = 0x1.0c152382d7366p+0;
constexpr double kTan2 = -0x1.17af62e0950f8p+1;
constexpr double kCosh2 = 0x1.e18fa0df2d9bcp+1;
constexpr double kCos2 = -0x1.aa22657537205p-2;

constexpr int kAny = -1;  // flags not checked
constexpr int kChecked = FE_INVALID | FE_DIVBYZERO | FE_OVERFLOW;

// The cpu types to run: 5 needs AVX.
std::vector<int> cpu_types() {
    std::vector<int> v;
    for (int c = 0; c < 6; ++c)
        if (c < 5 || __builtin_cpu_supports("avx")) v.push_back(c);
    return v;
}

struct Case {
    ComplexScalarId f;
    double x, y;
    double re, im;  // kNaN for any NaN; zeros and infinities by their sign
    int flags;      // exactly these of invalid, divide-by-zero, overflow
};

bool same(double got, double want) {
    if (std::isnan(want)) return std::isnan(got);
    return bits(got) == bits(want);
}

// Every square root member runs every root case: the extended one, the
// double one, and the cpu type's vector member.
struct RootMember {
    const char* name;
    ComplexScalar f;
};
std::vector<RootMember> roots(int c) {
    return {{"zSqrt_scalar", ext_sets[c]->complex[zSqrt_scalar_id]},
            {"zSqrt_fast", sqrt_sets[c]->fast},
            {"zSqrt_vector", sqrt_sets[c]->vector_one}};
}

const Case kRootCases[] = {
    {zSqrt_scalar_id, -4, 0.0, 0.0, 2, 0},
    {zSqrt_scalar_id, -4, -0.0, 0.0, -2, 0},
    {zSqrt_scalar_id, 4, 0.0, 2, 0.0, 0},
    {zSqrt_scalar_id, 4, -0.0, 2, -0.0, 0},
    {zSqrt_scalar_id, 0.0, 0.0, 0.0, 0.0, 0},
    {zSqrt_scalar_id, -0.0, -0.0, 0.0, -0.0, 0},
    {zSqrt_scalar_id, 0.0, 8, 2, 2, 0},
    {zSqrt_scalar_id, -0.0, -8, 2, -2, 0},
    {zSqrt_scalar_id, 3, 4, 2, 1, 0},
    {zSqrt_scalar_id, -3, -4, 1, -2, 0},
    {zSqrt_scalar_id, 0x1p-1074, 0.0, 0x1p-537, 0.0, 0},
    {zSqrt_scalar_id, 0.0, 0x1p-1073, 0x1p-537, 0x1p-537, 0},       // the 2^199 prescale
    {zSqrt_scalar_id, 1, 0x1p-1060, 1, 0x1p-1061, 0},                 // |x| far above |y|
    {zSqrt_scalar_id, -0x1p1022, 1, 0x1p-512, 0x1p511, 0},
    {zSqrt_scalar_id, 0x1p-1022, 0x1p-1022, 0x1.19435caffa9f9p-511, 0x1.d203138f6c828p-513, 0},  // 2^-511 sqrt(1 + i)
    {zSqrt_scalar_id, 0.5, kInf, kInf, kInf, 0},
    {zSqrt_scalar_id, kNaN, -kInf, kInf, -kInf, 0},
    {zSqrt_scalar_id, kInf, -2, kInf, -0.0, 0},
    {zSqrt_scalar_id, -kInf, -2, 0.0, -kInf, 0},
    {zSqrt_scalar_id, kInf, kNaN, kInf, kNaN, 0},
    {zSqrt_scalar_id, -kInf, kNaN, kNaN, kInf, 0},
    {zSqrt_scalar_id, kNaN, 1, kNaN, kNaN, 0},
    {zSqrt_scalar_id, 1, kNaN, kNaN, kNaN, 0},
};

const Case kCases[] = {
    // cosh, and cos through it
    {zCosh_scalar_id, 2, 0.0, kCosh2, 0.0, 0},
    {zCosh_scalar_id, -2, 0.0, kCosh2, -0.0, 0},
    {zCosh_scalar_id, kNaN, -0.0, kNaN, -0.0, 0},
    {zCosh_scalar_id, 0.0, 2, kCos2, 0.0, 0},
    {zCosh_scalar_id, -0.0, kSub, 1, -0.0, 0},
    {zCosh_scalar_id, 0.0, kInf, kNaN, 0.0, FE_INVALID},
    {zCosh_scalar_id, -0.0, kInf, kNaN, -0.0, FE_INVALID},
    {zCosh_scalar_id, 0.0, kNaN, kNaN, -0.0, 0},
    {zCosh_scalar_id, 1, kInf, kNaN, kNaN, FE_INVALID},
    {zCosh_scalar_id, -kInf, 0.5, kInf, -kInf, 0},
    {zCosh_scalar_id, kInf, 2, -kInf, kInf, 0},
    {zCosh_scalar_id, kInf, -kInf, kInf, kNaN, FE_INVALID},
    {zCosh_scalar_id, kNaN, 1, kNaN, kNaN, 0},
    {zCosh_scalar_id, 800, 1, kInf, kInf, FE_OVERFLOW},
    {zCosh_scalar_id, 3000, -2, -kInf, -kInf, FE_OVERFLOW},
    {zCosh_scalar_id, 3000, 0x1p-1074, kInf, kInf, FE_OVERFLOW},
    {zCos_scalar_id, kInf, 0.0, kNaN, -0.0, FE_INVALID},
    {zCos_scalar_id, 0.0, 2, kCosh2, -0.0, 0},
    // sinh, and sin through it; a subnormal y kept whole
    {zSinh_scalar_id, -0.0, kSub, -0.0, kSub, 0},
    {zSinh_scalar_id, 0.0, -kInf, 0.0, kNaN, FE_INVALID},
    {zSinh_scalar_id, kInf, -0.5, kInf, -kInf, 0},
    {zSinh_scalar_id, -kInf, 2, kInf, kInf, 0},
    {zSinh_scalar_id, kInf, kNaN, kInf, kNaN, 0},
    {zSinh_scalar_id, kNaN, 0.0, kNaN, 0.0, 0},
    {zSin_scalar_id, kSub, 0.0, kSub, 0.0, 0},
    {zSin_scalar_id, -kSub, -0.0, -kSub, -0.0, 0},
    // tanh, and tan through it: the imaginary zero from the reduced y
    {zTanh_scalar_id, 600, 1e300, 1, 0.0, 0},
    {zTanh_scalar_id, 600, -1e300, 1, -0.0, 0},
    {zTanh_scalar_id, -600, 2, -1, -0.0, 0},  // sin 2 cos 2 < 0
    {zTanh_scalar_id, 600, -kSub, 1, -0.0, 0},
    {zTanh_scalar_id, -0.0, 2, -0.0, kTan2, 0},
    {zTanh_scalar_id, 0.0, kSub, 0.0, kSub, 0},
    {zTanh_scalar_id, 0.0, kInf, kNaN, kNaN, FE_INVALID},
    {zTanh_scalar_id, -kInf, 2, -1, -0.0, 0},
    {zTanh_scalar_id, kInf, -kInf, 1, -0.0, 0},
    {zTanh_scalar_id, kInf, kNaN, 1, 0.0, 0},
    {zTanh_scalar_id, kNaN, -0.0, kNaN, -0.0, 0},
    {zTan_scalar_id, 2, 0.0, kTan2, 0.0, 0},
    {zTan_scalar_id, kSub, -0.0, kSub, -0.0, 0},
    // acos: the cut beyond +-1
    {zAcos_scalar_id, 2, 0.0, 0.0, -kAcosh2, 0},
    {zAcos_scalar_id, 2, -0.0, 0.0, kAcosh2, 0},
    {zAcos_scalar_id, -2, 0.0, kPi, -kAcosh2, 0},
    {zAcos_scalar_id, 0.5, -0.0, kAcosHalf, 0.0, 0},
    {zAcos_scalar_id, 0.0, 0.0, kPio2, -0.0, 0},
    {zAcos_scalar_id, -0.0, kNaN, kPio2, kNaN, 0},
    {zAcos_scalar_id, 1, kInf, kPio2, -kInf, 0},
    {zAcos_scalar_id, kInf, 1, 0.0, -kInf, 0},
    {zAcos_scalar_id, -kInf, -1, kPi, kInf, 0},
    {zAcos_scalar_id, kInf, kInf, kPio4, -kInf, 0},
    {zAcos_scalar_id, -kInf, -kInf, k3Pio4, kInf, 0},
    {zAcos_scalar_id, kInf, kNaN, kNaN, kInf, 0},
    {zAcos_scalar_id, kNaN, -kInf, kNaN, kInf, 0},
    {zAcos_scalar_id, kNaN, 1, kNaN, kNaN, 0},
    // acosh
    {zAcosh_scalar_id, -2, 0.0, kAcosh2, kPi, 0},
    {zAcosh_scalar_id, -2, -0.0, kAcosh2, -kPi, 0},
    {zAcosh_scalar_id, 2, -0.0, kAcosh2, -0.0, 0},
    {zAcosh_scalar_id, 0.5, -0.0, 0.0, -kAcosHalf, 0},
    {zAcosh_scalar_id, -0.0, -kInf, kInf, -kPio2, 0},
    {zAcosh_scalar_id, 1, kInf, kInf, kPio2, 0},
    {zAcosh_scalar_id, kInf, -1, kInf, -0.0, 0},
    {zAcosh_scalar_id, -kInf, 1, kInf, kPi, 0},
    {zAcosh_scalar_id, -kInf, -kInf, kInf, -k3Pio4, 0},
    {zAcosh_scalar_id, kNaN, kInf, kInf, kNaN, 0},
    {zAcosh_scalar_id, kInf, kNaN, kInf, kNaN, 0},
    {zAcosh_scalar_id, 1, kNaN, kNaN, kNaN, 0},
    // asinh, and asin through it
    {zAsinh_scalar_id, 0.0, 2, kAcosh2, kPio2, 0},
    {zAsinh_scalar_id, -0.0, -2, -kAcosh2, -kPio2, 0},
    {zAsinh_scalar_id, -0.0, kSub, -0.0, kSub, 0},
    {zAsinh_scalar_id, 1, -kInf, kInf, -kPio2, 0},
    {zAsinh_scalar_id, -kInf, 1, -kInf, 0.0, 0},
    {zAsinh_scalar_id, kInf, -kInf, kInf, -kPio4, 0},
    {zAsinh_scalar_id, kNaN, kInf, kInf, kNaN, 0},
    {zAsinh_scalar_id, -kInf, kNaN, -kInf, kNaN, 0},
    {zAsinh_scalar_id, kNaN, -0.0, kNaN, -0.0, 0},
    {zAsin_scalar_id, 2, 0.0, kPio2, kAcosh2, 0},
    {zAsin_scalar_id, -2, -0.0, -kPio2, -kAcosh2, 0},
    // atanh, and atan through it
    {zAtanh_scalar_id, 1, 0.0, kInf, 0.0, FE_DIVBYZERO},
    {zAtanh_scalar_id, -1, -0.0, -kInf, -0.0, FE_DIVBYZERO},
    {zAtanh_scalar_id, 3, -0.0, 0x1.62e42fefa39efp-2, -kPio2, 0},  // ln 2 / 2
    {zAtanh_scalar_id, -0.0, kSub, -0.0, kSub, 0},
    {zAtanh_scalar_id, 0.0, kNaN, 0.0, kNaN, 0},
    {zAtanh_scalar_id, 1, kInf, 0.0, kPio2, 0},
    {zAtanh_scalar_id, -kInf, -1, -0.0, -kPio2, 0},
    {zAtanh_scalar_id, -kInf, kNaN, -0.0, kNaN, 0},
    {zAtanh_scalar_id, kNaN, -kInf, 0.0, -kPio2, 0},
    {zAtanh_scalar_id, kNaN, 1, kNaN, kNaN, 0},
    {zAtan_scalar_id, 0.0, 1, 0.0, kInf, FE_DIVBYZERO},
    {zAtan_scalar_id, -0.0, 3, -kPio2, 0x1.62e42fefa39efp-2, 0},
};

void check(const char* label, const char* name, ComplexScalar f, const Case& c) {
    const ZVLComplex16 z = {c.x, c.y};
    ZVLComplex16 w;
    std::feclearexcept(FE_ALL_EXCEPT);
    f(&w, &z);
    const int flags = std::fetestexcept(kChecked);
    EXPECT_TRUE(same(w.real, c.re) && same(w.imag, c.im))
        << label << " " << name << "(" << c.x << ", " << c.y << ") = (" << std::hexfloat << w.real
        << ", " << w.imag << "), want (" << c.re << ", " << c.im << ")";
    if (c.flags != kAny) EXPECT_EQ(flags, c.flags) << label << " " << name << "(" << c.x << ", " << c.y << ") flags";
}

TEST(ComplexScalars, SpecialValuesAndBranchCuts) {
    X87Guard<0x300> guard;
    for (int cpu : cpu_types()) {
        const ExtSet& set = *ext_sets[cpu];
        for (const Case& c : kCases) check(set.label, complex_scalar_names[c.f], set.complex[c.f], c);
        for (const Case& c : kRootCases)
            for (const RootMember& m : roots(cpu)) check(set.label, m.name, m.f, c);
    }
}

// sqrt(1e-320 + i0) is the correctly rounded root, and a sum of squares
// that would overflow in double does not.
TEST(ComplexScalars, RootsAtTheEndsOfTheRange) {
    X87Guard<0x300> guard;
    const double tiny = 1e-320, big = 1e308;
    for (int cpu : cpu_types()) {
        for (const RootMember& m : roots(cpu)) {
            ZVLComplex16 w;
            const ZVLComplex16 a = {tiny, 0.0}, b = {big, big};
            m.f(&w, &a);
            EXPECT_EQ(bits(w.real), bits(std::sqrt(tiny))) << ext_sets[cpu]->label << " " << m.name;
            EXPECT_EQ(bits(w.imag), bits(0.0));
            m.f(&w, &b);
            // sqrt(1e308 (1 + i)) = 1e154 (1.0986841134678100, 0.4550898605622274)
            EXPECT_NEAR(w.real, 1.0986841134678100e154, 1e139) << ext_sets[cpu]->label << " " << m.name;
            EXPECT_NEAR(w.imag, 0.4550898605622274e154, 1e139) << ext_sets[cpu]->label << " " << m.name;
        }
    }
}

// The quarter turns never flip a NaN's sign: tan(0 + i NaN) goes through
// tanh(NaN + i0), whose NaN comes back as it went in.
TEST(ComplexScalars, QuarterTurnsKeepTheSignOfANaN) {
    X87Guard<0x300> guard;
    const double nan_neg = -std::nan("");
    for (int cpu : cpu_types()) {
        ZVLComplex16 w;
        const ZVLComplex16 a = {0.0, nan_neg};
        ext_sets[cpu]->complex[zTan_scalar_id](&w, &a);
        EXPECT_EQ(bits(w.real), bits(0.0)) << ext_sets[cpu]->label;
        EXPECT_TRUE(std::isnan(w.imag) && std::signbit(w.imag)) << ext_sets[cpu]->label;
    }
}

// Arguments over every path: special parts, both signs, sizes from
// subnormal to huge.
std::vector<ZVLComplex16> sample_arguments() {
    const double parts[] = {0.0,  -0.0, kSub, -1e-310, 1e-200, 0.3,  -0.7, 1.0,  -1.0, 1.5,
                            2.0,  -3.0, 40.0, 600.0,  -900.0, 3000, 1e20, -1e300, kInf,
                            -kInf, kNaN};
    std::vector<ZVLComplex16> v;
    for (double x : parts)
        for (double y : parts) v.push_back({x, y});
    return v;
}

TEST(ComplexScalars, ResultOverItsOwnArgument) {
    X87Guard<0x300> guard;
    for (const ZVLComplex16& z : sample_arguments()) {
        for (int f = 0; f < kComplexScalarCount; ++f) {
            ZVLComplex16 apart, inplace = z;
            ext_sets[0]->complex[f](&apart, &z);
            ext_sets[0]->complex[f](&inplace, &inplace);
            EXPECT_TRUE(bits(apart.real) == bits(inplace.real) && bits(apart.imag) == bits(inplace.imag))
                << complex_scalar_names[f] << "(" << z.real << ", " << z.imag << ")";
        }
    }
}

bool same_bits(const ZVLComplex16& a, const ZVLComplex16& b) {
    return bits(a.real) == bits(b.real) && bits(a.imag) == bits(b.imag);
}

// Every cpu type's copy of a routine gives cpu type 0's bits; the double
// square roots too, the vector members (different wrappers, one formula)
// giving zSqrt_fast's.
TEST(ComplexScalars, CopiesAgreeBitForBit) {
    X87Guard<0x300> guard;
    const std::vector<ZVLComplex16> args = sample_arguments();
    for (int cpu : cpu_types()) {
        for (int f = 0; f < kComplexScalarCount; ++f) {
            for (const ZVLComplex16& z : args) {
                ZVLComplex16 a, b;
                ext_sets[0]->complex[f](&a, &z);
                ext_sets[cpu]->complex[f](&b, &z);
                EXPECT_TRUE(same_bits(a, b)) << ext_sets[cpu]->label << " " << complex_scalar_names[f]
                                             << "(" << z.real << ", " << z.imag << ")";
            }
        }
        for (const ZVLComplex16& z : args) {
            ZVLComplex16 a, b, c;
            sqrt_sets[0]->fast(&a, &z);
            sqrt_sets[cpu]->fast(&b, &z);
            sqrt_sets[cpu]->vector_one(&c, &z);
            EXPECT_TRUE(same_bits(a, b) && same_bits(a, c))
                << ext_sets[cpu]->label << " sqrt(" << z.real << ", " << z.imag << ")";
        }
    }
}

// A vector member over a whole array, lanes of every kind side by side
// and the array's length not a multiple of the lanes, gives each element
// what it gives alone; in place as well.
TEST(ComplexScalars, VectorRootLanesAreIndependent) {
    X87Guard<0x300> guard;
    const std::vector<ZVLComplex16> args = sample_arguments();
    const int n = static_cast<int>(args.size());
    for (int cpu : cpu_types()) {
        std::vector<ZVLComplex16> out(args.size()), inplace = args;
        sqrt_sets[cpu]->vector(n, args.data(), out.data());
        sqrt_sets[cpu]->vector(n, inplace.data(), inplace.data());
        for (int i = 0; i < n; ++i) {
            ZVLComplex16 one;
            sqrt_sets[cpu]->vector_one(&one, &args[i]);
            EXPECT_TRUE(same_bits(out[i], one) && same_bits(inplace[i], one))
                << ext_sets[cpu]->label << " element " << i;
        }
    }
}

}  // namespace
