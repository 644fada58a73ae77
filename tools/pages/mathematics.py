# SPDX-License-Identifier: MIT
"""What the lists don't hold: each function's formula, its domain, and over what its error is drawn."""
from typing import NamedTuple

from mpmath import mp


class Mathematics(NamedTuple):
    family: str
    formula: str         # of an element, HTML
    domain: str          # of real arguments
    true: object = None  # the value in multiple precision
    low: float = 0       # the picture's range; from a positive low to a high ratio it is logarithmic
    high: float = 0

    @property
    def logarithmic(self):
        return self.low > 0 and self.high / self.low > 100


def quantile(p):
    return mp.sqrt(2) * mp.erfinv(2 * p - 1) if p > 0.25 else -mp.sqrt(2) * inverse_erfc(2 * p)


def inverse_erfc(y):
    """Where erfc is y: from double arithmetic's estimate by Newton's steps, which also serve small y."""
    if y > 0.5:
        return mp.erfinv(1 - y)
    x = mp.sqrt(-mp.log(y * mp.sqrt(mp.pi * max(-mp.log(y), 1))))
    for _ in range(60):
        step = (mp.erfc(x) - y) * mp.sqrt(mp.pi) / 2 * mp.exp(x * x)
        x += step
        if abs(step) < abs(x) * mp.eps * 16:
            break
    return x


ALL = "all numbers"
_ARITHMETIC, _POWERS, _EXPONENTS = "Arithmetic", "Powers and roots", "Exponentials and logarithms"
_ANGLES, _HYPERBOLIC, _NORMAL = "Trigonometric", "Hyperbolic", "Error functions and the normal law"
_WHOLE, _COMPLEX, _MOVES = "Rounding", "Complex numbers", "Data movement"
SUP = "<sup>{}</sup>".format

FUNCTIONS = {
    "Add": Mathematics(_ARITHMETIC, "a + b", ALL),
    "Sub": Mathematics(_ARITHMETIC, "a − b", ALL),
    "Mul": Mathematics(_ARITHMETIC, "a b", ALL),
    "Div": Mathematics(_ARITHMETIC, "a / b", "b ≠ 0"),
    "Sqr": Mathematics(_ARITHMETIC, "x" + SUP("2"), ALL),
    "Inv": Mathematics(_ARITHMETIC, "1 / x", "x ≠ 0"),
    "Abs": Mathematics(_ARITHMETIC, "|x|", ALL),
    "LinearFrac": Mathematics(_ARITHMETIC, "(scalea a + shifta) / (scaleb b + shiftb)", "denominator ≠ 0"),
    "Sqrt": Mathematics(_POWERS, "√x", "x ≥ 0"),
    "InvSqrt": Mathematics(_POWERS, "1 / √x", "x &gt; 0", lambda x: 1 / mp.sqrt(x), 1e-6, 1e6),
    "Cbrt": Mathematics(_POWERS, "∛x", ALL, mp.cbrt, 1e-6, 1e6),
    "InvCbrt": Mathematics(_POWERS, "1 / ∛x", "x ≠ 0", lambda x: 1 / mp.cbrt(x), 1e-6, 1e6),
    "Pow2o3": Mathematics(_POWERS, "x" + SUP("2/3"), ALL, lambda x: mp.cbrt(x) ** 2, 1e-6, 1e6),
    "Pow3o2": Mathematics(_POWERS, "x" + SUP("3/2"), "x ≥ 0", lambda x: mp.sqrt(x) ** 3, 1e-6, 1e6),
    "Pow": Mathematics(_POWERS, "a" + SUP("b"), "a &gt; 0; a &lt; 0 with a whole b"),
    "Powx": Mathematics(_POWERS, "a" + SUP("b"), "a &gt; 0; a &lt; 0 with a whole b"),
    "Hypot": Mathematics(_POWERS, "√(a² + b²)", ALL),
    "Exp": Mathematics(_EXPONENTS, "e" + SUP("x"), ALL, mp.exp, -80, 80),
    "Expm1": Mathematics(_EXPONENTS, "e" + SUP("x") + " − 1", ALL, mp.expm1, -2, 2),
    "Ln": Mathematics(_EXPONENTS, "ln x", "x &gt; 0", mp.log, 1e-3, 1e3),
    "Log10": Mathematics(_EXPONENTS, "log<sub>10</sub> x", "x &gt; 0", mp.log10, 1e-3, 1e3),
    "Log1p": Mathematics(_EXPONENTS, "ln(1 + x)", "x &gt; −1", mp.log1p, -0.999, 4),
    "Sin": Mathematics(_ANGLES, "sin x", ALL, mp.sin, -10, 10),
    "Cos": Mathematics(_ANGLES, "cos x", ALL, mp.cos, -10, 10),
    "SinCos": Mathematics(_ANGLES, "sin x, cos x", ALL),
    "Tan": Mathematics(_ANGLES, "tan x", ALL, mp.tan, -10, 10),
    "Asin": Mathematics(_ANGLES, "arcsin x", "−1 ≤ x ≤ 1", mp.asin, -1, 1),
    "Acos": Mathematics(_ANGLES, "arccos x", "−1 ≤ x ≤ 1", mp.acos, -1, 1),
    "Atan": Mathematics(_ANGLES, "arctan x", ALL, mp.atan, -8, 8),
    "Atan2": Mathematics(_ANGLES, "angle of (b, a)", ALL),
    "Sinh": Mathematics(_HYPERBOLIC, "sinh x", ALL, mp.sinh, -10, 10),
    "Cosh": Mathematics(_HYPERBOLIC, "cosh x", ALL, mp.cosh, -10, 10),
    "Tanh": Mathematics(_HYPERBOLIC, "tanh x", ALL, mp.tanh, -10, 10),
    "Asinh": Mathematics(_HYPERBOLIC, "arsinh x", ALL, mp.asinh, -10, 10),
    "Acosh": Mathematics(_HYPERBOLIC, "arcosh x", "x ≥ 1", mp.acosh, 1, 20),
    "Atanh": Mathematics(_HYPERBOLIC, "artanh x", "−1 &lt; x &lt; 1", mp.atanh, -0.999, 0.999),
    "Erf": Mathematics(_NORMAL, "erf x", ALL, mp.erf, -5, 5),
    "Erfc": Mathematics(_NORMAL, "1 − erf x", ALL, mp.erfc, -4, 9),
    "CdfNorm": Mathematics(_NORMAL, "Φ(x) = erfc(−x / √2) / 2", ALL,
                           lambda x: mp.erfc(-x / mp.sqrt(2)) / 2, -12, 6),
    "ErfInv": Mathematics(_NORMAL, "y with erf y = x", "−1 &lt; x &lt; 1", mp.erfinv, -0.999, 0.999),
    "ErfcInv": Mathematics(_NORMAL, "y with erfc y = x", "0 &lt; x &lt; 2", inverse_erfc, 1e-6, 1),
    "CdfNormInv": Mathematics(_NORMAL, "y with Φ(y) = x", "0 &lt; x &lt; 1", quantile, 1e-6, 0.9),
    "Floor": Mathematics(_WHOLE, "⌊x⌋", ALL),
    "Ceil": Mathematics(_WHOLE, "⌈x⌉", ALL),
    "Trunc": Mathematics(_WHOLE, "x without its fraction", ALL),
    "Round": Mathematics(_WHOLE, "whole number nearest to x", ALL),
    "Rint": Mathematics(_WHOLE, "whole number near x", ALL),
    "NearbyInt": Mathematics(_WHOLE, "whole number near x", ALL),
    "Modf": Mathematics(_WHOLE, "x without its fraction, its fraction", ALL),
    "Conj": Mathematics(_COMPLEX, "Re x − i Im x", ALL),
    "Arg": Mathematics(_COMPLEX, "arg x", ALL),
    "CIS": Mathematics(_COMPLEX, "cos x + i sin x", ALL),
    "MulByConj": Mathematics(_COMPLEX, "a b̄", ALL),
    "PackI": Mathematics(_MOVES, "y<sub>i</sub> = a<sub>i·incr</sub>", ALL),
    "PackV": Mathematics(_MOVES, "y<sub>i</sub> = a<sub>ia[i]</sub>", ALL),
    "PackM": Mathematics(_MOVES, "y<sub>k++</sub> = a<sub>i</sub> where ma<sub>i</sub> ≠ 0", ALL),
    "UnpackI": Mathematics(_MOVES, "y<sub>i·incr</sub> = a<sub>i</sub>", ALL),
    "UnpackV": Mathematics(_MOVES, "y<sub>iy[i]</sub> = a<sub>i</sub>", ALL),
    "UnpackM": Mathematics(_MOVES, "y<sub>i</sub> = a<sub>k++</sub> where my<sub>i</sub> ≠ 0", ALL),
}
