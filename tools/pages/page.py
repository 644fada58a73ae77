# SPDX-License-Identifier: MIT
"""The frame of every page."""
import html
import pathlib


class Site:
    """Where pages go and what stands beside each of them. Names of pages are paths below the root."""

    def __init__(self, root, version):
        self.root = pathlib.Path(root)
        self.version = version
        self.contents = []  # (heading, [(page, title)])

    def sidebar(self, here, up):
        parts = [f'<a class="name" href="{up}index.html">ORV {self.version}</a>']
        for heading, pages in self.contents:
            parts.append(f"<h2>{heading}</h2>")
            parts += [f'<a{" class=here" if page == here else ""} href="{up}{page}">{html.escape(title)}</a>'
                      for page, title in pages]
        return "\n".join(parts)

    def write(self, page, title, body):
        up = "../" * page.count("/")
        text = f"""<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<title>{html.escape(title)} - ORV</title>
<link rel="stylesheet" href="{up}style.css">
</head>
<body>
<nav>
{self.sidebar(page, up)}
</nav>
<main>
{body}
</main>
</body>
</html>
"""
        file = self.root / page
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_text(text)
