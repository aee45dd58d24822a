"""The exported functions and constants, written by tools/bindings/generate.py
from tools/bindings/functions.txt and include/zvl.h; do not edit."""

VERSION = (0, 1, 0)

# (Python name, exported name, shape, what r[i] is, reports underflow,
#  example arguments, example results)
FUNCTIONS = (
    ('inv', 'VDINV', 'D1', '1 / a[i]', True, (4.0,), (0.25,)),
    ('div', 'VDDIV', 'D2', 'a[i] / b[i]', True, (3.0, 4.0), (0.75,)),
    ('sqrt', 'VDSQRT', 'D1', 'sqrt(a[i])', False, (2.25,), (1.5,)),
    ('invsqrt', 'VDINVSQRT', 'D1', '1 / sqrt(a[i])', False, (0.25,), (2.0,)),
    ('cbrt', 'VDCBRT', 'D1', 'cbrt(a[i])', False, (-27.0,), (-3.0,)),
    ('invcbrt', 'VDINVCBRT', 'D1', '1 / cbrt(a[i])', False, (8.0,), (0.5,)),
    ('exp', 'VDEXP', 'D1', 'e^a[i]', True, (1.0,), (2.718281828459045,)),
    ('ln', 'VDLN', 'D1', 'ln(a[i])', False, (8.0,), (2.0794415416798357,)),
    ('log10', 'VDLOG10', 'D1', 'log10(a[i])', False, (1000.0,), (3.0,)),
    ('pow', 'VDPOW', 'D2', 'a[i] ^ b[i]', True, (2.0, 10.0), (1024.0,)),
    ('powx', 'VDPOWX', 'DX', 'a[i] ^ b, one exponent read from *b', True, (3.0, 2.0), (9.0,)),
    ('sin', 'VDSIN', 'D1', 'sin(a[i])', False, (0.5,), (0.479425538604203,)),
    ('cos', 'VDCOS', 'D1', 'cos(a[i])', False, (0.5,), (0.877582561890373,)),
    ('ceil', 'VDCEIL', 'R1', 'a[i] rounded towards +inf', False, (-2.5,), (-2.0,)),
    ('floor', 'VDFLOOR', 'R1', 'a[i] rounded towards -inf', False, (-2.5,), (-3.0,)),
    ('trunc', 'VDTRUNC', 'R1', 'a[i] rounded towards zero', False, (-2.75,), (-2.0,)),
    ('round', 'VDROUND', 'R1', 'a[i] rounded to nearest, halves away from zero', False, (2.5,), (3.0,)),
    ('rint', 'VDRINT', 'R1', "a[i] rounded in the caller's rounding mode", False, (2.5,), (2.0,)),
    ('nearbyint', 'VDNEARBYINT', 'R1', "a[i] rounded in the caller's rounding mode, without the inexact exception", False, (3.5,), (4.0,)),
    ('modf', 'VDMODF', 'R12', 'y[i] = integer part of a[i] (towards zero), z[i] = a[i] - y[i]', False, (-3.75,), (-3.0, -0.75)),
)

CONSTANTS = {
    'ZVL_ACCURACY_MASK': 15,
    'ZVL_LA': 1,
    'ZVL_HA': 2,
    'ZVL_EP': 3,
    'ZVL_ERRMODE_MASK': 65280,
    'ZVL_ERRMODE_IGNORE': 256,
    'ZVL_ERRMODE_ERRNO': 512,
    'ZVL_ERRMODE_STDOUT': 1024,
    'ZVL_ERRMODE_EXCEPT': 2048,
    'ZVL_ERRMODE_CALLBACK': 4096,
    'ZVL_ERRMODE_DEFAULT': 6656,
    'ZVL_FPMODE_MASK': 196608,
    'ZVL_MODE_DEFAULT': 6658,
    'ZVL_STATUS_BADMEM': -2,
    'ZVL_STATUS_BADSIZE': -1,
    'ZVL_STATUS_OK': 0,
    'ZVL_STATUS_ERRDOM': 1,
    'ZVL_STATUS_SING': 2,
    'ZVL_STATUS_OVERFLOW': 3,
    'ZVL_STATUS_UNDERFLOW': 4,
    'ZEL_ALL': 0,
    'ZEL_BLAS': 1,
    'ZEL_FFT': 2,
    'ZEL_ZVL': 3,
}
