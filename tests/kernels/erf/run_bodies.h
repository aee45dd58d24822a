// The driver behind erf_run_<wrapper>: included once by each wrapper's unit,
// compiled with that unit's instruction set, after the family headers.
#pragma once

#include "kernels/common/loops.h"
#include "kernels/common/twin.h"
#include "kernels/erf/erf/erf.h"
#include "kernels/erf/erfc/erfc.h"
#include "kernels/erf/erfinv/erfinv.h"
#include "tests/kernels/erf/bodies.h"

namespace {

// Erf has no special lanes.
template <class F>
constexpr bool kHasSpecial = true;
template <>
constexpr bool kHasSpecial<ErfHA> = false;
template <>
constexpr bool kHasSpecial<ErfLA> = false;
template <>
constexpr bool kHasSpecial<ErfEP> = false;

template <class F, class V>
void run_on(int n, const double* a, double* r, int32_t* st) {
    int i = 0;
    for (; i + V::lanes <= n; i += V::lanes) {
        const typename V::vd x = V::load(a + i);
        V::store(r + i, F::template eval<V>(x));
        int bits = 0;
        if constexpr (kHasSpecial<F>) bits = lane_bits<V>(F::template special<V>(x));
        for (int l = 0; l < V::lanes; ++l) {
            st[i + l] = 0;
            if constexpr (kHasSpecial<F>)
                if (bits >> l & 1) st[i + l] = F::callout(a + i + l, r + i + l);
        }
    }
    if (i < n) run_on<F, Scalar>(n - i, a + i, r + i, st + i);
}

template <class V>
void run_body(zvl_test::ErfBody b, int n, const double* a, double* r, int32_t* st) {
    using namespace zvl_test;
    switch (b) {
        case kErfHA: return run_on<ErfHA, V>(n, a, r, st);
        case kErfLA: return run_on<ErfLA, V>(n, a, r, st);
        case kErfEP: return run_on<ErfEP, V>(n, a, r, st);
        case kErfcHA: return run_on<ErfcHA, V>(n, a, r, st);
        case kErfcLA: return run_on<ErfcLA, V>(n, a, r, st);
        case kErfcEP: return run_on<ErfcEP, V>(n, a, r, st);
        case kErfInvHA: return run_on<ErfInvHA, V>(n, a, r, st);
        case kErfInvLA: return run_on<ErfInvLA, V>(n, a, r, st);
        case kErfInvEP: return run_on<ErfInvEP, V>(n, a, r, st);
        case kErfBodies: break;
    }
}

}  // namespace
