#!/usr/bin/env python3
"""Puts the table of a run and the versions of the programs into a page, between its two marks.

    page.py TABLE PAGE
"""
import pathlib
import subprocess
import sys

BEGIN = "<!-- table of scripts/realcall: begin -->\n"
END = "<!-- table of scripts/realcall: end -->\n"
PACKAGES = ["baresip-core", "linphone-cli", "ffmpeg", "libre0", "libsofia-sip-ua0", "libosip2-15", "tshark"]


def version_of(package):
    command = ["dpkg-query", "-W", "-f", "${Version}", package]
    return subprocess.run(command, capture_output=True, text=True, check=True).stdout


def main():
    table, page = (pathlib.Path(name) for name in sys.argv[1:3])
    text = page.read_text()
    before, rest = text.split(BEGIN)
    _, after = rest.split(END)
    versions = "".join(f"| `{package}` | {version_of(package)} |\n" for package in PACKAGES)
    body = f"\n{table.read_text()}\n| Debian package | version |\n| --- | --- |\n{versions}\n"
    page.write_text(before + BEGIN + body + END + after)


if __name__ == "__main__":
    main()
