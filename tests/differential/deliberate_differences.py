"""Where the import and the Fortran runtime differ on purpose.

Each class names the texts that it covers, judged by the value or field that the statement meets
there, the outcomes that it explains ("ok", "bad", "end"), and examples with the results of both
programs. A difference that no class covers fails the comparison; so does an example that no longer
comes out as it stands here.
"""

import dataclasses
import re
from typing import Callable

from record_walk import REAL, REPEAT_LIMIT, is_too_large

UNTOUCHED_REAL = "4D123456"


@dataclasses.dataclass(frozen=True)
class Example:
    statement: int
    text: bytes
    ours: str
    runtime: str


@dataclasses.dataclass(frozen=True)
class Difference:
    name: str
    why: str
    applies: Callable
    ours: str  # outcomes that it explains
    runtime: str
    examples: tuple
    equivalent: Callable = None  # the text for which the runtime gives what the import gave for this one

    def explains(self, walk, ours, runtime):
        return (
            ours.split(" ")[0] in self.ours.split()
            and runtime.split(" ")[0] in self.runtime.split()
            and bool(self.applies(walk))
        )


def is_like(pattern):
    expression = re.compile(rb"(?i:" + pattern + rb")\Z")
    return lambda text, _: bool(expression.match(text))


def in_list(test):
    """Covers a statement when a value of a free-form list passes the test."""
    return lambda walk: not walk.fixed and any(test(value) for value in walk.values)


def in_field(kinds, test):
    """Covers a statement when a fixed-column number, its blanks taken away, passes the test."""
    return lambda walk: walk.fixed and any(
        value.kinds in kinds and test(value.text.replace(b" ", b""), value) for value in walk.values
    )


def at_bad_value(kinds, test, fixed=(False, True)):
    """Covers a statement when the number that the import refuses passes the test."""

    def applies(walk):
        if walk.outcome != "bad" or not walk.values or walk.fixed not in fixed:
            return False
        value = walk.values[-1]
        wanted = any(kind in kinds for kind in value.kinds) and not value.delimited
        return wanted and test(value.text.replace(b" ", b""), value)

    return applies


def is_at_nul_behind_separator(walk):
    return re.match(rb"[ \t\r,;]+\0", walk.rest)


def starts_with_word_for_no_number(text, value):
    """In fixed columns the runtime looks no further than the blank or parenthesis behind the word."""
    is_word = is_like(rb"[+-]?(inf(inity)?|nan(\(.*\).*)?)")
    return is_word(text, value) or is_word(value.text.lstrip(b" ").split(b" ")[0], value)


def is_unfinished_at_end_of_file(text, value):
    number = rb"[+-]?([0-9]+\.?[0-9]*|\.[0-9]+)([edq][+-]?|[+-])"
    word = rb"[+-]?(n|na|nan\([^)]*|i|in|infi|infin|infini|infinit)"
    return not value.behind and is_like(rb"[+-]?|" + number + rb"|" + word)(text, value)


def has_exponent_and_implied_decimals(text, value):
    return value.decimals and is_like(rb"[+-]?[0-9]+([edq][+-]?|[+-])[0-9]+")(text, value)


def is_overflow(text, value):
    match = REAL.match(text)
    return bool(match) and is_too_large(match, value.decimals)


def is_long_repeat(value):
    return value.repeat and 200000000 < int(value.repeat) <= REPEAT_LIMIT


def is_mixed_repeat(value):
    is_closed = not value.delimited or not value.behind.strip(b" \t\r\n,/")
    return value.repeat and value.text and is_closed and len(set(value.kinds)) > 1


def with_repeats_replaced(replacement):
    def equivalent(walk, text):
        for value in reversed(walk.values):
            replaced = replacement(value)
            if replaced is not None:
                text = text[: value.start] + replaced + text[value.end :]
        return text

    return equivalent


ANY = "ok bad end"

DIFFERENCES = (
    Difference(
        "semicolon in a list",
        "Only a runtime that knows decimal commas needs another separator; in a name a semicolon is text.",
        in_list(lambda value: b";" in (value.behind if value.delimited else value.text)),
        ANY,
        ANY,
        (
            Example(1, b"12;13\n", "bad -777777 -", "ok 12 end"),
            Example(13, b"a;b\n5\n", 'ok 5 "613B62 end', 'bad -777777 "61 -'),
            Example(13, b"'a';5\n", 'bad -777777 "' + 40 * "7E" + " -", 'ok 5 "61 end'),
        ),
    ),
    Difference(
        "end of the file behind a slash",
        "A last line without a line end is a line like any other.",
        lambda walk: re.fullmatch(rb"[ \t\r]*/[^\n]*", walk.rest),
        "ok",
        "end",
        (
            Example(3, b"1 /", "ok 1 -777777 end", "end 1 -777777 -"),
            Example(1, b"1/", "ok 1 end", "end 1 -"),
        ),
        lambda walk, text: text + b"\n",
    ),
    Difference(
        "empty values at the end of the file",
        "A last line without a line end is a line like any other.",
        in_list(lambda value: value.repeat and not value.text and not value.behind),
        "ok",
        "end",
        (Example(3, b"2*", "ok -777777 -777777 end", "end -777777 -777777 -"),),
        lambda walk, text: text + b"\n",
    ),
    Difference(
        "unfinished number at the end of the file",
        "What is wrong with the number is its spelling, not that the file ends.",
        at_bad_value("ir", is_unfinished_at_end_of_file, (False,)),
        "bad",
        "end",
        (
            Example(1, b"-", "bad -777777 -", "end -777777 -"),
            Example(2, b"1.5E+", f"bad {UNTOUCHED_REAL} -", f"end {UNTOUCHED_REAL} -"),
        ),
    ),
    Difference(
        "quoted text that is never closed",
        "A forgotten quotation mark must not swallow the rest of the file as a name.",
        lambda walk: walk.outcome == "end" and walk.values and walk.values[-1].delimited,
        "end",
        ANY,
        (
            Example(7, b"'ab\n", 'end "' + 80 * "7E" + " -", 'ok "6162 end'),
        ),
    ),
    Difference(
        "point in front of an asterisk",
        "A repeat count is made of digits; the runtime takes a lone point for one.",
        at_bad_value("r", is_like(rb"\.\*.*"), (False,)),
        "bad",
        ANY,
        (Example(2, b".*11\n", f"bad {UNTOUCHED_REAL} -", "ok 41300000 end"),),
    ),
    Difference(
        "repeat count above 200000000",
        "The runtime has a limit of its own; the import takes what 32 bits hold.",
        in_list(is_long_repeat),
        ANY,
        "bad",
        (Example(1, b"200000001*1\n", "ok 1 end", "bad -777777 -"),),
        with_repeats_replaced(lambda value: b"200000000*" + value.text if is_long_repeat(value) else None),
    ),
    Difference(
        "repeated value for items of different kinds",
        "A modeller who writes 2*1 means 1 and 1.0; the value is converted for each item.",
        in_list(is_mixed_repeat),
        ANY,
        "bad",
        (Example(12, b"3*5\n", 'ok 5 40A00000 "35 end', f'bad 5 {UNTOUCHED_REAL} "{8 * "7E"} -'),),
        with_repeats_replaced(
            lambda value: b" ".join([value.text] * len(value.kinds)) if is_mixed_repeat(value) else None
        ),
    ),
    Difference(
        "NUL where a value starts",
        "The runtime loses a NUL there by accident; in the import it is a character like others.",
        lambda walk: is_at_nul_behind_separator(walk) or in_list(
            lambda value: (not value.delimited and not value.repeat and value.text.startswith(b"\0"))
            or (value.delimited and value.behind == b"\0")
        )(walk),
        ANY,
        ANY,
        (
            Example(1, b"\0005\n", "bad -777777 -", "ok 5 end"),
            Example(1, b"5,\0", "ok 5 end", "end 5 -"),
            Example(13, b"'a'\0 5\n", 'bad -777777 "' + 40 * "7E" + " -", 'ok 5 "61 end'),
        ),
    ),
    Difference(
        "NaN and infinity",
        "No datum of a model is a NaN or infinite: such a word is a damaged number.",
        at_bad_value("r", starts_with_word_for_no_number),
        "bad",
        ANY,
        (
            Example(2, b"NaN\n", f"bad {UNTOUCHED_REAL} -", "ok 7FC00000 end"),
            Example(28, b"-inf\n", f"bad {UNTOUCHED_REAL} -", "ok FF800000 end"),
        ),
    ),
    Difference(
        "overflow",
        "A number beyond single precision is a mistake in the file, not infinity.",
        at_bad_value("r", is_overflow),
        "bad",
        ANY,
        (
            Example(2, b"1e39\n", f"bad {UNTOUCHED_REAL} -", "ok 7F800000 end"),
            Example(28, b"1.e39\n", f"bad {UNTOUCHED_REAL} -", "ok 7F800000 end"),
        ),
    ),
    Difference(
        "lone decimal point in a list",
        "Both refuse it; the runtime has set the item to zero by then.",
        at_bad_value("r", is_like(rb"[+-]?\..*"), (False,)),
        "bad",
        "bad end",
        (Example(2, b".\n", f"bad {UNTOUCHED_REAL} -", "bad 00000000 -"),),
    ),
    Difference(
        "carriage return in a quoted text",
        "Only CR LF ends a line; in a text a CR is a character.",
        in_list(lambda value: value.delimited and re.search(rb"\r(?!\n)", value.text)),
        ANY,
        ANY,
        (Example(7, b"'a\rb'\n", 'ok "610D62 end', 'ok "6162 end'),),
    ),
    Difference(
        "slash first in a continuation line",
        "A slash ends the list wherever it stands; the runtime still reads one value behind this one.",
        lambda walk: walk.slash == "first",
        "ok",
        ANY,
        (
            Example(3, b"1\n/2\n", "ok 1 -777777 end", "ok 1 2 end"),
            Example(3, b"\n/1 2\n", "ok -777777 -777777 end", "ok 1 -777777 end"),
        ),
    ),
    Difference(
        "byte-order mark of UTF-8",
        "Editors put it there; it is no part of the first record.",
        lambda walk: walk.byte_order_mark == b"\xef\xbb\xbf",
        ANY,
        ANY,
        (Example(1, b"\xef\xbb\xbf5\n", "ok 5 end", "bad -777777 -"),),
        lambda walk, text: text[3:],
    ),
    Difference(
        "carriage return in fixed columns",
        "Only LF and CR LF end a line; a CR elsewhere is a byte of its column.",
        lambda walk: (walk.fixed and b"\r" in walk.record) or b"\r" in walk.next_record,
        ANY,
        ANY,
        (
            Example(25, b"a\rb\n", 'ok "610D62 end', 'ok "61 "62'),
            Example(31, b"12\r", "bad -777777 -", "ok 12 end"),
        ),
    ),
    Difference(
        "comma in a number's columns",
        "The runtime ends a field at a comma, which shifts all columns behind it and invents data.",
        in_field("ir", lambda text, _: b"," in text),
        "bad",
        ANY,
        (
            Example(21, b"1,        3\n", "bad -777777 -777777 -", "ok 1 0 end"),
            Example(
                23,
                b"         1,         2\n",
                f"bad 3F800000 {UNTOUCHED_REAL} -",
                "ok 3F800000 00000000 end",
            ),
        ),
    ),
    Difference(
        "exponent without a point in fixed columns",
        "A modeller who writes 12E3 means 12000; the runtime applies the implied decimals all the same.",
        in_field("r", has_exponent_and_implied_decimals),
        ANY,
        ANY,
        (
            Example(28, b"12E3\n", "ok 463B8000 end", "ok 3F99999A end"),
            Example(28, b"15+3\n", "ok 466A6000 end", "ok 3FC00000 end"),
        ),
    ),
    Difference(
        "lone sign in a fixed-column integer",
        "A lone sign is a damaged number; for the runtime it is zero when a blank follows.",
        at_bad_value("i", is_like(rb"[+-]"), (True,)),
        "bad",
        ANY,
        (Example(21, b"  -  \n", "bad -777777 -777777 -", "ok 0 0 end"),),
    ),
    Difference(
        "fixed-column real without digits",
        "A lone sign, point or exponent is a damaged number, not zero.",
        at_bad_value("r", is_like(rb"[+-]{2}.*|[+-]?\.?([edq][+-]?[0-9]*|[+-][0-9]*)?"), (True,)),
        "bad",
        ANY,
        (
            Example(28, b"-\n", f"bad {UNTOUCHED_REAL} -", "ok 00000000 end"),
            Example(28, b"+.\n", f"bad {UNTOUCHED_REAL} -", "ok 00000000 end"),
            Example(28, b"E3\n", f"bad {UNTOUCHED_REAL} -", "ok 00000000 end"),
            Example(28, b"--1\n", f"bad {UNTOUCHED_REAL} -", "ok 80000000 end"),
        ),
    ),
    Difference(
        "exponent sign without digits in fixed columns",
        "The number is cut off; the runtime takes the exponent for zero when a blank follows.",
        at_bad_value("r", is_like(rb"[+-]?([0-9]+\.?[0-9]*|\.[0-9]+)[edq]?[+-]"), (True,)),
        "bad",
        ANY,
        (Example(28, b"1.5-  \n", f"bad {UNTOUCHED_REAL} -", "ok 3FC00000 end"),),
    ),
    Difference(
        "long exponent in fixed columns",
        "The runtime refuses exponents beyond a limit of its own; the number is still zero or tiny.",
        in_field("r", is_like(rb"[+-]?[0-9.]+([edq][+-]?|[+-])[0-9]{5,}")),
        ANY,
        "ok bad",
        (Example(28, b"1.e-99999\n", "ok 00000000 end", f"bad {UNTOUCHED_REAL} -"),),
    ),
    Difference(
        "NUL in a fixed-column integer",
        "The runtime takes a NUL for the end of the field; in the import it is no part of a number.",
        in_field("i", lambda text, _: b"\0" in text),
        "bad",
        ANY,
        (Example(31, b"5\0\n", "bad -777777 -", "ok 5 end"),),
    ),
)
