// What the Sqrt and Cbrt families share: the range test of their vector
// paths and the Taylor coefficients of the refinement steps.
//
// A refinement step takes an estimate y0 of x^p (p = -1/2 or -1/3) and
// e = 1 - x^(-1/p) * y0^(-1/p), for which x^p = y0 * (1 - e)^p exactly, and
// returns y0 + y0 * e * P(e), with P the binomial series of ((1 - e)^p - 1)/e
// cut after a few terms. The relative error left is the first term dropped,
// so the degree is chosen per mode from the bound on |e|.
#pragma once

#include "kernels/common/unit.h"

namespace {

// Lanes outside [lo, hi]; a NaN is outside.
template <class V>
inline typename V::vd outside_range(typename V::vd x, double lo, double hi) {
    return not_mask<V>(V::and_(V::le(V::splat(lo), x), V::le(x, V::splat(hi))));
}

// The series of (1 - e)^(-1/2): 1 + e/2 + 3e^2/8 + 5e^3/16 + 35e^4/128 + ...
struct RsqrtSeries {
    static constexpr double c1 = zvl::from_bits(0x3fe0000000000000);  // 1/2
    static constexpr double c2 = zvl::from_bits(0x3fd8000000000000);  // 3/8
    static constexpr double c3 = zvl::from_bits(0x3fd4000000000000);  // 5/16
    static constexpr double c4 = zvl::from_bits(0x3fd1800000000000);  // 35/128
};

// The series of (1 - f)^(-1/3): 1 + f/3 + 2f^2/9 + 14f^3/81 + 35f^4/243 + ...
// and of (1 - f)^(-2/3): 1 + 2f/3 + 5f^2/9 + ...
struct CbrtSeries {
    static constexpr double c1 = zvl::from_bits(0x3fd5555555555555);  // 1/3
    static constexpr double c2 = zvl::from_bits(0x3fcc71c71c71c71c);  // 2/9
    static constexpr double c3 = zvl::from_bits(0x3fc61f9add3c0ca4);  // 14/81
    static constexpr double c4 = zvl::from_bits(0x3fc26fabb85cb534);  // 35/243
    static constexpr double d1 = zvl::from_bits(0x3fe5555555555555);  // 2/3
    static constexpr double d2 = zvl::from_bits(0x3fe1c71c71c71c72);  // 5/9
};

// y0 + y0 * e * p
template <class V>
inline typename V::vd refine_root(typename V::vd y0, typename V::vd e, typename V::vd p) {
    return V::add(y0, V::mul(V::mul(y0, e), p));
}

// c0 + e * (c1 + e * (c2 + ...)), coefficients from the lowest
template <class V>
inline typename V::vd series_sum(typename V::vd, double c0) {
    return V::splat(c0);
}
// c1 is named so that a call with one coefficient matches only the overload
// above: with an empty pack both would match, which clang rejects.
template <class V, class... C>
inline typename V::vd series_sum(typename V::vd e, double c0, double c1, C... c) {
    return V::add(V::splat(c0), V::mul(e, series_sum<V>(e, c1, c...)));
}

// The scalar callout of a family, for the loop forms.
template <int32_t (*Fn)(const double*, double*)>
struct RootCallout {
    static int32_t callout(const double* x, double* y) { return Fn(x, y); }
};

}  // namespace
