// The vector constructions of the rounding family.
//
// Shifter form: C is 2^52 with the sign of x, and ((x + C) - C) is x rounded
// to an integer in the current rounding mode, exactly, for |x| < 2^52. The
// sign of x is then put back, which makes Ceil of a small negative value
// -0.0 and Floor of a small positive one +0.0 (under rounding down the bare
// difference would be -0.0). A block with any element at or above 2^52,
// infinite or NaN is redone by the element routine. Under a directed guard
// this is Ceil, Floor, Trunc or Modf; without a guard it follows the
// caller's mode, which is Rint and NearbyInt.
//
// Half test (Round): with a = |x|, t = (a + 2^52) - 2^52 rounds to even, so a
// value that rounded down from an exact half has a - t = 0.5 and gets one
// more. Lanes above 2^52 take x * 1.0, in the element routine; a NaN fails
// that compare and stays a NaN through the arithmetic. Without a guard t
// rounds in the caller's mode.
//
// Instruction form: the rounding instruction with a fixed immediate; NaN and
// infinity pass through it, so no block ever fails.
#pragma once

#include "kernels/explog/rounding/bit_masks.h"
#include "kernels/explog/rounding/common.h"

namespace {

template <class V>
struct ShifterOps {
    using vd = typename V::vd;
    // t with the sign bit s
    static vd with_sign(vd t, vd s) { return V::or_(abs_of<V>(t), s); }
    static vd shift_round(vd x) {
        const vd s = sign_of<V>(x);
        const vd C = V::or_(V::splat(Fp64::two52), s);
        return with_sign(V::sub(V::add(x, C), C), s);
    }
    // all lanes below 2^52 in magnitude (a NaN fails)
    static bool in_range(vd x) {
        return all_set<V>(V::lt(abs_of<V>(x), V::splat(Fp64::two52)));
    }
};

// Ceil, Floor, Trunc (under their guards), Rint and NearbyInt (without).
struct Shifter {
    using form = forms::Exact;
    template <class V, int NV>
    static bool block(const typename V::vd* x, typename V::vd* y) {
        bool ok = true;
        for (int j = 0; j < NV; ++j) {
            y[j] = ShifterOps<V>::shift_round(x[j]);
            ok &= ShifterOps<V>::in_range(x[j]);
        }
        return ok;
    }
    static void element(double x, double* y) {
        const uint64_t ix = zvl::bits(x);
        if ((ix & Fp64::exp_mask) == Fp64::exp_mask)
            *y = x + x;
        else if ((ix & Fp64::exp_mask) >= zvl::bits(Fp64::two52))
            *y = x;
        else
            *y = ShifterOps<Scalar>::shift_round(x);
    }
};

// Modf under the towards-zero guard: r2 = x - r1, both with the sign of x.
struct ShifterModf {
    using form = forms::Exact;
    template <class V>
    static void split(typename V::vd x, typename V::vd* i, typename V::vd* f) {
        using O = ShifterOps<V>;
        const typename V::vd s = sign_of<V>(x);
        const typename V::vd C = V::or_(V::splat(Fp64::two52), s);
        *i = O::with_sign(V::sub(V::add(x, C), C), s);
        *f = O::with_sign(V::sub(x, *i), s);
    }
    template <class V, int NV>
    static bool block(const typename V::vd* x, typename V::vd* y, typename V::vd* z) {
        bool ok = true;
        for (int j = 0; j < NV; ++j) {
            split<V>(x[j], &y[j], &z[j]);
            ok &= ShifterOps<V>::in_range(x[j]);
        }
        return ok;
    }
    static void element(double x, double* y, double* z) {
        const uint64_t ix = zvl::bits(x);
        if (BitMasks::is_nan(ix)) {
            *y = x + x;
            *z = x + x;
        } else if ((ix & Fp64::exp_mask) >= zvl::bits(Fp64::two52)) {
            *y = x;
            *z = BitMasks::signed_zero(ix);
        } else {
            split<Scalar>(x, y, z);
        }
    }
};

// Round by the half test; with Instr the first rounding is the rounding
// instruction with immediate 0 (to nearest, whatever the mode). A block
// holding a lane above 2^52 is redone element by element, which gives
// those lanes x * 1.0: the blocks of ordinary arguments skip that product
// and the blend.
template <bool Instr>
struct HalfTest {
    using form = forms::Exact;
    // The half test on the lanes up to 2^52 (and NaN).
    template <class V>
    static typename V::vd nearest(typename V::vd x) {
        using vd = typename V::vd;
        const vd s = sign_of<V>(x);
        const vd a = abs_of<V>(x);
        vd t;
        if constexpr (Instr) {
#ifdef __SSE4_1__
            t = round_by<0>(a);
#endif
        } else {
            const vd C = V::splat(Fp64::two52);
            t = V::sub(V::add(a, C), C);
        }
        const vd d = V::sub(a, t);
        t = V::add(t, V::and_(V::eq(d, V::splat(0.5)), V::splat(1.0)));
        // The instruction rounds a >= +0 to t >= +0 under the guard; the
        // shifter's t is -0 for small a in a caller's downward mode.
        if constexpr (Instr)
            return V::or_(t, s);
        else
            return ShifterOps<V>::with_sign(t, s);
    }
    template <class V>
    static typename V::vd big(typename V::vd x) {
        return V::lt(V::splat(Fp64::two52), abs_of<V>(x));
    }
    template <class V, int NV>
    static bool block(const typename V::vd* x, typename V::vd* y) {
        typename V::vd any = V::splat(0.0);
        for (int j = 0; j < NV; ++j) {
            y[j] = nearest<V>(x[j]);
            any = V::or_(any, big<V>(x[j]));
        }
        return V::mask(any) == 0;
    }
    static void element(double x, double* y) {
        *y = zvl::bits(big<Scalar>(x)) ? x * opaque(1.0) : nearest<Scalar>(x);
    }
};

// Only the units with the instruction define it.
template <int Imm>
struct ByInstruction;
#ifdef __SSE4_1__
template <int Imm>
struct ByInstruction {
    using form = forms::Exact;
    template <class V, int NV>
    static bool block(const typename V::vd* x, typename V::vd* y) {
        for (int j = 0; j < NV; ++j) y[j] = round_by<Imm>(x[j]);
        return true;
    }
    static void element(double x, double* y) { *y = round_by<Imm>(x); }
};
#endif

// Cpu type 0: the element routines of the bit masks, one element at a time.
template <double (*Fn)(double)>
struct ByElement {
    using form = forms::Exact;
    static void element(double x, double* y) { *y = Fn(x); }
};
struct ModfByElement {
    using form = forms::Exact;
    static void element(double x, double* y, double* z) { BitMasks::modf(x, y, z); }
};

}  // namespace
