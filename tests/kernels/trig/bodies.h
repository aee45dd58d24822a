// The lane mathematics of the inverse trigonometric and hyperbolic
// families, run outside the kernel frame: each test unit, compiled with one
// instruction set, instantiates every family body for its wrappers and
// lists them here. A run computes blocks of one vector through the body and
// sends the special lanes to the body's callout, as the kernels will; the
// remainder goes through the Scalar wrapper. Element-by-element bodies run
// their element routine on every element.
#pragma once

#include <cstdint>
#include <vector>

namespace zvl_test {

using Run1 = void (*)(int n, const double* a, double* r, int32_t* status);
using Run2 = void (*)(int n, const double* a, const double* b, double* r, int32_t* status);

struct BodyRun {
    const char* fn;    // "atan", "atan2", ...: the MPFR function the test compares with
    const char* mode;  // "HA", "LA", "EP"
    const char* form;  // which body: "vector", "older HA", "element EP", ...
    const char* isa;   // "Sse2", "Sse41", "Avx", "element"
    Run1 run1;         // one input, or
    Run2 run2;         // two inputs
};

// The units' lists (a unit whose instruction set the processor lacks lists
// nothing).
void add_sse2_bodies(std::vector<BodyRun>& out);
void add_sse41_bodies(std::vector<BodyRun>& out);
void add_avx_bodies(std::vector<BodyRun>& out);

}  // namespace zvl_test
