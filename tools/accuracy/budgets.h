// Accuracy budgets, read from tests/data/ulp_budgets.txt:
//
//   # function  mode  metric  bound
//   exp         HA    ulp     1.0
//   exp         EP    rel     0x1p-26
//   ceil        all   ulp     0
//
// metric "ulp" bounds the largest error in ulps, "rel" the largest relative
// error; mode "all" holds for every mode (the rounding family has none).
#pragma once

#include <string>
#include <vector>

#include "tools/accuracy/accuracy.h"

namespace zvl_tools {

struct Budget {
    std::string function;
    std::string mode;  // HA, LA, EP or all
    bool relative;     // metric "rel"
    double bound;
};

struct Budgets {
    std::vector<Budget> entries;

    // Reads the file; on a malformed line returns false with its number and
    // text in *error.
    bool load(const std::string& path, std::string* error);
    const Budget* find(const char* function, Mode mode) const;
};

// The measure a budget bounds, and whether the stats stay within it.
double measured(const Budget& b, const Stats& s);
bool within(const Budget& b, const Stats& s);

std::string budgets_path();  // the file in the data directory

// "0.5 ulp", "rel 2^-26", "none" for a null budget.
std::string budget_text(const Budget* b);

}  // namespace zvl_tools
