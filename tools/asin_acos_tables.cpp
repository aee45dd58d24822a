// Writes the coefficient lists of the Asin and Acos kernels as C++
// initializer bodies (kernels/trig/asin_acos/<arg>.inc), the nearest
// doubles to the fixed values typed in below, with their error measured
// here:
//
//   asin_acos_tables asin_la   Asin LA and EP, asin(s) = s + s^3 P(s^2), P
//                              of degree 11 in s^2
//   asin_acos_tables acos_la   Acos LA and EP, the same form, degree 10
//   asin_acos_tables ha        Asin and Acos HA, degree 12
//
// all over 0 <= s <= 1/2, where the kernels use them (s = |x| up to 1/2,
// s = sqrt((1 - |x|)/2) above). Deterministic: MPFR at 192 bits.
#include <mpfr.h>

#include <cstdio>
#include <cstring>
#include <vector>

#include "tools/fit/write.h"

namespace {

using zvl_tables::from_bits;

constexpr const char* kProgram = "asin_acos_tables";

struct Given {
    const char* arg;
    std::vector<uint64_t> c;  // highest power first
    const char* rule;
};

const Given kGiven[] = {
    {"asin_la",
     {0x3FA074CE2CBCC7DF, 0xBF90F34C39628E27, 0x3F94354494F57A70, 0x3F7A6F70A989886B,
      0x3F88F4FAF7A28C4A, 0x3F8C6E8C410E2125, 0x3F91C6CEB88CA473, 0x3F96E89E3100FCF1,
      0x3F9F1C72CEB416D5, 0x3FA6DB6DB406320E, 0x3FB33333333719EB, 0x3FC5555555555376},
     "Rule: the Asin LA and EP polynomial, asin(s) = s + s^3 P(s^2) for s <= 1/2;\n"
     "// fixed values, typed in as bit patterns."},
    {"acos_la",
     {0x3FA03E5B5E516DFB, 0xBF8884789EFB5918, 0x3F92D892CC96EFAF, 0x3F831D56BA773964,
      0x3F8D59EC6E98BFE2, 0x3F91BA7CBC3F3A91, 0x3F96E9769038BE6D, 0x3F9F1C697859C3E2,
      0x3FA6DB6DD20120F3, 0x3FB33333330711A8, 0x3FC5555555556E3C},
     "Rule: the Acos LA and EP polynomial, asin(s) = s + s^3 P(s^2) for s <= 1/2;\n"
     "// fixed values, typed in as bit patterns."},
    {"ha",
     {0x3FA0D60D1986AEC6, 0xBF95E9019191BE85, 0x3F96825C16316F03, 0x3F6D768B20A865AC,
      0x3F8622CB270118B0, 0x3F8755BDEFC292C9, 0x3F8CA247EB6664E5, 0x3F91C49BD43E63F7,
      0x3F96E8BE19F6199D, 0x3F9F1C71A7CEDD43, 0x3FA6DB6DB724FE19, 0x3FB333333332DC42,
      0x3FC5555555555579},
     "Rule: the Asin and Acos HA polynomial, asin(s) = s + s^3 P(s^2) for s <= 1/2;\n"
     "// fixed values, typed in as bit patterns."},
};

}  // namespace

int main(int argc, char** argv) {
    for (const Given& g : kGiven) {
        if (argc == 2 && !std::strcmp(argv[1], g.arg)) {
            std::vector<double> c;
            for (uint64_t b : g.c) c.push_back(from_bits(b));
            zvl_fit::header(kProgram, g.arg, g.rule);
            zvl_fit::put_odd(zvl_fit::OddForm{mpfr_asin, false, 0.5}, c);
            return 0;
        }
    }
    std::fprintf(stderr, "usage: %s asin_la|acos_la|ha\n", kProgram);
    return 2;
}
