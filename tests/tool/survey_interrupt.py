#!/usr/bin/env python3
"""survey_interrupt.py CMSDP: an interrupt ends a survey that waits for its input; what was examined is shown."""
import json
import signal
import subprocess
import sys

SDP = "v=0\r\nc=IN IP4 198.51.100.7\r\nm=audio 5004 RTP/AVP 0\r\n"


def interrupted(*options):
    """What a survey writes that is interrupted when it has read one description and waits for the next."""
    run = subprocess.Popen([sys.argv[1], "survey", *options, "-"], stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                           stderr=subprocess.PIPE, text=True)
    # The reason for the second line is written when the first is examined, and nothing else is to come.
    run.stdin.write(json.dumps({"sdp": SDP}) + "\n7\n")
    run.stdin.flush()
    first = run.stderr.readline()
    run.send_signal(signal.SIGINT)
    rest = run.stderr.read()
    output = run.stdout.read()
    return run.wait(60), output, first + rest


status, output, errors = interrupted()
problems = []
if status != 130:
    problems.append(f"status {status}")
if not output.startswith("descriptions 1, not read 1\n\nstreams\n  audio          start       1 100.0 %  -:1\n"):
    problems.append(f"table: {output}")
if errors != 'cmsdp: -:2: it has no member "sdp" that is a text\ncmsdp: interrupted after 2 descriptions\n':
    problems.append(f"errors: {errors}")
status, output, errors = interrupted("--json")
if status != 130 or [json.loads(line)["name"] for line in output.splitlines()] != ["-:1", "-:2"]:
    problems.append(f"status {status}, lines: {output}")
print("\n".join(problems) or "survey_interrupt: ok")
sys.exit(1 if problems else 0)
