// SLEEF's AVX routines over arrays (bench/sleef_avx.cpp).
#pragma once

namespace peer {
void sleef_sqrt_u05(int n, const double* a, double* r);
void sleef_sqrt_u35(int n, const double* a, double* r);
void sleef_inv_sqrt_u05(int n, const double* a, double* r);
void sleef_cbrt_u10(int n, const double* a, double* r);
void sleef_cbrt_u35(int n, const double* a, double* r);
void sleef_inv_cbrt_u10(int n, const double* a, double* r);
}  // namespace peer
