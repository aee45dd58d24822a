// The trigonometric scalar routines as the tests reach them: TrigReduce, one
// copy per cpu type, each compiled by scalar_unit.cpp with that cpu type's
// instruction set, as the library's per-cpu units compile it.
#pragma once

#include <cstdint>

namespace zvl_test {

struct TrigScalars {
    int32_t (*reduce)(double x, double* out);  // TrigReduce: quadrant, out[0] + out[1]
};

// Cpu type 0 .. 5.
const TrigScalars& trig_scalars(int cpu);

}  // namespace zvl_test
