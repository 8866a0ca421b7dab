#!/usr/bin/env python3
"""Puts faults into the sources, one at a time, and looks whether the tests notice:

    tools/try-faults.py build [--faults tests/faults] [--only PATTERN] [--results FILE] [--again]

tests/faults/<room>.json lists the faults of each file:

    {"module/source/modules/moduleregistry.cpp": [
        {"name": "a deleted block stays in the registry",
         "old": "moduleMap.remove(p_module->m_registryKey);",
         "new": "moduleMap.remove(0);",
         "tests": "moduleregistrytest|documenttest"}]}

"old" must stand in the file just once; without "new" it is taken out. "tests" is a pattern for
ctest; what it names is built and run. A fault whose effect nobody can see has "equivalent" with the
reason, and is not tried. One that the tests are known to miss may have "survives" with the reason:
it counts as survived all the same.

The build directory must be up to date and its tests green. Each result is written at once, so that a
run that was cut off goes on where it was: what was noticed is left out, unless --again is given or the
fault or its file has changed since. The source is put back whatever happens.

Prints what survived, and how many of the faults were noticed, by room. Exit code 1 if one survived
or could not be tried.
"""
import argparse
import hashlib
import json
import pathlib
import re
import signal
import subprocess
import sys
import time

ROOT = pathlib.Path(__file__).resolve().parent.parent
# A fault may well make a test hang.
LONGEST_TEST = 240


def faults_in(path):
    """All faults of a room, each with its file. An object of JSON may hold a key only once."""
    def fault_or_files(pairs):
        keys = [key for key, _ in pairs]
        if len(keys) != len(set(keys)):
            sys.exit(f"{path.name}: something stands twice among {', '.join(keys)}")
        return dict(pairs)

    files = json.loads(path.read_text(encoding="utf-8"), object_pairs_hook=fault_or_files)
    return [{"file": file, "new": "", **fault} for file, faults in files.items() for fault in faults]


def load(folder, pattern):
    """The faults by room; ends the program where the data is not what it should be."""
    rooms, names = {}, set()
    for path in sorted(folder.glob("*.json")):
        for fault in faults_in(path):
            wrong = {"name", "file", "old", "new", "tests"} ^ (fault.keys() - {"equivalent", "survives"})
            if wrong:
                sys.exit(f"{path.name}: {fault.get('name')} lacks or can't have "
                         f"{', '.join(sorted(wrong))}")
            if fault["name"] in names:
                sys.exit(f"{path.name}: \"{fault['name']}\" stands twice")
            names.add(fault["name"])
            count = (ROOT / fault["file"]).read_text(encoding="utf-8").count(fault["old"])
            if count != 1:
                sys.exit(f"{path.name}: the old text of \"{fault['name']}\" stands {count} times")
            if re.search(pattern, fault["name"] + " " + fault["file"]):
                rooms.setdefault(path.stem, []).append(fault)
    return rooms


def tests_of(build, pattern):
    """Names of the tests that a pattern means."""
    listed = subprocess.run(["ctest", "-N", "-R", pattern], cwd=build, capture_output=True,
                            text=True, check=True).stdout
    return re.findall(r"^\s*Test\s+#\d+: (\S+)$", listed, re.MULTILINE)


def outcome(build, tests):
    """"noticed", "survived", or what went wrong."""
    known = subprocess.run(["ninja", "-C", build, "-t", "targets", "all"], capture_output=True,
                           text=True, check=True).stdout
    targets = [test for test in tests if re.search(rf"^{re.escape(test)}: ", known, re.MULTILINE)]
    made = subprocess.run(["ninja", "-C", build, *(targets if len(targets) == len(tests) else [])],
                          capture_output=True, text=True, check=False)
    if made.returncode != 0:
        return "does not build"
    pattern = "^(" + "|".join(re.escape(test) for test in tests) + ")$"
    run = subprocess.run(["ctest", "-R", pattern, "--stop-on-failure", "--timeout",
                          str(LONGEST_TEST)], cwd=build, capture_output=True, check=False)
    return "survived" if run.returncode == 0 else "noticed"


def attempt(build, fault):
    path = ROOT / fault["file"]
    text = path.read_text(encoding="utf-8")
    tests = tests_of(build, fault["tests"])
    if not tests:
        return "no such test"
    try:
        path.write_text(text.replace(fault["old"], fault["new"]), encoding="utf-8")
        return outcome(build, tests)
    finally:
        path.write_text(text, encoding="utf-8")


def key_of(fault):
    text = (ROOT / fault["file"]).read_text(encoding="utf-8")
    return hashlib.sha256((json.dumps(fault, sort_keys=True) + text).encode()).hexdigest()


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n", 1)[0])
    parser.add_argument("build", type=pathlib.Path)
    parser.add_argument("--faults", type=pathlib.Path, default=ROOT / "tests" / "faults")
    parser.add_argument("--only", default="", metavar="PATTERN")
    parser.add_argument("--results", type=pathlib.Path)
    parser.add_argument("--again", action="store_true")
    arguments = parser.parse_args()
    # The source is put back at a plain kill, too.
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(1))

    rooms = load(arguments.faults, arguments.only)
    results_path = arguments.results or arguments.build / "faults.json"
    results = json.loads(results_path.read_text()) if results_path.exists() else {}
    for room, faults in rooms.items():
        for fault in faults:
            key = key_of(fault)
            if "equivalent" in fault or (results.get(key) == "noticed" and not arguments.again):
                continue
            began = time.monotonic()
            results[key] = attempt(arguments.build, fault)
            results_path.write_text(json.dumps(results, indent=1))
            print(f"{room}: {fault['name']}: {results[key]} ({time.monotonic() - began:.0f} s)",
                  flush=True)

    bad = 0
    for room, faults in rooms.items():
        tried = [fault for fault in faults if "equivalent" not in fault]
        noticed = [fault for fault in tried if results[key_of(fault)] == "noticed"]
        print(f"{room}: {len(noticed)} of {len(tried)} noticed, "
              f"{len(faults) - len(tried)} can't be seen")
        for fault in tried:
            if results[key_of(fault)] != "noticed":
                reason = ": " + fault["survives"] if "survives" in fault else ""
                print(f"  {fault['name']}: {results[key_of(fault)]}{reason}")
                bad += 1
    sys.exit(1 if bad else 0)


if __name__ == "__main__":
    main()
