"""Files in which one table is blown up: small models with one section put in the place of their own.

A table is a row of CASES: its name, the format, the section, and the section's text, of which one piece is repeated."""

import os

FILE_BYTES = int(os.environ.get("KOVA_TABLE_BYTES", 20_000_000))

# The smallest model with something to hang tables on: one system, two segments.
OPTIONS = b"1 1 2010 0 0 0\n1 1 2010 0 0 0\n365.0\n%d\n0\n1\n0\n0\n1\n0\n0.9\n0.1 0.5\n"
LEGACY = {
    "model parameters": b"   11      2\n" + OPTIONS % 1 + b"0\n0\n0\n0\n",
    "segments": b"2\n0\n1.0\n1.0 1.0\nNames\n1 a\n2 b\nGeometry\n1/\n2/\n",
    "flow paths": b"1\n0\n",
    "flow time series": b"0\n",
    "exchanges": b"0\n",
    "boundary conditions": b"0\n",
    "loads": b"0\n0\n",
    "time functions": b"0\n",
    "segment parameters": b"2\n0\n",
    "constants": b"0\n",
    "initial conditions": b"0\n0\n",
}
CURRENT = {
    "model parameters": b"   11      3\nTitle\n" + OPTIONS % 1 + b"0.25\nNH-34     Ammonia\n",
    "segments": b"Title\n2\n0\n1.0\n1.0 1.0\nNames\n    1     a\n    2     b\nGeometry\n    1\n    2\n",
    "flow paths": b"Title\nTitle\n0\n",
    "flow time series": b"Title\n0\n",
    "exchanges": b"Title\n0\n",
    "boundary conditions": b"Title\n0\n",
    "loads": b"Title\n0\n0\n",
    "time functions": b"Title\n0\n",
    "segment parameters": b"Title\n2\n0\nTitle\n",
    "constants": b"Title\n0\n",
    "initial conditions": b"Title\n0\n0\n",
}
MODELS = {"legacy": LEGACY, "current": CURRENT}

MOST_BREAKPOINTS = 170000


def count_of(*pieces):
    """How often pieces can stand in a file."""
    return FILE_BYTES // sum(len(piece) for piece in pieces)


def table(before, row, behind=b""):
    """A count that `before` announces as %d, and that many rows."""
    count = count_of(row)
    return before % count + row * count + behind


def two_tables(before, first, between, second):
    """Two lists of as many rows each."""
    count = count_of(first, second)
    return before % count + first * count + between + second * count


def numbered(before, row):
    """Rows that each bear their number, as %d."""
    rows, size = [], 0
    while size < FILE_BYTES:
        rows.append(row % (len(rows) + 1))
        size += len(rows[-1])
    return before.replace(b"%d", b"%d" % len(rows)) + b"".join(rows)


def series_table(before, heading, row):
    """Series as long as they may be, each behind a heading that ends in its breakpoint count."""
    series = heading + b"%d\n" % MOST_BREAKPOINTS + row * MOST_BREAKPOINTS
    return table(before, series)


def parameter_values(row):
    """Values of one parameter in many segments."""
    count = count_of(b"/\n", row)
    return b"%d\n1\n1 1\n" % count + (b"/\n" + row) * count


# What both formats have behind the title that the current one puts first. A section's text may be made only when it is wanted:
# twenty megabytes each.
def both(section, name, make, title=b"Title\n"):
    return [(f"{file_format}: {name}", file_format, section,
             lambda file_format=file_format: (title if file_format == "current" else b"") + make())
            for file_format in MODELS]


CASES = [
    ("legacy: skipped records", "legacy", "model parameters",
     lambda: b"   11      2\n" + OPTIONS % 1 + b"0\n0\n" + table(b"%d\n", b"\n") + b"0\n"),
    ("legacy: output intervals", "legacy", "model parameters",
     lambda: b"   11      2\n" + OPTIONS % 1 + table(b"%d\n", b"/\n", b"0\n0\n0\n")),
    ("legacy: bypass flags", "legacy", "model parameters",
     lambda: b"   11      2\n" + OPTIONS % count_of(b"1 ") + b"0\n" + b"1 " * count_of(b"1 ") + b"\n0\n0\n"),
    ("legacy: repeated bypass flags", "legacy", "model parameters",
     lambda: b"   11      2\n" + OPTIONS % 2_000_000_000 + b"0\n2000000000*1\n" + table(b"%d\n", b"\n") + b"0\n"),
    ("current: system names", "current", "model parameters",
     lambda: b"   11      3\nTitle\n" + OPTIONS % count_of(b"\n") + b"0.25\n" + b"\n" * count_of(b"\n")),

    ("legacy: segments of slashes", "legacy", "segments",
     lambda: two_tables(b"%d\n0\n1.0\n1.0 1.0\nNames\n", b"/\n", b"Geometry\n", b"/\n")),
    ("legacy: segments of repeated values", "legacy", "segments",
     lambda: two_tables(b"%d\n0\n1.0\n1.0 1.0\nNames\n", b"2*1\n", b"Geometry\n", b"13*1\n")),
    ("legacy: segment names alone", "legacy", "segments",
     lambda: table(b"%d\n0\n1.0\n1.0 1.0\nNames\n", b"/\n")),
    ("current: segments of empty lines", "current", "segments",
     lambda: two_tables(b"Title\n%d\n0\n1.0\n1.0 1.0\nNames\n", b"\n", b"Geometry\n", b"\n")),
    ("current: segment names alone", "current", "segments",
     lambda: table(b"Title\n%d\n0\n1.0\n1.0 1.0\nNames\n", b"\n")),

    *both("exchanges", "exchange fields", lambda: table(b"%d\n", b"a\n0\n")),
    *both("exchanges", "exchange fields with a function", lambda: table(b"%d\n", b"a\n1\n/\n\n/\n/\n")),
    *both("exchanges", "exchange functions", lambda: table(b"1\na\n%d\n1 1\n", b"\n/\n/\n")),
    *both("exchanges", "exchange pairs", lambda: table(b"1\na\n1\n1 1\na\n%d\n", b"/\n", b"0\n")),
    *both("exchanges", "exchange pairs of repeated values", lambda: table(b"1\na\n1\n1 1\na\n%d\n", b"4*1\n", b"0\n")),
    *both("exchanges", "exchange breakpoints", lambda: table(b"1\na\n1\n1 1\na\n0\n%d\n", b"/\n")),
    *both("exchanges", "exchange breakpoints of repeated values",
          lambda: table(b"1\na\n1\n1 1\na\n0\n%d\n", b"2*1\n")),

    *both("boundary conditions", "boundary systems", lambda: table(b"%d\n", b"\n/\n")),
    *both("boundary conditions", "boundaries", lambda: table(b"1\na\n%d\n\n", b"/\n/\n")),
    *both("boundary conditions", "boundary breakpoints", lambda: series_table(b"1\na\n%d\n\n", b"/\n", b"/\n")),
    *both("boundary conditions", "boundary breakpoints of repeated values",
          lambda: series_table(b"1\na\n%d\n\n", b"/\n", b"2*1\n")),
    *both("loads", "load systems", lambda: table(b"0\n%d\n", b"a\n/\n")),
    *both("loads", "loads", lambda: table(b"0\n1\na\n%d\n/\n", b"/\n/\n")),
    *both("loads", "load breakpoints", lambda: series_table(b"0\n1\na\n%d\n/\n", b"/\n", b"/\n")),
    *both("loads", "load breakpoints of repeated values",
          lambda: series_table(b"0\n1\na\n%d\n/\n", b"/\n", b"2*1\n")),

    *both("flow time series", "fields of the flow series", lambda: table(b"%d\n", b"\n0\n")),
    *both("flow time series", "fields of the flow series with a function", lambda: table(b"%d\n", b"\n1\n/\n\n/\n")),
    *both("flow time series", "functions of the flow series", lambda: table(b"1\na\n%d\n1 1\n", b"\n/\n")),
    *both("flow time series", "flow breakpoints", lambda: table(b"1\na\n1\n1 1\na\n%d\n", b"/\n")),
    *both("flow time series", "flow breakpoints of repeated values", lambda: table(b"1\na\n1\n1 1\na\n%d\n", b"2*1\n")),

    ("legacy: flow fields", "legacy", "flow paths", lambda: table(b"1\n%d\n", b"\n0\n")),
    ("legacy: flow functions", "legacy", "flow paths", lambda: table(b"1\n1\na\n%d\n", b"\n/\n")),
    ("legacy: flow pairs", "legacy", "flow paths", lambda: table(b"1\n1\na\n1\na\n%d\n", b"/\n")),
    ("legacy: flow pairs of repeated values", "legacy", "flow paths", lambda: table(b"1\n1\na\n1\na\n%d\n", b"3*1\n")),
    ("current: flow fields", "current", "flow paths", lambda: b"a\nb\n" + table(b"%d\n", b"\n0\n")),
    ("current: flow functions", "current", "flow paths", lambda: b"a\nb\n" + table(b"1\na\n%d\n", b"\n/\n")),
    ("current: flow pairs", "current", "flow paths", lambda: b"a\nb\n" + table(b"1\na\n1\na\n%d\n", b"/\n")),
    ("current: flow pairs of repeated values", "current", "flow paths",
     lambda: b"a\nb\n" + table(b"1\na\n1\na\n%d\n", b"3*1\n")),

    ("legacy: breakpoints of a time function", "legacy", "time functions", lambda: table(b"1\n1\na\n%d\n", b"/\n")),
    ("legacy: breakpoints of a time function, repeated values", "legacy", "time functions",
     lambda: table(b"1\n1\na\n%d\n", b"2*1\n")),
    ("current: time functions", "current", "time functions", lambda: b"a\n" + table(b"%d\n", b"/\n/\n")),
    ("current: breakpoints of a time function", "current", "time functions",
     lambda: b"a\n" + table(b"1\n1\n%d\n", b"/\n")),

    # Parameter 9 becomes two parameters of the current model.
    ("legacy: segment parameters of slashes", "legacy", "segment parameters", lambda: table(b"0\n%d\n", b"/\n")),
    ("legacy: segment parameters", "legacy", "segment parameters", lambda: table(b"0\n%d\n", b"9\n1\n")),
    ("legacy: segment parameters without factor", "legacy", "segment parameters", lambda: table(b"0\n%d\n", b"9/\n")),
    ("legacy: parameter values of slashes", "legacy", "segment parameters", lambda: parameter_values(b"/\n")),
    ("legacy: parameter values", "legacy", "segment parameters", lambda: parameter_values(b",1\n")),
    ("current: segment parameters of empty lines", "current", "segment parameters",
     lambda: b"a\n" + table(b"0\n%d\na\n", b"\n", b"a\n")),
    ("current: parameter values of empty lines", "current", "segment parameters",
     lambda: b"a\n" + b"%d\n1\na\n\na\n" % count_of(b"/\n\n") + b"/\n\n" * count_of(b"/\n\n")),

    ("legacy: constants", "legacy", "constants", lambda: table(b"%d\n", b"1/\n")),
    ("legacy: constants that become series", "legacy", "constants", lambda: table(b"%d\n", b"2/\n")),
    ("legacy: constants of slashes", "legacy", "constants", lambda: table(b"%d\n", b"/\n")),
    ("current: constants of empty lines", "current", "constants", lambda: b"a\n" + table(b"%d\n", b"\n")),

    *both("initial conditions", "initial conditions in order",
          lambda: numbered(b"1\n%d\na\n1\n1\n1\na\n", b"%d/\n")),
    *both("initial conditions", "initial conditions that all name segment 1",
          lambda: table(b"1\n%d\na\n1\n1\n1\na\n", b"1/\n")),
    *both("initial conditions", "initial conditions that all name segment 2",
          lambda: table(b"1\n%d\na\n1\n1\n1\na\n", b"2/\n")),
    *both("initial conditions", "initial conditions that all name a late segment",
          lambda: table(b"1\n%d\na\n1\n1\n1\na\n", b"999999/\n")),
    *both("initial conditions", "systems of the initial conditions",
          lambda: table(b"%d\n0\n", b"\n/\n/\n/\n\n")),

    ("legacy: one long line", "legacy", "boundary conditions", lambda: b"0 " + b"x" * FILE_BYTES + b"\n"),
    ("legacy: a heading of one long text", "legacy", "exchanges", lambda: b"1\n'" + b"x" * FILE_BYTES + b"'\n0\n"),
]


def file_text(file_format, section, text):
    """A whole file in which `text` stands for the section."""
    return b"".join(text if name == section else ordinary for name, ordinary in MODELS[file_format].items())
