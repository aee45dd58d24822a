/*
 * A plain C program using nothing but the public header and the product
 * library: errno after parameter errors, results in the three accuracy
 * modes, the mode word, and errno after a zero divisor. Exits 0 on success,
 * 1 on a failure, 77 when the forced cpu type needs AVX that the processor
 * lacks.
 */
#include <errno.h>
#include <math.h>
#include <stdio.h>
#include <stdlib.h>

#include <zvl.h>

#define N 37

static int failures = 0;

static void check(int ok, const char *what, int i) {
    if (!ok) {
        printf("FAIL %s [%d]\n", what, i);
        ++failures;
    }
}

/* |got - want| within k units of the last place of want. */
static int near(double got, double want, int k) {
    return fabs(got - want) <= k * (nextafter(fabs(want), INFINITY) - fabs(want));
}

int main(void) {
    const char *forced = getenv("ZVL_CPU_TYPE");
    if (forced && forced[0] == '5' && !__builtin_cpu_supports("avx")) {
        printf("skipped: cpu type 5 needs AVX\n");
        return 77;
    }
    double a[N], b[N], r[N];
    int n = N;

    /* A parameter error leaves errno as it was, the process's first message
     * included: finding no message catalogue is nobody's error. */
    int minus = -1;
    for (int i = 0; i < 2; ++i) {
        errno = 0;
        VDEXP(&minus, a, r);
        check(errno == 0, "errno after a parameter error", i);
    }
    for (int i = 0; i < N; ++i) {
        a[i] = (i - 18) * 0.37 + 0.011;
        b[i] = ldexp(1.0 + i / 41.0, i % 23 - 11) * (i % 3 ? 1 : -1);
    }
    check(ZVLGETMODE() == ZVL_MODE_DEFAULT, "mode word at start", 0);
    const unsigned modes[3] = {ZVL_HA, ZVL_LA, ZVL_EP};
    for (int m = 0; m < 3; ++m) {
        const unsigned previous = ZVLSETMODE(&modes[m]);
        check(m > 0 || previous == ZVL_MODE_DEFAULT, "previous mode word", m);
        check((ZVLGETMODE() & ZVL_ACCURACY_MASK) == modes[m], "accuracy field", m);
        const int ulps = m == 0 ? 0 : 4;
        VDINV(&n, b, r);
        for (int i = 0; i < N; ++i) check(near(r[i], 1.0 / b[i], ulps), "1/b", i);
        VDDIV(&n, a, b, r);
        for (int i = 0; i < N; ++i) check(near(r[i], a[i] / b[i], ulps), "a/b", i);
    }

    /* The default error action sets errno to ERANGE for a singularity. */
    const unsigned ha = ZVL_HA;
    ZVLSETMODE(&ha);
    errno = 0;
    b[5] = 0.0;
    VDDIV(&n, a, b, r);
    check(errno == ERANGE && isinf(r[5]) && r[5] < 0, "a/0", 5);
    errno = 0;
    VDINV_Idx(&n, b, 0, r, 0);
    check(errno == ERANGE && isinf(r[5]) && r[5] > 0, "1/0", 5);
    if (failures) printf("%d failures\n", failures);
    return failures ? 1 : 0;
}
