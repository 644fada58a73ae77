# SPDX-License-Identifier: MIT
from .common import header
from .polynomials import fit


def arcsine(kind, name, degree, fixed="x"):
    """P with 2 asin(x/2) = fixed + x^3 P(x^2)."""
    powers = [2 * k + 3 for k in range(degree + 1)]
    return fit(kind, name, "2*asin(x/2)", powers, ("1b-20", "1"), fixed)


def arcsine_polynomials():
    return header("arcsine_polynomials.hpp", [
        arcsine("double", "vdarcsine_ha", 12, "x + x^3/32"),
        arcsine("double", "vdarcsine_la", 11),
        arcsine("double", "vdarcsine_ep", 4),
        arcsine("double", "vsarcsine_ha", 5),
        arcsine("float", "vsarcsine_la", 4),
        arcsine("float", "vsarcsine_ep", 1),
    ], include="../../../simd/vectors.hpp")
