"""Takes the text of a case apart by the rules of the import: which values or fields a statement
visits, where it stops, and where the next statement starts.

Only the differences between the two programs are judged with it, so it is written to be plain.
It converts nothing: a value is right, wrong or too large.
"""

import dataclasses
import decimal
import re
from decimal import Decimal

INTEGER = re.compile(rb"[+-]?[0-9]+\Z")
REAL = re.compile(rb"([+-]?(?:[0-9]+\.?[0-9]*|\.[0-9]+))(?:[EeDdQq]([+-]?[0-9]+)|([+-][0-9]+))?\Z")
BYTE_ORDER_MARKS = (b"\xef\xbb\xbf", b"\xff\xfe", b"\xfe\xff")  # UTF-8, UTF-16, UTF-16

# Exact for every text that a case can hold.
decimal.setcontext(decimal.Context(prec=200000, Emax=decimal.MAX_EMAX, Emin=decimal.MIN_EMIN))

# Half a unit above the largest single-precision number; from here on the nearest one is infinite.
OVERFLOW = Decimal(2**128 - 2**103)
REPEAT_LIMIT = 2**31 - 1


@dataclasses.dataclass
class Value:
    """A value of a list, or a field of a fixed-column record."""

    text: bytes  # without the repeat count and the delimiters
    kinds: str  # of the items that it stands for: i, r, t
    repeat: bytes = None
    delimited: bool = False
    decimals: int = 0  # implied by the layout
    start: int = 0  # where the list's value stands in the text, its repeat count included
    end: int = 0
    behind: bytes = b""  # the character behind the list's value; none at the end of the file


@dataclasses.dataclass
class Walk:
    """What one statement meets. The values end with the first that cannot be converted."""

    fixed: bool = False
    outcome: str = "ok"
    values: list = dataclasses.field(default_factory=list)
    record: bytes = b""  # the columns of a fixed-column record that the layout has, or the line
    next_record: bytes = b""  # the columns that the statement behind it reads
    slash: str = ""  # where the slash stands that ended the list: "first" in a later line, or "inside" one
    rest: bytes = b""  # the text from where a list stopped
    byte_order_mark: bytes = b""


def is_too_large(match, implied_decimals=0):
    exponent = int(match[2] or match[3] or 0)
    if re.fullmatch(rb"[+-]?[0-9]+", match[0]):
        exponent = -implied_decimals
    mantissa = Decimal(match[1].decode())
    if mantissa == 0 or exponent < -10**9:
        return False
    return exponent > 10**9 or abs(mantissa.scaleb(exponent)) >= OVERFLOW


def converts(kind, text, implied_decimals=0):
    if kind == "t":
        return True
    if kind == "i":
        return bool(INTEGER.match(text)) and -(2**31) <= int(text) <= REPEAT_LIMIT
    match = REAL.match(text)
    return bool(match) and not is_too_large(match, implied_decimals)


def line_at(text, position):
    """The line at `position` without its end, and the position of the next."""
    end = text.find(b"\n", position)
    if end < 0:
        return text[position:], len(text)
    stop = end - 1 if end > position and text[end - 1 : end] == b"\r" else end
    return text[position:stop], end + 1


def walk(statement, text):
    mark = next((mark for mark in BYTE_ORDER_MARKS if text.startswith(mark)), b"")
    start = len(mark) if mark == BYTE_ORDER_MARKS[0] else 0
    if statement.fields is None:
        result, position = ListWalk(text, start).run(statement.kinds)
    else:
        result, position = walk_fixed(statement, text, start)
    result.byte_order_mark = mark
    if result.outcome == "ok":
        result.next_record = line_at(text, position)[0][:40]
    return result


def walk_fixed(statement, text, position):
    result = Walk(fixed=True)
    if position == len(text):
        result.outcome = "end"
        return result, position
    line, position = line_at(text, position)
    result.record = line[: statement.width]
    for kind, offset, width, decimals in statement.fields:
        field = line[offset : offset + width]
        result.values.append(Value(field, kind, decimals=decimals))
        number = field.replace(b" ", b"")
        if number and not converts(kind, number, decimals):
            result.outcome = "bad"
            break
    return result, position


class ListWalk:
    """The free-form list, item by item."""

    def __init__(self, text, position):
        self.text = text
        self.position = position
        self.line = 0
        self.result = Walk(record=line_at(text, position)[0])

    def run(self, kinds):
        if self.position == len(self.text):
            self.result.outcome = "end"
            return self.result, self.position
        index = 0
        while index < len(kinds) and self.result.outcome == "ok" and not self.result.slash:
            index += self.item(kinds, index)
        self.result.rest = self.text[self.position :]
        return self.result, line_at(self.text, self.position)[1]

    def peek(self):
        return self.text[self.position : self.position + 1]

    def skip_blanks(self):
        while self.peek() in (b" ", b"\t", b"\r"):
            self.position += 1
        return self.peek()

    def item(self, kinds, index):
        """Goes over what the next item gets. Returns how many items it serves."""
        comma_seen = False
        character = self.skip_blanks()
        if index > 0 and character == b",":
            comma_seen = True
            self.position += 1
            character = self.skip_blanks()
        # The first line of a record has nothing in front of it that a comma could separate.
        may_separate = not comma_seen
        while character == b"\n":
            self.position += 1
            self.line += 1
            character = self.skip_blanks()
            if character == b"," and may_separate:
                self.position += 1
                character = self.skip_blanks()
        if character == b"":
            self.result.outcome = "end"
        elif character == b"/":
            before = self.text[self.text.rfind(b"\n", 0, self.position) + 1 : self.position]
            is_first = self.line > 0 and not before.strip(b" \t\r")
            self.result.slash = "first" if is_first else "inside"
        elif character != b",":
            return self.value(kinds, index)
        return 1

    def value(self, kinds, index):
        repeat = None
        start = self.position
        match = re.compile(rb"([0-9]+)\*").match(self.text, self.position)
        if match:
            repeat = match[1]
            self.position = match.end()
        delimiter = self.peek()
        if delimiter in (b"'", b'"'):
            closed = self.go_behind_delimited(delimiter)
            value = Value(self.text[match.end() if match else start : self.position], "", repeat, True)
        else:
            closed = True
            end = re.compile(rb"[ \t\r\n,/]|\Z").search(self.text, self.position).start()
            value = Value(self.text[self.position : end], "", repeat)
            self.position = end
        value.start, value.end = start, self.position
        value.behind = self.peek()
        served = min(int(repeat), len(kinds) - index) if repeat else 1
        value.kinds = kinds[index : index + max(served, 1)]
        self.result.values.append(value)
        if not closed:
            self.result.outcome = "end"
        elif repeat is not None and not 1 <= int(repeat) <= REPEAT_LIMIT:
            self.result.outcome = "bad"
        elif value.delimited and not re.match(rb"[ \t\r\n,/]|\Z", self.peek()):
            self.result.outcome = "bad"
        elif value.delimited or value.text or repeat is None:
            for kind in value.kinds:
                if (value.delimited and kind != "t") or not converts(kind, value.text):
                    self.result.outcome = "bad"
        return max(served, 1)

    def go_behind_delimited(self, delimiter):
        self.position += 1
        while True:
            end = self.text.find(delimiter, self.position)
            stop = len(self.text) if end < 0 else end
            self.line += self.text.count(b"\n", self.position, stop)
            self.position = stop + (end >= 0)
            if end < 0:
                return False
            if self.peek() != delimiter:
                return True
            self.position += 1
