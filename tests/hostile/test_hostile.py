"""An import of any file under 1 MB takes at most 2 seconds of processor time and 64 MB, in the library and, but for what
WIDE_MODELS names, in the command.

    test_hostile.py            runs the files as tests, with the programs of build/release if no others are given
    test_hostile.py --table    prints what each of them takes, as a table in Markdown
    test_hostile.py --record   writes that into docs/reliability.md

Some of the files go through every form of the command, the others through the one that does most for a file.
"""

import json
import os
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

TESTS = Path(__file__).resolve().parent.parent
sys.path[:0] = [str(TESTS / "memory"), str(TESTS.parent / "scripts")]
os.environ["KOVA_TABLE_BYTES"] = "950000"

import figures  # noqa: E402 - needs the folder
from hostile_files import FILES  # noqa: E402 - needs the folder and the size

PROGRAMS = TESTS.parent / "build/release/bin"
IMPORT_ONCE = os.environ.get("KOVA_IMPORT_ONCE", PROGRAMS / "import_once")
COMMAND = os.environ.get("KOVA_COMMAND", PROGRAMS / "kova-import")
MOST_BYTES = 1_000_000
SECONDS = 2.0
MEGABYTES = 64

# What the command is asked for. {} is a file to write.
FORMS = {
    "check": ["check"],
    "import": ["import"],
    "--verbose": ["import", "--verbose"],
    "--log": ["import", "--quiet", "--log", "{}"],
    "--json": ["import", "--quiet", "--json"],
    "--data": ["import", "--quiet", "--json", "--data"],
    "--report": ["import", "--quiet", "--report", "{}"],
    "check JSON": ["check", "--format", "json"],
    "check SARIF": ["check", "--format", "sarif"],
}
USUAL_FORMS = ["--json"]
THOROUGH = {
    "legacy: segments of slashes",
    "legacy: a state variable and a segment for every few bytes",
    "current: time functions",
    "a bad value at the end of a long line",
}

# Megabytes of the command where its host keeps far more of a record than the one to four bytes that the record takes in the
# file. The library stays far below the bound with these, too.
WIDE_MODELS = {
    "current: system names": 200,
    "current: segments of empty lines": 85,
    "current: boundary systems": 120,
    "current: load systems": 110,
    "legacy: functions of the flow series": 75,
    "current: functions of the flow series": 75,
    "legacy: flow functions": 75,
    "current: flow functions": 75,
    "legacy: a state variable and a segment for every few bytes": 100,
}

TABLE_COLUMNS = ["library", "check", "--json", "--report"]


class Cost:
    def __init__(self, seconds, megabytes, status):
        self.seconds = seconds
        self.megabytes = megabytes
        self.status = status

    def __str__(self):
        return f"{self.seconds:.2f} s, {self.megabytes:.0f} MB"


def cost_of_library(path):
    done = subprocess.run([IMPORT_ONCE, path], stdout=subprocess.PIPE, check=False)
    result = json.loads(done.stdout)
    return Cost(result["processor_seconds"], result["peak_memory_kib"] * 1024 / 1e6, done.returncode)


def cost_of_command(form, path, folder):
    arguments = [argument.format(Path(folder) / "written") for argument in FORMS[form]]
    process = subprocess.Popen([COMMAND, *arguments, path], stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                               stderr=subprocess.DEVNULL)
    _, status, usage = os.wait4(process.pid, 0)
    process.returncode = os.waitstatus_to_exitcode(status)
    return Cost(usage.ru_utime + usage.ru_stime, usage.ru_maxrss * 1024 / 1e6, process.returncode)


def write(path, make):
    """Writes the file in a process of its own: what wait4 tells of a child holds the memory that its parent once had."""
    process = os.fork()
    if process == 0:
        path.write_bytes(make())
        os._exit(0)
    os.waitpid(process, 0)


def costs_of(name, make, forms):
    """Form and cost, one after the other."""
    with tempfile.TemporaryDirectory() as folder:
        path = Path(folder) / "model.inp"
        write(path, make)
        if path.stat().st_size >= MOST_BYTES:
            raise AssertionError(f"{name}: too large")
        yield "library", cost_of_library(path)
        for form in forms:
            yield form, cost_of_command(form, path, folder)


class Hostile(unittest.TestCase):
    def test_files(self):
        for name, make in FILES:
            for form, cost in costs_of(name, make, FORMS if name in THOROUGH else USUAL_FORMS):
                with self.subTest(name, form=form):
                    self.assertIn(cost.status, (0, 1))
                    self.assertLessEqual(cost.seconds, SECONDS)
                    most = MEGABYTES if form == "library" else WIDE_MODELS.get(name, MEGABYTES)
                    self.assertLessEqual(cost.megabytes, most)


def table():
    yield "| File | " + " | ".join(TABLE_COLUMNS) + " |"
    yield "|---" * (len(TABLE_COLUMNS) + 1) + "|"
    for name, make in FILES:
        costs = dict(costs_of(name, make, TABLE_COLUMNS[1:]))
        yield f"| {name} | " + " | ".join(str(costs[column]) for column in TABLE_COLUMNS) + " |"


if __name__ == "__main__":
    if "--table" in sys.argv[1:]:
        print(*table(), sep="\n")
    elif "--record" in sys.argv[1:]:
        figures.record("reliability.md", "hostile files", "\n".join(table()))
    else:
        unittest.main()
