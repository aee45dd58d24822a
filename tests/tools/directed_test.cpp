// Directed cases: tests/data/directed/<function>.txt gives arguments, the
// expected result bit for bit and the expected status, for the modes and cpu
// types a line names. Each case runs alone (the short-array path) and inside
// an array of ordinary arguments (the block path), where it must also leave
// its neighbours as they would be alone. (That each front-end gives its
// kernel's bits is the front-end test's, in tests/frame.)
//
// (The line format: tools/accuracy/directed.h.)
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "state/state.h"
#include "tools/accuracy/accuracy.h"
#include "tools/accuracy/directed.h"
#include "tools/common/rng.h"

namespace {

using namespace zvl_tools;

using Case = DirectedCase;

// Reads the file of `f`; false when there is none. Bad lines fail the test.
bool read_cases(const Function& f, std::vector<Case>* out) {
    std::vector<int> bad;
    if (!read_directed(f.row->name, arity(f.shape) == 2, out, &bad)) return false;
    for (int line : bad)
        ADD_FAILURE() << "directed/" << f.row->name << ".txt:" << line
                      << ": cannot read this line";
    return true;
}

std::string hex(uint64_t b) {
    char s[24];
    std::snprintf(s, sizeof s, "0x%016llx", static_cast<unsigned long long>(b));
    return s;
}

void expect_case(const std::string& where, const Case& c, double got) {
    if (c.any_nan)
        EXPECT_TRUE(std::isnan(got)) << where << ": got " << hex(bits(got));
    else
        EXPECT_EQ(hex(bits(got)), hex(c.result)) << where;
    EXPECT_EQ(zvl::get_status(), c.status) << where << ": status";
}

std::string where(const Function& f, const Case& c, int cpu, int mode) {
    return std::string(f.row->name) + ".txt:" + std::to_string(c.line) + " cpu " +
           std::to_string(cpu) + " " + (has_modes(f) ? kModeNames[mode] : "");
}

class Directed : public testing::TestWithParam<Function> {};

TEST_P(Directed, Kernels) {
    const Function& f = GetParam();
    std::vector<Case> cases;
    if (!read_cases(f, &cases)) GTEST_SKIP() << "no directed cases for " << f.row->name;
    const bool two = arity(f.shape) == 2;
    const int modes = has_modes(f) ? kModes : 1;
    // The case sits at `at` among ordinary arguments: inside the first block
    // of every block width, with whole blocks after it.
    const int n = 41, at = 13;
    std::vector<double> a(n), b(n), r(n);
    for (int cpu = 0; cpu < kCpuTypes; ++cpu) {
        if (!cpu_runnable(cpu)) continue;
        for (int m = 0; m < modes; ++m) {
            const Callable k = kernel(f, cpu, static_cast<Mode>(m));
            for (const Case& c : cases) {
                if (!(c.cpus >> cpu & 1) || !(c.modes >> m & 1)) continue;
                const std::string here = where(f, c, cpu, m);
                double got;
                zvl::set_status(0);
                k(1, &c.a, two ? &c.b : nullptr, &got);
                expect_case(here + " alone", c, got);

                // One scalar for the whole array in the array-and-scalar shape.
                const double nb = f.shape == Shape::DX ? c.b : f.row->ordinary_b;
                double ordinary;
                k(1, &f.row->ordinary_a, two ? &nb : nullptr, &ordinary);
                std::fill(a.begin(), a.end(), f.row->ordinary_a);
                std::fill(b.begin(), b.end(), nb);
                a[at] = c.a;
                b[at] = c.b;
                zvl::set_status(0);
                k(n, a.data(), two ? b.data() : nullptr, r.data());
                expect_case(here + " in an array", c, r[at]);
                const char v = f.plan->kernel_at(cpu, m).variant;
                const bool pairs = std::strchr(f.row->pair_variants, v) != nullptr;
                for (int i = 0; i < n; ++i) {
                    if (i == at || (pairs && i == (at ^ 1))) continue;
                    EXPECT_EQ(hex(bits(r[i])), hex(bits(ordinary)))
                        << here << ": neighbour " << i;
                }
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Functions, Directed,
                         testing::ValuesIn(functions().begin(), functions().end()),
                         [](const testing::TestParamInfo<Function>& p) {
                             return std::string(p.param.row->name);
                         });

}  // namespace
