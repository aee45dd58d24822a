// Arguments, exact values and errors for the bodies test: seeded samples
// per function, MPFR's value of each, and the error of a result.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace zvl_test {

struct Samples {
    std::vector<double> a;
    std::vector<double> b;  // second arguments, empty for one-argument functions
};

// ZVL_TRIG_SAMPLES, or 1: the factor on the random samples.
double sample_scale();

// About 60000 * scale arguments of `fn`, and the points where its algorithms
// change with a few neighbours on each side.
Samples samples_for(const char* fn, double scale);

// The exact value as the error formulas need it: v rounded to 200 bits.
struct Exact {
    double rn;       // the nearest double (an infinity when v overflows)
    double v_hi;     // v = v_hi + v_lo + ... (two doubles are enough for the errors)
    double v_lo;
    bool nan, zero;  // v is NaN; v is an exact zero (rn then carries its sign)
};
std::vector<Exact> exact_values(const char* fn, const Samples& s);

// The error of a result: in ulps of rn (ulp(y) = 2^(e-52) for y in [2^e,
// 2^(e+1)), 2^-1074 at the bottom), and relative to max(|v|, 2^-1022). A NaN
// where a number belongs, a wrong infinity or a zero of the wrong sign is an
// infinite error.
struct Error {
    double ulp, rel;
};
Error error_of(double got, const Exact& e);

uint64_t bits_of(double x);

}  // namespace zvl_test
