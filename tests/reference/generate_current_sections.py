"""Records of a current-format (version 8) file, made at random, from the flow paths to the initial conditions.

Most of them are those of the legacy format behind a title. Segment parameters and constants have columns.
"""

from generate_current import HYDRODYNAMIC_LINKAGE
from generate_environment import initial_records, other_count
from generate_legacy import (boundary_records, exchange_records, flow_field_records, flow_series_records,
                             load_records)
from generate_records import (column_record, column_real, count_record, real_text, sparse_record,
                              section_title_record)

NONE_OR_LESS = (0, 0, -1, -2147483648)
# Numbers of the host, numbers that only the legacy format has a meaning for, and numbers that nobody has.
FUNCTIONS = (1, 2, 3, 4, 4, 5, 8, 17, 17, 21, 22, 23, 24, 33, 37, 42, 50, 51, 99, 0, -1, 2147483647)
PARAMETERS = (1, 2, 3, 4, 5, 17, 19, 19, 19, 20, 20, 22, 41, 42, 43, 99, 0, -1, 99999, -9999)
CONSTANTS = (1, 2, 7, 8, 41, 52, 64, 64, 64, 65, 88, 97, 178, 500, 2999, 3000, 3001, 0, -1, 99999, -9999)
CLASSES = (1, 1, 1, 2, 3, 0, 4, 10, -1, 999)
HUGE_SEGMENT_COUNT = 2000000000


def current_sections(rng, system_count, segment_count, option):
    """Everything behind the segments; `option` is the hydraulic option of segment 1."""
    fields, field_counts = flow_field_records(rng, segment_count, option == HYDRODYNAMIC_LINKAGE)
    records = title(rng) + [section_title_record(rng, "second_title")] + fields
    records += title(rng) + flow_series_records(rng, field_counts)
    records += title(rng) + exchange_records(rng, segment_count)
    boundaries, system_count = boundary_records(rng, system_count, segment_count)
    loads, system_count = load_records(rng, system_count, segment_count)
    records += title(rng) + boundaries + title(rng) + loads + title(rng) + time_function_records(rng)
    parameters, segment_count = parameter_records(rng, segment_count)
    records += title(rng) + parameters + title(rng) + constant_records(rng)
    return records + title(rng) + initial_condition_records(rng, system_count, segment_count)


def title(rng):
    return [section_title_record(rng, "section_title")]


# --- time functions -----------------------------------------------------------------------------------------

def time_function_records(rng):
    """Numbers come more than once: one record for each series, or a second one that adds to the first."""
    count = rng.choice((0, 1, 2, 4, 8)) if rng.random() < 0.97 else 60
    numbers = []
    for _ in range(count):
        numbers.append(rng.choice(numbers) if numbers and rng.random() < 0.3 else rng.choice(FUNCTIONS))
    records = [count_record(rng, "time_function_count", count or rng.choice(NONE_OR_LESS))]
    for number in numbers:
        breakpoints = rng.choice((0, 1, 1, 2, 3, 5, -2))
        records += [count_record(rng, "function_number", number),
                    count_record(rng, "function_breakpoint_count", breakpoints)]
        records += [sparse_record(rng, "function_pair", [real_text(rng), real_text(rng)])
                    for _ in range(breakpoints)]
    return records


# --- segment parameters -------------------------------------------------------------------------------------

def parameter_records(rng, kept_count):
    """The records, and the segment count that they leave. Without parameters it may be as large as it likes."""
    segment_count = other_count(rng, kept_count, 12)
    count = rng.choice((0, -1, 1, 1, 2, 3, 5))
    if count <= 0 and rng.random() < 0.1:
        segment_count = HUGE_SEGMENT_COUNT
    listed = [(rng.choice(PARAMETERS), rng.choice(CLASSES)) for _ in range(count)]
    records = [count_record(rng, "parameter_segment_count", segment_count, kept_count),
               count_record(rng, "parameter_count", count), section_title_record(rng, "list_heading")]
    records += [listed_record(rng, *parameter) for parameter in listed]
    if count <= 0:
        return records, segment_count
    records.append(section_title_record(rng, "segment_heading"))
    for segment in range(1, segment_count + 1):
        records.append(count_record(rng, "parameter_segment", rng.choice((segment, segment, segment, 0))))
        records += [value_record(rng, *parameter) for parameter in listed]
    return records, segment_count


def listed_record(rng, number, class_index):
    return column_record(rng, "parameter", ((7, 5, b"%d" % number), (11, 3, b"%d" % class_index),
                                            (8, 10, column_real(rng, 10))))


def value_record(rng, number, class_index):
    """Mostly of the number and the class in the list."""
    if rng.random() < 0.07:
        number = rng.choice(PARAMETERS)
    if rng.random() < 0.07:
        class_index = rng.choice(CLASSES)
    return column_record(rng, "parameter_value", ((11, 5, b"%d" % number), (16, 3, b"%d" % class_index),
                                                  (19, 10, column_real(rng, 10))))


# --- kinetic constants --------------------------------------------------------------------------------------

def constant_records(rng):
    """Some of them twice."""
    constants = [(rng.choice(CONSTANTS), rng.choice((*CLASSES, 99999, -9999)))
                 for _ in range(rng.choice((0, 1, 3, 10, 25)))]
    if rng.random() < 0.3:
        constants += constants[:3]
    return [count_record(rng, "constant_count", len(constants) or rng.choice(NONE_OR_LESS))] + [
        column_record(rng, "constant", ((7, 5, b"%d" % number), (11, 5, b"%d" % column),
                                        (18, 10, column_real(rng, 10))))
        for number, column in constants]


# --- initial conditions -------------------------------------------------------------------------------------

def initial_condition_records(rng, kept_system_count, kept_segment_count):
    """Without systems there may be as many segments as the count likes."""
    if rng.random() < 0.03:
        return [count_record(rng, "initial_system_count", rng.choice(NONE_OR_LESS), kept_system_count),
                count_record(rng, "initial_segment_count", HUGE_SEGMENT_COUNT, kept_segment_count)]
    return initial_records(rng, kept_system_count, kept_segment_count)
