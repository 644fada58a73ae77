# SPDX-License-Identifier: MIT
"""Streams against NumPy's own Mersenne Twister, distributions against SciPy's laws."""
import concurrent.futures
import copy
import ctypes
import os
import pickle
import subprocess

import numpy as np
import pytest
import scipy.stats as st

import orv
from orv.random import MT2203, MT19937, Niederreiter, Sobol, Stream, generators

N = 40_000
NAMES = [name.split("..")[0] for name in generators()]

CONTINUOUS = {  # a call, its law
    "uniform": (lambda s, **k: s.uniform(2, 5, **k), st.uniform(2, 3)),
    "random": (lambda s, **k: s.random(**k), st.uniform()),
    "exponential": (lambda s, **k: s.exponential(3, loc=1, **k), st.expon(1, 3)),
    "laplace": (lambda s, **k: s.laplace(1, 2, **k), st.laplace(1, 2)),
    "weibull": (lambda s, **k: s.weibull(2.5, 2, loc=1, **k), st.weibull_min(2.5, 1, 2)),
    "cauchy": (lambda s, **k: s.cauchy(1, 2, **k), st.cauchy(1, 2)),
    "rayleigh": (lambda s, **k: s.rayleigh(2, loc=1, **k), st.rayleigh(1, 2)),
    "lognormal": (lambda s, **k: s.lognormal(0.5, 0.7, loc=1, scale=2, **k),
                  st.lognorm(0.7, 1, 2 * np.exp(0.5))),
    "gumbel": (lambda s, **k: s.gumbel(1, 2, **k), st.gumbel_r(1, 2)),
    "smallest gumbel": (lambda s, **k: s.gumbel(1, 2, smallest=True, **k), st.gumbel_l(1, 2)),
    "normal": (lambda s, **k: s.normal(3, 2, **k), st.norm(3, 2)),
    "normal by sines": (lambda s, **k: s.normal(3, 2, method="boxmuller", **k), st.norm(3, 2)),
    "normal by inversion": (lambda s, **k: s.normal(3, 2, method="icdf", **k), st.norm(3, 2)),
    "gamma": (lambda s, **k: s.gamma(2.5, 3, loc=1, **k), st.gamma(2.5, 1, 3)),
    "small gamma": (lambda s, **k: s.gamma(0.3, 3, **k), st.gamma(0.3, 0, 3)),
    "beta": (lambda s, **k: s.beta(2, 3, loc=1, scale=4, **k), st.beta(2, 3, 1, 4)),
}
DISCRETE = {
    "integers": (lambda s, **k: s.integers(-3, 9, **k), st.randint(-3, 9)),
    "integers below": (lambda s, **k: s.integers(9, **k), st.randint(0, 9)),
    "bernoulli": (lambda s, **k: s.bernoulli(0.3, **k), st.bernoulli(0.3)),
    "geometric": (lambda s, **k: s.geometric(0.3, **k), st.geom(0.3, -1)),
    "binomial": (lambda s, **k: s.binomial(40, 0.6, **k), st.binom(40, 0.6)),
    "poisson": (lambda s, **k: s.poisson(5.5, **k), st.poisson(5.5)),
    "poisson by normal": (lambda s, **k: s.poisson(5.5, method="poisnorm", **k), st.poisson(5.5)),
    "hypergeometric": (lambda s, **k: s.hypergeometric(30, 70, 20, **k), st.hypergeom(100, 30, 20)),
    "negative binomial": (lambda s, **k: s.negative_binomial(2.5, 0.3, **k), st.nbinom(2.5, 0.3)),
}


@pytest.mark.parametrize("dtype", [np.float64, np.float32])
@pytest.mark.parametrize("name", CONTINUOUS)
def test_continuous_laws(name, dtype):
    draw, law = CONTINUOUS[name]
    x = draw(MT19937(11), size=N, dtype=dtype)
    assert x.dtype == dtype and st.kstest(x, law.cdf).pvalue > 1e-4


@pytest.mark.parametrize("name", DISCRETE)
def test_discrete_laws(name):
    draw, law = DISCRETE[name]
    x = draw(MT19937(12), size=N)
    assert x.dtype == np.int32
    values = np.arange(x.min(), x.max() + 1)
    seen = np.array([np.sum(x == v) for v in values])
    expected = N * law.pmf(values)
    kept = expected > 5
    rest = [N - seen[kept].sum()], [N - expected[kept].sum()]
    seen, expected = np.append(seen[kept], rest[0]), np.append(expected[kept], rest[1])
    deviation = np.sum((seen - expected) ** 2 / np.maximum(expected, 1))
    assert st.chi2(max(len(seen) - 1, 1)).sf(deviation) > 1e-4


@pytest.mark.parametrize("name", [*CONTINUOUS, *DISCRETE])
def test_size_out_and_parts(name):
    draw, _ = (CONTINUOUS | DISCRETE)[name]
    s = MT2203(5)
    expected = draw(s.copy(), size=60)
    assert np.array_equal(draw(s.copy(), size=(3, 20)), expected.reshape(3, 20))
    out = np.empty((3, 20), expected.dtype)
    assert draw(s.copy(), out=out) is out and np.array_equal(out.ravel(), expected)
    assert np.isscalar(draw(s)) and draw(s, size=0).shape == (0,)
    t = MT2203(5)
    assert np.array_equal(np.concatenate([draw(t, size=k) for k in (1, 7, 52)]), expected)


def test_poisson_of_means_and_normal_vectors():
    means = np.array([0.5, 5, 500])
    x = MT19937(3).poisson(means, size=(N // 10, 3))
    assert np.all(np.abs(x.mean(axis=0) - means) < 5 * np.sqrt(means / (N // 10)))
    assert MT19937(3).poisson(means).shape == (3,)

    cov = np.array([[4, 1, 0.5], [1, 2, -0.3], [0.5, -0.3, 1]])
    for dtype in (np.float64, np.float32):
        v = MT19937(4).multivariate_normal([1, 2, 3], cov, size=(N // 2, 2), dtype=dtype)
        assert v.shape == (N // 2, 2, 3) and v.dtype == dtype
        v = v.reshape(-1, 3)
        assert np.abs(np.cov(v.T) - cov).max() < 0.12 and np.abs(v.mean(axis=0) - [1, 2, 3]).max() < 0.05
    factor = np.linalg.cholesky(cov)
    z = MT19937(4).normal(size=(5, 3), method="icdf")
    assert np.allclose(MT19937(4).multivariate_normal([0, 0, 0], cov, 5, method="icdf"), z @ factor.T)


# ---- NumPy's generators -------------------------------------------------------------------------


def numpy_twister(words):
    twister = np.random.MT19937()
    twister._legacy_seeding(words)
    return twister


@pytest.mark.parametrize("seed, words", [(5, [5]), ([1, 2, 3], [1, 2, 3]), (2**40 + 9, [9, 256])])
def test_generator_of_numpy_gets_the_same_as_from_its_own_twister(seed, words):
    ours, theirs = (np.random.Generator(s) for s in (MT19937(seed), numpy_twister(words)))
    for draw in (lambda g: g.random(1000), lambda g: g.normal(size=1000), lambda g: g.integers(10**12, size=99),
                 lambda g: g.integers(100, size=99, dtype=np.uint8), lambda g: g.gamma(0.3, size=99),
                 lambda g: g.random(7, dtype=np.float32), lambda g: g.permutation(50),
                 lambda g: g.poisson(30, 100), lambda g: g.bit_generator.random_raw(5)):
        assert np.array_equal(draw(ours), draw(theirs))


@pytest.mark.parametrize("name", NAMES)
def test_every_generator_serves_numpy(name):
    s = Stream(name, 9)
    assert isinstance(s, np.random.BitGenerator) and s.name == name
    x = np.random.Generator(s).random(N)
    assert st.kstest(x, "uniform").pvalue > 1e-4
    low = (x * 2**53).astype(np.int64) % 2**20 / 2**20
    assert st.kstest(low, "uniform").pvalue > 1e-4
    assert abs(np.corrcoef(x[1:], x[:-1])[0, 1]) < 0.02


@pytest.mark.parametrize("name", NAMES)
def test_words_taken_ahead_are_not_lost(name):
    """Direct draws go on where NumPy's generator stopped, whatever it has in hand."""
    a, b = Stream(name, 21), Stream(name, 21)
    words = np.random.Generator(a).integers(2**32, size=37, dtype=np.uint32)
    halves = name.startswith("MCG31M1")
    used = b.uniform(size=37 * (2 if halves else 1))
    if halves:
        used = (np.floor(used[::2] * 2**16) * 2**16 + np.floor(used[1::2] * 2**16)) / 2**32
    assert np.array_equal(words, np.floor(used * 2**32).astype(np.uint32))
    assert np.array_equal(a.normal(size=11), b.normal(size=11))
    for _ in range(600):
        a.random_raw(), b.random_raw()
    assert a.tobytes() == b.tobytes() and np.array_equal(a.uniform(size=3), b.uniform(size=3))


def test_interface_of_bit_generators():
    s = MT19937(1)
    raw = s.ctypes
    assert raw.next_double(ctypes.c_void_p(raw.state_address)) == \
        np.random.Generator(numpy_twister([1])).random()
    with concurrent.futures.ThreadPoolExecutor(4) as pool:  # one lock for both ways to draw
        g, t = np.random.Generator(s), MT19937(1)
        t.random_raw(2)
        parts = list(pool.map(lambda k: g.random(500) if k % 2 else s.uniform(size=1000), range(20)))
    t.random_raw(20 * 1000)
    assert sum(len(p) for p in parts) == 15000 and s.uniform() == t.uniform()


# ---- Streams ------------------------------------------------------------------------------------


@pytest.mark.parametrize("name", NAMES)
def test_copies_pickles_and_files_go_on_alike(name, tmp_path):
    s = Stream(name, [4, 5, 6])
    s.normal(size=7), s.random_raw(3), s.binomial(1000, 0.3, size=2)
    path = tmp_path / "stream"
    s.save(path)
    others = [s.copy(), copy.copy(s), copy.deepcopy(s), pickle.loads(pickle.dumps(s)), Stream.load(path),
              Stream.frombytes(s.tobytes())]
    state = s.state
    expected = [s.normal(size=5), s.random_raw(), s.binomial(1000, 0.3, size=5)]
    s.state = state
    for other in [*others, s]:
        got = [other.normal(size=5), other.random_raw(), other.binomial(1000, 0.3, size=5)]
        assert all(np.array_equal(a, b) for a, b in zip(got, expected))
        assert other.name == name


def test_subclasses_survive_pickling():
    s = pickle.loads(pickle.dumps(MT2203(7, member=3)))
    assert type(s) is MT2203 and s.name == "MT2203:3" and repr(s) == "<orv.random.Stream MT2203:3>"


@pytest.mark.parametrize("name", NAMES)
def test_jumped_and_leapfrog(name):
    s = Stream(name, 13)
    expected = s.copy().uniform(size=60)
    try:
        assert np.array_equal(s.jumped(20).uniform(size=40), expected[20:])
        assert s.uniform() == expected[0]
    except ValueError as error:
        assert f"skip(20) of {name}: this generator can't skip" in str(error)
        assert name[:4] in ("R250", "MT19", "MT22", "SFMT")
    s = Stream(name, 13)
    try:
        dealt = [s.leapfrog(k, 3).uniform(size=20) for k in range(3)]
        assert np.array_equal(np.stack(dealt, axis=1).ravel(), expected)
    except ValueError as error:
        assert f"leapfrog(0, 3) of {name}: this generator can't deal" in str(error)
        assert name[:3] not in ("MCG", "WH:")


def test_spawned_streams_differ_and_are_told_by_the_seed():
    for name in NAMES:
        children = Stream(name, 3).spawn(4)
        x = np.array([c.uniform(size=2000) for c in children + [Stream(name, 3)]])
        assert np.abs(np.corrcoef(x) - np.eye(5)).max() < 0.12
        again = Stream(name, 3)
        first = again.spawn(2) + pickle.loads(pickle.dumps(again)).spawn(2)
        assert np.array_equal([c.uniform(size=2000) for c in first], x[:4])
        grandchild = Stream(name, 3).spawn(1)[0].spawn(1)[0]
        assert not any(np.array_equal(grandchild.uniform(size=2000), row) for row in x)
    assert [c.name for c in MT2203(3, member=1022).spawn(2)] == ["MT2203:1023", "MT2203:0"]


def test_seeds():
    assert Stream("mt19937", 5).uniform() == MT19937(np.uint32(5)).uniform() == MT19937([5]).uniform()
    sequence = np.random.SeedSequence(5)
    assert MT19937(sequence).uniform() == MT19937(np.random.SeedSequence(5)).uniform()
    assert MT19937().uniform() != MT19937().uniform()


def test_points_of_low_discrepancy():
    for sequence, witness in ((Sobol(5), st.qmc.Sobol(5, scramble=False)), (Niederreiter(7), None)):
        whole = sequence.copy().points(1023)
        assert whole.shape == (1023, sequence.dimensions)
        if witness is not None:  # the same net, though with other direction numbers
            theirs = witness.random(1024)[1:]
            assert np.array_equal(np.sort(theirs, axis=0), np.sort(whole, axis=0))
        assert np.array_equal(sequence.copy().jumped(100).points(5), whole[100:105])
        assert np.array_equal(sequence.coordinate(2).uniform(size=50), whole[:50, 2])
        sequence.points(10)
        assert np.array_equal(pickle.loads(pickle.dumps(sequence)).points(3), whole[10:13])
        assert st.qmc.discrepancy(whole) < 0.1 * st.qmc.discrepancy(MT19937(1).uniform(size=whole.shape))
    assert Sobol(2).points(3, dtype=np.float32).dtype == np.float32
    assert np.array_equal(Niederreiter(2, [1, 2, 3]).points(20), Niederreiter(2).points(20))  # x, x + 1


# ---- Mistakes -----------------------------------------------------------------------------------

S = MT19937(1)
MISTAKES = [
    (lambda: Stream("MT"), ValueError, "brng: 'MT'; allowed are MCG31M1"),
    (lambda: Stream("Sobol"), ValueError, "classes of their own"),
    (lambda: Stream("MT2203:1024"), ValueError, "members MT2203:0 to MT2203:1023"),
    (lambda: Stream("MT19937:1"), ValueError, "without a member"),
    (lambda: MT19937(-1), ValueError, "seed: -1"),
    (lambda: MT19937("x"), TypeError, "seed: 'x'"),
    (lambda: MT19937([2**32]), ValueError, "words from 0 to 4294967295"),
    (lambda: Sobol(41), ValueError, "dimensions: 41; allowed are whole numbers from 1 to 40"),
    (lambda: S.normal(sd=0), ValueError, "sd: 0; allowed are finite numbers above 0"),
    (lambda: S.normal(np.nan), ValueError, "mean: nan"),
    (lambda: S.normal([1, 2]), TypeError, "mean: .* single number"),
    (lambda: S.normal(method="ziggurat"), ValueError, "'boxmuller', 'boxmuller2', 'icdf'"),
    (lambda: S.normal(dtype=int, size=3), ValueError, "allowed are float64 and float32"),
    (lambda: S.normal(size=-1), ValueError, "size: -1"),
    (lambda: S.normal(out=np.zeros((4, 4)).T[::2]), ValueError, "C-contiguous"),
    (lambda: S.normal(out=np.zeros(3), size=4), ValueError, r"shape of out, \(3,\)"),
    (lambda: S.normal(out=[1.0]), TypeError, "out: list"),
    (lambda: S.poisson(out=np.zeros(3, np.int64)), ValueError, "allowed are int32"),
    (lambda: S.uniform(2, 2), ValueError, "high: 2.0; allowed are numbers above low"),
    (lambda: S.integers(5, 5), ValueError, "high: 5"),
    (lambda: S.binomial(1.5, 0.5), TypeError, "n: 1.5"),
    (lambda: S.binomial(3, 1.5), ValueError, "p: 1.5; allowed are numbers from 0 to 1"),
    (lambda: S.geometric(0), ValueError, "p: 0; allowed are numbers above 0"),
    (lambda: S.hypergeometric(3, 4, 8), ValueError, "nsample: 8"),
    (lambda: S.poisson([1.0, -1.0]), ValueError, "lam"),
    (lambda: S.multivariate_normal([0, 0], [[1, 2], [2, 1]]), ValueError, "positive definite"),
    (lambda: S.multivariate_normal([0, 0], np.eye(3)), ValueError, r"\(2, 2\)"),
    (lambda: Stream.frombytes(b"nothing"), ValueError, "no stream file"),
    (lambda: Stream.frombytes(Sobol(2).tobytes()), ValueError, "Sobol"),
    (lambda: S.__init__(3), RuntimeError, "make another one"),
    (lambda: setattr(S, "state", MT2203(1).state), ValueError, "allowed are states of MT19937"),
    (lambda: Sobol(3).jumped(2**32 - 10).points(20), ValueError, "used up"),
]


@pytest.mark.parametrize("k", range(len(MISTAKES)))
def test_mistakes_are_told(k):
    call, error, message = MISTAKES[k]
    with pytest.raises(error, match=message):
        call()


def test_file_of_the_command_goes_on_here(tmp_path):
    command, path = os.path.join(os.environ["ORV_BUILD"], "bin", "orv"), tmp_path / "s"
    run = subprocess.run([command, "random", "uniform", "--brng", "MRG32K3A", "--seed", "12345", "-n", "2",
                          "--save", path], check=True, capture_output=True, text=True)
    s = Stream("MRG32K3A", 12345)
    assert np.allclose(s.uniform(size=2), np.array(run.stdout.split(), float), rtol=1e-15)
    assert Stream.load(path).uniform() == s.uniform()


def test_module_lists_its_names():
    assert set(orv.random.__all__) <= set(vars(orv.random))
