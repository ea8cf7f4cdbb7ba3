#!/usr/bin/env python3
"""Answers every captured offer with the built command, and has strangers judge each answer.

usage: run.py CMSDP READERS DIRECTORY...

CMSDP is the command, READERS the program of ReadAnswers.cpp. Every *offer*.sdp is answered with SRTP off,
wanted and required. Each answer passes `cmsdp check`, is taken by the foreign readers, and accepts exactly the
sections that expect.py names; an offer is refused only when expect.py names none.
"""
import glob
import json
import os
import subprocess
import sys
import tempfile

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
import expect  # noqa: E402

POLICIES = {"off": False, "wanted": True, "required": "required"}


def accepted(answer):
    return sorted(place for place, section in enumerate(expect.sections(answer)) if section.is_open())


class Run:
    def __init__(self, command, work):
        self.command = command
        self.work = work
        self.faults = []
        self.pairs = []
        self.refused = 0
        for policy, value in POLICIES.items():
            with open(os.path.join(work, policy + ".json"), "w") as file:
                json.dump({"srtp": value}, file)

    def answer(self, offer, policy):
        local = os.path.join(self.work, policy + ".json")
        return subprocess.run([self.command, "answer", "--fit", "--show-secrets", "--local", local, offer],
                              capture_output=True)

    def one(self, offer, policy):
        with open(offer, "rb") as file:
            text = file.read().decode("latin-1")
        places = sorted(expect.taken(text, policy).values())
        run = self.answer(offer, policy)
        where = f"{offer} ({policy})"
        if not run.stdout:
            self.refused += 1
            if places or expect.is_hold(text):
                self.faults.append(f"{where}: refused, but sections {places} can be taken: {run.stderr!r}")
            if run.returncode != 1 or b"cmsdp: refused with 488: " not in run.stderr:
                self.faults.append(f"{where}: status {run.returncode}, {run.stderr!r}")
            return
        if run.returncode != 0:
            self.faults.append(f"{where}: status {run.returncode}: {run.stderr!r}")
        if accepted(run.stdout.decode("latin-1")) != places:
            self.faults.append(f"{where}: accepts {accepted(run.stdout.decode('latin-1'))}, not {places}")
        self.check(offer, policy, run.stdout)

    def check(self, offer, policy, answer):
        name = os.path.join(self.work, f"{len(self.pairs)}-{policy}-{os.path.basename(offer)}")
        with open(name, "wb") as file:
            file.write(answer)
        self.pairs.append((offer, name))
        run = subprocess.run([self.command, "check", offer, name], capture_output=True)
        if run.returncode != 0 or run.stdout or run.stderr:
            self.faults.append(f"{offer} ({policy}): check: {run.stdout.decode()}{run.stderr.decode()}")

    def foreign(self, readers):
        lines = "".join(f"{offer}\t{answer}\n" for offer, answer in self.pairs)
        run = subprocess.run([readers], input=lines, capture_output=True, text=True)
        self.faults += run.stdout.splitlines()
        if run.returncode != 0:
            self.faults.append(f"{readers}: status {run.returncode}: {run.stderr}")
        return run.stderr.strip()


def main():
    command, readers, *directories = sys.argv[1:]
    offers = sorted(name for directory in directories
                    for name in glob.glob(os.path.join(directory, "*offer*.sdp")))
    with tempfile.TemporaryDirectory() as work:
        run = Run(command, work)
        for offer in offers:
            for policy in POLICIES:
                run.one(offer, policy)
        engine = run.foreign(readers)
    print("\n".join(run.faults))
    print(f"{len(offers)} offers, {len(run.pairs)} answers, {run.refused} refused, {engine}, "
          f"{len(run.faults)} faults")
    sys.exit(1 if run.faults or not run.pairs else 0)


if __name__ == "__main__":
    main()
