// The measuring rows, one per real function.
//
// A row is all the tools need to know about a function beyond its kernels:
// its MPFR reference, the regions to sample (put them where the algorithm
// changes), the points to sweep, its hard cases, the arguments to time, and
// the peers to compare with. Rows of functions not yet in the library's
// function table wait here and come alive when it gains them.
//
// Each subsystem has its rows in tools/common/rows/<subsystem>.cpp. To add a
// function: write its arrays and its row in the block of its family there,
// with designated fields as the others, and add its budgets to
// tests/data/ulp_budgets.txt; a new subsystem adds its file and one line
// to kSubsystems below.
#include <vector>

#include "tools/common/functions.h"

namespace zvl_tools {

// Each subsystem's rows.
List<FunctionRow> rows_explog();
List<FunctionRow> rows_trig();

namespace {

List<FunctionRow> (*const kSubsystems[])() = {rows_explog, rows_trig};

}  // namespace

const char* const kModeNames[kModes] = {"HA", "LA", "EP"};
const char* const kCpuLabels[kCpuTypes] = {"ex", "e7", "u8", "y8", "h8", "e9"};

List<FunctionRow> rows() {
    static const std::vector<FunctionRow> all = [] {
        std::vector<FunctionRow> v;
        for (auto subsystem : kSubsystems)
            for (const FunctionRow& r : subsystem()) v.push_back(r);
        return v;
    }();
    return {all.data(), all.size()};
}

}  // namespace zvl_tools
