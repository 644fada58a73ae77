# SPDX-License-Identifier: MIT
"""Makes wheels of the package with CMake: a build backend (PEP 517) that needs nothing but Python.

    pip wheel . --config-settings build-dir=build/x86-64     takes what stands in a build's folder already
"""
import base64
import hashlib
import os
import pathlib
import re
import subprocess
import sys
import sysconfig
import tarfile
import tempfile
import tomllib
import zipfile

ROOT = pathlib.Path(__file__).resolve().parent.parent
PROJECT = tomllib.loads((ROOT / "pyproject.toml").read_text())["project"]


def _version():
    text = (ROOT / "include" / "orv" / "version.h").read_text()
    return ".".join(re.findall(r"define ORV_VERSION_(?:MAJOR|MINOR|PATCH) +(\d+)", text))


def _numpy_headers():
    """Of the NumPy of this environment, or, in an isolated one, of the interpreter's own; else None."""
    outside = {name: value for name, value in os.environ.items() if name != "PYTHONPATH"}
    for environment in (os.environ, outside):
        run = subprocess.run([sys.executable, "-c", "import numpy; print(numpy.get_include())"],
                             env=environment, capture_output=True, text=True)
        if run.returncode == 0:
            return run.stdout.strip()
    return None


def _run(*command):
    subprocess.run([str(word) for word in command], check=True)


def _installed(build, configured, prefix):
    """The package's files, built and put under a prefix."""
    if not configured:
        options = {"CMAKE_BUILD_TYPE": "Release", "ORV_BUILD_CLI": "OFF", "ORV_BUILD_TESTS": "OFF",
                   "ORV_BUILD_BENCH": "OFF", "ORV_BUILD_PYTHON": "ON",
                   "Python3_EXECUTABLE": sys.executable, "Python3_NumPy_INCLUDE_DIR": _numpy_headers()}
        _run("cmake", "-S", ROOT, "-B", build, "-G", "Ninja",
             *(f"-D{name}={value}" for name, value in options.items()))
    _run("cmake", "--build", build, "--target", "orv_python")
    _run("cmake", "--install", build, "--component", "python", "--prefix", prefix, "--strip")


def _package_files(prefix):
    """Name -> bytes. A wheel has no links: a library goes by the name that it is loaded by."""
    paths = [path for path in sorted(prefix.rglob("*")) if path.is_file()]
    behind_links = {path.resolve() for path in paths if path.is_symlink()}
    return {path.relative_to(prefix).as_posix(): path.read_bytes() for path in paths
            if path.is_symlink() or path.resolve() not in behind_links}


def _metadata():
    lines = ["Metadata-Version: 2.1", f"Name: {PROJECT['name']}", f"Version: {_version()}",
             f"Summary: {PROJECT['description']}", f"Requires-Python: {PROJECT['requires-python']}",
             *(f"Requires-Dist: {name}" for name in PROJECT["dependencies"]),
             "License-File: LICENSE", "Description-Content-Type: text/markdown", "",
             (ROOT / PROJECT["readme"]).read_text()]
    return "\n".join(lines).encode()


def _record(files, name):
    rows = []
    for path, data in files.items():
        digest = base64.urlsafe_b64encode(hashlib.sha256(data).digest()).rstrip(b"=").decode()
        rows.append(f"{path},sha256={digest},{len(data)}\n")
    return "".join([*rows, f"{name},,\n"]).encode()


def get_requires_for_build_wheel(config_settings=None):
    return [] if _numpy_headers() else ["numpy"]


def _info_files(tag):
    """Name -> bytes of a wheel's own folder, but for the list of its files."""
    info = f"{PROJECT['name']}-{_version()}.dist-info"
    return {f"{info}/METADATA": _metadata(), f"{info}/LICENSE": (ROOT / "LICENSE").read_bytes(),
            f"{info}/WHEEL": f"Wheel-Version: 1.0\nGenerator: orv_build\nRoot-Is-Purelib: false\n"
                             f"Tag: {tag}\n".encode()}


def _tag():
    python = f"cp{sys.version_info.major}{sys.version_info.minor}"
    return f"{python}-{python}-{re.sub(r'[-.]', '_', sysconfig.get_platform())}"


def prepare_metadata_for_build_wheel(metadata_directory, config_settings=None):
    for name, data in _info_files(_tag()).items():
        path = pathlib.Path(metadata_directory, name)
        path.parent.mkdir(exist_ok=True)
        path.write_bytes(data)
    return path.parent.name


def build_wheel(wheel_directory, config_settings=None, metadata_directory=None):
    settings = config_settings or {}
    tag = _tag()
    build = ROOT / settings.get("build-dir", f"build/wheel-{tag}")
    with tempfile.TemporaryDirectory() as prefix:
        _installed(build, "build-dir" in settings, prefix)
        files = _package_files(pathlib.Path(prefix))
    files |= _info_files(tag)
    stem = f"{PROJECT['name']}-{_version()}"
    record = f"{stem}.dist-info/RECORD"
    files[record] = _record(files, record)
    wheel = f"{stem}-{tag}.whl"
    with zipfile.ZipFile(pathlib.Path(wheel_directory, wheel), "w", zipfile.ZIP_DEFLATED) as archive:
        for name, data in files.items():
            entry = zipfile.ZipInfo(name)  # the same bytes whenever it is made
            entry.external_attr = (0o755 if ".so" in name else 0o644) << 16
            entry.compress_type = zipfile.ZIP_DEFLATED
            archive.writestr(entry, data)
    return wheel


def build_sdist(sdist_directory, config_settings=None):
    listed = subprocess.run(["git", "ls-files", "-z"], cwd=ROOT, check=True, capture_output=True, text=True)
    stem = f"{PROJECT['name']}-{_version()}"
    with tarfile.open(pathlib.Path(sdist_directory, f"{stem}.tar.gz"), "w:gz") as archive:
        for name in filter(None, listed.stdout.split("\0")):
            archive.add(ROOT / name, f"{stem}/{name}")
        with tempfile.NamedTemporaryFile() as file:
            file.write(_metadata())
            file.flush()
            archive.add(file.name, f"{stem}/PKG-INFO")
    return f"{stem}.tar.gz"
