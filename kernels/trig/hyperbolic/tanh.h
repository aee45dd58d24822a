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
// ulp at -0x1.1f6a5b3d0245bp+3. Infinities give +-1 and NaNs x + x, in line. No
// lane is special, and there is no status.
//
// Included inside the unnamed namespace of the per-cpu units (see isa.h).
#pragma once

#include "kernels/common/isa.h"
#include "kernels/common/lanes.h"
#include "kernels/common/loops.h"
#include "kernels/common/double_word.h"
#include "kernels/trig/double_word.h"
#include "kernels/trig/hyperbolic/data.h"

namespace {

template <bool HA>
struct TanhForm : PerVector<TanhForm<HA>> {
    template <class V>
    static typename V::vd eval(typename V::vd x) {
        using vd = typename V::vd;
        using L = Lanes<V::lanes>;
        const vd a = abs_of<V>(x);
        uint32_t w[V::lanes], j[V::lanes];
        L::store(w, L::and_(L::hi32(a), L::splat(0x7ffc0000)));
        for (int l = 0; l < V::lanes; ++l) {
            const int32_t d = static_cast<int32_t>(w[l] - 0x3fbc0000u);
            j[l] = d < 0 ? 0 : d > 0x780000 ? 30 * 8 : static_cast<uint32_t>(d) >> 15;
        }
        // j: the row's first pair, 8 pairs a row
        const double* rows = zvl::kTanhRows;
        vd c[14], centre, scale;
        for (int k = 0; k < 7; ++k) V::gather_pairs(rows + 2 * k, j, c[2 * k], c[2 * k + 1]);
        V::gather_pairs(rows + 14, j, centre, scale);
        const vd t = V::mul(V::sub(a, centre), scale);
        vd r;
        if constexpr (HA) {
            vd q = c[13];
            for (int k = 12; k >= 2; --k) q = V::mul_add(q, t, c[k]);
            const vd c1_hi = upper_half<V>(c[1]), t_hi = upper_half<V>(t);
            const vd p = V::mul(c1_hi, t_hi);
            const vd p_lo = V::add(V::mul(c1_hi, V::sub(t, t_hi)), V::mul(V::sub(c[1], c1_hi), t));
            vd s, e;
            fast_two_sum<V>(c[0], p, s, e);  // |c0| > |c1 t| unless c0 is 0
            r = V::add(s, V::add(e, V::add(p_lo, V::mul(V::mul(t, t), q))));
        } else {
            r = c[13];
            for (int k = 12; k >= 0; --k) r = V::mul_add(r, t, c[k]);
        }
        // Infinities and NaNs reach row 30 with t = inf * 0: 1 and x + 0
        // (the NaN made quiet, its payload kept; a sum that cannot overflow
        // where x is finite, nor be folded away) take their place.
        const vd inf = splat_bits<V>(Fp64::exp_mask);
        r = V::select(V::lt(a, inf), r,
                      V::select(V::eq(a, inf), V::splat(1.0), V::add(x, V::splat(0.0))));
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
