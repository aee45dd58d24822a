#include "tools/common/complex_reference.h"

namespace {

constexpr mpfr_rnd_t N = MPFR_RNDN;

// A complex number of MPFR parts at one precision.
struct C {
    mpfr_t re, im;
    explicit C(mpfr_prec_t p) {
        mpfr_init2(re, p);
        mpfr_init2(im, p);
    }
    ~C() {
        mpfr_clear(re);
        mpfr_clear(im);
    }
    C(const C&) = delete;
    C& operator=(const C&) = delete;
};

struct Work {
    mpfr_prec_t p;
    mpfr_t t, u, v;
    explicit Work(mpfr_prec_t prec) : p(prec) {
        mpfr_inits2(prec, t, u, v, static_cast<mpfr_ptr>(nullptr));
    }
    ~Work() { mpfr_clears(t, u, v, static_cast<mpfr_ptr>(nullptr)); }
};

// Principal square root: w = sqrt((|a| + |a.re|)/2), the other part
// a.im/(2w), exchanged for a negative real part. a.im is not zero.
void csqrt(Work& w, C& out, const C& a) {
    mpfr_hypot(w.t, a.re, a.im, N);
    mpfr_abs(w.u, a.re, N);
    mpfr_add(w.t, w.t, w.u, N);
    mpfr_div_2ui(w.t, w.t, 1, N);
    mpfr_sqrt(w.t, w.t, N);                 // w
    mpfr_abs(w.u, a.im, N);
    mpfr_div(w.u, w.u, w.t, N);
    mpfr_div_2ui(w.u, w.u, 1, N);           // |im|/(2w)
    if (mpfr_signbit(a.re)) {
        mpfr_set(out.re, w.u, N);
        mpfr_setsign(out.im, w.t, mpfr_signbit(a.im), N);
    } else {
        mpfr_set(out.re, w.t, N);
        mpfr_setsign(out.im, w.u, mpfr_signbit(a.im), N);
    }
}

// a = s + k z for the number z = (x, y), k = +-1
void shifted(C& a, double s, int k, double x, double y) {
    mpfr_set_d(a.re, x, N);
    if (k < 0) mpfr_neg(a.re, a.re, N);
    mpfr_add_d(a.re, a.re, s, N);
    mpfr_set_d(a.im, y, N);
    if (k < 0) mpfr_neg(a.im, a.im, N);
}

// Re and Im of conj(a) b
void conj_times(Work& w, mpfr_t re, mpfr_t im, const C& a, const C& b) {
    mpfr_mul(w.t, a.re, b.re, N);
    mpfr_mul(w.u, a.im, b.im, N);
    mpfr_add(re, w.t, w.u, N);
    mpfr_mul(w.t, a.re, b.im, N);
    mpfr_mul(w.u, a.im, b.re, N);
    mpfr_sub(im, w.t, w.u, N);
}

void evaluate(Ref f, double x, double y, mpfr_prec_t p, mpfr_t re, mpfr_t im) {
    Work w(p);
    C a(p), b(p), sa(p), sb(p);
    mpfr_t s, c;
    mpfr_inits2(p, s, c, static_cast<mpfr_ptr>(nullptr));
    switch (f) {
        case Ref::Sqrt:
            shifted(a, 0, 1, x, y);
            csqrt(w, sa, a);
            mpfr_set(re, sa.re, N);
            mpfr_set(im, sa.im, N);
            break;
        case Ref::Cosh:
        case Ref::Sinh:
            mpfr_set_d(w.t, x, N);
            mpfr_sinh_cosh(w.u, w.v, w.t, N);  // sinh, cosh
            mpfr_set_d(w.t, y, N);
            mpfr_sin_cos(s, c, w.t, N);
            mpfr_mul(re, f == Ref::Cosh ? w.v : w.u, c, N);
            mpfr_mul(im, f == Ref::Cosh ? w.u : w.v, s, N);
            break;
        case Ref::Tanh:
            if (x > 64 || x < -64) {
                // +-1 within 2^-180, and 4 sin 2y e^-2|x| / (1 + 2 cos 2y
                // e^-2|x| + e^-4|x|), whose exponential may underflow to 0
                mpfr_set_si(re, x > 0 ? 1 : -1, N);
                mpfr_set_d(w.t, y, N);
                mpfr_mul_2ui(w.t, w.t, 1, N);
                mpfr_sin_cos(s, c, w.t, N);
                mpfr_set_d(w.t, x > 0 ? -x : x, N);
                mpfr_mul_2ui(w.t, w.t, 1, N);
                mpfr_exp(w.u, w.t, N);            // e^-2|x|
                mpfr_mul(w.v, w.u, w.u, N);
                mpfr_mul(c, c, w.u, N);
                mpfr_mul_2ui(c, c, 1, N);
                mpfr_add(w.v, w.v, c, N);
                mpfr_add_ui(w.v, w.v, 1, N);
                mpfr_mul(s, s, w.u, N);
                mpfr_mul_2ui(s, s, 2, N);
                mpfr_div(im, s, w.v, N);
                break;
            }
            // (sinh 2x + i sin 2y)/(cosh 2x + cos 2y)
            mpfr_set_d(w.t, x, N);
            mpfr_mul_2ui(w.t, w.t, 1, N);
            mpfr_sinh_cosh(w.u, w.v, w.t, N);
            mpfr_set_d(w.t, y, N);
            mpfr_mul_2ui(w.t, w.t, 1, N);
            mpfr_sin_cos(s, c, w.t, N);
            mpfr_add(w.v, w.v, c, N);
            mpfr_div(re, w.u, w.v, N);
            mpfr_div(im, s, w.v, N);
            break;
        case Ref::Acos:
            // re = 2 atan2(Re sqrt(1 - z), Re sqrt(1 + z)),
            // im = asinh Im(conj(sqrt(1 + z)) sqrt(1 - z))
            shifted(a, 1, -1, x, y);
            shifted(b, 1, 1, x, y);
            csqrt(w, sa, a);
            csqrt(w, sb, b);
            mpfr_atan2(re, sa.re, sb.re, N);
            mpfr_mul_2ui(re, re, 1, N);
            conj_times(w, s, c, sb, sa);
            mpfr_asinh(im, c, N);
            break;
        case Ref::Acosh:
            // re = asinh Re(conj(sqrt(z - 1)) sqrt(z + 1)),
            // im = 2 atan2(Im sqrt(z - 1), Re sqrt(z + 1))
            shifted(a, -1, 1, x, y);
            shifted(b, 1, 1, x, y);
            csqrt(w, sa, a);
            csqrt(w, sb, b);
            conj_times(w, s, c, sa, sb);
            mpfr_asinh(re, s, N);
            mpfr_atan2(im, sa.im, sb.re, N);
            mpfr_mul_2ui(im, im, 1, N);
            break;
        case Ref::Asinh:
            // asinh z = -i asin(iz); asin u = (atan2(Re u, Re(sqrt(1 - u)
            // sqrt(1 + u))), asinh Im(conj(sqrt(1 - u)) sqrt(1 + u)))
            shifted(a, 1, -1, -y, x);
            shifted(b, 1, 1, -y, x);
            csqrt(w, sa, a);
            csqrt(w, sb, b);
            mpfr_mul(w.t, sa.re, sb.re, N);
            mpfr_mul(w.u, sa.im, sb.im, N);
            mpfr_sub(w.v, w.t, w.u, N);
            mpfr_set_d(w.t, -y, N);
            mpfr_atan2(s, w.t, w.v, N);  // Re asin(iz)
            conj_times(w, w.t, c, sa, sb);
            mpfr_asinh(re, c, N);        // Im asin(iz)
            mpfr_neg(im, s, N);
            break;
        case Ref::Atanh:
            // re = log1p(4x/Q)/4 = log(P/Q)/4 with P = (1 + x)^2 + y^2,
            // Q = (1 - x)^2 + y^2 (log1p where 4x/Q is small, so that a
            // tiny x costs no precision), im = atan2(2y, (1 - x)(1 + x) - y^2)/2
            mpfr_set_d(w.t, x, N);
            mpfr_set_d(w.v, y, N);
            mpfr_sqr(s, w.v, N);                 // y^2
            mpfr_ui_sub(w.u, 1, w.t, N);
            mpfr_sqr(w.u, w.u, N);
            mpfr_add(w.u, w.u, s, N);            // Q
            mpfr_mul_2ui(c, w.t, 2, N);
            mpfr_div(c, c, w.u, N);              // 4x/Q
            if (mpfr_cmp_d(c, 0.5) < 0 && mpfr_cmp_d(c, -0.5) > 0) {
                mpfr_log1p(re, c, N);
            } else {
                mpfr_add_ui(c, w.t, 1, N);
                mpfr_sqr(c, c, N);
                mpfr_add(c, c, s, N);            // P
                mpfr_div(c, c, w.u, N);
                mpfr_log(re, c, N);
            }
            mpfr_div_2ui(re, re, 2, N);
            mpfr_sqr(w.u, w.t, N);
            mpfr_ui_sub(w.u, 1, w.u, N);
            mpfr_sub(w.u, w.u, s, N);
            mpfr_mul_2ui(w.v, w.v, 1, N);
            mpfr_atan2(im, w.v, w.u, N);
            mpfr_div_2ui(im, im, 1, N);
            break;
    }
    mpfr_clears(s, c, static_cast<mpfr_ptr>(nullptr));
}

// |a - b| <= 2^-90 |b|, or both the same zero or infinity
bool settled(const mpfr_t a, const mpfr_t b) {
    if (!mpfr_regular_p(a) || !mpfr_regular_p(b)) return mpfr_equal_p(a, b);
    mpfr_t d;
    mpfr_init2(d, 64);
    mpfr_sub(d, a, b, N);
    const bool ok = mpfr_zero_p(d) || mpfr_get_exp(d) < mpfr_get_exp(b) - 90;
    mpfr_clear(d);
    return ok;
}

}  // namespace

bool complex_reference(Ref f, double x, double y, mpfr_t re, mpfr_t im) {
    // cosh 2x and its like for x up to 2^60
    mpfr_set_emax(mpfr_get_emax_max());
    mpfr_set_emin(mpfr_get_emin_min());
    mpfr_prec_t p = 160;
    mpfr_t r0, i0, r1, i1;
    mpfr_inits2(p, r0, i0, static_cast<mpfr_ptr>(nullptr));
    evaluate(f, x, y, p, r0, i0);
    bool ok = false;
    for (; p <= 20000 && !ok; p *= 2) {
        mpfr_inits2(2 * p, r1, i1, static_cast<mpfr_ptr>(nullptr));
        evaluate(f, x, y, 2 * p, r1, i1);
        ok = settled(r0, r1) && settled(i0, i1);
        mpfr_set_prec(r0, 2 * p);
        mpfr_set_prec(i0, 2 * p);
        mpfr_set(r0, r1, N);
        mpfr_set(i0, i1, N);
        mpfr_clears(r1, i1, static_cast<mpfr_ptr>(nullptr));
    }
    mpfr_set(re, r0, N);
    mpfr_set(im, i0, N);
    mpfr_clears(r0, i0, static_cast<mpfr_ptr>(nullptr));
    return ok;
}
