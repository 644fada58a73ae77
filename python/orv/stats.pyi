from typing import Any, Literal, NamedTuple, Self

import numpy as np
from numpy.typing import ArrayLike, NDArray

class Accumulator:
    def __init__(self, covariance: bool = ...) -> None: ...
    def add(self, x: Any, weights: ArrayLike | None = ..., nan_policy: _Policy = ...) -> Self: ...
    def merge(self, other: Accumulator) -> Self: ...
    def __add__(self, other: Accumulator) -> Accumulator: ...
    @property
    def n(self) -> int: ...
    @property
    def mean(self) -> NDArray[np.float64]: ...
    @property
    def minimum(self) -> NDArray[np.float64]: ...
    @property
    def maximum(self) -> NDArray[np.float64]: ...
    @property
    def variance(self) -> NDArray[np.float64]: ...
    @property
    def sd(self) -> NDArray[np.float64]: ...
    @property
    def skewness(self) -> NDArray[np.float64]: ...
    @property
    def kurtosis(self) -> NDArray[np.float64]: ...
    @property
    def cov(self) -> NDArray[np.float64]: ...
    @property
    def corrcoef(self) -> NDArray[np.float64]: ...
    def describe(self) -> Description: ...

class Description(NamedTuple):
    n: int
    names: list[str] | None
    mean: NDArray[Any]
    variance: NDArray[Any]
    sd: NDArray[Any]
    skewness: NDArray[Any]
    kurtosis: NDArray[Any]
    minimum: NDArray[Any]
    maximum: NDArray[Any]
    orders: NDArray[Any]
    quantiles: NDArray[Any]
    def to_frame(self) -> Any: ...

class Pooled(NamedTuple):
    labels: NDArray[Any]
    counts: NDArray[Any]
    mean: NDArray[Any]
    cov: NDArray[Any]
    group_means: NDArray[Any]
    group_covs: NDArray[Any]

class RobustCovariance(NamedTuple):
    names: list[str] | None
    mean: NDArray[Any]
    cov: NDArray[Any]
    distances: NDArray[Any]

class Outliers(NamedTuple):
    flags: NDArray[Any]
    indices: NDArray[Any]

def describe(x: Any, weights: ArrayLike | None = ..., quantiles: ArrayLike = ...,
             nan_policy: _Policy = ...) -> Description: ...

def cov(x: Any, weights: ArrayLike | None = ..., nan_policy: _Policy = ...) -> Any: ...

def corrcoef(x: Any, weights: ArrayLike | None = ..., nan_policy: _Policy = ...) -> Any: ...

def quantile(x: Any, q: ArrayLike, weights: ArrayLike | None = ...,
             nan_policy: _Policy = ...) -> Any: ...

def pooled(x: Any, groups: ArrayLike, weights: ArrayLike | None = ...,
           nan_policy: _Policy = ...) -> Pooled: ...

def partial_cov(x: Any, given: Any, weights: ArrayLike | None = ...,
                nan_policy: _Policy = ...) -> Any: ...

def robust_cov(x: Any, breakdown: float = ..., rejection: float = ..., max_iterations: int = ...,
               nan_policy: _Policy = ...) -> RobustCovariance: ...

def outliers(x: Any, alpha: float = ..., centre: str = ..., accuracy: float = ...) -> Outliers: ...
