// The measuring rows of the trigonometric functions (see
// tools/common/functions.cpp).
#include "tools/common/rows/helpers.h"

namespace zvl_tools {
namespace {

// The peers of a function fn with vector arguments `args` ("v" or "vv"):
// glibc's libmvec at AVX2, AVX and SSE, and SLEEF's 1-ulp AVX and SSE4.1 and
// 3.5-ulp AVX functions.
#define ZT_TRIG_PEERS(fn, args)                                              \
    {                                                                        \
        mvec("libmvec AVX2", "_ZGVdN4" args "_" #fn, 4, Isa::Avx2),          \
        mvec("libmvec AVX", "_ZGVcN4" args "_" #fn, 4, Isa::Avx),            \
        mvec("libmvec SSE", "_ZGVbN2" args "_" #fn, 2, Isa::Base),           \
        sleef("SLEEF u10 AVX", "Sleef_" #fn "d4_u10avx", 4, Isa::Avx),       \
        sleef("SLEEF u35 AVX", "Sleef_" #fn "d4_u35avx", 4, Isa::Avx),       \
        sleef("SLEEF u10 SSE4", "Sleef_" #fn "d2_u10sse4", 2, Isa::Sse41),   \
    }

// ---------------------------------------------------------------- Sin, Cos

ZT_LOOP1(loop_sin, std::sin(x))
ZT_LOOP1(loop_cos, std::cos(x))

// Where a path changes: 2^-252, below which the callout returns x or 1;
// 2^17, from which it reduces with TrigReduce; the vector bounds 65568 (step
// pi/256), 90112 (step pi/32), 2^23 (Cos by pi, on x + pi/2) and 2^24 (Sin
// by pi); 1e15, the short form's mask; multiples of pi/2 and of the table
// steps, where the row changes.
const double trig_special[] = {
    0.0, -0.0, kTiny, kMin, 0x1p-252, 0x1p-26, 1.0, 0x1p17, 65568.0, 90112.0, 0x1p23,
    0x1p23 - 0x1.921fb54442d18p+0, 0x1p24, 1e15, 0x1p1023, kMax, kInf, -kInf, kNaN,
    0x1.921fb54442d18p+0, 0x1.921fb54442d18p+1, 0x1.921fb54442d18p+2, 0x1.921fb54442d18p-8 * 0.5,
    0x1.921fb54442d18p-4 * 0.5, 511.5 * 0x1.921fb54442d18p-7, 63.5 * 0x1.921fb54442d18p-4,
};

const Region trig_regions[] = {
    {lin(-10.0, 10.0), kNone, 3, "a few periods"},
    {lg2(0x1p-30, 65568.0), kNone, 3, "the step pi/256 path"},
    {lg2(65568.0, 0x1p24), kNone, 1, "past HA's vector bound, within LA's and EP's"},
    {lg2(0x1p24, kMax), kNone, 1, "huge arguments, the callout's reduction"},
    {lg2(kTiny, 0x1p-30), kNone, 0.25, "tiny arguments"},
};

const Peer sin_peers[] = ZT_TRIG_PEERS(sin, "v");
const Peer cos_peers[] = ZT_TRIG_PEERS(cos, "v");

// The short form of EP at cpu type 1 gives +0 for |x| > 1e15, infinities
// and NaN, silently; below that it keeps EP accuracy up to 2^18 only (see
// kernels/trig/sincos/sincos.h). Past 2^18 its results are not measured.
bool short_form_departs(int cpu, int mode, double a) {
    return cpu == 1 && mode == 2 && !(std::fabs(a) <= 0x1p18);
}

// A row of a one-argument function fn whose sampling is group's: its
// regions, special points and timing interval.
#define ZT_TRIG_ROW(fn, EXPORT, group, hard, departs_fn) \
    constexpr FunctionRow fn##_row = {                   \
        .name = #fn,                                     \
        .exported = #EXPORT,                             \
        .formula = #fn "(x)",                            \
        .shape = Shape::D1,                              \
        .ref1 = mpfr_##fn,                               \
        .regions = list(group##_regions),                \
        .special_a = list(group##_special),              \
        .mirror = true,                                  \
        .hardcases = hard,                               \
        .timing_a = group##_timing,                      \
        .ordinary_a = 0.75,                              \
        .plot_linear = true,                             \
        .baseline = local("glibc " #fn, loop_##fn),      \
        .peers = list(fn##_peers),                       \
        .departs = departs_fn,                           \
    };

constexpr Interval trig_timing = lin(-10.0, 10.0);

ZT_TRIG_ROW(sin, VDSIN, trig, "sin,near_pi2", short_form_departs)
ZT_TRIG_ROW(cos, VDCOS, trig, "cos,near_pi2", short_form_departs)

// ---------------------------------------------------------------- Atan

ZT_LOOP1(loop_atan, std::atan(x))

// Where a path changes: 2^-1020 and 2^993, the vector forms' refusal
// bounds; 2^-53 and 2^54, below and above which the callout returns x and
// pi/2; 0.125, the callout's switch from its polynomial to AtanBreakTable;
// 7/16, 11/16, 19/16 and 39/16, the HA reductions' breakpoints; 1, where
// the vector forms take the reciprocal; the breakpoints 1.25 and 1.75 of a
// half binade.
const double atan_special[] = {
    0.0, -0.0, kTiny, kMin, 0x1p-1020, 0x1p-53, 0x1p-26, 0.125, 0.4375, 0.6875, 1.0, 1.1875,
    1.25, 1.75, 2.4375, 0x1p54, 0x1p993, kMax, kInf, -kInf, kNaN,
};

const Region atan_regions[] = {
    {lin(-4.0, 4.0), kNone, 3, "the reductions' breakpoints"},
    {lg2(0x1p-30, 0x1p30), kNone, 3, "every binade of the vector forms"},
    {lg2(kTiny, 0x1p-30), kNone, 0.5, "tiny arguments, to the callout below 2^-1020"},
    {lg2(0x1p30, kMax), kNone, 0.5, "large arguments, to the callout from 2^993"},
};

const Peer atan_peers[] = ZT_TRIG_PEERS(atan, "v");

constexpr FunctionRow atan_row = {
    .name = "atan",
    .exported = "VDATAN",
    .formula = "atan(x)",
    .shape = Shape::D1,
    .ref1 = mpfr_atan,
    .regions = list(atan_regions),
    .special_a = list(atan_special),
    .mirror = true,
    .timing_a = lin(-4.0, 4.0),
    .ordinary_a = 0.75,
    .baseline = local("glibc atan", loop_atan),
    .peers = list(atan_peers),
};

// ---------------------------------------------------------------- Atan2

ZT_LOOP2(loop_atan2, std::atan2(x, y))

// y / x over every binade and both signs of x, tiny and huge quotients
// (the callout's paths where the exponents differ by 54 and 74), and
// denormal arguments, which the callout scales.
const Region atan2_regions[] = {
    {lin(-4.0, 4.0), lin(-4.0, 4.0), 3, "the four quadrants near the unit circle"},
    {lg2(0x1p-30, 0x1p30), lg2(0x1p-30, 0x1p30), 3, "quotients of every size the vector forms take"},
    {lg2(kTiny, kMax), lg2(kTiny, kMax), 1, "any pair, to the callout where far apart"},
    {lg2(kTiny, kMin), lg2(0x1p-60, 0x1p60), 0.5, "denormal y"},
    {lg2(0x1p-60, 0x1p60), lg2(kTiny, kMin), 0.5, "denormal x"},
};

// The pairs the special-value table settles, and the exponent differences
// at which the callout changes path.
const Pair atan2_pairs[] = {
    {0.0, 0.0}, {0.0, -0.0}, {-0.0, 0.0}, {-0.0, -0.0}, {0.0, 1.0}, {-0.0, -1.0},
    {1.0, 0.0}, {-1.0, -0.0}, {kInf, kInf}, {kInf, -kInf}, {-kInf, kInf}, {-kInf, -kInf},
    {kInf, 1.0}, {-kInf, -1.0}, {1.0, kInf}, {-1.0, -kInf}, {kNaN, 1.0}, {1.0, kNaN},
    {0x1p53, 1.0}, {0x1.fffffffffffffp53, 1.0}, {0x1p54, 1.0}, {0x1p54, -1.0}, {0x1p73, 1.0},
    {0x1.fffffffffffffp73, -1.0}, {0x1p74, 1.0}, {1.0, 0x1p53}, {1.0, -0x1p53}, {1.0, 0x1p54},
    {1.0, -0x1p54}, {kTiny, 1.0}, {kTiny, -1.0}, {kTiny, kMax}, {kMin, 0x1p60}, {kMax, kTiny},
    {0x1p-1022, 0x1p-1074}, {3 * kTiny, 5 * kTiny}, {kMax, kMax}, {-kMax, -kMax},
};

const Peer atan2_peers[] = ZT_TRIG_PEERS(atan2, "vv");

constexpr FunctionRow atan2_row = {
    .name = "atan2",
    .exported = "VDATAN2",
    .formula = "atan2(y, x)",
    .shape = Shape::D2,
    .ref2 = mpfr_atan2,
    .regions = list(atan2_regions),
    .special_a = list(atan_special),
    .special_b = list(atan_special),
    .special_pairs = list(atan2_pairs),
    .mirror = true,
    .timing_a = lin(-4.0, 4.0),
    .timing_b = lin(-4.0, 4.0),
    .ordinary_a = 0.75,
    .ordinary_b = 1.5,
    .baseline = local("glibc atan2", loop_atan2),
    .peers = list(atan2_peers),
};

// ---------------------------------------------------------------- Asin, Acos

ZT_LOOP1(loop_asin, std::asin(x))
ZT_LOOP1(loop_acos, std::acos(x))

// 0.5 and its neighbours, where z = x^2 gives way to (1 - |x|)/2 and the
// square root; +-1 and beyond, the fix-up; tiny arguments, where Asin gives
// x back.
const double asin_special[] = {
    0.0, -0.0, kTiny, kMin, 0x1p-26, 0.5, 0x1.0000000000001p-1, 0.75, 0x1.fffffffffffffp-1,
    1.0, 0x1.0000000000001p+0, 2.0, kMax, kInf, -kInf, kNaN,
};

const Region asin_regions[] = {
    {lin(-1.0, 1.0), kNone, 3, "the whole domain by value"},
    {lg2(0x1p-30, 0.5), kNone, 2, "the small-argument polynomial, every binade"},
    {lg2(0.5, 1.0), kNone, 2, "the square-root branch"},
    {lin(0.999, 1.0), kNone, 1, "next to 1, where (1 - |x|)/2 is tiny"},
    {lg2(kTiny, 0x1p-30), kNone, 0.25, "tiny arguments"},
};

const Peer asin_peers[] = ZT_TRIG_PEERS(asin, "v");
const Peer acos_peers[] = ZT_TRIG_PEERS(acos, "v");

constexpr Interval asin_timing = lin(-1.0, 1.0);

ZT_TRIG_ROW(asin, VDASIN, asin, nullptr, nullptr)
ZT_TRIG_ROW(acos, VDACOS, asin, nullptr, nullptr)

constexpr FunctionRow trig_rows[] = {cos_row, sin_row, acos_row, asin_row, atan_row, atan2_row};

}  // namespace

List<FunctionRow> rows_trig() { return list(trig_rows); }

}  // namespace zvl_tools
