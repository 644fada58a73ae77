#!/usr/bin/python3
# SPDX-License-Identifier: MIT
"""Times the Python package beside NumPy, pandas and the C library, in one run, interleaved.

    PYTHONPATH=build/x86-64/python bench/bench_python.py [--library build/x86-64/lib/liborv_qem_avx.so]

Prints a line of JSON for each case: ns an element, and the ratio to each peer, below 1 where we are
faster. NumPy's loops for AVX-512 are switched off, so that both have vectors of one width. Times are the
least of several.
"""
import argparse
import ctypes
import json
import os
import subprocess
import sys
import time

WIDE = "AVX512F AVX512CD AVX512_KNL AVX512_KNM AVX512_SKX AVX512_CLX AVX512_CNL AVX512_ICL"
os.environ.setdefault("NPY_DISABLE_CPU_FEATURES", WIDE)
import warnings  # noqa: E402  the setting comes first

with warnings.catch_warnings():
    warnings.simplefilter("ignore")  # of features that this machine doesn't have
    import numpy as np  # noqa: E402

import orv  # noqa: E402

N = 1_000_000
ROWS, COLUMNS = 1_000_000, 10


def least_times(works, repetitions):
    """Seconds of each work; they take turns, so that what disturbs one disturbs all."""
    times = {name: [] for name in works}
    for _ in range(repetitions):
        for name, work in works.items():
            start = time.perf_counter()
            work()
            times[name].append(time.perf_counter() - start)
    return {name: min(values) for name, values in times.items()}


def report(case, elements, works, repetitions):
    times = least_times(works, repetitions)
    ours = times.pop("orv")
    line = {"case": case, "ns": round(1e9 * ours / elements, 3)}
    line |= {f"/ {name}": round(ours / seconds, 3) for name, seconds in times.items()}
    print(json.dumps(line), flush=True)


def functions(library, repetitions):
    """Beside NumPy's functions and the C calls, all into one vector: where it lies makes a difference."""
    x, y = np.random.default_rng(1).uniform(0.1, 10, (2, N))
    out = np.zeros(N)
    cases = [("exp", "Exp", 1), ("log", "Ln", 1), ("sin", "Sin", 1), ("power", "Pow", 2), ("cbrt", "Cbrt", 1),
             ("arctan2", "Atan2", 2), ("tanh", "Tanh", 1)]
    for name, entry, count in cases:
        operands = (x, y)[:count]
        c_function = getattr(library, f"_qemd{entry}_HA")
        pointers = [ctypes.c_void_p(a.ctypes.data) for a in (*operands, out)]
        ours, numpys = getattr(orv, name), getattr(np, name)
        works = {"orv": lambda: ours(*operands, out=out), "numpy": lambda: numpys(*operands, out=out),
                 "C": lambda: c_function(ctypes.c_int32(N), *pointers)}
        report(f"{name}/float64/{N}", N, works, repetitions)
        works["C"]()
        if not np.array_equal(out, ours(*operands)):
            sys.exit(f"{name} is not what the C function gives")


def random_numbers(repetitions):
    stream = orv.random.MT19937(1)
    twister, default = np.random.Generator(np.random.MT19937(1)), np.random.default_rng(1)
    out, theirs = np.zeros((2, N))
    for method in ("boxmuller2", "icdf"):
        report(f"normal/{method}/{N}", N, {
            "orv": lambda: stream.normal(size=None, out=out, method=method),
            "numpy MT19937": lambda: twister.standard_normal(out=theirs),
            "numpy PCG64": lambda: default.standard_normal(out=theirs)}, repetitions)


def statistics(repetitions):
    import pandas

    numbers = np.random.default_rng(1).normal(3, 2, (ROWS, COLUMNS))
    for order in "CF":
        x = np.array(numbers, order=order)
        frame = pandas.DataFrame(x)
        elements = ROWS * COLUMNS
        report(f"describe/{order}/{ROWS}x{COLUMNS}", elements,
               {"orv": lambda: orv.stats.describe(x), "pandas": frame.describe}, repetitions)
        report(f"cov/{order}/{ROWS}x{COLUMNS}", elements,
               {"orv": lambda: orv.stats.cov(x), "numpy": lambda: np.cov(x, rowvar=False)}, repetitions)
        report(f"quantile/{order}/{ROWS}x{COLUMNS}", elements, {
            "orv": lambda: orv.stats.quantile(x, [0.25, 0.5, 0.75]),
            "numpy": lambda: np.quantile(x, [0.25, 0.5, 0.75], axis=0)}, repetitions)


def imports(repetitions):
    """Milliseconds beyond NumPy's own, by the clock and of the processor."""
    code = ("import numpy, time; a = time.perf_counter(), time.process_time(); import orv; "
            "print(*(1000 * (t - s) for s, t in zip(a, (time.perf_counter(), time.process_time()))))")
    pairs = [subprocess.run([sys.executable, "-W", "ignore", "-c", code], check=True, capture_output=True,
                            text=True).stdout.split() for _ in range(repetitions)]
    print(json.dumps({"case": "import", "ms": round(min(float(wall) for wall, _ in pairs), 1),
                      "processor ms": round(min(float(own) for _, own in pairs), 1)}), flush=True)


def main():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--repetitions", type=int, default=9)
    parser.add_argument("--library", default="build/x86-64/lib/liborv_qem_avx.so")
    chosen = parser.parse_args()
    functions(ctypes.CDLL(chosen.library), 3 * chosen.repetitions)
    random_numbers(chosen.repetitions)
    statistics(max(3, chosen.repetitions // 3))
    imports(chosen.repetitions)


if __name__ == "__main__":
    main()
