"""Finds the mutants of a source file: programs that differ from it in one row, constant, comparison or statement."""

import re
from dataclasses import dataclass

from source import Source

OTHER_COMPARISON = {"<": "<=", "<=": "<", ">": ">=", ">=": ">", "==": "!=", "!=": "=="}
OTHER_LOGIC = {"&&": "||", "||": "&&"}
OTHER_BOOLEAN = {"true": "false", "false": "true"}
OTHER_ARITHMETIC = {"+": "-", "-": "+", "+=": "-=", "-=": "+=", "++": "--", "--": "++"}

LAYOUT = re.compile(r'"\([0-9IFAEXifaex.,]+\)"')
INTEGER = re.compile(r"(0[xX][0-9A-Fa-f']+|[0-9][0-9']*)([uUlLzZ]*)")
FLOAT = re.compile(r"([0-9']*\.?[0-9']*(?:[eE][+-]?[0-9]+)?)([fFlL]?)")

# What a statement that can be dropped does not start with: declarations and what steers.
KEYWORDS = {"return", "if", "for", "while", "do", "switch", "case", "default", "else", "const", "constexpr", "auto", "static",
            "using", "struct", "class", "enum", "union", "template", "namespace", "public", "private", "protected", "throw",
            "inline", "friend", "extern", "explicit", "virtual", "typedef", "goto", "operator", "static_assert", "try", "catch"}
# What makes an item of a record out of a member.
ITEMS = {"field", "bounded_field", "unused_text", "member"}
# Their rows are found by their number: in another order they are the same table.
FOUND_BY_NUMBER = ("legacy/constant_translation.h", "legacy/time_function_translation.h")


@dataclass(frozen=True)
class Mutant:
    file: str  # relative to the folder of the library
    kind: str
    table: str  # the table, list or layout that it belongs to; empty for others
    line: int
    identity: str  # the same as long as the line's text stays
    start: int
    end: int
    text: str  # in the place of what stands there

    def applied(self, source):
        return source[:self.start] + self.text + source[self.end:]


def other_integer(text):
    digits, suffix = INTEGER.fullmatch(text).groups()
    value = int(digits.replace("'", ""), 0) if not re.fullmatch("0[0-7]+", digits) else int(digits, 8)
    other = {0: 1, 1: 0}.get(value, value + 1)
    return (hex(other) if digits[:2].lower() == "0x" else str(other)) + suffix


def other_float(text):
    """Its first digit that counts is one more; a 9 is an 8, and a zero is a one."""
    mantissa_end = re.search(r"[eEfFlL]|$", text).start()
    found = re.search("[1-9]", text[:mantissa_end]) or re.search("0", text)
    digit = int(found.group())
    return text[:found.start()] + str(digit + 1 if digit < 9 else 8) + text[found.start() + 1:]


class Finder:
    """All mutants of one file."""

    def __init__(self, name, text):
        self.name = name
        self.source = Source(text)
        self.tokens = self.source.tokens
        self.closing = self.source.closing
        self.mutants = []
        self.tables = []  # (first token, last token, name), inner ones first
        self._lists()
        self._template_lists()
        self._neighbouring_commands()
        for number, token in enumerate(self.tokens):
            self._token(number, token)
        self._conditions()
        self._statements()

    def add(self, kind, first, last, text, change, table=None, start=None, end=None):
        """A mutant with other text in the place of the tokens first .. last, or of a part of them."""
        if self.source.is_asserted(first):
            return
        start = self.tokens[first].start if start is None else start
        end = self.tokens[last].end if end is None else end
        line, line_text, occurrence, column = self.source.place(start)
        identity = f"{self.name}: {kind}: {line_text} [{occurrence}:{column}]: {change}"
        if table is None:
            table = next((name for begin, stop, name in self.tables if begin <= first <= stop), "")
        self.mutants.append(Mutant(self.name, kind, table, line, identity, start, end, text))

    def text_of(self, element):
        return self.source.text[self.tokens[element[0]].start:self.tokens[element[1]].end]

    # Single tokens

    def _token(self, number, token):
        text = token.text
        if token.kind == "number":
            if INTEGER.fullmatch(text):
                self._replace("constant", number, other_integer(text))
            elif FLOAT.fullmatch(text):
                self._replace("constant", number, other_float(text))
        elif token.kind == "name" and text in OTHER_BOOLEAN:
            self._replace("boolean", number, OTHER_BOOLEAN[text])
        elif token.kind == "string" and LAYOUT.fullmatch(text):
            self._layout(number, text)
        elif token.kind == "sign" and text in ("++", "--") or text in OTHER_ARITHMETIC and self.source.is_spaced(number):
            self._replace("arithmetic", number, OTHER_ARITHMETIC[text])
        elif text in OTHER_COMPARISON and self.source.is_spaced(number):
            self._replace("comparison", number, OTHER_COMPARISON[text])
        elif text in OTHER_LOGIC and self.source.is_spaced(number):
            self._replace("logic", number, OTHER_LOGIC[text])

    def _replace(self, kind, number, text):
        self.add(kind, number, number, text, f"{self.tokens[number].text} -> {text}")

    def _layout(self, number, text):
        start = self.tokens[number].start
        for found in re.finditer("[0-9]+", text):
            width = int(found.group())
            other = width - 1 if text[found.end()] in "Xx" and width > 1 else width + 1
            changed = text[:found.start()] + str(other) + text[found.end():]
            self.add("layout", number, number, str(other), f"{text} -> {changed}", f"layout {text}",
                     start + found.start(), start + found.end())

    # Tables and lists

    def _lists(self):
        for bracket in self.source.brackets:
            if bracket.sign == "{" and self._is_table(bracket):
                head = self.source.head(bracket)
                name = next((word for word in reversed(head) if re.fullmatch(r"[a-z]\w*", word)), "")
                self._rows(bracket, self.source.elements(bracket), f"table {name}")
            elif bracket.sign == "(":
                self._arguments(bracket)

    def _is_table(self, bracket):
        if any(self.tokens[number].text == ";" for number in bracket.parts) or "enum" in self.source.head(bracket):
            return False
        return bracket.last - bracket.first > 2

    def _rows(self, bracket, elements, name):
        if len(elements) < 2 or not self._are_alike(elements):
            return
        self.tables.append((bracket.first, bracket.last, name))
        for element, following in zip(elements, elements[1:] + [None]):
            self._remove(element, following, elements, name)
            if following and self.name not in FOUND_BY_NUMBER:
                self._swap("row swapped", element, following, name)

    def _are_alike(self, elements):
        """Whether they start alike: the members of one row, of which each is something else, do not compile in another order."""
        starts = {token.text if token.kind == "sign" else token.kind for token in (self.tokens[first] for first, _ in elements)}
        return len(starts) == 1 and starts != {"."}

    def _remove(self, element, following, elements, name):
        shown = " ".join(self.text_of(element).split())
        if following:
            self.add("row removed", element[0], element[1], "", shown, name, end=self.tokens[following[0]].start)
        else:
            before = elements[elements.index(element) - 1]
            self.add("row removed", element[0], element[1], "", shown, name, start=self.tokens[before[1]].end)

    def _swap(self, kind, element, following, name):
        one, other = self.text_of(element), self.text_of(following)
        between = self.source.text[self.tokens[element[1]].end:self.tokens[following[0]].start]
        if one != other:
            self.add(kind, element[0], following[1], other + between + one, " ".join(f"{one} with {other}".split()), name)

    def _arguments(self, bracket):
        """Items of a record, and the arguments of a command."""
        elements = self.source.elements(bracket)
        items = [element for element in elements if self.tokens[element[0]].text in ITEMS]
        for element, following in zip(items, items[1:] + [None]):
            if len(items) > 1:
                self._remove(element, following, elements, "record")
            if following:
                self._swap("row swapped", element, following, "record")
        if self.tokens[bracket.first - 2].text == ">" and self._keyword_before(bracket.first - 2):
            for element, following in zip(elements, elements[1:]):
                self._swap("argument swapped", element, following, "command")

    def _keyword_before(self, number):
        """Whether `send<"…">` ends in this token."""
        return number >= 3 and self.tokens[number - 1].kind == "string" and self.tokens[number - 3].text == "send"

    def _template_lists(self):
        for number, token in enumerate(self.tokens[:-1]):
            if token.text != "RowCommands" or self.tokens[number + 1].text != "<":
                continue
            bracket = self.source.template_list(number + 1)
            elements = self.source.elements(bracket) if bracket else []
            if len(elements) < 2:
                continue
            name = f"commands {self.tokens[bracket.last + 1].text}"
            self._rows(bracket, elements, name)
            for element, following in zip(elements, elements[1:]):
                self._swap_keywords(element, following, name)

    def _swap_keywords(self, element, following, name):
        keywords = [next((number for number in range(first, last + 1) if self.tokens[number].kind == "string"), None)
                    for first, last in (element, following)]
        if None in keywords:
            return
        one, other = (self.tokens[number] for number in keywords)
        text = other.text + self.source.text[one.end:other.start] + one.text
        self.add("keyword swapped", keywords[0], keywords[1], text, f"{one.text} with {other.text}", name)

    def _neighbouring_commands(self):
        """Statements that send a command, one behind the other."""
        sends = {}
        for number, token in enumerate(self.tokens[:-4]):
            if token.text == "send" and self.tokens[number + 1].text == "<" and number + 4 in self.closing:
                end = self.closing[number + 4] + 1
                if self.tokens[end].text == ";" and self.tokens[number - 1].text in (";", "{", "}"):
                    sends[number] = end
        for first, end in sends.items():
            if end + 1 in sends:
                self._swap("commands swapped", (first, end), (end + 1, sends[end + 1]), "commands")

    # Conditions and statements

    def _conditions(self):
        for number, token in enumerate(self.tokens):
            if token.text != "if":
                continue
            opening = number + 2 if self.tokens[number + 1].text == "constexpr" else number + 1
            first, last = opening + 1, self.closing[opening] - 1
            for at in range(first, last):
                if self.tokens[at].text == ";":
                    first = at + 1
            if any(self.tokens[at].text == "=" for at in range(first, last)):
                continue
            condition = self.text_of((first, last))
            self.add("negated if", first, last, f"!({condition})", " ".join(condition.split()))

    def _statements(self):
        for bracket in self.source.brackets:
            if bracket.sign == "{" and self._holds_statements(bracket):
                self._statements_of(bracket)

    def _holds_statements(self, bracket):
        head = self.source.head(bracket)
        if "(" not in head and {"namespace", "struct", "class", "union", "enum"} & set(head):
            return False
        return any(self.tokens[number].text == ";" for number in bracket.parts)

    def _statements_of(self, bracket):
        first = bracket.first
        number = bracket.first
        while number < bracket.last:
            text = self.tokens[number].text
            if text in ("if", "for", "while", "switch") or text == "constexpr" and self.tokens[number - 1].text == "if":
                if number + 1 in self.closing:
                    number = self.closing[number + 1]
                first = number + 1
            elif number in self.closing:
                is_block = text == "{" and self._holds_statements(self._pair(number))
                number = self.closing[number]
                # A lambda's body is followed by the rest of its statement.
                if is_block and self.tokens[number + 1].text not in (")", ",", ";"):
                    first = number + 1
            elif text in ("else", "do", "{") or text == ":" and self.tokens[first].text in ("case", "default"):
                first = number + 1
            elif text == ";":
                self._statement(first, number, bracket)
                first = number + 1
            number += 1

    def _pair(self, number):
        return next(each for each in self.source.brackets if each.first == number + 1)

    def _statement(self, first, end, bracket):
        if first >= end:
            return
        texts = [token.text for token in self.tokens[first:end]]
        is_last = end + 1 == bracket.last
        if texts[0] == "return":
            is_dropped = not is_last and (len(texts) == 1 or len(texts) == 2 and texts[1] in OTHER_BOOLEAN)
        elif texts[0] in KEYWORDS:
            is_dropped = False
        else:
            is_dropped = len(texts) == 1 and texts[0] in ("break", "continue") or self._is_expression(texts)
        if is_dropped:
            shown = " ".join(self.text_of((first, end)).split())
            self.add("statement dropped", first, end, ";", shown)

    @staticmethod
    def _is_expression(texts):
        if texts[0] in ("++", "--"):
            return True
        if texts[0] == "send" and texts[1:2] == ["<"]:
            return True
        at = 1
        while at + 1 < len(texts) and texts[at] == "::":
            at += 2
        return at < len(texts) and texts[at] in (".", "->", "(", "=", "[", "+=", "-=", "*=", "/=", "++", "--")


def find_mutants(name, text):
    """The mutants of a file, each once, in the order of their places."""
    by_identity = {mutant.identity: mutant for mutant in Finder(name, text).mutants}
    return sorted(by_identity.values(), key=lambda mutant: (mutant.start, mutant.identity))
