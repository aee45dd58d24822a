#include "tools/accuracy/budgets.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace zvl_tools {

bool Budgets::load(const std::string& path, std::string* error) {
    FILE* f = std::fopen(path.c_str(), "r");
    if (!f) {
        *error = "cannot read " + path;
        return false;
    }
    char line[256];
    int number = 0;
    bool ok = true;
    while (ok && std::fgets(line, sizeof line, f)) {
        ++number;
        if (char* hash = std::strchr(line, '#')) *hash = '\0';
        char fn[64], mode[16], metric[16], bound[64];
        const int got = std::sscanf(line, "%63s %15s %15s %63s", fn, mode, metric, bound);
        if (got <= 0) continue;
        char* end = nullptr;
        const double value = got == 4 ? std::strtod(bound, &end) : 0;
        const bool metric_ok = std::strcmp(metric, "ulp") == 0 || std::strcmp(metric, "rel") == 0;
        const bool mode_ok = std::strcmp(mode, "HA") == 0 || std::strcmp(mode, "LA") == 0 ||
                             std::strcmp(mode, "EP") == 0 || std::strcmp(mode, "all") == 0;
        if (got != 4 || !metric_ok || !mode_ok || *end != '\0' || !(value >= 0)) {
            *error = path + ":" + std::to_string(number) + ": bad budget line: " + line;
            ok = false;
            break;
        }
        entries.push_back({fn, mode, std::strcmp(metric, "rel") == 0, value});
    }
    std::fclose(f);
    return ok;
}

const Budget* Budgets::find(const char* function, Mode mode) const {
    for (const Budget& b : entries)
        if (b.function == function && (b.mode == kModeNames[mode] || b.mode == "all")) return &b;
    return nullptr;
}

double measured(const Budget& b, const Stats& s) { return b.relative ? s.max_rel : s.max_ulp; }

bool within(const Budget& b, const Stats& s) { return measured(b, s) <= b.bound; }

std::string budget_text(const Budget* b) {
    if (!b) return "none";
    char buf[48];
    int e;
    if (b->relative && b->bound > 0 && std::frexp(b->bound, &e) == 0.5)
        std::snprintf(buf, sizeof buf, "rel 2^%d", e - 1);
    else
        std::snprintf(buf, sizeof buf, b->relative ? "rel %g" : "%g ulp", b->bound);
    return buf;
}

std::string budgets_path() { return data_path("ulp_budgets.txt"); }

}  // namespace zvl_tools
