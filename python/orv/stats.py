# SPDX-License-Identifier: MIT
"""Summary statistics of arrays whose rows are observations and whose columns are variables.

    d = orv.stats.describe(x)
    d.mean, d.sd, d.skewness

Doubles and floats are taken as they lie in memory, by rows or by columns, without a copy; other numbers
are converted to doubles. A pandas frame gives its columns' names to the results. All functions take
`nan_policy`: "propagate" (a variable with a NaN has NaN), "omit" (rows with one are left out) or "raise".

An Accumulator takes data in blocks and merges with others.
"""
import typing

import numpy as np

from . import _core

__all__ = ["Accumulator", "Description", "Imputations", "Outliers", "Pooled", "RobustCovariance",
           "Sketch", "corrcoef", "cov", "describe", "impute", "outliers", "partial_cov", "pooled",
           "quantile", "robust_cov"]

_MATRIX_FULL = np.zeros(1, np.int64)
_BLOCK = 1 << 16  # elements that are moved nearer to 0 at a time
_SINGULAR = (_core.SS_NO_POSITIVE_EIGENVALUE, _core.SS_EIGENVALUES_FAILED,
             _core.SS_NOT_POSITIVE_DEFINITE, _core.SS_SINGULAR)
_DEPENDENT = ("x: variables depend on each other in the observations that are no outliers; allowed are "
              "independent ones")
_POLICIES = ("propagate", "omit", "raise")


# ---- Data ---------------------------------------------------------------------------------------


def _fail(name, value, allowed):
    raise ValueError(f"{name}: {value}; allowed are {allowed}")


class _Table:
    """Observations in rows, ready for the library."""

    def __init__(self, x, weights=None, nan_policy="propagate"):
        if nan_policy not in _POLICIES:
            _fail("nan_policy", repr(nan_policy), ", ".join(map(repr, _POLICIES)))
        self.frame = hasattr(x, "columns") and hasattr(x, "to_numpy")
        self.names = [str(name) for name in x.columns] if self.frame else None
        self.labels = x.columns if self.frame else None
        values = x.to_numpy() if hasattr(x, "to_numpy") else np.asarray(x)
        self.is_vector = values.ndim == 1
        if self.is_vector:
            values = values.reshape(-1, 1)
        if values.ndim != 2:
            _fail("x", f"an array of {values.ndim} dimensions", "vectors and tables")
        values = _numbers("x", values)
        weights = None if weights is None else _weights(weights, len(values), values.dtype)
        if nan_policy != "propagate":
            bad = np.isnan(values).any(axis=1)
            if nan_policy == "raise" and bad.any():
                _fail("x", f"NaN in row {bad.argmax()}", "numbers, or nan_policy='omit'")
            if bad.any():
                values = values[~bad]
                weights = None if weights is None else weights[~bad]
        self.n, self.p = values.shape
        if self.n == 0 or self.p == 0:
            _fail("x", f"an array of shape {values.shape}", "at least one observation of one variable")
        if not (values.flags.c_contiguous or values.flags.f_contiguous):
            values = np.ascontiguousarray(values)
        self.values, self.weights = values, weights
        layout = _core.SS_ROWS if values.flags.f_contiguous else _core.SS_COLUMNS
        self.shape = np.array([self.p, self.n, layout], np.int64)

    def compute(self, entry, estimates, method, parameters, stream=None):
        status = _core.compute(entry, estimates, method, self.values, self.shape, self.weights,
                               parameters, stream)
        _check(status, entry)

    def results(self, *shape):
        return np.zeros(shape, self.values.dtype)

    def has_nan(self, suspects):
        """Which of some variables have a NaN."""
        found = np.zeros(self.p, bool)
        for j in np.flatnonzero(suspects):
            found[j] = np.isnan(self.values[:, j]).any()
        return found


def _check(status, entry):
    if status == _core.SS_NO_MEMORY:
        raise MemoryError(entry)
    if status in _SINGULAR:
        raise ValueError(_DEPENDENT)
    if status == _core.SS_NOT_CONVERGED:
        raise ValueError("x: too few observations agree with each other")
    if status != _core.SS_OK:
        raise ArithmeticError(f"{entry}: the library answered {status}, see orv/ss.h")


def _numbers(name, values):
    """Native doubles or floats."""
    if values.dtype in (np.float64, np.float32) and values.dtype.isnative:
        return values
    if values.dtype.kind == "f" and values.dtype.itemsize <= 8:
        return values.astype(values.dtype.newbyteorder("=") if values.dtype.itemsize > 2 else np.float32)
    if values.dtype.kind not in "biufO":
        raise TypeError(f"{name}: numbers of type {values.dtype}; allowed are real numbers")
    try:
        return values.astype(np.float64)
    except (TypeError, ValueError) as error:
        raise TypeError(f"{name}: {error}; allowed are real numbers") from None


def _weights(weights, n, dtype):
    weights = np.asarray(weights)
    if weights.shape != (n,):
        _fail("weights", f"an array of shape {weights.shape}", f"the shape ({n},), one for each row")
    weights = np.ascontiguousarray(_numbers("weights", weights), dtype)
    if not (np.isfinite(weights).all() and (weights >= 0).all() and weights.any()):
        _fail("weights", "one is negative or not finite, or all are 0", "finite numbers from 0 on")
    return weights


# ---- Moments ------------------------------------------------------------------------------------


class _Sums:
    """Count, weights, means, sums of powers about them, scatter matrix, extremes; in doubles."""

    def __init__(self, p, scatter):
        self.n = 0
        self.weight = self.weight2 = 0.0
        self.mean, self.m2, self.m3, self.m4 = np.zeros((4, p))
        self.scatter = np.zeros((p, p)) if scatter else None
        self.minimum, self.maximum = np.full(p, np.inf), np.full(p, -np.inf)

    @property
    def divisor(self):
        """Of unbiased variances: n - 1 without weights."""
        return self.weight - self.weight2 / self.weight if self.weight > 0 else 0.0

    def merge(self, other):
        """Takes over what another has seen (Chan, Golub and LeVeque 1979; Pebay 2008)."""
        if other.n == 0:
            return
        a, b = self.weight, other.weight
        w = a + b
        d = other.mean - self.mean
        if self.scatter is not None:
            self.scatter = self.scatter + other.scatter + a * b / w * np.outer(d, d)
        with np.errstate(invalid="ignore"):
            self.m4 = (self.m4 + other.m4 + d**4 * (a * b * (a * a - a * b + b * b) / w**3)
                       + 6 * d**2 * (a * a * other.m2 + b * b * self.m2) / w**2
                       + 4 * d * (a * other.m3 - b * self.m3) / w)
            self.m3 = (self.m3 + other.m3 + d**3 * (a * b * (a - b) / w**2)
                       + 3 * d * (a * other.m2 - b * self.m2) / w)
            self.m2 = self.m2 + other.m2 + d**2 * (a * b / w)
            self.mean = self.mean + d * (b / w)
        self.n += other.n
        self.weight, self.weight2 = w, self.weight2 + other.weight2
        self.minimum = np.minimum(self.minimum, other.minimum)
        self.maximum = np.maximum(self.maximum, other.maximum)


def _raw(table, parameters, moments, scatter):
    """Runs the library over a table; results go on from what `parameters` has."""
    estimates = _core.SS_EST_MEAN
    if moments:
        estimates |= _core.SS_EST_RAW2 | _core.SS_EST_RAW3 | _core.SS_EST_RAW4
    if scatter:
        estimates |= _core.SS_EST_COV
    table.compute("Basic", estimates, _core.SS_METHOD_ONE_PASS, parameters)


def _places(table, moments, scatter):
    parameters = {_core.SS_PARAM_MEAN: table.results(table.p),
                  _core.SS_PARAM_ACCUMULATED_WEIGHTS: table.results(2)}
    if moments:
        parameters |= {key: table.results(table.p) for key in (
            _core.SS_PARAM_RAW_MOMENT_2, _core.SS_PARAM_RAW_MOMENT_3, _core.SS_PARAM_RAW_MOMENT_4)}
    if scatter:
        parameters |= {_core.SS_PARAM_COV: table.results(table.p, table.p),
                       _core.SS_PARAM_COV_STORAGE: _MATRIX_FULL}
    return parameters


def _take(sums, parameters):
    """Sums about the mean, of raw moments."""
    sums.weight, sums.weight2 = map(float, parameters[_core.SS_PARAM_ACCUMULATED_WEIGHTS])
    w = sums.weight
    sums.mean = m = parameters[_core.SS_PARAM_MEAN].astype(np.float64)
    if _core.SS_PARAM_RAW_MOMENT_2 in parameters:
        r2, r3, r4 = (parameters[key].astype(np.float64) for key in (
            _core.SS_PARAM_RAW_MOMENT_2, _core.SS_PARAM_RAW_MOMENT_3, _core.SS_PARAM_RAW_MOMENT_4))
        with np.errstate(invalid="ignore", over="ignore"):
            sums.m2 = w * np.maximum(r2 - m * m, 0)
            sums.m3 = w * (r3 - 3 * r2 * m + 2 * m**3)
            sums.m4 = w * np.maximum(r4 - 4 * r3 * m + 6 * r2 * m * m - 3 * m**4, 0)
    if sums.scatter is not None:
        scatter = parameters[_core.SS_PARAM_COV].astype(np.float64) * sums.divisor
        sums.scatter = scatter if sums.divisor > 0 else np.zeros_like(scatter)


def _sums_of(table, moments=True, scatter=False):
    """Where means are large beside deviations raw moments have lost digits: then blocks are moved to
    the mean, in doubles, and added up."""
    sums = _Sums(table.p, scatter)
    parameters = _places(table, moments, scatter)
    _raw(table, parameters, moments, scatter)
    _take(sums, parameters)
    sums.n = table.n
    if table.weights is None:
        sums.weight = sums.weight2 = float(table.n)
    centre = sums.mean.copy()
    single = table.values.dtype == np.float32
    far = centre**2 * sums.weight > (1 if single else 100) * sums.m2
    if not moments or not np.any(far & np.isfinite(centre)):
        return sums
    first = table.values[0].astype(np.float64)  # of a variable that doesn't vary exactly
    centre = np.where(np.abs(first - centre) <= 1e-5 * np.abs(centre), first, centre)
    block = max(1, _BLOCK // table.p)
    parameters = None
    for i in range(0, table.n, block):
        moved = table.values[i:i + block] - centre
        weights = table.weights
        part = _Table(moved, None if weights is None else np.ascontiguousarray(weights[i:i + block]))
        parameters = parameters or _places(part, True, False)
        _raw(part, parameters, True, False)
    moved_sums = _Sums(table.p, False)
    _take(moved_sums, parameters)
    sums.mean = np.where(np.isfinite(centre), centre + moved_sums.mean, sums.mean)
    sums.m2, sums.m3, sums.m4 = moved_sums.m2, moved_sums.m3, moved_sums.m4
    return sums


def _extremes(table, sums):
    low, high = table.results(table.p) + np.inf, table.results(table.p) - np.inf
    table.compute("Minmax", _core.SS_EST_MIN | _core.SS_EST_MAX, _core.SS_METHOD_FAST,
                  {_core.SS_PARAM_MINIMUM: low, _core.SS_PARAM_MAXIMUM: high})
    nan = table.has_nan(np.isnan(sums.mean))
    sums.minimum = np.where(nan, np.nan, low.astype(np.float64))
    sums.maximum = np.where(nan, np.nan, high.astype(np.float64))


def _moments_of(sums):
    """Variance, skewness, kurtosis."""
    w, divisor = sums.weight, sums.divisor
    with np.errstate(invalid="ignore", divide="ignore"):
        variance = sums.m2 / divisor if divisor > 0 else np.full_like(sums.m2, np.nan)
        skewness = sums.m3 / w / variance**1.5
        kurtosis = sums.m4 / w / variance**2 - 3
    return variance, skewness, kurtosis


class Accumulator:
    """Moments, extremes and, if wanted, covariance of data that come in blocks.

        total = orv.stats.Accumulator(covariance=True)
        for block in blocks:
            total.add(block)

    Accumulators of parts are merged by `a.merge(b)` or `a + b`, also after they have been pickled, as
    between processes. Blocks may be weighted; memory doesn't grow with their number."""

    def __init__(self, covariance=False):
        self._covariance = bool(covariance)
        self._names = None
        self._sums = None

    def add(self, x, weights=None, nan_policy="propagate"):
        """Takes a block of observations. Returns the accumulator."""
        table = _Table(x, weights, nan_policy)
        self._expect(table.p)
        part = _sums_of(table, True, self._covariance)
        _extremes(table, part)
        self._take(part, table.names)
        return self

    def merge(self, other):
        """Takes over what another accumulator has seen. Returns the accumulator."""
        if not isinstance(other, Accumulator):
            raise TypeError(f"other: {type(other).__name__}; allowed is an Accumulator")
        if other._covariance != self._covariance:
            _fail("other", f"covariance={other._covariance}", f"covariance={self._covariance}")
        if other._sums is not None:
            self._expect(len(other._sums.mean))
            self._take(other._sums, other._names)
        return self

    def __add__(self, other):
        made = Accumulator(self._covariance)
        return made.merge(self).merge(other)

    def _expect(self, p):
        if self._sums is not None and len(self._sums.mean) != p:
            _fail("x", f"{p} variables", f"{len(self._sums.mean)}, as before")

    def _take(self, part, names):
        if self._sums is None:
            self._sums = _Sums(len(part.mean), self._covariance)
            self._names = names
        self._sums.merge(part)

    def _seen(self):
        if self._sums is None:
            raise ValueError("this accumulator has seen no observation")
        return self._sums

    @property
    def n(self):
        """How many observations there were."""
        return 0 if self._sums is None else self._sums.n

    @property
    def mean(self):
        return self._seen().mean.copy()

    @property
    def minimum(self):
        return self._seen().minimum.copy()

    @property
    def maximum(self):
        return self._seen().maximum.copy()

    @property
    def variance(self):
        return _moments_of(self._seen())[0]

    @property
    def sd(self):
        return np.sqrt(self.variance)

    @property
    def skewness(self):
        return _moments_of(self._seen())[1]

    @property
    def kurtosis(self):
        return _moments_of(self._seen())[2]

    @property
    def cov(self):
        sums = self._seen()
        if sums.scatter is None:
            raise ValueError("cov: this accumulator was made without covariance=True")
        return _covariance(sums)

    @property
    def corrcoef(self):
        return _correlation(self.cov)

    def describe(self):
        """All but the matrices as a Description, without quantiles."""
        return _description(self._seen(), self._names)

    def __repr__(self):
        p = "no" if self._sums is None else len(self._sums.mean)
        return f"<orv.stats.Accumulator of {self.n} observations, {p} variables>"


def _covariance(sums):
    if sums.divisor <= 0:
        return np.full_like(sums.scatter, np.nan)
    return sums.scatter / sums.divisor


def _correlation(covariance):
    deviation = np.sqrt(np.diag(covariance))
    with np.errstate(invalid="ignore", divide="ignore"):
        made = covariance / deviation / deviation[:, None]
    return np.clip(made, -1, 1, out=made)


# ---- Records ------------------------------------------------------------------------------------


def _table_text(head, columns, rows):
    """Columns of numbers under their names."""
    cells = [["", *columns]] + [[name, *(f"{value:.6g}" for value in row)] for name, row in rows]
    widths = [max(len(row[k]) for row in cells) for k in range(len(cells[0]))]
    lines = [row[0].ljust(widths[0]) + "".join("  " + cell.rjust(width) for cell, width in
                                               zip(row[1:], widths[1:])) for row in cells]
    return "\n".join([head, *(line.rstrip() for line in lines)])


class Description(typing.NamedTuple):
    """What describe tells, an element a variable; `quantiles` has a row for each of `orders`.

    The variance is unbiased. Skewness is c3 / c2^(3/2), kurtosis c4 / c2^2 - 3, c3 and c4 being means of
    powers about the mean and c2 the variance."""

    n: int
    names: typing.Optional[list]
    mean: np.ndarray
    variance: np.ndarray
    sd: np.ndarray
    skewness: np.ndarray
    kurtosis: np.ndarray
    minimum: np.ndarray
    maximum: np.ndarray
    orders: np.ndarray
    quantiles: np.ndarray

    def to_frame(self):
        """The same as a pandas frame, a column a variable."""
        import pandas

        return pandas.DataFrame(dict(self._rows()), index=self._columns()).T

    def _columns(self):
        return self.names or [str(j) for j in range(len(self.mean))]

    def _rows(self):
        rows = [(name, getattr(self, name)) for name in ("mean", "sd", "skewness", "kurtosis", "minimum")]
        rows += [(f"{100 * order:g}%", row) for order, row in zip(self.orders, self.quantiles)]
        return rows + [("maximum", self.maximum)]

    def __repr__(self):
        return _table_text(f"{self.n} observations", self._columns(), self._rows())


class Pooled(typing.NamedTuple):
    """Means and covariances of groups, in the order of `labels`, and the pooled ones."""

    labels: np.ndarray
    counts: np.ndarray
    mean: np.ndarray
    cov: np.ndarray
    group_means: np.ndarray
    group_covs: np.ndarray

    def __repr__(self):
        columns = [str(j) for j in range(len(self.mean))]
        rows = [(f"{label} ({count})", mean) for label, count, mean in
                zip(self.labels, self.counts, self.group_means)]
        return _table_text(f"means of {len(self.labels)} groups", columns, [*rows, ("pooled", self.mean)])


class RobustCovariance(typing.NamedTuple):
    """Mean and covariance that outliers don't carry away, and each row's distance from that mean in
    their measure. Squares of clean normal data's distances follow the chi-square law of p."""

    names: typing.Optional[list]
    mean: np.ndarray
    cov: np.ndarray
    distances: np.ndarray

    def __repr__(self):
        columns = self.names or [str(j) for j in range(len(self.mean))]
        rows = [("mean", self.mean), *(zip(columns, self.cov))]
        return _table_text(f"robust mean and covariance, distances up to {self.distances.max():.6g}",
                           columns, rows)


class Outliers(typing.NamedTuple):
    """Which rows are outliers: as flags, and their numbers."""

    flags: np.ndarray
    indices: np.ndarray

    def __repr__(self):
        shown = ", ".join(map(str, self.indices[:20])) + (", ..." if len(self.indices) > 20 else "")
        return f"{len(self.indices)} outliers among {len(self.flags)} observations: {shown or 'none'}"


class Imputations(typing.NamedTuple):
    """Completed copies of data with missing values: `tables` of the shape (m, n, p), `missing` telling which
    values were drawn."""

    names: typing.Optional[list]
    tables: np.ndarray
    missing: np.ndarray

    def pool(self, estimate):
        """Joins estimates by Rubin's rules: estimate(table) gives a value, or an array, and its variance.
        Returns the joint one and its variance, which takes in that of the missing values."""
        values, variances = map(np.stack, zip(*(map(np.asarray, estimate(table)) for table in self.tables)))
        between = values.var(axis=0, ddof=1) if len(values) > 1 else np.zeros_like(values[0])
        return values.mean(axis=0), variances.mean(axis=0) + (1 + 1 / len(values)) * between

    def mean(self):
        """Each variable's mean and standard error."""
        n = self.tables.shape[1]
        value, variance = self.pool(lambda table: (table.mean(axis=0), table.var(axis=0, ddof=1) / n))
        return value, np.sqrt(variance)

    def __repr__(self):
        m, n, p = self.tables.shape
        return f"{m} imputations of {self.missing.sum()} values among {n} observations of {p} variables"


def _description(sums, names, orders=(), quantiles=None):
    variance, skewness, kurtosis = _moments_of(sums)
    if quantiles is None:
        quantiles = np.empty((0, len(sums.mean)))
    return Description(sums.n, names, sums.mean.copy(), variance, np.sqrt(variance), skewness, kurtosis,
                       sums.minimum.copy(), sums.maximum.copy(), np.asarray(orders, float), quantiles)


# ---- Functions ----------------------------------------------------------------------------------


def describe(x, weights=None, quantiles=(0.25, 0.5, 0.75), nan_policy="propagate"):
    """Count, moments to the fourth, extremes and quantiles of each variable, as a Description."""
    table = _Table(x, weights, nan_policy)
    orders = _orders("quantiles", quantiles)
    sums = _sums_of(table)
    _extremes(table, sums)
    nan = table.has_nan(np.isnan(sums.mean))
    return _description(sums, table.names, orders, _quantiles(table, orders, nan))


def _matrix(table, matrix):
    if not table.frame:
        return matrix
    import pandas

    return pandas.DataFrame(matrix, index=table.labels, columns=table.labels)


def cov(x, weights=None, nan_policy="propagate"):
    """The unbiased covariance matrix, (p, p); a frame for a frame."""
    table = _Table(x, weights, nan_policy)
    return _matrix(table, _covariance(_sums_of(table, False, True)))


def corrcoef(x, weights=None, nan_policy="propagate"):
    """The correlation matrix, (p, p); a frame for a frame."""
    table = _Table(x, weights, nan_policy)
    return _matrix(table, _correlation(_covariance(_sums_of(table, False, True))))


def _orders(name, orders):
    made = np.atleast_1d(np.asarray(orders, np.float64))
    if made.ndim != 1 or not np.all((made >= 0) & (made <= 1)):
        _fail(name, repr(orders), "numbers from 0 to 1")
    return made


def _quantiles(table, orders, nan):
    """Of shape (orders, p)."""
    made = table.results(table.p, len(orders))
    if len(orders) and table.weights is None:
        table.compute("Quantiles", _core.SS_EST_QUANTILES, _core.SS_METHOD_FAST, {
            _core.SS_PARAM_QUANT_ORDER_COUNT: np.array([len(orders)], np.int64),
            _core.SS_PARAM_QUANT_ORDERS: orders.astype(made.dtype),
            _core.SS_PARAM_QUANTILES: made})
    elif len(orders):
        for k, order in enumerate(orders):
            one = table.results(table.p)
            table.compute("WMedian", _core.SS_EST_QUANTILES, _core.SS_METHOD_FAST, {
                _core.SS_PARAM_QUANT_ORDER_COUNT: np.ones(1, np.int64),
                _core.SS_PARAM_QUANT_ORDERS: np.array([order], made.dtype),
                _core.SS_PARAM_QUANTILES: one})
            made[:, k] = one
    made[nan] = np.nan
    return made.T.copy()


def quantile(x, q, weights=None, nan_policy="propagate"):
    """Quantiles of each variable, of the shape q.shape + (p,), or q.shape for a vector: at (n - 1) q of the
    sorted data, between its neighbours in proportion, as NumPy's default; with weights where those of the
    sorted data reach q of their sum, in proportion likewise."""
    table = _Table(x, weights, nan_policy)
    q = np.asarray(q, np.float64)
    orders = _orders("q", q.ravel())
    nan = table.has_nan(np.isnan(table.values.min(axis=0)))
    made = _quantiles(table, orders, nan).reshape(q.shape + (table.p,))
    return made[..., 0][()] if table.is_vector else made


class Sketch:
    """Quantiles of each variable from `size` points that stand for equal shares of the rows.

    Taking a block, and each merging that follows, adds at most 1 / (2 size) to the error of an order. The
    extremes are exact."""

    def __init__(self, size):
        if size != int(size) or size < 1:
            _fail("size", repr(size), "whole numbers from 1 on")
        self.size = int(size)
        self.n = 0
        self.points = self.low = self.high = None

    def add(self, block, nan_policy="propagate"):
        """Takes a block of rows. Returns the sketch."""
        if not len(block):
            return self
        values = _Table(block, None, nan_policy).values
        made = Sketch(self.size)
        made.n = len(values)
        if made.n <= self.size:
            made.points = np.sort(values.astype(np.float64), axis=0)
        else:
            orders = (np.arange(self.size) + 0.5) / self.size
            made.points = np.asarray(quantile(values, orders), np.float64).reshape(self.size, -1)
        made.low, made.high = (f(axis=0).astype(np.float64) for f in (values.min, values.max))
        return self._take([self, made])

    def merge(self, other):
        """Takes over what another has seen. Returns the sketch."""
        return self._take([self, other])

    def _take(self, sketches):
        seen = [s for s in sketches if s.n]
        if len(seen) == 1:
            self.__dict__.update(seen[0].__dict__)
        elif seen:
            p = seen[0].points.shape[1]
            if any(s.points.shape[1] != p for s in seen):
                _fail("other", "another number of variables", str(p))
            points = np.concatenate([s.points for s in seen])
            shares = np.concatenate([np.full(len(s.points), s.n / len(s.points)) for s in seen])
            self.n = sum(s.n for s in seen)
            self.low = np.min([s.low for s in seen], axis=0)
            self.high = np.max([s.high for s in seen], axis=0)
            self.points = self._thinned(points, shares)
        return self

    def _thinned(self, points, shares):
        targets = (np.arange(self.size) + 0.5) * (self.n / self.size)
        made = np.empty((self.size, points.shape[1]))
        for j in range(points.shape[1]):
            order = np.argsort(points[:, j], kind="stable")
            reached = np.cumsum(shares[order])
            made[:, j] = points[order[np.minimum(np.searchsorted(reached, targets), len(order) - 1)], j]
        return made

    def quantile(self, q):
        """Of the shape q.shape + (p,)."""
        q = np.asarray(q, np.float64)
        if not self.n:
            raise ValueError("this sketch has seen no observation")
        orders = _orders("q", q.ravel())
        k = len(self.points)
        points = np.vstack([self.low, self.points, self.high])
        places = np.concatenate([[0], (np.arange(k) + 0.5) / k, [1]])
        made = np.stack([np.interp(orders, places, column) for column in points.T], axis=1)
        made[:, np.isnan(self.low)] = np.nan
        return made.reshape(q.shape + (points.shape[1],))

    def __repr__(self):
        return f"<orv.stats.Sketch of {self.n} observations, {self.size} points>"


def pooled(x, groups, weights=None, nan_policy="propagate"):
    """Means and covariances of the groups that an array of labels tells, a label a row, and the pooled
    ones, as a Pooled."""
    groups = np.asarray(groups)
    plain = _Table(x, weights)
    if groups.shape != (plain.n,):
        _fail("groups", f"an array of shape {groups.shape}", f"the shape ({plain.n},), a label for each row")
    table = plain
    if nan_policy != "propagate":
        groups = groups[~np.isnan(plain.values).any(axis=1)]
        table = _Table(x, weights, nan_policy)
    labels, indices, counts = np.unique(groups, return_inverse=True, return_counts=True)
    k, p = len(labels), table.p
    mean, means = table.results(p), table.results(k, p)
    matrix, matrices = table.results(p, p), table.results(k, p, p)
    table.compute("PooledCovariance", _core.SS_EST_POOLED | _core.SS_EST_GROUP, _core.SS_METHOD_ONE_PASS, {
        _core.SS_PARAM_GROUP_INDICES: np.ascontiguousarray(indices, np.int64),
        _core.SS_PARAM_POOLED_MEAN: mean, _core.SS_PARAM_POOLED_COV: matrix,
        _core.SS_PARAM_POOLED_COV_STORAGE: _MATRIX_FULL,
        _core.SS_PARAM_GROUP_OUTPUT_INDICES: np.ones(k, np.int64),
        _core.SS_PARAM_GROUP_MEANS: means, _core.SS_PARAM_GROUP_COV: matrices,
        _core.SS_PARAM_GROUP_COV_STORAGE: _MATRIX_FULL})
    return Pooled(labels, counts, mean, matrix, means, matrices)


def partial_cov(x, given, weights=None, nan_policy="propagate"):
    """Covariance of the other variables, given those of the columns `given` (numbers, or names of a
    frame)."""
    table = _Table(x, weights, nan_policy)
    columns = {name: j for j, name in enumerate(table.labels)} if table.frame else range(table.p)
    roles = np.ones(table.p, np.int64)
    for column in np.atleast_1d(np.asarray(given, dtype=None if table.frame else np.int64)):
        if column not in columns:
            _fail("given", repr(column), f"columns: {', '.join(map(str, columns))}")
        roles[columns[column]] = -1
    kept = np.flatnonzero(roles == 1)
    if len(kept) in (0, table.p):
        _fail("given", repr(given), f"1 to {table.p - 1} of the {table.p} columns")
    covariance = np.ascontiguousarray(_covariance(_sums_of(table, False, True)), table.values.dtype)
    matrix = table.results(len(kept), len(kept))
    table.compute("PartialCovariance", _core.SS_EST_PARTIAL_COV, _core.SS_METHOD_FAST, {
        _core.SS_PARAM_COV: covariance, _core.SS_PARAM_COV_STORAGE: _MATRIX_FULL,
        _core.SS_PARAM_PARTIAL_INDEX_ARRAY: roles, _core.SS_PARAM_PARTIAL_COV: matrix,
        _core.SS_PARAM_PARTIAL_COV_STORAGE: _MATRIX_FULL})
    if not table.frame:
        return matrix
    import pandas

    return pandas.DataFrame(matrix, index=table.labels[kept], columns=table.labels[kept])


# ---- Outliers -----------------------------------------------------------------------------------


def _finite(table):
    bad = ~np.isfinite(table.values).all(axis=1)
    if bad.any():
        _fail("x", f"row {bad.argmax()} is not finite", "finite numbers; nan_policy='omit' leaves out NaN")


def _between(name, value, low, high):
    """A number strictly above low, up to high."""
    number = float(value)
    if not low < number <= high:
        _fail(name, repr(value), f"numbers above {low} and up to {high}")
    return number


def robust_cov(x, breakdown=0.5, rejection=0.001, max_iterations=1000, nan_policy="propagate"):
    """Mean and covariance of data of which up to half may be outliers, by the S-estimator with the
    translated biweight (Rocke 1996), as a RobustCovariance. It starts from the orthogonalised
    Gnanadesikan-Kettenring estimate (Maronna and Zamar 2002), which is the result if max_iterations is 0.

    `breakdown` is the part of outliers that it withstands, `rejection` that of normal data without
    weight."""
    table = _Table(x, None, nan_policy)
    _finite(table)
    breakdown = _between("breakdown", breakdown, 0, 0.5)
    rejection = _between("rejection", rejection, 0, 0.999)
    if max_iterations != int(max_iterations) or max_iterations < 0:
        _fail("max_iterations", repr(max_iterations), "whole numbers from 0 on")
    if table.n <= 2 * table.p:
        _fail("x", f"{table.n} observations", f"more than {2 * table.p}, two for each variable")
    origin, scale = _units(table)
    scaled = _Table(((table.values - origin) / scale).astype(table.values.dtype))
    mean, matrix = scaled.results(table.p), scaled.results(table.p, table.p)
    close = 1e-10 if mean.dtype == np.float64 else 1e-8
    scaled.compute("RobustCovariance", 0, _core.SS_METHOD_TBS, {
        _core.SS_PARAM_ROBUST_PARAM_COUNT: np.array([4], np.int64),
        _core.SS_PARAM_ROBUST_PARAMS: np.array([breakdown, rejection, close, max_iterations], mean.dtype),
        _core.SS_PARAM_ROBUST_MEAN: mean, _core.SS_PARAM_ROBUST_COV: matrix,
        _core.SS_PARAM_ROBUST_COV_STORAGE: _MATRIX_FULL})
    away = (scaled.values - mean).astype(np.float64)
    try:
        squares = np.sum(away * np.linalg.solve(matrix.astype(np.float64), away.T).T, axis=1)
    except np.linalg.LinAlgError:
        raise ValueError(_DEPENDENT) from None
    return RobustCovariance(table.names, origin + scale * mean, matrix * np.outer(scale, scale),
                            np.sqrt(np.maximum(squares, 0)))


def _units(table):
    """Median and spread of the middle half of each variable: the estimate's stopping rule is in the
    unit of the data."""
    low, median, high = _quantiles(table, np.array([0.25, 0.5, 0.75]), np.zeros(table.p, bool)).astype(float)
    scale = (high - low) / 1.3489795003921635
    scale = np.where(scale > 0, scale, table.values.std(axis=0, dtype=float))
    if not np.all(scale > 0):
        _fail("x", f"column {np.argmin(scale)} has one value only", "variables that vary")
    return median, scale


def outliers(x, alpha=0.05, centre="median", accuracy=0.005):
    """Outliers by BACON (Billor, Hadi and Velleman 2000), as an Outliers. Clean normal data have one in
    about a part `alpha` of all cases. The search begins around the medians, or around the "mean", which
    suits data with few outliers. A row that is not finite is an outlier."""
    table = _Table(x)
    starts = {"mean": 1, "median": 2}
    if centre not in starts:
        _fail("centre", repr(centre), "'mean' and 'median'")
    alpha, accuracy = _between("alpha", alpha, 0, 1), _between("accuracy", accuracy, 0, 1)
    if table.n < 5 * table.p + 1:
        _fail("x", f"{table.n} observations", f"more than {5 * table.p}, five for each variable")
    weights = table.results(table.n)
    table.compute("OutliersDetection", 0, _core.SS_METHOD_BACON, {
        _core.SS_PARAM_OUTLIER_PARAM_COUNT: np.array([3], np.int64),
        _core.SS_PARAM_OUTLIER_PARAMS: np.array([starts[centre], alpha / table.n, accuracy], weights.dtype),
        _core.SS_PARAM_OUTLIER_WEIGHTS: weights})
    flags = weights == 0
    return Outliers(flags, np.flatnonzero(flags))


# ---- Missing values -----------------------------------------------------------------------------


def impute(x, m=5, stream=None, chain=30, max_iterations=1000, accuracy=1e-6):
    """Draws values for each NaN of x, m times (multiple imputation, Rubin 1987), as Imputations: for values
    that are missing at random from rows of a multivariate normal law.

    Mean and covariance come from EM, which ends where none changes by `accuracy` (of variables scaled to
    1) or after `max_iterations`; each imputation then is the end of a chain of data augmentation of
    `chain` iterations. Numbers come from a Stream, or from the same one each time."""
    table = _Table(x)
    for name, value in (("m", m), ("chain", chain), ("max_iterations", max_iterations)):
        if not 1 <= value <= 10**6 or value != int(value):
            _fail(name, repr(value), "whole numbers from 1 to 1000000")
    accuracy = _between("accuracy", accuracy, 0, 1)
    missing = np.isnan(table.values)
    if not np.isfinite(table.values[~missing]).all():
        _fail("x", "one value is infinite", "finite numbers and NaN")
    if missing.all(axis=0).any():
        _fail("x", f"column {missing.all(axis=0).argmax()} has no value", "variables that have some")
    origin = np.nanmean(table.values, axis=0, dtype=np.float64)
    scale = np.nanstd(table.values, axis=0, dtype=np.float64)
    scale[scale == 0] = 1
    count = int(missing.sum())
    tables = np.repeat(np.ascontiguousarray(table.values)[None], m, axis=0)
    if count:
        known = np.where(missing, 0, (table.values - origin) / scale)
        scaled = _Table(np.ascontiguousarray(np.where(missing, -np.abs(np.float64(np.nan)), known)))
        drawn = scaled.results(m, count)
        _draw_missing(scaled, stream, drawn, [max_iterations, chain, accuracy, m, count])
        where = np.nonzero(missing)
        tables[:, where[0], where[1]] = origin[where[1]] + scale[where[1]] * drawn
    return Imputations(table.names, tables, missing)


def _draw_missing(table, stream, drawn, settings):
    parameters = {
        _core.SS_PARAM_MISSING_PARAM_COUNT: np.array([len(settings)], np.int64),
        _core.SS_PARAM_MISSING_PARAMS: np.array(settings, np.float64),
        _core.SS_PARAM_SIMULATED_COUNT: np.array([drawn.size], np.int64),
        _core.SS_PARAM_SIMULATED_VALUES: drawn}
    arguments = "MissingValues", 0, _core.SS_METHOD_MULTIPLE_IMPUTATION, parameters
    if stream is None:
        return table.compute(*arguments)
    if not hasattr(stream, "_stream"):
        raise TypeError(f"stream: {type(stream).__name__}; allowed are None and streams of orv.random")
    with stream.lock:
        return table.compute(*arguments, stream._stream)
