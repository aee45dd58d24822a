// The Log10 callout: exact scalar log10 for the elements the vector paths
// refuse, the same for every cpu type and mode. Its classes and statuses
// are those of Ln: zeros give -inf with ZVL_STATUS_SING, negatives and -inf
// NaN with ZVL_STATUS_ERRDOM, +inf and NaN pass silently. Denormals are
// scaled by 2^60 and run through the HA formula with the exponent
// corrected, so they get HA results without a status.
#include <cstdint>

#include "kernels/explog/log10/body.h"
#include "zvl.h"

namespace zvl {
namespace {

// A zero the compiler cannot see, so that 0/0 and -1/0 are computed at run
// time and give the processor's own NaN and infinity.
volatile double zero = 0.0;

constexpr double two60 = from_bits(0x43b0000000000000);  // 1.152921504606847e18

}  // namespace

int32_t log10_callout(const double* xp, double* yp) {
    const double x = *xp;
    const uint64_t ix = bits(x);
    if ((ix & Fp64::exp_mask) == Fp64::exp_mask) {
        if (ix == (Fp64::sign_mask | Fp64::exp_mask)) {  // -inf
            *yp = zero / zero;
            return ZVL_STATUS_ERRDOM;
        }
        *yp = x * x;  // +inf stays, a NaN stays (quietened)
        return 0;
    }
    if (x == 0.0) {
        *yp = (zero - 1.0) / zero;
        return ZVL_STATUS_SING;
    }
    if (x < 0.0) {
        *yp = zero / zero;
        return ZVL_STATUS_ERRDOM;
    }
    if ((ix & Fp64::exp_mask) == 0)
        *yp = Log10HA::one(x * two60, 60.0);
    else
        *yp = Log10HA::one(x, 0.0);
    return 0;
}

}  // namespace zvl
