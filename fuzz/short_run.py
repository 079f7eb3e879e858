#!/usr/bin/env python3
"""Runs every fuzz target for a while, two at a time, and fails with the path of the input when one breaks.

usage: short_run.py [SECONDS | --replay]
"""

import argparse
import shutil
import sys
from concurrent.futures import ThreadPoolExecutor

import targets

WORK = targets.TOP / "build" / "fuzz" / "work"
PROCESSES = targets.Processes()

# Always the same random numbers and the same start, so that what breaks in a short run has most likely come with a change.
# scripts/torture looks for the rest.
SAME_NUMBERS = "-seed=1"


def run(target, seconds, replay):
    seeds = targets.make_seeds(target, WORK)
    shutil.rmtree(targets.corpus_of(target, WORK))
    if replay:
        return targets.run_target(target, PROCESSES, WORK, "-runs=0", seeds)
    return targets.fuzz(target, PROCESSES, WORK, seconds, seeds, SAME_NUMBERS)


def report(target, outcome):
    print(f"{target.name:<17} {outcome.executions:>10} executions {outcome.edges:>7} edges covered", flush=True)
    if outcome.status != 0:
        print(f"{target.name}: BROKEN by {outcome.broken or 'nothing that was written'}", outcome.complaint,
              f"The whole report is in {targets.log_of(target, WORK)}", sep="\n", file=sys.stderr)


def main():
    parser = argparse.ArgumentParser(prog="scripts/fuzz", description="Fuzzes the import.")
    parser.add_argument("seconds", nargs="?", type=int, default=30, help="for each target")
    parser.add_argument("--replay", action="store_true", help="only run the seeds once")
    options = parser.parse_args()
    WORK.mkdir(parents=True, exist_ok=True)
    failed = False
    with ThreadPoolExecutor(2) as executor:
        outcomes = executor.map(lambda target: run(target, options.seconds, options.replay), targets.TARGETS)
        for target, outcome in zip(targets.TARGETS, outcomes):
            report(target, outcome)
            failed = failed or outcome.status != 0
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
