#!/usr/bin/env python3
"""Counts the instructions of a few whole imports and compares them with those in counts.json, so that a slower library is seen
also on a machine where times say nothing.

usage: check_instructions.py BUILD_FOLDER [--record]

BUILD_FOLDER is a release build with the tests. Counts hold for one compiler and its options; with others nothing is compared,
a line says so, and the exit status is 77. --record writes the counts of this build into counts.json.
"""

import argparse
import json
import os
import re
import subprocess
import sys
from pathlib import Path

HERE = Path(__file__).resolve().parent
TOP = HERE.parent.parent
RECORDED = HERE / "counts.json"
TOLERANCE = 0.03
SKIPPED = 77
# The last section of the current format; while the library lacks it, imports of such files are not whole.
LAST_CURRENT_SECTION = b"initial_conditions_v2\0"


def cached(build, name):
    """A setting of the build."""
    found = re.search(rf"^{name}:\w+=(.*)$", (build / "CMakeCache.txt").read_text(), re.MULTILINE)
    return found.group(1) if found else ""


def built_with(build):
    compiler = subprocess.run([cached(build, "CMAKE_CXX_COMPILER"), "--version"], capture_output=True, text=True,
                              check=True).stdout.splitlines()[0]
    kind = cached(build, "CMAKE_BUILD_TYPE")
    options = f"{cached(build, 'CMAKE_CXX_FLAGS')} {cached(build, f'CMAKE_CXX_FLAGS_{kind.upper()}')}".strip()
    return {"compiler": compiler, "options": options}


def generated(build, file_format, size):
    """A generated file, in the build's own folder."""
    path = build / "instructions" / f"{file_format}.inp"
    path.parent.mkdir(exist_ok=True)
    with open(path, "wb") as file:
        subprocess.run([build / "bin/generate_model", file_format, str(size)], stdout=file, check=True)
    return path


def files(build):
    """The files whose import is counted, by the names they have in counts.json."""
    yield "generated legacy file of 1 MB", generated(build, "legacy", 1_000_000)
    yield "samples/river-estuary-v7.inp", TOP / "samples/river-estuary-v7.inp"
    if LAST_CURRENT_SECTION in (build / "lib/libkova_import.so").read_bytes():
        yield "generated current file of 1 MB", generated(build, "current", 1_000_000)


def count_instructions(build, path):
    """Instructions from the start of the import to its end."""
    done = subprocess.run(
        ["valgrind", "--tool=callgrind", "--toggle-collect=importexport", "--callgrind-out-file=/dev/null",
         build / "bin/import_once", path],
        capture_output=True, text=True, check=False)
    found = re.search(r"Collected : (\d+)", done.stderr)
    if done.returncode != 0 or not found:
        sys.exit(f"{path}: the import or callgrind failed\n{done.stderr}{done.stdout}")
    return int(found.group(1))


def compare(counts, recorded):
    """Prints both counts of each file. Says whether they are alike."""
    alike = True
    for name, count in counts.items():
        before = recorded.get(name)
        if before is None:
            print(f"{name}: {count} instructions, none recorded")
            alike = False
            continue
        change = count / before - 1
        verdict = "ok"
        if abs(change) > TOLERANCE:
            alike = False
            verdict = "SLOWER" if change > 0 else "faster: record it, or a later slowdown hides behind it"
        print(f"{name}: {count} instructions, recorded {before}, {change:+.1%}: {verdict}")
    return alike


def main():
    parser = argparse.ArgumentParser(description="Compares instruction counts of whole imports with those recorded.")
    parser.add_argument("build", type=Path)
    parser.add_argument("--record", action="store_true", help="write the counts into counts.json")
    options = parser.parse_args()
    # Relative to the top, since the length of the path is part of what is imported.
    os.chdir(TOP)
    build = Path(os.path.relpath(options.build.resolve(), TOP))

    here = built_with(build)
    recorded = json.loads(RECORDED.read_text()) if RECORDED.exists() else {}
    if not options.record and here != {name: recorded.get(name) for name in here}:
        print("SKIPPED: the instruction counts are for another compiler or other options\n"
              f"  recorded: {recorded.get('compiler')}, {recorded.get('options')}\n"
              f"  here:     {here['compiler']}, {here['options']}")
        sys.exit(SKIPPED)
    counts = {name: count_instructions(build, path) for name, path in files(build)}
    if options.record:
        RECORDED.write_text(json.dumps({**here, "counts": counts}, indent=2) + "\n")
        print(RECORDED.read_text(), end="")
    elif not compare(counts, recorded["counts"]):
        sys.exit("Instruction counts differ from those recorded by more than 3 per cent. If that is meant:\n"
                 f"  tests/instructions/check_instructions.py {build} --record")


if __name__ == "__main__":
    main()
