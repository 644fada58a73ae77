from mpmath import mpf

from .common import array, double, header, split

# Constant terms of the polynomials of the table-scaled levels: the table carries them, so that
# table times polynomial is 2^(j/step) at a reduced argument of 0.
VDEXP_LA_C0 = 5.999999973728264
VDEXP_EP_C0 = 17050.60594303826


def two_to(j, step):
    return mpf(2) ** (mpf(j) / step)


def relative_split(x):
    high, _ = split(x)
    return high, double((x - mpf(high)) / mpf(high))


def vdexp_tables():
    return header("vdexp_tables.hpp", [
        array("Pair<double>", "vdexp_ha_table", [split(two_to(j, 64)) for j in range(64)],
              "High and low parts of 2^(j/64)."),
        array("double", "vdexp_la_table",
              [double(two_to(j, 1024) / mpf(VDEXP_LA_C0)) for j in range(1024)],
              f"2^(j/1024) over the polynomial's constant term, {VDEXP_LA_C0}."),
        array("double", "vdexp_ep_table",
              [double(two_to(j, 64) / mpf(VDEXP_EP_C0)) for j in range(64)],
              f"2^(j/64) over the polynomial's constant term, {VDEXP_EP_C0}."),
        array("Pair<double>", "_rewdExpHATab", [relative_split(two_to(j, 64)) for j in range(64)],
              "2^(j/64) as T*(1 + t): high part T, and low part t relative to it."),
    ])
