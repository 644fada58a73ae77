# SPDX-License-Identifier: MIT
from mpmath import exp, factorial, log, mpf

from .common import array, double, header, single, split, truncated

# Constant terms of the kernels' polynomials, which the tables are divided by.
VDEXP_LA_C0 = 5.999999973728264
VDEXP_EP_C0 = 17050.60594303826


def two_to(j, step):
    return mpf(2) ** (mpf(j) / step)


def divided_table(steps, c0, rounding=double):
    """2^(j/steps)/c0, with e^0 coming out as 1."""
    table = [rounding(two_to(j, steps) / mpf(c0)) for j in range(steps)]
    assert rounding(mpf(table[0]) * mpf(c0)) == 1
    return table


def relative_split(x):
    high, _ = split(x)
    return high, double((x - mpf(high)) / mpf(high))


def vdexp_tables():
    return header("vdexp_tables.hpp", [
        array("Pair<double>", "vdexp_ha_table", [split(two_to(j, 64)) for j in range(64)],
              "High and low parts of 2^(j/64)."),
        array("double", "vdexp_la_table", divided_table(1024, VDEXP_LA_C0),
              f"2^(j/1024)/{VDEXP_LA_C0}: LA's polynomial is that many times e^r."),
        array("double", "vdexp_ep_table", divided_table(64, VDEXP_EP_C0),
              f"2^(j/64)/{VDEXP_EP_C0}: EP's polynomial is that many times e^r."),
        array("Pair<double>", "_rewdExpHATab", [relative_split(two_to(j, 64)) for j in range(64)],
              "2^(j/64) as T*(1 + t): high part T, and low part t relative to it."),
    ])


def monic_series(degree, unit):
    """degree! e^r as a polynomial in r/unit with leading coefficient 1, without that term: the
    series to the term of `degree`, whose own error is far below the level's at this short r."""
    coefficients = [exp(0) / factorial(k) for k in range(degree + 1)]
    return [single(c * unit ** k / (coefficients[degree] * unit ** degree))
            for k, c in enumerate(coefficients[:degree])]


def vsexp_tables():
    step = log(2) / 128
    arrays = [array("Pair<float>", "vsexp_ha_table",
                    [split(two_to(j, 128), single) for j in range(128)],
                    "High and low parts of 2^(j/128).", suffix="f")]
    for level, degree, unit in (("la", 2, mpf(1)), ("ep", 1, step)):
        c = monic_series(degree, unit)
        arrays += [
            array("float", f"vsexp_{level}_polynomial", c,
                  f"{c[0]} e^r, with a further term of coefficient 1.", suffix="f"),
            array("float", f"vsexp_{level}_table", divided_table(128, c[0], single),
                  "2^(j/128) divided by that factor.", suffix="f")]
    return header("vsexp_tables.hpp", arrays)


def short_split(x, bits, rounding):
    """A high part of `bits` bits, and the rest."""
    high = truncated(x, bits)
    return high, rounding(x - mpf(high))


def vdexpm1_tables():
    return header("vdexpm1_tables.hpp", [
        array("Pair<double>", "vdexpm1_table",
              [short_split(two_to(j, 128), 26, double) for j in range(128)],
              "2^(j/128): 26 bits, and the rest."),
    ])


def vsexpm1_tables():
    return header("vsexpm1_tables.hpp", [
        array("Pair<float>", "vsexpm1_table",
              [short_split(two_to(j, 64), 12, single) for j in range(64)],
              "2^(j/64): 12 bits, and the rest.", suffix="f"),
    ])
