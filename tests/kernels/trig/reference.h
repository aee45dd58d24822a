// Exact values for the trigonometric tests, by MPFR.
#pragma once

#include <mpfr.h>

#include <cstdint>
#include <vector>

namespace zvl_test {

// How far high + low is from x - (q + 4k) pi/2, the k making that smallest,
// relative to it; infinite when q is not a quadrant of a nearest multiple
// of pi/2 (the remainder exceeds pi/4 by more than 2^-40 of it).
double reduce_error(double x, int32_t q, double high, double low);

// |got - f(x)| in ulps of the correctly rounded f(x) (NaN or infinity where
// a finite number belongs: infinite).
using Ref1 = int (*)(mpfr_ptr, mpfr_srcptr, mpfr_rnd_t);
double ulp_error(Ref1 f, double x, double got);

// The values of tests/data/ulp-hardcases/<stem>.txt, both signs where the
// file says so.
std::vector<double> hard_cases(const char* stem);

// A factor for the number of random samples (ZVL_TRIG_SAMPLES, default 1).
int sample_factor();

}  // namespace zvl_test
