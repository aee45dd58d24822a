// The accuracy harness: samples a function's domain, computes the exact
// values with MPFR, and measures any kernel, front-end or peer against them.
//
// Error in ulps is |got - exact| / ulp(RN(exact)), where RN(exact) is the
// exact value rounded to nearest and ulp(y) is 2^(e-52) for y in [2^e,
// 2^(e+1)), 2^-1074 for subnormals and zero, and 2^971 beyond the largest
// double (infinity counts as 2^1024 there). Relative error is |got - exact| /
// max(|exact|, 2^-1022). Special values have no partial credit: a NaN where
// a number belongs, a wrong infinity, or a zero of the wrong sign where the
// exact value is zero is an infinite error.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "tools/common/functions.h"

namespace zvl_tools {

enum class Origin : uint8_t {
    Random,   // from the regions or the pair sampler
    Sweep,    // near a special point
    Special,  // an exact special pair
    Hard,     // a hard-to-round case
};

struct SampleOptions {
    size_t random = 50000;  // random samples
    uint64_t seed = 1;
    const Interval* range = nullptr;  // replaces the regions for the first argument
    bool sweeps = true;               // special points with their neighbours
    bool hardcases = true;
    int neighbours = 8;  // doubles on each side of a special point
    // The caller's rounding mode while the kernels run (<cfenv>'s FE_*);
    // the errors are always measured against the exact value.
    int rounding = 0;
};

struct Samples {
    std::vector<double> a;
    std::vector<double> b;  // empty for one-argument functions
    std::vector<Origin> origin;
    size_t size() const { return a.size(); }
    const double* b_data() const { return b.empty() ? nullptr : b.data(); }
};

Samples make_samples(const FunctionRow& row, const SampleOptions& opt);

// The exact value of one sample, as the error formulas need it.
struct Exact {
    enum Kind : uint8_t {
        Number,    // finite RN(exact), zero included when the exact value is tiny
        Overflow,  // a finite exact value whose RN is an infinity
        Infinite,  // an exact infinity (a pole, an infinite argument)
        Zero,      // an exact zero
        NotANumber,
    };
    double rn;    // RN(exact); an infinity for Overflow
    double tail;  // (exact - rn) in ulps of rn (Overflow: measured from 2^1024)
    Kind kind;
};

// Exact values by MPFR at `precision` bits.
std::vector<Exact> exact_values(const FunctionRow& row, const Samples& s, int precision = 192);

// The exact value r (its MPFR flags as the computation left them) as the
// error formulas take it; t is scratch of r's precision.
Exact exact_of(mpfr_srcptr r, mpfr_ptr t);
double ulp_of(double rn);  // the ulp the errors are measured in
double ulp_error(double got, const Exact& e);
// Relative error of a result whose ulp error is `ulps`.
double rel_error(double ulps, const Exact& e);

struct Stats {
    size_t count = 0;  // results measured (two per sample: block and single)
    double max_ulp = 0;
    double max_rel = 0;
    size_t worst_ulp = 0;  // sample index
    size_t worst_rel = 0;
    double got_ulp = 0;  // the result at the worst sample
    double got_rel = 0;
    bool single_ulp = false;  // the worst came from the element-by-element run
};

// Runs `fn` over all samples as one array (block paths) and, when `single`,
// once more element by element (the paths for short remainders), and
// measures both. per_sample, when given, gets the larger ulp error of the
// two runs per sample. Samples whose entry in `skip` is set are run but not
// measured.
Stats measure(const Callable& fn, const Samples& s, const std::vector<Exact>& exact,
              bool single = true, std::vector<float>* per_sample = nullptr,
              const std::vector<bool>* skip = nullptr, int rounding = 0);

// A function measured on one set of samples: every runnable cpu type (bit c
// of `cpus`) and mode (bit m of `modes`; the rounding family has only HA).
struct Table {
    Samples samples;
    std::vector<Exact> exact;
    Stats stats[kCpuTypes][kModes];
    bool ran[kCpuTypes][kModes] = {};
    // per_sample[cpu][mode] when asked for: the larger ulp error of the two runs
    std::vector<float> per_sample[kCpuTypes][kModes];
};

Table measure_function(const Function& f, const SampleOptions& opt, unsigned cpus = 0x3f,
                       unsigned modes = 0x7, bool keep_per_sample = false);

// Hard-to-round cases of tests/data/ulp-hardcases/<stem>.txt: one value or one
// pair "x,y" per line (hexadecimal floats), '#' comments; a line "# symmetric"
// adds -x for each x. `stems` may name several files, "sin,near_pi2".
// Returns false when a file cannot be read.
bool read_hardcases(const char* stems, std::vector<Pair>* out);

// The data directory (tests/data of the source tree, or $ZVL_DATA_DIR).
std::string data_path(const std::string& relative);

// "0x1.8p+1 (3)" style text of a double: hex float and shortest decimal.
std::string show(double x);

}  // namespace zvl_tools
