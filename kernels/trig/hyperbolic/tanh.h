// Tanh: r = tanh(a). No exponential and no division: a table of local
// polynomials, TanhRows, chosen by the bits of the argument.
//
// With w the high word of |x|, the row is ((w AND 0x7ffc0000) - 0x3fbc0000)
// / 0x40000: one row per quarter binade from 1/8 up, row 0 below 1/8 (a
// negative value), and row 30, the constant 1, from 20 up (a value of
// 0x780000 and more); a row holds c0 .. c13 of tanh(centre + t), the
// centre and the scale (1; 0 in row 30). t = (|x| - centre) scale, exact,
// and tanh(|x|) = c0 + c1 t + ... + c13 t^13:
//   LA, EP  one Horner chain
//   HA      c0 + c1 t with c1 t exact (both split in 26-bit halves) and the
//           sum's error kept, the rest t^2 (c2 + ... + c13 t^11) added to
//           the low part
// then the sign of x. The rows' centres are chosen so that c0 and c1 round
// almost exactly (see tools/hyperbolic_tables.cpp), and each row's fit is
// within 2^-59 relative. Largest errors found against MPFR (2.4 million
// arguments; see tests/kernels/trig): LA and EP 0.984 ulp at
// -0x1.fe8e472c43b61p-14 (row 0's t (1 + t^2 Q) rounds twice), HA 0.513
// ulp at -0x1.1f6a5b3d0245bp+3. Infinities give +-1 (taken for 32) and NaNs
// come out quiet, in line. No lane is special, and there is no status.
//
// Included inside the unnamed namespace of the per-cpu units (see isa.h).
#pragma once

#include "kernels/common/isa.h"
#include "kernels/common/lanes.h"
#include "kernels/common/loops.h"
#include "kernels/common/twin.h"
#include "kernels/common/double_word.h"
#include "kernels/trig/double_word.h"
#include "kernels/trig/hyperbolic/data.h"

namespace {

// The first of the 8 pairs of each lane's row: (w AND 0x7ffc0000) -
// 0x3fbc0000 kept within [0, 0x780000], then shifted right by 15, on the
// lanes' high words at once.
template <class V>
inline void tanh_rows(typename V::vd a, uint32_t* j) {
    using L = LanesOf<V>;
    using vi = typename L::vi;
    constexpr int32_t top = 0x780000;
    vi d = L::sub(L::and_(L::hi32(a), L::splat(0x7ffc0000)), L::splat(0x3fbc0000));
    d = L::and_(d, L::lt(L::splat(-1), d));
    d = L::add(d, L::and_(L::lt(L::splat(top), d), L::sub(L::splat(top), d)));
    L::store(j, L::template srli<15>(d));
}

// Blocks of four vectors run as one: four rounds' chains interleaved, op by
// op, each lane computing what it computes alone (the same bits). A
// round's Horner chain is 13 dependent multiply-adds: one or two rounds at
// a time leave the units idle waiting on it, and the processor's window
// does not reach far enough ahead to fill the gaps. Each pair of words is
// fetched as the chain reaches it, which keeps few registers live.
template <bool HA>
struct TanhForm : PerTwin<TanhForm<HA>> {
    template <class V, int NV>
    static void block(const typename V::vd* x, typename V::vd* y) {
        if constexpr (NV % 4 == 0) {
            using Q = Twin<Twin<V>>;
            for (int j = 0; j < NV; j += 4) {
                const typename Q::vd r = eval<Q>({{x[j], x[j + 1]}, {x[j + 2], x[j + 3]}});
                y[j] = r.a.a;
                y[j + 1] = r.a.b;
                y[j + 2] = r.b.a;
                y[j + 3] = r.b.b;
            }
        } else {
            PerTwin<TanhForm<HA>>::template block<V, NV>(x, y);
        }
    }
    template <class V>
    static typename V::vd eval(typename V::vd x) {
        using vd = typename V::vd;
        // Infinities become 32, in row 30 (t = 0, the constant 1) with the
        // finite arguments from 20 up. A NaN is the minimum's second operand
        // and passes unchanged; it reaches row 30 too, where t and the
        // chain carry it, made quiet with its payload kept, as x + 0 would.
        const vd a = V::min_(V::splat(32.0), abs_of<V>(x));
        uint32_t j[V::lanes];
        tanh_rows<V>(a, j);
        const double* rows = zvl::kTanhRows;
        vd lo, hi, centre, scale;
        V::gather_pairs(rows + 14, j, centre, scale);
        const vd t = V::mul(V::sub(a, centre), scale);
        // c13 t + c12, then two words a step down to c2 (HA) or c0
        V::gather_pairs(rows + 12, j, lo, hi);
        vd r = V::mul_add(hi, t, lo);
        for (int k = 5; k >= 1; --k) {
            V::gather_pairs(rows + 2 * k, j, lo, hi);
            r = V::mul_add(V::mul_add(r, t, hi), t, lo);
        }
        V::gather_pairs(rows, j, lo, hi);
        if constexpr (HA) {
            const vd c1_hi = upper_half<V>(hi), t_hi = upper_half<V>(t);
            const vd p = V::mul(c1_hi, t_hi);
            const vd p_lo = V::add(V::mul(c1_hi, V::sub(t, t_hi)), V::mul(V::sub(hi, c1_hi), t));
            vd s, e;
            fast_two_sum<V>(lo, p, s, e);  // |c0| > |c1 t| unless c0 is 0
            r = V::add(s, V::add(e, V::add(p_lo, V::mul(V::mul(t, t), r))));
            // A NaN reaches this sum twice: through t_hi with its payload's
            // low bits cut and through t whole, and which of the two the sum
            // passes on depends on the order the compiler gives its operands
            // (clang and GCC differ). t carries x's payload, made quiet.
            r = V::select(V::eq(a, a), r, t);
        } else {
            r = V::mul_add(V::mul_add(r, t, hi), t, lo);
        }
        return V::or_(r, sign_of<V>(x));
    }
    template <class V>
    static int special(typename V::vd) {
        return 0;
    }
    // Never called: no lane is special.
    static int32_t callout(const double* x, double* r) {
        *r = TanhForm::one(*x);
        return 0;
    }
};

using TanhLA = TanhForm<false>;
using TanhHA = TanhForm<true>;

}  // namespace
