// Pow: r = a^b, written x^y below.
//
// Every kernel runs the scratch form: the block computes all lanes without
// branches and refuses a lane when x is not positive, normal and finite, or
// y is not finite, or the size of y*log x leaves the range where the block
// builds a normal result; refused lanes, in element order, go to the scalar
// routine (core.h), which settles the exact cases and the edges of the range.
//   HA  the accurate core: log2 x and y*log2 x in hi and lo parts, 2^Y from
//       the 128-entry table in hi and lo and a degree-5 polynomial.
//   LA  the same stages, the quadratic term of log2 x rounded with the rest
//       of its polynomial and without the lo part of the 2^(j/128) table.
//   EP  exp(y * ln x): ln x from the same reduction in plain double with a
//       degree-4 series, then Exp's EP step (variant C: the first-degree
//       step on the 2048-entry table); |y ln x| up to 708.396, where the
//       result is normal.
// Block widths and guards by cpu type are Pow's plan (plan.h).
//
// The only status is ZVL_STATUS_ERRDOM, from the exact cases: a negative
// base with a non-integer exponent, and a zero base with a negative (or
// minus infinite) exponent. Overflow and underflow are silent.
//
// Included by the explog units inside their own context (see unit.h).
#pragma once

#include <type_traits>

#include "kernels/common/unit.h"
#include "kernels/explog/exp/exp.h"
#include "kernels/explog/pow/core.h"

namespace {

// Lanes whose `ok` is clear, as mask bits.
template <class V>
inline uint32_t refused(typename V::vd ok) {
    return static_cast<uint32_t>(~V::mask(ok)) & ((1u << V::lanes) - 1);
}

template <class V>
inline typename V::vd pow_x_ok(typename V::vd x) {
    return V::and_(V::le(V::splat(Fp64::min_normal), x), V::le(x, V::splat(Fp64::max_finite)));
}

template <class V>
inline typename V::vd pow_y_ok(typename V::vd y) {
    return V::le(abs_of<V>(y), V::splat(Fp64::max_finite));
}

// One vector of the HA (WithLo: the exact quadratic term and the table's lo
// part) or LA block. YChecked: y may be infinite or
// NaN (Pow); Powx knows its exponent finite before the loop.
template <class V, bool WithLo, bool YChecked>
inline typename V::vd pow_vector(typename V::vd x, const PowSplit<V>& y, uint32_t& refused_bits) {
    using L = Lanes<V::lanes>;
    typename V::vd h, l, Y_hi, Y_lo, hi, lo;
    typename L::vi k;
    pow_log2<V, WithLo>(x, 0, h, l);
    pow_mul<V>(y, h, l, Y_hi, Y_lo);
    pow_exp2<V, WithLo>(Y_hi, Y_lo, hi, lo, k);
    // x^1 is x itself: in the caller's rounding mode the stages would round
    // their way to a neighbour, or past the largest double
    const typename V::vd r = V::select(V::eq(y.y, V::splat(1.0)), x,
                                       L::add_hi32(V::add(hi, lo), L::template slli<20>(k)));
    typename V::vd ok =
        V::and_(pow_x_ok<V>(x), V::lt(abs_of<V>(Y_hi), V::splat(PowC::block_limit)));
    if constexpr (YChecked) ok = V::and_(ok, pow_y_ok<V>(y.y));
    refused_bits = refused<V>(ok);
    return r;
}

// --- EP: exp(y ln x) -------------------------------------------------------

struct PowEP {
    // 1/log2e_hi, 0.69314724708776143: turns z = R*M - log2e_hi into the
    // reduced argument of ln
    static constexpr double inv_log2e_hi = zvl::from_bits(0x3fe62e4322b1bd5f);
    static constexpr double ln2 = zvl::from_bits(0x3fe62e42fefa39ef);  // 0.6931471805599453
    // ln(1 + p) - p on |p| <= 2^-11. The fourth term is there for x near 1
    // with a large y: y * p^4/4 reaches 2^-26 when |y ln x| is near 708 and
    // p near 2^-11.
    static constexpr double c2 = zvl::from_bits(0xbfdffffffffff81f);  // -0.49999999999988803
    static constexpr double c3 = zvl::from_bits(0x3fd55555555543c5);  // 0.33333333333308374
    static constexpr double c4 = -0.25;
    // 708.39611916346382: exp(-708.396...) is just above 2^-1022, and up to
    // there the exponent addition builds a normal number
    static constexpr double bound = zvl::from_bits(0x4086232b4086232b);
};

template <class V, bool YChecked>
inline typename V::vd pow_ep_vector(typename V::vd x, typename V::vd y, uint32_t& refused_bits) {
    const PowReduce<V> d(x, 0);
    // z alone is off by up to 2^-53, which matters where ln x is that small
    typename V::vd z, e;
    pow_reduced<V>(d, z, e);
    const typename V::vd p = V::mul(V::add(z, e), V::splat(PowEP::inv_log2e_hi));
    const typename V::vd c =
        V::mul_add(V::mul_add(p, V::splat(PowEP::c4), V::splat(PowEP::c3)), p, V::splat(PowEP::c2));
    const typename V::vd series = V::add(p, V::mul(V::mul(p, p), c));
    const typename V::vd lnx =
        V::mul_add(V::add(V::add(d.n, d.T_hi), d.T_lo), V::splat(PowEP::ln2), series);
    const typename V::vd Y = V::mul(y, lnx);
    // Y is zero exactly for y = 0 and x = 1 (and where y ln x underflows),
    // where the result is 1 and not the table's scaled 1
    // where the result is 1 and not the table's scaled 1; x^1 is x itself
    const typename V::vd r = V::select(
        V::eq(y, V::splat(1.0)), x,
        V::select(V::eq(Y, V::splat(0.0)), V::splat(1.0), ExpC::pow2_2048<V>(V::mul(Y, V::splat(ExpC::L)))));

    typename V::vd ok =
        V::and_(pow_x_ok<V>(x), V::le(abs_of<V>(Y), V::splat(PowEP::bound)));
    if constexpr (YChecked) ok = V::and_(ok, pow_y_ok<V>(y));
    refused_bits = refused<V>(ok);
    return r;
}

// --- The block functors ----------------------------------------------------

enum class PowMode { HA, LA, EP };

template <PowMode Mode>
struct PowBlock {
    using form = forms::BlockMask;
    template <class V, int NV>
    static uint32_t block(const typename V::vd* x, const typename V::vd* y, typename V::vd* r) {
        uint32_t mask = 0;
#pragma GCC unroll 2
        for (int j = 0; j < NV; ++j) {
            uint32_t bits;
            if constexpr (Mode == PowMode::EP)
                r[j] = pow_ep_vector<V, true>(x[j], y[j], bits);
            else
                r[j] = pow_vector<V, Mode == PowMode::HA, true>(x[j], PowSplit<V>(y[j]), bits);
            mask |= bits << (j * V::lanes);
        }
        return mask;
    }
    static int32_t callout(const double* x, const double* y, double* r) {
        return zvl::pow_scalar(*x, *y, r);
    }
};

}  // namespace
