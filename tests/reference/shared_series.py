"""What enters at the edges of the model: boundary conditions and loads, in both families.

Per system there are some boundaries or loads, each a segment with a time series, which travels in the send
buffers. A system that the section does not hold counts as one without any.
"""

from dataclasses import dataclass

from command_log import SEND_BUFFER_LENGTH, Integer, Real, Text
from records import reals, texts
from shared import read_integer, read_values, send_integers, send_notice, send_progress


@dataclass(frozen=True)
class SegmentSeries:
    segment: int
    breakpoint_count: int
    breakpoints: list


@dataclass(frozen=True)
class System:
    """The boundaries or loads of one system; of the two factors only the first one is ever sent."""
    count: int
    first_factor: float
    series: list


NO_SYSTEM = System(0, 0.0, [])


def read_system_count(run):
    """The count replaces the one that the sections share."""
    run.state.system_count = read_integer(run, "system_count", run.state.system_count)


def read_segment_series(run):
    """A series that does not fit the send buffers fails where its length stands."""
    segment = read_integer(run, "series_segment")
    count = read_integer(run, "breakpoint_count", largest=SEND_BUFFER_LENGTH)
    return SegmentSeries(segment, count, [read_values(run, reals("value", "time")) for _ in range(count)])


def systems_of_state_variables(run, systems):
    """For every state variable of the host the file's system that it carries."""
    return [systems[system - 1] if system <= len(systems) else NO_SYSTEM
            for system in run.state.system_of_state_variable]


def percentage(position, divisor):
    """Coarse on purpose: the integer division comes first, so that it is 0 up to the last of them."""
    return position // divisor * 100 if divisor > 0 else 0


# --- boundary conditions ------------------------------------------------------------------------------------

def read_boundaries(run, divisor, use_heading=lambda heading: None):
    """From behind the number of systems to the end of the section."""
    systems = []
    send_progress(run, 0)
    for number in range(1, run.state.system_count + 1):
        send_progress(run, percentage(number, divisor))
        use_heading(run.reader.fixed("(A80)", "heading")["heading"])
        systems.append(read_boundary_system(run))
    run.console(b"Done Reading Boundary Information")
    return systems


def read_boundary_system(run):
    count = read_integer(run, "boundary_count")
    if count <= 0:
        return System(count, 0.0, [])
    factors = run.reader.fixed("(2(F10.0))", "boundary_scale_factor", "boundary_conversion_factor")
    return System(count, factors["boundary_scale_factor"], [read_segment_series(run) for _ in range(count)])


def send_boundaries(run, systems, before_system=lambda number: None):
    """`systems` in the host's numbering."""
    send_notice(run, "Importing Boundary Information")
    send_progress(run, 0)
    for number, system in enumerate(systems, start=1):
        before_system(number)
        send_progress(run, percentage(number, len(systems)))
        send_integers(run.host, "PNOBC", number, system.count)
        if system.count > 0:
            run.host.call("PSCALB", Integer(number), Real(system.first_factor))
        for index, boundary in enumerate(system.series, start=1):
            send_integers(run.host, "PIBC", number, index, boundary.segment)
            send_integers(run.host, "PNBFP", number, index, boundary.breakpoint_count)
            run.send_buffers.fill(boundary.breakpoints)
            send_buffers(run, "PALLBOUNDFUNC", number, index)


def send_buffers(run, keyword, system, index):
    run.host.call(keyword, Integer(system), Integer(index), run.send_buffers.values, run.send_buffers.times)


# --- loads --------------------------------------------------------------------------------------------------

@dataclass(frozen=True)
class Loads:
    option: int
    file_name: bytes
    systems: list


def read_loads(run):
    """From the load option to the end of the section."""
    option = read_integer(run, "load_option")
    file_name = run.reader.fixed("(A512)", "file_name")["file_name"] if option > 0 else b""
    read_system_count(run)
    return Loads(option, file_name, [read_load_system(run) for _ in range(run.state.system_count)])


def read_load_system(run):
    run.reader.list(texts("heading"))
    count = read_integer(run, "load_count")
    if count <= 0:
        return System(count, 0.0, [])
    first_factor, _ = read_values(run, reals("first_load_factor", "second_load_factor"))
    return System(count, first_factor, [read_segment_series(run) for _ in range(count)])


def send_loads(run, loads, systems):
    """`systems` in the host's numbering."""
    send_notice(run, "Importing Loading Information")
    send_integers(run.host, "PLOPT", loads.option)
    if loads.option > 0:
        run.host.call("PNPSFILE", Text(loads.file_name))
    for number, system in enumerate(systems, start=1):
        if system.count > 0:
            run.host.call("PCONVB", Integer(number), Real(system.first_factor))
            for load in system.series:
                send_load(run, number, load)
        else:
            run.host.call("PSCALW", Integer(number), Real(0.0))
            run.host.call("PCONVW", Integer(number), Real(0.0))
            send_load(run, number, PLACEHOLDER)


PLACEHOLDER = SegmentSeries(1, 2, [(0.0, 0.0), (0.0, 0.0)])


def send_load(run, system, load):
    """The host knows a load by its segment, not by its place in the file."""
    send_integers(run.host, "PNBWK", system, load.segment, load.breakpoint_count)
    run.send_buffers.fill(load.breakpoints)
    send_buffers(run, "PALLLOADFUNC", system, load.segment)
