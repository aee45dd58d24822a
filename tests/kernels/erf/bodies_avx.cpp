// The bodies through the Avx wrapper; this unit is built with AVX and runs
// only where the processor has it.
#include "tests/kernels/erf/run_bodies.h"

namespace zvl_test {

void erf_run_avx(ErfBody b, int n, const double* a, double* r, int32_t* st) {
    run_body<Avx>(b, n, a, r, st);
}
void erf_run_twin_avx(ErfBody b, int n, const double* a, double* r, int32_t* st) {
    run_body<Twin<Avx>>(b, n, a, r, st);
}

}  // namespace zvl_test
