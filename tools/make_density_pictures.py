#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Draws each distribution's density over a histogram of numbers from `orv random`.

    tools/make_density_pictures.py ORV FOLDER

writes FOLDER/continuous.svg and FOLDER/discrete.svg. Needs matplotlib and SciPy (python3-matplotlib, python3-scipy).
"""
import io
import pathlib
import re
import subprocess
import sys

import matplotlib
import numpy
from scipy import stats

matplotlib.use("svg")
matplotlib.rcParams.update({"svg.fonttype": "none", "svg.hashsalt": "orv", "font.size": 8,
                            "axes.spines.top": False, "axes.spines.right": False})
from matplotlib import pyplot  # noqa: E402

NUMBERS = 200_000
BINS = 40

CONTINUOUS = [
    ("uniform --range 0 1", stats.uniform()),
    ("exponential", stats.expon()),
    ("laplace", stats.laplace()),
    ("weibull --shape 1.5", stats.weibull_min(1.5)),
    ("cauchy", stats.cauchy()),
    ("rayleigh", stats.rayleigh(scale=0.5 ** 0.5)),
    ("lognormal --sd 0.5", stats.lognorm(0.5)),
    ("gumbel", stats.gumbel_l()),
    ("gaussian", stats.norm()),
    ("gamma --shape 0.8", stats.gamma(0.8)),
    ("gamma --shape 2.5", stats.gamma(2.5)),
    ("beta --p 0.5 --q 0.8", stats.beta(0.5, 0.8)),
    ("beta --p 0.8 --q 2", stats.beta(0.8, 2)),
    ("beta --p 2 --q 3", stats.beta(2, 3)),
]


DISCRETE = [
    ("bernoulli --p 0.3", stats.bernoulli(0.3)),
    ("geometric --p 0.2", stats.geom(0.2, loc=-1)),
    ("binomial --trials 20 --p 0.3", stats.binom(20, 0.3)),
    ("binomial --trials 1000 --p 0.4", stats.binom(1000, 0.4)),
    ("poisson --mean 4.5", stats.poisson(4.5)),
    ("poisson --mean 200", stats.poisson(200)),
    ("hypergeometric --lot 100 --sample 20 --marked 30", stats.hypergeom(100, 30, 20)),
    ("negative-binomial --successes 2.5 --p 0.2", stats.nbinom(2.5, 0.2)),
    ("int --range 1 7", stats.randint(1, 7)),
]


def draw(orv, arguments, count=NUMBERS, kind=float):
    command = [orv, "random", *arguments.split(), "-n", str(count), "--format", "binary"]
    return numpy.frombuffer(subprocess.run(command, check=True, capture_output=True).stdout, kind)


def whole_panel(axes, orv, arguments, law):
    numbers = draw(orv, arguments, kind=numpy.int32)
    low, high = (int(x) for x in law.ppf([0.003, 0.997]))
    width = 1 + (high - low) // 60
    edges = numpy.arange(low, high + width + 1, width) - 0.5
    heights, _ = numpy.histogram(numbers, edges)
    axes.stairs(heights / (NUMBERS * width), edges, fill=True, color="#9ecae1")
    k = numpy.arange(low, high + 1, width)
    axes.plot(k, law.pmf(k), ".", color="#08306b", markersize=3)
    axes.set_ylim(0, None)


def panel(axes, orv, arguments, law):
    numbers = draw(orv, arguments)
    low, high = law.ppf([0.04, 0.96]) if arguments == "cauchy" else law.ppf([0.01, 0.99])
    low, high = max(low, law.support()[0]), min(high, law.support()[1])
    heights, edges = numpy.histogram(numbers, BINS, (low, high))
    heights = heights / (NUMBERS * (high - low) / BINS)
    axes.stairs(heights, edges, fill=True, color="#9ecae1")
    x = numpy.linspace(low, high, 81)[1:-1]
    axes.plot(x, law.pdf(x), color="#08306b", linewidth=1)
    axes.set_ylim(0, 1.15 * heights.max())


def save(figure, path):
    text = io.StringIO()
    figure.savefig(text, metadata={"Date": None, "Creator": None})
    shorter = re.sub(r"\d+\.\d{2,}", lambda x: f"{float(x[0]):.1f}", text.getvalue())
    pathlib.Path(path).write_text(shorter)


def picture(orv, rows, panel_of, path):
    columns = 3
    lines = -(-len(rows) // columns)
    figure, grid = pyplot.subplots(lines, columns, figsize=(7.2, 1.7 * lines), layout="constrained")
    for axes in grid.flat[len(rows):]:
        axes.set_visible(False)
    for axes, (arguments, law) in zip(grid.flat, rows):
        panel_of(axes, orv, arguments, law)
        axes.set_title(arguments, fontsize=8 if len(arguments) < 40 else 6)
        axes.set_yticks([])
    save(figure, path)


def main():
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    orv, folder = sys.argv[1:]
    picture(orv, CONTINUOUS, panel, f"{folder}/continuous.svg")
    picture(orv, DISCRETE, whole_panel, f"{folder}/discrete.svg")


if __name__ == "__main__":
    main()
