// The measuring rows of the complex functions: their MPFR references (each
// part of f(x + iy) as a real formula), where to sample, the points to
// check, and the glibc loop they are timed against. Joined to the
// library's function table by exported name, as the real rows are.
#pragma once

#include <mpfr.h>

#include "kernels/common/plan.h"
#include "tools/common/functions.h"
#include "zvl.h"

namespace zvl_tools {

// re + i im = f(x + iy), each at the precision of re and im.
using RefZ = void (*)(mpfr_ptr re, mpfr_ptr im, mpfr_srcptr x, mpfr_srcptr y);
using LoopZ = void (*)(int32_t n, const ZVLComplex16* a, ZVLComplex16* r);

struct ZRegion {
    Interval re, im;
    double weight;
    const char* why;
};

struct ComplexRow {
    const char* name = nullptr;      // tools and budget name
    const char* exported = nullptr;  // the library's exported name
    const char* formula = nullptr;
    RefZ ref = nullptr;
    List<ZRegion> regions = {};
    List<Pair> special = {};  // exact points (real, imaginary)
    double circle = 0;        // weight of samples near |z| = 1, at every angle
    ZRegion timing = {};      // ordinary arguments for timing
    LoopZ baseline = nullptr;  // glibc's scalar function in a loop
    const char* baseline_label = nullptr;
};

struct ComplexFunction {
    const ComplexRow* row;
    const zvl::Plan* plan;
    LoopZ (*kernel)(int cpu, int mode);  // the slot's kernel
    void (*front)(const int*, const ZVLComplex16*, ZVLComplex16*);
};

// The library's complex functions that have a row, in function-table order.
List<ComplexFunction> complex_functions();

}  // namespace zvl_tools
