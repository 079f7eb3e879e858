"""What the tests did not run of the library, with the reasons.

usage: uncovered.py BUILD_FOLDER [--record]

Reads the profile that scripts/coverage made. Prints tables in Markdown; --record also writes them into docs/reliability.md.
Ends with 1 when less was run than is promised, or when a line that was not run has no reason in reasons.json.
"""

import argparse
import json
import re
import subprocess
import sys
from pathlib import Path

TOP = Path(__file__).resolve().parent.parent.parent
sys.path.insert(0, str(TOP / "scripts"))

import figures  # noqa: E402 - lies beside the scripts

SOURCES = "Utilities/IMPORT/"

LINES, BRANCHES = 99, 95  # per cent

# "   12|      0|    return false;": number of the line, how often it ran, the line
SHOWN_LINE = re.compile(r"^ *(\d+)\| *0\|(.*)$")


def llvm_cov(command, build, *options):
    programs = [path for folder in ("bin", "lib") for path in sorted((build / folder).iterdir())
                if path.is_file() and path.read_bytes()[:4] == b"\x7fELF"]
    objects = [word for path in programs for word in ("-object", str(path))][1:]
    return subprocess.run(["llvm-cov-14", command, *objects, f"-instr-profile={build / 'profile'}", *options],
                          stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True, check=True).stdout


def summaries(build):
    """Lines and branches of every file of the library, with how many of them ran."""
    files = json.loads(llvm_cov("export", build, "-summary-only"))["data"][0]["files"]
    return {file["filename"].split(SOURCES)[1]: file["summary"] for file in files if SOURCES in file["filename"]}


def uncovered_lines(build):
    """The lines that did not run, as (file, number, text)."""
    name, lines = "", []
    for line in llvm_cov("show", build, "-show-instantiations=false").splitlines():
        if line.endswith(":") and line.startswith("/"):
            name = line[:-1]
        elif SOURCES in name and (shown := SHOWN_LINE.match(line)):
            lines.append((name.split(SOURCES)[1], int(shown.group(1)), shown.group(2).strip()))
    return sorted(set(lines))  # headers are shown more than once


def with_reasons(lines):
    """The lines by the reason that covers them; None for those without one."""
    reasons = json.loads((TOP / "tests/coverage/reasons.json").read_text(encoding="utf-8"))
    found = {}
    for file, number, text in lines:
        reason = next((entry["reason"] for entry in reasons
                       if entry["file"] == file and ("lines" not in entry or text in entry["lines"])), None)
        found.setdefault((file, reason), []).append((number, text))
    return found


def ranges(numbers):
    """12, 13, 14 and 20 as "12-14, 20"."""
    parts = []
    for number in numbers:
        if parts and parts[-1][1] == number - 1:
            parts[-1][1] = number
        else:
            parts.append([number, number])
    return ", ".join(str(first) if first == last else f"{first}-{last}" for first, last in parts)


def totals(files, compiled_only):
    def total(kind, what):
        return sum(summary[kind][what] for summary in files.values())

    lines, ran = total("lines", "count"), total("lines", "covered")
    branches, taken = total("branches", "count"), total("branches", "covered")
    return [("lines that can run", lines - compiled_only, ran, LINES), ("branches", branches, taken, BRANCHES)]


def tables(rows, reasons):
    yield "| Of the library | In all | Run by the tests | Per cent | At least |\n|---|---:|---:|---:|---:|"
    for name, count, ran, least in rows:
        yield f"| {name} | {count} | {ran} | {100 * ran / count:.2f} | {least} |"
    yield "\n| File | Lines that no test runs | Why |\n|---|---|---|"
    for (file, reason), lines in sorted(reasons.items(), key=str):
        yield f"| `{file}` | {ranges([number for number, _ in lines])} | {reason or '**no reason**'} |"


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("build", type=Path)
    parser.add_argument("--record", action="store_true")
    options = parser.parse_args()
    reasons = with_reasons(uncovered_lines(options.build))
    # What is evaluated when the library is compiled cannot be run by a test; it is listed, and not counted.
    compiled_only = sum(len(lines) for (_, reason), lines in reasons.items()
                        if reason and reason.startswith("evaluated when compiled"))
    rows = totals(summaries(options.build), compiled_only)
    text = "\n".join(tables(rows, reasons)) + "\n"
    print(text)
    if options.record:
        figures.record("reliability.md", "coverage", text)
    for (file, reason), lines in reasons.items():
        if reason is None:
            for number, line in lines:
                print(f"{file}:{number}: no test runs it, and no reason is given: {line}", file=sys.stderr)
    enough = all(100 * ran >= least * count for _, count, ran, least in rows)
    sys.exit(0 if enough and all(reason for _, reason in reasons) else 1)


main()
