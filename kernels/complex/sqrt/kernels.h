// The kernels of complex Sqrt: the thin kernel over zSqrt_scalar at cpu
// type 0, zSqrt_fast's loop at 1, and the block form over zSqrt_parts from
// 2 up (see plan.h).
#pragma once

#include "kernels/common/unit.h"
#include "kernels/complex/scalars.h"
#include "kernels/complex/sqrt/plan.h"
#include "kernels/complex/sqrt/sqrt_lanes.h"
#include "kernels/complex/thin.h"

namespace {

struct ZSqrtLanes {
    template <class V>
    __attribute__((always_inline)) static int lanes(typename V::vd x, typename V::vd y, typename V::vd& re,
                                                    typename V::vd& im) {
        return zSqrt_parts<V>(x, y, re, im);
    }
    static void scalar(ZVLComplex16* r, const ZVLComplex16* z) { zSqrt_slow(r, z); }
};

// Four vectors side by side where a block holds four: the body is one long
// dependent chain a vector, and four of them fill the processor's window.
template <class F>
struct ZPerQuad {
    using form = forms::ZBlock;
    template <class V, int W>
    static uint32_t block(const double* x, const double* y, double* re, double* im) {
        if constexpr (W % (4 * V::lanes) == 0)
            return ZPerVector<F>::template block<Twin<Twin<V>>, W>(x, y, re, im);
        else
            return ZPerTwin<F>::template block<V, W>(x, y, re, im);
    }
    static void element(ZVLComplex16* r, const ZVLComplex16* z) { F::scalar(r, z); }
};

using ZSqrtFamily = PlannedFamily<zvl::plans::zSqrt, Shape<1, 1, ZVLComplex16>, Letter<'T', ZThin<zSqrt_scalar>>,
                                  Letter<'F', ZPerQuad<ZSqrtLanes>>, Letter<'V', ZPerQuad<ZSqrtLanes>>>;

}  // namespace

ZVL_KERNELS_Z1(Sqrt, ZSqrtFamily)
