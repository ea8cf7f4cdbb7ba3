"""Turns the C++ blocks of a page into tests: one function for each section, its blocks and the hidden test
comments between them in order.

    extract.py docs/calls.md Calls > calls.inc

A block is between ```cpp and ```, a test comment between the lines "<!-- test" and "-->". What a block needs
first is in a comment "<!-- test-setup" anywhere in its section. A section without a test comment is no test.
"""
import re
import sys


def sections(lines):
    """(heading, line number of the heading, [(line number, code line)], whether it has a test comment)"""
    heading, start, setup, code, tested, fence, into = None, 0, [], [], False, None, None
    for number, line in enumerate(lines, 1):
        word = line.strip()
        if fence is None and line.startswith("## "):
            yield heading, start, setup + code, tested
            heading, start, setup, code, tested = line[3:].strip(), number, [], [], False
        elif fence is None and word in ("```cpp", "<!-- test", "<!-- test-setup"):
            fence = "```" if word == "```cpp" else "-->"
            into = setup if word == "<!-- test-setup" else code
            tested |= fence == "-->"
        elif fence is not None and word == fence:
            fence = None
        elif fence is not None:
            into.append((number, line))
    yield heading, start, setup + code, tested


def main():
    path, suite = sys.argv[1:]
    with open(path, encoding="utf-8") as page:
        lines = page.read().splitlines()
    for heading, start, code, tested in sections(lines):
        if heading is None or not tested:
            continue
        name = "".join(word.capitalize() for word in re.findall(r"[A-Za-z0-9]+", heading))
        print(f'#line {start} "{path}"\nTEST_F({suite}, {name}) {{')
        for number, line in code:
            print(f'#line {number} "{path}"\n{line}')
        print("}\n")


main()
