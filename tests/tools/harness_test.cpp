// The accuracy harness measures what it claims: errors in ulps of the
// correctly rounded result, special values without partial credit, samples
// where the rows put them, and data files read as written.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <cstring>
#include <map>

#include "tools/accuracy/budgets.h"

namespace {

using namespace zvl_tools;

constexpr double kInf = HUGE_VAL;
constexpr double kMax = 0x1.fffffffffffffp+1023;

int ref_recip(mpfr_ptr r, mpfr_srcptr x, mpfr_rnd_t rnd) { return mpfr_ui_div(r, 1, x, rnd); }
int ref_half(mpfr_ptr r, mpfr_srcptr x, mpfr_rnd_t rnd) { return mpfr_div_2ui(r, x, 1, rnd); }
// x (1 - 2^-60): just below x, rounds back to x.
int ref_below(mpfr_ptr r, mpfr_srcptr x, mpfr_rnd_t rnd) {
    mpfr_t t;
    mpfr_init2(t, 256);
    mpfr_set_ui_2exp(t, 1, -60, MPFR_RNDN);
    mpfr_ui_sub(t, 1, t, MPFR_RNDN);
    const int i = mpfr_mul(r, x, t, rnd);
    mpfr_clear(t);
    return i;
}
// x (1 + 0.3 * 2^-52): on the largest double, 0.6 ulp above it.
int ref_above(mpfr_ptr r, mpfr_srcptr x, mpfr_rnd_t rnd) {
    mpfr_t t;
    mpfr_init2(t, 256);
    mpfr_set_d(t, 0.3, MPFR_RNDN);
    mpfr_mul_2si(t, t, -52, MPFR_RNDN);
    mpfr_add_ui(t, t, 1, MPFR_RNDN);
    const int i = mpfr_mul(r, x, t, rnd);
    mpfr_clear(t);
    return i;
}

Exact exact_of(Ref1 ref, double x) {
    FunctionRow row;
    row.shape = Shape::D1;
    row.ref1 = ref;
    Samples s;
    s.a = {x};
    s.origin = {Origin::Special};
    return exact_values(row, s)[0];
}

struct MetricCase {
    const char* what;
    Ref1 ref;
    double x;
    double got;
    double ulps;  // expected, to 1e-9
};

class Metric : public testing::TestWithParam<MetricCase> {};

TEST_P(Metric, UlpError) {
    const MetricCase& c = GetParam();
    const double e = ulp_error(c.got, exact_of(c.ref, c.x));
    if (std::isinf(c.ulps))
        EXPECT_TRUE(std::isinf(e)) << c.what << ": " << e;
    else
        EXPECT_NEAR(e, c.ulps, 1e-9) << c.what;
}

const double third = 1.0 / 3.0;  // 1/3 lies a third of an ulp above it

INSTANTIATE_TEST_SUITE_P(
    Cases, Metric,
    testing::Values(MetricCase{"rounded result", ref_recip, 3.0, third, 1.0 / 3},
                    MetricCase{"one ulp up", ref_recip, 3.0, std::nextafter(third, 1.0), 2.0 / 3},
                    MetricCase{"one ulp down", ref_recip, 3.0, std::nextafter(third, 0.0), 4.0 / 3},
                    MetricCase{"exact result", ref_recip, 4.0, 0.25, 0},
                    // ulp of the rounded result's binade: 1 - 2^-52 + 2^-104 rounds below 1
                    MetricCase{"below a power of two", ref_recip, 1.0 + 0x1p-52, 1.0,
                               2.0 - 0x1p-51},
                    // 1 - 2^-60 rounds to 1, whose ulp is 2^-52
                    MetricCase{"rounds up to a power of two", ref_below, 1.0, 0x1.fffffffffffffp-1,
                               0.5 - 0x1p-8},
                    MetricCase{"subnormal tie", ref_half, 0x1.8p-1073, 0x1p-1073, 0.5},
                    MetricCase{"subnormal other side", ref_half, 0x1.8p-1073, 0x1p-1074, 0.5},
                    MetricCase{"subnormal flushed", ref_half, 0x1.8p-1073, 0.0, 1.5},
                    MetricCase{"overflow rounds to infinity", ref_above, kMax, kInf, 0},
                    MetricCase{"largest double below it", ref_above, kMax, kMax, 0.6},
                    MetricCase{"far overflow", mpfr_exp, 1e300, kInf, 0},
                    MetricCase{"far overflow, finite", mpfr_exp, 1e300, kMax, kInf},
                    // infinity counts as 2^1024
                    MetricCase{"finite result, infinity", ref_recip, 0x1p-1023, kInf, 0x1p52},
                    MetricCase{"pole", ref_recip, 0.0, kInf, 0},
                    MetricCase{"pole, wrong sign", ref_recip, -0.0, kInf, kInf},
                    MetricCase{"pole, finite", ref_recip, 0.0, kMax, kInf},
                    MetricCase{"exact zero", ref_recip, kInf, 0.0, 0},
                    MetricCase{"exact zero, wrong sign", ref_recip, kInf, -0.0, kInf},
                    MetricCase{"exact zero, not zero", ref_recip, kInf, 0x1p-1074, 1},
                    MetricCase{"NaN", ref_recip, __builtin_nan(""), __builtin_nan(""), 0},
                    MetricCase{"NaN expected", ref_recip, __builtin_nan(""), 0.0, kInf},
                    MetricCase{"NaN returned", ref_recip, 3.0, __builtin_nan(""), kInf}));

TEST(Metric, RelativeError) {
    const Exact e = exact_of(ref_recip, 3.0);
    // 2/3 ulp of 2^-54 over 1/3
    EXPECT_NEAR(rel_error(ulp_error(std::nextafter(third, 1.0), e), e), 0x1p-53, 1e-25);
    // subnormal results are measured against the smallest normal
    const Exact s = exact_of(ref_half, 0x1.8p-1073);
    EXPECT_NEAR(rel_error(1.5, s), 1.5 * 0x1p-52, 1e-25);
}

// A callable that is right on arrays and one ulp off element by element, at
// one input: the harness must find it in the second run.
void off_alone(const void*, int32_t n, const double* a, const double*, double* r) {
    for (int32_t i = 0; i < n; ++i) r[i] = 1.0 / a[i];
    if (n == 1 && a[0] == 5.0) r[0] = std::nextafter(r[0], 1.0);
}

TEST(Measure, FindsErrorsOfTheElementByElementRun) {
    FunctionRow row;
    row.shape = Shape::D1;
    row.ref1 = ref_recip;
    Samples s;
    for (double x = 1; x <= 9; ++x) {
        s.a.push_back(x);
        s.origin.push_back(Origin::Random);
    }
    const std::vector<Exact> exact = exact_values(row, s);
    const Stats whole = measure({off_alone, nullptr}, s, exact, false);
    EXPECT_LE(whole.max_ulp, 0.5);
    const Stats both = measure({off_alone, nullptr}, s, exact, true);
    EXPECT_GT(both.max_ulp, 0.5);
    EXPECT_EQ(s.a[both.worst_ulp], 5.0);
    EXPECT_TRUE(both.single_ulp);
    EXPECT_EQ(both.count, 2 * s.size());
}

const FunctionRow& row_named(const char* name) {
    for (const FunctionRow& r : rows())
        if (std::string(r.name) == name) return r;
    ADD_FAILURE() << "no row " << name;
    return rows()[0];
}

TEST(Samples, SeedDecides) {
    SampleOptions o;
    o.random = 1000;
    const Samples a = make_samples(row_named("div"), o);
    const Samples b = make_samples(row_named("div"), o);
    o.seed = 2;
    const Samples c = make_samples(row_named("div"), o);
    auto same = [](const std::vector<double>& x, const std::vector<double>& y) {
        return x.size() == y.size() && std::memcmp(x.data(), y.data(), x.size() * 8) == 0;
    };
    EXPECT_TRUE(same(a.a, b.a));
    EXPECT_TRUE(same(a.b, b.b));
    EXPECT_FALSE(same(a.a, c.a));
}

TEST(Samples, UserRangeHoldsEverySample) {
    for (Interval in : {Interval{-3.0, 5.0, Spread::Linear}, Interval{1e-10, 1e10, Spread::Log},
                        Interval{-8.0, -0.5, Spread::Log}}) {
        SampleOptions o;
        o.random = 2000;
        o.range = &in;
        const Samples s = make_samples(row_named("inv"), o);
        ASSERT_EQ(s.size(), 2000u);
        for (double x : s.a) {
            EXPECT_GE(x, std::fmin(in.lo, in.hi));
            EXPECT_LE(x, std::fmax(in.lo, in.hi));
        }
    }
}

TEST(Samples, LogSpreadGivesEachBinadeItsShare) {
    Interval in = {1.0, 1024.0, Spread::Log};
    SampleOptions o;
    o.random = 20000;
    o.range = &in;
    std::map<int, int> per_binade;
    for (double x : make_samples(row_named("inv"), o).a) per_binade[std::ilogb(x)]++;
    for (int e = 0; e < 10; ++e) EXPECT_NEAR(per_binade[e], 2000, 250) << "binade " << e;
}

TEST(Samples, SweepsTakeNeighboursOnBothSidesAndMirror) {
    SampleOptions o;
    o.random = 0;
    o.hardcases = false;
    const Samples s = make_samples(row_named("inv"), o);
    auto has = [&](double x) {
        for (double y : s.a)
            if (std::memcmp(&x, &y, sizeof x) == 0) return true;
        return false;
    };
    EXPECT_TRUE(has(std::nextafter(1.0, 0.0)));
    EXPECT_TRUE(has(std::nextafter(1.0, 2.0)));
    EXPECT_TRUE(has(-1.0));
    EXPECT_TRUE(has(-0x1p-1074)) << "below zero comes the negative side";
    EXPECT_TRUE(has(kMax)) << "below infinity";
}

TEST(Samples, ArrayAndScalarShapeKeepsRunsOfOneScalar) {
    FunctionRow row;
    row.shape = Shape::DX;
    row.ref2 = mpfr_pow;
    const Region regions[] = {{{1, 2, Spread::Linear}, {-3, 3, Spread::Linear}, 1, ""}};
    row.regions = list(regions);
    SampleOptions o;
    o.random = 640;
    const Samples s = make_samples(row, o);
    size_t runs = 1;
    for (size_t i = 1; i < s.size(); ++i) runs += s.b[i] != s.b[i - 1];
    EXPECT_EQ(runs, 10u);
}

TEST(DataFiles, HardCasesAndTheirSymmetry) {
    std::vector<Pair> cbrt, pow;
    ASSERT_TRUE(read_hardcases("cbrt", &cbrt));
    ASSERT_TRUE(read_hardcases("pow", &pow));
    ASSERT_FALSE(cbrt.empty());
    ASSERT_EQ(cbrt.size() % 2, 0u) << "the cbrt list is symmetric";
    EXPECT_EQ(cbrt[0].a, -cbrt[cbrt.size() / 2].a);
    for (const Pair& p : pow) EXPECT_FALSE(std::isnan(p.b));
    std::vector<Pair> none;
    EXPECT_FALSE(read_hardcases("no-such-function", &none));
}

TEST(DataFiles, BudgetLines) {
    const std::string path = testing::TempDir() + "budgets.txt";
    auto load = [&](const char* text, Budgets* b, std::string* error) {
        FILE* f = std::fopen(path.c_str(), "w");
        std::fputs(text, f);
        std::fclose(f);
        return b->load(path, error);
    };
    Budgets good;
    std::string error;
    ASSERT_TRUE(load("# comment\nexp HA ulp 1.0  # why\nexp EP rel 0x1p-26\nceil all ulp 0\n",
                     &good, &error))
        << error;
    ASSERT_NE(good.find("exp", kEP), nullptr);
    EXPECT_EQ(good.find("exp", kEP)->bound, 0x1p-26);
    EXPECT_TRUE(good.find("exp", kEP)->relative);
    EXPECT_EQ(good.find("exp", kLA), nullptr);
    EXPECT_NE(good.find("ceil", kLA), nullptr);
    for (const char* bad : {"exp HA ulp\n", "exp XX ulp 1\n", "exp HA bits 1\n", "exp HA ulp 1x\n",
                            "exp HA ulp -1\n"}) {
        Budgets b;
        EXPECT_FALSE(load(bad, &b, &error)) << bad;
        EXPECT_NE(error.find(":1:"), std::string::npos) << error;
    }
}

}  // namespace

namespace {

// Every peer that this machine can run, of every row (functions still to
// come included): its symbol resolves, the vector driver passes arguments
// right, and it agrees with the row's reference within a few ulps, over
// the peer's own domain.
TEST(Peers, AgreeWithTheReference) {
    int bound = 0;
    for (const zvl_tools::FunctionRow& row : zvl_tools::rows()) {
        zvl_tools::SampleOptions o;
        o.random = 3000;
        o.sweeps = false;
        o.hardcases = false;
        const zvl_tools::Samples s = zvl_tools::make_samples(row, o);
        const std::vector<zvl_tools::Exact> exact = zvl_tools::exact_values(row, s);
        for (const zvl_tools::Peer* p : zvl_tools::peers_of(row)) {
            const char* why = nullptr;
            const zvl_tools::Callable c = zvl_tools::bind_peer(*p, row.shape, &why);
            if (!c) continue;
            ++bound;
            std::vector<bool> outside(s.size(), false);
            for (size_t i = 0; i < s.size(); ++i)
                outside[i] = p->up_to > 0 && !(std::fabs(s.a[i]) <= p->up_to);
            const zvl_tools::Stats st = zvl_tools::measure(c, s, exact, true, nullptr, &outside);
            EXPECT_LE(st.max_ulp, 8.0)
                << row.name << " " << p->label << " at " << zvl_tools::show(s.a[st.worst_ulp]);
        }
    }
    EXPECT_GT(bound, 0);
}

}  // namespace
