#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Draws what points of low discrepancy are good for, from what `orv random` prints.

    tools/make_quasi_pictures.py ORV FOLDER

writes FOLDER/sobol.svg, 1024 points of two dimensions beside those of MT19937, and
FOLDER/integration.svg, errors of a ten-dimensional integral, which it prints as well. Needs
matplotlib and SciPy (python3-matplotlib, python3-scipy).
"""
import sys

import numpy
from make_density_pictures import draw, pyplot, save
from matplotlib.patches import PathPatch
from matplotlib.path import Path

POINTS = 1024
DIMS = 10
SIZES = [2 ** k for k in range(10, 21, 2)]
REPEATS = 8

PLACES = [("Sobol", "sobol"), ("MT19937", "uniform --seed 1")]
SOURCES = [  # what is drawn for one repeat, and how many elements a point has
    ("MT19937", "uniform --seed {}", DIMS),
    ("Niederreiter, shifted", f"niederreiter --dim {DIMS} --shift {{}}", 1),
    ("Sobol, shifted", f"sobol --dim {DIMS} --shift {{}}", 1),
]


def dots(axes, points):
    """One path of lines of next to no length: a file of a fraction the size of markers'."""
    codes = numpy.tile([Path.MOVETO, Path.LINETO], len(points))
    ends = numpy.stack([points - [0.001, 0], points + [0.001, 0]], axis=1)
    path = Path(ends.reshape(-1, 2), codes)
    axes.add_patch(PathPatch(path, linewidth=1.8, capstyle="round", edgecolor="#08306b", fill=False))
    axes.set(xlim=(0, 1), ylim=(0, 1), xticks=[0, 1], yticks=[0, 1], aspect="equal")


def places(orv, path):
    figure, grid = pyplot.subplots(1, 2, figsize=(7.2, 3.5), layout="constrained")
    for axes, (name, arguments) in zip(grid, PLACES):
        count = POINTS * (1 if arguments == "sobol" else 2)
        dots(axes, draw(orv, arguments, count).reshape(POINTS, 2))
        axes.set_title(name, fontsize=8)
    save(figure, path)


def integrand(points):
    """The product of (|4x - 2| + j) / (1 + j), j = 0 to 9 by dimension: its integral is 1."""
    j = numpy.arange(DIMS)
    return ((abs(4 * points - 2) + j) / (1 + j)).prod(axis=1)


def errors(orv, arguments, elements):
    """Root mean squares over the repeats, a size each."""
    squares = []
    for seed in range(1, REPEATS + 1):
        points = draw(orv, arguments.format(seed), SIZES[-1] * elements).reshape(-1, DIMS)
        sums = numpy.cumsum(integrand(points))
        squares.append([(sums[n - 1] / n - 1) ** 2 for n in SIZES])
    return numpy.sqrt(numpy.mean(squares, axis=0))


def integration(orv, path):
    figure, axes = pyplot.subplots(figsize=(4.8, 3.2), layout="constrained")
    print("points", *SIZES, sep=" | ")
    for (name, *source), marker in zip(SOURCES, "osd"):
        found = errors(orv, *source)
        print(name, *(f"{x:.1e}" for x in found), sep=" | ")
        axes.loglog(SIZES, found, marker=marker, markersize=4, linewidth=1, label=name)
    axes.set(xlabel="points", ylabel="error of the mean")
    axes.legend(frameon=False)
    save(figure, path)


def main():
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    orv, folder = sys.argv[1:]
    places(orv, f"{folder}/sobol.svg")
    integration(orv, f"{folder}/integration.svg")


if __name__ == "__main__":
    main()
