// The logarithm the inverse hyperbolic kernels carry inline, of v >= 1
// (positive normal and finite), over the SIMD wrappers.
//
// v = 2^e m with m in [1, 2); the row j = floor((m - 1) 128) + 1 comes from
// the low word of m + 2199023255551.0076 (0x427ffffffffff01f), which rounds
// (m - 1) 2048 + 15.5 to an integer, divided by 16. With R and T = -log(R)
// from the row, t = m R - 1 (|t| <= 0.00423; m cut to 43 bits times R, of
// 10 bits, is exact, and so is the subtraction) and
//   log v = e ln2 + T + log(1 + t)
//   LA, EP  log(1 + t) = t + t^2 P(t), P of degree 5 (2^-62.3 relative); the
//           sum in plain arithmetic, e ln2_lo last; a low part of v, if
//           any, joins t's low part
//   HA      v in two parts; log(1 + t) = t - t^2/2 + t^3 P(t), P of degree 5
//           (2^-70.7). Here m is cut to 33 bits, so that t's high part
//           m_hi R - 1 is a multiple of 2^-42 as e ln2_hi and T_hi are: the
//           leading sum e ln2_hi + T_hi + t_hi is exact (below 2^10), and
//           all the rest (t_lo, T_lo, e ln2_lo, t^2 (t P - 1/2), together
//           below 2^-16) is one double, so the result comes as a high and a
//           low part whose sum rounds once
//
// Included inside the unnamed namespace of the per-cpu units (see isa.h).
#pragma once

#include "kernels/common/isa.h"
#include "kernels/common/lanes.h"
#include "kernels/trig/double_word.h"
#include "kernels/trig/inverse_hyperbolic/data.h"
#include "kernels/trig/poly.h"
#include "kernels/trig/twin.h"

namespace {

struct InvHypLog {
    // ln 2 = ln2_hi + ln2_lo, ln2_hi with 11 clear low bits: e ln2_hi is
    // exact for |e| <= 1024, a multiple of 2^-42
    static constexpr double ln2_hi = zvl::from_bits(0x3fe62e42fefa3800);  // 0.69314718055989033
    static constexpr double ln2_lo = zvl::from_bits(0x3d2ef35793c76730);  // 5.4979230187083712e-14
    // 2^41 - 4065/4096: m + shifter holds (m - 1) 2048 + 15.5 rounded
    static constexpr double shifter = zvl::from_bits(0x427ffffffffff01f);  // 2199023255551.0076
    // m with its low 10 bits cleared: 43 bits, times R's 10 exact
    static constexpr uint64_t cut = 0xfffffffffffffc00;
    // m with its low 20 bits cleared: 33 bits, a multiple of 2^-32, so m_hi
    // R is one of 2^-42
    static constexpr uint64_t cut_ha = 0xfffffffffff00000;
};

// v = 2^e m, e (plus e_add) as a double; the row's R and T, and T in two
// parts for TwoPart.
template <class V>
struct LogParts {
    typename V::vd e, m, R, T, T_hi, T_lo;
};

template <class V, bool TwoPart>
inline LogParts<V> log_parts(typename V::vd v, typename V::vd e_add) {
    using L = LanesOf<V>;
    LogParts<V> p;
    const typename L::vi k = L::template srai<20>(L::sub(L::hi32(v), L::splat(0x3ff00000)));
    p.e = V::add(L::to_double(k), e_add);
    p.m = V::or_(V::and_(v, splat_bits<V>(Fp64::mant_mask)), splat_bits<V>(Fp64::one));
    uint32_t j[V::lanes];
    V::low_words(V::add(p.m, V::splat(InvHypLog::shifter)), j);
    for (int l = 0; l < V::lanes; ++l) j[l] = (j[l] >> 4) * 2;  // the row's first pair
    V::gather_pairs(zvl::kInvHypLogRows, j, p.R, p.T);
    // the row's second pair from the same numbers, two doubles further on
    if constexpr (TwoPart) V::gather_pairs(zvl::kInvHypLogRows + 2, j, p.T_hi, p.T_lo);
    return p;
}

// log(v + v_lo) for v >= 1 and |v_lo| <= 2^-23 v (without Low, v_lo is not
// read), and e_add added to v's exponent (log(2^e_add v)).
template <class V, bool Low = false>
inline typename V::vd log_la(typename V::vd v, typename V::vd e_add,
                             typename V::vd v_lo = typename V::vd()) {
    using vd = typename V::vd;
    const LogParts<V> p = log_parts<V, false>(v, e_add);
    const vd m_hi = V::and_(p.m, splat_bits<V>(InvHypLog::cut));
    vd m_lo = V::sub(p.m, m_hi);
    if constexpr (Low) m_lo = V::add(m_lo, V::mul(v_lo, exponent_scale<V>(v)));
    const vd t = V::add(V::sub(V::mul(m_hi, p.R), V::splat(1.0)), V::mul(m_lo, p.R));
    const vd q = V::add(t, V::mul(V::mul(t, t), horner<V>(zvl::LogPolyLA::c, t)));
    const vd S = V::add(V::mul(p.e, V::splat(InvHypLog::ln2_hi)), p.T);
    return V::add(S, V::add(q, V::mul(p.e, V::splat(InvHypLog::ln2_lo))));
}

// log(v_hi + v_lo) = hi + lo for v_hi >= 1 and |v_lo| <= 2^-23 v_hi, and
// e_add added to the exponent; hi is exact and |lo| < 2^-16.
template <class V>
inline void log_ha(typename V::vd v_hi, typename V::vd v_lo, typename V::vd e_add,
                   typename V::vd& hi, typename V::vd& lo) {
    using vd = typename V::vd;
    const LogParts<V> p = log_parts<V, true>(v_hi, e_add);
    const vd m_hi = V::and_(p.m, splat_bits<V>(InvHypLog::cut_ha));
    const vd t_hi = V::sub(V::mul(m_hi, p.R), V::splat(1.0));
    const vd t_lo = V::mul(V::add(V::sub(p.m, m_hi), V::mul(v_lo, exponent_scale<V>(v_hi))), p.R);
    const vd t = V::add(t_hi, t_lo);
    const vd P = V::mul_add(horner<V>(zvl::LogPolyHA::c, t), t, V::splat(-0.5));
    hi = V::add(V::add(V::mul(p.e, V::splat(InvHypLog::ln2_hi)), p.T_hi), t_hi);
    lo = V::add(t_lo, V::add(V::add(p.T_lo, V::mul(p.e, V::splat(InvHypLog::ln2_lo))),
                             V::mul(V::mul(t, t), P)));
}

}  // namespace
