#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Runs the jobs of a transcript and compares what they print.

    tests/cli/run_jobs.py ORV TRANSCRIPT DATA [--write]

A line that begins with "$ " is a command of the shell, in a folder with copies of the files in DATA; the
lines behind it are what it prints on both outputs, and "[2]" at the end its exit code where that is not
0. "..." in a line stands for anything. A line that begins with "# " is a remark. --write puts what the
commands print now in place of what they should: read the difference before you keep it.
"""
import os
import re
import shutil
import subprocess
import sys
import tempfile


def jobs_of(text):
    """Remarks, command and expected lines of each job."""
    jobs, remarks = [], []
    for line in text.splitlines():
        if line.startswith("# "):
            remarks.append(line)
        elif line.startswith("$ "):
            jobs.append((remarks, line[2:], []))
            remarks = []
        elif jobs and not remarks:
            jobs[-1][2].append(line)
    return jobs


def run(command, folder, orv):
    environment = {**os.environ, "PATH": os.path.dirname(orv) + ":" + os.environ["PATH"],
                   "LC_ALL": "C.UTF-8"}
    environment.pop("ORV_QEM_MODE", None)
    done = subprocess.run(["bash", "-c", command], cwd=folder, env=environment, text=True,
                          stdout=subprocess.PIPE, stderr=subprocess.STDOUT, timeout=60, check=False)
    return done.stdout.splitlines() + ([f"[{done.returncode}]"] if done.returncode else [])


def matches(expected, printed):
    patterns = [re.escape(line).replace(r"\.\.\.", ".*") for line in expected]
    return len(expected) == len(printed) and all(map(re.fullmatch, patterns, printed))


def main():
    orv, transcript, data = (os.path.abspath(path) for path in sys.argv[1:4])
    with open(transcript) as file:
        jobs = jobs_of(file.read())
    failures, written = 0, []
    with tempfile.TemporaryDirectory() as folder:
        shutil.copytree(data, folder, dirs_exist_ok=True)
        for remarks, command, expected in jobs:
            while expected and not expected[-1]:
                expected.pop()
            printed = run(command, folder, orv)
            written.append("\n".join([*remarks, "$ " + command, *printed]) + "\n")
            if not matches(expected, printed):
                failures += 1
                print("\n".join(["$ " + command, "expected:", *expected, "printed:", *printed, ""]))
    if "--write" in sys.argv:
        with open(transcript, "w") as file:
            file.write("\n".join(written))
    print(f"{len(jobs)} jobs, {failures} failed")
    sys.exit(1 if failures or not jobs else 0)


main()
