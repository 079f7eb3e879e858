"""C++ source as tokens and brackets: as much of the language as finding mutants takes."""

import bisect
import re
from dataclasses import dataclass, field

TOKEN = re.compile(
    r"""(?P<space>\s+)
      | (?P<comment>//[^\n]*|/\*.*?\*/)
      | (?P<directive>(?<![^\n])[ \t]*\#(?:\\\n|[^\n])*)
      | (?P<string>"(?:\\.|[^"\\])*")
      | (?P<character>'(?:\\.|[^'\\])')
      | (?P<number>\.?[0-9](?:'?[0-9A-Za-z_.]|(?<=[eE])[+-])*)
      | (?P<name>[A-Za-z_]\w*)
      | (?P<sign><=>|\.\.\.|->\*|<<=|->|::|<=|>=|==|!=|&&|\|\||\+\+|--|\+=|-=|\*=|/=|.)""",
    re.VERBOSE | re.DOTALL)

OPENING = {"(": ")", "[": "]", "{": "}"}


@dataclass
class Token:
    kind: str
    text: str
    start: int

    @property
    def end(self):
        return self.start + len(self.text)


@dataclass
class Bracket:
    """A pair of brackets with what lies between them. The whole file is one without brackets."""
    sign: str
    first: int  # token behind the opening one
    last: int = 0  # the closing token
    parts: list = field(default_factory=list)  # tokens of this depth that are no part of an inner pair


class Source:
    def __init__(self, text):
        self.text = text
        self.tokens = [Token(found.lastgroup, found.group(), found.start()) for found in TOKEN.finditer(text)
                       if found.lastgroup not in ("space", "comment", "directive")]
        self.brackets = self._pair_brackets()
        self.inside_static_assert = self._ranges_of("static_assert")
        self._lines = text.split("\n")
        self._line_starts = [0]
        for line in self._lines:
            self._line_starts.append(self._line_starts[-1] + len(line) + 1)
        self._seen = self._occurrences()

    def _pair_brackets(self):
        """All pairs, inner ones first, by the number of the opening token in `closing`."""
        self.closing = {}
        whole = Bracket("", 0)
        stack = [whole]
        done = []
        for number, token in enumerate(self.tokens):
            if token.kind == "sign" and token.text in OPENING:
                stack.append(Bracket(token.text, number + 1))
                continue
            if token.kind == "sign" and len(stack) > 1 and token.text == OPENING[stack[-1].sign]:
                inner = stack.pop()
                inner.last = number
                self.closing[inner.first - 1] = number
                done.append(inner)
                continue
            stack[-1].parts.append(number)
        whole.last = len(self.tokens)
        return done + [whole]

    def _ranges_of(self, name):
        return [(number, self.closing[number + 1]) for number, token in enumerate(self.tokens)
                if token.text == name and number + 1 in self.closing]

    def is_asserted(self, number):
        """Whether the token lies inside a static assertion."""
        return any(first <= number <= last for first, last in self.inside_static_assert)

    def _occurrences(self):
        counts = {}
        seen = []
        for line in self._lines:
            counts[line.strip()] = counts.get(line.strip(), 0) + 1
            seen.append(counts[line.strip()])
        return seen

    def place(self, start):
        """The line of a character, its text, which of the lines with that text it is, and the column in the text."""
        number = bisect.bisect_right(self._line_starts, start) - 1
        line = self._lines[number]
        indent = len(line) - len(line.lstrip())
        return number + 1, line.strip(), self._seen[number], start - self._line_starts[number] - indent + 1

    def is_spaced(self, number):
        """Whether the token has white space on both sides, as binary operators have, and brackets of templates do not."""
        token = self.tokens[number]
        return self.text[token.start - 1].isspace() and self.text[token.end:token.end + 1].isspace()

    def elements(self, bracket):
        """What the commas between two brackets part, as (first token, last token)."""
        first = bracket.first
        depth = 0  # of the brackets of templates
        parts = []
        number = bracket.first
        while number < bracket.last:
            token = self.tokens[number]
            if number in self.closing:
                number = self.closing[number]
            elif token.text == "<" and not self.is_spaced(number):
                depth += 1
            elif token.text == ">" and depth > 0 and not self.is_spaced(number):
                depth -= 1
            elif token.text == "," and depth == 0:
                parts.append((first, number - 1))
                first = number + 1
            number += 1
        if first < bracket.last:
            parts.append((first, bracket.last - 1))
        return parts

    def head(self, bracket):
        """The texts of the tokens between the statement before a brace and the brace."""
        number = bracket.first - 2
        words = []
        while number >= 0 and self.tokens[number].text not in (";", "{", "}"):
            words.append(self.tokens[number].text)
            number -= 1
        return words[::-1]

    def template_list(self, number):
        """The brackets of a template's arguments, whose `<` is a token, as a pair; none when they do not close."""
        depth = 0
        at = number
        while at < len(self.tokens):
            text = self.tokens[at].text
            if at in self.closing:
                at = self.closing[at]
            elif text == "<":
                depth += 1
            elif text == ">":
                depth -= 1
                if depth == 0:
                    return Bracket("<", number + 1, at)
            elif text == ";":
                return None
            at += 1
        return None
