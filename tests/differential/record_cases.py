"""The statements that are compared, and seeded generators of texts for them."""

import dataclasses
import random
import re
import struct
from fractions import Fraction


@dataclasses.dataclass(frozen=True)
class Statement:
    number: int
    description: str
    kinds: str  # of its items: i, r, t
    fields: tuple = None  # of a fixed-column record: kind, offset, width, implied decimals
    width: int = 0


def list_of(number, kinds):
    return Statement(number, "list " + kinds, kinds)


def fixed_by(number, layout):
    """Takes a layout apart; groups stand for one field here, as in 4(I5)."""
    fields, offset = [], 0
    for item in re.sub(r"(\d+)\((\w[\d.]+)\)", r"\1\2", layout).split(","):
        count, letter, width, decimals = re.fullmatch(r"(\d*)([IFAX])(\d*)\.?(\d*)", item).groups()
        for _ in range(int(count or 1)):
            if letter != "X":
                kind = {"I": "i", "F": "r", "A": "t"}[letter]
                fields.append((kind, offset, int(width), int(decimals or 0)))
            offset += int(width or 1)
    kinds = "".join(field[0] for field in fields)
    return Statement(number, layout, kinds, tuple(fields), fields[-1][1] + fields[-1][2])


STATEMENTS = {
    statement.number: statement
    for statement in (
        list_of(1, "i"),
        list_of(2, "r"),
        list_of(3, "ii"),
        list_of(4, "rr"),
        list_of(5, "iirr"),
        list_of(6, "it"),
        list_of(7, "t"),
        list_of(8, "ii" + 10 * "r"),
        list_of(9, "tti"),
        list_of(10, 12 * "i"),
        list_of(11, ""),
        list_of(12, "irt"),
        list_of(13, "ti"),
        list_of(14, "ti"),
        fixed_by(21, "I5,5X,I2"),
        fixed_by(22, "4(I5),16(F15.5)"),
        fixed_by(23, "2(F10.0)"),
        fixed_by(24, "7X,I5,11X,I3,8X,F10.0"),
        fixed_by(25, "A40"),
        fixed_by(26, "I5,5X,A40"),
        fixed_by(27, "A512"),
        fixed_by(28, "F10.4"),
        fixed_by(29, "F20.9"),
        fixed_by(30, "2(F15.5)"),
        fixed_by(31, "I12"),
        fixed_by(32, "A5,5X,A30"),
        fixed_by(33, "7X,I5,11X,I5,18X,F10.0"),
        fixed_by(34, "F40.3"),
        fixed_by(35, "I1,F3.2,I2"),
        fixed_by(36, "F200.0"),
    )
}
LISTS = [s for s in STATEMENTS.values() if s.fields is None]
FIXED = [s for s in STATEMENTS.values() if s.fields is not None]
LINE_ENDS = ["\n"] * 6 + ["\r\n"] * 2
ALPHABET = "0123456789+-.EeDdQq*,/;'\" \t\rabNI\n\0\xe9\f!"


def exact_decimals(value):
    """Sign, digits and power of ten of a dyadic fraction, exactly."""
    sign = "-" if value < 0 else ""
    exponent = value.denominator.bit_length() - 1
    return sign, str(abs(value.numerator) * 5**exponent), -exponent


def random_single(rng):
    while True:
        kind = rng.random()
        bits = rng.getrandbits(32)
        if kind < 0.1:
            bits &= 0x807FFFFF  # below the normal numbers
        elif kind < 0.15:
            bits = bits & 0x80000000 | 0x7F7FFFF0 | rng.getrandbits(4)
        elif kind < 0.6:
            bits = bits & 0x807FFFFF | rng.randint(97, 157) << 23
        value = struct.unpack("<f", struct.pack("<I", bits))[0]
        if value == value and abs(value) < 3.5e38:
            return bits, value


def halfway(rng):
    """A text at, or by one digit beside, the middle between two neighbouring numbers."""
    bits, value = random_single(rng)
    neighbour = struct.unpack("<f", struct.pack("<I", bits ^ 1))[0]
    if rng.random() < 0.6:
        # Beside the middle, but so near that double precision takes it for the middle, sometimes.
        bits = rng.randint(127, 139) << 23 | rng.getrandbits(22) << 1
        value, neighbour = struct.unpack("<ff", struct.pack("<II", bits, bits | 1))
        return "%.*g" % (rng.choice([14, 15, 15, 15, 15, 16]), (value + neighbour) / 2)
    sign, digits, exponent = exact_decimals((Fraction(value) + Fraction(neighbour)) / 2)
    nudge = rng.choice(["", "", "0", "1", "0" * rng.randint(1, 150) + "1", "-"])
    if nudge == "-":
        digits = str(max(int(digits) * 10 - 1, 0))
        exponent -= 1
    elif nudge:
        digits, exponent = digits + nudge, exponent - len(nudge)
    return spelled(rng, sign, digits, exponent)


def spelled(rng, sign, digits, exponent):
    """A number in one of its many spellings."""
    point = rng.randint(0, min(len(digits), 40))
    power = exponent + len(digits) - point
    text = digits[:point] + "." + digits[point:] if point < len(digits) or rng.random() < 0.6 else digits
    if rng.random() < 0.3 and -45 < exponent <= 0:
        padded = digits.rjust(1 - exponent, "0")
        text, power = padded[: len(padded) + exponent] + "." + padded[len(padded) + exponent :], 0
    if rng.random() < 0.1:
        text = "0" * rng.randint(1, 12) + text
    if power or rng.random() < 0.1:
        letter = rng.choice(["E", "e", "D", "d", "Q", "q", ""])
        number = "%0*d" % (rng.randint(1, 4), abs(power))
        text += letter + ("-" if power < 0 else rng.choice("+" if not letter else ["+", ""])) + number
    return (sign or rng.choice(["", "", "", "+"])) + text


def real(rng):
    kind = rng.random()
    if kind < 0.3:
        return "%.*f" % (rng.randint(0, 8), rng.uniform(-1, 1) * 10 ** rng.randint(-3, 6))
    if kind < 0.5:
        return "%.*g" % (rng.randint(1, 18), random_single(rng)[1])
    if kind < 0.6:
        return rng.choice(["0", "-0", "-0.0", "0.", ".0", "0e5", "-0e-9", "1", "-1", "+.5", "5.", "1e39",
                           "1e-46", "7e-46", "3.4028235e38", "3.40282357e38", "-.0e99", "1+2", "1.-2"])
    if kind < 0.61:
        return rng.choice(["NaN", "nan(1)", "Inf", "-infinity", "+INF", ".", "-", "E5", ".*2", "1.5e"])
    if kind < 0.7:
        return str(rng.getrandbits(rng.randint(1, 120)))
    if kind < 0.85:
        return halfway(rng)
    sign, digits, exponent = exact_decimals(Fraction(random_single(rng)[1]))
    return spelled(rng, sign, digits, exponent)


def integer(rng):
    kind = rng.random()
    if kind < 0.6:
        return str(rng.randint(-20, 300))
    if kind < 0.8:
        digits = "0" * rng.randint(0, 9) + str(rng.getrandbits(rng.randint(1, 33)))
        return rng.choice(["", "", "+", "-"]) + digits
    return str(rng.choice([2**31 - 1, 2**31, -(2**31), -(2**31) - 1, 10**9, 10**10, 2**32 + 5, 0]))


def word(rng):
    return "".join(rng.choice("abcXYZ09_.-()*") for _ in range(rng.randint(1, 14)))


def quoted(rng):
    delimiter = rng.choice("'\"")
    other = "\"" if delimiter == "'" else "'"
    parts = list("aB ,/\t;\n\xe9") + ["\r\n", "12", "long text ", delimiter * 2, other]
    return delimiter + "".join(rng.choice(parts) for _ in range(rng.randint(0, 9))) + delimiter


def soup(rng, longest=14):
    """Characters from a small part of the alphabet, so that most texts have few oddities."""
    letters = rng.sample(ALPHABET, rng.randint(2, 7)) + ["1", "2", rng.choice(" ,\n.")]
    return "".join(rng.choice(letters) for _ in range(rng.randint(0, longest)))


def mutated(rng, text):
    for _ in range(rng.randint(1, 2)):
        at = rng.randint(0, len(text))
        cut = rng.choice([0, 0, 1, 1, 3])
        text = text[:at] + rng.choice(["", rng.choice(ALPHABET), rng.choice(" ,/*'\n-.1")]) + text[at + cut :]
    return text


def value_for(rng, kind):
    if rng.random() < 0.02:
        return soup(rng, 6)
    if rng.random() < 0.02:
        kind = rng.choice("irt")
    text = {"i": integer, "r": real, "t": rng.choice([word, quoted])}[kind](rng)
    if kind == "r" and rng.random() < 0.3:
        return integer(rng)
    return text


def separator(rng, line_end):
    kind = rng.random()
    if kind < 0.5:
        return rng.choice([" ", "  ", "\t", "   ", " \t "])
    if kind < 0.7:
        return rng.choice([",", ", ", " ,", " , "])
    if kind < 0.9:
        before, behind = rng.choice(["", " ", ",", " , "]), rng.choice(["", "", ",", "  ", " ,", line_end])
        return before + line_end + behind
    return rng.choice([",,", ", ,", " ,,, ", "," + line_end * 2 + ",", "/", " / "] + list(";\r!\f\0"))


def long_filling(rng, characters):
    """Enough to leave what a reader keeps in memory, often so that it ends near a power of two."""
    length = rng.choice([4096, 8192, 65536, 65536, 65536, 70001])
    return rng.choice(characters) * (length - rng.randint(0, 80))


def list_text(rng, statement):
    line_end = rng.choice(LINE_ENDS)
    text = long_filling(rng, " \n") if rng.random() < 0.003 else ""
    text += rng.choice([""] * 9 + [" ", "\t", line_end, ",", " " + line_end + line_end, "/", line_end + ","])
    index = 0
    while index < len(statement.kinds) + rng.choice([0, 0, 0, 1]):
        kind = statement.kinds[min(index, len(statement.kinds) - 1)] if statement.kinds else "t"
        repeat = rng.choice([1, 2, 2, 3, 7, 20, 200000001]) if rng.random() < 0.08 else 0
        if repeat:
            text += "%s%d*" % (rng.choice(["", "", "", "0"]), repeat)
        text += value_for(rng, kind) if not repeat or rng.random() < 0.7 else ""
        index += max(repeat, 1)
        if rng.random() < 0.02:
            text += rng.choice(["/", " /", line_end + "/", line_end * 2 + " / x"])
        if rng.random() < 0.003:
            text += long_filling(rng, " ")
        text += separator(rng, line_end)
    return text + rng.choice(["", "", " rest", "/ rest"]) + line_end + tail(rng, line_end)


def tail(rng, line_end):
    lines = rng.choice([["next"], ["next line", ""], ["   7 8", "and more"], ["", ""], ["1 2 3", ""], [""]])
    return line_end.join(lines)


def field_text(rng, kind, width):
    if kind == "t":
        text = "".join(rng.choice("abc XYZ,/'\t\xe9") for _ in range(rng.randint(0, width + 1)))
        return text[:width].ljust(width)
    choice = rng.random()
    if choice < 0.08:
        return " " * width
    if choice < 0.12:
        return soup(rng, width).replace("\n", "1")[:width].ljust(width)
    text = integer(rng) if kind == "i" or choice < 0.35 else real(rng)
    if len(text) > width:
        text = text[: rng.randint(1, width)] if choice < 0.6 else str(rng.randint(0, 9))
    if rng.random() < 0.1:
        at = rng.randint(0, len(text))
        text = text[:at] + " " + text[at:]
    if rng.random() < 0.03:
        text = mutated(rng, text).replace("\n", " ")
    text = text[:width]
    left = width - len(text) if rng.random() < 0.7 else rng.randint(0, width - len(text))
    return (" " * left + text).ljust(width)


def fixed_text(rng, statement):
    line_end = rng.choice(LINE_ENDS)
    line = ""
    for kind, offset, width, _ in statement.fields:
        line = "".join([line, "".join(rng.choice("  x,1") for _ in range(offset - len(line)))])
        line += field_text(rng, kind, width)
    if rng.random() < 0.3:
        line = line[: rng.randint(0, len(line))]
    if rng.random() < 0.3:
        line = line.rstrip(" ")
    if rng.random() < 0.2:
        line += rng.choice(["x", " behind", "," * 20, "\t", long_filling(rng, "9z ,")])
    return line + rng.choice([line_end] * 30 + ["", "\r"]) + tail(rng, line_end)


def random_case(rng):
    """A statement and a text for it, in bytes."""
    kind = rng.random()
    statement = rng.choice(LISTS if kind < 0.6 else FIXED)
    if rng.random() < 0.2:
        text = soup(rng, rng.choice([6, 14, 40]))
    else:
        text = list_text(rng, statement) if statement.fields is None else fixed_text(rng, statement)
    if rng.random() < 0.1:
        text = mutated(rng, text)
    if rng.random() < 0.1:
        text = text.rstrip("\r\n")
    if rng.random() < 0.003:
        text = rng.choice(["\xef\xbb\xbf", "\xff\xfe", "\xfe\xff"]) + text
    return statement.number, text.encode("latin-1")


def random_cases(seed, count):
    rng = random.Random(seed)
    for _ in range(count):
        yield random_case(rng)
