"""Tables of the scalar functions that distributions and statistics share."""
import pathlib

from mpmath import log, mpf, nint

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
