# SPDX-License-Identifier: MIT
"""The pages about this package show what happens."""
import doctest
import os
import shutil
from pathlib import Path

import pytest

DOCS = Path(__file__).resolve().parents[2] / "docs"


@pytest.mark.parametrize("name, examples, pictures", [("python", 70, 3), ("distributed", 10, 0)])
def test_page_runs_as_it_stands(name, examples, pictures, tmp_path, monkeypatch):
    page = tmp_path / "docs" / f"{name}.md"
    (tmp_path / "docs" / "pictures").mkdir(parents=True)
    shutil.copy(DOCS / page.name, page)
    os.symlink(DOCS.parent / "examples", tmp_path / "examples")
    monkeypatch.chdir(page.parent)
    result = doctest.testfile(str(page), module_relative=False, report=True)
    assert result.attempted >= examples and result.failed == 0
    made = {path.name for path in (page.parent / "pictures").iterdir()}
    assert made == {path.name for path in (DOCS / "pictures").glob(f"{name}_*.svg")} and len(made) == pictures


@pytest.mark.parametrize("word", ["random.md", *[f"pictures/python_{n}.svg" for n in
                                                 ("levels", "random", "stats")]])
def test_links_of_the_page_lead_somewhere(word):
    assert f"({word})" in (DOCS / "python.md").read_text() and (DOCS / word).exists()
