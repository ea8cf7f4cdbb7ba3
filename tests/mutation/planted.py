#!/usr/bin/env python3
"""Plants the mistakes of planted.txt in the library, one at a time, and requires that the named tests detect them.

    planted.py --build DIR --place DIR [--only WORD] [--all-suites]

A paragraph of planted.txt is one mistake:

    = SDPSecrecy.h: the length of a wipe is cut to sixteen bits
    - OPENSSL_cleanse(&text[0], text.size());
    + OPENSSL_cleanse(&text[0], text.size() & 0xffff);
    > unit.SDPWipe.TextsOfEveryLengthAreZeroed

The lines after "-" are in the file exactly once, whatever their indentation; those after "+" replace them. Each test after
">" must fail alone. --only takes the paragraphs with WORD in their heading; --all-suites also says which suites
detect the mistake without being named.
"""
import argparse
import pathlib
import sys
from dataclasses import dataclass, field

sys.dont_write_bytecode = True
import kit  # noqa: E402


@dataclass
class Planted:
    line: int  # of planted.txt
    file: str
    title: str
    before: list = field(default_factory=list)
    after: list = field(default_factory=list)
    tests: list = field(default_factory=list)

    def apply(self, text):
        lines = text.splitlines()
        stripped = [line.strip() for line in lines]
        size = len(self.before)
        places = [at for at in range(len(lines)) if stripped[at : at + size] == self.before]
        if len(places) != 1:
            raise kit.Broken(f"planted.txt:{self.line}: {self.title}: {len(places)} places in {self.file}")
        lines[places[0] : places[0] + size] = self.after
        return "\n".join(lines) + "\n"


def paragraphs(text):
    planted = []
    for number, line in enumerate(text.splitlines(), 1):
        mark, _, rest = line.partition(" ")
        if mark == "=":
            name, _, title = rest.partition(": ")
            planted.append(Planted(number, f"commonmedia/src/{name}", title))
        elif mark in ("-", "+", ">") and planted:
            {"-": planted[-1].before, "+": planted[-1].after, ">": planted[-1].tests}[mark].append(rest.strip())
        elif line and mark != "#":
            raise kit.Broken(f"planted.txt:{number}: neither a mistake nor a remark: {line}")
    for each in planted:
        if not each.before or not each.tests:
            raise kit.Broken(f"planted.txt:{each.line}: {each.title}: what it changes or who detects it is missing")
    return planted


class Ground(kit.Bench):
    """A bench that runs the tests named for a mistake instead of all of them until one fails."""

    def plant(self, planted, everywhere):
        self.everywhere = everywhere
        return self.try_out(planted, (self.plan.root / planted.file).read_text())

    def _try_out(self, planted, original, outputs):
        header = original if planted.file.endswith(".h") else None
        for output in outputs:
            if not self.compile(self.plan.library, output, self.flags):
                return ["it does not compile"]
        self.link_library()
        missed = []
        for test in planted.tests:
            suite, _, name = test.partition(".")
            program = self.program(suite, header) if suite in kit.ORDER else None
            if program is None:
                missed.append(f"{test}: no such suite, or it does not compile")
            elif not self.run(suite, program, name):
                missed.append(f"{test} passes")
        if self.everywhere:
            found = [self.run(name, self.program(name, header)) for name in kit.ORDER]
            print("      " + "; ".join(each for each in found if each), flush=True)
        return missed


def main():
    parser = argparse.ArgumentParser(description="Requires that the named tests detect the planted mistakes.")
    parser.add_argument("--root", type=pathlib.Path, default=pathlib.Path(__file__).resolve().parents[2])
    parser.add_argument("--build", type=pathlib.Path, required=True, help="build directory of the tests")
    parser.add_argument("--place", type=pathlib.Path, required=True, help="directory for changed copies")
    parser.add_argument("--only", default="", help="mistakes with this word in their heading")
    parser.add_argument("--all-suites", action="store_true", help="also say which suites detect it")
    options = parser.parse_args()
    place = options.place.resolve()
    place.mkdir(parents=True, exist_ok=True)
    failed = 0
    try:
        all_planted = paragraphs((options.root / "tests" / "mutation" / "planted.txt").read_text())
        chosen = [each for each in all_planted if options.only in f"{each.file}: {each.title}"]
        ground = Ground(kit.Plan(options.root.resolve(), options.build.resolve()), place / "planted")
        for name in sorted({test.partition(".")[0] for each in chosen for test in each.tests}):
            tests = [t.partition(".")[2] for each in chosen for t in each.tests if t.startswith(name + ".")]
            failure = ground.run(name, ground.programs[name], ":".join(tests))
            if failure:
                raise kit.Broken(f"without any change: {failure}")
        for planted in chosen:
            missed = ground.plant(planted, options.all_suites)
            failed += bool(missed)
            print(f"   {'MISSED' if missed else 'found'}: {planted.file}: {planted.title}", flush=True)
            print("".join(f"      {each}\n" for each in missed), end="", flush=True)
    except kit.Broken as broken:
        sys.exit(f"cannot begin: {broken}")
    print(f"\n{len(chosen)} mistakes planted, {len(chosen) - failed} found by the tests named for them")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
