#!/usr/bin/env python3
"""Measures whole imports next to their peers, and says of every target whether it is reached.

usage: measure.py BUILD_FOLDER [--repetitions N] [--record]

Prints tables in Markdown. --record also writes them into docs/performance.md, in the place of the last ones.
"""

import argparse
import datetime
import json
import os
import re
import shlex
import statistics
import subprocess
import sys
import time
from pathlib import Path

import ratios

TOP = Path(__file__).resolve().parent.parent
sys.path.insert(0, str(TOP / "scripts"))

import figures  # noqa: E402 - lies beside the scripts

MEGABYTES = (1, 20, 200)

OF_FORTRAN = 1 / 12
OF_BARE_LOOP = 1.2
GROWTH = 1.15
FIXED_MEMORY = 16 << 20
OF_LARGEST_SECTION = 0.35
OF_IMPORT_ALONE = 2
FIRST_OUTPUT = 0.020


def first_line(*command):
    return subprocess.run(command, capture_output=True, text=True, check=True).stdout.splitlines()[0]


def found_in(path, pattern):
    found = re.search(pattern, Path(path).read_text(encoding="utf-8"), re.MULTILINE)
    return found.group(1) if found else "unknown"


def setting(build, name):
    return found_in(build / "CMakeCache.txt", rf"^{name}:\w+=(.*)$")


def machine(build):
    """What the figures hold for."""
    processor = found_in("/proc/cpuinfo", r"^model name\s*: (.*)$")
    memory = int(found_in("/proc/meminfo", r"^MemTotal: *(\d+)")) / (1 << 20)
    system = found_in("/etc/os-release", r'^PRETTY_NAME="(.*)"')
    cpp, fortran = (first_line(setting(build, f"CMAKE_{language}_COMPILER"), "--version")
                    for language in ("CXX", "Fortran"))
    options = setting(build, "CMAKE_CXX_FLAGS_RELEASE")
    return [
        ("Date", datetime.date.today().isoformat()),
        ("Processor", f"{processor}, {os.cpu_count()} cores"),
        ("Memory", f"{memory:.0f} GiB"),
        ("System", system),
        ("C++ compiler", f"{cpp}, {options}"),
        ("Fortran compiler", f"{fortran}, -O3"),
    ]


class Table:
    """A table in Markdown. Columns that hold numbers stand on the right."""

    def __init__(self, *heads):
        self.rows = [heads]

    def add(self, *cells):
        self.rows.append(cells)

    def lines(self):
        widths = [max(len(row[i]) for row in self.rows) for i in range(len(self.rows[0]))]
        rows = ["| " + " | ".join(cell.ljust(width) if i == 0 else cell.rjust(width)
                                  for i, (cell, width) in enumerate(zip(row, widths))) + " |" for row in self.rows]
        rule = "|" + "|".join("-" * (width + 2) if i == 0 else "-" * (width + 1) + ":"
                              for i, width in enumerate(widths)) + "|"
        return [rows[0], rule, *rows[1:]]


class Targets:
    def __init__(self):
        self.table = Table("Target", "At most", "Measured", "Reached")
        self.missed = 0
        self.count = 0

    def add(self, what, bound, measured, form):
        reached = measured <= bound
        self.missed += not reached
        self.count += 1
        self.table.add(what, form(bound), form(measured), "yes" if reached else "NO")


def fraction(value):
    return f"1/{1 / value:.1f}"


def times(value):
    return f"{value:.2f}"


def megabytes(value):
    return f"{value / 1e6:.1f} MB"


def milliseconds(seconds):
    return f"{seconds * 1e3:.{1 if seconds >= 1e-3 else 3}f} ms"


class Model:
    """A generated file."""

    def __init__(self, build, file_format, size):
        self.name = f"{file_format}-{size}"
        self.path = build / "models" / f"{self.name}.inp"
        self.path.parent.mkdir(exist_ok=True)
        generator = build / "bin/generate_model"
        arguments = [file_format, str(size * 1_000_000)]
        with open(self.path, "wb") as file:
            subprocess.run([generator, *arguments], stdout=file, check=True)
        self.size = self.path.stat().st_size
        sections = subprocess.run([generator, "--sections", *arguments], capture_output=True, check=True).stdout
        self.largest_section = max(int(section) for section in sections.split())


def once(build, program, model, checksum=False):
    """What a program that goes once through a file says of itself."""
    environment = dict(os.environ)
    if checksum:
        environment["LD_LIBRARY_PATH"] = str(build / "lib/checksum_host")
    # The path reaches the host: that of the checkout must not be part of the sum.
    done = subprocess.run([build / "bin" / program, model.path.relative_to(build)], stdout=subprocess.PIPE,
                          env=environment, cwd=build, check=False)
    if done.returncode != 0:
        sys.exit(f"{program} {model.path}: exit status {done.returncode}")
    return json.loads(done.stdout)


def compare_streams(build, models):
    """The library and the Fortran program must send the same: every argument of every command is summed up."""
    table = Table("File", "Commands", "Sum of the library's", "Sum of the Fortran program's")
    for model in models:
        library, fortran = (once(build, program, model, checksum=True) for program in ("import_once", "fortran_once"))
        table.add(model.name, f"{library['commands']}", library["checksum"], fortran["checksum"])
        if (library["commands"], library["checksum"]) != (fortran["commands"], fortran["checksum"]):
            sys.exit(f"{model.name}: the streams differ\n" + "\n".join(table.lines()))
    return table


def run_benchmark(build, program, repetitions, *arguments):
    results = build / f"{program}.json"
    subprocess.run([build / "bin" / program, f"--benchmark_repetitions={repetitions}",
                    "--benchmark_enable_random_interleaving=true", f"--benchmark_out={results}",
                    "--benchmark_out_format=json", *arguments], stdout=subprocess.DEVNULL, check=True)
    return json.loads(results.read_text())


def measure_imports(build, models, repetitions):
    """Seconds of processor time by file and peer: the least of all repetitions."""
    results = run_benchmark(build, "import_benchmark", repetitions, *(model.path for model in models))
    seconds = {}
    for run in results["benchmarks"]:
        if run.get("error_occurred"):
            sys.exit(f"{run['name']}: {run.get('error_message', 'failed')}")
        if run["run_type"] != "iteration":
            continue
        model, peer = run["run_name"].split("/")[:2]
        by_peer = seconds.setdefault(model, {})
        by_peer[peer] = min(by_peer.get(peer, float("inf")), run["cpu_time"] / 1e3)
    return seconds


def import_table(models, seconds, targets):
    table = Table("File", "Library", "Fortran", "Bare loop", "Bytes alone", "Library, ns/byte", "of Fortran",
                  "of bare loop")
    for model in models:
        by_peer = seconds[model.name]
        library, fortran, loop = by_peer["library"], by_peer.get("fortran"), by_peer["bare_loop"]
        table.add(model.name, milliseconds(library), milliseconds(fortran) if fortran else "",
                  milliseconds(loop), milliseconds(by_peer["bytes"]), times(library / model.size * 1e9),
                  fraction(library / fortran) if fortran else "", times(library / loop))
        if fortran:
            targets.add(f"{model.name}: processor time of that of the Fortran program", OF_FORTRAN, library / fortran,
                        fraction)
        targets.add(f"{model.name}: processor time of that of the bare loop", OF_BARE_LOOP, library / loop, times)
    per_byte = [seconds[model.name]["library"] / model.size for model in models if model.name.startswith("legacy")]
    targets.add(f"cost of a byte at {MEGABYTES[-1]} MB of that at {MEGABYTES[0]} MB", GROWTH, per_byte[-1] / per_byte[0],
                times)
    return table


def memory_table(build, models, targets):
    table = Table("File", "Bytes", "Largest section", "Peak memory", "Bound")
    for model in models:
        peak = once(build, "import_once", model)["peak_memory_kib"] << 10
        bound = FIXED_MEMORY + OF_LARGEST_SECTION * model.largest_section
        table.add(model.name, megabytes(model.size), megabytes(model.largest_section), megabytes(peak), megabytes(bound))
        targets.add(f"{model.name}: peak memory", bound, peak, megabytes)
    return table


def processor_times(build, commands, repetitions):
    """Seconds of processor time of each command, from its start to its end: the least of all repetitions."""
    results = build / "hyperfine.json"
    least = [float("inf")] * len(commands)
    for _ in range(repetitions):
        # One run of each, since hyperfine keeps the mean of several only.
        subprocess.run(["hyperfine", "--shell=none", "--style=none", "--runs=1", f"--export-json={results}",
                        *(shlex.join(map(str, command)) for command in commands)],
                       stdout=subprocess.DEVNULL, check=True)
        runs = json.loads(results.read_text())["results"]
        least = [min(before, run["user"] + run["system"]) for before, run in zip(least, runs)]
    return least


def command_table(build, models, repetitions, targets):
    """The command beside the import alone."""
    table = Table("File", "import_once", "kova-import", "with --log", "of the import alone", "with --log")
    log = build / "bench.log"
    for model in models:
        command = [build / "bin/kova-import", model.path]
        alone, plain, with_log = processor_times(
            build, [[build / "bin/import_once", model.path], command, [*command, f"--log={log}"]], repetitions)
        log.unlink()
        table.add(model.name, milliseconds(alone), milliseconds(plain), milliseconds(with_log), times(plain / alone),
                  times(with_log / alone))
        targets.add(f"{model.name}: kova-import of the import alone", OF_IMPORT_ALONE, plain / alone, times)
        targets.add(f"{model.name}: kova-import --log of the import alone", OF_IMPORT_ALONE, with_log / alone, times)
    return table


def first_output(build, model):
    """Seconds from the start of the command to its first byte: the median of some runs."""
    seconds = []
    for _ in range(15):
        reading, writing = os.pipe()
        start = time.monotonic()
        with subprocess.Popen([build / "bin/kova-import", model.path], stdout=writing, stderr=writing) as process:
            os.close(writing)
            os.read(reading, 1)
            seconds.append(time.monotonic() - start)
            with os.fdopen(reading, "rb") as rest:
                rest.read()
            process.wait()
    return statistics.median(seconds)


def figures(build, repetitions, targets):
    """All tables, as lines. Fills the targets."""
    legacy = [Model(build, "legacy", size) for size in MEGABYTES]
    models = legacy + [Model(build, "current", size) for size in MEGABYTES]
    streams = compare_streams(build, legacy)
    imports = import_table(models, measure_imports(build, models, repetitions), targets)
    memory = memory_table(build, models, targets)
    command = command_table(build, models, repetitions, targets)
    targets.add(f"{legacy[-1].name}: first output of kova-import", FIRST_OUTPUT, first_output(build, legacy[-1]),
                milliseconds)
    records = run_benchmark(build, "record_benchmark", repetitions)

    about = Table("", "")
    for row in machine(build):
        about.add(*row)
    # Words, all of them: on the left.
    about_lines = [f"| {name} | {value} |" for name, value in about.rows]
    yield from ["", about_lines[0], "|---|---|", *about_lines[1:]]
    yield from ["", "### Targets", "", *targets.table.lines()]
    yield from ["", f"### Whole imports: processor time, the least of {repetitions} repetitions", "", *imports.lines()]
    yield from ["", "### Memory", "", *memory.lines()]
    yield from ["", f"### The command: processor time, the least of {repetitions} repetitions", "", *command.lines()]
    yield from ["", "### The streams are the same", "", *streams.lines()]
    yield from ["", "### Records alone: medians", "", "```", *ratios.table(records), "```", ""]


def main():
    parser = argparse.ArgumentParser(description="Measures whole imports next to their peers.")
    parser.add_argument("build", type=Path)
    parser.add_argument("--repetitions", type=int, default=9)
    parser.add_argument("--record", action="store_true", help="write the tables into docs/performance.md")
    options = parser.parse_args()
    targets = Targets()
    text = "\n".join(figures(options.build.resolve(), options.repetitions, targets)) + "\n"
    print(text)
    if options.record:
        figures.record("performance.md", "the figures", text)
    print(f"{targets.missed} of {targets.count} targets missed" if targets.missed else "All targets reached")
    return 1 if targets.missed else 0


if __name__ == "__main__":
    sys.exit(main())
