// The ErfInv special routine: the elements the main path refuses, in every
// mode and for every cpu type.
//
//   |x| = 1            +-1.0 / 0.0: an infinity of x's sign, ZVL_STATUS_SING
//   |x| > 1, infinite  infinity * 0.0: a NaN, ZVL_STATUS_ERRDOM
//   NaN                x * x, made quiet; no status
//   +-0                x; no status
//   0 < |x| < 2^-53    x * sqrt(pi)/2, rounded once; no status
//
// Below 2^-53, erfinv(x) = x * sqrt(pi)/2 * (1 + pi x^2/12 + ...) is that
// product within 2^-107. x is scaled up by 2^256 and multiplied by the
// split constant, ph + pl, to about 2^-90. Where the result is normal,
// s = ph + pl rounds once and scales back exactly. Where it is subnormal,
// s's magnitude is below c = 2^-766 (2^-1022 scaled up): the sum with c
// lies in [c, 2c), whose last place is the subnormals' 2^-1074 scaled up,
// so u + (w + pl) rounds ph + pl once to the subnormal grid, and dropping
// the exponent leaves the subnormal's pattern. The sum cannot reach 2c: the
// one x whose product comes within an ulp of c has s = c, and takes the
// normal branch (the accuracy test's window around x = 2^-1022 / (sqrt(pi)/2)
// holds it).
#include "base/bits.h"
#include "kernels/common/fp_guard.h"
#include "kernels/erf/erfinv/data.h"
#include "zvl.h"

namespace zvl {
namespace {

struct ErfInvSpecial {
    static constexpr double up = from_bits(0x4ff0000000000000);    // 2^256
    static constexpr double down = from_bits(0x2ff0000000000000);  // 2^-256
    // sqrt(pi)/2 = 0.88623046875 (13 significant bits) + lo
    static constexpr double k_hi = from_bits(0x3fec5c0000000000);
    static constexpr double k_lo = from_bits(0xbecdb92c4255618f);  // -3.543297241986351e-06
    // 2^-766: s below it scales down to a subnormal
    static constexpr double c = from_bits(0x1010000000000000);
    // 2^-1000: times c, a product that underflows
    static constexpr double tiny = from_bits(0x0170000000000000);
    static constexpr double inf = from_bits(0x7ff0000000000000);
    static constexpr uint64_t split_mask = 0xfffffffff8000000;
};

inline double with_sign(double m, uint64_t sign) { return from_bits(bits(m) | sign); }

}  // namespace

__attribute__((noinline, cold)) int32_t erfinv_special(const double* xp, double* yp) {
    using C = ErfInvSpecial;
    const double x = *xp;
    const uint64_t b = bits(x), sign = b & Fp64::sign_mask;
    const uint32_t hi = static_cast<uint32_t>(b >> 32) & 0x7fffffff;
    if (hi >= 0x3ff00000) {
        const uint32_t h = hi | (static_cast<uint32_t>(b) != 0);
        if (h == 0x3ff00000) {
            *yp = with_sign(1.0, sign) / opaque(0.0);
            return ZVL_STATUS_SING;
        }
        if (h < 0x7ff00001) {
            *yp = opaque(C::inf) * 0.0;
            return ZVL_STATUS_ERRDOM;
        }
        *yp = opaque(x) * x;
        return 0;
    }
    if (x == 0.0) {
        *yp = x;
        return 0;
    }
    const double v = x * C::up;
    const double vh = from_bits(bits(v) & C::split_mask);
    const double ph = C::k_hi * vh;
    const double pl = C::k_hi * (v - vh) + C::k_lo * v;
    const double s = ph + pl;
    if ((high_word(s) & 0x7fffffff) >= 0x10100000) {
        *yp = s * C::down;
        return 0;
    }
    const double c = with_sign(C::c, sign);
    // the subnormal result raises underflow, as the product would; the
    // store is volatile so that the product is carried out
    *static_cast<volatile double*>(yp) = opaque(with_sign(C::tiny, sign)) * C::c;
    const double u = from_bits(bits(s + c) & C::split_mask);
    const double w = ph - (u - c);
    const double z = u + (w + pl);
    *yp = from_bits(bits(z) & 0x800fffffffffffff);
    return 0;
}

}  // namespace zvl
