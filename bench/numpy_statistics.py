#!/usr/bin/python3
# SPDX-License-Identifier: MIT
"""Times NumPy's mean, cov, percentile and sort on the tables of bench_statistics.cpp.

Prints a line of JSON for each: name and ns an element, the least of several repetitions. NumPy's own
threads, if its BLAS has any, are kept to one.
"""
import argparse
import json
import os
import time

for library in ("OPENBLAS", "OMP", "BLIS"):
    os.environ[f"{library}_NUM_THREADS"] = "1"
import numpy as np  # noqa: E402  the settings come first

ELEMENTS = 10_000_000
COLUMN = 1_000_000
ORDERS = [1, 5, 10, 25, 50, 75, 90, 95, 99]  # in percent


def least_time(work, repetitions):
    times = []
    for _ in range(repetitions):
        start = time.perf_counter()
        work()
        times.append(time.perf_counter() - start)
    return min(times)


def works(precision):
    """Name, elements, function. The tables are views of the same numbers."""
    numbers = np.random.default_rng(1).random(ELEMENTS, dtype=precision)
    letter = "d" if precision is np.float64 else "s"
    for p in (3, 10, 50, 200):
        n = ELEMENTS // p
        for layout, table in (("columns", numbers[:n * p].reshape(n, p)),
                              ("rows", numbers[:n * p].reshape(p, n).T)):
            shape = f"{letter}/{layout}/{p}/1"
            yield (f"numpy/covariance/{shape}", n * p,
                   lambda t=table: np.cov(t, rowvar=False, dtype=precision))
            if p == 10:
                yield f"numpy/mean/{shape}", n * p, lambda t=table: t.mean(axis=0)
                yield (f"numpy/minmax/{shape}", n * p,
                       lambda t=table: (t.min(axis=0), t.max(axis=0)))
    column, shape = numbers[:COLUMN], f"{letter}/columns/1/1"
    yield f"numpy/quantiles/{shape}", COLUMN, lambda: np.percentile(column, ORDERS)
    yield f"numpy/order_statistics/{shape}", COLUMN, lambda: np.sort(column)


def main():
    parser = argparse.ArgumentParser(
        description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--repetitions", type=int, default=7)
    chosen = parser.parse_args()
    for precision in (np.float64, np.float32):
        for name, elements, work in works(precision):
            ns = least_time(work, chosen.repetitions) * 1e9 / elements
            print(json.dumps({"name": name, "ns": round(ns, 4)}), flush=True)


if __name__ == "__main__":
    main()
