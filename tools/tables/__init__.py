# SPDX-License-Identifier: MIT
"""The table files: path -> function that returns the file's text."""
from mpmath import sqrt

from . import (
    arcsine, arctangent, cube_root, error_function, exp, exported, extended, hyperbolic,
    inverse_error, inverse_hyperbolic, ln, poisson, power, quasi, scalar, sincos)
from .common import CORE, ROOT  # noqa: F401

FILES = {
    CORE / "_heap/real/tables/arcsine_polynomials.hpp": arcsine.arcsine_polynomials,
    CORE / "_heap/real/tables/vdatan_tables.hpp": arctangent.vdatan_tables,
    CORE / "_heap/real/tables/vsatan_tables.hpp": arctangent.vsatan_tables,
    CORE / "_heap/real/tables/vdcbrt_tables.hpp": cube_root.vdcbrt_tables,
    CORE / "_heap/real/tables/vscbrt_tables.hpp": cube_root.vscbrt_tables,
    CORE / "invcbrt/tables/vdinvcbrt_tables.hpp": cube_root.vdinvcbrt_tables,
    CORE / "invcbrt/tables/vsinvcbrt_tables.hpp": cube_root.vsinvcbrt_tables,
    CORE / "_heap/real/tables/normal_tail_tables.hpp": error_function.normal_tail_tables,
    CORE / "cdfnorm/tables/cdfnorm_tables.hpp": error_function.cdfnorm_tables,
    CORE / "erf/tables/vderf_tables.hpp": error_function.vderf_tables,
    CORE / "erf/tables/vserf_tables.hpp": error_function.vserf_tables,
    CORE / "erfc/tables/erfc_tables.hpp": error_function.erfc_tables,
    CORE / "exp/tables/vdexp_tables.hpp": exp.vdexp_tables,
    CORE / "exp/tables/vsexp_tables.hpp": exp.vsexp_tables,
    CORE / "expm1/tables/vdexpm1_tables.hpp": exp.vdexpm1_tables,
    CORE / "expm1/tables/vsexpm1_tables.hpp": exp.vsexpm1_tables,
    CORE / "tables/exported_tables.cpp": exported.exported_tables,
    CORE / "_heap/extended/tables/sine_table.hpp": extended.sine_table,
    CORE / "_heap/real/tables/exp_less_1.hpp": hyperbolic.exp_less_1,
    CORE / "_heap/real/tables/vdcosh_tables.hpp": hyperbolic.vdcosh_tables,
    CORE / "tanh/tables/vdtanh_tables.hpp": hyperbolic.vdtanh_tables,
    CORE / "tanh/tables/vstanh_tables.hpp": hyperbolic.vstanh_tables,
    CORE / "_heap/real/tables/inverse_error_log_table.hpp": inverse_error.log_table,
    CORE / "cdfnorminv/tables/cdfnorminv_tail_tables.hpp":
        inverse_error.slow_tables("CdfNormInv", lambda: sqrt(2)),
    CORE / "cdfnorminv/tables/dcdfnorminv_tables.hpp":
        inverse_error.main_tables("double", "CdfNormInv", lambda: sqrt(2)),
    CORE / "cdfnorminv/tables/scdfnorminv_tables.hpp":
        inverse_error.main_tables("float", "CdfNormInv", lambda: sqrt(2)),
    CORE / "erfcinv/tables/derfcinv_tables.hpp": inverse_error.main_tables("double", "ErfcInv", lambda: 1),
    CORE / "erfcinv/tables/erfcinv_tail_tables.hpp": inverse_error.slow_tables("ErfcInv", lambda: 1),
    CORE / "erfcinv/tables/serfcinv_tables.hpp": inverse_error.main_tables("float", "ErfcInv", lambda: 1),
    CORE / "_heap/real/tables/inverse_hyperbolic_polynomials.hpp":
        inverse_hyperbolic.inverse_hyperbolic_polynomials,
    CORE / "ln/tables/vdln_tables.hpp": ln.vdln_tables,
    CORE / "ln/tables/vsln_tables.hpp": ln.vsln_tables,
    CORE / "log10/tables/vdlog10_tables.hpp": ln.vdlog10_tables,
    CORE / "log10/tables/vslog10_tables.hpp": ln.vslog10_tables,
    CORE / "log1p/tables/vslog1p_tables.hpp": ln.vslog1p_tables,
    poisson.FOLDER / "poisson_normal_tables.hpp": poisson.poisson_normal_tables,
    CORE / "pow/tables/pow_slow_tables.hpp": power.pow_slow_tables,
    CORE / "pow/tables/vdpow_tables.hpp": power.vdpow_tables,
    CORE / "pow/tables/vspow_tables.hpp": power.vspow_tables,
    quasi.FILE: quasi.niederr_tables,
    scalar.FOLDER / "log_gamma_tables.hpp": scalar.log_gamma_tables,
    scalar.FOLDER / "scalar_ln_table.hpp": scalar.scalar_ln_table,
    CORE / "_heap/real/tables/two_over_pi.hpp": sincos.two_over_pi,
    CORE / "_heap/real/tables/vdfar_table.hpp": sincos.vdfar_table,
    CORE / "_heap/real/tables/vdsincos_tables.hpp": sincos.vdsincos_tables,
    CORE / "_heap/real/tables/vssincos_polynomials.hpp": sincos.vssincos_polynomials,
    CORE / "tan/tables/vdtan_tables.hpp": sincos.vdtan_tables,
}
