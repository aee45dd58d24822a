// The error-function bodies run as their kernels will run them: the block
// formula on whole vectors of one wrapper, the Scalar formula on the rest,
// then each special lane, lowest first, through the callout. The statuses
// the callouts return are kept per element instead of going to the error
// pipeline.
#pragma once

#include <cstdint>

namespace zvl_test {

enum ErfBody {
    kErfHA, kErfLA, kErfEP,
    kErfcHA, kErfcLA, kErfcEP,
    kErfInvHA, kErfInvLA, kErfInvEP,
    kErfBodies
};

// r[i] = the body's result for a[i], st[i] = its status (0 when none).
using ErfRun = void (*)(ErfBody b, int n, const double* a, double* r, int32_t* st);

// One per wrapper: Scalar and Sse2 at the baseline, Sse41 built with
// SSE4.1, Avx built with AVX (call only where the processor has it), and
// twins of Sse41 and Avx, two vectors side by side as the kernels of cpu
// types 1 to 5 run them.
void erf_run_scalar(ErfBody b, int n, const double* a, double* r, int32_t* st);
void erf_run_sse2(ErfBody b, int n, const double* a, double* r, int32_t* st);
void erf_run_sse41(ErfBody b, int n, const double* a, double* r, int32_t* st);
void erf_run_avx(ErfBody b, int n, const double* a, double* r, int32_t* st);
void erf_run_twin_sse41(ErfBody b, int n, const double* a, double* r, int32_t* st);
void erf_run_twin_avx(ErfBody b, int n, const double* a, double* r, int32_t* st);

struct ErfWrapper {
    const char* name;
    ErfRun run;
    bool needs_avx;
};
inline constexpr ErfWrapper kErfWrappers[] = {
    {"Scalar", erf_run_scalar, false},
    {"Sse2", erf_run_sse2, false},
    {"Sse41", erf_run_sse41, false},
    {"Avx", erf_run_avx, true},
    {"Twin<Sse41>", erf_run_twin_sse41, false},
    {"Twin<Avx>", erf_run_twin_avx, true},
};

const char* erf_body_name(ErfBody b);

}  // namespace zvl_test
