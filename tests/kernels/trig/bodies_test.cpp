// The inverse trigonometric and hyperbolic bodies against MPFR, through
// every wrapper this processor runs (Sse2 at the baseline, Sse41, Avx; the
// remainder of each run goes through Scalar) and the element-by-element
// bodies:
//   - the largest error per function, mode and body over seeded random
//     arguments (whole range by bit pattern, the working ranges, and the
//     points where an algorithm changes, with their neighbours) is within
//     the mode's bound: HA 1 ulp, LA 4 ulp, EP 2^-26 relative;
//   - the wrappers of one body give the same bits and statuses;
//   - the directed cases of tests/data/directed/<fn>.txt hold bit for bit.
// ZVL_TRIG_SAMPLES multiplies the random samples (the long sweep).
#include <gtest/gtest.h>
#include <mpfr.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "tests/kernels/trig/bodies.h"
#include "tests/kernels/trig/samples.h"

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

TEST_P(Accuracy, DirectedCases) {
    const char* fn = GetParam();
    std::vector<Directed> cases;
    ASSERT_TRUE(read_directed(fn, &cases)) << "no directed cases for " << fn;
    Samples s;
    for (const Directed& c : cases) {
        s.a.push_back(c.a);
        if (c.two) s.b.push_back(c.b);
    }
    for (const BodyRun& b : bodies()) {
        if (std::strcmp(b.fn, fn) != 0) continue;
        const Measured m = run(b, s);
        for (size_t i = 0; i < cases.size(); ++i) {
            const Directed& c = cases[i];
            if (!c.applies_to(b.mode)) continue;
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

INSTANTIATE_TEST_SUITE_P(Trig, Accuracy, testing::Values("atan", "atan2", "sinh", "cosh", "tanh", "asin", "acos",
                                                 "asinh", "acosh", "atanh"),
                         [](const testing::TestParamInfo<const char*>& p) {
                             return std::string(p.param);
                         });

}  // namespace
}  // namespace zvl_test
