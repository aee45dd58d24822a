"""Floating-point errors reported the numpy way.

The library's status word is internal, and the errno it sets tells only the
last element reported (of a long array split over threads, one worker's
last). So the package decides from the values, as numpy's flags would:

  invalid  a NaN result where no argument is NaN
  divide   an infinite result from finite arguments, one of them zero (a pole)
  over     an infinite result from finite arguments, none of them zero
  under    (functions whose results scale with their arguments) a subnormal
           or zero result from finite non-zero arguments

Each kind found is then handled as numpy.geterr() says for it: ignored,
warned about (RuntimeWarning), raised (FloatingPointError), passed to
numpy.geterrcall(), printed or logged. numpy.errstate() works as usual.
"""
import warnings
from functools import reduce

import numpy as np

_TINY = np.finfo(np.float64).tiny  # the smallest normal double

# numpy's order, texts and flag bits.
_KINDS = (("divide", "divide by zero", 1), ("over", "overflow", 2), ("under", "underflow", 4),
          ("invalid", "invalid value", 8))


def _parts(x):
    """Real and imaginary parts of a complex array (as a pair), or the array."""
    return (x.real, x.imag) if np.iscomplexobj(x) else (x,)


def _any(test, x):
    out = None
    for p in _parts(x):
        t = test(p)
        out = t if out is None else out | t
    return out


def _all(test, x):
    out = None
    for p in _parts(x):
        t = test(p)
        out = t if out is None else out & t
    return out


def _found(inputs, outputs, underflow, wanted):
    found = set()
    if wanted & {"divide", "over", "invalid"} and not all(
            _all(np.isfinite, r).all() for r in outputs):
        finite_in = reduce(np.logical_and, [_all(np.isfinite, x) for x in inputs])
        nan_in = reduce(np.logical_or, [_any(np.isnan, x) for x in inputs])
        zero_in = reduce(np.logical_or, [x == 0 for x in inputs])
        for r in outputs:
            if (_any(np.isnan, r) & ~nan_in).any():
                found.add("invalid")
            pole_or_over = _any(np.isinf, r) & finite_in
            if (pole_or_over & zero_in).any():
                found.add("divide")
            if (pole_or_over & ~zero_in).any():
                found.add("over")
    if underflow and "under" in wanted:
        finite_nonzero = reduce(np.logical_and,
            [_all(np.isfinite, x) & (x != 0) for x in inputs])
        for r in outputs:
            if ((np.abs(r) < _TINY) & finite_nonzero).any():
                found.add("under")
    return found


def check(name, inputs, outputs, underflow):
    """Reports the kinds of error found in one call of zvl.<name>."""
    settings = np.geterr()
    wanted = {kind for kind, _, _ in _KINDS if settings[kind] != "ignore"}
    if not wanted:
        return
    found = _found(inputs, outputs, underflow, wanted) & wanted
    for kind, text, flag in _KINDS:
        if kind not in found:
            continue
        action = settings[kind]
        message = "%s encountered in zvl.%s" % (text, name)
        if action == "warn":
            warnings.warn(message, RuntimeWarning, stacklevel=4)
        elif action == "raise":
            raise FloatingPointError(message)
        elif action == "call":
            np.geterrcall()(text, flag)
        elif action == "print":
            print("Warning: %s" % message)
        elif action == "log":
            np.geterrcall().write("Warning: %s\n" % message)
