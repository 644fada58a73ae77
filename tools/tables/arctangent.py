# SPDX-License-Identifier: MIT
from mpmath import atan, mpf, pi

from .common import array, double, header, single, split, truncated
from .polynomials import fit

INTERVALS = 16  # of a binade
BINADES = {"d": range(-30, 54), "s": range(-14, 28)}  # the exponents that have rows
REST = ("1b-20", "1/65")  # |v - c|/(1 + v c): where v is 1
EIGHTH = ("1b-20", "0.41422")  # tan(pi/8)


def middles(t):
    for exponent in BINADES[t]:
        for i in range(INTERVALS):
            yield mpf(2) ** exponent * (1 + mpf(2 * i + 1) / (2 * INTERVALS))


def tables(t, kind, bits, suffix, degrees):
    """`degrees` are those of the polynomials of each level."""
    rounding = double if kind == "double" else single
    rows = [(0.0, 0.0)] + [split(atan(c), rounding) for c in middles(t)]
    upper = truncated(pi / 4, bits)
    fits = [fit(kind, f"v{t}atan_{level}", "atan(x)", range(3, degree + 1, 2), interval, "x")
            for level, (degree, interval) in degrees.items()]
    return header(f"v{t}atan_tables.hpp", [
        array(f"Pair<{kind}>", f"_qem{t}AtanHATab", rows,
              "atan(c) and its lower part: 0, then of the middles c of the 16ths of the binades from\n"
              f"2^{BINADES[t].start} to 2^{BINADES[t].stop}.", suffix=suffix),
        array(kind, f"v{t}atan_eighth", [upper, rounding(pi / 4 - mpf(upper))],
              "pi/4: the upper bits, whose multiples up to pi are exact, and the rest.", suffix=suffix),
        *fits], include="../../../simd/lookup.hpp")


def vdatan_tables():
    return tables("d", "double", 50, "", {"ha": (7, REST), "ep": (9, EIGHTH)})


def vsatan_tables():
    return tables("s", "float", 21, "f", {"ha": (3, REST), "la": (9, EIGHTH), "ep": (5, EIGHTH)})
