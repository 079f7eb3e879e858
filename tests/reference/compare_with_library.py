"""Compares the library with the reference importer on generated files, on the samples and on given files.

    compare_with_library.py IMPORT_LOGS [--count N] [--seed S] [FILE...]

IMPORT_LOGS is the built program that imports the files of a folder with the library. Every file is imported with
one of the eight combinations of scope, index names and report tables, given files with all eight. A difference is
printed with its file, which is kept.

The send buffers live from one import to the next, so both sides take the files in the order of their names.
Those given come last, because long series in them would stand in the buffers of all files behind. A difference
in the buffers can show in later files too: look at the first one.
"""

import argparse
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

import generate
from command_log import Answers, SendBuffers
from driver import import_file

COMBINATIONS = [(scope, names, tables) for scope in ("all", "transport") for names in ("yes", "no") for tables in ("no", "yes")]
PATH_TEXT = b"model.inp"


def write_case(folder, name, content, scope, names, tables):
    (folder / f"{name}.inp").write_bytes(content)
    (folder / f"{name}.options").write_text(f"scope {scope}\nindex-names {names}\nreport-tables {tables}\n")


def write_cases(folder, arguments):
    cases = []
    for seed in range(arguments.seed, arguments.seed + arguments.count):
        combination = COMBINATIONS[seed % len(COMBINATIONS)]
        content = generate.generate(seed)
        cases.append((f"generated-{seed}", content, *combination))
    for path in map(Path, arguments.files):
        cases += [("-".join(("given", path.stem, *combination)), path.read_bytes(), *combination)
                  for combination in COMBINATIONS]
    for case in cases:
        write_case(folder, *case)
    return sorted(cases, key=lambda case: f"{case[0]}.inp".encode())


def first_difference(expected, actual):
    for number, (wanted, got) in enumerate(zip(expected, actual), start=1):
        if wanted != got:
            return f"line {number}\n  expected {wanted!r}\n       got {got!r}"
    if len(expected) != len(actual):
        longer = expected if len(expected) > len(actual) else actual
        return f"{len(expected)} lines expected, {len(actual)} got; the first surplus one: {longer[min(len(expected), len(actual))]!r}"
    return None


def lines_of(path):
    return path.read_bytes().split(b"\n")[:-1]


def failed_statement(result):
    """The value of the line counter at the failed read of a section, or None."""
    return result.failure.statement if result.failure else None


def compare(folder, send_buffers, name, content, scope, names, tables):
    answers = Answers(verbose=1, scope=0 if scope == "transport" else 1,
                      index_names=0 if names == "yes" else 1)
    result = import_file(content, answers, PATH_TEXT, send_buffers=send_buffers,
                         report_tables=int(tables == "yes"))
    differences = [
        ("log", first_difference([line.encode("ascii") for line in result.log_lines], lines_of(folder / f"{name}.log"))),
        ("console", first_difference(list(result.console_lines), lines_of(folder / f"{name}.console"))),
    ]
    failure = lines_of(folder / f"{name}.failure")
    statement = failed_statement(result)
    if statement is not None and (not failure or int(failure[0].split()[0]) != statement):
        differences.append(("failed statement", f"expected {statement}, got {failure}"))
    return [f"{what}: {difference}" for what, difference in differences if difference]


def main():
    parser = argparse.ArgumentParser(description="compare the library with the reference importer")
    parser.add_argument("import_logs")
    parser.add_argument("files", nargs="*")
    parser.add_argument("--count", type=int, default=1000)
    parser.add_argument("--seed", type=int, default=1)
    arguments = parser.parse_intermixed_args()

    folder = Path(tempfile.mkdtemp(prefix="kova-compare-"))
    cases = write_cases(folder, arguments)
    subprocess.run([arguments.import_logs, folder], check=True)
    different = 0
    stopped = 0
    send_buffers = SendBuffers()
    for case in cases:
        differences = compare(folder, send_buffers, *case)
        stopped += bool(lines_of(folder / f"{case[0]}.failure"))
        if differences:
            different += 1
            print(f"{folder / case[0]}.inp", *differences, sep="\n", file=sys.stderr)
    print(f"{len(cases)} imports compared, {stopped} of them stopped at a fault, {different} different")
    if different == 0:
        shutil.rmtree(folder)
    return 1 if different else 0


if __name__ == "__main__":
    sys.exit(main())
