# SPDX-License-Identifier: MIT
from typing import NamedTuple

from mpmath import log, mpf, nint, sqrt

from .common import array, double, header, single, truncated
from .polynomials import fit


class Base(NamedTuple):
    """A logarithm's tables: R from 2^k to 2^(k + 1), log 2 in the two parts that the kernels
    multiply by the exponent. High parts are multiples of `unit`, so that they add to an exponent
    times log2_hi exactly."""
    name: str
    data: str
    kind: str
    k: int
    log_of_base: mpf
    log2_hi: mpf
    log2_lo: mpf
    unit: mpf
    full_from: int  # the exponent at which the full table's share of log 2 is none

    @property
    def rounding(self):
        return double if self.kind == "double" else single

    @property
    def bias(self):
        return 1023 if self.kind == "double" else 127

    def log(self, x):
        return log(mpf(x)) / self.log_of_base

    def log_of(self, r):
        """-log(R/2^(k + 1)) or -log(R/2^k), 0 at both ends, and the exponent that goes with it."""
        full = 2 ** (self.k + 1)
        if r > int(full / sqrt(mpf(2))):
            return -self.log(mpf(r) / full), self.bias
        return -self.log(mpf(r) * 2 / full), self.bias - 1

    def full_pair(self, r):
        """With the kernels' own log 2, so that at 1 the sum is exactly 0."""
        value, exponent = self.log_of(r)
        exponent -= self.full_from
        short = nint(value / self.unit) * self.unit
        return (self.rounding(short - exponent * self.log2_hi),
                self.rounding((value - short) - exponent * self.log2_lo))

    def slow_path_row(self, i):
        """m = 1 + i/64: a short reciprocal, and minus its logarithm in two parts."""
        rcp = truncated(1 / (1 + mpf(i) / 64), 10)
        value = -self.log(rcp)
        high = nint(value / self.unit) * self.unit
        return rcp, double(high), double(value - high)

    def tables(self):
        rows = range(2 ** self.k, 2 ** (self.k + 1) + 1)
        suffix = "" if self.kind == "double" else "f"
        return [
            array(f"Pair<{self.kind}>", f"{self.data}_full_table", [self.full_pair(r) for r in rows],
                  f"Two parts of -{self.name}(R/{rows[-1]}) - {self.bias - self.full_from} "
                  f"{self.name}(2), R from {rows[0]} to {rows[-1]}.", suffix=suffix),
            array(self.kind, f"{self.data}_short_table",
                  [self.rounding(self.log_of(r)[0]) for r in rows],
                  f"-{self.name}(R/{2 ** (self.k + 1)}) above {2 ** (self.k + 1)}/sqrt2, "
                  f"else -{self.name}(R/{2 ** self.k}).", suffix=suffix),
        ]

    def slow_table(self, name):
        return array("double", name, [x for i in range(65) for x in self.slow_path_row(i)],
                     "Short reciprocal of 1 + i/64, high and low parts of minus its logarithm.")


def power(n):
    return mpf(2) ** n


LN = Base("ln", "vdln", "double", 9, mpf(1),
          0x162E42FEFA * power(-37), 0x1CF79ABC9E * power(-76), power(-42), 0)
LOG10 = Base("log10", "vdlog10", "double", 9, log(mpf(10)),
             0x134413509F * power(-38), 0x1E7FBCC47C * power(-76), power(-42), 0)
LOG10_FLOAT = Base("log10", "vslog10", "float", 8, log(mpf(10)),
                   0x13442 * power(-18), -0x195EC * power(-35), power(-17), 127)
LOG1P_FLOAT = Base("ln", "vslog1p", "float", 7, mpf(1),
                   0x162E4 * power(-17), 0x17F7C * power(-36), power(-17), 127)


def residual(base):
    """Where r = m R - 1 lies, m below 2^-k: R is within a half of 1/m, and the division's rounding."""
    largest = 0.502 / 2 ** base.k
    return -largest, largest


def vdln_tables():
    return header("vdln_tables.hpp", [
        fit("double", "vdln_ha_series", "log1p(x)/x", range(1, 6), residual(LN), "1"),
        *LN.tables(), LN.slow_table("_qemdLnHATab"),
    ])


def vdlog10_tables():
    function, linear = "log1p(x)/(x*log(10))", "1/log(10)"
    return header("vdlog10_tables.hpp", [
        fit("double", "vdlog10_ha_series", function, range(1, 6), residual(LOG10), linear),
        fit("double", "vdlog10_la_series", function, range(1, 5), residual(LOG10), linear),
        *LOG10.tables(), LOG10.slow_table("_qemdLog10HATab"),
    ])


def vsln_tables():
    third = ("-1/3", "1/3")
    return header("vsln_tables.hpp", [
        fit("float", "vsln_ha_series", "log1p(x)/x", range(2, 10), third, "1 - x/2"),
        fit("float", "vsln_la_series", "log1p(x)/x", range(1, 9), third, "1"),
        fit("float", "vsln_ep_series", "log1p(x)/x", range(1, 5), third, "1"),
    ], include="../../simd/vectors.hpp")


def vslog10_tables():
    function, linear, r = "log1p(x)/(x*log(10))", "1/log(10)", residual(LOG10_FLOAT)
    return header("vslog10_tables.hpp", [
        fit("float", "vslog10_ha_series", function, range(1, 3), r, linear),
        fit("float", "vslog10_la_series", function, range(1, 3), r, linear),
        *LOG10_FLOAT.tables(),
    ])


def vslog1p_tables():
    return header("vslog1p_tables.hpp", LOG1P_FLOAT.tables())
