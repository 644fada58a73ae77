# SPDX-License-Identifier: MIT
"""All functions at one level: enhanced performance, about half of the digits."""
from . import _core

_FUNCTIONS = _core.ufuncs("ep")
globals().update(_FUNCTIONS)
__all__ = list(_FUNCTIONS)
