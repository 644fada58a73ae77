# SPDX-License-Identifier: MIT
"""The package as it is installed: a wheel, moved, in an interpreter of its own."""
import ast
import inspect
import os
import re
import subprocess
import sys
import types
import zipfile
from pathlib import Path

import numpy as np
import pytest

import orv

ROOT = Path(__file__).resolve().parents[2]
BUILD = Path(os.environ["ORV_BUILD"])


def run(*command, **environment):
    inherited = {name: value for name, value in os.environ.items() if name != "PYTHONPATH"}
    made = subprocess.run([str(word) for word in command], env=inherited | environment, text=True,
                          capture_output=True, cwd=ROOT)
    assert made.returncode == 0, made.stdout + made.stderr
    return made.stdout


@pytest.fixture(scope="module")
def wheel(tmp_path_factory):
    folder = tmp_path_factory.mktemp("wheel")
    run(sys.executable, "-m", "pip", "wheel", ".", "--no-deps", "-w", folder,
        "--config-settings", f"build-dir={BUILD}",
        PIP_NO_INDEX="1")
    (made,) = folder.glob("orv-*.whl")
    return made


def test_wheel_works_wherever_it_is_put(wheel, tmp_path):
    first, moved = tmp_path / "first", tmp_path / "moved"
    run(sys.executable, "-m", "pip", "install", "--no-deps", "--target", first, wheel, PIP_NO_INDEX="1")
    first.rename(moved)
    code = """
import numpy, orv, re
assert orv.exp(0.0) == 1 and orv.random.MT2203(7).normal(size=3).shape == (3,)
assert numpy.allclose(orv.stats.describe(numpy.eye(3)).mean, 1 / 3)
for path in sorted(set(re.findall("/.*liborv_.*", open("/proc/self/maps").read()))): print(path)
"""
    loaded = run(sys.executable, "-c", code, PYTHONPATH=str(moved)).split()
    assert {Path(path).name.split(".")[0] for path in loaded} == {
        "liborv_qem_avx", "liborv_serv", "liborv_threads"}
    assert all(path.startswith(str(moved)) for path in loaded)


def test_wheel_holds_no_path_and_what_it_lists(wheel):
    with zipfile.ZipFile(wheel) as archive:
        names = archive.namelist()
        assert any(name.endswith("METADATA") for name in names) and "orv/py.typed" in names
        assert not any(str(BUILD).encode() in archive.read(name) for name in names)
        record = archive.read(next(name for name in names if name.endswith("RECORD"))).decode()
    assert {line.split(",")[0] for line in record.splitlines()} == set(names)


def test_import_is_quick():
    """Beyond what NumPy takes, in time of the processor, whatever else the machine does."""
    code = ("import numpy, time; s = time.process_time(); import orv; "
            "print(1000 * (time.process_time() - s))")
    times = [float(run(sys.executable, "-c", code, PYTHONPATH=str(BUILD / "python"))) for _ in range(7)]
    assert min(times) < 20, f"{min(times)} ms"


def test_package_loads_no_more_than_is_used():
    code = "import sys, orv; print(*[m for m in ('orv.stats', 'orv.random', 'pandas') if m in sys.modules])"
    assert run(sys.executable, "-c", code, PYTHONPATH=str(BUILD / "python")).split() == []


def test_version_is_the_library_s():
    text = (ROOT / "include" / "orv" / "version.h").read_text()
    assert orv.__version__ == ".".join(re.findall(r"define ORV_VERSION_[MP]\w+ +(\d+)", text))


# ---- Stubs --------------------------------------------------------------------------------------


def members(tree):
    for node in tree.body:
        if isinstance(node, (ast.FunctionDef, ast.ClassDef)):
            yield node.name
        elif isinstance(node, ast.AnnAssign):
            yield node.target.id


def assert_same_arguments(stub, function):
    if isinstance(function, types.FunctionType):
        names = [a.arg for a in stub.args.args + ([stub.args.vararg] if stub.args.vararg else [])]
        assert names == list(inspect.signature(function).parameters), stub.name


@pytest.mark.parametrize("name", ["", "la", "ha", "ep", "random", "stats"])
def test_stubs_have_every_public_name(name):
    module = getattr(orv, name) if name else orv
    stub = ast.parse((ROOT / "python" / "orv" / f"{name or '__init__'}.pyi").read_text())
    public = set(module.__all__) - {"la", "ha", "ep", "random", "stats"}
    assert public <= set(members(stub))
    for node in stub.body:
        if not isinstance(node, ast.ClassDef):
            continue
        real = getattr(module, node.name)
        for method in node.body:
            if isinstance(method, ast.FunctionDef) and not method.decorator_list:
                assert_same_arguments(method, getattr(real, method.name))
    for function in [n for n in stub.body if isinstance(n, ast.FunctionDef)]:
        assert_same_arguments(function, getattr(module, function.name))


def test_numpy_is_as_it_was():
    """Importing changes no state of NumPy's."""
    code = "import numpy as np; a = np.geterr(); import orv, orv.random, orv.stats; print(a == np.geterr())"
    assert run(sys.executable, "-c", code, PYTHONPATH=str(BUILD / "python")).strip() == "True"
    assert np.exp is not orv.exp
