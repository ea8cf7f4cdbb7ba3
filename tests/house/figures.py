#!/usr/bin/env python3
"""The pages of docs/figures, which hold what the checks measured.

    figures.py write LOGS     writes them from the logs of the last runs; a page without a new log stays as it is

LOGS/figures.txt has a line "NAME VALUE" for each figure, LOGS/nightly.txt a line "CHECK|OUTCOME|MINUTES" for each
check, and the logs of the measuring stages hold tables in Markdown.
"""
import pathlib
import re
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]
TABLE = re.compile(r"^\|.*\n\|[-|: ]+\|\n(?:\|.*\n)*", re.MULTILINE)
# page, title, the script that measures, the logs of its stages, what a reader should know
PAGES = [
    ("instructions", "Instructions and allocations", "scripts/count", ["count"],
     "Of the instructions of parse c, about a fifth is the allocator, a fifth finds lines and their rows, and a\n"
     "fifteenth decodes and wipes the keys."),
    ("peers", "Comparison with the peers", "scripts/bench", ["time", "instructions"],
     "A peer's figure is a multiple of this library's.\n\n![The same as bars](peers.svg)"),
    ("growth", "Growth", "scripts/bench", ["growth"], "![Instructions over the length of the text](growth.svg)"),
    ("memory", "Memory", "scripts/bench", ["memory"], ""),
    ("survey", "Survey", "scripts/bench", ["survey"], ""),
    ("hostile", "Hostile texts", "scripts/worst", ["cost-of-every-class"], ""),
    ("fuzz", "Fuzzing", "scripts/fuzz", ["fuzz-table"], ""),
]


def floors(root):
    """Name, relation, limit and meaning of each figure, in order."""
    for line in (root / "scripts" / "floors.txt").read_text().splitlines():
        if line and not line.startswith("#"):
            yield line.split(maxsplit=3)


def rows(path, width):
    """The rows of the tables of a page that have so many cells, without titles."""
    if path.is_file():
        for table in TABLE.findall(path.read_text()):
            for row in table.splitlines()[2:]:
                cells = [cell.strip() for cell in row.strip("|").split("|")]
                if len(cells) == width:
                    yield cells


def recorded(root):
    """The value of each figure that docs/figures/nightly.md holds."""
    found = rows(root / "docs" / "figures" / "nightly.md", 4)
    return {name.strip("`"): value for name, value, _, _ in found if name.startswith("`")}


def write_nightly(root, logs):
    page = root / "docs" / "figures" / "nightly.md"
    values = recorded(root)
    values.update(line.split() for line in (logs / "figures.txt").read_text().splitlines())
    checks = {name: [outcome, minutes, commit] for name, outcome, minutes, commit in rows(page, 4)
              if not name.startswith("`")}
    commit = subprocess.run(["git", "-C", root, "rev-parse", "--short", "HEAD"], capture_output=True, text=True,
                            check=False).stdout.strip()
    for line in (logs / "nightly.txt").read_text().splitlines():
        name, outcome, minutes = line.split("|")
        checks[name] = [outcome, minutes, commit]
    text = ("# The last run of the long checks\n\nWritten by `scripts/nightly`. `scripts/check` says what each check "
            "shows; the limits are those of\n`scripts/floors.txt`.\n\n"
            "| check | outcome | minutes | commit |\n|---|---|--:|---|\n")
    text += "".join(f"| {name} | {' | '.join(cells)} |\n" for name, cells in checks.items())
    text += "\n| figure | value | limit | counted |\n|---|--:|--:|---|\n"
    for name, relation, limit, meaning in floors(root):
        if name in values:
            text += f"| `{name}` | {values[name]} | {relation} {limit} | {meaning} |\n"
    page.write_text(text)


def write_tables(root, logs):
    for name, title, script, sources, words in PAGES:
        found = [logs / f"{source}.log" for source in sources]
        if all(path.is_file() for path in found):
            tables = [table for path in found for table in TABLE.findall(path.read_text())]
            parts = [f"# {title}\n", f"The output of `{script}`, written by `scripts/nightly`.\n"]
            parts += [f"{words}\n"] if words else []
            (root / "docs" / "figures" / f"{name}.md").write_text("\n".join(parts + tables))


def main(arguments):
    if len(arguments) != 2 or arguments[0] != "write":
        print(__doc__, file=sys.stderr)
        return 2
    logs = pathlib.Path(arguments[1])
    (ROOT / "docs" / "figures").mkdir(exist_ok=True)
    write_nightly(ROOT, logs)
    write_tables(ROOT, logs)
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
