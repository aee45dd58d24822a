// The complex logarithm's vector kernels, ln|z| + i arg z on blocks of
// eight elements, and the thin kernel of Log10.
//
// Both parts of an element must lie in [2^-500, 2^500) (the band: h^2 + l^2
// then needs no scaling); other elements, zeros, subnormals, infinities and
// NaNs, go to zLn_scalar, their lanes computing on 1 + i meanwhile. With h
// and l the larger and smaller of |x| and |y|:
//
// - near |z| = 1 (0.6846531968814576 < h <= 1.0307764064044151 and
//   |h^2 - 1 + l^2| <= 1/16) t = h^2 + l^2 - 1 is formed without loss from
//   split squares, and ln|z| = (t + t^2 Q(t))/2;
// - elsewhere s = h^2 + l^2 as a pair, s = 2^e m with m in [1, 2), the row
//   j = round(64 (m - 1)) of ln_table gives R, and r = R m - 1 (exact as a
//   pair): ln|z| = (e ln 2 + H + L + r + r^2 P(r) + s_lo/s)/2, summed from
//   the small terms up.
//
// A block runs one path where all its lanes agree. The angle in HA is
// atan(|y|/|x|) on five intervals of the quotient, each lane's constants
// one row of a table, the quotient in two parts from one reciprocal, and
// atan v = v + v^3 A(v^2); pi - a for negative x comes from rows of pi less
// the interval's constant. LA and EP take atan(l/h) from one polynomial,
// fold by pi/2 and then take pi - a for negative x. The sign of y goes on
// last. LA and EP carry shorter polynomials (fits of the same forms) and EP
// ln 2 in one part and s in one. HA's squares in the far path are cut by
// masks and its polynomials run as two chains; it runs on twins like LA
// and EP.
#pragma once

#include "kernels/common/double_word.h"
#include "kernels/common/unit.h"
#include "kernels/complex/ln/data.h"
#include "kernels/complex/ln/plan.h"
#include "kernels/complex/ln/scalar.h"
#include "kernels/complex/thin.h"
#include "kernels/complex/twin.h"
#include "kernels/trig/estimates.h"

namespace {

namespace zln {

enum Mode { kHA, kLA, kEP };

constexpr uint64_t kHigh26 = keep_bits(26);

// The polynomials, lowest power first.
constexpr double kP_HA[] = {-0x1p-1, 0x1.5555555555613p-2, -0x1.0000000000262p-2, 0x1.9999997b36c81p-3,
                            -0x1.555555228b38fp-3, 0x1.249c02481059dp-3, -0x1.000b405a2836dp-3};
constexpr double kQ_HA[] = {-0x1.0000000000008p-1, 0x1.5555555555584p-2, -0x1.ffffffffd7e87p-3,
                            0x1.9999999955b1dp-3,  -0x1.555556314a98ep-3, 0x1.24924a446d630p-3,
                            -0x1.fffc27495ce53p-4, 0x1.c71826ba0ddf7p-4,  -0x1.9d5cf64c0cd03p-4,
                            0x1.7820e9766e2b0p-4};
constexpr double kA_HA[] = {-0x1.5555555555552p-2, 0x1.9999999998f43p-3, -0x1.2492492441a21p-3,
                            0x1.c71c719f99f96p-4,  -0x1.745d119677a4fp-4, 0x1.3b132b731e73ap-4,
                            -0x1.1108d326c68edp-4, 0x1.e12f1edf7c393p-5,  -0x1.a9e755ca13d23p-5,
                            0x1.6ad5558fe19c9p-5,  -0x1.04cd71f92185ep-5, 0x1.be4fbe6733718p-7};
struct Polys {
    double P[6], Q[9], A[20];
};
struct PolysEP {
    double P[3], Q[5], A[10];
};
constexpr Polys kPolysLA = {
#include "kernels/complex/ln/table_ln_la.inc"
};
constexpr PolysEP kPolysEP = {
#include "kernels/complex/ln/table_ln_ep.inc"
};

template <class V, int N>
__attribute__((always_inline)) inline typename V::vd horner(const double (&c)[N], typename V::vd v) {
    typename V::vd p = V::splat(c[N - 1]);
    for (int i = N - 2; i >= 0; --i) p = V::add(V::splat(c[i]), V::mul(v, p));
    return p;
}

// The same sum as two chains, the even and the odd powers, in v^2: half
// the dependent latency of one.
template <class V, int N>
__attribute__((always_inline)) inline typename V::vd horner_pair(const double (&c)[N], typename V::vd v) {
    using vd = typename V::vd;
    const vd v2 = V::mul(v, v);
    constexpr int top_even = (N - 1) / 2 * 2, top_odd = N % 2 == 0 ? N - 1 : N - 2;
    vd e = V::splat(c[top_even]), o = V::splat(c[top_odd]);
    for (int i = top_even - 2; i >= 0; i -= 2) e = V::add(V::splat(c[i]), V::mul(v2, e));
    for (int i = top_odd - 2; i >= 1; i -= 2) o = V::add(V::splat(c[i]), V::mul(v2, o));
    return V::add(e, V::mul(v, o));
}

// s + e = a + b exactly, as a pair.
template <class V>
__attribute__((always_inline)) inline Parts<V> sum_pair(typename V::vd a, typename V::vd b) {
    Parts<V> p;
    two_sum<V>(a, b, p.hi, p.lo);
    return p;
}

// Half ln(1 + t), t = h^2 + l^2 - 1 formed without loss.
template <class V, int M>
__attribute__((always_inline)) inline typename V::vd near_unit(typename V::vd h, typename V::vd l) {
    using vd = typename V::vd;
    const Parts<V> a = veltkamp_split<V>(h), b = veltkamp_split<V>(l);
    const vd two = V::splat(2.0);
    Parts<V> s = sum_pair<V>(V::mul(a.hi, a.hi), V::splat(-1.0));
    vd lo = s.lo;
    const vd terms[3] = {V::mul(b.hi, b.hi), V::mul(two, V::mul(a.hi, a.lo)), V::mul(two, V::mul(b.hi, b.lo))};
    for (const vd term : terms) {
        s = sum_pair<V>(s.hi, term);
        lo = V::add(lo, s.lo);
    }
    lo = V::add(V::add(lo, V::mul(a.lo, a.lo)), V::mul(b.lo, b.lo));
    const vd t = V::add(s.hi, lo), tl = V::sub(lo, V::sub(t, s.hi));
    vd q;
    if constexpr (M == kHA)
        q = horner_pair<V>(kQ_HA, t);
    else if constexpr (M == kLA)
        q = horner<V>(kPolysLA.Q, t);
    else
        q = horner<V>(kPolysEP.Q, t);
    return V::mul(V::splat(0.5), V::add(t, V::add(tl, V::mul(V::mul(t, t), q))));
}

// Half ln(h^2 + l^2) through ln_table.
template <class V, int M>
__attribute__((always_inline)) inline typename V::vd far(typename V::vd h, typename V::vd l) {
    using vd = typename V::vd;
    vd s, slo;
    if constexpr (M == kEP) {
        s = V::add(V::mul(h, h), V::mul(l, l));
        slo = V::splat(0.0);
    } else {
        Parts<V> H, L;
        if constexpr (M == kHA) {
            two_square_cut<V>(h, H.hi, H.lo);
            two_square_cut<V>(l, L.hi, L.lo);
        } else {
            two_product<V>(h, h, H.hi, H.lo);
            two_product<V>(l, l, L.hi, L.lo);
        }
        // h >= l: the fast sum's error is exact, the same as two_sum's
        vd err;
        fast_two_sum<V>(H.hi, L.hi, s, err);
        slo = V::add(V::add(err, H.lo), L.lo);
    }
    // s = 2^e m, e as a double from the exponent field
    const vd magic = splat_bits<V>(0x4330000000000000);
    const vd e = V::sub(V::or_(V::shr_i64(s, 52), magic), V::add(magic, V::splat(1023.0)));
    const vd m = V::or_(V::and_(s, splat_bits<V>(0x000fffffffffffff)), V::splat(1.0));
    uint32_t j[V::lanes];
    V::low_words(V::add(m, splat_bits<V>(0x42d0000000000040)), j);
    for (int i = 0; i < V::lanes; ++i) j[i] = 3 * (j[i] & 0x7f);
    const double* t = &zvl::ln_table[0][0];
    const vd R = V::gather(t, j), Hj = V::gather(t + 1, j), Lj = V::gather(t + 2, j);
    const vd mh = V::and_(m, splat_bits<V>(kHigh26));
    const Parts<V> r = sum_pair<V>(V::sub(V::mul(R, mh), V::splat(1.0)), V::mul(R, V::sub(m, mh)));
    vd p;
    if constexpr (M == kHA)
        p = horner_pair<V>(kP_HA, r.hi);
    else if constexpr (M == kLA)
        p = horner<V>(kPolysLA.P, r.hi);
    else
        p = horner<V>(kPolysEP.P, r.hi);
    vd small, big;
    if constexpr (M == kEP) {
        small = V::add(Lj, V::mul(V::mul(r.hi, r.hi), p));
        big = V::add(V::mul(e, splat_bits<V>(0x3fe62e42fefa39ef)), Hj);
    } else {
        small = V::add(V::mul(e, splat_bits<V>(0x3d2ef35793c76730)), Lj);
        small = V::add(small, V::div(slo, s));
        small = V::add(small, r.lo);
        small = V::add(small, V::mul(V::mul(r.hi, r.hi), p));
        big = V::add(V::mul(e, splat_bits<V>(0x3fe62e42fefa3800)), Hj);
    }
    return V::mul(V::splat(0.5), V::add(big, V::add(r.hi, small)));
}

// The angle's rows of four: num = p ay - q ax and den = p ax + q ay give
// the reduced argument v = num/den, and the pair c the value it goes with:
// atan(ay/ax) = c + atan(v) on rows 0 to 4, the intervals of ay/ax from 0
// up (c = 0, atan(1/2), atan(1), atan(3/2), pi/2), and on rows 8 to 12,
// for a negative x, pi - atan(ay/ax) = c - atan(v) with c = pi less those,
// pi as the two words pi - a takes in every mode (0x400921fb54442d18 and
// 0x3ca1a64000000000), the pair the exact difference rounded.
alignas(32) constexpr double kAngleRows[13][4] = {
    {1.0, 0.0, 0.0, 0.0},
    {2.0, 1.0, 0x1.dac670561bb4fp-2, 0x1.a2b7f222f65e2p-56},
    {1.0, 1.0, 0x1.921fb54442d18p-1, 0x1.1a62633145c07p-55},
    {2.0, 3.0, 0x1.f730bd281f69bp-1, 0x1.007887af0cbbdp-56},
    {0.0, 1.0, 0x1.921fb54442d18p+0, 0x1.1a62633145c07p-54},
    {}, {}, {},
    {1.0, 0.0, 0x1.921fb54442d18p+1, 0x1.1a64000000000p-53},
    {2.0, 1.0, 0x1.56c6e7397f5aep+1, 0x1.660d01bba1344p-53},
    {1.0, 1.0, 0x1.2d97c7f3321d2p+1, 0x1.a796ce675d1fcp-54},
    {2.0, 3.0, 0x1.145385fa3af71p+1, 0x1.fa54ef0a1e688p-53},
    {0.0, 1.0, 0x1.921fb54442d18p+0, 0x1.1a659cceba3f9p-54},
};

// |arg z| for z = x + iy with ax = |x|, ay = |y| positive and neg the lanes
// of negative x. The interval is found by comparing ay with the edges
// times ax, the row comes by one load per lane, and the quotient is taken
// in two parts from one reciprocal of the denominator, the processor's
// single-precision estimate polished in double: v_hi, 26 bits, times
// den's upper half is exact, and so is the remainder that gives v_lo, but
// for products 2^-26 below it. The numerator p ay - q ax is exact but for
// the rounding of 3 ax, whose error joins the remainder; for a negative x
// both change sign, and v with them.
template <class V>
__attribute__((always_inline)) inline typename V::vd angle_ha(typename V::vd ax, typename V::vd ay, typename V::vd neg) {
    using vd = typename V::vd;
    // the masks are nested: their codes' xor is 2r for the row r, 0 to 4,
    // and a negative x adds 8 to r
    const vd code =
        V::xor_(V::xor_(V::and_(V::le(V::mul(ax, V::splat(0.4375)), ay), splat_bits<V>(2)),
                        V::and_(V::le(V::mul(ax, V::splat(0.6875)), ay), splat_bits<V>(6))),
                V::xor_(V::xor_(V::and_(V::le(V::mul(ax, V::splat(1.1875)), ay), splat_bits<V>(2)),
                                V::and_(V::le(V::mul(ax, V::splat(2.4375)), ay), splat_bits<V>(14))),
                        V::and_(neg, splat_bits<V>(16))));
    uint32_t j[V::lanes];
    V::low_words(code, j);
    vd p, q, chi, clo;
    V::gather_pairs(&kAngleRows[0][0], j, p, q);
    V::gather_pairs(&kAngleRows[0][2], j, chi, clo);
    // q ax rounded and its error exactly: q times ax's upper half is exact
    // and within a factor 2 of q ax, and the error is a double
    const Parts<V> x = split<V, 26>(ax);
    const vd qx = V::mul(q, ax);
    const vd sign = V::and_(neg, splat_bits<V>(Fp64::sign_mask));
    const vd qx_err = V::xor_(V::add(V::sub(V::mul(q, x.hi), qx), V::mul(q, x.lo)), sign);
    const vd num = V::xor_(V::sub(V::mul(p, ay), qx), sign);
    const vd den = V::add(V::mul(p, ax), V::mul(q, ay));
    // 1/den from the single-precision estimate polished to 2^-34: v_hi is
    // within 2^-25 of the quotient, v_lo within 2^-60 of it
    const vd R = recip_refined<V, 2>(den);
    const vd v_hi = upper_half<V>(V::mul(num, R));
    const Parts<V> d = split<V, 26>(den);
    const vd rest = V::sub(V::sub(V::sub(num, V::mul(v_hi, d.hi)), V::mul(v_hi, d.lo)), qx_err);
    const vd v_lo = V::mul(rest, R);
    const vd v = V::add(v_hi, v_lo);
    const vd w = V::mul(v, v);
    const vd poly = V::mul(V::mul(v, w), horner_pair<V>(kA_HA, w));
    // |c| > |v| unless c is 0
    const vd hi = V::add(chi, v_hi);
    return V::add(hi, V::add(V::sub(v_hi, V::sub(hi, chi)), V::add(clo, V::add(v_lo, poly))));
}

// One vector of lanes: the parts of the results and the refused lanes' bits.
template <class V, int M>
__attribute__((always_inline)) inline int lanes(typename V::vd x, typename V::vd y, typename V::vd& re, typename V::vd& im) {
    using vd = typename V::vd;
    const vd lo_band = V::splat(0x1p-500), hi_band = V::splat(0x1p500);
    vd ax = abs_of<V>(x), ay = abs_of<V>(y);
    const vd ok = V::and_(V::and_(V::le(lo_band, ax), V::lt(ax, hi_band)),
                          V::and_(V::le(lo_band, ay), V::lt(ay, hi_band)));
    const int refused = V::mask(ok) ^ ((1 << V::lanes) - 1);
    const vd one = V::splat(1.0);
    ax = V::select(ok, ax, one);
    ay = V::select(ok, ay, one);
    const vd big = V::lt(ay, ax);
    const vd h = V::select(big, ax, ay), l = V::select(big, ay, ax);

    const vd d = V::add(V::sub(V::mul(h, h), one), V::mul(l, l));
    const vd near = V::and_(V::and_(V::lt(V::splat(0.6846531968814576), h), V::le(h, V::splat(1.0307764064044151))),
                            V::le(abs_of<V>(d), V::splat(0.0625)));
    const int nm = V::mask(near);
    if (nm == 0)
        re = far<V, M>(h, l);
    else if (nm == (1 << V::lanes) - 1)
        re = near_unit<V, M>(h, l);
    else  // the near path on its own lanes alone: t^2 of a far lane could overflow
        re = V::select(near, near_unit<V, M>(V::select(near, h, one), V::and_(near, l)), far<V, M>(h, l));

    vd angle;
    if constexpr (M == kHA) {
        angle = angle_ha<V>(ax, ay, V::lt(x, V::splat(0.0)));
    } else {
        const vd v = V::div(l, h);
        const vd w = V::mul(v, v);
        const vd poly = M == kLA ? horner<V>(kPolysLA.A, w) : horner<V>(kPolysEP.A, w);
        const vd t = V::mul(v, poly);
        const vd up = V::sub(splat_bits<V>(0x3ff921fb54442d18), t);
        const vd a = V::select(big, t, up);
        const vd alo = V::select(big, V::splat(0.0), splat_bits<V>(0x3c91a62633145c07));
        // pi - a for a negative x
        const vd neg = V::lt(x, V::splat(0.0));
        const vd pih = splat_bits<V>(0x400921fb54442d18);
        const vd fh = V::sub(pih, a);
        const vd flo = V::add(V::sub(V::sub(pih, fh), a), V::sub(splat_bits<V>(0x3ca1a64000000000), alo));
        angle = V::select(neg, V::add(fh, flo), V::add(a, alo));
    }
    im = V::or_(angle, sign_of<V>(y));
    return refused;
}

}  // namespace zln

template <int M>
struct ZLnLanes {
    template <class V>
    __attribute__((always_inline)) static int lanes(typename V::vd x, typename V::vd y, typename V::vd& re,
                                                    typename V::vd& im) {
        return zln::lanes<V, M>(x, y, re, im);
    }
    static void scalar(ZVLComplex16* r, const ZVLComplex16* z) { zLn_scalar(r, z); }
};

using ZLnFamily = PlannedFamily<zvl::plans::zLn, Shape<1, 1, ZVLComplex16>, Letter<'H', ZPerTwin<ZLnLanes<zln::kHA>>>,
                                Letter<'L', ZPerTwin<ZLnLanes<zln::kLA>>>, Letter<'E', ZPerTwin<ZLnLanes<zln::kEP>>>>;
using ZLog10Family = PlannedFamily<zvl::plans::zLog10, Shape<1, 1, ZVLComplex16>, Letter<'T', ZThin<zLog10_scalar>>>;

}  // namespace

ZVL_KERNELS_Z1(Ln, ZLnFamily)
ZVL_KERNELS_Z1(Log10, ZLog10Family)
