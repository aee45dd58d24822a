// The exported front-ends and their _Idx companions, one expansion per row
// of the function table.
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

#define ZVL_FRONT_D1(EXPORT, report, id, fam)                                                \
    ZVL_INFO(EXPORT, report, id, false, zvl::KernelD1)                                 \
    ZVL_EXPORT void EXPORT(const int* n, const double* a, double* r) {                  \
        zvl::run<zel_zvl_service_threader_d_1i_1o>(*n, ZVL_FUNCTION(EXPORT), {a, r}, a, r); \
    }                                                                                   \
    ZVL_EXPORT void EXPORT##_Idx(const int* n, const double* a, int ia, double* r, int ir) { \
        EXPORT(n, zvl::advance(a, ia), zvl::advance(r, ir));                            \
    }

#define ZVL_FRONT_D2(EXPORT, report, id, fam)                                                \
    ZVL_INFO(EXPORT, report, id, false, zvl::KernelD2)                                 \
    ZVL_EXPORT void EXPORT(const int* n, const double* a, const double* b, double* r) { \
        zvl::run<zel_zvl_service_threader_d_2i_1o>(*n, ZVL_FUNCTION(EXPORT), {a, b, r}, a, \
                                                   b, r);                               \
    }                                                                                   \
    ZVL_EXPORT void EXPORT##_Idx(const int* n, const double* a, int ia, const double* b,   \
                                 int ib, double* r, int ir) {                           \
        EXPORT(n, zvl::advance(a, ia), zvl::advance(b, ib), zvl::advance(r, ir));       \
    }

// Real array and real scalar: positions are n 1, a 2, r 3; b is never
// tested, and is read at the moment of the call, after the mode.
#define ZVL_FRONT_DX(EXPORT, report, id, fam)                                                \
    ZVL_INFO(EXPORT, report, id, false, zvl::KernelDx)                                 \
    ZVL_EXPORT void EXPORT(const int* n, const double* a, const double* b, double* r) { \
        zvl::run<zel_zvl_service_threader_d_cd_2i_d_1o>(*n, ZVL_FUNCTION(EXPORT), {a, r}, \
                                                        a, zvl::ReadAtCall<double>{b}, r); \
    }                                                                                   \
    ZVL_EXPORT void EXPORT##_Idx(const int* n, const double* a, int ia, const double* b,   \
                                 double* r, int ir) {                                   \
        EXPORT(n, zvl::advance(a, ia), b, zvl::advance(r, ir));                         \
    }

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

ZVL_FUNCTIONS(ZVL_FRONT_D1, ZVL_FRONT_D2, ZVL_IGNORE_ROW, ZVL_FRONT_DX, ZVL_IGNORE_ROW,
              ZVL_IGNORE_ROW, ZVL_IGNORE_ROW, ZVL_FRONT_R1, ZVL_FRONT_R12)
