#!/usr/bin/env python3
"""Prints what record_benchmark measured as a table: medians of the processor time, and their ratios.

usage: ratios.py RESULTS.json
"""

import json
import statistics
import sys

PEERS = ("reader", "bare_loop", "fortran")


def medians(results):
    """Per data set and peer: processor time and bytes per second. From the medians if the file has
    them, else from the single repetitions."""
    runs = {}
    for run in sorted(results["benchmarks"], key=lambda each: each["family_index"]):
        if run.get("error_occurred"):
            sys.exit(f"{run['name']}: {run.get('error_message', 'failed')}")
        if run["run_type"] == "aggregate" and run["aggregate_name"] != "median":
            continue
        data_set, peer = run["run_name"].split("/")[:2]
        kinds = runs.setdefault(data_set, {}).setdefault(peer, {"aggregate": [], "iteration": []})
        kinds[run["run_type"]].append(run)
    labels, rows = {}, {}
    for data_set, by_peer in runs.items():
        for peer, kinds in by_peer.items():
            chosen = kinds["aggregate"] or kinds["iteration"]
            labels[data_set] = chosen[0].get("label", "")
            rows.setdefault(data_set, {})[peer] = tuple(
                statistics.median(run[key] for run in chosen)
                for key in ("per_record", "bytes_per_second")
            )
    return rows, labels


def table(results):
    """The lines of the table."""
    rows, labels = medians(results)
    yield f"{'':18}  {'processor time, ns/record':^29}  {'MB/s':>6}  {'reader /':>9}  {'reader /':>9}"
    yield (f"{'':18}  {'reader':>9} {'bare loop':>9} {'Fortran':>9}  {'reader':>6}"
           f"  {'bare loop':>9}  {'Fortran':>9}")
    for data_set, by_peer in rows.items():
        if any(peer not in by_peer for peer in PEERS):
            continue
        reader, bare_loop, fortran = (by_peer[peer][0] * 1e9 for peer in PEERS)
        yield (f"{data_set:18}  {reader:9.1f} {bare_loop:9.1f} {fortran:9.1f}"
               f"  {by_peer['reader'][1] / 1e6:6.0f}  {reader / bare_loop:9.2f}"
               f"  {'1/%.1f' % (fortran / reader):>9}  {labels[data_set]}")


def main():
    if len(sys.argv) != 2:
        sys.exit(__doc__.strip())
    with open(sys.argv[1], encoding="utf-8") as file:
        for line in table(json.load(file)):
            print(line)


if __name__ == "__main__":
    main()
