from mpmath import exp, factorial, linspace, log, mpf

from .common import array, double, header, single, split


def scale(polynomial, bound):
    """What a table must be divided by to make table times polynomial e^r, |r| <= bound, with the
    largest relative error as small as it can be: the middle of polynomial(r)/e^r."""
    ratios = [polynomial(r) / exp(r) for r in linspace(-bound, bound, 401)]
    return (min(ratios) + max(ratios)) / 2


def vdexp_la_polynomial(r):
    return ((r + mpf(3.0000000172366073)) * r + mpf(5.999999973728265)) * r + mpf(5.999999973728264)


def vdexp_ep_polynomial(r):
    d = r / (log(2) / 64)
    return (d + mpf(184.66598058764086)) * d + mpf(17050.60594303826)


def two_to(j, step):
    return mpf(2) ** (mpf(j) / step)


def relative_split(x):
    high, _ = split(x)
    return high, double((x - mpf(high)) / mpf(high))


def vdexp_tables():
    la_scale = scale(vdexp_la_polynomial, log(2) / 2048)
    ep_scale = scale(vdexp_ep_polynomial, log(2) / 128)
    return header("vdexp_tables.hpp", [
        array("Pair<double>", "vdexp_ha_table", [split(two_to(j, 64)) for j in range(64)],
              "High and low parts of 2^(j/64)."),
        array("double", "vdexp_la_table",
              [double(two_to(j, 1024) / la_scale) for j in range(1024)],
              f"2^(j/1024)/{double(la_scale)}: LA's polynomial is that many times e^r."),
        array("double", "vdexp_ep_table",
              [double(two_to(j, 64) / ep_scale) for j in range(64)],
              f"2^(j/64)/{double(ep_scale)}: EP's polynomial is that many times e^r."),
        array("Pair<double>", "_rewdExpHATab", [relative_split(two_to(j, 64)) for j in range(64)],
              "2^(j/64) as T*(1 + t): high part T, and low part t relative to it."),
    ])


def monic_series(degree, unit):
    """degree! e^r as a polynomial in r/unit with leading coefficient 1, without that term: the
    series to the term of `degree`, whose own error is far below the level's at this short r."""
    coefficients = [exp(0) / factorial(k) for k in range(degree + 1)]
    return [single(c * unit ** k / (coefficients[degree] * unit ** degree))
            for k, c in enumerate(coefficients[:degree])]


def vsexp_tables():
    step, half = log(2) / 128, log(2) / 256
    arrays = [array("Pair<float>", "vsexp_ha_table",
                    [split(two_to(j, 128), single) for j in range(128)],
                    "High and low parts of 2^(j/128).", suffix="f")]
    for level, degree, unit in (("la", 2, mpf(1)), ("ep", 1, step)):
        c = monic_series(degree, unit)
        polynomial = lambda r: sum(mpf(x) * (r / unit) ** k for k, x in enumerate([*c, 1]))
        factor = scale(polynomial, half)
        arrays += [
            array("float", f"vsexp_{level}_polynomial", c,
                  f"{double(factor)} e^r, with a further term of coefficient 1.", suffix="f"),
            array("float", f"vsexp_{level}_table",
                  [single(two_to(j, 128) / factor) for j in range(128)],
                  "2^(j/128) divided by that factor.", suffix="f")]
    return header("vsexp_tables.hpp", arrays)
