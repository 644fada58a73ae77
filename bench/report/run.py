# SPDX-License-Identifier: MIT
"""Runs the benchmark programs of one word size."""
import json
import pathlib
import re
import statistics
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parents[2]
BENCH = ROOT / "bench"
PROGRAMS = ("orv_bench", "orv_bench_random", "orv_bench_distributions", "orv_bench_statistics",
            "orv_bench_outliers", "orv_bench_missing", "orv_bench_sort", "orv_bench_cpp")
# Print lines {"name": ..., "ns": an element}, in the machine's own word size, where there is NumPy.
NUMPY = (BENCH / "numpy_statistics.py", BENCH / "numpy_distributions.py")
UNITS = {"ns": 1, "us": 1e3, "ms": 1e6, "s": 1e9}


def build(preset):
    for command in (["cmake", "--preset", preset, "-DORV_BUILD_BENCH=ON"],
                    ["cmake", "--build", "--preset", preset, "-t", *PROGRAMS]):
        done = subprocess.run(command, cwd=ROOT, text=True, stdout=subprocess.PIPE,
                              stderr=subprocess.STDOUT)
        if done.returncode != 0:
            sys.exit(done.stdout + f"scripts/bench: {' '.join(command)} failed")


class Run:
    """The times of one word size by benchmark name, smallest of the repetitions."""

    def __init__(self, preset, chosen):
        self.preset = preset
        self.ns, self.element_ns, self.bytes_a_second = {}, {}, {}
        self.spread, self.complaints = [], []
        self.of = {}  # program -> the names of its benchmarks
        for program in PROGRAMS:
            self._google(program, chosen)
        if preset == "x86-64":
            self._numpy(chosen)

    def _google(self, program, chosen):
        with tempfile.NamedTemporaryFile(suffix=".json") as out:
            done = subprocess.run(
                [ROOT / "build" / self.preset / "bin" / program,
                 f"--benchmark_filter={chosen.filter}",
                 f"--benchmark_repetitions={chosen.repetitions}",
                 f"--benchmark_min_time={chosen.min_time}",
                 "--benchmark_enable_random_interleaving=true",
                 f"--benchmark_out={out.name}", "--benchmark_out_format=json",
                 "--benchmark_format=json"],
                stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True)
            lines = done.stderr.splitlines()
            untimed = [line for line in lines if "is not timed" in line]
            self.complaints += untimed + [line for line in lines if "left out" in line]
            text = pathlib.Path(out.name).read_text()
        if done.returncode != 0 and not untimed:
            sys.exit(f"{done.stderr}\nscripts/bench: {program} of {self.preset} failed")
        repeated = {}
        entries = json.loads(text)["benchmarks"] if text else []  # none that the filter matches
        for entry in sorted(entries, key=lambda e: e["family_index"]):
            if entry["run_type"] == "iteration" and not entry.get("error_occurred"):
                repeated.setdefault(entry["run_name"], []).append(entry)
        for name, all_of_it in repeated.items():
            # Such a name ends in the time that counts, which is the processor's otherwise.
            own, _, clock = name.rpartition("/")
            real = clock in ("real_time", "manual_time")
            name = own if real else name
            self.of.setdefault(program, []).append(name)
            times = [entry["real_time" if real else "cpu_time"] * UNITS[entry["time_unit"]]
                     for entry in all_of_it]
            self.ns[name] = min(times)
            self.spread.append(statistics.median(times) / min(times))
            self.bytes_a_second[name] = max(entry.get("bytes", 0) for entry in all_of_it)
            if "element" in all_of_it[0]:
                self.element_ns[name] = min(entry["element"] for entry in all_of_it) * 1e9

    def _numpy(self, chosen):
        python = next((p for p in ("/usr/bin/python3", sys.executable) if subprocess.run(
            [p, "-c", "import numpy"], stderr=subprocess.DEVNULL).returncode == 0), None)
        if python is None:
            self.complaints.append("left out, not installed: NumPy (python3-numpy)")
            return
        for script in NUMPY:
            done = subprocess.run([python, script, "--repetitions", str(chosen.repetitions)],
                                  stdout=subprocess.PIPE, text=True)
            if done.returncode != 0:
                sys.exit(f"scripts/bench: {script.name} failed")
            for line in done.stdout.splitlines():
                entry = json.loads(line)
                if re.search(chosen.filter, entry["name"]):
                    self.element_ns[entry["name"]] = entry["ns"]

    def matches(self, pattern):
        """The matches of a pattern among the names, in the programs' order."""
        found = (re.fullmatch(pattern, name) for name in self.ns)
        return [m for m in found if m]
