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
// Guards as Pow's, except that every EP kernel from cpu type 1 on runs
// under the x87 0x200 guard. Reports pass `a` as both argument arrays: b is
// no array.
//
// Included by the explog units inside their own context (see unit.h).
#pragma once

#include "kernels/explog/pow/pow.h"

namespace {

template <PowMode Mode>
struct PowxBlock {
    double b, b_hi, b_lo;  // b finite

    explicit PowxBlock(double e)
        : b(e), b_hi(PowSplit<Scalar>(e).hi), b_lo(PowSplit<Scalar>(e).lo) {}

    template <class V, int NV>
    uint32_t block(const typename V::vd* x, typename V::vd* r) const {
        PowSplit<V> y(V::splat(b));
        y.hi = V::splat(b_hi);
        y.lo = V::splat(b_lo);
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

template <int Cpu, PowMode Mode>
using PowxGuard = std::conditional_t<Mode == PowMode::EP, X87Guard<0x200>, PowGuard<Cpu, Mode>>;

template <int Cpu, PowMode Mode>
inline void powx_kernel(int32_t n, const double* a, double b, double* r, const char* name) {
    constexpr int W = kPowW<Cpu>;
    [[maybe_unused]] PowxGuard<Cpu, Mode> guard;
    if (b == 1.0) {
        for (int32_t i = 0; i < n; ++i) r[i] = a[i];
    } else if (b == 2.0) {
        scratch_1i<Cpu, V, W, PowxSquare>(n, a, r, name);
    } else if (b == 0.5) {
        scratch_1i<Cpu, V, W, PowxSqrt>(n, a, r, name);
    } else if (b == -1.0) {
        scratch_1i<Cpu, V, W, PowxInverse>(n, a, r, name);
    } else if (!(__builtin_fabs(b) <= Fp64::max_finite)) {
        scratch_1i<Cpu, V, W>(n, a, r, name, PowxExactOnly{b});
    } else {
        scratch_1i<Cpu, V, W>(n, a, r, name, PowxBlock<Mode>(b));
    }
}

}  // namespace

ZVL_DEFINE_DX(Powx, HA, powx_kernel<kCpu, PowMode::HA>)
#if ZVL_CPU_INDEX >= 1
ZVL_DEFINE_DX(Powx, 50, powx_kernel<kCpu, PowMode::LA>)
ZVL_DEFINE_DX(Powx, 26, powx_kernel<kCpu, PowMode::EP>)
#endif
