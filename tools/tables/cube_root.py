# SPDX-License-Identifier: MIT
from mpmath import cbrt, mpf

from .common import array, double, header, single, split
from .polynomials import fit

INTERVALS = 32  # of [1, 2), which the table's middles are of
LARGEST = ("-1/65", "1/65")  # (m - c)/c, reached in the first interval, 1/64 on either side of 65/64


def middle(i):
    return 1 + mpf(2 * i + 1) / (2 * INTERVALS)


def roots(power, bias):
    """(2^(j - bias) c)^power and c, j from 0 to 2. The cube root is the last step, so that those of
    cubes are exact."""
    for j in range(3):
        for i in range(INTERVALS):
            c = middle(i)
            yield cbrt((mpf(2) ** (j - bias) * c) ** power), c


def tables(data, kind, power, degrees):
    """Of x^(power/3); `degrees` are those of the polynomials of each level."""
    rounding, suffix, bias = (double, "", 1023) if kind == "double" else (single, "f", 127)
    pairs = []
    for y, c in roots(power, bias):
        high, low = split(y, rounding)
        pairs += [(high, rounding(1 / c)), (low, 0.0)]
    return [
        *[fit(kind, f"{data}_{level}_series", f"(1 + x)^({power}/3)", range(1, degree + 1), LARGEST, "1")
          for level, degree in degrees.items()],
        array(f"Pair<{kind}>", f"{data}_table", pairs,
              f"(2^(j - {bias}) c)^({power}/3) and 1/c, the former's lower part and 0;\n"
              "j from 0 to 2, c = 1 + (2 i + 1)/64, i from 0 to 31.", suffix=suffix)]


def vdcbrt_tables():
    return header("vdcbrt_tables.hpp", tables("vdcbrt", "double", 1, {"ha": 7, "la": 6, "ep": 3}),
                  include="../../../simd/lookup.hpp")


def vscbrt_tables():
    return header("vscbrt_tables.hpp", tables("vscbrt", "float", 1, {"ha": 3, "la": 3, "ep": 1}),
                  include="../../../simd/lookup.hpp")


def vdinvcbrt_tables():
    return header("vdinvcbrt_tables.hpp", tables("vdinvcbrt", "double", -1, {"ha": 7}))


def vsinvcbrt_tables():
    return header("vsinvcbrt_tables.hpp", tables("vsinvcbrt", "float", -1, {"ha": 3, "la": 3, "ep": 1}))
