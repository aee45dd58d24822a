// Every measured function against MPFR, on every cpu type this processor
// runs and every accuracy mode, within its line of ulp_budgets.txt.
// ZVL_ACCURACY_SAMPLES sets the number of random samples (the long sweep).
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <set>
#include <string>

#include "frame/function_table.h"
#include "tools/accuracy/budgets.h"
#include "tools/accuracy/complex.h"

namespace {

using namespace zvl_tools;

const Budgets& budgets() {
    static Budgets b;
    static const bool loaded = [] {
        std::string error;
        const bool ok = b.load(budgets_path(), &error);
        if (!ok) ADD_FAILURE() << error;
        return ok;
    }();
    (void)loaded;
    return b;
}

size_t sample_count() {
    const char* s = std::getenv("ZVL_ACCURACY_SAMPLES");
    return s && *s ? std::strtoull(s, nullptr, 10) : 100000;
}

std::string describe(const Table& t, const Stats& s, bool relative) {
    const size_t i = relative ? s.worst_rel : s.worst_ulp;
    std::string text = "worst at a = " + show(t.samples.a[i]);
    if (!t.samples.b.empty()) text += ", b = " + show(t.samples.b[i]);
    text += ": got " + show(relative ? s.got_rel : s.got_ulp) + ", exact rounds to " +
            show(t.exact[i].rn);
    return text;
}

class Within : public testing::TestWithParam<Function> {};

TEST_P(Within, EveryCpuTypeAndMode) {
    const Function& f = GetParam();
    SampleOptions opt;
    opt.random = sample_count();
    const Table t = measure_function(f, opt);
    int measured_runs = 0;
    for (int cpu = 0; cpu < kCpuTypes; ++cpu)
        for (int m = 0; m < kModes; ++m) {
            if (!t.ran[cpu][m]) continue;
            ++measured_runs;
            const Budget* b = budgets().find(f.row->name, static_cast<Mode>(m));
            ASSERT_NE(b, nullptr) << f.row->name << " " << kModeNames[m] << " has no budget";
            const Stats& s = t.stats[cpu][m];
            EXPECT_TRUE(within(*b, s))
                << f.row->name << " cpu " << cpu << " (" << kCpuLabels[cpu] << ") " << kModeNames[m]
                << ": " << (b->relative ? "relative error " : "ulp error ") << measured(*b, s)
                << " over " << b->bound << "; " << describe(t, s, b->relative);
        }
    EXPECT_GT(measured_runs, 0);
}

INSTANTIATE_TEST_SUITE_P(Functions, Within,
                         testing::ValuesIn(functions().begin(), functions().end()),
                         [](const testing::TestParamInfo<Function>& p) {
                             return std::string(p.param.row->name);
                         });

// Complex functions: each part in ulps of that part and the normwise error.
class ComplexWithin : public testing::TestWithParam<ComplexFunction> {};

TEST_P(ComplexWithin, EveryCpuTypeAndMode) {
    const ComplexFunction& f = GetParam();
    const ZTable t = measure_complex(f, sample_count() / 4);
    int measured_runs = 0;
    for (int cpu = 0; cpu < kCpuTypes; ++cpu)
        for (int m = 0; m < kModes; ++m) {
            if (!t.ran[cpu][m]) continue;
            ++measured_runs;
            const Budget* b = budgets().find(f.row->name, static_cast<Mode>(m));
            ASSERT_NE(b, nullptr) << f.row->name << " " << kModeNames[m] << " has no budget";
            const ZStats& s = t.stats[cpu][m];
            auto at = [&](size_t i) {
                std::string text = show(t.samples[i].real) + ", " + show(t.samples[i].imag);
                if (!t.second.empty()) text += " ^ " + show(t.second[i].real) + ", " + show(t.second[i].imag);
                return text;
            };
            EXPECT_TRUE(within(*b, s)) << f.row->name << " cpu " << cpu << " " << kModeNames[m]
                                       << ": real part " << s.max_ulp[0] << " ulp at " << at(s.worst_ulp[0])
                                       << "; imaginary part " << s.max_ulp[1] << " ulp at "
                                       << at(s.worst_ulp[1]) << "; normwise " << s.max_norm << " at "
                                       << at(s.worst_norm) << "; budget " << budget_text(b);
        }
    EXPECT_GT(measured_runs, 0);
}

INSTANTIATE_TEST_SUITE_P(Functions, ComplexWithin,
                         testing::ValuesIn(complex_functions().begin(), complex_functions().end()),
                         [](const testing::TestParamInfo<ComplexFunction>& p) {
                             return std::string(p.param.row->name);
                         });

TEST(Registry, EveryFunctionOfTheLibraryTableHasARow) {
    std::string missing;
    for (const char* name : functions_without_row()) missing += std::string(" ") + name;
    EXPECT_TRUE(missing.empty()) << "no measuring row for:" << missing;
}

// The complex functions of the library table each have a row of their
// shape: Pow and Powx went unmeasured while the rows took one argument.
TEST(Registry, EveryComplexFunctionHasARow) {
    std::set<std::string> rows;
    for (const ComplexFunction& f : complex_functions()) {
        const ComplexRow& r = *f.row;
        SCOPED_TRACE(r.name);
        rows.insert(r.exported);
        const bool two = r.shape != ZShape::Z1;
        EXPECT_TRUE(two ? r.ref2 && r.baseline2 && f.kernel2 : r.ref && r.baseline && f.kernel);
        for (const ZRegion& g : r.regions) {
            EXPECT_GT(g.weight, 0) << g.why;
            if (two) {
                EXPECT_FALSE(g.bre.lo == 0 && g.bre.hi == 0) << g.why << ": no exponent to draw";
            }
        }
        for (int m = 0; m < kModes; ++m)
            EXPECT_NE(budgets().find(r.name, static_cast<Mode>(m)), nullptr) << "no budget for " << kModeNames[m];
    }
#define ZT_HAS_ROW(EXPORT, ...) EXPECT_EQ(rows.count(#EXPORT), 1u) << #EXPORT " has no measuring row";
#define ZT_NOT_COMPLEX(...)
    ZVL_FUNCTIONS(ZT_NOT_COMPLEX, ZT_NOT_COMPLEX, ZT_NOT_COMPLEX, ZT_NOT_COMPLEX, ZT_HAS_ROW, ZT_HAS_ROW, ZT_HAS_ROW,
                  ZT_NOT_COMPLEX, ZT_NOT_COMPLEX)
#undef ZT_HAS_ROW
#undef ZT_NOT_COMPLEX
}

// Rows wait for their functions, so their faults would otherwise show only
// once the family lands: check every row now.
TEST(Registry, RowsAreComplete) {
    std::set<std::string> names, exported;
    for (const FunctionRow& r : rows()) {
        SCOPED_TRACE(r.name);
        EXPECT_TRUE(names.insert(r.name).second) << "row name used twice";
        EXPECT_TRUE(exported.insert(std::string(r.exported) + "/" + std::to_string(r.output)).second)
            << "exported name used twice";
        const bool two = arity(r.shape) == 2;
        EXPECT_TRUE(two ? r.ref2 != nullptr : r.ref1 != nullptr) << "no MPFR reference";
        EXPECT_TRUE(!r.regions.empty() || (two && r.sampler)) << "nothing to sample";
        for (const Region& g : r.regions) {
            EXPECT_GT(g.weight, 0) << g.why;
            for (const Interval* in : {&g.a, two ? &g.b : nullptr}) {
                if (!in) continue;
                if (in->spread == Spread::Linear) {
                    EXPECT_LE(in->lo, in->hi) << g.why;
                }
                if (in->spread == Spread::Log) {
                    EXPECT_TRUE((in->lo >= 0 && in->hi >= 0) || (in->lo <= 0 && in->hi <= 0))
                        << g.why << ": a Log interval keeps one sign";
                }
            }
        }
        EXPECT_TRUE(std::isfinite(r.ordinary_a));
        EXPECT_NE(r.baseline.loop, nullptr) << "no baseline loop";
        if (r.hardcases) {
            std::vector<Pair> cases;
            EXPECT_TRUE(read_hardcases(r.hardcases, &cases)) << "hard cases " << r.hardcases;
            EXPECT_FALSE(cases.empty());
        }
        for (int m = 0; m < kModes; ++m)
            EXPECT_NE(budgets().find(r.name, static_cast<Mode>(m)), nullptr)
                << "no budget for " << kModeNames[m];
    }
}

}  // namespace
