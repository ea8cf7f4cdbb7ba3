#!/usr/bin/env python3
"""timeouts.py CTEST BUILD SECONDS: every test of the build directory ends within so many seconds at the latest."""
import json
import subprocess
import sys


def limit(test):
    """The test's limit in seconds; None where ctest would wait for ever."""
    return next((each["value"] for each in test.get("properties", []) if each["name"] == "TIMEOUT"), None)


def problems(tests, most):
    for test in tests:
        # A program that was not built stands for its tests, and fails at once.
        if test["name"].endswith("_NOT_BUILT"):
            continue
        if limit(test) is None:
            yield f"{test['name']} has no time limit"
        elif limit(test) > most:
            yield f"{test['name']} may take {limit(test):g} seconds"


def main(ctest, build, most):
    shown = subprocess.run([ctest, "--test-dir", build, "--show-only=json-v1"], stdout=subprocess.PIPE, check=True)
    tests = json.loads(shown.stdout)["tests"]
    # The check sees a test without a limit and one with a longer limit.
    long = {"name": "long", "properties": [{"name": "TIMEOUT", "value": most + 1}]}
    assert list(problems([{"name": "none"}, long], most)) == ["none has no time limit", f"long may take {most + 1:g} seconds"]
    found = list(problems(tests, most))
    print("\n".join(found) or f"{len(tests)} tests, none without a limit")
    return 1 if found or not tests else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1], sys.argv[2], float(sys.argv[3])))
