// The argument reductions of the logarithm kernels (Ln and Log10), written
// once over the SIMD wrapper.
//
// Both split a positive normal x = 2^k * m on its integer image: with P the
// pattern of a pivot p, d = bits(x) - P carries k in its exponent field and
// (d AND mantissa mask) + P is the pattern of m, in [p, 2p). A table row is
// picked by the leading bits of m; it holds R ~ 1/c for the row's centre c,
// and T = log(1/R), so that log(x) = k*log(2) + T + log(1 + r), r = m*R - 1.
// m is split into m_hi (33 bits or fewer) and m_lo; R has 20 significant
// bits, so m_hi*R is exact, and m_hi*R - 1 is exact as well (Sterbenz).
//
//   pivot 2/3 (Ln variants A to C): m in [2/3, 4/3), 257 rows picked by the
//     high word, 2^-9 apart below 1 and 2^-8 above, |r| <= 2^-9; m_hi is m
//     with its low 32 bits cleared.
//   pivot 0.74951171875 (Ln variants D and E, Log10): m in [0.7495, 1.499),
//     768 rows 2^-10 apart (c = 0.75 + j/1024), |r| <= 2^-10.58. Adding
//     1.5*2^20 rounds m to a multiple of 2^-32, and the sum's low word is
//     m's fraction in units of 2^-32, from which the row follows by one add
//     and one shift. The HA kernels cut m_hi by clearing the pattern's low
//     20 bits: 33 bits or fewer in both binades, m_lo in [0, 2^-32).
//
// That is how the element routines and callouts take their rows. The blocks
// take the same rows from the inputs' patterns in 64-bit integer arithmetic
// (pair_b, row_d), which leaves the vector units to the arithmetic.
//
// Rows are 32 bytes, two 16-byte pairs: the reductions give each lane's
// pair index (2 * row) for gather_pairs.
//
// Included inside the unnamed namespace of the units (see isa.h).
#pragma once

#include <cstdint>
#include <cstring>

#include "kernels/common/isa.h"
#include "kernels/common/lanes.h"
#include "kernels/common/loops/forms.h"
#include "kernels/common/double_word.h"

namespace {

// Zero, denormals, negatives, infinities and NaNs in one signed compare of
// the high word h: h + 2^20 < 2^21. Positive normal finite x have h in
// [0x00100000, 0x7fefffff], which the addition moves to [2^21, 2^31);
// negatives stay negative (or wrap to [0, 2^20)), zeros and denormals land
// in [2^20, 2^21), and the all-ones exponent wraps into the negative range.
// All ones in the words of refused lanes.
template <class L>
inline typename L::vi refused_words(typename L::vi h) {
    return L::lt(L::add(h, L::splat(0x00100000)), L::splat(0x00200000));
}

// The same test as one bit per lane.
template <class V>
inline int log_refused(typename V::vd x) {
    using L = Lanes<V::lanes>;
    return L::mask(refused_words<L>(L::hi32(x)));
}

// The test of the EP kernels that scale denormals in line: one bit per lane
// that fails 0 < x < inf (zeros, negatives, infinities, NaNs).
template <class V>
inline int log_refused_positive(typename V::vd x) {
    const typename V::vd ok =
        V::and_(V::lt(V::splat(0.0), x), V::lt(x, splat_bits<V>(Fp64::exp_mask)));
    return V::mask(ok) ^ ((1 << V::lanes) - 1);
}

// x = 2^k * m with m in [p, 2p) for the pivot pattern P, k as a double.
template <class V>
inline void split_pivot(typename V::vd x, uint64_t pivot, typename V::vd& k,
                        typename V::vd& m) {
    using vd = typename V::vd;
    using L = Lanes<V::lanes>;
    const vd P = splat_bits<V>(pivot);
    const vd d = V::sub_i64(x, P);
    k = L::to_double(L::template srai<20>(L::hi32(d)));
    m = V::add_i64(V::and_(d, splat_bits<V>(Fp64::mant_mask)), P);
}

// --- pivot 2/3 ---------------------------------------------------------------

struct PivotB {
    // 0.6666666666666666: m in [2/3, 4/3)
    static constexpr uint64_t pivot = 0x3fe5555555555555;
    // 0xfffab800 added to m's high word, shifted right by 12, gives the row
    // 0 at 2/3, 171 around 1 (both binades meet there) and 256 below 4/3;
    // shifting by 11 and masking with 511 << 1 gives the pair index.
    static constexpr int32_t row_bias = static_cast<int32_t>(0xfffab800u);
    static constexpr int32_t pair_mask = 511 << 1;
    static constexpr uint64_t high_half = 0xffffffff00000000;
};

template <class V>
struct SplitB {
    typename V::vd n, m_hi, m_lo;
    alignas(16) uint32_t pair[V::lanes < 4 ? 4 : V::lanes];
};

template <class V>
inline void split_b(typename V::vd x, SplitB<V>& s) {
    using L = Lanes<V::lanes>;
    typename V::vd m;
    split_pivot<V>(x, PivotB::pivot, s.n, m);
    L::store(s.pair, L::and_(L::template srli<11>(L::add(L::hi32(m), L::splat(PivotB::row_bias))),
                             L::splat(PivotB::pair_mask)));
    s.m_hi = V::and_(m, splat_bits<V>(PivotB::high_half));
    s.m_lo = V::sub(m, s.m_hi);
}

// split_b's pair index from the pattern of x, by the same integer steps in
// 64-bit registers.
constexpr uint32_t pair_b(uint64_t x_bits) {
    const uint64_t m = ((x_bits - PivotB::pivot) & Fp64::mant_mask) + PivotB::pivot;
    const uint32_t h = static_cast<uint32_t>(m >> 32) + static_cast<uint32_t>(PivotB::row_bias);
    return (h >> 11) & PivotB::pair_mask;
}

// --- pivot 0.74951171875 -----------------------------------------------------

struct PivotD {
    // 0.74951171875 = 0.75 - 2^-11: half a row below 0.75, so that rounding
    // m to the nearest 2^-10 gives rows 0 (c = 0.75) to 767 (c = 1.499)
    static constexpr uint64_t pivot = 0x3fe7fc0000000000;
    // 1572864.0 = 1.5*2^20: its ulp is 2^-32
    static constexpr double shifter = 1572864.0;
    // added to the sum's low word (m's fraction times 2^32): 0.25 (256 rows,
    // so that 0.75 is row 0) plus half a row, so that the shift by 22 rounds
    // to the row; the 32-bit sum wraps for m below 1. Shifting by 21 and
    // masking with 1023 << 1 gives the pair index.
    static constexpr int32_t row_bias = 0x40200000;
    static constexpr int32_t pair_mask = 1023 << 1;
    // (1 - pivot) * 2^53, the distance of 1's pattern from the pivot's
    static constexpr uint64_t one_offset = 0x0008040000000000;
    // clears the low 20 bits of m: m_hi, 33 significant bits or fewer
    static constexpr uint64_t m_hi_mask = 0xfffffffffff00000;
};

// The pivot's low word is zero, so the high word of bits(x) - pivot is the
// high word h of x minus the pivot's, with no borrow: k comes from h.
static_assert(zvl::low_word(zvl::from_bits(PivotD::pivot)) == 0, "k is taken from the high words");

template <class L>
inline typename L::vi exponent_d(typename L::vi h) {
    return L::template srai<20>(L::sub(h, L::splat(static_cast<int32_t>(PivotD::pivot >> 32))));
}

// The row split_d picks, from the bit pattern of x in 64-bit integer
// arithmetic. f is (m - p) * 2^53 below 1; from 1 on the pattern's unit is
// twice as large, and f + (f - one_offset) is that product again. split_d
// rounds m to a multiple of 2^-32 and then truncates to the 2^-10 rows;
// since the row edges are multiples of 2^-11, that equals truncating m +
// 2^-33 (a tie 2^-33 below an edge rounds to the edge, which is even). Any
// pattern gives a row in [0, 767].
constexpr uint32_t row_d(uint64_t x_bits) {
    const uint64_t f = (x_bits - PivotD::pivot) & Fp64::mant_mask;
    const uint64_t past_one = f - PivotD::one_offset;
    const uint64_t scaled = f + (static_cast<int64_t>(past_one) > 0 ? past_one : 0);
    return static_cast<uint32_t>((scaled + (uint64_t{1} << 20)) >> 43);
}

// k, m and the pair index of each lane, rounded by the shifter: the element
// routines and callouts take their rows this way, the blocks by row_d.
template <class V>
struct SplitD {
    typename V::vd k, m;
    alignas(16) uint32_t pair[V::lanes < 4 ? 4 : V::lanes];
};

template <class V>
inline void split_d(typename V::vd x, SplitD<V>& s) {
    using vd = typename V::vd;
    using L = Lanes<V::lanes>;
    split_pivot<V>(x, PivotD::pivot, s.k, s.m);
    const vd sum = V::add(s.m, V::splat(PivotD::shifter));
    L::store(s.pair, L::and_(L::template srli<21>(L::add(L::lo32(sum), L::splat(PivotD::row_bias))),
                             L::splat(PivotD::pair_mask)));
}

// r = a + b in its two exact parts: a = m_hi*R - 1, b = m_lo*R.
template <class V>
inline void exact_parts(typename V::vd m_hi, typename V::vd m_lo, typename V::vd R,
                        typename V::vd& a, typename V::vd& b) {
    a = V::sub(V::mul(m_hi, R), V::splat(1.0));
    b = V::mul(m_lo, R);
}

// The HA form of the pivot-0.7495 reduction, over a table of rows R, T_hi,
// T_lo, 0: k, the row's T in two parts, and r in two exact parts. The rows
// come from row_d, and k and the special-lane test from the high words.
template <class V>
struct PartsD {
    typename V::vd k, T_hi, T_lo, a, b;
};

// The parts of one vector x, given its k and its lanes' pair indices.
template <class V>
inline void parts_d(typename V::vd x, typename V::vd k, const uint32_t* pair,
                    const double* table, PartsD<V>& p) {
    using vd = typename V::vd;
    const vd P = splat_bits<V>(PivotD::pivot);
    const vd m = V::add_i64(V::and_(V::sub_i64(x, P), splat_bits<V>(Fp64::mant_mask)), P);
    const vd m_hi = V::and_(m, splat_bits<V>(PivotD::m_hi_mask));
    vd R, zero;
    V::gather_pairs(table, pair, R, p.T_hi);
    V::gather_pairs(table + 2, pair, p.T_lo, zero);
    p.k = k;
    exact_parts<V>(m_hi, V::sub(m, m_hi), R, p.a, p.b);
}

// One element (the element routine and the callouts).
inline void split_one(double x, const double* table, PartsD<Scalar>& p) {
    SplitD<Scalar> s;
    split_d<Scalar>(x, s);
    parts_d<Scalar>(x, s.k, s.pair, table, p);
}

// The pair indices of the N elements at src, each from its pattern by
// Pair (pair_b, or twice row_d), read from memory as 64-bit integers: the
// integer units then do the index work beside the vector arithmetic, which
// is what bounds the logarithm kernels. The empty asm keeps the compiler
// from taking the patterns out of the vector registers that hold the same
// elements instead.
template <int N, uint32_t (*Pair)(uint64_t)>
inline void pairs_from_inputs(const double* src, uint32_t* pair) {
    __asm__("" : "+r"(src));
    for (int l = 0; l < N; ++l) {
        uint64_t b;
        std::memcpy(&b, src + l, sizeof b);
        pair[l] = Pair(b);
    }
}

constexpr uint32_t pair_d(uint64_t x_bits) { return 2 * row_d(x_bits); }

// A block of NV vectors x, whose first element is at src: the parts of each
// vector, and one bit per refused lane (log_refused). SSE blocks take
// their vectors in pairs for k and the test, four lanes to the 32-bit
// instruction.
template <class V, int NV>
inline int split_block(const double* src, const typename V::vd* x, const double* table,
                       PartsD<V>* p) {
    using vd = typename V::vd;
    using L = Lanes<V::lanes>;
    uint32_t pair[NV * V::lanes];
    pairs_from_inputs<NV * V::lanes, pair_d>(src, pair);
    vd k[NV];
    int refused = 0;
    if constexpr (V::lanes == 2 && NV % 2 == 0) {
        for (int j = 0; j < NV; j += 2) {
            const typename L::vi h = L::hi32_pair(x[j], x[j + 1]);
            const typename L::vi e = exponent_d<L>(h);
            k[j] = L::to_double(e);
            k[j + 1] = L::to_double_upper(e);
            refused |= L::mask_pair(refused_words<L>(h)) << (j * 2);
        }
    } else {
        for (int j = 0; j < NV; ++j) {
            const typename L::vi h = L::hi32(x[j]);
            k[j] = L::to_double(exponent_d<L>(h));
            refused |= L::mask(refused_words<L>(h)) << (j * V::lanes);
        }
    }
    for (int j = 0; j < NV; ++j) parts_d<V>(x[j], k[j], pair + j * V::lanes, table, p[j]);
    return refused;
}

// The EP form of the pivot-0.7495 reduction, which takes denormals in line:
// they are scaled by 2^52 first (`tiny` marks them, for the caller's
// correction of k), and r = m*R - 1 is formed in one rounding.
template <class V>
struct SplitScaled {
    typename V::vd k, tiny, T, r;
};

// The pattern whose row scaled_parts takes: x's, or for a positive
// denormal x that of x * 2^52, by integer steps: with p the place of the
// fraction's leading bit, x * 2^52 = 2^(p - 1022) * (1 + the bits below).
// Zero gives 2^-1022 (its lane is refused); the shift count of the unused
// branch is kept below 64.
constexpr uint64_t scaled_pattern(uint64_t x_bits) {
    const int p = 63 - __builtin_clzll(x_bits | 1);
    const uint64_t scaled = (static_cast<uint64_t>(p + 1) << 52) |
                            ((x_bits << ((52 - p) & 63)) & Fp64::mant_mask);
    return x_bits < zvl::bits(Fp64::min_normal) ? scaled : x_bits;
}

constexpr uint32_t pair_scaled(uint64_t x_bits) { return 2 * row_d(scaled_pattern(x_bits)); }

// One vector's reduction; with pair null its rows are rounded by the
// shifter.
template <class V>
inline void scaled_parts(typename V::vd x, const uint32_t* pair, const double* table,
                         SplitScaled<V>& s) {
    using vd = typename V::vd;
    s.tiny = V::lt(x, V::splat(Fp64::min_normal));
    x = V::select(s.tiny, V::mul(x, V::splat(Fp64::two52)), x);
    SplitD<V> d;
    split_d<V>(x, d);
    vd R;
    V::gather_pairs(table, pair ? pair : d.pair, R, s.T);
    s.k = d.k;
    s.r = V::sub(V::mul(d.m, R), V::splat(1.0));
}

// One element, its row rounded by the shifter.
inline void split_one(double x, const double* table, SplitScaled<Scalar>& s) {
    scaled_parts<Scalar>(x, nullptr, table, s);
}

// A block, the rows from the inputs' patterns; the refused lanes' bits
// (log_refused_positive).
template <class V, int NV>
inline int split_block(const double* src, const typename V::vd* x, const double* table,
                       SplitScaled<V>* s) {
    uint32_t pair[NV * V::lanes];
    pairs_from_inputs<NV * V::lanes, pair_scaled>(src, pair);
    int refused = 0;
    for (int j = 0; j < NV; ++j) {
        scaled_parts<V>(x[j], pair + j * V::lanes, table, s[j]);
        refused |= log_refused_positive<V>(x[j]) << (j * V::lanes);
    }
    return refused;
}

// The restart form of the pivot-0.7495 kernels: F gives `table`,
// finish<V>(parts) for the result from its reduction's Parts (PartsD for
// Ln D and Log10 HA, SplitScaled for Ln E and Log10 EP), special() and the
// callout. The blocks take their rows from the inputs' patterns, the
// element routine by the shifter, the same rows.
template <class F, template <class> class Parts>
struct RestartLog : F {
    using form = forms::CheckedAt;
    template <class V, int NV>
    static bool checked_block_at(const double* src, const typename V::vd* x,
                                 typename V::vd* y) {
        Parts<V> p[NV];
        const int refused = split_block<V, NV>(src, x, F::table, p);
        for (int j = 0; j < NV; ++j) y[j] = F::template finish<V>(p[j]);
        return refused == 0;
    }
    static int32_t element(const double* x, double* y) {
        if (F::template special<Scalar>(*x) != 0) return F::callout(x, y);
        Parts<Scalar> p;
        split_one(*x, F::table, p);
        *y = F::template finish<Scalar>(p);
        return 0;
    }
};

// The two-part sum of the HA kernels: k*L_hi + T_hi + a + b + tail +
// (k*L_lo + T_lo), with L = log(2) in the kernel's base, in which only the
// final addition rounds at full size. It needs k*L_hi + T_hi exact (T_hi a
// multiple of L_hi's last bit, |k| < 2^11), a and b exact, that sum zero or
// larger than a in exponent, and a zero or larger than b; tail and the lo
// parts are small.
template <class V>
inline typename V::vd two_part_sum(typename V::vd k, double L_hi, double L_lo,
                                   typename V::vd T_hi, typename V::vd T_lo, typename V::vd a,
                                   typename V::vd b, typename V::vd tail) {
    using vd = typename V::vd;
    const vd hi = V::mul_add(k, V::splat(L_hi), T_hi);
    vd y, e1, z, e2;
    fast_two_sum<V>(hi, a, y, e1);
    fast_two_sum<V>(y, b, z, e2);
    const vd lo = V::add(V::add(tail, V::mul_add(k, V::splat(L_lo), T_lo)), V::add(e1, e2));
    return V::add(z, lo);
}

// The same sum for the pivot-0.7495 kernels (Ln D, Log10 HA), which have
// r = a + b rounded for their polynomials: y = hi + r rounds, and both
// roundings' errors come together as e = ((hi - y) + a) + b. hi - y is
// exact (hi is zero or larger than r), and so is its sum with a: hi - y is
// -r less y's rounding error, which leaves b less the two errors, below
// 2^-31 in size, while hi, y and a are all multiples of 2^-65 (hi of its
// table's unit, |y| >= 2^-13 unless hi is 0, where hi - y is -r and a - r
// is exact; a of 2^-52, or 2^-60 scaled for Log10). So e is the errors'
// sum rounded once, and the sum takes three additions fewer than the
// general form above.
template <class V>
inline typename V::vd two_part_sum_r(typename V::vd k, double L_hi, double L_lo,
                                     typename V::vd T_hi, typename V::vd T_lo, typename V::vd a,
                                     typename V::vd b, typename V::vd r, typename V::vd tail) {
    using vd = typename V::vd;
    const vd hi = V::mul_add(k, V::splat(L_hi), T_hi);
    const vd y = V::add(hi, r);
    const vd e = V::add(V::add(V::sub(hi, y), a), b);
    return V::add(y, V::add(V::add(tail, V::mul_add(k, V::splat(L_lo), T_lo)), e));
}

}  // namespace
