# SPDX-License-Identifier: MIT
"""The universal functions against NumPy's and SciPy's, and all that NumPy lets be done with one."""
import concurrent.futures
import os
import pickle
import subprocess
import sys
import warnings
from pathlib import Path

import numpy as np
import pytest
import scipy.special

import orv

ROOT = Path(__file__).resolve().parents[2]
RNG = np.random.default_rng(1)
WIDE, UNIT, ABOVE, POSITIVE = (-20, 20), (-1, 1), (1, 50), (1e-3, 50)

# name -> (witness, range of arguments)
REAL = {
    "absolute": (np.absolute, WIDE), "arccos": (np.arccos, UNIT), "arccosh": (np.arccosh, ABOVE),
    "arcsin": (np.arcsin, UNIT), "arcsinh": (np.arcsinh, WIDE), "arctan": (np.arctan, WIDE),
    "arctanh": (np.arctanh, UNIT), "cbrt": (np.cbrt, WIDE), "ceil": (np.ceil, WIDE),
    "cdfnorm": (scipy.special.ndtr, (-5, 5)), "cdfnorminv": (scipy.special.ndtri, (0.01, 0.99)),
    "cos": (np.cos, WIDE), "cosh": (np.cosh, WIDE), "erf": (scipy.special.erf, (-3, 3)),
    "erfc": (scipy.special.erfc, (-3, 5)), "erfcinv": (scipy.special.erfcinv, (0.01, 1.99)),
    "erfinv": (scipy.special.erfinv, (-0.99, 0.99)), "exp": (np.exp, WIDE),
    "expm1": (np.expm1, WIDE), "floor": (np.floor, WIDE),
    "invcbrt": (lambda x: 1 / np.cbrt(x), POSITIVE), "invsqrt": (lambda x: x ** -0.5, POSITIVE),
    "log": (np.log, POSITIVE), "log10": (np.log10, POSITIVE), "log1p": (np.log1p, POSITIVE),
    "nearbyint": (np.rint, WIDE), "pow2o3": (lambda x: np.cbrt(x) ** 2, WIDE),
    "pow3o2": (lambda x: x ** 1.5, POSITIVE), "reciprocal": (np.reciprocal, POSITIVE),
    "rint": (np.rint, WIDE), "round_half_away": (lambda x: np.trunc(x + np.copysign(0.5, x)), WIDE),
    "sin": (np.sin, WIDE), "sinh": (np.sinh, WIDE), "sqrt": (np.sqrt, POSITIVE),
    "square": (np.square, WIDE), "tan": (np.tan, WIDE), "tanh": (np.tanh, WIDE),
    "trunc": (np.trunc, WIDE),
}
TWO = {
    "add": (np.add, WIDE), "arctan2": (np.arctan2, WIDE), "divide": (np.divide, POSITIVE),
    "hypot": (np.hypot, WIDE), "multiply": (np.multiply, WIDE), "power": (np.power, (0.1, 9)),
    "powx": (np.power, (0.1, 9)), "subtract": (np.subtract, WIDE),
}
COMPLEX = {name: witness for name, (witness, _) in (REAL | TWO).items() if name in {
    "absolute", "add", "arccos", "arccosh", "arcsin", "arcsinh", "arctan", "arctanh", "cos", "cosh",
    "divide", "exp", "log", "log10", "multiply", "power", "powx", "sin", "sinh", "sqrt",
    "subtract", "tan", "tanh"}}
COMPLEX |= {"angle": np.angle, "conjugate": np.conjugate,
            "multiply_by_conjugate": lambda a, b: a * b.conj()}
BY_SCIPY = {"cdfnorm", "cdfnorminv", "erf", "erfc", "erfinv", "erfcinv"}  # less exact than we are
RESULTS = {"modf", "sincos", "cis", "linearfrac"}  # of forms of their own, tested below

LEVELS = {"ha": (orv.ha, 8e-16, 3e-7), "la": (orv.la, 4e-15, 2e-6), "ep": (orv.ep, 1e-7, 2e-3)}


def numbers(span, dtype, n=999):
    return RNG.uniform(*span, n).astype(dtype)


def assert_near(got, expected, relative, scale=0.0):
    """`scale` is the size of what cancels in the result."""
    assert got.shape == expected.shape
    difference = np.abs(got - expected)
    allowed = relative * np.maximum(np.abs(expected), scale)
    assert np.all(difference <= allowed), f"{np.max(difference / np.maximum(allowed, 1e-300))} times"


def test_every_function_is_tried_here():
    made = set(orv._FUNCTIONS)
    assert made == set(REAL) | set(TWO) | set(COMPLEX) | RESULTS
    assert all(type(getattr(orv.ha, name)) is np.ufunc for name in made)


@pytest.mark.parametrize("level", LEVELS)
@pytest.mark.parametrize("name", sorted(REAL | TWO))
def test_real_functions_agree_with_witnesses(name, level):
    module, double_error, float_error = LEVELS[level]
    witness, span = (REAL | TWO)[name]
    for dtype, error in ((np.float64, double_error), (np.float32, float_error)):
        arguments = [numbers(span, dtype) for _ in range(2 if name in TWO else 1)]
        wide = [a.astype(np.float64 if name in BY_SCIPY else np.longdouble) for a in arguments]
        error *= 50 if name in BY_SCIPY or (name, level) in (("power", "ep"), ("powx", "ep")) else 1
        if name == "powx":
            wide[1] = wide[1][0]
            arguments[1] = arguments[1][0]
        got = getattr(module, name)(*arguments)
        assert got.dtype == dtype
        # near a zero of theirs elsewhere than at 0, EP functions are absolutely exact
        scale = 1.0 if level == "ep" or name in ("cdfnorminv", "erfinv", "erfcinv") else 0.0
        assert_near(got, witness(*wide), error, scale)


@pytest.mark.parametrize("level", LEVELS)
@pytest.mark.parametrize("name", sorted(COMPLEX))
def test_complex_functions_agree_with_numpy(name, level):
    module, double_error, float_error = LEVELS[level]
    function = getattr(module, name)
    for dtype, error in ((np.complex128, 20 * double_error), (np.complex64, 4 * float_error)):
        arguments = [(numbers((-3, 3), float) + 1j * numbers((-3, 3), float)).astype(dtype)
                     for _ in range(function.nin)]
        if name == "powx":
            arguments[1] = arguments[1][0]
        wide = [np.complex128(a) for a in arguments]
        got = function(*arguments)
        expected = COMPLEX[name](*wide)
        assert np.iscomplexobj(got) == np.iscomplexobj(expected)
        assert got.dtype.itemsize * (1 if np.iscomplexobj(got) else 2) == np.dtype(dtype).itemsize
        assert_near(got, expected, error, 1.0)


def test_functions_of_other_forms():
    x = numbers(WIDE, np.float64)
    fraction, whole = orv.modf(x)
    assert np.array_equal(fraction, np.modf(x)[0]) and np.array_equal(whole, np.modf(x)[1])
    sine, cosine = orv.sincos(x)
    assert np.array_equal(sine, orv.sin(x)) and np.array_equal(cosine, orv.cos(x))
    assert orv.cis(x).dtype == np.complex128
    assert_near(orv.cis(x), np.exp(1j * x), 1e-15)
    a, b = numbers(POSITIVE, np.float64), numbers(POSITIVE, np.float64)
    assert_near(orv.linearfrac(a, b, 2, 1, 3, 4), (2 * a + 1) / (3 * b + 4), 1e-15)
    assert_near(orv.linearfrac(a, b, 2, a, 3, 4), (2 * a + a) / (3 * b + 4), 1e-15)


# ---- What NumPy does with a universal function --------------------------------------------------

LAYOUTS = {
    "dense": lambda a: a, "reversed": lambda a: a[::-1], "every third": lambda a: a[::3],
    "transposed": lambda a: a[:960].reshape(24, 40).T, "fortran": lambda a: np.asfortranarray(
        a[:960].reshape(24, 40)), "inner axis": lambda a: a[:960].reshape(24, 40)[:, ::2],
    "repeated": lambda a: np.broadcast_to(a[:1], (700,)), "empty": lambda a: a[:0],
    "unaligned": lambda a: np.frombuffer(b"x" + a.tobytes(), dtype=np.uint8)[1:].view(a.dtype),
    "swapped bytes": lambda a: a.astype(a.dtype.newbyteorder()),
    "parts of a record": lambda a: np.rec.fromarrays([a, a], names="x,y").y,
}


@pytest.mark.parametrize("layout", LAYOUTS)
def test_layout_changes_no_bit(layout):
    for dtype in (np.float32, np.float64, np.complex64, np.complex128):
        base = numbers(POSITIVE, dtype, 2000)
        x = LAYOUTS[layout](base)
        expected = orv.exp(np.ascontiguousarray(x).astype(dtype)).reshape(x.shape)
        assert np.array_equal(orv.exp(x), expected)
        out = LAYOUTS[layout](np.zeros_like(base))
        if out.flags.writeable and layout != "repeated":
            assert orv.exp(x, out=out) is out
            assert np.array_equal(out, expected)
        if not np.issubdtype(dtype, np.complexfloating):
            assert np.array_equal(orv.arctan2(x, dtype(2)),
                                  orv.arctan2(np.array(x), np.full(x.shape, 2, dtype)))


def test_broadcasting_where_and_overlap():
    column, row = numbers(POSITIVE, float, 7)[:, None], numbers(POSITIVE, float, 700)
    assert_near(orv.power(column, row), np.power(column, row), 1e-13)
    assert_near(orv.power(row, column), np.power(row, column), 1e-13)

    mask = RNG.random(700) < 0.5
    out = np.full(700, -1.0)
    orv.log(row, out=out, where=mask)
    assert np.array_equal(out, np.where(mask, orv.log(row), -1.0))

    for shift in (1, -1, 3):  # NumPy promises what it would be without overlap
        x = np.arange(1.0, 900.0)
        expected = orv.sqrt(x[8:-8].copy())
        orv.sqrt(x[8:-8], out=x[8 + shift:len(x) - 8 + shift])
        assert np.array_equal(x[8 + shift:len(x) - 8 + shift], expected)


def test_methods_of_universal_functions():
    x = numbers((0.9, 1.1), float, 600).reshape(20, 30)
    for axis in (0, 1, None):
        assert_near(np.asarray(orv.add.reduce(x, axis=axis)),
                    np.asarray(np.add.reduce(x, axis=axis)), 1e-13)
        assert_near(np.asarray(orv.multiply.reduce(x.T, axis=axis)),
                    np.asarray(np.multiply.reduce(x.T, axis=axis)), 1e-13)
    for function in ("add", "multiply", "hypot"):
        assert_near(getattr(orv, function).accumulate(x, axis=1),
                    getattr(np, function).accumulate(x, axis=1), 1e-13)
    assert_near(orv.hypot.outer(x[0], x[1]), np.hypot.outer(x[0], x[1]), 1e-15)
    assert_near(orv.add.reduceat(x[0], [0, 7, 20]), np.add.reduceat(x[0], [0, 7, 20]), 1e-14)
    at = x.copy()
    orv.add.at(at, ([0, 0, 1], [2, 2, 3]), 1)
    assert at[0, 2] == x[0, 2] + 1 + 1 and at[1, 3] == x[1, 3] + 1


@pytest.mark.parametrize("argument, dtype", [
    (np.arange(5, dtype=np.int8), np.float32), (np.arange(5), np.float64), (2, np.float64),
    (np.float32(2), np.float32), ([1, 2], np.float64), (np.float16(1), np.float32),
    (np.ones(3, bool), np.float32), (1j, np.complex128)])
def test_types_that_arguments_come_to(argument, dtype):
    assert orv.exp(argument).dtype == dtype
    assert orv.exp(argument, dtype=np.complex128).dtype == np.complex128
    with pytest.raises(TypeError):
        orv.exp(np.longdouble(1))


def test_functions_are_pickled_by_name():
    for function in (orv.exp, orv.ep.exp, orv.ha.power):
        assert pickle.loads(pickle.dumps(function)) is function


# ---- Levels -------------------------------------------------------------------------------------


def test_level_holds_for_a_block_and_a_thread():
    x = numbers(POSITIVE, float)
    by_level = {name: module.log(x) for name, (module, *_) in LEVELS.items()}
    assert len({by_level[name].tobytes() for name in by_level}) == 3
    assert orv.get_level() == "ha" and np.array_equal(orv.log(x), by_level["ha"])
    with orv.level("ep"):
        with orv.level("la"):
            assert np.array_equal(orv.log(x), by_level["la"])
            with concurrent.futures.ThreadPoolExecutor(1) as pool:
                assert np.array_equal(pool.submit(orv.log, x).result(), by_level["ha"])
            assert np.array_equal(orv.ep.log(x), by_level["ep"])
        assert np.array_equal(orv.log(x), by_level["ep"])
    assert orv.get_level() == "ha"
    decorated = orv.level("la")(lambda: (orv.get_level(), orv.log(x)))
    assert decorated()[0] == "la" and np.array_equal(decorated()[1], by_level["la"])
    with pytest.raises(ValueError, match="level: 'max'; allowed are 'la', 'ha', 'ep'"):
        orv.level("max")


def test_denormals_are_flushed_for_a_block():
    tiny = np.array([5e-324, 1e-310])
    with np.errstate(all="ignore"):
        with orv.denormals("flushed"):
            assert np.array_equal(orv.add(tiny, 0), [0, 0])
        assert np.array_equal(orv.add(tiny, 0), tiny)


def test_environment_sets_the_first_level():
    code = "import orv, numpy; print(orv.get_level(), orv.log(3.0) == orv.ep.log(3.0))"
    environment = dict(os.environ, ORV_QEM_MODE="QEM_EP")
    run = subprocess.run([sys.executable, "-c", code], env=environment, capture_output=True, text=True,
                         check=True)
    assert run.stdout.split() == ["ep", "True"]


# ---- Errors -------------------------------------------------------------------------------------

FAULTS = [  # function, arguments, category of np.errstate, code
    ("log", (-1.0,), "invalid", 1), ("log", (0.0,), "divide", 2), ("exp", (1e4,), "over", 3),
    ("exp", (-1e4,), "under", 4), ("divide", (1.0, 0.0), "divide", 2), ("arccos", (2.0,), "invalid", 1),
    ("sin", (np.inf,), "invalid", 1), ("cosh", (1e4,), "over", 3), ("cosh", (1e4 + 1j,), "over", 3),
    ("power", (10.0, 400.0), "over", 3), ("power", (1e-300, 2.0), "under", 4),
    ("power", (0.0, -1.0), "divide", 1),
    ("hypot", (1e308, 1.7e308), "over", 3), ("divide", (1e308, 1e-10), "over", 3),
    ("powx", (10.0, 400.0), "over", 3),
    ("divide", (0.0, 0.0), "invalid", 2), ("divide", (np.inf, np.inf), "invalid", 1),
    ("reciprocal", (1e-310,), "over", 3), ("pow3o2", (1e300,), "over", 3),
    ("power", (-8.0, 0.5), "invalid", 1), ("sqrt", (-1.0,), "invalid", 1), ("cdfnorm", (-99.0,), "under", 4),
]


@pytest.mark.parametrize("name, arguments, category, code", FAULTS)
def test_errors_reach_errstate(name, arguments, category, code):
    function = getattr(orv, name)
    vectors = [np.full(101, a) for a in arguments]
    strided = [np.full(202, a)[::2] for a in arguments]
    for operands in (arguments, vectors, strided):
        with np.errstate(all="ignore", **{category: "raise"}):
            with pytest.raises(FloatingPointError, match=f"encountered in {name}"):
                function(*operands)
        with np.errstate(all="raise", **{category: "ignore"}), orv.reports() as r:
            function(*operands)
        n = np.size(operands[0])
        assert r.indices == list(range(n)) and r.codes == [code] * n
        assert r[0].arguments == arguments and r[0].function == name


def test_errors_of_results_that_take_their_arguments_place():
    for together in (1, 100, 5000):
        x, y = np.full(together, 1e200), np.full(2 * together, 2.0)[::2]
        with np.errstate(all="ignore"), orv.reports() as r:
            orv.power(x, 2.0, out=x), orv.divide(1e300, orv.multiply(y, 1e-10, out=y), out=y)
        assert r.codes == [3] * 2 * together and np.isinf(x).all() and np.isinf(y).all()
        assert r[0].arguments[1] == 2.0 and r.indices == [*range(together)] * 2


def test_ordinary_arguments_raise_nothing():
    """Also where a kernel's own instructions meet infinities and lose bits."""
    with np.errstate(all="raise"), orv.reports() as r:
        for name, (_, span) in (REAL | TWO).items():
            for dtype in (np.float32, np.float64):
                for module in (orv.la, orv.ha, orv.ep):
                    getattr(module, name)(*[numbers(span, dtype)] * (2 if name in TWO else 1))
        orv.exp(np.array([np.inf, -np.inf, np.nan])), orv.log(np.array([np.inf, np.nan]))
        orv.divide([0.0, np.inf, np.nan, 1.0, -2.0], [3.0, 2.0, 1.0, np.inf, np.nan])
        orv.power([0.0, np.inf, 0.5, np.nan, 1.0], [2.0, 3.0, np.inf, 1.0, np.inf])
        orv.hypot([0.0, np.inf], [0.0, np.nan]), orv.reciprocal([np.inf, -np.inf])
    assert len(r) == 0


def test_arithmetic_raises_what_numpy_does():
    for name, arguments, category in [("add", (1e308, 1e308), "over"), ("multiply", (1e-200,) * 2, "under"),
                                      ("subtract", (np.inf, np.inf), "invalid"),
                                      ("square", (1e200,), "over")]:
        with np.errstate(all="ignore", **{category: "raise"}):
            for module in (np, orv):
                with pytest.raises(FloatingPointError):
                    getattr(module, name)(*[np.full(100, a) for a in arguments])


@pytest.mark.filterwarnings("ignore::RuntimeWarning")
def test_reports_tell_elements_of_any_layout():
    base = numbers(POSITIVE, float, 2400)
    views = [base, base[::-3], base.reshape(40, 60).T, base.reshape(40, 60)[::-2, 1::7],
             np.asfortranarray(base.reshape(4, 30, 20)).transpose(1, 0, 2)]
    for view in views:
        x = view.copy(order="K")
        for out in (None, np.empty_like(x), np.empty(x.shape[::-1]).T):
            bad = sorted(RNG.choice(x.size, 5, replace=False))
            x.flat[:] = 1
            x.flat[bad] = -2
            with orv.reports() as r:
                orv.log(x, out=out)
            assert sorted(r.indices) == bad
            assert {report[1:2] + report[3:4] for report in r} == {(1, (-2.0,))}
    # buffers between operands of different orders and types
    a, b = np.ones((40, 60)), np.ones((40, 60), np.float32, order="F")[::-1]
    b[3, 7] = b[30, 50] = 0
    with orv.reports() as r:
        orv.divide(a, b)
    assert sorted(r.indices) == [3 * 60 + 7, 30 * 60 + 50]
    with orv.reports() as r:
        orv.log(base - 100, where=np.arange(2400) % 2 == 1)
        orv.divide([1.0, 2.0, 3.0], np.float32([1, 0, 2]))
    assert r.indices == [*range(1, 2400, 2), 1] and r[-1].arguments == (2.0, 0.0)


@pytest.mark.filterwarnings("ignore::RuntimeWarning")
def test_reports_nest_are_bounded_and_know_their_thread():
    with orv.reports() as outer:
        orv.log(-1.0)
        with orv.reports(limit=3) as inner:
            orv.log(np.full(10, -1.0))
            with concurrent.futures.ThreadPoolExecutor(1) as pool:
                pool.submit(orv.log, -1.0).result()
        orv.sqrt(-4.0)
    assert [r.function for r in outer] == ["log", "sqrt"]
    assert (len(inner), inner.total) == (3, 10) and "log[0]: domain, (-1.0,) -> nan" in repr(inner)
    with orv.reports() as r:
        orv.multiply.reduce(np.array([1.0, 2.0])), orv.divide.accumulate([1.0, 0.0])
        orv.log(np.array([1.0, 0.0, 1.0]), out=np.zeros(3, np.float32), casting="unsafe")
    assert r.indices == [None, 1] and r.codes == [2, 2]


def test_warning_as_numpy_gives_it():
    with warnings.catch_warnings(record=True) as caught:
        warnings.simplefilter("always")
        orv.log(0.0)
    assert [str(w.message) for w in caught] == ["divide by zero encountered in log"]


# ---- The package --------------------------------------------------------------------------------


def test_made_files_are_current():
    subprocess.run([sys.executable, ROOT / "tools" / "make_python_functions.py", "--check"], check=True)


def test_documentation_tells_errors():
    text = orv.arctan2.__doc__
    assert text.startswith("arctan2(x1, x2, /, out=None") and "Largest error measured" in text
    figures = dict(line.split()[0:1] + [line.split()[1:]] for line in text.splitlines()
                   if line.startswith("float"))
    assert figures["float32"] == ["0.55", "2.14", "298"]  # as docs/accuracy.md has them


def test_threads_compute_beside_each_other():
    """The lock of Python is free while kernels run: threads that depend on each other get on."""
    x = numbers(POSITIVE, float, 200_000)
    expected = orv.power(x, x)
    with concurrent.futures.ThreadPoolExecutor(4) as pool:
        for got in pool.map(lambda _: orv.power(x, x), range(16)):
            assert np.array_equal(got, expected)
