// Command-line options of zvl-ulp and zvl-report.
#pragma once

#include <cstdint>
#include <string>

#include "tools/common/functions.h"

namespace zvl_tools {

struct Options {
    std::string function;  // zvl-ulp: a row or exported name, or "all"
    unsigned cpus = 0x3f;  // bit per cpu type
    unsigned modes = 0x7;  // bit per mode
    size_t samples = 50000;
    uint64_t seed = 1;
    bool has_range = false;
    Interval range = {0, 0, Spread::Linear};
    bool hardcases = true;
    bool sweeps = true;
    bool peers = false;
    bool list = false;
    int rounding = 0;    // zvl-ulp: the caller's rounding mode (FE_*) while the kernels run
    std::string out;     // zvl-report: output file
    bool quick = false;  // zvl-report: fewer samples and repeats
    std::string data;    // zvl-report: accuracy data file (docs/data/accuracy.txt)
    std::string markdown;  // zvl-report: README.md's speed table, in Markdown
    bool timing = true;  // zvl-report: false measures accuracy only, and writes no page
    bool complex_only = false;  // zvl-report: the complex functions alone, no page
    std::string only;           // zvl-report --only: that complex function alone
};

// Parses argv; `positional` says whether one function name is expected.
// On failure returns false with the reason in *error (empty for --help).
bool parse_options(int argc, char** argv, Options* o, std::string* error, bool positional = true);

// Spread for a user's range: Log when it keeps one sign and spans more than
// a factor of 4, Linear otherwise.
Interval range_interval(double lo, double hi);

}  // namespace zvl_tools
