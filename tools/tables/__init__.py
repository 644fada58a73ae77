"""The table files: path -> function that returns the file's text."""
from . import cube_root, exp, exported, extended, ln, power, sincos
from .common import CORE, ROOT  # noqa: F401

FILES = {
    CORE / "_heap/real/tables/vdcbrt_tables.hpp": cube_root.vdcbrt_tables,
    CORE / "_heap/real/tables/vscbrt_tables.hpp": cube_root.vscbrt_tables,
    CORE / "invcbrt/tables/vdinvcbrt_tables.hpp": cube_root.vdinvcbrt_tables,
    CORE / "invcbrt/tables/vsinvcbrt_tables.hpp": cube_root.vsinvcbrt_tables,
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
    CORE / "_heap/extended/tables/sine_table.hpp": extended.sine_table,
    CORE / "_heap/real/tables/vdfar_table.hpp": sincos.vdfar_table,
    CORE / "_heap/real/tables/vdsincos_tables.hpp": sincos.vdsincos_tables,
    CORE / "_heap/real/tables/vssincos_polynomials.hpp": sincos.vssincos_polynomials,
    CORE / "tan/tables/vdtan_tables.hpp": sincos.vdtan_tables,
    CORE / "tables/exported_tables.cpp": exported.exported_tables,
}
