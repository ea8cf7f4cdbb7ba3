#!/usr/bin/env python3
"""Instructions and allocations of each operation, beside their budgets.

    count.py DIRECTORY            measures with the programs in DIRECTORY; status 1 when a budget is exceeded
    count.py DIRECTORY --write    measures and writes the figures into budgets.txt as the new budgets

Instructions are counted by callgrind while the operation runs and at no other time, so neither the machine's
speed nor its load is part of them. A figure may exceed its budget by three per cent, which is what another
release of the compiler or of the C library may cost; allocations may not exceed it at all.
"""
import concurrent.futures
import os
import pathlib
import re
import subprocess
import sys
import tempfile

BUDGETS = pathlib.Path(__file__).with_name("budgets.txt")
TOLERANCE = 1.03
HEAD = """# What each operation may cost. Written by `scripts/count --write`; the targets are set by hand.
#
# operation   instructions   allocations   target: instructions   target: allocations
"""


def instructions(directory, operation):
    """What callgrind collects between the two toggles of the program."""
    with tempfile.TemporaryDirectory() as scratch:
        command = ["valgrind", "--tool=callgrind", "--instr-atstart=no", "--collect-atstart=no"]
        command += [f"--callgrind-out-file={scratch}/out", str(directory / "bench_count"), operation]
        # Binding at the start keeps the dynamic linker's work out of the first call of a function.
        done = subprocess.run(
            command, env={**os.environ, "LD_BIND_NOW": "1"}, capture_output=True, text=True, check=False
        )
        collected = re.search(r"Collected : (\d+)", done.stderr)
        if done.returncode != 0 or not collected:
            sys.exit(f"{' '.join(command)}: status {done.returncode}\n{done.stderr}")
        return int(collected.group(1))


def measure(directory):
    """operation -> (instructions, allocations), in the program's order."""
    output = subprocess.run([directory / "bench_allocations"], capture_output=True, text=True, check=True).stdout
    allocations = {name: int(count) for name, count in (line.split("\t") for line in output.splitlines())}
    with concurrent.futures.ThreadPoolExecutor(int(os.environ.get("JOBS", os.cpu_count()))) as pool:
        counted = pool.map(lambda operation: instructions(directory, operation), allocations)
    return {name: (count, allocations[name]) for name, count in zip(allocations, counted)}


def read_budgets():
    """operation -> its four cells; "-" stands for no target."""
    budgets = {}
    for line in BUDGETS.read_text(encoding="utf-8").splitlines():
        if line and not line.startswith("#"):
            name, *cells = (cell.strip() for cell in re.split(r"\s{2,}", line.strip()))
            budgets[name] = cells
    return budgets


def write_budgets(figures, budgets):
    rows = []
    for name, figure in figures.items():
        targets = budgets.get(name, ["", "", "-", "-"])[2:]
        rows.append(f"{name:<10}  {figure[0]:>13}  {figure[1]:>12}  {targets[0]:>21}  {targets[1]:>20}\n")
    BUDGETS.write_text(HEAD + "".join(rows), encoding="utf-8")


def compare(figures, budgets):
    """Prints the table and yields each budget that does not hold."""
    print("| operation | instructions | budget | target | allocations | budget | target |")
    print("|---|--:|--:|--:|--:|--:|--:|")
    for name, (count, allocated) in figures.items():
        if name not in budgets:
            yield f"{name}: has no budget"
            continue
        budget, allocation_budget, target, allocation_target = budgets[name]
        shown = target if target == "-" else f"{int(target):,}"
        print(f"| {name} | {count:,} | {int(budget):,} | {shown} "
              f"| {allocated:,} | {int(allocation_budget):,} | {allocation_target} |")
        if count > TOLERANCE * int(budget):
            yield f"{name}: {count:,} instructions, {100 * (count / int(budget) - 1):.1f} % over the budget"
        if allocated > int(allocation_budget):
            yield f"{name}: {allocated:,} allocations, budget {allocation_budget}"
    for name in budgets:
        if name not in figures:
            yield f"{name}: has a budget and is not measured"


def main():
    directory = pathlib.Path(sys.argv[1])
    budgets = read_budgets() if BUDGETS.is_file() else {}
    figures = measure(directory)
    if sys.argv[2:] == ["--write"]:
        write_budgets(figures, budgets)
        budgets = read_budgets()
    problems = list(compare(figures, budgets))
    for problem in problems:
        print(f"\nbudget: {problem}", end="")
    if problems:
        print("\n\nWhen the cost is worth what it buys: scripts/count --write, and commit bench/budgets.txt")
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main())
