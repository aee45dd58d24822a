"""Finding and loading the shared library, and declaring its entry points."""
import ctypes
import ctypes.util
import os
import sys

from ._table import FUNCTIONS

_PACKAGE_DIR = os.path.dirname(os.path.abspath(__file__))


def _candidates():
    """Library files to try, in order: $ZVL_LIBRARY, the installed tree's
    library (the path the install wrote into _location.py), then the
    dynamic loader's search by name."""
    explicit = os.environ.get("ZVL_LIBRARY")
    if explicit:
        return [explicit]
    found = []
    try:
        from . import _location
    except ImportError:
        pass
    else:
        found.append(os.path.normpath(
            os.path.join(_PACKAGE_DIR, _location.LIBRARY_DIR, _location.LIBRARY_NAME)))
    if sys.platform == "win32":
        found.append("zvl.dll")
    else:
        found.append("libzvl.so.0")
        by_name = ctypes.util.find_library("zvl")
        if by_name:
            found.append(by_name)
    return found


def load():
    errors = []
    for path in _candidates():
        try:
            return ctypes.CDLL(path)
        except OSError as e:
            errors.append("%s: %s" % (path, e))
    raise ImportError("zvl: cannot load the ZVL library (set ZVL_LIBRARY to its file):\n  "
                      + "\n  ".join(errors))


_INT_P = ctypes.POINTER(ctypes.c_int)
_PTR = ctypes.c_void_p
_INT = ctypes.c_int

# Parameter types by shape: the count, then one pointer per array or scalar.
_ARGTYPES = {
    "D1": [_INT_P, _PTR, _PTR],
    "D2": [_INT_P, _PTR, _PTR, _PTR],
    "DX": [_INT_P, _PTR, _PTR, _PTR],
    "D12": [_INT_P, _PTR, _PTR, _PTR],
}
for _real, _same in (("R1", "D1"), ("R12", "D12"), ("Z1", "D1"), ("Z2", "D2"), ("ZX", "DX")):
    _ARGTYPES[_real] = _ARGTYPES[_same]


def declare(lib):
    """Sets argtypes and restype of every exported name; returns the
    functions by exported name."""
    entries = {}
    for _, exported, shape, *_ in FUNCTIONS:
        fn = getattr(lib, exported)
        fn.argtypes = _ARGTYPES[shape]
        fn.restype = None
        entries[exported] = fn
    controls = [
        ("ZVLGETMODE", [], ctypes.c_uint),
        ("ZVLSETMODE", [ctypes.POINTER(ctypes.c_uint)], ctypes.c_uint),
        ("ZEL_Get_Max_Threads", [], _INT),
        ("ZEL_Set_Num_Threads", [_INT], None),
        ("ZEL_Domain_Get_Max_Threads", [_INT], _INT),
        ("ZEL_Domain_Set_Num_Threads", [_INT, _INT], _INT),
        ("ZEL_Get_Dynamic", [], _INT),
        ("ZEL_Set_Dynamic", [_INT], None),
    ]
    for name, argtypes, restype in controls:
        fn = getattr(lib, name)
        fn.argtypes = argtypes
        fn.restype = restype
        entries[name] = fn
    return entries
