"""Made by tools/make_python_functions.py; do not edit: the first part stands in
python/src/package.pyi.in."""
from collections.abc import Iterator, Sequence
from contextlib import ContextDecorator
from typing import Any, Literal, NamedTuple

from numpy import ufunc

from . import ep as ep, ha as ha, la as la, random as random, stats as stats

__version__: str

class level(ContextDecorator):
    def __init__(self, value: Literal["la", "ha", "ep"]) -> None: ...
    def __enter__(self) -> level: ...
    def __exit__(self, *exception: Any) -> None: ...

class denormals(ContextDecorator):
    def __init__(self, value: Literal["kept", "flushed"]) -> None: ...
    def __enter__(self) -> denormals: ...
    def __exit__(self, *exception: Any) -> None: ...

class Report(NamedTuple):
    function: str
    code: int
    index: int | None
    arguments: tuple[float, ...] | tuple[complex, ...]
    result: float | complex
    @property
    def meaning(self) -> str: ...

class reports(Sequence[Report]):
    total: int
    def __init__(self, limit: int = ...) -> None: ...
    def __enter__(self) -> reports: ...
    def __exit__(self, *exception: Any) -> None: ...
    def __len__(self) -> int: ...
    def __getitem__(self, index: Any) -> Any: ...
    def __iter__(self) -> Iterator[Report]: ...
    @property
    def indices(self) -> list[int | None]: ...
    @property
    def codes(self) -> list[int]: ...

def get_level() -> Literal["la", "ha", "ep"]: ...
def set_num_threads(count: int | None) -> None: ...

absolute: ufunc
add: ufunc
angle: ufunc
arccos: ufunc
arccosh: ufunc
arcsin: ufunc
arcsinh: ufunc
arctan: ufunc
arctan2: ufunc
arctanh: ufunc
cbrt: ufunc
cdfnorm: ufunc
cdfnorminv: ufunc
ceil: ufunc
cis: ufunc
conjugate: ufunc
cos: ufunc
cosh: ufunc
divide: ufunc
erf: ufunc
erfc: ufunc
erfcinv: ufunc
erfinv: ufunc
exp: ufunc
expm1: ufunc
floor: ufunc
hypot: ufunc
invcbrt: ufunc
invsqrt: ufunc
linearfrac: ufunc
log: ufunc
log10: ufunc
log1p: ufunc
modf: ufunc
multiply: ufunc
multiply_by_conjugate: ufunc
nearbyint: ufunc
pow2o3: ufunc
pow3o2: ufunc
power: ufunc
powx: ufunc
reciprocal: ufunc
rint: ufunc
round_half_away: ufunc
sin: ufunc
sincos: ufunc
sinh: ufunc
sqrt: ufunc
square: ufunc
subtract: ufunc
tan: ufunc
tanh: ufunc
trunc: ufunc
