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
// glibc's sincos, keeping one output (it computes both)
double sincos_sin(double x) {
    double s, c;
    ::sincos(x, &s, &c);
    return s;
}
double sincos_cos(double x) {
    double s, c;
    ::sincos(x, &s, &c);
    return c;
}
ZT_LOOP1(loop_sincos_sin, sincos_sin(x))
ZT_LOOP1(loop_sincos_cos, sincos_cos(x))

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

// A one-argument row: name, export, special points, regions, whether -p is
// swept as well, hard-case files (or nullptr), timing interval, an argument
// of the vector path, and the departures (or nullptr).
#define ZT_ROW1(fn, EXPORT, points, spread, odd, cases, timing, ordinary, departures) \
    constexpr FunctionRow fn##_row = {                                               \
        .name = #fn,                                                                 \
        .exported = #EXPORT,                                                         \
        .formula = #fn "(x)",                                                        \
        .shape = Shape::D1,                                                          \
        .ref1 = mpfr_##fn,                                                           \
        .regions = list(spread),                                                     \
        .special_a = list(points),                                                   \
        .mirror = odd,                                                               \
        .hardcases = cases,                                                          \
        .timing_a = timing,                                                          \
        .ordinary_a = ordinary,                                                      \
        .plot_linear = true,                                                         \
        .baseline = local("glibc " #fn, loop_##fn),                                  \
        .peers = list(fn##_peers),                                                   \
        .departs = departures,                                                       \
    };

#define ZT_TRIG_ROW(fn, EXPORT)                                                 \
    ZT_ROW1(fn, EXPORT, trig_special, trig_regions, true, #fn ",near_pi2", \
            lin(-10.0, 10.0), 0.75, short_form_departs)

ZT_TRIG_ROW(sin, VDSIN)
ZT_TRIG_ROW(cos, VDCOS)

// The row of `name` for the sine or cosine `fn`, output `out` of EXPORT,
// timed beside glibc's loop of `name`.
#define ZT_SINCOS_ROW(name_, fn, EXPORT, out)             \
    constexpr FunctionRow name_##_row = {                 \
        .name = #name_,                                   \
        .exported = #EXPORT,                              \
        .formula = #fn "(x)",                             \
        .shape = Shape::D1,                               \
        .output = out,                                    \
        .ref1 = mpfr_##fn,                                \
        .regions = list(trig_regions),                    \
        .special_a = list(trig_special),                  \
        .mirror = true,                                   \
        .hardcases = #fn ",near_pi2",                     \
        .timing_a = lin(-10.0, 10.0),                     \
        .ordinary_a = 0.75,                               \
        .plot_linear = true,                              \
        .baseline = local("glibc " #name_, loop_##name_), \
        .departs = short_form_departs,                    \
    };

// SinCos: one row per output, each against MPFR's function of that output
// and timed beside glibc's sincos.
ZT_SINCOS_ROW(sincos_sin, sin, VDSINCOS, 1)
ZT_SINCOS_ROW(sincos_cos, cos, VDSINCOS, 2)

// ---------------------------------------------------------------- Tan

ZT_LOOP1(loop_tan, std::tan(x))

// Where a path changes: 2^-252, below which the callout returns x; 12800,
// from which the scalar tangent reduces with TrigReduce (and cpu type 0's HA
// refuses); 128000, the bound of the other kernels; odd multiples of pi/2,
// the poles, and of pi/4, where LA and EP exchange numerator and
// denominator; the rows of the scalar tangent around the pole.
const double tan_special[] = {
    0.0, -0.0, kTiny, kMin, 0x1p-252, 0x1p-26, 1.0, 12800.0, 128000.0, 0x1p17, 0x1p1023, kMax, kInf,
    -kInf, kNaN, 0x1.921fb54442d18p+0, 3 * 0x1.921fb54442d18p+0, 0x1.921fb54442d18p-1,
    3 * 0x1.921fb54442d18p-1, 8.5 * 0x1.921fb54442d18p-4, 15.5 * 0x1.921fb54442d18p-4,
};

const Region tan_regions[] = {
    {lin(-10.0, 10.0), kNone, 3, "a few periods"},
    {lg2(0x1p-30, 12800.0), kNone, 2, "cpu type 0's vector path"},
    {lg2(12800.0, 128000.0), kNone, 2, "the other vector paths, TrigReduce in the callout"},
    {lg2(128000.0, kMax), kNone, 1, "huge arguments, the callout's reduction"},
    {lg2(kTiny, 0x1p-30), kNone, 0.25, "tiny arguments"},
};

const Peer tan_peers[] = ZT_TRIG_PEERS(tan, "v");

constexpr FunctionRow tan_row = {
    .name = "tan",
    .exported = "VDTAN",
    .formula = "tan(x)",
    .shape = Shape::D1,
    .ref1 = mpfr_tan,
    .regions = list(tan_regions),
    .special_a = list(tan_special),
    .mirror = true,
    .hardcases = "tan,near_pi2",
    .timing_a = lin(-10.0, 10.0),
    .ordinary_a = 0.75,
    .plot_linear = true,
    .baseline = local("glibc tan", loop_tan),
    .peers = list(tan_peers),
    .pair_variants = "LP",
};

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

ZT_ROW1(asin, VDASIN, asin_special, asin_regions, true, nullptr, asin_timing, 0.75, nullptr)
ZT_ROW1(acos, VDACOS, asin_special, asin_regions, true, nullptr, asin_timing, 0.75, nullptr)

// ---------------------------------------------------------------- Sinh, Cosh

ZT_LOOP1(loop_sinh, std::sinh(x))
ZT_LOOP1(loop_cosh, std::cosh(x))

// 1/8, where Sinh's vector range starts (below it the callout's polynomial);
// 40, from which e^-|x| is dropped; 708.39892578125, where the vector range
// ends; 710.47586007394386, the last finite result.
const double hyperbolic_special[] = {
    0.0, kTiny, kMin, 0x1p-26, 0.125, 1.0, 40.0, 708.39892578125, 0x1.633ce8fb9f87dp+9,
    1000.0, kMax, kInf, kNaN,
};

const Region hyperbolic_regions[] = {
    {lin(-10.0, 10.0), kNone, 3, "where both exponentials count"},
    {lg2(0x1p-30, 710.5), kNone, 3, "every binade up to overflow"},
    {lg2(kTiny, 0x1p-30), kNone, 0.5, "tiny arguments"},
    {lg2(710.5, kMax), kNone, 0.25, "overflow"},
};

// The peers of the hyperbolic functions and their inverses: libmvec's and
// SLEEF's 1-ulp functions (SLEEF's on |a| up to `sleef_to`, 0 for all), and
// any more (SLEEF's 3.5-ulp ones) after them.
#define ZT_HYP_PEERS(fn, sleef_to, ...)                                               \
    const Peer fn##_peers[] = {                                                       \
        mvec("libmvec AVX2", "_ZGVdN4v_" #fn, 4, Isa::Avx2),                          \
        mvec("libmvec AVX", "_ZGVcN4v_" #fn, 4, Isa::Avx),                            \
        mvec("libmvec SSE", "_ZGVbN2v_" #fn, 2, Isa::Base),                           \
        sleef("SLEEF u10 AVX", "Sleef_" #fn "d4_u10avx", 4, Isa::Avx, sleef_to),      \
        sleef("SLEEF u10 SSE4", "Sleef_" #fn "d2_u10sse4", 2, Isa::Sse41, sleef_to),  \
        __VA_ARGS__};
#define ZT_SLEEF_U35(fn) sleef("SLEEF u35 AVX", "Sleef_" #fn "d4_u35avx", 4, Isa::Avx)

ZT_HYP_PEERS(sinh, 0, ZT_SLEEF_U35(sinh))
ZT_HYP_PEERS(cosh, 0, ZT_SLEEF_U35(cosh))

// A row of the hyperbolic functions and their inverses, with no hard-case
// files and no departures.
#define ZT_HYP_ROW(fn, EXPORT, points, spread, odd, timing, ordinary) \
    ZT_ROW1(fn, EXPORT, points, spread, odd, nullptr, timing, ordinary, nullptr)

ZT_HYP_ROW(sinh, VDSINH, hyperbolic_special, hyperbolic_regions, true, lin(-10.0, 10.0), 0.75)
ZT_HYP_ROW(cosh, VDCOSH, hyperbolic_special, hyperbolic_regions, true, lin(-10.0, 10.0), 0.75)

// ---------------------------------------------------------------- Tanh

ZT_LOOP1(loop_tanh, std::tanh(x))

// 1/8, 0.140625 and 0.171875: the end of row 0 and the centres of rows 1
// and 2; 2^-8 inside row 0; 18, the centre of row 29; 20, from which row
// 30 gives exactly 1.
const double tanh_special[] = {
    0.0, kTiny, kMin, 0x1p-26, 0x1p-8, 0.125, 0.140625, 0.171875, 0.25, 1.0, 18.0, 20.0,
    22.0, kMax, kInf, kNaN,
};

const Region tanh_regions[] = {
    {lin(-5.0, 5.0), kNone, 3, "where tanh is not yet 1"},
    {lg2(0x1p-30, 20.0), kNone, 3, "every row of the table"},
    {lg2(kTiny, 0x1p-30), kNone, 0.5, "tiny arguments"},
    {lg2(20.0, kMax), kNone, 0.25, "the constant row"},
};


ZT_HYP_PEERS(tanh, 0, ZT_SLEEF_U35(tanh))
ZT_HYP_ROW(tanh, VDTANH, tanh_special, tanh_regions, true, lin(-5.0, 5.0), 0.75)

// ---------------------------------------------------------------- Asinh, Acosh, Atanh

ZT_LOOP1(loop_asinh, std::asinh(x))
ZT_LOOP1(loop_acosh, std::acosh(x))
ZT_LOOP1(loop_atanh, std::atanh(x))

// 1/8, below which HA takes its series; 0.5625, where LA's and EP's vector
// range starts; 2^28, from which HA takes 2|x|; 1e154, from which LA and EP
// take |x| and add ln 2.
const double asinh_special[] = {
    0.0, kTiny, kMin, 0x1p-26, 0.125, 0.5625, 1.0, 0x1p28, 1e154, kMax, kInf, kNaN,
};
const Region asinh_regions[] = {
    {lin(-10.0, 10.0), kNone, 3, "around the switches"},
    {lg2(0x1p-30, kMax), kNone, 3, "every binade"},
    {lg2(kTiny, 0x1p-30), kNone, 0.5, "tiny arguments"},
};

// 1.0625 and 1.13001, HA's and LA's switches to the expansion about 1;
// 2^28 and 1e154, as Asinh's; below 1 the domain error.
const double acosh_special[] = {
    1.0, 0x1.0000000000001p0, 1.0625, 1.13001, 2.0, 0x1p28, 1e154, kMax, kInf, kNaN,
    0x1.fffffffffffffp-1, 0.5, 0.0, -0.0, -1.0, -kInf,
};
const Region acosh_regions[] = {
    {lin(1.0, 1.2), kNone, 3, "around the switches near 1"},
    {lin(1.0, 1.0 + 0x1p-20), kNone, 1, "next to 1, where the result is small"},
    {lg(1.0, kMax), kNone, 3, "every binade"},
    {lg2(kTiny, 1.0), kNone, 0.1, "below the domain"},
};

// 2^-8 and 1/4, HA's and LA's switches from the series; +-1, the poles.
const double atanh_special[] = {
    0.0, kTiny, kMin, 0x1p-26, 0x1p-8, 0.25, 0.5, 0x1.fffffffffffffp-1, 1.0,
    0x1.0000000000001p0, 2.0, kInf, kNaN,
};
const Region atanh_regions[] = {
    {lin(-1.0, 1.0), kNone, 4, "the open interval"},
    {lg2(0x1p-30, 1.0), kNone, 2, "every binade"},
    {lin(1.0 - 0x1p-20, 1.0), kNone, 1, "near the poles"},
    {lg2(kTiny, 0x1p-30), kNone, 0.5, "tiny arguments"},
    {lg2(1.0, kMax), kNone, 0.1, "beyond +-1"},
};

// SLEEF's asinh and acosh overflow from 1.34e154 on, beyond their domain.
ZT_HYP_PEERS(asinh, 1.34e154)
ZT_HYP_PEERS(acosh, 1.34e154)
ZT_HYP_PEERS(atanh, 0)

ZT_HYP_ROW(asinh, VDASINH, asinh_special, asinh_regions, true, lin(-10.0, 10.0), 0.75)
ZT_HYP_ROW(acosh, VDACOSH, acosh_special, acosh_regions, false, lin(1.0, 10.0), 2.0)
ZT_HYP_ROW(atanh, VDATANH, atanh_special, atanh_regions, true, lin(-0.99, 0.99), 0.5)

constexpr FunctionRow trig_rows[] = {cos_row,   sin_row,   sincos_sin_row, sincos_cos_row, tan_row,
                                     acos_row,  asin_row,  atan_row,       atan2_row,      cosh_row,
                                     sinh_row,  tanh_row,  acosh_row,      asinh_row,      atanh_row};

}  // namespace

List<FunctionRow> rows_trig() { return list(trig_rows); }

}  // namespace zvl_tools
