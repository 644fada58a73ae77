# SPDX-License-Identifier: MIT
"""Data in blocks over Dask: schedulers, two worker processes, and what holds for all of them."""
import dask
import dask.array as da
import dask.dataframe as dd
import numpy as np
import pandas as pd
import pytest
import scipy.stats
from distributed import Client, LocalCluster

import orv
from orv.distributed import accumulate, corrcoef, cov, describe, quantile, random_array
from orv.stats import Sketch

RNG = np.random.default_rng(3)
X = RNG.gamma(2, 1, (5000, 3)) + [0, 1e5, -7]
W = RNG.integers(0, 4, 5000).astype(float)


@pytest.fixture(scope="module")
def client():
    with LocalCluster(n_workers=2, threads_per_worker=1, processes=True, dashboard_address=None) as cluster:
        with Client(cluster) as made:
            yield made


@pytest.mark.parametrize("chunks", [(5000, 3), (617, 3), (1000, 2), (40, 1)])
def test_blocks_give_what_the_whole_does(chunks):
    x, w = da.from_array(X, chunks), da.from_array(W, 700)
    with dask.config.set(scheduler="synchronous"):
        for weights in (None, w):
            whole = orv.stats.describe(X, None if weights is None else W)
            made = describe(x, weights)
            for name in ("n", "mean", "variance", "skewness", "kurtosis", "minimum", "maximum"):
                assert np.allclose(getattr(made, name), getattr(whole, name), rtol=1e-9, atol=1e-9), name
        assert np.allclose(cov(x), np.cov(X.T), rtol=1e-9, atol=1e-9)
        assert np.allclose(corrcoef(x, w), orv.stats.corrcoef(X, W), atol=1e-9)


@pytest.mark.parametrize("epsilon", [0.1, 0.01, 0.001])
def test_quantiles_are_as_near_as_asked(epsilon):
    q = np.array([0, 0.01, 0.25, 0.5, 0.9, 0.999, 1])
    for chunks in (5000, 333, 20):
        made = quantile(da.from_array(X, (chunks, 3)), q, epsilon)
        for j in range(3):
            below = np.mean(X[:, j] < made[:, j, None], axis=1)
            upto = np.mean(X[:, j] <= made[:, j, None], axis=1)
            slack = epsilon + 1 / len(X)
            assert np.all(below <= q + slack) and np.all(upto >= q - slack)
        assert np.array_equal(made[[0, -1]], [X.min(axis=0), X.max(axis=0)])
    vector = quantile(da.from_array(X[:, 0], 500), 0.5)
    assert np.ndim(vector) == 0 and abs(np.mean(X[:, 0] <= vector) - 0.5) < 0.002


def test_frames_and_missing_numbers():
    frame = pd.DataFrame(X, columns=list("abc"))
    frame.loc[7, "b"] = np.nan
    frame.loc[2500:3499, "c"] = np.nan  # whole partitions without a complete row
    parts = dd.from_pandas(frame, npartitions=10)
    with dask.config.set(scheduler="synchronous"):
        made, whole = describe(parts, nan_policy="omit"), orv.stats.describe(frame, nan_policy="omit")
        assert made.names == list("abc") and made.n == whole.n == 3999
        assert np.allclose(made.variance, whole.variance, rtol=1e-9)
        assert np.allclose(made.quantiles, whole.quantiles, rtol=0.01)
        assert np.array_equal(np.isnan(describe(parts).mean), [False, True, True])
        assert np.array_equal(np.isnan(describe(parts).quantiles[1]), [False, True, True])
        kept = parts[parts.a < 3]  # some partitions may be empty
        pd.testing.assert_frame_equal(cov(kept, nan_policy="omit"), orv.stats.cov(
            frame[frame.a < 3], nan_policy="omit"), rtol=1e-9)


def results(x):
    d, c = describe(x), cov(x)
    return [np.asarray(v).tobytes() for v in (*d[2:9], d.quantiles, c)]


def test_same_bits_for_all_schedulers_and_workers(client):
    x = random_array("normal", (20_000, 4), chunks=(1700, 4), seed=5, mean=3)
    by_workers = results(x)
    numbers = x.compute()
    for scheduler in ("synchronous", "threads"):
        with dask.config.set(scheduler=scheduler):
            assert np.array_equal(x.compute(), numbers) and results(x) == by_workers
    total = client.submit(lambda a: a, accumulate(x).compute()).result()  # there and back
    assert total.n == 20_000 and np.allclose(total.mean, numbers.mean(axis=0))


@pytest.mark.parametrize("brng", ["MT2203", "WH", "MCG59", "MCG31M1"])
def test_random_arrays(brng):
    with dask.config.set(scheduler="synchronous"):
        x = random_array("exponential", 30_000, chunks=1000, seed=4, brng=brng, scale=2).compute()
        assert scipy.stats.kstest(x, scipy.stats.expon(0, 2).cdf).pvalue > 1e-4
        rows = x.reshape(30, 1000)
        assert np.abs(np.corrcoef(rows) - np.eye(30)).max() < 0.15
        again = random_array("exponential", 30_000, chunks=1000, seed=4, brng=brng, scale=2)
        assert np.array_equal(again[12_000:13_000].compute(), rows[12])
        other = random_array("exponential", 30_000, chunks=1000, seed=5, brng=brng, scale=2)
        assert not np.array_equal(other[:1000].compute(), rows[0])
        many = random_array("integers", (1100, 3), chunks=(1, 3), brng="MT2203", low=0, high=10**9).compute()
        assert len(np.unique(many)) == many.size  # members of a family come round with another seed
    if brng == "MCG59":  # leapfrogs are the one sequence
        u = random_array("uniform", 3000, chunks=1000, seed=9, brng=brng).compute(scheduler="synchronous")
        assert np.array_equal(u.reshape(3, 1000).T.ravel(), orv.random.MCG59(9).uniform(size=3000))


MISTAKES = [
    (lambda: describe(X), TypeError, "x: ndarray; allowed are arrays and frames of Dask"),
    (lambda: describe(da.zeros((2, 2, 2))), ValueError, "x: an array of 3 dimensions"),
    (lambda: quantile(da.zeros(9), 0.5, epsilon=0), ValueError, "epsilon: 0"),
    (lambda: describe(da.zeros(9), weights=np.ones(9)), ValueError, "weights: .*an array of Dask"),
    (lambda: random_array("zeta", 9), ValueError, "law: 'zeta'; allowed are bernoulli"),
    (lambda: random_array("normal", 9, brng="MT19937"), ValueError, "brng: 'MT19937'"),
    (lambda: random_array("normal", 9, sd=-1), ValueError, "sd: -1"),
    (lambda: Sketch(0), ValueError, "size: 0"),
    (lambda: Sketch(5).quantile(0.5), ValueError, "seen no observation"),
]


@pytest.mark.parametrize("k", range(len(MISTAKES)))
def test_mistakes_are_told(k):
    call, error, message = MISTAKES[k]
    with pytest.raises(error, match=message):
        call()
