"""The Python package against the built library (ZVL_LIBRARY, ZVL_CPU_TYPE=1)."""
import threading
import warnings

import numpy as np
import pytest

import zvl
from zvl._table import FUNCTIONS

TOLERANCE = {"HA": 1e-13, "LA": 1e-13, "EP": 1e-7}


def call(name, args, **kw):
    return getattr(zvl, name)(*args, **kw)


def outputs(result):
    return result if isinstance(result, tuple) else (result,)


@pytest.mark.parametrize("mode", ["HA", "LA", "EP"])
@pytest.mark.parametrize("row", FUNCTIONS, ids=[r[0] for r in FUNCTIONS])
def test_every_function_gives_its_example(row, mode):
    name, _, _, _, _, args, results = row
    with zvl.mode(mode):
        got = outputs(call(name, args))
    for g, want in zip(got, results):
        assert abs(g - want) <= TOLERANCE[mode] * abs(want), (name, mode, g, want)


@pytest.mark.parametrize("row", FUNCTIONS, ids=[r[0] for r in FUNCTIONS])
def test_arrays_of_any_layout_give_the_elementwise_results(row):
    # A 2-D array against each element alone (a scalar in, a numpy scalar
    # out), then a strided view and nested lists against the 2-D result.
    name, _, shape, _, _, args, _ = row
    kind = np.complex128 if shape.startswith("Z") else np.float64
    grid = np.linspace(0.5, 4.0, 24).reshape(4, 6)
    ins = [grid * a for a in args]
    if shape in ("DX", "ZX"):
        ins[1] = args[1]
    whole = outputs(call(name, ins))
    for idx in np.ndindex(grid.shape):
        one = outputs(call(name, [x[idx] if np.ndim(x) else x for x in ins]))
        for w, o in zip(whole, one):
            assert isinstance(o, kind)
            np.testing.assert_allclose(o, w[idx], rtol=4e-16)
    strided = outputs(call(name, [x[:, ::2] if np.ndim(x) else x for x in ins]))
    nested = outputs(call(name, [x.tolist() if np.ndim(x) else x for x in ins]))
    for w, s, n in zip(whole, strided, nested):
        assert w.dtype == s.dtype == n.dtype == kind
        np.testing.assert_array_equal(s, w[:, ::2])
        np.testing.assert_array_equal(n, w)


def test_two_arguments_broadcast():
    np.testing.assert_array_equal(zvl.pow([[1.0], [2.0]], [1.0, 2.0, 3.0]),
                                  [[1, 1, 1], [2, 4, 8]])
    np.testing.assert_array_equal(zvl.div(1.0, [2.0, 4.0]), [0.5, 0.25])


def test_integers_and_booleans_convert_complex_is_refused():
    np.testing.assert_array_equal(zvl.sqrt([4, 9]), [2.0, 3.0])
    np.testing.assert_array_equal(zvl.floor(np.array([True, False])), [1.0, 0.0])
    with pytest.raises(TypeError, match="real arguments"):
        zvl.exp(np.array([1 + 2j]))


def test_powx_takes_one_scalar_exponent():
    np.testing.assert_array_equal(zvl.powx([2.0, 3.0], 2), [4.0, 9.0])
    with pytest.raises(ValueError, match="scalar"):
        zvl.powx([2.0, 3.0], [2.0, 2.0])


def test_out_is_filled_and_returned():
    a = np.array([1.0, 4.0, 9.0])
    out = np.empty(3)
    assert zvl.sqrt(a, out=out) is out
    np.testing.assert_array_equal(out, [1.0, 2.0, 3.0])
    # In place, into a strided view, and into float32.
    zvl.sqrt(a, out=a)
    np.testing.assert_array_equal(a, [1.0, 2.0, 3.0])
    wide = np.zeros(6)
    zvl.sqrt([1.0, 4.0, 9.0], out=wide[::2])
    np.testing.assert_array_equal(wide, [1.0, 0, 2.0, 0, 3.0, 0])
    single = np.zeros(3, np.float32)
    zvl.sqrt([1.0, 4.0, 9.0], out=single)
    np.testing.assert_array_equal(single, [1.0, 2.0, 3.0])
    y, z = np.empty(2), np.empty(2)
    assert zvl.modf([1.5, -2.25], out=(y, z)) == (y, z)
    np.testing.assert_array_equal(z, [0.5, -0.25])


def test_out_overlapping_an_input_at_an_offset():
    # r[i] = a[i + 1]^2 written over the same buffer: the result must be as
    # if the input had been read first.
    buf = np.arange(1.0, 8.0)
    zvl.pow(buf[1:], 2.0, out=buf[:-1])
    np.testing.assert_array_equal(buf, [4, 9, 16, 25, 36, 49, 7])


def test_bad_out_is_refused():
    with pytest.raises(ValueError, match="shape"):
        zvl.exp([1.0, 2.0], out=np.empty(3))
    with pytest.raises(TypeError, match="cannot write"):
        zvl.exp([1.0, 2.0], out=np.empty(2, np.int64))
    with pytest.raises(TypeError, match="pair"):
        zvl.modf([1.0], out=np.empty(1))


def test_empty_arrays():
    assert zvl.exp([]).shape == (0,)
    assert zvl.modf(np.empty((0, 3)))[1].shape == (0, 3)


@pytest.mark.parametrize("name, args", [("exp", 1), ("pow", 2), ("powx", "x"), ("modf", 1)])
def test_long_arrays_go_in_pieces(monkeypatch, name, args):
    a = np.linspace(-3.0, 3.0, 1001)
    b = np.linspace(0.5, 2.0, 1001)
    ins = {1: [a], 2: [np.abs(a), b], "x": [np.abs(a), 1.5]}[args]
    whole = outputs(call(name, ins))
    monkeypatch.setattr(zvl, "_CHUNK", 7)
    pieces = outputs(call(name, ins))
    for w, p in zip(whole, pieces):
        np.testing.assert_array_equal(w, p)


def test_mode_selects_the_kernels_and_comes_back():
    x = np.linspace(-20.0, 20.0, 997)
    start = zvl.get_mode()
    ha = zvl.exp(x)
    with zvl.mode("EP"):
        assert zvl.get_mode() & zvl.ZVL_ACCURACY_MASK == zvl.ZVL_EP
        ep = zvl.exp(x)
        with zvl.mode("la"):
            assert zvl.get_mode() & zvl.ZVL_ACCURACY_MASK == zvl.ZVL_LA
        assert zvl.get_mode() & zvl.ZVL_ACCURACY_MASK == zvl.ZVL_EP
    assert zvl.get_mode() == start
    # At cpu type 1 EP is a different algorithm: about 26 bits, not 53.
    assert np.any(ep != ha)
    np.testing.assert_allclose(ep, ha, rtol=2.0**-26)
    with pytest.raises(ValueError):
        zvl.mode("XA")


def test_mode_is_per_thread():
    seen = []

    def other():
        seen.append(zvl.get_mode() & zvl.ZVL_ACCURACY_MASK)

    with zvl.mode("LA"):
        t = threading.Thread(target=other)
        t.start()
        t.join()
    assert seen == [zvl.ZVL_HA]


@pytest.mark.parametrize("name, args, kind, text", [
    ("ln", [[1.0, 0.0]], "divide", "divide by zero encountered in zvl.ln"),
    ("inv", [[0.0]], "divide", "divide by zero"),
    ("sqrt", [[4.0, -1.0]], "invalid", "invalid value encountered in zvl.sqrt"),
    ("exp", [[1.0, 1000.0]], "over", "overflow encountered in zvl.exp"),
    ("pow", [[10.0], [400.0]], "over", "overflow"),
    ("exp", [[-1000.0]], "under", "underflow encountered in zvl.exp"),
    ("powx", [[1e-200], 2.0], "under", "underflow"),
])
def test_errors_follow_numpy_settings(name, args, kind, text):
    with np.errstate(**{kind: "raise"}):
        with pytest.raises(FloatingPointError, match=text):
            call(name, args)
    with np.errstate(**{kind: "warn"}):
        with pytest.warns(RuntimeWarning, match=text):
            call(name, args)
    calls = []
    with np.errstate(**{kind: "call"}, call=lambda what, flag: calls.append(flag)):
        call(name, args)
    assert calls == [{"divide": 1, "over": 2, "under": 4, "invalid": 8}[kind]]
    with np.errstate(all="ignore"), warnings.catch_warnings():
        warnings.simplefilter("error")
        call(name, args)


@pytest.mark.parametrize("name, args", [
    ("exp", [[np.nan, np.inf, -np.inf]]),   # from non-finite arguments
    ("ln", [[np.inf, np.nan]]),
    ("floor", [[0.25, -0.0]]),               # exact zeros are no underflow
    ("ln", [[1.0]]),
    ("pow", [[0.0], [3.0]]),                 # a zero from a zero
    ("modf", [[3.0]]),
])
def test_no_error_where_numpy_sees_none(name, args):
    with np.errstate(all="raise"):
        call(name, args)


def test_errors_found_wherever_the_element_was_computed():
    # Long enough to be split over threads: the bad element lies in the last
    # thread's part, whose errno the caller never sees.
    a = np.full(2_000_000, 2.0)
    a[-1] = 0.0
    with np.errstate(divide="raise"):
        with pytest.raises(FloatingPointError):
            zvl.ln(a)


def test_thread_controls():
    zvl.set_dynamic(False)
    try:
        assert not zvl.get_dynamic()
        zvl.set_num_threads(1)
        assert zvl.get_max_threads() == 1
        assert zvl.domain_set_num_threads(1, zvl.ZEL_ZVL) == 1
        assert zvl.domain_get_max_threads(zvl.ZEL_ZVL) == 1
        assert zvl.domain_set_num_threads(1, 7) == 0
        assert zvl.domain_set_num_threads(0, zvl.ZEL_ZVL) == 1
    finally:
        zvl.set_dynamic(True)
    assert zvl.get_dynamic()


def test_version_and_constants_match_the_header():
    assert zvl.__version__.count(".") == 2
    assert zvl.ZVL_MODE_DEFAULT == 0x1A02
    assert zvl.ZVL_STATUS_SING == 2
