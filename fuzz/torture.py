#!/usr/bin/env python3
"""Tries to break the library for as long as it is given, and goes on where it stopped.

usage: torture.py [MINUTES] | --report | --record

All fuzz targets run in turns, those with the least processor time first, two at a time. Between them come the random
trials of the tests, each time with a seed that they have never had. The first thing that breaks ends it, with the
input and the command that repeats it.
"""

import argparse
import json
import signal
import sys
import time
from concurrent.futures import ThreadPoolExecutor
from dataclasses import dataclass

import corpus_coverage
import targets

sys.path.insert(0, str(targets.TOP / "scripts"))

import figures  # noqa: E402 - lies beside the scripts

WORK = targets.TOP / "build" / "torture"
STATE = WORK / "state.json"

TURN = 120  # seconds that a target runs at a time
LEAST_TURN = 10
AT_A_TIME = 2

RELEASE = "build/release"


@dataclass(frozen=True)
class Trial:
    """A random test that never ends: a command for each seed."""
    name: str
    command: object

    def with_seed(self, seed):
        return [str(part) for part in self.command(seed)]


NUMBER_STEP = 101  # after as many runs all bit patterns have had their turn

TRIALS = (
    Trial("records next to a Fortran runtime", lambda seed: (
        sys.executable, "-B", "tests/differential/compare_records.py", "--ours", f"{RELEASE}/bin/read_records",
        "--runtime", f"{RELEASE}/bin/read_records_fortran", "--count", 50000, "--seed", seed)),
    Trial("imports next to the reference importer", lambda seed: (
        sys.executable, "-B", "tests/reference/compare_with_library.py", f"{RELEASE}/bin/import_logs", "--count", 500,
        "--seed", seed)),
    Trial("numbers read, next to the long way", lambda seed: (
        f"{RELEASE}/bin/number_sweep", "random", 100000000, seed)),
    Trial("numbers of the log, next to the standard library", lambda seed: (
        f"{RELEASE}/bin/prove_numbers", NUMBER_STEP, seed * 7 % NUMBER_STEP)),
)
FIRST_SEED = 1000  # those of the tests are smaller


class State:
    """What has been done so far, by all runs."""

    def __init__(self):
        self.targets = {target.name: {"seconds": 0.0, "executions": 0, "edges": 0, "broken": 0}
                        for target in targets.TARGETS}
        self.trials = {trial.name: {"seconds": 0.0, "runs": 0, "broken": 0} for trial in TRIALS}
        if STATE.is_file():
            stored = json.loads(STATE.read_text(encoding="utf-8"))
            for mine, theirs in ((self.targets, stored["targets"]), (self.trials, stored["trials"])):
                mine.update((name, values) for name, values in theirs.items() if name in mine)

    def save(self):
        new = STATE.with_suffix(".new")
        new.write_text(json.dumps({"targets": self.targets, "trials": self.trials}, indent=1), encoding="utf-8")
        new.replace(STATE)

    def add_fuzzing(self, target, outcome):
        entry = self.targets[target.name]
        entry["seconds"] += outcome.seconds
        entry["executions"] += outcome.executions
        entry["edges"] = max(entry["edges"], outcome.edges)
        entry["broken"] += outcome.status != 0
        self.save()

    def add_trial(self, trial, status, seconds):
        entry = self.trials[trial.name]
        entry["seconds"] += seconds
        if status == 0:
            entry["runs"] += 1  # otherwise the next run has the same seed
        else:
            entry["broken"] += 1
        self.save()


class Torture:
    def __init__(self, minutes):
        self.end = time.monotonic() + minutes * 60
        self.state = State()
        self.processes = targets.Processes()
        self.seeds = {}

    def seconds_left(self):
        return 0 if self.processes.is_ended else int(self.end - time.monotonic())

    def run(self):
        """Returns whether nothing broke."""
        signal.signal(signal.SIGINT, lambda *_: self.processes.end())
        signal.signal(signal.SIGTERM, lambda *_: self.processes.end())
        if not self.broken_inputs_are_mended():
            return False
        self.seeds = {target: targets.make_seeds(target, WORK) for target in targets.TARGETS}
        with ThreadPoolExecutor(AT_A_TIME) as executor:
            while self.seconds_left() >= LEAST_TURN:
                if not self.fuzz_in_turn(executor) or not self.try_in_turn():
                    return False
        return True

    def broken_inputs_are_mended(self):
        """What broke a target before is tried first; once it breaks nothing any more, it belongs to the corpus."""
        for target in targets.TARGETS:
            corpus = targets.corpus_of(target, WORK)
            for path in sorted((WORK / "broken").glob(f"{target.name}-*")):
                outcome = targets.run_target(target, self.processes, WORK, path)
                if self.processes.is_ended:
                    return True
                if outcome.status != 0:
                    outcome.broken = str(path)
                    self.show_broken(target, outcome)
                    return False
                path.rename(corpus / path.name)
        return True

    def fuzz_in_turn(self, executor):
        chosen = sorted(targets.TARGETS, key=lambda target: self.state.targets[target.name]["seconds"])[:AT_A_TIME]
        seconds = min(TURN, self.seconds_left())
        running = [(target, executor.submit(targets.fuzz, target, self.processes, WORK, seconds, self.seeds[target]))
                   for target in chosen]
        is_sound = True
        for target, future in running:
            outcome = future.result()
            self.state.add_fuzzing(target, outcome)
            print(f"{time.strftime('%H:%M:%S')}  {target.name:<17} {outcome.seconds:6.0f} s of the processor"
                  f" {outcome.executions:>9} executions {outcome.edges:>6} edges", flush=True)
            if outcome.status != 0:
                self.show_broken(target, outcome)
                is_sound = False
        return is_sound

    def try_in_turn(self):
        trial = min(TRIALS, key=lambda trial: self.state.trials[trial.name]["seconds"])
        if self.seconds_left() < LEAST_TURN:
            return True
        command = trial.with_seed(FIRST_SEED + self.state.trials[trial.name]["runs"])
        log = WORK / "trial.log"
        with log.open("wb") as output:
            status, seconds = self.processes.run(command, output)
        if self.processes.is_ended:
            return True
        self.state.add_trial(trial, status, seconds)
        print(f"{time.strftime('%H:%M:%S')}  {trial.name}: {seconds:.0f} s of the processor", flush=True)
        if status != 0:
            print(f"BROKEN: {trial.name}\nrepeat with: {' '.join(command)}\nthe whole report is in {log}",
                  file=sys.stderr)
        return status == 0

    def show_broken(self, target, outcome):
        print(f"BROKEN: {target.name} by {outcome.broken or 'nothing that was written'}", outcome.complaint,
              f"repeat with: {target.program()} {outcome.broken}",
              f"the whole report is in {targets.log_of(target, WORK)}", sep="\n", file=sys.stderr)


# --- figures -------------------------------------------------------------------------------------------------------

def table(columns, rows):
    """Numbers stand on the right, the first column on the left."""
    texts = [[str(cell) for cell in row] for row in (columns, *rows)]
    widths = [max(map(len, column)) for column in zip(*texts)]
    lines = ["| " + " | ".join(cell.rjust(width) if i else cell.ljust(width)
                               for i, (cell, width) in enumerate(zip(row, widths))) + " |" for row in texts]
    rule = "|" + "|".join("-" * (width + 1) + (":" if i else "-") for i, width in enumerate(widths)) + "|"
    return [lines[0], rule, *lines[1:]]


def target_rows(state):
    for target in targets.TARGETS:
        entry = state.targets[target.name]
        size = sum(1 for _ in targets.corpus_of(target, WORK).iterdir())
        yield target.name, f"{entry['seconds'] / 60:.1f}", entry["executions"], size, entry["edges"], entry["broken"]


def coverage_rows():
    all_lines = all_covered = 0
    for name, lines, covered in corpus_coverage.measure(WORK):
        all_lines += lines
        all_covered += covered
        yield f"`{name}`", lines, covered, f"{100 * covered / lines:.1f}"
    yield "all", all_lines, all_covered, f"{100 * all_covered / all_lines:.1f}"


def figure_lines(state):
    yield from ["", "### Fuzzing", ""]
    yield from table(("Target", "Minutes of the processor", "Executions", "Inputs kept", "Edges covered",
                      "Broken inputs"), list(target_rows(state)))
    yield from ["", "### Random trials", ""]
    yield from table(("Trial", "Minutes of the processor", "Runs", "Broken"),
                     [(name, f"{entry['seconds'] / 60:.1f}", entry["runs"], entry["broken"])
                      for name, entry in state.trials.items()])
    yield from ["", "### Lines of the library that the inputs kept reach", ""]
    yield from table(("File", "Lines", "Reached", "Per cent"), list(coverage_rows()))
    yield ""


def main():
    parser = argparse.ArgumentParser(prog="scripts/torture", description="Tries to break the library.")
    parser.add_argument("minutes", nargs="?", type=int, default=60)
    parser.add_argument("--report", action="store_true", help="print what has been done so far, and what it reached")
    parser.add_argument("--record", action="store_true", help="the same, written into docs/reliability.md")
    options = parser.parse_args()
    WORK.mkdir(parents=True, exist_ok=True)
    if not options.report and not options.record:
        return 0 if Torture(options.minutes).run() else 1
    text = "\n".join(figure_lines(State())) + "\n"
    if options.record:
        figures.record("reliability.md", "the figures", text)
    else:
        print(text)
    return 0


if __name__ == "__main__":
    sys.exit(main())
