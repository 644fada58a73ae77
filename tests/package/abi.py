#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Compares what the libraries promise to programs with what the last release promised.

usage: abi.py check|record HEADERS RECORD COMPILER LIBRARY...

Each exported name becomes a pointer of its declared type in a witness, a small library with debugging
information; abidw writes down the witness's symbols and all types and constants of the headers. RECORD is
such a dump, and `check` fails where something of it went or changed, after it has seen that such changes
are noticed. What was added is no fault. At a release `record` writes the dump anew, for each word size.
"""
import gzip
import pathlib
import re
import shlex
import subprocess
import sys
import tempfile

CHANGES = [  # that a check must notice: name, text in the headers and what it becomes
    ("a constant", r"RNG_BAD_ARGS = -3", "RNG_BAD_ARGS = -4"),
    ("an argument", r"(__zokSkipAheadStream\(StreamState\* stream,) int64_t", r"\1 int32_t"),
    ("a record", r"int32_t NumBits;", "int64_t NumBits;"),
]


def output(*command, **options):
    return subprocess.run(command, check=True, stdout=subprocess.PIPE, text=True, **options).stdout


def exported(library):
    return {line.split()[-1].split("@")[0]
            for line in output("nm", "-D", "--defined-only", library).splitlines()}


def witness(declarations, names):
    """C text with a pointer for each name; a name that is not declared promises its existence only."""
    declared = set(re.findall(r"\w+", declarations))
    lines = [declarations]
    for name in sorted(names):
        if name not in declared:
            lines.append(f"extern const char {name};\n")
        lines.append(f"__typeof__({name})* const abi_{name} = &{name};\n")
    return "".join(lines)


def dump(text, compile_, folder):
    """What abidw says of the witness."""
    source, library = folder / "witness.c", folder / "witness.so"
    source.write_text(text)
    output(*compile_, "-w", "-g", "-shared", "-fPIC", "-fno-eliminate-unused-debug-types", str(source),
           "-o", str(library))
    return output("abidw", "--load-all-types", "--no-show-locs", "--no-corpus-path",
                  "--no-comp-dir-path", "--no-elf-needed", str(library))


def constants(abi):
    return set(re.findall(r"<enumerator name='(\w+)' value='(-?\d+)'", abi))


def difference(before, now, folder):
    """What went or changed, as text; abidiff does not compare enumerations that have no name."""
    files = folder / "before.abi", folder / "now.abi"
    for file, text in zip(files, (before, now)):
        file.write_text(text)
    run = subprocess.run(["abidiff", "--no-added-syms", *map(str, files)],
                         stdout=subprocess.PIPE, text=True)
    if run.returncode & 3:  # 4 stands for a change, 8 for one that breaks programs
        sys.exit("abi.py: abidiff failed")
    lost = [f"constant {name} is no longer {value}\n"
            for name, value in sorted(constants(before) - constants(now))]
    return (run.stdout if run.returncode else "") + "".join(lost)


def main(mode, headers, record, compiler, *libraries):
    record, compile_ = pathlib.Path(record), shlex.split(compiler)
    includes = "".join(f"#include <orv/{h.name}>\n" for h in sorted(pathlib.Path(headers).glob("orv/*.h")))
    declarations = output(*compile_, "-I", headers, "-E", "-P", "-x", "c", "-", input=includes)
    names = set().union(*map(exported, libraries))
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        now = dump(witness(declarations, names), compile_, folder)
        if mode == "record":
            record.write_bytes(gzip.compress(now.encode(), 9, mtime=0))
            return 0
        before = gzip.decompress(record.read_bytes()).decode()
        faults = difference(before, now, folder)
        for what, old, new in CHANGES:
            changed = re.sub(old, new, declarations)
            if not difference(before, dump(witness(changed, names), compile_, folder), folder):
                faults += f"a change of {what} would not be noticed\n"
    kept = f"{len(names)} names and {len(constants(now))} constants keep what {record.name} promised"
    print(faults or kept)
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
