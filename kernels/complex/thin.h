// The thin kernel over a complex scalar routine F: one call per element
// (kernels/common/loops/thin.h runs the loop, with the element copied so
// that the output may be the input).
#pragma once

#include "kernels/common/loops/forms.h"
#include "zvl.h"

namespace {

template <ZVLComplex16* (*F)(ZVLComplex16*, const ZVLComplex16*)>
struct ZThin {
    using form = forms::Thin;
    static void element(ZVLComplex16* r, const ZVLComplex16* z) { F(r, z); }
};

}  // namespace
