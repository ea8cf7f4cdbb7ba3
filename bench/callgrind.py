"""Runs a program under callgrind and reads what it counted."""
import os
import pathlib
import re
import subprocess
import sys
import tempfile

JOBS = int(os.environ.get("JOBS", os.cpu_count()))


def run(program, *arguments):
    """Returns what the program prints, and label -> instructions. The last dump has no label and is named ""."""
    with tempfile.TemporaryDirectory() as scratch:
        command = ["valgrind", "--tool=callgrind", "--instr-atstart=no", "--collect-atstart=no"]
        command += [f"--callgrind-out-file={scratch}/out", str(program), *map(str, arguments)]
        # Binding at the start keeps the dynamic linker's work out of the counted calls.
        environment = {**os.environ, "LD_BIND_NOW": "1"}
        done = subprocess.run(command, env=environment, capture_output=True, text=True, check=False)
        if done.returncode != 0:
            sys.exit(f"{' '.join(command)}: status {done.returncode}\n{done.stderr}")
        counts = {}
        for path in pathlib.Path(scratch).iterdir():
            dump = path.read_text(encoding="utf-8")
            label = re.search(r"^desc: Trigger: Client Request: (.*)$", dump, re.MULTILINE)
            total = re.search(r"^totals: (\d+)", dump, re.MULTILINE)
            counts[label.group(1) if label else ""] = int(total.group(1)) if total else 0
        return done.stdout, counts
