# SPDX-License-Identifier: MIT
"""Markdown to HTML, as far as this project's documents go: headings, paragraphs, lists, tables, code,
links, pictures, emphasis."""
import html
import re


def slug(text):
    """The anchor of a heading, as common viewers make it."""
    return re.sub(r"[^\w\- ]", "", re.sub(r"<[^>]*>", "", text).lower()).strip().replace(" ", "-")


def inline(text, link=lambda target: target):
    """A line's text. `link` maps a target to where it lies in the site."""
    kept = []

    def keep(fragment):
        kept.append(fragment)
        return f"\0{len(kept) - 1}\0"

    text = re.sub(r"`([^`]+)`", lambda m: keep(f"<code>{html.escape(m[1])}</code>"), text)
    text = html.escape(text, quote=False)
    text = re.sub(r"!\[([^\]]*)\]\(([^)]+)\)",
                  lambda m: keep(f'<img src="{link(m[2])}" alt="{html.escape(m[1])}">'), text)
    text = re.sub(r"\[([^\]]+)\]\(([^)]+)\)", lambda m: f'<a href="{link(m[2])}">{m[1]}</a>', text)
    text = re.sub(r"\*\*([^*]+)\*\*", r"<strong>\1</strong>", text)
    text = re.sub(r"(?<!\w)\*([^*\s][^*]*)\*(?!\w)", r"<em>\1</em>", text)
    return re.sub("\0(\\d+)\0", lambda m: kept[int(m[1])], text)


def cells(line):
    return [cell.strip().replace("\1", "|")
            for cell in line.strip().strip("|").replace(r"\|", "\1").split("|")]


def table(lines, link):
    """Rows under a head; a column that its rule ends with a colon stands to the right."""
    right = [rule.endswith(":") for rule in cells(lines[1])]

    def row(line, tag):
        parts = [f'<{tag}{" class=right" if at_right else ""}>{inline(cell, link)}</{tag}>'
                 for cell, at_right in zip(cells(line), right)]
        return f"<tr>{''.join(parts)}</tr>"

    body = "\n".join(row(line, "td") for line in lines[2:])
    head = row(lines[0], "th")
    return f'<div class="table"><table><thead>{head}</thead>\n<tbody>{body}</tbody></table></div>'


def items(lines, link):
    """A list; lines that go on with an item, and blocks in it, are indented."""
    ordered = lines[0].lstrip()[0].isdigit()
    marker = re.compile(r"^(?:[-*]|\d+\.) +")
    parts = []
    for line in lines:
        if marker.match(line):
            parts.append([marker.sub("", line)])
        else:
            parts[-1].append(line)
    text = []
    for first, *rest in parts:
        indents = [len(line) - len(line.lstrip()) for line in rest if line.strip()]
        cut = min(indents, default=0)
        inner = convert("\n".join([first, *(line[cut:] for line in rest)]), link)
        text.append("<li>" + re.sub("^<p>(.*?)</p>", r"\1", inner, count=1, flags=re.S) + "</li>")
    tag = "ol" if ordered else "ul"
    return f"<{tag}>" + "\n".join(text) + f"</{tag}>"


def convert(text, link=lambda target: target):
    lines = text.split("\n")
    out = []
    i = 0

    def run(condition):
        """The lines from here that fulfil a condition."""
        nonlocal i
        start = i
        while i < len(lines) and condition(lines[i]):
            i += 1
        return lines[start:i]

    while i < len(lines):
        line = lines[i]
        if not line.strip():
            i += 1
        elif line.startswith("```"):
            i += 1
            code = run(lambda l: not l.startswith("```"))
            i += 1
            out.append(f"<pre><code>{html.escape(chr(10).join(code))}</code></pre>")
        elif line.startswith("    "):
            code = run(lambda l: l.startswith("    ") or not l.strip())
            body = "\n".join(l[4:] for l in code).rstrip()
            out.append(f"<pre><code>{html.escape(body)}</code></pre>")
        elif match := re.match(r"(#+) (.*)", line):
            level, title = len(match[1]), inline(match[2], link)
            out.append(f'<h{level} id="{slug(match[2])}">{title}</h{level}>')
            i += 1
        elif line.startswith("|") and i + 1 < len(lines) and re.match(r"^\|[-:| ]+\|$", lines[i + 1]):
            out.append(table(run(lambda l: l.startswith("|")), link))
        elif re.match(r"^(?:[-*]|\d+\.) ", line):
            ordered = line[0].isdigit()
            same = re.compile(r"^\d+\. " if ordered else r"^[-*] ")
            block = run(lambda l: same.match(l) or l.startswith("  ") or not l.strip())
            while block and not block[-1].strip():
                block.pop()
            out.append(items(block, link))
        else:
            i += 1
            block = [line, *run(lambda l: l.strip() and not re.match(r"#+ |```|\||[-*] |\d+\. ", l))]
            out.append(f"<p>{inline(chr(10).join(block), link)}</p>")
    return "\n".join(out)
