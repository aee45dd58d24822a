// The measuring rows of the trigonometric functions (see
// tools/common/functions.cpp).
#include "tools/common/rows/helpers.h"

namespace zvl_tools {
namespace {

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

const Peer sin_peers[] = {
    mvec("libmvec AVX2", "_ZGVdN4v_sin", 4, Isa::Avx2),
    mvec("libmvec AVX", "_ZGVcN4v_sin", 4, Isa::Avx),
    mvec("libmvec SSE", "_ZGVbN2v_sin", 2, Isa::Base),
    sleef("SLEEF u10 AVX", "Sleef_sind4_u10avx", 4, Isa::Avx),
    sleef("SLEEF u35 AVX", "Sleef_sind4_u35avx", 4, Isa::Avx),
    sleef("SLEEF u10 SSE4", "Sleef_sind2_u10sse4", 2, Isa::Sse41),
};
const Peer cos_peers[] = {
    mvec("libmvec AVX2", "_ZGVdN4v_cos", 4, Isa::Avx2),
    mvec("libmvec AVX", "_ZGVcN4v_cos", 4, Isa::Avx),
    mvec("libmvec SSE", "_ZGVbN2v_cos", 2, Isa::Base),
    sleef("SLEEF u10 AVX", "Sleef_cosd4_u10avx", 4, Isa::Avx),
    sleef("SLEEF u35 AVX", "Sleef_cosd4_u35avx", 4, Isa::Avx),
    sleef("SLEEF u10 SSE4", "Sleef_cosd2_u10sse4", 2, Isa::Sse41),
};

// The short form of EP at cpu type 1 gives +0 for |x| > 1e15, infinities
// and NaN, silently; below that it keeps EP accuracy up to 2^18 only (see
// kernels/trig/sincos/sincos.h). Past 2^18 its results are not measured.
bool short_form_departs(int cpu, int mode, double a) {
    return cpu == 1 && mode == 2 && !(std::fabs(a) <= 0x1p18);
}

// The row of `name` for the sine or cosine `fn`, output `out` of EXPORT (0
// for a function of one output), timed beside glibc's loop of `name`.
#define ZT_TRIG_ROW_OF(name_, fn, EXPORT, out, peers_)   \
    constexpr FunctionRow name_##_row = {                \
        .name = #name_,                                  \
        .exported = #EXPORT,                             \
        .formula = #fn "(x)",                            \
        .shape = Shape::D1,                              \
        .output = out,                                   \
        .ref1 = mpfr_##fn,                               \
        .regions = list(trig_regions),                   \
        .special_a = list(trig_special),                 \
        .mirror = true,                                  \
        .hardcases = #fn ",near_pi2",                    \
        .timing_a = lin(-10.0, 10.0),                    \
        .ordinary_a = 0.75,                              \
        .plot_linear = true,                             \
        .baseline = local("glibc " #name_, loop_##name_), \
        .peers = peers_,                                 \
        .departs = short_form_departs,                   \
    };
#define ZT_TRIG_ROW(fn, EXPORT) ZT_TRIG_ROW_OF(fn, fn, EXPORT, 0, list(fn##_peers))

ZT_TRIG_ROW(sin, VDSIN)
ZT_TRIG_ROW(cos, VDCOS)
// SinCos: one row per output, each against MPFR's function of that output
// and timed beside glibc's sincos.
ZT_TRIG_ROW_OF(sincos_sin, sin, VDSINCOS, 1, {})
ZT_TRIG_ROW_OF(sincos_cos, cos, VDSINCOS, 2, {})

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

const Peer tan_peers[] = {
    mvec("libmvec AVX2", "_ZGVdN4v_tan", 4, Isa::Avx2),
    mvec("libmvec AVX", "_ZGVcN4v_tan", 4, Isa::Avx),
    mvec("libmvec SSE", "_ZGVbN2v_tan", 2, Isa::Base),
    sleef("SLEEF u10 AVX", "Sleef_tand4_u10avx", 4, Isa::Avx),
    sleef("SLEEF u35 AVX", "Sleef_tand4_u35avx", 4, Isa::Avx),
    sleef("SLEEF u10 SSE4", "Sleef_tand2_u10sse4", 2, Isa::Sse41),
};

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

constexpr FunctionRow trig_rows[] = {cos_row, sin_row, sincos_sin_row, sincos_cos_row, tan_row};

}  // namespace

List<FunctionRow> rows_trig() { return list(trig_rows); }

}  // namespace zvl_tools
