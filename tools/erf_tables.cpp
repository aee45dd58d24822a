// Writes the tables of the error-function kernels as C++ source. One source
// builds three programs, one per family:
//
//   erf_tables ha        46 entries of 16: erf about the centres of the
//                        eighth-binades of |x| from 0.125 to 6, degree 10
//   erf_tables la        24 entries of 16: quarter-binades, degree 13
//   erf_tables ep        the same intervals, degree 7
//   erfc_tables poly     28 entries of 16: exp(x^2) erfc(x) expanded about
//                        the starts of quarter-binades up to 28, degree 13
//   erfc_tables starts   the 28 interval starts, two doubles apart
//   erfc_tables exp      128 entries: hi and lo of 2^(j/128)
//   erfinv_tables ha     212 entries of 17: erfinv(x)/x by quarter-binades
//                        of t = 1 - |x|, degree 14
//   erfinv_tables la     212 entries of 12: the same, degree 11
//   erfinv_tables ep     848 entries of 4: sixteenth-binades, degree 3
//
// Each polynomial is a weighted least-squares fit, in relative error of the
// value the kernel returns, at Chebyshev nodes of its interval (close to the
// minimax polynomial), computed with MPFR. The coefficients are then rounded
// to their stored form one at a time from the lowest power up, and the
// higher ones fitted again to what the rounding left, so that the stored
// table, not the exact fit, is what the fit is best for. erfinv is computed
// by Newton's iteration on erf, or on erfc for |x| above 1/2, from a double
// start. Values are printed as exact hexadecimal literals, so the output is
// the same on every machine; the checked-in kernels/erf/*/table_*.inc are
// these programs' output, and a test reruns them and compares.
//
// With --report the program also prints, to stderr, the largest relative
// error of each table's stored polynomials at 16 times as many points.
#include <mpfr.h>

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "tools/erf_mpfr.h"
#include "tools/table_format.h"

namespace {

using zvl_tables::bits;
using zvl_tables::erfinv_of_t;
using zvl_tables::from_bits;
using zvl_tables::put_hex;

constexpr mpfr_prec_t kPrec = 256;

#if defined(ZVL_ERFC_TABLES)
constexpr const char* kProgram = "erfc_tables";
#elif defined(ZVL_ERFINV_TABLES)
constexpr const char* kProgram = "erfinv_tables";
#else
constexpr const char* kProgram = "erf_tables";
#endif
bool g_report = false;

// A vector of MPFR numbers that owns them.
class Mp {
  public:
    explicit Mp(size_t n = 1) : v_(n) {
        for (auto& x : v_) mpfr_init2(x.m, kPrec);
    }
    ~Mp() {
        for (auto& x : v_) mpfr_clear(x.m);
    }
    Mp(const Mp&) = delete;
    Mp& operator=(const Mp&) = delete;
    mpfr_ptr operator[](size_t i) { return v_[i].m; }
    mpfr_ptr get() { return v_[0].m; }
    size_t size() const { return v_.size(); }

  private:
    struct Cell {
        mpfr_t m;
    };
    std::vector<Cell> v_;
};

// --- the functions ---------------------------------------------------------

// exp(x^2) erfc(x).
void erfcx(mpfr_ptr out, mpfr_srcptr x) {
    Mp s;
    mpfr_sqr(s.get(), x, MPFR_RNDN);
    mpfr_exp(s.get(), s.get(), MPFR_RNDN);
    mpfr_erfc(out, x, MPFR_RNDN);
    mpfr_mul(out, out, s.get(), MPFR_RNDN);
}

// --- the fit ---------------------------------------------------------------

// How a coefficient is stored.
enum Form {
    kDouble,  // one double, the nearest
    kHiLo,    // hi the nearest double, lo the double nearest the rest
    kHiLo26,  // hi rounded to 26 significant bits (27 low bits clear), lo the
              // double nearest the rest: hi times a 26-bit value is exact
};

struct Term {
    int power;
    Form form;
    bool fixed = false;  // given, not fitted: value in `given`
    double given_hi = 0.0, given_lo = 0.0;
    double hi = 0.0, lo = 0.0;  // the stored result
};

// A fit problem: the polynomial sum c_p y^p over `terms` approximates
// value(y) on [ya, yb] in relative error. `value` writes the function at y.
struct Problem {
    double ya, yb;
    void (*value)(mpfr_ptr out, mpfr_srcptr y, const void* ctx);
    const void* ctx;
    std::vector<Term> terms;
};

// Solves the n x n system a x = b in place (Gaussian elimination with
// partial pivoting); a is row-major.
void solve(Mp& a, Mp& b, int n) {
    Mp t;
    for (int c = 0; c < n; ++c) {
        int piv = c;
        for (int r = c + 1; r < n; ++r)
            if (mpfr_cmpabs(a[r * n + c], a[piv * n + c]) > 0) piv = r;
        if (piv != c) {
            for (int k = 0; k < n; ++k) mpfr_swap(a[c * n + k], a[piv * n + k]);
            mpfr_swap(b[c], b[piv]);
        }
        for (int r = c + 1; r < n; ++r) {
            mpfr_div(t.get(), a[r * n + c], a[c * n + c], MPFR_RNDN);
            for (int k = c; k < n; ++k) {
                mpfr_mul(a[n * n], t.get(), a[c * n + k], MPFR_RNDN);  // scratch cell
                mpfr_sub(a[r * n + k], a[r * n + k], a[n * n], MPFR_RNDN);
            }
            mpfr_mul(a[n * n], t.get(), b[c], MPFR_RNDN);
            mpfr_sub(b[r], b[r], a[n * n], MPFR_RNDN);
        }
    }
    for (int c = n - 1; c >= 0; --c) {
        for (int k = c + 1; k < n; ++k) {
            mpfr_mul(t.get(), a[c * n + k], b[k], MPFR_RNDN);
            mpfr_sub(b[c], b[c], t.get(), MPFR_RNDN);
        }
        mpfr_div(b[c], b[c], a[c * n + c], MPFR_RNDN);
    }
}

// Rounds the exact coefficient `v` to the term's stored form.
void store(Term& term, mpfr_srcptr v) {
    Mp rest;
    if (term.form == kHiLo26) {
        Mp h;
        mpfr_set_prec(h.get(), 26);
        mpfr_set(h.get(), v, MPFR_RNDN);
        term.hi = mpfr_get_d(h.get(), MPFR_RNDN);
    } else {
        term.hi = mpfr_get_d(v, MPFR_RNDN);
    }
    term.lo = 0.0;
    if (term.form != kDouble) {
        mpfr_sub_d(rest.get(), v, term.hi, MPFR_RNDN);
        term.lo = mpfr_get_d(rest.get(), MPFR_RNDN);
    }
}

// Sum of the stored polynomial at y, relative to f: (p(y) - f) / f.
double relative_error(const std::vector<Term>& terms, mpfr_srcptr y, mpfr_srcptr f) {
    Mp p, yp, c;
    mpfr_set_zero(p.get(), 1);
    for (const Term& t : terms) {
        mpfr_pow_ui(yp.get(), y, static_cast<unsigned long>(t.power), MPFR_RNDN);
        mpfr_set_d(c.get(), t.hi, MPFR_RNDN);
        mpfr_add_d(c.get(), c.get(), t.lo, MPFR_RNDN);
        mpfr_mul(c.get(), c.get(), yp.get(), MPFR_RNDN);
        mpfr_add(p.get(), p.get(), c.get(), MPFR_RNDN);
    }
    mpfr_sub(p.get(), p.get(), f, MPFR_RNDN);
    mpfr_div(p.get(), p.get(), f, MPFR_RNDN);
    return std::fabs(mpfr_get_d(p.get(), MPFR_RNDN));
}

// The Chebyshev nodes of [ya, yb], n of them.
void nodes(Mp& y, double ya, double yb) {
    const size_t n = y.size();
    Mp c;
    for (size_t i = 0; i < n; ++i) {
        mpfr_const_pi(c.get(), MPFR_RNDN);
        mpfr_mul_d(c.get(), c.get(), (2.0 * static_cast<double>(i) + 1.0) / (2.0 * n), MPFR_RNDN);
        mpfr_cos(c.get(), c.get(), MPFR_RNDN);
        // (ya + yb)/2 + (yb - ya)/2 * cos
        mpfr_mul_d(c.get(), c.get(), 0.5 * (yb - ya), MPFR_RNDN);
        mpfr_add_d(c.get(), c.get(), 0.5 * ya, MPFR_RNDN);
        mpfr_add_d(y[i], c.get(), 0.5 * yb, MPFR_RNDN);
    }
}

double g_worst = 0.0;  // for --report, over all entries of a table

// Fits the free terms and stores every term.
void fit(Problem& pb) {
    const int nt = static_cast<int>(pb.terms.size());
    const size_t npts = static_cast<size_t>(3 * nt + 8);
    Mp y(npts), f(npts), w(npts), res(npts), pw(npts * nt);
    nodes(y, pb.ya, pb.yb);
    // Scale of the variable: the basis is (y/h)^p with h the larger end.
    const double h = std::max(std::fabs(pb.ya), std::fabs(pb.yb));
    Mp s;
    for (size_t i = 0; i < npts; ++i) {
        pb.value(f[i], y[i], pb.ctx);
        mpfr_ui_div(w[i], 1, f[i], MPFR_RNDN);  // relative error weight
        mpfr_set(res[i], f[i], MPFR_RNDN);
        mpfr_div_d(s.get(), y[i], h, MPFR_RNDN);
        for (int k = 0; k < nt; ++k)
            mpfr_pow_ui(pw[i * nt + k], s.get(), static_cast<unsigned long>(pb.terms[k].power),
                        MPFR_RNDN);
    }
    // Takes the stored value of term k out of the residual.
    auto remove = [&](int k) {
        Mp c;
        mpfr_set_d(c.get(), pb.terms[k].hi, MPFR_RNDN);
        mpfr_add_d(c.get(), c.get(), pb.terms[k].lo, MPFR_RNDN);
        mpfr_mul_d(c.get(), c.get(), std::pow(h, pb.terms[k].power), MPFR_RNDN);
        for (size_t i = 0; i < npts; ++i) {
            mpfr_mul(s.get(), c.get(), pw[i * nt + k], MPFR_RNDN);
            mpfr_sub(res[i], res[i], s.get(), MPFR_RNDN);
        }
    };
    std::vector<int> free_terms;
    for (int k = 0; k < nt; ++k) {
        Term& t = pb.terms[k];
        if (t.fixed) {
            t.hi = t.given_hi;
            t.lo = t.given_lo;
            remove(k);
        } else {
            free_terms.push_back(k);
        }
    }
    // The weighted least-squares fit of the free terms to the residual.
    Mp w2(npts);
    for (size_t i = 0; i < npts; ++i) mpfr_sqr(w2[i], w[i], MPFR_RNDN);
    auto solve_ls = [&](Mp& b) {
        const int n = static_cast<int>(free_terms.size());
        Mp a(n * n + 1);
        for (int r = 0; r < n; ++r) {
            for (int c = 0; c < n; ++c) mpfr_set_zero(a[r * n + c], 1);
            mpfr_set_zero(b[r], 1);
        }
        for (size_t i = 0; i < npts; ++i) {
            for (int r = 0; r < n; ++r) {
                mpfr_mul(s.get(), w2[i], pw[i * nt + free_terms[r]], MPFR_RNDN);
                for (int c = r; c < n; ++c) {
                    mpfr_mul(a[n * n], s.get(), pw[i * nt + free_terms[c]], MPFR_RNDN);
                    mpfr_add(a[r * n + c], a[r * n + c], a[n * n], MPFR_RNDN);
                }
                mpfr_mul(a[n * n], s.get(), res[i], MPFR_RNDN);
                mpfr_add(b[r], b[r], a[n * n], MPFR_RNDN);
            }
        }
        for (int r = 0; r < n; ++r)
            for (int c = 0; c < r; ++c) mpfr_set(a[r * n + c], a[c * n + r], MPFR_RNDN);
        solve(a, b, n);
    };
    while (!free_terms.empty()) {
        Mp b(free_terms.size());
        solve_ls(b);
        // The lowest free power: its coefficient in y, rounded and stored.
        const int k = free_terms.front();
        mpfr_div_d(b[0], b[0], std::pow(h, pb.terms[k].power), MPFR_RNDN);
        store(pb.terms[k], b[0]);
        remove(k);
        free_terms.erase(free_terms.begin());
    }
    if (g_report) {
        Mp yy(16 * npts), ff;
        nodes(yy, pb.ya, pb.yb);
        double worst = 0.0;
        for (size_t i = 0; i < yy.size(); ++i) {
            pb.value(ff.get(), yy[i], pb.ctx);
            const double e = relative_error(pb.terms, yy[i], ff.get());
            if (e > worst) worst = e;
        }
        std::fprintf(stderr, "  [%g, %g]: 2^%.2f\n", pb.ya, pb.yb, std::log2(worst));
        if (worst > g_worst) g_worst = worst;
    }
}

// --- output ----------------------------------------------------------------

void header(const char* table, const char* rule) {
    std::printf("// Generated by tools/erf_tables.cpp, run as: %s %s\n", kProgram, table);
    std::printf("// Rule: %s\n", rule);
    std::printf("// Do not edit by hand: rerun the generator (build target %s).\n", kProgram);
}

// One entry, `n` doubles in braces, four to a line.
void row(const double* v, int n, int entry) {
    char a[40];
    for (int i = 0; i < n; ++i) {
        const uint64_t b = bits(v[i]) & 0x7fffffffffffffff;
        if (b != 0 && b < 0x0010000000000000) {
            std::fprintf(stderr, "entry %d column %d is subnormal\n", entry, i);
            std::exit(1);
        }
        put_hex(v[i], a, sizeof a);
        std::printf("%s%s%s%s", i == 0 ? "{" : i % 4 == 0 ? "" : " ", a, i == n - 1 ? "}" : "", ",");
        if (i % 4 == 3 || i == n - 1) {
            if (i < 4) std::printf("  // %d", entry);
            std::printf("\n");
        }
    }
}

void report(const char* what) {
    if (g_report)
        std::fprintf(stderr, "%s %s: largest relative error %.3g (2^%.2f)\n", kProgram, what,
                     g_worst, std::log2(g_worst));
}

// --- erf -------------------------------------------------------------------

// erf(c + y) for a double centre c.
void erf_at(mpfr_ptr out, mpfr_srcptr y, const void* ctx) {
    const double c = *static_cast<const double*>(ctx);
    mpfr_add_d(out, y, c, MPFR_RNDN);
    mpfr_erf(out, out, MPFR_RNDN);
}

// The smallest x whose erf rounds to 1: erfc(x) = 2^-54, to double.
double erf_saturates() {
    Mp t, x;
    mpfr_set_ui_2exp(t.get(), 1, -54, MPFR_RNDN);
    erfinv_of_t(x.get(), t.get());
    return mpfr_get_d(x.get(), MPFR_RNDU);
}

// Entry k >= 1 of the eighth-binade intervals from 0.125: [a, b).
void eighth_binade(int k, double& a, double& b) {
    const int e = (k - 1) / 8, q = (k - 1) % 8;
    a = std::ldexp(1.0 + q / 8.0, e - 3);
    b = std::ldexp(1.0 + (q + 1) / 8.0, e - 3);
}

[[maybe_unused]] void erf_ha() {
    header("ha",
           "46 entries of 16 doubles. Entry k serves |x| in the k-th eighth-binade\n"
           "// from 0.125 (entry 0 below 0.125, entry 45 from 6.0 on). Columns: 0, 1 lo and\n"
           "// hi of erf(c) at the centre c; 2 to 11 the coefficients of y^1 to y^10,\n"
           "// y = |x| - c; 12 is -c; 13 to 15 zero. Centres are the midpoints, except\n"
           "// entry 44, whose interval ends where erf rounds to 1 (5.92158719...).\n"
           "// Entry 0 has c = 0, column 2 = 2/sqrt(pi) and no constant; entry 45 is 1.0.\n"
           "// Weighted least squares at Chebyshev nodes, coefficients rounded up by\n"
           "// power with the higher ones refitted.");
    const double sat = erf_saturates();
    for (int k = 0; k < 46; ++k) {
        double v[16] = {};
        if (k == 45) {
            v[1] = 1.0;
            row(v, 16, k);
            continue;
        }
        double a = 0.0, b = 0.125, c = 0.0;
        if (k > 0) {
            eighth_binade(k, a, b);
            c = k == 44 ? 0.5 * (a + sat) : 0.5 * (a + b);
        }
        Problem pb{a - c, b - c, erf_at, &c, {}};
        Mp ec, rest;
        mpfr_set_d(ec.get(), c, MPFR_RNDN);
        mpfr_erf(ec.get(), ec.get(), MPFR_RNDN);
        Term constant{0, kHiLo, true};
        constant.given_hi = mpfr_get_d(ec.get(), MPFR_RNDN);
        mpfr_sub_d(rest.get(), ec.get(), constant.given_hi, MPFR_RNDN);
        constant.given_lo = mpfr_get_d(rest.get(), MPFR_RNDN);
        pb.terms.push_back(constant);
        for (int p = 1; p <= 10; ++p) pb.terms.push_back(Term{p, kDouble});
        if (k == 0) {
            pb.ya = 0.0;
            Mp r;
            mpfr_const_pi(r.get(), MPFR_RNDN);
            mpfr_rec_sqrt(r.get(), r.get(), MPFR_RNDN);
            mpfr_mul_2ui(r.get(), r.get(), 1, MPFR_RNDN);
            pb.terms[1].fixed = true;
            pb.terms[1].given_hi = mpfr_get_d(r.get(), MPFR_RNDN);  // 2/sqrt(pi)
        }
        fit(pb);
        v[0] = pb.terms[0].lo;
        v[1] = pb.terms[0].hi;
        for (int p = 1; p <= 10; ++p) v[1 + p] = pb.terms[p].hi;
        v[12] = -c;
        row(v, 16, k);
    }
    report("ha");
}

// Erf LA and EP: quarter-binades from 0.125, y = |x| * scale - centre with
// scale 1; entry 23 (6.0 on) is the constant 1 with scale 0.
[[maybe_unused]] void erf_quarter(int degree, const char* args) {
    char rule[900];
    std::snprintf(rule, sizeof rule,
                  "24 entries of 16 doubles. Entry k serves |x| in the k-th quarter-binade\n"
                  "// from 0.125 (entry 0 below 0.125, entry 23 from 6.0 on). Columns 0 to %d\n"
                  "// the coefficients of a degree %d polynomial in y = |x| * scale - centre,\n"
                  "// constant first; 14 the centre (the midpoint; 0 for entry 0); 15 the\n"
                  "// scale, 1.0. Entry 0 has no constant term; entry 23 is 1.0 with scale 0.\n"
                  "// Weighted least squares at Chebyshev nodes, coefficients rounded up by\n"
                  "// power with the higher ones refitted.",
                  degree, degree);
    header(args, rule);
    for (int k = 0; k < 24; ++k) {
        double v[16] = {};
        if (k == 23) {
            v[0] = 1.0;
            row(v, 16, k);
            continue;
        }
        double a = 0.0, b = 0.125, c = 0.0;
        if (k > 0) {
            const int e = (k - 1) / 4, q = (k - 1) % 4;
            a = std::ldexp(1.0 + q / 4.0, e - 3);
            b = std::ldexp(1.0 + (q + 1) / 4.0, e - 3);
            c = 0.5 * (a + b);
        }
        Problem pb{a - c, b - c, erf_at, &c, {}};
        for (int p = 0; p <= degree; ++p) pb.terms.push_back(Term{p, kDouble});
        if (k == 0) pb.terms[0].fixed = true;  // erf(0) = 0, kept exact
        fit(pb);
        for (int p = 0; p <= degree; ++p) v[p] = pb.terms[p].hi;
        v[14] = c;
        v[15] = 1.0;
        row(v, 16, k);
    }
    report(args);
}

// --- erfc ------------------------------------------------------------------

// Start and end of interval k: [0, 0.25), then quarter-binades from 0.25.
void erfc_interval(int k, double& a, double& b) {
    if (k == 0) {
        a = 0.0;
        b = 0.25;
        return;
    }
    const int e = (k - 1) / 4, q = (k - 1) % 4;
    a = std::ldexp(1.0 + q / 4.0, e - 2);
    b = std::ldexp(1.0 + (q + 1) / 4.0, e - 2);
}

// exp(x^2) erfc(x) at x = s + y.
void erfcx_at(mpfr_ptr out, mpfr_srcptr y, const void* ctx) {
    const double s = *static_cast<const double*>(ctx);
    mpfr_add_d(out, y, s, MPFR_RNDN);
    erfcx(out, out);
}

// The last argument the kernels take the polynomials at, with a margin:
// above 27.2260136 (high word 0x403B39DC) the result is 0.
constexpr double kErfcLast = 27.23;

[[maybe_unused]] void erfc_poly() {
    header("poly",
           "28 entries of 16 doubles. Entry k expands g(x) = exp(x^2) erfc(x) about the\n"
           "// start s of its interval ([0, 0.25), then quarter-binades from 0.25; the\n"
           "// last, [24, 28), is fitted up to 27.23): g(s + y) = C + L y +\n"
           "// c2 y^2 + ... + c13 y^13. Columns: 0, 1 lo and hi of C = g(s); 2, 3 lo and\n"
           "// hi of L; 4 to 15 c2 to c13. Weighted least squares at Chebyshev nodes,\n"
           "// coefficients rounded up by power with the higher ones refitted.");
    for (int k = 0; k < 28; ++k) {
        double a, b;
        erfc_interval(k, a, b);
        if (b > kErfcLast) b = kErfcLast;
        Problem pb{0.0, b - a, erfcx_at, &a, {}};
        Mp g, rest;
        mpfr_set_d(g.get(), a, MPFR_RNDN);
        erfcx(g.get(), g.get());
        Term constant{0, kHiLo, true};
        constant.given_hi = mpfr_get_d(g.get(), MPFR_RNDN);
        mpfr_sub_d(rest.get(), g.get(), constant.given_hi, MPFR_RNDN);
        constant.given_lo = mpfr_get_d(rest.get(), MPFR_RNDN);
        pb.terms.push_back(constant);
        pb.terms.push_back(Term{1, kHiLo});
        for (int p = 2; p <= 13; ++p) pb.terms.push_back(Term{p, kDouble});
        fit(pb);
        double v[16];
        v[0] = pb.terms[0].lo;
        v[1] = pb.terms[0].hi;
        v[2] = pb.terms[1].lo;
        v[3] = pb.terms[1].hi;
        for (int p = 2; p <= 13; ++p) v[2 + p] = pb.terms[p].hi;
        row(v, 16, k);
    }
    report("poly");
}

[[maybe_unused]] void erfc_starts() {
    header("starts",
           "28 entries of 2 doubles: the start of interval k of the erfc polynomial\n"
           "// table, then 0. The pair stride lets the entry offset of the polynomial\n"
           "// table, shifted right by 3, index this one.");
    for (int k = 0; k < 28; ++k) {
        double v[2] = {0.0, 0.0}, b;
        erfc_interval(k, v[0], b);
        row(v, 2, k);
    }
}

[[maybe_unused]] void erfc_exp() {
    header("exp",
           "entry j of 128 is hi, lo: hi is the double nearest 2^(j/128) with its low\n"
           "// 27 mantissa bits cleared, lo the double nearest 2^(j/128) - hi.");
    Mp p, rest;
    for (int j = 0; j < 128; ++j) {
        mpfr_set_si(p.get(), j, MPFR_RNDN);
        mpfr_div_2ui(p.get(), p.get(), 7, MPFR_RNDN);
        mpfr_ui_pow(p.get(), 2, p.get(), MPFR_RNDN);
        double v[2];
        v[0] = from_bits(bits(mpfr_get_d(p.get(), MPFR_RNDN)) & ~uint64_t{0x7ffffff});
        mpfr_sub_d(rest.get(), p.get(), v[0], MPFR_RNDN);
        v[1] = mpfr_get_d(rest.get(), MPFR_RNDN);
        row(v, 2, j);
    }
}

// --- erfinv ----------------------------------------------------------------

// t = 2^E (base + r): the interval of one table entry, r in [-half, half).
struct TInterval {
    int E;
    double base;
};

// erfinv(x) / x at x = 1 - t, t = 2^E (base + r).
void erfinv_ratio(mpfr_ptr out, mpfr_srcptr r, const void* ctx) {
    const TInterval& ti = *static_cast<const TInterval*>(ctx);
    Mp t, x;
    mpfr_add_d(t.get(), r, ti.base, MPFR_RNDN);
    mpfr_mul_2si(t.get(), t.get(), ti.E, MPFR_RNDN);
    // 128 bits hold the fit's targets far beyond the doubles they become,
    // and keep Newton's iteration on erfc, the generator's main cost, short
    mpfr_t y;
    mpfr_init2(y, 128);
    erfinv_of_t(y, t.get());
    mpfr_ui_sub(x.get(), 1, t.get(), MPFR_RNDN);
    mpfr_div(out, y, x.get(), MPFR_RNDN);
    mpfr_clear(y);
}

// Index i of a table with 2^b intervals a binade: the high word of t,
// shifted right by 20 - b, is `top` - i, so t's biased exponent and the
// top b mantissa bits q give t = 2^E (1 + q/2^b + half + r).
TInterval t_interval(int i, int b, int top) {
    const int hw = top - i;
    const int q = hw & ((1 << b) - 1), eb = hw >> b;
    const double half = std::ldexp(1.0, -b - 1);
    return TInterval{eb - 1023, 1.0 + std::ldexp(q, -b) + half};
}

[[maybe_unused]] void erfinv_ha() {
    header("ha",
           "212 entries of 17 doubles. Entry i serves t = 1 - |x| whose high word,\n"
           "// shifted right by 18, is 0xFFB - i: quarter-binades of t from [0.875, 1)\n"
           "// down to [2^-53, 1.25 * 2^-53). With t = 2^E (1.125 + q/4 + r), r in\n"
           "// [-0.125, 0.125), the polynomial in r approximates erfinv(x) / x. Columns:\n"
           "// 0 lo of the constant; 1 lo of the linear coefficient; 2 to 14 the\n"
           "// coefficients of r^2 to r^14; 15 hi of the constant (nearest double);\n"
           "// 16 hi of the linear coefficient (26 significant bits, so that it times a\n"
           "// 26-bit part of r is exact). Weighted least squares at Chebyshev nodes,\n"
           "// coefficients rounded up by power with the higher ones refitted.");
    for (int i = 0; i < 212; ++i) {
        const TInterval ti = t_interval(i, 2, 0xFFB);
        Problem pb{-0.125, 0.125, erfinv_ratio, &ti, {}};
        pb.terms.push_back(Term{0, kHiLo});
        pb.terms.push_back(Term{1, kHiLo26});
        for (int p = 2; p <= 14; ++p) pb.terms.push_back(Term{p, kDouble});
        fit(pb);
        double v[17];
        v[0] = pb.terms[0].lo;
        v[1] = pb.terms[1].lo;
        for (int p = 2; p <= 14; ++p) v[p] = pb.terms[p].hi;
        v[15] = pb.terms[0].hi;
        v[16] = pb.terms[1].hi;
        row(v, 17, i);
    }
    report("ha");
}

[[maybe_unused]] void erfinv_plain(int entries, int b, int top, int ncoef, const char* args,
                                   const char* rule) {
    header(args, rule);
    const double half = std::ldexp(1.0, -b - 1);
    for (int i = 0; i < entries; ++i) {
        const TInterval ti = t_interval(i, b, top);
        Problem pb{-half, half, erfinv_ratio, &ti, {}};
        for (int p = 0; p < ncoef; ++p) pb.terms.push_back(Term{p, kDouble});
        fit(pb);
        double v[16];
        for (int p = 0; p < ncoef; ++p) v[p] = pb.terms[p].hi;
        row(v, ncoef, i);
    }
    report(args);
}

int usage() {
#if defined(ZVL_ERFC_TABLES)
    std::fprintf(stderr, "usage: erfc_tables [--report] poly|starts|exp\n");
#elif defined(ZVL_ERFINV_TABLES)
    std::fprintf(stderr, "usage: erfinv_tables [--report] ha|la|ep\n");
#else
    std::fprintf(stderr, "usage: erf_tables [--report] ha|la|ep\n");
#endif
    return 2;
}

}  // namespace

int main(int argc, char** argv) {
    int a = 1;
    if (a < argc && std::strcmp(argv[a], "--report") == 0) {
        g_report = true;
        ++a;
    }
    if (argc - a != 1) return usage();
    const char* tab = argv[a];
    auto is = [&](const char* t) { return std::strcmp(tab, t) == 0; };
#if defined(ZVL_ERFC_TABLES)
    if (is("poly")) {
        erfc_poly();
    } else if (is("starts")) {
        erfc_starts();
    } else if (is("exp")) {
        erfc_exp();
    } else {
        return usage();
    }
#elif defined(ZVL_ERFINV_TABLES)
    if (is("ha")) {
        erfinv_ha();
    } else if (is("la")) {
        erfinv_plain(212, 2, 0xFFB, 12, "la",
                     "212 entries of 12 doubles, the intervals of the HA table: the\n"
                     "// coefficients of a degree 11 polynomial in r approximating erfinv(x) / x,\n"
                     "// constant first. Weighted least squares at Chebyshev nodes,\n"
                     "// coefficients rounded up by power with the higher ones refitted.");
    } else if (is("ep")) {
        erfinv_plain(848, 4, 0x3FEF, 4, "ep",
                     "848 entries of 4 doubles. Entry i serves t = 1 - |x| whose high word,\n"
                     "// shifted right by 16, is 0x3FEF - i: sixteenth-binades of t from\n"
                     "// [0.9375, 1) down to 2^-53. With t = 2^E (1.03125 + q/16 + r), r in\n"
                     "// [-0.03125, 0.03125), the coefficients of a degree 3 polynomial in r\n"
                     "// approximating erfinv(x) / x, constant first. Weighted least squares at\n"
                     "// Chebyshev nodes, coefficients rounded up by power with the higher\n"
                     "// ones refitted.");
    } else {
        return usage();
    }
#else
    if (is("ha")) {
        erf_ha();
    } else if (is("la")) {
        erf_quarter(13, "la");
    } else if (is("ep")) {
        erf_quarter(7, "ep");
    } else {
        return usage();
    }
#endif
    return 0;
}
