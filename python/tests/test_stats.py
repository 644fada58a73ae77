# SPDX-License-Identifier: MIT
"""Statistics against NumPy's, SciPy's and pandas', for all layouts, types and ways to bring data."""
import pickle
from functools import reduce
from pathlib import Path

import numpy as np
import pandas as pd
import pytest
import scipy.stats

import orv
from orv.stats import (Accumulator, corrcoef, cov, describe, impute, outliers, partial_cov, pooled,
                       quantile, robust_cov)

ROOT = Path(__file__).resolve().parents[2]
RNG = np.random.default_rng(2)
N, P = 3001, 5
X = RNG.gamma(2, 1, (N, P)) + [0, 1, 2, 3, 50]
X[:, 1] += X[:, 0]
W = RNG.integers(0, 5, N).astype(float)
ORDERS = [0, 0.1, 0.25, 0.5, 0.9, 1]

FORMS = {
    "rows": lambda a: np.ascontiguousarray(a), "columns": np.asfortranarray,
    "strided": lambda a: np.repeat(np.repeat(a, 2, axis=0), 3, axis=1)[::2, ::3],
    "frame": lambda a: pd.DataFrame(a, columns=list("abcde")[:a.shape[1]]),
    "list": lambda a: a.tolist(), "swapped bytes": lambda a: a.astype(a.dtype.newbyteorder()),
}


def expected_moments(x, weights=None):
    """Mean, variance, skewness, kurtosis as the records define them."""
    w = np.ones(len(x)) if weights is None else weights
    mean = np.average(x, axis=0, weights=w)
    c2, c3, c4 = (np.average((x - mean) ** k, axis=0, weights=w) for k in (2, 3, 4))
    c2 /= 1 - np.sum(w**2) / np.sum(w) ** 2
    return mean, c2, c3 / c2**1.5, c4 / c2**2 - 3


def assert_description(d, x, weights=None, tolerance=1e-12):
    for name, values in zip(("mean", "variance", "skewness", "kurtosis"), expected_moments(x, weights)):
        assert np.allclose(getattr(d, name), values, rtol=tolerance, atol=10 * tolerance), name
    assert np.allclose(d.sd, np.sqrt(d.variance))
    assert np.array_equal(d.minimum, x.min(axis=0)) and np.array_equal(d.maximum, x.max(axis=0))


@pytest.mark.parametrize("dtype, tolerance", [(np.float64, 1e-12), (np.float32, 1e-4)])
@pytest.mark.parametrize("form", FORMS)
def test_form_of_data_changes_nothing(form, dtype, tolerance):
    base = X.astype(dtype)
    x, wide = FORMS[form](base), base.astype(float)
    for weights in (None, W):
        assert_description(describe(x, weights), wide, weights, tolerance)
        aweights = None if weights is None else np.asarray(weights)
        assert np.allclose(cov(x, weights), np.cov(wide.T, aweights=aweights), rtol=tolerance, atol=tolerance)
        assert np.allclose(corrcoef(x, weights), np.corrcoef(np.repeat(
            wide, 1 if weights is None else W.astype(int), axis=0).T), rtol=tolerance, atol=tolerance)
    d = describe(x, quantiles=ORDERS)
    assert d.n == N and np.allclose(d.quantiles, np.quantile(wide, ORDERS, axis=0), rtol=1e-6)
    assert np.allclose(quantile(x, 0.3), np.quantile(wide, 0.3, axis=0), rtol=1e-6)


def test_data_are_taken_without_a_copy():
    for order in "CF":
        for dtype in (np.float64, np.float32):
            x = np.array(X, dtype, order=order)
            assert orv.stats._Table(x).values is x
            frame = pd.DataFrame(x)
            assert np.shares_memory(orv.stats._Table(frame).values, frame.to_numpy())


def test_against_pandas_and_scipy():
    frame = pd.DataFrame(X, columns=list("abcde"))
    theirs, d = frame.describe(), describe(frame)
    ours = d.to_frame()
    assert list(ours.columns) == list("abcde") and d.names == list("abcde")
    pairs = {"mean": "mean", "sd": "std", "minimum": "min", "25%": "25%", "50%": "50%", "75%": "75%",
             "maximum": "max"}
    for row, name in pairs.items():
        assert np.allclose(ours.loc[row], theirs.loc[name], rtol=1e-13)
    k = (N - 1) / N  # they divide by n where we have n - 1
    assert np.allclose(d.skewness, scipy.stats.skew(X) * k**1.5)
    assert np.allclose(d.kurtosis + 3, scipy.stats.kurtosis(X, fisher=False) * k**2)
    for ours, theirs in ((cov(frame), frame.cov()), (corrcoef(frame), frame.corr())):
        assert list(ours.index) == list("abcde")
        pd.testing.assert_frame_equal(ours, theirs)
    whole = pd.DataFrame({"a": [1, 2, 4], "b": [True, False, True]})
    assert np.allclose(describe(whole).mean, whole.mean())
    assert np.allclose(describe(whole["a"]).sd, [whole["a"].std()])


def test_hard_data_keep_their_digits():
    """A mean large beside the deviation takes all digits from raw moments."""
    y = RNG.normal(size=(20_000, 3))
    for offset, dtype, tolerance in ((1e9, float, 1e-6), (1e4, float, 1e-9), (1e3, np.float32, 1e-3)):
        x = (y + [0, offset, -offset]).astype(dtype)
        exact = x.astype(np.longdouble)
        d = describe(x, W[np.arange(20_000) % N])
        for got, expected in zip((d.mean, d.variance, d.skewness, d.kurtosis),
                                 expected_moments(exact, W[np.arange(20_000) % N])):
            assert np.allclose(got, expected.astype(float), rtol=tolerance, atol=10 * tolerance)
        assert np.allclose(cov(x), np.cov((exact - exact.mean(axis=0)).astype(float).T), rtol=100 * tolerance,
                           atol=100 * tolerance)
    constant = describe(np.full((100, 2), 0.1))
    assert np.array_equal(constant.variance, [0, 0]) and np.isnan(constant.skewness).all()


def test_quantiles():
    for q in (0.5, [0.25, 0.75], [[0, 0.5], [0.9, 1]]):
        assert np.allclose(quantile(X, q), np.quantile(X, q, axis=0), rtol=1e-14)
        assert np.shape(quantile(X[:, 0], q)) == np.shape(q)
        assert np.allclose(quantile(X[:, 0], q), np.quantile(X[:, 0], q), rtol=1e-14)
    order = np.argsort(X[:, 0])
    reached = np.cumsum(W[order])
    for q in (0.1037, 0.5021, 0.8):
        expected = np.interp(q * reached[-1], reached, X[order, 0])
        assert np.allclose(quantile(X[:, 0], q, weights=W), expected, rtol=1e-14)
        assert np.allclose(describe(X, W, [q]).quantiles[0, 0], expected, rtol=1e-14)


# ---- Missing numbers ----------------------------------------------------------------------------


@pytest.mark.parametrize("order", "CF")
def test_missing_numbers(order):
    x = np.array(X[:, :3], order=order)
    x[5, 1] = x[N - 1, 1] = np.nan
    d = describe(x)
    for values in (d.mean, d.variance, d.skewness, d.minimum, d.maximum, *d.quantiles):
        assert np.array_equal(np.isnan(values), [False, True, False])
    assert np.allclose(d.mean[[0, 2]], X[:, [0, 2]].mean(axis=0))
    assert np.array_equal(np.isnan(quantile(x, 0.5)), [False, True, False])
    complete = ~np.isnan(x).any(axis=1)
    assert_description(describe(x, nan_policy="omit"), x[complete])
    assert_description(describe(x, W, nan_policy="omit"), x[complete], W[complete])
    assert np.allclose(cov(x, nan_policy="omit"), np.cov(x[complete].T))
    with pytest.raises(ValueError, match="x: NaN in row 5"):
        describe(x, nan_policy="raise")


# ---- Accumulators -------------------------------------------------------------------------------


@pytest.mark.parametrize("weights", [None, W])
@pytest.mark.parametrize("cuts", [[], [1], [1000, 2000], [10, 11, 12, 3000]])
def test_accumulator_of_blocks_is_that_of_the_whole(cuts, weights):
    parts = np.split(np.arange(N), cuts)
    one = Accumulator(covariance=True)
    several = []
    for part in parts:
        w = None if weights is None else weights[part]
        if w is not None and not w.any():
            w = w + 1e-300
        one.add(X[part], w)
        several.append(pickle.loads(pickle.dumps(Accumulator(covariance=True).add(X[part], w))))
    merged = reduce(lambda a, b: a + b, several)
    tree = reduce(lambda a, b: b + a, several[::-1], Accumulator(covariance=True))
    for a in (one, merged, tree):
        assert a.n == N
        assert_description(a.describe(), X, weights)
        assert np.allclose(a.cov, np.cov(X.T, aweights=weights), rtol=1e-12)
        assert np.allclose(a.corrcoef, corrcoef(X, weights))
        assert np.allclose(a.mean, one.mean) and np.allclose(a.kurtosis, one.kurtosis)


def test_accumulator_of_single_rows_and_far_blocks():
    a = Accumulator(covariance=True)
    for k, row in enumerate(X[:300]):
        a.add(row[None, :] + 1e6)
    assert_description(a.describe(), X[:300] + 1e6, None, 1e-7)
    assert np.allclose(a.cov, np.cov(X[:300].T), rtol=1e-6, atol=1e-6)
    assert "300 observations, 5 variables" in repr(a)


# ---- Groups and conditions ----------------------------------------------------------------------


def test_pooled_and_partial_covariance():
    labels = np.array(["low", "mid", "high"])[RNG.integers(0, 3, N)]
    for x in (X, np.asfortranarray(X), X.astype(np.float32)):
        tolerance = 1e-11 if x.dtype == float else 1e-3
        made = pooled(x, labels)
        assert list(made.labels) == ["high", "low", "mid"] and made.counts.sum() == N
        scatter = np.zeros((P, P))
        for k, label in enumerate(made.labels):
            part = X[labels == label]
            assert np.allclose(made.group_means[k], part.mean(axis=0), rtol=tolerance)
            assert np.allclose(made.group_covs[k], np.cov(part.T), rtol=tolerance, atol=tolerance)
            scatter += np.cov(part.T) * (len(part) - 1)
        assert np.allclose(made.cov, scatter / (N - 3), rtol=tolerance, atol=tolerance)

        c = np.cov(X.T)
        given, rest = [1, 3], [0, 2, 4]
        expected = c[np.ix_(rest, rest)] - c[np.ix_(rest, given)] @ np.linalg.solve(
            c[np.ix_(given, given)], c[np.ix_(given, rest)])
        assert np.allclose(partial_cov(x, given), expected, rtol=100 * tolerance, atol=tolerance)
    frame = pd.DataFrame(X, columns=list("abcde"))
    named = partial_cov(frame, ["b", "d"])
    assert list(named.columns) == ["a", "c", "e"] and np.allclose(named, expected, atol=1e-10)


# ---- Outliers -----------------------------------------------------------------------------------


def hawkins_data():
    """75 observations of four variables; the first 14 are outliers (Hawkins, Bradu and Kass 1984)."""
    table = pd.read_csv(ROOT / "examples" / "data" / "hbk.csv")
    return table[["X1", "X2", "X3"]]


@pytest.mark.parametrize("form", ["rows", "columns", "frame", "strided"])
def test_outliers_of_known_data(form):
    x = FORMS[form](hawkins_data().to_numpy(float))
    for dtype in (np.float64, np.float32):
        y = x.astype(dtype)
        made = outliers(y)
        assert list(made.indices) == list(range(14)) and made.flags.sum() == 14
        assert repr(made).startswith("14 outliers among 75 observations: 0, 1, 2")
        d = robust_cov(y).distances
        assert d[:14].min() > np.sqrt(scipy.stats.chi2(3).isf(1e-9)) and d[14:].max() < 4


def test_robust_covariance_of_contaminated_data():
    shape = np.array([[2, 1, 0], [1, 3, -1], [0, -1, 1.5]])
    clean = RNG.multivariate_normal([1, 2, 3], shape, 4000)
    x = np.vstack([clean, RNG.normal(20, 1, (1500, 3))])
    for iterations in (0, 1000):
        made = robust_cov(x, max_iterations=iterations)
        assert np.abs(made.mean - [1, 2, 3]).max() < 0.15
        assert np.abs(corrcoef(clean) - made.cov / np.sqrt(np.outer(*[np.diag(made.cov)] * 2))).max() < 0.06
        away = x - made.mean  # the distances are those of its own mean and covariance
        assert np.allclose(made.distances**2, np.sum(away @ np.linalg.inv(made.cov) * away, axis=1))
    units = np.array([1e-6, 1, 1e8])
    moved = robust_cov(x * units + 1e3 * units)
    assert np.allclose(moved.mean, (made.mean + 1e3) * units, rtol=1e-6)
    assert np.allclose(moved.cov, made.cov * np.outer(units, units), rtol=1e-5, atol=1e-6 * units.min())
    assert "robust mean and covariance" in repr(moved)
    clean_flags = [outliers(RNG.normal(size=(300, 3))).flags.any() for _ in range(40)]
    assert sum(clean_flags) <= 10  # alpha is the chance of one, 0.05


# ---- Missing values -----------------------------------------------------------------------------


def test_imputation_of_values_missing_at_random():
    """What is missing depends on the first variable, so that the rows that are complete mislead."""
    cov_of_law = np.array([[1, 0.8, 0.5], [0.8, 1, 0.3], [0.5, 0.3, 1]])
    units = np.array([1, 1e-3, 1e5])
    whole = RNG.multivariate_normal([1, 2, 3], cov_of_law, 4000) * units
    x = whole.copy()
    x[(whole[:, 0] > 1.2) & (RNG.random(4000) < 0.8), 1] = np.nan
    x[RNG.random(4000) < 0.2, 2] = np.nan
    holes = np.isnan(x)
    for order in "CF":
        made = impute(np.array(x, order=order), m=20)
        assert made.tables.shape == (20, 4000, 3) and np.array_equal(made.missing, holes)
        assert np.array_equal(made.tables[:, ~holes], np.repeat(x[~holes][None], 20, axis=0))
        value, error = made.mean()
        assert np.all(np.abs(value - np.array([1, 2, 3]) * units) < 4 * error)
        assert np.abs(x[:, 1][~holes[:, 1]].mean() / units[1] - 2) > 0.2  # the plain mean is far off
        joint = np.mean([np.corrcoef(t.T) for t in made.tables], axis=0)
        assert np.abs(joint - cov_of_law).max() < 0.06
        assert made.tables[:, holes].std(axis=0).min() > 0  # they differ from each other
    assert np.array_equal(impute(x, m=2).tables, impute(x, m=2).tables)
    by_stream = [impute(x, m=2, stream=orv.random.MT19937(seed)).tables for seed in (1, 1, 2)]
    assert np.array_equal(by_stream[0], by_stream[1]) and not np.array_equal(by_stream[0], by_stream[2])
    assert impute(x.astype(np.float32), m=1).tables.dtype == np.float32
    assert repr(made) == f"20 imputations of {holes.sum()} values among 4000 observations of 3 variables"
    assert np.array_equal(impute(whole, m=3).tables, np.repeat(whole[None], 3, axis=0))


# ---- Threads, records, mistakes -----------------------------------------------------------------


def test_number_of_threads_changes_no_bit():
    x = RNG.normal(size=(50_000, 6))
    results = []
    for threads in (1, 2, 5):
        orv.set_num_threads(threads)
        results.append((describe(x).kurtosis.tobytes(), cov(x).tobytes()))
    orv.set_num_threads(None)
    assert len(set(results)) == 1


def test_records_are_readable():
    text = repr(describe(pd.DataFrame({"long name": [1.0, 2.0, 4.0], "b": [0.5, 0.5, 2.0]})))
    assert text.splitlines()[:3] == ["3 observations", "          long name         b",
                                     "mean        2.33333         1"]
    assert "means of 2 groups" in repr(pooled(X, np.arange(N) % 2))


MISTAKES = [
    (lambda: describe(np.zeros((2, 2, 2))), ValueError, "x: an array of 3 dimensions; allowed are vectors"),
    (lambda: describe([]), ValueError, r"x: an array of shape \(0, 1\)"),
    (lambda: describe(["a", "b"]), TypeError, "x: .*allowed are real numbers"),
    (lambda: describe([1j]), TypeError, "x: numbers of type complex128"),
    (lambda: describe(pd.DataFrame({"a": [1, 2], "b": ["x", "y"]})), TypeError, "x: could not convert"),
    (lambda: describe(X, W[:-1]), ValueError, r"weights: an array of shape \(3000,\); allowed are the shape"),
    (lambda: describe(X, -W), ValueError, "weights: one is negative"),
    (lambda: describe(X, quantiles=[1.5]), ValueError, r"quantiles: \[1.5\]; allowed are numbers from 0 to 1"),
    (lambda: quantile(X, -0.1), ValueError, "q: "),
    (lambda: cov(X, nan_policy="drop"), ValueError, "nan_policy: 'drop'; allowed are 'propagate', 'omit'"),
    (lambda: Accumulator().add(X).add(X[:, :2]), ValueError, "x: 2 variables; allowed are 5"),
    (lambda: Accumulator().mean, ValueError, "seen no observation"),
    (lambda: Accumulator().add(X).cov, ValueError, "without covariance=True"),
    (lambda: Accumulator().merge(Accumulator(True)), ValueError, "other: covariance=True"),
    (lambda: Accumulator().merge(3), TypeError, "other: int"),
    (lambda: pooled(X, [1, 2]), ValueError, "groups: an array of shape"),
    (lambda: partial_cov(X, 7), ValueError, "given: 7; allowed are columns: 0, 1"),
    (lambda: partial_cov(X, range(5)), ValueError, "1 to 4 of the 5 columns"),
    (lambda: robust_cov(X, breakdown=0.6), ValueError, "breakdown: 0.6; allowed are numbers above 0"),
    (lambda: robust_cov(X[:10]), ValueError, "x: 10 observations; allowed are more than 10"),
    (lambda: robust_cov(np.hstack([X, X])), ValueError, "x: variables depend on each other"),
    (lambda: robust_cov(np.ones((50, 2))), ValueError, "x: column 0 has one value only"),
    (lambda: robust_cov([[np.nan]] * 9), ValueError, "x: row 0 is not finite"),
    (lambda: outliers(X, centre="mode"), ValueError, "centre: 'mode'; allowed are 'mean' and 'median'"),
    (lambda: outliers(X, alpha=0), ValueError, "alpha: 0"),
    (lambda: outliers(X[:25]), ValueError, "x: 25 observations; allowed are more than 25"),
    (lambda: impute(X, m=0), ValueError, "m: 0; allowed are whole numbers from 1"),
    (lambda: impute([[1, 1], [np.nan, 2], [3, 4]], stream=3), TypeError, "stream: int; allowed are None"),
    (lambda: impute([[np.nan, 1], [np.nan, 2]]), ValueError, "x: column 0 has no value"),
    (lambda: impute([[np.inf, 1], [np.nan, 2]]), ValueError, "x: one value is infinite"),
    (lambda: orv.set_num_threads(0), ValueError, "count: 0"),
]


@pytest.mark.parametrize("k", range(len(MISTAKES)))
def test_mistakes_are_told(k):
    call, error, message = MISTAKES[k]
    with pytest.raises(error, match=message):
        call()
