"""Environmental time functions and segment parameters of a current-format (version 8) file.

Both come in the numbers of the host and go out as they were read, for every kind of model.
"""

from dataclasses import dataclass

from records import integers, reals, texts
from shared import read_integer, read_values
from shared_environment import Parameter, TimeSeries, send_parameters, send_time_series


# --- time functions -----------------------------------------------------------------------------------------

def timefunctions_v2(run):
    """A function of several series is as many records of the same number, each with a first series."""
    run.reader.list(texts("title"))
    count = read_integer(run, "function_count")
    run.console(b"Reading Time Functions")
    functions = [read_time_function(run) for _ in range(count)]
    if not run.state.transport_only:
        for number, series in functions:
            send_time_series(run.host, number, 1, series)
    run.host.call("PTFSREFRESH")
    run.console(b"Done Reading Time Functions")


def read_time_function(run):
    number = read_integer(run, "function_number")
    count = read_integer(run, "breakpoint_count")
    return number, TimeSeries(count, [read_values(run, reals("time", "value")) for _ in range(count)])


# --- segment parameters -------------------------------------------------------------------------------------

LIST_LAYOUT = "(7X,I5,11X,I3,8X,F10.0)"
VALUE_LAYOUT = "(11X,I5,16X,I3,19X,F10.0)"


@dataclass
class ListedParameter:
    """A place in the list: its number and class are those of the record that was read last."""
    number: int
    class_index: int
    scale: float
    values: list

    def value_of(self, segment):
        return self.values[segment - 1]


def seg_parameters_v2(run):
    """The segment count replaces the one that the sections share."""
    run.console(b"Reading Segment Parameters")
    state = run.state
    run.reader.list(texts("title"))
    state.segment_count = read_integer(run, "segment_count", state.segment_count)
    listed = read_parameters(run, read_integer(run, "parameter_count"))
    if not state.transport_only:
        send_parameters(run, [Parameter(parameter.number, parameter.class_index, parameter.scale, parameter.value_of)
                              for parameter in listed])
    run.console(b"Done Reading Segment Parameters")


def read_parameters(run, count):
    """The heading of the list is there without parameters too; that of the segments is not."""
    run.reader.list(texts("list_heading"))
    listed = [read_listed_parameter(run) for _ in range(count)]
    if listed:
        run.reader.list(texts("segment_heading"))
        for _ in range(run.state.segment_count):
            run.reader.list(integers("segment_number"))
            for parameter in listed:
                read_parameter_value(run, parameter)
    return listed


def read_listed_parameter(run):
    values = run.reader.fixed(LIST_LAYOUT, "parameter_number", "class_index", "parameter_scale")
    return ListedParameter(values["parameter_number"], values["class_index"], values["parameter_scale"], [])


def read_parameter_value(run, parameter):
    """Columns cannot leave anything out: blank ones put 0 in the place of the list's number or class."""
    values = run.reader.fixed(VALUE_LAYOUT, "parameter_number", "class_index", "parameter_value")
    parameter.number = values["parameter_number"]
    parameter.class_index = values["class_index"]
    parameter.values.append(values["parameter_value"])
