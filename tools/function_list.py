# SPDX-License-Identifier: MIT
"""Reads the lists in qem/_bt_gen_ia32 for the scripts that make files from them."""
import pathlib
import re
from typing import NamedTuple

ROOT = pathlib.Path(__file__).resolve().parent.parent
LISTS = ROOT / "qem" / "_bt_gen_ia32"
LEVELS = ("LA", "HA", "EP")


class Function(NamedTuple):
    type: str
    name: str
    shape: str
    kernels: tuple
    costs: tuple
    frames: str

    @property
    def stub_suffixes(self):
        """The stub of each slot; a function and level have one text on every use."""
        return ("_21", "_HA", "_11") if self.type in "sc" else ("_50", "_HA", "_26")


def _rows(file, macro):
    for line in (LISTS / file).read_text().splitlines():
        match = re.match(rf"{macro}\s*\((.*)\)\s*$", line)
        if match:
            yield [cell.strip() for cell in re.split(r',(?=(?:[^"]*"[^"]*")*[^"]*$)', match[1])]


def functions():
    return [
        Function(t, f, shape, tuple(rest[:3]), tuple(rest[3:6]), rest[6])
        for t, f, shape, *rest in _rows("functions.def", "ORV_FUNCTION")
    ]


def shapes():
    """name -> (what it computes, a kernel's parameters for elements T with parts R, a stub's)"""
    text = (LISTS / "shapes.def").read_text()
    kernels = re.findall(r"// (.*)\n#define ORV_KERNEL_(\w+)\(T, R\) (.*)", text)
    stubs = dict(re.findall(r"#define ORV_STUB_(\w+)\(T, R\) (.*)", text))
    return {name: (what, kernel, kernel if stubs[name].startswith("ORV_KERNEL_") else stubs[name])
            for what, name, kernel in kernels}


def parameters(text, element, part):
    """A shape's parameters for one type."""
    return re.sub(r"\b[TR]\b", lambda match: {"T": element, "R": part}[match[0]], text)


def descriptions():
    """(type, name) -> (what it computes, status codes)"""
    return {(t, row[1]): (row[2].strip('"'), row[3].strip('"'))
            for row in _rows("descriptions.def", "ORV_DESCRIPTION") for t in row[0]}


def accuracy():
    """(type, name, level) -> largest error in ulp, as text"""
    return {tuple(row[:3]): row[3] for row in _rows("accuracy.def", "ORV_ACCURACY")}
