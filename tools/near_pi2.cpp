// Writes tests/data/ulp-hardcases/near_pi2.txt: in every binade [2^k,
// 2^(k+1)), k = 0 .. 1023, the double nearest to an even multiple of pi/2
// (a zero of the sine and of the tangent) and the double nearest to an odd
// one (a zero of the cosine, a pole of the tangent). There the reduced
// argument is smallest, the result of Sin, Cos or Tan is as small (or, for
// Tan, as large) as it gets in the binade, and its relative accuracy is that
// of the reduction.
//
// x = M 2^(k-52), M in [2^52, 2^53), lies J + d multiples of pi/2 from 0
// with d = M a - J, a = 2^(k-51)/pi taken modulo 2 (J's parity is all that
// matters). The pairs (M, d) form a lattice; with M scaled so that the box
// |M| < 2^53, |d| < 2^-53 is square, a Lagrange-reduced basis b1, b2 reaches
// every point of the box as i b1 + j b2 with |j| at most a few, and for each
// j the best i of each parity lies next to the one that cancels d (or at an
// end of the range of M). Everything is exact integer arithmetic on
// a 2^320; a comes from MPFR, so the output is the same on every machine.
#include <gmp.h>
#include <mpfr.h>

#include <cmath>
#include <cstdio>

#include "tools/table_format.h"

namespace {

constexpr int kFrac = 320;  // fraction bits of a and of the distances
constexpr int kReach = 16;  // |j| searched; the reduced basis needs 2 or 3

// A lattice point by its integer coordinates (M, J) and the scaled distance
// E = M a - J 2^kFrac; the norm weighs M by 2^(kFrac - 106).
struct Point {
    mpz_t M, J, E;
    Point() { mpz_inits(M, J, E, static_cast<mpz_ptr>(nullptr)); }
    ~Point() { mpz_clears(M, J, E, static_cast<mpz_ptr>(nullptr)); }
    Point(const Point&) = delete;
    Point& operator=(const Point&) = delete;
};

struct Search {
    mpz_t a, one, half, lo, hi, t, u, w;  // a; 2^kFrac and half that; the range of M; scratch
    Search() {
        mpz_inits(a, one, half, lo, hi, t, u, w, static_cast<mpz_ptr>(nullptr));
        mpz_setbit(one, kFrac);
        mpz_setbit(half, kFrac - 1);
        mpz_setbit(lo, 52);
        mpz_setbit(hi, 53);  // M < hi
    }
    ~Search() { mpz_clears(a, one, half, lo, hi, t, u, w, static_cast<mpz_ptr>(nullptr)); }

    void distance(Point& p) {  // E from M and J
        mpz_mul(p.E, p.M, a);
        mpz_submul(p.E, p.J, one);
    }
    // <p, q> in the weighted norm: M scaled by 2^(kFrac - 106)
    void dot(mpz_t out, const Point& p, const Point& q) {
        mpz_mul(out, p.M, q.M);
        mpz_mul_2exp(out, out, 2 * (kFrac - 106));
        mpz_addmul(out, p.E, q.E);
    }
    // q -= m p
    void sub_mul(Point& q, const Point& p, const mpz_t m) {
        mpz_submul(q.M, m, p.M);
        mpz_submul(q.J, m, p.J);
        mpz_submul(q.E, m, p.E);
    }
    void swap(Point& p, Point& q) {
        mpz_swap(p.M, q.M);
        mpz_swap(p.J, q.J);
        mpz_swap(p.E, q.E);
    }
    // Lagrange reduction of (b1, b2): afterwards b1 is a shortest vector.
    void reduce(Point& b1, Point& b2) {
        for (;;) {
            dot(t, b1, b1);
            dot(u, b2, b2);
            if (mpz_cmp(t, u) > 0) {
                swap(b1, b2);
                mpz_swap(t, u);
            }
            dot(u, b1, b2);
            // m = round(u / t)
            mpz_mul_2exp(u, u, 1);
            mpz_add(u, u, t);
            mpz_mul_2exp(t, t, 1);
            mpz_fdiv_q(w, u, t);
            if (mpz_sgn(w) == 0) return;
            sub_mul(b2, b1, w);
        }
    }
};

struct Best {
    bool found = false;
    mpz_t M, E;  // E = |distance| 2^kFrac
    Best() { mpz_inits(M, E, static_cast<mpz_ptr>(nullptr)); }
    ~Best() { mpz_clears(M, E, static_cast<mpz_ptr>(nullptr)); }
};

// Offers M (in range) with the nearest J to M a.
void offer(Search& s, const mpz_t M, Best best[2]) {
    if (mpz_cmp(M, s.lo) < 0 || mpz_cmp(M, s.hi) >= 0) return;
    Point p;
    mpz_set(p.M, M);
    // J = round(M a / 2^kFrac)
    mpz_mul(s.t, M, s.a);
    mpz_add(s.t, s.t, s.half);
    mpz_fdiv_q_2exp(p.J, s.t, kFrac);
    s.distance(p);
    mpz_abs(p.E, p.E);
    Best& b = best[mpz_odd_p(p.J) ? 1 : 0];
    if (!b.found || mpz_cmp(p.E, b.E) < 0) {
        b.found = true;
        mpz_set(b.M, p.M);
        mpz_set(b.E, p.E);
    }
}

void binade(int k, Search& s, Best best[2]) {
    // a = floor(2^(k - 51 + kFrac) / pi) mod 2^(kFrac + 1)
    mpfr_t v;
    mpfr_init2(v, k + kFrac + 128);
    mpfr_const_pi(v, MPFR_RNDN);
    mpfr_ui_div(v, 1, v, MPFR_RNDN);
    mpfr_mul_2si(v, v, k - 51 + kFrac, MPFR_RNDN);
    mpfr_get_z(s.a, v, MPFR_RNDD);
    mpfr_clear(v);
    mpz_fdiv_r_2exp(s.a, s.a, kFrac + 1);

    Point b1, b2;
    mpz_set_ui(b1.M, 1);
    mpz_set_ui(b1.J, 0);
    mpz_set_ui(b2.M, 0);
    mpz_set_si(b2.J, -1);
    s.distance(b1);
    s.distance(b2);
    s.reduce(b1, b2);

    mpz_t i, i_lo, i_hi, M, num;
    mpz_inits(i, i_lo, i_hi, M, num, static_cast<mpz_ptr>(nullptr));
    for (int j = -kReach; j <= kReach; ++j) {
        // M = i M1 + j M2 in [lo, hi): the range of i (M1 != 0 for the
        // shortest vector); the i that cancels E, i* = -j E2 / E1
        mpz_mul_si(num, b2.M, j);
        if (mpz_sgn(b1.M) > 0) {
            mpz_sub(i_lo, s.lo, num);
            mpz_cdiv_q(i_lo, i_lo, b1.M);
            mpz_sub(i_hi, s.hi, num);
            mpz_sub_ui(i_hi, i_hi, 1);
            mpz_fdiv_q(i_hi, i_hi, b1.M);
        } else {
            mpz_sub(i_lo, s.hi, num);
            mpz_sub_ui(i_lo, i_lo, 1);
            mpz_cdiv_q(i_lo, i_lo, b1.M);
            mpz_sub(i_hi, s.lo, num);
            mpz_fdiv_q(i_hi, i_hi, b1.M);
        }
        if (mpz_cmp(i_lo, i_hi) > 0) continue;
        mpz_mul_si(num, b2.E, -j);
        if (mpz_sgn(b1.E) != 0)
            mpz_fdiv_q(i, num, b1.E);
        else
            mpz_set(i, i_lo);
        // the two nearest i of each parity, clamped to the range, and each
        // end of the range with its inner neighbour
        mpz_t cand[8];
        for (auto& c : cand) mpz_init(c);
        mpz_sub_ui(cand[0], i, 1);
        mpz_set(cand[1], i);
        mpz_add_ui(cand[2], i, 1);
        mpz_add_ui(cand[3], i, 2);
        mpz_set(cand[4], i_lo);
        mpz_add_ui(cand[5], i_lo, 1);
        mpz_set(cand[6], i_hi);
        mpz_sub_ui(cand[7], i_hi, 1);
        mpz_mul_si(num, b2.M, j);
        for (auto& c : cand) {
            if (mpz_cmp(c, i_lo) < 0) mpz_set(c, i_lo);
            if (mpz_cmp(c, i_hi) > 0) mpz_set(c, i_hi);
            mpz_mul(M, c, b1.M);
            mpz_add(M, M, num);
            offer(s, M, best);
            mpz_clear(c);
        }
    }
    mpz_clears(i, i_lo, i_hi, M, num, static_cast<mpz_ptr>(nullptr));
}

void write(int k, const Best& b, bool odd) {
    if (!b.found) return;
    // distance in multiples of pi/2 is E 2^-kFrac; below 2^-20 only
    const long bits = static_cast<long>(mpz_sizeinbase(b.E, 2));
    if (bits > kFrac - 20) return;
    const double x = std::ldexp(mpz_get_d(b.M), k - 52);
    // log2 of the distance to the multiple of pi/2, in radians
    mpfr_t e, pi;
    mpfr_inits2(64, e, pi, static_cast<mpfr_ptr>(nullptr));
    mpfr_set_z(e, b.E, MPFR_RNDN);
    mpfr_mul_2si(e, e, -kFrac - 1, MPFR_RNDN);
    mpfr_const_pi(pi, MPFR_RNDN);
    mpfr_mul(e, e, pi, MPFR_RNDN);
    mpfr_log2(e, e, MPFR_RNDN);
    char buf[40];
    zvl_tables::put_hex(x, buf, sizeof buf);
    std::printf("%s  # 2^%.1f from an %s multiple\n", buf, mpfr_get_d(e, MPFR_RNDN),
                odd ? "odd" : "even");
    mpfr_clears(e, pi, static_cast<mpfr_ptr>(nullptr));
}

}  // namespace

int main() {
    std::printf(
        "# Doubles nearest to multiples of pi/2 (binary64), for Sin, Cos and Tan.\n"
        "# Generated by tools/near_pi2.cpp (build target near_pi2); do not edit by hand.\n"
        "# In every binade [2^k, 2^(k+1)), k = 0 .. 1023, the double nearest to an even\n"
        "# multiple of pi/2 and the one nearest to an odd multiple, found by lattice\n"
        "# reduction in exact arithmetic; the number after \"#\" is log2 of the distance.\n"
        "# symmetric\n");
    Search s;
    for (int k = 0; k <= 1023; ++k) {
        Best best[2];
        binade(k, s, best);
        write(k, best[0], false);
        write(k, best[1], true);
    }
    return 0;
}
