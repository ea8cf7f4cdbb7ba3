#!/usr/bin/env python3
"""A public header as Doxygen reads it: its opening comment becomes the description of the file, and copies and
destructors that the compiler writes are left out where nothing is said of them."""
import re
import sys

text = open(sys.argv[1], encoding="utf-8").read()
head, once, rest = text.partition("#pragma once")
lines = [line.removeprefix("//").removeprefix(" ") for line in head.rstrip("\n").split("\n")]
# Doxygen takes four blanks for code, as Markdown does, so the examples stay as they are.
comment = "/** @file\n" + "\n".join(lines).replace("*/", "* /") + "\n */\n"
kept = []
for line in rest.split("\n"):
    is_generated = re.search(r"\) = (default|delete);$", line) is not None
    if not is_generated or kept[-1].lstrip().startswith("///"):
        kept.append(line)
rest = "\n".join(kept)
sys.stdout.write(comment + once + rest)
