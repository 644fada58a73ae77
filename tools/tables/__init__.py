"""The table files: path -> function that returns the file's text."""
from . import exp, exported
from .common import CORE, ROOT  # noqa: F401

FILES = {
    CORE / "exp/vdexp_tables.hpp": exp.vdexp_tables,
    CORE / "tables/exported_tables.cpp": exported.exported_tables,
}
