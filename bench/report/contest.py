# SPDX-License-Identifier: MIT
"""Services whose benchmarks are named WHO/WORK/SHAPE: summary statistics and sorting."""
from .text import number, ratio, table

STATISTICS = {"covariance_one_pass": "covariance"}
OUTLIERS = {"outliers_default": "outliers"}
SORTING = {"radix_sort": "sort", "quicksort": "sort"}
CPP = {"word_one_by_one": "word"}


def of_peers(case, same_work):
    """The case as peers name it: they have one thread, and no choice of method."""
    work, *shape = case.split("/")
    work = work.removesuffix("_two_threads")
    if len(shape) == 4:  # the last of precision, layout, variables, threads
        shape[3] = "1"
    return "/".join([same_work.get(work, work), *shape])


def section(title, text, program, same_work, runs):
    """Our time for each case, and that over each peer's, a table a word size."""
    parts = [f"## {title}\n\n{text}"]
    for preset, run in runs.items():
        peers_of = {}  # case -> peer -> ns
        for name, t in run.element_ns.items():
            who, case = name.split("/", 1)
            if who != "ours":
                peers_of.setdefault(case, {})[who] = t
        rows = [(name.removeprefix("ours/"), run.element_ns[name],
                 peers_of.get(of_peers(name.removeprefix("ours/"), same_work), {}))
                for name in run.of.get(program, []) if name.startswith("ours/")]
        peers = dict.fromkeys(peer for _, _, others in rows for peer in others)
        if rows:
            parts.append(f"### {title}, {preset}\n\n" + table(
                ["case", "ns", *(f"/ {peer}" for peer in peers)],
                [[case, number(t), *(ratio(t, others.get(peer)) for peer in peers)]
                 for case, t, others in rows]))
    return "\n\n".join(parts) if len(parts) > 1 else ""
