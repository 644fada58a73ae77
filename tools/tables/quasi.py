# SPDX-License-Identifier: MIT
"""Polynomials over GF(2) for quasi-random points; coefficient k is bit k of a number."""
import pathlib

FILE = pathlib.Path("zok/_src/zok_sub_kernel/niederr/tables/niederr_tables.cpp")

COUNT = 318


def remainder(a, b):
    while a.bit_length() >= b.bit_length():
        a ^= b << (a.bit_length() - b.bit_length())
    return a


def first_irreducible(count):
    """By degree, then by number: what no earlier one of half its degree divides."""
    found, candidate = [], 2
    while len(found) < count:
        most = (candidate.bit_length() - 1) // 2 + 1
        if all(remainder(candidate, p) for p in found if p.bit_length() <= most):
            found.append(candidate)
        candidate += 1
    return found


def table(kind, name, words):
    lines = [f"const {kind} {name}[{len(words)}] = {{"]
    for k in range(0, len(words), 12):
        lines.append("    " + ", ".join(words[k:k + 12]) + ",")
    return "\n".join(lines + ["};", ""])


def niederr_tables():
    polynomials = first_irreducible(COUNT)
    return "\n".join([
        "// Made by: tools/make_tables.py niederr_tables.cpp",
        "// clang-format off",
        "#include <orv/zok.h>",
        "",
        "// The first irreducible polynomials over GF(2), and their degrees.",
        table("uint32_t", "uNiederrIrredPoly", [f"0x{p:X}" for p in polynomials]),
        table("int32_t", "iNiederrIrredPolyDeg", [str(p.bit_length() - 1) for p in polynomials]),
    ])
