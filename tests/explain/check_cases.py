#!/usr/bin/env python3
"""Checks that every prepared broken negotiation is broken as it says, and that its cure ends it.

    check_cases.py CMSDP [CASE...]     CMSDP: the command to run; CASE: folders; default: all under cases/

The command only reads and answers here. What it explains is judged by the tests of `cmsdp explain`.
The streams that healthy.txt names have to come up as well. Prints one line for each problem and ends with
status 1 when there was any.
"""

import json
import pathlib
import subprocess
import sys

HERE = pathlib.Path(__file__).resolve().parent
sys.path.insert(0, str(HERE.parent / "corpus"))
sys.dont_write_bytecode = True
import model_read  # noqa: E402

TOPICS = {
    "audio": ["audio.codec", "audio.send", "audio.receive", "dtmf"],
    "video": ["main.picture", "main.send", "main.receive"],
    "slides": ["slides", "floor"],
    "encryption": ["encryption.audio", "encryption.main", "encryption.slides"],
    "bandwidth-and-ice": ["bandwidth", "ice"],
    "call": ["call"],
}
FIELDS = "symptom topic arguments cause line field ledger rule_words consequence_words cure expect cured_expect"
FILES = {"case.json", "remote.sdp", "local.json", "before.sdp", "offer.sdp", "cured.sdp", "cured.json"}
LEAST_PER_GROUP = 12
STREAMS = {"audio": "audio", "main": "main_video", "slides": "presentation"}
LEAST_HEALTHY = 50


def run(command, verb, options, text):
    """Standard output of one verb on a text. Status 0 and 1 mean that it was read."""
    done = subprocess.run([command, verb, *options, "-"], input=text, capture_output=True, check=False)
    if done.returncode not in (0, 1):
        raise ValueError(done.stderr.decode("latin-1").strip())
    return done.stdout.decode("latin-1")


def session_connection(text):
    """The session-level c= line. Nothing else of an earlier description counts in a later one."""
    head = text.split(b"m=")[0]
    return b"".join(line + b"\r\n" for line in head.split(b"\r\n") if line.startswith(b"c="))


def sections(text):
    """Medium and floor control transport of each section: what an answer repeats of its offer (RFC 3264, 6)."""
    lines = [line.split() for line in text.split(b"\r\n") if line.startswith(b"m=")]
    return [(words[0], words[2] if b"BFCP" in words[2].upper() else b"RTP") for words in lines]


def ice(text):
    """What the component records of ICE, section by section; neither verb shows it, so the model says it."""
    reader = model_read.Reader()
    reader.read(text)
    return [
        {
            "ufrag": section.striceufrag.decode("latin-1"),
            "pwd": section.stricepwd.decode("latin-1"),
            "candidates": len(section.vecCandidate),
        }
        for section in reader.sections
    ]


def outcome(command, folder, case, remote, local):
    """The record as JSON, and the answer where the far end offered."""
    text = (folder / remote).read_bytes()
    if (folder / "before.sdp").exists():
        first, end, rest = text.partition(b"\r\n")
        text = first + end + session_connection((folder / "before.sdp").read_bytes()) + rest
    options = ["--local", folder / local] if (folder / local).exists() else []
    options += ["--exact"] if "--exact" in case["arguments"] else []
    record = json.loads(run(command, "inspect", [*options, "--json", "--show-secrets"], text))
    record["ice"] = ice(text)
    if "--offered" in case["arguments"]:
        offer = folder / "offer.sdp"
        record["fits"] = offer.exists() and sections(text) == sections(offer.read_bytes())
        return record, []
    answer = run(command, "answer", [*options, "--show-secrets"], text)
    record["fits"] = sections(text) == sections(answer.encode("latin-1"))
    return record, answer.split("\r\n")


def holds(expected, record, answer):
    if "answer_has" in expected:
        return any(expected["answer_has"] in line for line in answer)
    if "answer_lacks" in expected:
        return not any(expected["answer_lacks"] in line for line in answer)
    if "answer_fits" in expected:
        return record["fits"] == expected["answer_fits"]
    value = record
    for name in expected["path"].split("."):
        value = value[int(name) if isinstance(value, list) else name]
    return value == expected["is"] and isinstance(value, bool) == isinstance(expected["is"], bool)


def form_problems(folder, case):
    """What is wrong with the folder itself."""
    if list(case) != FIELDS.split():
        yield f"case.json has the members {list(case)}"
        return
    names = {path.name for path in folder.iterdir()}
    for name in sorted(names - FILES):
        yield f"{name} is no file of a case"
    if not {"cured.sdp", "cured.json"} & names:
        yield "has neither cured.sdp nor cured.json"
    if case["topic"] not in TOPICS.get(folder.parent.name, []):
        yield f"{case['topic']} is no topic of the group {folder.parent.name}"
    if case["line"] is None and case["field"] is None:
        yield "names neither a line nor a field"
    lines = (folder / "remote.sdp").read_bytes().count(b"\n") + 1
    if case["line"] is not None and not 1 <= case["line"] <= lines:
        yield f"line {case['line']} of {lines}"
    for name in ("symptom", "cause", "cure", "rule_words", "consequence_words", "expect", "cured_expect"):
        if not case[name]:
            yield f"{name} is empty"


def cured_files(folder):
    """The remote text and the local file with the cure applied; one of them is as it was."""
    pairs = (("cured.sdp", "remote.sdp"), ("cured.json", "local.json"))
    return [cured if (folder / cured).exists() else sent for cured, sent in pairs]


def case_folders(chosen):
    """The folders that were named, or all."""
    folders = [pathlib.Path(name).resolve() for name in chosen]
    return folders or sorted(path.parent for path in HERE.glob("cases/*/*/case.json"))


def case_problems(command, folder):
    case = json.loads((folder / "case.json").read_text(encoding="ascii"))
    found = list(form_problems(folder, case))
    if found:
        yield from found
        return
    sent = outcome(command, folder, case, "remote.sdp", "local.json")
    better = outcome(command, folder, case, *cured_files(folder))
    for title, result, wanted in (("as sent", sent, case["expect"]), ("cured", better, case["cured_expect"])):
        for expected in wanted:
            if not holds(expected, *result):
                yield f"{title}: does not hold: {json.dumps(expected)}"
    if all(holds(expected, *better) for expected in case["expect"]):
        yield "the symptom is the same with the cure"


def tree_problems(folders):
    for group in TOPICS:
        count = sum(1 for folder in folders if folder.parent.name == group)
        if count < LEAST_PER_GROUP:
            yield f"{group}: {count} cases, at least {LEAST_PER_GROUP}"
    first = {}
    for folder in folders:
        same = first.setdefault((folder / "remote.sdp").read_bytes(), folder)
        if same is not folder:
            yield f"{folder.name}: has the text of {same.name}"


def healthy_lines():
    """Name, arguments and healthy streams or topics of each line of the list."""
    for line in (HERE / "healthy.txt").read_text(encoding="ascii").splitlines():
        if line and not line.startswith("#"):
            (name, *arguments), words = (part.split() for part in line.split(" : "))
            yield name, arguments, words


def healthy_problems(command):
    """Each capture of the list exists, and each stream of its line comes up, with a suite where SRTP is on."""
    lines = list(healthy_lines())
    known = {*STREAMS, *(topic for topics in TOPICS.values() for topic in topics)}
    for name, arguments, words in lines:
        for word in sorted(set(words) - known):
            yield f"{name}: {word} is no topic"
        text = (HERE.parent / "corpus" / "captures" / name).read_bytes()
        local = ["--local", HERE / "srtp.json"] if "srtp.json" in arguments else []
        record = json.loads(run(command, "inspect", [*local, "--json"], text))
        for stream in [record[STREAMS[word]] for word in words if word in STREAMS]:
            if not stream["negotiated"] or not stream["address"] or not (stream["sends"] or stream["receives"]):
                yield f"{name}: a stream does not come up: {json.dumps(stream)}"
            if local and stream["suite"] is None:
                yield f"{name}: a stream has no suite"
    if len(lines) < LEAST_HEALTHY:
        yield f"{len(lines)} captures, at least {LEAST_HEALTHY}"


def main(arguments):
    command, chosen = arguments[0], arguments[1:]
    folders = case_folders(chosen)
    problems = [] if chosen else [*tree_problems(folders), *healthy_problems(command)]
    for folder in folders:
        try:
            found = list(case_problems(command, folder))
        except (ValueError, KeyError) as error:
            found = [f"cannot be run: {error}"]
        problems += [f"{folder.parent.name}/{folder.name}: {problem}" for problem in found]
    for problem in problems:
        print(problem)
    print(f"{len(folders)} cases, {len(problems)} problems")
    return 1 if problems or not folders else 0


if __name__ == "__main__":
    if len(sys.argv) < 2:
        sys.exit(__doc__)
    sys.exit(main(sys.argv[1:]))
