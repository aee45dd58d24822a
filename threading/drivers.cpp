// The parallel drivers: one body for all twenty kernel shapes.
//
// The caller takes part as member 0. Each member first takes the caller's
// callback and mode word (the mode last, so it has the final say over the
// callback bit), sets its array base to the start of the first input array,
// so that the error pipeline reports indices in the whole array, and clears
// its status. It also computes in the caller's floating-point control state
// (below) and starts its share with errno clear. The split is plain: n / p
// elements each, the remainder on the last member, no alignment of chunk
// starts; with n below p the last member does everything. A member that
// ends with a nonzero status stores it to one shared word, so the last to
// store wins, and that word replaces the caller's status after the region;
// errno comes back the same way. Pool threads keep the caller's callback
// and mode until their next region; the array base, which means something
// only inside the region, and the floating-point control go back to what
// the thread had, so a later call of a former member's own reports indices
// in its own arrays.
#include <omp.h>

#include <atomic>
#include <cerrno>

#include "kernels/common/fp_guard.h"
#include "state/state.h"
#include "threading/threading.h"
#include "zvl.h"

namespace zvl {
namespace {

using SplitFn = int32_t (*)(int32_t* threads, int32_t n, int32_t slot);

// A scalar handed over by pointer that each member copies into a local of
// its own just before the kernel call.
template <class T>
struct ByCopy {
    const T* p;
};
template <class T>
struct OwnCopy {
    T v;
    operator const T*() const { return &v; }  // lives to the end of the call
};

// An argument as the member whose chunk starts `off` elements in passes it:
// arrays advance by their own element width, scalars pass unchanged.
template <class T>
T* chunk_arg(T* p, int64_t off) {
    return p + off;
}
template <class T>
T chunk_arg(T v, int64_t) {
    return v;
}
template <class T>
OwnCopy<T> chunk_arg(ByCopy<T> s, int64_t) {
    return {*s.p};
}

// An argument as a direct call passes it.
template <class T>
T whole_arg(T v) {
    return v;
}
template <class T>
const T* whole_arg(ByCopy<T> s) {
    return s.p;
}

// The floating-point control that decides results: MXCSR's rounding,
// flush-to-zero and denormals-are-zero bits, and the x87 precision and
// rounding control. Exception masks and flags stay each thread's own.
constexpr uint32_t kMxcsrFields = 0xe040;
constexpr uint16_t kX87Fields = 0x0f00;

struct FpControl {
    uint32_t mxcsr;
    uint16_t x87;
};

FpControl fp_control() { return {read_mxcsr(), read_x87_cw()}; }

// Gives this thread the fields of `to`, leaving the rest of its words.
void put_fp_control(const FpControl& to) {
    const FpControl now = fp_control();
    const uint32_t m = (now.mxcsr & ~kMxcsrFields) | (to.mxcsr & kMxcsrFields);
    const uint16_t x = static_cast<uint16_t>((now.x87 & ~kX87Fields) | (to.x87 & kX87Fields));
    if (m != now.mxcsr) write_mxcsr(m);
    if (x != now.x87) write_x87_cw(x);
}

template <SplitFn Split, class K, class A, class... Rest>
void drive(K kernel, int32_t n, int32_t slot, const A* a, Rest... rest) {
    int32_t threads = ZEL_Domain_Get_Max_Threads(ZEL_ZVL);
    // The direct paths leave status and array base to the kernel.
    if (threads == 1 || (ZEL_Get_Dynamic() != 0 && Split(&threads, n, slot) == 1)) {
        kernel(n, a, whole_arg(rest)...);
        return;
    }

    const ZVLErrorCallback callback = get_callback();
    const uint32_t mode = get_mode();
    const FpControl caller_fp = fp_control();
    const int caller_errno = errno;
    // Written by plain relaxed stores: the region's end is the only
    // synchronisation they need.
    std::atomic<int32_t> status{0};
    std::atomic<int> error{0};

#pragma omp parallel num_threads(threads)
    {
        set_callback(callback);
        set_mode(mode);
        set_array_base(a);
        set_status(0);
        const FpControl own_fp = fp_control();
        put_fp_control(caller_fp);
        const int own_errno = errno;
        errno = 0;

        // The team's real size: the runtime may give fewer than asked.
        const int32_t t = omp_get_thread_num();
        const int32_t p = omp_get_num_threads();
        const int32_t chunk = n / p;
        const int64_t off = int64_t{t} * chunk;
        if (t + 1 < p) {
            if (chunk != 0) kernel(chunk, chunk_arg(a, off), chunk_arg(rest, off)...);
        } else {
            kernel(static_cast<int32_t>(n - off), chunk_arg(a, off), chunk_arg(rest, off)...);
        }

        if (get_status() != 0) status.store(get_status(), std::memory_order_relaxed);
        if (errno != 0) error.store(errno, std::memory_order_relaxed);
        errno = own_errno;
        set_array_base(nullptr);
        put_fp_control(own_fp);
    }

    set_array_base(nullptr);
    set_status(status.load(std::memory_order_relaxed));
    const int e = error.load(std::memory_order_relaxed);
    errno = e != 0 ? e : caller_errno;
}

}  // namespace
}  // namespace zvl

using zvl::ByCopy;
using zvl::Complex8;
using zvl::drive;
using zvl::split_threads_c;
using zvl::split_threads_d;
using zvl::split_threads_s;
using zvl::split_threads_z;
using Z = ZVLComplex16;

extern "C" {

void zel_zvl_service_threader_d_1i_1o(zvl::KernelD1 k, int32_t n, const double* a, double* r,
                                      int32_t slot, int32_t) {
    drive<split_threads_d>(k, n, slot, a, r);
}
void zel_zvl_service_threader_d_2i_1o(zvl::KernelD2 k, int32_t n, const double* a,
                                      const double* b, double* r, int32_t slot, int32_t) {
    drive<split_threads_d>(k, n, slot, a, b, r);
}
void zel_zvl_service_threader_d_1i_2o(zvl::KernelD12 k, int32_t n, const double* a, double* y,
                                      double* z, int32_t slot, int32_t) {
    drive<split_threads_d>(k, n, slot, a, y, z);
}
void zel_zvl_service_threader_d_cd_2i_d_1o(zvl::KernelDx k, int32_t n, const double* a,
                                           double b, double* r, int32_t slot, int32_t) {
    drive<split_threads_d>(k, n, slot, a, b, r);
}
void zel_zvl_service_threader_z_1i_1o(zvl::KernelZ1 k, int32_t n, const Z* a, Z* r,
                                      int32_t slot, int32_t) {
    drive<split_threads_z>(k, n, slot, a, r);
}
void zel_zvl_service_threader_z_2i_1o(zvl::KernelZ2 k, int32_t n, const Z* a, const Z* b, Z* r,
                                      int32_t slot, int32_t) {
    drive<split_threads_z>(k, n, slot, a, b, r);
}
void zel_zvl_service_threader_z_cz_2i_z_1o(zvl::KernelZx k, int32_t n, const Z* a, const Z* b,
                                           Z* r, int32_t slot, int32_t) {
    drive<split_threads_z>(k, n, slot, a, ByCopy<Z>{b}, r);
}
void zel_zvl_service_threader_z_1i_2o(zvl::KernelZ12 k, int32_t n, const Z* a, Z* y, Z* z,
                                      int32_t slot, int32_t) {
    drive<split_threads_z>(k, n, slot, a, y, z);
}
void zel_zvl_service_threader_d_1i_z_1o(zvl::KernelDZ k, int32_t n, const double* a, Z* r,
                                        int32_t slot, int32_t) {
    drive<split_threads_z>(k, n, slot, a, r);
}
void zel_zvl_service_threader_z_1i_d_1o(zvl::KernelZD k, int32_t n, const Z* a, double* r,
                                        int32_t slot, int32_t) {
    drive<split_threads_z>(k, n, slot, a, r);
}
void zel_zvl_service_threader_s_1i_1o(zvl::KernelS1 k, int32_t n, const float* a, float* r,
                                      int32_t slot, int32_t) {
    drive<split_threads_s>(k, n, slot, a, r);
}
void zel_zvl_service_threader_s_2i_1o(zvl::KernelS2 k, int32_t n, const float* a,
                                      const float* b, float* r, int32_t slot, int32_t) {
    drive<split_threads_s>(k, n, slot, a, b, r);
}
void zel_zvl_service_threader_s_1i_2o(zvl::KernelS12 k, int32_t n, const float* a, float* y,
                                      float* z, int32_t slot, int32_t) {
    drive<split_threads_s>(k, n, slot, a, y, z);
}
void zel_zvl_service_threader_s_cs_2i_s_1o(zvl::KernelSx k, int32_t n, const float* a, float b,
                                           float* r, int32_t slot, int32_t) {
    drive<split_threads_s>(k, n, slot, a, b, r);
}
void zel_zvl_service_threader_c_1i_1o(zvl::KernelC1 k, int32_t n, const Complex8* a,
                                      Complex8* r, int32_t slot, int32_t) {
    drive<split_threads_c>(k, n, slot, a, r);
}
void zel_zvl_service_threader_c_2i_1o(zvl::KernelC2 k, int32_t n, const Complex8* a,
                                      const Complex8* b, Complex8* r, int32_t slot, int32_t) {
    drive<split_threads_c>(k, n, slot, a, b, r);
}
void zel_zvl_service_threader_c_1i_2o(zvl::KernelC12 k, int32_t n, const Complex8* a,
                                      Complex8* y, Complex8* z, int32_t slot, int32_t) {
    drive<split_threads_c>(k, n, slot, a, y, z);
}
void zel_zvl_service_threader_c_cc_2i_c_1o(zvl::KernelCx k, int32_t n, const Complex8* a,
                                           Complex8 b, Complex8* r, int32_t slot, int32_t) {
    drive<split_threads_c>(k, n, slot, a, b, r);
}
void zel_zvl_service_threader_s_1i_c_1o(zvl::KernelSC k, int32_t n, const float* a,
                                        Complex8* r, int32_t slot, int32_t) {
    drive<split_threads_c>(k, n, slot, a, r);
}
void zel_zvl_service_threader_c_1i_s_1o(zvl::KernelCS k, int32_t n, const Complex8* a,
                                        float* r, int32_t slot, int32_t) {
    drive<split_threads_c>(k, n, slot, a, r);
}

}  // extern "C"
