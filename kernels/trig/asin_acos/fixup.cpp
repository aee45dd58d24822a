// The Asin and Acos fix-up of the elements with |x| >= 1 or NaN.
#include "kernels/trig/asin_acos/data.h"
#include "kernels/trig/domain.h"

namespace zvl {

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
    return domain_error(r);
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
    return domain_error(r);
}

}  // namespace zvl
