// Directed cases: tests/data/directed/<function>.txt gives arguments, the
// expected result bit for bit and the expected status, for the modes and cpu
// types a line names. Each case runs alone (the short-array path) and inside
// an array of ordinary arguments (the block path), where it must also leave
// its neighbours as they would be alone. (That each front-end gives its
// kernel's bits is the front-end test's, in tests/frame.)
//
// Line format, '#' starts a comment:
//   a [b] result status [modes [cpus]]
// Values are bit patterns (0x and 16 hex digits) or numbers as strtod reads
// them (hex floats, inf, nan); a result "nan" accepts any NaN. Status is OK,
// ERRDOM, SING, OVERFLOW or UNDERFLOW. Modes: all, or a comma list of HA, LA,
// EP. Cpus: all, or a comma list of types and ranges such as 0-2.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <sstream>
#include <string>
#include <vector>

#include "state/state.h"
#include "tools/accuracy/accuracy.h"
#include "tools/common/rng.h"

namespace {

using namespace zvl_tools;

struct Case {
    int line;
    double a, b;
    uint64_t result;
    bool any_nan;
    int status;
    unsigned modes;  // bit per mode
    unsigned cpus;   // bit per cpu type
};

bool parse_value(const std::string& t, double* x) {
    if (t.size() == 18 && t[0] == '0' && (t[1] == 'x' || t[1] == 'X') &&
        t.find_first_not_of("0123456789abcdefABCDEF", 2) == std::string::npos) {
        *x = from_bits(std::strtoull(t.c_str() + 2, nullptr, 16));
        return true;
    }
    char* end;
    *x = std::strtod(t.c_str(), &end);
    return end != t.c_str() && *end == '\0';
}

bool parse_status(const std::string& t, int* s) {
    static const char* const names[] = {"OK", "ERRDOM", "SING", "OVERFLOW", "UNDERFLOW"};
    for (int i = 0; i < 5; ++i)
        if (t == names[i]) {
            *s = i;
            return true;
        }
    return false;
}

// "all", or a comma list of names (modes) or of cpu types and ranges such
// as 0-2 (`names` null); the bits of the items go to *set.
bool parse_set(const std::string& t, const char* const* names, int count, unsigned* set) {
    *set = t == "all" ? (1u << count) - 1 : 0;
    std::stringstream ss(t == "all" ? "" : t);
    for (std::string item; std::getline(ss, item, ',');) {
        int lo = -1, hi = -1;
        for (int i = 0; names && i < count; ++i)
            if (item == names[i]) lo = hi = i;
        char dash = 0;
        if (!names && std::sscanf(item.c_str(), "%d%c%d", &lo, &dash, &hi) < 3) hi = lo;
        if (lo < 0 || hi >= count || lo > hi || (dash && dash != '-')) return false;
        for (int i = lo; i <= hi; ++i) *set |= 1u << i;
    }
    return *set != 0;
}

// Reads the file of `f`; false when there is none. Bad lines fail the test.
bool read_cases(const Function& f, std::vector<Case>* out) {
    const std::string path = data_path(std::string("directed/") + f.row->name + ".txt");
    FILE* file = std::fopen(path.c_str(), "r");
    if (!file) return false;
    const bool two = arity(f.shape) == 2;
    char buf[512];
    int line = 0;
    while (std::fgets(buf, sizeof buf, file)) {
        ++line;
        if (char* hash = std::strchr(buf, '#')) *hash = '\0';
        std::stringstream ss(buf);
        std::vector<std::string> tok;
        for (std::string t; ss >> t;) tok.push_back(t);
        if (tok.empty()) continue;
        Case c = {line, 0, 0, 0, false, 0, 7, 0x3f};
        const size_t need = two ? 4 : 3;
        double result = 0;
        bool ok = tok.size() >= need && tok.size() <= need + 2 && parse_value(tok[0], &c.a) &&
                  (!two || parse_value(tok[1], &c.b)) && parse_value(tok[need - 2], &result) &&
                  parse_status(tok[need - 1], &c.status) &&
                  (tok.size() <= need || parse_set(tok[need], kModeNames, kModes, &c.modes)) &&
                  (tok.size() <= need + 1 || parse_set(tok[need + 1], nullptr, kCpuTypes, &c.cpus));
        EXPECT_TRUE(ok) << path << ":" << line << ": cannot read this line";
        if (!ok) continue;
        c.any_nan = tok[need - 2] == "nan" || tok[need - 2] == "-nan";
        c.result = bits(result);
        out->push_back(c);
    }
    std::fclose(file);
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
                for (int i = 0; i < n; ++i) {
                    if (i == at) continue;
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
