#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Writes what the Python package has for each function, from the function lists:

    tools/make_python_functions.py            writes the files anew
    tools/make_python_functions.py --check    only tells whether they are current

These are python/src/functions.inc, the rows of the extension module, and the stubs of the package
and of its levels.
"""
import argparse
import re
import sys

from function_list import LEVELS, ROOT, accuracy, descriptions, functions

# NumPy's names where it has the function; the others by what they are.
NAMES = {
    "Abs": "absolute", "Acos": "arccos", "Acosh": "arccosh", "Add": "add", "Arg": "angle",
    "Asin": "arcsin", "Asinh": "arcsinh", "Atan": "arctan", "Atan2": "arctan2", "Atanh": "arctanh",
    "CIS": "cis", "Cbrt": "cbrt", "CdfNorm": "cdfnorm", "CdfNormInv": "cdfnorminv", "Ceil": "ceil",
    "Conj": "conjugate", "Cos": "cos", "Cosh": "cosh", "Div": "divide", "Erf": "erf",
    "ErfInv": "erfinv", "Erfc": "erfc", "ErfcInv": "erfcinv", "Exp": "exp", "Expm1": "expm1",
    "Floor": "floor", "Hypot": "hypot", "Inv": "reciprocal", "InvCbrt": "invcbrt",
    "InvSqrt": "invsqrt", "LinearFrac": "linearfrac", "Ln": "log", "Log10": "log10",
    "Log1p": "log1p", "Modf": "modf", "Mul": "multiply", "MulByConj": "multiply_by_conjugate",
    "NearbyInt": "nearbyint", "Pow": "power", "Pow2o3": "pow2o3", "Pow3o2": "pow3o2",
    "Powx": "powx", "Rint": "rint", "Round": "round_half_away", "Sin": "sin", "SinCos": "sincos",
    "Sinh": "sinh", "Sqr": "square", "Sqrt": "sqrt", "Sub": "subtract", "Tan": "tan",
    "Tanh": "tanh", "Trunc": "trunc",
}
# These move elements: a[::k], a[index] and a[mask] do that.
MOVES = {"PackI", "PackM", "PackV", "UnpackI", "UnpackM", "UnpackV"}

# The operands of each shape, of elements T with parts R: vectors in, single numbers in, results.
OPERANDS = {
    "Unary": ("T", "", "T"), "Binary": ("TT", "", "T"), "ScalarSecond": ("T", "T", "T"),
    "TwoResults": ("T", "", "TT"), "ComplexToReal": ("T", "", "R"), "RealToComplex": ("R", "", "T"),
    "FractionalLinear": ("TT", "TTTT", "T"),
}
IDENTITY = {"add": "PyUFunc_Zero", "multiply": "PyUFunc_One", "hypot": "PyUFunc_Zero"}
CODES = {"float": {"s": "f", "d": "d", "c": "F", "z": "D"}, "part": {"s": "f", "d": "d", "c": "f", "z": "d"}}
TYPE_NAMES = {"s": "float32", "d": "float64", "c": "complex64", "z": "complex128"}
ERRSTATE = {"1": "invalid", "2": "divide", "3": "over", "4": "under"}
# Real functions whose kernels don't tell of overflow; the module looks at their results.
SILENT = {"Div", "Hypot", "Inv", "Pow", "Pow3o2", "Powx"}
# NumPy gives the fractional part first.
NOTES = {"Modf": "fractional part, then integral part, both with x's sign"}


def by_name():
    """Python name -> its functions, a type each, in the order in which NumPy tries them"""
    known = {}
    for f in functions():
        if f.name not in MOVES:
            known.setdefault(f.name, []).append(f)
    return {NAMES[name]: sorted(rows, key=lambda f: "sdcz".index(f.type))
            for name, rows in sorted(known.items(), key=lambda item: NAMES[item[0]])}


def numpy_types(f):
    letters = {"T": CODES["float"][f.type], "R": CODES["part"][f.type]}
    return "".join(letters[operand] for part in OPERANDS[f.shape] for operand in part)


def errors_by_type(rows):
    """A table of the largest errors in ulp; nothing for functions that are rounded once."""
    figures = accuracy()
    lines = []
    for f in rows:
        row = [figures.get((f.type, f.name, level)) for level in ("HA", "LA", "EP")]
        if all(row):
            lines.append("{:<10} {:>9} {:>9} {:>9}".format(TYPE_NAMES[f.type], *row))
    if not lines:
        return "Exact or rounded once at every level.\n"
    rule = " ".join("=" * width for width in (10, 9, 9, 9))
    head = "{:<10} {:>9} {:>9} {:>9}".format("ulp", "ha", "la", "ep")
    return "\n".join(["Largest error measured, in units of the last place, at each level:\n",
                      rule, head, rule, *lines, rule]) + "\n"


def documentation(rows):
    texts = {}
    for f in rows:
        what, codes = descriptions()[f.type, f.name]
        texts.setdefault((NOTES.get(f.name, what), codes), []).append(TYPE_NAMES[f.type])
    parts = []
    for (what, codes), types in texts.items():
        codes = re.sub(r"(^|, )([1-4]) (?=[a-z])",
                       lambda match: f"{match[1]}{ERRSTATE[match[2]]}: ", codes)
        words = re.match(r"[a-z]+(?![a-z(^/])", what)
        sentence = (what[0].upper() if words else what[0]) + what[1:] + "."
        if len(texts) > 1:
            sentence += f" ({', '.join(types)})"
        parts.append(f"{sentence}\n\nReports {codes}.\n")
    parts.append(errors_by_type(rows))
    parts.append(f"The library's function {rows[0].name}.\n")
    return "\n".join(parts)


def c_string(text):
    escaped = text.replace("\\", "\\\\").replace('"', '\\"')
    return "\n".join(f'    "{line}\\n"' for line in escaped.rstrip("\n").split("\n"))


def module_rows():
    out = ["// Made by tools/make_python_functions.py from the lists in qem/_bt_gen_ia32; do not edit.",
           "//",
           "// ORV_LOOP(shape, type, function, NumPy's types, hardware flags are the function's own,",
           "//          overflow is not reported)",
           "// ORV_UFUNC(name, identity, documentation) takes the rows before it.", ""]
    for name, rows in by_name().items():
        for f in rows:
            flags = all(frame.startswith("elementwise") for frame in f.frames.split("/"))
            out.append(f'ORV_LOOP({f.shape}, {f.type}, {f.name}, "{numpy_types(f)}", '
                       f"{str(flags).lower()}, {str(f.type in 'sd' and f.name in SILENT).lower()})")
        identity = IDENTITY.get(name, "PyUFunc_None")
        out.append(f'ORV_UFUNC({name}, {identity},\n{c_string(documentation(rows))})\n')
    return "\n".join(out)


def level_stub(level):
    lines = [f'"""The functions at level {level}. Made by tools/make_python_functions.py; '
             'do not edit."""', "from numpy import ufunc", ""]
    return "\n".join(lines + [f"{name}: ufunc" for name in by_name()]) + "\n"


def package_stub():
    head = (ROOT / "python" / "src" / "package.pyi.in").read_text()
    return head + "\n" + "\n".join(f"{name}: ufunc" for name in by_name()) + "\n"


def files():
    package = ROOT / "python" / "orv"
    made = {ROOT / "python" / "src" / "functions.inc": module_rows(),
            package / "__init__.pyi": package_stub()}
    for level in LEVELS:
        made[package / f"{level.lower()}.pyi"] = level_stub(level.lower())
    return made


def main():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--check", action="store_true")
    check = parser.parse_args().check
    stale = [path for path, text in files().items()
             if not path.exists() or path.read_text() != text]
    if check:
        for path in stale:
            print(f"{path.relative_to(ROOT)} is not current: run tools/make_python_functions.py")
        return 1 if stale else 0
    for path in stale:
        path.write_text(files()[path])
    return 0


if __name__ == "__main__":
    sys.exit(main())
