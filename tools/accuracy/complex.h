// The accuracy harness for complex functions: each part of a result in ulps
// of that part, and the normwise relative error |got - exact| / |exact|,
// against MPFR at 192 bits. A part whose exact value is below 2^-26 of
// |exact| (a cancellation to near zero, as the real part of ln z near
// |z| = 1) is left to the normwise error. For the conditioned rows (Pow)
// the normwise error is taken over |exact| (1 + |b ln a|).
#pragma once

#include <vector>

#include "tools/accuracy/accuracy.h"
#include "tools/accuracy/budgets.h"
#include "tools/common/complex_rows.h"

namespace zvl_tools {

constexpr double kCancelling = 0x1p-26;

struct ZExact {
    Exact part[2];
    long double norm;  // |exact|, 0 when a part is not a number
    long double cond;  // 1, or 1 + |b ln a| for the conditioned rows
};

struct ZStats {
    size_t count = 0;
    double max_ulp[2] = {0, 0};  // real, imaginary part
    size_t worst_ulp[2] = {0, 0};
    double max_norm = 0;
    size_t worst_norm = 0;
    double ulp() const { return max_ulp[0] > max_ulp[1] ? max_ulp[0] : max_ulp[1]; }
};

struct ZTable {
    std::vector<ZVLComplex16> samples;
    std::vector<ZVLComplex16> second;  // the second arguments (two-argument rows)
    std::vector<ZExact> exact;
    ZStats stats[kCpuTypes][kModes];
    bool ran[kCpuTypes][kModes] = {};
};

ZTable measure_complex(const ComplexFunction& f, size_t random, uint64_t seed = 1, unsigned cpus = 0x3f);

// A complex function's budget: "ulp" bounds each part (and the normwise
// error by as many units of 2^-52), "rel" the normwise error alone.
bool within(const Budget& b, const ZStats& s);
double measured(const Budget& b, const ZStats& s);

}  // namespace zvl_tools
