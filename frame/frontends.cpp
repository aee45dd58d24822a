// The exported front-ends and their _Idx companions, one expansion per row
// of the function table.
#include <cstring>

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

#define ZVL_FRONT_D1(EXPORT, report, id)                                                \
    ZVL_INFO(EXPORT, report, id, false, zvl::KernelD1)                                 \
    ZVL_EXPORT void EXPORT(const int* n, const double* a, double* r) {                  \
        const int32_t len = *n;                                                         \
        zvl::run(                                                                       \
            len, info_##EXPORT, cells_##EXPORT, zvl::kernels_##EXPORT, {a, r},          \
            [&](zvl::KernelD1 k) { k(len, a, r); },                                     \
            [&](zvl::KernelD1 k, int32_t slot) {                                        \
                zel_zvl_service_threader_d_1i_1o(k, len, a, r, slot, 0);                \
            });                                                                         \
    }                                                                                   \
    ZVL_EXPORT void EXPORT##_Idx(const int* n, const double* a, int ia, double* r, int ir) { \
        EXPORT(n, zvl::advance(a, ia), zvl::advance(r, ir));                            \
    }

#define ZVL_FRONT_D2(EXPORT, report, id)                                                \
    ZVL_INFO(EXPORT, report, id, false, zvl::KernelD2)                                 \
    ZVL_EXPORT void EXPORT(const int* n, const double* a, const double* b, double* r) { \
        const int32_t len = *n;                                                         \
        zvl::run(                                                                       \
            len, info_##EXPORT, cells_##EXPORT, zvl::kernels_##EXPORT, {a, b, r},       \
            [&](zvl::KernelD2 k) { k(len, a, b, r); },                                  \
            [&](zvl::KernelD2 k, int32_t slot) {                                        \
                zel_zvl_service_threader_d_2i_1o(k, len, a, b, r, slot, 0);             \
            });                                                                         \
    }                                                                                   \
    ZVL_EXPORT void EXPORT##_Idx(const int* n, const double* a, int ia, const double* b,   \
                                 int ib, double* r, int ir) {                           \
        EXPORT(n, zvl::advance(a, ia), zvl::advance(b, ib), zvl::advance(r, ir));       \
    }

// Real array and real scalar: positions are n 1, a 2, r 3; b is never
// tested, and is read at the moment of the call, after the mode.
#define ZVL_FRONT_DX(EXPORT, report, id)                                                \
    ZVL_INFO(EXPORT, report, id, false, zvl::KernelDx)                                 \
    ZVL_EXPORT void EXPORT(const int* n, const double* a, const double* b, double* r) { \
        const int32_t len = *n;                                                         \
        zvl::run(                                                                       \
            len, info_##EXPORT, cells_##EXPORT, zvl::kernels_##EXPORT, {a, r},          \
            [&](zvl::KernelDx k) { k(len, a, *b, r); },                                 \
            [&](zvl::KernelDx k, int32_t slot) {                                        \
                zel_zvl_service_threader_d_cd_2i_d_1o(k, len, a, *b, r, slot, 0);       \
            });                                                                         \
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

#define ZVL_FRONT_R1(EXPORT, report)                                                    \
    ZVL_ROUNDING_INFO(EXPORT, report, zvl::KernelD1)                                   \
    ZVL_EXPORT void EXPORT(const int* n, const double* a, double* r) {                  \
        const int32_t len = *n;                                                         \
        if (!zvl::arguments_ok(len, info_##EXPORT, {a, r})) return;                     \
        zvl::bind_rounding(cells_##EXPORT, zvl::kernels_##EXPORT)(len, a, r);           \
    }                                                                                   \
    ZVL_EXPORT void EXPORT##_Idx(const int* n, const double* a, int ia, double* r, int ir) { \
        EXPORT(n, zvl::advance(a, ia), zvl::advance(r, ir));                            \
    }

#define ZVL_FRONT_R12(EXPORT, report)                                                   \
    ZVL_ROUNDING_INFO(EXPORT, report, zvl::KernelD12)                                  \
    ZVL_EXPORT void EXPORT(const int* n, const double* a, double* y, double* z) {       \
        const int32_t len = *n;                                                         \
        if (!zvl::arguments_ok(len, info_##EXPORT, {a, y, z})) return;                  \
        zvl::bind_rounding(cells_##EXPORT, zvl::kernels_##EXPORT)(len, a, y, z);        \
    }                                                                                   \
    ZVL_EXPORT void EXPORT##_Idx(const int* n, const double* a, int ia, double* y, int iy, \
                                 double* z, int iz) {                                   \
        EXPORT(n, zvl::advance(a, ia), zvl::advance(y, iy), zvl::advance(z, iz));       \
    }

ZVL_FUNCTIONS(ZVL_FRONT_D1, ZVL_FRONT_D2, ZVL_IGNORE_ROW, ZVL_FRONT_DX, ZVL_IGNORE_ROW,
              ZVL_IGNORE_ROW, ZVL_IGNORE_ROW, ZVL_FRONT_R1, ZVL_FRONT_R12)
