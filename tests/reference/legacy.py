"""The sections of a legacy (version 7) file."""

from records import integers, reals, texts, fit
from shared import (ADVANCED_EUTROPHICATION, LONG_NAME_WIDTH, NAME_WIDTH, SEGMENT_COMMANDS, SHORT_NAME_WIDTH,
                    console_text, index_digits, name_with_nul, read_dates_and_options, send_model_parameter_table,
                    send_model_settings, send_segments)

# Legacy system 1, 2, 3, ...: short name, long name, what its presence sets (a flag, or a count that is stepped up).
STATE_VARIABLES = (
    (b"NH-34", b"Ammonia", "ammonia"),
    (b"NO3O2", b"Nitrate/Nitrite", "nitrate"),
    (b"ORG-N", b"Diss Org N", "organic_n"),
    (b"D-DIP", b"Inorganic P", "inorganic_p"),
    (b"ORG-P", b"Diss Org P", "organic_p"),
    (b"IN-SI", b"Inorganic Si", "inorganic_si"),
    (b"ORGSI", b"Organic Si", "organic_si"),
    (b"CBODU", b"CBOD-1", "cbod_count"),
    (b"CBODU", b"CBOD-2", "cbod_count"),
    (b"CBODU", b"CBOD-3", "cbod_count"),
    (b"DISOX", b"Dissolved Oxygen", "oxygen"),
    (b"DET-C", b"Detrital Carbon", "detrital_c"),
    (b"DET-N", b"Detrital N", "detrital_n"),
    (b"DET-P", b"Detrital P", "detrital_p"),
    (b"DETSI", b"Detrital Si", "detrital_si"),
    (b"TOTDE", b"Total Detritus", "total_detritus"),
    (b"SALIN", b"Salinity", "salinity"),
    (b"MALGA", b"Benthic Algae", "benthic_algae"),
    (b"MALGN", b"Benthic Algae-N", "benthic_algae_n"),
    (b"MALGP", b"Benthic Algae-P", "benthic_algae_p"),
    (b"SOLID", b"Solid 1", "solids_count"),
    (b"SOLID", b"Solid 2", "solids_count"),
    (b"SOLID", b"Solid 3", "solids_count"),
    (b"PHYTO", b"Phytoplankton 1", "phytoplankton_count"),
    (b"PHYTO", b"Phytoplankton 2", "phytoplankton_count"),
    (b"PHYTO", b"Phytoplankton 3", "phytoplankton_count"),
    (b"PH-SU", b"pH", "ph"),
    (b"ALKAL", b"Alkalinity", "alkalinity"))


def modelparam(run):
    """The opening block. The parameter table goes out before the systems are read, everything else at the end."""
    read_settings(run)
    send_model_parameter_table(run, "KOVA7 Model Parameters")
    names = build_state_variables(run)
    skip_scratch_records(run, "scratch_1_count")
    skip_scratch_records(run, "scratch_2_count")
    send_model_settings(run, run.state.state_variable_count, names)


def read_settings(run):
    run.state.keep(run.reader.fixed("(I5,5x,I2)", "model_type", "file_version"))
    read_dates_and_options(run)
    read_output_intervals(run)


def read_output_intervals(run):
    """Of the output intervals, each from a time on, the last one holds."""
    count = run.reader.list(integers("output_interval_count")).get("output_interval_count", 0)
    for _ in range(count):
        values = run.reader.list(reals("output_time", "output_interval"))
        values.pop("output_time", None)
        run.state.keep(values)


def build_state_variables(run):
    """The systems that are simulated become state variables, numbered without gaps in legacy order.

    Only the eutrophication model has the known systems, and it has no more of them than the table.
    """
    state = run.state
    bypass_flags = run.reader.flags("bypass_flag", state.system_count, kept=len(STATE_VARIABLES))
    names = []
    if state.model_type != ADVANCED_EUTROPHICATION:
        return names
    for system, flag in enumerate(bypass_flags, start=1):
        if flag != 0:
            continue
        short_name, long_name, what = STATE_VARIABLES[system - 1]
        names.append((fit(short_name, SHORT_NAME_WIDTH), fit(long_name, LONG_NAME_WIDTH)))
        state.system_of_state_variable.append(system)
        if what.endswith("_count"):
            state.keep({what: getattr(state, what) + 1})
        else:
            state.presence_flags.add(what)
    return names


def skip_scratch_records(run, name):
    """Records that mean nothing to the current model: a count, then one line each."""
    count = run.reader.list(integers(name)).get(name, 0)
    for _ in range(count):
        run.reader.list([])


def segments(run):
    """The whole section is read before anything of it goes out."""
    reader, state = run.reader, run.state
    state.keep(reader.list(integers("segment_count")))
    state.keep(reader.list(integers("bed_volume_option")))
    state.keep(reader.list(reals("bed_time_step")))
    state.keep(reader.list(reals("volume_scale_factor", "volume_conversion_factor")))
    reader.fixed("(A40)", "caption")
    for index in range(1, state.segment_count + 1):
        state.segment_names.append(read_segment_name(run, index))
    reader.caption()
    geometry = [read_geometry(run) for _ in range(state.segment_count)]
    send_segments(run, geometry, SEGMENT_COMMANDS,
                  before_name=lambda index, name: run.console(b"Setting Segment Name: " + console_text(name)),
                  after_count=lambda: run.console(b"Setting Number of Segments to: %d" % state.segment_count))


def read_segment_name(run, index):
    """The number in the record is not looked at: the i-th record belongs to segment i."""
    values = run.reader.list(integers("segment_number") + texts("segment_name"))
    name = fit(values["segment_name"], NAME_WIDTH) if "segment_name" in values else b"\0" * NAME_WIDTH
    run.console(b"Reading Segment: %d Name: " % index + console_text(name))
    name = name_with_nul(name)
    if not run.state.index_segment_names:
        return name_with_nul(name)
    digits = index_digits(index)
    if digits is None:
        return b"\0" * NAME_WIDTH
    return name_with_nul(fit(b"Seg-" + digits + b"-" + name, NAME_WIDTH))


GEOMETRY_ITEMS = (integers("segment_number", "bottom_segment", "segment_type")
                  + reals("volume", "velocity_multiplier", "velocity_exponent", "depth_multiplier", "depth_exponent",
                          "length", "slope", "width", "roughness", "minimum_depth"))


def read_geometry(run):
    """A value that the record leaves out is zero."""
    values = {item.name: 0 if item.kind == "integer" else 0.0 for item in GEOMETRY_ITEMS}
    values.update(run.reader.list(GEOMETRY_ITEMS))
    return values
