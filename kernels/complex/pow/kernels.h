// The thin kernels of complex Pow and Powx over zPow_scalar. Powx's b is
// the address of the front-end's private copy of the exponent, read once
// per element into a local, so that a result written over the exponent
// cannot change the elements after it.
#pragma once

#include "kernels/common/unit.h"
#include "kernels/complex/pow/plan.h"
#include "kernels/complex/pow/scalar.h"

namespace {

struct ZPowThin {
    using form = forms::Thin;
    static void element(ZVLComplex16* r, const ZVLComplex16* a, const ZVLComplex16* b) { zPow_scalar(r, a, b); }
};
using ZPowFamily = PlannedFamily<zvl::plans::zPow, Shape<2, 1, ZVLComplex16>, Letter<'T', ZPowThin>>;

// The array-and-scalar shape: one exponent for every element.
struct ZPowxFamily {
    static constexpr const zvl::Plan& plan = zvl::plans::zPowx;
    template <int Cpu, int Col>
    static void run(int32_t n, const ZVLComplex16* a, const ZVLComplex16* b, ZVLComplex16* r, const char*) {
        constexpr zvl::Cell c = plan.at(Cpu, Col);
        static_assert(!c.forwards() && c.loop == zvl::Loop::thin, "Powx's kernels are thin");
        [[maybe_unused]] GuardFor<c.guard> guard;
        for (int32_t i = 0; i < n; ++i) {
            const ZVLComplex16 x = a[i], e = *b;
            ZVLComplex16 y;
            zPow_scalar(&y, &x, &e);
            r[i] = y;
        }
    }
};

}  // namespace

ZVL_KERNELS_Z2(Pow, ZPowFamily)
ZVL_KERNELS_ZX(Powx, ZPowxFamily)
