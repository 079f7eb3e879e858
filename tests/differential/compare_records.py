#!/usr/bin/env python3
"""Compares the import's record reading with a Fortran runtime, bit by bit.

    compare_records.py --ours PROGRAM --runtime PROGRAM --deliberate
    compare_records.py --ours PROGRAM --runtime PROGRAM [--count N] [--seed S]

The first form checks the examples of the deliberate differences, the second runs random texts and
prints each difference that no deliberate one explains.
"""

import argparse
import collections
import pathlib
import struct
import subprocess
import sys
import tempfile

from deliberate_differences import DIFFERENCES
from record_cases import STATEMENTS, random_cases
from record_walk import walk

BATCH = 20000
SHOWN = 40


def results_of(programs, cases):
    """The result lines of both programs, case by case."""
    with tempfile.TemporaryDirectory(dir=scratch_folder()) as folder:
        folder = pathlib.Path(folder)
        with open(folder / "cases", "wb") as file:
            for number, text in cases:
                file.write(struct.pack("<ii", number, len(text)) + text)
            file.write(struct.pack("<i", 0))
        running = []
        for index, program in enumerate(programs):
            paths = [str(folder / (name + str(index))) for name in ("results", "scratch")]
            running.append((subprocess.Popen([program, str(folder / "cases"), *paths]), paths[0]))
        lines = []
        for program, path in running:
            if program.wait() != 0:
                sys.exit(f"{program.args[0]} ended with {program.returncode}")
            lines.append(pathlib.Path(path).read_text().splitlines())
    if len(lines[0]) != len(cases) or len(lines[1]) != len(cases):
        sys.exit("a program left cases out")
    return zip(*lines)


def scratch_folder():
    """Memory where there is some: each case is a file of its own."""
    memory = pathlib.Path("/dev/shm")
    return str(memory) if memory.is_dir() else None


def show(case, ours, runtime, note=""):
    number, text = case
    spelled = repr(text) if len(text) <= 400 else f"{text[:200]!r} ... {text[-100:]!r}"
    print(f"{STATEMENTS[number].description} (statement {number}) of {spelled}{note}")
    print(f"    import:  {ours}")
    print(f"    runtime: {runtime}")


def check_examples(programs):
    """The examples come out as they stand in the list, and their class covers them."""
    examples = [(each, example) for each in DIFFERENCES for example in each.examples]
    cases = [(example.statement, example.text) for _, example in examples]
    failures = 0
    for (each, example), case, (ours, runtime) in zip(examples, cases, results_of(programs, cases)):
        if (ours, runtime) != (example.ours, example.runtime):
            show(case, ours, runtime, f": not as listed under '{each.name}'")
            failures += 1
        elif not each.explains(walk(STATEMENTS[case[0]], case[1]), ours, runtime):
            show(case, ours, runtime, f": not covered by '{each.name}'")
            failures += 1
    for each in DIFFERENCES:
        if not each.examples:
            print(f"'{each.name}' has no example")
            failures += 1
    print(f"{len(examples)} examples of {len(DIFFERENCES)} deliberate differences, {failures} failures")
    return failures


def difference_for(case, ours, runtime):
    """The deliberate difference that explains the two results, and the text to try next."""
    path = walk(STATEMENTS[case[0]], case[1])
    if not ours.startswith(path.outcome + " "):
        return None, None
    for each in DIFFERENCES:
        if each.explains(path, ours, runtime):
            return each, each.equivalent(path, case[1]) if each.equivalent else None
    return None, None


def compare_batch(programs, cases, explained):
    """Counts what deliberate differences explain and returns the rest. Where one knows a text that
    means the same to the runtime, the runtime has to give for it what the import gave."""
    left = []
    results = results_of(programs, cases)
    waiting = [(case, case, *both) for case, both in zip(cases, results)]
    accepted = sum(ours.startswith("ok") for _, _, ours, _ in waiting)
    for attempt in range(4):
        again = []
        for case, tried, ours, runtime in waiting:
            if ours == runtime:
                continue
            each, text = difference_for(tried, ours, runtime)
            if each is None:
                note = f", tried as {tried[1][:400]!r}" if tried is not case else ""
                left.append((case, ours, runtime, note))
                continue
            if attempt == 0:
                explained[each.name] += 1
            if text is not None:
                again.append((case, (case[0], text), ours))
        if not again:
            break
        results = results_of(programs, [tried for _, tried, _ in again])
        waiting = [(*item, runtime) for item, (_, runtime) in zip(again, results)]
    return accepted, left


def compare_random(programs, count, seed):
    """Both programs agree on random texts, or a deliberate difference says why not."""
    explained = collections.Counter()
    unexplained = accepted = 0
    source = random_cases(seed, count)
    for start in range(0, count, BATCH):
        cases = [next(source) for _ in range(min(BATCH, count - start))]
        batch_accepted, left = compare_batch(programs, cases, explained)
        accepted += batch_accepted
        for difference in left[: max(SHOWN - unexplained, 0)]:
            show(*difference)
        unexplained += len(left)
    print(f"{count} cases from seed {seed}, {accepted} of them read without a failure")
    for name, times in explained.most_common():
        print(f"{times:8} {name}")
    print(f"{unexplained:8} differences without a reason")
    return unexplained


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n")[0])
    parser.add_argument("--ours", required=True, help="the program that reads with the import's reader")
    parser.add_argument("--runtime", required=True, help="the program that reads with the runtime")
    parser.add_argument("--deliberate", action="store_true", help="check the deliberate differences")
    parser.add_argument("--count", type=int, default=20000)
    parser.add_argument("--seed", type=int, default=1)
    arguments = parser.parse_args()
    programs = (arguments.ours, arguments.runtime)
    if arguments.deliberate:
        return 1 if check_examples(programs) else 0
    return 1 if compare_random(programs, arguments.count, arguments.seed) else 0


if __name__ == "__main__":
    sys.exit(main())
