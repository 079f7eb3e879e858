"""Model parameters and segments of a current-format (version 8) file."""

from command_log import Integer, Real
from records import fit, integers, reals, texts
from shared import (NAME_WIDTH, SEGMENT_COMMANDS, index_digits, name_with_nul, read_dates_and_options,
                    send_model_parameter_table, send_model_settings, send_segments)


def modelparam_v2(run):
    """The opening block. Every system of the file is a state variable, under the names that the file gives it."""
    read_settings(run)
    send_model_parameter_table(run, "KOVA8 Model Parameters")
    names = [read_system_names(run) for _ in range(run.state.system_count)]
    send_model_settings(run, run.state.system_count, names)


def read_settings(run):
    reader, state = run.reader, run.state
    state.keep(reader.fixed("(I5,5x,I2)", "model_type", "file_version"))
    reader.title()
    read_dates_and_options(run)
    state.keep(reader.list(reals("output_interval")))


def read_system_names(run):
    values = run.reader.fixed("(A5,5X,A30)", "short_name", "long_name")
    return values["short_name"], values["long_name"]


GEOMETRY_LAYOUT = "(4(I5),16(F15.5))"
GEOMETRY_NAMES = (
    "segment_number", "bottom_segment", "segment_type", "hydraulic_option",
    "volume", "velocity_multiplier", "velocity_exponent", "depth_multiplier", "depth_exponent", "length", "slope",
    "width", "roughness", "minimum_depth", "initial_surface_elevation", "bottom_elevation", "side_slope",
    "initial_depth", "weir_height", "weir_type")

# The hydraulic option follows the segment type, the additional geometry follows the minimum depth. The weir type goes
# to the host under a keyword that looks like a question; hosts know it by that name.
COMMANDS = (
    *SEGMENT_COMMANDS[:2], ("PIQOPT", "hydraulic_option", Integer), *SEGMENT_COMMANDS[2:],
    ("PINITIALSURFACEELEVATION", "initial_surface_elevation", Real), ("PBOTTOMELEVATION", "bottom_elevation", Real),
    ("PSIDESLOPE", "side_slope", Real), ("PINITIALDEPTH", "initial_depth", Real),
    ("PWEIRHEIGHT", "weir_height", Real), ("GWEIRTYPE", "weir_type", Real))


def segments_v2(run):
    """The whole section is read before anything of it goes out."""
    reader, state = run.reader, run.state
    reader.list(texts("title"))
    state.keep(reader.list(integers("segment_count")))
    state.keep(reader.list(integers("bed_volume_option")))
    state.keep(reader.list(reals("bed_time_step")))
    state.keep(reader.list(reals("volume_scale_factor", "volume_conversion_factor")))
    reader.fixed("(A40)", "caption")
    for index in range(1, state.segment_count + 1):
        state.segment_names.append(read_segment_name(run, index))
    reader.caption()
    geometry = [reader.fixed(GEOMETRY_LAYOUT, *GEOMETRY_NAMES) for _ in range(state.segment_count)]
    state.flow_option = [values["hydraulic_option"] for values in geometry]
    send_segments(run, geometry, COMMANDS)


def read_segment_name(run, index):
    """The number in the record is not looked at: the i-th record belongs to segment i."""
    name = name_with_nul(run.reader.fixed("(I5,5X,A40)", "segment_number", "segment_name")["segment_name"])
    if not run.state.index_segment_names:
        return name_with_nul(name)
    digits = index_digits(index)
    if digits is None:
        return b" " * NAME_WIDTH
    return name_with_nul(hyphenated(fit(b"Seg-" + digits + b"-" + name, NAME_WIDTH)))


def hyphenated(text):
    """An indexed name is one word: the blanks inside it, those before its end, become hyphens."""
    return text.rstrip(b" ").replace(b" ", b"-").ljust(len(text))
