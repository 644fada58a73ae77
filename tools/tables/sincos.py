from mpmath import cos, floor, frexp, ldexp, mp, mpf, pi, sin

from .common import array, double, header, split
from .polynomials import fit

STEPS = 512  # of pi/256, a full turn
WORDS = 40


def one_bit(x):
    """The power of two nearest to x, with its sign; 0 for 0."""
    if x == 0:
        return mpf(0)
    mantissa, exponent = frexp(abs(x))
    power = ldexp(mpf(1), exponent - 1 if mantissa < 0.75 else exponent)
    return power if x > 0 else -power


def exact_zero(x):
    return mpf(0) if abs(x) < mpf(2) ** -200 else x


def row(j):
    """cos in a power of two and the rest, sin in high and low parts."""
    angle = j * pi / (STEPS // 2)
    cosine, sine = exact_zero(cos(angle)), exact_zero(sin(angle))
    upper = one_bit(cosine)
    return (double(upper), double(cosine - upper), *split(sine))


def vdsincos_tables():
    return header("vdsincos_tables.hpp", [
        array("Quad<double>", "vdsincos_table", [row(j) for j in range(STEPS)],
              "cos(j pi/256) as a power of two and the rest, sin(j pi/256) as high and low parts."),
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
