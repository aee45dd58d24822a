// One cpu type's copy of the trigonometric scalar routines, built with the
// flags of that cpu type's units (ZVL_CPU, ZVL_CPU_INDEX and the
// instruction set come from the build), until the trig kernels include them.
#include "kernels/trig/sincos/callout.h"
#include "kernels/trig/tan/tangent.h"
#include "tests/kernels/trig/scalars.h"

#define ZVL_TRIG_PASTE2(a, b) a##b
#define ZVL_TRIG_PASTE(a, b) ZVL_TRIG_PASTE2(a, b)

namespace zvl_test {

extern const TrigScalars ZVL_TRIG_PASTE(trig_scalars_, ZVL_CPU) = {
    TrigReduce,
    sin_callout,
    cos_callout,
    sincos_callout,
    tan_callout,
    sin_callout_at<ZVL_CPU_INDEX>,
    cos_callout_at<ZVL_CPU_INDEX>,
    [](int32_t i, const double* a, double* r) { tan_callout_at<ZVL_CPU_INDEX>(i, a, r, "dTan_HA"); },
    [](int32_t i, const double* a, double* r) { tan_callout_at<ZVL_CPU_INDEX>(i, a, r, "dTan_LA"); },
};

}  // namespace zvl_test
