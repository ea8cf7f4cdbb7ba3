#!/usr/bin/env python3
"""Instructions and allocations of each operation, beside their budgets.

    count.py DIRECTORY            measures with the programs in DIRECTORY; status 1 when a budget is exceeded
    count.py DIRECTORY --write    measures and writes the figures into budgets.txt as the new budgets
    count.py DIRECTORY --peers    counts the peers and the baselines as well and compares nothing

Instructions are counted by callgrind while the operation runs and at no other time, so neither the machine's
speed nor its load is part of them. A figure may exceed its budget by three per cent, which is what another
release of the compiler or of the C library may cost; allocations may not exceed it at all.
"""
import concurrent.futures
import pathlib
import re
import subprocess
import sys

import callgrind

BUDGETS = pathlib.Path(__file__).with_name("budgets.txt")
TOLERANCE = 1.03
LAYER = 2.5  # a negotiation costs at most so many times the component's own parse and answer
OURS = "commonmedia"
HEAD = """# What each operation may cost. Written by `scripts/count --write`; the targets are set by hand.
#
# operation   instructions   allocations   target: instructions   target: allocations
"""


def instructions(program, what, who):
    """What callgrind collects between the two toggles of the program."""
    return callgrind.run(program, what, who)[1][""]


def measure(directory, peers=""):
    """(what, who) -> (instructions, allocations), in the program's order."""
    command = [directory / f"bench_{peers}allocations"]
    output = subprocess.run(command, capture_output=True, text=True, check=True).stdout
    rows = [line.split("\t") for line in output.splitlines()]
    allocations = {(what, who): int(count) for what, who, count in rows}
    program = directory / f"bench_{peers}count"
    with concurrent.futures.ThreadPoolExecutor(callgrind.JOBS) as pool:
        counted = list(pool.map(lambda key: instructions(program, *key), allocations))
    return {key: (count, allocations[key]) for key, count in zip(allocations, counted)}


def read_budgets():
    """operation -> its four cells; "-" means no target."""
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
    """Prints the table and yields a message for each budget that is exceeded."""
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
        for value, limit, unit in ((count, target, "instructions"), (allocated, allocation_target, "allocations")):
            if limit != "-" and value > int(limit):
                yield f"{name}: {value:,} {unit}, target {int(limit):,}"
    for name in budgets:
        if name not in figures:
            yield f"{name}: has a budget and is not measured"
    yield from compare_layers(figures)


def compare_layers(figures):
    """What the negotiation layer costs beside the component's own parse and answer of the same text."""
    print("\n| negotiation | of parse and answer | at most |\n|---|--:|--:|")
    for letter in "bcd":
        own = figures[f"parse {letter}"][0] + figures[f"answer {letter}"][0]
        ratio = figures[f"negotiate {letter}"][0] / own
        print(f"| {letter} | {ratio:.2f} × | {LAYER} × |")
        if ratio > LAYER:
            yield f"negotiate {letter}: {ratio:.2f} times the component's parse and answer"


def multiple(ratio):
    return f"{ratio:,.0f} ×" if ratio >= 10 else f"{ratio:.2g} ×"


def compare_with_peers(figures):
    """Prints each peer's count as a multiple of this library's count in the same program."""
    others = list(dict.fromkeys(who for _, who in figures if who != OURS))
    print("| instructions | " + " | ".join(others) + " |")
    print("|---|" + "--:|" * len(others))
    for what in [what for what, who in figures if who == OURS]:
        cells = [multiple(figures[what, who][0] / figures[what, OURS][0]) if (what, who) in figures else "" for who in others]
        if any(cells):
            print(f"| {what} | {' | '.join(cells)} |")
    return 0


def main():
    directory = pathlib.Path(sys.argv[1])
    if sys.argv[2:] == ["--peers"]:
        return compare_with_peers(measure(directory, "peer_"))
    budgets = read_budgets() if BUDGETS.is_file() else {}
    figures = {what: figure for (what, _), figure in measure(directory).items()}
    if sys.argv[2:] == ["--write"]:
        write_budgets(figures, budgets)
        budgets = read_budgets()
    problems = list(compare(figures, budgets))
    for problem in problems:
        print(f"\nbudget: {problem}", end="")
    if problems:
        print("\n\nIf the higher cost is intended: scripts/count --write, and commit bench/budgets.txt")
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main())
