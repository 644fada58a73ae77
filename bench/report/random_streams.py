# SPDX-License-Identifier: MIT
"""The generators of random streams, beside those of other libraries."""
from .text import number, ratio, table

SIZES = (1000, 1000000)
FLAVOURS = r"(words|doubles|floats)"
# Ours, and what its bytes a second are held against.
PAIRS = (
    ("ours/MT19937_words", "std/mt19937_words"),
    ("ours/MT19937_words", "gsl/mt19937_words"),
    ("ours/MT19937_doubles", "std/mt19937_doubles"),
    ("ours/MT19937_doubles", "ours/MT19937_words"),
    ("ours/MT2203_doubles", "ours/MT2203_words"),
    ("ours/SFMT19937_words", "dsfmt/close1_open2_doubles"),
    ("ours/SFMT19937_doubles", "ours/SFMT19937_words"),
    ("ours/MCG31M1_doubles", "random123/philox4x32_doubles"),
    ("ours/MRG32K3A_doubles", "random123/philox4x32_doubles"),
    ("ours/MRG32K3A_doubles", "random123/threefry4x32_doubles"),
    ("ours/R250_words", "memcpy/copy_words"),
)
# Ours and a peer, a number each, be they words or doubles.
POINTS = tuple(
    (f"ours/{ours}{dims}_{flavour}", peer)
    for ours, dims, peer in (
        ("Sobol", 10, "gsl/sobol10_doubles"), ("Sobol", 40, "gsl/sobol40_doubles"),
        ("Sobol", 10, "boost/sobol10_words"), ("Sobol", 40, "boost/sobol40_words"),
        ("Niederr", 10, "gsl/niederr10_doubles"), ("Niederr", 40, "boost/niederr40_words"))
    for flavour in ("words", "doubles"))


def names(runs):
    found = {}
    for run in runs.values():
        for m in run.matches(rf"(\w+/\w+_{FLAVOURS})/{SIZES[0]}"):
            found[m[1]] = m[1].startswith("ours/")
    return sorted(found, key=found.get)  # the peers first, each in its program's order


def times(runs):
    heads = ["generator"]
    for preset in runs:
        for n in SIZES:
            heads += [f"{preset} {n:,} ns", "GB/s"]
    heads += [f"ia32 / x86-64, {n:,}" for n in SIZES] if len(runs) > 1 else []
    rows = []
    for name in names(runs):
        row = [name.removeprefix("ours/")]
        for run in runs.values():
            for n in SIZES:
                t, rate = run.ns.get(f"{name}/{n}"), run.bytes_a_second.get(f"{name}/{n}")
                row += [number(t and t / n), number(rate and rate / 1e9, 1)]
        if len(runs) > 1:
            row += [ratio(*(run.ns.get(f"{name}/{n}") for run in runs.values())) for n in SIZES]
        rows.append(row)
    return table(heads, rows)


def comparison(runs, pairs, figures):
    """Ratios of what figures(run) holds."""
    heads = ["ours", "beside"] + [f"{preset} {n:,}" for preset in runs for n in SIZES]
    rows = [[ours.removeprefix("ours/"), peer.removeprefix("ours/")] +
            [ratio(figures(run).get(f"{ours}/{n}"), figures(run).get(f"{peer}/{n}"))
             for run in runs.values() for n in SIZES] for ours, peer in pairs]
    return table(heads, rows, texts=2)


def section(runs):
    if not names(runs):
        return ""
    return f"""## Random streams

Nanoseconds an element and bytes a second of calls of 1000 and of 1,000,000 elements; names with a
slash are peers. An element of WH and SFMT19937 words has 16 bytes, of MCG59's 8, of all others' 4.

{times(runs)}

Our bytes a second over those of the peer, or of our own words: above 1 we are faster.

{comparison(runs, PAIRS, lambda run: run.bytes_a_second)}

Points of low discrepancy in 10 and 40 dimensions, our time a number over the peer's: below 1 we are
faster.

{comparison(runs, POINTS, lambda run: run.ns)}"""
