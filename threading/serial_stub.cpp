// Until the threshold tables and drivers land: no function goes parallel,
// and the drivers run the kernel on the calling thread.
#include "threading/threading.h"

namespace zvl {

int32_t threshold_d(int32_t, int32_t) { return 0x7fffffff; }
int32_t threshold_z(int32_t, int32_t) { return 0x7fffffff; }

}  // namespace zvl

extern "C" {

void zel_zvl_service_threader_d_1i_1o(zvl::KernelD1 k, int32_t n, const double* a, double* r,
                                      int32_t, int32_t) {
    k(n, a, r);
}
void zel_zvl_service_threader_d_2i_1o(zvl::KernelD2 k, int32_t n, const double* a,
                                      const double* b, double* r, int32_t, int32_t) {
    k(n, a, b, r);
}
void zel_zvl_service_threader_d_1i_2o(zvl::KernelD12 k, int32_t n, const double* a, double* y,
                                      double* z, int32_t, int32_t) {
    k(n, a, y, z);
}
void zel_zvl_service_threader_d_cd_2i_d_1o(zvl::KernelDx k, int32_t n, const double* a,
                                           double b, double* r, int32_t, int32_t) {
    k(n, a, b, r);
}
void zel_zvl_service_threader_z_1i_1o(zvl::KernelZ1 k, int32_t n, const ZVLComplex16* a,
                                      ZVLComplex16* r, int32_t, int32_t) {
    k(n, a, r);
}
void zel_zvl_service_threader_z_2i_1o(zvl::KernelZ2 k, int32_t n, const ZVLComplex16* a,
                                      const ZVLComplex16* b, ZVLComplex16* r, int32_t,
                                      int32_t) {
    k(n, a, b, r);
}
void zel_zvl_service_threader_z_cz_2i_z_1o(zvl::KernelZx k, int32_t n, const ZVLComplex16* a,
                                           const ZVLComplex16* b, ZVLComplex16* r, int32_t,
                                           int32_t) {
    ZVLComplex16 local = *b;
    k(n, a, &local, r);
}
}
