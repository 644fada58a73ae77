# SPDX-License-Identifier: MIT
"""Tables of the scalar functions that distributions and statistics share."""
import pathlib

from mpmath import (
    bernoulli, cos, euler, ldexp, log, loggamma, lu_solve, mag, matrix, mpf, nint, pi, polyval)

from .common import array, double, header, number, truncated
from .polynomials import fit

FOLDER = pathlib.Path("zok/_src/zok_sub_kernel/_math/tables")

UNIT = mpf(2) ** -42  # an exponent times the high part of ln 2 plus that of a row is exact


def in_parts(x):
    high = nint(x / UNIT) * UNIT
    return double(high), double(x - high)


def scalar_ln_row(i):
    """The reciprocal is short, so that it times either half of a double is exact."""
    reciprocal = truncated(1 / (1 + mpf(i) / 128), 20)
    return reciprocal, *in_parts(-log(mpf(reciprocal)))


def scalar_ln_table():
    ln2 = in_parts(log(mpf(2)))
    return header("scalar_ln_table.hpp", [
        "struct LnRow {\n  double reciprocal, ln_hi, ln_lo;\n};\n",
        f"inline constexpr double ln2_hi = {number(ln2[0])}, ln2_lo = {number(ln2[1])};\n",
        fit("double", "scalar_ln_series", "log1p(x)/x", range(2, 7), ("-1/255", "1/250"),
            "1 - x/2"),
        array("LnRow", "scalar_ln_table", [scalar_ln_row(i) for i in range(128)],
              "Short reciprocal of 1 + i/128, minus its logarithm in two parts, of which the high\n"
              "one is a multiple of 2^-42."),
    ], include=None)


def extended(x):
    """x rounded to an extended number, as a literal."""
    x = mpf(x)
    sign, mantissa, exponent, bits = ldexp(nint(ldexp(x, 64 - mag(x))), mag(x) - 64)._mpf_
    return f"{'-' if sign else ''}0x{mantissa:X}p{exponent:+}L"


def chebyshev_fit(f, degree, low, high):
    """Coefficients of the polynomial that interpolates f at the points of Chebyshev: within a small
    factor of the best."""
    middle, half = (mpf(low) + high) / 2, (mpf(high) - low) / 2
    points = [middle + half * cos(pi * (2 * i + 1) / (2 * degree + 2)) for i in range(degree + 1)]
    return lu_solve(matrix([[x ** k for k in range(degree + 1)] for x in points]),
                    matrix([f(x) for x in points]))


def log_gamma_over_t(t):
    return (loggamma(2 + t) / t).real if t else 1 - euler


def log_gamma_series():
    coefficients = list(chebyshev_fit(log_gamma_over_t, 21, -0.5, 0.5))
    checks = [mpf(i) / 201 for i in range(-100, 101)]
    error = max(abs(polyval(coefficients[::-1], t) / log_gamma_over_t(t) - 1) for t in checks)
    return coefficients, float(log(error, 2))


def log_gamma_tables():
    coefficients, error = log_gamma_series()
    stirling = [double(bernoulli(2 * k) / (2 * k * (2 * k - 1))) for k in range(2, 9)]
    return header("log_gamma_tables.hpp", [
        f"inline constexpr long double ln_root_2_pi = {extended(log(2 * pi) / 2)};\n",
        "// ln gamma(2 + t) / t, coefficients of t^0 and up,\n"
        f"// t from -1/2 to 1/2: relative error 2^{error:.1f}\n"
        f"inline constexpr long double log_gamma_series[{len(coefficients)}] = {{\n"
        + "".join(f"    {extended(c)},\n" for c in coefficients) + "};\n",
        array("double", "stirling_series", stirling,
              "Of the logarithm of gamma (Stirling 1730): coefficients of 1/x^3, 1/x^5 and on."),
    ], include=None)
