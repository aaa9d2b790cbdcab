#!/usr/bin/env python3
"""Turns Google Benchmark's JSON into a table: each operation's best time by library, and how kord compares.

Usage: report.py RESULTS.json... > REPORT.md
Rows are named GROUP/OPERATION/LIBRARY[/SIZE]. The machine is shared, so the best of the repetitions counts.
"""

import json
import sys


def best_times(results):
    """(group, operation, size) -> {library: nanoseconds}."""
    rows = {}
    for run in results:
        if run.get("run_type") == "aggregate":
            continue
        if run.get("error_occurred"):
            sys.exit(f"{run['name']}: {run['error_message']}")
        group, operation, library, *size = run["name"].split("/")
        times = rows.setdefault((group, operation, "/".join(size)), {})
        times[library] = min(times.get(library, run["real_time"]), run["real_time"])
    return rows


def main():
    runs = []
    for name in sys.argv[1:]:
        with open(name, encoding="utf-8") as file:
            runs += json.load(file)["benchmarks"]
    rows = best_times(runs)
    print("Nanoseconds, the best of all repetitions; a ratio above 1 means that kord takes less time.\n")
    print("| Width | Operation | Size | kord | Others | Best other / kord |")
    print("|---|---|---|---:|---|---:|")
    for (group, operation, size), times in sorted(rows.items(), key=lambda row: (row[0][:2], int(row[0][2] or 0))):
        own = times.pop("kord", None)
        if own is None:
            continue
        others = ", ".join(f"{name} {time:.1f}" for name, time in sorted(times.items(), key=lambda item: item[1]))
        rivals = [time for name, time in times.items() if name != "blocks alone"]
        ratio = f"{min(rivals) / own:.2f}" if rivals else ""
        print(f"| {group} | {operation} | {size} | {own:.1f} | {others} | {ratio} |")


if __name__ == "__main__":
    main()
