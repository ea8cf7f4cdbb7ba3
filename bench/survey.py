#!/usr/bin/env python3
"""survey.py CMSDP [TIMES]: runs `cmsdp survey` over the corpus TIMES times over (100 unless given), as lines of JSON,
and prints descriptions per second of processor time, which is the rate of one core, the instructions that callgrind
counts for one more description, which do not depend on the load of the machine, and the memory for one time and for
all times. It fails when the memory grows with the number of descriptions."""
import json
import pathlib
import re
import resource
import subprocess
import sys
import tempfile

CORPUS = pathlib.Path(__file__).resolve().parent.parent / "tests" / "corpus" / "captures"


def measured(command, lines, times):
    """Processor seconds and the largest memory in KiB of one survey."""
    with tempfile.TemporaryFile() as text:
        for _ in range(times):
            text.writelines(lines)
        text.seek(0)
        before = resource.getrusage(resource.RUSAGE_CHILDREN)
        run = subprocess.run(["/usr/bin/env", "bash", "-c", 'exec "$0" survey - >/dev/null', command], stdin=text,
                             check=True)
        after = resource.getrusage(resource.RUSAGE_CHILDREN)
    assert run.returncode == 0
    return after.ru_utime + after.ru_stime - before.ru_utime - before.ru_stime, after.ru_maxrss


def instructions(command, lines, times):
    """Instructions of one survey, its start and end included."""
    with tempfile.TemporaryDirectory() as scratch:
        counts = pathlib.Path(scratch) / "out"
        subprocess.run(["valgrind", "--tool=callgrind", f"--callgrind-out-file={counts}", command, "survey", "-"],
                       input=b"".join(lines) * times, capture_output=True, check=True)
        return int(re.search(r"^totals: (\d+)", counts.read_text(encoding="utf-8"), re.MULTILINE).group(1))


times = int(sys.argv[2]) if len(sys.argv) > 2 else 100
texts = [path.read_bytes().decode("latin-1") for path in sorted(CORPUS.glob("*.sdp"))]
lines = [json.dumps({"sdp": text}).encode() + b"\n" for text in texts]
_, little = measured(sys.argv[1], lines, 1)
seconds, much = measured(sys.argv[1], lines, times)
count = len(lines) * times
each = (instructions(sys.argv[1], lines, 3) - instructions(sys.argv[1], lines, 1)) / (2 * len(lines))
print("| survey | |\n|---|---|")
print(f"| descriptions | {count} |")
print(f"| descriptions per second and core | {count / seconds:.0f} |")
print(f"| instructions for each description | {each:,.0f} |")
print(f"| memory, {len(lines)} descriptions | {little} KiB |")
print(f"| memory, {count} descriptions | {much} KiB |")
if much > little + 16 * 1024:
    sys.exit("survey: memory grows with the number of descriptions")
