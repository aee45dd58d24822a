// The trigonometric scalar routines as the tests reach them: TrigReduce and
// the callouts of Sin, Cos, SinCos and Tan, one copy per cpu type, each
// compiled by scalar_unit.cpp with that cpu type's instruction set, as the
// library's per-cpu units compile them.
#pragma once

#include <cstdint>

namespace zvl_test {

struct TrigScalars {
    int32_t (*reduce)(double x, double* out);  // TrigReduce: quadrant, out[0] + out[1]
    // Pointer forms: store the result, return the status.
    int32_t (*sin)(const double* x, double* y);
    int32_t (*cos)(const double* x, double* y);
    int32_t (*sincos)(const double* x, double* s, double* c);
    int32_t (*tan)(const double* x, double* y);
    // Index forms: element i of a into r[i], reporting through this cpu
    // type's error pipeline as "dSin_HA", "dCos_HA", "dTan_HA", "dTan_LA".
    void (*sin_at)(int32_t i, const double* a, double* r);
    void (*cos_at)(int32_t i, const double* a, double* r);
    void (*tan_ha_at)(int32_t i, const double* a, double* r);
    void (*tan_la_at)(int32_t i, const double* a, double* r);
};

// Cpu type 0 .. 5.
const TrigScalars& trig_scalars(int cpu);

}  // namespace zvl_test
