#!/usr/bin/env python3
"""Compares what explain, whynot and diff write with the documents of tests/explain/outputs.

    explain_outputs.py CMSDP [--write]     --write: writes the documents anew, to be read before they are kept

A document is a list of commands, each in a line that begins with "$ ", with everything that it writes below it:
standard output, then each line of standard error after "! ", and "? N" for an exit status other than 0. The
commands are run in tests/explain/cases.
"""

import pathlib
import shlex
import subprocess
import sys

EXPLAIN = pathlib.Path(__file__).resolve().parent.parent / "explain"


def run(command, line):
    """Everything that a command writes, as a document has it."""
    done = subprocess.run(
        [command, *shlex.split(line)[1:]], cwd=EXPLAIN / "cases", capture_output=True, check=False
    )
    text = done.stdout.decode("ascii")
    text += "".join(f"! {error}\n" for error in done.stderr.decode("ascii").splitlines())
    return text + (f"? {done.returncode}\n" if done.returncode else "")


def main(command, is_written):
    documents = sorted((EXPLAIN / "outputs").glob("*.txt"))
    commands = failures = 0
    for document in documents:
        kept = document.read_text(encoding="ascii")
        lines = [line[2:] for line in kept.splitlines() if line.startswith("$ ")]
        commands += len(lines)
        made = "\n".join(f"$ {line}\n{run(command, line)}" for line in lines)
        if is_written:
            document.write_text(made, encoding="ascii")
        elif made != kept:
            failures += 1
            print(f"{document.name} differs; expected:\n{kept}\nwritten:\n{made}")
    print(f"{commands} commands in {len(documents)} documents, {failures} differ")
    return 1 if failures or not commands else 0


if __name__ == "__main__":
    if len(sys.argv) < 2:
        sys.exit(__doc__)
    sys.exit(main(pathlib.Path(sys.argv[1]).resolve(), "--write" in sys.argv[2:]))
