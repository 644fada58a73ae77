#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Times the orv command beside pandas: whole processes in turn, the least of several rounds.

    bench/command_peers.py ORV [ROUNDS]

Prints for each job the processor's seconds and the most memory of both, and the ratios. The times of
pandas come twice: of the whole process, and from after the import on.
"""
import os
import random
import subprocess
import sys
import tempfile

ROWS = 1_000_000

DESCRIBE = """
d = pandas.read_csv(FILE)
t = d.describe()
t.loc['skew'] = d.skew()
t.loc['kurtosis'] = d.kurt()
t.to_csv(OUT)
"""
GROUPS = """
d = pandas.read_csv(FILE)
g = d.groupby('g')
t = g.agg(['count', 'mean', 'std', 'min', 'median', 'max'])
t.to_csv(OUT)
"""
GROUP_QUARTILES = GROUPS.replace("t.to_csv", "t = t.join(g.quantile([.25, .75]).unstack())\nt.to_csv")
JOBS = [
    ("describe, skewness, kurtosis", "numbers.csv", ["-f", "all"], DESCRIBE),
    ("the same, as told by default", "numbers.csv", [], DESCRIBE),
    ("100000 groups, with medians", "groups.csv",
     ["--by", "g", "-f", "count,mean,sd,min,median,max", "--format", "csv"], GROUPS),
    ("100000 groups, with quartiles", "groups.csv", ["--by", "g", "--format", "csv"],
     GROUP_QUARTILES),
]


def write_files(folder):
    draw = random.Random(1)
    with open(f"{folder}/numbers.csv", "w") as file:
        file.write("a,b,c,d\n")
        for _ in range(ROWS):
            file.write("%r,%r,%r,%r\n" % (draw.gauss(0, 1), draw.random(), draw.expovariate(1),
                                          draw.gauss(1000, 3)))
    with open(f"{folder}/groups.csv", "w") as file:
        file.write("g,a,b,c\n")
        for _ in range(ROWS):
            file.write("%d,%.6g,%.6g,%.6g\n" % (draw.randrange(100_000), draw.gauss(0, 1),
                                                draw.random(), draw.gauss(1000, 3)))


def run(command, env=None):
    """Seconds on the processor, and the most memory in MiB, of a process; and what it printed."""
    process = subprocess.Popen(command, stdout=subprocess.PIPE, env=env)
    text = process.stdout.read()
    _, status, usage = os.wait4(process.pid, 0)
    seconds = usage.ru_utime + usage.ru_stime
    if status != 0:
        sys.exit(f"{command}: status {status}")
    return seconds, usage.ru_maxrss / 1024, text


def pandas_script(file, job):
    return (f"import pandas, sys, time\nbegin = time.process_time()\nFILE, OUT = {file!r}, '/dev/null'\n"
            f"{job}\nprint(time.process_time() - begin)")


def main():
    orv, rounds = sys.argv[1], int(sys.argv[2]) if len(sys.argv) > 2 else 5
    row = "{:<31}{:>8.2f} s{:>7.0f} MiB{:>9.2f} s{:>9.2f} s{:>7.0f} MiB{:>9.2f}{:>9.2f}{:>9.2f}"
    print("{:<31}{:>10}{:>11}{:>11}{:>11}{:>11}{:>9}{:>9}{:>9}".format(
        "", "orv", "", "pandas", "imported", "", "time", "imported", "memory"))
    with tempfile.TemporaryDirectory() as folder:
        write_files(folder)
        for name, file, arguments, job in JOBS:
            path = f"{folder}/{file}"
            ours, theirs = [], []
            for _ in range(rounds):
                ours.append(run([orv, "stats", path, *arguments]))
                theirs.append(run([sys.executable, "-c", pandas_script(path, job)]))
            seconds, memory = (min(r[k] for r in ours) for k in (0, 1))
            whole, their_memory = (min(r[k] for r in theirs) for k in (0, 1))
            imported = min(float(r[2]) for r in theirs)
            print(row.format(name, seconds, memory, whole, imported, their_memory,
                             seconds / whole, seconds / imported, memory / their_memory), flush=True)
        path = f"{folder}/numbers.csv"
        seconds = min(run([orv, "stats", path, "-f", "mean", "--threads", "1"])[0]
                      for _ in range(rounds))
        print(f"reading: {os.path.getsize(path) / seconds / 1e6:.0f} MB/s, one thread, with means")


main()
