#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Makes the site and looks whether every function's page tells what the lists hold of it.

usage: site_test.py SOURCE BUILD OUTPUT"""
import html
import pathlib
import subprocess
import sys

SOURCE, BUILD, OUTPUT = map(pathlib.Path, sys.argv[1:])
sys.path.insert(0, str(SOURCE / "tools"))
import function_list  # noqa: E402
from pages import check  # noqa: E402

MAKE = [sys.executable, SOURCE / "scripts/site", "--quick", "--output", OUTPUT, "--build"]


def faults_of(f, descriptions, accuracy):
    """What the page of a function lacks."""
    page = OUTPUT / f"functions/{f.type}{f.name}.html"
    if not page.is_file():
        return ["no page"]
    text = page.read_text()
    what, codes = descriptions[f.type, f.name]
    wanted = [html.escape(what[1:]), html.escape(codes), *f.kernels]
    wanted += [f"void _qem{f.type}{f.name}{suffix}(" for suffix in f.stub_suffixes]
    records = [accuracy.get((f.type, f.name, level)) for level in function_list.LEVELS]
    wanted += [f">{record}<" for record in records if record]
    if all(records) and f.type in "sd" and f.shape == "Unary":
        wanted += [f'class="level {level}"' for level in function_list.LEVELS]
    if f.shape in ("Unary", "TwoResults", "ComplexToReal", "RealToComplex"):
        wanted.append("NaN")
    return [f"no {part!r}" for part in wanted if part not in text]


def check_notices(page, old, new, complaint):
    """A fault put into a page is found."""
    file = OUTPUT / page
    text = file.read_text()
    assert old in text, (page, old)
    file.write_text(text.replace(old, new, 1))
    found = check.faults(OUTPUT)
    file.write_text(text)
    return [] if any(complaint in line for line in found) else [f"not noticed: {complaint}"]


subprocess.run([*MAKE, BUILD], check=True)
functions = function_list.functions()
lists = function_list.descriptions(), function_list.accuracy()
faults = [f"{f.type}{f.name}: {fault}" for f in functions for fault in faults_of(f, *lists)]
if len(functions) < 164:
    faults.append("the list is short")
faults += check_notices("functions.html", 'href="functions/dExp', 'href="functions/dExq', "dExq.html is not there")
faults += check_notices("index.html", "#points-of-low", "#points-of-high", "has no such place")
faults += check_notices("index.html", "</h1>", "", "closes nothing")
(OUTPUT / "lost.html").write_text("<p></p>")
if check.faults(OUTPUT) != ["lost.html: nothing leads there"]:
    faults.append("a lost page is not noticed")
if "Traceback" in subprocess.run([*MAKE, OUTPUT], stderr=subprocess.PIPE, text=True).stderr:
    faults.append("a folder without a library is no clear error")
print("\n".join(faults))
sys.exit(bool(faults))
