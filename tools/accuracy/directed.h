// Directed cases, read from tests/data/directed/<function>.txt: arguments,
// the expected result bit for bit and the expected status, for the modes and
// cpu types a line names.
//
// Line format, '#' starts a comment:
//   a [b] result status [modes [cpus]]
// Values are bit patterns (0x and 16 hex digits) or numbers as strtod reads
// them (hex floats, inf, nan); a result "nan" accepts any NaN. Status is OK,
// ERRDOM, SING, OVERFLOW or UNDERFLOW. Modes: all, or a comma list of HA, LA,
// EP. Cpus: all, or a comma list of types and ranges such as 0-2.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace zvl_tools {

struct DirectedCase {
    int line;
    double a, b;
    uint64_t result;
    bool any_nan;
    int status;
    unsigned modes;  // bit per mode: HA, LA, EP
    unsigned cpus;   // bit per cpu type
};

// Reads the cases of `stem` (two arguments a line when `two`). Returns false
// when the file cannot be opened; lines that cannot be read are left out and
// their numbers added to *bad.
bool read_directed(const std::string& stem, bool two, std::vector<DirectedCase>* out,
                   std::vector<int>* bad);

}  // namespace zvl_tools
