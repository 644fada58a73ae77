# SPDX-License-Identifier: MIT
"""The vector functions, beside SLEEF, libmvec and plain loops."""
from .text import difference, number, ratio, table

# SLEEF's function beside each level: the first of these that it has.
SLEEF = {"HA": ("u10",), "LA": ("u35", "u10"), "EP": ("u35", "u10")}


class Kernels:
    def __init__(self, run):
        self.run = run
        # Names such as dExp_HA, in the order of the function list.
        self.names = list(dict.fromkeys(
            m[1] for m in run.matches(r"ours/([sdcz][A-Z]\w*_(?:LA|HA|EP))/.*")))

    def ours(self, kernel, n):
        return self.run.ns.get(f"ours/{kernel}/{n}")

    def peer(self, who, kernel, n):
        return self.run.ns.get(f"{who}/{kernel.split('_')[0]}/{n}")

    def sleef(self, kernel, n):
        times = (self.peer(f"sleef_{u}", kernel, n) for u in SLEEF[kernel.split("_")[1]])
        return next((t for t in times if t), None)

    def scalar(self, kernel, n):
        return self.peer("libm", kernel, n) or self.peer("loop", kernel, n)


def long_calls(sizes, cases, heads):
    """A row for each case: its cells, the kernel and the call's name."""
    for preset in sizes:
        heads += [f"{preset} ns", "/ SLEEF", "/ scalar"]
        heads += ["/ libmvec"] if preset == "x86-64" else []
    rows = []
    for row, kernel, call in cases:
        for preset, k in sizes.items():
            t = k.ours(kernel, call)
            row += [number(t / 1000 if t else None), ratio(t, k.sleef(kernel, call)),
                    ratio(t, k.scalar(kernel, call))]
            row += [ratio(t, k.peer("libmvec", kernel, call))] if preset == "x86-64" else []
        rows.append(row)
    return table(heads, rows)


def throughput(sizes):
    return long_calls(sizes, [([kernel], kernel, 1000) for kernel in first_of(sizes).names],
                      ["kernel"])


def further_ranges(sizes):
    cases = [([m[1], m[2]], m[1], f"1000/{m[2]}")
             for m in first_of(sizes).run.matches(r"ours/(\w+)/1000/(.+\.\..+)")]
    return cases and long_calls(sizes, cases, ["kernel", "arguments"])


def first_of(sizes):
    return next(iter(sizes.values()))


def short_calls(k):
    heads = ["kernel", "n = 0", "n = 1", "beyond its element", "n = 1 dependent", "n = 7",
             "n = 64", "1 / SLEEF", "7 / SLEEF", "64 / SLEEF", "1 / scalar"]
    rows = []
    for kernel in k.names:
        long_call = k.ours(kernel, 1000)
        rows.append([
            kernel, number(k.ours(kernel, 0), 1), number(k.ours(kernel, 1), 1),
            difference(k.ours(kernel, 1), long_call / 1000 if long_call else None),
            number(k.ours(kernel, "1/dependent"), 1), number(k.ours(kernel, 7), 1),
            number(k.ours(kernel, 64), 1),
            *(ratio(k.ours(kernel, n), k.sleef(kernel, n)) for n in (1, 7, 64)),
            ratio(k.ours(kernel, 1), k.scalar(kernel, 1))])
    return table(heads, rows)


def section(runs):
    sizes = {preset: Kernels(run) for preset, run in runs.items()}
    if not any(k.names for k in sizes.values()):
        return ""
    parts = [f"""## Vector functions: calls of 1000 elements

Nanoseconds an element, and our time over that of each peer: below 1 we are faster. SLEEF stands
with its AVX functions, those of 1.0 ulp beside HA and those of 3.5 ulp beside LA and EP where it has
one; libmvec with its functions for AVX, which it has for x86-64 only; "scalar" is the C library's
function in a loop or, for arithmetic, a plain loop compiled for AVX. A kernel that serves several
levels stands under the one in its own name.

{throughput(sizes)}"""]
    further = further_ranges(sizes)
    if further:
        parts.append(f"""## Vector functions: further arguments

The same where other arguments take another way, evenly from the range told.

{further}""")
    for preset, k in sizes.items():
        parts.append(f"""## Vector functions: short calls, {preset}

Nanoseconds a call. "n = 0" is a call without elements: what the frame costs. "beyond its element" is
a call of one element less an element's share of a call of 1000, an upper bound of what the call adds.
"dependent" calls wait for the result before; the others may overlap. `GetMode` alone takes
{number(k.run.ns.get("ours/GetMode"), 1)} ns.

{short_calls(k)}""")
    return "\n\n".join(parts)
