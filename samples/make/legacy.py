"""Writes the sample river as a version 7 input file."""

import bodies
from bodies import quoted
from environment import PARAMETERS, TIME_FUNCTIONS, parameter_value
from kinetics import CONSTANTS
from records import RecordWriter
from river import SEGMENTS, is_bed
from waters import SYSTEMS


def write_model_parameters(writer):
    writer.line(f"{11:5d}     {2:2d}   Ellery River and estuary, 2019")
    writer.values(1, 1, 2019, 0, 0, 0, note="start: month, day, year, hour, minute, second")
    writer.values(1, 1, 2019, 0, 0, 0, note="hydrodynamics skipped up to")
    writer.values("365.0", note="days to simulate")
    writer.values(len(SYSTEMS), note="systems")
    writer.values(0, note="restart option")
    writer.values(1, note="solution technique")
    writer.values(0, note="negative solutions")
    writer.values(0, note="initial condition option")
    writer.values(1, note="interpolation")
    writer.values(0, note="not used")
    writer.values("0.9", note="fraction of the greatest time step")
    writer.values("0.0001", "0.015", note="smallest and greatest time step, days")
    writer.values(2, note="output intervals: from day, interval in days")
    writer.values("0.0", "0.5")
    writer.values("30.0", "0.25")
    writer.line("  9*0 1 7*0 3*1 2*0")
    writer.line("  1 2*0 1 2*0             bypassed systems: 10, 18 to 20, 23, 26")
    writer.values(2, note="extra output series")
    writer.values(1, 1)
    writer.values(5, 1)
    writer.values(1, note="extra output segments")
    writer.values(28, 1)


def write_segments(writer):
    writer.values(len(SEGMENTS), note="number of segments")
    writer.values(0, note="bed volumes: 0 fixed, 1 moving")
    writer.values("1.0", note="bed time step, days")
    writer.values("1.0", "1.0", note="volume scale, conversion")
    writer.line("Segment names")
    for segment in SEGMENTS:
        writer.line(f"{segment.number:5d}  {quoted(segment.name)}")
    writer.line("Segment geometry and hydraulics")
    for segment in SEGMENTS:
        head = (f"{segment.number:5d}{segment.segment_below:5d}{segment.kind:5d}"
                f"{segment.volume:15.1f}")
        shape = f"{segment.length:10.1f}{segment.slope:10.5f}{segment.width:10.2f}"
        if is_bed(segment):  # A bed has no current of its own, no roughness and no least depth.
            writer.line(f"{head}  4*0.0{shape} /")
            continue
        writer.line(f"{head}{segment.velocity_multiplier:12.7f}{segment.velocity_exponent:8.3f}"
                    f"{segment.depth_multiplier:10.5f}{segment.depth_exponent:8.3f}")
        writer.line(f"     {shape}{segment.roughness:10.4f}{segment.minimum_depth:10.3f}")


def write_flow_paths(writer):
    writer.values(1, note="flow option")
    bodies.write_flow_paths(writer)


def write_flow_series(writer):
    bodies.write_flow_series(writer)


def write_exchanges(writer):
    bodies.write_exchanges(writer)


def write_boundaries(writer):
    bodies.write_boundaries(writer, SYSTEMS)


def write_loads(writer):
    writer.values(0, note="no file of diffuse loads")
    bodies.write_loads(writer, SYSTEMS)


def write_time_functions(writer):
    functions = [function for function in TIME_FUNCTIONS if function.number]
    writer.values(len(functions), note="time functions")
    for function in functions:
        writer.values(function.number, note="function number")
        writer.line(f"  {quoted(function.name)}")
        writer.values(len(function.series), note="breakpoints: day, value")
        writer.pairs(function.series)


def write_segment_parameters(writer):
    parameters = [parameter for parameter in PARAMETERS if parameter.number]
    writer.values(len(SEGMENTS), note="segments")
    writer.values(len(parameters), note="parameters: number, scale")
    for parameter in parameters:
        writer.line(f"{parameter.number:5d}{parameter.scale:10.3f}   {parameter.name}")
    for segment in SEGMENTS:
        writer.values(segment.number, note=segment.name)
        for parameter in parameters:
            writer.line(f"{parameter.number:5d}{parameter_value(parameter, segment):12.4f}")


def write_constants(writer):
    writer.values(len(CONSTANTS), note="constants")
    for constant in CONSTANTS:
        writer.line(f"{constant.number:6d}{constant.value:>12}   {constant.meaning}")


def write_initial_conditions(writer):
    bodies.write_initial_conditions(writer, SYSTEMS)


def file_text():
    writer = RecordWriter()
    for section in (write_model_parameters, write_segments, write_flow_paths, write_flow_series,
                    write_exchanges, write_boundaries, write_loads, write_time_functions,
                    write_segment_parameters, write_constants, write_initial_conditions):
        section(writer)
    return writer.text()
