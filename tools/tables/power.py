# SPDX-License-Identifier: MIT
from mpmath import log, mpf, nint

from .common import array, double, header, single, split, truncated
from .exp import two_to
from .polynomials import fit

LOG2_E = 1 / log(mpf(2))


def log2(x):
    return log(mpf(x)) * LOG2_E


def rounded(x, bits):
    """To a multiple of 2^-bits."""
    return nint(mpf(x) * 2 ** bits) / 2 ** bits


def short_split(x, bits):
    """A multiple of 2^-bits, and the rest."""
    high = rounded(x, bits)
    return double(high), double(x - high)


def centers(count):
    """Where a table's rows stand, of numbers from 0.75 to 1.5: `count` rows are half of them on
    either side of 1, evenly."""
    half = count // 2
    return [mpf(3) / 4 + mpf(j) / (2 * count) if j < half else 1 + mpf(j - half) / count
            for j in range(count)]


# ---- Lanes of two parts ------------------------------------------------------------------------

VDPOW_UNIT = double(rounded(LOG2_E, 14))
VDPOW_SQUARE = double(truncated(-1 / LOG2_E / 2, 15))
VDPOW_INTERVAL = ("-0x1.8p-11", "0x1.8p-11")


def vdpow_rows():
    """Unit over the row's number, of 14 bits behind the point, and the logarithm that it stands for."""
    rows = []
    for center in centers(1024):
        reciprocal = rounded(VDPOW_UNIT / center, 14)
        rows.append((double(reciprocal), *short_split(-log2(reciprocal / mpf(VDPOW_UNIT)), 42)))
    assert rows[512] == (VDPOW_UNIT, 0, 0)
    return rows


def plain_rows(count):
    """The number nearest to one over the row's, and the logarithm that it stands for."""
    reciprocals = [double(1 / center) for center in centers(count)]
    assert reciprocals[count // 2] == 1
    return [(r, double(-log2(r))) for r in reciprocals]


def vdpow_tables():
    rows = vdpow_rows()
    log_rest = f"(log2(1 + x/{VDPOW_UNIT!r}) - x)/x"
    step = ("-0x1.01p-8", "0x1.01p-8")  # half a row of 128, and what the exponent's tail adds
    return header("vdpow_tables.hpp", [
        f"inline constexpr double vdpow_unit = {VDPOW_UNIT.hex()};  // log2(e), of 14 bits behind the point",
        f"inline constexpr double vdpow_square = {VDPOW_SQUARE.hex()};  // -ln(2)/2, of 15 bits", "",
        fit("double", "vdpow_ha_log", f"{log_rest} - x*({VDPOW_SQUARE!r})", range(0, 6),
            VDPOW_INTERVAL, error="absolute"),
        fit("double", "vdpow_la_log", log_rest, range(0, 6), VDPOW_INTERVAL, error="absolute"),
        fit("double", "vdpow_ep_log", "log2(1 + x)/x", range(0, 4), ("-0x1p-9", "0x1p-9")),
        fit("double", "vdpow_ha_exp", "(2^x - 1)/x", range(0, 5), step, error="absolute"),
        fit("double", "vdpow_ep_exp", "(2^x - 1)/x", range(0, 2), step, error="absolute"),
        array("double", "vdpow_reciprocals", [row[0] for row in rows],
              "vdpow_unit/m, of 14 bits behind the point, m = 0.75 + j/2048 for j < 512, else\n"
              "0.5 + j/1024."),
        array("Pair<double>", "vdpow_logs", [row[1:] for row in rows],
              "The base-2 logarithm of vdpow_unit over that: a multiple of 2^-42, and the rest."),
        array("Pair<double>", "vdpow_ep_rows", plain_rows(256),
              "1/m and minus its base-2 logarithm, m = 0.75 + j/512 for j < 128, else 0.5 + j/256."),
        array("Pair<double>", "vdpow_powers", [split(two_to(j, 128)) for j in range(128)],
              "High and low parts of 2^(j/128)."),
        array("double", "vdpow_short_powers", [double(two_to(j, 128)) for j in range(128)],
              "2^(j/128)."),
    ])


VSPOW_CENTERS = [mpf(c) / 128 for c in (93, 109, 128, 154)]


def vspow_tables():
    third = ("-0x1.555556p-2", "0x1.555556p-2")
    half = ("-0.5", "0.5")
    slope_hi = truncated(2 * LOG2_E, 12)
    return header("vspow_tables.hpp", [
        fit("double", "vspow_ha_exp", "(2^x - 1)/x", range(0, 3), ("-0x1.01p-8", "0x1.01p-8"),
            error="absolute"),
        f"inline constexpr float vspow_slope_hi = {slope_hi.hex()}f;  // 2 log2(e), of 12 bits",
        f"inline constexpr float vspow_slope_lo = {single(2 * LOG2_E - mpf(slope_hi)).hex()}f;", "",
        array("float", "vspow_la_centers", [double(c) for c in VSPOW_CENTERS],
              "Of the quarters of 2/3 to 4/3, by bit patterns.", suffix="f"),
        array("float", "vspow_la_log_hi", [short_split(log2(c), 12)[0] for c in VSPOW_CENTERS],
              "Their base-2 logarithms: 12 bits behind the point,", suffix="f"),
        array("float", "vspow_la_log_lo", [single(log2(c) - rounded(log2(c), 12)) for c in VSPOW_CENTERS],
              "and the rest.", suffix="f"),
        fit("float", "vspow_la_log", "log2((1 + x)/(1 - x))", [3, 5], ("1b-10", "0.055"),
            "2*x/log(2)"),
        fit("float", "vspow_la_exp", "(2^x - 1)/x", range(0, 6), half),
        fit("float", "vspow_ep_log", "log2(1 + x)/x", range(0, 7), third),
        fit("float", "vspow_ep_exp", "(2^x - 1)/x", range(0, 3), half),
    ], include="../../simd/vectors.hpp")


# ---- The slow path's three levels --------------------------------------------------------------

POW_UNIT = double(rounded(LOG2_E - mpf(2) ** -23, 22))  # below log2(e)


def level(count, below_from, step, bits, unit=1):
    """Rows 0 to `count` for numbers near 1, as their upper fraction bits tell them: row j stands for
    1 + j/step, those from `below_from` on for 1 - (count - j)/(2 step). A reciprocal of `bits` bits
    behind the point, and the logarithm that it stands for."""
    rows = []
    for j in range(count + 1):
        center = 1 + mpf(j) / step if j < below_from else 1 - mpf(count - j) / (2 * step)
        reciprocal = rounded(unit / center, bits)
        rows.append((double(reciprocal), *short_split(-log2(reciprocal / unit), 42)))
    return rows


def pow_slow_tables():
    unit = mpf(POW_UNIT)
    return header("pow_slow_tables.hpp", [
        f"inline constexpr double pow_slow_unit = {POW_UNIT.hex()};  // log2(e), of 22 bits behind the point", "",
        fit("double", "pow_slow_log", f"(log2(1 + x/{POW_UNIT.hex()}) - x)/x", range(0, 4),
            ("-0x1.8p-16", "0x1.8p-16"), error="absolute"),
        array("Triple<double>", "pow_slow_level1", level(32, 16, 32, 15),
              "A short reciprocal of 1 + j/32 for j < 16, else of 1 - (32 - j)/64, and minus its base-2\n"
              "logarithm: a multiple of 2^-42, and the rest."),
        array("Triple<double>", "pow_slow_level2", level(32, 16, 512, 13),
              "Likewise of 1 + j/512 and 1 - (32 - j)/1024."),
        array("Triple<double>", "pow_slow_level3", level(128, 48, 32768, 22, unit),
              "pow_slow_unit over 1 + j/32768 and 1 - (128 - j)/65536, and the logarithms of what that is."),
    ])
