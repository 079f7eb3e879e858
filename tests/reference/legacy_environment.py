"""Environmental time functions and segment parameters of a legacy (version 7) file."""

from dataclasses import dataclass, field

import single
from command_log import with_nul
from records import convert_real, fit, integers, reals, texts
from shared import (ADVANCED_EUTROPHICATION, LARGEST_UNBACKED_SEGMENT_COUNT, MESSAGE_WIDTH, read_integer,
                    read_values, send_all, send_notice)
from shared_environment import (NO_SERIES, Parameter, TimeSeries, send_parameters, send_time_function_end,
                                send_time_function_head, send_time_function_row, send_time_series)

# --- time functions -----------------------------------------------------------------------------------------

LARGEST_FUNCTION_COUNT = 50
FUNCTION_NAME_WIDTH = 30
RED_PREFIX = '<li><span style="font-weight: bold; color: Red;">'
WATTS_PER_LANGLEY = convert_real(b"0.48426")

# Legacy number: number of the current model.
CURRENT_FUNCTION = {1: 1, 5: 4, 6: 3, 7: 21, 8: 22, 9: 8, 10: 17, 11: 2, 14: 9, 15: 10, 16: 11, 19: 33,
                    20: 12, 21: 14, 22: 16, 25: 15}
# Further series of the function before them.
FURTHER_SERIES = {23: 2, 24: 3}
SOLAR_RADIATION = 5
AIR_TEMPERATURE = 10
WARNINGS = {
    2: b"Water Temperature Time Function 2 not supported in KOVA8: ",
    3: b"Water Temperature Time Function 3 not supported in KOVA8: ",
    4: b"Water Temperature Time Function 4 not supported in KOVA8: ",
    5: b"Solar Radiation Time Function Converted from Langleys to Watts/m2: ",
    12: b"Water Velocity Time Function 2 not supported in KOVA8: ",
    13: b"Water Velocity Time Function 3 not supported in KOVA8: ",
    17: b"Time Function not supported: ",
    18: b"Ice Cover Time Function 3 not supported in KOVA8: "}


@dataclass
class NumberedSeries:
    """What the file has for a legacy number. Breakpoints behind the count are those of an earlier record."""
    count: int = 0
    breakpoints: list = field(default_factory=list)

    def series(self):
        return TimeSeries(self.count, self.breakpoints[:max(self.count, 0)])

    def scaled_series(self, factor):
        return TimeSeries(self.count, [(time, single.multiply(value, factor))
                                       for time, value in self.series().breakpoints])


@dataclass
class CurrentFunction:
    number: int
    first: TimeSeries
    further: dict = field(default_factory=dict)
    series_count: int = 1

    def all_series(self):
        return [self.first] + [self.further.get(number, NO_SERIES)
                               for number in range(2, self.series_count + 1)]


def timefunctions(run):
    """Series are kept by their number in the file, records in their order."""
    series_of = {number: NumberedSeries() for number in range(1, LARGEST_FUNCTION_COUNT + 1)}
    count = read_integer(run, "function_count", largest=LARGEST_FUNCTION_COUNT)
    records = [read_time_function(run, series_of) for _ in range(count)]
    if not run.state.transport_only:
        functions = translate_time_functions(run, records, series_of)
        send_time_functions(run, functions, [name for _, name in records])
    run.host.call("PTFSREFRESH")


def read_time_function(run, series_of):
    """The number and the name of a record. Numbers that nobody could use are read all the same."""
    number = read_integer(run, "function_number")
    name = fit(run.reader.list(texts("function_name")).get("function_name", b""), FUNCTION_NAME_WIDTH)
    numbered = series_of.get(number) or NumberedSeries()
    numbered.count = read_integer(run, "breakpoint_count", numbered.count)
    for position in range(numbered.count):
        values = run.reader.list(reals("time", "value"))
        if position == len(numbered.breakpoints):
            numbered.breakpoints.append((0.0, 0.0))
        time, value = numbered.breakpoints[position]
        numbered.breakpoints[position] = (values.get("time", time), values.get("value", value))
    return number, name


def translate_time_functions(run, records, series_of):
    """Only the eutrophication model has the known functions."""
    functions = []
    if run.state.model_type != ADVANCED_EUTROPHICATION:
        return functions
    for number, name in records:
        if number in WARNINGS:
            message = fit(WARNINGS[number] + name + b"</span></li>", MESSAGE_WIDTH)
            send_all(run, (RED_PREFIX, with_nul(message)))
        if number == SOLAR_RADIATION:
            run.state.tf5_present = 1
        if number == AIR_TEMPERATURE:
            run.state.tf10_present = 1
        if number in CURRENT_FUNCTION:
            factor = WATTS_PER_LANGLEY if number == SOLAR_RADIATION else 1.0
            functions.append(CurrentFunction(CURRENT_FUNCTION[number],
                                             series_of[number].scaled_series(factor)))
        elif number in FURTHER_SERIES and functions:
            functions[-1].further[FURTHER_SERIES[number]] = series_of[number].series()
            functions[-1].series_count = FURTHER_SERIES[number]
    return functions


def send_time_functions(run, functions, names):
    """A row bears the name of the record in that place of the file, perhaps not that of its function."""
    send_time_function_head(run)
    for function, name in zip(functions, names):
        for number, series in enumerate(function.all_series(), start=1):
            send_time_series(run.host, function.number, number, series)
            send_time_function_row(run, name, function.number, series)
    send_time_function_end(run)


# --- segment parameters -------------------------------------------------------------------------------------

WATER_TEMPERATURE_FUNCTION = 3
LARGEST_PARAMETER_NUMBER = 106
# Switches between a parameter and its time function; they are on everywhere.
SWITCHES = (2, 3, 5)


@dataclass(frozen=True)
class ParameterRow:
    """`classes` names the count that must reach the class index; `scale` None is the one of the file."""
    legacy_number: int
    code: int
    class_index: int
    classes: str | None = None
    scale: float | None = None


PARAMETER_ROWS = (
    ParameterRow(1, 41, 1),
    ParameterRow(2, 1, 1),
    ParameterRow(4, 17, 1),
    ParameterRow(5, 42, 1),
    ParameterRow(6, 30, 1),
    ParameterRow(7, 31, 1),
    ParameterRow(8, 32, 1),
    ParameterRow(9, 4, 1),
    ParameterRow(9, 5, 1, scale=1.0),
    ParameterRow(10, 23, 1),
    ParameterRow(11, 22, 1),
    ParameterRow(12, 15, 1),
    ParameterRow(13, 29, 1),
    ParameterRow(14, 24, 1),
    ParameterRow(15, 25, 1),
    ParameterRow(16, 26, 1),
    ParameterRow(17, 27, 1),
    ParameterRow(18, 28, 1),
    ParameterRow(19, 21, 1),
    ParameterRow(22, 6, 1),
    ParameterRow(23, 7, 1),
    ParameterRow(24, 19, 1, "solids_count"),
    ParameterRow(25, 19, 2, "solids_count"),
    ParameterRow(26, 19, 3, "solids_count"),
    ParameterRow(27, 20, 1, "phytoplankton_count"),
    ParameterRow(28, 20, 2, "phytoplankton_count"),
    ParameterRow(29, 20, 3, "phytoplankton_count"),
    ParameterRow(100, 33, 1),
    ParameterRow(101, 34, 1),
    ParameterRow(102, 35, 1),
    ParameterRow(103, 36, 1),
    ParameterRow(104, 37, 1),
    ParameterRow(105, 38, 1),
    ParameterRow(106, 39, 1))
# They come with the air temperature among the time functions: "Air Temp Mult" and "Time Function".
AIR_TEMPERATURE_CODES = (2, 3)


@dataclass
class ParameterTable:
    """The list, as the last segment left it, and the values by segment and legacy number."""
    numbers: list = field(default_factory=list)
    scales: list = field(default_factory=list)
    values: dict = field(default_factory=dict)


def seg_parameters(run):
    """The segment count replaces the one that the sections share."""
    run.console(b"Reading Segment Parameters")
    state = run.state
    state.segment_count = read_integer(run, "segment_count", state.segment_count)
    count = read_integer(run, "parameter_count")
    refuse_unbacked_segments(run, count)
    table = read_parameter_table(run, count)
    if state.transport_only:
        return
    parameters = translate_parameters(run, table)
    if state.tf10_present:
        parameters += [Parameter(code, 1, 1.0, lambda segment: 1.0) for code in AIR_TEMPERATURE_CODES]
    send_parameters(run, parameters)


def refuse_unbacked_segments(run, count):
    """The values of the air temperature need no records, so nothing else bounds their number."""
    state = run.state
    if (count <= 0 and state.tf10_present and not state.transport_only
            and state.segment_count > LARGEST_UNBACKED_SEGMENT_COUNT):
        raise run.reader.refusal("parameter_count", "too many segments for a file without their records")


def read_parameter_table(run, count):
    table = ParameterTable()
    if count <= 0:
        return table
    for _ in range(count):
        number, scale = read_values(run, integers("parameter_number") + reals("parameter_scale"))
        table.numbers.append(number)
        table.scales.append(scale)
    for segment in range(1, run.state.segment_count + 1):
        run.reader.list(integers("segment_number"))
        for position in range(count):
            read_parameter_value(run, table, segment, position)
    return table


def read_parameter_value(run, table, segment, position):
    """The number in the record goes into the list; left out, it is the list's."""
    values = run.reader.list(integers("parameter_number") + reals("parameter_value"))
    number = table.numbers[position] = values.get("parameter_number", table.numbers[position])
    if "parameter_value" in values and 0 <= number <= LARGEST_PARAMETER_NUMBER:
        table.values[segment, number] = values["parameter_value"]


def translate_parameters(run, table):
    """Only the eutrophication model has the known parameters."""
    parameters = []
    if run.state.model_type != ADVANCED_EUTROPHICATION:
        return parameters
    for number, scale in zip(table.numbers, table.scales):
        if number == WATER_TEMPERATURE_FUNCTION:
            send_notice(run, "There is only 1 Water Temperature Time Function in KOVA8")
        for row in PARAMETER_ROWS:
            if row.legacy_number == number and is_simulated(run.state, row):
                parameters.append(Parameter(row.code, row.class_index,
                                            scale if row.scale is None else row.scale, values_of(table, row)))
    return parameters


def is_simulated(state, row):
    return row.classes is None or getattr(state, row.classes) >= row.class_index


def values_of(table, row):
    if row.code in SWITCHES:
        return lambda segment: 1.0
    return lambda segment: table.values.get((segment, row.legacy_number), 0.0)
