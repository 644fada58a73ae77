# SPDX-License-Identifier: MIT
"""Tables of the routines in extended arithmetic that are not exported."""
from mpmath import pi, sin

from .common import array, header, split


def sine_table():
    rows = [split(sin(k * pi / 256)) if k else (-0.0, -0.0) for k in range(129)]
    return header("sine_table.hpp", [
        array("double", "sine_table", rows,
              "High and low part of sin(k pi/256).").replace("[129] =", "[129][2] ="),
    ], include="../../../simd/vectors.hpp")
