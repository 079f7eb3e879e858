"""Flow paths, flow time series and exchanges of a legacy (version 7) file."""

from shared import read_integer
from shared_network import (read_exchanges, read_flow_fields, read_flow_series, send_exchanges,
                            send_flow_paths, send_flow_series)


def flowpath(run):
    """The legacy format has one flow option for all segments, and keeps it here."""
    run.state.flow_option = [read_integer(run, "flow_option")]
    send_flow_paths(run, read_flow_fields(run))


def flows(run):
    send_flow_series(run, read_flow_series(run))


def exchanges(run):
    send_exchanges(run, read_exchanges(run))
