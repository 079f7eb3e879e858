"""Kinetic constants and initial conditions of a current-format (version 8) file."""

from dataclasses import replace

from records import texts
from shared import read_integer
from shared_kinetics import read_initial_systems, send_constants, send_initial_conditions, send_initial_notice

CONSTANT_LAYOUT = "(7X,I5,11X,I5,18X,F10.0)"


def constants_v2(run):
    """Numbers and columns are those of the host; no line of the information pane announces them."""
    run.console(b"Reading Constants")
    run.reader.list(texts("title"))
    count = read_integer(run, "constant_count")
    records = [read_constant(run) for _ in range(count)]
    if not run.state.transport_only:
        send_constants(run.host, records)
    run.console(b"Done Reading Constants")


def read_constant(run):
    values = run.reader.fixed(CONSTANT_LAYOUT, "constant_number", "constant_column", "constant_value")
    return tuple(values.values())


def initial_conditions_v2(run):
    """Both counts replace those that the sections share. The largest concentrations stay here: the host gets 0."""
    run.console(b"Reading Initial Conditions")
    state = run.state
    run.reader.list(texts("title"))
    state.system_count = read_integer(run, "system_count", state.system_count)
    state.segment_count = read_integer(run, "segment_count", state.segment_count)
    systems = read_initial_systems(run)
    send_initial_notice(run)
    if not state.transport_only:
        send_initial_conditions(run, [replace(system, largest_concentration=0.0) for system in systems])
    run.console(b"Done Reading Initial Conditions")
