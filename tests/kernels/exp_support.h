// What the exp tests share: the kernels by cpu type and mode, and the MPFR
// oracle, e^x to 256 bits kept as a scaled double-double so that the error
// of any double result is measured in ulps of the exact value (denormal
// results in units of 2^-1074) without MPFR in the loop.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "frame/kernel_sets.h"

namespace exp_test {

struct Kernel {
    int cpu;
    int col;  // zvl::kHA, kLA, kEP
    zvl::KernelD1 fn() const { return zvl::kernels_VDEXP.k[cpu][col]; }
};

// Every cpu type and accuracy column; cpu type 5 only where AVX runs.
std::vector<Kernel> kernels();
std::string kernel_label(const Kernel& k);  // e.g. "cpu3_LA"

struct Exact {
    bool overflow;  // e^x above DBL_MAX: the double result is +inf
    int ulp_exp;    // the exact value's ulp is 2^ulp_exp, at least 2^-1074
    double m_hi, m_lo;  // e^x / 2^ulp_exp = m_hi + m_lo
    double correct;     // e^x rounded to nearest, denormals included
};

Exact exact_exp(double x);

// |y - e^x| in ulps of e^x; 0 for an overflowing x with y = +inf.
double ulp_error(const Exact& e, double y);
// |y - e^x| / e^x.
double rel_error(const Exact& e, double y);

// The inputs of tests/data/ulp-hardcases/exp.txt.
std::vector<double> hard_cases();

}  // namespace exp_test
