// The measuring rows of the exponential, logarithm, power, root and rounding
// functions (see tools/common/functions.cpp).
#include "tools/common/rows/helpers.h"

namespace zvl_tools {
namespace {

// ---------------------------------------------------------------- Inv, Div

int ref_inv(mpfr_ptr r, mpfr_srcptr x, mpfr_rnd_t rnd) { return mpfr_ui_div(r, 1, x, rnd); }

ZT_LOOP1(loop_inv, 1.0 / x)
ZT_AVX ZT_LOOP1(loop_inv_avx, 1.0 / x)
ZT_LOOP2(loop_div, x / y)
ZT_AVX ZT_LOOP2(loop_div_avx, x / y)

// The range guards of the four-way product (types 1 to 4, LA and EP): inside
// them a block never restarts. sqrt(2) * 2^-256 and just under 2^256.
constexpr double kLowGuard = 0x1.6a09fp-256;
constexpr double kHighGuard = 0x1.fffffp+255;

// Divisors where some path changes: subnormals and the smallest normal
// (type 5 special lanes up to 2^-1022 exactly), the range guards, and the
// top binades, whose reciprocals are subnormal.
const double inv_special[] = {
    0.0, kTiny, 0x1.8p-1070, 0x1p-1023, kMin, 0x1.0000000000001p-1022, 0x1p-1021,
    kLowGuard, kHighGuard, 0x1p256, 1.0, 0x1p1020, 0x1p1021, 0x1.0000000000001p1021,
    0x1p1022, kMax, kInf, kNaN,
};

const Region inv_regions[] = {
    {lg(kMin, kMax), kNone, 3, "normal arguments, every binade"},
    {lg(-kMin, -kMax), kNone, 1, "negative normal arguments"},
    {lg2(kLowGuard, kHighGuard), kNone, 3, "inside the range guards of the four-way product"},
    {lg2(kTiny, kMin), kNone, 1, "subnormal arguments"},
    {lg2(0x1p1020, kMax), kNone, 1, "reciprocals in the subnormal range"},
    {lin(0.5, 2.0), kNone, 1, "around 1"},
};

const Peer inv_peers[] = {local("plain loop, AVX", loop_inv_avx, Isa::Avx)};

constexpr FunctionRow inv_row = {
    .name = "inv",
    .exported = "VDINV",
    .formula = "1/x",
    .shape = Shape::D1,
    .ref1 = ref_inv,
    .regions = list(inv_regions),
    .special_a = list(inv_special),
    .mirror = true,
    .timing_a = lg2(1e-3, 1e3),
    .ordinary_a = 4.0,
    .baseline = local("plain loop 1.0/a[i]", loop_inv),
    .peers = list(inv_peers),
};

const double div_special_a[] = {0.0, kTiny, kMin, 1.0, kMax, kInf, kNaN};

const Pair div_pairs[] = {
    {kInf, 0.0}, {kNaN, 0.0}, {0.0, 0.0}, {-0.0, 0.0}, {kInf, kInf},
    {1e308, 1e-308}, {kMax, 0.5}, {kMin, 2.0}, {kTiny, 0.5}, {kTiny, 2.0},
    {kMax, kTiny}, {kTiny, kMax}, {3.0, kLowGuard}, {3.0, kHighGuard},
};

const Region div_regions[] = {
    {lg2(kMin, kMax), lg2(kMin, kMax), 2, "any normal pair"},
    {lg2(0x1p-30, 0x1p30), lg2(kLowGuard, kHighGuard), 3,
     "divisors inside the range guards of the block paths"},
    {lg2(0.5, 0x1p20), lg2(kTiny, kMin), 1, "subnormal divisors"},
    {lg2(0x1p-20, 0x1p20), lg2(0x1p1020, kMax), 1, "divisors with a subnormal reciprocal"},
    {lg2(kTiny, 0x1p-1000), lg2(0x1p-60, 0x1p60), 1, "subnormal dividends and quotients"},
    {lg2(0x1p1000, kMax), lg2(0x1p-60, 0x1p60), 1, "quotients near overflow"},
    {lin(1.0, 2.0), lin(1.0, 2.0), 1, "mantissas only"},
};

const Peer div_peers[] = {local("plain loop, AVX", loop_div_avx, Isa::Avx)};

constexpr FunctionRow div_row = {
    .name = "div",
    .exported = "VDDIV",
    .formula = "a/b",
    .shape = Shape::D2,
    .ref2 = mpfr_div,
    .regions = list(div_regions),
    .special_a = list(div_special_a),
    .special_b = list(inv_special),
    .special_pairs = list(div_pairs),
    .mirror = true,
    .timing_a = lg2(1e-3, 1e3),
    .timing_b = lg2(1e-3, 1e3),
    .ordinary_a = 3.0,
    .ordinary_b = 2.0,
    .plot = PlotAxis::B,
    .baseline = local("plain loop a[i]/b[i]", loop_div),
    .peers = list(div_peers),
};

// ---------------------------------------------------------------- Exp

ZT_LOOP1(loop_exp, std::exp(x))

// 708.3955078125: the block's special-lane bound (high word 0x4086232a);
// 708.39611916346382: the bound held by Pow's EP stage; 709.782712893384:
// the largest argument with a finite result; -708.3964185322641: below it
// results are subnormal; -745.1332191019411: the last subnormal result;
// 2^-52: below it the callout returns x + 1. Then x*2^s/ln2 half-way between
// integers, where the table index changes, for the table sizes 2^s of the
// variants (64, 128, 1024, 2048), and whole multiples of ln2, where it wraps
// round to 0.
constexpr double kLn2 = 0x1.62e42fefa39efp-1;
const double exp_special[] = {
    0.0, -0.0, 0x1p-52, -0x1p-52, 0x1p-53, 1.0, -1.0, 0.5,
    708.3955078125, 708.39611916346382, 709.782712893384, 710.0,
    -708.3955078125, -708.3964185322641, -745.1332191019411, -745.2, kInf, -kInf, kNaN,
    37.5 * kLn2 / 64, -715.5 * kLn2 / 64, 1001.5 * kLn2 / 128, -20000.5 * kLn2 / 1024,
    700001.5 * kLn2 / 2048, 300 * kLn2, -500 * kLn2,
};

const Region exp_regions[] = {
    {lin(-708.3955078125, 708.3955078125), kNone, 4, "the block path"},
    {lg2(kTiny, 1.0), kNone, 1, "small arguments, down to where the callout adds 1"},
    {lin(708.3955078125, 709.782712893384), kNone, 1, "the callout's range below overflow"},
    {lin(-745.1332191019411, -708.3955078125), kNone, 1, "subnormal results"},
    {lin(709.782712893384, 800.0), kNone, 0.25, "overflow"},
    {lin(-800.0, -745.1332191019411), kNone, 0.25, "underflow to zero"},
};

const Peer exp_peers[] = {
    mvec("libmvec AVX2", "_ZGVdN4v_exp", 4, Isa::Avx2),
    mvec("libmvec AVX", "_ZGVcN4v_exp", 4, Isa::Avx),
    mvec("libmvec SSE", "_ZGVbN2v_exp", 2, Isa::Base),
    sleef("SLEEF u10 AVX2", "Sleef_expd4_u10avx2", 4, Isa::Avx2Fma),
    sleef("SLEEF u10 AVX", "Sleef_expd4_u10avx", 4, Isa::Avx),
    sleef("SLEEF u10 SSE4", "Sleef_expd2_u10sse4", 2, Isa::Sse41),
};

constexpr FunctionRow exp_row = {
    .name = "exp",
    .exported = "VDEXP",
    .formula = "exp(x)",
    .shape = Shape::D1,
    .ref1 = mpfr_exp,
    .regions = list(exp_regions),
    .special_a = list(exp_special),
    .hardcases = "exp",
    .timing_a = lin(-700.0, 700.0),
    .ordinary_a = 0.5,
    .plot_linear = true,
    .baseline = local("glibc exp", loop_exp),
    .peers = list(exp_peers),
};

// ---------------------------------------------------------------- Ln, Log10

ZT_LOOP1(loop_log, std::log(x))
ZT_LOOP1(loop_log10, std::log10(x))

// 2/3 and 4/3: ends of the mantissa interval of variants A to C, whose row
// holding 1 spans [1 - 2^-10, 1 + 2^-9); 0.74951171875 and 1.4990234375:
// ends of the interval of variants D and E (and of Log10), whose row holding
// 1 spans [1 - 2^-11, 1 + 2^-11), and 0.75 + 2^-11 is the edge of its first
// row; 2^-1022: the denormals begin below.
const double ln_special[] = {
    1.0, 0.6666666666666666, 1.3333333333333333, 1.0 - 0x1p-10, 1.0 + 0x1p-9,
    0.74951171875, 1.4990234375, 1.0 - 0x1p-11, 1.0 + 0x1p-11, 0.75 + 0x1p-11, 2.0, 0.5,
    0x1.0000000000001p0, 0x1.fffffffffffffp-1, kTiny, kMin, kMax, 0.0, -0.0, -1.0, -kMin,
    kInf, -kInf, kNaN,
};

const Region ln_regions[] = {
    {lg(kMin, kMax), kNone, 3, "normal arguments, every binade"},
    {lin(0.5, 2.0), kNone, 2, "around 1, where the mantissa interval wraps"},
    {lin(1.0 - 0.009765625, 1.0 + 0.009765625), kNone, 1, "near 1, where the result is small"},
    {lg(kTiny, kMin), kNone, 1, "subnormal arguments"},
    {lg(-kTiny, -kMax), kNone, 0.1, "negative arguments"},
};

const Peer ln_peers[] = {
    mvec("libmvec AVX2", "_ZGVdN4v_log", 4, Isa::Avx2),
    mvec("libmvec AVX", "_ZGVcN4v_log", 4, Isa::Avx),
    mvec("libmvec SSE", "_ZGVbN2v_log", 2, Isa::Base),
    sleef("SLEEF u10 AVX2", "Sleef_logd4_u10avx2", 4, Isa::Avx2Fma),
    sleef("SLEEF u35 AVX2", "Sleef_logd4_u35avx2", 4, Isa::Avx2Fma),
    sleef("SLEEF u10 AVX", "Sleef_logd4_u10avx", 4, Isa::Avx),
    sleef("SLEEF u10 SSE4", "Sleef_logd2_u10sse4", 2, Isa::Sse41),
};

constexpr FunctionRow ln_row = {
    .name = "ln",
    .exported = "VDLN",
    .formula = "ln(x)",
    .shape = Shape::D1,
    .ref1 = mpfr_log,
    .regions = list(ln_regions),
    .special_a = list(ln_special),
    .hardcases = "log",
    .timing_a = lg(1e-3, 1e3),
    .ordinary_a = 2.5,
    .baseline = local("glibc log", loop_log),
    .peers = list(ln_peers),
};

// Exact powers of ten must give exact results in HA; the ends of the
// reduction's interval and of its row holding 1 are Ln's.
const double log10_special[] = {
    1.0, 10.0, 100.0, 1e22, 1e23, 1e-5, 0.74951171875, 1.4990234375, 1.0 - 0x1p-11,
    1.0 + 0x1p-11, 2.0, 0.5, kTiny, kMin, kMax, 0.0, -0.0, -1.0, kInf, -kInf, kNaN,
};

const Region log10_regions[] = {
    {lg(kMin, kMax), kNone, 3, "normal arguments, every binade"},
    {lin(0.5, 2.0), kNone, 2, "around 1, where the mantissa interval wraps"},
    {lin(1.0 - 0.009765625, 1.0 + 0.009765625), kNone, 1, "near 1"},
    {lg(kTiny, kMin), kNone, 1, "subnormal arguments"},
    {lg(-kTiny, -kMax), kNone, 0.1, "negative arguments"},
};

const Peer log10_peers[] = {
    mvec("libmvec AVX2", "_ZGVdN4v_log10", 4, Isa::Avx2),
    mvec("libmvec AVX", "_ZGVcN4v_log10", 4, Isa::Avx),
    mvec("libmvec SSE", "_ZGVbN2v_log10", 2, Isa::Base),
    sleef("SLEEF u10 AVX2", "Sleef_log10d4_u10avx2", 4, Isa::Avx2Fma),
    sleef("SLEEF u10 AVX", "Sleef_log10d4_u10avx", 4, Isa::Avx),
    sleef("SLEEF u10 SSE4", "Sleef_log10d2_u10sse4", 2, Isa::Sse41),
};

constexpr FunctionRow log10_row = {
    .name = "log10",
    .exported = "VDLOG10",
    .formula = "log10(x)",
    .shape = Shape::D1,
    .ref1 = mpfr_log10,
    .regions = list(log10_regions),
    .special_a = list(log10_special),
    .hardcases = "log10",
    .timing_a = lg(1e-3, 1e3),
    .ordinary_a = 2.5,
    .baseline = local("glibc log10", loop_log10),
    .peers = list(log10_peers),
};

// ---------------------------------------------------------------- Pow, Powx

ZT_LOOP2(loop_pow, std::pow(x, y))

// x from the user's range or from a mix; y mostly chosen so that x^y lands
// in or just beyond the range of doubles, where all the work is.
double pow_x(Rng& rng, const Interval* a_range) {
    return a_range ? draw(rng, *a_range) : rng.by_bits(kMin, kMax);
}

double pow_y_for(Rng& rng, double x) {
    const double l = std::log2(std::fabs(x));
    if (l == 0 || !std::isfinite(l)) return rng.linear(-1100.0, 1100.0);
    return rng.linear(-1080.0, 1030.0) / l;
}

void pow_pairs(Rng& rng, const Interval* a_range, bool shared_b, size_t n, double* a,
               double* b) {
    if (shared_b) {
        // One y for the group: a small integer (negative x allowed), a
        // simple fraction, a huge one (x then within a hair of 1), or any
        // value; x then put where x^y is in range.
        double y;
        const uint64_t kind = rng.below(5);
        if (kind == 0)
            y = static_cast<double>(static_cast<int64_t>(rng.below(81)) - 40);
        else if (kind == 1)
            y = (static_cast<double>(rng.below(13)) - 6.0) / static_cast<double>(1 + rng.below(4));
        else if (kind == 4)
            y = std::copysign(std::exp2(rng.linear(10.0, 60.0)), rng.linear(-1.0, 1.0));
        else
            y = rng.linear(-64.0, 64.0);
        for (size_t i = 0; i < n; ++i) {
            double x;
            if (a_range || y == 0)
                x = pow_x(rng, a_range);
            else
                x = std::exp2(rng.linear(-1074.0, 1023.0) / y);
            if (kind == 0 && !a_range && (rng.next() & 1)) x = -x;
            a[i] = x;
            b[i] = y;
        }
        return;
    }
    for (size_t i = 0; i < n; ++i) {
        double x, y;
        switch (a_range ? 0 : rng.below(10)) {
            case 4:  // near 1, wide y: the logarithm's small end
                x = rng.linear(0.5, 2.0);
                y = rng.linear(-2000.0, 2000.0);
                break;
            case 8: {  // the first table intervals around 1, where log2 x and
                       // the table value nearly cancel, y*log2 x near the ends
                const double d = static_cast<double>(1 + rng.below(3)) - 0.5 + 0.2 * rng.unit();
                x = rng.below(2) ? 1.0 + d / 1024 : 1.0 - d / 2048;
                y = (rng.below(2) ? -1.0 : 1.0) * rng.linear(1000.0, 1024.0) / std::log2(x);
                break;
            }
            case 9:  // x within a few ulps of 1, huge y
                x = 1.0 + static_cast<double>(static_cast<int64_t>(rng.below(64)) - 32) * 0x1p-53;
                y = pow_y_for(rng, x);
                break;
            case 5:  // negative x with integer y
                x = -rng.by_bits(0x1p-20, 0x1p20);
                y = static_cast<double>(static_cast<int64_t>(rng.below(121)) - 60);
                break;
            case 6:  // subnormal x
                x = rng.by_bits(kTiny, kMin);
                y = pow_y_for(rng, x);
                break;
            case 7:  // small y
                x = rng.by_bits(0x1p-100, 0x1p100);
                y = rng.linear(-4.0, 4.0);
                break;
            default:
                x = pow_x(rng, a_range);
                y = pow_y_for(rng, x);
                break;
        }
        a[i] = x;
        b[i] = y;
    }
}

// The exact cases of the pow callout and the edges of the accurate core.
const Pair pow_pairs_special[] = {
    {kNaN, 0.0}, {1.0, kNaN}, {-1.0, kNaN}, {-1.0, kInf}, {-1.0, -kInf},
    {0.0, -kInf}, {-0.0, -kInf}, {2.0, kInf}, {2.0, -kInf}, {0.5, kInf}, {0.5, -kInf},
    {kInf, -2.0}, {kInf, 2.0}, {0.0, -3.0}, {-0.0, -3.0}, {-0.0, -2.5}, {0.0, 3.0},
    {-kInf, 3.0}, {-kInf, 2.0}, {-kInf, -3.0}, {-kInf, -2.0}, {-8.0, 1.0 / 3.0},
    {-8.0, 3.0}, {-0.0, 3.0}, {-0.0, 2.0}, {2.0, 1024.0}, {2.0, 1023.0}, {2.0, -1074.0},
    {2.0, -1075.0}, {2.0, -1080.0}, {2.0, -1022.5}, {-2.0, 0x1p53}, {-2.0, 1025.0},
    {10.0, 308.0}, {10.0, -323.0}, {kTiny, 0.5}, {kTiny, -0.5}, {kMax, 0.5},
    {0.5, 1074.0}, {1.0000000000000002, 1e18}, {0.9999999999999999, 1e18},
};

const Peer pow_peers[] = {
    mvec("libmvec AVX2", "_ZGVdN4vv_pow", 4, Isa::Avx2),
    mvec("libmvec AVX", "_ZGVcN4vv_pow", 4, Isa::Avx),
    mvec("libmvec SSE", "_ZGVbN2vv_pow", 2, Isa::Base),
    sleef("SLEEF u10 AVX2", "Sleef_powd4_u10avx2", 4, Isa::Avx2Fma),
    sleef("SLEEF u10 AVX", "Sleef_powd4_u10avx", 4, Isa::Avx),
    sleef("SLEEF u10 SSE4", "Sleef_powd2_u10sse4", 2, Isa::Sse41),
};

constexpr FunctionRow pow_row = {
    .name = "pow",
    .exported = "VDPOW",
    .formula = "pow(x, y)",
    .shape = Shape::D2,
    .ref2 = mpfr_pow,
    .sampler = pow_pairs,
    .special_pairs = list(pow_pairs_special),
    .hardcases = "pow",
    .timing_a = lg(1e-2, 1e2),
    .timing_b = lin(-10.0, 10.0),
    .ordinary_a = 2.5,
    .ordinary_b = 1.5,
    .baseline = local("glibc pow", loop_pow),
    .peers = list(pow_peers),
};

constexpr FunctionRow powx_row = {
    .name = "powx",
    .exported = "VDPOWX",
    .formula = "pow(x, b), one b",
    .shape = Shape::DX,
    .ref2 = mpfr_pow,
    .sampler = pow_pairs,
    .special_pairs = list(pow_pairs_special),
    .hardcases = "pow",
    .timing_a = lg(1e-2, 1e2),
    .timing_b = lin(2.5, 2.5),
    .ordinary_a = 2.5,
    .ordinary_b = 1.5,
    .baseline = local("glibc pow", loop_pow),
    .peers = list(pow_peers),
};

// ---------------------------------------------------------------- Roots

ZT_LOOP1(loop_sqrt, std::sqrt(x))
ZT_LOOP1(loop_invsqrt, 1.0 / std::sqrt(x))
ZT_LOOP1(loop_cbrt, std::cbrt(x))
ZT_LOOP1(loop_invcbrt, 1.0 / std::cbrt(x))

// 1/sqrt(x) as the expression reads: 1/sqrt(-0) = 1/-0 is minus infinity
// (MPFR's own rec_sqrt gives plus infinity there).
int ref_invsqrt(mpfr_ptr r, mpfr_srcptr x, mpfr_rnd_t rnd) {
    if (mpfr_zero_p(x)) {
        mpfr_set_inf(r, mpfr_signbit(x) ? -1 : 1);
        return 0;
    }
    return mpfr_rec_sqrt(r, x, rnd);
}

// 1/cbrt(x) with the root 32 bits wider than r: the two roundings stay far
// below what a double can see.
int ref_invcbrt(mpfr_ptr r, mpfr_srcptr x, mpfr_rnd_t rnd) {
    mpfr_t t;
    mpfr_init2(t, mpfr_get_prec(r) + 32);
    mpfr_cbrt(t, x, MPFR_RNDN);
    const int inexact = mpfr_ui_div(r, 1, t, rnd);
    mpfr_clear(t);
    return inexact;
}

// The ends of the estimate paths (2^-120, 2^120) and of InvSqrt HA's (2^1022,
// where 1/x leaves the normal range).
const double sqrt_special[] = {
    0.0, -0.0, 1.0, 2.0, 4.0, 0.25, 0x1.fffffffffffffp-1, kTiny, kMin, 0x1p-1023,
    kMax, kInf, -kInf, kNaN, -1.0, -kTiny, 0x1p-120, 0x1p120, 0x1p1022,
};

const Region sqrt_regions[] = {
    {lg(kMin, kMax), kNone, 3, "normal arguments, every binade"},
    {lg(kTiny, kMin), kNone, 1, "subnormal arguments"},
    {lin(1.0, 4.0), kNone, 1, "one period of the exponent's parity"},
    {lg(0x1p1016, kMax), kNone, 0.3, "1/x near and below the smallest normal"},
    {lg(-kTiny, -kMax), kNone, 0.2, "negative arguments"},
};

const Peer sqrt_peers[] = {
    sleef("SLEEF u05 AVX2", "Sleef_sqrtd4_u05avx2", 4, Isa::Avx2Fma),
    sleef("SLEEF u35 AVX2", "Sleef_sqrtd4_u35avx2", 4, Isa::Avx2Fma),
    sleef("SLEEF u05 AVX", "Sleef_sqrtd4_u05avx", 4, Isa::Avx),
    sleef("SLEEF u05 SSE4", "Sleef_sqrtd2_u05sse4", 2, Isa::Sse41),
};

constexpr FunctionRow sqrt_row = {
    .name = "sqrt",
    .exported = "VDSQRT",
    .formula = "sqrt(x)",
    .shape = Shape::D1,
    .ref1 = mpfr_sqrt,
    .regions = list(sqrt_regions),
    .special_a = list(sqrt_special),
    .timing_a = lg(1e-3, 1e3),
    .ordinary_a = 2.25,
    .baseline = local("glibc sqrt", loop_sqrt),
    .peers = list(sqrt_peers),
};

constexpr FunctionRow invsqrt_row = {
    .name = "invsqrt",
    .exported = "VDINVSQRT",
    .formula = "1/sqrt(x)",
    .shape = Shape::D1,
    .ref1 = ref_invsqrt,
    .regions = list(sqrt_regions),
    .special_a = list(sqrt_special),
    .hardcases = "rsqrt",
    .timing_a = lg(1e-3, 1e3),
    .ordinary_a = 2.25,
    .baseline = local("1.0/glibc sqrt", loop_invsqrt),
};

// 2^1022: InvCbrt HA takes 1/a up to here in its vector path.
const double cbrt_special[] = {
    0.0, 1.0, 8.0, 27.0, 0.125, 2.0, 0x1.fffffffffffffp-1, kTiny, kMin, kMax, kInf, kNaN,
    0x1p1022,
};

const Region cbrt_regions[] = {
    {lg2(kMin, kMax), kNone, 3, "normal arguments, every binade"},
    {lg2(kTiny, kMin), kNone, 1, "subnormal arguments"},
    {lg2(1.0, 8.0), kNone, 1, "one period of the exponent's remainder by 3"},
    {lg2(0x1p1016, kMax), kNone, 0.3, "1/x near and below the smallest normal"},
};

const Peer cbrt_peers[] = {
    mvec("libmvec AVX2", "_ZGVdN4v_cbrt", 4, Isa::Avx2),
    mvec("libmvec AVX", "_ZGVcN4v_cbrt", 4, Isa::Avx),
    mvec("libmvec SSE", "_ZGVbN2v_cbrt", 2, Isa::Base),
    sleef("SLEEF u10 AVX2", "Sleef_cbrtd4_u10avx2", 4, Isa::Avx2Fma),
    sleef("SLEEF u35 AVX2", "Sleef_cbrtd4_u35avx2", 4, Isa::Avx2Fma),
    sleef("SLEEF u10 AVX", "Sleef_cbrtd4_u10avx", 4, Isa::Avx),
    sleef("SLEEF u10 SSE4", "Sleef_cbrtd2_u10sse4", 2, Isa::Sse41),
};

constexpr FunctionRow cbrt_row = {
    .name = "cbrt",
    .exported = "VDCBRT",
    .formula = "cbrt(x)",
    .shape = Shape::D1,
    .ref1 = mpfr_cbrt,
    .regions = list(cbrt_regions),
    .special_a = list(cbrt_special),
    .mirror = true,
    .hardcases = "cbrt",
    .timing_a = lg2(1e-3, 1e3),
    .ordinary_a = 3.375,
    .baseline = local("glibc cbrt", loop_cbrt),
    .peers = list(cbrt_peers),
};

constexpr FunctionRow invcbrt_row = {
    .name = "invcbrt",
    .exported = "VDINVCBRT",
    .formula = "1/cbrt(x)",
    .shape = Shape::D1,
    .ref1 = ref_invcbrt,
    .regions = list(cbrt_regions),
    .special_a = list(cbrt_special),
    .mirror = true,
    .timing_a = lg2(1e-3, 1e3),
    .ordinary_a = 3.375,
    .baseline = local("1.0/glibc cbrt", loop_invcbrt),
};

// ---------------------------------------------------------------- Rounding

ZT_LOOP1(loop_ceil, std::ceil(x))
ZT_LOOP1(loop_floor, std::floor(x))
ZT_LOOP1(loop_nearbyint, std::nearbyint(x))
ZT_LOOP1(loop_rint, std::rint(x))
ZT_LOOP1(loop_round, std::round(x))
ZT_LOOP1(loop_trunc, std::trunc(x))
// The same compiled for AVX, where the compiler vectorises them; Round as
// the truncation of x plus the double just below a half, with the sign of x
// (exact in round to nearest), since std::round stays a call (this one too
// stays scalar unless the compiler may ignore the exception flags).
ZT_AVX ZT_LOOP1(loop_ceil_avx, std::ceil(x))
ZT_AVX ZT_LOOP1(loop_floor_avx, std::floor(x))
ZT_AVX ZT_LOOP1(loop_nearbyint_avx, std::nearbyint(x))
ZT_AVX ZT_LOOP1(loop_rint_avx, std::rint(x))
ZT_AVX ZT_LOOP1(loop_round_avx, std::trunc(x + std::copysign(0.49999999999999994, x)))
ZT_AVX ZT_LOOP1(loop_trunc_avx, std::trunc(x))

int ref_ceil(mpfr_ptr r, mpfr_srcptr x, mpfr_rnd_t) { return mpfr_ceil(r, x); }
int ref_floor(mpfr_ptr r, mpfr_srcptr x, mpfr_rnd_t) { return mpfr_floor(r, x); }
int ref_rint(mpfr_ptr r, mpfr_srcptr x, mpfr_rnd_t) { return mpfr_rint(r, x, MPFR_RNDN); }
int ref_round(mpfr_ptr r, mpfr_srcptr x, mpfr_rnd_t) { return mpfr_round(r, x); }
int ref_trunc(mpfr_ptr r, mpfr_srcptr x, mpfr_rnd_t) { return mpfr_trunc(r, x); }

// Halves, the last doubles below them, and 2^52, from where every double is
// an integer.
const double rounding_special[] = {
    0.0, 0.5, 0.49999999999999994, 1.5, 2.5, 1.0, kTiny, kMin,
    0x1p52, 0x1p52 - 0.5, 0x1p53, 0x1p52 + 1.0, kMax, kInf, kNaN,
};

const Region rounding_regions[] = {
    {lg2(kTiny, 0x1p60), kNone, 3, "every binade up to where all doubles are integers"},
    {lin(-10.0, 10.0), kNone, 2, "small arguments"},
    {lg2(0x1p60, kMax), kNone, 0.5, "integers only"},
};

#define ZT_ROUNDING_ROW(fn, EXPORT, ref)                   \
    constexpr FunctionRow fn##_row = {                       \
        .name = #fn,                                       \
        .exported = #EXPORT,                               \
        .formula = #fn "(x)",                              \
        .shape = Shape::R1,                                \
        .ref1 = ref,                                       \
        .regions = list(rounding_regions),                 \
        .special_a = list(rounding_special),               \
        .mirror = true,                                    \
        .timing_a = lin(-1e6, 1e6),                        \
        .ordinary_a = 2.25,                                \
        .baseline = local("glibc " #fn, loop_##fn),        \
        .peers = list(fn##_peers),                         \
    };

const Peer ceil_peers[] = {local("plain loop, AVX", loop_ceil_avx, Isa::Avx)};
const Peer floor_peers[] = {local("plain loop, AVX", loop_floor_avx, Isa::Avx)};
const Peer nearbyint_peers[] = {local("plain loop, AVX", loop_nearbyint_avx, Isa::Avx)};
const Peer rint_peers[] = {local("plain loop, AVX", loop_rint_avx, Isa::Avx)};
const Peer round_peers[] = {local("plain loop, AVX", loop_round_avx, Isa::Avx)};
const Peer trunc_peers[] = {local("plain loop, AVX", loop_trunc_avx, Isa::Avx)};

ZT_ROUNDING_ROW(ceil, VDCEIL, ref_ceil)
ZT_ROUNDING_ROW(floor, VDFLOOR, ref_floor)
ZT_ROUNDING_ROW(nearbyint, VDNEARBYINT, ref_rint)
ZT_ROUNDING_ROW(rint, VDRINT, ref_rint)
ZT_ROUNDING_ROW(round, VDROUND, ref_round)
ZT_ROUNDING_ROW(trunc, VDTRUNC, ref_trunc)

constexpr FunctionRow explog_rows[] = {
    inv_row,  div_row,      pow_row,      powx_row,  exp_row,   ln_row,   log10_row,
    sqrt_row, invsqrt_row,  cbrt_row,     invcbrt_row,
    ceil_row, floor_row,    nearbyint_row, rint_row, round_row, trunc_row,
};

}  // namespace

List<FunctionRow> rows_explog() { return list(explog_rows); }

}  // namespace zvl_tools
