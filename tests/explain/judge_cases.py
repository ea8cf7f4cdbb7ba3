#!/usr/bin/env python3
"""Judges what `cmsdp explain` says: the cause of each broken negotiation, and nothing about healthy texts.

    judge_cases.py CMSDP [CASE...]     CMSDP: the command to run; CASE: folders; default: all, and healthy.txt

The first finding under the topic of a case has to name its line or its field, the rule and the consequence,
and with the cure applied it has to be gone. On what healthy.txt names no finding above "note" may stand.
Prints one line for each failure and ends with status 1 when there was any.
"""

import json
import re
import subprocess
import sys

sys.dont_write_bytecode = True
from check_cases import HERE, STREAMS, TOPICS, healthy_lines, case_folders, cured_files  # noqa: E402

OF_STREAM = {
    "audio": ["audio.codec", "audio.send", "audio.receive", "encryption.audio"],
    "main": ["main.picture", "main.send", "main.receive", "encryption.main"],
    "slides": ["slides", "encryption.slides"],
}
assert OF_STREAM.keys() == STREAMS.keys()


def explain(command, options):
    """Standard output of `cmsdp explain`; status 0 and 1 mean that the text was read."""
    done = subprocess.run([command, "explain", *options], capture_output=True, check=False)
    if done.returncode not in (0, 1):
        raise ValueError(done.stderr.decode("latin-1").strip())
    return done.stdout.decode("latin-1")


def first_finding(command, folder, case, remote, local):
    options = list(case["arguments"])
    for option, name in (("--local", local), ("--before", "before.sdp"), ("--offer", "offer.sdp")):
        options += [option, folder / name] if (folder / name).exists() else []
    return explain(command, [*options, "--about", case["topic"], "--top", folder / remote])


def says(text, words):
    """Whether the text holds one of the words that "|" parts; digits alone count only as a whole number."""
    for word in words.split("|"):
        found = rf"(?<!\d){word}(?!\d)" if word.isdigit() else re.escape(word)
        if re.search(found, text, re.IGNORECASE):
            return True
    return False


def names_cause(text, case):
    """Whether the text names the line, as "line 7", "lines 7 and 9" or "7:", or the field of the local file."""
    if case["field"] is not None and case["field"] in text:
        return True
    return case["line"] is not None and says(text, str(case["line"]))


def case_failures(command, folder):
    case = json.loads((folder / "case.json").read_text(encoding="ascii"))
    finding = first_finding(command, folder, case, "remote.sdp", "local.json")
    if not names_cause(finding, case):
        yield f"names neither line {case['line']} nor field {case['field']}"
    for words in case["rule_words"] + case["consequence_words"]:
        if not says(finding, words):
            yield f"does not say {words}"
    if finding and first_finding(command, folder, case, *cured_files(folder)) == finding:
        yield "the finding is the same with the cure"


def false_blame(command):
    """Findings above "note" on what is healthy."""
    for name, arguments, words in healthy_lines():
        options = [str(HERE / word) if word.endswith(".json") else word for word in arguments]
        topics = [topic for word in words for topic in OF_STREAM.get(word, [word])]
        for topic in topics:
            about = [*options, "--about", topic, "--json", HERE.parent / "corpus" / "captures" / name]
            for finding in json.loads(explain(command, about))["findings"]:
                if finding["severity"] != "note":
                    yield f"{name}: blamed under {topic}: {finding['id']}"


def main(command, chosen):
    folders = case_folders(chosen)
    failed = 0
    for folder in folders:
        try:
            found = list(case_failures(command, folder))
        except ValueError as error:
            found = [f"cannot be run: {error}"]
        failed += bool(found)
        for failure in found:
            print(f"{folder.parent.name}/{folder.name}: {failure}")
    blame = [] if chosen else list(false_blame(command))
    print(*blame, sep="\n", end="\n" if blame else "")
    groups = len({folder.parent.name for folder in folders} & set(TOPICS))
    print(f"{len(folders) - failed} of {len(folders)} cases in {groups} groups, {len(blame)} times false blame")
    return 1 if failed or blame or not folders else 0


if __name__ == "__main__":
    if len(sys.argv) < 2:
        sys.exit(__doc__)
    sys.exit(main(sys.argv[1], sys.argv[2:]))
