#!/usr/bin/env python3
"""Checks the rules of this repository that no compiler knows.

    check.py [--root DIR] NAME...     NAME: ledger shape names includes heads readme corpus keywords figures
                                      selfcheck, or all

Prints what it found, one problem per line, and ends with status 1 when there was any.
"""
import contextlib
import io
import os
import pathlib
import re
import shutil
import statistics
import subprocess
import sys
import tempfile

sys.dont_write_bytecode = True
import figures  # noqa: E402

ID = r"[MPXBG]\d\d"
MAX_FUNCTION = 60
MAX_MEDIAN = 15
MAX_SOURCE = 300
MAX_ELSE_IF = 3
MAX_README = 150
HEAD_LINES = range(5, 11)
MAX_KEYWORDS = 8
# The judge is an independent model. The table of SDPSections.cpp says what a line means by its start, names
# the component's row beside it, and asks RowOf whether the component takes the line for that. SDPShape.cpp
# rewrites lines of our own text.
MODELS = ("negotiation/src/SDPJudge", "negotiation/src/SDPSections.cpp", "negotiation/src/SDPShape.cpp")
LEADS = ["What happens", "What a reader would expect", "Why, and the risk"]


def read(path):
    return path.read_text(encoding="utf-8", errors="replace")


def files(root, *suffixes):
    """Every file of the tree but what is generated or not ours to word."""
    for folder, below, names in os.walk(root):
        skipped = {"__pycache__"} | ({".git", "build"} if pathlib.Path(folder) == root else set())
        below[:] = sorted(set(below) - skipped)
        for name in sorted(names):
            if not suffixes or pathlib.Path(name).suffix in suffixes:
                yield pathlib.Path(folder, name)


def component(root):
    for path in files(root / "commonmedia" / "include", ".h"):
        if path.parent.name == "include":
            yield path
    yield from files(root / "commonmedia" / "src", ".h", ".cpp")


# --- ledger ---------------------------------------------------------------------------------------------


def ledger_sections(root):
    """(ID, title, lines) of each section of the ledger whose heading begins with an ID."""
    section = None
    for line in read(root / "commonmedia" / "DELIBERATE.md").splitlines():
        if line.startswith("#"):
            if section:
                yield section
            heading = re.fullmatch(rf"### ({ID})\b *(.*)", line)
            section = (heading.group(1), heading.group(2), []) if heading else None
        elif section:
            section[2].append(line)
    if section:
        yield section


def tags(root):
    """ID -> one source name for each comment that begins with the ID in square brackets."""
    places = {}
    for path in files(root / "commonmedia" / "src", ".h", ".cpp"):
        for found in re.findall(rf"//[/<]* *\[({ID})\] ", read(path)):
            places.setdefault(found, []).append(path.name)
    return places


def document_tests(root):
    """(name, reason) of each section of a document: its heading "=== Suite.Name", and the line after it."""
    for path in files(root / "tests", ".cases"):
        yield from re.findall(r"^=== \w+\.(\w+)\n(.*)$", read(path), re.MULTILINE)


def test_names(root):
    names = [name for name, _ in document_tests(root)]
    for path in files(root / "tests", ".cpp"):
        names.extend(re.findall(r"\bTEST(?:_F|_P)?\(\s*\w+,\s*(\w+)\s*\)", read(path)))
    return names


def section_problems(key, title, lines):
    """A section has a title, an example line and its three paragraphs."""
    if not title:
        yield f"{key}: the heading has no title"
    if not any(re.match(r" {4}\S", line) for line in lines):
        yield f"{key}: the section has no example line, indented by four blanks"
    starts = [lead for line in lines for lead in LEADS if line.startswith(f"**{lead}.** ")]
    if starts != LEADS:
        yield f"{key}: the section has the paragraphs {starts}, wanted are {LEADS}"


def check_ledger(root):
    """Each deliberate behaviour has one section in the ledger, one tag at the code and one test of its name."""
    places = tags(root)
    tested = [name[:3] for name in test_names(root) if re.match(rf"{ID}_", name)]
    reasons = {name[:3]: reason for name, reason in document_tests(root) if re.match(rf"{ID}_", name)}
    listed = []
    for key, title, lines in ledger_sections(root):
        listed.append(key)
        if reasons.get(key, f"{title}.") != f"{title}.":
            yield f"{key}: its document says '{reasons[key]}', its section is called '{title}'"
        yield from section_problems(key, title, lines)
    if listed != sorted(set(listed), key=lambda key: ("MPXBG".index(key[0]), key)):
        yield "the sections of the ledger are not in order, or one is there twice"
    for key in sorted({*listed, *places, *tested}):
        if key not in listed:
            yield f"{key}: has no section in commonmedia/DELIBERATE.md"
        if len(places.get(key, [])) != 1:
            yield f"{key}: needs one tag in commonmedia/src, found {places.get(key, [])}"
        if tested.count(key) != 1:
            yield f"{key}: needs one test whose name begins with {key}_, found {tested.count(key)}"
    if not listed:
        yield "the ledger has no sections"
    print(f"ledger: {len(listed)} sections, {len(places)} tags, {len(set(tested))} tests")


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


# --- names ----------------------------------------------------------------------------------------------

TYPE_LETTERS = re.compile(r"\b(?:m_|g_)?(?:f|str|i|e|b|vec|list|buf)[A-Z]\w*")
OURS = ("commonmedia/src", "negotiation", "explain", "tools", "examples", "tests", "fuzz", "bench")
SHARED_NAMES = {"strName"}  # the member that the tables of names share (SDPKeyword.h)


def type_lettered(path):
    """The identifiers of a file that begin with type letters, such as fUsable or strText."""
    return set(TYPE_LETTERS.findall(blank_out(read(path))))


def check_names(root):
    """Only names that the public headers give have type letters; clang-tidy checks the case of all others."""
    given = set(SHARED_NAMES)
    for path in files(root / "commonmedia" / "include", ".h"):
        given |= type_lettered(path)
    count = 0
    for directory in OURS:
        for path in files(root / directory, ".h", ".cpp"):
            count += 1
            for name in sorted(type_lettered(path) - given):
                yield f"{path.relative_to(root)}: {name} has type letters, and no public header gives the name"
    print(f"names: {count} files, {len(given)} given names")


# --- includes -------------------------------------------------------------------------------------------


def check_includes(root):
    """Every public header can be included as <commonmedia/NAME> too, by a header of one line."""
    count = 0
    for include in sorted(root.glob("*/include")):
        names = {path.name for path in include.glob("*.h")}
        lines = {path.name: read(path) for path in (include / "commonmedia").glob("*.h")}
        count += len(names)
        for name in sorted(names | set(lines)):
            if lines.get(name) != f'#include "../{name}"\n' or name not in names:
                yield f"{include.parent.name}/include/commonmedia/{name}: wanted is the one line that includes ../{name}"
    print(f"includes: {count} public headers")


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
    named = 0
    for directory in ("commonmedia", "negotiation", "explain", "tools", "examples", "fuzz", "bench"):
        for path in files(root / directory, ".cpp", ".h"):
            for test in re.findall(r"^// Tests?: (.*)$", read(path), re.MULTILINE):
                for name in re.findall(r"tests/[\w/.-]*\w", test):
                    named += 1
                    if not (root / name).exists():
                        yield f"{path.relative_to(root)}: {name} does not exist"
    print(f"heads: {count} sources, {named} tests named")


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


# --- keywords -------------------------------------------------------------------------------------------


def check_keywords(root):
    """The keywords that choose a line's handler are listed once, in SDPLines.h; everybody else asks it."""
    table = read(root / "commonmedia" / "src" / "SDPLines.h")
    keywords = re.findall(r'^    \{"[^"]*", "([^"]+)", SDPRow::\w+\},$', table, re.MULTILINE)
    if len(keywords) != 13:
        yield f"commonmedia/src/SDPLines.h: {len(keywords)} rows with a keyword, wanted are 13"
    count = 0
    for path in files(root, ".h", ".cpp", ".py"):
        name = path.relative_to(root).as_posix()
        if not name.startswith(("tools/", "negotiation/", "explain/", "fuzz/")) or name.startswith(MODELS):
            continue
        count += 1
        code = re.sub(r"//.*", "", read(path))
        literals = {literal.rstrip(":") for literal in re.findall(r'"((?:[^"\\\n]|\\.)*)"', code)}
        listed = sum(keyword.rstrip(":") in literals for keyword in keywords)
        if listed > MAX_KEYWORDS:
            yield f"{name}: lists {listed} of the 13 keywords of lines; ask sdp::RowOf and sdp::kLineRows"
    print(f"keywords: {count} files that ask for them")


# --- figures --------------------------------------------------------------------------------------------


def check_figures(root):
    """A page quotes a measured figure as `<!-- figure NAME -->VALUE<!-- end -->`; the value is the last measured one."""
    values = figures.recorded(root)
    count = 0
    for path in files(root, ".md"):
        words = re.sub(r"`[^`]*`", "", read(path))  # code shows how to quote
        for name, quoted in re.findall(r"<!-- figure (\S+) -->(.*?)<!-- end -->", words):
            count += 1
            if quoted != values.get(name):
                measured = values.get(name, "never measured")
                yield f"{path.relative_to(root)}: quotes {name} as {quoted}; docs/figures/nightly.md says {measured}"
    print(f"figures: {len(values)} measured, {count} quoted")


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
    """Damages a copy of the ledger, the code and the tests in one way at a time."""
    key = next(ledger_sections(root))[0]
    test = next(name for name in test_names(root) if name.startswith(f"{key}_"))
    place = tags(root)[key][0]
    ledger = pathlib.Path("commonmedia", "DELIBERATE.md")
    source = pathlib.Path("commonmedia", "src", place)
    tag = rf"\[{key}\] "
    damages = [
        ("tag removed", source, tag, "", f"{key}: needs one tag"),
        ("tag twice", source, tag, f"[{key}] \n// [{key}] ", f"{key}: needs one tag"),
        ("heading removed", ledger, rf"^### {key} .*\n", "", f"{key}: has no section"),
        ("title removed", ledger, rf"^### {key} .*", f"### {key}", f"{key}: the heading has no title"),
        ("example removed", ledger, rf"(^### {key} .*\n\n)(    .*\n)+", r"\1", f"{key}: the section has no example"),
        ("paragraph removed", ledger, r"^\*\*What happens\.\*\* ", "", f"{key}: the section has the paragraphs"),
        ("order changed", ledger, rf"^### {key} ", "### M99 ", "not in order"),
    ]
    copy = copy_of(root, target)
    yield from (f"untouched copy: {problem}" for problem in check_ledger(copy))
    for action, path, pattern, text, wanted in damages:
        copy = copy_of(root, target)
        replaced(copy / path, pattern, text)
        yield from expect(check_ledger(copy), wanted, action)

    copy = copy_of(root, target)
    for path in files(copy / "tests", ".cpp"):
        path.write_text(read(path).replace(test, "Renamed"), encoding="utf-8")
    yield from expect(check_ledger(copy), f"{key}: needs one test", "test renamed")

    heading, reason = next((name, reason) for name, reason in document_tests(root) if re.match(rf"{ID}_", name))
    document = next(path for path in files(root / "tests", ".cases") if heading in read(path)).relative_to(root)
    copy = copy_of(root, target)
    replaced(copy / document, heading, "Renamed")
    yield from expect(check_ledger(copy), f"{heading[:3]}: needs one test", "section of a document renamed")
    copy = copy_of(root, target)
    replaced(copy / document, re.escape(reason), "Another reason.")
    yield from expect(check_ledger(copy), f"{heading[:3]}: its document says", "reason of a section changed")


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
    (source / "SDPNames.cpp").write_text("bool fUsable = iPort;\n", encoding="utf-8")
    (target / "commonmedia" / "include").mkdir()
    (target / "commonmedia" / "include" / "SDP.h").write_text("int iPort;\n", encoding="utf-8")
    yield from expect(check_names(target), "fUsable has type letters", "type letters")


def keywords_selfcheck(root, target):
    copy = copy_of(root, target)
    rows = re.findall(r'^    \{"[^"]*", "([^"]+)", SDPRow', read(copy / "commonmedia" / "src" / "SDPLines.h"), re.MULTILINE)
    second = copy / "fuzz" / "Second.cpp"
    second.parent.mkdir()
    second.write_text("".join(f'    "{keyword}",\n' for keyword in rows), encoding="utf-8")
    yield from expect(check_keywords(copy), "fuzz/Second.cpp: lists 13 of the 13", "second list")
    second.write_text(f'bool Is() {{ return Has("{rows[0]}"); }}\n', encoding="utf-8")
    yield from (f"one keyword: {problem}" for problem in check_keywords(copy))


def figures_selfcheck(target):
    shutil.rmtree(target)
    (target / "docs" / "figures").mkdir(parents=True)
    (target / "docs" / "figures" / "nightly.md").write_text(
        "| figure | value | limit | counted |\n|---|--:|--:|---|\n| `a.b` | 98.5 | >= 98 | branches |\n",
        encoding="utf-8")
    page = target / "docs" / "page.md"
    page.write_text("<!-- figure a.b -->98.5<!-- end --> %, as in `<!-- figure c -->1<!-- end -->`\n", encoding="utf-8")
    yield from (f"true quote: {problem}" for problem in check_figures(target))
    page.write_text("<!-- figure a.b -->98.6<!-- end --> %\n", encoding="utf-8")
    yield from expect(check_figures(target), "quotes a.b as 98.6", "another value")


def check_selfcheck(root):
    """The checks above find what they are there to find."""
    with tempfile.TemporaryDirectory() as directory, contextlib.redirect_stdout(io.StringIO()):
        target = pathlib.Path(directory) / "copy"
        return [*ledger_selfcheck(root, target), *keywords_selfcheck(root, target), *shape_selfcheck(target),
                *figures_selfcheck(target)]


CHECKS = {
    "ledger": check_ledger,
    "shape": check_shape,
    "names": check_names,
    "includes": check_includes,
    "heads": check_heads,
    "readme": check_readme,
    "corpus": check_corpus,
    "keywords": check_keywords,
    "figures": check_figures,
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
