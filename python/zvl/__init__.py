"""ZVL from Python: the vector mathematics library's functions over numpy arrays.

    >>> import numpy, zvl
    >>> zvl.exp(numpy.arange(3.))
    array([1.        , 2.71828183, 7.3890561 ])
    >>> with zvl.mode("LA"):             # the calling thread's accuracy mode
    ...     r = zvl.pow(a, b)

Every exported function is here under its lower-case name: zvl.exp for
VDEXP, zvl.invsqrt for VDINVSQRT, zvl.powx for VDPOWX. Each takes any
array-like, converts it to a contiguous float64 array (complex128 for the
complex functions), broadcasts two array arguments against each other, and
returns a new array, or fills `out` and returns it. Arrays of any length
work: they are handed to the library in pieces of fewer than 2^31 elements.
Floating-point errors are reported as numpy reports its own (numpy.seterr,
numpy.errstate); see zvl._errors for how they are recognised.

The library is looked for in $ZVL_LIBRARY, then in the tree the package was
installed with, then by the dynamic loader's search.
"""
import ctypes
import threading

import numpy as np

from . import _errors, _library
from ._table import CONSTANTS, FUNCTIONS, VERSION

__version__ = "%d.%d.%d" % VERSION

_lib = _library.load()
_entries = _library.declare(_lib)

globals().update(CONSTANTS)

# Elements per library call: the count is a 32-bit signed integer.
_CHUNK = 2**31 - 1


# ---------------------------------------------------------------- modes

_ACCURACY = {"HA": CONSTANTS["ZVL_HA"], "LA": CONSTANTS["ZVL_LA"], "EP": CONSTANTS["ZVL_EP"]}


def get_mode():
    """The calling thread's mode word (ZVLGETMODE)."""
    return _entries["ZVLGETMODE"]()


def set_mode(word):
    """Merges `word` into the calling thread's mode word field by field, a
    zero field leaving that field alone (ZVLSETMODE); returns the previous
    word."""
    return _entries["ZVLSETMODE"](ctypes.byref(ctypes.c_uint(word)))


class mode:
    """Context manager for the calling thread's accuracy mode:

        with zvl.mode("LA"):     # "HA" (about 1 ulp), "LA" (4 ulp), "EP" (26 bits)
            ...

    The mode word is per thread: other threads keep theirs. On exit the
    previous accuracy comes back; the error actions are not touched."""

    def __init__(self, accuracy):
        if isinstance(accuracy, str):
            try:
                self._bits = _ACCURACY[accuracy.upper()]
            except KeyError:
                raise ValueError("zvl.mode: accuracy is one of HA, LA, EP, not %r" % accuracy)
        else:
            self._bits = int(accuracy) & CONSTANTS["ZVL_ACCURACY_MASK"]
            if not self._bits:
                raise ValueError("zvl.mode: an accuracy field of 0 cannot be set")
        self._saved = threading.local()

    def __enter__(self):
        stack = getattr(self._saved, "stack", [])
        stack.append(set_mode(self._bits))
        self._saved.stack = stack
        return self

    def __exit__(self, *exc):
        previous = self._saved.stack.pop() & CONSTANTS["ZVL_ACCURACY_MASK"]
        if previous:
            set_mode(previous)
        return False


# ---------------------------------------------------------------- threads

def get_max_threads():
    """Threads a call may use (ZEL_Get_Max_Threads)."""
    return _entries["ZEL_Get_Max_Threads"]()


def set_num_threads(n):
    """Thread count for all domains; n <= 0 is ignored (ZEL_Set_Num_Threads)."""
    _entries["ZEL_Set_Num_Threads"](int(n))


def domain_get_max_threads(domain):
    """Thread count of one domain, ZEL_ZVL for this library."""
    return _entries["ZEL_Domain_Get_Max_Threads"](int(domain))


def domain_set_num_threads(n, domain):
    """One domain's count, 0 hands it back; returns 0 for a bad n or domain."""
    return _entries["ZEL_Domain_Set_Num_Threads"](int(n), int(domain))


def get_dynamic():
    """Whether dynamic mode trims thread counts (ZEL_Get_Dynamic)."""
    return bool(_entries["ZEL_Get_Dynamic"]())


def set_dynamic(flag):
    """Dynamic mode on or off (ZEL_Set_Dynamic)."""
    _entries["ZEL_Set_Dynamic"](1 if flag else 0)


# ---------------------------------------------------------------- functions

def _argument(name, x, dtype):
    a = np.asarray(x)
    if dtype == np.float64 and np.iscomplexobj(a):
        raise TypeError("zvl.%s takes real arguments, not %s" % (name, a.dtype))
    return a.astype(dtype, order="C", copy=False)


def _result(name, out, shape, dtype, inputs):
    """The array the library writes into, and the array to copy it to
    afterwards (None when it writes straight into `out`)."""
    if out is None:
        return np.empty(shape, dtype), None
    if not isinstance(out, np.ndarray):
        raise TypeError("zvl.%s: out must be a numpy array" % name)
    if out.shape != shape:
        raise ValueError("zvl.%s: out has shape %s, the result %s" % (name, out.shape, shape))
    if not np.can_cast(dtype, out.dtype, "same_kind"):
        raise TypeError("zvl.%s: cannot write %s results into %s" % (name, dtype, out.dtype))
    direct = (out.dtype == dtype and out.flags.c_contiguous and out.flags.writeable
              and not any(np.may_share_memory(out, x) and x.ctypes.data != out.ctypes.data
                          for x in inputs))
    return (out, None) if direct else (np.empty(shape, dtype), out)


def _address(array, start):
    return ctypes.c_void_p(array.ctypes.data + start * array.itemsize)


def _make(name, exported, shape, computes, underflow):
    entry = _entries[exported]
    dtype = np.complex128 if shape.startswith("Z") else np.float64
    two_in = shape in ("D2", "Z2")
    scalar = shape in ("DX", "ZX")
    two_out = shape in ("D12", "R12")

    def run(arrays, outputs, b_scalar):
        size = outputs[0].size
        count = ctypes.c_int()
        for start in range(0, size, _CHUNK):
            count.value = min(_CHUNK, size - start)
            args = [_address(a, start) for a in arrays]
            if b_scalar is not None:
                args.append(ctypes.c_void_p(b_scalar.ctypes.data))
            args += [_address(r, start) for r in outputs]
            entry(ctypes.byref(count), *args)

    def finish(inputs, pairs, scalar_in):
        outputs = [r for r, _ in pairs]
        run(inputs, outputs, scalar_in)
        checked = inputs + ([scalar_in] if scalar_in is not None else [])
        _errors.check(name, checked, outputs, underflow)
        for r, target in pairs:
            if target is not None:
                np.copyto(target, r, casting="same_kind")

    if two_out:
        def function(a, out=None):
            x = _argument(name, a, dtype)
            outs = (None, None) if out is None else out
            if not isinstance(outs, tuple) or len(outs) != 2:
                raise TypeError("zvl.%s: out is a pair of arrays" % name)
            pairs = [_result(name, o, x.shape, dtype, [x]) for o in outs]
            finish([x], pairs, None)
            if out is not None:
                return out
            y, z = (r for r, _ in pairs)
            return (y[()], z[()]) if x.ndim == 0 else (y, z)
        signature = "(a, out=None)"
    elif scalar:
        def function(a, b, out=None):
            x = _argument(name, a, dtype)
            s = _argument(name, b, dtype)
            if s.ndim != 0:
                raise ValueError("zvl.%s: b is one scalar exponent for the whole array" % name)
            pair = _result(name, out, x.shape, dtype, [x])
            finish([x], [pair], s)
            return out if out is not None else pair[0][()] if x.ndim == 0 else pair[0]
        signature = "(a, b, out=None)"
    elif two_in:
        def function(a, b, out=None):
            x, y = np.broadcast_arrays(_argument(name, a, dtype), _argument(name, b, dtype))
            x, y = (v if v.flags.c_contiguous else v.copy(order="C") for v in (x, y))
            pair = _result(name, out, x.shape, dtype, [x, y])
            finish([x, y], [pair], None)
            return out if out is not None else pair[0][()] if x.ndim == 0 else pair[0]
        signature = "(a, b, out=None)"
    else:
        def function(a, out=None):
            x = _argument(name, a, dtype)
            pair = _result(name, out, x.shape, dtype, [x])
            finish([x], [pair], None)
            return out if out is not None else pair[0][()] if x.ndim == 0 else pair[0]
        signature = "(a, out=None)"

    function.__name__ = function.__qualname__ = name
    result = "(y, z): " if two_out else "r[i] = "
    function.__doc__ = "%s%s\n\n%s%s elementwise through %s (docs/reference.md)." % (
        name, signature, result, computes, exported)
    return function


__all__ = ["mode", "get_mode", "set_mode", "get_max_threads", "set_num_threads",
           "domain_get_max_threads", "domain_set_num_threads", "get_dynamic", "set_dynamic"]
for _row in FUNCTIONS:
    globals()[_row[0]] = _make(*_row[:5])
    __all__.append(_row[0])
__all__ += list(CONSTANTS)
del _row
