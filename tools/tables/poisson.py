# SPDX-License-Identifier: MIT
"""The Poisson law as a polynomial in a Gaussian number, with coefficients in the mean."""
import pathlib

from mpmath import cos, erfinv, exp, lu_solve, matrix, mp, mpf, pi, sqrt

from .common import header, number

FOLDER = pathlib.Path("zok/_src/zok_kernel/discrete/poisson/tables")

BINADES = 7
DEGREE = 3  # of a coefficient, in the mantissa less 1
MEANS = 7  # that a binade's fit goes over
FAR, FAR_WEIGHT = (mpf(-5), mpf("-5.5")), mpf("3e-7")
PARTS = range(5)  # a0, and the factors of a5 g, a5 g^2, a5 g^3, a5 g^4


def root_row(binade):
    """sqrt of the means of a binade by a cubic through the points of Chebyshev."""
    points = [(1 - cos(pi * (2 * i + 1) / (2 * DEGREE + 2))) / 2 for i in range(DEGREE + 1)]
    return list(lu_solve(matrix([[f ** k for k in range(DEGREE + 1)] for f in points]),
                         matrix([sqrt((1 + f) * 2 ** binade) for f in points])))


def borders(mean):
    """As far as some numbers out of 10^8 reach: each k, the Gaussian number where it begins, and the
    probability of k - 1."""
    k, term, below = 0, exp(-mean), mpf(0)
    least = mpf(10) ** -8
    while below < 1 - least:
        if below > least:
            yield k, sqrt(mpf(2)) * erfinv(2 * below - 1), last
        below += term
        last = term
        k += 1
        term = term * mean / k


def fitted_row(binade):
    """Least squares of the chi-square distance: an error e of the polynomial at the border of two
    cells moves a mass of e times the density from one to the other."""
    root = root_row(binade)
    unknowns = len(PARTS) * (DEGREE + 1)
    normal, right = matrix(unknowns, unknowns), matrix(unknowns, 1)

    def add(row, value, weight):
        for i in range(unknowns):
            for j in range(unknowns):
                normal[i, j] += weight * row[i] * row[j]
            right[i] += weight * row[i] * value

    for i in range(MEANS):
        f = (1 - cos(pi * (2 * i + 1) / (2 * MEANS))) / 2
        mean = (1 + f) * 2 ** binade
        scale = sum(c * f ** j for j, c in enumerate(root))
        last, last_value = [mpf(0)] * unknowns, mpf(0)
        for k, g, probability in borders(mean):
            slope = sqrt(mean) * (1 + g / (3 * sqrt(mean)))
            density = exp(-g * g / 2) / sqrt(2 * pi) / max(slope, sqrt(mean) / 4)
            parts = [mpf(1)] + [scale * g ** p for p in PARTS[1:]]
            row = [density * part * f ** j for part in parts for j in range(DEGREE + 1)]
            value = density * k
            add([x - y for x, y in zip(row, last)], value - last_value, 1 / probability)
            last, last_value = row, value
        if binade < 3:  # no number goes up again where there are no borders any more
            for g in FAR:
                parts = [mpf(1)] + [scale * g ** p for p in PARTS[1:]]
                add([part * f ** j for part in parts for j in range(DEGREE + 1)], mpf(0), FAR_WEIGHT)
    solution = list(lu_solve(normal, right))
    solution[0] -= 1  # which is added again
    return [solution[(DEGREE + 1) * p:(DEGREE + 1) * (p + 1)] for p in PARTS] + [root]


def poisson_normal_tables():
    with mp.workprec(100):
        rows = [fitted_row(binade) for binade in range(BINADES)]
    text = ["// Cubic polynomials in f of a0 - 1, a1 to a5 for means (1 + f) 2^row: the floor of",
            "// a0 + a5 g (a1 + a2 g + a3 g^2 + a4 g^3) follows the law for a Gaussian g.",
            f"inline constexpr double iPoissC[{BINADES}][6][4] = {{"]
    for row in rows:
        text.append("    {" + ",\n     ".join(
            "{" + ", ".join(number(float(c)) for c in part) + "}" for part in row) + "},")
    return header("poisson_normal_tables.hpp", ["\n".join(text + ["};", ""])], include=None)
