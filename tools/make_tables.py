#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Makes the checked-in tables of the vector functions with high-precision arithmetic.

    tools/make_tables.py            writes every table file
    tools/make_tables.py --check    says which files differ from what would be written
    tools/make_tables.py NAME ...   only the named files
"""
import pathlib
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent))
from tables import FILES, ROOT  # noqa: E402


def main(arguments):
    check = "--check" in arguments
    names = [a for a in arguments if a != "--check"] or [str(path) for path in FILES]
    stale = 0
    for path, make in FILES.items():
        if str(path) not in names and path.name not in names:
            continue
        text = make()
        target = ROOT / path
        if check:
            if not target.exists() or target.read_text() != text:
                print(f"{path} differs from what tools/make_tables.py writes")
                stale += 1
        else:
            target.write_text(text)
    return 1 if stale else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
