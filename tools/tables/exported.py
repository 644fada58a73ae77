# SPDX-License-Identifier: MIT
from mpmath import atan, ceil, log, mpf, nint

from .common import array, double, split, truncated


def reciprocal(i):
    """Of the midpoint of [1 + i/256, 1 + (i + 1)/256), rounded to 11 significant bits."""
    return truncated(1 / (1 + (mpf(2 * i + 1)) / 512), 11)


def split_at(value, unit, rounding):
    high = double(rounding(value / unit) * unit)
    return high, double(value - mpf(high))


def log_pair(i):
    """The high part is a multiple of 2^-29: an exponent times a short ln2 adds to it exactly."""
    high, low = split_at(-log(mpf(reciprocal(i))), mpf(2) ** -29, nint)
    return low, high


def logl_pair(i):
    """The high part is a multiple of 2^-48, which does the same in a 64-bit significand."""
    return split_at(-log(mpf(reciprocal(i))), mpf(2) ** -48, ceil)


def expl_pair(j):
    value = mpf(2) ** (mpf(j - 128) / 256)
    high = truncated(value, 31)
    return high, double(value - mpf(high))


def exported_tables():
    rcp = [reciprocal(i) for i in range(256)]
    none = ""
    return "\n".join([
        "// Made by: tools/make_tables.py exported_tables.cpp",
        "// clang-format off",
        "#include <orv/qem.h>",
        "",
        array("const float", "orv_qem_core_rcp_table_256", rcp,
              "Reciprocals of the midpoints of [1 + i/256, 1 + (i + 1)/256), 11 bits.", none, "f"),
        array("const double", "orv_qem_core_double_rcp_table_256", rcp, "The same as doubles.", none),
        array("const double", "orv_qem_core_log_table_256", [log_pair(i) for i in range(256)],
              "Low part, then high part (a multiple of 2^-29), of -ln of the reciprocal.", none).replace("[256] =", "[256][2] ="),
        array("const double", "orv_qem_core_logl_table_256", [logl_pair(i) for i in range(256)],
              "High part (a multiple of 2^-48), then low part, of -ln of the reciprocal.", none).replace("[256] =", "[256][2] ="),
        array("const double", "orv_qem_core_expl_table_256", [expl_pair(j) for j in range(257)],
              "High (31 bits), low part of 2^((j - 128)/256).", none).replace("[257] =", "[257][2] ="),
        array("const double", "orv_qem_core_atanl_table_128",
              [split(atan(mpf(j) / 128)) for j in range(513)],
              "High, low part of atan(j/128).", none).replace("[513] =", "[513][2] ="),
    ])
