#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Prints include/orv/qem_functions.h from the function lists:

    tools/make_functions_header.py > include/orv/qem_functions.h
"""
from function_list import LEVELS, accuracy, descriptions, functions, parameters, shapes

ELEMENT = {"s": "float", "d": "double", "c": "QemComplexFloat", "z": "QemComplexDouble"}
PART = {"s": "float", "d": "double", "c": "float", "z": "double"}
TYPE_NAME = {"s": "float", "d": "double", "c": "complex float", "z": "complex double"}

print("""/* Made by tools/make_functions_header.py from the lists in qem/_bt_gen_ia32; do not edit.
 *
 * First the shapes of kernels, each for its types. `n` counts elements; at 0 or below nothing is read
 * or written. Vectors need no alignment. An output may be the same vector as an input; other overlap
 * is allowed where a function says so. With `narrow` 1, as stubs have it, kernels that move data take
 * the low halves of n and incr, and index and mask vectors of 32-bit integers; with any other value
 * all of these have 64 bits.
 *
 * Then for each function: the table of its kernels and of their relative costs, in the order LA, HA, EP;
 * a stub for each level (the plain name is HA); and the kernels themselves, which carry the
 * instruction set they need in their name: G9 AVX, N8 and P8 SSE4.1, T7 and V8 SSE3, W7 SSE2.
 *
 * "largest error" is in units in the last place of the result, over the whole domain. Functions
 * without that line are exact or rounded once. */
/* clang-format off */
#ifndef ORV_QEM_FUNCTIONS_H
#define ORV_QEM_FUNCTIONS_H

#include <orv/qem.h>

#ifdef __cplusplus
extern "C" {
#endif""")

SHAPES = shapes()
for name, (what, kernel, _) in SHAPES.items():
    print(f"\n/** {what} */")
    for t in dict.fromkeys(f.type for f in functions() if f.shape == name):
        print(f"typedef void (*Qem{name}_{t})({parameters(kernel, ELEMENT[t], PART[t])});")

TEXTS = descriptions()
ERRORS = accuracy()
for f in functions():
    full = f.type + f.name
    _, kernel_parameters, stub_parameters = (
        parameters(text, ELEMENT[f.type], PART[f.type]) for text in SHAPES[f.shape])
    what, codes = TEXTS[f.type, f.name]
    doc = [f"{full}: {what}; {TYPE_NAME[f.type]}."]
    errors = [ERRORS.get((f.type, f.name, level)) for level in LEVELS]
    if all(errors):
        doc.append("Largest error: " + ", ".join(f"{l} {e}" for l, e in zip(LEVELS, errors)) + " ulp.")
    doc.append(f"Status codes: {codes}.")
    print("\n/** " + "\n *  ".join(doc) + " */")
    print(f"extern ORV_API const Qem{f.shape}_{f.type} orv_qem_kernel_{full}_ttab[3];")
    print(f"extern ORV_API const float orv_qem_kernel_{full}_ctab[3];")
    for suffix in (f.stub_suffixes[0], "_HA", "", f.stub_suffixes[2]):
        print(f"ORV_API void _qem{full}{suffix}({stub_parameters});")
    for kernel in dict.fromkeys(f.kernels):
        print(f"ORV_API void orv_qem_kernel_{full}_{kernel}({kernel_parameters});")

print("""
#ifdef __cplusplus
}
#endif

#endif""")
