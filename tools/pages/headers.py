# SPDX-License-Identifier: MIT
"""A page for each header: its doc comments beside what they are about."""
import html
import re
import textwrap

from .markdown import slug


def text_of(comment):
    """A comment without its frame, as paragraphs; indented lines are code."""
    lines = re.sub(r"^/\*+|\*/$", "", comment.strip()).split("\n")
    lines = [re.sub(r"^ \*? ?", "", line) for line in lines]
    blocks, out = [[]], []
    for line in lines:
        if line.strip():
            blocks[-1].append(line)
        else:
            blocks.append([])
    for block in filter(None, blocks):
        if all(line.startswith("   ") for line in block):
            code = textwrap.dedent("\n".join(block))
            out.append(f"<pre><code>{html.escape(code)}</code></pre>")
        else:
            text = html.escape(" ".join(line.strip() for line in block))
            out.append("<p>" + re.sub("`([^`]*)`", r"<code>\1</code>", text) + "</p>")
    return "\n".join(out)


def with_c_comments(text):
    """C++ comments that begin a line, as C has them."""
    return re.sub(r"(?:^//[^\n]*\n)+", lambda run: "/**" + re.sub(r"^///? ?", " * ", run[0], flags=re.M).rstrip()
                  + " */\n", text, flags=re.M)


def body(name, text):
    """The whole header in its order."""
    text = with_c_comments(re.sub(r"^.*SPDX-.*\n", "", text))
    intro, rest = re.match(r"(/\*.*?\*/)(.*)", text, re.S).groups()
    parts = [f"<h1>orv/{name}</h1>", f"<pre><code>#include &lt;orv/{name}&gt;</code></pre>", text_of(intro)]
    for frame in (r"#ifdef __cplusplus\n.*?#endif\n", r"#ifndef ORV_API\n.*?#endif\n",
                  r"#(ifndef|define) ORV_\w+_HP?P?\n", r"\n#endif\n*$", r"#include [^\n]*", "#pragma once",
                  r"\nnamespace (orv::)?detail \{\n.*?\n\}  // namespace [^\n]*", r"\nnamespace orv \{",
                  r"\}  // namespace orv"):
        rest = re.sub(frame, "", rest, flags=re.S)
    for piece in re.split(r"\n(?=/\*)|(?<=-- \*/)\n|\n\n+(?=\S)", rest):
        if section := re.match(r"/\* -+ (.*?) -* ?\*/$", piece):
            parts.append(f'<h2 id="{slug(section[1])}">{html.escape(section[1])}</h2>')
            continue
        if comment := re.match(r"/\*\*.*?\*/\n?", piece, re.S):
            parts.append(text_of(comment[0]))
            piece = piece[comment.end():]
        if piece.strip():
            parts.append(f"<pre><code>{html.escape(piece.strip(chr(10)))}</code></pre>")
    return "\n".join(parts)
