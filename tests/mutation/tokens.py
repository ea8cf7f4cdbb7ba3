"""Splits C++ into tokens and says which of them a mutation may change.

Not a parser: it relies on the layout that clang-format gives every file here. A binary operator has white
space on both sides; a pointer, a reference and a template bracket have not.
"""
import re
from dataclasses import dataclass

TOKEN = re.compile(
    r"""
    (?P<comment>//[^\n]*|/\*.*?\*/)
  | (?P<directive>^[ \t]*\#(?:\\\n|[^\n])*)
  | (?P<string>(?:u8|[uUL])?"(?:\\.|[^"\\\n])*")
  | (?P<char>(?:u8|[uUL])?'(?:\\.|[^'\\\n])+')
  | (?P<number>\.?\d(?:[eEpP][+-]|'?[\w.])*)
  | (?P<name>[A-Za-z_]\w*)
  | (?P<op><<=|>>=|\.\.\.|->\*|<=>|\#\#|::|->|\+\+|--|<<|>>|<=|>=|==|!=|&&|\|\||[-+*/%&|^]=|[^\s\w])
    """,
    re.VERBOSE | re.DOTALL | re.MULTILINE,
)

OPEN = {"(": ")", "[": "]", "{": "}"}
CLOSE = {close: open_ for open_, close in OPEN.items()}


@dataclass
class Token:
    kind: str
    text: str
    start: int
    end: int
    index: int = -1
    partner: int = -1  # index of the bracket that closes or opens this one
    scope: str = ""  # of "{": code, list or type
    skip: bool = False  # no change may touch it


class Source:
    """One file: its text, its tokens without comments and directives, its pairs of brackets."""

    def __init__(self, text):
        self.text = text
        self.comments = []
        self.tokens = []
        for match in TOKEN.finditer(text):
            kind = match.lastgroup
            if kind in ("comment", "directive"):
                self.comments.append(match.group())
            else:
                token = Token(kind, match.group(), match.start(), match.end(), len(self.tokens))
                self.tokens.append(token)
        self._pair()
        self._mark_skipped()

    def _pair(self):
        stack = []
        for token in self.tokens:
            if token.kind != "op":
                continue
            if token.text in OPEN:
                if token.text == "{":
                    token.scope = self._scope(token, stack)
                stack.append(token)
            elif token.text in CLOSE:
                opened = stack.pop()
                if opened.text != CLOSE[token.text]:
                    raise ValueError(f"brackets do not match at byte {token.start}")
                opened.partner = token.index
                token.partner = opened.index
        if stack:
            raise ValueError(f"bracket at byte {stack[-1].start} is not closed")

    def _scope(self, token, stack):
        """What a "{" opens, decided by the tokens before it."""
        if token.index == 0:
            return "code"
        before = self.tokens[token.index - 1]
        if before.text in (")", "const", "noexcept", "else", "do", "try"):
            return "code"
        inside = next((opened.scope for opened in reversed(stack) if opened.text == "{"), "type")
        if before.text in (";", "{", "}"):
            return "list" if inside == "list" else "code"
        for earlier in reversed(self.tokens[: token.index]):
            if earlier.text in ("struct", "class", "namespace", "enum", "union"):
                return "type"
            if earlier.text in (";", "{", "}", ")", "=", ","):
                break
        return "list"

    def _mark_skipped(self):
        """Types and specifiers: a change there has no effect or does not compile."""
        tokens = self.tokens
        at = 0
        while at < len(tokens):
            token = tokens[at]
            last = at
            if token.text in ("static_assert", "__attribute__", "alignas", "decltype", "sizeof"):
                if at + 1 < len(tokens) and tokens[at + 1].text == "(" and token.text != "sizeof":
                    last = tokens[at + 1].partner
            elif token.text == "[" and at + 1 < len(tokens) and tokens[at + 1].text == "[":
                last = token.partner
            elif token.text == "template":
                last = self._angle_end(at + 1)
            elif token.text in ("using", "typedef"):
                last = self._next(at, ";")
            elif token.text in ("default", "delete") and tokens[at - 1].text == "=":
                last = at
                tokens[at - 1].skip = True
            else:
                at += 1
                continue
            for skipped in tokens[at : last + 1]:
                skipped.skip = True
            at = last + 1

    def _angle_end(self, at):
        depth = 0
        while at < len(self.tokens):
            text = self.tokens[at].text
            depth += {"<": 1, ">": -1, ">>": -2}.get(text, 0)
            if depth <= 0:
                return at
            at += 1
        return at - 1

    def _next(self, at, text):
        while self.tokens[at].text != text:
            at += 1
        return at

    def line(self, offset):
        return self.text.count("\n", 0, offset) + 1

    def is_binary(self, token):
        """White space on both sides, and an operand before it."""
        if token.index == 0 or token.end >= len(self.text):
            return False
        before = self.tokens[token.index - 1]
        return (
            self.text[token.start - 1].isspace()
            and self.text[token.end].isspace()
            and (before.kind in ("name", "number", "string", "char") or before.text in (")", "]", "}"))
            and before.text not in ("return", "operator")
        )

    def end_of_operand(self, at, stops):
        """Index of the first token at or after `at`, at the same depth, whose text is one of `stops`."""
        while at < len(self.tokens):
            token = self.tokens[at]
            if token.text in stops or token.text in CLOSE:
                return at
            at = token.partner + 1 if token.text in OPEN else at + 1
        return at

    def blank(self, first, last):
        """The white space and comments that remain when the tokens first to last are removed."""
        left = ""
        position = self.tokens[first].start
        for token in self.tokens[first : last + 1]:
            left += self.text[position : token.start]
            position = token.end
        return left

    def span(self, first, last):
        return self.text[self.tokens[first].start : self.tokens[last].end]
