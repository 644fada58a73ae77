# SPDX-License-Identifier: MIT
from mpmath import cos, floor, frexp, ldexp, mp, mpf, pi, sin

from .common import array, double, header, truncated
from .polynomials import fit

STEPS = 512  # of pi/256, a full turn
HALF_STEP = ("1b-20", f"{float(pi / STEPS)}")
WORDS = 40


def exact_zero(x):
    return mpf(0) if abs(x) < mpf(2) ** -200 else x


def sine_and_cosine(j):
    angle = j * pi / (STEPS // 2)
    return exact_zero(sin(angle)), exact_zero(cos(angle))


def upper_half_and_rest(x):
    upper = truncated(x, 27) if x else float(x)
    return upper, double(mpf(x) - upper)


def vdsincos_tables():
    rows = [sine_and_cosine(j) for j in range(STEPS)]
    rows[0] = (-0.0, mpf(1))  # so that the kernels' sums keep the sign of a zero
    return header("vdsincos_tables.hpp", [
        array("Quad<double>", "vdsincos_table",
              [(*upper_half_and_rest(sine), *upper_half_and_rest(cosine)) for sine, cosine in rows],
              "sin(j pi/256) and cos(j pi/256), each as 27 bits and the rest."),
        array("Pair<double>", "vdsincos_pairs",
              [(float(sine), float(cosine)) for sine, cosine in rows],
              "sin(j pi/256), cos(j pi/256)."),
        fit("double", "vdsincos_sine", "sin(x)", [3, 5], HALF_STEP, "x"),
        fit("double", "vdsincos_ha_cosine", "cos(x)", [2, 4, 6], HALF_STEP, "1", "absolute"),
        fit("double", "vdsincos_la_cosine", "1 - cos(x)", [2, 4], HALF_STEP, "0", "absolute"),
        fit("double", "vdsincos_ep_sine", "sin(x)", [3], HALF_STEP, "x"),
        fit("double", "vdsincos_ep_cosine", "cos(x)", [2], HALF_STEP, "1", "absolute"),
    ], include="../../../simd/lookup.hpp")


def vdtan_tables():
    return header("vdtan_tables.hpp", [
        fit("double", "vdtan_tangent", "tan(x)", [3, 5, 7], HALF_STEP, "x"),
        fit("double", "vdtan_ep_tangent", "tan(x)", [3], HALF_STEP, "x"),
    ], include="../../simd/vectors.hpp")


PIECE, SCALE = 26, 256  # bits


def pieces_from(i):
    """Two Quads: eight pieces of 26 bits of 2^256 * 256/pi, from number i on; those before the
    first are 0."""
    saved, mp.prec = mp.prec, 1400
    try:
        bits = [int(floor(ldexp(256 / pi, PIECE * (k + 1) - 7))) for k in range(-1, i + 8)]
        pieces = {k - 1: bits[k] - (bits[k - 1] << PIECE) for k in range(1, len(bits))}
        return [float(ldexp(mpf(pieces.get(k, 0)), SCALE + 7 - PIECE * (k + 1)))
                for k in range(i, i + 8)]
    finally:
        mp.prec = saved


def vdfar_table():
    rows = [pieces_from(i) for i in range(-2, 38)]
    return header("vdfar_table.hpp", [
        array("Quad<double>", "vdfar_table", [tuple(row[k:k + 4]) for row in rows for k in (0, 4)],
              "Row i, two entries: pieces i - 2 to i + 5 of 2^256 * 256/pi, 26 bits each."),
    ], include="../../../simd/lookup.hpp")


def vssincos_polynomials():
    turns, radians = ("1b-20", "0.5003"), ("1b-20", "0.7862")
    return header("vssincos_polynomials.hpp", [
        fit("double", "vssincos_sine", "sin(pi/2*x)", [1, 3, 5, 7], turns),
        fit("double", "vssincos_cosine", "cos(pi/2*x)", [2, 4, 6, 8], turns, "1"),
        fit("float", "vssincos_la_sine", "sin(x)", [3, 5, 7], radians, "x"),
        fit("float", "vssincos_la_cosine", "cos(x)", [2, 4, 6, 8], radians, "1"),
        fit("float", "vssincos_ep_sine", "sin(x)", [3, 5], radians, "x"),
        fit("float", "vssincos_ep_cosine", "cos(x)", [2, 4], radians, "1"),
        fit("float", "vstan_la", "tan(x)", [3, 5, 7, 9, 11, 13], radians, "x"),
    ], include="../../../simd/vectors.hpp")


def two_over_pi_words():
    """The bits of 2/pi behind the point, 32 a word, after two words of zeros."""
    saved, mp.prec = mp.prec, 32 * WORDS + 64
    try:
        bits = int(floor(ldexp(2 / pi, 32 * (WORDS - 2))))
    finally:
        mp.prec = saved
    return [bits >> 32 * (WORDS - 1 - k) & 0xFFFFFFFF for k in range(WORDS)]


def two_over_pi():
    words = two_over_pi_words()
    lines = [", ".join(f"0x{w:08X}" for w in words[k:k + 8]) + "," for k in range(0, WORDS, 8)]
    return "\n".join([
        "// Made by: tools/make_tables.py two_over_pi.hpp",
        "// clang-format off",
        "#pragma once", "", "#include <stdint.h>", "", "namespace orv {", "",
        "// The bits of 2/pi behind the point, after 64 zeros.",
        f"inline constexpr uint32_t two_over_pi[{WORDS}] = {{", *("    " + line for line in lines), "};",
        "", "}  // namespace orv", ""])
