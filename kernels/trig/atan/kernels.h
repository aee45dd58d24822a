// The kernels of Atan and Atan2: each cell of their plans (plan.h) from the
// variants of atan.h and atan2.h. Refused lanes go, lowest first, to the
// exact callouts, which report nothing.
//
// Included by the trig units inside their own context (see unit.h).
#pragma once

#include "kernels/common/unit.h"
#include "kernels/trig/atan/atan2.h"
#include "kernels/trig/atan/plan.h"

namespace {

// Atan2 element by element on the restart form (one element a block): the
// element routine is the whole computation, and a block passes when it
// reports nothing.
template <class E>
struct Atan2Elements : E {
    using form = forms::Checked;
    template <class V, int NV>
    static bool checked_block(const typename V::vd* y, const typename V::vd* x, typename V::vd* r) {
        static_assert(V::lanes == 1 && NV == 1, "one element a block");
        return E::element(y, x, r) == 0;
    }
};

using AtanFamily = PlannedFamily<zvl::plans::Atan, D1Shape, Letter<'A', AtanHA>, Letter<'L', AtanLA>,
                                 Letter<'E', AtanEP>, Letter<'O', AtanOlderHA>, Letter<'S', AtanEP1>>;
using Atan2Family =
    PlannedFamily<zvl::plans::Atan2, D2Shape, Letter<'A', Atan2HA>, Letter<'L', Atan2LA>,
                  Letter<'E', Atan2EP>, Letter<'H', Atan2Elements<Atan2ElementHA>>,
                  Letter<'S', Atan2Elements<Atan2ElementEP>>>;

}  // namespace

ZVL_KERNELS_D1(Atan, AtanFamily)
ZVL_KERNELS_D2(Atan2, Atan2Family)
