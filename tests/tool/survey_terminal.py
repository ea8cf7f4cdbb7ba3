#!/usr/bin/env python3
"""survey_terminal.py CMSDP: a survey shows its progress on standard error when that is a terminal, and only then."""
import os
import pathlib
import pty
import re
import subprocess
import sys
import tempfile

SKIPPED = 77  # as the test's property SKIP_RETURN_CODE
START = b"v=0\r\no=- 1 1 IN IP4 198.51.100.7\r\ns=-\r\nc=IN IP4 198.51.100.7\r\nm=audio 5004 RTP/AVP 0\r\n"


def survey(folder, errors):
    """A survey of a folder that has ended."""
    return subprocess.run([sys.argv[1], "survey", "."], cwd=folder, stdout=subprocess.PIPE, stderr=errors, check=True)


def on_terminal(folder):
    """Standard output, and what a terminal gets on standard error."""
    try:
        terminal, errors = pty.openpty()
    except OSError as error:
        print(f"survey_terminal: skipped, the system gives no pseudo-terminal: {error}")
        sys.exit(SKIPPED)
    output = survey(folder, errors).stdout
    os.close(errors)
    shown = b""
    try:
        while part := os.read(terminal, 65536):
            shown += part
    except OSError:
        pass  # Linux ends a terminal without a writer like this.
    os.close(terminal)
    return output, shown


with tempfile.TemporaryDirectory() as folder:
    # The second text is so long that the survey has to wait for it, and shows how far it is.
    pathlib.Path(folder, "a.sdp").write_bytes(START)
    pathlib.Path(folder, "b.sdp").write_bytes(START + b"a=x:1\r\n" * 150000)
    output, shown = on_terminal(folder)
    piped = survey(folder, subprocess.PIPE)

problems = []
# The bar of 40 places may be drawn several times; at the end its line is cleared.
if not re.fullmatch(rb"(\r\[(?=[# ]{40}\])#* *\] [012] of 2)+\r\x1b\[K", shown):
    problems.append(f"on a terminal: {shown}")
if piped.stderr != b"":
    problems.append(f"on a pipe: {piped.stderr}")
if output != piped.stdout or not output.startswith(b"descriptions 2, not read 0\n"):
    problems.append(f"output on a terminal: {output}\notherwise: {piped.stdout}")
print("\n".join(problems) or "survey_terminal: ok")
sys.exit(1 if problems else 0)
