// Inv and Div: r = 1 / a and r = a / b.
//
// HA divides every element. At cpu types 3 to 5 it runs the scratch form and
// sends zero and denormal divisors (exponent field zero) to the callout; at
// types 0 to 2 it is the small scalar form, which tests for a zero divisor
// after the division.
//
// LA and EP are the same code: they divide rarely, sharing one division
// among a group of elements, at the price of a few ulps and range guards.
//   types 1 to 4, Inv: four-way product of pairs p q s t, one division per
//     eight elements, restart form under the full MXCSR guard; the range
//     guards keep any product of four elements normal and finite.
//   types 1 to 4, Div: extended-precision product of four divisors on the
//     x87 stack, one division per four elements, restart form under the
//     x87 0x300 guard; a block passes when the product has a non-zero,
//     finite single-precision image.
//   type 5: mantissa product, one division per sixteen elements; only the
//     mantissas are multiplied and the exponent is put back by integer
//     arithmetic, so no size guard is needed; the special-lane test flags
//     the divisors whose reciprocal would leave that scheme.
//   type 0: LA and EP slots run HA.
//
// The only status is ZVL_STATUS_SING, for a zero divisor. Overflow,
// underflow and invalid operations are never reported. At types 0 to 2 an
// infinite or NaN dividend keeps a zero divisor silent, as there the check
// follows the division; at types 3 to 5 a zero divisor always reports.
//
// Included by the explog units inside their own context (see unit.h).
#pragma once

#include "kernels/common/double_word.h"
#include "kernels/common/unit.h"
#include "kernels/common/x87.h"

// GCC would pair the x87 results' stores into vector moves (see DivLA4);
// clang does not, and has no such switch.
#ifdef __clang__
#define ZVL_NO_SLP
#else
#define ZVL_NO_SLP __attribute__((optimize("no-tree-slp-vectorize")))
#endif

namespace {

struct InvDiv {
    static constexpr uint64_t mant_sign_mask = Fp64::sign_mask | Fp64::mant_mask;
    static constexpr uint64_t exp_two = 0x0020000000000000;
    // 2^1020, 1.1235582092889474e307: above it (after subtracting exp_two) a
    // type 5 LA lane is special
    static constexpr double range_limit = zvl::from_bits(0x7fb0000000000000);
    // sqrt(2) * 2^-256, 1.2213391636088999e-77: the high word of the smallest
    // element of a four-way block; the sqrt(2) makes the smallest product of
    // four exactly the smallest normal number
    static constexpr double low_guard = zvl::from_bits(0x2ff6a09f00000000);
    // just under 2^256, 1.1579203402334542e77, as a high-word bound
    static constexpr double high_guard = zvl::from_bits(0x4fefffff00000000);

    static bool is_zero(double x) { return (zvl::bits(x) & Fp64::abs_mask) == 0; }
    static bool exp_all_ones(double x) { return (zvl::bits(x) & Fp64::exp_mask) == Fp64::exp_mask; }
    // high word with the sign cleared in [low guard, high guard): the same as
    // comparing |x| with the two bounds, a NaN failing both
    static bool in_guards(double x) {
        const double ax = zvl::from_bits(zvl::bits(x) & Fp64::abs_mask);
        return low_guard <= ax && ax < high_guard;
    }
};

// Exponent field zero: zero and denormal divisors.
template <class V>
typename V::vd exp_zero(typename V::vd x) {
    return V::eq(V::and_(x, splat_bits<V>(Fp64::exp_mask)), V::splat(0.0));
}

// --- HA, types 3 to 5: true division in the scratch form --------------------

struct InvHA : PerVector<InvHA> {
    template <class V>
    static typename V::vd eval(typename V::vd x) {
        return V::div(V::splat(1.0), x);
    }
    template <class V>
    static typename V::vd special(typename V::vd x) {
        return exp_zero<V>(x);
    }
    // Denormals only get their quotient; zero reports.
    static int32_t callout(const double* x, double* y) {
        *y = 1.0 / *x;
        return *x == 0.0 ? ZVL_STATUS_SING : 0;
    }
};

struct DivHA : PerVector<DivHA> {
    template <class V>
    static typename V::vd eval(typename V::vd a, typename V::vd b) {
        return V::div(a, b);
    }
    template <class V>
    static typename V::vd special(typename V::vd, typename V::vd b) {
        return exp_zero<V>(b);
    }
    static int32_t callout(const double* a, const double* b, double* y) {
        *y = *a / *b;
        return *b == 0.0 ? ZVL_STATUS_SING : 0;
    }
};

// --- HA, types 0 to 2: the pairs form ---------------------------------------
// Two elements a round (divpd), then each tested in order; the remainder
// goes one element at a time. Type 0 takes pairs as well: the quotients, the
// reports and their order are those of one element at a time, and a lone
// divsd per element would run at half the speed of a plain loop.

struct InvPairs : InvHA {
    using form = forms::Pairs;
    template <class V>
    static typename V::vd refused(typename V::vd z) {
        return V::eq(z, V::splat(0.0));
    }
    static int32_t status(double z) { return InvDiv::is_zero(z) ? ZVL_STATUS_SING : 0; }
};

struct DivPairs : DivHA {
    using form = forms::Pairs;
    template <class V>
    static typename V::vd refused(typename V::vd z) {
        return V::eq(z, V::splat(0.0));
    }
    // An infinite or NaN dividend keeps a zero divisor silent.
    static int32_t status(double x, double z) {
        if (InvDiv::exp_all_ones(x)) return 0;
        return InvDiv::is_zero(z) ? ZVL_STATUS_SING : 0;
    }
};

// --- LA and EP, types 1 to 4: the four-way product of Inv -------------------

struct InvLA4 {
    using form = forms::Checked;
    // Every element's magnitude in [low guard, high guard).
    template <class V>
    static bool guarded(typename V::vd x) {
        const typename V::vd ax = abs_of<V>(x);
        return all_set<V>(
            V::and_(V::le(V::splat(InvDiv::low_guard), ax), V::lt(ax, V::splat(InvDiv::high_guard))));
    }
    // Pairs p, q, s, t: one division gives 1/(pq) and 1/(st).
    template <class V, int NV>
    static bool checked_block(const typename V::vd* x, typename V::vd* y) {
        static_assert(NV == 4, "the four-way product takes four vectors");
        const typename V::vd p = x[0], q = x[1], s = x[2], t = x[3];
        const typename V::vd pq = V::mul(p, q), st = V::mul(s, t);
        const typename V::vd R = V::div(V::splat(1.0), V::mul(pq, st));
        const typename V::vd u = V::mul(st, R), v = V::mul(pq, R);
        y[0] = V::mul(q, u);
        y[1] = V::mul(p, u);
        y[2] = V::mul(t, v);
        y[3] = V::mul(s, v);
        return (int{guarded<V>(p)} & int{guarded<V>(q)} & int{guarded<V>(s)} & int{guarded<V>(t)}) != 0;
    }
    // In the guards the element is done through its fourth power, so that
    // it rounds like a block element and not with the accuracy of HA.
    static int32_t element(const double* xp, double* yp) {
        const double x = *xp;
        double y = 1.0 / x;
        if (InvDiv::in_guards(x)) {
            const double x2 = x * x;
            y = ((1.0 / (x2 * x2)) * x2) * x;
        }
        *yp = y;
        return InvDiv::is_zero(x) ? ZVL_STATUS_SING : 0;
    }
};

// --- LA and EP, types 1 to 4: the extended-precision product of Div ---------
// On the x87 stack under the extended guard (x87.h), so every product below
// carries the 64-bit significand and only the final stores round to double.

struct DivLA4 {
    using form = forms::Checked;
    // Kept scalar: pairing the four stores into two 16-byte moves makes them
    // reload x87 results through the stack and stall store forwarding.
    template <class V, int NV>
    ZVL_NO_SLP static bool checked_block(const double* a, const double* b, double* y) {
        static_assert(NV == 4, "four elements per block");
        const Ext c = ext(b[0]) * b[1];
        const Ext d = ext(b[2]) * b[3];
        const Ext P = c * d;
        if (!single_image_finite_nonzero(P)) return false;
        const Ext R = reciprocal(P);
        const Ext e = c * R, f = d * R;
        y[2] = to_double(a[2] * (b[3] * e));
        y[3] = to_double(a[3] * (b[2] * e));
        y[0] = to_double(a[0] * (b[1] * f));
        y[1] = to_double(a[1] * (b[0] * f));
        return true;
    }
    static int32_t element(const double* ap, const double* bp, double* yp) {
        const Ext a = *ap, b = *bp;
        Ext q = a / b;
        const bool zero = InvDiv::is_zero(*bp);
        if (!zero && !InvDiv::exp_all_ones(*bp)) {
            const Ext b2 = b * b;
            q = ((reciprocal(b2 * b2) * b2) * b) * a;
        }
        *yp = to_double(q);
        return zero ? ZVL_STATUS_SING : 0;
    }
};

// --- LA and EP, type 5: the mantissa product --------------------------------

struct InvMantissa {
    // mantissa with its sign, magnitude in [1, 2)
    template <class V>
    static typename V::vd mant(typename V::vd x) {
        return V::or_(V::and_(x, splat_bits<V>(InvDiv::mant_sign_mask)), splat_bits<V>(Fp64::one));
    }
    // the exponent of x taken back out of the reciprocal i of its mantissa
    template <class V>
    static typename V::vd rescale(typename V::vd i, typename V::vd x) {
        return V::sub_i64(V::add_i64(i, splat_bits<V>(Fp64::one)),
                          V::and_(x, splat_bits<V>(Fp64::exp_mask)));
    }
    // The compensation term. i, a reciprocal of the mantissa m through the
    // shared division, carries seven roundings (up to 7 * 2^-53 relative).
    // Its residual e = m * i - 1 is formed exactly from 26-bit cuts of m and
    // i: the product of the high parts lies within 2^-25 of 1, so the
    // difference from 1 is exact, the cross products have at most 53 bits,
    // and only the smallest, lo * lo, rounds, at 2^-104. Then i - i * e
    // rounds once: half an ulp and a hair.
    template <class V>
    static typename V::vd compensate(typename V::vd m, typename V::vd i) {
        const typename V::vd e = two_product_error<V>(split<V, 26>(m), split<V, 26>(i), V::splat(1.0));
        return V::sub(i, V::mul(i, e));
    }
    // g0 .. g3: one division for the whole block.
    template <class V>
    static void reciprocals(const typename V::vd* x, typename V::vd* y) {
        const typename V::vd m0 = mant<V>(x[0]), m1 = mant<V>(x[1]), m2 = mant<V>(x[2]),
                             m3 = mant<V>(x[3]);
        const typename V::vd R = V::div(V::splat(1.0), V::mul(V::mul(V::mul(m0, m1), m2), m3));
        const typename V::vd w = V::mul(R, m0), z = V::mul(w, m1);
        y[0] = rescale<V>(compensate<V>(m0, V::mul(V::mul(V::mul(R, m1), m2), m3)), x[0]);
        y[1] = rescale<V>(compensate<V>(m1, V::mul(V::mul(w, m2), m3)), x[1]);
        y[2] = rescale<V>(compensate<V>(m2, V::mul(z, m3)), x[2]);
        y[3] = rescale<V>(compensate<V>(m3, V::mul(z, m2)), x[3]);
    }
    static double reciprocal_one(double x) {
        const double m = mant<Scalar>(x);
        return rescale<Scalar>(compensate<Scalar>(m, (((1.0 / (m * m * m * m)) * m) * m) * m), x);
    }
    // bits(x) - 2^53's pattern with the sign cleared, above 2^1020 as a
    // double (ordered): zero, denormals, 2^-1022, infinities, NaNs and the
    // x whose reciprocal would be denormal. Not a plain range compare: a
    // biased exponent of 1 with a non-zero mantissa lands on a NaN pattern
    // and is (correctly) left to the fast path.
    template <class V>
    static typename V::vd special(typename V::vd x) {
        const typename V::vd t = abs_of<V>(V::sub_i64(x, splat_bits<V>(InvDiv::exp_two)));
        return V::lt(V::splat(InvDiv::range_limit), t);
    }
};

struct InvLA5 : InvMantissa {
    using form = forms::Lanes;
    template <class V, int NV>
    static void block(const typename V::vd* x, typename V::vd* y) {
        static_assert(NV == 4, "the mantissa product takes four vectors");
        reciprocals<V>(x, y);
    }
    static double one(double x) { return reciprocal_one(x); }
    static int32_t callout(const double* x, double* y) { return InvHA::callout(x, y); }
};

struct DivLA5 : InvMantissa {
    using form = forms::Lanes;
    template <class V, int NV>
    static void block(const typename V::vd* a, const typename V::vd* b, typename V::vd* y) {
        static_assert(NV == 4, "the mantissa product takes four vectors");
        reciprocals<V>(b, y);
        for (int j = 0; j < 4; ++j) y[j] = V::mul(a[j], y[j]);
    }
    static double one(double a, double b) { return a * reciprocal_one(b); }
    template <class V>
    static typename V::vd special(typename V::vd, typename V::vd b) {
        return InvMantissa::special<V>(b);
    }
    static int32_t callout(const double* a, const double* b, double* y) {
        return DivHA::callout(a, b, y);
    }
};

}  // namespace
