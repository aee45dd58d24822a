#include "tools/fit/minimax.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <numeric>

namespace zvl_fit {
namespace {

// An MPFR number with value semantics.
struct Mp {
    mpfr_t v;
    Mp() {
        mpfr_init2(v, kPrec);
        mpfr_set_zero(v, 1);
    }
    explicit Mp(double d) {
        mpfr_init2(v, kPrec);
        mpfr_set_d(v, d, MPFR_RNDN);
    }
    Mp(const Mp& o) {
        mpfr_init2(v, kPrec);
        mpfr_set(v, o.v, MPFR_RNDN);
    }
    Mp& operator=(const Mp& o) {
        mpfr_set(v, o.v, MPFR_RNDN);
        return *this;
    }
    ~Mp() { mpfr_clear(v); }
};

// The grid with g, w and the powers of v at every point; g less the fixed
// terms in r.
struct Grid {
    std::vector<Mp> v, g, w, r;
    std::vector<std::vector<Mp>> pw;  // pw[k][i] = v_k^powers[i]
    std::vector<int> live;            // points where g and w are numbers
};

Grid make_grid(const Problem& p) {
    const int n = p.grid;
    Grid G;
    G.v.resize(n);
    G.g.resize(n);
    G.w.resize(n);
    G.pw.assign(n, std::vector<Mp>(p.powers.size()));
    Mp mid, half, t, pi;
    mpfr_set_d(mid.v, p.lo, MPFR_RNDN);
    mpfr_add_d(mid.v, mid.v, p.hi, MPFR_RNDN);
    mpfr_div_2ui(mid.v, mid.v, 1, MPFR_RNDN);
    mpfr_set_d(half.v, p.hi, MPFR_RNDN);
    mpfr_sub_d(half.v, half.v, p.lo, MPFR_RNDN);
    mpfr_div_2ui(half.v, half.v, 1, MPFR_RNDN);
    mpfr_const_pi(pi.v, MPFR_RNDN);
    for (int k = 0; k < n; ++k) {
        if (k == 0) {
            mpfr_set_d(G.v[k].v, p.lo, MPFR_RNDN);
        } else if (k == n - 1) {
            mpfr_set_d(G.v[k].v, p.hi, MPFR_RNDN);
        } else {
            mpfr_mul_si(t.v, pi.v, k, MPFR_RNDN);
            mpfr_div_si(t.v, t.v, n - 1, MPFR_RNDN);
            mpfr_cos(t.v, t.v, MPFR_RNDN);
            mpfr_mul(t.v, t.v, half.v, MPFR_RNDN);
            mpfr_sub(G.v[k].v, mid.v, t.v, MPFR_RNDN);
        }
        p.target(G.g[k].v, G.v[k].v);
        if (p.weight) {
            p.weight(G.w[k].v, G.v[k].v);
        } else {
            mpfr_abs(G.w[k].v, G.g[k].v, MPFR_RNDN);
            mpfr_ui_div(G.w[k].v, 1, G.w[k].v, MPFR_RNDN);
        }
        for (size_t i = 0; i < p.powers.size(); ++i)
            mpfr_pow_si(G.pw[k][i].v, G.v[k].v, p.powers[i], MPFR_RNDN);
        if (mpfr_number_p(G.g[k].v) && mpfr_number_p(G.w[k].v)) G.live.push_back(k);
    }
    G.r = G.g;
    return G;
}

// r = g less the fixed terms (NaN marks a free one).
void set_fixed(Grid& G, const std::vector<double>& fixed) {
    Mp t;
    for (int k : G.live) {
        G.r[k] = G.g[k];
        for (size_t i = 0; i < fixed.size(); ++i) {
            if (std::isnan(fixed[i])) continue;
            mpfr_mul_d(t.v, G.pw[k][i].v, fixed[i], MPFR_RNDN);
            mpfr_sub(G.r[k].v, G.r[k].v, t.v, MPFR_RNDN);
        }
    }
}

// e = w (r - sum c[i] pw[i]) over the free terms at grid point k.
void error_at(const Grid& G, int k, const std::vector<int>& free, const std::vector<Mp>& c,
              mpfr_t e) {
    Mp s, t;
    for (size_t j = 0; j < free.size(); ++j) {
        mpfr_mul(t.v, c[j].v, G.pw[k][free[j]].v, MPFR_RNDN);
        mpfr_add(s.v, s.v, t.v, MPFR_RNDN);
    }
    mpfr_sub(e, G.r[k].v, s.v, MPFR_RNDN);
    mpfr_mul(e, e, G.w[k].v, MPFR_RNDN);
}

// Solves A x = b in place by Gaussian elimination with partial pivoting.
void solve(std::vector<std::vector<Mp>>& A, std::vector<Mp>& b) {
    const size_t n = b.size();
    Mp t;
    for (size_t col = 0; col < n; ++col) {
        size_t piv = col;
        for (size_t r = col + 1; r < n; ++r)
            if (mpfr_cmpabs(A[r][col].v, A[piv][col].v) > 0) piv = r;
        std::swap(A[col], A[piv]);
        std::swap(b[col], b[piv]);
        for (size_t r = col + 1; r < n; ++r) {
            Mp f;
            mpfr_div(f.v, A[r][col].v, A[col][col].v, MPFR_RNDN);
            for (size_t c = col; c < n; ++c) {
                mpfr_mul(t.v, f.v, A[col][c].v, MPFR_RNDN);
                mpfr_sub(A[r][c].v, A[r][c].v, t.v, MPFR_RNDN);
            }
            mpfr_mul(t.v, f.v, b[col].v, MPFR_RNDN);
            mpfr_sub(b[r].v, b[r].v, t.v, MPFR_RNDN);
        }
    }
    for (size_t r = n; r-- > 0;) {
        for (size_t c = r + 1; c < n; ++c) {
            mpfr_mul(t.v, A[r][c].v, b[c].v, MPFR_RNDN);
            mpfr_sub(b[r].v, b[r].v, t.v, MPFR_RNDN);
        }
        mpfr_div(b[r].v, b[r].v, A[r][r].v, MPFR_RNDN);
    }
}

// Remez exchange for the free terms, starting from the reference `ref`
// (indices into G.live, len free.size() + 1), which it updates.
std::vector<Mp> remez(const Grid& G, const std::vector<int>& free, std::vector<int>& ref) {
    const size_t n = free.size();
    std::vector<Mp> c(n);
    std::vector<Mp> e(G.live.size());
    for (int iter = 0; iter < 40; ++iter) {
        std::vector<std::vector<Mp>> A(n + 1, std::vector<Mp>(n + 1));
        std::vector<Mp> b(n + 1);
        for (size_t j = 0; j <= n; ++j) {
            const int k = G.live[ref[j]];
            for (size_t i = 0; i < n; ++i) A[j][i] = G.pw[k][free[i]];
            mpfr_ui_div(A[j][n].v, 1, G.w[k].v, MPFR_RNDN);
            if (j & 1) mpfr_neg(A[j][n].v, A[j][n].v, MPFR_RNDN);
            b[j] = G.r[k];
        }
        solve(A, b);
        for (size_t i = 0; i < n; ++i) c[i] = b[i];
        // The error's sign runs; one extremum from each.
        for (size_t q = 0; q < G.live.size(); ++q) error_at(G, G.live[q], free, c, e[q].v);
        std::vector<int> ext;
        for (size_t q = 0; q < e.size();) {
            const int sign = mpfr_sgn(e[q].v) >= 0 ? 1 : -1;
            size_t best = q;
            size_t r = q;
            for (; r < e.size() && (mpfr_sgn(e[r].v) >= 0 ? 1 : -1) == sign; ++r)
                if (mpfr_cmpabs(e[r].v, e[best].v) > 0) best = r;
            ext.push_back(static_cast<int>(best));
            q = r;
        }
        if (ext.size() < n + 1) break;  // the reference stays
        while (ext.size() > n + 1) {
            if (mpfr_cmpabs(e[ext.front()].v, e[ext.back()].v) < 0)
                ext.erase(ext.begin());
            else
                ext.pop_back();
        }
        // Converged when the extrema's sizes agree to a part in 10^4.
        Mp lo, hi;
        mpfr_abs(lo.v, e[ext[0]].v, MPFR_RNDN);
        mpfr_abs(hi.v, e[ext[0]].v, MPFR_RNDN);
        for (int q : ext) {
            if (mpfr_cmpabs(e[q].v, lo.v) < 0) mpfr_abs(lo.v, e[q].v, MPFR_RNDN);
            if (mpfr_cmpabs(e[q].v, hi.v) > 0) mpfr_abs(hi.v, e[q].v, MPFR_RNDN);
        }
        const bool same = ext == ref;
        ref = ext;
        mpfr_sub(lo.v, hi.v, lo.v, MPFR_RNDN);
        mpfr_div(lo.v, lo.v, hi.v, MPFR_RNDN);
        if (same || mpfr_cmp_d(lo.v, 1e-4) < 0) break;
    }
    return c;
}

// max |w r| over the grid (r being g less all the coefficients' terms).
double worst_error(const Grid& G, double* where) {
    Mp worst, e;
    int at = G.live.empty() ? 0 : G.live[0];
    for (int k : G.live) {
        mpfr_mul(e.v, G.r[k].v, G.w[k].v, MPFR_RNDN);
        if (mpfr_cmpabs(e.v, worst.v) > 0) {
            mpfr_abs(worst.v, e.v, MPFR_RNDN);
            at = k;
        }
    }
    if (where) *where = mpfr_get_d(G.v[at].v, MPFR_RNDN);
    return mpfr_get_d(worst.v, MPFR_RNDN);
}

}  // namespace

Fit minimax(const Problem& p, const std::vector<double>& fixed_in) {
    std::vector<double> fixed = fixed_in;
    fixed.resize(p.powers.size(), NAN);
    // Rounding order: lowest power first.
    std::vector<int> order(p.powers.size());
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(),
                     [&](int a, int b) { return p.powers[a] < p.powers[b]; });
    std::vector<int> ref;
    Grid G = make_grid(p);
    // Each round fits the free terms, notes the error of rounding them all
    // now, and fixes the next one. Once the rounding errors left are below
    // the fit's own, refitting only chases them with ever larger high
    // terms: the round kept is the first whose error no later round beats
    // by 10%.
    Fit best;
    best.error = INFINITY;
    for (int next : order) {
        if (!std::isnan(fixed[next])) continue;
        set_fixed(G, fixed);
        std::vector<int> free;
        for (size_t i = 0; i < fixed.size(); ++i)
            if (std::isnan(fixed[i])) free.push_back(static_cast<int>(i));
        if (ref.size() != free.size() + 1) {
            ref.clear();
            const size_t m = G.live.size() - 1;
            for (size_t j = 0; j <= free.size(); ++j)
                ref.push_back(static_cast<int>(m * j / free.size()));
        }
        const std::vector<Mp> c = remez(G, free, ref);
        std::vector<double> all = fixed;
        for (size_t j = 0; j < free.size(); ++j) all[free[j]] = mpfr_get_d(c[j].v, MPFR_RNDN);
        set_fixed(G, all);
        double where = 0;
        const double e = worst_error(G, &where);
        if (e < 0.9 * best.error) best = {all, e, where};
        if (!p.sequential) break;
        fixed[next] = all[next];
        // One term fewer: drop the reference point with the smallest error.
        set_fixed(G, fixed);
        std::vector<Mp> err(ref.size());
        for (size_t j = 0; j < ref.size(); ++j) error_at(G, G.live[ref[j]], free, c, err[j].v);
        size_t drop = 0;
        for (size_t j = 1; j < ref.size(); ++j)
            if (mpfr_cmpabs(err[j].v, err[drop].v) < 0) drop = j;
        ref.erase(ref.begin() + static_cast<long>(drop));
    }
    if (std::isinf(best.error)) {  // nothing was free
        best.c = fixed;
        set_fixed(G, fixed);
        best.error = worst_error(G, &best.where);
    }
    return best;
}

double max_error(const Problem& p, const std::vector<double>& c, double* where) {
    Grid G = make_grid(p);
    set_fixed(G, c);
    return worst_error(G, where);
}

void print_log2(char* out, int size, double error) {
    if (error == 0) {
        std::snprintf(out, static_cast<size_t>(size), "0");
        return;
    }
    Mp l;
    mpfr_set_d(l.v, error, MPFR_RNDN);
    mpfr_log2(l.v, l.v, MPFR_RNDN);
    mpfr_mul_ui(l.v, l.v, 100, MPFR_RNDN);
    mpfr_rint(l.v, l.v, MPFR_RNDN);
    const long hundredths = mpfr_get_si(l.v, MPFR_RNDN);
    const long a = hundredths < 0 ? -hundredths : hundredths;
    std::snprintf(out, static_cast<size_t>(size), "2^%s%ld.%02ld", hundredths < 0 ? "-" : "",
                  a / 100, a % 100);
}

}  // namespace zvl_fit
