# SPDX-License-Identifier: MIT
"""Calls the vector functions of a built library, element by element."""
import ctypes
import pathlib

REAL = {"s": ctypes.c_float, "d": ctypes.c_double, "c": ctypes.c_float, "z": ctypes.c_double}
SUFFIX = {"s": {"LA": "_21", "HA": "_HA", "EP": "_11"}, "d": {"LA": "_50", "HA": "_HA", "EP": "_26"}}
SUFFIX |= {"c": SUFFIX["s"], "z": SUFFIX["d"]}


class Library:
    def __init__(self, build):
        files = sorted(pathlib.Path(build).glob("lib/liborv_qem_avx.so*"))
        if not files:
            raise FileNotFoundError(f"{build} holds no library: build it, or name another folder by --build")
        self.dll = ctypes.CDLL(str(files[0].resolve()))
        self.dll.orv_qem_kernel_SetMode(0x100)  # special elements leave a status, nothing else

    def version(self):
        self.dll.orv_version.restype = ctypes.c_char_p
        return self.dll.orv_version().decode()

    def vector(self, kind, numbers):
        return (REAL[kind] * len(numbers))(*numbers)

    def unary(self, kind, name, level, arguments):
        """Results of a function of one real argument."""
        a, r = self.vector(kind, arguments), self.vector(kind, arguments)
        getattr(self.dll, f"_qem{kind}{name}{SUFFIX[kind][level]}")(len(arguments), a, r)
        return list(r)

    def one(self, f, level, arguments):
        """Results and status of one element of a function; complex numbers go by their parts."""
        is_complex = f.type in "cz"
        results = 2 if f.shape == "TwoResults" else 1
        parts = 2 if is_complex and f.shape != "ComplexToReal" else 1
        by_parts = is_complex and f.shape != "RealToComplex"
        vectors = [self.vector(f.type, (x.real, x.imag) if by_parts else (x,)) for x in arguments]
        out = [self.vector(f.type, [0.0] * parts) for _ in range(results)]
        self.dll.orv_qem_kernel_ClearErrStatus()
        getattr(self.dll, f"_qem{f.type}{f.name}{SUFFIX[f.type][level]}")(1, *vectors, *out)
        status = self.dll.orv_qem_kernel_GetErrStatus()
        return [complex(*r) if parts == 2 else r[0] for r in out], status
