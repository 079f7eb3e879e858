"""What flows between the segments: flow paths, flow time series and exchanges, in both families.

Every section is read whole before anything of it goes out. A count is kept as it was read, for it is sent so;
a negative one counts as none where records are read.
"""

from dataclasses import dataclass

from command_log import Integer, Real, Text
from records import fit, integers, reals, texts
from shared import read_integer, read_values, send_integers, send_notice

DESCRIPTION_WIDTH = 30
HYDRODYNAMIC_LINKAGE = 3


@dataclass(frozen=True)
class FlowFunction:
    description: bytes
    pair_count: int
    pairs: list


@dataclass(frozen=True)
class Series:
    """Breakpoints, each a value and its time."""
    breakpoint_count: int
    breakpoints: list


@dataclass(frozen=True)
class ExchangeFunction:
    description: bytes
    pair_count: int
    pairs: list
    series: Series


@dataclass(frozen=True)
class Field:
    """A flow or exchange field: how many functions it announces, and those read."""
    function_count: int
    functions: list


def read_series(run):
    count = read_integer(run, "breakpoint_count")
    return Series(count, [read_values(run, reals("value", "time")) for _ in range(count)])


# --- flow paths ---------------------------------------------------------------------------------------------

def flow_option_of(state):
    """The option of the first segment holds for all; without segments there is none."""
    return state.flow_option[0] if state.flow_option else 0


def read_flow_fields(run):
    """From the number of flow fields to the end of the section."""
    state = run.state
    state.flow_field_count = read_integer(run, "flow_field_count")
    fields = []
    for number in range(1, state.flow_field_count + 1):
        run.reader.caption()
        if number == 1 and flow_option_of(state) == HYDRODYNAMIC_LINKAGE:
            state.keep(run.reader.fixed("(A512)", "hydro_file_name"))
        count = read_integer(run, "inflow_count")
        state.inflow_count.append(count)
        fields.append(Field(count, [read_flow_function(run) for _ in range(count)]))
    return fields


def read_flow_function(run):
    description = run.reader.fixed("(A80)", "flow_description")["flow_description"]
    count = read_integer(run, "pair_count")
    items = integers("first_segment", "second_segment") + reals("routing_fraction")
    pairs = [read_values(run, items) for _ in range(count)]
    return FlowFunction(fit(description, DESCRIPTION_WIDTH), count, pairs)


def send_flow_paths(run, fields):
    host, state = run.host, run.state
    option = flow_option_of(state)
    send_notice(run, "Importing Flow Path Information")
    for segment in range(1, state.segment_count + 1):
        send_integers(host, "PFLOWTYPE", segment, option)
    send_integers(host, "PNFIELD", state.flow_field_count)
    for number, field in enumerate(fields, start=1):
        if number == 1 and option == HYDRODYNAMIC_LINKAGE:
            host.call("PHYDROFILE", Text(state.hydro_file_name))
        send_integers(host, "PNINQ", number, field.function_count)
        for index, function in enumerate(field.functions, start=1):
            send_flow_function(host, number, index, function)


def send_flow_function(host, field, index, function):
    send_integers(host, "PNOQS", field, index, function.pair_count)
    host.call("PFLOWFUNCDESC", Integer(field), Integer(index), Text(function.description))
    for pair, (first_segment, second_segment, routing_fraction) in enumerate(function.pairs, start=1):
        send_integers(host, "PJQ", field, index, pair, first_segment)
        send_integers(host, "PIQ", field, index, pair, second_segment)
        host.call("PBQ", Integer(field), Integer(index), Integer(pair), Real(routing_fraction))


# --- flow time series ---------------------------------------------------------------------------------------

def read_flow_series(run):
    """The counts are read again; one that is left out stays that of the flow paths."""
    state = run.state
    state.flow_field_count = read_integer(run, "flow_field_count", state.flow_field_count)
    counts_of_paths, state.inflow_count = state.inflow_count, []
    fields = []
    for number in range(1, state.flow_field_count + 1):
        run.reader.fixed("(A80)", "field_caption")
        kept = counts_of_paths[number - 1] if number <= len(counts_of_paths) else 0
        count = read_integer(run, "inflow_count", kept)
        state.inflow_count.append(count)
        if count > 0:
            state.keep(run.reader.list(reals("flow_scale_factor", "flow_conversion_factor")))
        fields.append(Field(count, [read_captioned_series(run) for _ in range(count)]))
    return fields


def read_captioned_series(run):
    run.reader.fixed("(A80)", "function_caption")
    return read_series(run)


def send_flow_series(run, fields):
    """Every field goes out with the factors of the last one that had functions."""
    host, state = run.host, run.state
    send_notice(run, "Importing Flow Time Series")
    send_integers(host, "PNFIELD", state.flow_field_count)
    for number, field in enumerate(fields, start=1):
        send_integers(host, "PNINQ", number, field.function_count)
        if field.function_count > 0:
            host.call("PSCALEQ", Integer(number), Real(state.flow_scale_factor))
            host.call("PCONVQ", Integer(number), Real(state.flow_conversion_factor))
        for index, series in enumerate(field.functions, start=1):
            send_series(host, "PNBRKQ", "PNOQFUNC", number, index, series)
    host.call("PFLOWSREFRESH")


def send_series(host, count_keyword, breakpoint_keyword, field, index, series):
    send_integers(host, count_keyword, field, index, series.breakpoint_count)
    for position, (value, time) in enumerate(series.breakpoints, start=1):
        place = (Integer(field), Integer(index), Integer(position))
        host.call(breakpoint_keyword, *place, Real(value), Real(time))


# --- exchanges ----------------------------------------------------------------------------------------------

@dataclass(frozen=True)
class Exchanges:
    field_count: int
    fields: list


def read_exchanges(run):
    """From the number of exchange fields to the end of the section."""
    count = read_integer(run, "exchange_field_count")
    return Exchanges(count, [read_exchange_field(run) for _ in range(count)])


def read_exchange_field(run):
    run.reader.list(texts("heading"))
    count = read_integer(run, "exchange_function_count")
    if count > 0:
        run.state.keep(run.reader.list(reals("exchange_scale_factor", "exchange_conversion_factor")))
    return Field(count, [read_exchange_function(run) for _ in range(count)])


def read_exchange_function(run):
    """The description is read without an error branch."""
    description = fit(run.reader.caption(), DESCRIPTION_WIDTH)
    count = read_integer(run, "pair_count")
    items = integers("first_segment", "second_segment") + reals("interfacial_area", "mixing_length")
    pairs = [read_values(run, items) for _ in range(count)]
    return ExchangeFunction(description, count, pairs, read_series(run))


def send_exchanges(run, exchanges):
    """Every field goes out with the factors of the last one that had functions; one without any stays out."""
    host, state = run.host, run.state
    send_notice(run, "Importing Exchange Information")
    send_integers(host, "PNRFLD", exchanges.field_count)
    for number, field in enumerate(exchanges.fields, start=1):
        if field.function_count < 1:
            continue
        send_integers(host, "PNTEX", number, field.function_count)
        host.call("PSCALER", Integer(number), Real(state.exchange_scale_factor))
        host.call("PCONVR", Integer(number), Real(state.exchange_conversion_factor))
        for index, function in enumerate(field.functions, start=1):
            send_exchange_function(host, number, index, function)
    host.call("PEXCHANGESREFRESH")


def send_exchange_function(host, field, index, function):
    host.call("PEXCHANGEFUNCDESC", Integer(field), Integer(index), Text(function.description))
    send_integers(host, "PNORS", field, index, function.pair_count)
    for pair, (first_segment, second_segment, area, length) in enumerate(function.pairs, start=1):
        send_integers(host, "PJRSEG", field, index, pair, first_segment)
        send_integers(host, "PIRSEG", field, index, pair, second_segment)
        host.call("PXAREA", Integer(field), Integer(index), Integer(pair), Real(area))
        host.call("PLENGTH", Integer(field), Integer(index), Integer(pair), Real(length))
    send_series(host, "PNOBRKS", "PNORFUNC", field, index, function.series)
