#!/usr/bin/python3
# SPDX-License-Identifier: MIT
"""Times NumPy's distributions on the cases of bench_distributions.cpp.

Prints a line of JSON for each: name and ns a number, the least of several repetitions. The generator
is NumPy's MT19937, as ours and the other peers' is.
"""
import argparse
import json
import time

import numpy as np

SIZES = (1000, 1_000_000)
GAUSSIAN = ("gaussian_by_sines", "gaussian_by_pairs", "gaussian_by_inversion")
GAMMA = (0.3, 0.8, 1, 2.5, 20)
BETA = ((0.3, 0.3), (0.8, 2), (2, 3), (20, 30))
POISSON = (0.5, 5, 50, 1e4, 1e8)
BINOMIAL = ((10, 0.5), (100, 0.1), (10**4, 0.3), (10**9, 0.5))
HYPERGEOMETRIC = ((50, 10, 20), (1000, 120, 300), (10**5, 1000, 50000), (9 * 10**8, 10**6, 5 * 10**8))
NEGBINOMIAL = ((3, 0.5), (10.5, 0.2), (0.5, 1e-4), (100, 0.1), (1000, 1e-3))
GEOMETRIC = (0.5, 0.1, 1e-3)


def least_time(work, calls, repetitions):
    times = []
    for _ in range(repetitions):
        start = time.perf_counter()
        for _ in range(calls):
            work()
        times.append((time.perf_counter() - start) / calls)
    return min(times)


def laws(g):
    """Name, precision, and the function of a size."""
    for precision, t in (("double", np.float64), ("float", np.float32)):
        yield "uniform", precision, lambda n, t=t: g.random(n, dtype=t)
        yield "exponential", precision, lambda n, t=t: g.standard_exponential(n, dtype=t)
        for law in GAUSSIAN:
            yield law, precision, lambda n, t=t: g.standard_normal(n, dtype=t)
        for alpha in GAMMA:
            yield (f"gamma_{alpha:g}", precision,
                   lambda n, t=t, alpha=alpha: g.standard_gamma(alpha, n, dtype=t))
    yield "laplace", "double", lambda n: g.laplace(0, 1, n)
    yield "weibull", "double", lambda n: g.weibull(2.5, n)
    yield "cauchy", "double", g.standard_cauchy
    yield "rayleigh", "double", lambda n: g.rayleigh(1, n)
    yield "lognormal", "double", lambda n: g.lognormal(0, 0.5, n)
    yield "gumbel", "double", lambda n: g.gumbel(0, 1, n)
    for p, q in BETA:
        yield f"beta_{p:g}_{q:g}", "double", lambda n, p=p, q=q: g.beta(p, q, n)
    yield "bernoulli", "int", lambda n: g.binomial(1, 0.3, n)
    yield "integers", "int", lambda n: g.integers(0, 1000, n, dtype=np.int32)
    for p in GEOMETRIC:
        yield f"geometric_{p:g}", "int", lambda n, p=p: g.geometric(p, n)
    for mean in POISSON:
        for way in ("poisson", "poisson_by_gaussians"):
            yield f"{way}_{mean:g}", "int", lambda n, mean=mean: g.poisson(mean, n)
    for trials, p in BINOMIAL:
        yield (f"binomial_{trials:g}_{p:g}", "int",
               lambda n, trials=trials, p=p: g.binomial(trials, p, n))
    for lot, sample, marked in HYPERGEOMETRIC:
        yield (f"hypergeometric_{lot:g}_{sample:g}_{marked:g}", "int",
               lambda n, a=marked, b=lot - marked, s=sample: g.hypergeometric(a, b, s, n))
    for a, p in NEGBINOMIAL:
        yield f"negbinomial_{a:g}_{p:g}", "int", lambda n, a=a, p=p: g.negative_binomial(a, p, n)


def main():
    parser = argparse.ArgumentParser(
        description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--repetitions", type=int, default=7)
    chosen = parser.parse_args()
    generator = np.random.Generator(np.random.MT19937(1))
    for law, precision, draw in laws(generator):
        for n in SIZES:
            ns = least_time(lambda: draw(n), max(1, 100_000 // n), chosen.repetitions) * 1e9 / n
            print(json.dumps({"name": f"numpy/{law}/{precision}/{n}", "ns": round(ns, 4)}),
                  flush=True)


if __name__ == "__main__":
    main()
