// One cpu type's square roots in double arithmetic, compiled with that
// type's flags (ZVL_SQRT_SET names the object, ZVL_EXT_LABEL the cpu label,
// ZVL_SQRT_WRAPPER the vector wrapper of its vector member).
#include "kernels/complex/sqrt/sqrt_lanes.h"
#include "tests/kernels/complex/ext_set.h"

namespace {

ZVLComplex16* vector_one(ZVLComplex16* r, const ZVLComplex16* a) {
    zSqrt_vector<ZVL_SQRT_WRAPPER>(1, a, r);
    return r;
}

}  // namespace

extern const SqrtSet ZVL_SQRT_SET;
const SqrtSet ZVL_SQRT_SET = {ZVL_EXT_LABEL, zSqrt_fast, zSqrt_vector<ZVL_SQRT_WRAPPER>, vector_one};
