#!/usr/bin/env python3
"""What one more section, format, line, candidate or key costs, at 10, 100, 1000 and 10000 of them.

    growth.py DIRECTORY
"""
import pathlib
import sys

import callgrind


def main():
    _, counted = callgrind.run(pathlib.Path(sys.argv[1]) / "bench_growth")
    units = {}
    for label, instructions in counted.items():
        unit, _, count = label.rpartition(", ")
        if unit:
            units.setdefault(unit, {})[int(count)] = instructions
    counts = sorted(next(iter(units.values())))
    print("| instructions for one more | " + " | ".join(f"up to {count}" for count in counts[1:]) + " |")
    print("|---|" + "--:|" * len(counts[1:]))
    for unit, at in sorted(units.items()):
        steps = [(at[many] - at[few]) / (many - few) for few, many in zip(counts, counts[1:])]
        print(f"| {unit} | " + " | ".join(f"{step:,.0f}" for step in steps) + " |")
    return 0


if __name__ == "__main__":
    sys.exit(main())
