"""Small files for the unit tests, section by section and line by line, and what to look for in a log."""

LEGACY_OPENING = (b"   11      2\n", b"3 15 1998 6 30 0\n", b"6*0\n", b"365.25\n", b"10\n", b"0\n", b"1\n", b"0\n",
                  b"2\n",
                  b"3\n", b"9\n", b"0.9\n", b"0.001 0.5\n", b"2\n", b"0 1\n", b"10 .25\n", b"7*1 0 1 0\n", b"1\n",
                  b"scratch\n", b"0\n")
LEGACY_SEGMENTS = (b"2\n", b"1\n", b"0.5\n", b"1 2\n", b"Names\n", b"1 'Upper Pool'\n", b"2 Lower Pool\n",
                   b"Geometry\n",
                   b"1 2 3 100. .1 .2 .3 .4 1000 .01 50 .02 .001\n", b"2 0 4 10*1.5\n")
# The sections from the flow paths to the initial conditions without any content.
LEGACY_REST = (b"0\n",) * 8 + (b"2\n", b"0\n", b"0\n", b"0\n", b"2\n")
CURRENT_OPENING = (b"    8      3\n", b"'A title'\n", b"3 15 1998 6 30 0\n", b"6*0\n", b"365.25\n", b"2\n", b"0\n",
                   b"1\n",
                   b"0\n", b"2\n", b"3\n", b"9\n", b"0.9\n", b"0.001 0.5\n", b"0.25\n", b"NH-34     Ammonia\n", b"DO\n")
CURRENT_SEGMENTS = (b"Segments\n", b"1\n", b"0\n", b"1\n", b"1 1\n", b"Names\n", b"    1     Upper Pool\n",
                    b"Geometry\n",
                    b"    1    0    2    3" + b"".join(b"%15d" % (100000 * value) for value in range(1, 17)) + b"\n")
PERCENTAGES = ["int %d" % value for value in (0, 5, 10, 20, 30, 40, 50, 60, 70, 80, 85, 100)]


def arguments_of(result, keyword):
    """The arguments of every command of a keyword, as they stand in the log."""
    found = []
    for line in result.log_lines:
        head, _, arguments = line.partition("] ")
        if head.rstrip("]").split(" ")[1].split("[")[0] == keyword:
            found.append(arguments)
    return found


def replaced(lines, index, line):
    return b"".join(lines[:index] + (line,) + lines[index + 1:])


EMPTY_SECTIONS = {"flowpath": b"0\n0\n", "flows": b"0\n", "exchanges": b"0\n", "boundary": b"0\n",
                  "loads": b"0\n0\n", "timefunctions": b"0\n", "seg_parameters": b"2\n0\n",
                  "constants": b"0\n", "initial_conditions": b"0\n2\n"}
SECTION_START = {"flowpath": 10, "flows": 20, "exchanges": 30, "boundary": 40, "loads": 50,
                 "timefunctions": 60, "seg_parameters": 70, "constants": 80, "initial_conditions": 85,
                 "end": 100}


def legacy_file(opening=LEGACY_OPENING, **sections):
    """Two segments, systems 8 and 10 as state variables 1 and 2; a section that is not given is empty.

    The flow paths start in line 31, where the line counter is 32.
    """
    return b"".join(opening + LEGACY_SEGMENTS) + b"".join({**EMPTY_SECTIONS, **sections}.values())


def legacy_file_up_to(section, content):
    """The same file, which ends with that content of the section."""
    names = list(EMPTY_SECTIONS)
    return legacy_file(**{section: content, **dict.fromkeys(names[names.index(section) + 1:], b"")})


def commands_of(result, section):
    """The commands of a section, each without its entry point and the length of its keyword."""
    names = list(SECTION_START)
    following = names[names.index(section) + 1]
    start = result.log_lines.index("1 PPROGRESS[10] int %d" % SECTION_START[section])
    end = result.log_lines.index("1 PPROGRESS[10] int %d" % SECTION_START[following], start)
    return [short(line) for line in result.log_lines[start + 1:end]]


def short(line):
    head, _, arguments = line.partition("]")
    return head[2:].partition("[")[0] + arguments


def notice(message, length):
    """What `commands_of` gives for a line of the information pane."""
    return ['PINFOHTML text[51] "<li><span style=\\"font-weight: bold; color: blue;\\">\\0"',
            f'PINFOHTML text[{length}] "{message}</span></li>\\0"']


def opening_with_flags(bypassed):
    """The opening block with that text for its bypass flags."""
    return LEGACY_OPENING[:16] + (bypassed + b"\n",) + LEGACY_OPENING[17:]


def opening_with_all_systems(bypassed):
    """The opening block with all systems that there are and that text for their bypass flags."""
    return opening_with_flags(bypassed)[:4] + (b"28\n",) + opening_with_flags(bypassed)[5:]


# --- the current format -------------------------------------------------------------------------------------

def current_segments(*options):
    """As many segments as there are hydraulic options."""
    names = [b"%5d     Pool %d\n" % (index, index) for index in range(1, len(options) + 1)]
    geometry = [b"%5d    0    1%5d\n" % (index, option) for index, option in enumerate(options, start=1)]
    return (b"Segments\n", b"%d\n" % len(options), b"0\n", b"1\n", b"1 1\n", b"Names\n", *names, b"Geometry\n",
            *geometry)


EMPTY_CURRENT_SECTIONS = {"flowpath": b"Flow paths\nOne more\n0\n", "flows": b"Flows\n0\n",
                          "exchanges": b"Exchanges\n0\n", "boundary": b"Boundaries\n0\n", "loads": b"Loads\n0\n0\n",
                          "timefunctions": b"Functions\n0\n", "seg_parameters": b"Parameters\n2\n0\nList\n",
                          "constants": b"Constants\n0\n", "initial_conditions": b"Initial\n0\n2\n"}
# The line counter at the first read statement of a section when those before it are empty, one more than the line.
FIRST_STATEMENT = {"flowpath": 30, "flows": 33, "exchanges": 35, "boundary": 37, "loads": 39, "timefunctions": 42,
                   "seg_parameters": 44, "constants": 48, "initial_conditions": 50}
CURRENT_REST = tuple(EMPTY_CURRENT_SECTIONS.values())
# What an import without a fault writes on the console.
CURRENT_CONSOLE = [b"Reading Boundary Information", b"Done Reading Boundary Information", b"Done reading Loads",
                   b"Reading Time Functions", b"Done Reading Time Functions", b"Reading Segment Parameters",
                   b"Done Reading Segment Parameters", b"Reading Constants", b"Done Reading Constants",
                   b"Reading Initial Conditions", b"Done Reading Initial Conditions"]


def current_file(opening=CURRENT_OPENING, segments=current_segments(0, 3), **sections):
    """Two systems and two segments; a section that is not given is empty."""
    return b"".join(opening + segments) + b"".join({**EMPTY_CURRENT_SECTIONS, **sections}.values())


def current_file_up_to(section, content, **options):
    """The same file, which ends with that content of the section."""
    names = list(EMPTY_CURRENT_SECTIONS)
    return current_file(**{section: content, **dict.fromkeys(names[names.index(section) + 1:], b""), **options})


def pane_report(statement):
    """What `commands_of` gives for the three commands of a failed read, for line counters of two digits."""
    line = f'"Error Reading Import File at Line # {statement} </span></li>" 29*" "'
    return [f'GSPRINTFI text[80] -> {line}, text[52] "Error Reading Import File at Line # %d </span></li>\\0", '
            f'int {statement}',
            'PINFOHTML text[51] "<li><span style=\\"font-weight: bold; color: blue;\\">\\0"',
            f'PINFOHTML text[80] {line}']
