// Writes the tables and coefficient lists of the Atan and Atan2 kernels as
// C++ initializer bodies (kernels/trig/atan/<arg>.inc):
//
//   atan_tables break     AtanBreakTable: atan(c) in two parts for the two
//                         breakpoints c = 1.25 * 2^k and 1.75 * 2^k of each
//                         binade from 2^-3 to 2^53 (114 entries), hi the
//                         nearest double and lo the nearest double to the rest
//   atan_tables anchors   the five reductions of the HA kernels, centres
//                         c = 0, 1/2, 1, 2 and infinity: atan(c) in two parts,
//                         then pi - atan(c) in two parts
//   atan_tables la|ep|ha|older|ep1|scalar
//                         the fixed polynomials, as the nearest doubles to the
//                         values typed in below, with their error measured here
//
// Deterministic: MPFR at 192 bits, exact hexadecimal output.
#include <mpfr.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "tools/fit/write.h"

namespace {

using zvl_fit::Num;
using zvl_tables::from_bits;

constexpr const char* kProgram = "atan_tables";

// hi = RN(v), lo = RN(v - hi), printed as one entry.
void put_pair(const mpfr_t v, const char* comment) {
    Num rest;
    const double hi = mpfr_get_d(v, MPFR_RNDN);
    mpfr_sub_d(rest.v, v, hi, MPFR_RNDN);
    const double lo = mpfr_get_d(rest.v, MPFR_RNDN);
    char a[40], b[40];
    zvl_tables::put_hex(hi, a, sizeof a);
    zvl_tables::put_hex(lo, b, sizeof b);
    std::printf("%s, %s,  // %s\n", a, b, comment);
}

void write_break() {
    zvl_fit::header(kProgram, "break",
                    "Rule: entry j is atan(c), c = 1.25 * 2^(j/2 - 3) for even j and 1.75 *\n"
                    "// 2^((j-1)/2 - 3) for odd j, as hi, lo: hi the nearest double, lo the nearest\n"
                    "// double to atan(c) - hi.");
    Num c, a;
    char comment[64];
    for (int j = 0; j < 114; ++j) {
        mpfr_set_d(c.v, j % 2 ? 1.75 : 1.25, MPFR_RNDN);
        mpfr_mul_2si(c.v, c.v, j / 2 - 3, MPFR_RNDN);
        mpfr_atan(a.v, c.v, MPFR_RNDN);
        std::snprintf(comment, sizeof comment, "%d: c = %.17g", j, mpfr_get_d(c.v, MPFR_RNDN));
        put_pair(a.v, comment);
    }
}

void write_anchors() {
    zvl_fit::header(kProgram, "anchors",
                    "Rule: for the centres c = 0, 1/2, 1, 2, infinity of the HA reductions, atan(c)\n"
                    "// as hi, lo (hi the nearest double, lo the nearest double to the rest), then\n"
                    "// pi - atan(c) in the same way.");
    const double centres[4] = {0.0, 0.5, 1.0, 2.0};
    const char* names[5] = {"0", "1/2", "1", "2", "infinity"};
    Num a, pi, d;
    mpfr_const_pi(pi.v, MPFR_RNDN);
    char comment[64];
    for (int neg = 0; neg < 2; ++neg) {
        for (int k = 0; k < 5; ++k) {
            if (k < 4) {
                mpfr_set_d(d.v, centres[k], MPFR_RNDN);
                mpfr_atan(a.v, d.v, MPFR_RNDN);
            } else {
                mpfr_div_2ui(a.v, pi.v, 1, MPFR_RNDN);
            }
            if (neg) mpfr_sub(a.v, pi.v, a.v, MPFR_RNDN);
            std::snprintf(comment, sizeof comment, "%satan(%s)", neg ? "pi - " : "", names[k]);
            put_pair(a.v, comment);
        }
    }
}

// A fixed list, highest power first, and its form (see tools/fit/write.h).
struct Given {
    const char* arg;
    bool times_s;  // s P(s^2); otherwise s + s^3 P(s^2)
    double top;
    std::vector<double> c;
    const char* rule;
};

std::vector<Given> given() {
    return {
        // Degree 43, the last coefficient 1: no separate s term.
        {"la", true, 1.0,
         {-7.5688949588665818e-06, 9.261339912262429e-05, -0.00053868525106253384,
          0.0019907868844299234, -0.0052834370719337343, 0.010825420966055316,
          -0.01805654529043247, 0.025663230085351332, -0.032450583328723581,
          0.038029290002428294, -0.042786961682247097, 0.047423521328686491,
          -0.052587623012529491, 0.058815812409645042, -0.066665632255498458,
          0.076922974170138589, -0.090909083646953479, 0.11111111076650429,
          -0.14285714284708551, 0.199999999999844, -0.33333333333333237, 1},
         "Rule: the LA vector polynomial of degree 43, atan(s) = s P(s^2) on [0, 1];\n"
         "// fixed values, the nearest doubles to their decimal forms."},
        {"ep", true, 1.0,
         {from_bits(0xBF5C95B5AB286A02), from_bits(0x3F85E36A8CED7474),
          from_bits(0xBF9F791909CB44C4), from_bits(0x3FAD6EE2DACE07AF),
          from_bits(0xBFB56FCD7489159A), from_bits(0x3FBC0236E7018BA7),
          from_bits(0xBFC2414862594647), from_bits(0x3FC999069C08617C),
          from_bits(0xBFD55553391CE4C9), from_bits(0x3FEFFFFFFEB5A845)},
         "Rule: the EP vector polynomial of degree 19, atan(s) = s P(s^2) on [0, 1];\n"
         "// fixed values, typed in as bit patterns."},
        {"ha", false, 0.4375,
         {0.013620346040990536, -0.031836245158999729, 0.044291178811409156,
          -0.051990191991189393, 0.058738289164359213, -0.066658806620043712,
          0.07692257854969578, -0.09090906973094913, 0.11111111053617004,
          -0.14285714284797371, 0.19999999999992654, -0.33333333333333315},
         "Rule: the HA vector polynomial, atan(t) = t + t^3 P(t^2) for |t| <= 7/16;\n"
         "// fixed values, the nearest doubles to their decimal forms."},
        {"older", false, 0.4375,
         {-0.016235650234303227, 0.03648039840195557, -0.049746277587675004,
          0.058330121300346816, -0.066609874419184312, 0.076918677801244784,
          -0.090908866041291114, 0.11111110384890255, -0.1428571427204347,
          0.19999999999871371, -0.3333333333333291},
         "Rule: the element-by-element HA polynomial of degree 23, atan(t) = t +\n"
         "// t^3 P(t^2) for |t| <= 7/16; fixed values, the nearest doubles to their\n"
         "// decimal forms."},
        {"ep1", false, 0.4375,
         {-0.058079913402670727, 0.10486136313595862, -0.14228913431132378,
          0.19997700899147056, -0.33333302814976268},
         "Rule: the element-by-element EP polynomial of degree 11, atan(t) = t +\n"
         "// t^3 P(t^2) for |t| <= 7/16; fixed values, the nearest doubles to their\n"
         "// decimal forms."},
        {"scalar", false, 0.125,
         {from_bits(0xBFB029BD34239994), from_bits(0x3FB3AB7C1048AFD1),
          from_bits(0xBFB745BE69CCA475), from_bits(0x3FBC71C6F9B157D3),
          from_bits(0xBFC2492492382A27), from_bits(0x3FC99999999991BB),
          from_bits(0xBFD5555555555555)},
         "Rule: the callouts' polynomial of degree 15, atan(t) = t + t^3 P(t^2) for\n"
         "// |t| <= 1/8; fixed values, typed in as bit patterns."},
    };
}

}  // namespace

int main(int argc, char** argv) {
    if (argc == 2) {
        if (!std::strcmp(argv[1], "break")) {
            write_break();
            return 0;
        }
        if (!std::strcmp(argv[1], "anchors")) {
            write_anchors();
            return 0;
        }
        for (const Given& g : given()) {
            if (!std::strcmp(argv[1], g.arg)) {
                zvl_fit::header(kProgram, g.arg, g.rule);
                zvl_fit::put_odd(zvl_fit::OddForm{mpfr_atan, g.times_s, g.top}, g.c);
                return 0;
            }
        }
    }
    std::fprintf(stderr, "usage: %s break|anchors|la|ep|ha|older|ep1|scalar\n", kProgram);
    return 2;
}
