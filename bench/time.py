#!/usr/bin/env python3
"""Times every operation and every peer in one run, and prints the table.

    time.py DIRECTORY [REPETITIONS]

Each figure is the median of the repetitions. Google Benchmark runs them in random order, so a busy moment of the
machine affects all of them. A ratio says how many times as long the peer or the baseline takes.
"""
import json
import pathlib
import subprocess
import sys

OURS = "commonmedia"


def shown(nanoseconds):
    for unit in ("ns", "µs", "ms"):
        if nanoseconds < 1000 or unit == "ms":
            return f"{nanoseconds:.3g} {unit}"
        nanoseconds /= 1000
    return ""


def multiple(ratio):
    return f"{ratio:,.0f} ×" if ratio >= 10 else f"{ratio:.2g} ×"


def times(directory, repetitions):
    """(what, who) -> nanoseconds."""
    command = [str(directory / "bench_time"), f"--benchmark_repetitions={repetitions}", "--benchmark_format=json"]
    command += ["--benchmark_enable_random_interleaving=true", "--benchmark_report_aggregates_only=true"]
    command += ["--benchmark_min_time=0.1"]
    done = subprocess.run(command, stdout=subprocess.PIPE, text=True, check=True)
    scale = {"ns": 1, "us": 1e3, "ms": 1e6, "s": 1e9}
    table = {}
    for row in json.loads(done.stdout)["benchmarks"]:
        if row["aggregate_name"] == "median":
            what, who = row["run_name"].split("/", 1)
            table[what, who] = row["cpu_time"] * scale[row["time_unit"]]
    return table


def allocations(directory):
    """(what, who) -> allocations."""
    output = subprocess.run([directory / "bench_peer_allocations"], capture_output=True, text=True, check=True).stdout
    rows = [line.split("\t") for line in output.splitlines()]
    return {(what, who): int(count) for what, who, count in rows}


def main():
    directory = pathlib.Path(sys.argv[1])
    taken = times(directory, int(sys.argv[2]) if len(sys.argv) > 2 else 15)
    allocated = allocations(directory)
    operations = [what for what, who in allocated if who == OURS]
    others = list(dict.fromkeys(who for _, who in allocated if who != OURS))

    print("| operation | time | " + " | ".join(others) + " |")
    print("|---|--:|" + "--:|" * len(others))
    for what in operations:
        cells = [multiple(taken[what, who] / taken[what, OURS]) if (what, who) in taken else "" for who in others]
        print(f"| {what} | {shown(taken[what, OURS])} | " + " | ".join(cells) + " |")

    print("\n| allocations | " + " | ".join(others) + " |")
    print("|---|" + "--:|" * len(others))
    for what in operations:
        cells = [f"{allocated[what, who]:,}" if (what, who) in allocated else "" for who in others]
        if any(cells):
            print(f"| {what} | {' | '.join(cells)} |")
    return 0


if __name__ == "__main__":
    sys.exit(main())
