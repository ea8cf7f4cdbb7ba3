#!/usr/bin/env python3
"""Captures of calls, written packet by packet, and what `cmsdp explain --pcap` says of each.

    captures.py CMSDP            compares with captures/NAME.txt
    captures.py CMSDP --write    writes those files; read them before they are kept
    captures.py CMSDP --keep DIR leaves the captures there
"""
import difflib
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

from captures_wire import pcap
from captures_calls import over_udp
import captures_calls
import captures_dialogs
import captures_frames

HERE = pathlib.Path(__file__).resolve().parent
SCENARIOS = {**captures_calls.SCENARIOS, **captures_dialogs.SCENARIOS}
CMSDP = str(pathlib.Path(sys.argv[1]).resolve())
problems = []


def run(folder, *arguments, **environment):
    return subprocess.run([CMSDP, *arguments], cwd=folder, capture_output=True, text=True, check=False,
                          stdin=subprocess.DEVNULL, env={**os.environ, **environment})


def transcript(folder, name, options):
    """The command as it is typed, what it prints, its errors and its status."""
    text = ""
    for option in options:
        file = name + ".pcap"
        words = ["survey", file] if option == "survey" else ["explain", "--pcap", file, *option.split()]
        ended = run(folder, *words)
        text += "$ cmsdp " + " ".join(words) + "\n" + ended.stdout + ended.stderr
        text += f"status {ended.returncode}\n\n"
    return text


def compare(name, text):
    kept = HERE / "captures" / (name + ".txt")
    if "--write" in sys.argv:
        kept.write_text(text, encoding="utf-8")
    wanted = kept.read_text(encoding="utf-8") if kept.exists() else ""
    if text != wanted:
        problems.append(name)
        print("".join(difflib.unified_diff(wanted.splitlines(True), text.splitlines(True), str(kept), "is")))


def check_error(folder, name, status, words, **environment):
    ended = run(folder, "explain", "--pcap", name, **environment)
    if (ended.returncode, ended.stdout, ended.stderr) != (status, "", f"cmsdp: {words}\n"):
        problems.append(name)
        print(f"{name}: status {ended.returncode}, {ended.stdout!r}, {ended.stderr!r}")


def check_errors(folder):
    whole = (folder / "plain.pcap").read_bytes()
    (folder / "text.pcap").write_text("this is no capture\n" * 20, encoding="utf-8")
    (folder / "empty.pcap").write_bytes(pcap([]))
    (folder / "-r.pcap").write_bytes(whole)
    check_error(folder, "plain.pcap", 5, "a capture is read by tshark, which is not installed; install the Debian "
                "package tshark", PATH=str(folder))
    check_error(folder, "none.pcap", 3, "none.pcap: cannot be read: No such file or directory")
    check_error(folder, "text.pcap", 3, "text.pcap: is no capture that tshark can read")
    check_error(folder, "empty.pcap", 3, "empty.pcap: holds no call over SIP that can be read")
    if run(folder, "explain", "--pcap=-r.pcap").stdout != run(folder, "explain", "--pcap", "plain.pcap").stdout:
        problems.append("a name that begins like an option")


def check_framings(folder):
    """Every framing gives the timeline of the plain capture, but for addresses and ports."""
    timeline = None
    for name, capture in [("plain-frames", pcap(over_udp(*captures_frames.call()))), *captures_frames.framings()]:
        (folder / name).write_bytes(capture)
        text = re.sub(r" \([^)]*\)", "", run(folder, "explain", "--pcap", name).stdout)
        timeline = timeline or text
        if text != timeline or "step 9, 3.000 s: the caller ends the call" not in text:
            problems.append(name)
            print("".join(difflib.unified_diff(timeline.splitlines(True), text.splitlines(True), "plain", name)))
    for name, capture, words in captures_frames.not_readable():
        (folder / name).write_bytes(capture)
        check_error(folder, name, 3, f"{name}: holds no call over SIP that can be read{words}")


def main(folder):
    for name, (packets, options) in SCENARIOS.items():
        written = packets if isinstance(packets, bytes) else pcap(packets)
        (folder / (name + ".pcap")).write_bytes(written)
        text = transcript(folder, name, options)
        if "c3VycHJpc2U" in text:
            problems.append(name + ": a key is shown")
        compare(name, text)
    kept = {path.stem for path in (HERE / "captures").glob("*.txt")}
    problems.extend(sorted(kept ^ set(SCENARIOS)))
    check_errors(folder)
    check_framings(folder)
    if "--keep" in sys.argv:
        shutil.copytree(folder, sys.argv[sys.argv.index("--keep") + 1], dirs_exist_ok=True)


with tempfile.TemporaryDirectory() as scratch:
    main(pathlib.Path(scratch))
for problem in problems:
    print("captures: PROBLEM:", problem)
print("captures:", "FAILED" if problems else f"ok, {len(SCENARIOS)} captures")
sys.exit(1 if problems else 0)
