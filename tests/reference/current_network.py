"""Flow paths, flow time series and exchanges of a current-format (version 8) file."""

from records import texts
from shared_network import (read_exchanges, read_flow_fields, read_flow_series, send_exchanges,
                            send_flow_paths, send_flow_series)


def flowpath_v2(run):
    """The segments brought the flow options, so that two titles stand where the legacy format has its option."""
    run.reader.list(texts("title"))
    run.reader.list(texts("second_title"))
    send_flow_paths(run, read_flow_fields(run))


def flows_v2(run):
    run.reader.list(texts("title"))
    send_flow_series(run, read_flow_series(run))


def exchanges_v2(run):
    run.reader.list(texts("title"))
    send_exchanges(run, read_exchanges(run))
