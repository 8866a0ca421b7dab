#!/usr/bin/env python3
"""Counts the instructions of a few chosen paths and compares them with instructions.json:

    benchmarks/instructions.py build/benchmarks/instructionbench [--update] [--runs 5]

More than the table's tolerance is an error. Clearly less is told: the table should then be written
anew with --update, so that what was won is not lost again. --runs tells the spread over some runs.

A count depends on the program, on Qt and on the compiler, hardly on the machine: the processor's
own instructions for vectors are left out, hashes have one seed, and the environment is the same
everywhere. With another Qt, compiler or kind of build the comparison is left out (exit code 77).
"""
import argparse
import concurrent.futures
import json
import os
import pathlib
import re
import subprocess
import sys
import tempfile

TABLE = pathlib.Path(__file__).with_name("instructions.json")
SKIPPED = 77


def environment(home):
    return {
        "PATH": "/usr/bin:/bin",
        "HOME": home,
        "XDG_CONFIG_HOME": home + "/config",
        "XDG_RUNTIME_DIR": home,
        "TMPDIR": home,
        "LC_ALL": "C.UTF-8",
        "TZ": "UTC",
        "QT_QPA_PLATFORM": "offscreen",
        "QT_HASH_SEED": "0",
        "QT_NO_CPU_FEATURE": "sse3 ssse3 sse4.1 sse4.2 avx avx2",
        "GLIBC_TUNABLES": "glibc.cpu.hwcaps=-AVX2,-AVX2_Usable,-AVX_Fast_Unaligned_Load,-ERMS,-FSRM,-SSE4_2",
    }


def count_path(program, path):
    """The instructions of one path, counted in a process of its own."""
    with tempfile.TemporaryDirectory(prefix="count") as home:
        run = subprocess.run(
            ["valgrind", "--tool=callgrind", "--instr-atstart=no", "--combine-dumps=no",
             "--callgrind-out-file=" + home + "/counts", program, path],
            env=environment(home), capture_output=True, text=True, check=False)
        if run.returncode != 0:
            sys.exit(f"{path} ended with {run.returncode}:\n{run.stdout}{run.stderr}")
        for dump in pathlib.Path(home).glob("counts.*"):
            text = dump.read_text()
            total = re.search(r"^(?:totals|summary): (\d+)$", text, re.MULTILINE)
            if f"Client Request: {path}\n" in text and total:
                return int(total.group(1))
        sys.exit(f"{path} was not counted")


def count(program):
    """What the counts depend on, and the instructions of each path."""
    listed = subprocess.run([program], capture_output=True, text=True, check=True)
    circumstances, *paths = listed.stdout.strip().splitlines()
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        counts = pool.map(lambda path: count_path(program, path), paths)
        return circumstances, dict(sorted(zip(paths, counts)))


def spread(program, runs):
    found = [count(program)[1] for _ in range(runs)]
    for name in found[0]:
        least, most = min(each[name] for each in found), max(each[name] for each in found)
        print(f"{name:45} {least:14,} to {most:14,}: {100 * (most - least) / least:.3f} %")


def compare(table, counts):
    """Prints a report and tells whether no path takes more than the table allows."""
    good = set(counts) == set(table["counts"])
    if not good:
        print("The table has other paths than the scenario: write it anew with --update.")
    for name, found in counts.items():
        told = table["counts"].get(name, found)
        change = 100 * (found - told) / told
        verdict = ""
        if change > table["percent more"]:
            verdict = "TOO MANY"
            good = False
        elif change < -table["percent less"]:
            verdict = "fewer: write the table anew with --update"
        print(f"{name:45} {found:14,} {change:+7.2f} %  {verdict}")
    return good


def main():
    arguments = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    arguments.add_argument("program")
    arguments.add_argument("--update", action="store_true")
    arguments.add_argument("--runs", type=int, default=0)
    asked = arguments.parse_args()
    if asked.runs > 0:
        spread(asked.program, asked.runs)
        return 0
    circumstances, counts = count(asked.program)
    if asked.update:
        TABLE.write_text(json.dumps({"circumstances": circumstances, "percent more": 5,
                                     "percent less": 10, "counts": counts}, indent=4) + "\n")
        print(TABLE.read_text(), end="")
        return 0
    table = json.loads(TABLE.read_text())
    if table["circumstances"] != circumstances:
        print(f"Not compared: the table is for {table['circumstances']}, this is {circumstances}")
        return SKIPPED
    return 0 if compare(table, counts) else 1


if __name__ == "__main__":
    sys.exit(main())
