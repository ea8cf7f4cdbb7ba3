#!/usr/bin/env python3
"""The expected result of every file of the corpus, computed without the component.

    model.py --check          compare every golden file with what the rules yield; status 1 if one differs
    model.py --write          write every golden file anew; the "# " lines at its head are kept
    model.py --show FILE      print what the golden file of one description would say
    model.py --case FILE      work out one JSON case (the form is that of --cases) and print it to be read
    model.py --cases          answer JSON cases, one object a line, from standard input to standard output

A golden file holds lines that begin with "# " (why the result is right where it surprises), then the whole
record of the far end under [remote], then the whole text that the handler answers with under [answer].

A case is {"text": ..., "srtp": bool, "bfcp": bool, "local": {...}, "max_sessions": 2}.  Bytes travel as
strings of the code points 0 to 255.  "local" overrides single fields of the capabilities below, keys and
salts as hexadecimal digits.  Optional are "session_id" (123456), "session_version" (1, the value before
the description is written) and "before", a list of descriptions that the same handler reads first.  The
result is {"remote": the block under [remote], "answer": ..., "offer": what a fresh handler offers}.
An "answer" is what the handler writes after reading, which is an offer where no section was found.
"""

from __future__ import annotations

import argparse
import dataclasses
import json
import sys
from pathlib import Path

sys.dont_write_bytecode = True  # The tests run from the source tree and must leave it as it was.

import model_read as rules  # noqa: E402
from model_read import LocalSDP, RemoteSDP, VideoParms  # noqa: E402
from model_write import Handler  # noqa: E402

HERE = Path(__file__).resolve().parent
CAPTURES = HERE / "captures"
GOLDEN = HERE / "golden"


def corpus_capabilities() -> LocalSDP:
    """The local side of every golden file: all codecs, both videos, floor control, one suite per stream."""
    codecs = rules.PAYLOAD_H264 | rules.PAYLOAD_H264_PACKETIZATION_0

    def video(role: int, port: int, **limits: int) -> VideoParms:
        return VideoParms(
            eVideoCodec=codecs,
            eVideoType=role,
            iVideoRTPPort=port,
            strVideoLevel=b"3.1",
            iFmtpMaxFrameSize=3600,
            **limits,
        )

    priority = [rules.PAYLOAD_G7221, rules.PAYLOAD_G722, rules.PAYLOAD_G711U, rules.PAYLOAD_G729]
    return LocalSDP(
        eAudioCodec=sum(priority),
        listAudioCodecPriority=priority,
        iAudioRTPPort=16384,
        strMyIPAddr=b"192.0.2.1",
        strDefaultIPAddr=b"192.0.2.1",
        iMaxBandwidth=1024000,
        iVideoPayloadMode1=97,
        iVideoPayloadMode0=126,
        m_VideoMain=video(rules.VIDEOTYPE_MAIN, 16386, iFmtpMaxMbps=108000),
        m_VideoPreso=video(rules.VIDEOTYPE_PRESO, 16388),
        iVideoPresoControlPort=16390,
        cryptoAlgo=[rules.CRYPTO_AES_CM_128_HMAC_SHA1_32] * rules.SRTP_MAX,
        bufSRTPKey=[bytes([0x11 * (row + 1)]) * 16 + b"\0" for row in range(rules.SRTP_MAX)],
        bufSRTPSalt=[bytes([0xA0 + row]) * 14 + b"\0" for row in range(rules.SRTP_MAX)],
    )


CORPUS_SWITCHES = {"srtp": True, "bfcp": True, "session_id": 123456, "session_version": 1, "max_sessions": 2}


# ---------------------------------------------------------------------------------------------------------
# Golden text.

QUOTE = b'"'


def visible(text: bytes, extra: bytes = b"") -> str:
    r"""Printable ASCII unchanged, a backslash doubled, `extra` after a backslash, other bytes as \xNN."""
    shown = []
    for byte in text:
        if byte == ord("\\") or byte in extra:
            shown.append("\\" + chr(byte))
        else:
            shown.append(chr(byte) if 0x20 <= byte < 0x7F else f"\\x{byte:02x}")
    return "".join(shown)


def record_lines(record: object, prefix: str = "") -> list[str]:
    """One "name = value" line per field, in declared order, nested records and arrays spelled out."""
    lines = []
    for item in dataclasses.fields(record):
        name, value = prefix + item.name, getattr(record, item.name)
        if dataclasses.is_dataclass(value):
            lines += record_lines(value, name + ".")
        elif isinstance(value, list):
            rows = [row.hex() if isinstance(row, bytes) else str(row) for row in value]
            lines += [f"{name}[{index}] = {row}" for index, row in enumerate(rows)]
        elif isinstance(value, bytes):
            lines.append(f'{name} = "{visible(value, extra=QUOTE)}"')
        elif isinstance(value, bool):
            lines.append(f"{name} = {'true' if value else 'false'}")
        else:
            lines.append(f"{name} = {value}")
    return lines


def remote_block(remote: RemoteSDP) -> str:
    return "".join(line + "\n" for line in record_lines(remote))


def answer_block(answer: bytes) -> str:
    r"""Every CR LF as the four characters \r\n and a new line; text without one continues on the same line."""
    shown = "\\r\\n\n".join(visible(line) for line in answer.split(b"\r\n"))
    return shown if not shown or shown.endswith("\n") else shown + "\n"


def golden_text(description: bytes) -> str:
    handler = Handler(corpus_capabilities(), **CORPUS_SWITCHES)
    remote = handler.parse(description) or RemoteSDP()
    return f"[remote]\n{remote_block(remote)}[answer]\n{answer_block(handler.local_text())}"


def remarks(golden: str) -> str:
    """The "# " lines at the head of a golden file."""
    head = []
    for line in golden.splitlines(keepends=True):
        if not line.startswith("# "):
            break
        head.append(line)
    return "".join(head)


def check() -> int:
    descriptions = {path.stem: path for path in sorted(CAPTURES.glob("*.sdp"))}
    goldens = {path.stem: path for path in sorted(GOLDEN.glob("*.txt"))}
    bare, orphaned = descriptions.keys() - goldens.keys(), goldens.keys() - descriptions.keys()
    complaints = [f"no golden file for captures/{name}.sdp" for name in sorted(bare)]
    complaints += [f"no description for golden/{name}.txt" for name in sorted(orphaned)]
    for name in sorted(descriptions.keys() & goldens.keys()):
        found = goldens[name].read_text(encoding="ascii")
        found_lines = found[len(remarks(found)) :].split("\n")
        due_lines = golden_text(descriptions[name].read_bytes()).split("\n")
        for number, (old, due) in enumerate(zip(found_lines, due_lines)):
            if old != due:
                line = number + 1 + remarks(found).count("\n")
                complaints.append(f"golden/{name}.txt:{line}: says {old!r}, must say {due!r}")
        if len(found_lines) != len(due_lines):
            complaints.append(f"golden/{name}.txt: has {len(found_lines)} lines, must have {len(due_lines)}")
    for complaint in complaints:
        print(complaint)
    print(f"{len(descriptions)} descriptions, {len(goldens)} golden files, {len(complaints)} complaints")
    return 1 if complaints or not descriptions else 0


def write() -> int:
    GOLDEN.mkdir(exist_ok=True)
    for path in sorted(CAPTURES.glob("*.sdp")):
        golden = GOLDEN / (path.stem + ".txt")
        head = remarks(golden.read_text(encoding="ascii")) if golden.exists() else ""
        golden.write_bytes((head + golden_text(path.read_bytes())).encode("ascii"))
    return 0


# ---------------------------------------------------------------------------------------------------------
# Cases.


def override(record: object, values: dict) -> None:
    """Set single fields of a record from JSON values; an unknown name is an error."""
    known = {item.name for item in dataclasses.fields(record)}
    for name, value in values.items():
        if name not in known:
            raise SystemExit(f"no such field: {name}")
        if name in ("bufSRTPKey", "bufSRTPSalt"):
            length = 17 if name == "bufSRTPKey" else 15
            setattr(record, name, [bytes.fromhex(row).ljust(length, b"\0") for row in value])
        elif isinstance(value, dict):
            override(getattr(record, name), value)
        else:
            setattr(record, name, value.encode("latin-1") if isinstance(value, str) else value)


def case_handler(case: dict) -> Handler:
    local = corpus_capabilities()
    override(local, case.get("local", {}))
    return Handler(local, **{name: case.get(name, default) for name, default in CORPUS_SWITCHES.items()})


def solve(case: dict) -> dict:
    handler = case_handler(case)
    remote = RemoteSDP()
    for text in [*case.get("before", []), case["text"]]:
        remote = handler.parse(text.encode("latin-1")) or remote
    return {
        "remote": remote_block(remote),
        "answer": handler.local_text().decode("latin-1"),
        "offer": case_handler(case).local_text().decode("latin-1"),
    }


def main() -> int:
    shape = argparse.RawDescriptionHelpFormatter
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=shape)
    verb = parser.add_mutually_exclusive_group(required=True)
    verb.add_argument("--check", action="store_true", help="compare the golden files with the rules")
    verb.add_argument("--write", action="store_true", help="write the golden files anew")
    verb.add_argument("--show", metavar="FILE", type=Path, help="print what one description yields")
    verb.add_argument("--case", metavar="FILE", type=Path, help="work out one JSON case")
    verb.add_argument("--cases", action="store_true", help="answer JSON cases line by line")
    arguments = parser.parse_args()
    if arguments.check:
        return check()
    if arguments.write:
        return write()
    if arguments.show:
        print(golden_text(arguments.show.read_bytes()), end="")
    elif arguments.case:
        result = solve(json.loads(arguments.case.read_text(encoding="utf-8")))
        print("[remote]", result["remote"], sep="\n", end="")
        for title in ("answer", "offer"):
            print(f"[{title}]", answer_block(result[title].encode("latin-1")), sep="\n", end="")
    else:
        for line in sys.stdin:
            print(json.dumps(solve(json.loads(line))), flush=True)
    return 0


if __name__ == "__main__":
    sys.exit(main())
