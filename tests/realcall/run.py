#!/usr/bin/env python3
"""Runs the scenarios of scenarios.py and prints what each of them proved.

    run.py [--only WORD] [--folder DIR] [--jobs N] [--markdown FILE]
    run.py --one NUMBER --folder DIR      one scenario, in this network; used by the above

Each scenario runs in a network and process namespace of its own, so that no packet leaves the machine, ports
never collide, and nothing outlives its time. EXAMPLE_CALL and EXAMPLE_CALL_ASAN name the agent's programs.
The folder of a scenario that failed is kept and named: texts, logs and the capture of the call are in it.
"""
import argparse
import concurrent.futures
import json
import os
import pathlib
import shutil
import signal
import subprocess
import sys
import time
import traceback

sys.dont_write_bytecode = True

import call as calls  # noqa: E402
import checks  # noqa: E402
import scenarios  # noqa: E402

TIME_LIMIT = 45


def one(number, folder):
    """Runs one scenario and returns its row of the table."""
    scenario = scenarios.ALL[number]
    begin = time.monotonic()
    row = {"number": number, "here": [], "there": [], "wire": [], "problems": [], "is_broken": False}
    try:
        call = calls.Call(folder, scenario)
        call.run()
        for side, check in scenario.checks:
            try:
                found = check(call)
                if found and found not in row[side]:
                    row[side].append(found)
            except checks.Unproven as problem:
                row["problems"].append(str(problem))
        if scenario.is_sanitized and "Sanitizer" in (folder / "agent" / "agent.log").read_text(errors="replace"):
            row["problems"].append("the sanitizer reports")
        if scenario.is_sanitized and call.status != 0:
            row["problems"].append(f"the agent ended with status {call.status}")
    except Exception:  # whatever goes wrong is the scenario's result
        row["problems"].append(traceback.format_exc(limit=-3))
        row["is_broken"] = True
    row["seconds"] = round(time.monotonic() - begin, 1)
    return row


def namespace_command():
    """The words that put a command in namespaces of its own; none where that is forbidden."""
    for options in (["unshare", "-n", "-p", "-f", "--kill-child"], ["unshare", "-r", "-n", "-p", "-f", "--kill-child"]):
        if shutil.which("unshare") and subprocess.run(options + ["true"], capture_output=True, check=False).returncode == 0:
            return options
    return []


def isolated(number, folder, namespace):
    """Runs one scenario as a child that is bounded in time."""
    script = [sys.executable, str(pathlib.Path(__file__).resolve()), "--one", str(number), "--folder", str(folder)]
    command = script
    if namespace:
        command = namespace + ["sh", "-c", 'ip link set lo up && exec "$@"', "sh"] + script
    folder.mkdir(parents=True)
    begin = time.monotonic()
    with (folder / "driver.log").open("w") as log:
        child = subprocess.Popen(command, stdout=subprocess.PIPE, stderr=log, text=True, start_new_session=True)
        try:
            output, _ = child.communicate(timeout=TIME_LIMIT)
            return json.loads(output)
        except subprocess.TimeoutExpired:
            os.killpg(child.pid, signal.SIGKILL)
            child.wait()
            problem = f"not finished after {TIME_LIMIT} s"
        except json.JSONDecodeError:
            problem = "no result; see driver.log"
    return {"number": number, "here": [], "there": [], "wire": [], "problems": [problem], "is_broken": True,
            "seconds": round(time.monotonic() - begin, 1)}


def verdict(row):
    """A control goes well when a proof fails, and not when the call itself went wrong."""
    scenario = scenarios.ALL[row["number"]]
    if scenario.must_fail and not row["is_broken"]:
        return "fails as it must" if row["problems"] else "UNEXPECTED SUCCESS"
    return "proven" if not row["problems"] else "FAILED"


def is_good(row):
    return verdict(row) in ("proven", "fails as it must")


def cells(row):
    """The row in words: far end, scenario, seconds, here, there, wire, verdict."""
    scenario = scenarios.ALL[row["number"]]
    wire = "; ".join(row["wire"])
    here = "; ".join(row["here"])
    if scenario.must_fail and is_good(row):
        here = here or "; ".join(row["problems"])
    return [scenario.far().name, scenario.name, f"{row['seconds']:.1f}", here, "; ".join(row["there"]), wire, verdict(row)]


HEADINGS = ["far end", "scenario", "s", "here", "there", "wire", "verdict"]


def markdown(rows):
    lines = ["| " + " | ".join(line) + " |" for line in [HEADINGS, ["---"] * len(HEADINGS)] + [cells(row) for row in rows]]
    return "\n".join(lines) + "\n"


def report(row):
    far, name, seconds, here, there, wire, word = cells(row)
    print(f"{far:15} {name:42} {seconds:>5} s  {word}", flush=True)
    found = [f"{side} {text}" for side, text in (("here", here), ("there", there), ("wire", wire)) if text]
    print(f"{'':15} {'; '.join(found)}", flush=True)


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--only", default="")
    parser.add_argument("--folder", type=pathlib.Path, required=True)
    parser.add_argument("--jobs", type=int, default=2)
    parser.add_argument("--markdown", type=pathlib.Path)
    parser.add_argument("--one", type=int)
    arguments = parser.parse_args()
    if arguments.one is not None:
        print(json.dumps(one(arguments.one, arguments.folder)))
        return 0
    shutil.rmtree(arguments.folder, ignore_errors=True)
    chosen = [n for n, scenario in enumerate(scenarios.ALL)
              if arguments.only in f"{scenario.far().name} {scenario.name}"]
    namespace = namespace_command()
    jobs = arguments.jobs if namespace else 1
    rows = []
    with concurrent.futures.ThreadPoolExecutor(jobs) as pool:
        futures = [pool.submit(isolated, n, arguments.folder / f"{n:02d}", namespace) for n in chosen]
        for future in concurrent.futures.as_completed(futures):
            rows.append(future.result())
            report(rows[-1])
            folder = arguments.folder / f"{rows[-1]['number']:02d}"
            if not is_good(rows[-1]):
                print(f"{'':15} {'; '.join(rows[-1]['problems'])}\n{'':15} texts, logs and capture: {folder}", flush=True)
    rows.sort(key=lambda row: row["number"])
    if arguments.markdown:
        arguments.markdown.write_text(markdown(rows))
    good = sum(is_good(row) for row in rows)
    print(f"\n{good} of {len(rows)} scenarios as they must be")
    return 0 if good == len(rows) else 1


if __name__ == "__main__":
    sys.exit(main())
