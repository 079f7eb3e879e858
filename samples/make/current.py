"""Writes the sample river as a version 8 input file."""

from dataclasses import replace

import bodies
from environment import (LANGLEY_A_DAY, PARAMETERS, TIME_FUNCTIONS, TimeFunction,
                         parameter_value)
from kinetics import CONSTANTS
from records import RecordWriter
from river import SEGMENTS
from waters import ENDS, SIMULATED

SOLAR_RADIATION = 4


def write_model_parameters(writer):
    writer.line(f"{11:5d}     {3:2d}")
    writer.line("'Ellery River and estuary, calendar year 2019'")
    writer.values(1, 1, 2019, 0, 0, 0, note="start: month, day, year, hour, minute, second")
    writer.values(1, 1, 2019, 0, 0, 0, note="hydrodynamics skipped up to")
    writer.values("365.0", note="days to simulate")
    writer.values(len(SIMULATED), note="systems")
    writer.values(0, note="restart option")
    writer.values(1, note="solution technique")
    writer.values(0, note="negative solutions")
    writer.values(0, note="initial condition option")
    writer.values(1, note="interpolation")
    writer.values(0, note="not used")
    writer.values("0.9", note="fraction of the greatest time step")
    writer.values("0.0001", "0.015", note="smallest and greatest time step, days")
    writer.values("0.25", note="output interval, days")
    for system in SIMULATED:
        writer.line(f"{system.short_name:5}     {system.long_name:30}")


def _real_field(value):
    """A field of fifteen columns; the sluggish estuary needs more than the usual decimals."""
    return f"{value:15.5f}" if value == 0.0 or abs(value) >= 0.1 else f"{value:15.9f}"


def write_segments(writer):
    writer.line("SEGMENTS of the Ellery River, its tributaries and its estuary")
    writer.values(len(SEGMENTS), note="number of segments")
    writer.values(0, note="bed volumes: 0 fixed, 1 moving")
    writer.values("1.0", note="bed time step, days")
    writer.values("1.0", "1.0", note="volume scale, conversion")
    writer.line("Segment names")
    for segment in SEGMENTS:
        writer.line(f"{segment.number:5d}     {segment.name:40}")
    writer.line("Segment geometry and hydraulics")
    for segment in SEGMENTS:
        writer.line("".join(f"{number:5d}" for number in (
            segment.number, segment.segment_below, segment.kind, segment.hydraulic_option))
            + "".join(_real_field(value) for value in (
                segment.volume, segment.velocity_multiplier, segment.velocity_exponent,
                segment.depth_multiplier, segment.depth_exponent, segment.length, segment.slope,
                segment.width, segment.roughness, segment.minimum_depth, segment.surface,
                segment.bottom, segment.side_slope, segment.depth, segment.weir_height,
                segment.weir_type)))


def write_flow_paths(writer):
    writer.line("FLOW_PATHS")
    writer.line("'Surface water and seepage, each with its routes'")
    bodies.write_flow_paths(writer)


def write_flow_series(writer):
    writer.line("FLOW_SERIES")
    bodies.write_flow_series(writer)


def write_exchanges(writer):
    writer.line("EXCHANGES by tide and by diffusion")
    bodies.write_exchanges(writer)


def write_boundaries(writer):
    writer.line("BOUNDARIES")
    bodies.write_boundaries(writer, SIMULATED)


def write_loads(writer):
    writer.line("LOADS")
    writer.values(1, note="loads of a diffuse source file besides the point loads")
    writer.line("ellery-fields-2019.nps")
    bodies.write_loads(writer, SIMULATED)


def _time_functions():
    """Those with a place in version 8; constants that became series follow as flat ones."""
    rows = [function if function.index != SOLAR_RADIATION else
            replace(function, series=[(day, value * LANGLEY_A_DAY)
                                      for day, value in function.series])
            for function in TIME_FUNCTIONS if function.index]
    flat = [TimeFunction(constant.number, constant.current_series, constant.meaning,
                         [(day, float(constant.value)) for day in ENDS])
            for constant in CONSTANTS if constant.current_series]
    return rows + flat


def write_time_functions(writer):
    functions = _time_functions()
    writer.line("TIME_FUNCTIONS")
    writer.values(len(functions), note="time functions")
    for function in functions:
        writer.values(function.index, note=function.name)
        writer.values(len(function.series), note="breakpoints: day, value")
        writer.pairs(function.series)


def write_segment_parameters(writer):
    parameters = [parameter for parameter in PARAMETERS if parameter.code]
    writer.line("SEGMENT_PARAMETERS")
    writer.values(len(SEGMENTS), note="segments")
    writer.values(len(parameters), note="parameters")
    writer.line("'Parameters of the model'")
    for parameter in parameters:
        writer.line(f"Param: {parameter.code:5d}   Column: {parameter.column:3d} Scale: "
                    f"{parameter.scale:10.4f}   {parameter.name}")
    writer.line("'Values by segment'")
    for segment in SEGMENTS:
        writer.values(segment.number, note=segment.name)
        for parameter in parameters:
            writer.line(f"Parameter: {parameter.code:5d}        Column: {parameter.column:3d}"
                        f"            Value: {parameter_value(parameter, segment):10.4f}")


def write_constants(writer):
    constants = [constant for constant in CONSTANTS if constant.current_number]
    writer.line("CONSTANTS")
    writer.values(len(constants), note="constants")
    for constant in constants:
        writer.line(f"Const: {constant.current_number:5d}   Column: {constant.current_column:5d}"
                    f"           Value: {constant.value:>10}   {constant.meaning}")


def write_initial_conditions(writer):
    writer.line("INITIAL_CONDITIONS")
    bodies.write_initial_conditions(writer, SIMULATED)


def file_text():
    writer = RecordWriter()
    for section in (write_model_parameters, write_segments, write_flow_paths, write_flow_series,
                    write_exchanges, write_boundaries, write_loads, write_time_functions,
                    write_segment_parameters, write_constants, write_initial_conditions):
        section(writer)
    return writer.text()
