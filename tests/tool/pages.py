#!/usr/bin/env python3
"""pages.py CMSDP: the manual page and the completions have every verb and option of the help texts, every option
of a help text is one that the verb takes, and completion works in an interactive bash."""
import os
import pathlib
import pty
import re
import select
import shutil
import subprocess
import sys

CMSDP = pathlib.Path(sys.argv[1]).resolve()
PAGES = CMSDP.parent / "pages"
problems = []


def check(is_right, problem):
    if not is_right:
        problems.append(problem)


def helped(*verb):
    return subprocess.run([CMSDP, "help", *verb], check=True, capture_output=True, text=True).stdout


def options(text):
    listed = text.partition("\nOptions:\n")[2].partition("\n\n")[0]
    return re.findall(r"^  (?:-\w, )?(--[\w-]+)(?: ([A-Z]+))?", listed, re.MULTILINE)


def verbs():
    listed = helped().partition("\nVerbs:\n")[2].partition("\n\n")[0]
    return [verb for verb in re.findall(r"^  (\w+)", listed, re.MULTILINE) if verb != "help"]


def check_texts():
    man = (PAGES / "cmsdp.1").read_text()
    bash = (PAGES / "cmsdp.bash").read_text()
    fish = (PAGES / "cmsdp.fish").read_text()
    check(len(verbs()) >= 7, f"only the verbs {verbs()} are listed")
    for verb in verbs():
        section = man.partition(f"\n.SS {verb}\n")[2].partition("\n.SS ")[0].partition("\n.SH ")[0]
        words = re.search(rf'^ +{verb}\) words="(.*)" ;;$', bash, re.MULTILINE)
        taken = options(helped(verb))
        check(taken, f"{verb}: no option is listed")
        check(words and words.group(1).split() == [name for name, _ in taken], f"{verb}: completion of bash")
        for name, value in taken:
            term = "\\-\\-" + name[2:] + (" " + value if value else "")
            check(re.search(rf"^\.B (?:\\-\w, )?{re.escape(term)}$", section, re.MULTILINE), f"man: {verb} {name}")
            check(f"from {verb}' -l {name[2:]}" in fish, f"fish: {verb} {name}")
            if name != "--help":
                run = subprocess.run([CMSDP, verb, name, *([value] if value else []), "--help"],
                                     stdin=subprocess.DEVNULL, capture_output=True, text=True)
                check("not expected" not in run.stderr, f"{verb} does not take {name}: {run.stderr}")


def check_lint():
    if shutil.which("mandoc"):
        run = subprocess.run(["mandoc", "-T", "lint", PAGES / "cmsdp.1"], capture_output=True, text=True)
        check(run.returncode == 0 and run.stdout == "", f"mandoc: {run.stdout}")


def typed(keys, wanted):
    """What an interactive bash shows after the keys, up to the wanted text."""
    child, terminal = pty.fork()
    if child == 0:
        os.environ.update(PS1="ready> ", TERM="dumb", INPUTRC="/dev/null")
        os.execvp("bash", ["bash", "--norc", "--noprofile", "-i"])
    shown = ""

    def read_until(text):
        nonlocal shown
        while text not in shown and select.select([terminal], [], [], 20)[0]:
            shown += os.read(terminal, 4096).decode(errors="replace")

    os.write(terminal, f"source {PAGES / 'cmsdp.bash'}; echo sour''ced\n".encode())
    read_until("sourced")
    shown = ""
    os.write(terminal, keys.encode())
    read_until(wanted)
    os.close(terminal)
    os.waitpid(child, 0)
    check(wanted in shown, f"bash completes {keys!r} to {shown!r}, wanted {wanted!r}")


check_texts()
check_lint()
typed("cmsdp ins\t", "cmsdp inspect ")
typed("cmsdp answer --req\t", "cmsdp answer --require ")
typed("cmsdp help capab\t", "cmsdp help capabilities ")
for problem in problems:
    print("pages: PROBLEM:", problem)
print("pages:", "FAILED" if problems else "ok")
sys.exit(1 if problems else 0)
