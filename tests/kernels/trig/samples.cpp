#include "tests/kernels/trig/samples.h"

#include <mpfr.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "tools/accuracy/accuracy.h"
#include "tools/common/rng.h"

namespace zvl_test {
namespace {

using zvl_tools::Rng;

constexpr double kInf = __builtin_inf();
constexpr double kMin = 0x1p-1022;
constexpr double kMax = 0x1.fffffffffffffp+1023;
constexpr double kDenormMin = 0x1p-1074;

// Magnitudes over [lo, hi], by bit pattern (every binade alike) or by value.
struct Range {
    double lo, hi;
    bool by_bits;
    double share;  // of the random samples
};

// One function's sampling: magnitude ranges (signs drawn at random where
// the function takes both) and the points where an algorithm changes.
struct Plan {
    const char* fn;
    bool both_signs;
    std::vector<Range> ranges;
    std::vector<double> edges;
};

// Sinh and Cosh: the whole range, the small polynomial, the range where
// e^-|x| counts, and up to overflow.
const std::vector<Range> kHyperbolicRanges = {{kDenormMin, kMax, true, 0.2},
                                              {0x1p-30, 0x1p10, true, 0.3},
                                              {0.0, 1.0, false, 0.2},
                                              {0.1, 45.0, false, 0.15},
                                              {700.0, 711.0, false, 0.15}};
// Where they change path: the small polynomial, the vector range,
// dropping e^-|x|, the last finite result.
const std::vector<double> kHyperbolicEdges = {
    0.125, 0x1.6233100000000p+9, 40.0, 0x1.633ce8fb9f87dp+9, 1.0, 0x1p-26, kMin, kDenormMin,
    kMax, 0.0};

// Asin and Acos: mostly inside [-1, 1], the square-root branch from 1/2,
// the fix-up from 1.
const std::vector<Range> kAsinRanges = {
    {0.0, 1.0, false, 0.5}, {0x1p-60, 1.0, true, 0.3}, {kDenormMin, kMax, true, 0.2}};
const std::vector<double> kAsinEdges = {0.5,     1.0,  0x1p-26, 0x1p-1022, kDenormMin,
                                        0x1p-53, 2.0,  kMax,    0.0,       0.9999};

// Tanh's row edges (quarter binades from 1/8 to 20), and where it rounds to 1.
std::vector<double> tanh_edges() {
    std::vector<double> e = {0.0, kMin, kDenormMin, kMax, 19.0615, 0.109375};
    for (int k = 0; k < 30; ++k) e.push_back(std::ldexp(1 + (k % 4) / 4.0, k / 4 - 3));
    return e;
}

const std::vector<Plan>& plans() {
    static const std::vector<Plan> p = {
        {"atan",
         true,
         {{kDenormMin, kMax, true, 0.25}, {0x1p-30, 0x1p60, true, 0.35}, {0.0, 3.0, false, 0.4}},
         {0.125, 0.4375, 0.6875, 1.1875, 2.4375, 1.0, 0x1p54, 0x1p53, 0x1p993, 0x1p-1020,
          0x1p-53, kMin, kDenormMin, kMax, 0.0}},
        {"sinh", true, kHyperbolicRanges, kHyperbolicEdges},
        {"cosh", true, kHyperbolicRanges, kHyperbolicEdges},
        {"asin", true, kAsinRanges, kAsinEdges},
        {"acos", true, kAsinRanges, kAsinEdges},
        {"asinh",
         true,
         {{kDenormMin, kMax, true, 0.2},
          {0x1p-30, 0x1p30, true, 0.3},
          {0.0, 1.0, false, 0.3},
          {1.0, 100.0, false, 0.2}},
         {0.125, 0.5625, 0x1p28, 0x1.7dddf6b095ff1p+511, 1.0, kMin, kDenormMin, kMax, 0.0}},
        {"acosh",
         false,
         {{1.0, kMax, true, 0.3},
          {1.0, 1.2, false, 0.3},
          {1.0, 10.0, false, 0.2},
          {kDenormMin, kMax, true, 0.1},
          {-kMax, -kDenormMin, true, 0.1}},
         {1.0, 1.0625, 1.13001, 2.0, 0x1p28, 0x1.7dddf6b095ff1p+511, kMax, 0.0, -1.0}},
        {"atanh",
         true,
         {{0.0, 1.0, false, 0.4},
          {0x1p-60, 1.0, true, 0.3},
          {0.9, 1.0, false, 0.1},
          {kDenormMin, kMax, true, 0.2}},
         {0x1p-8, 0.25, 0.5, 1.0, 0x1.fffffffffffffp-1, kMin, kDenormMin, kMax, 0.0}},
        {"tanh",
         true,
         {{kDenormMin, kMax, true, 0.2}, {0x1p-30, 0x1p5, true, 0.4}, {0.0, 25.0, false, 0.4}},
         tanh_edges()},
    };
    return p;
}

const Plan* plan_of(const char* fn) {
    for (const Plan& p : plans())
        if (!std::strcmp(p.fn, fn)) return &p;
    return nullptr;
}

uint64_t seed_of(const char* fn) {
    uint64_t h = 1469598103934665603ull;
    for (const char* c = fn; *c; ++c) h = (h ^ static_cast<unsigned char>(*c)) * 1099511628211ull;
    return h;
}

double signed_at_random(Rng& rng, double x, bool both) {
    return both && (rng.next() >> 63) ? -x : x;
}

// x and `k` neighbours on each side, of both signs when `both`.
void add_edge(std::vector<double>& out, double x, int k, bool both) {
    double lo = x, hi = x;
    for (int i = 0; i < k; ++i) {
        lo = std::nextafter(lo, -kInf);
        hi = std::nextafter(hi, kInf);
    }
    for (double v = lo; v <= hi; v = std::nextafter(v, kInf)) {
        if (v < 0 && x >= 0) continue;
        out.push_back(v);
        if (both) out.push_back(-v);
        if (v == kMax) break;
    }
}

Samples one_argument(const Plan& p, double scale) {
    Rng rng(seed_of(p.fn));
    Samples s;
    const double total = 60000 * scale;
    for (const Range& r : p.ranges) {
        const size_t n = static_cast<size_t>(total * r.share);
        for (size_t i = 0; i < n; ++i) {
            const double x = r.by_bits ? rng.by_bits(r.lo, r.hi) : rng.linear(r.lo, r.hi);
            s.a.push_back(signed_at_random(rng, x, p.both_signs));
        }
    }
    for (double e : p.edges) add_edge(s.a, e, 4, p.both_signs);
    for (double v : {kInf, -kInf, __builtin_nan("")}) s.a.push_back(v);
    return s;
}

// atan2's pairs: both arguments over the whole range; ratios over 2^-80 to
// 2^80 (exponent differences across 53, 54 and 74) and over [0, 3] (the
// reduction intervals); denormal pairs; every sign.
Samples atan2_pairs(double scale) {
    Rng rng(seed_of("atan2"));
    Samples s;
    const size_t n = static_cast<size_t>(20000 * scale);
    auto push = [&](double y, double x) {
        s.a.push_back(signed_at_random(rng, y, true));
        s.b.push_back(signed_at_random(rng, x, true));
    };
    for (size_t i = 0; i < n; ++i) push(rng.by_bits(kDenormMin, kMax), rng.by_bits(kDenormMin, kMax));
    for (size_t i = 0; i < n; ++i) {
        const double x = rng.by_bits(0x1p-20, 0x1p20);
        push(x * rng.by_bits(0x1p-80, 0x1p80), x);
    }
    for (size_t i = 0; i < n; ++i) {
        const double x = rng.by_bits(0x1p-10, 0x1p10);
        push(x * rng.linear(0.0, 3.0), x);
    }
    for (size_t i = 0; i < n / 10; ++i)
        push(rng.by_bits(kDenormMin, 0x1p-1000), rng.by_bits(kDenormMin, 0x1p-1000));
    for (int k : {-75, -74, -73, -55, -54, -53, -52, 52, 53, 54, 55, 73, 74, 75})
        for (double m : {1.0, 1.5, 0x1.fffffffffffffp0})
            for (double mx : {1.0, 0x1.fffffffffffffp0}) push(std::ldexp(m, k), mx);
    return s;
}

}  // namespace

double sample_scale() {
    const char* e = std::getenv("ZVL_TRIG_SAMPLES");
    const double f = e && *e ? std::strtod(e, nullptr) : 1.0;
    return f > 0 ? f : 1.0;
}

Samples samples_for(const char* fn, double scale) {
    if (!std::strcmp(fn, "atan2")) return atan2_pairs(scale);
    const Plan* p = plan_of(fn);
    return p ? one_argument(*p, scale) : Samples{};
}

std::vector<Exact> exact_values(const char* fn, const Samples& s) {
    using F1 = int (*)(mpfr_ptr, mpfr_srcptr, mpfr_rnd_t);
    struct Named {
        const char* fn;
        F1 f;
    };
    static const Named kOne[] = {{"atan", mpfr_atan},   {"asin", mpfr_asin},   {"acos", mpfr_acos},
                                 {"sinh", mpfr_sinh},   {"cosh", mpfr_cosh},   {"tanh", mpfr_tanh},
                                 {"asinh", mpfr_asinh}, {"acosh", mpfr_acosh}, {"atanh", mpfr_atanh}};
    F1 f = nullptr;
    for (const Named& n : kOne)
        if (!std::strcmp(n.fn, fn)) f = n.f;
    const bool two = !std::strcmp(fn, "atan2");
    std::vector<Exact> out(s.a.size());
    mpfr_t a, b, v, t;
    mpfr_inits2(200, a, b, v, t, static_cast<mpfr_ptr>(nullptr));
    for (size_t i = 0; i < s.a.size(); ++i) {
        mpfr_set_d(a, s.a[i], MPFR_RNDN);
        if (two) {
            mpfr_set_d(b, s.b[i], MPFR_RNDN);
            mpfr_atan2(v, a, b, MPFR_RNDN);
        } else if (f) {
            f(v, a, MPFR_RNDN);
        } else {
            mpfr_set_nan(v);
        }
        Exact& e = out[i];
        e.nan = mpfr_nan_p(v);
        e.zero = mpfr_zero_p(v);
        // Round to a double as the hardware would, subnormals included.
        e.rn = mpfr_get_d(v, MPFR_RNDN);
        if (!e.nan && !mpfr_inf_p(v) && !e.zero && mpfr_get_exp(v) < -1021) {
            // subnormal: round to a multiple of 2^-1074
            mpfr_mul_2si(t, v, 1074, MPFR_RNDN);
            mpfr_rint(t, t, MPFR_RNDN);
            mpfr_mul_2si(t, t, -1074, MPFR_RNDN);
            e.rn = mpfr_get_d(t, MPFR_RNDN);
        }
        mpfr_sub_d(t, v, e.rn, MPFR_RNDN);
        e.v_hi = e.rn;
        e.v_lo = std::isfinite(e.rn) ? mpfr_get_d(t, MPFR_RNDN) : 0.0;
    }
    mpfr_clears(a, b, v, t, static_cast<mpfr_ptr>(nullptr));
    return out;
}

Error error_of(double got, const Exact& e) {
    const Error bad = {kInf, kInf};
    if (e.nan) return got != got ? Error{0, 0} : bad;
    if (got != got) return bad;
    if (!std::isfinite(e.rn) || !std::isfinite(got))
        return bits_of(got) == bits_of(e.rn) ? Error{0, 0} : bad;
    if (e.zero) return bits_of(got) == bits_of(e.rn) ? Error{0, 0} : bad;
    int ex;
    std::frexp(e.rn == 0 ? kMin : e.rn, &ex);  // |rn| in [2^(ex-1), 2^ex)
    const double ulp = std::ldexp(1.0, std::max(ex - 53, -1074));
    // (got - rn) / ulp is exact for results within a few ulps; v_lo / ulp too
    const double d = (got - e.rn) / ulp - e.v_lo / ulp;
    const double ulps = std::fabs(d);
    const double mag = std::max(std::fabs(e.rn), kMin);
    return {ulps, ulps * ulp / mag};
}

uint64_t bits_of(double x) {
    uint64_t b;
    std::memcpy(&b, &x, sizeof b);
    return b;
}

}  // namespace zvl_test
