#!/usr/bin/env python3
"""Prints include/orv/qem_functions.h from the function lists:

    tools/make_functions_header.py > include/orv/qem_functions.h
"""
from function_list import LEVELS, accuracy, descriptions, functions

ELEMENT = {"s": "float", "d": "double", "c": "QemComplexFloat", "z": "QemComplexDouble"}
PARAMETERS = {
    "Unary": "int32_t n, const {T}* a, {T}* r",
    "Binary": "int32_t n, const {T}* a, const {T}* b, {T}* r",
}
TYPE_NAME = {"s": "float", "d": "double", "c": "complex float", "z": "complex double"}

print("""/* Made by tools/make_functions_header.py from the lists in qem/_bt_gen_ia32; do not edit.
 *
 * For each function: the table of its kernels and of their relative costs, in the order LA, HA, EP;
 * a stub for each level (the plain name is HA); and the kernels themselves, which carry the
 * instruction set they need in their name: G9 AVX, N8 and P8 SSE4.1, V8 SSE3, W7 SSE2.
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

TEXTS = descriptions()
ERRORS = accuracy()
for f in functions():
    if not f.ready:
        continue
    full = f.type + f.name
    parameters = PARAMETERS[f.shape].format(T=ELEMENT[f.type])
    what, codes = TEXTS[f.name]
    doc = [f"{full}: {what}; {TYPE_NAME[f.type]}."]
    errors = [ERRORS.get((f.type, f.name, level)) for level in LEVELS]
    if all(errors):
        doc.append("Largest error: " + ", ".join(f"{l} {e}" for l, e in zip(LEVELS, errors)) + " ulp.")
    doc.append(f"Status codes: {codes}.")
    print("\n/** " + "\n *  ".join(doc) + " */")
    print(f"extern ORV_API const Qem{f.shape}_{f.type} orv_qem_kernel_{full}_ttab[3];")
    print(f"extern ORV_API const float orv_qem_kernel_{full}_ctab[3];")
    for suffix in (f.stub_suffixes[0], "_HA", "", f.stub_suffixes[2]):
        print(f"ORV_API void _qem{full}{suffix}({parameters});")
    for kernel in dict.fromkeys(f.kernels):
        print(f"ORV_API void orv_qem_kernel_{full}_{kernel}({parameters});")

print("""
#ifdef __cplusplus
}
#endif

#endif""")
