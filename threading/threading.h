// Threading: the length from which a function goes parallel, and the
// parallel drivers that split one kernel call over the OpenMP team.
#pragma once

#include <cstdint>

#include "base/kernel_shapes.h"

namespace zvl {

// Element count from which the function whose HA threshold slot is `slot`
// goes parallel on cpu type `cpu`: at least 100, 0x7fffffff for never. The
// first call of either fixes the cpu type for all later ones and runs the
// package walk.
int32_t threshold_d(int32_t slot, int32_t cpu);
int32_t threshold_z(int32_t slot, int32_t cpu);

// Threads that n elements of the function at threshold slot `slot` (of the
// accuracy mode in force) are worth, at most *threads; the answer is also
// written to *threads. One per cost table: complex double, complex float,
// real double, real float. Asked by the drivers in dynamic mode only.
int32_t split_threads_z(int32_t* threads, int32_t n, int32_t slot);
int32_t split_threads_c(int32_t* threads, int32_t n, int32_t slot);
int32_t split_threads_d(int32_t* threads, int32_t n, int32_t slot);
int32_t split_threads_s(int32_t* threads, int32_t n, int32_t slot);

// Runs the package walk and derives the fork cost from its counts.
void init_fork_cost();

// Single-precision element kinds of the shapes no front-end uses yet.
struct Complex8 {
    float real;
    float imag;
};

using KernelZ12 = void (*)(int32_t n, const ZVLComplex16* a, ZVLComplex16* y, ZVLComplex16* z);
using KernelDZ = void (*)(int32_t n, const double* a, ZVLComplex16* r);
using KernelZD = void (*)(int32_t n, const ZVLComplex16* a, double* r);
using KernelS1 = void (*)(int32_t n, const float* a, float* r);
using KernelS2 = void (*)(int32_t n, const float* a, const float* b, float* r);
using KernelS12 = void (*)(int32_t n, const float* a, float* y, float* z);
using KernelSx = void (*)(int32_t n, const float* a, float b, float* r);
using KernelC1 = void (*)(int32_t n, const Complex8* a, Complex8* r);
using KernelC2 = void (*)(int32_t n, const Complex8* a, const Complex8* b, Complex8* r);
using KernelC12 = void (*)(int32_t n, const Complex8* a, Complex8* y, Complex8* z);
using KernelCx = void (*)(int32_t n, const Complex8* a, Complex8 b, Complex8* r);
using KernelSC = void (*)(int32_t n, const float* a, Complex8* r);
using KernelCS = void (*)(int32_t n, const Complex8* a, float* r);

}  // namespace zvl

// Parallel drivers, one per kernel shape. `slot` is the threshold slot of the
// accuracy mode in force; the last argument is always zero. Each asks for the
// thread count of the ZEL_ZVL domain and, in dynamic mode, the split; with
// one thread it calls the kernel directly. Otherwise every team member takes
// the caller's callback and mode, reports indices from the start of the
// whole array, and runs a contiguous chunk (the last member takes the
// remainder); the caller's status word then holds the last nonzero status
// a member stored, or 0.
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
// b points at the front-end's copy of the scalar; each member passes the
// kernel a copy of its own.
void zel_zvl_service_threader_z_cz_2i_z_1o(zvl::KernelZx k, int32_t n, const ZVLComplex16* a,
                                           const ZVLComplex16* b, ZVLComplex16* r,
                                           int32_t slot, int32_t zero);
void zel_zvl_service_threader_z_1i_2o(zvl::KernelZ12 k, int32_t n, const ZVLComplex16* a,
                                      ZVLComplex16* y, ZVLComplex16* z, int32_t slot,
                                      int32_t zero);
void zel_zvl_service_threader_d_1i_z_1o(zvl::KernelDZ k, int32_t n, const double* a,
                                        ZVLComplex16* r, int32_t slot, int32_t zero);
void zel_zvl_service_threader_z_1i_d_1o(zvl::KernelZD k, int32_t n, const ZVLComplex16* a,
                                        double* r, int32_t slot, int32_t zero);
void zel_zvl_service_threader_s_1i_1o(zvl::KernelS1 k, int32_t n, const float* a, float* r,
                                      int32_t slot, int32_t zero);
void zel_zvl_service_threader_s_2i_1o(zvl::KernelS2 k, int32_t n, const float* a,
                                      const float* b, float* r, int32_t slot, int32_t zero);
void zel_zvl_service_threader_s_1i_2o(zvl::KernelS12 k, int32_t n, const float* a, float* y,
                                      float* z, int32_t slot, int32_t zero);
void zel_zvl_service_threader_s_cs_2i_s_1o(zvl::KernelSx k, int32_t n, const float* a, float b,
                                           float* r, int32_t slot, int32_t zero);
void zel_zvl_service_threader_c_1i_1o(zvl::KernelC1 k, int32_t n, const zvl::Complex8* a,
                                      zvl::Complex8* r, int32_t slot, int32_t zero);
void zel_zvl_service_threader_c_2i_1o(zvl::KernelC2 k, int32_t n, const zvl::Complex8* a,
                                      const zvl::Complex8* b, zvl::Complex8* r, int32_t slot,
                                      int32_t zero);
void zel_zvl_service_threader_c_1i_2o(zvl::KernelC12 k, int32_t n, const zvl::Complex8* a,
                                      zvl::Complex8* y, zvl::Complex8* z, int32_t slot,
                                      int32_t zero);
void zel_zvl_service_threader_c_cc_2i_c_1o(zvl::KernelCx k, int32_t n, const zvl::Complex8* a,
                                           zvl::Complex8 b, zvl::Complex8* r, int32_t slot,
                                           int32_t zero);
void zel_zvl_service_threader_s_1i_c_1o(zvl::KernelSC k, int32_t n, const float* a,
                                        zvl::Complex8* r, int32_t slot, int32_t zero);
void zel_zvl_service_threader_c_1i_s_1o(zvl::KernelCS k, int32_t n, const zvl::Complex8* a,
                                        float* r, int32_t slot, int32_t zero);
}
