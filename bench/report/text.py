# SPDX-License-Identifier: MIT
"""Numbers and tables as Markdown."""


def number(x, digits=2):
    return "" if x is None else f"{x:.{digits}f}"


def ratio(a, b):
    return number(a / b) if a and b else ""


def difference(a, b):
    return number(a - b, 1) if a is not None and b is not None else ""


def table(heads, rows, texts=1):
    """Also aligned as plain text; the first columns are texts, the others numbers."""
    rows = [heads, *rows]
    widths = [max(len(row[k]) for row in rows) for k in range(len(heads))]
    lines = ["| " + " | ".join(
        cell.ljust(w) if k < texts else cell.rjust(w)
        for k, (cell, w) in enumerate(zip(row, widths))) + " |" for row in rows]
    rule = "|".join(["", *("-" * (w + 2) if k < texts else "-" * (w + 1) + ":"
                           for k, w in enumerate(widths)), ""])
    return "\n".join([lines[0], rule, *lines[1:]])
