#!/usr/bin/python3
# SPDX-License-Identifier: MIT
"""Times statistics of random arrays over Dask, on worker processes of this machine.

    PYTHONPATH=build/x86-64/python bench/bench_distributed.py [--values 1e8] [--workers 1 2]

Prints a line of JSON for each case: seconds, and the most memory that a worker held beyond what it had at
the start, in MiB. The numbers are drawn where they are used, and never all in memory. All cases give the
same bits for every number of workers, or the program fails.
"""
import argparse
import json
import os
import resource
import time

os.environ.setdefault("ORV_NUM_THREADS", "1")  # workers are the threads
from distributed import Client, LocalCluster, wait  # noqa: E402

import orv.distributed  # noqa: E402

COLUMNS = 10


def peak():
    return resource.getrusage(resource.RUSAGE_SELF).ru_maxrss / 1024


def cases(values, block):
    x = orv.distributed.random_array("normal", (values // COLUMNS, COLUMNS),
                                     chunks=(block // COLUMNS, COLUMNS), seed=1, mean=3, sd=2)
    yield "sum, by Dask", lambda: x.sum(axis=0).compute()
    yield "describe without quantiles", lambda: orv.distributed.describe(x, quantiles=())
    yield "describe", lambda: orv.distributed.describe(x)
    yield "cov", lambda: orv.distributed.cov(x)
    yield "quantile, epsilon 1e-4", lambda: orv.distributed.quantile(x, [0.1, 0.5, 0.9], 1e-4)


def bits(result):
    return b"".join(part.tobytes() for part in (result[2:] if isinstance(result, tuple) else [result]))


def main():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--values", type=float, default=1e8)
    parser.add_argument("--block", type=float, default=1e6)
    parser.add_argument("--workers", type=int, nargs="+", default=[1, 2])
    chosen = parser.parse_args()
    seen = {}
    for workers in chosen.workers:
        for name, run in cases(int(chosen.values), int(chosen.block)):
            with LocalCluster(n_workers=workers, threads_per_worker=1, processes=True,
                              dashboard_address=None) as cluster, Client(cluster) as client:
                wait(client.map(lambda k: orv.distributed.random_array("normal", 10).compute(
                    scheduler="synchronous"), range(4 * workers)))
                before = max(client.run(peak).values())
                start = time.perf_counter()
                result = run()
                seconds = time.perf_counter() - start
                memory = max(client.run(peak).values()) - before
            print(json.dumps({"case": name, "values": chosen.values, "block": chosen.block,
                              "workers": workers, "seconds": round(seconds, 2),
                              "MiB a worker": round(memory)}), flush=True)
            if not name.startswith("sum") and seen.setdefault(name, bits(result)) != bits(result):
                raise SystemExit(f"{name}: other bits with {workers} workers")


if __name__ == "__main__":
    main()
