# SPDX-License-Identifier: MIT
"""Checks that every link of a made site leads somewhere."""
import html.parser
import pathlib
import urllib.parse


class Links(html.parser.HTMLParser):
    def __init__(self):
        super().__init__()
        self.targets, self.anchors, self.open = [], set(), []

    def handle_starttag(self, tag, attributes):
        for key, value in attributes:
            if key in ("href", "src"):
                self.targets.append(value)
            elif key == "id":
                self.anchors.add(value)
        if tag not in ("meta", "link", "img", "input", "path"):
            self.open.append(tag)

    def handle_endtag(self, tag):
        if not self.open or self.open.pop() != tag:
            raise ValueError(f"</{tag}> at line {self.getpos()[0]} closes nothing")

    def handle_startendtag(self, tag, attributes):
        pass


def faults(root):
    """A line for each link to nowhere, and for each page that no other leads to."""
    root = pathlib.Path(root).resolve()
    pages, found = {}, []
    for file in sorted(root.rglob("*.html")):
        pages[file] = Links()
        try:
            pages[file].feed(file.read_text())
        except ValueError as error:
            found.append(f"{file.relative_to(root)}: {error}")
    reached = {root / "index.html"}
    for file, links in pages.items():
        for target in links.targets:
            parts = urllib.parse.urlsplit(target)
            if parts.scheme:
                continue
            other = (file.parent / urllib.parse.unquote(parts.path)).resolve() if parts.path else file
            reached.add(other)
            if not other.is_file():
                found.append(f"{file.relative_to(root)}: {target} is not there")
            elif parts.fragment and other in pages and parts.fragment not in pages[other].anchors:
                found.append(f"{file.relative_to(root)}: {target} has no such place")
    found += [f"{file.relative_to(root)}: nothing leads there" for file in pages.keys() - reached]
    return found
