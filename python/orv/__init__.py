# SPDX-License-Identifier: MIT
"""Vector math for NumPy arrays, random streams and summary statistics.

The functions here are NumPy universal functions: ``orv.exp(x, out=y, where=mask)``. They come at three
levels, ``orv.ha`` (high accuracy, below 1 ulp), ``orv.la`` (below 4 ulp) and ``orv.ep`` (about half the
digits); without a prefix a function has the level that ``orv.level`` sets, which is "ha" at first.

What leaves a function's domain or range reaches ``np.errstate``, and ``orv.reports`` tells which elements
that were. ``orv.random`` has streams and distributions, ``orv.stats`` moments, covariance and quantiles.
"""
import contextlib
import importlib
import typing

from . import _core

__version__ = _core.version

_FUNCTIONS = _core.ufuncs(None)
globals().update(_FUNCTIONS)
_MODULES = ("ep", "ha", "la", "random", "stats")
_OPTIONAL = ("distributed",)  # needs Dask
__all__ = [*_FUNCTIONS, *_MODULES, "Report", "denormals", "get_level", "level", "reports",
           "set_num_threads"]

_ACCURACY = {"la": 0x1, "ha": 0x2, "ep": 0x3}
_ACCURACY_MASK = 0xF
_DENORMALS = {"kept": 0x140000, "flushed": 0x280000}
_DENORMALS_MASK = 0x3C0000
_MEANINGS = {1: "domain", 2: "singularity", 3: "overflow", 4: "underflow"}


def __getattr__(name):
    if name in _MODULES + _OPTIONAL:
        return importlib.import_module(f"orv.{name}")
    raise AttributeError(f"module 'orv' has no attribute {name!r}")


def __dir__():
    return sorted(set(globals()) | set(__all__))


class _ModeField(contextlib.ContextDecorator):
    """Sets a field of the thread's mode word for a block."""

    _what, _values, _mask, _default = "", {}, 0, 0

    def __init__(self, value):
        if value not in self._values:
            allowed = ", ".join(map(repr, self._values))
            raise ValueError(f"{self._what}: {value!r}; allowed are {allowed}")
        self._value = self._values[value]
        self._before = []

    def __enter__(self):
        self._before.append(_core.set_mode(self._value) & self._mask or self._default)
        return self

    def __exit__(self, *exception):
        _core.set_mode(self._before.pop())


class level(_ModeField):
    """``with orv.level("ep"):`` gives the functions without a prefix another level: "ha" (high
    accuracy), "la" (low accuracy) or "ep" (enhanced performance). Each thread has a level of its own;
    the environment's ORV_QEM_MODE tells that of new ones. Serves as a decorator, too."""

    _what, _values, _mask, _default = "level", _ACCURACY, _ACCURACY_MASK, _ACCURACY["ha"]


class denormals(_ModeField):
    """``with orv.denormals("flushed"):`` lets functions take denormal numbers as zeros, in arguments
    and results; "kept" is how threads begin."""

    _what, _values, _mask = "denormals", _DENORMALS, _DENORMALS_MASK
    _default = _DENORMALS["kept"]


def get_level():
    """The level of this thread: "la", "ha" or "ep"."""
    bits = _core.set_mode(0) & _ACCURACY_MASK
    return next((name for name, value in _ACCURACY.items() if value == bits), "ha")


class Report(typing.NamedTuple):
    """An element that left a function's domain or range.

    `index` counts the result's elements in C order. It is None where that can't be told: within
    ``reduce`` and its like, where the result was converted to another type, and after an exception."""

    function: str
    code: int
    index: typing.Optional[int]
    arguments: tuple
    result: typing.Union[float, complex]

    @property
    def meaning(self):
        return _MEANINGS[self.code]


class reports:
    """Collects what functions report in a block, in this thread:

        with orv.reports() as r:
            orv.log(x)
        r.indices, r.codes

    A sequence of Report. At most `limit` are kept; `total` tells how many there were. What np.errstate
    does is not changed; inner blocks take their own reports away from outer ones."""

    def __init__(self, limit=1_000_000):
        if not isinstance(limit, int) or limit < 0:
            raise ValueError(f"limit: {limit!r}; allowed are whole numbers from 0 on")
        self._limit = limit
        self._rows, self._reports = [], []
        self._before = None
        self.total = 0

    def __enter__(self):
        if self._before is not None:
            raise RuntimeError("orv.reports: this block is open already; make another one")
        self._before = _core.push_reports(self._rows, self._limit - len(self))
        return self

    def __exit__(self, *exception):
        self.total += _core.pop_reports(self._before)
        self._before = None

    def _all(self):
        self._reports += [Report(*row) for row in self._rows[len(self._reports):]]
        return self._reports

    def __len__(self):
        return len(self._rows)

    def __getitem__(self, index):
        return self._all()[index]

    def __iter__(self):
        return iter(self._all())

    @property
    def indices(self):
        return [r.index for r in self._all()]

    @property
    def codes(self):
        return [r.code for r in self._all()]

    def __repr__(self):
        shown = "".join(f"\n  {r.function}[{r.index}]: {r.meaning}, {r.arguments} -> {r.result}"
                        for r in self._all()[:10])
        more = f"\n  and {len(self) - 10} more" if len(self) > 10 else ""
        return f"<orv.reports: {len(self)}>{shown}{more}"


def set_num_threads(count):
    """Sets how many threads orv.stats uses in this process; None: ORV_NUM_THREADS, or else the number
    of processors. Results don't depend on it."""
    if count is not None and (not isinstance(count, int) or count < 1):
        raise ValueError(f"count: {count!r}; allowed are whole numbers from 1 on, and None")
    _core.set_num_threads(count or 0)
