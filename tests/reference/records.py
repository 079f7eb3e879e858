"""Reading the records of a model input file: fixed columns and free-form lists.

Written to be checked by eye, not to be fast: the whole file lies in memory, numbers are exact fractions until they
are rounded once, and every rule stands in one place.
"""

import math
import re
from dataclasses import dataclass
from fractions import Fraction

BYTE_ORDER_MARK = b"\xef\xbb\xbf"
LARGEST_REPEAT_COUNT = 2147483647
SMALLEST_INTEGER = -2147483648
LARGEST_INTEGER = 2147483647
CAPTION_WIDTH = 80


class CannotConvert(Exception):
    """A field or token is not what its item asks for."""


class ReadFailure(Exception):
    """A read statement that failed, and where.

    `statement` is the line counter at the statement. `line` is the physical line from 1 (one behind the last line when
    the file ended), `column` the byte from 1 where the field or token starts, `field` the item that was to be filled.
    """

    def __init__(self, line, column, field, reason, at_end_of_file=False):
        super().__init__(reason)
        self.statement = None
        self.line = line
        self.column = column
        self.field = field
        self.reason = reason
        self.at_end_of_file = at_end_of_file


def split_lines(content):
    """The lines of a file without their ends. A line ends at LF, at CR LF or with the file; a CR alone ends nothing."""
    if content.startswith(BYTE_ORDER_MARK):
        content = content[len(BYTE_ORDER_MARK):]
    pieces = content.split(b"\n")
    last = pieces.pop()
    lines = [piece[:-1] if piece.endswith(b"\r") else piece for piece in pieces]
    if last:
        lines.append(last)
    return lines


def fit(text, width):
    """Text assigned to a field of fixed width: cut, or padded with blanks."""
    return text[:width].ljust(width)


# --- numbers -------------------------------------------------------------------------------------------------------

INTEGER_TEXT = re.compile(rb"([+-]?)([0-9]+)")
REAL_TEXT = re.compile(
    rb"(?P<sign>[+-]?)"
    rb"(?:(?P<whole>[0-9]+)(?:(?P<point>\.)(?P<decimals>[0-9]*))?|(?P<leading_point>\.)(?P<only_decimals>[0-9]+))"
    rb"(?:(?:[EeDdQq](?P<letter_exponent>[+-]?[0-9]+))|(?P<sign_exponent>[+-][0-9]+))?")


def convert_integer(text):
    """Sign and digits to a 32-bit integer."""
    match = INTEGER_TEXT.fullmatch(text)
    if not match:
        raise CannotConvert("not an integer")
    digits = match.group(2).lstrip(b"0") or b"0"
    if len(digits) > 10:
        raise CannotConvert("integer does not fit 32 bits")
    value = -int(digits) if match.group(1) == b"-" else int(digits)
    if not SMALLEST_INTEGER <= value <= LARGEST_INTEGER:
        raise CannotConvert("integer does not fit 32 bits")
    return value


def convert_real(text, implied_decimals=0):
    """Decimal text to the nearest single-precision number, as a Python float that holds it exactly.

    Implied decimals count only for a number that has neither a point nor an exponent.
    """
    match = REAL_TEXT.fullmatch(text)
    if not match:
        raise CannotConvert("not a real number")
    whole = match["whole"] or b""
    decimals = match["decimals"] or match["only_decimals"] or b""
    exponent_text = match["letter_exponent"] or match["sign_exponent"]
    if exponent_text is not None:
        exponent = clamped_exponent(exponent_text)
    elif match["point"] or match["leading_point"]:
        exponent = 0
    else:
        exponent = -implied_decimals
    magnitude = nearest_single(whole + decimals, exponent - len(decimals))
    return math.copysign(magnitude, -1.0 if match["sign"] == b"-" else 1.0)


def clamped_exponent(text):
    """An exponent as a number; one of thousands of digits is only as far out as no file can compensate."""
    digits = text.lstrip(b"+-").lstrip(b"0") or b"0"
    size = int(digits) if len(digits) <= 15 else 10 ** 15
    return -size if text.startswith(b"-") else size


def nearest_single(digits, exponent):
    """digits * 10**exponent rounded once to single precision, ties to the even neighbour."""
    digits = digits.lstrip(b"0")
    if not digits:
        return 0.0
    order = len(digits) + exponent  # the value lies in [10**(order-1), 10**order)
    if order > 60:
        raise CannotConvert("real overflows single precision")
    if order < -60:
        return 0.0
    # Whatever is exactly half way between two singles has fewer than 120 digits, so behind 400 digits it matters only
    # whether anything but zeros follows.
    if len(digits) > 400:
        sticky = b"1" if digits[400:].strip(b"0") else b"0"
        exponent += len(digits) - 401
        digits = digits[:400] + sticky
    value = Fraction(int(digits)) * Fraction(10) ** exponent
    return round_to_single(value)


def round_to_single(value):
    """A positive fraction to the nearest multiple of the spacing that singles have around it."""
    # The lengths of the two integers tell the order of magnitude to within one bit; start safely below it.
    spacing_exponent = max(-149, value.numerator.bit_length() - value.denominator.bit_length() - 26)
    while value >= Fraction(2) ** (spacing_exponent + 24):
        spacing_exponent += 1
    scaled = value / Fraction(2) ** spacing_exponent
    multiple = math.floor(scaled)
    remainder = scaled - multiple
    if remainder > Fraction(1, 2) or (remainder == Fraction(1, 2) and multiple % 2 == 1):
        multiple += 1
    if multiple * Fraction(2) ** spacing_exponent >= 2 ** 128:
        raise CannotConvert("real overflows single precision")
    return math.ldexp(multiple, spacing_exponent)


# --- fixed columns -------------------------------------------------------------------------------------------------

@dataclass(frozen=True)
class ColumnField:
    """`width` columns: "I" integer, "F" real with implied decimals, "A" text, "X" skipped."""
    kind: str
    width: int
    decimals: int = 0


LAYOUT_PIECE = re.compile(r"(?P<open>[0-9]*)\(|(?P<close>\))|(?P<skip>[0-9]+)[xX]|I(?P<integer>[0-9]+)"
                          r"|A(?P<text>[0-9]+)|F(?P<real>[0-9]+)\.(?P<decimals>[0-9]+)|(?P<comma>,)")


def parse_layout(layout):
    """A layout such as "(I5,5x,I2)" or "(4(I5),16(F15.5))" as a flat list of column fields."""
    stack = [[]]
    repeats = []
    position = 0
    while position < len(layout):
        piece = LAYOUT_PIECE.match(layout, position)
        if not piece:
            raise ValueError(f"layout {layout!r} at {position}")
        position = piece.end()
        if piece["open"] is not None:
            repeats.append(int(piece["open"] or 1))
            stack.append([])
        elif piece["close"]:
            group = stack.pop()
            stack[-1].extend(group * repeats.pop())
        elif piece["skip"]:
            stack[-1].append(ColumnField("X", int(piece["skip"])))
        elif piece["integer"]:
            stack[-1].append(ColumnField("I", int(piece["integer"])))
        elif piece["text"]:
            stack[-1].append(ColumnField("A", int(piece["text"])))
        elif piece["real"]:
            stack[-1].append(ColumnField("F", int(piece["real"]), int(piece["decimals"])))
    return stack[0]


def convert_columns(field, columns):
    """The value of one fixed-column field. Blanks do not count in numbers, wherever they stand; all blank is zero."""
    if field.kind == "A":
        return columns
    text = columns.replace(b" ", b"")
    if field.kind == "I":
        return convert_integer(text) if text else 0
    return convert_real(text, field.decimals) if text else 0.0


# --- free-form lists -----------------------------------------------------------------------------------------------

BLANKS = b" \t\r"
SEPARATORS = BLANKS + b",/"
REPEAT_PREFIX = re.compile(rb"([0-9]+)\*")


@dataclass(frozen=True)
class Item:
    """One item of a free-form list: "integer", "real" or "text"; an integer may have a largest value."""
    name: str
    kind: str
    largest: int = LARGEST_INTEGER


def integers(*names, largest=LARGEST_INTEGER):
    return [Item(name, "integer", largest) for name in names]


def reals(*names):
    return [Item(name, "real") for name in names]


def texts(*names):
    return [Item(name, "text") for name in names]


@dataclass(frozen=True)
class Group:
    """`repeat` times one value as it stands in the file; None is an empty value."""
    repeat: int
    value: bytes | None
    quoted: bool
    line: int
    column: int


def convert_token(item, group):
    """One value of a list for the item that it meets."""
    if item.kind == "text":
        return group.value
    if group.quoted:
        raise CannotConvert("a number in quotes")
    if item.kind == "real":
        return convert_real(group.value)
    value = convert_integer(group.value)
    if value > item.largest:
        raise CannotConvert(f"above {item.largest}")
    return value


# What stands before the next comma decides what the comma is. Behind a value it is the separator, behind another comma
# it leaves an empty value, and so it does where nothing came before it. A line end that no comma stood before is itself
# a separator, and one comma first on a later line belongs to it.
NOTHING, VALUE, COMMA, LINE_END = "nothing", "value", "comma", "line end"
COMMA_IS_EMPTY_VALUE = {NOTHING: True, VALUE: False, COMMA: True, LINE_END: False}
BEHIND_COMMA = {NOTHING: COMMA, VALUE: COMMA, COMMA: COMMA, LINE_END: NOTHING}
BEHIND_LINE_END = {NOTHING: LINE_END, VALUE: LINE_END, COMMA: COMMA, LINE_END: LINE_END}


class ListScanner:
    """Walks over the values of one free-form read."""

    def __init__(self, lines, first_line):
        self.lines = lines
        self.line = first_line
        self.column = 0
        self.before = NOTHING

    def next_group(self, field):
        """The next value with its repeat count, or None at a slash."""
        while True:
            self.skip_blanks()
            if self.at_line_end():
                self.next_line(field)
            elif self.byte() == b"/":
                return None
            elif self.byte() != b",":
                return self.read_group(field)
            elif self.pass_comma():
                return Group(1, None, False, self.line, self.column - 1)

    def pass_comma(self):
        """Whether the comma stands for an empty value."""
        is_empty_value = COMMA_IS_EMPTY_VALUE[self.before]
        self.before = BEHIND_COMMA[self.before]
        self.column += 1
        return is_empty_value

    def byte(self):
        return self.lines[self.line][self.column:self.column + 1]

    def at_line_end(self):
        return self.line >= len(self.lines) or self.column >= len(self.lines[self.line])

    def at_separator(self):
        return self.at_line_end() or self.byte() in SEPARATORS

    def skip_blanks(self):
        while not self.at_line_end() and self.byte() in BLANKS:
            self.column += 1

    def next_line(self, field):
        self.line += 1
        self.column = 0
        self.before = BEHIND_LINE_END[self.before]
        if self.line >= len(self.lines):
            raise end_of_file(self.lines, field)

    def read_group(self, field):
        """`v`, `r*v` or `r*`."""
        start_line, start_column = self.line, self.column
        self.before = VALUE
        repeat = 1
        try:
            prefix = REPEAT_PREFIX.match(self.lines[self.line], self.column)
            if prefix:
                repeat = repeat_count(prefix.group(1))
                self.column = prefix.end()
            if prefix and self.at_separator():
                return Group(repeat, None, False, start_line, start_column)
            if self.byte() in b"'\"":
                return Group(repeat, self.quoted_text(), True, start_line, start_column)
            return Group(repeat, self.plain_text(), False, start_line, start_column)
        except CannotConvert as problem:
            raise ReadFailure(start_line + 1, start_column + 1, field, str(problem)) from None
        except EOFError:
            raise ReadFailure(start_line + 1, start_column + 1, field, "text in quotes never ends") from None

    def plain_text(self):
        start = self.column
        while not self.at_separator():
            self.column += 1
        return self.lines[self.line][start:self.column]

    def quoted_text(self):
        """Text between two equal quotes; it may run over lines, which adds nothing to it."""
        quote = self.byte()
        self.column += 1
        pieces = []
        while True:
            line = self.lines[self.line]
            close = line.find(quote, self.column)
            if close < 0:
                pieces.append(line[self.column:])
                self.line += 1
                self.column = 0
                if self.line >= len(self.lines):
                    raise EOFError
                continue
            pieces.append(line[self.column:close])
            self.column = close + 1
            if self.at_line_end() or self.byte() != quote:
                break
            pieces.append(quote)
            self.column += 1
        if not self.at_separator():
            raise CannotConvert("something is glued to a text in quotes")
        return b"".join(pieces)


def repeat_count(digits):
    digits = digits.lstrip(b"0")
    if not digits:
        raise CannotConvert("a repeat count of 0")
    if len(digits) > 10 or int(digits) > LARGEST_REPEAT_COUNT:
        raise CannotConvert("a repeat count that is too large")
    return int(digits)


def end_of_file(lines, field):
    return ReadFailure(len(lines) + 1, 1, field, "the file ends", at_end_of_file=True)


# --- read statements -----------------------------------------------------------------------------------------------

class RecordReader:
    """Performs read statements over the lines of a file; each one counts itself before it reads."""

    def __init__(self, lines):
        self.lines = lines
        self.next_line = 0
        self.line_counter = 1

    def fixed(self, layout, *names):
        """One line by a fixed-column layout: the value of every named field, in layout order."""
        return self.statement(lambda: self.read_columns(layout, names))

    def list(self, items):
        """A free-form list: the values of the items that the record fills, by name. Items left out are absent."""
        return self.statement(lambda: self.read_list(items))

    def flags(self, name, count, kept):
        """`count` integers in one free-form list, of which the first `kept` are returned, 0 where left out.

        The count and the repeat counts come from the file and may be in the thousands of millions: neither is looped
        over, nor stored.
        """
        return self.statement(lambda: self.read_flags(name, count, kept))

    def caption(self):
        """The 80 columns of a line, read without an error branch: at the end of the file they are blank."""
        self.line_counter += 1
        line = self.lines[self.next_line] if self.next_line < len(self.lines) else b""
        self.next_line = min(self.next_line + 1, len(self.lines))
        return fit(line, CAPTION_WIDTH)

    def title(self):
        """A free-form text that nobody needs, read without an error branch.

        At the end of the file there is none. Anything else that is wrong with it costs one line and no more, so that a
        stray apostrophe in a title does not swallow the records behind it.
        """
        first_line = self.next_line
        try:
            self.list(texts("title"))
        except ReadFailure as failure:
            self.next_line = len(self.lines) if failure.at_end_of_file else first_line + 1

    def refusal(self, field, reason):
        """The failure of the statement just read, for a number that the section does not take."""
        failure = ReadFailure(self.next_line, None, field, reason)
        failure.statement = self.line_counter
        return failure

    def statement(self, read):
        self.line_counter += 1
        try:
            return read()
        except ReadFailure as failure:
            failure.statement = self.line_counter
            raise

    def read_columns(self, layout, names):
        fields = parse_layout(layout)
        valued = [field for field in fields if field.kind != "X"]
        if len(valued) != len(names):
            raise ValueError(f"{layout} has {len(valued)} values, not {len(names)}")
        if self.next_line >= len(self.lines):
            raise end_of_file(self.lines, names[0])
        line = self.lines[self.next_line]
        values = []
        column = 0
        for field in fields:
            if field.kind != "X":
                columns = fit(line[column:], field.width)
                values.append(self.columns_value(field, columns, column, names[len(values)]))
            column += field.width
        self.next_line += 1
        return dict(zip(names, values))

    def columns_value(self, field, columns, column, name):
        try:
            return convert_columns(field, columns)
        except CannotConvert as problem:
            raise ReadFailure(self.next_line + 1, column + 1, name, str(problem)) from None

    def read_list(self, items):
        scanner = self.start_list(items[0].name if items else None)
        filled = {}
        group, left = None, 0
        for item in items:
            if left == 0:
                group = scanner.next_group(item.name)
                if group is None:
                    break
                left = group.repeat
            left -= 1
            if group.value is not None:
                filled[item.name] = self.token_value(item, group)
        self.next_line = scanner.line + 1
        return filled

    def read_flags(self, name, count, kept):
        scanner = self.start_list(f"{name} 1" if count > 0 else None)
        flags = [0] * max(0, min(count, kept))
        position = 0
        while position < count:
            field = f"{name} {position + 1}"
            group = scanner.next_group(field)
            if group is None:
                break
            end = min(count, position + group.repeat)
            if group.value is not None:
                value = self.token_value(Item(field, "integer"), group)
                for index in range(position, min(end, kept)):
                    flags[index] = value
            position = end
        self.next_line = scanner.line + 1
        return flags

    def start_list(self, first_field):
        """A read of an empty list, too, takes a line, and fails where there is none."""
        if self.next_line >= len(self.lines):
            raise end_of_file(self.lines, first_field)
        return ListScanner(self.lines, self.next_line)

    def token_value(self, item, group):
        try:
            return convert_token(item, group)
        except CannotConvert as problem:
            raise ReadFailure(group.line + 1, group.column + 1, item.name, str(problem)) from None
