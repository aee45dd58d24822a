/*
 * quickstart: the library's calls in a few lines.
 *
 *   cc quickstart.c -I<prefix>/include -L<prefix>/lib -lzvl
 */
#include <errno.h>
#include <stdio.h>

#include <zvl.h>

static void show(const char *what, const double *r, int n) {
    printf("%-28s", what);
    for (int i = 0; i < n; ++i) printf(" %.17g", r[i]);
    printf("\n");
}

int main(void) {
    double a[6] = {3.0, -7.0, 0.1, 1e300, 2.5, 49.0};
    double b[6] = {1.0, 2.0, 3.0, 4.0, 5.0, 7.0};
    double r[6];
    int n = 6;

    /* Each thread starts in HA mode: about 1 ulp, here exact quotients. */
    printf("mode word at start: 0x%x\n", ZVLGETMODE());
    VDINV(&n, a, r);
    show("VDINV, HA:", r, n);
    VDDIV(&n, a, b, r);
    show("VDDIV, HA:", r, n);

    /* LA and EP share one division among several elements: faster, a few
     * ulps. Setting the accuracy field leaves the error actions alone. */
    unsigned la = ZVL_LA, ep = ZVL_EP, ha = ZVL_HA;
    ZVLSETMODE(&la);
    VDDIV(&n, a, b, r);
    show("VDDIV, LA:", r, n);
    ZVLSETMODE(&ep);
    VDDIV(&n, a, b, r);
    show("VDDIV, EP:", r, n);
    ZVLSETMODE(&ha);

    /* _Idx forms take an element offset after each array. */
    int three = 3;
    VDINV_Idx(&three, a, 3, r, 0);
    show("VDINV_Idx, a from 3:", r, three);

    /* An exceptional element: 1/0 gives +inf and reports a singularity.
     * The default error actions set errno (ERANGE); adding the print action
     * writes a message and the element's values on standard output. */
    double z[2] = {0.0, 4.0};
    int two = 2;
    errno = 0;
    VDINV(&two, z, r);
    show("VDINV of 0 and 4:", r, two);
    printf("errno after it: %d (ERANGE is %d)\n", errno, ERANGE);
    unsigned print = ZVL_ERRMODE_STDOUT | ZVL_ERRMODE_ERRNO;
    ZVLSETMODE(&print);
    VDINV(&two, z, r);

    /* Bad arguments are reported on standard output whatever the mode. */
    int minus = -1;
    VDINV(&minus, a, r);
    VDDIV(&n, a, NULL, r);
    printf("mode word at end: 0x%x\n", ZVLGETMODE());
    return 0;
}
