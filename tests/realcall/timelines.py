#!/usr/bin/env python3
"""The captures of the calls as timelines: each description on the wire is a step of `cmsdp explain --pcap`, in its
order, from its side, in its words, and each step says what it is and what came of it.

    timelines.py CMSDP FOLDER    the captures are FOLDER/*/wire.pcap
"""
import concurrent.futures
import json
import pathlib
import subprocess
import sys


def on_the_wire(capture):
    """Call-ID -> the messages with a description, repetitions left out, as tshark alone reads them."""
    fields = ["sip.Call-ID", "udp.srcport", "sip.CSeq", "sip.Request-Line", "sip.Status-Line", "sip.msg_body"]
    command = ["tshark", "-r", str(capture), "-Y", "sip && sdp && udp", "-T", "fields", "-E", "separator=\x1f"]
    for field in fields:
        command += ["-e", field]
    read = subprocess.run(command, capture_output=True, text=True, check=True)
    calls = {}
    for line in read.stdout.splitlines():
        call, *message = line.split("\x1f")
        messages = calls.setdefault(call, [])
        if message not in messages:
            messages.append(message)
    return calls


def explained(cmsdp, capture, number):
    command = [cmsdp, "explain", "--json", "--pcap", str(capture), "--call", str(number)]
    read = subprocess.run(command, capture_output=True, text=True, check=False)
    return json.loads(read.stdout) if read.stdout else {"calls": [], "steps": [], "error": read.stderr}


def problems_of(cmsdp, capture):
    calls = on_the_wire(capture)
    listed = explained(cmsdp, capture, 1)["calls"]
    found = [] if calls else ["no description on the wire"]
    seen = {call["call_id"]: call for call in listed}
    for call, messages in calls.items():
        if call not in seen:
            found.append(f"the call {call} is missing")
            continue
        every = explained(cmsdp, capture, seen[call]["number"])["steps"]
        found += [f"step {step['number']} says nothing" for step in every if not step["message"]]
        steps = [step for step in every if step["text"]]
        if len(steps) != len(messages):
            found.append(f"{len(messages)} descriptions, {len(steps)} steps")
        for step, (port, _, request, status, _) in zip(steps, messages):
            if step["sender"].rpartition(":")[2] != port:
                found.append(f"step {step['number']} is from {step['sender']}, not from port {port}")
            first_line = request or status
            words = step["message"].split(" to ")[0]
            if words not in first_line:
                found.append(f"step {step['number']} is {step['message']!r}, on the wire {first_line!r}")
            if step["kind"] not in ("offer", "answer"):
                found.append(f"step {step['number']} is neither offer nor answer: {step['kind']}")
    return found


def main():
    cmsdp, folder = sys.argv[1:]
    captures = sorted(pathlib.Path(folder).glob("*/wire.pcap"))
    failed = 0
    with concurrent.futures.ThreadPoolExecutor() as pool:
        for capture, problems in zip(captures, pool.map(lambda capture: problems_of(cmsdp, capture), captures)):
            failed += len(problems)
            for problem in problems:
                print(f"{capture}: {problem}")
    print(f"{len(captures)} captures, {failed} problems")
    return 1 if failed or not captures else 0


if __name__ == "__main__":
    sys.exit(main())
