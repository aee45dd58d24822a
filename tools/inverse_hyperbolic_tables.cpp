// Writes the logarithm table and the polynomials of the Asinh, Acosh and
// Atanh kernels as C++ initializer bodies
// (kernels/trig/inverse_hyperbolic/<arg>.inc):
//
//   inverse_hyperbolic_tables log_rows   the logarithm's rows (see below)
//   inverse_hyperbolic_tables log_la     log(1 + t) = t + t^2 P(t), P of
//                                        degree 5 (LA and EP)
//   inverse_hyperbolic_tables log_ha     log(1 + t) = t - t^2/2 + t^3 P(t),
//                                        P of degree 5 (HA)
//   inverse_hyperbolic_tables asinh_small   asinh(x) = x + x^3 P(x^2) for
//                                        |x| < 1/8, P of degree 5
//   inverse_hyperbolic_tables acosh_near_ha  acosh(1 + y) = sqrt(2y) (1 +
//                                        y P(y)) for y < 1/16, P of degree 6
//   inverse_hyperbolic_tables acosh_near_la  acosh(1 + y) = sqrt(y) Q(y)
//                                        for y < 0.13001, Q of degree 7
//   inverse_hyperbolic_tables atanh_la   atanh(x) = x + x^3 P(x^2) for
//                                        |x| < 1/4, P of degree 11
//   inverse_hyperbolic_tables atanh_small_ha  the same for |x| < 2^-8, P of
//                                        degree 3
//
// All polynomials are minimax fits of the relative error, rounded to
// doubles term by term; each file gives its measured error.
//
// The logarithm's rows are read through the shifter 2199023255551.0076
// (0x427ffffffffff01f = 2^41 - 4065/4096): m + shifter for m in [1, 2)
// rounds (m - 1) 2048 + 15.5 to an integer K in the low word, so K div 16 =
// j = floor((m - 1) 128) + 1, row j covering [1 + (j-1)/128, 1 + j/128) for
// j = 1 .. 128 (row 0 is never read). A row holds R, 1/c rounded to 10
// significant bits for the row's centre c (so that R times m cut to 43
// bits is exact), T = -log(R) rounded to nearest, and T in two parts: T_hi
// a multiple of 2^-42, the last bit of ln 2's high part (so that e ln2_hi
// + T_hi is exact), and T_lo the rest rounded to nearest.
//
// Deterministic: MPFR at 192 bits, exact hexadecimal output.
#include <mpfr.h>

#include <cmath>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "tools/fit/write.h"

namespace {

using zvl_fit::Num;
using zvl_fit::Problem;

constexpr const char* kProgram = "inverse_hyperbolic_tables";
constexpr int kRows = 128;

struct Row {
    double R, T, T_hi, T_lo;
};

Row make_row(int j) {
    Num c, R, T, hi;
    mpfr_set_d(c.v, 1.0 + (j - 0.5) / kRows, MPFR_RNDN);
    mpfr_ui_div(R.v, 1, c.v, MPFR_RNDN);
    Row row;
    {
        mpfr_t r10;
        mpfr_init2(r10, 10);
        mpfr_set(r10, R.v, MPFR_RNDN);
        row.R = mpfr_get_d(r10, MPFR_RNDN);
        mpfr_clear(r10);
    }
    mpfr_set_d(R.v, row.R, MPFR_RNDN);
    mpfr_log(T.v, R.v, MPFR_RNDN);
    mpfr_neg(T.v, T.v, MPFR_RNDN);
    row.T = mpfr_get_d(T.v, MPFR_RNDN);
    mpfr_mul_2si(hi.v, T.v, 42, MPFR_RNDN);
    mpfr_rint(hi.v, hi.v, MPFR_RNDN);
    mpfr_mul_2si(hi.v, hi.v, -42, MPFR_RNDN);
    row.T_hi = mpfr_get_d(hi.v, MPFR_RNDN);
    mpfr_sub(T.v, T.v, hi.v, MPFR_RNDN);
    row.T_lo = mpfr_get_d(T.v, MPFR_RNDN);
    return row;
}

// The largest |m R - 1| over the rows: the range the log polynomials cover.
double t_max() {
    double worst = 0;
    for (int j = 1; j <= kRows; ++j) {
        const double R = make_row(j).R;
        const double lo = 1.0 + (j - 1.0) / kRows, hi = 1.0 + static_cast<double>(j) / kRows;
        worst = std::fmax(worst, std::fmax(std::fabs(lo * R - 1), std::fabs(hi * R - 1)));
    }
    // rounded up to a multiple of 2^-16
    return std::ceil(worst * 65536) / 65536;
}

void write_rows() {
    char tm[40];
    std::snprintf(tm, sizeof tm, "%.17g", t_max());
    std::string rule = "Rule: row j of 129 is R, T, T_hi, T_lo for m in [1 + (j-1)/128, 1 + j/128);\n"
                       "// see the generator. |m R - 1| <= ";
    rule += tm;
    rule += ".";
    zvl_fit::header(kProgram, "log_rows", rule.c_str());
    std::printf("0x0p+0, 0x0p+0, 0x0p+0, 0x0p+0,  // 0: not read\n");
    char a[4][40];
    for (int j = 1; j <= kRows; ++j) {
        const Row r = make_row(j);
        zvl_tables::put_hex(r.R, a[0], sizeof a[0]);
        zvl_tables::put_hex(r.T, a[1], sizeof a[1]);
        zvl_tables::put_hex(r.T_hi, a[2], sizeof a[2]);
        zvl_tables::put_hex(r.T_lo, a[3], sizeof a[3]);
        std::printf("%s, %s, %s, %s,  // %d\n", a[0], a[1], a[2], a[3], j);
    }
}

// log(1 + t) - (t [- t^2/2]) over t^k: the fitted part, and its weight for
// the relative error of log(1 + t).
Problem log_problem(bool ha, int terms) {
    const int k = ha ? 3 : 2;
    Problem p;
    p.target = [ha, k](mpfr_t out, const mpfr_t t) {
        Num l, s;
        mpfr_log1p(l.v, t, MPFR_RNDN);
        mpfr_sub(l.v, l.v, t, MPFR_RNDN);
        if (ha) {
            mpfr_sqr(s.v, t, MPFR_RNDN);
            mpfr_div_2ui(s.v, s.v, 1, MPFR_RNDN);
            mpfr_add(l.v, l.v, s.v, MPFR_RNDN);
        }
        mpfr_pow_ui(s.v, t, k, MPFR_RNDN);
        mpfr_div(out, l.v, s.v, MPFR_RNDN);
    };
    p.weight = [k](mpfr_t out, const mpfr_t t) {
        Num l;
        mpfr_log1p(l.v, t, MPFR_RNDN);
        mpfr_pow_ui(out, t, k, MPFR_RNDN);
        mpfr_div(out, out, l.v, MPFR_RNDN);
        mpfr_abs(out, out, MPFR_RNDN);
    };
    for (int i = 0; i < terms; ++i) p.powers.push_back(i);
    p.hi = t_max();
    p.lo = -p.hi;
    p.grid = 2000;
    return p;
}

// acosh(1 + y) = sqrt(2y) (1 + y P(y)) (HA) or sqrt(y) Q(y) (LA).
Problem acosh_problem(bool ha, int terms, double top) {
    Problem p;
    p.target = [ha](mpfr_t out, const mpfr_t y) {
        Num a, s;
        mpfr_add_ui(a.v, y, 1, MPFR_RNDN);
        mpfr_acosh(a.v, a.v, MPFR_RNDN);
        mpfr_mul_ui(s.v, y, ha ? 2 : 1, MPFR_RNDN);
        mpfr_sqrt(s.v, s.v, MPFR_RNDN);
        mpfr_div(out, a.v, s.v, MPFR_RNDN);
        if (ha) {
            mpfr_sub_ui(out, out, 1, MPFR_RNDN);
            mpfr_div(out, out, y, MPFR_RNDN);
        }
    };
    if (ha) {
        p.weight = [](mpfr_t out, const mpfr_t y) {
            Num a, s;
            mpfr_add_ui(a.v, y, 1, MPFR_RNDN);
            mpfr_acosh(a.v, a.v, MPFR_RNDN);
            mpfr_mul_2ui(s.v, y, 1, MPFR_RNDN);
            mpfr_sqrt(s.v, s.v, MPFR_RNDN);
            mpfr_mul(s.v, s.v, y, MPFR_RNDN);
            mpfr_div(out, s.v, a.v, MPFR_RNDN);
        };
    }
    for (int i = 0; i < terms; ++i) p.powers.push_back(i);
    p.lo = 0;
    p.hi = top;
    p.grid = 2000;
    return p;
}

void put_fit(const char* arg, const char* rule, const Problem& p, const char* var) {
    zvl_fit::header(kProgram, arg, rule);
    const zvl_fit::Fit f = zvl_fit::minimax(p);
    zvl_fit::put_error(p, f.c, "relative,", var);
    char a[40];
    for (size_t i = f.c.size(); i-- > 0;) {
        zvl_tables::put_hex(f.c[i], a, sizeof a);
        std::printf("%s,  // %s^%zu: %.17g\n", a, var, i, f.c[i]);
    }
}

void put_odd_fit(const char* arg, const char* rule, const zvl_fit::OddForm& form, int terms) {
    zvl_fit::header(kProgram, arg, rule);
    const zvl_fit::Fit f = zvl_fit::minimax(zvl_fit::odd_problem(form, terms));
    zvl_fit::put_odd(form, std::vector<double>(f.c.rbegin(), f.c.rend()));
}

}  // namespace

int main(int argc, char** argv) {
    const char* arg = argc == 2 ? argv[1] : "";
    if (!std::strcmp(arg, "log_rows")) {
        write_rows();
    } else if (!std::strcmp(arg, "log_la")) {
        put_fit(arg, "Rule: log(1 + t) = t + t^2 P(t) over the rows' range of t; P below.",
                log_problem(false, 6), "t");
    } else if (!std::strcmp(arg, "log_ha")) {
        put_fit(arg, "Rule: log(1 + t) = t - t^2/2 + t^3 P(t) over the rows' range of t; P below.",
                log_problem(true, 6), "t");
    } else if (!std::strcmp(arg, "asinh_small")) {
        put_odd_fit(arg, "Rule: asinh(s) = s + s^3 P(s^2) for s < 1/8, the minimax fit.",
                    zvl_fit::OddForm{mpfr_asinh, false, 0.125}, 6);
    } else if (!std::strcmp(arg, "acosh_near_ha")) {
        put_fit(arg, "Rule: acosh(1 + y) = sqrt(2y) (1 + y P(y)) for y < 1/16; P below.",
                acosh_problem(true, 7, 0.0625), "y");
    } else if (!std::strcmp(arg, "acosh_near_la")) {
        put_fit(arg, "Rule: acosh(1 + y) = sqrt(y) Q(y) for y < 0.13001; Q below.",
                acosh_problem(false, 8, 0.13001), "y");
    } else if (!std::strcmp(arg, "atanh_la")) {
        put_odd_fit(arg, "Rule: atanh(s) = s + s^3 P(s^2) for s < 1/4, the minimax fit.",
                    zvl_fit::OddForm{mpfr_atanh, false, 0.25}, 12);
    } else if (!std::strcmp(arg, "atanh_small_ha")) {
        put_odd_fit(arg, "Rule: atanh(s) = s + s^3 P(s^2) for s < 2^-8, the minimax fit.",
                    zvl_fit::OddForm{mpfr_atanh, false, 0x1p-8}, 4);
    } else {
        std::fprintf(stderr,
                     "usage: %s log_rows|log_la|log_ha|asinh_small|acosh_near_ha|acosh_near_la|"
                     "atanh_la|atanh_small_ha\n",
                     kProgram);
        return 2;
    }
    return 0;
}
