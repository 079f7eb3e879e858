"""Boundary conditions and loads of a current-format (version 8) file. The host numbers systems as the file does."""

from records import texts
from shared_series import read_boundaries, read_loads, read_system_count, send_boundaries, send_loads


def boundary_v2(run):
    """Progress is told under every option."""
    run.reader.list(texts("title"))
    run.console(b"Reading Boundary Information")
    read_system_count(run)
    systems = read_boundaries(run, run.state.system_count)
    if not run.state.transport_only:
        send_boundaries(run, systems)


def loads_v2(run):
    run.reader.list(texts("title"))
    loads = read_loads(run)
    if not run.state.transport_only:
        send_loads(run, loads, loads.systems)
    run.console(b"Done reading Loads")
