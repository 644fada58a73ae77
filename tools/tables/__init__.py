"""The table files: path -> function that returns the file's text."""
from . import exp, exported, ln, power, sincos
from .common import CORE, ROOT  # noqa: F401

FILES = {
    CORE / "exp/tables/vdexp_tables.hpp": exp.vdexp_tables,
    CORE / "exp/tables/vsexp_tables.hpp": exp.vsexp_tables,
    CORE / "expm1/tables/vdexpm1_tables.hpp": exp.vdexpm1_tables,
    CORE / "expm1/tables/vsexpm1_tables.hpp": exp.vsexpm1_tables,
    CORE / "ln/tables/vdln_tables.hpp": ln.vdln_tables,
    CORE / "log10/tables/vdlog10_tables.hpp": ln.vdlog10_tables,
    CORE / "log10/tables/vslog10_tables.hpp": ln.vslog10_tables,
    CORE / "log1p/tables/vslog1p_tables.hpp": ln.vslog1p_tables,
    CORE / "ln/tables/vsln_tables.hpp": ln.vsln_tables,
    CORE / "pow/tables/pow_slow_tables.hpp": power.pow_slow_tables,
    CORE / "pow/tables/vdpow_tables.hpp": power.vdpow_tables,
    CORE / "pow/tables/vspow_tables.hpp": power.vspow_tables,
    CORE / "_heap/real/tables/two_over_pi.hpp": sincos.two_over_pi,
    CORE / "_heap/real/tables/vdsincos_tables.hpp": sincos.vdsincos_tables,
    CORE / "_heap/real/tables/vssincos_polynomials.hpp": sincos.vssincos_polynomials,
    CORE / "tables/exported_tables.cpp": exported.exported_tables,
}
