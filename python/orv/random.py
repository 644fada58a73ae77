# SPDX-License-Identifier: MIT
"""Random streams and distributions.

    stream = orv.random.Stream("MT2203:5", seed=7)
    x = stream.normal(20, 0.5, size=1000)

Distributions draw from the stream directly, as fast as the library is; the numbers are the same however
a request is split. A stream is also a bit generator of NumPy, so that ``np.random.Generator(stream)``
has all that NumPy knows.

Points of low discrepancy come from ``Sobol`` and ``Niederreiter``.
"""
import math
import threading

import numpy as np

from . import _core

__all__ = ["MCG31M1", "MCG59", "MRG32K3A", "MT19937", "MT2203", "Niederreiter", "R250", "SFMT19937",
           "Sobol", "Stream", "WH", "generators"]

_FAMILIES = {"WH": 273, "MT2203": 1024}
_BRNGS = {name: getattr(_core, f"BRNG_{name}") for name in (
    "MCG31M1", "MCG59", "MRG32K3A", "R250", "WH", "MT19937", "MT2203", "SFMT19937")}
_QUASI = {"Sobol": (_core.BRNG_SOBOL, 40), "Niederreiter": (_core.BRNG_NIEDERR, 318)}
_NAMES = {brng: name for name, brng in _BRNGS.items()} | {
    brng: name for name, (brng, _) in _QUASI.items()}
_INT32 = np.iinfo(np.int32)


def generators():
    """Names of all generators a Stream can have, members of families after a colon."""
    return [f"{name}:0..{_FAMILIES[name] - 1}" if name in _FAMILIES else name for name in _BRNGS]


# ---- Arguments ----------------------------------------------------------------------------------


def _fail(name, value, allowed):
    raise ValueError(f"{name}: {value!r}; allowed are {allowed}")


def _real(name, value, positive=False):
    try:
        number = float(value)
    except (TypeError, ValueError):
        raise TypeError(f"{name}: {value!r}; allowed is a single number") from None
    if not math.isfinite(number) or (positive and number <= 0):
        _fail(name, value, "finite numbers above 0" if positive else "finite numbers")
    return number


def _probability(name, value, least_excluded=False):
    number = _real(name, value)
    if not 0 <= number <= 1 or (least_excluded and number == 0):
        _fail(name, value, "numbers above 0 and up to 1" if least_excluded else "numbers from 0 to 1")
    return number


def _whole(name, value, least, largest):
    try:
        number = value.__index__()
    except AttributeError:
        raise TypeError(f"{name}: {value!r}; allowed is a whole number") from None
    if not least <= number <= largest:
        _fail(name, value, f"whole numbers from {least} to {largest}")
    return number


def _brng(name):
    text, colon, member = str(name).partition(":")
    known = {key.lower(): key for key in _BRNGS}
    if text.lower() not in known:
        hint = "; Sobol and Niederreiter are classes of their own" if text in _QUASI else ""
        _fail("brng", name, ", ".join(generators()) + hint)
    text = known[text.lower()]
    members = _FAMILIES.get(text, 1)
    if not colon:
        return _BRNGS[text]
    if not member.isdigit() or int(member) >= members:
        _fail("brng", name, f"members {text}:0 to {text}:{members - 1}" if members > 1
              else f"{text} without a member")
    return _BRNGS[text] + int(member)


def _words(seed):
    """The seed words of a whole number (low word first) or of a sequence of words."""
    if hasattr(seed, "__index__"):
        number = seed.__index__()
        if number < 0:
            _fail("seed", seed, "whole numbers from 0 on")
        count = max(1, -(-number.bit_length() // 32))
        return np.array([number >> 32 * k & 0xFFFFFFFF for k in range(count)], np.uint32)
    words = np.asarray(seed)
    if words.ndim != 1 or not words.size or not np.issubdtype(words.dtype, np.integer):
        raise TypeError(f"seed: {seed!r}; allowed are None, a whole number, a sequence of words of 32 bits, "
                        "and numpy.random.SeedSequence")
    if words.min() < 0 or words.max() > 0xFFFFFFFF:
        _fail("seed", seed, "words from 0 to 4294967295")
    return np.ascontiguousarray(words, np.uint32)


def _dtype(dtype, allowed):
    found = np.dtype(dtype)
    if found not in [np.dtype(a) for a in allowed]:
        _fail("dtype", dtype, " and ".join(np.dtype(a).name for a in allowed))
    return found


def _place(size, dtype, allowed, out):
    """The array that numbers go to, and whether a single number is wanted."""
    if out is None:
        try:
            shape = () if size is None else size
            return np.empty(shape, _dtype(dtype, allowed)), size is None
        except (TypeError, ValueError) as error:
            raise type(error)(f"size: {size!r}, dtype: {dtype!r}; {error}") from None
    if not isinstance(out, np.ndarray):
        raise TypeError(f"out: {type(out).__name__}; allowed is a NumPy array")
    _dtype(out.dtype, allowed)
    if not (out.flags.writeable and out.flags.c_contiguous and out.flags.aligned and out.dtype.isnative):
        _fail("out", f"an array of strides {out.strides}", "writeable, C-contiguous arrays")
    if size is not None and out.shape != (tuple(size) if np.iterable(size) else (size,)):
        _fail("size", size, f"None and the shape of out, {out.shape}")
    return out, False


def _check(status, what):
    if status >= 0:
        return
    if status == _core.RNG_NO_MEMORY:
        raise MemoryError(what)
    reasons = {_core.RNG_QRNG_EXHAUSTED: "the sequence's points are used up",
               _core.RNG_LEAPFROG_UNSUPPORTED: "this generator can't deal its numbers out",
               _core.RNG_SKIPAHEAD_UNSUPPORTED: "this generator can't skip, or not so far"}
    raise ValueError(f"{what}: {reasons.get(status, f'the library answered {status}')}")


def _handle(made, what):
    """A stream's capsule, unless the library answered with a status."""
    if isinstance(made, int):
        _check(made, what)
    return made


# ---- Distributions ------------------------------------------------------------------------------

_FLOATS = (np.float64, np.float32)
_GAUSSIAN = {"boxmuller": 0, "boxmuller2": 1, "icdf": 2}
_POISSON = {"ptpe": 0, "poisnorm": 1}


class _Distributions:
    """All distributions of a stream `_stream` under a lock `lock`.

    Each takes `size`, a number or a shape, None for a single number, or an array `out`; laws of real
    numbers are drawn in doubles or, with dtype=np.float32, in floats."""

    __slots__ = ()

    def _draw(self, law, parameters, size, out, dtype=np.int32, allowed=(np.int32,), method=0):
        place, single = _place(size, dtype, allowed, out)
        with self.lock:
            status = _core.draw(self._stream, law, method, place, parameters, place.size)
        _check(status, law)
        return place[()] if single else place

    def _real_law(self, law, parameters, size, dtype, out, method=0):
        return self._draw(law, parameters, size, out, dtype, _FLOATS, method)

    def uniform(self, low=0.0, high=1.0, size=None, dtype=np.float64, out=None, accurate=False):
        """Uniform on [low, high). Rounding may give `high` itself; with `accurate` nothing beyond it."""
        low, high = _real("low", low), _real("high", high)
        if not low < high:
            _fail("high", high, f"numbers above low, {low!r}")
        return self._real_law("uniform", (low, high), size, dtype, out,
                              _core.RNG_ACCURATE if accurate else 0)

    def random(self, size=None, dtype=np.float64, out=None):
        """Uniform on [0, 1)."""
        return self.uniform(0.0, 1.0, size, dtype, out)

    def exponential(self, scale=1.0, size=None, loc=0.0, dtype=np.float64, out=None):
        """Exponential with mean loc + scale."""
        return self._real_law("exponential", (_real("loc", loc), _real("scale", scale, True)), size,
                              dtype, out)

    def laplace(self, loc=0.0, scale=1.0, size=None, dtype=np.float64, out=None):
        """Laplace with mean loc and deviation scale sqrt(2)."""
        return self._real_law("laplace", (_real("loc", loc), _real("scale", scale, True)), size, dtype,
                              out)

    def weibull(self, shape, scale=1.0, size=None, loc=0.0, dtype=np.float64, out=None):
        """Weibull: loc + scale (-ln u)^(1/shape)."""
        return self._real_law("weibull", (_real("shape", shape, True), _real("loc", loc),
                                          _real("scale", scale, True)), size, dtype, out)

    def cauchy(self, loc=0.0, scale=1.0, size=None, dtype=np.float64, out=None):
        """Cauchy with median loc and quartiles loc - scale and loc + scale."""
        return self._real_law("cauchy", (_real("loc", loc), _real("scale", scale, True)), size, dtype,
                              out)

    def rayleigh(self, scale=1.0, size=None, loc=0.0, dtype=np.float64, out=None):
        """Rayleigh, the length of a vector of two normal numbers of deviation scale."""
        return self._real_law("rayleigh", (_real("loc", loc), _real("scale", scale, True) * math.sqrt(2)),
                              size, dtype, out)

    def lognormal(self, mean=0.0, sigma=1.0, size=None, loc=0.0, scale=1.0, dtype=np.float64, out=None):
        """loc + scale e^g, g normal with that mean and deviation sigma."""
        return self._real_law("lognormal", (_real("mean", mean), _real("sigma", sigma, True),
                                            _real("loc", loc), _real("scale", scale, True)), size, dtype,
                              out)

    def gumbel(self, loc=0.0, scale=1.0, size=None, smallest=False, dtype=np.float64, out=None):
        """Gumbel of largest values, loc - scale ln(-ln u), or of smallest ones, loc + scale ln(-ln u)."""
        scale = _real("scale", scale, True)
        return self._real_law("gumbel", (_real("loc", loc), scale if smallest else -scale), size, dtype,
                              out)

    def normal(self, mean=0.0, sd=1.0, size=None, method="boxmuller2", dtype=np.float64, out=None):
        """Normal, by the sines of pairs ("boxmuller"), both numbers of pairs ("boxmuller2") or
        inversion ("icdf", quickest)."""
        if method not in _GAUSSIAN:
            _fail("method", method, ", ".join(map(repr, _GAUSSIAN)))
        return self._real_law("normal", (_real("mean", mean), _real("sd", sd, True)), size, dtype, out,
                              _GAUSSIAN[method])

    def multivariate_normal(self, mean, cov, size=None, method="boxmuller2", dtype=np.float64):
        """Vectors of a normal law, in the last axis: size + (len(mean),)."""
        if method not in _GAUSSIAN:
            _fail("method", method, ", ".join(map(repr, _GAUSSIAN)))
        dtype = _dtype(dtype, _FLOATS)
        mean = np.ascontiguousarray(mean, dtype)
        cov = np.asarray(cov, np.float64)
        if mean.ndim != 1 or not mean.size or not np.isfinite(mean).all():
            _fail("mean", mean, "vectors of finite numbers")
        if cov.shape != (mean.size, mean.size):
            _fail("cov", f"an array of shape {cov.shape}", f"the shape {(mean.size, mean.size)}")
        try:
            if not np.array_equal(cov, cov.T):
                raise np.linalg.LinAlgError
            factor = np.ascontiguousarray(np.linalg.cholesky(cov), dtype)
        except np.linalg.LinAlgError:
            _fail("cov", cov, "symmetric, positive definite matrices")
        lead = () if size is None else tuple(size) if np.iterable(size) else (size,)
        place, _ = _place(lead + (mean.size,), dtype, _FLOATS, None)
        with self.lock:
            status = _core.draw_normal_vectors(self._stream, _GAUSSIAN[method], place, mean, factor)
        _check(status, "multivariate_normal")
        return place

    def gamma(self, shape, scale=1.0, size=None, loc=0.0, dtype=np.float64, out=None):
        """Gamma with mean loc + shape scale."""
        return self._real_law("gamma", (_real("shape", shape, True), _real("loc", loc),
                                        _real("scale", scale, True)), size, dtype, out)

    def beta(self, a, b, size=None, loc=0.0, scale=1.0, dtype=np.float64, out=None):
        """Beta of shapes a and b on [loc, loc + scale]."""
        return self._real_law("beta", (_real("a", a, True), _real("b", b, True), _real("loc", loc),
                                       _real("scale", scale, True)), size, dtype, out)

    def integers(self, low, high=None, size=None, out=None):
        """Whole numbers from low on, below high; with one bound from 0 on, below that."""
        low, high = (0, low) if high is None else (low, high)
        low = _whole("low", low, _INT32.min, _INT32.max)
        return self._draw("integers", (low, _whole("high", high, low + 1, _INT32.max)), size, out)

    def bernoulli(self, p, size=None, out=None):
        """1 with probability p, else 0."""
        return self._draw("bernoulli", (_probability("p", p),), size, out)

    def geometric(self, p, size=None, out=None):
        """Failures before the first success of trials with probability p (NumPy counts trials, one
        more)."""
        return self._draw("geometric", (_probability("p", p, True),), size, out)

    def binomial(self, n, p, size=None, out=None):
        """Successes in n trials with probability p."""
        return self._draw("binomial", (_whole("n", n, 0, _INT32.max), _probability("p", p)), size, out)

    def poisson(self, lam=1.0, size=None, method="ptpe", out=None):
        """Poisson with mean lam: exactly ("ptpe") or nearly so, from normal numbers ("poisnorm"). An
        array of means gives a number for each, by the second method."""
        if method not in _POISSON:
            _fail("method", method, ", ".join(map(repr, _POISSON)))
        if np.ndim(lam) == 0:
            return self._draw("poisson", (_real("lam", lam, True),), size, out, method=_POISSON[method])
        means = np.ascontiguousarray(lam, np.float64)
        if not (np.isfinite(means).all() and (means > 0).all()):
            _fail("lam", lam, "finite numbers above 0")
        if size is not None:
            means = np.ascontiguousarray(np.broadcast_to(means, size))
        place, _ = _place(means.shape, np.int32, (np.int32,), out)
        if place.shape != means.shape:
            _fail("out", f"an array of shape {place.shape}", f"the shape of lam, {means.shape}")
        with self.lock:
            status = _core.draw_poisson_means(self._stream, place, means)
        _check(status, "poisson")
        return place

    def hypergeometric(self, ngood, nbad, nsample, size=None, out=None):
        """Good ones in a sample of nsample from ngood good and nbad bad ones."""
        good = _whole("ngood", ngood, 0, _INT32.max)
        bad = _whole("nbad", nbad, 0, _INT32.max - good)
        sample = _whole("nsample", nsample, 0, good + bad)
        return self._draw("hypergeometric", (good + bad, sample, good), size, out)

    def negative_binomial(self, n, p, size=None, out=None):
        """Failures before the n-th success of trials with probability p, for any n above 0."""
        return self._draw("negative_binomial", (_real("n", n, True), _probability("p", p, True)), size,
                          out)

    def bits(self, size):
        """The generator's own elements: words of 32 or 64 bits, or in the last axis four words of 32."""
        count = int(np.prod(size))
        width = _core.generator(_core.stream_brng(self._stream))[0]
        shape = tuple(size) if np.iterable(size) else (size,)
        out = np.empty(shape + ((4,) if width == 16 else ()), np.uint64 if width == 8 else np.uint32)
        with self.lock:
            status = _core.draw(self._stream, "bits", 0, out.view(np.uint32), (), count)
        _check(status, "bits")
        return out

    # ---- The stream itself ----------------------------------------------------------------------

    def skip(self, n):
        """Passes over n elements of the generator. Returns the stream."""
        n = _whole("n", n, 0, 2**63 - 1)
        with self.lock:
            status = _core.stream_skip(self._stream, n)
        _check(status, f"skip({n}) of {self.name}")
        return self

    def tobytes(self):
        """What a stream file holds: the stream goes on exactly from it, here or in C."""
        with self.lock:
            return _handle(_core.stream_save(self._stream), "tobytes")

    def save(self, path):
        """Writes a stream file."""
        with open(path, "wb") as file:
            file.write(self.tobytes())

    @property
    def name(self):
        """The generator's name, as Stream takes it."""
        brng = _core.stream_brng(self._stream)
        family = max(base for base in _NAMES if base <= brng)
        text = _NAMES[family]
        return f"{text}:{brng - family}" if text in _FAMILIES else text


# ---- Streams ------------------------------------------------------------------------------------


class Stream(_Distributions, np.random.BitGenerator):
    """A generator and its state.

    `brng` is its name, such as "MT19937" or "MT2203:5", see generators(). `seed` is a whole number or a
    sequence of words, which the library gets as they are, a numpy.random.SeedSequence, or None for a seed
    that differs each time."""

    def __init__(self, brng="MT19937", seed=None):
        brng = _brng(brng)
        sequence = seed if isinstance(seed, np.random.SeedSequence) else None
        if seed is None:
            sequence = np.random.SeedSequence()
        if sequence is not None:
            words = sequence.generate_state(min(8, max(2, _core.generator(brng)[1])))
        else:
            words = _words(seed)
            sequence = np.random.SeedSequence([int(word) for word in words])
        self._begin(_handle(_core.stream_new(brng, words), "seed"), sequence)

    def _begin(self, stream, sequence):
        if hasattr(self, "_stream"):  # NumPy's generators hold its address
            raise RuntimeError("a stream can't be made anew: make another one, or set its state")
        np.random.BitGenerator.__init__(self, sequence)
        self._sequence = sequence
        self._stream = stream
        _core.connect(stream, self.capsule)

    @classmethod
    def _of(cls, stream, sequence=None):
        made = cls.__new__(cls)
        made._begin(stream, sequence if sequence is not None else np.random.SeedSequence())
        return made

    def copy(self):
        """An independent stream that goes on as this one."""
        with self.lock:
            stream = _handle(_core.stream_copy(self._stream), "copy")
        return self._of(stream, self._sequence)

    def jumped(self, n):
        """A copy that has passed over n elements of the generator."""
        return self.copy().skip(n)

    def leapfrog(self, k, n):
        """A copy that delivers each n-th element from the k-th on: one of n that share the sequence."""
        n = _whole("n", n, 1, _INT32.max)
        made = self.copy()
        k = _whole("k", k, 0, n - 1)
        _check(_core.stream_leapfrog(made._stream, k, n), f"leapfrog({k}, {n}) of {self.name}")
        return made

    def spawn(self, n):
        """n streams that are independent of this one and of each other, with seeds made from this
        one's; of the families MT2203 and WH each has another member, too."""
        n = _whole("n", n, 0, 2**31 - 1)
        text, colon, member = self.name.partition(":")
        first = self._sequence.n_children_spawned + 1
        names = [f"{text}:{(int(member) + first + k) % _FAMILIES[text]}" if colon else text
                 for k in range(n)]
        made = []
        for name, sequence in zip(names, self._sequence.spawn(n)):
            child = Stream(name, sequence)
            made.append(type(self)._of(child._stream, sequence))
        return made

    @classmethod
    def frombytes(cls, data):
        """The stream of a file's bytes."""
        made = Stream._of(_handle(_core.stream_load(bytes(data)), "frombytes: no stream file"))
        if _core.stream_brng(made._stream) >= _core.BRNG_SOBOL and made.name in _QUASI:
            raise ValueError(f"frombytes: a file of {made.name}, which is no stream of random numbers")
        return made

    @classmethod
    def load(cls, path):
        """The stream of a file that save, the library or its command wrote."""
        with open(path, "rb") as file:
            return cls.frombytes(file.read())

    @property
    def state(self):
        """The state as NumPy's bit generators give it: the generator's name and a file's bytes."""
        return {"bit_generator": self.name, "state": self.tobytes()}

    @state.setter
    def state(self, value):
        if not isinstance(value, dict) or value.get("bit_generator") != self.name:
            _fail("state", value, f"states of {self.name}")
        other = _handle(_core.stream_load(value["state"]), "state")
        with self.lock:
            _check(_core.stream_replace(self._stream, other), "state")

    def __getstate__(self):
        return self.state

    def __setstate__(self, state):
        self.state = state

    def __reduce__(self):
        return _restore, (type(self), self.tobytes(), self._sequence)

    def __copy__(self):
        return self.copy()

    def __deepcopy__(self, memo):
        return self.copy()

    def __repr__(self):
        return f"<orv.random.Stream {self.name}>"


def _restore(cls, data, sequence):
    return cls._of(_handle(_core.stream_load(data), "pickle"), sequence)


def _single(name, text):
    def __init__(self, seed=None):
        Stream.__init__(self, name, seed)

    return type(name, (Stream,), {"__init__": __init__, "__doc__": text, "__module__": __name__})


def _family(name, text):
    def __init__(self, seed=None, member=0):
        member = _whole("member", member, 0, _FAMILIES[name] - 1)
        Stream.__init__(self, f"{name}:{member}", seed)

    return type(name, (Stream,), {"__init__": __init__, "__doc__": text, "__module__": __name__})


MCG31M1 = _single("MCG31M1", "Multiplicative, modulus 2^31 - 1 (L'Ecuyer 1999).")
MCG59 = _single("MCG59", "Multiplicative, modulus 2^59.")
MRG32K3A = _single("MRG32K3A", "Combined multiple recursive (L'Ecuyer 1999).")
R250 = _single("R250", "Shift register of 250 words (Kirkpatrick and Stoll 1981).")
MT19937 = _single("MT19937", "Mersenne Twister (Matsumoto and Nishimura 1998).")
SFMT19937 = _single("SFMT19937", "SIMD-oriented Fast Mersenne Twister (Saito and Matsumoto 2008).")
WH = _family("WH", "273 generators of four combined congruential ones (Maclaren 1989).")
MT2203 = _family("MT2203", "1024 independent Mersenne Twisters (Matsumoto and Nishimura 2000).")


# ---- Points of low discrepancy ------------------------------------------------------------------


class _Points(_Distributions):
    """A sequence of points in the unit cube of `dimensions`.

    `data` are words of the user's own after the first two seed words (polynomials, initial numbers,
    direction numbers): their form and then the numbers, as orv/zok.h tells."""

    __slots__ = ("_stream", "lock", "dimensions", "_coordinate")
    _brng, _most = 0, 0

    def __init__(self, dimensions, data=None):
        most = self._most if data is None else _INT32.max
        self.dimensions = _whole("dimensions", dimensions, 1, most)
        words = [self.dimensions] if data is None else [self.dimensions, 1, *_words(data)]
        self._begin(_handle(_core.stream_new(self._brng, np.array(words, np.uint32)), "dimensions"),
                    self.dimensions, None)

    def _begin(self, stream, dimensions, coordinate):
        self._stream, self.dimensions, self._coordinate = stream, dimensions, coordinate
        self.lock = threading.Lock()

    def points(self, n, dtype=np.float64):
        """The next n points, an array of shape (n, dimensions)."""
        if self._coordinate is not None:
            raise ValueError(f"points: this sequence delivers coordinate {self._coordinate} only")
        n = _whole("n", n, 0, 2**32)
        return self.uniform(size=(n, self.dimensions), dtype=dtype)

    def copy(self):
        """An independent sequence that goes on as this one."""
        with self.lock:
            stream = _handle(_core.stream_copy(self._stream), "copy")
        made = type(self).__new__(type(self))
        made._begin(stream, self.dimensions, self._coordinate)
        return made

    def jumped(self, n):
        """A copy that has passed over n points."""
        return self.copy().skip(_whole("n", n, 0, 2**32) * self.dimensions)

    def coordinate(self, k):
        """A copy that delivers coordinate k, from 0, of each point."""
        k = _whole("k", k, 0, self.dimensions - 1)
        made = self.copy()
        _check(_core.stream_leapfrog(made._stream, k, 0x7FFFFFFF), f"coordinate({k})")
        made._coordinate = k
        return made

    def __reduce__(self):
        return _restore_points, (type(self), self.tobytes(), self.dimensions, self._coordinate)

    def __repr__(self):
        return f"<orv.random.{type(self).__name__} in {self.dimensions} dimensions>"


def _restore_points(cls, data, dimensions, coordinate):
    made = cls.__new__(cls)
    made._begin(_handle(_core.stream_load(data), "pickle"), dimensions, coordinate)
    return made


class Sobol(_Points):
    __doc__ = "Sobol's sequence in up to 40 dimensions (1967).\n\n" + _Points.__doc__
    __slots__ = ()
    _brng, _most = _QUASI["Sobol"]


class Niederreiter(_Points):
    __doc__ = "Niederreiter's sequence in up to 318 dimensions (1988).\n\n" + _Points.__doc__
    __slots__ = ()
    _brng, _most = _QUASI["Niederreiter"]
