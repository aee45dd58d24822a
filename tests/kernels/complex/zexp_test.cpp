// Complex Exp: the special values and signs of zeros of every slot, on the
// vector path and in the scalar routine alike; the elements the vector path
// refuses (a part of 512 or more) computed as well as the others; the flags
// of the deliberate overflow and underflow.
#include <gtest/gtest.h>

#include <cfenv>
#include <cmath>
#include <vector>

#include "base/cpu_type.h"
#include "frame/kernel_sets.h"
#include "tests/common/rows.h"

namespace zvl_test {
namespace {

using Z = ZVLComplex16;
constexpr double kInf = INFINITY, kNaN = NAN;

// Each element of `in` at position 5 of a block of ordinary elements and
// alone, in every slot this processor runs.
template <class Check>
void every_slot(const Z& in, Check check) {
    for (int cpu = 0; cpu < kCpuTypes; ++cpu) {
        if (!cpu_runs(cpu)) continue;
        for (int col = 0; col < 3; ++col) {
            std::vector<Z> a(9, Z{0.25, -1.5}), r(9);
            a[5] = in;
            zvl::kernels_VZEXP.k[cpu][col](9, a.data(), r.data());
            Z one;
            zvl::kernels_VZEXP.k[cpu][col](1, &in, &one);
            check(r[5], cpu, col);
            check(one, cpu, col);
        }
    }
}

bool equal(double got, double want) { return std::isnan(want) ? std::isnan(got) : same(got, want); }

TEST(ZExp, SpecialValues) {
    struct Case {
        Z in, want;
    } const cases[] = {
        {{0.0, 0.0}, {1.0, 0.0}},
        {{0.0, -0.0}, {1.0, -0.0}},
        {{-0.0, -0.0}, {1.0, -0.0}},
        {{3.0, -0.0}, {std::exp(3.0), -0.0}},
        {{kInf, -0.0}, {kInf, -0.0}},
        {{-kInf, 0.0}, {0.0, 0.0}},
        {{kNaN, -0.0}, {kNaN, -0.0}},
        {{0.0, 1e-310}, {1.0, 1e-310}},
        {{-0.0, -0x1p-1074}, {1.0, -0x1p-1074}},
        {{1.0, kInf}, {kNaN, kNaN}},
        {{-0.0, -kInf}, {kNaN, kNaN}},
        {{5.0, kNaN}, {kNaN, kNaN}},
        {{kInf, 1.0}, {kInf, kInf}},
        {{kInf, 2.0}, {-kInf, kInf}},
        {{kInf, -2.0}, {-kInf, -kInf}},
        {{-kInf, 1.0}, {0.0, 0.0}},
        {{-kInf, -2.0}, {-0.0, -0.0}},
        {{kInf, kInf}, {kInf, kNaN}},
        {{kInf, kNaN}, {kInf, kNaN}},
        {{-kInf, kInf}, {0.0, 0.0}},
        {{-kInf, -kInf}, {0.0, -0.0}},
        {{-kInf, kNaN}, {0.0, 0.0}},
        {{kNaN, 1.0}, {kNaN, kNaN}},
        {{kNaN, kInf}, {kNaN, kNaN}},
        // beyond the extended exponential's reach: deliberate overflow and
        // underflow, v * y for a subnormal y
        {{3000.0, 2.0}, {-kInf, kInf}},
        {{3000.0, 1e-320}, {kInf, kInf}},
        {{-3000.0, 2.0}, {-0.0, 0.0}},
        {{-3000.0, -1e-320}, {0.0, -0.0}},
        // within it, the products overflow or underflow in the rounding
        {{1000.0, 2.0}, {-kInf, kInf}},
        {{-800.0, 2.0}, {-0.0, 0.0}},
    };
    for (const Case& c : cases)
        every_slot(c.in, [&](const Z& got, int cpu, int col) {
            EXPECT_TRUE(equal(got.real, c.want.real) && equal(got.imag, c.want.imag))
                << "exp(" << c.in.real << ", " << c.in.imag << ") = (" << got.real << ", " << got.imag
                << ") at cpu " << cpu << " column " << col;
        });
}

// Overflow and underflow are raised where the result's parts overflow or
// underflow, and exp(0 + i0) is exact.
TEST(ZExp, Flags) {
    const uint32_t cpu = zvl::cpu_type();
    auto flags = [&](Z in) {
        std::feclearexcept(FE_ALL_EXCEPT);
        Z out;
        zvl::kernels_VZEXP.k[cpu][zvl::kHA](1, &in, &out);
        return std::fetestexcept(FE_OVERFLOW | FE_UNDERFLOW | FE_INEXACT | FE_INVALID);
    };
    EXPECT_EQ(flags({-800.0, 1.0}) & FE_UNDERFLOW, FE_UNDERFLOW);
    EXPECT_EQ(flags({-3000.0, 1.0}) & FE_UNDERFLOW, FE_UNDERFLOW);
    EXPECT_EQ(flags({800.0, 1.0}) & FE_OVERFLOW, FE_OVERFLOW);
    EXPECT_EQ(flags({3000.0, 1.0}) & FE_OVERFLOW, FE_OVERFLOW);
    EXPECT_EQ(flags({1.0, kInf}) & FE_INVALID, FE_INVALID);
    EXPECT_EQ(flags({0.0, 0.0}) & (FE_OVERFLOW | FE_UNDERFLOW | FE_INVALID), 0);
    EXPECT_EQ(flags({2.0, 1.0}) & (FE_OVERFLOW | FE_UNDERFLOW | FE_INVALID), 0);
}

#ifndef _WIN32
// Parts of 512 and more go to the scalar routine, which has no limit on y;
// elements on either side of the limit are within an ulp of each part
// (against the C library's extended functions, themselves far closer).
TEST(ZExp, EitherSideOfTheVectorLimit) {
    const Z points[] = {{1.0, 512.0},      {1.0, std::nextafter(512.0, 0.0)}, {512.0, 1.0},
                        {-511.99, 3.0},    {709.7, 0.5},                      {-745.0, 0.1},
                        {-700.0, -1e-300}, {2.0, 1e22},                       {0.5, -2e9}};
    for (const Z& p : points)
        every_slot(p, [&](const Z& got, int cpu, int) {
            const long double e = std::exp(static_cast<long double>(p.real));
            const long double want[2] = {e * std::cos(static_cast<long double>(p.imag)),
                                         e * std::sin(static_cast<long double>(p.imag))};
            const double part[2] = {got.real, got.imag};
            for (int k = 0; k < 2; ++k) {
                const double w = static_cast<double>(want[k]);
                const double ulp = std::fabs(std::nextafter(w, kInf) - w);
                EXPECT_LE(std::fabs(static_cast<long double>(part[k]) - want[k]), ulp)
                    << "part " << k << " of exp(" << p.real << ", " << p.imag << ") at cpu " << cpu;
            }
        });
}
#endif

}  // namespace
}  // namespace zvl_test
