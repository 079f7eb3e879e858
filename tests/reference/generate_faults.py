"""Faults for generated files. Each takes the records of a file, changes one thing in them and says what."""

from generate_records import exponent_text, random_real

ODD_NUMBERS = (b"2147483647", b"-2147483648", b"2147483648", b"-2147483649", b"99999999999999999999", b"+", b"-", b".",
               b"1e", b"1e+", b".e5", b"1.5.2", b"--1", b"1e39", b"-3.5D38", b"3.40282356e38", b"3.40282357e38",
               b"1e-60", b"-1e-46", b"1.4e-45", b"0e999999999999", b"1e999999999999", b"inf", b"NaN", b"'5'", b'"5"',
               b"5x", b"0x10", b"1;2", b"T", b"-0", b"-0.0", b"16777217", b"8388608.5", b"0" * 60 + b"7",
               b"1" + b"0" * 60 + b"e-60", b"0." + b"0" * 60 + b"5e61", b"1_0", b"1,5", b"5/")
HOSTILE_COUNTS = (b"2000000000", b"2147483647", b"2147483648", b"100001", b"99", b"-1", b"-2000000000", b"-2147483648",
                  b"0", b"", b",", b"/", b"1*", b"2*3")
REPEATS = (b"0*", b"00*", b"1*", b"2*", b"3*", b"13*", b"002*", b"2000000000*", b"2147483647*", b"2147483648*",
           b"99999999999999999999*", b"-2*", b"+2*", b"2**", b"2.*", b"2 *")


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
    record, index = any_line(rng, records, ("fixed",) if any(record.reading == "fixed" for record in records)
                             else ("list",))
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


def long_series(rng, records):
    """A series that is too long, or just not; in neither case there are as many breakpoints."""
    series = [record for record in records if record.name == "breakpoint_count"]
    if not series:
        return bad_digit(rng, records)
    record = rng.choice(series)
    record.lines = [rng.choice((b"170000", b"170001", b"1*170001", b"170001/", b"200000"))]
    return f"{record.lines[0]!r} breakpoints"


def replace_lines(rng, records, changes):
    """The records of those names, all of which every file has, get other lines."""
    for record in records:
        if record.name in changes:
            record.lines = [rng.choice(changes[record.name])]
    return ", ".join(f"{name} out of range" for name in changes)


def many_functions(rng, records):
    return replace_lines(rng, records, {"time_function_count": (b"51", b"1*51", b" 51/", b"2147483647")})


NONE_OR_LESS = (b"0", b"-1", b"/")
UNBACKED = (b"100001", b"2000000000", b"2147483647")


def unbacked_parameters(rng, records):
    return replace_lines(rng, records, {"parameter_segment_count": UNBACKED, "parameter_count": NONE_OR_LESS})


def unbacked_conditions(rng, records):
    return replace_lines(rng, records,
                         {"initial_system_count": (b"0", b"-1"), "initial_segment_count": UNBACKED})


def segment_outside(rng, records):
    """A segment number of an initial condition that no segment has."""
    values = [record for record in records if record.name == "initial_value"]
    if not values:
        return bad_digit(rng, records)
    record = rng.choice(values)
    record.lines = [rng.choice((b"0", b"-1", b"13", b"2000", b"2147483647", b"/", b"1*", b",")) + b" 1.5 .5"]
    return f"segment in {record.lines[0]!r}"


def cut(rng, records):
    """The file ends before a record."""
    start = rng.randrange(len(records))
    name = records[start].name
    del records[start:]
    return f"cut before a {name}"


COLUMN_RECORDS = ("parameter", "parameter_value", "constant", "factors")


def changed_column(rng, records):
    """Something at a column of a record with columns, where a number stands or where nobody looks."""
    columned = [record for record in records if record.reading == "fixed" and record.name in COLUMN_RECORDS]
    if not columned:
        return bad_digit(rng, records)
    record = rng.choice(columned)
    line = record.lines[0]
    position = rng.randrange(rng.choice((20, 64)))
    byte = rng.choice((b"\t", b"x", b".", b",", b"-", b"+", b"E", b"/", b"*", b" ", b"5", b"\0", b"\r"))
    record.lines = [line[:position].ljust(position) + byte + line[position + 1:]]
    return f"column {position + 1} of {record.name} is {byte!r}"


def shifted_columns(rng, records):
    """A line with columns moved to one side, so that numbers reach into columns that are skipped."""
    columned = [record for record in records if record.reading == "fixed" and record.name in COLUMN_RECORDS]
    if not columned:
        return bad_digit(rng, records)
    record = rng.choice(columned)
    record.lines = [rng.choice((b" " + record.lines[0], b"\t" + record.lines[0], record.lines[0][1:],
                                b"     " + record.lines[0]))]
    return f"{record.name} with shifted columns"


def other_option(rng, records):
    """Another hydraulic option of segment 1; a file name is missing then, or one too many."""
    geometry = [record for record in records if record.name == "geometry"]
    if not geometry:
        return bad_digit(rng, records)
    option = rng.choice((b"    0", b"    3", b"3    ", b"  3  ", b"   +3", b"   03"))
    geometry[0].lines = [geometry[0].lines[0][:15].ljust(15) + option + geometry[0].lines[0][20:]]
    return f"hydraulic option {option!r}"


FAULTS = (bad_digit, odd_number, odd_number, exponent, repeat_count, repeat_count, empty_value, slash, slash,
          open_quote, hostile_count, hostile_count, missing_lines, additional_line, comma_between_lines, tab,
          short_line, embedded_blank, long_line, strange_byte)
OPENING_FAULTS = (*FAULTS, hostile_bypass)
CURRENT_OPENING_FAULTS = (*FAULTS, other_option, other_option, other_option)
CURRENT_SECTION_FAULTS = (*FAULTS, long_series, segment_outside, segment_outside, cut, cut, cut, changed_column,
                          changed_column, changed_column, shifted_columns)
SECTION_FAULTS = (*FAULTS, long_series, many_functions, unbacked_parameters, unbacked_conditions,
                  segment_outside, cut, cut)
