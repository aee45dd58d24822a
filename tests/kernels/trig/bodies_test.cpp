// The inverse trigonometric and hyperbolic bodies against MPFR, through
// every wrapper this processor runs (Sse2 at the baseline, Sse41, Avx; the
// remainder of each run goes through Scalar) and the element-by-element
// bodies:
//   - the largest error per function, mode and body over seeded random
//     arguments (whole range by bit pattern, the working ranges, and the
//     points where an algorithm changes, with their neighbours) is within
//     the mode's bound: HA 1 ulp, LA 4 ulp, EP 2^-26 relative;
//   - the wrappers of one body give the same bits and statuses, and so does
//     each element run alone (the one-lane path), whatever its neighbours;
//   - the directed cases of tests/data/directed/<fn>.txt hold bit for bit;
//   - no overflow is raised on the way to a finite result, and the invalid
//     and divide-by-zero flags come with the statuses that mean them;
//   - Atan2 stays monotonic where its callout changes path.
// ZVL_TRIG_SAMPLES multiplies the random samples (the long sweep).
#include <gtest/gtest.h>
#include <mpfr.h>

#include <cfenv>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "tests/kernels/trig/bodies.h"
#include "tests/kernels/trig/samples.h"
#include "tools/accuracy/directed.h"
#include "tools/common/rng.h"

namespace zvl_test {
namespace {

const std::vector<BodyRun>& bodies() {
    static const std::vector<BodyRun> all = [] {
        std::vector<BodyRun> v;
        add_sse2_bodies(v);
        add_sse41_bodies(v);
        add_avx_bodies(v);
        return v;
    }();
    return all;
}

// The bound of a mode: ulps (HA, LA) or relative (EP).
struct Bound {
    bool relative;
    double limit;
};
Bound bound_of(const std::string& mode) {
    if (mode == "HA") return {false, 1.0};
    if (mode == "LA") return {false, 4.0};
    return {true, 0x1p-26};
}

struct Worst {
    double err = 0;
    size_t at = 0;
    double got = 0;
};

struct Measured {
    std::vector<double> r;
    std::vector<int32_t> st;
};

Measured run(const BodyRun& b, const Samples& s) {
    Measured m;
    const int n = static_cast<int>(s.a.size());
    m.r.assign(s.a.size(), 0.0);
    m.st.assign(s.a.size(), -7);
    if (b.run1)
        b.run1(n, s.a.data(), m.r.data(), m.st.data());
    else
        b.run2(n, s.a.data(), s.b.data(), m.r.data(), m.st.data());
    return m;
}

std::string where(const Samples& s, size_t i) {
    char buf[160];
    if (s.b.empty())
        std::snprintf(buf, sizeof buf, "a = %a", s.a[i]);
    else
        std::snprintf(buf, sizeof buf, "a = %a, b = %a", s.a[i], s.b[i]);
    return buf;
}

std::string title(const BodyRun& b) {
    return std::string(b.fn) + " " + b.mode + " (" + b.form + ", " + b.isa + ")";
}

class Accuracy : public testing::TestWithParam<const char*> {};

TEST_P(Accuracy, WithinTheModesBounds) {
    const char* fn = GetParam();
    const Samples s = samples_for(fn, sample_scale());
    const std::vector<Exact> exact = exact_values(fn, s);
    int runs = 0;
    for (const BodyRun& b : bodies()) {
        if (std::strcmp(b.fn, fn) != 0) continue;
        ++runs;
        const Bound bound = bound_of(b.mode);
        const Measured m = run(b, s);
        Worst w;
        for (size_t i = 0; i < s.a.size(); ++i) {
            const Error e = error_of(m.r[i], exact[i]);
            const double err = bound.relative ? e.rel : e.ulp;
            if (!(err <= w.err)) w = {err, i, m.r[i]};
        }
        std::printf("%-40s %s %.4g  at %s (got %a)\n", title(b).c_str(),
                    bound.relative ? "rel" : "ulp",
                    bound.relative ? std::log2(w.err) : w.err, where(s, w.at).c_str(), w.got);
        EXPECT_LE(w.err, bound.limit) << title(b) << " at " << where(s, w.at) << ": got "
                                      << w.got;
    }
    EXPECT_GT(runs, 0) << "no body of " << fn;
}

// Bodies that differ only by wrapper compute the same operations in the
// same order: the same bits, the same statuses.
TEST_P(Accuracy, WrappersAgreeBitForBit) {
    const char* fn = GetParam();
    const Samples s = samples_for(fn, 1.0);
    for (const BodyRun& b : bodies()) {
        if (std::strcmp(b.fn, fn) != 0 || std::strcmp(b.isa, "Sse2") != 0) continue;
        const Measured ref = run(b, s);
        for (const BodyRun& o : bodies()) {
            if (&o == &b || std::strcmp(o.fn, fn) != 0 || std::strcmp(o.mode, b.mode) != 0 ||
                std::strcmp(o.form, b.form) != 0)
                continue;
            const Measured m = run(o, s);
            for (size_t i = 0; i < s.a.size(); ++i) {
                ASSERT_EQ(bits_of(m.r[i]), bits_of(ref.r[i]))
                    << title(o) << " against Sse2 at " << where(s, i);
                ASSERT_EQ(m.st[i], ref.st[i]) << title(o) << " status at " << where(s, i);
            }
        }
    }
}

// Lanes are independent: an element computed alone, through the one-lane
// path, has the bits and status it has in any block.
TEST_P(Accuracy, EachElementAloneAsInTheArray) {
    const char* fn = GetParam();
    const Samples s = samples_for(fn, 0.05);
    for (const BodyRun& b : bodies()) {
        if (std::strcmp(b.fn, fn) != 0) continue;
        const Measured all = run(b, s);
        for (size_t i = 0; i < s.a.size(); ++i) {
            Samples one;
            one.a = {s.a[i]};
            if (!s.b.empty()) one.b = {s.b[i]};
            const Measured m = run(b, one);
            ASSERT_EQ(bits_of(m.r[0]), bits_of(all.r[i])) << title(b) << " at " << where(s, i);
            ASSERT_EQ(m.st[0], all.st[i]) << title(b) << " status at " << where(s, i);
        }
    }
}

TEST_P(Accuracy, DirectedCases) {
    const char* fn = GetParam();
    const bool two = !std::strcmp(fn, "atan2");
    std::vector<zvl_tools::DirectedCase> cases;
    std::vector<int> bad;
    ASSERT_TRUE(zvl_tools::read_directed(fn, two, &cases, &bad)) << "no directed cases for " << fn;
    for (int line : bad) ADD_FAILURE() << fn << ".txt:" << line << ": cannot read this line";
    Samples s;
    for (const zvl_tools::DirectedCase& c : cases) {
        s.a.push_back(c.a);
        if (two) s.b.push_back(c.b);
    }
    for (const BodyRun& b : bodies()) {
        if (std::strcmp(b.fn, fn) != 0) continue;
        const unsigned mode_bit = 1u << (b.mode[0] == 'H' ? 0 : b.mode[0] == 'L' ? 1 : 2);
        const Measured m = run(b, s);
        for (size_t i = 0; i < cases.size(); ++i) {
            const zvl_tools::DirectedCase& c = cases[i];
            if (!(c.modes & mode_bit)) continue;
            const std::string at = std::string(fn) + ".txt:" + std::to_string(c.line) + " " +
                                   title(b);
            if (c.any_nan)
                EXPECT_TRUE(m.r[i] != m.r[i]) << at << ": got " << m.r[i];
            else
                EXPECT_EQ(bits_of(m.r[i]), c.result) << at << ": got " << std::hexfloat
                                                     << m.r[i];
            EXPECT_EQ(m.st[i], c.status) << at << ": status";
        }
    }
}

// Arguments whose results are finite, at the top of each function's range:
// no step on the way may overflow. (Atan and Atan2 refuse |x| >= 2^993,
// and a refused lane's vector result, thrown away, may raise flags, as the
// kernels' frame allows; their largest arguments here are the callout's or
// just below the refusal.)
TEST(TrigFlags, NoOverflowOnTheWayToAFiniteResult) {
    const double max = 0x1.fffffffffffffp+1023;
    const double top = 0x1.fffffffffffffp+992;
    const struct {
        const char* fn;
        std::vector<double> a, b;
    } cases[] = {
        {"atan", {top, -top, 0x1p900}, {}},
        {"atan2", {top, top, 0x1p-1000, top, 1.0}, {0x1p-1000, top, top, -top, top}},
        {"sinh", {708.39892578125, 710.0, -0x1.633ce8fb9f87dp+9}, {}},
        {"cosh", {708.39892578125, 710.0, -0x1.633ce8fb9f87dp+9}, {}},
        {"tanh", {max, -max, 1e300}, {}},
        {"asinh", {max, -max, 1e154, 1e200, 0x1p512}, {}},
        {"acosh", {max, 1e154, 1e200, 0x1p512}, {}},
        {"atanh", {0x1.fffffffffffffp-1, -0x1.fffffffffffffp-1}, {}},
        {"asin", {0x1.fffffffffffffp-1, 0x1p-1074}, {}},
        {"acos", {-0x1.fffffffffffffp-1, 0x1p-1074}, {}},
    };
    for (const auto& c : cases) {
        Samples s;
        for (int k = 0; k < 3; ++k) {  // a block's worth and a remainder
            s.a.insert(s.a.end(), c.a.begin(), c.a.end());
            s.b.insert(s.b.end(), c.b.begin(), c.b.end());
        }
        for (const BodyRun& b : bodies()) {
            if (std::strcmp(b.fn, c.fn) != 0) continue;
            std::feclearexcept(FE_ALL_EXCEPT);
            const Measured m = run(b, s);
            EXPECT_FALSE(std::fetestexcept(FE_OVERFLOW)) << title(b);
            for (double r : m.r) EXPECT_TRUE(std::isfinite(r)) << title(b);
        }
    }
}

// A status that means an exception comes with its flag: ERRDOM with invalid,
// SING with divide-by-zero.
TEST(TrigFlags, StatusesRaiseTheirFlags) {
    const struct {
        const char* fn;
        double a;
        int status, flag;
    } cases[] = {
        {"asin", 1.5, 1, FE_INVALID},  {"acos", -2.0, 1, FE_INVALID},
        {"acosh", 0.5, 1, FE_INVALID}, {"atanh", 2.0, 1, FE_INVALID},
        {"atanh", -1.0, 2, FE_DIVBYZERO},
    };
    for (const auto& c : cases) {
        Samples s;
        s.a = {c.a};
        for (const BodyRun& b : bodies()) {
            if (std::strcmp(b.fn, c.fn) != 0) continue;
            std::feclearexcept(FE_ALL_EXCEPT);
            const Measured m = run(b, s);
            EXPECT_EQ(m.st[0], c.status) << title(b) << " at " << c.a;
            EXPECT_TRUE(std::fetestexcept(c.flag)) << title(b) << " at " << c.a;
        }
    }
}

// Atan2's callout takes |y/x| from 2^53 and 2^74 by other roads: y growing
// across them (x = 1, and x = -1 where the angle falls) moves the result
// one way only, and never past pi/2.
TEST(TrigAtan2, MonotonicAcrossTheCalloutsPaths) {
    Samples s;
    for (int k = 48; k <= 80; ++k)
        for (int i = 0; i < 64; ++i) s.a.push_back(std::ldexp(1.0 + i / 64.0, k));
    for (double x : {1.0, -1.0}) {
        s.b.assign(s.a.size(), x);
        for (const BodyRun& b : bodies()) {
            if (std::strcmp(b.fn, "atan2") != 0) continue;
            const Measured m = run(b, s);
            for (size_t i = 1; i < s.a.size(); ++i) {
                if (x > 0)
                    ASSERT_GE(m.r[i], m.r[i - 1]) << title(b) << " at " << where(s, i);
                else
                    ASSERT_LE(m.r[i], m.r[i - 1]) << title(b) << " at " << where(s, i);
            }
            EXPECT_EQ(m.r.back(), 0x1.921fb54442d18p0) << title(b);
        }
    }
}

// HA of the inverse hyperbolic functions carries its root or quotient as a
// 26-bit cut and a low part from a residual that must be exact: where that
// holds narrowest (Acosh's root below a quarter of x near 1.0625, the
// squares' units near 2^25 to 2^28, Atanh's quotient near 2^-8 and next to
// 1) and where the result is smallest against v (Asinh from 1/8), any lost
// bit of the residual shows as an error near one ulp. Half an ulp and a
// little is what the formulas give.
TEST(TrigInverseHyperbolic, HAStaysNearHalfAnUlpWhereResidualsAreTightest) {
    const struct {
        const char* fn;
        double lo, hi;
    } ranges[] = {
        {"asinh", 0.125, 0.25},        {"asinh", 0x1p24, 0x1p29},
        {"acosh", 1.0625, 1.125},      {"acosh", 0x1p24, 0x1p29},
        {"atanh", 0x1p-8, 0x1p-6},     {"atanh", 1 - 0x1p-20, 1.0},
    };
    zvl_tools::Rng rng(7);
    for (const auto& r : ranges) {
        Samples s;
        for (int i = 0; i < 20000; ++i) s.a.push_back(rng.linear(r.lo, r.hi));
        const std::vector<Exact> exact = exact_values(r.fn, s);
        for (const BodyRun& b : bodies()) {
            if (std::strcmp(b.fn, r.fn) != 0 || std::strcmp(b.mode, "HA") != 0) continue;
            const Measured m = run(b, s);
            Worst w;
            for (size_t i = 0; i < s.a.size(); ++i) {
                const double err = error_of(m.r[i], exact[i]).ulp;
                if (!(err <= w.err)) w = {err, i, m.r[i]};
            }
            EXPECT_LE(w.err, 0.55) << title(b) << " at " << where(s, w.at) << ": got " << w.got;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Trig, Accuracy, testing::Values("atan", "atan2", "sinh", "cosh", "tanh", "asin", "acos",
                                                 "asinh", "acosh", "atanh"),
                         [](const testing::TestParamInfo<const char*>& p) {
                             return std::string(p.param);
                         });

}  // namespace
}  // namespace zvl_test
