# SPDX-License-Identifier: MIT
"""What scripts/bench runs and writes: a module a section of docs/benchmarks.md."""
