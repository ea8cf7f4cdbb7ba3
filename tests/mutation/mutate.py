#!/usr/bin/env python3
"""Makes small mistakes in the library, one at a time, and counts how many the tests detect.

    mutate.py --build DIR --place DIR [--count N] [--seed S] [--file F] [--all] [--again] [--list]

A mutant that does not compile, or whose optimised objects are those of the original, does not count. The
explanations of survivors are read from docs/mutation.md.
"""
import argparse
import collections
import concurrent.futures
import json
import os
import pathlib
import queue
import random
import re
import sys
import time

sys.dont_write_bytecode = True
import kit  # noqa: E402
import mutants  # noqa: E402



def arguments():
    parser = argparse.ArgumentParser(description="Counts the mistakes that the tests notice.")
    parser.add_argument("--root", type=pathlib.Path, default=pathlib.Path(__file__).resolve().parents[2])
    parser.add_argument("--build", type=pathlib.Path, required=True, help="build directory of the tests")
    parser.add_argument("--place", type=pathlib.Path, required=True, help="directory for changed copies and the log")
    parser.add_argument("--count", type=int, default=400, help="mutants that count, over all files (default 400)")
    parser.add_argument("--seed", type=int, default=1, help="which of them (default 1)")
    parser.add_argument("--file", action="append", help="only this source, by its name; may be repeated")
    parser.add_argument("--all", action="store_true", help="every mutant there is")
    parser.add_argument("--again", action="store_true", help="only those that survived the last run")
    parser.add_argument("--list", action="store_true", help="print the mutants and try none")
    parser.add_argument("--jobs", type=int, default=2, help="tried at once (default 2)")
    return parser.parse_args()


def sources(root, wanted):
    paths = sorted((root / "commonmedia" / "src").glob("*.*"))
    if wanted:
        names = {pathlib.Path(name).name for name in wanted}
        paths = [path for path in paths if path.name in names]
        if len(paths) != len(names):
            sys.exit(f"no such source: {' '.join(sorted(names - {path.name for path in paths}))}")
    return {str(path.relative_to(root)): path.read_text() for path in paths}


def key(mutant):
    return [mutant.file, mutant.before, mutant.after]


def explanations(root):
    """The explained survivors of docs/mutation.md: blocks of a file name, the line before and the line after."""
    page = root / "docs" / "mutation.md"
    if not page.is_file():
        return set()
    blocks = re.findall(r"^```diff\n(\S+)\n-(.*)\n\+(.*)\n```$", page.read_text(), re.MULTILINE)
    return {(name, mutants.folded(before), mutants.folded(after)) for name, before, after in blocks}


def shares(found, count):
    """How many mutants to take from each file: `count` in all, in proportion to its mutants, at least one."""
    total = sum(len(each) for each in found.values())
    exact = {name: count * len(each) / total for name, each in found.items()}
    share = {name: min(len(found[name]), max(1, int(exact[name]))) for name in found}
    for name in sorted(found, key=lambda name: int(exact[name]) - exact[name]):
        if sum(share.values()) < count and share[name] < len(found[name]):
            share[name] += 1
    return share


class Campaign:
    def __init__(self, options, texts, plan, benches):
        self.options = options
        self.texts = texts
        self.benches = queue.SimpleQueue()
        for bench in benches:
            self.benches.put(bench)
        self.outcomes = collections.defaultdict(list)  # file -> [(mutant, outcome)]
        self.log = options.place / "mutation.log"
        self.log.write_text("")
        self.done = 0
        self.began = time.monotonic()

    def one(self, mutant):
        bench = self.benches.get()
        try:
            return mutant, bench.try_out(mutant, self.texts[mutant.file])
        finally:
            self.benches.put(bench)

    def batch(self, chosen):
        with concurrent.futures.ThreadPoolExecutor(self.options.jobs) as pool:
            for mutant, outcome in pool.map(self.one, chosen):
                self.outcomes[mutant.file].append((mutant, outcome))
                with self.log.open("a") as log:
                    print(f"{outcome.state:8} {mutant.file}:{mutant.line} {mutant.kind}: {mutant.before}"
                          f"  =>  {mutant.after}  [{outcome.by}]", file=log)
                self.done += 1
                if self.done % 100 == 0:
                    counted = sum(len(self.counted(name)) for name in self.texts)
                    minutes = (time.monotonic() - self.began) / 60
                    print(f"   {self.done} tried, {counted} count, {minutes:.0f} minutes", flush=True)

    def counted(self, name):
        return [pair for pair in self.outcomes[name] if pair[1].state in ("killed", "survived")]

    def run(self, found):
        """Takes each file's share; a mutant that does not count is replaced by the next one of the file."""
        share = {name: len(each) for name, each in found.items()}
        if not (self.options.all or self.options.again):
            share = shares(found, self.options.count)
            for name, each in found.items():
                random.Random(f"{self.options.seed} {name}").shuffle(each)
        taken = dict.fromkeys(found, 0)
        while True:
            chosen = []
            for name, each in found.items():
                if self.options.all or self.options.again:
                    missing = len(each) - taken[name]
                else:
                    missing = share[name] - len(self.counted(name))
                chosen += each[taken[name] : taken[name] + missing]
                taken[name] += min(missing, len(each) - taken[name])
            if not chosen:
                return
            self.batch(chosen)

    def report(self, explained):
        total = collections.Counter()
        print(f"\n{'file':28} {'mutants':>8} {'killed':>8} {'survived':>9} {'explained':>10}")
        left = []
        for name in sorted(self.outcomes):
            states = collections.Counter(outcome.state for _, outcome in self.outcomes[name])
            survivors = [mutant for mutant, outcome in self.outcomes[name] if outcome.state == "survived"]
            known = [each for each in survivors if (pathlib.Path(name).name, each.before, each.after) in explained]
            left += [(each, each in known) for each in survivors]
            counted = states["killed"] + states["survived"]
            print(f"{pathlib.Path(name).name:28} {counted:8} {states['killed']:8} {states['survived']:9} {len(known):10}")
            total.update(states)
            total["explained"] += len(known)
        counted = total["killed"] + total["survived"]
        print(f"{'all':28} {counted:8} {total['killed']:8} {total['survived']:9} {total['explained']:10}")
        print(f"\nnot counted: {total['invalid']} do not compile, {total['same']} compile to the same objects")
        for mutant, known in left:
            print(f"\n{mutant.file}:{mutant.line}: {mutant.kind} survives{', explained' if known else ''}")
            print(f"  - {mutant.before}\n  + {mutant.after}")
        score = 100 * total["killed"] / max(1, counted)
        print(f"\nscore: {score:.1f} %, {total['killed']} of {counted} mutants killed, "
              f"{total['survived']} survived, {total['explained']} of them explained")
        return 0


def main():
    options = arguments()
    os.nice(5)
    root = options.root.resolve()
    place = options.place = options.place.resolve()
    texts = sources(root, options.file)
    found = {name: mutants.find(name, text) for name, text in texts.items()}
    found = {name: each for name, each in found.items() if each}
    if options.list:
        for each in found.values():
            for mutant in each:
                print(f"{mutant.file}:{mutant.line}: {mutant.kind}\n  - {mutant.before}\n  + {mutant.after}")
        print(f"{sum(map(len, found.values()))} mutants in {len(found)} files")
        return 0
    survivors = place / "survivors.json"
    if options.again:
        last = json.loads(survivors.read_text())
        found = {name: [each for each in all_ if key(each) in last] for name, all_ in found.items()}
    try:
        plan = kit.Plan(root, options.build.resolve())
        place.mkdir(parents=True, exist_ok=True)
        benches = [kit.Bench(plan, place / "bench0")]
        benches[0].check()
        benches += [kit.Bench(plan, place / f"bench{n}", benches[0]) for n in range(1, options.jobs)]
    except kit.Broken as broken:
        sys.exit(f"cannot begin: {broken}")
    print("   tests: " + ", ".join(f"{name} {plan.times[name]:.1f} s" for name in kit.ORDER), flush=True)
    campaign = Campaign(options, texts, plan, benches)
    campaign.run(found)
    alive = [key(mutant) for each in campaign.outcomes.values() for mutant, outcome in each if outcome.state == "survived"]
    survivors.write_text(json.dumps(alive, indent=1))
    return campaign.report(explanations(root))


if __name__ == "__main__":
    sys.exit(main())
