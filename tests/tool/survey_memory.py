#!/usr/bin/env python3
"""survey_memory.py CMSDP: the memory of a survey does not grow with the number of descriptions.

Four times as many descriptions of 16 KiB, 13 MiB more of text, may take no more than 8 MiB more: what is ahead of
the threads is bounded, and of what was examined only counts are kept."""
import json
import os
import subprocess
import sys
import tempfile

SDP = "v=0\r\no=u{number} 1 1 IN IP4 198.51.100.7\r\ns=-\r\nc=IN IP4 198.51.100.7\r\nm=audio 5004 RTP/AVP 0\r\n"
LITTLE = 288


def most_memory(count):
    """The largest memory, in KiB, of a survey of so many descriptions, each another one."""
    with tempfile.TemporaryFile("w+") as text:
        for number in range(count):
            padding = f"a=x:{number}" + "x" * 16384 + "\r\n"
            text.write(json.dumps({"sdp": SDP.format(number=number) + padding}) + "\n")
        text.seek(0)
        run = subprocess.Popen([sys.argv[1], "survey", "-"], stdin=text, stdout=subprocess.PIPE)
        output = run.stdout.read()
        _, status, usage = os.wait4(run.pid, 0)
    assert status == 0 and output.startswith(f"descriptions {count}, not read 0\n".encode()), (status, output)
    return usage.ru_maxrss


little = most_memory(LITTLE)
much = most_memory(4 * LITTLE)
print(f"survey_memory: {little} KiB for {LITTLE} descriptions, {much} KiB for {4 * LITTLE}")
sys.exit(1 if much > little + 8 * 1024 else 0)
