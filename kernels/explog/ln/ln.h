// Ln: r = ln(a).
//
// Every kernel splits x = 2^n * m, looks a reciprocal R and T = ln(1/R) up
// by the leading bits of m, and evaluates a short polynomial in r = m*R - 1
// (see reduce.h for the two reductions). The modes are three algorithms:
//
//   A  HA, type 5. Pivot 2/3, 257 rows, degree 6. The sum n*ln2 + T + r is
//      carried in two parts (ln2 in two parts, T_hi and T_lo, exact m_hi*R
//      - 1), so only the final addition rounds at full size.
//   B  LA, types 2 to 5. The same reduction and polynomial, one-part ln2
//      and T, all in plain double arithmetic.
//   C  EP, types 4 and 5. The same reduction with a degree-3 polynomial.
//   D  HA, types 0 to 4. Pivot 0.7495, 768 rows, degree 5, two-part sum as
//      in A; restart form under the full MXCSR guard.
//   E  EP, types 1 to 3. D's reduction with the degree-3 polynomial of C;
//      denormals are scaled by 2^52 in line; restart form under the x87
//      guard.
//
// Which variant runs where is Ln's plan (plan.h).
//
// Worst errors seen by zvl-ulp (2e6 samples, sweeps and hard cases):
//   A 0.503 ulp at 0x1.0072c3d7ba35bp+0; D 0.578 ulp at 0x1.000fe44712a91p+0
//   (the degree-5 polynomial's own error, 2^-56.6 relative near 1);
//   B 1.81 ulp at 0x1.fe7fb753f875cp-1; C relative 1.9e-9 at
//   0x1.007ffefb1c7afp+0; E relative 1.9e-10 at 0x1.002000439022bp+0.
//
// Refused lanes: zero, denormals (except in E), negatives, infinities and
// NaNs, found by one signed compare of the high word. They go to the
// callout, which is the same for all modes: -inf for zeros with
// ZVL_STATUS_SING, NaN for negatives and -inf with ZVL_STATUS_ERRDOM, +inf
// and NaN silently, and exact results for denormals. ln(1) is +0 in every
// mode: the row holding 1 has R = 1 and T = 0, so r and every term vanish.
//
// Included by the explog units inside their own context (see unit.h).
#pragma once

#include "kernels/common/unit.h"
#include "kernels/explog/ln/data.h"
#include "kernels/explog/ln/reduce.h"

namespace {

using zvl::from_bits;

// The lanes every kernel refuses (E refuses fewer) and the callout that
// takes them.
struct LnSpecial {
    template <class V>
    static int special(typename V::vd x) {
        return log_refused<V>(x);
    }
    static int32_t callout(const double* x, double* y) { return zvl::ln_callout(x, y); }
};

// --- A, B, C: pivot 2/3 -----------------------------------------------------

// What the three share around their result F::from_split<V>(s, pair): the
// lane formula, and the scratch-form block that takes its pair indices from
// the inputs' patterns (see pairs_from_inputs) and returns the refused
// lanes' bits.
template <class F>
struct PivotBKernel : PerVector<F>, LnSpecial {
    using form = forms::BlockAt;
    template <class V>
    static typename V::vd eval(typename V::vd x) {
        SplitB<V> s;
        split_b<V>(x, s);
        return F::template from_split<V>(s, s.pair);
    }

    template <class V, int NV>
    static int block_at(const double* src, const typename V::vd* x, typename V::vd* y) {
        uint32_t pair[NV * V::lanes];
        pairs_from_inputs<NV * V::lanes, pair_b>(src, pair);
        int refused = 0;
        for (int j = 0; j < NV; ++j) {
            SplitB<V> s;
            split_b<V>(x[j], s);
            y[j] = F::template from_split<V>(s, pair + j * V::lanes);
            refused |= log_refused<V>(x[j]) << (j * V::lanes);
        }
        return refused;
    }
};

// The degree-6 polynomial of A and B: ln(1+r) = r - r^2/2 + c3 r^3 + ... +
// c6 r^6 within 2^-61.5 relative for |r| <= 2^-9.
struct LnPoly6 {
    static constexpr double c2 = -0.5;
    static constexpr double c3 = from_bits(0x3fd5555555551655);  // 0.33333333333243803
    static constexpr double c4 = from_bits(0xbfcfffffffff70b1);  // -0.24999999999898173
    static constexpr double c5 = from_bits(0x3fc9999ff6def978);  // 0.20000075868842848
    static constexpr double c6 = from_bits(0xbfc5555b7c0b1cdb);  // -0.16666739994818766

    template <class V>
    static typename V::vd eval(typename V::vd r) {
        typename V::vd p = V::mul_add(V::splat(c6), r, V::splat(c5));
        p = V::mul_add(p, r, V::splat(c4));
        p = V::mul_add(p, r, V::splat(c3));
        return V::mul_add(p, r, V::splat(c2));
    }
};

struct LnA : PivotBKernel<LnA> {
    // ln2 in 21 bits and the rest: n*ln2_hi + T_hi is exact, as the table's
    // T_hi (last column) is a multiple of 2^-21
    static constexpr double ln2_hi = from_bits(0x3fe62e4300000000);  // 0.6931471824645996
    static constexpr double ln2_lo = from_bits(0xbe205c610ca86c39);  // -1.904654299957768e-09

    template <class V>
    static typename V::vd from_split(const SplitB<V>& s, const uint32_t* pair) {
        using vd = typename V::vd;
        const double* t = &zvl::ln_table_b[0][0];
        vd R, T, T_lo, T_hi, a, b;
        V::gather_pairs(t, pair, R, T);
        V::gather_pairs(t + 2, pair, T_lo, T_hi);
        exact_parts<V>(s.m_hi, s.m_lo, R, a, b);
        const vd r = V::add(a, b);
        const vd p = LnPoly6::eval<V>(r);
        // |n*ln2_hi + T_hi| >= 0.69 - 0.41 unless n is 0; |T_hi| exceeds |a|
        // on every row but the one holding 1, where T_hi is 0; there a is 0
        // or a multiple of m_hi's last bit, which b stays below. b is added
        // apart from the polynomial because near 1 it is a large part of
        // the result.
        return plus_zero<V>(two_part_sum<V>(s.n, ln2_hi, ln2_lo, T_hi, T_lo, a, b, V::mul(p, V::mul(r, r))));
    }
};

// The degree-3 polynomial of C and E: within 2^-29 relative for |r| <= 2^-9.
struct LnPoly3 {
    static constexpr double c2 = -0.5;
    static constexpr double c3 = from_bits(0x3fd555568888b027);  // 0.33333361943619128

    template <class V>
    static typename V::vd eval(typename V::vd r) {
        return V::mul_add(V::splat(c3), r, V::splat(c2));
    }
};

// B and C: n*ln2 + (((p(r)*r*r + r) + T)) in plain double arithmetic, with
// the polynomial of degree 6 (B) or 3 (C).
template <class Poly>
struct LnOnePart : PivotBKernel<LnOnePart<Poly>> {
    static constexpr double ln2 = from_bits(0x3fe62e42fefa39ef);  // 0.6931471805599453

    template <class V>
    static typename V::vd from_split(const SplitB<V>& s, const uint32_t* pair) {
        using vd = typename V::vd;
        vd R, T, a, b;
        V::gather_pairs(&zvl::ln_table_b[0][0], pair, R, T);
        exact_parts<V>(s.m_hi, s.m_lo, R, a, b);
        const vd r = V::add(a, b);
        const vd p = Poly::template eval<V>(r);
        const vd q = V::add(V::mul(V::mul(p, r), r), r);
        return plus_zero<V>(V::add(V::mul(s.n, V::splat(ln2)), V::add(q, T)));
    }
};

using LnB = LnOnePart<LnPoly6>;
using LnC = LnOnePart<LnPoly3>;

// --- D, E: pivot 0.7495, restart form (through RestartLog) ----------------

struct LnD : LnSpecial {
    static constexpr const double* table = &zvl::ln_table_d[0][0];
    // ln2 to 42 bits and the rest: n*ln2_hi + T_hi is exact
    static constexpr double ln2_hi = from_bits(0x3fe62e42fefa3800);  // 0.6931471805598903
    static constexpr double ln2_lo = from_bits(0x3d2ef35793c76730);  // 5.497923018708371e-14
    // degree 5, within 2^-56.5 relative for |r| <= 2^-10
    static constexpr double c2 = from_bits(0xbfdffffffffffca9);  // -0.49999999999995254
    static constexpr double c3 = from_bits(0x3fd555555555512a);  // 0.33333333333327408
    static constexpr double c4 = from_bits(0xbfd00000d588d052);  // -0.25000019886943392
    static constexpr double c5 = from_bits(0x3fc9999b39037e04);  // 0.20000019344205111

    template <class V>
    static typename V::vd finish(const PartsD<V>& s) {
        using vd = typename V::vd;
        const vd r = V::add(s.a, s.b);
        vd p = V::mul_add(V::splat(c5), r, V::splat(c4));
        p = V::mul_add(p, r, V::splat(c3));
        p = V::mul_add(p, r, V::splat(c2));
        // k*ln2_hi + T_hi is 0 only on the row of 1 with k = 0, where R is
        // 1 and r = m - 1 exactly; elsewhere it exceeds |r|.
        return two_part_sum_r<V>(s.k, ln2_hi, ln2_lo, s.T_hi, s.T_lo, s.a, s.b, r,
                                 V::mul(p, V::mul(r, r)));
    }
};

struct LnE : LnSpecial {
    static constexpr const double* table = &zvl::ln_table_d[0][0];
    static constexpr double ln2_52 = 36.043653389117154;  // 52 ln 2, for scaled denormals

    template <class V>
    static typename V::vd finish(const SplitScaled<V>& s) {
        using vd = typename V::vd;
        const vd p = LnPoly3::eval<V>(s.r);
        const vd q = V::add(V::mul(V::mul(p, s.r), s.r), s.r);
        const vd kl =
            V::sub(V::mul(s.k, V::splat(LnB::ln2)), V::and_(s.tiny, V::splat(ln2_52)));
        return plus_zero<V>(V::add(V::add(kl, s.T), q));
    }
    // E takes denormals in line
    template <class V>
    static int special(typename V::vd x) {
        return log_refused_positive<V>(x);
    }
};

}  // namespace
