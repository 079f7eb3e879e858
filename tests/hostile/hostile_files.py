"""Files under a megabyte that want the most time or memory: the tables of tests/memory in small, and what else a file can do."""

from tables import CASES as TABLES
from tables import CURRENT, FILE_BYTES, LEGACY, MOST_BREAKPOINTS, OPTIONS, count_of, file_text, numbered, table

TWENTY_EIGHT_SYSTEMS = b"   11      2\n" + OPTIONS % 28 + b"0\n28*0\n0\n0\n"
# The air temperature, which is a parameter of every segment in the current model.
AIR_TEMPERATURE = b"1\n10\na\n0\n"


def legacy(**sections):
    """The small legacy model with other texts for some sections."""
    return b"".join(sections.get(name.replace(" ", "_"), text) for name, text in LEGACY.items())


def current(**sections):
    return b"".join(sections.get(name.replace(" ", "_"), text) for name, text in CURRENT.items())


def many_concentrations():
    """One system of the file, but 28 state variables that get a concentration in every segment."""
    return legacy(model_parameters=TWENTY_EIGHT_SYSTEMS,
                  initial_conditions=table(b"1\n%d\na\n1\n1\n1\na\n", b"1/\n"))


def one_bucket():
    """Numbers that a hash table with a prime number of buckets would keep in one of them."""
    rows = [b"%d\n0\n" % (42043 * factor) for factor in range(-35000, 35000)]
    return current(time_functions=b"a\n%d\n" % len(rows) + b"".join(rows))


def busy_send_buffers():
    """A load that fills both send buffers with values that differ from their neighbours, and many short loads behind it."""
    long_load = b"1\n%d\n" % MOST_BREAKPOINTS + b"1/\n/\n" * (MOST_BREAKPOINTS // 2)
    count = (FILE_BYTES - len(long_load)) // 4
    return legacy(loads=b"0\n1\na\n%d\n/\n" % (1 + count) + long_load + b"/\n/\n" * count)


def flags(last):
    count = count_of(b"0 ")
    return (b"   11      2\n" + OPTIONS % (count + 1) + b"0\n" + b"0 " * count + last)


# Name, and what makes the file.
OTHERS = [
    ("legacy: a state variable and a segment for every few bytes", many_concentrations),
    ("legacy: 100000 segments that no record backs, 28 state variables",
     lambda: legacy(model_parameters=TWENTY_EIGHT_SYSTEMS, initial_conditions=b"0\n100000\n")),
    ("legacy: 100000 segments that no record backs, air temperature",
     lambda: legacy(time_functions=AIR_TEMPERATURE, segment_parameters=b"100000\n0\n",
                    model_parameters=TWENTY_EIGHT_SYSTEMS)),
    ("legacy: 100000 initial conditions of the last segment",
     lambda: legacy(initial_conditions=b"1\n100000\na\n1\n1\n1\na\n" + b"100000/\n" * 100000)),
    ("legacy: send buffers full of different numbers", busy_send_buffers),
    ("current: time functions that would share a bucket", one_bucket),
    ("current: time functions in order", lambda: current(time_functions=b"a\n" + numbered(b"%d\n", b"%d\n0\n"))),
    ("current: constants in order",
     lambda: current(constants=b"a\n" + numbered(b"%d\n", b"%5d\n"))),
    ("a number of a million digits", lambda: legacy(constants=b"1\n1 " + b"9" * FILE_BYTES + b"\n")),
    ("a fraction of a million digits", lambda: legacy(constants=b"1\n1 0." + b"0" * FILE_BYTES + b"1\n")),
    ("a bad value at the end of a long line", lambda: flags(b"x\n")),
    ("values left out in a long line", lambda: flags(b"0\n").replace(b"0 0 ", b",,,,")),
    ("a million line ends", lambda: b"\n" * FILE_BYTES),
    ("line ends where a number should be", lambda: legacy(constants=b"\n" * FILE_BYTES)),
    ("line ends of another system", lambda: legacy(constants=b"\r" * FILE_BYTES)),
    ("a million NULs", lambda: b"\0" * FILE_BYTES),
    ("NULs where a name should be", lambda: legacy(exchanges=b"1\n" + b"\0" * FILE_BYTES)),
    ("a quote that never closes", lambda: legacy(loads=b"0\n1\n'" + b"x\n" * (FILE_BYTES // 2))),
    ("a quote of quotes", lambda: legacy(loads=b"0\n1\n'" + b"''" * (FILE_BYTES // 2) + b"'\n")),
    ("counts with nothing behind them", lambda: legacy(loads=b"0\n2000000000\na\n2000000000\n/\n")),
]

FILES = [(name, lambda f=file_format, s=section, m=make: file_text(f, s, m()))
         for name, file_format, section, make in TABLES] + OTHERS
