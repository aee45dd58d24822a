// The twelve complex trigonometric and hyperbolic functions and their
// inverses through their kernel sets: each slot runs its own function
// (against the extended-precision complex functions of the C++ library),
// and the branch cuts and special values keep their signs in every slot.
#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <string>

#include "base/bits.h"
#include "tests/kernels/complex/zslots.h"

namespace zvl_test {
namespace {

using L = std::complex<long double>;
constexpr double kInf = INFINITY, kNaN = NAN;
constexpr double kPi = 0x1.921fb54442d18p1, kPio2 = 0x1.921fb54442d18p0;
constexpr double kAcosh2 = 0x1.5124271980435p+0;  // acosh 2, from MPFR

using Set = zvl::KernelSet<zvl::KernelZ1>;
struct Wiring {
    const char* name;
    const Set& set;
    L (*ref)(const L&);
};
const Wiring kWiring[] = {
    {"cos", zvl::kernels_VZCOS, [](const L& z) { return std::cos(z); }},
    {"sin", zvl::kernels_VZSIN, [](const L& z) { return std::sin(z); }},
    {"tan", zvl::kernels_VZTAN, [](const L& z) { return std::tan(z); }},
    {"acos", zvl::kernels_VZACOS, [](const L& z) { return std::acos(z); }},
    {"asin", zvl::kernels_VZASIN, [](const L& z) { return std::asin(z); }},
    {"atan", zvl::kernels_VZATAN, [](const L& z) { return std::atan(z); }},
    {"cosh", zvl::kernels_VZCOSH, [](const L& z) { return std::cosh(z); }},
    {"sinh", zvl::kernels_VZSINH, [](const L& z) { return std::sinh(z); }},
    {"tanh", zvl::kernels_VZTANH, [](const L& z) { return std::tanh(z); }},
    {"acosh", zvl::kernels_VZACOSH, [](const L& z) { return std::acosh(z); }},
    {"asinh", zvl::kernels_VZASINH, [](const L& z) { return std::asinh(z); }},
    {"atanh", zvl::kernels_VZATANH, [](const L& z) { return std::atanh(z); }},
};

// Points of no symmetry, in every quadrant: a slot wired to another
// function, or to a quarter turn the wrong way round, misses by far more
// than an ulp.
TEST(ZTrig, EachSlotRunsItsFunction) {
    const Z points[] = {{0.5, 0.75}, {-1.25, 0.375}, {-0.625, -2.5}, {3.0, -0.125}};
    for (const Wiring& w : kWiring)
        for (const Z& p : points) {
            const L want = w.ref(L(p.real, p.imag));
            every_slot(w.set, p, [&](const Z& got, int cpu, int col) {
                for (const auto& [g, t] : {std::pair{got.real, want.real()}, std::pair{got.imag, want.imag()}}) {
                    const double ulp = std::fabs(std::nextafter(static_cast<double>(t), kInf) - static_cast<double>(t));
                    EXPECT_LE(std::fabs(g - t), ulp) << w.name << "(" << p.real << ", " << p.imag << ") = ("
                                                      << got.real << ", " << got.imag << ") at cpu " << cpu
                                                      << " column " << col;
                }
            });
        }
}

TEST(ZTrig, BranchCutsAndSpecialValues) {
    expect_cases(zvl::kernels_VZACOS, "acos",
                 {{{2.0, 0.0}, {0.0, -kAcosh2}}, {{2.0, -0.0}, {0.0, kAcosh2}}, {{-2.0, 0.0}, {kPi, -kAcosh2}}});
    expect_cases(zvl::kernels_VZACOSH, "acosh",
                 {{{-2.0, 0.0}, {kAcosh2, kPi}}, {{-2.0, -0.0}, {kAcosh2, -kPi}}, {{0.0, 0.0}, {0.0, kPio2}}});
    expect_cases(zvl::kernels_VZASINH, "asinh",
                 {{{0.0, 2.0}, {kAcosh2, kPio2}}, {{-0.0, 2.0}, {-kAcosh2, kPio2}}, {{-0.0, -0.0}, {-0.0, -0.0}}});
    expect_cases(zvl::kernels_VZASIN, "asin", {{{2.0, 0.0}, {kPio2, kAcosh2}}, {{2.0, -0.0}, {kPio2, -kAcosh2}}});
    expect_cases(zvl::kernels_VZATANH, "atanh",
                 {{{1.0, 0.0}, {kInf, 0.0}}, {{1.0, -0.0}, {kInf, -0.0}}, {{kNaN, kInf}, {0.0, kPio2}}});
    expect_cases(zvl::kernels_VZATAN, "atan", {{{0.0, 1.0}, {0.0, kInf}}, {{-0.0, -0.0}, {-0.0, -0.0}}});
    expect_cases(zvl::kernels_VZCOSH, "cosh", {{{0.0, kInf}, {kNaN, 0.0}}, {{-0.0, 0.0}, {1.0, -0.0}}});
    expect_cases(zvl::kernels_VZCOS, "cos", {{{0.0, 0.0}, {1.0, -0.0}}, {{kInf, 0.0}, {kNaN, -0.0}}});
    expect_cases(zvl::kernels_VZSINH, "sinh", {{{-0.0, 0.0}, {-0.0, 0.0}}, {{kInf, kInf}, {kInf, kNaN}}});
    expect_cases(zvl::kernels_VZSIN, "sin", {{{0.0, kInf}, {0.0, kInf}}, {{-0.0, -0.0}, {-0.0, -0.0}}});
    // the sign of the zero comes from sin 2y, y reduced in full
    expect_cases(zvl::kernels_VZTANH, "tanh",
                 {{{600.0, 1e300}, {1.0, 0.0}}, {{600.0, -1e300}, {1.0, -0.0}}, {{-600.0, 2.0}, {-1.0, -0.0}}});
    expect_cases(zvl::kernels_VZTAN, "tan", {{{1e300, 600.0}, {0.0, 1.0}}, {{-0.0, 0.0}, {-0.0, 0.0}}});
}

// Two NaN parts: cosh and sinh give the real part's NaN, and cos and sin,
// quarter turns, the imaginary part's, with the same bits in every slot and
// on every system (the operand order of a product would decide otherwise).
TEST(ZTrig, TwoNaNsGiveOneOfThemWhateverTheBuild) {
    const double p = zvl::from_bits(0x7ff8000000000123u), q = zvl::from_bits(0xfff8000000000456u);
    for (const Wiring& w : kWiring) {
        const std::string f = w.name;
        if (f != "cos" && f != "sin" && f != "cosh" && f != "sinh") continue;
        const double want = f.size() == 4 ? p : q;
        every_slot(w.set, Z{p, q}, [&](const Z& got, int cpu, int col) {
            EXPECT_EQ(zvl::bits(got.real), zvl::bits(want)) << f << " at cpu " << cpu << " column " << col;
            EXPECT_EQ(zvl::bits(got.imag), zvl::bits(want)) << f << " at cpu " << cpu << " column " << col;
        });
    }
}

}  // namespace
}  // namespace zvl_test
