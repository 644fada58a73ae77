# SPDX-License-Identifier: MIT
"""Precision, rounding to the machine's formats, and the shape of a table file."""
import pathlib
import struct

from mpmath import mp, mpf

mp.prec = 300

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
CORE = pathlib.Path("qem/_src/qem_core")


def double(x):
    """x rounded to a 64-bit float."""
    return float(mpf(x))


def single(x):
    """x rounded once to a 32-bit float (mpmath rounds, so there is no double rounding)."""
    saved, mp.prec = mp.prec, 24
    try:
        y = float(+mpf(x))
    finally:
        mp.prec = saved
    return struct.unpack("f", struct.pack("f", y))[0]


def truncated(x, bits):
    """x rounded to `bits` significant bits, as a 64-bit float."""
    saved, mp.prec = mp.prec, bits
    try:
        return float(+mpf(x))
    finally:
        mp.prec = saved


def split(x, rounding=double):
    """High and low parts of x: the sum carries about twice the format's digits."""
    high = rounding(x)
    return high, rounding(x - mpf(high))


def number(x, suffix=""):
    return x.hex().replace("0x0.0p+0", "0x0p+0") + suffix


def array(kind, name, rows, comment, storage="inline constexpr ", suffix=""):
    lines = [f"// {line}" for line in comment.splitlines()]
    lines.append(f"{storage}{kind} {name}[{len(rows)}] = {{")
    for row in rows:
        if isinstance(row, tuple):
            lines.append("    {" + ", ".join(number(x, suffix) for x in row) + "},")
        else:
            lines.append("    " + number(row, suffix) + ",")
    return "\n".join(lines + ["};", ""])


def header(name, arrays, include="../../simd/lookup.hpp"):
    """A header of tables within the unit's namespace. Those of plain numbers include nothing."""
    return "\n".join([
        f"// Made by: tools/make_tables.py {name}",
        "// clang-format off",
        "#pragma once", "", *([f'#include "{include}"', ""] if include else []),
        "namespace orv {", "inline namespace ORV_TAG {", "",
        *arrays,
        "}  // namespace ORV_TAG", "}  // namespace orv", ""])
