"""Records of a legacy (version 7) file, made at random. Those behind the loads have a module of their own.

The sections are joined by what they leave for each other: the number of systems and, for the flow time
series, the counts of the flow paths, which hold where a count is left out.
"""

from generate_environment import environment_records
from generate_records import (Record, caption_record, column_real, column_record, count_record,
                              date_and_option_records, file_name_record, header_record, integer_record,
                              integer_text, list_record, list_text, random_name, real_record, real_text,
                              segment_opening, sparse_record, text_line_record, title_record)


def legacy_system_count(rng):
    return rng.choice((0, 1, 3, 10, 28, 30, 35))


def legacy_opening(rng, system_count, segment_count):
    """The opening block and the segments."""
    intervals = rng.choice((0, 1, 1, 2, 4))
    records = [header_record(rng, rng.choice((0, 1, 2, 2, 2, -1)))]
    records += date_and_option_records(rng, system_count)
    records.append(integer_record(rng, "output_interval_count", intervals))
    records += [real_record(rng, "output_interval", 2) for _ in range(intervals)]
    flags = (0, 0, 1, 2) if rng.random() < 0.7 else (0,)
    records.append(integer_record(rng, "bypass_flags", *[rng.choice(flags) for _ in range(system_count)]))
    for name in ("scratch_1", "scratch_2"):
        count = rng.choice((0, 0, 1, 3))
        records.append(integer_record(rng, name + "_count", count))
        records += [Record(name, "caption", [rng.choice((b"", b"1 2 3", b"0 0. /", b"'"))]) for _ in range(count)]
    return records + segment_opening(rng, segment_count) + legacy_segments(rng, segment_count)


def legacy_segments(rng, segment_count):
    names = [list_record(rng, "segment_name", [integer_text(rng, index), list_text(rng, random_name(rng))])
             for index in range(1, segment_count + 1)]
    geometry = [list_record(rng, "geometry", [integer_text(rng, index), integer_text(rng, rng.randint(0,
                                                                                                      segment_count)),
                                              integer_text(rng, rng.randint(1, 4))]
                            + [real_text(rng) for _ in range(10)])
                for index in range(1, segment_count + 1)]
    return names + [caption_record(rng, "geometry_caption")] + geometry


def legacy_sections(rng, system_count, segment_count):
    """Everything behind the segments."""
    records, field_counts = flow_path_records(rng, segment_count)
    records += flow_series_records(rng, field_counts)
    records += exchange_records(rng, segment_count)
    boundaries, system_count = boundary_records(rng, system_count, segment_count)
    loads, system_count = load_records(rng, system_count, segment_count)
    return records + boundaries + loads + environment_records(rng, system_count, segment_count)


def small_count(rng):
    return rng.choice((0, 1, 1, 2, 2, 3, -1)) if rng.random() < 0.95 else rng.choice((7, -2147483648))


def segment_text(rng, segment_count):
    return integer_text(rng, rng.randint(-1, segment_count + 1))


def changed(rng, count):
    """Mostly the count of an earlier section, sometimes another one."""
    return count if rng.random() < 0.6 else small_count(rng)


# --- flow paths and flow time series ------------------------------------------------------------------------

def flow_path_records(rng, segment_count):
    """The records, and the function counts of the fields."""
    option = rng.choice((0, 1, 2, 3, 3, -3))
    fields, field_counts = flow_field_records(rng, segment_count, option == 3)
    return [count_record(rng, "flow_option", option)] + fields, field_counts


def flow_field_records(rng, segment_count, has_file_name):
    """From the number of fields on; the file name stands in the first one."""
    field_count = small_count(rng)
    records = [count_record(rng, "flow_field_count", field_count)]
    function_counts = []
    for field in range(field_count):
        records.append(caption_record(rng, "field_caption"))
        if field == 0 and has_file_name:
            records.append(file_name_record(rng, "hydro_file_name"))
        function_counts.append(small_count(rng))
        records.append(count_record(rng, "function_count", function_counts[-1]))
        for _ in range(function_counts[-1]):
            records.append(text_line_record(rng, "description"))
            records += pair_records(rng, segment_count, real_count=1)
    return records, (field_count, function_counts)


def pair_records(rng, segment_count, real_count):
    count = small_count(rng)
    return [count_record(rng, "pair_count", count)] + [
        sparse_record(rng, "pair", [segment_text(rng, segment_count), segment_text(rng, segment_count)]
                      + [real_text(rng) for _ in range(real_count)])
        for _ in range(count)]


def flow_series_records(rng, counts_of_paths):
    path_field_count, path_function_counts = counts_of_paths
    field_count = changed(rng, path_field_count)
    records = [count_record(rng, "flow_field_count", field_count, path_field_count)]
    for field in range(field_count):
        kept = path_function_counts[field] if field < len(path_function_counts) else 0
        function_count = changed(rng, kept)
        records += [caption_record(rng, "field_caption"),
                    count_record(rng, "function_count", function_count, kept)]
        if function_count > 0:
            records.append(sparse_record(rng, "factors", [real_text(rng), real_text(rng)]))
        for _ in range(function_count):
            records.append(text_line_record(rng, "function_caption"))
            records += series_records(rng)
    return records


def series_records(rng):
    count = rng.choice((0, 1, 1, 2, 3, 5, -2)) if rng.random() < 0.97 else 20
    return [count_record(rng, "breakpoint_count", count)] + [
        sparse_record(rng, "breakpoint", [real_text(rng), real_text(rng)]) for _ in range(count)]


# --- exchanges ----------------------------------------------------------------------------------------------

def exchange_records(rng, segment_count):
    field_count = small_count(rng)
    records = [count_record(rng, "exchange_field_count", field_count)]
    for _ in range(field_count):
        function_count = small_count(rng)
        records += [title_record(rng, "heading"), count_record(rng, "function_count", function_count)]
        if function_count > 0:
            records.append(sparse_record(rng, "factors", [real_text(rng), real_text(rng)]))
        for _ in range(function_count):
            records.append(text_line_record(rng, "description"))
            records += pair_records(rng, segment_count, real_count=2) + series_records(rng)
    return records


# --- boundary conditions and loads --------------------------------------------------------------------------

def section_system_count(rng, system_count):
    """Mostly as many systems as the opening block has."""
    if rng.random() < 0.75:
        return system_count
    return rng.choice((0, -1, 1, max(0, system_count - 2), max(0, system_count) + 3))


def boundary_records(rng, kept_count, segment_count):
    """The records, and the number of systems that the next section finds."""
    system_count = section_system_count(rng, kept_count)
    records = [count_record(rng, "section_system_count", system_count, kept_count)]
    for _ in range(system_count):
        count = series_count(rng, system_count)
        records += [text_line_record(rng, "heading"), count_record(rng, "boundary_count", count)]
        if count > 0:
            factors = ((0, 10, column_real(rng, 10)), (0, 10, column_real(rng, 10)))
            records.append(column_record(rng, "factors", factors))
        records += segment_series_records(rng, count, segment_count)
    return records, system_count


def series_count(rng, system_count):
    """Boundaries or loads of one system; with many systems most have none."""
    return small_count(rng) if rng.random() < 8 / max(8, system_count) else 0


def segment_series_records(rng, count, segment_count):
    records = []
    for _ in range(count):
        records.append(count_record(rng, "series_segment", rng.randint(-1, segment_count + 1)))
        records += series_records(rng)
    return records


def load_records(rng, kept_count, segment_count):
    """The records, and the number of systems that the initial conditions find."""
    option = rng.choice((0, 0, 0, 1, 3, -1))
    records = [count_record(rng, "load_option", option)]
    if option > 0:
        records.append(file_name_record(rng, "load_file_name"))
    system_count = section_system_count(rng, kept_count)
    records.append(count_record(rng, "section_system_count", system_count, kept_count))
    for _ in range(system_count):
        count = series_count(rng, system_count)
        records += [title_record(rng, "heading"), count_record(rng, "load_count", count)]
        if count > 0:
            records.append(sparse_record(rng, "factors", [real_text(rng), real_text(rng)]))
        records += segment_series_records(rng, count, segment_count)
    return records, system_count
