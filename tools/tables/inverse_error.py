# SPDX-License-Identifier: MIT
"""Rows of polynomials for the inverses of the error functions: g(w) = erfcinv(w)/(1 - w) by parts
of the binades of w, and times sqrt2 for CdfNormInv; what else their slow paths need."""
from functools import cache

from mpmath import (cos, erfc, exp, log, lu_solve, matrix, mpf, nint, pi, polyval, sqrt,
                    workprec)

from .common import array, double, header, number, single, truncated

PRECISION = 150
TABLE_TYPE = "../../_heap/real/inverse_error_table.hpp"
MAIN_BITS = 26  # of a leading coefficient that is in two parts: times as many bits it is exact
TAIL_ROWS, TAIL_FROM, TAIL_DEGREE = 28, mpf(1) / 4, 14  # quarters of the binades of s
NEAR_TERMS = 8


def erfc_inverse(w):
    """Halley's method, from an estimate good enough for every w in (0, 1]."""
    main = -log(w * sqrt(pi))
    t = sqrt(main - log(main) / 2) if main > 1.5 else (1 - w) * sqrt(pi) / 2
    while True:
        newton = (erfc(t) - w) * exp(t * t) * sqrt(pi) / -2
        step = newton / (1 + newton * t)
        t -= step
        if abs(step) <= t * mpf(2) ** (-PRECISION / 3):
            return t


def interpolated(function, low, high, terms):
    """Coefficients, ascending, of the polynomial that meets the function in Chebyshev's nodes: its
    error is within a factor of two of the smallest."""
    x = [(low + high) / 2 + (high - low) / 2 * cos(pi * (2 * k + 1) / (2 * terms)) for k in range(terms)]
    divided = [function(node) for node in x]
    for order in range(1, terms):
        for i in range(terms - 1, order - 1, -1):
            divided[i] = (divided[i] - divided[i - 1]) / (x[i] - x[i - order])
    coefficients = [divided[-1]]
    for i in range(terms - 2, -1, -1):  # times (x - x[i]), plus divided[i]
        shifted = [mpf(0)] + coefficients
        coefficients = [a - x[i] * b for a, b in zip(shifted, coefficients + [mpf(0)])]
        coefficients[0] += divided[i]
    return coefficients


@cache
def g_rows(bits, terms, count):
    """w = 1, then from 1 down 2^bits rows a binade, each in r = m - middle, where m is the
    significand of w without its first `bits` bits and the middle is 1 + 2^-(bits + 1)."""
    half = mpf(2) ** -(bits + 1)
    rows = [[sqrt(pi) / 2] + [mpf(0)] * (terms - 1)]
    for number_of_row in range(count - 1):
        binade, part = divmod(number_of_row, 2**bits)
        scale, middle = mpf(2) ** -(binade + 1), 1 + (2**bits - 1 - part) * 2 * half + half

        def g(r):
            w = (middle + r) * scale
            return erfc_inverse(w) / (1 - w)

        rows.append(interpolated(g, -half, half, terms))
    return rows


FOURTH_TO_THIRD = mpf(-0.6875)


def cubic(row, half):
    """c0 + c1 r + c2 r^2 + c3 (r^3 + FOURTH_TO_THIRD r^4), which meets the polynomial `row` in
    Chebyshev's nodes: all rows have about the same ratio of these coefficients, and taking it for
    granted is worth three bits."""
    nodes = [half * cos(pi * (2 * k + 1) / 8) for k in range(4)]
    powers = matrix([[1, r, r * r, r**3 + FOURTH_TO_THIRD * r**4] for r in nodes])
    return list(lu_solve(powers, matrix([polyval(row[::-1], r) for r in nodes])))


def in_parts(row, low_parts):
    """The first coefficients each with a low part, the others alone."""
    numbers = []
    for k, c in enumerate(row):
        if k < low_parts:
            high = truncated(c, MAIN_BITS) if k == 0 else double(c)
            numbers += [high, double(c - mpf(high))]
        else:
            numbers.append(double(c))
    return numbers


def row_table(name, types, bits, rows):
    """`types` of the rows' numbers and of the function."""
    suffix = "f" if types[0] == "float" else ""
    middle = ", ".join([number(1 + 0.5 ** (bits + 1), suffix)] * (4 if suffix else 2))
    lines = ["    {" + ", ".join(number(x, suffix) for x in row) + "}," for row in rows]
    kind = f"InverseErrorTable<{types[0]}, {types[1]}, {bits}, {len(rows[0])}, {len(rows)}>"
    return "\n".join([f"inline constexpr {kind} {name} = {{{{", *lines, f"}}, {{{middle}}}}};", ""])


def tail_rows(name, scale):
    """erfcinv(e^(-s^2))/s, the first coefficient in two parts."""
    rows = []
    for i in range(TAIL_ROWS):
        binade, part = divmod(i, 4)
        width = TAIL_FROM * mpf(2) ** (binade - 2)
        middle = TAIL_FROM * mpf(2) ** binade + (part + mpf(1) / 2) * width

        def ratio(r):
            s = middle + r
            return scale * erfc_inverse(exp(-s * s)) / s

        rows.append(tuple(in_parts(interpolated(ratio, -width / 2, width / 2, TAIL_DEGREE + 1), 1)))
    return array("double", name, rows,
                 "In s less the row's middle, four rows a binade from 1/4 on; the first coefficient in\n"
                 "two parts.").replace(f"[{TAIL_ROWS}] =", f"[{TAIL_ROWS}][{len(rows[0])}] =")


def near_series(name, scale):
    """erfinv(d)/d in d^2, the first coefficient in two parts."""
    c = [mpf(1)]
    for k in range(1, NEAR_TERMS):
        c.append(sum(c[m] * c[k - 1 - m] / ((m + 1) * (2 * m + 1)) for m in range(k)))
    row = [scale * a * (sqrt(pi) / 2) ** (2 * k + 1) / (2 * k + 1) for k, a in enumerate(c)]
    return array("double", name, in_parts(row, 1), "erfinv(d)/d in d^2, the first coefficient in two parts.")


def main_tables(kind, function, scale):
    def rows(bits, terms, count, low_parts=0):
        return [in_parts([c * scale() for c in row], low_parts) for row in g_rows(bits, terms, count)]

    def double_tables():
        types = ("double", "double")
        return [row_table(f"d{function}_EP_Table", types, 4, rows(4, 4, 852)),
                row_table(f"d{function}_LA_Table", types, 2, rows(2, 12, 213)),
                row_table(f"d{function}_HA_Table", types, 2, rows(2, 14, 213, 3))]

    def float_tables():
        cubics = [[single(c * scale()) for c in cubic(row, mpf(1) / 16)] for row in g_rows(3, 8, 200)]
        return [row_table(f"s{function}_LA_Table", ("float", "float"), 3, cubics),
                row_table(f"s{function}_HA_Table", ("double", "float"), 2, rows(2, 6, 131))]

    def make():
        with workprec(PRECISION):
            tables = double_tables() if kind == "double" else float_tables()
        return header(f"{'d' if kind == 'double' else 's'}{function.lower()}_tables.hpp", tables, TABLE_TYPE)
    return make


def slow_tables(function, scale):
    def make():
        with workprec(PRECISION):
            tables = [near_series(f"d{function}_near", scale()),
                      tail_rows(f"d{function}_P3N128D12P50DS", scale())]
            return header(f"{function.lower()}_tail_tables.hpp", tables)
    return make


def log_record(i):
    """A short reciprocal R of the middle of [1 + i/256, 1 + (i + 1)/256), and -ln R: a multiple of
    2^-40, to which an exponent times a short ln2 adds exactly, and the rest."""
    reciprocal = truncated(1 / (1 + mpf(2 * i + 1) / 512), 11)
    high = nint(-log(mpf(reciprocal)) * 2**40) / 2**40
    return reciprocal, single(-log(mpf(reciprocal)) - high), double(high)


def log_table():
    with workprec(PRECISION):
        lines = [f"    {{{number(r, 'f')}, {number(low, 'f')}, {number(high)}}},"
                 for r, low, high in map(log_record, range(256))]
    table = "\n".join([
        "// R near 1/(1 + (2 i + 1)/512), of 11 bits; the lower and the upper part of -ln R, the latter a",
        "// multiple of 2^-40.",
        "inline constexpr LogRecord _RT[256] = {", *lines, "};", ""])
    return header("inverse_error_log_table.hpp", [table], "../inverse_error_table.hpp")
