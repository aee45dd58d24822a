// The Log10 formulas over the SIMD wrapper, shared by the kernels and the
// callout (which runs the HA formula one lane wide on scaled denormals).
//
// Both use Ln's pivot-0.7495 reduction (ln/reduce.h) with a table of
// base-10 logarithms: x = 2^k m, r = m*R - 1, |r| <= 2^-10.58,
// log10(x) = k*log10(2) + T + log10(1 + r).
//
//   HA  log10(1 + r) in the variable w = r * 0.43359375 (log10(e) cut to
//       eight bits): log10(1 + r) = w + w*(d + w*P(w)), d = log10(e)/0.43359375
//       - 1, P of degree 3, within 2^-56.5 relative for |r| <= 2^-10. The
//       two exact parts of r = a + b (ln/reduce.h) stay exact times
//       0.43359375, so k*log10(2)_hi + T_hi + w is carried in two parts and
//       only the final addition rounds at full size.
//   EP  one-part log10(2) and T; r (c1 + r (c2 + r c3)) with the Taylor
//       coefficients of log10(1 + r); the third term keeps 2^-33 relative
//       near x = 1, where the result is as small as r. Denormals are scaled
//       by 2^52 in line.
//
// Worst errors seen by zvl-ulp (2e6 samples, sweeps and hard cases): HA
// 0.580 ulp at 0x1.00122db17bd5fp+0 (the polynomial's own error near 1), EP
// relative 2.1e-10 at 0x1.0024d9ac47eb3p+0.
#pragma once

#include "kernels/common/isa.h"
#include "kernels/common/loops.h"
#include "kernels/explog/ln/reduce.h"
#include "kernels/explog/log10/data.h"

namespace {

// The lanes HA refuses (EP refuses fewer) and the callout that takes them.
struct Log10Special {
    template <class V>
    static int special(typename V::vd x) {
        return log_refused<V>(x);
    }
    static int32_t callout(const double* x, double* y) { return zvl::log10_callout(x, y); }
};

struct Log10HA : Log10Special {
    static constexpr const double* table = &zvl::log10_table_d[0][0];
    // log10(2) to 42 bits and the rest: k*log10_2_hi + T_hi is exact
    // 0.30102999566395283 and 2.8363394551044964e-14
    static constexpr double log10_2_hi = zvl::from_bits(0x3fd34413509f7800);
    static constexpr double log10_2_lo = zvl::from_bits(0x3d1fef311f12b358);
    // 0.43359375 = 111/256: a times it is exact
    static constexpr double w_scale = zvl::from_bits(0x3fdbc00000000000);
    static constexpr double d = zvl::from_bits(0x3f5a7a6cbf2e4108);       // 0.0016161024074997105
    static constexpr double c2 = zvl::from_bits(0xbff27af2dc77af28);      // -1.1550167667400704
    static constexpr double c3 = zvl::from_bits(0x3ffc6a02dc962e0f);      // 1.7758816353479039
    static constexpr double c4 = zvl::from_bits(0xc008930aac7d7c50);      // -3.0717977023883023
    static constexpr double c5 = zvl::from_bits(0x4016aba0f9751ec1);      // 5.6676062562689262

    // log10(x * 2^-shift) for one element: the callout passes shift 60 for
    // denormals it has scaled up; k - shift stays an integer below 2^11, so
    // the product with log10_2_hi stays exact.
    static double one(double x, double shift) {
        PartsD<Scalar> s;
        split_one(x, table, s);
        s.k -= shift;
        return finish<Scalar>(s);
    }

    template <class V>
    static typename V::vd finish(const PartsD<V>& s) {
        using vd = typename V::vd;
        const vd k = s.k;
        // a and b are exact, and so are their products with w_scale: a has
        // at most 42 significant bits, b (m_lo's 20 times R's 20) at most
        // 40, and w_scale 7
        const vd w_a = V::mul(s.a, V::splat(w_scale)), w_b = V::mul(s.b, V::splat(w_scale));
        const vd w = V::add(w_a, w_b);
        vd P = V::mul_add(V::splat(c5), w, V::splat(c4));
        P = V::mul_add(P, w, V::splat(c3));
        P = V::mul_add(P, w, V::splat(c2));
        // k*log10_2_hi + T_hi is 0 only on the row of 1 with k = 0, where
        // R is 1 and w_a + w_b is exact (m - 1 times 111/256); elsewhere it
        // exceeds |w|.
        return two_part_sum_r<V>(k, log10_2_hi, log10_2_lo, s.T_hi, s.T_lo, w_a, w_b, w,
                                 V::mul(w, V::mul_add(w, P, V::splat(d))));
    }
};

struct Log10EP : Log10Special {
    static constexpr const double* table = &zvl::log10_table_d[0][0];
    static constexpr double log10_2 = zvl::from_bits(0x3fd34413509f79ff);  // 0.3010299956639812
    // log10(e) = 0.43429448190325182, -log10(e)/2, log10(e)/3
    static constexpr double c1 = zvl::from_bits(0x3fdbcb7b1526e50e);
    static constexpr double c2 = zvl::from_bits(0xbfcbcb7b1526e50e);  // -0.21714724095162591
    static constexpr double c3 = zvl::from_bits(0x3fc287a7636f435f);  // 0.14476482730108395
    static constexpr double log10_2_52 = 15.653559774527022;  // 52 log10(2), for scaled denormals

    template <class V>
    static typename V::vd finish(const SplitScaled<V>& s) {
        using vd = typename V::vd;
        vd q = V::mul_add(V::splat(c3), s.r, V::splat(c2));
        q = V::mul(V::mul_add(q, s.r, V::splat(c1)), s.r);
        const vd kl =
            V::sub(V::mul(s.k, V::splat(log10_2)), V::and_(s.tiny, V::splat(log10_2_52)));
        return plus_zero<V>(V::add(V::add(kl, s.T), q));
    }
    // EP takes denormals in line
    template <class V>
    static int special(typename V::vd x) {
        return log_refused_positive<V>(x);
    }
};

}  // namespace
