#include "tools/accuracy/directed.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <sstream>

#include "base/bits.h"
#include "tools/accuracy/accuracy.h"

namespace zvl_tools {
namespace {

bool parse_value(const std::string& t, double* x) {
    if (t.size() == 18 && t[0] == '0' && (t[1] == 'x' || t[1] == 'X') &&
        t.find_first_not_of("0123456789abcdefABCDEF", 2) == std::string::npos) {
        *x = zvl::from_bits(std::strtoull(t.c_str() + 2, nullptr, 16));
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

}  // namespace

bool read_directed(const std::string& stem, bool two, std::vector<DirectedCase>* out,
                   std::vector<int>* bad) {
    const std::string path = data_path("directed/" + stem + ".txt");
    FILE* file = std::fopen(path.c_str(), "r");
    if (!file) return false;
    char buf[512];
    int line = 0;
    while (std::fgets(buf, sizeof buf, file)) {
        ++line;
        if (char* hash = std::strchr(buf, '#')) *hash = '\0';
        std::stringstream ss(buf);
        std::vector<std::string> tok;
        for (std::string t; ss >> t;) tok.push_back(t);
        if (tok.empty()) continue;
        DirectedCase c = {line, 0, 0, 0, false, 0, 7, 0x3f};
        const size_t need = two ? 4 : 3;
        double result = 0;
        const bool ok =
            tok.size() >= need && tok.size() <= need + 2 && parse_value(tok[0], &c.a) &&
            (!two || parse_value(tok[1], &c.b)) && parse_value(tok[need - 2], &result) &&
            parse_status(tok[need - 1], &c.status) &&
            (tok.size() <= need || parse_set(tok[need], kModeNames, kModes, &c.modes)) &&
            (tok.size() <= need + 1 || parse_set(tok[need + 1], nullptr, kCpuTypes, &c.cpus));
        if (!ok) {
            bad->push_back(line);
            continue;
        }
        c.any_nan = tok[need - 2] == "nan" || tok[need - 2] == "-nan";
        c.result = zvl::bits(result);
        out->push_back(c);
    }
    std::fclose(file);
    return true;
}

}  // namespace zvl_tools
