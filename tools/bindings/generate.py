#!/usr/bin/env python3
"""Writes the bindings and the reference from the list of exported functions.

Inputs (paths relative to the source tree):
  tools/bindings/functions.txt   one section per function: shape, names, texts
  frame/exports.txt              the names the library exports
  include/zvl.h                  prototypes (checked against the shapes) and
                                 the mode, status and domain constants
  CMakeLists.txt                 the version, from project()
  tests/data/ulp_budgets.txt     accuracy budgets
  docs/data/accuracy.txt         measured accuracy (zvl-report --data)

Outputs:
  fortran/zvl.f90                the Fortran module zvl
  tests/packaging/fortran_calls.f90   a Fortran test calling every function
  python/zvl/_table.py           the Python package's table
  docs/reference.md              the function reference

  generate.py           rewrites the outputs
  generate.py --check   writes nothing; exits 1 when an output is stale
"""
import argparse
import configparser
import os
import re
import sys

HERE = os.path.dirname(os.path.abspath(__file__))
ROOT = os.path.dirname(os.path.dirname(HERE))

OUTPUTS = {
    "fortran": "fortran/zvl.f90",
    "fortran_test": "tests/packaging/fortran_calls.f90",
    "python": "python/zvl/_table.py",
    "reference": "docs/reference.md",
}

# Argument shapes: the parameters of the exported form, each (name, kind)
# with kind n (count by pointer), in, out (arrays) or scalar (by pointer).
# The _Idx form takes an index by value after each array.
SHAPES = {
    "D1": ("real", [("n", "n"), ("a", "in"), ("r", "out")]),
    "D2": ("real", [("n", "n"), ("a", "in"), ("b", "in"), ("r", "out")]),
    "DX": ("real", [("n", "n"), ("a", "in"), ("b", "scalar"), ("r", "out")]),
    "D12": ("real", [("n", "n"), ("a", "in"), ("y", "out"), ("z", "out")]),
    "Z1": ("complex", [("n", "n"), ("a", "in"), ("r", "out")]),
    "Z2": ("complex", [("n", "n"), ("a", "in"), ("b", "in"), ("r", "out")]),
    "ZX": ("complex", [("n", "n"), ("a", "in"), ("b", "scalar"), ("r", "out")]),
}
SHAPES["R1"] = SHAPES["D1"]
SHAPES["R12"] = SHAPES["D12"]
SHAPE_WORDS = {
    "D1": "one in, one out", "D2": "two in, one out", "DX": "array and scalar",
    "D12": "one in, two out", "R1": "one in, one out", "R12": "one in, two out",
    "Z1": "one in, one out", "Z2": "two in, one out", "ZX": "array and scalar",
}

# The exported names that are not mathematical functions: C return type,
# name, parameters (type, name, by value).
CONTROLS = [
    ("unsigned int", "ZVLGETMODE", []),
    ("unsigned int", "ZVLSETMODE", [("unsigned int", "mode", False)]),
    ("int", "ZEL_Get_Max_Threads", []),
    ("void", "ZEL_Set_Num_Threads", [("int", "n", True)]),
    ("int", "ZEL_Domain_Get_Max_Threads", [("int", "domain", True)]),
    ("int", "ZEL_Domain_Set_Num_Threads", [("int", "n", True), ("int", "domain", True)]),
    ("int", "ZEL_Get_Dynamic", []),
    ("void", "ZEL_Set_Dynamic", [("int", "flag", True)]),
]

CPU_LABELS = ["ex", "e7", "u8", "y8", "h8", "e9"]
MODES = ["HA", "LA", "EP"]


class Error(Exception):
    pass


def read(rel):
    with open(os.path.join(ROOT, rel), encoding="utf-8") as f:
        return f.read()


# ---------------------------------------------------------------- inputs

def idx_params(shape):
    out = []
    for name, kind in SHAPES[shape][1]:
        out.append((name, kind))
        if kind in ("in", "out"):
            out.append(("i" + name, "idx"))
    return out


def parse_example(text, shape):
    """'3, 4 -> 0.75' into ((3.0, 4.0), (0.75,))."""
    if "->" not in text:
        raise Error("example '%s' has no '->'" % text)
    left, right = text.split("->")
    conv = complex if SHAPES[shape][0] == "complex" else float
    args = tuple(conv(v.replace(" ", "")) for v in left.split(","))
    results = tuple(conv(v.replace(" ", "")) for v in right.split(","))
    params = SHAPES[shape][1]
    want_args = sum(1 for _, k in params if k in ("in", "scalar"))
    want_results = sum(1 for _, k in params if k == "out")
    if len(args) != want_args or len(results) != want_results:
        raise Error("example '%s' does not fit shape %s" % (text, shape))
    return args, results


def load_functions():
    cp = configparser.ConfigParser(interpolation=None, comment_prefixes=("#",))
    cp.optionxform = str
    cp.read_string(read("tools/bindings/functions.txt"))
    keys = ["shape", "name", "group", "computes", "example", "domain", "special", "statuses",
            "modes", "underflow"]
    funcs = []
    for section in cp.sections():
        row = dict(cp[section])
        missing = [k for k in keys if k not in row]
        extra = [k for k in row if k not in keys]
        if missing or extra:
            raise Error("[%s]: missing %s, unknown %s" % (section, missing, extra))
        if row["shape"] not in SHAPES:
            raise Error("[%s]: unknown shape %s" % (section, row["shape"]))
        row["exported"] = section
        row["underflow"] = {"yes": True, "no": False}[row["underflow"]]
        row["example"] = parse_example(row["example"], row["shape"])
        funcs.append(row)
    return funcs


def check_exports(funcs):
    names = [l.strip() for l in read("frame/exports.txt").splitlines()
             if l.strip() and not l.startswith("#")]
    listed = {f["exported"] for f in funcs}
    exported = {n for n in names if re.match(r"^V[DZ]", n) and not n.endswith("_Idx")}
    problems = []
    for n in sorted(exported - listed):
        problems.append("%s is exported but has no section in functions.txt" % n)
    for n in sorted(listed - exported):
        problems.append("%s has a section but is not exported" % n)
    for n in sorted(listed & exported):
        if n + "_Idx" not in names:
            problems.append("%s_Idx is not exported" % n)
    for _, n, _ in CONTROLS:
        if n not in names:
            problems.append("%s is not exported" % n)
    if problems:
        raise Error("functions.txt and frame/exports.txt disagree:\n  " + "\n  ".join(problems))


def c_param(name, kind, elem):
    t = "double" if elem == "real" else "ZVLComplex16"
    return {"n": "const int *n", "in": "const %s *%s" % (t, name), "out": "%s *%s" % (t, name),
            "scalar": "const %s *%s" % (t, name), "idx": "int %s" % name}[kind]


def c_params(shape, idx):
    elem = SHAPES[shape][0]
    params = idx_params(shape) if idx else SHAPES[shape][1]
    return ", ".join(c_param(n, k, elem) for n, k in params)


def normalise(params):
    params = re.sub(r"\s+", " ", params).strip()
    return re.sub(r"\s*\*\s*", " *", params)


def parse_header():
    text = read("include/zvl.h")
    protos = {}
    for m in re.finditer(r"ZVL_API\s+[\w ]+?\s*\b(\w+)\s*\(([^)]*)\)\s*;", text):
        protos[m.group(1)] = normalise(m.group(2))
    consts = []
    values = {}
    for m in re.finditer(r"^#define\s+((?:ZVL|ZEL)_\w+)\s+(.+?)\s*(?:/\*.*)?$", text, re.M):
        name, expr = m.group(1), m.group(2).strip()
        if name in ("ZVL_API", "ZVL_H"):
            continue
        expr = re.sub(r"\b(0x[0-9A-Fa-f]+|\d+)u\b", r"\1", expr)
        if not re.fullmatch(r"[\w\s|()\-]+", expr):
            continue
        try:
            v = eval(expr, {"__builtins__": {}}, dict(values))
        except Exception:
            continue
        values[name] = v
        consts.append((name, v))
    return protos, consts


def check_header(funcs, protos):
    problems = []
    for f in funcs:
        for idx in (False, True):
            name = f["exported"] + ("_Idx" if idx else "")
            want = normalise(c_params(f["shape"], idx))
            got = protos.get(name)
            if got is None:
                problems.append("%s is not declared in zvl.h" % name)
            elif got != want:
                problems.append("%s(%s) in zvl.h, shape %s wants (%s)" % (name, got, f["shape"], want))
    if problems:
        raise Error("functions.txt and include/zvl.h disagree:\n  " + "\n  ".join(problems))


def project_version():
    m = re.search(r"project\(ZVL\s+VERSION\s+(\d+)\.(\d+)\.(\d+)", read("CMakeLists.txt"))
    if not m:
        raise Error("no project(ZVL VERSION x.y.z) in CMakeLists.txt")
    return tuple(int(v) for v in m.groups())


def load_budgets():
    budgets = {}
    for line in read("tests/data/ulp_budgets.txt").splitlines():
        line = line.split("#")[0].split()
        if len(line) == 4:
            budgets[(line[0], line[1])] = (line[2], line[3])
    return budgets


def load_accuracy():
    """docs/data/accuracy.txt: header comments, then lines
    function mode cpu max_ulp max_rel worst_ulp_input worst_rel_input."""
    path = "docs/data/accuracy.txt"
    if not os.path.exists(os.path.join(ROOT, path)):
        return [], {}
    header, data = [], {}
    for line in read(path).splitlines():
        if line.startswith("# zvl "):
            header.append(line[2:].strip())
        if line.startswith("#"):
            continue
        parts = line.split("\t")
        if len(parts) != 7:
            continue
        fn, mode, cpu, ulp, rel, wu, wr = parts
        data[(fn, mode, int(cpu))] = (float(ulp), float(rel), wu, wr)
    return header, data


# ---------------------------------------------------------------- Fortran

def wrap_fortran(line, indent):
    """Breaks a long line at commas with free-form continuations."""
    out, cur = [], line
    while len(cur) > 100:
        cut = cur.rfind(", ", 0, 96) + 1
        out.append(cur[:cut] + " &")
        cur = " " * (indent + 4) + "& " + cur[cut:].lstrip()
    out.append(cur)
    return out


def fortran_decl(name, kind, elem):
    t = "real(c_double)" if elem == "real" else "complex(c_double_complex)"
    return {
        "n": "integer(c_int), intent(in) :: n",
        "in": "%s, intent(in) :: %s(*)" % (t, name),
        "out": "%s, intent(inout) :: %s(*)" % (t, name),
        "scalar": "%s, intent(in) :: %s" % (t, name),
        "idx": "integer(c_int), value :: %s" % name,
    }[kind]


def fortran_module(funcs, consts, version):
    L = []
    w = L.append
    w("! zvl.f90 - Fortran interfaces of the ZVL vector mathematics library.")
    w("! Written by tools/bindings/generate.py from tools/bindings/functions.txt")
    w("! and include/zvl.h; do not edit.")
    w("!")
    w("! use zvl gives every exported name with its C binding: the functions take")
    w("! the count and arrays by reference (call VDEXP(n, a, r)); the _Idx forms")
    w("! take each index by value, counting elements from 0, after its array")
    w("! (call VDEXP_Idx(n, a, 10, r, 0) works on a(11:) into r(1:)). Mode and")
    w("! status constants are those of zvl.h. Link with -lzvl.")
    w("module zvl")
    w("  use, intrinsic :: iso_c_binding, only: c_int, c_double, c_double_complex")
    w("  implicit none")
    w("")
    w("  ! The version of the library these interfaces belong to.")
    for part, v in zip(("MAJOR", "MINOR", "PATCH"), version):
        w("  integer(c_int), parameter :: ZVL_VERSION_%s = %d" % (part, v))
    w("")
    w("  ! Mode word fields, statuses and thread domains (zvl.h).")
    for name, v in consts:
        w("  integer(c_int), parameter :: %s = %d" % (name, v))
    w("")
    w("  interface")
    w("    ! Mode word of the calling thread.")
    for ret, name, params in CONTROLS:
        args = ", ".join(p[1] for p in params)
        if ret == "void":
            w("    subroutine %s(%s) bind(C, name=\"%s\")" % (name, args, name))
        else:
            w("    function %s(%s) bind(C, name=\"%s\")" % (name, args, name))
        w("      import :: c_int")
        for t, pname, by_value in params:
            w("      integer(c_int), %s :: %s" % ("value" if by_value else "intent(in)", pname))
        if ret != "void":
            w("      integer(c_int) :: %s" % name)
            w("    end function %s" % name)
        else:
            w("    end subroutine %s" % name)
        if name == "ZVLSETMODE":
            w("    ! Thread controls, process-wide.")
    group = None
    for f in funcs:
        if f["group"] != group:
            group = f["group"]
            w("    ! %s" % group)
        elem = SHAPES[f["shape"]][0]
        kinds = "c_int, c_double" if elem == "real" else "c_int, c_double_complex"
        for idx in (False, True):
            name = f["exported"] + ("_Idx" if idx else "")
            params = idx_params(f["shape"]) if idx else SHAPES[f["shape"]][1]
            args = ", ".join(p[0] for p in params)
            L.extend(wrap_fortran("    subroutine %s(%s) bind(C, name=\"%s\")" % (name, args, name), 4))
            w("      import :: %s" % kinds)
            for pname, kind in params:
                w("      " + fortran_decl(pname, kind, elem))
            w("    end subroutine %s" % name)
    w("  end interface")
    w("end module zvl")
    return "\n".join(L) + "\n"


def fortran_literal(v):
    if isinstance(v, complex):
        return "cmplx(%s, %s, c_double_complex)" % (fortran_literal(v.real), fortran_literal(v.imag))
    return repr(float(v)).replace("e", "d") + ("" if "e" in repr(float(v)) else "d0")


# The fixed end of the Fortran test: the two comparisons it makes.
FORTRAN_TEST_CHECKS = """\
contains

  subroutine expect(what, got, want)
    character(*), intent(in) :: what
    class(*), intent(in) :: got, want
    logical :: ok
    select type (got)
    type is (real(c_double))
      select type (want)
      type is (real(c_double))
        ok = abs(got - want) <= 1d-13 * abs(want)
      end select
    type is (complex(c_double_complex))
      select type (want)
      type is (complex(c_double_complex))
        ok = abs(got - want) <= 1d-13 * abs(want)
      end select
    end select
    if (.not. ok) then
      print '(2a)', what, ': wrong result'
      failures = failures + 1
    end if
  end subroutine expect

  subroutine same(what, plain, shifted)
    character(*), intent(in) :: what
    class(*), intent(in) :: plain(:), shifted(:)
    logical :: ok
    ok = .false.
    select type (plain)
    type is (real(c_double))
      select type (shifted)
      type is (real(c_double))
        ok = all(plain == shifted)
      end select
    type is (complex(c_double_complex))
      select type (shifted)
      type is (complex(c_double_complex))
        ok = all(plain == shifted)
      end select
    end select
    if (.not. ok) then
      print '(2a)', what, ': differs from the plain call'
      failures = failures + 1
    end if
  end subroutine same
end program fortran_calls"""


def fortran_test(funcs):
    """Each function once with its example arguments, then through its _Idx
    form on arrays whose elements sit at other indices: both must agree."""
    L = []
    w = L.append
    w("! Calls every function of the module zvl: its example (within a few ulp)")
    w("! and its _Idx form, whose offsets go by value, on shifted copies.")
    w("! Written by tools/bindings/generate.py; do not edit.")
    w("program fortran_calls")
    w("  use zvl")
    w("  use, intrinsic :: iso_c_binding, only: c_int, c_double, c_double_complex")
    w("  implicit none")
    w("  integer(c_int), parameter :: n = 3")
    w("  integer :: failures = 0")
    w("  real(c_double) :: a(n), b(n), y(n), z(n), s, ai(n + 2), bi(n + 1), yi(n + 3), zi(n + 4)")
    w("  complex(c_double_complex) :: ca(n), cb(n), cy(n), cs, cai(n + 2), cbi(n + 1), cyi(n + 3)")
    w("")
    for f in funcs:
        shape, name = f["shape"], f["exported"]
        elem = SHAPES[shape][0]
        params = SHAPES[shape][1]
        args, results = f["example"]
        p = "" if elem == "real" else "c"
        arrays = {"a": p + "a", "b": p + "b", "y": p + "y", "r": p + "y", "z": "z"}
        shifted = {"a": (p + "ai", 2), "b": (p + "bi", 1), "y": (p + "yi", 3), "r": (p + "yi", 3),
                   "z": ("zi", 4)}
        w("  ! %s: %s" % (name, f["computes"]))
        it = iter(args)
        call, call_idx = [], []
        for pname, kind in params:
            if kind == "n":
                call.append("n")
                call_idx.append("n")
            elif kind == "in":
                v = fortran_literal(next(it))
                arr, off = shifted[pname]
                w("  %s = %s" % (arrays[pname], v))
                w("  %s = 0" % arr)
                w("  %s(%d:) = %s" % (arr, off + 1, v))
                call.append(arrays[pname])
                call_idx += [arr, str(off)]
            elif kind == "scalar":
                w("  %s = %s" % (p + "s", fortran_literal(next(it))))
                call.append(p + "s")
                call_idx.append(p + "s")
            else:
                arr, off = shifted[pname]
                call.append(arrays[pname])
                call_idx += [arr, str(off)]
        L.extend(wrap_fortran("  call %s(%s)" % (name, ", ".join(call)), 2))
        L.extend(wrap_fortran("  call %s_Idx(%s)" % (name, ", ".join(call_idx)), 2))
        outs = [pn for pn, k in params if k == "out"]
        for pname, want in zip(outs, results):
            arr, off = shifted[pname]
            w("  call expect('%s', %s(1), %s)" % (name, arrays[pname], fortran_literal(want)))
            w("  call same('%s_Idx', %s, %s(%d:%d))" % (name, arrays[pname], arr, off + 1, off + 3))
        w("")
    w("  if (failures > 0) then")
    w("    print '(i0, a)', failures, ' failures'")
    w("    error stop 1")
    w("  end if")
    w("  print '(a)', 'every function called'")
    w("")
    L.append(FORTRAN_TEST_CHECKS)
    return "\n".join(L) + "\n"


# ---------------------------------------------------------------- Python

def python_table(funcs, consts, version):
    L = []
    w = L.append
    w('"""The exported functions and constants, written by tools/bindings/generate.py')
    w('from tools/bindings/functions.txt and include/zvl.h; do not edit."""')
    w("")
    w("VERSION = %r" % (version,))
    w("")
    w("# (Python name, exported name, shape, what r[i] is, reports underflow,")
    w("#  example arguments, example results)")
    w("FUNCTIONS = (")
    for f in funcs:
        args, results = f["example"]
        w("    (%r, %r, %r, %r, %r, %r, %r)," % (f["name"], f["exported"], f["shape"],
                                                 f["computes"], f["underflow"], args, results))
    w(")")
    w("")
    w("CONSTANTS = {")
    for name, v in consts:
        w("    %r: %d," % (name, v))
    w("}")
    return "\n".join(L) + "\n"


# ---------------------------------------------------------------- reference

def md_value(v):
    if isinstance(v, complex):
        return "%s%+gi" % (repr(v.real), v.imag)
    r = repr(float(v))
    return r[:-2] if r.endswith(".0") else r


def budget_text(budget):
    if budget is None:
        return "-"
    metric, bound = budget
    if metric == "rel":
        if bound.startswith("0x1p"):
            return "rel 2^%s" % bound[4:]
        return "rel %s" % bound
    return "%s ulp" % bound


def measured_text(value, rel):
    if value == float("inf"):
        return "inf"
    return ("%.2e" if rel else "%.3f") % value


def reference(funcs, budgets, acc_header, acc):
    L = []
    w = L.append
    w("# Function reference")
    w("")
    w("<!-- Written by tools/bindings/generate.py from tools/bindings/functions.txt, "
      "frame/exports.txt, include/zvl.h, tests/data/ulp_budgets.txt and "
      "docs/data/accuracy.txt; do not edit. -->")
    w("")
    w("Every function takes a count `n` (a pointer to a 32-bit signed integer) and")
    w("arrays of `n` doubles (double-complex pairs for `VZ` names); the output may be")
    w("the same array as an input. Each has an `_Idx` form that takes an element index")
    w("by value after each array. A negative `n` or a null array is reported as a")
    w("parameter error (printed, status `ZVL_STATUS_BADSIZE` or `ZVL_STATUS_BADMEM`,")
    w("errno left as it was), and `n = 0` returns at once. An exceptional element gets")
    w("its default result and its status; the thread's mode word then decides what the")
    w("caller sees: errno (`EDOM` for `ZVL_STATUS_ERRDOM`, `ERANGE` for the others), a")
    w("printed message, the raised floating-point exception. The accuracy mode (HA, LA,")
    w("EP) is the low four bits of the mode word; see the README for both.")
    w("")
    w("Accuracy: the budget is what the accuracy test enforces on every cpu type; the")
    w("measured columns are the largest error found against MPFR at each cpu type, in")
    w("ulps (HA, LA) or as a relative error (EP).")
    for line in acc_header:
        w("Measured with %s." % line.rstrip("."))
    w("")
    w("| function | computes | shape | Python | statuses |")
    w("|---|---|---|---|---|")
    for f in funcs:
        st = sorted(set(re.findall(r"ZVL_STATUS_\w+", f["statuses"])))
        st = ", ".join("`%s`" % s for s in st) or "none"
        w("| [`%s`](#%s) | `%s` | %s | `zvl.%s` | %s |" % (
            f["exported"], f["exported"].lower(), f["computes"], SHAPE_WORDS[f["shape"]],
            f["name"], st))
    group = None
    for f in funcs:
        if f["group"] != group:
            group = f["group"]
            w("")
            w("## %s" % group)
        name = f["exported"]
        elem = SHAPES[f["shape"]][0]
        w("")
        w("### %s" % name)
        w("")
        w("`r[i] = %s`" % f["computes"] if f["shape"] not in ("D12", "R12") else "`%s`" % f["computes"])
        w("")
        w("```c")
        w("void %s(%s);" % (name, c_params(f["shape"], False)))
        w("void %s_Idx(%s);" % (name, c_params(f["shape"], True)))
        w("```")
        w("")
        params = SHAPES[f["shape"]][1]
        py_in = [p for p, k in params if k in ("in", "scalar")]
        py_out = [p for p, k in params if k == "out"]
        out = "out=None" if len(py_out) == 1 else "out=(None, None)"
        args, results = f["example"]
        w("Fortran `call %s(%s)`; Python `zvl.%s(%s, %s)`." % (
            name, ", ".join(p for p, _ in params), f["name"], ", ".join(py_in), out))
        w("Example: %s gives %s." % (", ".join(md_value(a) for a in args),
                                     ", ".join(md_value(r) for r in results)))
        w("")
        w("- Domain: %s" % f["domain"])
        w("- Special values: %s" % f["special"])
        w("- Statuses: %s" % f["statuses"])
        w("- Modes: %s" % f["modes"])
        w("")
        modes = MODES if f["shape"] not in ("R1", "R12") else ["all"]
        # one in, two out with accuracy modes: one measured row per output,
        # named <name>_<output> in the budgets
        names = [f["name"]]
        if f["shape"] == "D12":
            names = list(dict.fromkeys(k for k, _ in budgets if k.startswith(f["name"] + "_"))) or names
        if not any((n, m, c) in acc for n in names for m in modes for c in range(6)):
            w("Accuracy: not measured (the measuring tools have no row for it).")
            continue
        for k, n in enumerate(names):
            if len(names) > 1:
                if k > 0:
                    w("")
                w("Output `%s`:" % n[len(f["name"]) + 1:])
                w("")
            accuracy_table(w, n, modes, budgets, acc)
    return "\n".join(L) + "\n"


def accuracy_table(w, name, modes, budgets, acc):
    """The measured table of one row and its worst inputs."""
    w("| mode | budget | %s |" % " | ".join("%s (%d)" % (CPU_LABELS[c], c) for c in range(5, -1, -1)))
    w("|---|---|" + "---|" * 6)
    for m in modes:
        budget = budgets.get((name, m)) or budgets.get((name, "all"))
        rel = budget is not None and budget[0] == "rel"
        cells = []
        for c in range(5, -1, -1):
            d = acc.get((name, m, c))
            cells.append("-" if d is None else measured_text(d[1] if rel else d[0], rel))
        w("| %s | %s | %s |" % ("-" if m == "all" else m, budget_text(budget), " | ".join(cells)))
    worst = []
    for m in modes:
        budget = budgets.get((name, m)) or budgets.get((name, "all"))
        rel = budget is not None and budget[0] == "rel"
        best = None
        for c in range(6):
            d = acc.get((name, m, c))
            if d is None:
                continue
            v = d[1] if rel else d[0]
            if best is None or v > best[0]:
                best = (v, c, d[3] if rel else d[2])
        if best and best[0] > 0:
            worst.append("%s at %s on cpu type %d" % ("all" if m == "all" else m, best[2], best[1]))
    w("")
    if worst:
        w("Worst inputs: %s." % "; ".join(worst))
    else:
        w("Exact on every input measured.")


# ---------------------------------------------------------------- main

def generate():
    funcs = load_functions()
    check_exports(funcs)
    protos, consts = parse_header()
    check_header(funcs, protos)
    acc_header, acc = load_accuracy()
    version = project_version()
    return {
        "fortran": fortran_module(funcs, consts, version),
        "fortran_test": fortran_test(funcs),
        "python": python_table(funcs, consts, version),
        "reference": reference(funcs, load_budgets(), acc_header, acc),
    }


def main():
    ap = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    ap.add_argument("--check", action="store_true", help="report stale outputs, write nothing")
    opts = ap.parse_args()
    try:
        outputs = generate()
    except Error as e:
        print("generate.py: %s" % e, file=sys.stderr)
        return 2
    stale = []
    for key, text in outputs.items():
        path = os.path.join(ROOT, OUTPUTS[key])
        old = open(path, encoding="utf-8").read() if os.path.exists(path) else None
        if old == text:
            continue
        stale.append(OUTPUTS[key])
        if not opts.check:
            os.makedirs(os.path.dirname(path), exist_ok=True)
            with open(path, "w", encoding="utf-8") as f:
                f.write(text)
    if opts.check and stale:
        print("stale, rerun python3 tools/bindings/generate.py: %s" % ", ".join(stale))
        return 1
    for s in stale:
        print("wrote %s" % s)
    return 0


if __name__ == "__main__":
    sys.exit(main())
