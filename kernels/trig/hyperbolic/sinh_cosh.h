// Sinh and Cosh: r = sinh(a), r = cosh(a). The lane mathematics of every
// mode over the SIMD wrappers.
//
// One exponential reduction serves both. With a = |x| and N = round(a
// 2^s/ln 2) (s = 7 in LA and EP, 6 in HA), r = a - N ln2/2^s in two parts,
//   A = 2^(N div 2^s - 1) T[N mod 2^s]     (e^a / 2 = A e^r)
//   B = 2^(-N div 2^s - 1) T[-N mod 2^s]   (e^-a / 2 = B e^-r)
// from the table of 2^(i/2^s) (ExpTable128 in EP and Cosh LA, hi and lo
// parts of 2^(i/128) in Sinh LA, of 2^(j/64) in HA) and the scales built in the exponent field from N plus
// the bias term 0x1ff00 (or 0xff80). With e^r = 1 + E + r + O, E the even
// and O the odd terms of the polynomial,
//   sinh a = (A - B)(1 + E) + (A + B)(r + O)
//   cosh a = (A + B)(1 + E) + (A - B)(r + O)
// A - B and A + B are formed in two parts (a two-sum of the high parts), so
// that the cancellation of A - B near a = 1/8 costs nothing beyond the
// table's own rounding; B is dropped from a = 40 on (e^-2a < 2^-115), where
// its scale would leave the exponent range. Polynomials: Taylor of degree 5
// (Sinh LA and EP), a minimax fit of degree 4 (Cosh LA and EP), and the HA
// exponential's degree 5.
//
// Largest errors found against MPFR (2.4 million arguments each; see
// tests/kernels/trig):
//   Sinh  LA 0.540 ulp at -0x1.7f4da64ee0e6cp-3, HA 0.567 ulp at
//         0x1.b1f2ba71bb464p-3, EP relative 2^-42.47 at 0x1.fffffffffffffp-4
//         (the EP callout's polynomial; the vector form is LA's)
//   Cosh  LA and EP 2.36 ulp at -0x1.2b35d96eacf34p+4 (the degree-4
//         polynomial's 2^-52.5 and the table's rounding), HA 0.523 ulp at
//         0x1.5cb3a07f5ef56p+5
//
// Vector ranges: Sinh 1/8 <= |x| < 708.39892578125 (one unsigned compare of
// the high word: w - 0x3fc00000 below 0xc62331), Cosh |x| < 708.39892578125.
// The callouts take the rest: sinh below 1/8 by x + x^3 P(x^2), and both
// above by e^|x|/2 scaled in two steps, reporting ZVL_STATUS_OVERFLOW past
// 710.47586007394386; infinities give +-inf (Cosh +inf), NaNs x + x, both
// silently.
//
// Included inside the unnamed namespace of the per-cpu units (see isa.h).
#pragma once

#include "kernels/common/isa.h"
#include "kernels/common/lanes.h"
#include "kernels/common/loops.h"
#include "kernels/common/double_word.h"
#include "kernels/trig/double_word.h"
#include "kernels/trig/hyperbolic/data.h"
#include "kernels/trig/lane_tests.h"
#include "kernels/trig/poly.h"

namespace {

// The reductions. LA and EP: 128/ln 2 and ln 2/128 in two parts (21 clear
// low bits in the high part keep N ln2_hi exact for N < 2^21).
struct HypReduce128 {
    static constexpr int s = 7;
    static constexpr bool hi_lo = false;
    static constexpr const double* table = zvl::exp_table_e;
    static constexpr double L = zvl::from_bits(0x40671547652b82fe);       // 184.66496523378731
    static constexpr double ln2_hi = zvl::from_bits(0x3f762e42fee00000);  // 0.0054152123466337798
    static constexpr double ln2_lo = zvl::from_bits(0x3d7a39ef35793c76);  // 1.4907929134926466e-12
};
// Sinh LA: the same with the hi, lo table of 2^(i/128), whose low parts
// keep the cancellation of A - B near 1/8 from magnifying the table's
// rounding (3.2 ulp with ExpTable128 alone).
struct HypReduce128HiLo : HypReduce128 {
    static constexpr bool hi_lo = true;
    static constexpr const double* table = zvl::exp_table_d;
};
// HA: 64/ln 2 and ln 2/64 (20 clear low bits), the hi, lo table.
struct HypReduce64 {
    static constexpr int s = 6;
    static constexpr bool hi_lo = true;
    static constexpr const double* table = zvl::exp_table_a;
    static constexpr double L = zvl::from_bits(0x40571547652b82fe);       // 92.332482616893658
    static constexpr double ln2_hi = zvl::from_bits(0x3f862e42fef00000);  // 0.010830424695086549
    static constexpr double ln2_lo = zvl::from_bits(0x3d7473de6af278ed);  // 1.162596423439437e-12
};

// 40: from here B is below 2^-115 A, and dropped.
constexpr double kHypDropB = 40.0;

template <class V>
struct HypParts {
    typename V::vd A_hi, A_lo, B_hi, B_lo;  // e^a / 2 = A e^r, e^-a / 2 = B e^-r
    typename V::vd r, E, O;                 // e^r = 1 + E + r + O
};

// 2^(n - 1) for n = floor(M / 2^S), M held in the low bits of v (v =
// shifter + M): the low bits of bits(v) + 1022 * 2^S shifted to the exponent
// field (for S = 7 the bias term is 0x1ff00).
template <class V, int S>
inline typename V::vd half_scale(typename V::vd v) {
    return V::and_(V::shl_i64(V::add_i64(v, splat_bits<V>(uint64_t{1022} << S)), 52 - S),
                   splat_bits<V>(Fp64::exp_mask));
}

template <class V, class K, class Poly>
inline HypParts<V> hyp_parts(typename V::vd a) {
    using vd = typename V::vd;
    HypParts<V> h;
    const vd shifter = V::splat(Fp64::shifter);
    const vd v = V::add(V::mul(a, V::splat(K::L)), shifter);
    const vd N = V::sub(v, shifter);
    const vd v2 = V::sub(shifter, N);  // -N in the low bits
    h.r = V::sub(V::sub(a, V::mul(N, V::splat(K::ln2_hi))), V::mul(N, V::splat(K::ln2_lo)));
    uint32_t j1[V::lanes], j2[V::lanes];
    V::low_words(v, j1);
    V::low_words(v2, j2);
    for (int l = 0; l < V::lanes; ++l) {
        j1[l] &= (1u << K::s) - 1;
        j2[l] &= (1u << K::s) - 1;
    }
    const vd sA = half_scale<V, K::s>(v);
    const vd sB = V::and_(half_scale<V, K::s>(v2), V::lt(a, V::splat(kHypDropB)));
    if constexpr (K::hi_lo) {
        vd T1_hi, T1_lo, T2_hi, T2_lo;
        V::gather_pairs(K::table, j1, T1_hi, T1_lo);
        V::gather_pairs(K::table, j2, T2_hi, T2_lo);
        h.A_hi = V::mul(T1_hi, sA);
        h.A_lo = V::mul(T1_lo, sA);
        h.B_hi = V::mul(T2_hi, sB);
        h.B_lo = V::mul(T2_lo, sB);
    } else {
        h.A_hi = V::mul(V::gather(K::table, j1), sA);
        h.B_hi = V::mul(V::gather(K::table, j2), sB);
    }
    // Poly lists r^k from k = 2 up: the even powers are r^2 times its even
    // chain, the odd ones r^3 times its odd chain.
    const vd r2 = V::mul(h.r, h.r);
    vd even, odd;
    horner2_parts<V>(Poly::c, r2, even, odd);
    h.E = V::mul(r2, even);
    h.O = V::mul(V::mul(r2, h.r), odd);
    return h;
}

// (A - B)(1 + E) + (A + B)(r + O), or the same with A + B and A - B
// swapped (Cosh): the first product's 1 as a two-part sum, the rest small.
// The second factor too needs the low parts where there are any: the high
// parts of the HA table have 45 bits.
template <class V, bool HiLo>
inline typename V::vd hyp_sum(const HypParts<V>& h, bool cosh) {
    using vd = typename V::vd;
    vd S, S_lo;
    if (cosh)
        two_sum<V>(h.A_hi, h.B_hi, S, S_lo);
    else
        two_diff<V>(h.A_hi, h.B_hi, S, S_lo);
    vd D = cosh ? V::sub(h.A_hi, h.B_hi) : V::add(h.A_hi, h.B_hi);
    if constexpr (HiLo) {
        S_lo = V::add(S_lo, cosh ? V::add(h.A_lo, h.B_lo) : V::sub(h.A_lo, h.B_lo));
        D = V::add(D, cosh ? V::sub(h.A_lo, h.B_lo) : V::add(h.A_lo, h.B_lo));
    }
    return V::add(S, V::add(V::add(S_lo, V::mul(S, h.E)), V::mul(D, V::add(h.r, h.O))));
}

template <class K, class Poly>
struct SinhForm : PerVector<SinhForm<K, Poly>> {
    template <class V>
    static typename V::vd eval(typename V::vd x) {
        const typename V::vd a = abs_of<V>(x);
        return V::or_(hyp_sum<V, K::hi_lo>(hyp_parts<V, K, Poly>(a), false), sign_of<V>(x));
    }
    // In range: 0x3fc00000 <= w < 0x40862331.
    template <class V>
    static int special(typename V::vd x) {
        return outside<V>(abs_high<V>(x), 0x3fc00000, 0x40862331);
    }
};

template <class K, class Poly>
struct CoshForm : PerVector<CoshForm<K, Poly>> {
    template <class V>
    static typename V::vd eval(typename V::vd x) {
        return hyp_sum<V, K::hi_lo>(hyp_parts<V, K, Poly>(abs_of<V>(x)), true);
    }
    // In range: w < 0x40862331 (NaNs and infinities are not).
    template <class V>
    static int special(typename V::vd x) {
        return outside<V>(abs_high<V>(x), 0, 0x40862331);
    }
    static int32_t callout(const double* x, double* r) { return zvl::cosh_callout(x, r); }
};

struct SinhLA : SinhForm<HypReduce128HiLo, zvl::ExpPolyLA> {
    static int32_t callout(const double* x, double* r) { return zvl::sinh_callout(x, r); }
};
struct SinhEP : SinhForm<HypReduce128, zvl::ExpPolyLA> {
    static int32_t callout(const double* x, double* r) { return zvl::sinh_callout_ep(x, r); }
};
struct SinhHA : SinhForm<HypReduce64, zvl::ExpPolyHA> {
    static int32_t callout(const double* x, double* r) { return zvl::sinh_callout(x, r); }
};
using CoshLA = CoshForm<HypReduce128, zvl::ExpPolyCosh>;
using CoshHA = CoshForm<HypReduce64, zvl::ExpPolyHA>;

}  // namespace
