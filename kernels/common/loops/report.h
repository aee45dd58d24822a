// What every reporting loop form shares: the special-lane mask and the call
// of the error pipeline with the store-call-reload contract around it.
//
// Included by the per-cpu units inside their unnamed namespace, so Cpu is
// also the copy of the error pipeline that the loops call.
#pragma once

#include <cstdint>

#include "kernels/common/isa.h"
#include "kernels/common/loops/forms.h"
#include "state/state.h"

namespace {

// The special-lane test may give a full-lane mask or the lane bits already.
template <class V>
inline int lane_bits(typename V::vd m) {
    return V::mask(m);
}
template <class V>
inline int lane_bits(int bits) {
    return bits;
}

template <int Cpu>
inline void report(int32_t status, int32_t i, const double* a, const double* b, double* r,
                   double* r2, const char* name) {
    zvl::Services<Cpu>::error_pipeline(status, i, a, b, r, r2, name);
}

// Runs the callout on the lanes whose mask bit is set, in lane order, over
// all 32 positions; xs/zs/ys/us hold the block's inputs and results and are
// indexed by lane. `base` is the block's first element. One-input shapes
// pass `a` as the second input array, one-output shapes `r` as the second
// output array.
template <int Cpu, class S, class F>
inline void special_lanes(const F& f, uint32_t mask, const double* xs, const double* zs,
                          double* ys, double* us, int32_t base, const double* a, const double* b,
                          double* r, double* r2, const char* name) {
    for (int l = 0; l < 32; ++l) {
        if (!(mask >> l & 1u)) continue;
        int32_t st;
        if constexpr (S::in == 2)
            st = f.callout(&xs[l], &zs[l], &ys[l]);
        else if constexpr (S::out == 2)
            st = f.callout(&xs[l], &ys[l], &us[l]);
        else
            st = f.callout(&xs[l], &ys[l]);
        if (st != 0) {
            r[base + l] = ys[l];
            if constexpr (S::out == 2) r2[base + l] = us[l];
            report<Cpu>(st, base + l, a, S::in == 1 ? a : b, r, S::out == 1 ? r : r2, name);
            ys[l] = r[base + l];
            if constexpr (S::out == 2) us[l] = r2[base + l];
        }
    }
}

}  // namespace
