// The Asin and Acos fix-up of the elements with |x| >= 1 or NaN.
#include "kernels/trig/asin_acos/data.h"
#include "kernels/trig/domain.h"

namespace zvl {

namespace {
constexpr Quad quad(double c) { return {{c, c, c, c}}; }
constexpr double c1 = AsinPolyHA::c[sizeof AsinPolyHA::c / sizeof(double) - 1];
constexpr double kLoOverHi = Pi::lo / Pi::hi;
}  // namespace

#define ZVL_Q(i) quad(AsinPolyHA::c[i])
const Quad asin_ha_poly[] = {ZVL_Q(0), ZVL_Q(1), ZVL_Q(2),  ZVL_Q(3),  ZVL_Q(4),  ZVL_Q(5), ZVL_Q(6),
                             ZVL_Q(7), ZVL_Q(8), ZVL_Q(9), ZVL_Q(10), ZVL_Q(11), ZVL_Q(12)};
#undef ZVL_Q
static_assert(sizeof asin_ha_poly == sizeof AsinPolyHA::c * 4, "one row a coefficient");

const Quad asin_ha_const[] = {quad(0.5),     quad(1.0),     quad(0.375),        quad(0.125),
                              quad(0.25),    quad(kLoOverHi),
                              quad(Pi::half_hi), quad(Pi::half_lo), quad(c1 - 0.125)};
static_assert(Pi::half_hi * kLoOverHi == Pi::half_lo && Pi::hi * kLoOverHi == Pi::lo,
              "pi's and pi/2's low parts from their high ones, exactly");
static_assert(sizeof asin_ha_const / sizeof(Quad) == kAsinHAConsts, "one row a constant");

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
