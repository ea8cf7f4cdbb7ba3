#!/usr/bin/env python3
"""Checks the rules of this repository that no compiler knows.

    check.py [--root DIR] NAME...     NAME: ledger words shape heads readme corpus selfcheck, or all

Prints what it found, one problem per line, and ends with status 1 when there was any.
"""
import contextlib
import io
import pathlib
import re
import shutil
import statistics
import subprocess
import sys
import tempfile

ID = r"[MPXBG]\d\d"
MAX_FUNCTION = 60
MAX_MEDIAN = 15
MAX_SOURCE = 300
MAX_ELSE_IF = 3
MAX_README = 150
HEAD_LINES = range(5, 11)


def read(path):
    return path.read_text(encoding="utf-8", errors="replace")


def files(root, *suffixes):
    """Every file of the tree but what is generated or not ours to word."""
    for path in sorted(root.rglob("*")):
        parts = path.relative_to(root).parts
        if parts[0] in (".git", "build") or "__pycache__" in parts or not path.is_file():
            continue
        if not suffixes or path.suffix in suffixes:
            yield path


def component(root):
    yield from files(root / "commonmedia" / "include", ".h")
    yield from files(root / "commonmedia" / "src", ".h", ".cpp")


# --- ledger ---------------------------------------------------------------------------------------------


def ledger_rows(root):
    """(ID, cells) of each table row that begins with an ID."""
    for line in read(root / "commonmedia" / "DELIBERATE.md").splitlines():
        cells = [cell.strip() for cell in re.split(r"(?<!\\)\|", line)[1:-1]]
        if cells and re.fullmatch(rf"\W*{ID}\W*", cells[0]):
            yield re.search(ID, cells[0]).group(), cells


def tagged_files(root):
    """ID -> names of the files that carry its tag in a comment."""
    where = {}
    for path in component(root):
        for line in read(path).splitlines():
            comment = line.partition("//")[2]
            for found in re.findall(rf"\[({ID})\]", comment):
                where.setdefault(found, set()).add(path.name)
    return where


def test_names(root):
    names = set()
    for path in files(root / "tests", ".cpp"):
        names.update(re.findall(r"\bTEST(?:_F|_P)?\(\s*\w+,\s*(\w+)\s*\)", read(path)))
    return names


def check_ledger(root):
    """Every deliberate behaviour stands in three places: ledger row, tag at the code, test of that name."""
    tags = tagged_files(root)
    tests = test_names(root)
    tested = {name[:3] for name in tests if re.match(rf"{ID}_", name)}
    listed = set()
    for key, cells in ledger_rows(root):
        if key in listed:
            yield f"{key}: has two rows"
        listed.add(key)
        if len(cells) != 5 or not all(cells):
            yield f"{key}: the row needs five filled cells"
            continue
        named = set(re.findall(r"[\w]+\.(?:cpp|h)\b", cells[3]))
        for name in sorted(named - tags.get(key, set())):
            yield f"{key}: {name} is named as the place, but no comment in it begins with the tag"
        for name in sorted(tags.get(key, set()) - named):
            yield f"{key}: {name} carries the tag, but the row does not name it"
        if not named:
            yield f"{key}: the row names no source"
        wanted = set(re.findall(rf"\b{key}_\w+", cells[4]))
        for name in sorted(wanted - tests):
            yield f"{key}: there is no test {name}"
        if not wanted:
            yield f"{key}: the row names no test {key}_..."
    for key in sorted(set(tags) - listed):
        yield f"{key}: tagged in {', '.join(sorted(tags[key]))}, but not in the ledger"
    for key in sorted(tested - listed):
        yield f"{key}: a test has this name, but the ledger has no such row"
    for key in sorted(listed - tested):
        yield f"{key}: no test begins with this name"
    if not listed:
        yield "the ledger has no rows"
    print(f"ledger: {len(listed)} rows, {len(tags)} tags, {len(tested)} tested names")


# --- words ----------------------------------------------------------------------------------------------


def forbidden_words():
    """What no file says. Written in pieces, so that this file does not say it either."""
    base = "sp" + "ec"
    plain = ["/wo" + "rk/", "/tm" + "p/te" + "am", "house" + ".md", "house" + " rules", "hostile" + ".md"]
    marks = ["TO" + "DO", "FIX" + "ME", "X" + "XX", "HA" + "CK"]
    hosts = ["py" + r"pi\.org", "npm" + r"js\.", r"deb\." + r"debian\.org", r"registry\." + r"npm", "proxy" + r"\.golang"]
    return re.compile(
        "|".join(
            [rf"\b{base}s?\b(?!\.in)", rf"\b{base}ifications?\b", rf"\b{base}ified\b", r"\bPart\s+\d", r"\bissues?\s+#?\d"]
            + [re.escape(word) for word in plain]
            + [rf"\b{mark}\b" for mark in marks]
            + hosts
        ),
        re.IGNORECASE,
    )


def check_words(root):
    """Comments say why in this system's own words: they quote no paper, no machine, no plan."""
    pattern = forbidden_words()
    count = 0
    for path in files(root):
        name = str(path.relative_to(root))
        for found in pattern.finditer(name.replace("-", " ").replace("_", " ")):
            yield f"{name}: the file name says '{found.group()}'"
        if path.suffix == ".sdp" or b"\0" in path.read_bytes() or name.startswith("fuzz/seeds"):
            continue
        count += 1
        for number, line in enumerate(read(path).splitlines(), 1):
            for found in pattern.finditer(line):
                yield f"{name}:{number}: says '{found.group()}'"
    print(f"words: {count} files")


# --- shape ----------------------------------------------------------------------------------------------


def blank_out(text):
    """The code with comments, strings and preprocessor lines blanked, line for line."""
    token = re.compile(
        r'//[^\n]*|/\*.*?\*/|R"(\w*)\(.*?\)\1"|"(?:\\.|[^"\\\n])*"|\'(?:\\.|[^\'\\\n])+\'|^[ \t]*#(?:\\\n|[^\n])*',
        re.DOTALL | re.MULTILINE,
    )
    # A quote between digits separates them; it opens no character.
    text = re.sub(r"(?<=\d)'(?=\d)", " ", text)
    return token.sub(lambda m: re.sub(r"[^\n]", " ", m.group()), text)


def functions(text):
    """(name, first line, last line, body) of each function, the signature's first line included."""
    code = blank_out(text)
    stack = []
    start = 0
    for at, char in enumerate(code):
        if char == ";" and "function" not in stack:
            start = at + 1
        elif char == "{":
            kind = "block"
            if "function" not in stack:
                head = code[start:at]
                if re.search(r"\b(namespace|extern)\b", head):
                    kind = "scope"
                elif re.search(r"\b(class|struct|union|enum)\b[^()]*$", head) and "(" not in head:
                    kind = "scope"
                elif "(" in head and not re.search(r"=\s*$|\w\s*\[[^\]]*\]\s*=", head):
                    kind = "function"
                    name = re.search(r"(~?\w+|operator\S+)\s*\(", head)
                    begin = start + len(head) - len(head.lstrip())
                    opened = (name.group(1) if name else "?", code.count("\n", 0, begin) + 1, at)
            stack.append(kind)
            if kind == "scope":
                start = at + 1
        elif char == "}" and stack:
            kind = stack.pop()
            if kind == "function":
                name, first, body = opened
                yield name, first, code.count("\n", 0, at) + 1, code[body : at + 1]
            if "function" not in stack:
                start = at + 1


def comment_share(text):
    lines = [line for line in text.splitlines() if line.strip()]
    comments = sum(1 for line in lines if "//" in line)
    return 100 * comments / max(1, len(lines))


def stage_mixing(path, code):
    """The reading files write nothing and the writing files read nothing."""
    if re.match(r"SDP(Parse|Extract)", path.name):
        for found in re.findall(r"\b(?:Write|Add)[A-Z]\w*\s*\(", code):
            yield f"{path.name}: a reading file calls the writer {found}...)"
    if path.name.startswith("SDPBuild"):
        for found in re.findall(r"\b(?:Process|Parse)[A-Z]\w*\s*\(", code):
            yield f"{path.name}: a writing file calls the reader {found}...)"


def check_shape(root):
    """Sizes at which a reader would want a room of its own for a part."""
    lengths = []
    for path in files(root / "commonmedia" / "src", ".cpp", ".h"):
        text = read(path)
        lines = text.count("\n")
        if lines > MAX_SOURCE:
            yield f"{path.name}: {lines} lines, at most {MAX_SOURCE}"
        for name, first, last, body in functions(text):
            length = last - first + 1
            lengths.append((length, f"{path.name}:{first} {name}"))
            if length > MAX_FUNCTION:
                yield f"{path.name}:{first}: {name} has {length} lines, at most {MAX_FUNCTION}"
            if len(re.findall(r"\belse\s+if\b", body)) > MAX_ELSE_IF:
                yield f"{path.name}:{first}: {name} has more than {MAX_ELSE_IF} 'else if'; make it a table"
        yield from stage_mixing(path, blank_out(text))
    if not lengths:
        yield "no function found in commonmedia/src"
        return
    median = statistics.median(length for length, _ in lengths)
    if median > MAX_MEDIAN:
        yield f"the median function has {median} lines, at most {MAX_MEDIAN}"
    print(f"shape: {len(lengths)} functions, median {median:g} lines, the longest:")
    for length, where in sorted(lengths, reverse=True)[:5]:
        print(f"    {length:3d}  {where}")
    print("shape: share of lines with a comment (headers 40 % and more, sources 10 to 25 %):")
    for path in component(root):
        print(f"    {comment_share(read(path)):3.0f} %  {path.name} ({read(path).count(chr(10))} lines)")


# --- heads ----------------------------------------------------------------------------------------------


def check_heads(root):
    """A source opens with what it does, and names the test that covers it."""
    count = 0
    for path in files(root / "commonmedia" / "src", ".cpp"):
        count += 1
        head = []
        for line in read(path).splitlines():
            if not line.startswith("//"):
                break
            head.append(line)
        if len(head) not in HEAD_LINES:
            yield f"{path.name}: opens with {len(head)} lines of comment, wanted are 5 to 10"
        test = f"tests/unit/{path.stem}Test.cpp"
        if not any(test in line for line in head):
            yield f"{path.name}: its opening comment does not name {test}"
        if not (root / test).is_file():
            yield f"{path.name}: {test} does not exist"
    if count == 0:
        yield "no source found in commonmedia/src"
    print(f"heads: {count} sources")


# --- readme ---------------------------------------------------------------------------------------------


def check_readme(root):
    """The front page: short, with both commands, its example compiled, no dead link in any page."""
    text = read(root / "README.md")
    lines = text.count("\n")
    if lines >= MAX_README:
        yield f"README.md: {lines} lines, fewer than {MAX_README} wanted"
    for command in ("scripts/demo", "scripts/test"):
        if command not in text:
            yield f"README.md: does not show {command}"
        if not (root / command).is_file():
            yield f"{command} does not exist"
    blocks = re.findall(r"^```cpp\n(.*?)^```$", text, re.DOTALL | re.MULTILINE)
    example = read(root / "examples" / "readme.cpp")
    if blocks != [example]:
        yield "README.md: its C++ block is not examples/readme.cpp, line for line"
    manual = read(root / "commonmedia" / "include" / "SDPHandler.h").partition("#pragma once")[0]
    shown = "".join(read(path) for path in files(root / "examples", ".cpp") if path.name.startswith("manual_"))
    calls = set(re.findall(r"\b(?:handler\.\w+|ExtractSRTPKey|GetSRTPKey)\(", manual))
    for call in sorted(call for call in calls if call not in shown):
        yield f"SDPHandler.h: its manual calls {call}...), which no examples/manual_*.cpp does"
    for page in files(root, ".md"):
        for target in re.findall(r"\]\(([^)#:\s]+)(?:#[^)]*)?\)", read(page)):
            if not (page.parent / target).exists():
                yield f"{page.relative_to(root)}: links to {target}, which does not exist"
    print(f"readme: {lines} lines, {len(calls)} calls in the manual, example of {example.count(chr(10))} lines")


# --- corpus ---------------------------------------------------------------------------------------------


def check_corpus(root):
    """The captured texts are the bytes that were captured: CR LF everywhere, and nothing converts them."""
    captures = sorted((root / "tests" / "corpus" / "captures").glob("*.sdp"))
    for path in captures:
        data = path.read_bytes()
        if data.count(b"\n") != data.count(b"\r\n") or b"\r\n" not in data:
            yield f"{path.name}: has a line that does not end in CR LF"
    if len(captures) < 30:
        yield f"{len(captures)} captured texts, at least 30 wanted"
    if not re.search(r"^\*\.sdp\s+-text$", read(root / ".gitattributes"), re.MULTILINE):
        yield ".gitattributes: '*.sdp -text' is missing"
    if captures and (root / ".git").exists() and shutil.which("git"):
        names = "".join(f"{path.relative_to(root)}\n" for path in captures)
        command = ["git", "-c", f"safe.directory={root}", "check-attr", "--stdin", "text"]
        asked = subprocess.run(command, cwd=root, input=names, capture_output=True, text=True, check=True)
        for line in asked.stdout.splitlines():
            if not line.endswith(": text: unset"):
                yield f"git would convert line ends: {line}"
    print(f"corpus: {len(captures)} captured texts")


# --- selfcheck ------------------------------------------------------------------------------------------


def expect(problems, wanted, action):
    found = list(problems)
    if not any(wanted in problem for problem in found):
        yield f"{action}: expected a problem with '{wanted}', found {found}"


def replaced(path, pattern, text):
    """Rewrites the first match in a file of the copy; a pattern that is not there is an error of its own."""
    changed, count = re.subn(pattern, text, read(path), count=1, flags=re.MULTILINE)
    if count != 1:
        raise RuntimeError(f"{path}: nothing matches {pattern}")
    path.write_text(changed, encoding="utf-8")


def copy_of(root, target):
    if target.exists():
        shutil.rmtree(target)
    for name in ("commonmedia", "tests"):
        shutil.copytree(root / name, target / name, ignore=shutil.ignore_patterns("captures", "golden"))
    return target


def ledger_selfcheck(root, target):
    key, cells = next(iter(ledger_rows(root)))
    place = re.search(r"\w+\.(?:cpp|h)\b", cells[3]).group()
    test = re.search(rf"\b{key}_\w+", cells[4]).group()

    copy = copy_of(root, target)
    yield from (f"untouched copy: {problem}" for problem in check_ledger(copy))

    source = next(path for path in component(copy) if path.name == place)
    source.write_text(read(source).replace(f"[{key}]", ""), encoding="utf-8")
    yield from expect(check_ledger(copy), f"{key}: {place} is named", "tag removed")

    copy = copy_of(root, target)
    replaced(copy / "commonmedia" / "DELIBERATE.md", rf"^\|\W*{key}\W*\|.*\n", "")
    yield from expect(check_ledger(copy), f"{key}: tagged in", "row removed")

    copy = copy_of(root, target)
    for path in files(copy / "tests", ".cpp"):
        path.write_text(read(path).replace(test, "Renamed"), encoding="utf-8")
    yield from expect(check_ledger(copy), f"{key}: there is no test {test}", "test renamed")


def shape_selfcheck(target):
    source = target / "commonmedia" / "src"
    shutil.rmtree(target)
    source.mkdir(parents=True)
    body = "    Work(); // } {\n" * 59
    (source / "SDPParseLong.cpp").write_text(
        f"#define OPEN {{\nnamespace {{\nint Long(int a) {{\n{body}}}\n}}\n" + "void F() { AddAudio(); }\n",
        encoding="utf-8",
    )
    yield from expect(check_shape(target), "SDPParseLong.cpp:3: Long has 61 lines", "long function")
    yield from expect(check_shape(target), "calls the writer AddAudio(", "mixed stages")
    yield from expect(check_heads(target), "opens with 0 lines", "no head")
    (target / "a.txt").write_text("as the " + "sp" + "ec says\n", encoding="utf-8")
    yield from expect(check_words(target), "a.txt:1", "forbidden word")


def check_selfcheck(root):
    """The checks above find what they are there to find."""
    with tempfile.TemporaryDirectory() as directory, contextlib.redirect_stdout(io.StringIO()):
        target = pathlib.Path(directory) / "copy"
        return [*ledger_selfcheck(root, target), *shape_selfcheck(target)]


CHECKS = {
    "ledger": check_ledger,
    "words": check_words,
    "shape": check_shape,
    "heads": check_heads,
    "readme": check_readme,
    "corpus": check_corpus,
    "selfcheck": check_selfcheck,
}


def main(arguments):
    root = pathlib.Path(__file__).resolve().parent.parent.parent
    if arguments[:1] == ["--root"]:
        root = pathlib.Path(arguments[1]).resolve()
        arguments = arguments[2:]
    names = list(CHECKS) if arguments == ["all"] else arguments
    if not names or any(name not in CHECKS for name in names):
        print(__doc__, file=sys.stderr)
        return 2
    failed = []
    for name in names:
        problems = list(CHECKS[name](root))
        for problem in problems:
            print(f"{name}: PROBLEM: {problem}")
        if problems:
            failed.append(name)
    print("house: " + (f"FAILED: {', '.join(failed)}" if failed else f"ok: {', '.join(names)}"))
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
