# SPDX-License-Identifier: MIT
from .common import header
from .polynomials import fit

# s^2 for s = 2 (m - 1)/(m + 1). The greatest m is the first one that is halved, 1.74; Atanh, which
# takes the difference of bit patterns for a logarithm's, has least ones of 0.79.
SQUARES = ("0x1p-60", "0.2918")


def log_ratio(kind, name, terms):
    """ln m = s (1 + c[0] s^2 + ...)"""
    return fit(kind, name, "2*atanh(sqrt(x)/2)/sqrt(x)", range(1, terms + 1), SQUARES, "1")


def inverse_hyperbolic_polynomials():
    return header("inverse_hyperbolic_polynomials.hpp", [
        log_ratio("double", "vdlog_ratio_la", 8),
        log_ratio("double", "vslog_ratio_ha", 4),
        log_ratio("float", "vslog_ratio_la", 4),
        log_ratio("float", "vslog_ratio_ep", 1),
    ], include="../../../simd/vectors.hpp")
