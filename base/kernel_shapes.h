// Kernel entry shapes, the kernel sets that hold them, and the accuracy
// columns: the types the front-ends, the parallel drivers and the kernels
// share.
//
// A kernel applies one function to n elements for one cpu type and accuracy
// mode. n may be any value (zero or negative does nothing); pointers are
// non-null and need no alignment; the output may alias the input.
#pragma once

#include <cstdint>
#include <type_traits>

#include "zvl.h"

namespace zvl {

using KernelD1 = void (*)(int32_t n, const double* a, double* r);
using KernelD2 = void (*)(int32_t n, const double* a, const double* b, double* r);
using KernelD12 = void (*)(int32_t n, const double* a, double* y, double* z);
using KernelDx = void (*)(int32_t n, const double* a, double b, double* r);
using KernelZ1 = void (*)(int32_t n, const ZVLComplex16* a, ZVLComplex16* r);
using KernelZ2 = void (*)(int32_t n, const ZVLComplex16* a, const ZVLComplex16* b,
                          ZVLComplex16* r);
using KernelZx = void (*)(int32_t n, const ZVLComplex16* a, const ZVLComplex16* b,
                          ZVLComplex16* r);

// Accuracy columns of a kernel set.
enum Accuracy { kHA = 0, kLA = 1, kEP = 2 };

// For one function: its kernels by cpu type (0..5) and accuracy column.
template <class K>
struct KernelSet {
    K k[6][3];
};

// The rounding family's: one kernel per cpu type.
template <class K>
struct RoundingSet {
    K k[6];
};

// Function types (not pointers) of the shapes, for declarations.
using KernelD1_fn = std::remove_pointer_t<KernelD1>;
using KernelD2_fn = std::remove_pointer_t<KernelD2>;
using KernelD12_fn = std::remove_pointer_t<KernelD12>;
using KernelDx_fn = std::remove_pointer_t<KernelDx>;
using KernelZ1_fn = std::remove_pointer_t<KernelZ1>;
using KernelZ2_fn = std::remove_pointer_t<KernelZ2>;
using KernelZx_fn = std::remove_pointer_t<KernelZx>;

}  // namespace zvl
