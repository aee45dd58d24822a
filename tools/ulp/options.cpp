#include "tools/ulp/options.h"

#include <cfenv>
#include <cmath>
#include <cstdlib>
#include <cstring>

namespace zvl_tools {
namespace {

bool number(const char* s, double* out) {
    char* end;
    *out = std::strtod(s, &end);
    return end != s && *end == '\0';
}

bool count(const char* s, uint64_t* out) {
    char* end;
    *out = std::strtoull(s, &end, 0);
    return end != s && *end == '\0' && s[0] != '-';
}

}  // namespace

Interval range_interval(double lo, double hi) {
    if (lo > hi) std::swap(lo, hi);
    const bool one_sign = lo > 0 || hi < 0;
    const double wide = lo > 0 ? hi / lo : lo / hi;
    return {lo, hi, one_sign && wide > 4 ? Spread::Log : Spread::Linear};
}

bool parse_options(int argc, char** argv, Options* o, std::string* error, bool positional) {
    for (int i = 1; i < argc; ++i) {
        const char* a = argv[i];
        auto value = [&](int k) -> const char* { return i + k < argc ? argv[i + k] : nullptr; };
        if (!std::strcmp(a, "--help") || !std::strcmp(a, "-h")) {
            error->clear();
            return false;
        } else if (!std::strcmp(a, "--mode") && value(1)) {
            const char* v = argv[++i];
            if (!std::strcmp(v, "all")) {
                o->modes = 0x7;
            } else {
                o->modes = 0;
                for (int m = 0; m < kModes; ++m)
                    if (!std::strcmp(v, kModeNames[m])) o->modes = 1u << m;
                if (!o->modes) {
                    *error = std::string("unknown mode ") + v;
                    return false;
                }
            }
        } else if (!std::strcmp(a, "--cpu") && value(1)) {
            const char* v = argv[++i];
            if (!std::strcmp(v, "all")) {
                o->cpus = 0x3f;
            } else if (v[0] >= '0' && v[0] <= '5' && v[1] == '\0') {
                o->cpus = 1u << (v[0] - '0');
            } else {
                *error = std::string("cpu type must be 0..5 or all, not ") + v;
                return false;
            }
        } else if (!std::strcmp(a, "--samples") && value(1)) {
            uint64_t n;
            if (!count(argv[++i], &n) || n > (uint64_t{1} << 31)) {
                *error = "bad sample count";
                return false;
            }
            o->samples = n;
        } else if (!std::strcmp(a, "--seed") && value(1)) {
            if (!count(argv[++i], &o->seed)) {
                *error = "bad seed";
                return false;
            }
        } else if (!std::strcmp(a, "--range") && value(1) && value(2)) {
            double lo, hi;
            if (!number(argv[i + 1], &lo) || !number(argv[i + 2], &hi) || std::isnan(lo) ||
                std::isnan(hi)) {
                *error = "bad range";
                return false;
            }
            i += 2;
            o->has_range = true;
            o->range = range_interval(lo, hi);
        } else if (!std::strcmp(a, "--out") && value(1)) {
            o->out = argv[++i];
        } else if (!std::strcmp(a, "--data") && value(1)) {
            o->data = argv[++i];
        } else if (!std::strcmp(a, "--markdown") && value(1)) {
            o->markdown = argv[++i];
        } else if (!std::strcmp(a, "--no-timing")) {
            o->timing = false;
        } else if (!std::strcmp(a, "--complex-only")) {
            o->complex_only = true;
        } else if (!std::strcmp(a, "--only") && value(1)) {
            o->complex_only = true;
            o->only = argv[++i];
        } else if (!std::strcmp(a, "--no-hard")) {
            o->hardcases = false;
        } else if (!std::strcmp(a, "--no-sweeps")) {
            o->sweeps = false;
        } else if (!std::strcmp(a, "--peers")) {
            o->peers = true;
        } else if (!std::strcmp(a, "--rounding") && value(1)) {
            const char* v = argv[++i];
            if (!std::strcmp(v, "nearest")) o->rounding = FE_TONEAREST;
            else if (!std::strcmp(v, "up")) o->rounding = FE_UPWARD;
            else if (!std::strcmp(v, "down")) o->rounding = FE_DOWNWARD;
            else if (!std::strcmp(v, "zero")) o->rounding = FE_TOWARDZERO;
            else {
                *error = "bad rounding (nearest, up, down or zero)";
                return false;
            }
        } else if (!std::strcmp(a, "--quick")) {
            o->quick = true;
        } else if (!std::strcmp(a, "--list")) {
            o->list = true;
        } else if (a[0] != '-' && positional && o->function.empty()) {
            o->function = a;
        } else {
            *error = std::string("unexpected argument ") + a;
            return false;
        }
    }
    if (positional && o->function.empty() && !o->list) {
        *error = "no function given";
        return false;
    }
    return true;
}

}  // namespace zvl_tools
