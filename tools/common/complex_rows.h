// The measuring rows of the complex functions: their MPFR references (each
// part of f(x + iy) as a real formula), where to sample, the points to
// check, and the glibc loop they are timed against. Joined to the
// library's function table by exported name, as the real rows are.
#pragma once

#include <mpfr.h>

#include <vector>

#include "kernels/common/plan.h"
#include "tools/common/functions.h"
#include "zvl.h"

namespace zvl_tools {

// re + i im = f(x + iy), each at the precision of re and im.
using RefZ = void (*)(mpfr_ptr re, mpfr_ptr im, mpfr_srcptr x, mpfr_srcptr y);
// re + i im = f(x + iy, u + iv), for the two-argument rows (Pow, Powx).
using RefZ2 = void (*)(mpfr_ptr re, mpfr_ptr im, mpfr_srcptr x, mpfr_srcptr y, mpfr_srcptr u, mpfr_srcptr v);
using LoopZ = void (*)(int32_t n, const ZVLComplex16* a, ZVLComplex16* r);
// Pow's shape, and Powx's, whose b points to one value for all n elements.
using LoopZ2 = void (*)(int32_t n, const ZVLComplex16* a, const ZVLComplex16* b, ZVLComplex16* r);

enum class ZShape { Z1, Z2, ZX };

// Powx's samples share their exponent in runs of this many elements,
// which is how the harness, the report and the benchmark call it.
constexpr size_t kSharedRun = 16;

struct ZRegion {
    Interval re, im;
    double weight;
    const char* why;
    Interval bre = {}, bim = {};  // the second argument's parts (Pow, Powx)
};

// An exact point of a two-argument row: a = (ar, ai), b = (br, bi).
struct ZPair {
    double ar, ai, br, bi;
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
    // Two-argument rows: the shape, the reference, the exact points and the
    // baseline. Conditioned rows measure the normwise error over
    // 1 + |b ln a|, the factor by which a composition exp(b ln a) may
    // magnify the rounding of its parts.
    ZShape shape = ZShape::Z1;
    RefZ2 ref2 = nullptr;
    List<ZPair> special2 = {};
    LoopZ2 baseline2 = nullptr;
    bool conditioned = false;
};

struct ComplexFunction {
    const ComplexRow* row;
    const zvl::Plan* plan;
    LoopZ (*kernel)(int cpu, int mode);    // the slot's kernel, one-argument rows
    LoopZ2 (*kernel2)(int cpu, int mode);  // two-argument rows
};

// n arguments from the row's timing region for the report and the
// benchmark, with their second arguments (Powx's shared by runs of
// kSharedRun); b is filled for every row and ignored by one-argument ones.
void complex_timing_inputs(const ComplexRow& row, size_t n, uint64_t seed, std::vector<ZVLComplex16>* a,
                           std::vector<ZVLComplex16>* b);

// f's kernel of cpu type `cpu` and mode `mode` on n elements, or its
// baseline loop when cpu < 0. b is ignored by one-argument rows; Powx is
// called once for each run of kSharedRun elements from a, with b's value
// at the run's start.
void call_complex(const ComplexFunction& f, int cpu, int mode, int32_t n, const ZVLComplex16* a,
                  const ZVLComplex16* b, ZVLComplex16* r);

// The library's complex functions that have a row, in function-table order.
List<ComplexFunction> complex_functions();

}  // namespace zvl_tools
