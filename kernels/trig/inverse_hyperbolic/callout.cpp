// The Asinh, Acosh and Atanh callouts: the arguments the vector forms
// refuse, for every mode, computed by the HA formulas on one lane where the
// result is a number (see data.h for the statuses).
#include "kernels/common/fp_guard.h"
#include "kernels/trig/domain.h"
#include "kernels/trig/inverse_hyperbolic/acosh.h"
#include "kernels/trig/inverse_hyperbolic/asinh.h"
#include "kernels/trig/inverse_hyperbolic/atanh.h"
#include "zvl.h"

namespace zvl {

__attribute__((noinline, cold)) int32_t asinh_callout(const double* xp, double* r) {
    const double x = *xp;
    *r = x - x == 0.0 ? AsinhHA::one(x) : x + x;  // +-inf and NaNs: x + x
    return 0;
}

__attribute__((noinline, cold)) int32_t acosh_callout(const double* xp, double* r) {
    const double x = *xp;
    if (x != x) {
        *r = x + x;
        return 0;
    }
    if (x < 1.0) return domain_error(r);
    *r = x - x == 0.0 ? AcoshHA::one(x) : x;  // +inf
    return 0;
}

__attribute__((noinline, cold)) int32_t atanh_callout(const double* xp, double* r) {
    const double x = *xp;
    const double a = from_bits(bits(x) & Fp64::abs_mask);
    if (a != a) {
        *r = x + x;
        return 0;
    }
    if (a > 1.0) return domain_error(r);
    if (a == 1.0) {
        *r = x / opaque(0.0);  // +-inf and the divide-by-zero flag
        return ZVL_STATUS_SING;
    }
    *r = AtanhHA::one(x);
    return 0;
}

}  // namespace zvl
