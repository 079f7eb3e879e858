"""Small model input files made at random, valid or with one fault, for comparing importers.

    python3 tests/reference/generate.py SEED OUT

writes the file of that seed and says in one line what it is. The same seed always gives the same file.
"""

import random
import sys
from dataclasses import dataclass

WORDS = (b"Upper", b"Lower", b"Pool", b"Bay", b"Reach", b"Mill", b"12", b"3rd", b"O'Brien", b"\xc9tang", b"D\xfcne",
         b"North-East", b"a*b", b"7*7", b"x;y", b"(old)", b"\xe6\xb9\x96", b"Sill#4", b'5"pipe')
ODD_NUMBERS = (b"2147483647", b"-2147483648", b"2147483648", b"-2147483649", b"99999999999999999999", b"+", b"-", b".",
               b"1e", b"1e+", b".e5", b"1.5.2", b"--1", b"1e39", b"-3.5D38", b"3.40282356e38", b"3.40282357e38",
               b"1e-60", b"-1e-46", b"1.4e-45", b"0e999999999999", b"1e999999999999", b"inf", b"NaN", b"'5'", b'"5"',
               b"5x", b"0x10", b"1;2", b"T", b"-0", b"-0.0", b"16777217", b"8388608.5", b"0" * 60 + b"7",
               b"1" + b"0" * 60 + b"e-60", b"0." + b"0" * 60 + b"5e61", b"1_0", b"1,5", b"5/")
HOSTILE_COUNTS = (b"2000000000", b"2147483647", b"2147483648", b"100001", b"99", b"-1", b"-2000000000", b"-2147483648",
                  b"0", b"", b",", b"/", b"1*", b"2*3")
REPEATS = (b"0*", b"00*", b"1*", b"2*", b"3*", b"13*", b"002*", b"2000000000*", b"2147483647*", b"2147483648*",
           b"99999999999999999999*", b"-2*", b"+2*", b"2**", b"2.*", b"2 *")


@dataclass
class Record:
    """One read statement's worth of file: its lines, and how they are read ("list", "fixed", "caption")."""
    name: str
    reading: str
    lines: list


# --- numbers and texts as people and programs write them ------------------------------------------------------------

def integer_text(rng, value):
    return rng.choice((b"%d", b"%d", b"%d", b"%+d", b"%03d")) % value


def random_real(rng):
    return rng.choice((0.0, 1.0, rng.uniform(0, 1), rng.uniform(-10, 10), rng.uniform(0, 1e6),
                       10 ** rng.uniform(-40, 38), float(rng.randint(0, 9999)), rng.uniform(0, 1e-30)))


def exponent_text(rng, value):
    """Scientific notation in one of its many spellings."""
    mantissa, exponent = (f"%.{rng.randint(0, 17)}e" % value).split("e")
    letter = rng.choice("eEdDqQ")
    return rng.choice((f"{mantissa}{letter}{int(exponent)}", f"{mantissa}{letter}{int(exponent):+03d}",
                       f"{mantissa}{int(exponent):+d}", f"{mantissa}{letter}{exponent}")).encode("ascii")


def real_text(rng, value=None):
    value = random_real(rng) if value is None else value
    plain = f"%.{rng.randint(0, 8)}f" % value
    spellings = (plain, plain, plain.removeprefix("0"), plain.rstrip("0"), "%d" % value)
    text = rng.choice(spellings).encode("ascii")
    if rng.random() < 0.35 or text in (b"", b"-", b"."):
        return exponent_text(rng, value)
    return text


def random_name(rng):
    name = b" ".join(rng.choice(WORDS) for _ in range(rng.choice((1, 1, 2, 2, 3, 8))))
    return rng.choice((b"", b"", b"", b" ")) + name


def list_text(rng, text):
    """A text of a free-form list: quoted, or as it stands if its writer did not know better."""
    if rng.random() < 0.2:
        return text
    quote = rng.choice((b"'", b'"'))
    return quote + text.replace(quote, quote * 2) + quote


# --- records --------------------------------------------------------------------------------------------------------

def joined(rng, values):
    """Values of a free-form list on one line or several, with the separators that the grammar allows."""
    lines = [rng.choice((b"", b"", b" ", b"   ", b"\t"))]
    values = repeated_values(values) if rng.random() < 0.15 else values
    for index, value in enumerate(values):
        lines[-1] += value
        if index + 1 < len(values):
            lines[-1] += rng.choice((b" ", b" ", b"  ", b",", b", ", b" , ", b"\t"))
            if rng.random() < 0.04:
                lines.append(rng.choice((b"", b" ", b" ")))
    lines[-1] += rng.choice((b"", b"", b"", b" ", b" : comment, 1 2", b",", b"/", b" / comment"))
    return lines


def repeated_values(values):
    """Equal neighbours as a repeat count."""
    groups = []
    for value in values:
        if groups and groups[-1][1] == value:
            groups[-1][0] += 1
        else:
            groups.append([1, value])
    return [value if count == 1 else b"%d*%s" % (count, value) for count, value in groups]


def list_record(rng, name, values):
    return Record(name, "list", joined(rng, values))


def integer_record(rng, name, *values):
    return list_record(rng, name, [integer_text(rng, value) for value in values])


def real_record(rng, name, count):
    return list_record(rng, name, [real_text(rng) for _ in range(count)])


def caption_record(rng, name):
    return Record(name, "caption",
                  [rng.choice((b"", b"  Segment names", b"Segment  Bottom  Type  Volume", b"/", b"'"))])


def title_record(rng, name):
    titles = (b"Lake model", b"'Lake model, 1998'", b'"Lake ""A"""', b"12 segments", b"1998/99 run", b"x", b"3*")
    return Record(name, "list", [rng.choice(titles)])


def header_record(rng, version):
    model_type = rng.choice((11, 11, 11, 8, 7, 1))
    line = rng.choice((b"%5d     %2d", b"%5dabcde%2d", b"%-5d     %-2d")) % (model_type, version)
    return Record("header", "fixed", [line + rng.choice((b"", b"", b"   KOVA input"))])


def date_and_option_records(rng, system_count):
    records = [
        integer_record(rng, "start", rng.randint(1, 12), rng.randint(1, 28), rng.randint(1990, 2030),
                       rng.randint(0, 23), rng.randint(0, 59), 0),
        integer_record(rng, "skip", *[rng.choice((0, 0, 1, 12)) for _ in range(6)]),
        real_record(rng, "simulation_length", 1),
        integer_record(rng, "system_count", system_count)]
    records += [integer_record(rng, name, rng.randint(0, 3)) for name in (
        "unsent_option", "solution_type", "negative_solution_option", "icrd_option", "intyp_option",
        "discarded_option")]
    return records + [real_record(rng, "time_step_fraction", 1), real_record(rng, "time_steps", 2)]


def legacy_records(rng, segment_count):
    system_count = rng.choice((0, 1, 3, 10, 28, 30, 35))
    intervals = rng.choice((0, 1, 1, 2, 4))
    records = [header_record(rng, rng.choice((0, 1, 2, 2, 2, -1)))]
    records += date_and_option_records(rng, system_count)
    records.append(integer_record(rng, "output_interval_count", intervals))
    records += [real_record(rng, "output_interval", 2) for _ in range(intervals)]
    records.append(integer_record(rng, "bypass_flags", *[rng.choice((0, 0, 1, 2)) for _ in range(system_count)]))
    for name in ("scratch_1", "scratch_2"):
        count = rng.choice((0, 0, 1, 3))
        records.append(integer_record(rng, name + "_count", count))
        records += [Record(name, "caption", [rng.choice((b"", b"1 2 3", b"0 0. /", b"'"))]) for _ in range(count)]
    return records + segment_opening(rng, segment_count) + legacy_segments(rng, segment_count)


def segment_opening(rng, segment_count):
    return [integer_record(rng, "segment_count", segment_count),
            integer_record(rng, "bed_volume_option", rng.randint(0, 1)),
            real_record(rng, "bed_time_step", 1),
            real_record(rng, "volume_factors", 2),
            caption_record(rng, "names_caption")]


def legacy_segments(rng, segment_count):
    names = [list_record(rng, "segment_name", [integer_text(rng, index), list_text(rng, random_name(rng))])
             for index in range(1, segment_count + 1)]
    geometry = [list_record(rng, "geometry", [integer_text(rng, index), integer_text(rng, rng.randint(0,
                                                                                                      segment_count)),
                                              integer_text(rng, rng.randint(1, 4))]
                            + [real_text(rng) for _ in range(10)])
                for index in range(1, segment_count + 1)]
    return names + [caption_record(rng, "geometry_caption")] + geometry


def current_records(rng, segment_count):
    system_count = rng.choice((0, 1, 2, 3, 6))
    records = [header_record(rng, rng.choice((3, 3, 8, 99))), title_record(rng, "title")]
    records += date_and_option_records(rng, system_count)
    records.append(real_record(rng, "output_interval", 1))
    records += [Record("system_name", "fixed", [b"%-5.5s     %s" % (rng.choice((b"NH-34", b"DO", b"", b"CBODU1")),
                                                                    random_name(rng))])
                for _ in range(system_count)]
    records.append(title_record(rng, "segment_title"))
    return records + segment_opening(rng, segment_count) + current_segments(rng, segment_count)


def current_segments(rng, segment_count):
    names = [Record("segment_name", "fixed",
                    [b"%5d%5s%s" % (index, rng.choice((b"", b"abcde", b"1")), random_name(rng))])
             for index in range(1, segment_count + 1)]
    geometry = [Record("geometry", "fixed", [geometry_columns(rng, index)]) for index in range(1, segment_count + 1)]
    return names + [caption_record(rng, "geometry_caption")] + geometry


def geometry_columns(rng, index):
    """Columns of width 5 and 15; a number without a point has five implied decimals."""
    columns = b"".join(b"%5d" % value for value in (index, rng.randint(0, 9), rng.randint(1, 4), rng.randint(0, 4)))
    reals = [fixed_real(rng) for _ in range(rng.choice((16, 16, 16, 16, 10, 3)))]
    return columns + b"".join(reals)


def fixed_real(rng):
    text = rng.choice((b"", b"%d" % rng.randint(-99999, 9999999), real_text(rng), real_text(rng), real_text(rng),
                       b"%.5f" % rng.uniform(0, 1e6)))
    if len(text) > 15:
        text = b"%.5E" % random_real(rng)
    return rng.choice((text.rjust(15), text.rjust(15), text.ljust(15), text.center(15)))


# --- faults ---------------------------------------------------------------------------------------------------------
# Each takes the records, changes one thing in them and says what.

def any_line(rng, records, readings=("list", "fixed", "caption")):
    """A record with lines, and the index of one of them."""
    record = rng.choice([record for record in records if record.reading in readings and record.lines])
    return record, rng.randrange(len(record.lines))


def word_spans(line):
    """Where the values of a line begin and end, roughly: at blanks and commas."""
    spans, start = [], None
    for position, byte in enumerate(line + b" "):
        if byte in b" ,\t":
            if start is not None:
                spans.append((start, position))
            start = None
        elif start is None:
            start = position
    return spans


def replace_word(rng, records, change, readings=("list",)):
    record, index = any_line(rng, records, readings)
    line = record.lines[index]
    start, end = rng.choice(word_spans(line) or [(len(line), len(line))])
    record.lines[index] = line[:start] + change(line[start:end]) + line[end:]
    return f"{record.name}: {line[start:end]!r} -> {record.lines[index][start:][:24]!r}"


def bad_digit(rng, records):
    return "bad digit in " + replace_word(rng, records,
                                          lambda word: word[:-1] + rng.choice((b"x", b"O", b"l", b"\xb2")),
                                          ("list", "fixed"))


def odd_number(rng, records):
    return "odd number in " + replace_word(rng, records, lambda word: rng.choice(ODD_NUMBERS), ("list", "fixed"))


def exponent(rng, records):
    return "exponent in " + replace_word(rng, records, lambda word: exponent_text(rng, random_real(rng)),
                                         ("list", "fixed"))


def repeat_count(rng, records):
    return "repeat count in " + replace_word(
        rng, records, lambda word: rng.choice(REPEATS) + rng.choice((word, word, b"", b"/", b",", b"'a b'")))


def empty_value(rng, records):
    return "empty value in " + replace_word(rng, records, lambda word: rng.choice((b"", b",", b",,", b" , , ")))


def slash(rng, records):
    return "slash in " + replace_word(rng, records, lambda word: rng.choice((b"/", word + b"/", b"/" + word)))


def open_quote(rng, records):
    return "quote in " + replace_word(rng, records, lambda word: rng.choice((b"'", b'"', b"''", b"'x'y ")) + word)


def hostile_count(rng, records):
    counts = [record for record in records if record.name.endswith("_count")]
    record = rng.choice(counts)
    record.lines = [rng.choice(HOSTILE_COUNTS)]
    return f"{record.name} is {record.lines[0]!r}"


def hostile_bypass(rng, records):
    """As many systems as fit an integer, all of them in one value."""
    count = rng.choice((b"2000000000", b"2147483647"))
    flags = rng.choice((count + b"*0", b"2147483647*1", b"28*0 1999999972*1", count + b"*x", b"30*0 2*1 2000000000*",
                        b"/"))
    for record in records:
        if record.name == "system_count":
            record.lines = [count]
        if record.name == "bypass_flags":
            record.lines = [flags]
    return f"{count.decode()} systems, flags {flags!r}"


def missing_lines(rng, records):
    start = rng.randrange(len(records))
    end = start + rng.randint(1, 3)
    names = ", ".join(record.name for record in records[start:end])
    del records[start:end]
    return "missing: " + names


def additional_line(rng, records):
    record, index = any_line(rng, records)
    line = rng.choice((b"", b"  ", b"\t", b",", b" ,", b"/", b"\r", b"1", b"x"))
    record.lines.insert(index + rng.randint(0, 1), line)
    return f"additional line {line!r} at {record.name}"


def comma_between_lines(rng, records):
    """A record broken in two, with commas about the line end."""
    record, index = any_line(rng, records, ("list",))
    line = record.lines[index]
    position = rng.choice([start for start, end in word_spans(line)] or [0])
    middle = rng.choice((b",\n", b"\n,", b",\n,", b"\n\n,", b"\n,\n,", b"\n/", b"\n /", b",,\n", b"2*\n", b"\n,,"))
    record.lines[index:index + 1] = (line[:position] + middle + line[position:]).split(b"\n")
    return f"{middle!r} inside {record.name}"


def tab(rng, records):
    record, index = any_line(rng, records)
    line = record.lines[index]
    position = line.find(b" ", rng.randint(0, len(line)))
    position = position if position >= 0 else 0
    record.lines[index] = line[:position] + b"\t" + line[position + 1:]
    return f"tab in {record.name}"


def short_line(rng, records):
    record, index = any_line(rng, records, ("fixed", "fixed", "list"))
    record.lines[index] = record.lines[index][:rng.randint(0, len(record.lines[index]))]
    return f"{record.name} cut to {len(record.lines[index])} columns"


def embedded_blank(rng, records):
    """In a fixed layout, blanks inside a number; the columns behind keep their places."""
    record, index = any_line(rng, records, ("fixed",))
    line = record.lines[index]
    position = rng.randint(0, len(line))
    record.lines[index] = (line[:position] + b" " + line[position:]).replace(b"  ", b" ", 1)
    return f"blank at column {position + 1} of {record.name}"


def long_line(rng, records):
    record, index = any_line(rng, records)
    size = rng.choice((1000, 4096, 65536, 200000))
    line = record.lines[index]
    record.lines[index] = rng.choice((b" " * size + line, line + b" " * size, line + b" " + b"x" * size,
                                      line.replace(b" ", b" " * size, 1), line.replace(b"0", b"0" * size, 1)))
    return f"line of {len(record.lines[index])} bytes in {record.name}"


def strange_byte(rng, records):
    record, index = any_line(rng, records)
    line = record.lines[index]
    position = rng.randint(0, len(line))
    byte = rng.choice((b"\x00", b"\x0b", b"\x0c", b"\r", b"\x1a", b"\x7f", b"\x80", b"\xa0", b"\xff", b"\xc3\xa9",
                       b";", b"!"))
    record.lines[index] = line[:position] + byte + line[position + rng.randint(0, 1):]
    return f"byte {byte!r} at column {position + 1} of {record.name}"


FAULTS = (bad_digit, odd_number, odd_number, exponent, repeat_count, repeat_count, empty_value, slash, slash,
          open_quote,
          hostile_count, hostile_count, hostile_bypass, missing_lines, additional_line, comma_between_lines, tab,
          short_line, embedded_blank, long_line, strange_byte)


# --- the file around the records -------------------------------------------------------------------------------------

def whole_file(rng, records):
    lines = [line for record in records for line in record.lines]
    lines += rng.choice(([], [], [b""], [b"Flow paths", b"0 0"]))
    ends = rng.choice(((b"\n",), (b"\n",), (b"\r\n",), (b"\n", b"\r\n")))
    content = b"".join(line + rng.choice(ends) for line in lines)
    if rng.random() < 0.15:
        content = content.removesuffix(b"\n").removesuffix(b"\r")
    if rng.random() < 0.1:
        content = b"\xef\xbb\xbf" + content
    return content


def break_bytes(rng, content):
    """Faults that do not care about records."""
    what = rng.choice(("truncated", "changed", "removed") * 4 + ("utf-16", "second mark"))
    position = rng.randint(0, len(content))
    if what == "truncated":
        return content[:position], f"truncated at byte {position}"
    if what == "changed":
        return content[:position] + bytes([rng.randrange(256)]) + content[position + 1:], f"byte {position} changed"
    if what == "removed":
        return content[:position] + content[position + 1:], f"byte {position} removed"
    if what == "utf-16":
        return content.decode("latin-1").encode("utf-16"), "UTF-16"
    return b"\xef\xbb\xbf" * 2 + content, "two byte-order marks"


def generate_described(seed):
    """The file of a seed and a line about it."""
    rng = random.Random(seed)
    family = rng.choice(("legacy", "current"))
    segment_count = rng.choice((0, 1, 2, 3, 5, 12)) if rng.random() > 0.01 else 1001
    records = (legacy_records if family == "legacy" else current_records)(rng, segment_count)
    description = f"seed {seed}: {family}, {segment_count} segments"
    choice = rng.random()
    if choice < 0.25:
        return whole_file(rng, records), description + ", no fault planted"
    if choice < 0.4:
        content, fault = break_bytes(rng, whole_file(rng, records))
    else:
        fault = rng.choice(FAULTS)(rng, records)
        content = whole_file(rng, records)
    return content, f"{description}, {fault}"


def generate(seed):
    return generate_described(seed)[0]


def main():
    if len(sys.argv) != 3:
        sys.exit("usage: generate.py SEED OUT")
    content, description = generate_described(int(sys.argv[1]))
    with open(sys.argv[2], "wb") as file:
        file.write(content)
    print(description)


if __name__ == "__main__":
    main()
