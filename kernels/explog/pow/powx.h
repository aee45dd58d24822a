// Powx: r = a^b with one exponent b for the whole array.
//
// The general kernels are Pow's blocks with b's split and its finiteness
// settled once before the loop, so a lane gives the bits Pow gives with b
// in every element of its second array; refused lanes go to Pow's scalar
// routine with b. An exponent that is infinite or NaN sends every element
// to that routine.
//
// Four exponents have a shorter road whose result is the correctly rounded
// power, whatever the accuracy mode: b = 1 copies, b = 2 squares, b = 0.5
// takes the square root, b = -1 divides. Their refused lanes are those
// where the shortcut would differ from the exact cases of Pow (NaN keeps
// its bits, sqrt(-0) and sqrt(-Inf) are not +0 and +Inf, a zero base with
// b = -1 reports), and go to the same scalar routine.
//
// Guards and widths are Powx's plan (plan.h). Reports pass `a` as both argument arrays: b is
// no array.
//
// Included by the explog units inside their own context (see unit.h).
#pragma once

#include "kernels/explog/pow/plan.h"
#include "kernels/explog/pow/pow.h"

namespace {

template <PowMode Mode>
struct PowxBlock {
    using form = forms::BlockMask;
    double b, b_hi, b_lo;  // b finite

    explicit PowxBlock(double e)
        : b(e), b_hi(PowSplit<Scalar>(e).parts.hi), b_lo(PowSplit<Scalar>(e).parts.lo) {}

    template <class V, int NV>
    uint32_t block(const typename V::vd* x, typename V::vd* r) const {
        PowSplit<V> y(V::splat(b));
        y.parts = {V::splat(b_hi), V::splat(b_lo)};
        uint32_t mask = 0;
#pragma GCC unroll 2
        for (int j = 0; j < NV; ++j) {
            uint32_t bits;
            if constexpr (Mode == PowMode::EP)
                r[j] = pow_ep_vector<V, false>(x[j], y.y, bits);
            else
                r[j] = pow_vector<V, Mode == PowMode::HA, false>(x[j], y, bits);
            mask |= bits << (j * V::lanes);
        }
        return mask;
    }
    int32_t callout(const double* x, double* r) const { return zvl::pow_scalar(*x, b, r); }
};

// Infinite or NaN b: only the exact cases apply.
struct PowxExactOnly {
    using form = forms::BlockMask;
    double b;
    template <class V, int NV>
    uint32_t block(const typename V::vd* x, typename V::vd* r) const {
        for (int j = 0; j < NV; ++j) r[j] = x[j];
        return (1u << (NV * V::lanes)) - 1;
    }
    int32_t callout(const double* x, double* r) const { return zvl::pow_scalar(*x, b, r); }
};

// NaN lanes, as all-ones lanes.
template <class V>
inline typename V::vd is_nan(typename V::vd x) {
    return not_mask<V>(V::eq(x, x));
}

struct PowxSquare : PerVector<PowxSquare> {
    template <class V>
    static typename V::vd eval(typename V::vd x) {
        return V::mul(x, x);
    }
    template <class V>
    static typename V::vd special(typename V::vd x) {
        return is_nan<V>(x);
    }
    static int32_t callout(const double* x, double* r) { return zvl::pow_scalar(*x, 2.0, r); }
};

struct PowxSqrt : PerVector<PowxSqrt> {
    template <class V>
    static typename V::vd eval(typename V::vd x) {
        return V::sqrt(x);
    }
    // the sign bit set (negatives, -0, -Inf) or NaN
    template <class V>
    static typename V::vd special(typename V::vd x) {
        return V::or_(x, is_nan<V>(x));
    }
    static int32_t callout(const double* x, double* r) { return zvl::pow_scalar(*x, 0.5, r); }
};

struct PowxInverse : PerVector<PowxInverse> {
    template <class V>
    static typename V::vd eval(typename V::vd x) {
        return V::div(V::splat(1.0), x);
    }
    template <class V>
    static typename V::vd special(typename V::vd x) {
        return V::or_(V::eq(x, V::splat(0.0)), is_nan<V>(x));
    }
    static int32_t callout(const double* x, double* r) { return zvl::pow_scalar(*x, -1.0, r); }
};

// The kernel of a cell of Powx's plan: its guard and width, and the block
// that the exponent picks.
struct PowxFamily {
    static constexpr const zvl::Plan& plan = zvl::plans::Powx;

    template <int Cpu, int Col>
    static void run(int32_t n, const double* a, double b, double* r, const char* name) {
        constexpr zvl::Cell c = plan.at(Cpu, Col);
        static_assert(c.loop == zvl::Loop::scratch && c.wrap == zvl::Wrap::unit, "Powx runs the scratch form");
        constexpr PowMode Mode = c.variant == 'A' ? PowMode::HA : c.variant == 'B' ? PowMode::LA : PowMode::EP;
        constexpr int W = c.width;
        [[maybe_unused]] GuardFor<c.guard> guard;
        if (b == 1.0) {
            for (int32_t i = 0; i < n; ++i) r[i] = a[i];
        } else if (b == 2.0) {
            scratch<Cpu, W>(n, a, r, name, PowxSquare{});
        } else if (b == 0.5) {
            scratch<Cpu, W>(n, a, r, name, PowxSqrt{});
        } else if (b == -1.0) {
            scratch<Cpu, W>(n, a, r, name, PowxInverse{});
        } else if (!(__builtin_fabs(b) <= Fp64::max_finite)) {
            scratch<Cpu, W>(n, a, r, name, PowxExactOnly{b});
        } else {
            scratch<Cpu, W>(n, a, r, name, PowxBlock<Mode>(b));
        }
    }

    template <int Cpu, int W, class F>
    static void scratch(int32_t n, const double* a, double* r, const char* name, const F& f) {
        scratch_loop<Cpu, V, W, F, D1Shape>(f, n, a, nullptr, r, nullptr, name);
    }
};

}  // namespace
