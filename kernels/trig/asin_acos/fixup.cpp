// The Asin and Acos fix-up of the elements with |x| >= 1 or NaN.
#include "kernels/common/fp_guard.h"
#include "kernels/trig/asin_acos/data.h"
#include "zvl.h"

namespace zvl {
namespace {

constexpr double kDefaultNaN = from_bits(0xfff8000000000000);
constexpr double kSignallingNaN = from_bits(0x7ff7ffffffffffff);

// |x| > 1: the default NaN, the invalid flag, ZVL_STATUS_ERRDOM.
int32_t out_of_domain(double* r) {
    *r = kDefaultNaN;
    volatile double raised = opaque(kSignallingNaN) * 1.0;
    (void)raised;
    return ZVL_STATUS_ERRDOM;
}

}  // namespace

__attribute__((noinline, cold)) int32_t asin_fixup(const double* xp, double* r) {
    const double x = *xp;
    const double a = from_bits(bits(x) & Fp64::abs_mask);
    if (a == 1.0) {
        *r = from_bits(bits(Pi::half_hi) | (bits(x) & Fp64::sign_mask));
        return 0;
    }
    if (a != a) {
        *r = x + x;
        return 0;
    }
    return out_of_domain(r);
}

__attribute__((noinline, cold)) int32_t acos_fixup(const double* xp, double* r) {
    const double x = *xp;
    if (x == 1.0) {
        *r = 0.0;
        return 0;
    }
    if (x == -1.0) {
        *r = Pi::hi;
        return 0;
    }
    if (x != x) {
        *r = x + x;
        return 0;
    }
    return out_of_domain(r);
}

}  // namespace zvl
