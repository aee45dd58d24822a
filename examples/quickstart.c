/*
 * quickstart: the library's calls in a few lines.
 *
 *   cc quickstart.c -I<prefix>/include -L<prefix>/lib -lzvl \
 *      -DZVL_CPU_VENDOR='"GenuineIntel"'   (the vendor the library was built for)
 */
#include <cpuid.h>
#include <errno.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include <zvl.h>

/* Which of the six kernel sets this process runs. The library decides it
 * once: cpu types 1 to 5 (SSE3 up to AVX) when the processor's vendor is
 * the one the library was built for, the baseline type 0 for any other
 * vendor, and ZVL_CPU_TYPE=0..5 forces one. No call tells, so this asks
 * the processor the same questions. */
static void kernel_set(void) {
    unsigned eax, ebx, ecx, edx;
    char own[13];
    __cpuid(0, eax, ebx, ecx, edx);
    memcpy(own, &ebx, 4);
    memcpy(own + 4, &edx, 4);
    memcpy(own + 8, &ecx, 4);
    own[12] = '\0';
#ifdef ZVL_CPU_VENDOR
    const char *forced = getenv("ZVL_CPU_TYPE");
    const int match = strcmp(own, ZVL_CPU_VENDOR) == 0;
    __cpuid(1, eax, ebx, ecx, edx);
    int type = !match               ? 0
               : ecx & (3u << 27)   ? 5  /* AVX or OSXSAVE */
               : ecx & (1u << 20)   ? 4  /* SSE4.2 */
               : ecx & (1u << 19)   ? 3  /* SSE4.1 */
               : ecx & (1u << 9)    ? 2  /* SSSE3 */
                                    : 1;
    const int is_forced = forced && forced[0] >= '0' && forced[0] <= '5';
    if (is_forced) type = forced[0] - '0';
    printf("library built for %s processors, this processor is %s: cpu type %d%s\n",
           ZVL_CPU_VENDOR, own, type, is_forced ? ", forced by ZVL_CPU_TYPE" : "");
    if (!match && !is_forced)
        printf("  the vendors differ, so every call runs the baseline kernels of cpu type 0;\n"
               "  a library built with -DZVL_CPU_VENDOR=%s runs this processor's kernel set\n", own);
#else
    printf("this processor is %s; define ZVL_CPU_VENDOR as the library's build did to see "
           "its cpu type\n", own);
#endif
}

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

    kernel_set();

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
