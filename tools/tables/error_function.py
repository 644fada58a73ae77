# SPDX-License-Identifier: MIT
from mpmath import chebyfit, diff, erf, erfc, exp, log, mp, mpf, polyval, sqrt

from .common import array, double, header, single, split, truncated
from .polynomials import fit

HALF = 26  # bits of a factor whose product with another's upper half is exact


def polynomial(f, low, high, count):
    """Near-minimax coefficients of f in ascending order."""
    saved, mp.prec = mp.prec, 160
    try:
        return chebyfit(f, [low, high], count)[::-1]
    finally:
        mp.prec = saved


def odd_polynomial(f, high, count):
    """Coefficients, ascending and with zeros between them, of an odd function up to `high`, small
    relative error."""
    in_square = polynomial(lambda v: f(sqrt(v)) / sqrt(v), mpf(2) ** -100, high ** 2, count)
    return [c for k in in_square for c in (mpf(0), k)]


def relative_error(f, rows, low, high):
    """Logarithm of the largest relative error of rows of coefficients at their ends and between."""
    worst = mpf(0)
    for at, coefficients in rows:
        for k in range(9):
            d = low + (high - low) * k / 8
            if at + d > 0:
                worst = max(worst, abs(polyval(coefficients[::-1], d) / f(at + d) - 1))
    return float(log(worst, 2))


def doubles(row):
    return [double(c) for c in row]


def singles(row):
    return [single(c) for c in row]


def entries(numbers, size):
    assert len(numbers) % size == 0
    return [tuple(numbers[i:i + size]) for i in range(0, len(numbers), size)]


# ---- Erf: rows at multiples of a step, for what is nearest to them -----------------------------


def erf_rows(step, count, length):
    """`count` rows of `length` coefficients of erf(r + d) in d, r = 0, step, ..."""
    half = mpf(step) / 2
    rows = [(mpf(0), odd_polynomial(erf, half, (length + 1) // 2)[:length])]
    for i in range(1, count):
        r = i * mpf(step)
        rows.append((r, polynomial(lambda d: erf(r + d), -half, half, length)))
    return rows


def erf_table(kind, name, steps, count, length, layout, remark=""):
    """Rows at r = i/steps."""
    rows = erf_rows(mpf(1) / steps, count, length)
    half = mpf(1) / (2 * steps)
    bound = relative_error(erf, rows, -half, half)
    entry, size = ("Quad", 4) if kind == "float" and length == 4 else ("Pair", 2)
    numbers = [e for _, row in rows for e in entries(layout(row), size)]
    return array(f"{entry}<{kind}>", name, numbers,
                 f"erf(i/{steps} + d) = c0 + c1 d + ... + c{length - 1} d^{length - 1}, i from 0 to {count - 1},\n"
                 f"|d| <= 1/{2 * steps}: relative error 2^{bound:.1f}.{remark}",
                 suffix="f" if kind == "float" else "")


def in_parts(row):
    """The first two in two parts, the second's upper one short."""
    c1_hi = truncated(row[1], HALF)
    return [*split(row[0]), c1_hi, double(row[1] - mpf(c1_hi)), *map(double, row[2:])]


def vderf_tables():
    return header("vderf_tables.hpp", [
        erf_table("double", "vderf_ha_table", 32, 192, 8, in_parts,
                  f" c0 and c1 are in two\nparts, the upper one of c1 has {HALF} bits."),
        erf_table("double", "vderf_la_table", 32, 192, 8, doubles),
        erf_table("double", "vderf_ep_table", 32, 192, 4, doubles),
    ])


def vserf_tables():
    return header("vserf_tables.hpp", [
        erf_table("double", "vserf_ha_table", 64, 252, 4, doubles),
        erf_table("float", "vserf_la_table", 32, 127, 4, singles),
        erf_table("float", "vserf_ep_table", 64, 252, 2, singles),
    ])


# ---- Erfc and CdfNorm: e^(-rate x^2) times a factor of slow decline ----------------------------


def erfc_factor(x):
    return exp(x * x) * erfc(x)


def cdfnorm_factor(x):
    return erfc_factor(x / sqrt(2)) / 2


def factor_rows(f, steps, last, length):
    """Rows of coefficients of f(r + d) in d, with the interval of d. With y = x + 1 + h and
    h = 1/(2 steps), row i is for the i-th interval of y from 1 on, `steps` of them from each power of
    two to the next, and r + 1 is its lower end. Row 0 has r = 0 in its middle and is exact there."""
    h = mpf(1) / (2 * steps)
    low, i = mpf(1), 0
    while low - h - 1 <= last:
        width = mpf(2) ** (i // steps) / steps
        r, ends = low - 1, (-h, width - h)
        if i > 0:
            yield r, ends, polynomial(lambda d: f(r + d), *ends, length)
        else:
            slope = polynomial(lambda d: (f(d) - f(0)) / d if d else diff(f, 0), *ends, length - 1)
            yield r, ends, [f(mpf(0)), *slope]
        low, i = low + width, i + 1


def first_in_parts(row):
    first = truncated(row[0], HALF)
    return [first, double(row[0] - mpf(first)), *map(double, row[1:])]


def factor_table(kind, name, f, what, bits, last, length, layout, remark=""):
    rows = list(factor_rows(f, 2 ** bits, mpf(last), length))
    bound = max(relative_error(f, [(r, row)], *ends) for r, ends, row in rows)
    size = 4 if kind == "float" and length == 4 else 2
    entry = "Quad" if size == 4 else "Pair"
    return array(f"{entry}<{kind}>", name, [e for *_, row in rows for e in entries(layout(row), size)],
                 f"{what} = c0 + c1 d + ... + c{length - 1} d^{length - 1}, x = r + d, {2 ** bits} rows from each power\n"
                 f"of two of r + 1 to the next, up to {last}: relative error 2^{bound:.1f}.{remark}",
                 suffix="f" if kind == "float" else "")


def near_zero_array(function, center):
    """What the function's tail loses from x = 0 on, odd in x; the first coefficient in two parts."""
    in_square = polynomial(center, mpf(0), (mpf(1) / 32) ** 2, 5)
    first = truncated(in_square[0], HALF)
    numbers = [first, double(in_square[0] - mpf(first)), *doubles(in_square[1:])]
    worst = max(abs(polyval(in_square[::-1], v) / center(v) - 1)
                for v in (mpf(2) ** -10 * k / 64 for k in range(1, 65)))
    return array("double", f"{function}_near_zero", numbers,
                 "Change from 0 to x over x, in x^2, |x| <= 1/32: relative error "
                 f"2^{float(log(worst, 2)):.1f}. The first\ncoefficient is in two parts, "
                 f"of {HALF} bits and the rest.")


def erf_over_x(rate, square):
    """erf(sqrt(rate) x)/x at the square of x."""
    x = sqrt(square)
    return erf(sqrt(rate) * x) / x if x else 2 * sqrt(rate / mp.pi)


def tail_tables(function, f, what, rate, last, last_short, last_float):
    """`last`: where the tables of the levels end."""
    def exponential(kind, name, degree):
        argument, reach = ("-x", "1/184") if rate == 1 else ("-x/2", "1/92")
        return fit(kind, f"{function}_{name}exponential", f"exp({argument})", range(1, degree + 1),
                   ("-" + reach, reach), "1")
    def table(kind, name, *rest):
        return factor_table(kind, f"{function}_{name}table", f, what, *rest)
    return header(f"{function}_tables.hpp", [
        table("double", "", 5, last, 9, first_in_parts,
              f" c0 is in two parts,\nof {HALF} bits and the rest."),
        table("double", "short_", 4, last_short, 6, doubles),
        table("float", "float_", 5, last_float, 4, singles),
        table("float", "short_float_", 5, last_float, 2, singles),
        exponential("double", "", 5), exponential("double", "short_", 3),
        exponential("float", "float_", 2), exponential("float", "short_float_", 1),
        near_zero_array(function, lambda v: erf_over_x(rate, v) * f(mpf(0))),
    ])


def erfc_tables():
    return tail_tables("erfc", erfc_factor, "e^(x^2) erfc(x)", 1, 27.25, 9.25, 9.25)


def cdfnorm_tables():
    return tail_tables("cdfnorm", cdfnorm_factor, "e^(x^2/2) erfc(x/sqrt(2))/2", mpf(1) / 2, 38.5, 37.6, 13)


def normal_tail_tables():
    powers = [mpf(2) ** (mpf(j) / 64) for j in range(64)]
    short = [truncated(p, HALF + 1) for p in powers]
    return header("normal_tail_tables.hpp", [
        array("Pair<double>", "normal_tail_power_parts",
              [(s, double(p - mpf(s))) for p, s in zip(powers, short)],
              f"2^(j/64): {HALF + 1} bits and the rest."),
        array("double", "normal_tail_powers", doubles(powers), "2^(j/64)"),
        array("float", "normal_tail_float_powers", singles(powers), "2^(j/64)", suffix="f"),
    ], include="../../../simd/lookup.hpp")
