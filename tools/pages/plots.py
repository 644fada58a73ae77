# SPDX-License-Identifier: MIT
"""The error of a function's levels over its argument, measured here and drawn as SVG."""
import math
import random
from typing import NamedTuple

from mpmath import mp, mpf

LEVELS = ("EP", "LA", "HA")  # from the largest error
WIDTH, HEIGHT, LEFT, BOTTOM, TOP, RIGHT = 720, 300, 64, 36, 12, 56
BITS = {"s": 24, "d": 53}


class Sampling(NamedTuple):
    bins: int    # places on the axis
    points: int  # measured in each


def round_to(kind, library, xs):
    return list(library.vector(kind, xs))


def ulp(true, kind):
    """The spacing of numbers at a true value of the normal range."""
    _, exponent = mp.frexp(true)
    return mp.ldexp(1, exponent - BITS[kind])


def measure(library, kind, name, maths, sampling):
    """For each level the largest error of each bin in ulp."""
    mp.prec = 160
    chance = random.Random(f"{kind}{name}")  # the same points in every run
    low, high = maths.low, maths.high
    at = lambda share: low * (high / low) ** share if maths.logarithmic else low + (high - low) * share
    shares = [(b + chance.random()) / sampling.bins
              for b in range(sampling.bins) for _ in range(sampling.points)]
    arguments = round_to(kind, library, [at(share) for share in shares])
    values = [maths.true(mpf(x)) for x in arguments]
    units = [ulp(v, kind) if v else None for v in values]
    errors = {}
    for level in LEVELS:
        results = library.unary(kind, name, level, arguments)
        largest = [0.0] * sampling.bins
        for i, (result, value, unit) in enumerate(zip(results, values, units)):
            if unit and math.isfinite(result):
                b = i // sampling.points
                largest[b] = max(largest[b], float(abs(mpf(result) - value) / unit))
        errors[level] = largest
    return errors


def number(x):
    return f"{x:g}".replace("-", "−")


def ticks(maths):
    if maths.logarithmic:
        first, last = round(math.log10(maths.low)), round(math.log10(maths.high))
        step = max(1, (last - first) // 6)
        return [(10.0 ** e, (e - first) / (last - first)) for e in range(first, last + 1, step)]
    span = maths.high - maths.low
    step = 10 ** math.floor(math.log10(span / 4))
    step *= next(f for f in (5, 2, 1) if span / (step * f) >= 4)
    first = math.ceil(maths.low / step - 1e-9)
    places = range(first, math.floor(maths.high / step + 1e-9) + 1)
    return [(k * step, (k * step - maths.low) / span) for k in places]


def draw(errors, maths, title):
    """Errors on a logarithmic axis, in steps of the bins."""
    largest = max(max(row) for row in errors.values())
    top = math.ceil(math.log10(max(largest, 1)) + 0.1)
    bottom = -1
    inner = WIDTH - LEFT - RIGHT, HEIGHT - TOP - BOTTOM
    x = lambda share: f"{LEFT + inner[0] * share:.1f}"
    y = lambda e: f"{TOP + inner[1] * (top - max(math.log10(max(e, 1e-9)), bottom)) / (top - bottom):.1f}"
    out = ['<svg xmlns="http://www.w3.org/2000/svg" class="plot" role="img" '
           f'viewBox="0 0 {WIDTH} {HEIGHT}"><title>{title}</title>']
    for decade in range(bottom, top + 1, 1 if top < 5 else 2):
        height = y(10.0 ** decade)
        out.append(f'<path class="grid" d="M{LEFT} {height}H{WIDTH - RIGHT}"/>'
                   f'<text x="{LEFT - 6}" y="{height}" dy="4" text-anchor="end">'
                   f"{number(10.0 ** decade)}</text>")
    for value, share in ticks(maths):
        out.append(f'<path class="grid" d="M{x(share)} {TOP}V{HEIGHT - BOTTOM}"/><text x="{x(share)}" '
                   f'y="{HEIGHT - BOTTOM + 16}" text-anchor="middle">{number(value)}</text>')
    out.append(f'<text x="{LEFT + inner[0] / 2}" y="{HEIGHT - 4}" text-anchor="middle">argument</text>'
               f'<text transform="translate(14 {TOP + inner[1] / 2}) rotate(-90)" '
               f'text-anchor="middle">error, ulp</text>')
    label = math.inf
    for level in reversed(LEVELS):  # labels stand at the curves' ends, from below, and apart
        row = errors[level]
        path = "".join(f"{'L' if i else 'M'}{x(i / len(row))} {y(e)}H{x((i + 1) / len(row))}"
                       for i, e in enumerate(row))
        label = min(float(y(row[-1])), label - 14)
        out.append(f'<path class="level {level}" d="{path}"/><text class="{level}" '
                   f'x="{WIDTH - RIGHT + 6}" y="{label}" dy="4">{level}</text>')
    return "\n".join([*out, "</svg>"])
