# SPDX-License-Identifier: MIT
"""Statistics and random arrays over Dask: data larger than memory, or on several machines.

Arrays and frames of Dask are taken block by block; each block's accumulator or sketch is made where the
block is, and these small objects are merged along a tree whose form the blocks alone tell. So results are
the same to the bit for every scheduler and any number of workers.
"""
import math

import dask
import dask.array
import numpy as np

from . import random, stats
from .stats import Sketch

__all__ = ["accumulate", "corrcoef", "cov", "describe", "quantile", "random_array"]

_FAN = 8  # accumulators merged at a time


# ---- Blocks -------------------------------------------------------------------------------------


def _fail(name, value, allowed):
    raise ValueError(f"{name}: {value}; allowed are {allowed}")


def _blocks(x, weights=None):
    """Delayed pairs of a block of rows and its weights or None."""
    if hasattr(x, "to_delayed") and hasattr(x, "npartitions") and hasattr(x, "columns"):
        if weights is not None:
            _fail("weights", "given with a frame", "those of arrays")
        return [(block, None) for block in x.to_delayed()]
    if not isinstance(x, dask.array.Array):
        raise TypeError(f"x: {type(x).__name__}; allowed are arrays and frames of Dask")
    if x.ndim not in (1, 2):
        _fail("x", f"an array of {x.ndim} dimensions", "vectors and tables")
    rows = x if x.ndim == 1 else x.rechunk({1: -1})
    parts = rows.to_delayed().ravel()
    if weights is None:
        return [(part, None) for part in parts]
    if not isinstance(weights, dask.array.Array) or weights.shape != x.shape[:1]:
        found = getattr(weights, "shape", type(weights).__name__)
        _fail("weights", found, f"an array of Dask, {x.shape[:1]}")
    return list(zip(parts, weights.rechunk((rows.chunks[0],)).to_delayed().ravel()))


def _tree(parts, merge):
    """Merges neighbours till one is left."""
    while len(parts) > 1:
        parts = [merge(parts[i:i + _FAN]) for i in range(0, len(parts), _FAN)]
    return parts[0]


def _depth(count):
    return math.ceil(math.log(count, _FAN) - 1e-9) if count > 1 else 0


# ---- Accumulators -------------------------------------------------------------------------------


def _accumulator_of(block, weights, covariance, nan_policy):
    made = stats.Accumulator(covariance)
    if nan_policy == "omit" and len(block):
        values = np.asarray(block, dtype=float)
        if np.isnan(values.reshape(len(values), -1)).any(axis=1).all():
            return made
    return made.add(block, weights, nan_policy) if len(block) else made


def _merged(accumulators):
    made = accumulators[0]
    for other in accumulators[1:]:
        made = made + other
    return made


def accumulate(x, weights=None, covariance=False, nan_policy="propagate"):
    """The orv.stats.Accumulator of all rows, not computed yet: a delayed object of Dask."""
    one = dask.delayed(_accumulator_of, pure=True)
    parts = [one(block, w, covariance, nan_policy) for block, w in _blocks(x, weights)]
    return _tree(parts, dask.delayed(_merged, pure=True))


def describe(x, weights=None, quantiles=(0.25, 0.5, 0.75), epsilon=1e-3, nan_policy="propagate"):
    """Count, moments, extremes, and quantiles up to an error `epsilon` in their order, of each variable,
    as an orv.stats.Description, from one pass over the data."""
    orders = stats._orders("quantiles", quantiles)
    wanted = [accumulate(x, weights, nan_policy=nan_policy)]
    if len(orders) and weights is None:
        wanted.append(_sketch(x, epsilon, nan_policy))
    total, *sketch = dask.compute(*wanted)
    made = total.describe()
    if not sketch:
        return made
    return made._replace(orders=orders, quantiles=sketch[0].quantile(orders))


def _matrix(x, matrix):
    if not hasattr(x, "columns"):
        return matrix
    import pandas

    return pandas.DataFrame(matrix, index=list(x.columns), columns=list(x.columns))


def cov(x, weights=None, nan_policy="propagate"):
    """The unbiased covariance matrix."""
    return _matrix(x, accumulate(x, weights, True, nan_policy).compute().cov)


def corrcoef(x, weights=None, nan_policy="propagate"):
    """The correlation matrix."""
    return _matrix(x, accumulate(x, weights, True, nan_policy).compute().corrcoef)


# ---- Quantiles ----------------------------------------------------------------------------------


def _sketch_of(block, size, nan_policy):
    made = Sketch(size)
    if nan_policy == "omit" and len(block):
        values = np.asarray(block, dtype=float).reshape(len(block), -1)
        block = values[~np.isnan(values).any(axis=1)]
    return made.add(block, nan_policy)


def _merged_sketch(sketches):
    made = Sketch(sketches[0].size)
    return made._take(sketches)


def _sketch(x, epsilon, nan_policy):
    if not 0 < epsilon < 1:
        _fail("epsilon", repr(epsilon), "numbers above 0 and below 1")
    blocks = _blocks(x)
    size = math.ceil((1 + _depth(len(blocks))) / (2 * epsilon)) + 1
    parts = [dask.delayed(_sketch_of, pure=True)(block, size, nan_policy) for block, _ in blocks]
    return _tree(parts, dask.delayed(_merged_sketch, pure=True))


def quantile(x, q, epsilon=1e-3, nan_policy="propagate"):
    """Quantiles of each variable, as orv.stats.quantile: numbers whose order is q up to `epsilon`."""
    made = _sketch(x, epsilon, nan_policy).compute().quantile(q)
    return made[..., 0][()] if x.ndim == 1 else made


# ---- Random arrays ------------------------------------------------------------------------------

_LAWS = ("bernoulli", "beta", "binomial", "cauchy", "exponential", "gamma", "geometric", "gumbel",
         "hypergeometric", "integers", "laplace", "lognormal", "negative_binomial", "normal", "poisson",
         "random", "rayleigh", "uniform", "weibull")


def _stream(brng, seed, number, blocks):
    """The stream of one block: of MT2203 and WH a member with a seed of its own, since members with one
    seed begin alike; of the others a leapfrog."""
    if brng in random._FAMILIES:
        member = number % random._FAMILIES[brng]
        return random.Stream(f"{brng}:{member}", np.random.SeedSequence([seed, number]))
    return random.Stream(brng, seed).leapfrog(number, blocks)


def _random_block(law, brng, seed, number, blocks, shape, parameters):
    return getattr(_stream(brng, seed, number, blocks), law)(size=shape, **parameters)


def random_array(law, size, chunks="auto", seed=0, brng="MT2203", **parameters):
    """An array of Dask with numbers of a law, such as
    ``random_array("normal", (10**8,), chunks=10**6, seed=7, mean=3)``.

    Each block has a stream of its own: member after member of MT2203 (the default) or WH, or leapfrogs of
    MCG59 or MCG31M1. Law and parameters are those of orv.random.Stream. The numbers depend on size,
    chunks, seed and brng, not on who makes them."""
    if law not in _LAWS:
        _fail("law", repr(law), ", ".join(_LAWS))
    if brng not in ("MT2203", "WH", "MCG59", "MCG31M1"):
        _fail("brng", repr(brng), "MT2203, WH, MCG59, MCG31M1")
    seed = random._whole("seed", seed, 0, 2**32 - 1)
    sample = _random_block(law, brng, seed, 0, 1, 1, parameters)
    shape = tuple(size) if np.iterable(size) else (size,)
    chunks = dask.array.core.normalize_chunks(chunks, shape, dtype=sample.dtype)
    counts = tuple(map(len, chunks))
    blocks = math.prod(counts)
    name = f"orv-{law}-{dask.base.tokenize(law, shape, chunks, seed, brng, parameters)}"
    graph = {}
    for number, place in enumerate(np.ndindex(*counts)):
        part = tuple(chunks[axis][k] for axis, k in enumerate(place))
        graph[(name, *place)] = (_random_block, law, brng, seed, number, blocks, part, parameters)
    return dask.array.Array(graph, name, chunks, dtype=sample.dtype)
