// Threading: the length from which a function goes parallel, and the
// parallel drivers that split one kernel call over the OpenMP team.
#pragma once

#include <cstdint>

#include "kernels/common/kernel_types.h"

namespace zvl {

// Element count from which the function whose HA threshold slot is `slot`
// goes parallel on cpu type `cpu`: at least 100, 0x7fffffff for never.
int32_t threshold_d(int32_t slot, int32_t cpu);
int32_t threshold_z(int32_t slot, int32_t cpu);

}  // namespace zvl

// Parallel drivers, one per kernel shape. `slot` is the threshold slot of the
// accuracy mode in force; the last argument is always zero.
extern "C" {
void zel_zvl_service_threader_d_1i_1o(zvl::KernelD1 k, int32_t n, const double* a, double* r,
                                      int32_t slot, int32_t zero);
void zel_zvl_service_threader_d_2i_1o(zvl::KernelD2 k, int32_t n, const double* a,
                                      const double* b, double* r, int32_t slot, int32_t zero);
void zel_zvl_service_threader_d_1i_2o(zvl::KernelD12 k, int32_t n, const double* a, double* y,
                                      double* z, int32_t slot, int32_t zero);
void zel_zvl_service_threader_d_cd_2i_d_1o(zvl::KernelDx k, int32_t n, const double* a,
                                           double b, double* r, int32_t slot, int32_t zero);
void zel_zvl_service_threader_z_1i_1o(zvl::KernelZ1 k, int32_t n, const ZVLComplex16* a,
                                      ZVLComplex16* r, int32_t slot, int32_t zero);
void zel_zvl_service_threader_z_2i_1o(zvl::KernelZ2 k, int32_t n, const ZVLComplex16* a,
                                      const ZVLComplex16* b, ZVLComplex16* r, int32_t slot,
                                      int32_t zero);
void zel_zvl_service_threader_z_cz_2i_z_1o(zvl::KernelZx k, int32_t n, const ZVLComplex16* a,
                                           const ZVLComplex16* b, ZVLComplex16* r,
                                           int32_t slot, int32_t zero);
}
