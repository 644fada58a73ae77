# SPDX-License-Identifier: MIT
"""All functions at one level: low accuracy, below 4 ulp."""
from . import _core

_FUNCTIONS = _core.ufuncs("la")
globals().update(_FUNCTIONS)
__all__ = list(_FUNCTIONS)
