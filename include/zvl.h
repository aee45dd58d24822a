/*
 * zvl.h - public interface of the ZVL vector mathematics library.
 *
 * Every mathematical function applies one elementary function to each
 * element of an array: r[i] = f(a[i]) for i in 0 .. n-1.  Counts are passed
 * by pointer to a 32-bit signed integer; arrays are plain arrays of double
 * (VD names) or of double-complex pairs, real part first (VZ names).
 *
 * Each function has an _Idx companion that takes an element index after each
 * array and works on the arrays advanced by that many elements.
 *
 * The calling thread's mode word selects the accuracy (ZVL_HA, ZVL_LA,
 * ZVL_EP) and what happens on an exceptional element (ZVL_ERRMODE_*).
 * Bad arguments print a message on standard output and set the thread's
 * status to ZVL_STATUS_BADSIZE or ZVL_STATUS_BADMEM.
 *
 * What a caller observes: the result arrays; errno (EDOM, ERANGE) and the
 * raised floating-point exception on the thread that computed the element,
 * and a printed message, as the mode word asks. The status word and the
 * error callback are internal to the library and have no exported entry.
 * docs/reference.md lists every function's domain, special values,
 * statuses and accuracy.
 */
#ifndef ZVL_H
#define ZVL_H

#include "zvl_version.h" /* ZVL_VERSION_MAJOR, _MINOR, _PATCH */

#ifdef __cplusplus
extern "C" {
#endif

#if defined(_WIN32)
#  if defined(ZVL_BUILDING_LIBRARY)
#    define ZVL_API __declspec(dllexport)
#  elif defined(ZVL_STATIC)
#    define ZVL_API
#  else
#    define ZVL_API __declspec(dllimport)
#  endif
#else
#  define ZVL_API
#endif

/* Mode word: accuracy field (mask 0xF). 2 is HA, 1 is LA, anything else EP. */
#define ZVL_ACCURACY_MASK   0x0000000Fu
#define ZVL_LA              0x00000001u
#define ZVL_HA              0x00000002u
#define ZVL_EP              0x00000003u

/* Mode word: error-action field (mask 0xFF00). */
#define ZVL_ERRMODE_MASK    0x0000FF00u
#define ZVL_ERRMODE_IGNORE  0x00000100u /* store the status, nothing else  */
#define ZVL_ERRMODE_ERRNO   0x00000200u /* set errno                      */
#define ZVL_ERRMODE_STDOUT  0x00000400u /* print a message on stdout      */
#define ZVL_ERRMODE_EXCEPT  0x00000800u /* raise the FP exception         */
#define ZVL_ERRMODE_CALLBACK 0x00001000u /* call the error callback       */
#define ZVL_ERRMODE_DEFAULT (ZVL_ERRMODE_ERRNO | ZVL_ERRMODE_EXCEPT | ZVL_ERRMODE_CALLBACK)

/* Mode word: FP field (mask 0x30000), stored and returned, not acted on. */
#define ZVL_FPMODE_MASK     0x00030000u

/* The mode word of a new thread: HA with errno, raise and callback. */
#define ZVL_MODE_DEFAULT    0x00001A02u

/* Status word values: the last status reported on the thread. */
#define ZVL_STATUS_BADMEM    (-2) /* a null array pointer               */
#define ZVL_STATUS_BADSIZE   (-1) /* a negative element count            */
#define ZVL_STATUS_OK          0
#define ZVL_STATUS_ERRDOM      1  /* argument out of domain              */
#define ZVL_STATUS_SING        2  /* singularity                         */
#define ZVL_STATUS_OVERFLOW    3
#define ZVL_STATUS_UNDERFLOW   4

/*
 * The record an error callback receives.  The callback may change r1 and r2
 * and return 0: those values then go into the result arrays.  A non-zero
 * return ends the handling of that element with the kernel's own result.
 */
typedef struct ZVLErrorRecord {
    int    status;     /* ZVL_STATUS_* of the element                    */
    int    index;      /* element index, relative to the caller's array  */
    double a1;         /* first argument                                 */
    double a2;         /* second argument, or the first again            */
    double r1;         /* first result                                   */
    double r2;         /* second result, or the first again              */
    char   name[64];   /* name of the kernel that reported               */
    int    name_len;
} ZVLErrorRecord;

typedef int (*ZVLErrorCallback)(ZVLErrorRecord *record);

/*
 * One double-complex element: two doubles, real part first, 16 bytes with
 * no padding.  This is the layout of C99's double _Complex and of C++'s
 * std::complex<double>, so arrays of either are passed by a cast:
 *
 *     double _Complex z[N], w[N];                 (C99)
 *     VZEXP(&n, (const ZVLComplex16 *)z, (ZVLComplex16 *)w);
 *
 *     std::vector<std::complex<double>> z(N), w(N);   (C++)
 *     VZEXP(&n, reinterpret_cast<const ZVLComplex16*>(z.data()),
 *           reinterpret_cast<ZVLComplex16*>(w.data()));
 *
 * The complex functions compute each element in the x87 unit's extended
 * format and round once; a fault shows only in the results and the raised
 * floating-point flags: they set no status, errno or message and call no
 * callback.
 */
typedef struct ZVLComplex16 {
    double real;
    double imag;
} ZVLComplex16;

/* Mode word of the calling thread. */
ZVL_API unsigned int ZVLGETMODE(void);
/* Merge *mode into the calling thread's mode word field by field (a zero
 * field leaves that field alone); returns the previous word. */
ZVL_API unsigned int ZVLSETMODE(const unsigned int *mode);

/*
 * Thread controls.  Settings are process-wide and organised by domain;
 * this library works in ZEL_ZVL.  A count set for a domain wins over the
 * count for ZEL_ALL, which wins over the OpenMP runtime's.  The environment
 * (ZEL_NUM_THREADS, ZEL_DOMAIN_NUM_THREADS, ZEL_DYNAMIC, OMP_NUM_THREADS and
 * the MPI launcher's variables) is read once, at the first Get call, and
 * never overrides a value set before it.
 */
#define ZEL_ALL   0
#define ZEL_BLAS  1
#define ZEL_FFT   2
#define ZEL_ZVL   3

/* Threads a call may use (domain ZEL_ALL).  In dynamic mode it is capped
 * at the physical cores and is 1 inside a parallel region. */
ZVL_API int ZEL_Get_Max_Threads(void);
/* Sets the ZEL_ALL count; n <= 0 is ignored. */
ZVL_API void ZEL_Set_Num_Threads(int n);
/* As ZEL_Get_Max_Threads for one domain; other domains answer as ZEL_ALL. */
ZVL_API int ZEL_Domain_Get_Max_Threads(int domain);
/* Sets one domain's count (0 hands it back to the next level); returns 1,
 * or 0 for n < 0 or an unknown domain. */
ZVL_API int ZEL_Domain_Set_Num_Threads(int n, int domain);
/* 1 when dynamic mode is on (the default): thread counts are trimmed to
 * the cores and to what the array length repays. */
ZVL_API int ZEL_Get_Dynamic(void);
/* Dynamic mode on for any nonzero flag, off for 0. */
ZVL_API void ZEL_Set_Dynamic(int flag);

/*
 * Real functions, one input, one output: r[i] = f(a[i]), in the thread's
 * accuracy mode; long arrays are split over threads.
 *   VDINV      1/a; ZVL_STATUS_SING for a zero
 *   VDSQRT     sqrt(a); ZVL_STATUS_ERRDOM below zero
 *   VDINVSQRT  1/sqrt(a); SING for +-0, ERRDOM below zero
 *   VDCBRT     cbrt(a), odd; never reports
 *   VDINVCBRT  1/cbrt(a); SING for +-0
 *   VDEXP      e^a; ZVL_STATUS_OVERFLOW above 709.78, ZVL_STATUS_UNDERFLOW for
 *              subnormal and zero results
 *   VDLN       ln(a); SING for +-0, ERRDOM below zero and for -inf
 *   VDLOG10    log10(a); as VDLN; its LA mode runs HA
 *   VDCOS      cos(a); ZVL_STATUS_ERRDOM for +-inf, NaN for NaN silently
 *   VDSIN      sin(a), keeping the sign of a zero; as VDCOS. In EP mode on
 *              SSE3-only processors, |a| > 1e15, infinities and NaN give +0
 *              and no status
 *   VDTAN      tan(a), keeping the sign of a zero; ZVL_STATUS_ERRDOM for
 *              +-inf, NaN for NaN silently; no finite argument reports
 *   VDACOS     acos(a) in [0, pi]; ZVL_STATUS_ERRDOM and NaN for |a| > 1 and
 *              +-inf, NaN for NaN silently
 *   VDASIN     asin(a), keeping the sign of a zero; as VDACOS
 *   VDATAN     atan(a), keeping the sign of a zero; +-pi/2 at +-inf; never
 *              reports
 *   VDCOSH     cosh(a), +inf at +-inf; ZVL_STATUS_OVERFLOW for finite |a| above
 *              710.47586007394386 (result +inf)
 *   VDSINH     sinh(a), keeping the sign of a zero; as VDCOSH, with -inf
 *              below -710.47586007394386
 *   VDTANH     tanh(a), keeping the sign of a zero; exactly +-1 from |a| = 20
 *              on and at +-inf; never reports
 *   VDACOSH    acosh(a), +0 at 1, +inf at +inf; ZVL_STATUS_ERRDOM below 1
 *              and at -inf (NaN)
 *   VDASINH    asinh(a), keeping the sign of a zero; +-inf at +-inf; never
 *              reports
 *   VDATANH    atanh(a), keeping the sign of a zero; ZVL_STATUS_SING at +-1
 *              (+-inf), ZVL_STATUS_ERRDOM beyond them (NaN)
 *   VDERF      erf(a); never reports
 *   VDERFC     erfc(a), relative accuracy down to its subnormal tail;
 *              ZVL_STATUS_UNDERFLOW for finite a above 27.226017111108362
 *   VDERFINV   inverse of erf on (-1, 1); ZVL_STATUS_SING and +-inf at +-1,
 *              ZVL_STATUS_ERRDOM and NaN beyond them and at +-inf
 */
ZVL_API void VDINV(const int *n, const double *a, double *r);
ZVL_API void VDINV_Idx(const int *n, const double *a, int ia, double *r, int ir);
ZVL_API void VDSQRT(const int *n, const double *a, double *r);
ZVL_API void VDSQRT_Idx(const int *n, const double *a, int ia, double *r, int ir);
ZVL_API void VDINVSQRT(const int *n, const double *a, double *r);
ZVL_API void VDINVSQRT_Idx(const int *n, const double *a, int ia, double *r, int ir);
ZVL_API void VDCBRT(const int *n, const double *a, double *r);
ZVL_API void VDCBRT_Idx(const int *n, const double *a, int ia, double *r, int ir);
ZVL_API void VDINVCBRT(const int *n, const double *a, double *r);
ZVL_API void VDINVCBRT_Idx(const int *n, const double *a, int ia, double *r, int ir);
ZVL_API void VDEXP(const int *n, const double *a, double *r);
ZVL_API void VDEXP_Idx(const int *n, const double *a, int ia, double *r, int ir);
ZVL_API void VDLN(const int *n, const double *a, double *r);
ZVL_API void VDLN_Idx(const int *n, const double *a, int ia, double *r, int ir);
ZVL_API void VDLOG10(const int *n, const double *a, double *r);
ZVL_API void VDLOG10_Idx(const int *n, const double *a, int ia, double *r, int ir);
ZVL_API void VDCOS(const int *n, const double *a, double *r);
ZVL_API void VDCOS_Idx(const int *n, const double *a, int ia, double *r, int ir);
ZVL_API void VDSIN(const int *n, const double *a, double *r);
ZVL_API void VDSIN_Idx(const int *n, const double *a, int ia, double *r, int ir);
ZVL_API void VDTAN(const int *n, const double *a, double *r);
ZVL_API void VDTAN_Idx(const int *n, const double *a, int ia, double *r, int ir);
ZVL_API void VDACOS(const int *n, const double *a, double *r);
ZVL_API void VDACOS_Idx(const int *n, const double *a, int ia, double *r, int ir);
ZVL_API void VDASIN(const int *n, const double *a, double *r);
ZVL_API void VDASIN_Idx(const int *n, const double *a, int ia, double *r, int ir);
ZVL_API void VDATAN(const int *n, const double *a, double *r);
ZVL_API void VDATAN_Idx(const int *n, const double *a, int ia, double *r, int ir);
ZVL_API void VDCOSH(const int *n, const double *a, double *r);
ZVL_API void VDCOSH_Idx(const int *n, const double *a, int ia, double *r, int ir);
ZVL_API void VDSINH(const int *n, const double *a, double *r);
ZVL_API void VDSINH_Idx(const int *n, const double *a, int ia, double *r, int ir);
ZVL_API void VDTANH(const int *n, const double *a, double *r);
ZVL_API void VDTANH_Idx(const int *n, const double *a, int ia, double *r, int ir);
ZVL_API void VDACOSH(const int *n, const double *a, double *r);
ZVL_API void VDACOSH_Idx(const int *n, const double *a, int ia, double *r, int ir);
ZVL_API void VDASINH(const int *n, const double *a, double *r);
ZVL_API void VDASINH_Idx(const int *n, const double *a, int ia, double *r, int ir);
ZVL_API void VDATANH(const int *n, const double *a, double *r);
ZVL_API void VDATANH_Idx(const int *n, const double *a, int ia, double *r, int ir);
ZVL_API void VDERF(const int *n, const double *a, double *r);
ZVL_API void VDERF_Idx(const int *n, const double *a, int ia, double *r, int ir);
ZVL_API void VDERFC(const int *n, const double *a, double *r);
ZVL_API void VDERFC_Idx(const int *n, const double *a, int ia, double *r, int ir);
ZVL_API void VDERFINV(const int *n, const double *a, double *r);
ZVL_API void VDERFINV_Idx(const int *n, const double *a, int ia, double *r, int ir);

/*
 * Real functions, two inputs, one output: r[i] = f(a[i], b[i]).
 *   VDDIV  a/b; ZVL_STATUS_SING for a zero divisor
 *   VDPOW  a^b; ZVL_STATUS_ERRDOM for a negative base with a non-integer
 *          exponent and a zero base with a negative exponent; x^0 = 1^y = 1
 *   VDATAN2  atan2(a, b), the angle of the point (b, a) in [-pi, pi], with
 *          the signed zeros and infinities of C99; never reports
 */
ZVL_API void VDDIV(const int *n, const double *a, const double *b, double *r);
ZVL_API void VDDIV_Idx(const int *n, const double *a, int ia, const double *b, int ib,
                       double *r, int ir);
ZVL_API void VDPOW(const int *n, const double *a, const double *b, double *r);
ZVL_API void VDPOW_Idx(const int *n, const double *a, int ia, const double *b, int ib,
                       double *r, int ir);
ZVL_API void VDATAN2(const int *n, const double *a, const double *b, double *r);
ZVL_API void VDATAN2_Idx(const int *n, const double *a, int ia, const double *b, int ib,
                         double *r, int ir);

/*
 * Real functions, one input, two outputs: y[i] = f(a[i]), z[i] = g(a[i]).
 *   VDSINCOS  y = sin(a), z = cos(a) from one reduction; as VDSIN and VDCOS,
 *             ZVL_STATUS_ERRDOM for +-inf. In EP mode on SSE3-only
 *             processors, |a| > 1e15, infinities and NaN give +0 in both
 *             and no status
 */
ZVL_API void VDSINCOS(const int *n, const double *a, double *y, double *z);
ZVL_API void VDSINCOS_Idx(const int *n, const double *a, int ia, double *y, int iy, double *z,
                          int iz);

/* Real array and real scalar: r[i] = f(a[i], *b).  *b is read once per call
 * and never tested for null; a null r is reported as parameter 3.
 *   VDPOWX  a^b as VDPOW; exponents 1, 2, 0.5, -1 give the correctly rounded
 *           power in every mode */
ZVL_API void VDPOWX(const int *n, const double *a, const double *b, double *r);
ZVL_API void VDPOWX_Idx(const int *n, const double *a, int ia, const double *b, double *r,
                        int ir);

/*
 * Complex functions, one input, one output: r[i] = f(a[i]) on ZVLComplex16
 * elements.  Each part of a result is within 1 ulp of that part (where a
 * part cancels to near zero, the error is within 2^-52 of |f(a)|); special
 * values follow C99 Annex G where it speaks.  Nothing is reported.
 *   VZSQRT   the principal square root, real part not negative; the same
 *            in every accuracy mode
 *   VZEXP    e^a = e^x (cos y + i sin y); the same in every accuracy mode
 *   VZLN     ln a = ln|a| + i arg a, arg in [-pi, pi]; LA within 4 ulp, EP
 *            within 2^-26 of |ln a|
 *   VZLOG10  log10 a = ln a / ln 10; the same in every accuracy mode
 *   VZCOS, VZSIN, VZTAN, VZACOS, VZASIN, VZATAN, VZCOSH, VZSINH, VZTANH,
 *   VZACOSH, VZASINH, VZATANH  the principal values, the branch cuts of C99
 *            (the inverses' cuts on the real or imaginary axis, the sign of
 *            a zero part choosing the side); the same in every accuracy mode
 */
ZVL_API void VZSQRT(const int *n, const ZVLComplex16 *a, ZVLComplex16 *r);
ZVL_API void VZSQRT_Idx(const int *n, const ZVLComplex16 *a, int ia, ZVLComplex16 *r, int ir);
ZVL_API void VZEXP(const int *n, const ZVLComplex16 *a, ZVLComplex16 *r);
ZVL_API void VZEXP_Idx(const int *n, const ZVLComplex16 *a, int ia, ZVLComplex16 *r, int ir);
ZVL_API void VZLN(const int *n, const ZVLComplex16 *a, ZVLComplex16 *r);
ZVL_API void VZLN_Idx(const int *n, const ZVLComplex16 *a, int ia, ZVLComplex16 *r, int ir);
ZVL_API void VZLOG10(const int *n, const ZVLComplex16 *a, ZVLComplex16 *r);
ZVL_API void VZLOG10_Idx(const int *n, const ZVLComplex16 *a, int ia, ZVLComplex16 *r, int ir);
ZVL_API void VZCOS(const int *n, const ZVLComplex16 *a, ZVLComplex16 *r);
ZVL_API void VZCOS_Idx(const int *n, const ZVLComplex16 *a, int ia, ZVLComplex16 *r, int ir);
ZVL_API void VZSIN(const int *n, const ZVLComplex16 *a, ZVLComplex16 *r);
ZVL_API void VZSIN_Idx(const int *n, const ZVLComplex16 *a, int ia, ZVLComplex16 *r, int ir);
ZVL_API void VZTAN(const int *n, const ZVLComplex16 *a, ZVLComplex16 *r);
ZVL_API void VZTAN_Idx(const int *n, const ZVLComplex16 *a, int ia, ZVLComplex16 *r, int ir);
ZVL_API void VZACOS(const int *n, const ZVLComplex16 *a, ZVLComplex16 *r);
ZVL_API void VZACOS_Idx(const int *n, const ZVLComplex16 *a, int ia, ZVLComplex16 *r, int ir);
ZVL_API void VZASIN(const int *n, const ZVLComplex16 *a, ZVLComplex16 *r);
ZVL_API void VZASIN_Idx(const int *n, const ZVLComplex16 *a, int ia, ZVLComplex16 *r, int ir);
ZVL_API void VZATAN(const int *n, const ZVLComplex16 *a, ZVLComplex16 *r);
ZVL_API void VZATAN_Idx(const int *n, const ZVLComplex16 *a, int ia, ZVLComplex16 *r, int ir);
ZVL_API void VZCOSH(const int *n, const ZVLComplex16 *a, ZVLComplex16 *r);
ZVL_API void VZCOSH_Idx(const int *n, const ZVLComplex16 *a, int ia, ZVLComplex16 *r, int ir);
ZVL_API void VZSINH(const int *n, const ZVLComplex16 *a, ZVLComplex16 *r);
ZVL_API void VZSINH_Idx(const int *n, const ZVLComplex16 *a, int ia, ZVLComplex16 *r, int ir);
ZVL_API void VZTANH(const int *n, const ZVLComplex16 *a, ZVLComplex16 *r);
ZVL_API void VZTANH_Idx(const int *n, const ZVLComplex16 *a, int ia, ZVLComplex16 *r, int ir);
ZVL_API void VZACOSH(const int *n, const ZVLComplex16 *a, ZVLComplex16 *r);
ZVL_API void VZACOSH_Idx(const int *n, const ZVLComplex16 *a, int ia, ZVLComplex16 *r, int ir);
ZVL_API void VZASINH(const int *n, const ZVLComplex16 *a, ZVLComplex16 *r);
ZVL_API void VZASINH_Idx(const int *n, const ZVLComplex16 *a, int ia, ZVLComplex16 *r, int ir);
ZVL_API void VZATANH(const int *n, const ZVLComplex16 *a, ZVLComplex16 *r);
ZVL_API void VZATANH_Idx(const int *n, const ZVLComplex16 *a, int ia, ZVLComplex16 *r, int ir);

/*
 * Complex power: r[i] = a[i]^b[i] (VZPOW) or a[i]^*b (VZPOWX, one exponent
 * read from b; the _Idx form advances the arrays only), computed as
 * exp(b ln a) from the complex logarithm and exponential, with no case of
 * its own for integer exponents, real or zero bases: the error grows with
 * |b ln a|, and pow(0, 0) is NaN.  The same in every accuracy mode.
 */
ZVL_API void VZPOW(const int *n, const ZVLComplex16 *a, const ZVLComplex16 *b, ZVLComplex16 *r);
ZVL_API void VZPOW_Idx(const int *n, const ZVLComplex16 *a, int ia, const ZVLComplex16 *b, int ib,
                       ZVLComplex16 *r, int ir);
ZVL_API void VZPOWX(const int *n, const ZVLComplex16 *a, const ZVLComplex16 *b, ZVLComplex16 *r);
ZVL_API void VZPOWX_Idx(const int *n, const ZVLComplex16 *a, int ia, const ZVLComplex16 *b,
                        ZVLComplex16 *r, int ir);

/*
 * Rounding to integer values: no accuracy choice, nothing is ever reported.
 * VDRINT and VDNEARBYINT round in the caller's rounding mode; VDNEARBYINT
 * raises no inexact exception where the processor can avoid it. VDROUND
 * takes halves away from zero. VDMODF stores the integer part to y and the
 * fraction to z, both with the sign of a.
 */
ZVL_API void VDCEIL(const int *n, const double *a, double *r);
ZVL_API void VDCEIL_Idx(const int *n, const double *a, int ia, double *r, int ir);
ZVL_API void VDFLOOR(const int *n, const double *a, double *r);
ZVL_API void VDFLOOR_Idx(const int *n, const double *a, int ia, double *r, int ir);
ZVL_API void VDMODF(const int *n, const double *a, double *y, double *z);
ZVL_API void VDMODF_Idx(const int *n, const double *a, int ia, double *y, int iy, double *z,
                        int iz);
ZVL_API void VDNEARBYINT(const int *n, const double *a, double *r);
ZVL_API void VDNEARBYINT_Idx(const int *n, const double *a, int ia, double *r, int ir);
ZVL_API void VDRINT(const int *n, const double *a, double *r);
ZVL_API void VDRINT_Idx(const int *n, const double *a, int ia, double *r, int ir);
ZVL_API void VDROUND(const int *n, const double *a, double *r);
ZVL_API void VDROUND_Idx(const int *n, const double *a, int ia, double *r, int ir);
ZVL_API void VDTRUNC(const int *n, const double *a, double *r);
ZVL_API void VDTRUNC_Idx(const int *n, const double *a, int ia, double *r, int ir);

#ifdef __cplusplus
}
#endif

#endif /* ZVL_H */
