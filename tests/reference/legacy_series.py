"""Boundary conditions and loads of a legacy (version 7) file."""

from shared import console_text
from shared_series import (read_boundaries, read_loads, read_system_count, send_boundaries, send_loads,
                           systems_of_state_variables)


def boundary(run):
    """All systems of the file are read, also those that are bypassed; progress is told under every option."""
    read_system_count(run)
    systems = read_boundaries(run, run.state.state_variable_count,
                              use_heading=lambda heading: run.console(console_text(heading)))
    if not run.state.transport_only:
        send_boundaries(run, systems_of_state_variables(run, systems),
                        before_system=lambda number: run.console(b"Boundary System: %d" % number))


def loads(run):
    loads_read = read_loads(run)
    if not run.state.transport_only:
        send_loads(run, loads_read, systems_of_state_variables(run, loads_read.systems))
