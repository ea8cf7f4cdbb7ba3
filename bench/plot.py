#!/usr/bin/env python3
"""Draws the tables of scripts/bench: how many times longer the peers take, and what one more part of a text costs.

    plot.py LOG_OF_TIMES LOG_OF_GROWTH DIRECTORY

Writes peers.svg and growth.svg into the directory.
"""
import pathlib
import re
import sys

import matplotlib

matplotlib.use("svg")
matplotlib.rcParams.update({"svg.hashsalt": "commonmedia", "font.size": 9, "axes.spines.top": False,
                            "axes.spines.right": False})
from matplotlib import pyplot  # noqa: E402, after the choice of the backend

PEERS = ["gst-sdp", "sofia-sip", "osip2", "libre"]


def table(log, first):
    """The last table of the log whose first column has that title: titles and rows."""
    text = pathlib.Path(log).read_text(encoding="utf-8")
    found = re.findall(rf"^\| {re.escape(first)} \|.*\n\|[-|: ]+\|\n(?:\|.*\n)+", text, re.MULTILINE)
    rows = [[cell.strip() for cell in row.strip("|").split("|")] for row in found[-1].splitlines()]
    return rows[0], rows[2:]


def number(cell):
    """1372.0 of "1,372 ×"; None of an empty cell."""
    digits = re.match(r"[\d,.]+", cell)
    return float(digits.group().replace(",", "")) if digits else None


def save(figure, path):
    figure.tight_layout()
    figure.savefig(path, metadata={"Date": None})
    print(f"wrote {path}")


def draw_peers(log, path):
    titles, rows = table(log, "operation")
    rows = [row for row in rows if number(row[titles.index(PEERS[0])]) is not None]
    figure, axes = pyplot.subplots(figsize=(8, 3.6))
    width = 0.8 / len(PEERS)
    for place, peer in enumerate(PEERS):
        values = [number(row[titles.index(peer)]) for row in rows]
        axes.bar([at + (place - 1.5) * width for at in range(len(rows))], values, width, label=peer)
    axes.axhline(1, color="black", linewidth=0.8)
    axes.set_yscale("log")
    axes.set_xticks(range(len(rows)), [row[0] for row in rows])
    axes.set_ylabel("time, multiples of commonmedia's")
    axes.legend(frameon=False, ncols=len(PEERS))
    save(figure, path)


def draw_growth(log, path):
    titles, rows = table(log, "instructions for one more")
    figure, axes = pyplot.subplots(figsize=(8, 3.6))
    counts = [number(title.removeprefix("up to ")) for title in titles[1:]]
    for row in rows:
        axes.plot(counts, [number(cell) for cell in row[1:]], marker="o", label=row[0])
    axes.set_xscale("log")
    axes.set_yscale("log")
    axes.set_xlabel("of them in the text, up to")
    axes.set_ylabel("instructions for one more")
    axes.legend(frameon=False, loc="center left", bbox_to_anchor=(1, 0.5))
    save(figure, path)


def main():
    times, growth, directory = sys.argv[1:]
    directory = pathlib.Path(directory)
    directory.mkdir(parents=True, exist_ok=True)
    draw_peers(times, directory / "peers.svg")
    draw_growth(growth, directory / "growth.svg")
    return 0


if __name__ == "__main__":
    sys.exit(main())
