// The exported entries: the mode calls, and the front-ends and their _Idx
// companions, one expansion per row of the function table.
#include <cstring>

#include "frame/frontend.h"
#include "frame/kernel_sets.h"

#define ZVL_EXPORT extern "C" ZVL_API

namespace zvl {
namespace {

constexpr int32_t name_len(const char* s) { return *s ? 1 + name_len(s + 1) : 0; }

}  // namespace
}  // namespace zvl

#define ZVL_INFO(EXPORT, report, id, cplx, K)                                         \
    static zvl::Cells<K> cells_##EXPORT;                                                \
    static constexpr zvl::FunctionInfo info_##EXPORT = {#report, zvl::name_len(#report), \
                                                        id, cplx};

// A function's record, cells and kernel set, as run() takes them after n.
#define ZVL_FUNCTION(EXPORT) info_##EXPORT, cells_##EXPORT, zvl::kernels_##EXPORT

#define ZVL_UNPAREN(...) __VA_ARGS__

// An exported entry and its _Idx companion for each shape: the shape's
// front-end (frontend.h) with the row's record, cells and kernel set.
#define ZVL_FRONT_ENTRIES(EXPORT, report, id, cplx, K, shape, params, args, idx_params, idx_args) \
    ZVL_INFO(EXPORT, report, id, cplx, zvl::K)                                          \
    ZVL_EXPORT void EXPORT params { zvl::Front::shape(ZVL_UNPAREN args, ZVL_FUNCTION(EXPORT)); } \
    ZVL_EXPORT void EXPORT##_Idx idx_params { EXPORT idx_args; }

#define ZVL_FRONT_D1(EXPORT, report, id, fam)                                                  \
    ZVL_FRONT_ENTRIES(EXPORT, report, id, false, KernelD1, d1,                                  \
                      (const int* n, const double* a, double* r), (n, a, r),                    \
                      (const int* n, const double* a, int ia, double* r, int ir),               \
                      (n, zvl::advance(a, ia), zvl::advance(r, ir)))
#define ZVL_FRONT_D2(EXPORT, report, id, fam)                                                  \
    ZVL_FRONT_ENTRIES(EXPORT, report, id, false, KernelD2, d2,                                  \
                      (const int* n, const double* a, const double* b, double* r), (n, a, b, r), \
                      (const int* n, const double* a, int ia, const double* b, int ib, double* r, int ir), \
                      (n, zvl::advance(a, ia), zvl::advance(b, ib), zvl::advance(r, ir)))
#define ZVL_FRONT_D12(EXPORT, report, id, fam)                                                 \
    ZVL_FRONT_ENTRIES(EXPORT, report, id, false, KernelD12, d12,                                \
                      (const int* n, const double* a, double* y, double* z), (n, a, y, z),       \
                      (const int* n, const double* a, int ia, double* y, int iy, double* z, int iz), \
                      (n, zvl::advance(a, ia), zvl::advance(y, iy), zvl::advance(z, iz)))
#define ZVL_FRONT_DX(EXPORT, report, id, fam)                                                  \
    ZVL_FRONT_ENTRIES(EXPORT, report, id, false, KernelDx, dx,                                  \
                      (const int* n, const double* a, const double* b, double* r), (n, a, b, r), \
                      (const int* n, const double* a, int ia, const double* b, double* r, int ir), \
                      (n, zvl::advance(a, ia), b, zvl::advance(r, ir)))
#define ZVL_FRONT_Z1(EXPORT, report, id, fam)                                                  \
    ZVL_FRONT_ENTRIES(EXPORT, report, id, true, KernelZ1, z1,                                   \
                      (const int* n, const ZVLComplex16* a, ZVLComplex16* r), (n, a, r),        \
                      (const int* n, const ZVLComplex16* a, int ia, ZVLComplex16* r, int ir),   \
                      (n, zvl::advance(a, ia), zvl::advance(r, ir)))
#define ZVL_FRONT_Z2(EXPORT, report, id, fam)                                                  \
    ZVL_FRONT_ENTRIES(EXPORT, report, id, true, KernelZ2, z2,                                   \
                      (const int* n, const ZVLComplex16* a, const ZVLComplex16* b, ZVLComplex16* r), \
                      (n, a, b, r),                                                              \
                      (const int* n, const ZVLComplex16* a, int ia, const ZVLComplex16* b, int ib, \
                       ZVLComplex16* r, int ir),                                                \
                      (n, zvl::advance(a, ia), zvl::advance(b, ib), zvl::advance(r, ir)))
#define ZVL_FRONT_ZX(EXPORT, report, id, fam)                                                  \
    ZVL_FRONT_ENTRIES(EXPORT, report, id, true, KernelZx, zx,                                   \
                      (const int* n, const ZVLComplex16* a, const ZVLComplex16* b, ZVLComplex16* r), \
                      (n, a, b, r),                                                              \
                      (const int* n, const ZVLComplex16* a, int ia, const ZVLComplex16* b,      \
                       ZVLComplex16* r, int ir),                                                \
                      (n, zvl::advance(a, ia), b, zvl::advance(r, ir)))

// The rounding family: the checks of the shape, then the one slot, bound on
// first use. No threshold, no mode, no parallel path, no status on success.
#define ZVL_ROUNDING_INFO(EXPORT, report, K)                                          \
    static zvl::RoundingCells<K> cells_##EXPORT;                                       \
    static constexpr zvl::FunctionInfo info_##EXPORT = {#report, zvl::name_len(#report), \
                                                        -1, false};

#define ZVL_FRONT_R1(EXPORT, report, fam)                                                    \
    ZVL_ROUNDING_INFO(EXPORT, report, zvl::KernelD1)                                   \
    ZVL_EXPORT void EXPORT(const int* n, const double* a, double* r) {                  \
        zvl::run_rounding(*n, ZVL_FUNCTION(EXPORT), {a, r}, a, r);                          \
    }                                                                                   \
    ZVL_EXPORT void EXPORT##_Idx(const int* n, const double* a, int ia, double* r, int ir) { \
        EXPORT(n, zvl::advance(a, ia), zvl::advance(r, ir));                            \
    }

#define ZVL_FRONT_R12(EXPORT, report, fam)                                                   \
    ZVL_ROUNDING_INFO(EXPORT, report, zvl::KernelD12)                                  \
    ZVL_EXPORT void EXPORT(const int* n, const double* a, double* y, double* z) {       \
        zvl::run_rounding(*n, ZVL_FUNCTION(EXPORT), {a, y, z}, a, y, z);                    \
    }                                                                                   \
    ZVL_EXPORT void EXPORT##_Idx(const int* n, const double* a, int ia, double* y, int iy, \
                                 double* z, int iz) {                                   \
        EXPORT(n, zvl::advance(a, ia), zvl::advance(y, iy), zvl::advance(z, iz));       \
    }

ZVL_FUNCTIONS(ZVL_FRONT_D1, ZVL_FRONT_D2, ZVL_FRONT_D12, ZVL_FRONT_DX, ZVL_FRONT_Z1, ZVL_FRONT_Z2,
              ZVL_FRONT_ZX, ZVL_FRONT_R1, ZVL_FRONT_R12)

// The mode calls: the calling thread's mode word, read and replaced.
ZVL_EXPORT unsigned int ZVLGETMODE(void) { return zvl::get_mode(); }
ZVL_EXPORT unsigned int ZVLSETMODE(const unsigned int* mode) { return zvl::set_mode(*mode); }
