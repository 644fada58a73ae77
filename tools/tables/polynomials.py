# SPDX-License-Identifier: MIT
"""Polynomials fitted by Sollya: coefficients that are numbers of the format, smallest largest error."""
import math
import re
import subprocess

from .common import number, single

FORMAT = {"double": "D", "float": "SG"}


def sollya(script):
    run = subprocess.run(["sollya", "--warnonstderr"], input=script + "\nquit;\n", text=True,
                         capture_output=True, check=True)
    return [line for line in run.stdout.splitlines() if re.match(r"^-?[0-9.]", line)]


def fit(kind, name, function, powers, interval, constant_part="0", error="relative"):
    """An array `name` of the coefficients of x^powers. `constant_part` is the fixed rest of the
    polynomial. The error is relative to `function`, or absolute."""
    low, high = interval
    formats = ",".join([FORMAT[kind]] * len(powers))
    target = "p - f" if error == "absolute" else "p/f - 1"
    lines = sollya(
        f"prec = 300; display = decimal!; f = {function}; dom = [{low};{high}];\n"
        f"p = fpminimax(f, [|{','.join(map(str, powers))}|], [|{formats}|], dom, floating, {error},"
        f" {constant_part});\n"
        f"print(dirtyinfnorm({target}, dom));\n"
        + "".join(f"print(coeff(p - ({constant_part}), {k}));\n" for k in powers))
    bound = math.log2(abs(float(lines[0])))
    round_to = float if kind == "double" else single
    coefficients = [round_to(line) for line in lines[1:]]
    suffix = "f" if kind == "float" else ""
    terms = " + ".join(f"{name}[{i}] x^{k}" if k else f"{name}[{i}]" for i, k in enumerate(powers))
    fixed = "" if constant_part == "0" else constant_part + " + "
    return "\n".join([
        f"// {function} = {fixed}{terms},",
        f"// x from {low} to {high}: {error} error 2^{bound:.1f}",
        f"inline constexpr {kind} {name}[] = {{",
        *[f"    {number(c, suffix)}," for c in coefficients],
        "};", ""])
