// The bodies through the Sse41 wrapper; this unit is built with SSE4.1.
#include "tests/kernels/erf/run_bodies.h"

namespace zvl_test {

void erf_run_sse41(ErfBody b, int n, const double* a, double* r, int32_t* st) {
    run_body<Sse41>(b, n, a, r, st);
}
void erf_run_twin_sse41(ErfBody b, int n, const double* a, double* r, int32_t* st) {
    run_body<Twin<Sse41>>(b, n, a, r, st);
}

}  // namespace zvl_test
