#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Prints include/orv/detail/functions.hpp from the function lists:

    tools/make_cpp_functions.py > include/orv/detail/functions.hpp
"""
import re

from function_list import LEVELS, accuracy, descriptions, functions

# What a function takes decides its form; a form's name is that of its template.
FORMS = {
    "Unary": "one_argument", "ComplexToReal": "one_argument", "RealToComplex": "one_argument",
    "Binary": "two_arguments", "ScalarSecond": "second_number", "TwoResults": "two_results",
    "FractionalLinear": "linear_fraction", "StridedPack": "strided_pack",
    "StridedUnpack": "strided_unpack", "IndexedPack": "indexed_pack",
    "IndexedUnpack": "indexed_unpack", "MaskedPack": "masked_pack",
    "MaskedUnpack": "masked_unpack"}
ELEMENT = {"s": "float", "d": "double", "c": "std::complex<float>", "z": "std::complex<double>"}
PART = {"c": "float", "z": "double"}

HEAD = """\
// Made by tools/make_cpp_functions.py from the lists in qem/_bt_gen_ia32; do not edit.
//
// For each function an object that is called: its form tells how, the table which kernel serves
// elements of a type, the facts what it computes, when it reports, and its error at LA, HA, EP.
// clang-format off
#pragma once

#include <orv/math.hpp>

namespace orv {"""


def argument(f):
    """The type of the elements that a function takes."""
    return PART[f.type] if f.shape == "RealToComplex" else ELEMENT[f.type]


def facts(f, what, codes, errors):
    conditions = [f'{{{code}, "{when}"}}'
                  for code, when in re.findall(r"(\d) (.*?)(?=, \d |$)", codes)]
    figures = [errors.get((f.type, f.name, level), "0") for level in LEVELS]
    return f'{{"{what}", {{{{{", ".join(conditions)}}}}}, {{{{{", ".join(figures)}}}}}}}'


def text():
    lines = [HEAD]
    by_name = {}
    for f in functions():
        by_name.setdefault(f.name, []).append(f)
    descriptions_of, errors = descriptions(), accuracy()
    for name, members in sorted(by_name.items()):
        forms = {FORMS[f.shape] for f in members}
        assert len(forms) == 1, f"{name} has several forms"
        lower = name.lower()
        what = dict.fromkeys(descriptions_of[f.type, name][0] for f in members)
        lines += ["", *(f"/// {each}" for each in what),
                  f"inline constexpr struct {lower}_function : detail::{forms.pop()}<{lower}_function> {{",
                  f'  static constexpr std::string_view name = "{lower}";']
        for f in members:
            lines.append(f"  static constexpr auto& table(const {argument(f)}*) "
                         f"{{ return orv_qem_kernel_{f.type}{name}_ttab; }}")
        for f in members:
            lines.append(f"  static constexpr function_facts facts_of(const {argument(f)}*) "
                         f"{{ return {facts(f, *descriptions_of[f.type, name], errors)}; }}")
        lines.append(f"}} {lower};")
    lines += ["", "/// Calls f with each of these objects.", "template <class F>",
              "void for_each_function(F f) {",
              *(f"  f({name.lower()});" for name in sorted(by_name)), "}"]
    return "\n".join(lines) + "\n\n}  // namespace orv\n"


print(text(), end="")
