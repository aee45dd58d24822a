// Writes the tables and coefficient lists of the Sinh, Cosh and Tanh
// kernels as C++ initializer bodies (kernels/trig/hyperbolic/<arg>.inc):
//
//   hyperbolic_tables tanh_rows   TanhRows: 31 rows of 16 doubles, c0 .. c13
//                                 of tanh(centre + t), the centre, the scale
//   hyperbolic_tables sinh_small  the callout's sinh(x) = x + x^3 P(x^2) for
//                                 |x| < 1/8, degree 11, fitted here
//   hyperbolic_tables sinh_small_ep  the same of degree 7, fixed (Taylor)
//   hyperbolic_tables exp_la      e^r = 1 + r + ... of degree 5, fixed
//                                 (Taylor), for Sinh LA and EP
//   hyperbolic_tables exp_ha      the same, fixed, for HA
//   hyperbolic_tables exp_cosh    the same of degree 4 for Cosh LA and EP,
//                                 fitted here
//
// The rows of TanhRows cover |x| by quarter binades: row 0 is [0, 1/8),
// row k = 1 .. 29 is [2^e (1 + q/4), 2^e (1 + (q+1)/4)) with e = k-1 div 4
// - 3 and q = k-1 mod 4 (so row 29 is [16, 20)), and row 30, the constant
// 1, everything above. Row 0 is the odd minimax polynomial of degree 13
// with c1 = 1. Each other row has a centre near the middle of its quarter
// binade, chosen, by steps of 2^(e-18) from the middle outward, as the
// first where tanh lies within 2^-10 ulp of a double and its derivative
// within 2^-5 ulp: c0 and c1, which no other term can correct, then round
// almost exactly. c0 .. c13 are the minimax fit (relative error) of
// tanh(centre + t) over the row, each rounded to the nearest double.
//
// Deterministic: MPFR at 192 bits, exact hexadecimal output.
#include <mpfr.h>

#include <cmath>
#include <cstdio>
#include <cstring>
#include <vector>

#include "tools/fit/write.h"

namespace {

using zvl_fit::Num;
using zvl_fit::Problem;
using zvl_tables::from_bits;

constexpr const char* kProgram = "hyperbolic_tables";

// |RN(v) - v| in ulps of RN(v).
double ulps_off(const mpfr_t v) {
    const double d = mpfr_get_d(v, MPFR_RNDN);
    Num e;
    mpfr_sub_d(e.v, v, d, MPFR_RNDN);
    int ex;
    std::frexp(d, &ex);
    mpfr_mul_2si(e.v, e.v, 53 - ex, MPFR_RNDN);
    return std::fabs(mpfr_get_d(e.v, MPFR_RNDN));
}

void put_row(const double* w, int k, double lo, double hi, double err) {
    char e[32], a[40];
    zvl_fit::print_log2(e, sizeof e, err);
    if (k == 30)
        std::printf("// row 30: [%.17g, inf), the constant 1\n", lo);
    else
        std::printf("// row %d: [%.17g, %.17g), centre %.17g, relative error %s\n", k, lo, hi,
                    w[14], e);
    for (int i = 0; i < 16; ++i) {
        zvl_tables::put_hex(w[i], a, sizeof a);
        std::printf("%s,%s", a, i % 4 == 3 ? "\n" : " ");
    }
}

void write_tanh_rows() {
    zvl_fit::header(kProgram, "tanh_rows",
                    "Rule: TanhRows, 31 rows of c0 .. c13 of tanh(centre + t), centre, scale;\n"
                    "// see the generator for the rows' ranges, centres and fits.");
    // Row 0: c1 = 1, the odd terms from t^3 fitted.
    {
        Problem p;
        p.target = [](mpfr_t out, const mpfr_t x) {
            mpfr_tanh(out, x, MPFR_RNDN);
            mpfr_sub(out, out, x, MPFR_RNDN);
        };
        p.weight = [](mpfr_t out, const mpfr_t x) {
            mpfr_tanh(out, x, MPFR_RNDN);
            mpfr_ui_div(out, 1, out, MPFR_RNDN);
        };
        p.powers = {3, 5, 7, 9, 11, 13};
        p.lo = 0;
        p.hi = 0.125;
        const zvl_fit::Fit f = zvl_fit::minimax(p);
        double w[16] = {0, 1};
        for (int i = 0; i < 6; ++i) w[3 + 2 * i] = f.c[i];
        w[15] = 1;
        put_row(w, 0, 0, 0.125, f.error);
    }
    for (int k = 1; k < 30; ++k) {
        const int e = (k - 1) / 4 - 3, q = (k - 1) % 4;
        const double lo = std::ldexp(1 + q / 4.0, e), hi = std::ldexp(1 + (q + 1) / 4.0, e);
        const double mid = std::ldexp(1 + (q + 0.5) / 4.0, e), step = std::ldexp(1.0, e - 18);
        double c = mid;
        Num T, S, x;
        for (int i = 0;; ++i) {
            c = mid + (i % 2 ? (i + 1) / 2 : -(i / 2)) * step;
            mpfr_set_d(x.v, c, MPFR_RNDN);
            mpfr_tanh(T.v, x.v, MPFR_RNDN);
            if (ulps_off(T.v) >= 0x1p-10) continue;
            mpfr_sqr(S.v, T.v, MPFR_RNDN);
            mpfr_ui_sub(S.v, 1, S.v, MPFR_RNDN);  // sech^2, the derivative
            if (ulps_off(S.v) < 0x1p-5) break;
        }
        Problem p;
        p.target = [c](mpfr_t out, const mpfr_t t) {
            mpfr_add_d(out, t, c, MPFR_RNDN);
            mpfr_tanh(out, out, MPFR_RNDN);
        };
        for (int i = 0; i < 14; ++i) p.powers.push_back(i);
        p.lo = lo - c;
        p.hi = hi - c;
        p.grid = 600;
        p.sequential = false;
        const zvl_fit::Fit f = zvl_fit::minimax(p);
        double w[16];
        for (int i = 0; i < 14; ++i) w[i] = f.c[i];
        w[14] = c;
        w[15] = 1;
        put_row(w, k, lo, hi, f.error);
    }
    const double w[16] = {1};
    put_row(w, 30, 20, 0, 0);
}

// A polynomial's coefficients, highest power first, each with the power of
// its term in the function (first, first + step, ...).
void put_poly(const std::vector<double>& low_first, const char* var, int first, int step) {
    char a[40];
    for (size_t i = low_first.size(); i-- > 0;) {
        zvl_tables::put_hex(low_first[i], a, sizeof a);
        std::printf("%s,  // %s^%d: %.17g\n", a, var, first + step * static_cast<int>(i),
                    low_first[i]);
    }
}

// sinh(x) = x + x^3 P(x^2): P in z = x^2 for x in [0, top], relative
// error of sinh.
Problem sinh_small_problem(int terms) {
    Problem p;
    p.target = [](mpfr_t out, const mpfr_t z) {
        Num x, s;
        mpfr_sqrt(x.v, z, MPFR_RNDN);
        mpfr_sinh(s.v, x.v, MPFR_RNDN);
        mpfr_sub(s.v, s.v, x.v, MPFR_RNDN);
        mpfr_mul(x.v, x.v, z, MPFR_RNDN);
        mpfr_div(out, s.v, x.v, MPFR_RNDN);
    };
    p.weight = [](mpfr_t out, const mpfr_t z) {
        Num x, s;
        mpfr_sqrt(x.v, z, MPFR_RNDN);
        mpfr_sinh(s.v, x.v, MPFR_RNDN);
        mpfr_mul(x.v, x.v, z, MPFR_RNDN);
        mpfr_div(out, x.v, s.v, MPFR_RNDN);
    };
    for (int i = 0; i < terms; ++i) p.powers.push_back(i);
    p.lo = 0;
    p.hi = 0.125 * 0.125;
    p.grid = 2000;
    return p;
}

// e^r = 1 + r + r^2 P(r): P for |r| <= top, relative error of e^r.
Problem exp_problem(int terms, double top) {
    Problem p;
    p.target = [](mpfr_t out, const mpfr_t r) {
        Num e;
        mpfr_expm1(e.v, r, MPFR_RNDN);
        mpfr_sub(e.v, e.v, r, MPFR_RNDN);
        mpfr_sqr(out, r, MPFR_RNDN);
        mpfr_div(out, e.v, out, MPFR_RNDN);
    };
    p.weight = [](mpfr_t out, const mpfr_t r) {
        Num e;
        mpfr_exp(e.v, r, MPFR_RNDN);
        mpfr_sqr(out, r, MPFR_RNDN);
        mpfr_div(out, out, e.v, MPFR_RNDN);
    };
    for (int i = 0; i < terms; ++i) p.powers.push_back(i);
    p.lo = -top;
    p.hi = top;
    p.grid = 2000;
    return p;
}

// ln 2 / 256 and ln 2 / 128 with a margin for the rounding of N: the
// largest |r| of the 128- and 64-entry reductions.
constexpr double kR128 = 0.00271;
constexpr double kR64 = 0.00542;

// The terms of sinh_small (x^3, x^5, ... in z = x^2) and of the
// exponentials (r^2, r^3, ... in r).
struct Terms {
    const char* fit_var;  // the fitting variable, for the error line
    const char* var;
    int first, step;
};
constexpr Terms kSinhTerms = {"x^2", "x", 3, 2};
constexpr Terms kExpTerms = {"r", "r", 2, 1};

void write_poly(const char* arg, const Problem& p, const std::vector<double>& low_first,
                const char* rule, const char* what, const Terms& t) {
    zvl_fit::header(kProgram, arg, rule);
    zvl_fit::put_error(p, low_first, what, t.fit_var);
    put_poly(low_first, t.var, t.first, t.step);
}

void write_fitted(const char* arg, const Problem& p, const char* rule, const char* what,
                  const Terms& t) {
    write_poly(arg, p, zvl_fit::minimax(p).c, rule, what, t);
}

}  // namespace

int main(int argc, char** argv) {
    const char* arg = argc == 2 ? argv[1] : "";
    if (!std::strcmp(arg, "tanh_rows")) {
        write_tanh_rows();
    } else if (!std::strcmp(arg, "sinh_small")) {
        write_fitted(arg, sinh_small_problem(5),
                     "Rule: sinh(x) = x + x^3 P(x^2) for |x| < 1/8, P of degree 4 in x^2, the\n"
                     "// minimax fit of the relative error rounded to doubles term by term.",
                     "relative, of sinh,", kSinhTerms);
    } else if (!std::strcmp(arg, "sinh_small_ep")) {
        write_poly(arg, sinh_small_problem(3), {1.0 / 6, 1.0 / 120, 1.0 / 5040},
                    "Rule: sinh(x) = x + x^3 P(x^2) for |x| < 1/8, P the Taylor terms 1/6,\n"
                    "// 1/120, 1/5040 as the nearest doubles (fixed).",
                    "relative, of sinh,", kSinhTerms);
    } else if (!std::strcmp(arg, "exp_la")) {
        write_poly(arg, exp_problem(4, kR128), {0.5, 1.0 / 6, 1.0 / 24, 1.0 / 120},
                    "Rule: e^r = 1 + r + r^2 P(r) for |r| <= ln2/256, P the Taylor terms 1/2,\n"
                    "// 1/6, 1/24, 1/120 as the nearest doubles (fixed).",
                    "relative, of e^r,", kExpTerms);
    } else if (!std::strcmp(arg, "exp_ha")) {
        write_poly(arg, exp_problem(4, kR64),
                    {from_bits(0x3fdfffffffffd97c), from_bits(0x3fc55555555542a1),
                     from_bits(0x3fa555574bc3a1be), from_bits(0x3f81111276409c2c)},
                    "Rule: e^r = 1 + r + r^2 P(r) for |r| <= ln2/128, the HA exponential's\n"
                    "// fixed coefficients, typed in as bit patterns.",
                    "relative, of e^r,", kExpTerms);
    } else if (!std::strcmp(arg, "exp_cosh")) {
        write_fitted(arg, exp_problem(3, kR128),
                     "Rule: e^r = 1 + r + r^2 P(r) for |r| <= ln2/256, P of degree 2, the\n"
                     "// minimax fit of the relative error rounded to doubles term by term.",
                     "relative, of e^r,", kExpTerms);
    } else {
        std::fprintf(stderr,
                     "usage: %s tanh_rows|sinh_small|sinh_small_ep|exp_la|exp_ha|exp_cosh\n",
                     kProgram);
        return 2;
    }
    return 0;
}
