"""Records of model input files made at random: numbers and texts as people and programs write them."""

from dataclasses import dataclass

WORDS = (b"Upper", b"Lower", b"Pool", b"Bay", b"Reach", b"Mill", b"12", b"3rd", b"O'Brien", b"\xc9tang", b"D\xfcne",
         b"North-East", b"a*b", b"7*7", b"x;y", b"(old)", b"\xe6\xb9\x96", b"Sill#4", b'5"pipe')


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


def column_real(rng, width, digits=2):
    """A real that fits columns of that width; one that is too long gets an exponent and fewer digits."""
    text = rng.choice((b"", b"%d" % rng.randint(-99999, 9999999), real_text(rng), real_text(rng), real_text(rng),
                       b"%.5f" % rng.uniform(0, 1e6)))
    return text if len(text) <= width else b"%.*E" % (digits, random_real(rng))


def fixed_real(rng, width, digits):
    """Such a real at some place in its columns."""
    text = column_real(rng, width, digits)
    return rng.choice((text.rjust(width), text.rjust(width), text.ljust(width), text.center(width)))


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


def count_record(rng, name, value, kept=0):
    """A count alone in its record. One that is what it stays without a value may be left out."""
    if value == kept and rng.random() < 0.35:
        line = rng.choice((b"/", b",", b"1*", b" / as before", b"5*/", b",,", b"\t, 7"))
        return Record(name, "list", [line])
    return integer_record(rng, name, value)


def sparse_record(rng, name, values):
    """Values of a list of which now and then some are left out."""
    if rng.random() > 0.1:
        return list_record(rng, name, values)
    values = [rng.choice((value, b"")) for value in values]
    separator = rng.choice((b",", b" , ", b" "))
    end = rng.choice((b"/", b" /", b" / 3 4"))
    left_out = b"" if b"," in separator else b"1*"
    return Record(name, "list", [separator.join(value or left_out for value in values) + end])


def real_record(rng, name, count):
    return list_record(rng, name, [real_text(rng) for _ in range(count)])


def caption_record(rng, name):
    return Record(name, "caption",
                  [rng.choice((b"", b"  Segment names", b"Segment  Bottom  Type  Volume", b"/", b"'"))])


def title_record(rng, name):
    titles = (b"Lake model", b"'Lake model, 1998'", b'"Lake ""A"""', b"12 segments", b"1998/99 run", b"x", b"3*")
    return Record(name, "list", [rng.choice(titles)])


def section_title_record(rng, name):
    """Among them titles that are long, left out, behind empty lines or over several."""
    if rng.random() < 0.7:
        return title_record(rng, name)
    return Record(name, "list", [*rng.choice((
        (b"",  b"Lake"), (b"", b" \t", b"'Lake model'  "), (b"'Lake", b"", b"model'"), (b"x" * 100,),
        (b"'" + b"long title " * 12 + b"'",), (b"/",), (b" / Lake",), (b",",), (b"''",), (b"\"D'\xc9tang\", 1998",),
        (b"12*'a'",), (b"2*Lake", )))])


SKIPPED = (b" ", b" ", b" ", b" ", b"x", b"7", b"\t", b".", b"/", b"'", b"-")


def column_record(rng, name, fields):
    """A line with columns: of every field how many are skipped before it, how many it has, and its text.

    A text too long for its columns leaves them blank, as do now and then a whole field and, in a short line,
    all from some column on.
    """
    line = b""
    for skipped, width, text in fields:
        if rng.random() < 0.04 and line:
            return Record(name, "fixed", [line + skipped_columns(rng, rng.randint(0, skipped))])
        line += skipped_columns(rng, skipped) + placed_text(rng, text, width)
    remark = rng.choice((b"", b"", b"", b"  remark", b"9", b"\t1 2 3"))
    return Record(name, "fixed", [line.rstrip(b" ") if rng.random() < 0.2 and not remark else line + remark])


def skipped_columns(rng, width):
    """Mostly blank, sometimes something to look like a remark or a neighbour's digit."""
    if rng.random() < 0.7:
        return b" " * width
    if rng.random() < 0.5:
        return b"parameter number, class, value"[:width].ljust(width)
    return b"".join(rng.choice(SKIPPED) for _ in range(width))


def placed_text(rng, text, width):
    """A number in its columns, now and then with blanks inside it."""
    if len(text) > width or rng.random() < 0.03:
        return b" " * width
    if text and len(text) < width and rng.random() < 0.1:
        position = rng.randint(1, len(text))
        text = text[:position] + b" " + text[position:]
    return rng.choice((text.rjust(width), text.rjust(width), text.ljust(width), text.center(width)))


def header_record(rng, version):
    model_type = rng.choice((11, 11, 11, 11, 11, 8, 7, 1))
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


def segment_opening(rng, segment_count):
    return [integer_record(rng, "segment_count", segment_count),
            integer_record(rng, "bed_volume_option", rng.randint(0, 1)),
            real_record(rng, "bed_time_step", 1),
            real_record(rng, "volume_factors", 2),
            caption_record(rng, "names_caption")]


def text_line_record(rng, name):
    """A line whose first columns go to the host or the console as they stand."""
    line = rng.choice((b"", b"   ", b"Surface water", b"  Inflow at the mill, 1998  ", b"'Pool' / 3*5",
                       b"x" * 30, b"0123456789" * 9, b" " * 29 + b"yz", b"tab\there", b"NUL\0here  ", b"\0",
                       b"D\xfcne \xe6\xb9\x96", b'a "quoted" \\ text', b"12", b"cr\rinside"))
    return Record(name, "caption", [line])


def file_name_record(rng, name):
    """A line of which 512 columns are a path."""
    line = rng.choice((b"", b"river.hyd", b"C:\\models\\lake one.hyd", b"/data/river.hyd  ", b" leading.hyd",
                       b"p" * 511, b"p" * 512, b"p" * 600, b"a\0b.hyd", b"'quoted.hyd'"))
    return Record(name, "caption", [line])
