# SPDX-License-Identifier: MIT
"""A page for each vector function, from the lists, from what was measured, and from calls of the library."""
import html
import math
import re

import function_list
from . import plots
from .mathematics import FUNCTIONS

TYPES = {"s": "float", "d": "double", "c": "complex float", "z": "complex double"}
ELEMENT = {"s": "float", "d": "double", "c": "QemComplexFloat", "z": "QemComplexDouble"}
PART = {"s": "float", "d": "double", "c": "float", "z": "double"}
LEVELS = ("HA", "LA", "EP")
INF, NAN = math.inf, math.nan
FLOAT, DOUBLE = (2 - 2.0**-23) * 2.0**127, (2 - 2.0**-52) * 2.0**1023
LARGEST = {"s": FLOAT, "d": DOUBLE, "c": FLOAT, "z": DOUBLE}
SPECIAL = (0.0, -0.0, 1.0, -1.0)
BEYOND = (INF, -INF, NAN)
PAIRS = ((0.0, 0.0), (0.0, -0.0), (1.0, 0.0), (-1.0, 0.0), (0.0, 1.0), (INF, 1.0), (1.0, INF),
         (INF, INF), (INF, -INF), (NAN, 1.0), (1.0, NAN))
COMPLEX = (0j, complex(-0.0, 0.0), 1 + 0j, -1 + 0j, complex(-1.0, -0.0), 1j, complex(INF, 0),
           complex(-INF, 0), complex(0, INF), complex(NAN, 0), complex(NAN, NAN))
CODES = {0: "", 1: "1, domain", 2: "2, singularity", 3: "3, overflow", 4: "4, underflow"}


def rows(text, heading):
    """The cells of the tables below a heading, by their first."""
    part = text.split(f"\n{heading}\n", 1)[1].split("\n## ", 1)[0]
    found = {}
    for line in part.splitlines():
        if line.startswith("| "):
            first, *rest = (cell.strip() for cell in line.strip("|").split("|"))
            found[first] = rest
    return found


def number(x):
    if isinstance(x, complex):
        return f"{number(x.real)}, {number(x.imag)}"
    if math.isnan(x):
        return "NaN"
    if math.isinf(x):
        return "∞" if x > 0 else "−∞"
    return f"{x:.7g}".replace("-", "−")


def table(head, body, right=()):
    def row(cells, tag):
        return "<tr>" + "".join(f'<{tag}{" class=right" if i in right else ""}>{cell}</{tag}>'
                                for i, cell in enumerate(cells)) + "</tr>"
    return ('<div class="table"><table><thead>' + row(head, "th") + "</thead><tbody>"
            + "\n".join(row(cells, "td") for cells in body) + "</tbody></table></div>")


def special_values(library, f):
    """What HA makes of special arguments, as this library computed it."""
    if f.shape in ("Unary", "ComplexToReal") and f.type in "cz":
        arguments = [(x,) for x in COMPLEX]
    elif f.shape in ("Unary", "TwoResults", "RealToComplex"):
        arguments = [(x,) for x in (*SPECIAL, LARGEST[f.type], -LARGEST[f.type], *BEYOND)]
    elif f.shape == "Binary" and f.type in "sd":
        arguments = PAIRS
    else:
        return ""
    body = []
    for given in arguments:
        results, status = library.one(f, "HA", given)
        body.append([", ".join(map(number, given)), "; ".join(map(number, results)), CODES[status]])
    return ("<h2 id=\"special-values\">Special values</h2>\n<p>Results at HA, and the status code where "
            "one is reported.</p>\n" + table(("argument", "result", "code"), body))


class Pages:
    def __init__(self, root, library, sampling):
        self.functions = function_list.functions()
        self.descriptions = function_list.descriptions()
        self.accuracy = function_list.accuracy()
        self.shapes = function_list.shapes()
        self.measured = rows((root / "docs/accuracy.md").read_text(), "## Sampled: all kernels")
        self.speed = rows((root / "docs/benchmarks.md").read_text(),
                          "## Vector functions: calls of 1000 elements")
        self.library, self.sampling = library, sampling

    def types_of(self, f):
        return [g for g in self.functions if g.name == f.name]

    def errors(self, f):
        body = []
        for level in LEVELS:
            bound = self.accuracy.get((f.type, f.name, level))
            cells = self.measured.get(f"{f.type}{f.name}_{level}")
            kernel = f.kernels[function_list.LEVELS.index(level)]
            if bound and cells:
                argument = ", ".join(f"{float.fromhex(part):.8g}" for part in cells[4].split(", "))
                body.append([level, kernel, bound, cells[2], re.sub(r"\^-(.*)", r"<sup>−\1</sup>", cells[3]),
                             argument.replace("-", "−")])
            else:
                body.append([level, kernel, "exact, or rounded once", "", "", ""])
        return table(("level", "kernel", "record, ulp", "measured, ulp", "relative", "at"), body, (2, 3))

    def times(self, f):
        body = []
        for level in LEVELS:
            cells = self.speed.get(f"{f.type}{f.name}_{level}")
            if cells:
                body.append([level, *cells])
        if not body:
            return ""
        head = ("level", "ia32, ns", "/ SLEEF", "/ scalar", "x86-64, ns", "/ SLEEF", "/ scalar", "/ libmvec")
        return ("<h2 id=\"speed\">Speed</h2>\n<p>Nanoseconds an element in calls of 1000, and our time over "
                "that of a peer: below 1 we are faster. How: <a href=\"../benchmarks.html\">benchmarks</a>."
                "</p>\n" + table(head, body, range(1, 8)))

    def picture(self, f):
        maths = FUNCTIONS[f.name]
        if not maths.true or f.type not in "sd" or f.shape != "Unary":
            return ""
        errors = plots.measure(self.library, f.type, f.name, maths, self.sampling)
        svg = plots.draw(errors, maths, f"error of {f.type}{f.name} over its argument")
        return (f'<p>Largest of {self.sampling.points} errors in each of {self.sampling.bins} places, '
                f"measured when this page was made:</p>\n{svg}")

    def body(self, f):
        what, codes = self.descriptions[f.type, f.name]
        maths = FUNCTIONS[f.name]
        shape, _, stub = self.shapes[f.shape]
        parameters = function_list.parameters(stub, ELEMENT[f.type], PART[f.type])
        twins = " ".join(f"<b>{g.type}{g.name}</b>" if g == f else
                         f'<a href="{g.type}{g.name}.html">{g.type}{g.name}</a>' for g in self.types_of(f))
        suffix = dict(zip(function_list.LEVELS, f.stub_suffixes))
        stubs = "\n".join(f"void _qem{f.type}{f.name}{suffix[level]}({parameters});" for level in LEVELS)
        status = "none" if codes == "none" else html.escape(codes)
        return f"""<p class="types">{twins}</p>
<h1>{f.type}{f.name}</h1>
<p>{html.escape(what[0].upper() + what[1:] if what[:2].isalpha() else what)}; {TYPES[f.type]}.</p>
<div class="formula">{maths.formula}</div>
<dl>
<dt>computes</dt><dd><code>{html.escape(shape)}</code></dd>
<dt>domain</dt><dd>{maths.domain if f.type in "sd" else "all complex numbers but poles"}</dd>
<dt>status codes</dt><dd>{status}</dd>
</dl>
<pre><code>#include &lt;orv/qem.h&gt;
{html.escape(stubs)}</code></pre>
<p class="soft">HA, LA and EP; <code>orv_qem_kernel_{f.type}{f.name}_ttab</code> has the kernels for the mode
word's level.</p>
<h2 id="accuracy">Accuracy</h2>
{self.errors(f)}
{self.picture(f)}
{special_values(self.library, f)}
{self.times(f)}"""

    def index(self):
        """All functions by family, with a field that filters them."""
        parts = ["<h1>Vector functions</h1>",
                 f"<p>All {len(self.functions)}: a page for each function and type. s is float, d double, "
                 "c and z are complex numbers of these.</p>",
                 '<p><input id="filter" placeholder="filter: a name or a word" autofocus></p>']
        families = dict.fromkeys(m.family for m in FUNCTIONS.values())
        for family in families:
            parts.append(f'<h2 id="{family.split()[0].lower()}">{family}</h2>')
            body = []
            for name, maths in FUNCTIONS.items():
                if maths.family == family:
                    same = [f for f in self.functions if f.name == name]
                    links = " ".join(f'<a href="functions/{f.type}{f.name}.html">{f.type}{f.name}</a>'
                                     for f in same)
                    body.append([f"<b>{name}</b>", maths.formula, links,
                                 html.escape(self.descriptions[same[0].type, name][0])])
            parts.append(table(("function", "formula", "pages", "what it computes"), body))
        parts.append("""<script>
document.getElementById("filter").addEventListener("input", event => {
  const word = event.target.value.toLowerCase();
  for (const row of document.querySelectorAll("tbody tr"))
    row.hidden = !row.textContent.toLowerCase().includes(word);
});
</script>""")
        return "\n".join(parts)

    def write(self, site):
        missing = {f.name for f in self.functions} ^ FUNCTIONS.keys()
        if missing:
            raise ValueError(f"tools/pages/mathematics.py and the list differ: {', '.join(sorted(missing))}")
        site.write("functions.html", "Vector functions", self.index())
        for f in self.functions:
            site.write(f"functions/{f.type}{f.name}.html", f.type + f.name, self.body(f))
