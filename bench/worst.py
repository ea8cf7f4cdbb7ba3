#!/usr/bin/env python3
"""The cost of hostile texts, class by class: per byte, as they grow, and in memory.

    worst.py DIRECTORY [--quick] [--time] [CLASS...]

    --quick   texts up to 256 KiB instead of 4 MiB, too short a range to judge a slope by
    --time    time as a multiple of a plain scan of the same text instead of instructions; never fails

A handler with everything switched on reads and answers every text and frees the sections, once without and once
with a trace sink. Callgrind counts the instructions. Budgets: the slope of the cost over the length, both as
logarithms, from 64 KiB up, at most 1.05, or 1.12 where many payload types are found by text; the cost per byte of
every class and size at most 12 times that of the median captured text of tests/corpus, or 16 times with a trace sink.
A negotiator answers each text as well, and the judge compares it with itself: the slopes of these costs are at most
1.12. Status 1 when a budget is exceeded.
"""
import concurrent.futures
import math
import pathlib
import re
import statistics
import subprocess
import sys

import callgrind

ROOT = pathlib.Path(__file__).resolve().parent.parent
SIZES = [1 << 10, 8 << 10, 64 << 10, 512 << 10, 4 << 20]
QUICK_SIZES = [1 << 10, 8 << 10, 64 << 10, 256 << 10]
SLOPE_FROM = 64 << 10
MAX_SLOPE = 1.05
# A section's payload types that are no plain numbers are sorted and found by binary search, which costs n log n: a
# slope above 1 that depends on how long the texts agree. A hash table would be linear for most texts, and quadratic
# for texts that a far end chooses for it.
MAX_SLOPE_SORTED = 1.12
SORTED = re.compile(r"rtpmap|fmtp|alike|formats of long|H264 formats")
# The dump of a format, two bytes of text, has about fifty; nearly all of the cost of such a trace is its own text.
MAX_RATIO = {"off": 12, "on": 16}
MODES = ["off", "on"]
# The layer and the judge look words up in sorted sets, and their texts need not be as long to show a slope.
LAYER_MODES = ["layer", "judge"]
LAYER_SIZES = [64 << 10, 512 << 10]


def measure(directory, timed, first, mode, rest):
    """(bytes, cost) of each text: instructions, or multiples of a plain scan's time times the bytes."""
    program = directory / "bench_worst"
    if timed:
        command = [program, first, mode, *map(str, rest)]
        printed = subprocess.run(command, capture_output=True, text=True, check=True).stdout
    else:
        printed, counted = callgrind.run(program, first, mode, *rest)
    costs = []
    for label, length, ratio in (line.split("\t") for line in printed.splitlines()):
        costs.append((int(length), float(ratio) * int(length) if timed else counted[label]))
    return costs


def slope(points):
    """The slope of the least-squares line through the logarithms."""
    logs = [(math.log(length), math.log(cost)) for length, cost in points if length >= SLOPE_FROM * 0.9]
    x_mean = statistics.mean(x for x, _ in logs)
    y_mean = statistics.mean(y for _, y in logs)
    return sum((x - x_mean) * (y - y_mean) for x, y in logs) / sum((x - x_mean) ** 2 for x, _ in logs)


def memory(directory, sizes):
    """(class, mode) -> list of (bytes, bytes allocated, peak)."""
    command = [directory / "bench_worst_memory", *map(str, sizes)]
    output = subprocess.run(command, capture_output=True, text=True, check=True).stdout
    table = {}
    for name, mode, *numbers in (line.split("\t") for line in output.splitlines()):
        table.setdefault((name, mode), []).append(tuple(map(int, numbers)))
    return table


class Result:
    """One class in one mode."""

    def __init__(self, points, held, median):
        self.highest = max(cost / length for length, cost in points)
        self.ratio = self.highest / median
        self.slope = slope(points)
        self.memory_slope = slope([(length, allocated) for length, allocated, _ in held])
        length, allocated, peak = held[-1]
        self.allocated = allocated / length
        self.peak = peak / length

    def problems(self, name, mode, quick):
        limit = MAX_SLOPE_SORTED if SORTED.search(name) else MAX_SLOPE
        if self.slope > limit and not quick:
            yield f"{name}, trace {mode}: slope {self.slope:.3f}"
        if self.memory_slope > MAX_SLOPE and not quick:
            yield f"{name}, trace {mode}: slope of the memory {self.memory_slope:.3f}"
        if self.ratio > MAX_RATIO[mode]:
            yield f"{name}, trace {mode}: {self.ratio:.1f} times the median"


def show(names, results, median, unit):
    """Prints two tables: every class, and the extremes."""
    print(f"| {unit}, at most | trace off | × median | slope | allocated | peak "
          "| trace on | × median | slope | allocated | peak |")
    print("|---|" + "--:|" * 10)
    for name in names:
        cells = [f"{r.highest:.1f} | {r.ratio:.1f} | {r.slope:.3f} | {r.allocated:.1f} | {r.peak:.1f}"
                 for r in (results[name, mode] for mode in MODES)]
        print(f"| {name} | {' | '.join(cells)} |")
    print("\n| of all classes | trace off | trace on |\n|---|---|---|")
    rows = {
        f"captured texts, median, {unit}": [f"{median[mode]:.1f}" for mode in MODES],
        "the most costly, × median": [worst(names, results, mode, "ratio", ".1f") for mode in MODES],
        "the steepest": [worst(names, results, mode, "slope", ".3f") for mode in MODES],
        "the steepest in memory": [worst(names, results, mode, "memory_slope", ".3f") for mode in MODES],
        "the most bytes allocated per byte": [worst(names, results, mode, "allocated", ".1f") for mode in MODES],
        "the highest peak per byte": [worst(names, results, mode, "peak", ".1f") for mode in MODES],
    }
    for title, cells in rows.items():
        print(f"| {title} | {' | '.join(cells)} |")


def worst(names, results, mode, what, form):
    name = max(names, key=lambda each: getattr(results[each, mode], what))
    return f"{getattr(results[name, mode], what):{form}}: {name}"


def layer_problems(directory, names):
    """Prints the cost and the slope of the layer and the judge; yields the classes whose slope is too steep."""
    with concurrent.futures.ThreadPoolExecutor(callgrind.JOBS) as pool:
        runs = {(name, mode): pool.submit(measure, directory, False, name, mode, LAYER_SIZES)
                for name in names for mode in LAYER_MODES}
    print("\n| instructions per byte, at most | layer | slope | judge | slope |")
    print("|---|--:|--:|--:|--:|")
    for name in names:
        cells = []
        for mode in LAYER_MODES:
            points = runs[name, mode].result()
            steepness = slope(points)
            cells.append(f"{max(cost / length for length, cost in points):.1f} | {steepness:.3f}")
            if steepness > MAX_SLOPE_SORTED:
                yield f"{name}, {mode}: slope {steepness:.3f}"
        print(f"| {name} | {' | '.join(cells)} |")


def main():
    arguments = sys.argv[1:]
    timed = "--time" in arguments
    sizes = QUICK_SIZES if "--quick" in arguments else SIZES
    directory, *wanted = [argument for argument in arguments if not argument.startswith("--")]
    directory = pathlib.Path(directory)
    listed = subprocess.run([directory / "bench_worst"], capture_output=True, text=True, check=True).stdout
    names = wanted or listed.splitlines()

    captures = sorted(map(str, (ROOT / "tests" / "corpus" / "captures").glob("*.sdp")))
    median = {}
    for mode in MODES:
        costs = measure(directory, timed, "--files", mode, captures)
        median[mode] = statistics.median(cost / length for length, cost in costs)
    held = memory(directory, sizes)
    jobs = 1 if timed else callgrind.JOBS
    with concurrent.futures.ThreadPoolExecutor(jobs) as pool:
        runs = [(name, mode, pool.submit(measure, directory, timed, name, mode, sizes))
                for name in names for mode in MODES]

    results = {}
    for name, mode, run in runs:
        points = run.result()
        results[name, mode] = Result(points, held[name, mode], median[mode])
        print(f"{name}, trace {mode}: {results[name, mode].ratio:.1f} times the median", file=sys.stderr, flush=True)
    show(names, results, median, "plain scans" if timed else "instructions per byte")
    problems = [problem for key, result in results.items() for problem in result.problems(*key, sizes != SIZES)]
    if not timed:
        problems += layer_problems(directory, names)
    for problem in problems:
        print(f"over its budget: {problem}")
    return 1 if problems and not timed else 0


if __name__ == "__main__":
    sys.exit(main())
