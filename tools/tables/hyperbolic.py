# SPDX-License-Identifier: MIT
from mpmath import floor, log, mpf, sech, tanh

from .common import array, double, header, single, split
from .exp import two_to
from .polynomials import fit

STEPS = 64
REACH = "log(2)/(2*64)"  # half a step of ln2/64
TANH_FIRST = 0.0625  # below, tanh is one polynomial


def vdcosh_tables():
    return header("vdcosh_tables.hpp", [
        fit("double", "vdcosh_even", "cosh(x)", [2, 4], ("1b-20", REACH), "1"),
        fit("double", "vdcosh_odd", "sinh(x)", [3, 5], ("1b-20", REACH), "x", error="absolute"),
        fit("double", "vdsinh_near_zero", "sinh(x)", [3, 5, 7, 9, 11], ("1b-30", "1/4"), "x"),
        array("Quad<double>", "vdcosh_table",
              [split(two_to(j, STEPS)) + split(two_to(-j, STEPS) / 8) for j in range(STEPS)],
              "2^(j/64) and 2^(-j/64)/8, the high and low part of each."),
    ], include="../../../simd/lookup.hpp")


def exp_less_1():
    """Between steps of ln2/64 in double, of ln2 in float."""
    def series(kind, name, degree, reach):
        return fit(kind, name, "expm1(x)", range(2, degree + 1), (f"-1.0001*{reach}", f"1.0001*{reach}"),
                   "x")
    return header("exp_less_1.hpp", [
        series("double", "vdexp_less_1_la", 6, REACH),
        series("double", "vdexp_less_1_ep", 3, REACH),
        series("double", "vsexp_less_1_ha", 4, REACH),
        series("float", "vsexp_less_1_la", 6, "log(2)/2"),
        series("float", "vsexp_less_1_ep", 4, "log(2)/2"),
    ], include="../../../simd/lookup.hpp")


def centers(first, last):
    """0, and then, up to where tanh has become 1, the middles of 32nds of binades."""
    yield mpf(0)
    at = mpf(first)
    while at <= last:
        width = mpf(2) ** floor(log(at, 2)) / 32
        yield at + width / 2
        at += width


def tanh_rows(rounding, last):
    for c in centers(TANH_FIRST, last):
        yield (float(c),) + split(tanh(c), rounding) + (rounding(sech(c) ** 2),)


def vdtanh_tables():
    rows = list(tanh_rows(double, 20))
    return header("vdtanh_tables.hpp", [
        fit("double", "vdtanh_series", "tanh(x)", range(3, 12, 2), ("1b-20", TANH_FIRST), "x"),
        fit("double", "vdtanh_ep_series", "tanh(x)", [3, 5], ("1b-20", TANH_FIRST), "x"),
        array("Quad<double>", "vdtanh_table_in_parts", rows,
              "c, tanh c in two parts, 1 - tanh^2 c; 0, then middles of 32nds of binades."),
        array("Pair<double>", "vdtanh_table", [(c, y) for c, y, _, _ in rows], "c and tanh c."),
    ])


def vstanh_tables():
    return header("vstanh_tables.hpp", [
        fit("float", "vstanh_series", "tanh(x)", [3, 5], ("1b-20", TANH_FIRST), "x"),
        array("Quad<float>", "vstanh_table_in_parts", list(tanh_rows(single, 9.25)),
              "c, tanh c in two parts, 1 - tanh^2 c; 0, then middles of 32nds of binades.", suffix="f"),
    ])
