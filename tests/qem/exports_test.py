#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Checks a shared library's file: exported names, needed libraries, soname, word size, segments.

usage: exports_test.py LIBRARY VERSION_SCRIPT BITS"""
import pathlib
import re
import subprocess
import sys

NEEDED = {  # what each library may need, and must
    "liborv_qem_avx.so": ({"libc.so.6", "libm.so.6", "libopenblas.so.0", "liborv_serv.so.0"},
                          {"libc.so.6", "libopenblas.so.0", "liborv_serv.so.0"}),
    "liborv_serv.so": ({"libc.so.6"}, {"libc.so.6"}),
}


def output(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def main(library, script, bits):
    name = pathlib.Path(library).name.split(".so")[0] + ".so"
    is_of_record = name == "liborv_qem_avx.so" and bits == "32"
    faults = []

    def expect(what, actual, expected):
        if actual != expected:
            faults.append(f"{what}: {actual}, expected {expected}")

    listed = re.search(r"global:(.*?)local:", pathlib.Path(script).read_text(), re.S)[1]
    listed = {word.rstrip(";") for word in listed.split()}
    exported = {line.split()[-1] for line in output("nm", "-D", "--defined-only", library).splitlines()}
    expect("exported but not in the list", exported - listed, set())
    expect("in the list but not exported", listed - exported, set())
    expect("the list is short", len(listed) >= 5, True)

    dynamic = output("readelf", "-dW", library)
    needed = set(re.findall(r"\(NEEDED\).*\[(.*?)\]", dynamic))
    allowed, required = NEEDED[name]
    expect("needs", needed - allowed, set())
    expect("does not need", required - needed, set())
    expect("soname", re.findall(r"\(SONAME\).*\[(.*?)\]", dynamic),
           [name if is_of_record else name + ".0"])
    # Threads that used it release their cells by its code when they end, after a dlclose as well.
    expect("stays loaded", "NODELETE" in dynamic, name == "liborv_qem_avx.so")
    expect("text relocations", "TEXTREL" in dynamic, False)

    expect("class", re.search(r"Class:\s+(\S+)", output("readelf", "-h", library))[1], f"ELF{bits}")
    stack = re.search(r"GNU_STACK(?:\s+0x\w+)+\s+([RWE ]+?)\s+0x", output("readelf", "-lW", library))
    expect("stack", stack and stack[1].replace(" ", ""), "RW")

    for fault in faults:
        print(f"{name}: {fault}")
    print(f"{name}: {len(exported)} exported names, needs {', '.join(sorted(needed))}")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
