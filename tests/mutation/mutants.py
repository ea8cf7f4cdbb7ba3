"""The mutations: one small mistake each.

A row of RULES is one kind of mistake; it yields (edits, kind) for every place of a file where it can be made.
An edit is (start, end, text) in bytes of the file. No edit touches a comment or a directive, and none changes
the number of lines.
"""
import re
from dataclasses import dataclass

from tokens import CLOSE, OPEN, Source

RELATIONS = {
    "<": ("<=", ">="),
    ">": (">=", "<="),
    "<=": ("<", ">"),
    ">=": (">", "<"),
    "==": ("!=",),
    "!=": ("==",),
}
ARITHMETIC = {
    "+": ("-",),
    "-": ("+",),
    "*": ("/",),
    "/": ("*",),
    "%": ("/",),
    "&": ("|",),
    "|": ("&",),
    "^": ("|",),
    "<<": (">>",),
    ">>": ("<<",),
    "+=": ("-=", "="),
    "-=": ("+=", "="),
    "*=": ("/=",),
    "/=": ("*=",),
    "|=": ("&=",),
    "&=": ("|=",),
}
LOGIC = {"&&": ("||",), "||": ("&&",)}
STEPS = {"++": ("--",), "--": ("++",)}
FAMILIES = [
    ["MEDIA_VIDEO", "MEDIA_AUDIO", "MEDIA_APPLICATION", "MEDIA_UNKNOWN"],
    ["VIDEOTYPE_MAIN", "VIDEOTYPE_PRESO", "VIDEOTYPE_UNKNOWN"],
    [
        "PAYLOAD_G711U",
        "PAYLOAD_H264",
        "PAYLOAD_G729",
        "PAYLOAD_G7221",
        "PAYLOAD_H264_PACKETIZATION_0",
        "PAYLOAD_G722",
        "PAYLOAD_UNKNOWN",
    ],
    ["SRTP_AUDIO", "SRTP_VIDEO", "SRTP_VIDEO_PRESO", "SRTP_MAX"],
    [
        "CRYPTO_NONE",
        "CRYPTO_AES_CM_128_HMAC_SHA1_32",
        "CRYPTO_AES_CM_128_HMAC_SHA1_80",
        "CRYPTO_AES_CM_256_HMAC_SHA1_80",
        "CRYPTO_AEAD_AES_GCM_128",
        "CRYPTO_AEAD_AES_GCM_256",
    ],
]
NO_STATEMENT = set(
    "if else for while do switch case default return break continue throw try catch struct class union enum "
    "namespace using typedef template static_assert public private protected constexpr static friend goto".split()
)


@dataclass(frozen=True)
class Mutant:
    file: str  # below the repository's root
    kind: str
    line: int
    edits: tuple
    before: str  # the lines that change, white space folded
    after: str

    def apply(self, text):
        for start, end, new in sorted(self.edits, reverse=True):
            text = text[:start] + new + text[end:]
        return text


def replace(token, text):
    return ((token.start, token.end, text),)


def operators(source):
    for token in source.tokens:
        if token.kind != "op" or token.skip or not source.is_binary(token):
            continue
        for kind, table in (("relation", RELATIONS), ("arithmetic", ARITHMETIC), ("logic", LOGIC)):
            if token.text == "<<" and is_stream(source, token):
                continue
            for new in table.get(token.text, ()):
                yield replace(token, new), kind


def is_stream(source, token):
    """Whether a "<<" writes, that is, whether its statement begins with the writer."""
    at = token.index
    while at > 0 and source.tokens[at - 1].text not in (";", "{", "}"):
        at -= 1
    return source.tokens[at].text == "sdp" and source.tokens[at + 1].text == "<<"


def prefixes(source):
    for token in source.tokens:
        if token.kind != "op" or token.skip:
            continue
        before = source.tokens[token.index - 1] if token.index else None
        for new in STEPS.get(token.text, ()):
            yield replace(token, new), "step"
        after_operator = before is not None and (
            (before.kind == "op" and before.text not in (")", "]", "}", ";")) or before.text == "return"
        )
        if token.text == "!" or (token.text in ("-", "~") and after_operator and not source.is_binary(token)):
            yield replace(token, ""), "prefix"


def literals(source):
    for token in source.tokens:
        if token.skip:
            continue
        if token.kind == "number":
            for new in numbers(token.text):
                yield replace(token, new), "constant"
        elif token.kind == "char":
            for new in characters(token.text):
                yield replace(token, new), "character"
        elif token.kind == "string":
            for new in strings(token.text):
                yield replace(token, new), "string"
        elif token.text in ("true", "false"):
            yield replace(token, "false" if token.text == "true" else "true"), "boolean"
        elif token.kind == "name":
            for family in FAMILIES:
                if token.text in family:
                    yield replace(token, family[(family.index(token.text) + 1) % len(family)]), "enumerator"


def numbers(text):
    match = re.fullmatch(r"(0[xX][\da-fA-F']+|\d[\d']*)([uUlLzZ]*)", text)
    if not match:
        return
    digits, suffix = match.group(1).replace("'", ""), match.group(2)
    base = 16 if digits[:2].lower() == "0x" else 10
    value = int(digits, base)
    for new in dict.fromkeys((value + 1, value - 1, 0)):
        if new >= 0 and new != value:
            yield (hex(new) if base == 16 else str(new)) + suffix


def units(text):
    """The characters of a literal; an escape sequence is one of them."""
    return re.findall(r"\\(?:x[\da-fA-F]+|[0-7]{1,3}|.)|.", text, re.DOTALL)


def characters(text):
    inside = text[1:-1]
    value = ord(inside.encode().decode("unicode_escape"))
    for new in (value + 1, value - 1):
        if 0 <= new < 128:
            yield "'" + (chr(new) if 32 <= new < 127 and chr(new) not in "'\\" else f"\\{new:o}") + "'"


def strings(text):
    inside = units(text[1:-1])
    if not inside:
        yield '"x"'
        return
    yield '""'
    if len(inside) > 1:
        yield '"' + "".join(inside[:-1]) + '"'
    for at, unit in enumerate(inside):
        if unit.isalnum() and (at == 0 or inside[at - 1] != "%"):
            yield '"' + "".join(inside[:at]) + ("Q" if unit != "Q" else "q") + "".join(inside[at + 1 :]) + '"'
            break


def statements(source):
    tokens = source.tokens
    for token in tokens:
        if token.text != "{" or token.scope != "code":
            continue
        at = token.index + 1
        while at < token.partner:
            at = yield from statement(source, at)


def statement(source, at):
    """Yields the mutants of the statement at offset `at`; returns the offset of the next statement."""
    tokens = source.tokens
    first = tokens[at]
    if first.text == "{":
        return first.partner + 1
    if first.text in ("if", "while", "for", "switch", "catch"):
        opened = at + 1 if tokens[at + 1].text == "(" else at + 2  # if constexpr
        return tokens[opened].partner + 1
    if first.text in ("else", "do", "try", ";", "}"):
        return at + 1
    end = source.end_of_operand(at, (";",))
    if end >= len(tokens) or tokens[end].text != ";":
        return end + 1
    if first.text in ("break", "continue", "throw") or (first.text == "return" and end == at + 1):
        yield ((first.start, tokens[end].end, source.blank(at, end - 1) + ";"),), "jump"
    elif first.text == "return":
        if tokens[at + 1].text not in ("true", "false", "{"):
            yield ((tokens[at + 1].start, tokens[end - 1].end, "{}" + source.blank(at + 1, end - 1)),), "result"
    elif first.text not in NO_STATEMENT and not any(token.skip for token in tokens[at:end]):
        yield ((first.start, tokens[end].end, source.blank(at, end - 1) + ";"),), "dropped statement"
    return end + 1


def conditions(source):
    tokens = source.tokens
    for token in tokens:
        if token.skip:
            continue
        if token.text in ("if", "while") and tokens[token.index + 1].text == "(":
            opened = tokens[token.index + 1]
            yield from condition(source, opened.index + 1, opened.partner - 1)
        elif token.text == "for":
            opened = tokens[token.index + 1]
            first = source.end_of_operand(opened.index + 1, (";",))
            if tokens[first].text == ";":
                second = source.end_of_operand(first + 1, (";",))
                yield from condition(source, first + 1, second - 1)
                if second + 1 < opened.partner:
                    last = opened.partner - 1
                    left = source.blank(second + 1, last)
                    yield ((tokens[second + 1].start, tokens[last].end, left),), "dropped step"
        elif token.text == "?":
            yield from ternary(source, token)
        elif token.text in LOGIC and source.is_binary(token):
            end = source.end_of_operand(token.index + 1, (";", ",", "?", ":", "&&", "||")) - 1
            left = source.blank(token.index, end)
            yield ((token.start, tokens[end].end, left),), "dropped operand"


def condition(source, first, last):
    start, end = source.tokens[first].start, source.tokens[last].end
    yield ((start, start, "!("), (end, end, ")")), "negated condition"
    for new in ("true", "false"):
        yield ((start, end, new + source.blank(first, last)),), "constant condition"


def ternary(source, token):
    tokens = source.tokens
    colon = source.end_of_operand(token.index + 1, (":",))
    if tokens[colon].text != ":":
        return
    end = source.end_of_operand(colon + 1, (";", ","))
    first = (tokens[token.index + 1].start, tokens[colon - 1].end)
    second = (tokens[colon + 1].start, tokens[end - 1].end)
    if source.text[slice(*first)] != source.text[slice(*second)]:
        yield (
            (*first, source.text[slice(*second)]),
            (*second, source.text[slice(*first)]),
        ), "swapped arms"


def pieces(source):
    """Removes one "<< value" of a statement that writes."""
    tokens = source.tokens
    for token in tokens:
        if token.text == "<<" and not token.skip and is_stream(source, token):
            end = source.end_of_operand(token.index + 1, (";", "<<")) - 1
            yield ((token.start, tokens[end].end, source.blank(token.index, end)),), "dropped piece"


def tables(source):
    tokens = source.tokens
    for token in tokens:
        if token.text != "{" or token.scope != "list" or token.skip:
            continue
        elements = list_elements(source, token)
        for (a, b), (c, d) in zip(elements, elements[1:]):
            one, two = source.span(a, b), source.span(c, d)
            if one != two:
                kind = "swapped rows" if tokens[a].text == "{" else "swapped columns"
                yield ((tokens[a].start, tokens[b].end, two), (tokens[c].start, tokens[d].end, one)), kind
        for a, b in elements:
            if tokens[a].text == "{" and tokens[b + 1].text == ",":
                yield ((tokens[a].start, tokens[b + 1].end, source.blank(a, b + 1)),), "dropped row"


def list_elements(source, opened):
    elements = []
    at = opened.index + 1
    while at < opened.partner:
        end = source.end_of_operand(at, (",",))
        elements.append((at, end - 1))
        at = end + 1
    return elements


RULES = (operators, prefixes, literals, statements, conditions, pieces, tables)


def folded(text):
    return " ".join(text.split())


def find(path, text):
    """Every mutant of one file, in the order of their offsets."""
    source = Source(text)
    seen = {text}
    found = []
    for rule in RULES:
        for edits, kind in rule(source):
            start = min(edit[0] for edit in edits)
            end = max(edit[1] for edit in edits)
            first = text.rfind("\n", 0, start) + 1
            last = text.find("\n", end)
            last = len(text) if last < 0 else last
            mutant = Mutant(path, kind, source.line(start), tuple(edits), "", "")
            changed = mutant.apply(text)
            if changed in seen:
                continue
            seen.add(changed)
            if changed.count("\n") != text.count("\n") or Source(changed).comments != source.comments:
                raise ValueError(f"{path}:{mutant.line}: {kind} touches a comment or the lines")
            grown = len(changed) - len(text)
            found.append(
                Mutant(path, kind, mutant.line, mutant.edits, folded(text[first:last]), folded(changed[first : last + grown]))
            )
    return sorted(found, key=lambda mutant: (mutant.edits[0][0], mutant.kind, mutant.after))
