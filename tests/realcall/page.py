#!/usr/bin/env python3
"""Prints the table of a run, and below it the versions of the programs.

    page.py TABLE
"""
import pathlib
import subprocess
import sys

PACKAGES = ["baresip-core", "linphone-cli", "ffmpeg", "libre0", "libsofia-sip-ua0", "libosip2-15", "tshark"]


def version_of(package):
    command = ["dpkg-query", "-W", "-f", "${Version}", package]
    return subprocess.run(command, capture_output=True, text=True, check=True).stdout


def main():
    versions = "".join(f"| `{package}` | {version_of(package)} |\n" for package in PACKAGES)
    print(f"\n{pathlib.Path(sys.argv[1]).read_text()}\n| Debian package | version |\n| --- | --- |\n{versions}")


if __name__ == "__main__":
    main()
