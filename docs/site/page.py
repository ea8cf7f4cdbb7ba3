#!/usr/bin/env python3
"""A page as Doxygen reads it: every heading gets a name that is unique on the site, and links lead to pages and
headings of the site. A link to a file that is no page of it becomes the file's name."""
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]
PAGES = [*ROOT.glob("*.md"), *ROOT.glob("docs/*.md"), *ROOT.glob("docs/figures/*.md"), ROOT / "commonmedia" / "DELIBERATE.md"]
PUBLIC = {path.name for folder in ("commonmedia", "negotiation", "explain")
          for path in (ROOT / folder / "include").glob("*.h")}


def slug(heading):
    """The anchor that a heading has where Markdown is shown, without the marks of code and links."""
    plain = re.sub(r"\[([^\]]*)\]\([^)]*\)", r"\1", heading)
    return re.sub(r" ", "-", re.sub(r"[^\w\- ]", "", plain.lower()).strip())


def page_name(path):
    return "page-" + path.stem.lower()


def anchor(path, name):
    return f"{page_name(path)}-{name}" if name else page_name(path)


def link(page, match):
    words, target = match.groups()
    if re.match(r"[a-z]+:", target):
        return match.group(0)
    name, _, heading = target.partition("#")
    path = (page.parent / name).resolve() if name else page
    if path in PAGES:
        return f"[{words}](@ref {anchor(path, heading)})"
    if path.name in PUBLIC:
        return f"[{words}](@ref {path.name})"
    if not path.exists():
        sys.exit(f"{page}: {target} does not exist")
    return f"{words} (`{path.relative_to(ROOT)}`)"


# scripts/docs puts every picture beside the pages.
PICTURE_OF = r'@htmlonly<img src="\2" alt="\1" style="max-width: 100%">@endhtmlonly'
# The front page opens with the data flow.
PICTURE = '@htmlonly<img src="flow.svg" alt="data flow from texts to the media engine and back">@endhtmlonly\n'


def convert(page):
    out = []
    in_code = False
    is_first = True
    for line in page.read_text(encoding="utf-8").split("\n"):
        if line.startswith("```"):
            in_code = not in_code
        elif not in_code and not line.startswith("    "):
            heading = re.match(r"(#+) (.*)$", line)
            if heading:
                name = "" if is_first else slug(heading.group(2))
                is_first = False
                words = re.sub(r"\[([^\]]*)\]\([^)]*\)", r"\1", heading.group(2))
                line = f"{heading.group(1)} {words} {{#{anchor(page, name)}}}"
                if not name and page == ROOT / "README.md":
                    line += "\n\n" + PICTURE
            else:
                line = re.sub(r"(?<!!)\[([^\]]*)\]\(([^)\s]+)\)", lambda match: link(page, match), line)
                line = re.sub(r"!\[([^\]]*)\]\((?:[^)\s]*/)?([^)\s/]+)\)", PICTURE_OF, line)
        out.append(line)
    return "\n".join(out)


sys.stdout.write(convert(pathlib.Path(sys.argv[1]).resolve()))
