/*
 * complex: the complex functions on C99 double _Complex arrays.
 *
 *   cc -std=c99 complex.c -I<prefix>/include -L<prefix>/lib -lzvl -lm
 *
 * A ZVLComplex16 is two doubles, real part first: the layout of double
 * _Complex, so the arrays are passed by a cast. The complex functions report
 * nothing; a fault shows in the results and the floating-point flags.
 */
#include <complex.h>
#include <math.h>
#include <stdio.h>

#include <zvl.h>

#define N 6

int main(void) {
    double _Complex z[N] = {1.0 + 1.0 * I, -1.0 + 0.0 * I, 0.6 + 0.8 * I,
                            0.0 - 0.0 * I, 2.0 - 3.0 * I,  1e300 + 1.0 * I};
    double _Complex e[N], l[N], d[N];
    const int n = N;

    VZEXP(&n, (const ZVLComplex16 *)z, (ZVLComplex16 *)e);
    VZLN(&n, (const ZVLComplex16 *)z, (ZVLComplex16 *)l);
    VZLOG10(&n, (const ZVLComplex16 *)z, (ZVLComplex16 *)d);

    int failures = 0;
    for (int i = 0; i < N; ++i) {
        printf("z = %g%+gi\n  exp   %.17g%+.17gi\n  ln    %.17g%+.17gi\n  log10 %.17g%+.17gi\n",
               creal(z[i]), cimag(z[i]), creal(e[i]), cimag(e[i]), creal(l[i]), cimag(l[i]),
               creal(d[i]), cimag(d[i]));
        /* against the C library, which may be a little less accurate */
        const double _Complex ce = cexp(z[i]), cl = clog(z[i]);
        if (isfinite(creal(cl)) && cabs(l[i] - cl) > 1e-14 * cabs(cl)) ++failures;
        if (isfinite(creal(ce)) && cabs(e[i] - ce) > 1e-14 * cabs(ce)) ++failures;
    }
    /* ln(0.6 + 0.8i): |z| rounds to 1, and the real part is the tiny
     * difference, not 0 */
    printf("ln|0.6+0.8i| = %g\n", creal(l[2]));
    /* the output may be the input array */
    VZEXP(&n, (const ZVLComplex16 *)z, (ZVLComplex16 *)z);
    for (int i = 0; i < N; ++i)
        if (creal(z[i]) != creal(e[i]) && !(isnan(creal(z[i])) && isnan(creal(e[i])))) ++failures;
    printf("%s\n", failures ? "FAIL" : "ok");
    return failures ? 1 : 0;
}
