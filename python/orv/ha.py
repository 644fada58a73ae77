# SPDX-License-Identifier: MIT
"""All functions at one level: high accuracy, below 1 ulp."""
from . import _core

_FUNCTIONS = _core.ufuncs("ha")
globals().update(_FUNCTIONS)
__all__ = list(_FUNCTIONS)
