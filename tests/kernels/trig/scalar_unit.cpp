// One cpu type's copy of the trigonometric scalar routines, built with the
// flags of that cpu type's units (ZVL_CPU, ZVL_CPU_INDEX and the
// instruction set come from the build), until the trig kernels include them.
#include "kernels/trig/trig_reduce/trig_reduce.h"
#include "tests/kernels/trig/scalars.h"

#define ZVL_TRIG_PASTE2(a, b) a##b
#define ZVL_TRIG_PASTE(a, b) ZVL_TRIG_PASTE2(a, b)

namespace zvl_test {

extern const TrigScalars ZVL_TRIG_PASTE(trig_scalars_, ZVL_CPU) = {
    TrigReduce,
};

}  // namespace zvl_test
