"""Writes what the import of the version 7 file brings to the host as a version 8 input file.

What the import changes is worked out here from the model alone: numbers, units, and what of the
constants is left when each column count is as the last record set it.
"""

import struct

import bodies
import current
from environment import PARAMETERS, TIME_FUNCTIONS, parameter_value
from kinetics import CONSTANTS
from records import RecordWriter
from river import SEGMENTS
from waters import ENDS, SIMULATED

FLOW_OPTION = 1  # The one of the version 7 file holds for every segment.

# In the order of the columns; the digits are those of the version 7 file.
_GEOMETRY = (("volume", 1), ("velocity_multiplier", 7), ("velocity_exponent", 3),
             ("depth_multiplier", 5), ("depth_exponent", 3), ("length", 1), ("slope", 5),
             ("width", 2), ("roughness", 4), ("minimum_depth", 3))


def write_segments(writer):
    writer.line("SEGMENTS as version 7 has them")
    writer.values(len(SEGMENTS), note="number of segments")
    writer.values(0, note="bed volumes: 0 fixed, 1 moving")
    writer.values("1.0", note="bed time step, days")
    writer.values("1.0", "1.0", note="volume scale, conversion")
    writer.line("Segment names")
    for segment in SEGMENTS:
        writer.line(f"{segment.number:5d}     {segment.name}")
    writer.line("Segment geometry; levels, side slopes and weirs are left blank")
    for segment in SEGMENTS:
        writer.line("".join(f"{number:5d}" for number in (
            segment.number, segment.segment_below, segment.kind, FLOW_OPTION))
            + "".join(f"{getattr(segment, name):15.{digits}f}" for name, digits in _GEOMETRY))


def write_loads(writer):
    writer.line("LOADS")
    writer.values(0, note="no file of diffuse loads")
    bodies.write_loads(writer, SIMULATED)


# Version 7 number: version 8 number. A second series of a function has no record of its own there.
TIME_FUNCTION_NUMBERS = {1: 1, 5: 4, 7: 21, 10: 17, 14: 9}
SOLAR_RADIATION = 5
LANGLEY_A_DAY = "0.48426"
# Constants that are time functions: version 7 number, version 8 number.
CONSTANT_SERIES = {2: 37, 3: 38, 4: 39, 5: 42, 6: 40, 7: 41}


def single(number):
    """The nearest number of single precision."""
    return struct.unpack("<f", struct.pack("<f", number))[0]


def single_text(number):
    """The shortest decimal text of a number of single precision."""
    texts = (f"{number:.{digits}g}" for digits in range(1, 10))
    return next(text for text in texts if single(float(text)) == number)


def _converted(value):
    """W/m2 for the Langleys that the version 7 file writes; both factors and the product are of
    single precision."""
    return single_text(single(single(float(f"{value:.4f}")) * single(float(LANGLEY_A_DAY))))


def write_time_functions(writer):
    functions = [function for function in TIME_FUNCTIONS
                 if function.number in TIME_FUNCTION_NUMBERS]
    flat = [constant for constant in CONSTANTS if constant.number in CONSTANT_SERIES]
    writer.line("TIME_FUNCTIONS")
    writer.values(len(functions) + len(flat), note="time functions")
    for function in functions:
        writer.values(TIME_FUNCTION_NUMBERS[function.number], note=function.name)
        writer.values(len(function.series), note="breakpoints: day, value")
        for day, value in function.series:
            text = (_converted(value) if function.number == SOLAR_RADIATION
                    else f"{value:.4f}")
            writer.line(f"{day:12.4f}{text:>15}")
    for constant in flat:
        writer.values(CONSTANT_SERIES[constant.number], note=constant.meaning)
        writer.values(len(ENDS), note="breakpoints: day, value")
        for day in ENDS:
            writer.line(f"{day:12.4f}{constant.value:>15}")


# Version 7 number: version 8 number, column. 3 has none, 26 would be of the bypassed Solid 3.
_PARAMETER_NUMBERS = {2: (1, 1), 4: (17, 1), 6: (30, 1), 7: (31, 1), 8: (32, 1), 9: (4, 1),
                      14: (24, 1), 19: (21, 1), 22: (6, 1), 24: (19, 1), 25: (19, 2), 27: (20, 1),
                      28: (20, 2)}
_RADIATION, _RADIATION_SERIES = 9, (5, 1)
# Version 8 wants them where there is an air temperature over time.
_AIR_TEMPERATURE, _AIR_TEMPERATURE_SERIES = (2, 1), (3, 1)


def parameter_entries():
    """(number, column, scale, name, value in a segment) of each entry; switches are 1."""
    def switch(number, column, name):
        return number, column, 1.0, name, lambda segment: 1.0

    entries = []
    for parameter in PARAMETERS:
        if parameter.number not in _PARAMETER_NUMBERS:
            continue
        entries.append((*_PARAMETER_NUMBERS[parameter.number], parameter.scale, parameter.name,
                        lambda segment, parameter=parameter: parameter_value(parameter, segment)))
        if parameter.number == _RADIATION:
            entries.append(switch(*_RADIATION_SERIES, "Solar radiation series"))
    return [*entries, switch(*_AIR_TEMPERATURE, "Air temperature"),
            switch(*_AIR_TEMPERATURE_SERIES, "Air temperature series")]


def write_segment_parameters(writer):
    entries = parameter_entries()
    writer.line("SEGMENT_PARAMETERS")
    writer.values(len(SEGMENTS), note="segments")
    writer.values(len(entries), note="parameters")
    writer.line("'Parameters of the model'")
    for number, column, scale, name, _ in entries:
        writer.line(f"Param: {number:5d}   Column: {column:3d} Scale: {scale:10.3f}   {name}")
    writer.line("'Values by segment'")
    for segment in SEGMENTS:
        writer.values(segment.number, note=segment.name)
        for number, column, _, _, value in entries:
            writer.line(f"Parameter: {number:5d}        Column: {column:3d}"
                        f"            Value: {value(segment):10.4f}")


# Version 7 numbers of constants of the benthic algae; 97 and 98 have no meaning.
_BENTHIC_ALGAE = {*range(80, 97), *range(99, 109)}


def constants_kept():
    """(number, column, constant) of what reaches the host, in its order.

    The import lists a constant when its first column comes, and keeps for each number how many
    columns it has. A constant of the benthic algae enters the list, too, but counts one column for
    the number that is as high as the list is then long: it does not reach the host itself, and the
    second columns of CBOD (47 to 51) are lost to it.
    """
    listed, column_counts, records = [], {}, {}
    for constant in CONSTANTS:
        if constant.number in _BENTHIC_ALGAE:
            listed.append(None)
            column_counts[len(listed)] = 1
        elif constant.current_number:
            if constant.current_column == 1:
                listed.append(constant.current_number)
            column_counts[constant.current_number] = constant.current_column
            records[constant.current_number, constant.current_column] = constant
    return [(number, column, records[number, column]) for number in listed if number
            for column in range(1, column_counts[number] + 1)]


def write_constants(writer):
    kept = constants_kept()
    writer.line("CONSTANTS")
    writer.values(len(kept), note="constants")
    for number, column, constant in kept:
        writer.line(f"Const: {number:5d}   Column: {column:5d}           Value: "
                    f"{constant.value:>10}   {constant.meaning}")


def file_text():
    writer = RecordWriter()
    for section in (current.write_model_parameters, write_segments, current.write_flow_paths,
                    current.write_flow_series, current.write_exchanges, current.write_boundaries,
                    write_loads, write_time_functions, write_segment_parameters, write_constants,
                    current.write_initial_conditions):
        section(writer)
    return writer.text()
