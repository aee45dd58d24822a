// ErfInv: r = erfinv(a).
//
// Near |x| = 1 erfinv has a logarithmic singularity, so every mode indexes
// its table by the exponent and leading mantissa bits of t = 1 - |x|, not
// of x, and returns x times a polynomial in the reduced t that approximates
// erfinv(x)/x over the interval.
//
//   HA  212 quarter-binades of t from [0.875, 1) down to 2^-53, degree 14
//       in r = (t's mantissa with its top 2 bits cleared) - 1.125 plus what
//       the rounding of t dropped, scaled into r; the constant and linear
//       terms in two parts, and the sum times x from 26-bit splits.
//   LA  the same intervals, degree 11 in r without the correction, times x.
//   EP  848 sixteenth-binades, degree 3, times x.
//
// The main path takes |x| in [2^-53, 1), tested by one signed compare of
// the high word; every other lane is special: its x and its table entry are
// forced to 0 so that it computes harmless values, and the special routine
// (the same in all modes) gives its result and status: +-infinity with
// ZVL_STATUS_SING at +-1, a NaN with ZVL_STATUS_ERRDOM above 1 and at the
// infinities, x*x for a NaN, x for a zero, x*sqrt(pi)/2 below 2^-53.
//
// Largest errors the accuracy test finds against MPFR (5e5 samples, |x|
// within 2^-40 of 1 and denormals included):
//   HA  0.5035 ulp at -0.4895... (-0x1.f545cd29f9ce8p-2)
//   LA  2.06 ulp at -0.7187... (-0x1.6ffad29a9825cp-1)
//   EP  relative 2^-27.01 at 0.49999999999999956 (0x1.ffffffffffff8p-2)
// In a directed rounding mode HA stays within 1.003 ulp.
//
// Included inside an unnamed namespace context, as isa.h.
#pragma once

#include "kernels/common/isa.h"
#include "kernels/common/lanes.h"
#include "kernels/common/twin.h"
#include "kernels/common/double_word.h"
#include "kernels/erf/erfinv/data.h"

namespace {

struct ErfInvConstants {
    // 2^-53 and 1.0: the main path's domain [2^-53, 1) in |x|
    static constexpr double lowest = zvl::from_bits(0x3ca0000000000000);
    // high word of |x| plus this, as a signed 32-bit number, is below
    // `main_below` exactly for 0x3ca00000 <= high word < 0x3ff00000
    static constexpr int32_t main_shift = 0x43600000;
    static constexpr int32_t last_main = static_cast<int32_t>(0x834fffffu);
    // t's mantissa with the top 2 (HA, LA) or 4 (EP) bits cleared, as a
    // number in [1, 1.25) or [1, 1.0625); less the centre 1.125 or 1.03125,
    // r lies in [-0.125, 0.125) or [-0.03125, 0.03125)
    static constexpr uint64_t frac_quarter = 0x0003ffffffffffff;
    static constexpr uint64_t frac_sixteenth = 0x0000ffffffffffff;
    static constexpr double centre_quarter = 1.125;
    static constexpr double centre_sixteenth = 1.03125;
};

// The main path's lanes as a full mask: |x| in [2^-53, 1) (a NaN fails).
template <class V>
inline typename V::vd erfinv_main(typename V::vd ax) {
    using C = ErfInvConstants;
    return V::and_(V::le(V::splat(C::lowest), ax), V::lt(ax, V::splat(1.0)));
}

// The computation argument: x where the main path takes it and 0 in the
// other lanes, so that they compute harmless values; t = 1 - |x|, rounded.
template <class V>
struct ErfInvArg {
    typename V::vd main, x, ax, t;
    explicit ErfInvArg(typename V::vd x0)
        : main(erfinv_main<V>(abs_of<V>(x0))),
          x(V::and_(x0, main)),
          ax(abs_of<V>(x)),
          t(V::sub(V::splat(1.0), ax)) {}
};

// Per lane: the entry Top - (high word of t >> Shift), times Stride (17,
// 6 or 2 by shifts and adds); entry 0 for the lanes outside the main path,
// whose t is 1.
template <class V, int32_t Top, int Shift, int Stride>
inline void erfinv_rows(typename V::vd t, typename V::vd main, uint32_t* j) {
    static_assert(Stride == 17 || Stride == 6 || Stride == 2, "a stride of the tables");
    using I = LanesOf<V>;
    using vi = typename I::vi;
    const vi e = I::sub(I::splat(Top), I::template srli<Shift>(I::hi32(t)));
    vi k;
    if constexpr (Stride == 17)
        k = I::add(I::template slli<4>(e), e);
    else if constexpr (Stride == 6)
        k = I::add(I::template slli<2>(e), I::template slli<1>(e));
    else
        k = I::template slli<1>(e);
    I::store(j, I::and_(k, I::hi32(main)));
}

// t's mantissa bits under `frac`, as a number with the exponent of 1.0,
// less `centre`.
template <class V>
inline typename V::vd reduced(typename V::vd t, uint64_t frac, double centre) {
    return V::sub(V::or_(V::and_(t, splat_bits<V>(frac)), splat_bits<V>(Fp64::one)),
                  V::splat(centre));
}

// The special-lane test and the special routine, the same for every mode.
struct ErfInvLanes {
    template <class V>
    static int special(typename V::vd x) {
        using C = ErfInvConstants;
        using I = LanesOf<V>;
        const typename I::vi s = I::add(I::hi32(abs_of<V>(x)), I::splat(C::main_shift));
        return I::mask(I::lt(I::splat(C::last_main), s));
    }
    static int32_t callout(const double* x, double* y) { return zvl::erfinv_special(x, y); }
};

// --- HA ---------------------------------------------------------------------

struct ErfInvHA : ErfInvLanes {
    template <class V>
    static typename V::vd eval(typename V::vd x0) {
        using vd = typename V::vd;
        using C = ErfInvConstants;
        const ErfInvArg<V> a(x0);
        const vd x = a.x, ax = a.ax, t = a.t;
        uint32_t j[V::lanes];
        erfinv_rows<V, 0xffb, 18, 17>(t, a.main, j);
        const double* T = &zvl::kErfInvTableHA[0][0];
        // a row is 17 words: neighbouring columns two to a 16-byte load a
        // lane (rows are not 16-byte aligned; the loads need not be)
        vd c[17];
        for (int k = 0; k < 16; k += 2) V::gather_adjacent(T + k, j, c[k], c[k + 1]);
        c[16] = V::gather(T + 16, j);
        // r = r0 + m ((1 - t) - ax): (1 - t) - ax is exactly what rounding
        // dropped from t, and m = 2^-E scales it as t is scaled into r
        const vd r0 = reduced<V>(t, C::frac_quarter, C::centre_quarter);
        const vd m = exponent_scale<V>(t);
        const vd r = V::add(r0, V::mul(m, V::sub(V::sub(V::splat(1.0), t), ax)));
        // the split comes from r0; r - rh carries the rest with the correction
        const vd rh = upper_half<V>(r0);
        vd q = c[14];
        for (int k = 13; k >= 0; --k) q = V::mul_add(q, r, c[k]);
        // S = c15 + c16 r + q as sh + sl; c16 has 26 bits, so c16 rh is exact
        const vd p = V::mul(c[16], rh);
        const vd sh = upper_half<V>(V::add(p, c[15]));
        const vd sl = V::add(V::add(V::add(V::sub(c[15], sh), p), V::mul(c[16], V::sub(r, rh))), q);
        const vd xh = upper_half<V>(x);
        return V::add(V::mul(sh, xh), V::add(V::mul(sh, V::sub(x, xh)), V::mul(sl, x)));
    }
};

// --- LA and EP --------------------------------------------------------------

// N coefficients, constant first, in r without the correction; times x.
template <class K>
struct ErfInvPlain : ErfInvLanes {
    template <class V>
    static typename V::vd eval(typename V::vd x0) {
        using vd = typename V::vd;
        const ErfInvArg<V> a(x0);
        uint32_t j[V::lanes];
        erfinv_rows<V, K::top, K::shift, K::n / 2>(a.t, a.main, j);  // pairs an entry
        vd c[K::n];
        for (int k = 0; k < K::n; k += 2) V::gather_pairs(K::table + k, j, c[k], c[k + 1]);
        const vd r = reduced<V>(a.t, K::frac, K::centre);
        vd q = c[K::n - 1];
        for (int k = K::n - 2; k >= 0; --k) q = V::mul_add(q, r, c[k]);
        return V::mul(q, a.x);
    }
};

// LA: the quarter-binades of HA, degree 11.
struct ErfInvLAConstants {
    static constexpr const double* table = &zvl::kErfInvTableLA[0][0];
    static constexpr int n = 12;
    static constexpr int32_t top = 0xffb;
    static constexpr int shift = 18;
    static constexpr uint64_t frac = ErfInvConstants::frac_quarter;
    static constexpr double centre = ErfInvConstants::centre_quarter;
};
// EP: sixteenth-binades, degree 3.
struct ErfInvEPConstants {
    static constexpr const double* table = &zvl::kErfInvTableEP[0][0];
    static constexpr int n = 4;
    static constexpr int32_t top = 0x3fef;
    static constexpr int shift = 16;
    static constexpr uint64_t frac = ErfInvConstants::frac_sixteenth;
    static constexpr double centre = ErfInvConstants::centre_sixteenth;
};

using ErfInvLA = ErfInvPlain<ErfInvLAConstants>;
using ErfInvEP = ErfInvPlain<ErfInvEPConstants>;

}  // namespace
