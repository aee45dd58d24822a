// The bodies through the Scalar and Sse2 wrappers, at the baseline.
#include "tests/kernels/erf/run_bodies.h"

namespace zvl_test {

void erf_run_scalar(ErfBody b, int n, const double* a, double* r, int32_t* st) {
    run_body<Scalar>(b, n, a, r, st);
}
void erf_run_sse2(ErfBody b, int n, const double* a, double* r, int32_t* st) {
    run_body<Sse2>(b, n, a, r, st);
}

const char* erf_body_name(ErfBody b) {
    static const char* const names[] = {"Erf HA",    "Erf LA",    "Erf EP",
                                        "Erfc HA",   "Erfc LA",   "Erfc EP",
                                        "ErfInv HA", "ErfInv LA", "ErfInv EP"};
    return b < kErfBodies ? names[b] : "?";
}

}  // namespace zvl_test
