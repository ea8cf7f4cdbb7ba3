#!/usr/bin/env python3
"""Copies the tables of the last runs into a page of the documentation.

    fill_tables.py LOG... PAGE

The scripts bench, count and worst write their tables to build/logs. A table of the page is replaced when a table in
the logs has the same first two column titles; the text around the tables is not changed.
"""
import pathlib
import re
import sys

TABLE = re.compile(r"^\|.*\n\|[-|: ]+\|\n(?:\|.*\n)*", re.MULTILINE)


def head(table):
    """The first two cells name a table."""
    return tuple(cell.strip() for cell in table.split("|")[1:3])


def main():
    *logs, page = map(pathlib.Path, sys.argv[1:])
    measured = {}
    for log in sorted(logs, key=lambda path: path.stat().st_mtime):
        measured.update((head(table), table) for table in TABLE.findall(log.read_text(encoding="utf-8")))
    text = page.read_text(encoding="utf-8")
    for table in TABLE.findall(text):
        known = head(table) in measured
        print(f"{'replaced' if known else 'kept    '} {' | '.join(head(table))}")
        if known:
            text = text.replace(table, measured[head(table)])
    page.write_text(text, encoding="utf-8")
    return 0


if __name__ == "__main__":
    sys.exit(main())
